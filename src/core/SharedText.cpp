#include "core/SharedText.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "core/Workspace.h"

namespace vendrel {
namespace {

// Longer ones than stand in the word itself.
constexpr std::array kKnown{
    std::string_view("PRIVATE"),    std::string_view("Integer"),   std::string_view("Boolean"),
    std::string_view("Variant"),    std::string_view("Currency"),  std::string_view("Control"),
    std::string_view("Collection"), std::string_view("PROTECTED"),
};

constexpr std::size_t kSlots = 128;  // far more than words: a look-up ends at its first step
constexpr std::size_t kPooled = 40;  // longer texts than names are seldom equal

constexpr std::size_t Slot(std::string_view text) {
  return (text.size() * 7 + static_cast<unsigned char>(text[0]) * 3 +
          static_cast<unsigned char>(text[1])) &
         (kSlots - 1);
}

}  // namespace

SharedText::Node* SharedText::NewNode(std::string_view text) {
  void* memory = std::malloc(sizeof(Node) + text.size() + 1);
  if (!memory) throw std::bad_alloc();
  Node* node = new (memory) Node{1, static_cast<unsigned>(text.size())};
  char* characters = reinterpret_cast<char*>(node + 1);
  std::memcpy(characters, text.data(), text.size());
  characters[text.size()] = 0;
  return node;
}

void SharedText::Assign(std::string_view text) {
  if (text.size() <= kInside) {
    if (text.empty()) return;
    char bytes[sizeof mWord] = {static_cast<char>(text.size() << 1 | 1)};
    std::memcpy(bytes + 1, text.data(), text.size());
    std::memcpy(&mWord, bytes, sizeof mWord);
    return;
  }
  // Kept for the life of the process: texts may outlive every other static object.
  static const auto known = [] {
    auto* table = new std::array<Node*, kSlots>{};
    for (const std::string_view word : kKnown) {
      std::size_t slot = Slot(word);
      while ((*table)[slot]) slot = (slot + 1) & (kSlots - 1);
      (*table)[slot] = NewNode(word);
      (*table)[slot]->Uses = kImmortal;
    }
    return table;
  }();
  if (text.size() <= 10) {
    for (std::size_t slot = Slot(text); Node* node = (*known)[slot];
         slot = (slot + 1) & (kSlots - 1)) {
      if (text != std::string_view(TextOf(node), node->Length)) continue;
      mWord = reinterpret_cast<std::uintptr_t>(node);
      return;
    }
  }
  TextPool* pool = Workspace::Current().Texts;
  if (pool && text.size() <= kPooled) {
    SharedText& met = pool->mTexts[TextPool::PlaceOf(text)];
    if (met != text) met = SharedText(NewNode(text));
    *this = met;
    return;
  }
  mWord = reinterpret_cast<std::uintptr_t>(NewNode(text));
}

void SharedText::Release() {
  Node* node = NodeOf();
  if (node->Uses != kImmortal && --node->Uses == 0) std::free(node);
}

std::size_t TextPool::PlaceOf(std::string_view text) {
  const auto four = [&](std::size_t at) {
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, text.data() + at, sizeof bytes);
    return bytes;
  };
  std::uint64_t mixed =
      (std::uint64_t{four(0)} << 32 | four(text.size() - 4)) * 0x9E3779B97F4A7C15u;
  mixed = (mixed ^ (mixed >> 29) ^ four(text.size() / 2 - 2) ^ text.size()) * 0xBF58476D1CE4E5B9u;
  return mixed >> (64 - 9);
}

TextPool::TextPool() : mOuter(std::exchange(Workspace::Current().Texts, this)) {}
TextPool::~TextPool() { Workspace::Current().Texts = mOuter; }

}  // namespace vendrel
