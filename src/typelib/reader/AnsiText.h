#pragma once
// Texts of a library: bytes in a code page that the file does not record.

#include <array>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vendrel::typelib {

/// The code page that Windows uses for a language; 1252 where the language tells nothing.
int CodePageOfLanguage(unsigned lcid);

/// Gives texts as UTF-8. ASCII stays where it is; other text is converted once for each place and
/// kept in `storage`, up to `budget` bytes in all, which only a damaged file exceeds. Bytes that
/// mean nothing become U+FFFD.
class AnsiText {
 public:
  AnsiText(int codePage, std::deque<std::string>& storage, std::size_t budget);
  ~AnsiText();
  AnsiText(const AnsiText&) = delete;
  AnsiText& operator=(const AnsiText&) = delete;

  /// `bytes` must live as long as the result.
  std::string_view Decode(std::string_view bytes);
  /// Converted text of its own; for texts that stand nowhere in the image.
  std::string Convert(std::string_view bytes);

 private:
  void BuildTable();
  std::string ConvertMultiByte(std::string_view bytes);

  void* mConverter;
  bool mSingleByte = false;
  int mCodePage;
  std::array<std::string, 128> mTable;
  std::deque<std::string>& mStorage;
  std::size_t mBudget;
  std::unordered_map<const char*, std::string_view> mConverted;
};

}  // namespace vendrel::typelib
