// VB.NET: what types and members declare.

#include <algorithm>

#include "uses/ModuleBinder.h"

namespace vendrel {

// "(Of T, U As Base)" behind a name that is declared; gives what stands behind.
std::size_t ModuleBinder::ParseTypeParameters(std::size_t at, std::size_t end) {
  if (!IsMark(at, end, '(') || !IsWord(at + 1, end, word::Of)) return at;
  const std::size_t close = CloseOf(at, end);
  for (++at; at < close;) {
    if (SkipIf(at, close, word::Of) || SkipIf(at, close, word::In)) continue;
    if (IsWord(at, close) && mScopes.Names().TextOf(At(at).Name) == "out") {
      Skip(at);
      continue;
    }
    if (!IsWord(at, close)) {
      ++at;
      continue;
    }
    mTypeParameters.emplace_back(At(at).Name, mTypes.size());
    AddUse(at, UseKind::Declare, UseAnswer::Type);
    ++at;
    if (!SkipIf(at, close, word::As)) continue;
    if (IsMark(at, close, '{')) ++at;
    while (at < close && !IsMark(at, close, '}') && IsWord(at, close)) {
      if (SkipIf(at, close, word::New) || SkipIf(at, close, word::Class) ||
          SkipIf(at, close, word::Structure)) {
      } else {
        ParseNetType(at, close, UseKind::Type);
      }
      if (IsMark(at, close, ',') && !IsMark(at - 1, close, '}')) break;
    }
  }
  return close < end ? close + 1 : end;
}

// A variable that a statement declares where it stands: For, Using, Catch, queries, lambdas.
std::size_t ModuleBinder::DeclareVariable(std::size_t at, std::size_t end, EntrySort sort) {
  const Symbol name = At(at).Name;
  if (mPlace == Place::Procedure && !Local(name)) {
    AddLocal(name, sort, nullptr, false);
    Local(name)->Type = {TypeSort::Late, false, nullptr};
    Local(name)->TypeKnown = true;
  }
  const Entry* entry = Local(name);
  const std::int32_t record = AddUse(
      at, UseKind::Declare, sort == EntrySort::Parameter ? UseAnswer::Parameter : UseAnswer::Local);
  if (entry) Of(record).Element = entry->Element;
  ++at;
  TypeRef type;
  bool typed = false;
  if (IsMark(at, end, '(') && !IsWord(at + 1, end, word::Of)) {
    type.IsArray = true;
    const std::size_t close = CloseOf(at, end);
    ParseArguments(at + 1, close, {});
    at = close < end ? close + 1 : end;
  }
  if (IsWord(at, end, word::As)) {
    Skip(at);
    const bool isNew = IsWord(at, end, word::New);
    const UseValue value = isNew ? ParseNew(at, end) : ParseNetType(at, end, UseKind::Type);
    type = {value.Type.Sort, type.IsArray || (!isNew && value.Type.IsArray), value.Type.Of};
    typed = true;
  }
  if (typed && Local(name)) {
    Local(name)->Type = type;
    Local(name)->TypeKnown = true;
  }
  return at;
}

void ModuleBinder::ParseNetParameters(std::size_t open, std::size_t close,
                                      const Parameters* parameters) {
  for (std::size_t at = open + 1; at < close;) {
    if (IsMark(at, close, '<')) {
      at = ParseAttributes(at, close);
      continue;
    }
    if (SkipIf(at, close, word::Optional) || SkipIf(at, close, word::ByVal) ||
        SkipIf(at, close, word::ByRef) || SkipIf(at, close, word::ParamArray))
      continue;
    if (!IsWord(at, close)) {
      ++at;
      continue;
    }
    const Parameter* parameter =
        parameters ? parameters->Item(mScopes.Names().TextOf(At(at).Name)) : nullptr;
    const Symbol name = At(at).Name;
    if (mPlace == Place::Procedure && !Local(name))
      AddLocal(name, EntrySort::Parameter, parameter, false);
    const auto record = static_cast<std::int32_t>(mUses.size());
    at = DeclareVariable(at, close, EntrySort::Parameter);
    Of(record).Element = parameter;
    if (IsMark(at, close, '=')) {
      ++at;
      ParseExpression(at, close);
    }
    while (at < close && !IsMark(at, close, ',')) ++at;
  }
}

// "Handles a.Click, MyBase.Load" and "Implements I.Member".
void ModuleBinder::ParseTies(std::size_t at, std::size_t end) {
  while (at < end) {
    const bool handles = IsWord(at, end, word::Handles);
    if (!handles && !IsWord(at, end, word::Implements)) {
      ++at;
      continue;
    }
    Skip(at);
    while (at < end && !IsWord(at, end, word::Implements) && !IsWord(at, end, word::Handles)) {
      if (!IsWord(at, end)) {
        ++at;
        continue;
      }
      const std::size_t before = at, first = mUses.size();
      UseValue value = ParseOperand(at, end);
      if (handles && first < mUses.size() && mUses[first].Kind == UseKind::Read)
        mUses[first].Kind = UseKind::Handle;  // the source
      if (value.Record >= 0)
        Of(value.Record).Kind = handles ? UseKind::Handle : UseKind::Implements;
      if (at == before) ++at;
    }
  }
}

// The procedure or property, of several of one name the overload, whose declaration has its name
// at a place.
const Block* ModuleBinder::NetBlockAt(std::size_t at) const {
  for (const std::uint32_t line : {At(0).Line, At(at).Line}) {
    const auto found = std::lower_bound(mBlocks.begin(), mBlocks.end(), line,
                                        [](const auto& a, std::uint32_t b) { return a.first < b; });
    if (found != mBlocks.end() && found->first == line) return found->second;
  }
  return mModule->Blocks.Item(mScopes.Names().TextOf(At(at).Name));
}

void ModuleBinder::ParseNetProcedure(std::size_t at, std::size_t end, bool hasBody) {
  Skip(at);
  if (at >= end) return;
  const Symbol name = At(at).Name;
  const Block* block = NetBlockAt(at);
  EnterProcedure(block, name);
  if (IsWord(at, end) && name != word::New)
    Of(Declare(at, block, UseAnswer::OwnModule)).Holder = mHolder;
  else if (IsWord(at, end))
    mScan.Tokens[at].Answered = true;
  ++at;
  while (at < end && !IsMark(at, end, '(') && At(at).Kind == TokenKind::Mark) ++at;  // operators
  if (IsWord(at, end, word::Lib))
    while (at < end && !IsMark(at, end, '(')) Skip(at);
  at = ParseTypeParameters(at, end);
  at = InParentheses(at, end, [&](std::size_t open, std::size_t close) {
    ParseNetParameters(open, close, block ? block->Parameters.IfAny() : nullptr);
  });
  at = ParseAs(at, end);
  ParseTies(at, end);
  if (!hasBody) LeaveProcedure();
}

void ModuleBinder::ParseNetProperty(std::size_t at, std::size_t end) {
  Skip(at);
  if (!IsWord(at, end)) return;
  const Symbol name = At(at).Name;
  const Block* block = NetBlockAt(at);
  EnterProcedure(block, name);
  const Entry* entry = mScope->Members.Find(name);
  const CodeElement* element = entry ? entry->Element : block;
  Of(Declare(at, element, UseAnswer::OwnModule)).Holder = mHolder;
  ++at;
  at = InParentheses(at, end, [&](std::size_t open, std::size_t close) {
    ParseNetParameters(open, close, block ? block->Parameters.IfAny() : nullptr);
  });
  if (IsWord(at, end, word::As)) {
    Skip(at);
    if (IsWord(at, end, word::New))
      ParseNew(at, end);
    else
      ParseNetType(at, end, UseKind::Type);
  }
  if (IsMark(at, end, '=')) {
    ++at;
    ParseExpression(at, end);
  }
  ParseTies(at, end);
}

// A local of a name that a block in front has, too; null for another.
const CodeElement* ModuleBinder::NamedLikeBefore(Symbol name, std::uint32_t line) const {
  for (const auto& [same, element] : mSameNamed)
    if (same == name && element->SourceLine() == static_cast<std::int32_t>(line)) return element;
  return nullptr;
}

void ModuleBinder::ParseNetDeclarators(std::size_t at, std::size_t end, bool isConstant) {
  const CodeElement* const holder = mHolder;
  const bool isLocal = mPlace == Place::Procedure;
  while (at < end) {
    if (!IsWord(at, end)) {
      ++at;
      continue;
    }
    const Symbol name = At(at).Name;
    const CodeElement* element = DeclaredBy(name, At(0).Line, isConstant);
    const std::size_t first = mUses.size();
    if (isLocal) {
      // Blocks beside each other may declare one name: from here on it is this one.
      if (const CodeElement* later = NamedLikeBefore(name, At(at).Line)) {
        element = later;
        Local(name)->Element = later;
        Local(name)->TypeKnown = false;
      }
      at = DeclareVariable(at, end, EntrySort::Local);
      Of(static_cast<std::int32_t>(first)).Element = element;
    } else {
      Declare(at, element, UseAnswer::OwnModule);
      if (element) mHolder = element;
      at = DeclareVariable(at, end, EntrySort::Variable);
      mUses.erase(mUses.begin() + static_cast<std::ptrdiff_t>(first) + 1);
    }
    if (IsMark(at, end, '=')) {
      ++at;
      const UseValue value = ParseExpression(at, end);
      Entry* local = Local(name);
      // What stands without a type has that of its value.
      if (local && mScopes.TypeOf(*local).Sort == TypeSort::Late &&
          value.Type.Sort != TypeSort::Plain)
        local->Type = value.Type;
    }
    while (at < end && !IsMark(at, end, ',')) {
      const std::size_t before = at;
      ParseExpression(at, end);
      if (at == before && !IsMark(at, end, ',')) ++at;
    }
    mHolder = holder;
  }
}

}  // namespace vendrel
