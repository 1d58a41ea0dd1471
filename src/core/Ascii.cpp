#include "core/Ascii.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "core/EightBytes.h"

namespace vendrel {

namespace {

#ifdef __SSE2__
constexpr std::size_t kPlaces = 16;
using PlaceBits = unsigned;

// A bit for each of the places from `at` on where `c` may stand in either case; rarely another
// character does.
PlaceBits MayStand(std::string_view text, std::size_t at, char c) {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + at));
  const __m128i same = _mm_cmpeq_epi8(_mm_or_si128(bytes, _mm_set1_epi8(0x20)),
                                      _mm_set1_epi8(static_cast<char>(c | 0x20)));
  return static_cast<PlaceBits>(_mm_movemask_epi8(same));
}
std::size_t FirstPlace(PlaceBits bits) { return static_cast<std::size_t>(std::countr_zero(bits)); }
#else
constexpr std::size_t kPlaces = 8;
using PlaceBits = std::uint64_t;

PlaceBits MayStand(std::string_view text, std::size_t at, char c) {
  return MayBe(EightAt(text, at) | kOnes * 0x20, static_cast<char>(c | 0x20)) & kHighBits;
}
std::size_t FirstPlace(PlaceBits bits) {
  static_assert(std::endian::native == std::endian::little);
  return static_cast<std::size_t>(std::countr_zero(bits)) / 8;
}
#endif

template <typename Bytes>
std::uint64_t BytesAt(const char* text) {
  Bytes bytes;
  std::memcpy(&bytes, text, sizeof bytes);
  return bytes;
}

// One to three characters, some of them twice where there are fewer.
std::uint64_t UpToThree(const char* text, std::size_t count) {
  const auto at = [&](std::size_t place) {
    return std::uint64_t{static_cast<unsigned char>(text[place])};
  };
  return at(0) | at(count / 2) << 8 | at(count - 1) << 16;
}

// Four to eight characters, those in the middle twice where there are fewer.
std::uint64_t UpToEight(const char* text, std::size_t count) {
  return BytesAt<std::uint32_t>(text) | BytesAt<std::uint32_t>(text + count - 4) << 32;
}

}  // namespace

bool SameNoCaseAscii(const char* a, const char* b, std::size_t count) {
  // Where they differ it may be by the case of letters alone.
  const auto same = [](std::uint64_t x, std::uint64_t y) {
    const std::uint64_t differing = x ^ y;
    if ((differing & ~(kOnes * 0x20)) != 0) return false;
    return (differing & ~CaseOfLetters(x)) == 0;
  };
  if (count < 4) return same(UpToThree(a, count), UpToThree(b, count));
  if (count <= 8) return same(UpToEight(a, count), UpToEight(b, count));
  const auto sameAt = [&](std::size_t at) {
    return same(BytesAt<std::uint64_t>(a + at), BytesAt<std::uint64_t>(b + at));
  };
  for (std::size_t at = 0; at + 8 < count; at += 8)
    if (!sameAt(at)) return false;
  return sameAt(count - 8);
}

// Many places are looked at in one step, by the first two characters: one is found too often.
std::size_t FindNoCaseAscii(std::string_view text, std::string_view sought, std::size_t start) {
  if (sought.empty()) return start <= text.size() ? start : std::string_view::npos;
  if (sought.size() > text.size()) return std::string_view::npos;
  const std::size_t last = text.size() - sought.size(), second = sought.size() > 1 ? 1 : 0;
  const auto isAt = [&](std::size_t at) {
    return EqualsNoCaseAscii(text.substr(at, sought.size()), sought);
  };
  const std::size_t reach = kPlaces + second;
  if (text.size() < reach) {
    for (std::size_t at = start; at <= last; ++at)
      if (isAt(at)) return at;
    return std::string_view::npos;
  }
  for (std::size_t i = start; i <= last; i += kPlaces) {
    const std::size_t from = std::min(i, text.size() - reach);  // the last step begins earlier
    PlaceBits bits =
        MayStand(text, from, sought.front()) & MayStand(text, from + second, sought[second]);
    for (; bits != 0; bits &= bits - 1) {
      const std::size_t at = from + FirstPlace(bits);
      if (at >= i && at <= last && isAt(at)) return at;
    }
  }
  return std::string_view::npos;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t start = 0;
  while (!from.empty()) {
    const std::size_t at = text.find(from, start);
    if (at == std::string_view::npos) break;
    result.append(text, start, at - start).append(to);
    start = at + from.size();
  }
  result.append(text, start);
  return result;
}

}  // namespace vendrel
