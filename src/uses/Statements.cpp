// Statements by their first word. Each knows where its expressions stand and what it writes.

#include "uses/ModuleBinder.h"

namespace vendrel {
namespace {

// Statements within each other on one line.
constexpr int kMostStatements = 150;

}  // namespace

std::size_t ModuleBinder::FindWord(std::size_t from, std::size_t end, Symbol name) const {
  int depth = 0;
  for (std::size_t at = from; at < end; ++at) {
    if (IsMark(at, end, '(')) ++depth;
    if (IsMark(at, end, ')')) --depth;
    const bool isMember = at > from && (IsMark(at - 1, end, '.') || IsMark(at - 1, end, '!'));
    if (depth == 0 && !isMember && IsWord(at, end, name)) return at;
  }
  return end;
}

void ModuleBinder::ParseAssignment(std::size_t from, std::size_t end, bool isSet) {
  std::size_t at = from;
  if (!IsWord(at, end) && !IsMemberMark(at, end, false)) return ParseList(at, end);
  UseValue target = ParseChain(at, end, false);
  MarkWrite(target, isSet);
  if (IsMark(at, end, '=')) ++at;
  UseValue value = ParseExpression(at, end);
  if (!isSet) ReadDefault(value);
  ParseList(at, end);
}

// Expressions up to the end, whatever parts them.
void ModuleBinder::ParseList(std::size_t from, std::size_t end) { ParseArguments(from, end, {}); }

// A statement that begins with a name: an assignment or a call.
void ModuleBinder::ParseGeneric(std::size_t from, std::size_t end) {
  if (mIsNet) return ParseNetGeneric(from, end);
  std::size_t at = from;
  if (!IsWord(at, end) && !IsMemberMark(at, end, false)) return ParseList(from, end);
  UseValue value = ParseChain(at, end, true);
  if (IsMark(at, end, '=')) {
    ++at;
    MarkWrite(value, false);
    UseValue right = ParseExpression(at, end);
    ReadDefault(right);
    return ParseList(at, end);
  }
  MarkCall(value);
  Callee callee = CalleeOf(value);
  const std::string_view method =
      value.Record >= 0 ? mScopes.Names().TextOf(Of(value.Record).Name) : std::string_view();
  callee.IsGraphics =
      method == "line" || method == "circle" || method == "pset" || method == "scale";
  ParseArguments(at, end, callee);
}

void ModuleBinder::ParseReDim(std::size_t from, std::size_t end) {
  std::size_t at = from;
  SkipIf(at, end, word::Preserve);
  while (at < end) {
    if (IsMark(at, end, ',')) {
      ++at;
      continue;
    }
    if (!IsWord(at, end) && !IsMemberMark(at, end, false)) {
      ++at;
      continue;
    }
    if (IsWord(at, end, word::Else)) return ParseStatement(at, end);
    const std::size_t name = at;
    const bool isBare = IsWord(at, end) && !IsWord(at, end, word::Me) &&
                        !IsMark(at + 1, end, '.') && !IsMark(at + 1, end, '!');
    const bool isDeclared = !isBare || Local(At(at).Name) || mScope->Members.Find(At(at).Name) ||
                            mProject.Names.count(At(at).Name) > 0;
    if (!isDeclared && mPlace == Place::Procedure) {  // the only declaration of the array
      AddLocal(At(at).Name, EntrySort::Local, nullptr, false);
      Entry& added = *Local(At(at).Name);
      added.Type = {TypeSort::Late, true, nullptr};
      added.TypeKnown = true;
    }
    UseValue target = ParseChain(at, end, false);
    if (!isDeclared && target.Record >= 0)
      Of(target.Record).Kind = UseKind::Declare;
    else
      MarkWrite(target, true);
    if (IsWord(at, end, word::As)) {
      at = ParseAs(at, end);
    } else if (at == name) {
      ++at;
    }
  }
}

void ModuleBinder::ParseRaise(std::size_t from, std::size_t end) {
  if (!IsWord(from, end)) return;
  const Entry* event = mScope->Events.Find(At(from).Name);
  const std::int32_t record =
      AddUse(from, UseKind::Raise, event ? UseAnswer::OwnModule : UseAnswer::Unknown);
  Callee callee;
  callee.Record = record;
  if (event) {
    Of(record).Element = event->Element;
    callee.Declared = ParametersOf(*event);
  }
  std::size_t at = from + 1;
  if (IsMark(at, end, '(')) {
    const std::size_t close = CloseOf(at, end);
    ParseArguments(at + 1, close, callee);
    at = close < end ? close + 1 : end;
  }
  ParseList(at, end);
}

// Mid(text, start, length) = value: the first argument is written.
bool ModuleBinder::ParseMidTarget(std::size_t from, std::size_t end) {
  if (!(IsWord(from, end, word::Mid) || IsWord(from, end, word::MidB))) return false;
  if (!IsMark(from + 1, end, '(') || Local(At(from).Name) || mScope->Members.Find(At(from).Name))
    return false;
  const std::size_t close = CloseOf(from + 1, end);
  if (!IsMark(close + 1, end, '=')) return false;
  std::size_t at = from;
  BindName(at);
  at = from + 2;
  if (IsWord(at, close) || IsMemberMark(at, close, false)) {
    UseValue target = ParseChain(at, close, false);
    MarkWrite(target, true);
  }
  ParseList(at, close);
  at = close + 2;
  UseValue value = ParseExpression(at, end);
  ReadDefault(value);
  ParseList(at, end);
  return true;
}

bool ModuleBinder::ParseKeyword(std::size_t from, std::size_t end) {
  std::size_t at = from;
  switch (At(from).Name) {
    case word::End:
      Skip(at);
      if (SkipIf(at, end, word::With) && !mWith.empty()) mWith.pop_back();
      if (IsWord(at, end, word::Sub) || IsWord(at, end, word::Function) ||
          IsWord(at, end, word::Property))
        LeaveProcedure();
      if (IsWord(at, end, word::Else)) {
        ParseStatement(at, end);
        return true;
      }
      SkipAll(at, end);
      return true;
    case word::Set:
    case word::LSet:
    case word::RSet:
      Skip(at);
      ParseAssignment(at, end, true);
      return true;
    case word::Let:
      Skip(at);
      ParseAssignment(at, end, false);
      return true;
    case word::Call: {
      Skip(at);
      if (!IsWord(at, end) && !IsMemberMark(at, end, false)) return true;
      UseValue value = ParseChain(at, end, false);
      MarkCall(value);
      ParseList(at, end);
      return true;
    }
    case word::RaiseEvent:
      Skip(at);
      ParseRaise(at, end);
      return true;
    case word::ReDim:
      Skip(at);
      ParseReDim(at, end);
      return true;
    case word::Erase:
      Skip(at);
      ParseTargets(at, end);
      return true;
    case word::Option: SkipAll(at, end); return true;
    default:
      if (At(from).Name >= word::DefBool && At(from).Name <= word::DefVar) {
        SkipAll(at, end);
        return true;
      }
      return false;
  }
}

void ModuleBinder::ParseStatement(std::size_t from, std::size_t end) {
  if (mDepth >= kMostStatements) return;
  ++mDepth;
  ParseOneStatement(from, end);
  --mDepth;
}

void ModuleBinder::ParseOneStatement(std::size_t from, std::size_t end) {
  if (mIsNet && from > 0 && IsWord(from, end) && !At(from).Bracketed && ParseNetFlow(from, end))
    return;
  std::size_t at = from;
  if (at < end && At(at).Kind == TokenKind::Number) ++at;  // a line number
  if (at >= end) return;
  // "If a Then b Else c" on one line: what stands behind Else is a statement of its own.
  const bool opensBranch = IsWord(at, end, word::If) || IsWord(at, end, word::ElseIf) ||
                           IsWord(at, end, word::Else) || IsWord(at, end, word::Case) ||
                           IsWord(at, end, word::Select);
  std::size_t stop = opensBranch ? end : FindWord(at, end, word::Else);
  if (stop < end && stop > at) {
    ParseStatement(at, stop);
    ParseStatement(stop, end);
    return;
  }
  if (IsWord(at, end) && !At(at).Bracketed && mIsNet) {
    if (IsMark(at + 1, end, '.') || IsMark(at + 1, end, '=')) return ParseGeneric(at, end);
    if (ParseControlFlow(at, end) || ParseKeyword(at, end) || ParseMidTarget(at, end)) return;
  } else if (IsWord(at, end) && !At(at).Bracketed) {
    if (ParseControlFlow(at, end) || ParseKeyword(at, end) || ParseInputOutput(at, end) ||
        ParseDeclaration(at, end) || ParseMidTarget(at, end))
      return;
  }
  ParseGeneric(at, end);
}

}  // namespace vendrel
