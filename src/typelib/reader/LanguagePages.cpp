#include "typelib/reader/LanguagePages.h"

namespace vendrel::typelib {
namespace {

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

}  // namespace

int CodePageOfLanguage(unsigned lcid) {
  switch (lcid & 0xFFFF) {
    case 0: return 0;
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

}  // namespace vendrel::typelib
