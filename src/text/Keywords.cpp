#include "text/Keywords.h"

#include <array>
#include <cstdint>
#include <iterator>

#include "core/Ascii.h"
#include "core/Hash.h"

namespace vendrel {
namespace {

// Lists of words stand as one text each, cut at compile time.
constexpr std::size_t CountWords(std::string_view text) {
  std::size_t count = 1;
  for (const char c : text) count += c == ' ';
  return count;
}

template <std::size_t Count>
constexpr std::array<std::string_view, Count> WordsOf(std::string_view text) {
  std::array<std::string_view, Count> words;
  for (std::string_view& word : words) {
    word = text.substr(0, text.find(' '));
    text.remove_prefix(word.size() < text.size() ? word.size() + 1 : word.size());
  }
  return words;
}

constexpr std::string_view kKeywordsText =
    "ABS ALIAS AND ARRAY AS BOOLEAN BYTE BYVAL CALL CASE CLASS CLOSE COLLECTION CONST "
    "CURRENCY DATE DECIMAL DECLARE DEFBOOL DEFBYTE DEFCUR DEFDATE DEFDBL DEFDEC DEFINT DEFLNG "
    "DEFOBJ DEFSNG DEFSTR DEFVAR DIM DO DOEVENTS DOUBLE EACH ELSE ELSEIF END ENUM EQV ERASE "
    "ERROR EVENT EXIT FALSE FIX FOR FUNCTION GET GLOBAL GOSUB GOTO IF IMP IMPLEMENTS IMPORTS "
    "IN INPUT INT INTEGER IS LBOUND LET LIB LIKE LINE LOCK LONG LOOP LSET ME MODULE "
    "MUSTINHERIT NAMESPACE NEW NEXT NOT NOTHING NOTINHERITABLE NOTOVERRIDABLE OBJECT ON OPEN "
    "OPTION OPTIONAL OR OVERLOADS OVERRIDABLE PARAMARRAY PRINT PRIVATE PROPERTY PROTECTED "
    "PUBLIC PUT RAISEEVENT READONLY REDIM RESUME RETURN RSET SEEK SELECT SET SGN SHADOWS "
    "SINGLE SPC STATIC STOP STRING SUB TAB THEN TO TRUE TYPE UBOUND UNLOCK VARIANT VIRTUAL "
    "WEND WHILE WITH WITHEVENTS XOR";
constexpr auto kKeywords = WordsOf<CountWords(kKeywordsText)>(kKeywordsText);
constexpr std::size_t kLongestKeyword = 14;

// Open hashing over the upper-cased letters; 0 marks a free slot, n the n-th keyword.
constexpr std::size_t kSlots = 512;

constexpr std::size_t SlotOf(std::string_view word) {
  TextHash hash;
  for (const char c : word) hash.Add(UpperAscii(c));
  return hash.Value() % kSlots;
}

constexpr std::array<std::uint8_t, kSlots> MakeSlots() {
  std::array<std::uint8_t, kSlots> slots{};
  for (std::size_t n = 0; n < std::size(kKeywords); ++n) {
    std::size_t at = SlotOf(kKeywords[n]);
    while (slots[at] != 0) at = (at + 1) % kSlots;
    slots[at] = static_cast<std::uint8_t>(n + 1);
  }
  return slots;
}

constexpr auto kKeywordSlots = MakeSlots();
static_assert(std::size(kKeywords) < 256);

bool IsKeywordWord(std::string_view word) {
  if (word.empty() || word.size() > kLongestKeyword) return false;
  for (std::size_t at = SlotOf(word); kKeywordSlots[at] != 0; at = (at + 1) % kSlots)
    if (EqualsNoCaseAscii(kKeywords[kKeywordSlots[at] - 1], word)) return true;
  return false;
}

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

bool IsKeyword(std::string_view Keyword, std::size_t& LengthOfWord) {
  LengthOfWord = 0;
  while (LengthOfWord < Keyword.size() && IsLetterAscii(Keyword[LengthOfWord])) ++LengthOfWord;
  if (LengthOfWord < Keyword.size() &&
      std::string_view("(,.-+/*!%^<>?:;").find(Keyword[LengthOfWord]) == std::string_view::npos)
    return false;
  return IsKeywordWord(Keyword.substr(0, LengthOfWord));
}

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
