#pragma once
// Text of which a tree holds very many: names, types, access words, values. One word wide. Up to
// six characters stand in that word; equal well-known words share one buffer, so that a million
// variables of type Boolean cost no million texts; and what else is copied is counted, not copied.

#include <bit>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace vendrel {

/// A short immutable text. Assign any text to it; read it as a string_view or as a string, whose
/// questions it answers. Views of it end with it, or with what is next assigned to it. Copies of
/// one text belong to one thread, but for the well-known words: those are never counted and never
/// freed.
class SharedText {
 public:
  static constexpr std::size_t npos = std::string_view::npos;
  using value_type = char;

  SharedText() = default;
  SharedText(std::string_view text) { Assign(text); }    // NOLINT: reads like a string
  SharedText(const char* text) { Assign(text); }         // NOLINT
  SharedText(const std::string& text) { Assign(text); }  // NOLINT
  SharedText(const SharedText& other) : mWord(other.mWord) {
    if (HasNode() && NodeOf()->Uses != kImmortal) ++NodeOf()->Uses;
  }
  SharedText(SharedText&& other) noexcept : mWord(std::exchange(other.mWord, 0)) {}
  ~SharedText() {
    if (HasNode()) Release();
  }
  SharedText& operator=(SharedText other) noexcept {
    std::swap(mWord, other.mWord);
    return *this;
  }

  std::string_view view() const {
    return HasNode() ? std::string_view(TextOf(NodeOf()), NodeOf()->Length)
                     : std::string_view(Inside(), InsideLength());
  }
  operator std::string_view() const { return view(); }  // NOLINT
  operator std::string() const { return str(); }        // NOLINT
  std::string str() const { return std::string(view()); }
  /// Ends with a zero character.
  const char* c_str() const { return HasNode() ? TextOf(NodeOf()) : Inside(); }
  const char* data() const { return c_str(); }
  bool empty() const { return mWord == 0; }
  std::size_t size() const { return HasNode() ? NodeOf()->Length : InsideLength(); }
  std::size_t length() const { return size(); }
  void clear() { *this = SharedText(); }
  /// Makes another text.
  SharedText& operator+=(std::string_view more) { return *this = SharedText(str().append(more)); }
  SharedText& operator+=(char more) { return *this += std::string_view(&more, 1); }

  // What is asked of a string.
  const char* begin() const { return c_str(); }
  const char* end() const { return c_str() + size(); }
  char operator[](std::size_t at) const { return c_str()[at]; }
  char at(std::size_t at) const { return view().at(at); }
  char front() const { return view().front(); }
  char back() const { return view().back(); }
  /// A view of this text, as long as it is there.
  std::string_view substr(std::size_t from = 0, std::size_t count = npos) const& {
    return view().substr(from, count);
  }
  std::string substr(std::size_t from = 0, std::size_t count = npos) && {
    return std::string(view().substr(from, count));
  }
  template <typename Sought>
  std::size_t find(const Sought& sought, std::size_t from = 0) const {
    return view().find(sought, from);
  }
  template <typename Sought>
  std::size_t rfind(const Sought& sought, std::size_t from = npos) const {
    return view().rfind(sought, from);
  }
  std::size_t find_first_of(std::string_view any, std::size_t from = 0) const {
    return view().find_first_of(any, from);
  }
  std::size_t find_last_of(std::string_view any, std::size_t from = npos) const {
    return view().find_last_of(any, from);
  }
  template <typename Start>
  bool starts_with(const Start& start) const {
    return view().starts_with(start);
  }
  template <typename End>
  bool ends_with(const End& end) const {
    return view().ends_with(end);
  }
  int compare(std::string_view other) const { return view().compare(other); }

  friend bool operator==(const SharedText& a, const SharedText& b) {
    return a.mWord == b.mWord || a.view() == b.view();
  }
  friend bool operator==(const SharedText& a, std::string_view b) { return a.view() == b; }
  friend bool operator==(const SharedText& a, const char* b) { return a.view() == b; }
  friend bool operator==(const SharedText& a, const std::string& b) { return a.view() == b; }
  friend std::strong_ordering operator<=>(const SharedText& a, const SharedText& b) {
    return a.view() <=> b.view();
  }
  friend std::strong_ordering operator<=>(const SharedText& a, std::string_view b) {
    return a.view() <=> b;
  }
  friend std::strong_ordering operator<=>(const SharedText& a, const char* b) {
    return a.view() <=> std::string_view(b);
  }
  friend std::strong_ordering operator<=>(const SharedText& a, const std::string& b) {
    return a.view() <=> std::string_view(b);
  }

  friend std::string operator+(const SharedText& a, const SharedText& b) {
    return a.str().append(b.view());
  }
  template <typename Text>
  requires(!std::same_as<Text, SharedText> &&
           std::convertible_to<const Text&, std::string_view>) friend std::string
  operator+(const SharedText& a, const Text& b) {
    return a.str().append(std::string_view(b));
  }
  template <typename Text>
  requires(!std::same_as<Text, SharedText> &&
           std::convertible_to<const Text&, std::string_view>) friend std::string
  operator+(const Text& a, const SharedText& b) {
    return std::string(std::string_view(a)).append(b.view());
  }
  friend std::string operator+(std::string&& a, const SharedText& b) {
    return std::move(a.append(b.view()));
  }
  friend std::string operator+(const SharedText& a, char b) { return a.str() + b; }
  friend std::string operator+(char a, const SharedText& b) { return a + b.str(); }

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
  static constexpr std::size_t kInside = 6;  // one byte tells it, one ends it
  static_assert(std::endian::native == std::endian::little,
                "the lowest bit of an address is asked for in the first byte");
  static_assert(sizeof(std::uintptr_t) == 8, "a text of six characters fits into an address");

  explicit SharedText(Node* node) : mWord(reinterpret_cast<std::uintptr_t>(node)) {}
  static Node* NewNode(std::string_view text);
  static const char* TextOf(const Node* node) { return reinterpret_cast<const char*>(node + 1); }
  void Assign(std::string_view text);
  void Release();

  bool HasNode() const { return mWord != 0 && (mWord & 1) == 0; }
  Node* NodeOf() const { return reinterpret_cast<Node*>(mWord); }
  const char* Inside() const { return reinterpret_cast<const char*>(&mWord) + 1; }
  std::size_t InsideLength() const { return (mWord >> 1) & 7; }

  /// 0: empty. With its lowest bit set, the first byte holds the length above that bit and the
  /// others the characters; else the address of a node.
  std::uintptr_t mWord = 0;
};

/// Equal texts that are assigned while one of these is there, by its thread, share their memory.
/// The modules of a project use the same few names over and over; each has its own pool while it is
/// read, for a text belongs to one thread.
class TextPool {
 public:
  TextPool();
  ~TextPool();
  TextPool(const TextPool&) = delete;
  TextPool& operator=(const TextPool&) = delete;

 private:
  friend class SharedText;
  static constexpr std::size_t kPlaces = 512;
  static std::size_t PlaceOf(std::string_view text);
  SharedText mTexts[kPlaces];  // the last one met in each place
  TextPool* mOuter;
};

}  // namespace vendrel

template <>
struct std::hash<vendrel::SharedText> {
  std::size_t operator()(const vendrel::SharedText& text) const noexcept {
    return std::hash<std::string_view>()(text.view());
  }
};
