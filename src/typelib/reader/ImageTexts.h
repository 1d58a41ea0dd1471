#pragma once

#include <string_view>

#include "typelib/reader/AnsiText.h"
#include "typelib/reader/TypeLibInfo.h"

namespace vendrel::typelib {

/// The texts of one image while it is read, each kind within its limit.
class ImageTexts {
 public:
  /// `codePage` 0: that of the language.
  ImageTexts(TypeLibInfo& library, int codePage, unsigned lcid);

  std::string_view Name(std::string_view bytes) { return mAnsi.Decode(bytes); }
  /// Help strings and values: counted, since many members may point at one long text.
  std::string_view String(std::string_view bytes);
  /// Keeps a text that stands nowhere in the image as it is.
  std::string_view Keep(std::string text);
  /// Keeps the converted form of such a text.
  std::string_view KeepDecoded(std::string_view bytes) { return Keep(mAnsi.Convert(bytes)); }

 private:
  bool Spend(std::size_t count);

  TypeLibInfo& mLibrary;
  std::size_t mLeft;
  AnsiText mAnsi;
};

}  // namespace vendrel::typelib
