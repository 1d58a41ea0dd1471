#include "core/Ascii.h"
#include "services/CodePage.h"
#include "services/TellingBytes.h"

namespace vendrel {
namespace {

TellingBytes* Bytes(void* held) { return static_cast<TellingBytes*>(held); }

}  // namespace

CodePageChooser::CodePageChooser(std::string_view option) {
  if (EqualsNoCaseAscii(option, "auto")) {
    mDetector = new TellingBytes;
  } else {
    mName = CodePage::Named(option).Name();
  }
}

CodePageChooser::~CodePageChooser() { delete Bytes(mDetector); }

void CodePageChooser::Feed(std::string_view bytes) {
  if (mDetector) Bytes(mDetector)->Feed(bytes);
}

std::string CodePageChooser::Choose() {
  if (mName.empty()) mName = Bytes(mDetector)->Choose().Page;
  return mName;
}

}  // namespace vendrel
