#include "typelib/reader/AnsiText.h"

#include <iconv.h>

#include <algorithm>

namespace vendrel::typelib {
namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";
const iconv_t kNoConverter = reinterpret_cast<iconv_t>(-1);

struct LanguagePage {
  unsigned Primary;
  int CodePage;
};

// Primary languages whose Windows code page is not 1252.
constexpr LanguagePage kPages[] = {
    {0x01, 1256}, {0x02, 1251}, {0x04, 936},  {0x05, 1250}, {0x08, 1253}, {0x0D, 1255},
    {0x0E, 1250}, {0x11, 932},  {0x12, 949},  {0x15, 1250}, {0x18, 1250}, {0x19, 1251},
    {0x1A, 1250}, {0x1B, 1250}, {0x1C, 1250}, {0x1E, 874},  {0x1F, 1254}, {0x20, 1256},
    {0x22, 1251}, {0x23, 1251}, {0x24, 1250}, {0x25, 1257}, {0x26, 1257}, {0x27, 1257},
    {0x29, 1256}, {0x2A, 1258}, {0x2C, 1254}, {0x2F, 1251}, {0x3F, 1251},
};

bool IsAscii(std::string_view bytes) {
  return std::none_of(bytes.begin(), bytes.end(),
                      [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

}  // namespace

int CodePageOfLanguage(unsigned lcid) {
  switch (lcid & 0xFFFF) {
    case 0x0404:
    case 0x0C04:
    case 0x1404: return 950;  // traditional characters
    case 0x0C1A:
    case 0x1C1A: return 1251;  // Serbian in Cyrillic letters
    default: break;
  }
  for (const LanguagePage& page : kPages)
    if (page.Primary == (lcid & 0x3FF)) return page.CodePage;
  return 1252;
}

AnsiText::AnsiText(int codePage, std::deque<std::string>& storage, std::size_t budget)
    : mConverter(iconv_open("UTF-8", ("CP" + std::to_string(codePage)).c_str())),
      mCodePage(codePage),
      mStorage(storage),
      mBudget(budget) {
  mSingleByte = codePage < 932 || codePage > 950;
}

AnsiText::~AnsiText() {
  if (mConverter != kNoConverter) iconv_close(mConverter);
}

std::string_view AnsiText::Decode(std::string_view bytes) {
  if (IsAscii(bytes)) return bytes;
  // The same place with another length can only come from overlapping texts of a damaged file.
  auto [known, isNew] = mConverted.try_emplace(bytes.data());
  if (isNew) {
    if (bytes.size() > mBudget) return known->second = kReplacement;
    mBudget -= bytes.size();
    mStorage.push_back(Convert(bytes));
    known->second = mStorage.back();
  }
  return known->second;
}

std::string AnsiText::Convert(std::string_view bytes) {
  if (!mSingleByte) return ConvertMultiByte(bytes);
  if (mTable[0].empty()) BuildTable();
  std::string result;
  for (char c : bytes) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      result += c;
    } else {
      result += mTable[byte - 0x80];
    }
  }
  return result;
}

void AnsiText::BuildTable() {
  for (unsigned i = 0; i < 128; ++i) {
    char byte = static_cast<char>(i + 0x80);
    mTable[i] = ConvertMultiByte({&byte, 1});
    // The unassigned places of this page stand for the control characters of the same number.
    if (mCodePage == 1252 && mTable[i] == kReplacement) mTable[i] = {'\xC2', byte};
  }
}

std::string AnsiText::ConvertMultiByte(std::string_view bytes) {
  std::string result;
  if (mConverter == kNoConverter) {
    for (char c : bytes)
      result += static_cast<unsigned char>(c) < 0x80 ? std::string(1, c) : kReplacement;
    return result;
  }
  char* in = const_cast<char*>(bytes.data());  // iconv does not write to it
  std::size_t inLeft = bytes.size();
  iconv(mConverter, nullptr, nullptr, nullptr, nullptr);
  while (inLeft > 0) {
    char buffer[256];
    char* out = buffer;
    std::size_t outLeft = sizeof buffer;
    const std::size_t before = inLeft;
    const std::size_t status = iconv(mConverter, &in, &inLeft, &out, &outLeft);
    result.append(buffer, sizeof buffer - outLeft);
    if (status == static_cast<std::size_t>(-1) && outLeft >= 16 && inLeft > 0) {
      result += kReplacement;
      ++in;
      --inLeft;
    } else if (before == inLeft) {
      break;
    }
  }
  return result;
}

}  // namespace vendrel::typelib
