#include "services/TellingBytes.h"

#include <uchardet.h>

#include <algorithm>
#include <deque>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

#include "core/Ascii.h"
#include "core/Utf8.h"
#include "core/Workspace.h"
#include "services/CodePage.h"
#include "services/PairPages.h"

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
// Scripts whose letters stand beside no Latin ones.
constexpr std::string_view OtherScripts[] = {"windows-1251", "windows-1253", "windows-1255",
                                             "windows-1256", "cp874"};

// Among how many bytes or pairs one may be damaged: a broken string does not speak against a page.
constexpr std::size_t DamageShare = 50;
// Least share of everyday characters in words, in percent, and how many different ones.
constexpr std::size_t CommonShare = 60;
constexpr std::size_t EnoughCharacters = 4;
// Shares of two pages this near (in percent) are told apart by the frequencies of the guesser.
constexpr std::size_t NearShare = 15;

constexpr std::size_t MostBytesKept = std::size_t{256} << 10;

template <typename List>
bool Holds(const List& list, std::string_view name) {
  return std::find(std::begin(list), std::end(list), name) != std::end(list);
}

bool IsAsked(std::span<const std::string> among, std::string_view page) {
  return among.empty() || Holds(among, page);
}

// Binary data that only looks like lines.
bool IsNoText(std::string_view line) {
  return std::any_of(line.begin(), line.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 && c != '\t' && c != '\r' && c != '\n' && c != '\f' && c != '\v';
  });
}

std::string Fallback(std::span<const std::string> among) {
  const std::string standard = CodePage::Default().Name();
  return IsAsked(among, standard) ? standard : among.front();
}

std::string Counted(std::size_t number, std::string_view what) {
  return (number == 0 ? "none" : std::to_string(number)) + " " + std::string(what);
}

// The guesser takes a hundred times as long as reading the bytes. Projects that share their modules
// ask it about the same lines, mostly one behind the other: what it said of the last ones is kept.
class Guesser {
 public:
  std::string CharsetOf(const std::string& lines) {
    for (const auto& [asked, charset] : mSaid)
      if (asked == lines) return charset;
    std::string charset = Ask(lines);
    mKept += lines.size();
    mSaid.emplace_back(lines, charset);
    for (; mKept > kMostKept; mSaid.pop_front()) mKept -= mSaid.front().first.size();
    return charset;
  }

 private:
  static constexpr std::size_t kMostKept = std::size_t{1} << 20;

  static std::string Ask(std::string_view lines) {
    const std::unique_ptr<std::remove_pointer_t<uchardet_t>, decltype(&uchardet_delete)> detector(
        uchardet_new(), &uchardet_delete);
    uchardet_handle_data(detector.get(), lines.data(), lines.size());
    uchardet_data_end(detector.get());
    return uchardet_get_charset(detector.get());
  }

  std::deque<std::pair<std::string, std::string>> mSaid;
  std::size_t mKept = 0;
};

struct PairScore {
  std::string_view Page;
  PairCounts Counts;
  std::size_t Share() const {
    return Counts.All() == 0 ? 0 : Counts.CommonInWords * 100 / Counts.All();
  }
  bool IsPlausible() const {
    return Counts.Invalid * DamageShare <= Counts.Valid && Share() >= CommonShare &&
           Counts.Distinct >= EnoughCharacters;
  }
};

}  // namespace

void TellingBytes::Feed(std::string_view bytes) {
  const std::string_view mark = bytes.substr(0, 2);
  if (mark == "\xFF\xFE" || mark == "\xFE\xFF" || IsValidUtf8(bytes)) return;
  std::size_t done = 0;
  while (!IsFull()) {
    const std::size_t at = FirstNonAscii(bytes, done);
    if (at == bytes.size()) return;
    std::size_t start = at;
    while (start > done && bytes[start - 1] != '\n' && bytes[start - 1] != '\r') --start;
    for (done = at; done < bytes.size() && bytes[done] != '\r' && bytes[done] != '\n';) ++done;
    TakeLine(bytes.substr(start, done - start));
  }
}

bool TellingBytes::IsFull() const { return mLines.size() >= MostBytesKept; }

bool TellingBytes::Add(const TellingBytes& ofFile) {
  if (mLines.size() + ofFile.mLines.size() >= MostBytesKept) return false;
  mLines += ofFile.mLines;
  mCount += ofFile.mCount;
  mBesideLetters += ofFile.mBesideLetters;
  return true;
}

