#include "text/Blanks.h"

#include <bit>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "core/Ascii.h"

namespace vendrel {
namespace {

// Where two blanks stand together, or the last character where they do nowhere. (A search for
// each blank costs more: they are dense.)
std::size_t TwoBlanks(std::string_view text) {
  std::size_t at = 0;
  const auto here = [&] { return text[at] == ' ' && text[at + 1] == ' '; };
  while (at + 9 <= text.size()) {
    const std::size_t next = at + 8;
    if ((MayBe(EightAt(text, at), ' ') & MayBe(EightAt(text, at + 1), ' ') & kHighBits) != 0)
      for (; at < next; ++at)
        if (here()) return at;
    at = next;
  }
  while (at + 1 < text.size() && !here()) ++at;
  return at;
}

constexpr bool IsMark(char c) {
  return c == '\'' || c == ':' || static_cast<unsigned char>(c) >= 0x80;
}

void LookAtEach(std::string_view text, HeldBytes& held) {
  char before = '\0';
  for (const char c : text) {
    if (c == '\t') held.Tab = true;
    if (c == ' ' && before == ' ') held.TwoBlanks = true;
    if (IsMark(c)) held.Mark = true;
    before = c;
  }
}

}  // namespace

HeldBytes BytesHeldBy(std::string_view text) {
  HeldBytes held;
#ifdef __SSE2__
  if (text.size() >= 16) {
    __m128i tabs = _mm_setzero_si128(), marks = tabs, pairs = tabs;
    const auto look = [&](std::size_t at) {
      const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + at));
      const auto same = [&](char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
      const __m128i blanks = same(' ');
      tabs = _mm_or_si128(tabs, same('\t'));
      marks = _mm_or_si128(marks, _mm_or_si128(bytes, _mm_or_si128(same('\''), same(':'))));
      pairs = _mm_or_si128(pairs, _mm_and_si128(blanks, _mm_srli_si128(blanks, 1)));
    };
    // By fifteen, since the last blank of a step pairs with the first of the next.
    for (std::size_t at = 0; at + 16 < text.size(); at += 15) look(at);
    look(text.size() - 16);
    held.Tab = _mm_movemask_epi8(tabs) != 0;
    held.Mark = _mm_movemask_epi8(marks) != 0;
    held.TwoBlanks = _mm_movemask_epi8(pairs) != 0;
    return held;
  }
#endif
  LookAtEach(text, held);
  return held;
}

std::size_t FirstMark(std::string_view text, std::size_t at) {
#ifdef __SSE2__
  const __m128i apostrophe = _mm_set1_epi8('\''), colon = _mm_set1_epi8(':');
  for (; at + 16 <= text.size(); at += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + at));
    const __m128i marks = _mm_or_si128(
        bytes, _mm_or_si128(_mm_cmpeq_epi8(bytes, apostrophe), _mm_cmpeq_epi8(bytes, colon)));
    const auto found = static_cast<unsigned>(_mm_movemask_epi8(marks));  // beyond ASCII too
    if (found != 0) return at + static_cast<std::size_t>(std::countr_zero(found));
  }
#endif
  while (at < text.size() && !IsMark(text[at])) ++at;
  return at;
}

std::size_t OtherBlankAt(std::string_view text, std::size_t at) {
  const std::string_view two = text.substr(at, 2), three = text.substr(at, 3);
  if (two == "\xC2\xA0") return 2;
  if (three == "\xE3\x80\x80" || three == "\xE2\x80\xAF" || three == "\xE2\x81\x9F") return 3;
  if (three.size() < 3 || !three.starts_with("\xE2\x80")) return 0;
  return static_cast<unsigned char>(three[2]) <= 0x8A ? 3 : 0;
}

std::string_view WithPlainBlanks(std::string_view statement, std::string& buffer) {
  buffer.clear();
  bool inString = false;
  for (std::size_t i = 0; i < statement.size();) {
    const char c = statement[i];
    if (c == '"') inString = !inString;
    const std::size_t blank = inString ? 0 : OtherBlankAt(statement, i);
    buffer.push_back(blank > 0 ? ' ' : c);
    i += blank > 0 ? blank : 1;
  }
  return TrimLeft(buffer);
}

std::string_view Collapsed(std::string_view statement, std::string& buffer) {
  const std::size_t run = TwoBlanks(statement);
  if (run + 1 >= statement.size()) return statement;
  buffer.assign(statement.substr(0, run + 1));
  for (std::size_t i = run + 1; i < statement.size(); ++i) {
    if (statement[i] != ' ' || buffer.back() != ' ') buffer.push_back(statement[i]);
  }
  return buffer;
}

}  // namespace vendrel
