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

// A known word is told by its length and first letters; two words of one slot would only cost the
// sharing of one of them.
constexpr std::size_t Slot(std::string_view text) {
  return (text.size() * 7 + static_cast<unsigned char>(text[0]) * 3 +
          static_cast<unsigned char>(text[1])) &
         127;
}

}  // namespace

SharedText::Node* SharedText::NewNode(std::string_view text) {
  void* memory = std::malloc(sizeof(Node) + text.size());
  if (!memory) throw std::bad_alloc();
  Node* node = new (memory) Node{1, static_cast<unsigned>(text.size())};
  std::memcpy(node + 1, text.data(), text.size());
  return node;
}

void SharedText::Assign(std::string_view text) {
  if (text.empty()) return;
  static const auto known = [] {
    // Kept for the life of the process: texts may outlive every other static object.
    auto* table = new std::array<Node*, 128>{};
    for (const std::string_view word : kKnown) (*table)[Slot(word)] = NewNode(word);
    return table;
  }();
  if (text.size() >= 3 && text.size() <= 10) {
    if (Node* node = (*known)[Slot(text)];
        node && std::string_view(reinterpret_cast<const char*>(node + 1), node->Length) == text) {
      ++node->Uses;
      mNode = node;
      return;
    }
  }
  mNode = NewNode(text);
}

void SharedText::Release() {
  if (mNode && --mNode->Uses == 0) std::free(mNode);
  mNode = nullptr;
}

}  // namespace vendrel
