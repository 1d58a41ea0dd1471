// Statements that declare: the names declared, their types and values, and what the name of a
// procedure ties it to.

#include "core/Ascii.h"
#include "text/Identifiers.h"
#include "uses/ModuleBinder.h"

namespace vendrel {
namespace {

bool IsModifier(Symbol name) {
  switch (name) {
    case word::Public:
    case word::Private:
    case word::Friend:
    case word::Global:
    case word::Static:
    case word::Dim: return true;
    default: return false;
  }
}

}  // namespace

std::int32_t ModuleBinder::Declare(std::size_t at, const CodeElement* element, UseAnswer answer) {
  const std::int32_t record = AddUse(at, UseKind::Declare, answer);
  Of(record).Element = element;
  if (element) Of(record).Holder = element;
  return record;
}

bool ModuleBinder::ParseDeclaration(std::size_t from, std::size_t end) {
  std::size_t at = from;
  bool declares = false;
  while (IsWord(at, end) && IsModifier(At(at).Name)) {
    Skip(at);
    declares = true;
  }
  if (!IsWord(at, end)) return declares;
  const bool named = IsWord(at + 1, end);
  switch (At(at).Name) {
    case word::Sub:
    case word::Function:
      if (!named) break;
      ParseProcedure(at, end);
      return true;
    case word::Property:
      if (!(IsWord(at + 1, end, word::Get) || IsWord(at + 1, end, word::Let) ||
            IsWord(at + 1, end, word::Set)) ||
          !IsWord(at + 2, end))
        break;
      ParseProcedure(at, end);
      return true;
    case word::Declare:
      if (!named) break;
      Skip(at);
      ParseDeclare(at, end);
      return true;
    case word::Event:
      if (!named) break;
      Skip(at);
      ParseEvent(at, end);
      return true;
    case word::Enum:
    case word::Type: {
      if (!named || mPlace != Place::Declarations || IsWord(at + 1, end, word::As)) break;
      const bool isEnum = At(at).Name == word::Enum;
      Skip(at);
      ParseTypeOrEnum(at, end, isEnum);
      return true;
    }
    case word::Const:
      Skip(at);
      ParseDeclarators(at, end, true);
      return true;
    case word::Implements:
      if (!named) break;
      Skip(at);
      ParseImplements(at, end);
      return true;
    default: break;
  }
  if (!declares) return false;
  ParseDeclarators(at, end, false);
  return true;
}

void ModuleBinder::ParseProcedure(std::size_t at, std::size_t end) {
  Symbol accessor = word::None;
  const bool isProperty = At(at).Name == word::Property;
  Skip(at);
  if (isProperty) {
    accessor = At(at).Name;
    Skip(at);
  }
  const Symbol name = At(at).Name;
  const std::uint32_t line = At(0).Line;
  const Block* block = BlockAt(line, name, accessor);
  EnterProcedure(block, name);
  const CodeElement* element = block;
  const Entry* entry = mScope->Members.Find(name);
  if (isProperty && entry && entry->Sort == EntrySort::Property) element = entry->Element;
  const std::int32_t record = Declare(at, element, UseAnswer::OwnModule);
  if (block) Of(record).Holder = block;
  if (isProperty)
    Of(record).Accessor = accessor == word::Get   ? UseAccessor::Get
                          : accessor == word::Set ? UseAccessor::Set
                                                  : UseAccessor::Let;
  if (block) TieToSource(at, *block);
  ++at;
  const Parameters* parameters = block ? block->Parameters.IfAny() : nullptr;
  at = InParentheses(at, end, [&](std::size_t open, std::size_t close) {
    ParseParameters(open, close, parameters);
  });
  at = ParseAs(at, end);
  ParseList(at, end);
}

void ModuleBinder::ParseParameters(std::size_t open, std::size_t end,
                                   const Parameters* parameters) {
  for (std::size_t at = open + 1; at < end;) {
    if (IsMark(at, end, ',')) {
      ++at;
      continue;
    }
    if (IsWord(at, end, word::Optional) || IsWord(at, end, word::ByVal) ||
        IsWord(at, end, word::ByRef) || IsWord(at, end, word::ParamArray)) {
      Skip(at);
      continue;
    }
    if (!IsWord(at, end)) {
      ++at;
      continue;
    }
    const Parameter* parameter =
        parameters ? parameters->Item(mScopes.Names().TextOf(At(at).Name)) : nullptr;
    Declare(at, parameter, UseAnswer::Parameter);
    Of(static_cast<std::int32_t>(mUses.size()) - 1).Holder = mHolder;
    if (mPlace == Place::Procedure && !Local(At(at).Name))
      AddLocal(At(at).Name, EntrySort::Parameter, parameter, false);
    ++at;
    if (IsMark(at, end, '(')) at = CloseOf(at, end) + 1;
    at = ParseAs(at, end);
    while (at < end && !IsMark(at, end, ',')) {
      if (IsMark(at, end, '=')) ++at;
      const std::size_t before = at;
      ParseExpression(at, end);
      if (at == before && !IsMark(at, end, ',')) ++at;
    }
  }
}

// "As [New] type [* length]"; gives what stands behind it.
std::size_t ModuleBinder::ParseAs(std::size_t at, std::size_t end) {
  if (!SkipIf(at, end, word::As)) return at;
  if (mIsNet) at = ParseAttributes(at, end);  // of what is returned
  const bool isNew = SkipIf(at, end, word::New);
  ParseType(at, end, isNew ? UseKind::New : UseKind::Type);
  if (IsMark(at, end, '(')) at = std::min(end, CloseOf(at, end) + 1);
  if (IsMark(at, end, '*')) {
    ++at;
    ParseExpression(at, end);
  }
  return at;
}

const CodeElement* ModuleBinder::DeclaredBy(Symbol name, std::uint32_t line, bool isConstant) {
  if (mPlace == Place::Procedure) {
    if (const Entry* local = Local(name)) return local->Element;
    AddLocal(name, EntrySort::Local, nullptr, isConstant);
    return nullptr;
  }
  const Entry* first = mScope->Members.Find(name);
  for (const Entry* entry = first; entry; entry = entry->Next)
    if (entry->Element && entry->Element->SourceLine() == static_cast<std::int32_t>(line))
      return entry->Element;
  return first ? first->Element : nullptr;
}

void ModuleBinder::ParseDeclarators(std::size_t at, std::size_t end, bool isConstant) {
  const CodeElement* const holder = mHolder;
  const std::uint32_t line = At(0).Line;
  const bool isLocal = mPlace == Place::Procedure;
  while (at < end) {
    if (IsMark(at, end, ',')) {
      ++at;
      continue;
    }
    SkipIf(at, end, word::WithEvents);
    if (!IsWord(at, end)) {
      ++at;
      continue;
    }
    const CodeElement* element = DeclaredBy(At(at).Name, line, isConstant);
    Declare(at, element, isLocal ? UseAnswer::Local : UseAnswer::OwnModule);
    if (isLocal)
      Of(static_cast<std::int32_t>(mUses.size()) - 1).Holder = mHolder;
    else if (element)
      mHolder = element;
    ++at;
    at = InParentheses(at, end,
                       [&](std::size_t open, std::size_t close) { ParseList(open + 1, close); });
    at = ParseAs(at, end);
    while (at < end && !IsMark(at, end, ',')) {
      if (IsMark(at, end, '=')) ++at;
      const std::size_t before = at;
      ParseExpression(at, end);
      if (at == before && !IsMark(at, end, ',')) ++at;
    }
    mHolder = holder;
  }
}

void ModuleBinder::ParseDeclare(std::size_t at, std::size_t end) {
  if (IsWord(at, end, word::Sub) || IsWord(at, end, word::Function)) Skip(at);
  if (!IsWord(at, end)) return;
  const CodeElement* const holder = mHolder;
  const Entry* entry = mScope->Members.Find(At(at).Name);
  const CodeElement* element = DeclaredBy(At(at).Name, At(0).Line, false);
  Declare(at, element, UseAnswer::OwnModule);
  if (element) mHolder = element;
  ++at;
  while (at < end && !IsMark(at, end, '(') && !IsWord(at, end, word::As)) Skip(at);
  at = InParentheses(at, end, [&](std::size_t open, std::size_t close) {
    ParseParameters(open, close, entry ? ParametersOf(*entry) : nullptr);
  });
  ParseAs(at, end);
  mHolder = holder;
}

void ModuleBinder::ParseEvent(std::size_t at, std::size_t end) {
  const CodeElement* const holder = mHolder;
  const Entry* event = mScope->Events.Find(At(at).Name);
  const CodeElement* element = event ? event->Element : nullptr;
  Declare(at, element, UseAnswer::OwnModule);
  if (element) mHolder = element;
  ++at;
  at = InParentheses(at, end, [&](std::size_t open, std::size_t close) {
    ParseParameters(open, close, event ? ParametersOf(*event) : nullptr);
  });
  ParseList(at, end);
  mHolder = holder;
}

void ModuleBinder::ParseTypeOrEnum(std::size_t at, std::size_t end, bool isEnum) {
  const Entry* type = mScope->Types.Find(At(at).Name);
  const CodeElement* element = type ? type->Element : nullptr;
  Declare(at, element, UseAnswer::Type);
  mEnum = As<Enumeration>(element);
  mStructure = As<UDT>(element);
  mPlace = isEnum ? Place::Enum : Place::Type;
  ++at;
  SkipAll(at, end);
}

void ModuleBinder::ParseTypeLine(std::size_t from, std::size_t end) {
  std::size_t at = from;
  if (!IsWord(at, end)) return;
  const Entry* field = mStructure ? mScopes.Field(*mStructure, At(at).Name) : nullptr;
  const CodeElement* element = field ? field->Element : nullptr;
  Declare(at, element, UseAnswer::Field);
  const CodeElement* const holder = mHolder;
  if (element) mHolder = element;
  ++at;
  at = InParentheses(at, end,
                     [&](std::size_t open, std::size_t close) { ParseList(open + 1, close); });
  at = ParseAs(at, end);
  ParseList(at, end);
  mHolder = holder;
}

void ModuleBinder::ParseEnumLine(std::size_t from, std::size_t end) {
  std::size_t at = from;
  if (!IsWord(at, end)) return;
  const CodeElement* element = nullptr;
  for (const Entry* entry = mScope->Members.Find(At(at).Name); entry; entry = entry->Next) {
    const auto* member = As<EnumMember>(entry->Element);
    if (member && member->Enumeration.Get() == mEnum) element = member;
  }
  Declare(at, element, UseAnswer::EnumMember);
  const CodeElement* const holder = mHolder;
  if (element) mHolder = element;
  ++at;
  if (IsMark(at, end, '=')) ++at;
  ParseList(at, end);
  mHolder = holder;
}

void ModuleBinder::ParseImplements(std::size_t at, std::size_t end) {
  ParseType(at, end, UseKind::Implements);
  ParseList(at, end);
}

}  // namespace vendrel
