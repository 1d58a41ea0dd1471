// VB.NET: statements that open and close types, declare members, and those that the older language
// has not.

#include <algorithm>

#include "core/Ascii.h"
#include "text/Identifiers.h"
#include "uses/ModuleBinder.h"

namespace vendrel {
namespace {

bool IsAccess(Symbol name) {
  switch (name) {
    case word::Public:
    case word::Private:
    case word::Protected:
    case word::Friend:
    case word::Shared:
    case word::Shadows:
    case word::Overloads:
    case word::Overridable:
    case word::NotOverridable:
    case word::MustOverride:
    case word::Overrides:
    case word::ReadOnly:
    case word::WriteOnly:
    case word::Default:
    case word::Partial:
    case word::MustInherit:
    case word::NotInheritable:
    case word::WithEvents:
    case word::Async:
    case word::Iterator:
    case word::Custom:
    case word::Narrowing:
    case word::Widening: return true;
    default: return false;
  }
}

bool OpensType(Symbol name) {
  return name == word::Class || name == word::Structure || name == word::Interface ||
         name == word::Module || name == word::Enum;
}

}  // namespace

void ModuleBinder::IndexNetBlocks() {
  const SourceText* source = mModule->SourceForm.get();
  const auto addBlock = [this](const Block& block) {
    if (!block.Name().empty())
      mBlocks.emplace_back(static_cast<std::uint32_t>(block.SourceLine()), &block);
  };
  for (const Component& module : std::as_const(*mProject.Project).Components.Listed()) {
    if (module.SourceForm.get() != source) continue;
    mTypeLines.emplace_back(static_cast<std::uint32_t>(module.SourceLine()), &module);
    for (const Block& block : module.Blocks) {
      if (!block.InheritedFrom().empty()) continue;
      addBlock(block);
      if (const Blocks* overloads = block.OverloadBlocks().IfAny())
        for (const Block& overload : *overloads) addBlock(overload);
    }
  }
  const auto byLine = [](const auto& a, const auto& b) { return a.first < b.first; };
  std::stable_sort(mBlocks.begin(), mBlocks.end(), byLine);
  std::stable_sort(mTypeLines.begin(), mTypeLines.end(), byLine);
}

void ModuleBinder::UseModule(const Component* module) {
  mModule = module;
  mScope = &mScopes.Of(*module);
  LeaveProcedure();
}

void ModuleBinder::EnterType(std::size_t at, std::size_t end) {
  const std::uint32_t line = At(0).Line;
  const Component* type = nullptr;
  for (const auto& [start, module] : mTypeLines) {
    const std::size_t dot = module->Name.rfind('.');
    const std::string_view own =
        std::string_view(module->Name).substr(dot == std::string::npos ? 0 : dot + 1);
    if (mScopes.Names().Of(own.substr(0, own.find('`'))) != At(at).Name) continue;
    if (start == line || start == At(at).Line || !type) type = module;
    if (start == line || start == At(at).Line) break;
  }
  if (!type) type = mScopes.NetType(*mModule, mScan.TextOf(At(at)));
  mTypes.push_back(type ? type : mModule);
  UseModule(mTypes.back());
  Declare(at, type, UseAnswer::OwnModule);
  ++at;
  at = ParseTypeParameters(at, end);
  if (IsWord(at, end, word::As)) at = ParseAs(at, end);
  ParseList(at, end);
}

void ModuleBinder::LeaveType() {
  const std::size_t depth = mTypes.size();
  mTypeParameters.erase(
      std::remove_if(mTypeParameters.begin(), mTypeParameters.end(),
                     [depth](const auto& parameter) { return parameter.second >= depth; }),
      mTypeParameters.end());
  if (!mTypes.empty()) mTypes.pop_back();
  if (!mTypes.empty()) UseModule(mTypes.back());
}

// Gives whether the statement declares a type or member; `at` goes behind modifiers.
bool ModuleBinder::ParseNetDeclaration(std::size_t& at, std::size_t end) {
  bool modified = false, declares = false, hasBody = true;
  while (IsWord(at, end) && (IsAccess(At(at).Name) || IsWord(at, end, word::Dim) ||
                             IsWord(at, end, word::Static) || IsWord(at, end, word::Const))) {
    const Symbol name = At(at).Name;
    // A name, as in "Custom = 1".
    if (name >= word::FirstOfNet && !IsWord(at + 1, end)) break;
    hasBody &= name != word::MustOverride;
    declares |= name == word::Dim || name == word::Static || name == word::Const;
    modified |= IsAccess(name);
    Skip(at);
  }
  if (!IsWord(at, end)) return modified || declares;
  const Symbol name = At(at).Name;
  const bool named = IsWord(at + 1, end);
  if (modified && !declares && mLambdas == 0 && mPlace == Place::Procedure) LeaveProcedure();
  if (OpensType(name) && named && !declares) {
    Skip(at);
    EnterType(at, end);
    return true;
  }
  hasBody &= !mModule->IsInterface;
  switch (declares ? Symbol{word::None} : name) {
    case word::Sub:
    case word::Function:
    case word::Operator:
      if (!named && name != word::Operator) break;
      ParseNetProcedure(at, end, hasBody);
      return true;
    case word::Property:
      if (!named) break;
      ParseNetProperty(at, end);
      if (!hasBody) LeaveProcedure();
      return true;
    case word::Declare: {
      if (!named) break;
      Skip(at);
      while (IsWord(at + 1, end) && !IsWord(at, end, word::Sub) && !IsWord(at, end, word::Function))
        Skip(at);
      if (IsWord(at, end)) ParseNetProcedure(at, end, false);
      return true;
    }
    case word::Delegate:
      if (!named) break;
      Skip(at);
      if (IsWord(at, end)) ParseNetProcedure(at, end, false);
      return true;
    case word::Event: {
      if (!named) break;
      Skip(at);
      const Entry* event = mScope->Events.Find(At(at).Name);
      Declare(at, event ? event->Element : nullptr, UseAnswer::OwnModule);
      ++at;
      if (IsMark(at, end, '(')) {
        const std::size_t close = CloseOf(at, end);
        ParseNetParameters(at, close, event ? ParametersOf(*event) : nullptr);
        at = close < end ? close + 1 : end;
      }
      at = ParseAs(at, end);
      ParseTies(at, end);
      return true;
    }
    default: break;
  }
  if (!modified && !declares) return false;
  ParseNetDeclarators(at, end, declares);
  return true;
}

void ModuleBinder::ParseNetFor(std::size_t at, std::size_t end) {
  Skip(at);
  const bool each = SkipIf(at, end, word::Each);
  const bool declares =
      IsWord(at, end) && (IsWord(at + 1, end, word::As) ||
                          (!Local(At(at).Name) && !mScope->Members.Find(At(at).Name)));
  if (declares) {
    at = DeclareVariable(at, end, EntrySort::Local);
  } else if (IsWord(at, end) || IsMemberMark(at, end, false)) {
    UseValue counter = ParseChain(at, end, false);
    MarkWrite(counter, true);
  }
  ParseForRange(at, end, each);
}

// A list of types or namespaces.
void ModuleBinder::ParseNames(std::size_t at, std::size_t end, UseKind kind) {
  while (at < end) {
    if (IsWord(at, end) && IsMark(at + 1, end, '=')) {  // an alias
      AddUse(at, UseKind::Declare, UseAnswer::OwnModule);
      at += 2;
      continue;
    }
    const std::size_t before = at;
    if (IsWord(at, end)) ParseNetType(at, end, kind);
    if (at == before) ++at;
  }
}

// An assignment, also "a += b", or a call.
void ModuleBinder::ParseNetGeneric(std::size_t from, std::size_t end) {
  std::size_t at = from;
  UseValue value = ParseOperand(at, end);
  const bool compound = at + 1 < end && At(at).Kind == TokenKind::Mark &&
                        std::string_view("+-*/\\^&").find(At(at).Mark) != std::string_view::npos &&
                        IsMark(at + 1, end, '=') && !At(at + 1).GapBefore;
  if (compound || IsMark(at, end, '=')) {
    at += compound ? 2 : 1;
    MarkWrite(value, false);
    if (compound && value.Record >= 0) Of(value.Record).Reads = true;
  } else {
    MarkCall(value);
  }
  while (at < end) {
    const std::size_t before = at;
    ParseExpression(at, end);
    if (at == before) ++at;
  }
}

bool ModuleBinder::ParseNetFlow(std::size_t at, std::size_t end) {
  switch (At(at).Name) {
    case word::Imports:
      Skip(at);
      ParseNames(at, end, UseKind::Qualify);
      return true;
    case word::Namespace: SkipAll(at, end); return true;
    case word::Inherits:
      Skip(at);
      ParseNames(at, end, UseKind::Type);
      return true;
    case word::Implements:
      Skip(at);
      ParseNames(at, end, UseKind::Implements);
      return true;
    case word::Catch:
      Skip(at);
      if (IsWord(at, end) && !IsWord(at, end, word::When))
        at = DeclareVariable(at, end, EntrySort::Local);
      SkipIf(at, end, word::When);
      ParseList(at, end);
      return true;
    case word::Try:
    case word::Finally: Skip(at); return true;
    case word::Throw:
    case word::SyncLock:
    case word::Yield:
    case word::Return: {
      if (IsMark(at + 1, end, '=') || IsMark(at + 1, end, '.')) return false;
      Skip(at);
      ParseList(at, end);
      return true;
    }
    case word::Using:
      Skip(at);
      if (IsWord(at, end) && (IsWord(at + 1, end, word::As) || IsMark(at + 1, end, '=')))
        ParseNetDeclarators(at, end, false);
      else
        ParseList(at, end);
      return true;
    case word::Continue: SkipAll(at, end); return true;
    case word::AddHandler:
    case word::RemoveHandler:
      if (IsMark(at + 1, end, '(')) {  // an accessor of a custom event
        Skip(at);
        ParseNetParameters(at, CloseOf(at, end), nullptr);
        return true;
      }
      Skip(at);
      ParseList(at, end);
      return true;
    case word::For: ParseNetFor(at, end); return true;
    case word::Get: {
      if (end > at + 1) return false;
      Skip(at);
      return true;
    }
    case word::Set:
      Skip(at);
      if (IsMark(at, end, '('))
        ParseNetParameters(at, CloseOf(at, end), nullptr);
      else if (!Local(mScopes.Names().Of("value")))
        AddLocal(mScopes.Names().Of("value"), EntrySort::Parameter, nullptr, false);
      return true;
    case word::End:
      Skip(at);
      if (at < end && OpensType(At(at).Name)) {
        SkipAll(at, end);
        LeaveType();
        return true;
      }
      if (IsWord(at, end, word::With) && !mWith.empty()) mWith.pop_back();
      if (IsWord(at, end, word::Sub) || IsWord(at, end, word::Function) ||
          IsWord(at, end, word::Property) || IsWord(at, end, word::Operator)) {
        if (mLambdas > 0)
          --mLambdas;
        else
          LeaveProcedure();
      }
      if (at < end) Skip(at);
      ParseList(at, end);
      return true;
    case word::Option: SkipAll(at, end); return true;
    default: return false;
  }
}

void ModuleBinder::ParseNetStatement(std::size_t from, std::size_t end) {
  std::size_t at = from;
  while (IsMark(at, end, '<')) {  // attributes
    std::size_t close = at;
    while (close < end && !IsMark(close, end, '>')) {
      if (IsMark(close, end, '(')) close = CloseOf(close, end);
      ++close;
    }
    ++at;
    while (at < std::min(close, end)) {
      const std::size_t before = at;
      if (IsWord(at, close) && IsMark(at + 1, close, ':')) ++at;
      ParseExpression(at, close);
      if (at == before) ++at;
    }
    at = std::min(close + 1, end);
  }
  if (at >= end) return;
  if (!mTypes.empty() && mTypes.back()->IsEnumeration && IsWord(at, end) &&
      !IsWord(at, end, word::End)) {
    const Entry* member = mScope->Members.Find(At(at).Name);
    Declare(at, member ? member->Element : nullptr, UseAnswer::EnumMember);
    ++at;
    if (IsMark(at, end, '=')) ++at;
    return ParseList(at, end);
  }
  if (IsWord(at, end) && !At(at).Bracketed)
    if (ParseNetFlow(at, end) || ParseNetDeclaration(at, end)) return;
  if (at < end) ParseStatement(at, end);
}

}  // namespace vendrel
