#include "text/LineGlance.h"

#include <bit>
#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace vendrel {

#ifdef __SSE2__
namespace {

constexpr bool kGlancesAreQuick = true;

// Sixteen bytes of the glance, `At` bytes from its beginning.
template <std::size_t At>
void Look(const char* text, LineGlance& glance) {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + At));
  const auto same = [&](char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
  const auto places = [](__m128i found) {
    return static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(found))) << At;
  };
  const __m128i tabs = same('\t');
  glance.Feeds |= places(same('\n'));
  glance.Gaps |= places(_mm_or_si128(same(' '), tabs));
  glance.Tabs |= places(tabs);
  glance.Quotes |= places(same('"'));
  // The mask takes the high bits, which bytes beyond ASCII have of their own.
  glance.Marks |= places(_mm_or_si128(bytes, _mm_or_si128(same('\''), same(':'))));
}

// The same with registers twice as wide, where the processor has them. (No lambdas: they would not
// be compiled for it.)
__attribute__((target("avx2"))) inline std::uint64_t WidePlaces(__m256i low, __m256i high) {
  return static_cast<unsigned>(_mm256_movemask_epi8(low)) |
         std::uint64_t{static_cast<unsigned>(_mm256_movemask_epi8(high))} << 32;
}
__attribute__((target("avx2"))) inline __m256i WideSame(__m256i bytes, char c) {
  return _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8(c));
}
__attribute__((target("avx2"))) inline __m256i WideMarks(__m256i bytes) {
  return _mm256_or_si256(bytes, _mm256_or_si256(WideSame(bytes, '\''), WideSame(bytes, ':')));
}
__attribute__((target("avx2"))) void WideGlanceAt(const char* text, LineGlance& glance) {
  const __m256i low = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text));
  const __m256i high = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text + 32));
  glance.Feeds = WidePlaces(WideSame(low, '\n'), WideSame(high, '\n'));
  glance.Tabs = WidePlaces(WideSame(low, '\t'), WideSame(high, '\t'));
  glance.Gaps = glance.Tabs | WidePlaces(WideSame(low, ' '), WideSame(high, ' '));
  glance.Quotes = WidePlaces(WideSame(low, '"'), WideSame(high, '"'));
  glance.Marks = WidePlaces(WideMarks(low), WideMarks(high));
}

}  // namespace

void GlanceAt(const char* text, LineGlance& glance) {
  static_assert(kGlance == 64);
  if (__builtin_cpu_supports("avx2")) return WideGlanceAt(text, glance);
  glance = {};
  Look<0>(text, glance);
  Look<16>(text, glance);
  Look<32>(text, glance);
  Look<48>(text, glance);
}
#else
namespace {
constexpr bool kGlancesAreQuick = false;
}  // namespace

void GlanceAt(const char* text, LineGlance& glance) {
  glance = {};
  for (std::size_t at = 0; at < kGlance; ++at) {
    const char c = text[at];
    const std::uint64_t place = std::uint64_t{1} << at;
    if (c == '\n') glance.Feeds |= place;
    if (c == ' ' || c == '\t') glance.Gaps |= place;
    if (c == '\t') glance.Tabs |= place;
    if (c == '"') glance.Quotes |= place;
    if (c == '\'' || c == ':' || static_cast<unsigned char>(c) >= 0x80) glance.Marks |= place;
  }
}
#endif

bool GlanceAtLine(std::string_view text, GlancedLine& line) {
  if (!kGlancesAreQuick || text.size() < kGlance) return false;
  GlanceAt(text.data(), line.Glance);
  if (line.Glance.Feeds == 0) return false;
  const auto feed = static_cast<std::size_t>(std::countr_zero(line.Glance.Feeds));
  const bool hasReturn = feed > 0 && text[feed - 1] == '\r';
  line.Line = {text.data(), hasReturn ? feed - 1 : feed};
  line.Bytes = feed + 1;
  return true;
}

}  // namespace vendrel
