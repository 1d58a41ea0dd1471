// VB.NET: statements that open and close types and declare members.

#include <algorithm>

#include "project/ProjectFile.h"
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

}  // namespace

// A part of a type may stand in another file than this.
bool ModuleBinder::StandsHere(const Block& block) const {
  const CodeLines* lines = block.CodeLines.IfAny();
  if (!lines) return block.OwnComponent()->SourceForm.get() == &mSource;
  return lines->SourceText() == &mSource.Text;
}

void ModuleBinder::IndexNetBlocks() {
  const auto addBlock = [this](const Block& block) {
    if (!block.Name().empty() && StandsHere(block))
      mBlocks.emplace_back(static_cast<std::uint32_t>(block.SourceLine()), &block);
  };
  for (const Component& module : mFile->Components) {
    const bool beginsHere = module.SourceForm.get() == &mSource;
    mTypeLines.emplace_back(beginsHere ? static_cast<std::uint32_t>(module.SourceLine()) : 0,
                            &module);
    for (const Block& block : module.Blocks) {
      if (!IsOwnMemberOf(block)) continue;
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
  mNetScope = &mScopes.NetScopeOf(*module, mFile);
  LeaveProcedure();
}

// The type of the file that begins on a line; of another part of it where none does.
const Component* ModuleBinder::TypeAt(std::size_t at) {
  const auto isNamed = [&](const auto& type) {
    const std::string_view name = type.second->Name;
    const std::string_view own = name.substr(name.rfind('.') + 1);
    return mScopes.Names().Of(own.substr(0, own.find('`'))) == At(at).Name;
  };
  for (const std::uint32_t line : {At(0).Line, At(at).Line}) {
    auto type = std::lower_bound(mTypeLines.begin(), mTypeLines.end(), line,
                                 [](const auto& a, std::uint32_t b) { return a.first < b; });
    for (; type != mTypeLines.end() && type->first == line; ++type)
      if (isNamed(*type)) return type->second;
  }
  const auto type = std::find_if(mTypeLines.begin(), mTypeLines.end(), isNamed);
  return type == mTypeLines.end() ? nullptr : type->second;
}

void ModuleBinder::EnterType(std::size_t at, std::size_t end) {
  const Component* type = TypeAt(at);
  if (!type) type = mScopes.NetType(*mModule, mScan.TextOf(At(at)), mFile);
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
  if (word::OpensType(name) && named && !declares) {
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

// "<A(1)> <B>"; gives what stands behind them.
std::size_t ModuleBinder::ParseAttributes(std::size_t at, std::size_t end) {
  while (IsMark(at, end, '<')) {
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
  return at;
}

void ModuleBinder::ParseNetStatement(std::size_t from, std::size_t end) {
  std::size_t at = from;
  at = ParseAttributes(at, end);
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
