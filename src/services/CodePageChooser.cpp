#include "core/Ascii.h"
#include "services/CodePage.h"
#include "services/TellingBytes.h"

namespace vendrel {

CodePageChooser::CodePageChooser(std::string_view option) {
  if (EqualsNoCaseAscii(option, "auto")) {
    mBytes = std::make_unique<TellingBytes>();
  } else {
    mName = CodePage::Named(option).Name();
  }
}

CodePageChooser::~CodePageChooser() = default;

void CodePageChooser::Feed(std::string_view bytes) {
  if (mBytes) mBytes->Feed(bytes);
}

std::string CodePageChooser::Choose() const { return mBytes ? mBytes->Choose().Page : mName; }

}  // namespace vendrel