void TellingBytes::TakeLine(std::string_view line) {
  if (IsNoText(line) || IsValidUtf8(line)) return;
  const auto isLetter = [&](std::size_t at) { return at < line.size() && IsLetterAscii(line[at]); };
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (static_cast<unsigned char>(line[i]) < 0x80) continue;
    ++mCount;
    if (isLetter(i - 1) || isLetter(i + 1)) ++mBesideLetters;
  }
  mLines.append(line.substr(0, MostBytesKept)).push_back('\n');
}

bool TellingBytes::IsFew() const { return mCount < EnoughBytesOfLatin; }

bool TellingBytes::Fit(std::string_view page) const {
  if (IsPairPage(page)) {
    const PairCounts counts = CountPairs(page, mLines);
    return counts.Invalid * DamageShare <= counts.Valid && counts.Common * 2 >= counts.All();
  }
  if (Holds(OtherScripts, page) && mBesideLetters * 2 > mCount) return false;
  return Undefined(page) * DamageShare <= mCount;
}

CodePageGuess TellingBytes::Choose(std::span<const std::string> among) const {
  std::string evidence;
  if (std::string page = ByPairs(among, evidence); !page.empty()) return {page, evidence};
  std::string page = ByLetters(among);
  std::size_t undefined = mCount > 0 ? Undefined(page) : 0;
  if (undefined * DamageShare > mCount) {
    page = Fallback(among);
    undefined = Undefined(page);
  }
  if (mCount > 0)
    evidence = std::to_string(mCount) + " bytes beyond ASCII, " + Counted(undefined, "undefined");
  return {page, evidence};
}

// The page of two-byte characters as which these bytes are everyday text; empty if there is none.
std::string TellingBytes::ByPairs(std::span<const std::string> among, std::string& evidence) const {
  std::vector<PairScore> scores;
  std::size_t best = 0;
  for (const std::string_view page : PairPageNames()) {
    if (!IsAsked(among, page)) continue;
    const PairScore score{page, CountPairs(page, mLines)};
    if (!score.IsPlausible()) continue;
    scores.push_back(score);
    best = std::max(best, score.Share());
  }
  std::erase_if(scores, [&](const PairScore& s) { return s.Share() + NearShare < best; });
  if (scores.empty()) return {};
  const PairScore* chosen = &scores.front();
  if (scores.size() > 1) {
    const std::string detected = Detected();
    for (const PairScore& score : scores)
      if (score.Page == detected) chosen = &score;
  }
  evidence = std::to_string(chosen->Counts.Valid) + " characters beyond ASCII, " +
             Counted(chosen->Counts.Invalid, "invalid");
  return std::string(chosen->Page);
}

std::string TellingBytes::ByLetters(std::span<const std::string> among) const {
  const std::string fallback = Fallback(among);
  if (mCount < EnoughBytes) return fallback;
  std::string page = Detected();
  if (Holds(LatinPages, page) && mCount < EnoughBytesOfLatin) page.clear();
  if (page == "windows-1250") {
    const auto telling =
        static_cast<std::size_t>(std::count_if(mLines.begin(), mLines.end(), [](char c) {
          return CentralEuropeanBytes.find(c) != std::string_view::npos;
        }));
    if (telling * CentralEuropeanShare < mCount) page.clear();
  }
  return page.empty() || !IsAsked(among, page) ? fallback : page;
}

// What the guesser makes of the lines; empty if it was a poor guess.
std::string TellingBytes::Detected() const {
  const std::string guess = UpperAscii(InUse<Guesser>().CharsetOf(mLines));
  for (const Counterpart& counterpart : Counterparts)
    if (counterpart.Guess == guess) return std::string(counterpart.Page);
  if (guess.starts_with("WINDOWS-"))
    if (const CodePage* page = CodePage::Find(guess)) return page->Name();
  return {};
}

// Bytes that mean nothing in the page.
std::size_t TellingBytes::Undefined(std::string_view name) const {
  if (IsPairPage(name)) return CountPairs(name, mLines).Invalid;
  const CodePage* page = CodePage::Find(name);
  return page ? page->CountUndefined(mLines) : mCount;  // holes come out as control characters
}

}  // namespace vendrel
