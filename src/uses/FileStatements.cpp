// Statements that read and write files.

#include <algorithm>

#include "uses/ModuleBinder.h"

namespace vendrel {

// Open name For mode [Access ...] [Lock ...] As [#]number [Len = length]
void ModuleBinder::ParseOpen(std::size_t from, std::size_t end) {
  const std::size_t mode = FindWord(from, end, word::For);
  const std::size_t as = FindWord(from, end, word::As);
  std::size_t at = from;
  const std::size_t nameEnd = std::min(mode, as);
  ParseArguments(at, nameEnd, {});
  SkipAll(nameEnd, as);
  at = as;
  SkipIf(at, end, word::As);
  const std::size_t length = FindWord(at, end, word::Len);
  ParseArguments(at, length, {});
  at = length;
  if (!SkipIf(at, end, word::Len)) return;
  if (IsMark(at, end, '=')) ++at;
  ParseList(at, end);
}

// Get #number, position, variable
void ModuleBinder::ParseGet(std::size_t from, std::size_t end) {
  std::size_t at = from;
  for (int comma = 0; at < end && comma < 2;) {
    const std::size_t before = at;
    ParseExpression(at, end);
    if (IsMark(at, end, ',')) {
      ++comma;
      ++at;
    } else if (at == before) {
      ++at;
    }
  }
  ParseTargets(at, end);
}

bool ModuleBinder::ParseInputOutput(std::size_t from, std::size_t end) {
  const std::size_t next = from + 1;
  const bool assigns = IsMark(next, end, '=') || IsMark(next, end, '.');
  switch (At(from).Name) {
    case word::Open:
      if (assigns || FindWord(next, end, word::As) == end) return false;
      break;
    case word::Close:
    case word::Get:
    case word::Put:
    case word::Seek:
    case word::Lock:
    case word::Unlock:
    case word::Write:
      if (assigns || IsMark(next, end, '(')) return false;
      break;
    case word::Input:
    case word::Print:
    case word::Width:
      if (!IsMark(next, end, '#')) return false;
      break;
    case word::Line:
      if (!IsWord(next, end, word::Input)) return false;
      break;
    case word::Name:
      if (assigns || FindWord(next, end, word::As) == end) return false;
      break;
    default: return false;
  }
  const Symbol first = At(from).Name;
  std::size_t at = from;
  Skip(at);
  if (first == word::Open) {
    ParseOpen(at, end);
  } else if (first == word::Get) {
    ParseGet(at, end);
  } else if (first == word::Input || first == word::Line) {
    SkipIf(at, end, word::Input);
    ParseExpression(at, end);
    ParseTargets(at, end);
  } else if (first == word::Name) {
    const std::size_t as = FindWord(at, end, word::As);
    ParseList(at, as);
    at = as;
    SkipIf(at, end, word::As);
    ParseList(at, end);
  } else {
    ParseList(at, end);
  }
  return true;
}

}  // namespace vendrel
