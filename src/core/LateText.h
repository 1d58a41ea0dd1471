#pragma once
// Text that most elements do not have: descriptions. One pointer wide until there is some.

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

namespace vendrel {

/// Assign any text to it and read it as a string_view; `Edit` gives the text for changing in place,
/// as appending line by line does.
class LateText {
 public:
  LateText() = default;
  LateText(std::string_view text) { *this = text; }  // NOLINT: reads like a string
  LateText(const LateText& other) { *this = other.view(); }
  LateText(LateText&&) noexcept = default;
  ~LateText() = default;
  LateText& operator=(LateText&&) noexcept = default;
  LateText& operator=(const LateText& other) {
    if (this != &other) *this = other.view();
    return *this;
  }
  LateText& operator=(std::string_view text) {
    mText = text.empty() ? nullptr : std::make_unique<std::string>(text);
    return *this;
  }
  LateText& operator=(std::string&& text) {
    mText = text.empty() ? nullptr : std::make_unique<std::string>(std::move(text));
    return *this;
  }
  LateText& operator=(const std::string& text) { return *this = std::string_view(text); }
  LateText& operator=(const char* text) { return *this = std::string_view(text); }

  std::string_view view() const { return mText ? std::string_view(*mText) : std::string_view(); }
  operator std::string_view() const { return view(); }  // NOLINT
  std::string str() const { return std::string(view()); }
  bool empty() const { return !mText || mText->empty(); }
  std::size_t size() const { return mText ? mText->size() : 0; }
  /// Empties it and gives its memory back.
  void clear() { mText.reset(); }
  std::string& Edit() {
    if (!mText) mText = std::make_unique<std::string>();
    return *mText;
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
  std::unique_ptr<std::string> mText;
};

}  // namespace vendrel
