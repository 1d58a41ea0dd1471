#include "core/Utf8.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace vendrel {
namespace {

constexpr std::size_t LaneCount = 16;
using Lanes = unsigned char __attribute__((vector_size(LaneCount)));

Lanes Load(const char* at) {
  Lanes lanes;
  std::memcpy(&lanes, at, LaneCount);
  return lanes;
}

std::size_t Sum(Lanes lanes) {
  std::size_t sum = 0;
  for (std::size_t i = 0; i < LaneCount; ++i) sum += lanes[i];
  return sum;
}

bool Any(Lanes lanes) {
  std::uint64_t words[2];
  std::memcpy(words, &lanes, sizeof words);
  return (words[0] | words[1]) != 0;
}

// A comparison of lanes gives all bits where it holds, which is minus one: subtracting it counts.
Lanes Mask(Lanes lanes, char value) {
  return reinterpret_cast<Lanes>(lanes == static_cast<unsigned char>(value));
}

struct LaneCounts {
  Lanes High{}, Nul{}, Cr{}, Lf{}, Pairs{};
  void Add(const char* at) {
    const Lanes now = Load(at), before = Load(at - 1);
    const Lanes lf = Mask(now, '\n');
    High |= now;
    Nul |= Mask(now, '\0');
    Cr -= Mask(now, '\r');
    Lf -= lf;
    Pairs -= lf & Mask(before, '\r');
  }
};

void CountOne(ByteSummary& summary, char before, char now) {
  if (static_cast<unsigned char>(now) >= 0x80) summary.Ascii = false;
  if (now == '\0') summary.HasNul = true;
  if (now == '\r') ++summary.CarriageReturns;
  if (now != '\n') return;
  ++summary.LineFeeds;
  if (before == '\r') ++summary.Pairs;
}

bool IsContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

}  // namespace

ByteSummary SummariseBytes(std::string_view bytes) {
  ByteSummary summary;
  if (bytes.empty()) return summary;
  CountOne(summary, '\0', bytes[0]);
  std::size_t i = 1;
  while (i + LaneCount <= bytes.size()) {
    LaneCounts counts;  // a lane holds at most 255
    for (int round = 0; round < 255 && i + LaneCount <= bytes.size(); ++round, i += LaneCount)
      counts.Add(bytes.data() + i);
    const Lanes highBit = counts.High >> 7;
    if (Any(highBit)) summary.Ascii = false;
    if (Any(counts.Nul)) summary.HasNul = true;
    summary.CarriageReturns += Sum(counts.Cr);
    summary.LineFeeds += Sum(counts.Lf);
    summary.Pairs += Sum(counts.Pairs);
  }
  for (; i < bytes.size(); ++i) CountOne(summary, bytes[i - 1], bytes[i]);
  return summary;
}

std::size_t FirstNonAscii(std::string_view bytes, std::size_t start) {
  constexpr std::uint64_t highBits = 0x8080808080808080u;
  std::size_t i = start;
  while (i + 4 * LaneCount <= bytes.size()) {
    const char* at = bytes.data() + i;
    const Lanes lanes =
        Load(at) | Load(at + LaneCount) | Load(at + 2 * LaneCount) | Load(at + 3 * LaneCount);
    if (Any(lanes >> 7)) break;
    i += 4 * LaneCount;
  }
  for (; i + 8 <= bytes.size(); i += 8) {
    std::uint64_t word;
    std::memcpy(&word, bytes.data() + i, 8);
    if (word & highBits) break;
  }
  while (i < bytes.size() && static_cast<unsigned char>(bytes[i]) < 0x80) ++i;
  return i;
}

std::size_t FirstDirectionControl(std::string_view text, std::size_t start) {
  while (start < text.size()) {
    const void* lead = std::memchr(text.data() + start, 0xE2, text.size() - start);
    if (!lead) break;
    start = static_cast<std::size_t>(static_cast<const char*>(lead) - text.data());
    std::size_t behind = start;
    if (IsDirectionControl(TakeCharacter(text, behind))) return start;
    ++start;
  }
  return text.size();
}

std::string CodePointName(char32_t character) {
  char name[16];
  std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(character));
  return name;
}

char32_t TakeCharacter(std::string_view text, std::size_t& position) {
  const auto byteAt = [&](std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : static_cast<unsigned char>(0);
  };
  const unsigned char a = byteAt(position), b = byteAt(position + 1), c = byteAt(position + 2),
                      d = byteAt(position + 3);
  const std::size_t start = position++;
  if (a < 0x80) return a;
  if (a >= 0xC2 && a <= 0xDF && IsContinuation(b)) {
    position = start + 2;
    return static_cast<char32_t>((a & 0x1F) << 6 | (b & 0x3F));
  }
  if ((a & 0xF0) == 0xE0 && IsContinuation(b) && IsContinuation(c)) {
    const char32_t value = static_cast<char32_t>((a & 0x0F) << 12 | (b & 0x3F) << 6 | (c & 0x3F));
    if (value < 0x800 || (value >= 0xD800 && value <= 0xDFFF)) return IllFormed;
    position = start + 3;
    return value;
  }
  if (a >= 0xF0 && a <= 0xF4 && IsContinuation(b) && IsContinuation(c) && IsContinuation(d)) {
    const char32_t value =
        static_cast<char32_t>((a & 0x07) << 18 | (b & 0x3F) << 12 | (c & 0x3F) << 6 | (d & 0x3F));
    if (value < 0x10000 || value > 0x10FFFF) return IllFormed;
    position = start + 4;
    return value;
  }
  return IllFormed;
}

bool IsValidUtf8(std::string_view bytes) {
  std::size_t i = 0;
  while ((i = FirstNonAscii(bytes, i)) < bytes.size())
    while (i < bytes.size() && static_cast<unsigned char>(bytes[i]) >= 0x80)
      if (TakeCharacter(bytes, i) == IllFormed) return false;
  return true;
}

void AppendUtf8(std::string& out, char32_t c) {
  if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) c = ReplacementCharacter;
  const auto tail = [&](int shift) {
    out.push_back(static_cast<char>(0x80 | ((c >> shift) & 0x3F)));
  };
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (c >> 6)));
    tail(0);
  } else if (c < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (c >> 12)));
    tail(6), tail(0);
  } else {
    out.push_back(static_cast<char>(0xF0 | (c >> 18)));
    tail(12), tail(6), tail(0);
  }
}

bool AppendSanitised(std::string& out, std::string_view bytes) {
  bool clean = true;
  std::size_t i = 0;
  while (i < bytes.size()) {
    const std::size_t start = i;
    if (TakeCharacter(bytes, i) == IllFormed) {
      clean = false;
      AppendUtf8(out, ReplacementCharacter);
    } else {
      out.append(bytes.substr(start, i - start));
    }
  }
  return clean;
}

}  // namespace vendrel
