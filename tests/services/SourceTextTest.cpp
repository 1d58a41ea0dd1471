#include "services/SourceText.h"

#include <gtest/gtest.h>
#include <iconv.h>

#include "core/Utf8.h"
#include "diagnostics/VendrelError.h"

namespace vendrel {
namespace {

using namespace std::string_literals;

std::shared_ptr<const SourceText> Decoded(const std::string& bytes, std::string_view page = "") {
  return SourceText::Decode(bytes, page.empty() ? CodePage::Default() : CodePage::Named(page));
}

// The bytes that an unchanged file is written with: raw lines where there are some.
std::string WrittenBack(const SourceText& source) {
  std::string bytes(ByteOrderMark(source));
  std::string_view rest = source.Text;
  while (!rest.empty()) {
    const std::size_t offset = source.Text.size() - rest.size();
    const std::string_view before = rest, line = TakeLine(rest);
    const std::string_view end =
        before.substr(line.size(), before.size() - rest.size() - line.size());
    const std::string* raw = source.RawLine(offset);
    bytes += raw ? *raw : Encode(line, source).value_or("<not held>");
    bytes += Encode(end, source).value();
  }
  return bytes;
}

TEST(SourceText, ChoosesTheEncodingAndGivesTheBytesBack) {
  using E = TextEncoding;
  const struct {
    std::string Bytes;
    std::string_view Page;
    E Encoding;
    std::string Text;
    std::size_t RawLines;
  } cases[] = {
      {"", "", E::Ascii, "", 0},
      {"Dim a\r\n", "", E::Ascii, "Dim a\r\n", 0},
      {"' gr\xC3\xB6\xC3\x9F"
       "er\n",
       "", E::Utf8, "' größer\n", 0},
      {"\xEF\xBB\xBF' a\r\n", "", E::Utf8Bom, "' a\r\n", 0},
      {"\xEF\xBB\xBF' \xE9\r\nb\r\n", "", E::Utf8Bom, "' \uFFFD\r\nb\r\n", 1},
      {"a\r\n' \xF1 \x80\r\nb", "", E::CodePage, "a\r\n' ñ €\r\nb", 0},
      {"\x81\x8D\x8F\x90\x9D", "", E::CodePage, "\u0081\u008D\u008F\u0090\u009D", 0},
      {"' \xCF\xF0\xE8\r\n", "1251", E::CodePage, "' При\r\n", 0},
      {"\xAA\na\xC1\n", "1253", E::CodePage, "\uFFFD\naΑ\n", 1},
      {"x = \"\x95\x5C\x8E\xA6\"\r\n", "932", E::CodePage, "x = \"表示\"\r\n", 0},
      {"' \x83\x7C\x83\x5C\r\n\x81\r\nok\r\n", "932", E::CodePage, "' ポソ\r\n\uFFFD\r\nok\r\n", 1},
      {"' \xD6\xD0\xCE\xC4\r\n", "936", E::CodePage, "' 中文\r\n", 0},
      {"' \xC7\xD1\xB1\xDB\r\n", "949", E::CodePage, "' 한글\r\n", 0},
      {"' \xA4\xA4\xA4\xE5 \xA5\x5C\r\n", "950", E::CodePage, "' 中文 功\r\n", 0},
      {"\xFF\xFE"
       "a\0\xE4\0\r\0\n\0"s,
       "", E::Utf16LE, "aä\r\n", 0},
      {"\xFE\xFF\0a\xD8\x3D\xDE\x00"s, "", E::Utf16BE, "a\U0001F600", 0},
      {"\xFF\xFE"
       "a\0\n\0\x00\xD8"
       "b\0\n\0c\0"s,
       "", E::Utf16LE, "a\n\uFFFDb\nc", 1},
      {"\xFF\xFE"
       "a\0b"s,
       "", E::Utf16LE, "a\uFFFD", 1},
  };
  for (const auto& c : cases) {
    const auto source = Decoded(c.Bytes, c.Page);
    EXPECT_EQ(source->Encoding, c.Encoding) << c.Text;
    EXPECT_EQ(source->Text, c.Text);
    EXPECT_EQ(source->RawLines.size(), c.RawLines) << c.Text;
    EXPECT_TRUE(IsValidUtf8(source->Text));
    EXPECT_EQ(WrittenBack(*source), c.Bytes) << c.Text;
  }
}

TEST(SourceText, LosesNoByteInAnyPage) {
  std::string bytes;
  for (int lead = 0x80; lead < 0x100; ++lead)
    for (int trail = 0x20; trail < 0x100; trail += 7)
      (bytes += static_cast<char>(lead)) += {static_cast<char>(trail), trail % 2 ? '\n' : 'x'};
  for (const char* page : {"1250", "1251", "1252", "1253", "1254", "1255", "1256", "1257", "1258",
                           "874", "932", "936", "949", "950", "1361", "54936", "437", "koi8-r"}) {
    const auto source = Decoded(bytes, page);
    EXPECT_TRUE(IsValidUtf8(source->Text)) << page;
    EXPECT_EQ(WrittenBack(*source), bytes) << page;
  }
}

TEST(SourceText, TellsWhatTheEncodingCannotHold) {
  const auto ascii = Decoded("a");
  EXPECT_EQ(Encode("ñ", *ascii), "\xF1");
  EXPECT_EQ(Encode("Ж", *ascii), std::nullopt);
  EXPECT_EQ(Encode("ñ", *Decoded("\x95\x5C", "932")), std::nullopt);
  EXPECT_EQ(Encode("表", *Decoded("\x8E\xA6", "932")), "\x95\x5C");
  EXPECT_EQ(Encode("Ж", *Decoded("\xC3\xB6")), "Ж");
  EXPECT_TRUE(Decoded("a\0b"s)->HasNul);
  EXPECT_FALSE(Decoded("ab")->HasNul);
}

TEST(SourceText, SummaryOfBytesAgreesWithACountOneByOne) {
  std::string bytes;
  unsigned seed = 1;
  for (int round = 0; round < 300; ++round) {
    bytes += "ab\r\n\n\r\0\xE4 c"[(seed = seed * 1103515245 + 12345) >> 16 & 7];
    const std::string text = bytes.substr(0, static_cast<std::size_t>(round) % 290 + 1) +
                             std::string(round % 3 == 0 ? 9000 : 0, '\r');
    const ByteSummary summary = SummariseBytes(text);
    std::size_t cr = 0, lf = 0, pairs = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      cr += text[i] == '\r';
      lf += text[i] == '\n';
      pairs += text[i] == '\n' && i > 0 && text[i - 1] == '\r';
    }
    ASSERT_EQ(summary.CarriageReturns, cr);
    ASSERT_EQ(summary.LineFeeds, lf);
    ASSERT_EQ(summary.Pairs, pairs);
    ASSERT_EQ(summary.Ascii, FirstNonAscii(text) == text.size());
    ASSERT_EQ(summary.HasNul, text.find('\0') != std::string::npos);
  }
}

TEST(SourceText, IllFormedUtf8IsKnown) {
  for (const char* bad :
       {"\x80", "\xC0\x80", "\xC3", "\xE0\x80\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80",
        "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "aaaaaaaa\xE2\x82"})
    EXPECT_FALSE(IsValidUtf8(bad)) << bad;
  for (const char* good : {"", "a", "é", "€", "😀", "\xEE\x80\x80", "\xF4\x8F\xBF\xBF", "\x7F"})
    EXPECT_TRUE(IsValidUtf8(good)) << good;
}

TEST(CodePage, IsFoundByItsManyNames) {
  const std::pair<const char*, const char*> cases[] = {
      {"1252", "windows-1252"},
      {"CP1251", "windows-1251"},
      {"Windows-1250", "windows-1250"},
      {"Shift_JIS", "cp932"},
      {"932", "cp932"},
      {"gbk", "cp936"},
      {"65001", "utf-8"},
      {"iso-8859-2", "iso-8859-2"},
      {"28592", "iso-8859-2"},
      {"", "windows-1252"},
  };
  for (const auto& [given, name] : cases) EXPECT_EQ(CodePage::Named(given).Name(), name) << given;
  EXPECT_EQ(CodePage::Find("no-such-page"), nullptr);
  EXPECT_EQ(CodePage::Find("UTF-16"), nullptr);
  EXPECT_THROW(CodePage::Named("99999"), VendrelError);
}

// The page of most files is written out here; the C library has it too, in other names' company.
TEST(CodePage, TheDefaultIsThatOfTheSystem) {
  iconv_t system = iconv_open("UTF-8", "WINDOWS-1252");
  ASSERT_NE(system, reinterpret_cast<iconv_t>(-1));
  for (int byte = 0; byte < 256; ++byte) {
    char in = static_cast<char>(byte), buffer[8];
    char *from = &in, *to = buffer;
    std::size_t inLeft = 1, outLeft = sizeof buffer;
    const bool known = iconv(system, &from, &inLeft, &to, &outLeft) != static_cast<std::size_t>(-1);
    iconv(system, nullptr, nullptr, nullptr, nullptr);
    const std::string one(1, static_cast<char>(byte));
    std::string expected(buffer, sizeof buffer - outLeft), text, back;
    if (!known) AppendUtf8(expected, static_cast<char32_t>(byte));  // a hole
    EXPECT_TRUE(CodePage::Default().Decode(one, text));
    EXPECT_EQ(text, expected) << byte;
    EXPECT_TRUE(CodePage::Default().Encode(text, back));
    EXPECT_EQ(back, one) << byte;
    EXPECT_EQ(CodePage::Default().CountUndefined(one), known ? 0u : 1u) << byte;
  }
  iconv_close(system);
}

// What is counted is what decoding brings about, in pages of one byte a character and of more.
TEST(CodePage, UndefinedBytesAreCounted) {
  std::string bytes = "ab";
  for (int byte = 0x80; byte < 0x100; ++byte) bytes += static_cast<char>(byte);
  for (const char* name : {"1252", "1253", "1257", "874", "437", "932", "949"}) {
    const CodePage& page = CodePage::Named(name);
    std::string text;
    page.Decode(bytes, text);
    std::size_t undefined = 0;
    for (std::size_t at = 0; at < text.size();) {
      const char32_t c = TakeCharacter(text, at);
      undefined += c == ReplacementCharacter || (c >= 0x80 && c < 0xA0);
    }
    EXPECT_EQ(page.CountUndefined(bytes), undefined) << name;
  }
}

TEST(CodePage, IsGuessedOnceForAllFilesFed) {
  const auto guess = [](std::initializer_list<std::string> files) {
    CodePageChooser chooser("auto");
    for (const std::string& bytes : files) chooser.Feed(bytes);
    return chooser.Choose();
  };
  std::string russian, japanese;
  CodePage::Named("1251").Encode(
      "' Функция вычисляет сумму всех значений списка и проверяет её\r\n"
      "' Если файл не найден, выводится сообщение об ошибке\r\n",
      russian);
  CodePage::Named("932").Encode(
      "' この関数は一覧にあるすべての値の合計を計算します\r\n"
      "' ファイルが見つからない場合はエラーを表示する\r\n",
      japanese);
  std::string french, czech;
  CodePage::Default().Encode(
      "' désassemble le code commençant à l'entrée du fichier ouvert\r\n"
      "' recherche le nom de l'instruction à partir du début, même très loin où il est\r\n",
      french);
  CodePage::Named("1250").Encode(
      "' Tato funkce vypočítá součet všech hodnot v seznamu a vrátí jej volajícímu\r\n"
      "' Pokud soubor nebyl nalezen, zobrazí se chybové hlášení a běh končí příkazem\r\n",
      czech);
  EXPECT_EQ(guess({french}), "windows-1252");
  EXPECT_EQ(guess({czech}), "windows-1250");
  EXPECT_EQ(guess({"Dim a\r\n", russian}), "windows-1251");
  EXPECT_EQ(guess({japanese, "x"}), "cp932");
  EXPECT_EQ(guess({"only ascii", "größe",
                   "\xFF\xFE"
                   "a"}),
            "windows-1252");
  EXPECT_EQ(guess({"' Tama\xF1o\r\n"}), "windows-1252");
  // What the guesser takes for Baltic.
  EXPECT_EQ(guess({"Firm=\"Bront\xEB & Sons\"\r\n' Bront\xEB\r\nx = \"Bront\xEB\"\r\n",
                   "' Bront\xEB, Bront\xEB\r\n"}),
            "windows-1252");
  struct {
    const char* Page;
    const char* Text;
    const char* Damage;
  } const others[] = {
      {"cp936", "' 返回当前文件的名称和大小，如果文件不存在则显示错误信息\r\n", ""},
      {"cp936", "Caption = \"工程一\"\r\nCaption = \"退出\"\r\n", ""},
      {"cp949", "' 목록에 있는 모든 값의 합계를 계산하고 파일이 없으면 오류를 표시한다\r\n", ""},
      {"cp950", "' 傳回目前檔案的名稱與大小，如果檔案不存在則顯示錯誤訊息\r\n", ""},
      {"cp932", "' ファイルが見つからない場合はエラーを表示する\r\n' 値の合計を計算します\r\n",
       "x = \"\x95\"\r\n"},
      // Pairs of capitals that would be everyday ideographs, but stand alone.
      {"windows-1252", "' FUNÇÃO\r\n' DESCRIÇÃO, OPÇÕES\r\n' AÇÃO NÃO É\r\n' REFEIÇÃO\r\n", ""},
      {"windows-1252", "' Le créateur\r\n", "UTF-8 among it: \xE5\xB7\xA5\xE7\xA8\x8B\r\n"},
      {"windows-1252", "' Größe\r\n", "\x01\x95\x5C\x8E\xA6\x82\xA0\x82\xA2\x82\xA4\r\n"},
  };
  for (const auto& item : others) {
    std::string bytes;
    ASSERT_TRUE(CodePage::Named(item.Page).Encode(item.Text, bytes)) << item.Text;
    if (item.Page == std::string("cp932")) bytes += bytes + bytes + bytes;
    EXPECT_EQ(guess({bytes + item.Damage}), item.Page) << item.Text;
  }
  CodePageChooser fixed("1251");
  EXPECT_FALSE(fixed.Guesses());
  fixed.Feed(japanese);
  EXPECT_EQ(fixed.Choose(), "windows-1251");
  EXPECT_THROW(CodePageChooser("nonsense"), VendrelError);
}

}  // namespace
}  // namespace vendrel
