#include "text/Keywords.h"

#include <array>
#include <cstdint>
#include <iterator>

#include "core/Ascii.h"
#include "core/Hash.h"
#include "text/WordList.h"

namespace vendrel {
namespace {

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

}  // namespace

bool IsKeyword(std::string_view Keyword, std::size_t& LengthOfWord) {
  LengthOfWord = 0;
  while (LengthOfWord < Keyword.size() && IsLetterAscii(Keyword[LengthOfWord])) ++LengthOfWord;
  if (LengthOfWord < Keyword.size() &&
      std::string_view("(,.-+/*!%^<>?:;").find(Keyword[LengthOfWord]) == std::string_view::npos)
    return false;
  return IsKeywordWord(Keyword.substr(0, LengthOfWord));
}

}  // namespace vendrel
