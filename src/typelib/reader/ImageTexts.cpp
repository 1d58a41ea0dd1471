#include "typelib/reader/ImageTexts.h"

#include "core/Ascii.h"
#include "core/Utf8.h"
#include "services/PairPages.h"
#include "services/TellingBytes.h"
#include "typelib/reader/LanguagePages.h"
#include "typelib/reader/TypeLibLimits.h"

namespace vendrel::typelib {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

constexpr unsigned kPrimaryLanguage = 0x3FF, kNeutral = 0, kEnglish = 9;

const CodePage& PageOfLanguage(unsigned lcid) {
  const int number = CodePageOfLanguage(lcid);
  const CodePage* page = number == 0 ? nullptr : CodePage::Find(std::to_string(number));
  return page ? *page : FileOptions::Current().Page();
}

// English has no letters beyond ASCII, and it is what compilers store for any language: there the
// bytes decide. For another language they do where its page cannot be theirs.
const CodePage& PageByBytes(TypeLibInfo& library, unsigned lcid, const TellingBytes& telling) {
  const CodePage& own = PageOfLanguage(lcid);
  const unsigned language = lcid & kPrimaryLanguage;
  const CodePageGuess guess = telling.Choose();
  const bool isOpen = language == kNeutral || language == kEnglish || !telling.Fit(own.Name()) ||
                      (IsPairPage(guess.Page) && !IsPairPage(own.Name()));
  const CodePage* guessed = isOpen ? CodePage::Find(guess.Page) : nullptr;
  if (!guessed || guessed == &own || guessed == &CodePage::Default()) return own;
  library.CodePageEvidence = guess.Evidence;
  return *guessed;
}

const CodePage& PageFor(TypeLibInfo& library, const std::string& name, unsigned lcid,
                        const TellingBytes* telling) {
  if (EqualsNoCaseAscii(name, "auto"))
    return telling && telling->Count() > 0 ? PageByBytes(library, lcid, *telling)
                                           : PageOfLanguage(lcid);
  const CodePage* page = name.empty() ? nullptr : CodePage::Find(name);
  return page ? *page : PageOfLanguage(lcid);
}

}  // namespace

ImageTexts::ImageTexts(TypeLibInfo& library, const std::string& codePage, unsigned lcid,
                       const TellingBytes* telling)
    : mLibrary(library),
      mPage(PageFor(library, codePage, lcid, telling)),
      mLeft(kTextBase + kTextShare * library.Image.size()),
      mLeftToConvert(mLeft) {
  library.CodePage = mPage.Name();
}

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
