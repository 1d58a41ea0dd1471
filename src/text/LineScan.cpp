#include "text/LineScan.h"

#include <array>
#include <cstring>

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "text/Blanks.h"
#include "text/Separators.h"

namespace vendrel {
namespace {

enum CharClass : unsigned char { kPlain, kQuote, kApostrophe, kColon, kDigit, kBlank, kHigh };

constexpr std::array<unsigned char, 256> kClasses = [] {
  std::array<unsigned char, 256> classes{};
  classes['"'] = kQuote;
  classes['\''] = kApostrophe;
  classes[':'] = kColon;
  classes[' '] = kBlank;
  for (int c = '0'; c <= '9'; ++c) classes[static_cast<std::size_t>(c)] = kDigit;
  for (int c = 0x80; c <= 0xFF; ++c) classes[static_cast<std::size_t>(c)] = kHigh;
  return classes;
}();

// End of a run of characters that mean nothing to the scan once something but a number has been
// seen.
std::size_t PlainEnd(std::string_view text, std::size_t at, std::size_t end) {
  for (; at + 8 <= end; at += 8) {
    const std::uint64_t eight = EightAt(text, at);
    const std::uint64_t marks = eight | MayBe(eight, '"') | MayBe(eight, '\'') | MayBe(eight, ':');
    if ((marks & kHighBits) != 0) break;
  }
  while (at < end) {
    const unsigned char kind = kClasses[static_cast<unsigned char>(text[at])];
    if (kind != kPlain && kind != kDigit && kind != kBlank) break;
    ++at;
  }
  return at;
}

// The low 8 bits of the first UTF-16 unit of the character at `at`: what the classic scan compares.
unsigned char LowByte(std::string_view text, std::size_t at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  const std::size_t length = CharLength(lead);
  if (lead < 0xC0 || at + length > text.size()) return lead;
  std::uint32_t c = lead & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i)
    c = (c << 6) | (static_cast<unsigned char>(text[at + i]) & 0x3F);
  if (c >= 0x10000) c = 0xD800 + ((c - 0x10000) >> 10);
  return static_cast<unsigned char>(c & 0xFF);
}

// A line at one of its characters.
struct LineWalk {
  std::string_view Text;
  const ScanRules& Rules;
  ScanState& State;

  bool ScanQuote(std::size_t next) const;
  bool IsSeparator(std::size_t at) const;
  bool PartsAtColon(std::size_t at) const;
  bool InBrackets(std::size_t at) const;
};

// Enters or leaves a string. True when the scan goes on elsewhere than behind the quote: two quotes
// behind a closing one are passed over together with the character behind them.
bool LineWalk::ScanQuote(std::size_t next) const {
  State.InString = !State.InString;
  if (State.InString || Rules.Reading.WholeCharacters) return false;
  std::size_t at = next;
  for (int i = 0; i < 2; ++i) {
    if (at >= Text.size()) return false;
    const auto byte = static_cast<unsigned char>(Text[at]);
    if (kClasses[byte < 0x80 ? byte : LowByte(Text, at)] != kQuote) return false;
    at += CharLength(byte);
  }
  if (at < Text.size()) at += CharLength(static_cast<unsigned char>(Text[at]));
  State.At = at;
  return true;
}

bool LineWalk::IsSeparator(std::size_t at) const {
  if (at + 1 >= Text.size() || Text[at + 1] == '=' || at == 0) return false;
  return Rules.SplitAtEveryColon || Text[at - 1] == ' ';
}

// The rule of EverySeparator. Empty statements are none: a colon with another, a comment or nothing
// behind it parts nothing, and neither does one at the front.
bool LineWalk::PartsAtColon(std::size_t at) const {
  if (!Rules.PartLines || at + 1 >= Text.size() || Text[at + 1] == '=') return false;
  const std::size_t behind = Text.find_first_not_of(' ', at + 1);
  if (behind == std::string_view::npos || Text[behind] == ':' || Text[behind] == '\'') return false;
  if (Text[behind] == '_' && behind + 1 == Text.size()) return false;
  const std::size_t from = Text.find_first_not_of(" :", State.Begin);
  if (from >= at || Rules.Statements->StandsInside(Text, at, State.Searched)) return false;
  if (Rules.Reading.RemComments && IsRemark(Text.substr(from))) return false;
  if (!Rules.MayBeginWithLabel || State.HasLabel || !IsLabel(Text.substr(from, at - from)))
    return true;
  State.HasLabel = true;
  State.Begin = at + 1;
  return false;
}

// An apostrophe in the name "[it's]" begins no comment.
bool LineWalk::InBrackets(std::size_t at) const {
  if (!Rules.Reading.BracketedNames || std::memchr(Text.data(), '[', at) == nullptr) return false;
  return Rules.Statements->StandsInside(Text, at, State.Searched);
}

}  // namespace

void ScanLine(std::string_view text, std::size_t end, const ScanRules& rules, ScanState& s,
              ScanState& beforeComment) {
  const LineWalk walk{text, rules, s};
  while (s.What == ScanState::Found::Nothing && s.At < end) {
    const auto byte = static_cast<unsigned char>(text[s.At]);
    unsigned char kind = kClasses[byte];
    if (kind == kPlain) {
      s.SeenOther = true;
      s.At = PlainEnd(text, s.At + 1, end);
      continue;
    }
    const bool seenOther = s.SeenOther;
    std::size_t next = s.At + 1;
    if (kind == kHigh) {
      next = s.At + CharLength(byte);
      const unsigned char low = rules.Reading.WholeCharacters ? byte : LowByte(text, s.At);
      kind = kClasses[low] == kHigh ? static_cast<unsigned char>(kPlain) : kClasses[low];
      if (rules.Reading.BracketedNames && !s.InString && OtherBlankAt(text, s.At) > 0)
        s.HasOtherBlanks = true;
    }
    if (kind == kDigit) {
      if (!s.SeenOther) s.SeenDigit = true;
    } else if (kind == kBlank) {
      if (s.SeenDigit && !s.SeenOther) {
        TakeLineNumber(text, rules);
        if (s.Begin == 0 && rules.MayBeginWithLabel && rules.PartsEvery()) s.Begin = s.At + 1;
      }
    } else {
      s.SeenOther = true;
    }
    if (kind == kQuote && walk.ScanQuote(next)) continue;
    if (!s.InString && kind == kApostrophe && !walk.InBrackets(s.At)) {
      beforeComment = s;
      beforeComment.SeenOther = seenOther;
      s.What = ScanState::Found::Comment;
      s.Where = s.At;
      s.TextFrom = next;
      return;
    }
    if (!s.InString && kind == kColon &&
        (rules.Reading.EverySeparator ? walk.PartsAtColon(s.At) : walk.IsSeparator(s.At))) {
      s.What = ScanState::Found::Separator;
      s.Where = s.At;
      return;
    }
    s.At = next;
  }
}

void TakeLineNumber(std::string_view text, const ScanRules& rules) {
  if (!rules.RaiseLineNumber) return;
  std::int64_t number = 0;
  for (const char c : text) {
    if (!IsDigitAscii(c)) break;
    number = number * 10 + (c - '0');
    if (number > 2147483637) return;  // no further number would fit
  }
  State().RaiseLineNumber(static_cast<std::int32_t>(number));
}

bool IsRemark(std::string_view text) {
  return StartsWithNoCaseAscii(text, "REM") && (text.size() == 3 || text[3] == ' ');
}

}  // namespace vendrel
