#include "typelib/reader/ImageTexts.h"

#include "services/Utf8.h"
#include "typelib/reader/LanguagePages.h"
#include "typelib/reader/Limits.h"

namespace vendrel::typelib {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

const CodePage& PageFor(int number, unsigned lcid) {
  if (number == 0) number = CodePageOfLanguage(lcid);
  const CodePage* page = number == 0 ? nullptr : CodePage::Find(std::to_string(number));
  return page ? *page : FileOptions::Current().Page();
}

}  // namespace

ImageTexts::ImageTexts(TypeLibInfo& library, int codePage, unsigned lcid)
    : mLibrary(library),
      mPage(PageFor(codePage, lcid)),
      mLeft(kTextBase + kTextShare * library.Image.size()),
      mLeftToConvert(mLeft) {}

std::string_view ImageTexts::String(std::string_view bytes) {
  return Spend(bytes.size()) ? Decode(bytes) : std::string_view();
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

std::string_view ImageTexts::Decode(std::string_view bytes) {
  if (FirstNonAscii(bytes) == bytes.size()) return bytes;
  // The same place with another length can only come from overlapping texts of a damaged file.
  auto [known, isNew] = mConverted.try_emplace(bytes.data());
  if (isNew) {
    if (bytes.size() > mLeftToConvert) return known->second = kReplacement;
    mLeftToConvert -= bytes.size();
    known->second = mLibrary.Texts.emplace_back(Convert(bytes));
  }
  return known->second;
}

std::string ImageTexts::Convert(std::string_view bytes) const {
  std::string text;
  mPage.Decode(bytes, text);
  return text;
}

}  // namespace vendrel::typelib
