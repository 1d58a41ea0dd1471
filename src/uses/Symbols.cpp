#include "uses/Symbols.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/EightBytes.h"

namespace vendrel {
namespace {

constexpr std::string_view kWords[] = {
    "",
#define VENDREL_USE_WORD_TEXT(name) #name,
    VENDREL_USE_WORDS(VENDREL_USE_WORD_TEXT) VENDREL_USE_CONVERSIONS(VENDREL_USE_WORD_TEXT)
#undef VENDREL_USE_WORD_TEXT
};

// As much of a name as is folded on the stack; longer ones go the way of those beyond ASCII.
constexpr std::size_t kLongestOnStack = 128;

// High bits in the bytes of `eight`, all of ASCII, that are from `first` to `last`.
constexpr std::uint64_t Between(std::uint64_t eight, char first, char last) {
  const auto from = static_cast<unsigned char>(0x80 - first);
  const auto behind = static_cast<unsigned char>(0x80 - last - 1);
  return (eight + kOnes * from) & ~(eight + kOnes * behind) & kHighBits;
}

// High bits in the bytes that are no part of a name. The characters are folded, and of ASCII.
constexpr std::uint64_t NoNameBytes(std::uint64_t folded) {
  return ~(Between(folded, 'a', 'z') | Between(folded, '0', '9') | Between(folded, '_', '_')) &
         kHighBits;
}

constexpr bool IsByteOfName(char c) {
  return static_cast<unsigned char>(c) >= 0x80 || c == '_' || IsLetterAscii(c) || IsDigitAscii(c);
}

// Eight folded characters after the other, with zeros behind the last.
struct NameHash {
  void Add(std::uint64_t eight) {
    Value = (Value ^ eight) * 0x9E3779B97F4A7C15u;
    Value ^= Value >> 32;
  }
  std::uint64_t Value = 0;
};

std::uint64_t EightOrFewer(std::string_view text) {
  std::uint64_t eight = 0;
  std::memcpy(&eight, text.data(), std::min<std::size_t>(8, text.size()));
  return eight;
}

std::uint64_t HashOf(std::string_view folded) {
  NameHash hash;
  for (std::size_t at = 0; at < folded.size(); at += 8) hash.Add(EightOrFewer(folded.substr(at)));
  return hash.Value;
}

}  // namespace

Symbols::Symbols() : mSlots(4096) {
  mTexts.emplace_back();
  for (std::size_t i = 1; i < std::size(kWords); ++i) Of(kWords[i]);
}

Symbol Symbols::Of(std::string_view name) {
  if (name.empty()) return word::None;
  char folded[kLongestOnStack];
  bool plain = name.size() <= kLongestOnStack;
  for (std::size_t i = 0; plain && i < name.size(); ++i) {
    plain = static_cast<unsigned char>(name[i]) < 0x80;
    folded[i] = LowerAscii(name[i]);
  }
  return plain ? Find({folded, name.size()}) : Find(LowerAscii(FoldKey(name)));
}

Symbols::FrontName Symbols::OfFront(std::string_view text) {
  char folded[kLongestOnStack];
  std::size_t size = 0;
  NameHash hash;
  while (size + 8 <= std::min(text.size(), kLongestOnStack)) {
    std::uint64_t eight = EightAt(text, size);
    if (eight & kHighBits) break;
    eight = LowerEight(eight);
    const std::uint64_t end = NoNameBytes(eight);
    const auto count = static_cast<std::size_t>(std::countr_zero(end)) / 8;  // 8: it goes on
    if (count < 8) eight &= (std::uint64_t{1} << (8 * count)) - 1;
    std::memcpy(folded + size, &eight, sizeof eight);
    size += count;
    if (count > 0) hash.Add(eight);
    if (count == 8) continue;
    if (size == 0) return {word::None, 0};
    return {Find({folded, size}, EightAt({folded, 8}, 0), hash.Value), size};
  }
  while (size < text.size() && IsByteOfName(text[size])) ++size;
  return {Of(text.substr(0, size)), size};
}

Symbol Symbols::Find(std::string_view folded) {
  return Find(folded, EightOrFewer(folded), HashOf(folded));
}

Symbol Symbols::Find(std::string_view folded, std::uint64_t first, std::uint64_t hash) {
  const std::size_t mask = mSlots.size() - 1;
  std::size_t at = hash & mask;
  for (; mSlots[at].Name != word::None; at = (at + 1) & mask) {
    const Slot& slot = mSlots[at];
    if (slot.First == first && slot.Size == folded.size() &&
        (folded.size() <= 8 || mTexts[slot.Name].substr(8) == folded.substr(8)))
      return slot.Name;
  }
  const Symbol symbol = static_cast<Symbol>(mTexts.size());
  mTexts.push_back(mHeld.emplace_back(folded));
  mSlots[at] = {first, static_cast<std::uint32_t>(folded.size()), symbol};
  if (mTexts.size() * 2 > mSlots.size()) Grow();
  return symbol;
}

Symbol Symbols::Compound(Symbol front, char mark, std::uint32_t back) {
  auto& known = mark == '.' ? mJoined : mWithArity;
  const auto [found, isNew] = known.try_emplace(std::uint64_t{front} << 32 | back);
  if (!isNew) return found->second;
  std::string text(TextOf(front));
  text += mark;
  text += mark == '.' ? std::string(TextOf(back)) : std::to_string(back);
  return found->second = Of(text);
}

void Symbols::Grow() {
  std::vector<Slot> old(mSlots.size() * 2);
  old.swap(mSlots);
  const std::size_t mask = mSlots.size() - 1;
  for (const Slot& slot : old) {
    if (slot.Name == word::None) continue;
    std::size_t at = HashOf(mTexts[slot.Name]) & mask;
    while (mSlots[at].Name != word::None) at = (at + 1) & mask;
    mSlots[at] = slot;
  }
}

}  // namespace vendrel
