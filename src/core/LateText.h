#pragma once
// Text that most elements do not have: descriptions. One pointer wide until there is some.

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace vendrel {

/// Assign any text to it and read it as a string_view; `Edit` gives the text for changing in place,
/// as appending line by line does. Once it is edited it keeps room for more, until `Fit`.
class LateText {
 public:
  LateText() = default;
  LateText(std::string_view text) { *this = text; }  // NOLINT: reads like a string
  LateText(const LateText& other) { *this = other.view(); }
  LateText(LateText&& other) noexcept : mWord(std::exchange(other.mWord, 0)) {}
  ~LateText() { Free(mWord); }
  LateText& operator=(LateText&& other) noexcept {
    std::swap(mWord, other.mWord);
    return *this;
  }
  LateText& operator=(const LateText& other) {
    if (this != &other) *this = other.view();
    return *this;
  }
  /// The text may be a part of this one.
  LateText& operator=(std::string_view text) {
    const std::uintptr_t old = std::exchange(mWord, text.empty() ? 0 : Fitting(text));
    Free(old);
    return *this;
  }
  LateText& operator=(const std::string& text) { return *this = std::string_view(text); }
  LateText& operator=(const char* text) { return *this = std::string_view(text); }

  std::string_view view() const {
    if (mWord == 0) return {};
    if (const std::string* edited = Edited(mWord)) return *edited;
    const std::size_t* size = FittingAt(mWord);
    return {reinterpret_cast<const char*>(size + 1), *size};
  }
  operator std::string_view() const { return view(); }  // NOLINT
  std::string str() const { return std::string(view()); }
  bool empty() const { return view().empty(); }
  std::size_t size() const { return view().size(); }
  /// Empties it and gives its memory back.
  void clear() { Free(std::exchange(mWord, 0)); }
  std::string& Edit() {
    if (std::string* edited = Edited(mWord)) return *edited;
    auto edited = std::make_unique<std::string>(view());
    clear();
    mWord = reinterpret_cast<std::uintptr_t>(edited.get());
    return *edited.release();
  }
  /// Gives back the room for more.
  void Fit() {
    if (Edited(mWord)) *this = view();
  }

  friend bool operator==(const LateText& a, const LateText& b) { return a.view() == b.view(); }
  friend bool operator==(const LateText& a, std::string_view b) { return a.view() == b; }
  friend bool operator==(const LateText& a, const char* b) { return a.view() == b; }
  friend bool operator==(const LateText& a, const std::string& b) { return a.view() == b; }
  template <typename Traits>
  friend std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                                      const LateText& text) {
    return out << text.view();
  }

 private:
  // The lowest bit of the word tells a size with the characters behind it from a string.
  static std::string* Edited(std::uintptr_t word) {
    return word & 1 ? nullptr : reinterpret_cast<std::string*>(word);
  }
  static std::size_t* FittingAt(std::uintptr_t word) {
    return reinterpret_cast<std::size_t*>(word - 1);
  }
  static std::uintptr_t Fitting(std::string_view text) {
    auto* size = static_cast<std::size_t*>(::operator new(sizeof(std::size_t) + text.size()));
    *size = text.size();
    text.copy(reinterpret_cast<char*>(size + 1), text.size());
    return reinterpret_cast<std::uintptr_t>(size) + 1;
  }
  static void Free(std::uintptr_t word) {
    if (word & 1)
      ::operator delete(FittingAt(word));
    else
      delete Edited(word);
  }

  std::uintptr_t mWord = 0;
};

}  // namespace vendrel
