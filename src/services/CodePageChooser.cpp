#include <uchardet.h>

#include <algorithm>
#include <iterator>

#include "core/Ascii.h"
#include "services/CodePage.h"
#include "services/Utf8.h"

namespace vendrel {
namespace {

struct Counterpart {
  std::string_view Guess, Page;
};

// The guesser names standards; the machines had these pages. What is not here (and is no windows-
// page) was a poor guess over a few accented letters.
constexpr Counterpart Counterparts[] = {
    {"SHIFT_JIS", "cp932"},
    {"EUC-JP", "euc-jp"},
    {"GB18030", "cp936"},
    {"GB2312", "cp936"},
    {"HZ-GB-2312", "cp936"},
    {"EUC-KR", "cp949"},
    {"UHC", "cp949"},
    {"BIG5", "cp950"},
    {"TIS-620", "cp874"},
    {"ISO-8859-11", "cp874"},
    {"ISO-8859-2", "windows-1250"},
    {"ISO-8859-5", "windows-1251"},
    {"KOI8-R", "windows-1251"},
    {"MAC-CYRILLIC", "windows-1251"},
    {"IBM855", "windows-1251"},
    {"IBM866", "windows-1251"},
    {"ISO-8859-7", "windows-1253"},
    {"ISO-8859-9", "windows-1254"},
    {"ISO-8859-8", "windows-1255"},
    {"ISO-8859-6", "windows-1256"},
    {"ISO-8859-13", "windows-1257"},
    {"ISO-8859-4", "windows-1257"},
};

// Letters of windows-1250 whose bytes are no letters of western European words: without a fair
// share of them the guess is French taken for Czech.
constexpr std::string_view CentralEuropeanBytes =
    "\x8A\x8E\x9A\x9E\xA3\xA5\xB3\xB9\xBE\xCC\xD8\xEC\xF0\xF5\xF8\xFE";
constexpr std::size_t CentralEuropeanShare = 20;

// A guess over fewer bytes than this is chance: a pound sign here, an accent there. The Latin pages
// differ in a few letters only, so that telling one from another takes a page of text.
constexpr std::size_t EnoughBytes = 5;
constexpr std::size_t EnoughBytesOfLatin = 100;
constexpr std::string_view LatinPages[] = {"windows-1254", "windows-1257", "windows-1258"};

uchardet_t Detector(void* held) { return static_cast<uchardet_t>(held); }

// Calls `feed` with each line that holds a byte beyond ASCII: the rest tells nothing.
template <typename Feed>
void ForEachTellingLine(std::string_view bytes, Feed feed) {
  std::size_t done = 0;
  while (true) {
    const std::size_t at = FirstNonAscii(bytes, done);
    if (at == bytes.size()) return;
    std::size_t start = at, end = bytes.find('\n', at);
    while (start > done && bytes[start - 1] != '\n') --start;
    end = end == std::string_view::npos ? bytes.size() : end + 1;
    feed(bytes.substr(start, end - start));
    done = end;
  }
}

}  // namespace

CodePageChooser::CodePageChooser(std::string_view option) {
  if (EqualsNoCaseAscii(option, "auto")) {
    mDetector = uchardet_new();
  } else {
    mName = CodePage::Named(option).Name();
  }
}

CodePageChooser::~CodePageChooser() {
  if (mDetector) uchardet_delete(Detector(mDetector));
}

void CodePageChooser::Feed(std::string_view bytes) {
  const std::string_view mark = bytes.substr(0, 2);
  if (!mDetector || mark == "\xFF\xFE" || mark == "\xFE\xFF" || IsValidUtf8(bytes)) return;
  ForEachTellingLine(bytes, [&](std::string_view line) {
    uchardet_handle_data(Detector(mDetector), line.data(), line.size());
    mFed = true;
    for (const char c : line) {
      if (static_cast<unsigned char>(c) < 0x80) continue;
      ++mTellingBytes;
      if (CentralEuropeanBytes.find(c) != std::string_view::npos) ++mCentralEuropeanBytes;
    }
  });
}

std::string CodePageChooser::Choose() {
  if (!mName.empty()) return mName;
  mName = CodePage::Default().Name();
  if (!mFed || mTellingBytes < EnoughBytes) return mName;
  uchardet_data_end(Detector(mDetector));
  const std::string guess = UpperAscii(uchardet_get_charset(Detector(mDetector)));
  for (const Counterpart& counterpart : Counterparts)
    if (counterpart.Guess == guess) mName = counterpart.Page;
  if (guess.compare(0, 8, "WINDOWS-") == 0)
    if (const CodePage* page = CodePage::Find(guess)) mName = page->Name();
  const bool latin =
      std::find(std::begin(LatinPages), std::end(LatinPages), mName) != std::end(LatinPages);
  if (latin && mTellingBytes < EnoughBytesOfLatin) mName = CodePage::Default().Name();
  if (mName == "windows-1250" && mCentralEuropeanBytes * CentralEuropeanShare < mTellingBytes)
    mName = CodePage::Default().Name();
  return mName;
}

}  // namespace vendrel
