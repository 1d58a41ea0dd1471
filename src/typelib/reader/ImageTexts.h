#pragma once
// Texts of a library: bytes in a code page that the file does not record.

#include <string>
#include <string_view>
#include <unordered_map>

#include "services/CodePage.h"
#include "typelib/reader/TypeLibInfo.h"

namespace vendrel {
class TellingBytes;
}

namespace vendrel::typelib {

/// The texts of one image while it is read, each kind within its limit. ASCII stays where it is in
/// the image; other text is converted once for each place and kept with the library. Bytes that
/// mean nothing become U+FFFD.
class ImageTexts {
 public:
  /// `codePage` as in `TypeLibOptions`; the page of the neutral language is the one in force for
  /// files. `telling` has the texts for which "auto" stands open to other pages; nullptr for none.
  ImageTexts(TypeLibInfo& library, const std::string& codePage, unsigned lcid,
             const TellingBytes* telling = nullptr);

  std::string_view Name(std::string_view bytes) { return Decode(bytes); }
  /// Help strings and values: counted, since many members may point at one long text.
  std::string_view String(std::string_view bytes);
  /// Keeps a text that stands nowhere in the image as it is.
  std::string_view Keep(std::string text);
  /// Keeps the converted form of such a text.
  std::string_view KeepDecoded(std::string_view bytes) { return Keep(Convert(bytes)); }

 private:
  bool Spend(std::size_t count);
  std::string_view Decode(std::string_view bytes);
  std::string Convert(std::string_view bytes) const;

  TypeLibInfo& mLibrary;
  const vendrel::CodePage& mPage;
  /// Bytes that may still be kept as they are, and converted.
  std::size_t mLeft, mLeftToConvert;
  std::unordered_map<const char*, std::string_view> mConverted;
};

}  // namespace vendrel::typelib
