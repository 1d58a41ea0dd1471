#include "typelib/reader/ImageTexts.h"

#include "typelib/reader/Limits.h"

namespace vendrel::typelib {

ImageTexts::ImageTexts(TypeLibInfo& library, int codePage, unsigned lcid)
    : mLibrary(library),
      mLeft(kTextBase + kTextShare * library.Image.size()),
      mAnsi(codePage != 0 ? codePage : CodePageOfLanguage(lcid), library.Texts, mLeft) {}

std::string_view ImageTexts::String(std::string_view bytes) {
  return Spend(bytes.size()) ? mAnsi.Decode(bytes) : std::string_view();
}

std::string_view ImageTexts::Keep(std::string text) {
  if (!Spend(text.size())) return {};
  return mLibrary.Texts.emplace_back(std::move(text));
}

bool ImageTexts::Spend(std::size_t count) {
  if (count <= mLeft) {
    mLeft -= count;
    return true;
  }
  if (mLeft != 0) mLibrary.Warn("texts are repeated beyond measure; the rest is left out");
  mLeft = 0;
  return false;
}

}  // namespace vendrel::typelib
