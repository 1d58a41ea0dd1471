#include "uses/Symbols.h"

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Hash.h"

namespace vendrel {
namespace {

constexpr std::string_view kWords[] = {
    "",
#define VENDREL_USE_WORD_TEXT(name) #name,
    VENDREL_USE_WORDS(VENDREL_USE_WORD_TEXT) VENDREL_USE_CONVERSIONS(VENDREL_USE_WORD_TEXT)
#undef VENDREL_USE_WORD_TEXT
};

constexpr std::size_t kLongestOnStack = 128;

}  // namespace

Symbols::Symbols() : mSlots(4096) {
  mTexts.emplace_back();
  for (std::size_t i = 1; i < std::size(kWords); ++i) Of(kWords[i]);
}

Symbol Symbols::Of(std::string_view name) {
  if (name.empty()) return word::None;
  char folded[kLongestOnStack];
  TextHash hash;
  bool plain = name.size() <= kLongestOnStack;
  for (std::size_t i = 0; plain && i < name.size(); ++i) {
    plain = static_cast<unsigned char>(name[i]) < 0x80;
    folded[i] = LowerAscii(name[i]);
    hash.Add(folded[i]);
  }
  if (plain) return Find({folded, name.size()}, hash.Value());
  const std::string key = LowerAscii(FoldKey(name));
  hash = TextHash();
  for (const char c : key) hash.Add(c);
  return Find(key, hash.Value());
}

Symbol Symbols::Find(std::string_view folded, std::uint32_t hash) {
  const std::size_t mask = mSlots.size() - 1;
  std::size_t at = hash & mask;
  for (; mSlots[at].Name != word::None; at = (at + 1) & mask)
    if (mSlots[at].Hash == hash && mTexts[mSlots[at].Name] == folded) return mSlots[at].Name;
  const Symbol symbol = static_cast<Symbol>(mTexts.size());
  mTexts.push_back(mHeld.emplace_back(folded));
  mSlots[at] = {hash, symbol};
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
  std::vector<Slot> old(mSlots.size() * 4);
  old.swap(mSlots);
  const std::size_t mask = mSlots.size() - 1;
  for (const Slot& slot : old) {
    if (slot.Name == word::None) continue;
    std::size_t at = slot.Hash & mask;
    while (mSlots[at].Name != word::None) at = (at + 1) & mask;
    mSlots[at] = slot;
  }
}

}  // namespace vendrel
