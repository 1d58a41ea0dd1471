#include "services/PairPages.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <iterator>
#include <memory>

#include "core/Utf8.h"

namespace vendrel {
namespace {

struct Range {
  unsigned char First, Last;
  constexpr bool Holds(unsigned char byte) const { return First <= byte && byte <= Last; }
};

// Up to four ranges; {1, 0} holds nothing.
struct Ranges {
  std::array<Range, 4> Parts{{{1, 0}, {1, 0}, {1, 0}, {1, 0}}};
  constexpr bool Hold(unsigned char byte) const {
    return std::any_of(Parts.begin(), Parts.end(), [=](Range part) { return part.Holds(byte); });
  }
};

struct PairPage {
  std::string_view Name;
  /// Bytes that begin a pair and that end one.
  Ranges Leads, Trails;
  /// Bytes beyond ASCII that are a character alone.
  Range Singles;
  /// Rows that no machine had letters in, where the second byte is beyond hex A0.
  Range Unassigned;
  /// Rows of everyday characters, and the bytes that end them.
  Ranges CommonLeads, CommonTrails;
};

constexpr Range kNone{1, 0};

// Everyday: punctuation, kana, the first level of ideographs, syllables of Korean.
constexpr PairPage kPages[] = {
    {"cp932",
     {{{{0x81, 0x84}, {0x87, 0x9F}, {0xE0, 0xEA}, {0xED, 0xFC}}}},
     {{{{0x40, 0x7E}, {0x80, 0xFC}, kNone, kNone}}},
     {0xA1, 0xDF},
     {0xF0, 0xF9},
     {{{{0x81, 0x83}, {0x88, 0x97}, kNone, kNone}}},
     {{{{0x40, 0x7E}, {0x80, 0xFC}, kNone, kNone}}}},
    {"cp949",
     {{{{0x81, 0xC8}, {0xCA, 0xFD}, kNone, kNone}}},
     {{{{0x41, 0x5A}, {0x61, 0x7A}, {0x81, 0xFE}, kNone}}},
     kNone,
     kNone,
     {{{{0xA1, 0xA1}, {0xA3, 0xA3}, {0xB0, 0xC8}, kNone}}},
     {{{{0xA1, 0xFE}, kNone, kNone, kNone}}}},
    {"cp936",
     {{{{0x81, 0xFE}, kNone, kNone, kNone}}},
     {{{{0x40, 0x7E}, {0x80, 0xFE}, kNone, kNone}}},
     kNone,
     {0xAA, 0xAF},
     {{{{0xA1, 0xA1}, {0xA3, 0xA3}, {0xB0, 0xD7}, kNone}}},
     {{{{0xA1, 0xFE}, kNone, kNone, kNone}}}},
    {"cp950",
     {{{{0xA1, 0xF9}, kNone, kNone, kNone}}},
     {{{{0x40, 0x7E}, {0xA1, 0xFE}, kNone, kNone}}},
     kNone,
     kNone,
     {{{{0xA1, 0xA1}, {0xA4, 0xC6}, kNone, kNone}}},
     {{{{0x40, 0x7E}, {0xA1, 0xFE}, kNone, kNone}}}},
};

constexpr std::string_view kNames[] = {kPages[0].Name, kPages[1].Name, kPages[2].Name,
                                       kPages[3].Name};

const PairPage* Find(std::string_view name) {
  const auto* found = std::find_if(std::begin(kPages), std::end(kPages),
                                   [&](const PairPage& page) { return page.Name == name; });
  return found == std::end(kPages) ? nullptr : found;
}

class PairCounter {
 public:
  explicit PairCounter(const PairPage& page) : mPage(page) {}

  PairCounts Run(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
      const auto byte = static_cast<unsigned char>(text[at]);
      if (byte < 0x80) {
        EndWord();
        at = FirstNonAscii(text, at);
      } else if (mPage.Singles.Holds(byte)) {
        ++mCounts.Valid;
        ++mWord;
        ++at;
      } else {
        const bool isPair =
            at + 1 < text.size() && TakePair(byte, static_cast<unsigned char>(text[at + 1]));
        at += isPair ? 2 : 1;
      }
    }
    EndWord();
    return mCounts;
  }

 private:
  bool TakePair(unsigned char lead, unsigned char trail) {
    const bool isValid = mPage.Leads.Hold(lead) && mPage.Trails.Hold(trail) &&
                         !(mPage.Unassigned.Holds(lead) && trail > 0xA0);
    if (!isValid) {
      ++mCounts.Invalid;
      EndWord();
      return false;
    }
    ++mCounts.Valid;
    ++mWord;
    if (mPage.CommonLeads.Hold(lead) && mPage.CommonTrails.Hold(trail)) {
      ++mCommonInWord;
      TakeCommon(static_cast<std::size_t>(lead) << 8 | trail);
    }
    return true;
  }

  // Text of the other pages hardly ever comes here, and needs no table.
  void TakeCommon(std::size_t pair) {
    if (!mSeen) mSeen = std::make_unique<std::bitset<0x10000>>();
    if (mSeen->test(pair)) return;
    mSeen->set(pair);
    ++mCounts.Distinct;
  }

  void EndWord() {
    mCounts.Common += mCommonInWord;
    if (mWord > 1) mCounts.CommonInWords += mCommonInWord;
    mWord = mCommonInWord = 0;
  }

  const PairPage& mPage;
  PairCounts mCounts;
  std::size_t mWord = 0, mCommonInWord = 0;
  std::unique_ptr<std::bitset<0x10000>> mSeen;
};

}  // namespace

std::span<const std::string_view> PairPageNames() { return kNames; }

bool IsPairPage(std::string_view name) { return Find(name) != nullptr; }

PairCounts CountPairs(std::string_view name, std::string_view text) {
  const PairPage* page = Find(name);
  return page ? PairCounter(*page).Run(text) : PairCounts();
}

}  // namespace vendrel
