#include "core/SharedText.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <new>

namespace vendrel {
namespace {

constexpr std::array kKnown{
    std::string_view("PUBLIC"),  std::string_view("PRIVATE"),  std::string_view("FRIEND"),
    std::string_view("Long"),    std::string_view("String"),   std::string_view("Integer"),
    std::string_view("Boolean"), std::string_view("Variant"),  std::string_view("Double"),
    std::string_view("Single"),  std::string_view("Date"),     std::string_view("Object"),
    std::string_view("Byte"),    std::string_view("Currency"), std::string_view("Collection"),
    std::string_view("Control"), std::string_view("Any"),      std::string_view("PROTECTED"),
};

constexpr std::size_t kSlots = 128;  // far more than words: a look-up ends at its first step

constexpr std::size_t Slot(std::string_view text) {
  return (text.size() * 7 + static_cast<unsigned char>(text[0]) * 3 +
          static_cast<unsigned char>(text[1])) &
         (kSlots - 1);
}

}  // namespace

SharedText::Node* SharedText::NewNode(std::string_view text) {
  void* memory = std::malloc(sizeof(Node) + text.size());
  if (!memory) throw std::bad_alloc();
  Node* node = new (memory) Node{1, static_cast<unsigned>(text.size())};
  std::memcpy(node + 1, text.data(), text.size());
  return node;
}

std::string_view SharedText::TextOf(const Node* node) {
  return {reinterpret_cast<const char*>(node + 1), node->Length};
}

void SharedText::Assign(std::string_view text) {
  if (text.empty()) return;
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
  if (text.size() >= 3 && text.size() <= 10) {
    for (std::size_t slot = Slot(text); (*known)[slot]; slot = (slot + 1) & (kSlots - 1)) {
      const Node* node = (*known)[slot];
      if (node->Length != text.size() || TextOf(node) != text) continue;
      mNode = (*known)[slot];
      return;
    }
  }
  mNode = NewNode(text);
}

void SharedText::Release() {
  if (mNode && mNode->Uses != kImmortal && --mNode->Uses == 0) std::free(mNode);
  mNode = nullptr;
}

}  // namespace vendrel
