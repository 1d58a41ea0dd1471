#include "text/net/DeclarationWords.h"

#include <array>
#include <cstdint>

#include "core/Ascii.h"
#include "text/WordList.h"

namespace vendrel {
namespace {

// The words that can begin a declaration, in groups by their first letter.
constexpr std::string_view kDeclarationWordsText =
    "class default dim declare event enum friend function get implements imports inherits "
    "module mustoverride mustinherit namespace notoverridable notinheritable overridable "
    "overrides overloads public private protected property readonly structure start sub set( "
    "shadows shared static writeonly";
constexpr auto kDeclarationWords =
    WordsOf<CountWords(kDeclarationWordsText)>(kDeclarationWordsText);

// For each letter the range of its words in the list above.
struct WordRange {
  std::uint8_t Begin = 0, End = 0;
};

constexpr std::array<WordRange, 26> MakeRanges() {
  std::array<WordRange, 26> ranges{};
  for (std::size_t n = 0; n < std::size(kDeclarationWords); ++n) {
    WordRange& range = ranges[static_cast<std::size_t>(kDeclarationWords[n].front() - 'a')];
    if (range.End == 0) range.Begin = static_cast<std::uint8_t>(n);
    range.End = static_cast<std::uint8_t>(n + 1);
  }
  return ranges;
}

constexpr auto kWordRanges = MakeRanges();

bool StartsWithDeclarationWord(std::string_view text) {
  if (text.empty() || !IsLetterAscii(text.front())) return false;
  const WordRange range = kWordRanges[static_cast<std::size_t>(LowerAscii(text.front()) - 'a')];
  for (std::size_t n = range.Begin; n < range.End; ++n)
    if (StartsWithNoCaseAscii(text, kDeclarationWords[n])) return true;
  return false;
}

}  // namespace

bool MatchesDotNetStatement(std::string_view statement) {
  statement = TrimLeft(statement);
  if (!statement.starts_with('<')) return StartsWithDeclarationWord(statement);
  // ".*" reaches to any ">" of the line, and what follows one is reached by the first "<" already:
  // so the word may stand behind any of them.
  statement = statement.substr(0, statement.find('\n'));
  for (std::size_t close = statement.find('>'); close != std::string_view::npos;
       close = statement.find('>', close + 1)) {
    if (StartsWithDeclarationWord(TrimLeft(statement.substr(close + 1)))) return true;
  }
  return false;
}

}  // namespace vendrel
