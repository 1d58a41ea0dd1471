#pragma once
// Text of which a tree holds many equal copies: access words and type names. One pointer wide;
// equal well-known words share one buffer, so that a million variables of type Long cost no million
// texts.

#include <iosfwd>
#include <string>
#include <string_view>

namespace vendrel {

/// A short immutable text. Assign any text to it; read it as a string_view. Copies of one text
/// belong to one thread, but for the well-known words: those are never counted and never freed.
class SharedText {
 public:
  SharedText() = default;
  SharedText(std::string_view text) { Assign(text); }    // NOLINT: reads like a string
  SharedText(const char* text) { Assign(text); }         // NOLINT
  SharedText(const std::string& text) { Assign(text); }  // NOLINT
  SharedText(const SharedText& other) : mNode(other.mNode) {
    if (mNode && mNode->Uses != kImmortal) ++mNode->Uses;
  }
  SharedText(SharedText&& other) noexcept : mNode(other.mNode) { other.mNode = nullptr; }
  ~SharedText() { Release(); }
  SharedText& operator=(SharedText other) noexcept {
    std::swap(mNode, other.mNode);
    return *this;
  }

  std::string_view view() const { return mNode ? TextOf(mNode) : std::string_view(); }
  operator std::string_view() const { return view(); }  // NOLINT
  std::string str() const { return std::string(view()); }
  bool empty() const { return !mNode; }
  std::size_t size() const { return mNode ? mNode->Length : 0; }

  friend bool operator==(const SharedText& a, const SharedText& b) {
    return a.mNode == b.mNode || a.view() == b.view();
  }
  friend bool operator==(const SharedText& a, std::string_view b) { return a.view() == b; }
  friend bool operator==(const SharedText& a, const char* b) { return a.view() == b; }
  friend bool operator==(const SharedText& a, const std::string& b) { return a.view() == b; }
  friend std::string operator+(const SharedText& a, std::string_view b) {
    return a.str().append(b);
  }
  template <typename Traits>
  friend std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                                      const SharedText& text) {
    return out << text.view();
  }

 private:
  struct Node {
    unsigned Uses;
    unsigned Length;
  };
  /// Number of uses of a node that nobody counts.
  static constexpr unsigned kImmortal = 0;
  static Node* NewNode(std::string_view text);
  static std::string_view TextOf(const Node* node);
  void Assign(std::string_view text);
  void Release();

  Node* mNode = nullptr;
};

}  // namespace vendrel
