#include "project/ProjectCodePage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "services/CodePage.h"
#include "support/MemoryFiles.h"

namespace vendrel {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::string In(const char* page, std::string_view text) {
  std::string bytes;
  EXPECT_TRUE(CodePage::Named(page).Encode(text, bytes)) << text;
  return bytes;
}

std::string Guess(const char* path) { return GuessCodePage(FileSystemObject(path)).Page; }

constexpr const char* kJapanese =
    "' この関数は一覧にあるすべての値の合計を計算します\r\n"
    "' ファイルが見つからない場合はエラーを表示する\r\n";

TEST(ProjectCodePage, IsTheOneUnderWhichTheListedFilesExist) {
  struct {
    const char* Page;
    std::string Lines;
    std::vector<const char*> Files;
    const char* Evidence;
  } const cases[] = {
      // Second bytes that are backslashes.
      {"cp932",
       "Form=表示.frm\r\nModule=a; ソ連\\能.bas\r\nClass=予; 予.cls\r\n",
       {"表示.frm", "ソ連/能.bas"},
       "2 of 3 listed files"},
      {"cp950", "Form=許功蓋.frm\r\n", {"許功蓋.FRM"}, "1 of 1 listed files"},
      {"cp949", "ResFile32=\"한글.res\"\r\n", {"한글.res"}, "1 of 1 listed files"},
      {"windows-1251", "Module=m; Модуль.bas\r\n", {"Модуль.bas"}, "1 of 1 listed files"},
      // As under other pages; the bytes do not tell them apart.
      {"windows-1252", "Form=Formulário.frm\r\n", {"Formulário.frm"}, "1 of 1 listed files"},
  };
  for (const auto& item : cases) {
    test::MemoryFiles files{{"/p/A.vbp", In(item.Page, item.Lines)}};
    for (const char* file : item.Files) files.Add(std::string("/p/") + file, "Rem\r\n");
    const CodePageGuess guess = GuessCodePage(FileSystemObject("/p/A.vbp"));
    EXPECT_EQ(guess.Page, item.Page);
    EXPECT_THAT(guess.Evidence, StartsWith(item.Evidence)) << item.Page;
    // The members of a group are listed files, too.
    if (item.Page != std::string("cp932")) continue;
    files.Add("/p/G.vbg", In("932", "VBGROUP 5.0\r\nStartupProject=表示.frm\r\n"));
    EXPECT_EQ(Guess("/p/G.vbg"), "cp932");
  }
}

TEST(ProjectCodePage, ComesFromNeighboursWhereThereIsLittleToGoBy) {
  const std::string caption = In("932", "Title=\"表示\"\r\n");
  test::MemoryFiles files{
      {"/jp/A.vbp", caption + "Module=a; lib\\a.bas\r\n"},
      {"/jp/lib/a.bas", "Rem\r\n"},
      {"/jp/lib/other.cls", In("932", kJapanese) + In("932", kJapanese)},
      {"/jp/French.vbp", "Title=\"caf\xE9\"\r\nModule=a; lib\\a.bas\r\n"},
      {"/jp/lib/other.txt", std::string(5000, '\xE9')},
      {"/named/A.vbp", caption},
      {"/named/B.vbp", In("932", "Form=表示.frm\r\n")},
      {"/named/表示.frm", "Rem\r\n"},
      {"/alone/A.vbp", caption},
      {"/alone/sub/B.vbp", In("932", kJapanese)},
  };
  FileOptions::Current().CodePage = "1250";
  EXPECT_EQ(Guess("/alone/A.vbp"), "windows-1252");
  const CodePageGuess guess = GuessCodePage(FileSystemObject("/jp/A.vbp"));
  EXPECT_EQ(guess.Page, "cp932");
  EXPECT_THAT(guess.Evidence, HasSubstr("with the files beside them 9"));
  EXPECT_THAT(GuessCodePage(FileSystemObject("/named/A.vbp")).Evidence,
              HasSubstr("B.vbp beside it: 1 of 1 listed files"));
  // What the neighbours were written with does not fit.
  EXPECT_EQ(Guess("/jp/French.vbp"), "windows-1252");
  // Whatever was asked for in between, the answer is the same; the page in force is not touched.
  EXPECT_EQ(Guess("/alone/A.vbp"), "windows-1252");
  EXPECT_EQ(FileOptions::Current().CodePage, "1250");
  FileOptions::Current() = {};
  EXPECT_EQ(Guess("/alone/none.vbp"), "windows-1252");
}

TEST(ProjectCodePage, OfEachOfManyProjectsIsThatOfItAlone) {
  const std::string few = In("932", "Title=\"表示\"\r\n"), many(3000, '\xE9');
  test::MemoryFiles files{
      {"/p/A.vbp", few + "Module=a; a.bas\r\n"},
      {"/p/B.vbp", few + "Module=b; b.bas\r\nModule=n; none.bas\r\n"},
      {"/p/C.vbp", "Title=\"caf\xE9\"\r\nModule=a; a.bas\r\n"},
      {"/p/D.vbp", "Title=\"caf\xE9\"\r\nModule=e; e.bas\r\nModule=a; a.bas\r\n"},
      {"/p/a.bas", "Rem\r\n"},
      {"/p/b.bas", In("932", kJapanese)},
      {"/p/c.bas", In("932", kJapanese) + In("932", kJapanese)},
      {"/p/e.bas", "'" + many + "\r\n"},
  };
  // More than a guess takes in.
  std::string japanese;
  for (int i = 0; i < 40; ++i) japanese += In("932", kJapanese);
  for (int i = 0; i < 100; ++i) files.Add("/p/f" + std::to_string(i) + ".bas", japanese);
  const char* const projects[] = {"/p/A.vbp", "/p/B.vbp", "/p/C.vbp", "/p/D.vbp"};
  std::vector<CodePageGuess> alone;
  for (const char* path : projects) alone.push_back(GuessCodePage(FileSystemObject(path)));
  EXPECT_THAT(alone[0].Evidence, HasSubstr("with the files beside them"));
  const KeptFolders run;
  for (int turn = 0; turn < 2; ++turn) {
    files.ForgetCalls();
    for (std::size_t i = 0; i < alone.size(); ++i) {
      const CodePageGuess guess = GuessCodePage(FileSystemObject(projects[i]));
      EXPECT_EQ(guess.Page, alone[i].Page) << projects[i];
      EXPECT_EQ(guess.Evidence, alone[i].Evidence) << projects[i];
    }
  }
  // The projects themselves were read again, and the neighbour that passed the limit.
  EXPECT_LT(files.Calls().size(), 100u);
}

TEST(ProjectCodePage, IsThatOfFileNamesThatAreNoUtf8) {
  const std::string name = In("932", "表示.frm");
  test::MemoryFiles files{{"/raw/A.vbp", "Form=" + name + "\r\n"},
                          {"/raw/" + name, In("932", kJapanese)}};
  const CodePageGuess guess = GuessCodePage(FileSystemObject("/raw/A.vbp"));
  EXPECT_EQ(guess.Page, "cp932");
  FileOptions::Current().CodePage = guess.Page;
  EXPECT_TRUE(FileSystemObject("/raw/表示.frm").Exists());
  FileOptions::Current() = {};
}

}  // namespace
}  // namespace vendrel
