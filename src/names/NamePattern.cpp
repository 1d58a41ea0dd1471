#include "names/NamePattern.h"

#include "core/CaseFold.h"
#include "diagnostics/VendrelError.h"
#include "text/Like.h"

namespace vendrel {

NamePattern::NamePattern(std::string text)
    : mText(std::move(text)),
      mIsPattern(mText.find_first_of("*?[#") != std::string::npos),
      mIsQualified(mText.find('~') != std::string::npos) {
  if (!mIsPattern) return;
  try {
    Like("", mText);
  } catch (const VendrelError&) {
    throw VendrelError(5, "'" + mText +
                              "' is no pattern; a list opened by \"[\" ends with \"]\", "
                              "and [[] stands for a bracket");
  }
}

bool NamePattern::Fits(std::string_view name) const {
  return mIsPattern ? LikeNoCase(name, mText) : EqualsNoCase(name, mText);
}

}  // namespace vendrel
