// Statements that decide, repeat and jump.

#include <algorithm>

#include "uses/ModuleBinder.h"

namespace vendrel {

void ModuleBinder::ParseIf(std::size_t from, std::size_t end) {
  std::size_t at = from;
  const std::size_t then = FindWord(at, end, word::Then);
  while (at < then) {
    const std::size_t before = at;
    ParseExpression(at, then);
    if (at == before) ++at;
  }
  at = then;
  if (!SkipIf(at, end, word::Then) || at >= end) return;
  // "If a Then 100" goes to a line.
  if (At(at).Kind == TokenKind::Number) ++at;
  ParseStatement(at, end);
}

void ModuleBinder::ParseFor(std::size_t from, std::size_t end) {
  std::size_t at = from;
  const bool each = SkipIf(at, end, word::Each);
  if (!IsWord(at, end) && !IsMemberMark(at, end, false)) return ParseList(at, end);
  UseValue counter = ParseChain(at, end, false);
  MarkWrite(counter, true);
  ParseForRange(at, end, each);
}

void ModuleBinder::ParseForRange(std::size_t at, std::size_t end, bool each) {
  if (each) {
    SkipIf(at, end, word::In);
    return ParseList(at, end);
  }
  if (IsMark(at, end, '=')) ++at;
  mStepEnds = true;
  ParseExpression(at, end);
  SkipIf(at, end, word::To);
  ParseExpression(at, end);
  SkipIf(at, end, word::Step);
  mStepEnds = false;
  ParseList(at, end);
}

void ModuleBinder::ParseSelect(std::size_t from, std::size_t end) {
  std::size_t at = from;
  if (IsWord(at, end, word::Case)) Skip(at);
  while (at < end) {
    UseValue value = ParseExpression(at, end);
    ReadDefault(value);
    if (at < end) ++at;
  }
}

// A list of labels and line numbers.
void ModuleBinder::ParseLabels(std::size_t from, std::size_t end) {
  for (std::size_t at = from; at < end; ++at) {
    if (!IsWord(at, end)) continue;
    if (IsWord(at, end, word::Else)) return ParseStatement(at, end);
    if (IsWord(at, end, word::Next) || At(at).Answered)
      mScan.Tokens[at].Answered = true;
    else
      AddUse(at, UseKind::Read, UseAnswer::Label);
  }
}

void ModuleBinder::ParseOn(std::size_t from, std::size_t end) {
  std::size_t at = from;
  if (IsWord(at + 1, end, word::Error) && mScopes.Names().TextOf(At(at).Name) == "local") Skip(at);
  if (IsWord(at, end, word::Error)) {
    Skip(at);
    if (SkipIf(at, end, word::Resume)) return SkipAll(at, end);
    if (SkipIf(at, end, word::GoTo)) return ParseLabels(at, end);
    return ParseList(at, end);
  }
  ParseExpression(at, end);
  if (SkipIf(at, end, word::GoTo) || SkipIf(at, end, word::GoSub)) ParseLabels(at, end);
}

void ModuleBinder::ParseWith(std::size_t from, std::size_t end) {
  std::size_t at = from;
  WithFrame frame;
  frame.Value = ParseExpression(at, end);
  const UseValue& value = frame.Value;
  if (value.IsStorage && value.Type.Sort == TypeSort::Structure && value.Record >= 0) {
    for (std::int32_t part = value.Record; part >= 0; part = Of(part).Path)
      frame.Path.push_back(Of(part));
  }
  mWith.push_back(std::move(frame));
  ParseList(at, end);
}

bool ModuleBinder::ParseControlFlow(std::size_t from, std::size_t end) {
  std::size_t at = from;
  switch (At(from).Name) {
    case word::If:
    case word::ElseIf:
      Skip(at);
      ParseIf(at, end);
      return true;
    case word::Else:
      Skip(at);
      if (at < end) ParseStatement(at, end);
      return true;
    case word::For:
      Skip(at);
      ParseFor(at, end);
      return true;
    case word::Select:
    case word::Case:
      Skip(at);
      ParseSelect(at, end);
      return true;
    case word::Next:
      Skip(at);
      ParseList(at, end);
      return true;
    case word::Do:
    case word::Loop:
    case word::While:
    case word::Wend:
      Skip(at);
      if (!SkipIf(at, end, word::While)) SkipIf(at, end, word::Until);
      while (at < end) {
        UseValue value = ParseExpression(at, end);
        ReadDefault(value);
        if (at < end) ++at;
      }
      return true;
    case word::With:
      Skip(at);
      ParseWith(at, end);
      return true;
    case word::On:
      Skip(at);
      ParseOn(at, end);
      return true;
    case word::GoTo:
    case word::GoSub:
    case word::Resume:
      Skip(at);
      ParseLabels(at, end);
      return true;
    case word::Exit:
      Skip(at);
      SkipAll(at, std::min(at + 1, end));
      return true;
    case word::Stop:
    case word::Return:
      Skip(at);
      ParseList(at, end);
      return true;
    case word::EndIf: Skip(at); return true;
    default: return false;
  }
}

}  // namespace vendrel
