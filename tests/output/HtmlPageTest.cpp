#include "output/HtmlPage.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "core/Ascii.h"
#include "output/CodePieces.h"
#include "support/DiskFolder.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

std::string Show(std::string_view source) {
  std::string shown;
  bool goesOn = false;
  for (std::string_view rest = source; !rest.empty();) {
    CodePiece piece;
    for (TokenPieces pieces(TakeField(rest, '\n'), goesOn); pieces.Next(piece);) {
      constexpr std::string_view kOpen[] = {"", "{k|", "{c|", "{s|"};
      shown.append(kOpen[static_cast<int>(piece.Part)]).append(piece.Text);
      if (piece.Part != CodePart::Plain) shown += '}';
    }
    if (!rest.empty()) shown += '/';
  }
  return shown;
}

TEST(TokenPieces, FindTheWordsOfTheLanguageWhereverTheyStand) {
  const std::pair<const char*, const char*> cases[] = {
      {"F(ByVal a As Long)", "F({k|ByVal} a {k|As} {k|Long})"},
      {"Friend x%, (Not a)", "{k|Friend} x%, ({k|Not} a)"},
      {"rs.Open f!Next [End] Date$", "rs.Open f!Next [End] Date$"},
      {"Cells.Find What:=a, Type:=b", "Cells.Find What:=a, Type:=b"},
      {"#If Win32 Then", "#{k|If} Win32 {k|Then}"},
      {"EndIf If1 Élse", "EndIf If1 Élse"},
      {"&HEnd 10 Rem a", "&HEnd 10 Rem a"},
      {"10 Rem If", "10 {c|Rem If}"},
      {"x: Rem If", "x: {c|Rem If}"},
      {"Remember Me", "Remember {k|Me}"},
      {"s=\"a\"\"If\"'c", "s={s|\"a\"\"If\"}{c|'c}"},
      {"s = \"open", "s = {s|\"open}"},
      {"[opened If", "[opened {k|If}"},
      {"' a _\nIf\nIf", "{c|' a _}/{c|If}/{k|If}"},
      {"\tx 'y", "\tx {c|'y}"},
  };
  for (const auto& [source, expected] : cases) EXPECT_EQ(Show(source), expected);
}

std::string PageOf(const HtmlPage::Listing& listing, std::string_view title = "Title") {
  std::ostringstream out;
  HtmlPage page(out, title);
  page.Add(listing);
  page.Finish();
  return out.str();
}

// The text of the listings of a page, or of what a browser made of it.
std::string TextOf(std::string_view html) {
  std::string text;
  bool inTag = false;
  for (std::size_t at = html.find("<pre"); at != std::string_view::npos;
       at = html.find("<pre", at)) {
    const std::size_t end = html.find("</pre>", at);
    for (; at < end; ++at) {
      if (html[at] == '<') inTag = true;
      if (!inTag) text += html[at];
      if (html[at] == '>') inTag = false;
    }
  }
  for (const auto& [name, character] :
       {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&amp;", "&"}})
    text = ReplaceAll(text, name, character);
  return text;
}

constexpr const char* kHostile =
    "\n</pre></code><script>document.title='x'</script>\n"
    "s = \"</span><img src=x onerror=alert(1)>\" & \"&lt;b&gt;\" ' --><!-- &amp; &#60; <b>\n"
    "\tIf a<b And c>d Then x = &H10 & y ' Ж \xE2\x80\xA8 '\n\n  s = \"never closed <i>\n";

TEST(HtmlPage, HasAnchorsAndTheNumberOfEachLine) {
  const std::string page = PageOf({"M & N", "m.bas<", "a\nIf b\n", 41, {{42, "P~M~\"F\""}}}, "<T>");
  for (const char* part :
       {"<title>&lt;T&gt;</title>", "<meta charset=\"utf-8\">", "prefers-color-scheme:dark",
        "<h2>M &amp; N<small>m.bas&lt;</small></h2>", "counter-reset:line 40",
        "<span class=l id=m1-41>a</span>\n",
        "<span class=l id=m1-42><a id=\"P~M~&quot;F&quot;\"></a><span class=k>If</span> b</span>\n",
        "<a href=\"#m1-42\">P~M~&quot;F&quot;</a>", "default-src 'none'"})
    EXPECT_NE(page.find(part), std::string::npos) << part << " is not in\n" << page;
}

TEST(HtmlPage, ShowsAModuleWithItsProceduresAndAProcedureAlone) {
  test::TestModule module("M.bas", "Dim a\n' about\nSub A()\nx = 1 : y = 2\nEnd Sub\n' behind\n",
                          test::Complete());
  const auto whole = ListingOf(*module, "M.bas");
  EXPECT_EQ(whole.Anchors, (std::vector<HtmlPage::Anchor>{{4, "P~M~A"}}));
  EXPECT_EQ(TextOf(PageOf(whole)), ReplaceAll(module->SourceForm->Text, "\r\n", "\n"));
  std::string text;
  const auto procedure = ListingOf(*module->Blocks.Item("A"), "M.bas:4", text);
  EXPECT_EQ(procedure.Text, "Sub A()\nx = 1 : y = 2\nEnd Sub\n");
  EXPECT_EQ(procedure.FirstLine, 4);
}

TEST(HtmlPage, NeverLetsSourceBecomeMarkUp) {
  const std::string page = PageOf({kHostile, kHostile, kHostile, 1, {{1, kHostile}}}, kHostile);
  EXPECT_EQ(TextOf(page), kHostile);
  for (const char* part : {"<script", "<img", "<!--", "<b>", "<i>"})
    EXPECT_EQ(page.find(part), std::string::npos) << part;
  EXPECT_EQ(TextOf(PageOf({"M", "", std::string_view("a\0b", 3), 1, {}})),
            "a\xEF\xBF\xBD"
            "b\n");
}

TEST(HtmlPage, MarksCharactersThatTurnTheDirection) {
  const std::string page = PageOf({"M", "", "x = \"\xE2\x80\xAE'\" ' \xE2\x81\xA7\n", 1, {}});
  for (const char* part : {"<span class=s>\"<span class=b title=\"U+202E\">\xE2\x80\xAE</span>'\"",
                           "<span class=b title=\"U+2067\">\xE2\x81\xA7</span></span>",
                           ".c,.s,.b{unicode-bidi:isolate;direction:ltr}"})
    EXPECT_NE(page.find(part), std::string::npos) << part << " is not in\n" << page;
  EXPECT_EQ(TextOf(page), "x = \"\xE2\x80\xAE'\" ' \xE2\x81\xA7\n");
}

std::string Browser() {
  const char* path = std::getenv("PATH");
  std::istringstream folders(path ? path : "");
  for (std::string folder; std::getline(folders, folder, ':');)
    for (const char* name : {"chromium", "chromium-headless-shell", "google-chrome"})
      if (std::filesystem::exists(folder + "/" + name)) return folder + "/" + name;
  return {};
}

TEST(HtmlPage, IsReadByABrowserAsTheSource) {
  const std::string browser = Browser();
  if (browser.empty()) GTEST_SKIP() << "no browser is installed (Debian's package: chromium)";
  const test::DiskFolder folder;
  folder.Write("page.html", PageOf({"M", "m.bas", kHostile, 1, {{2, "a\"><b>"}}}, "</title><b>"));
  const std::string command = "cd '" + folder.Path() + "' && HOME=\"$PWD\" timeout 120 '" +
                              browser +
                              "' --headless --no-sandbox --disable-gpu --dump-dom 'file://" +
                              folder.Path("page.html") + "' > dom.html 2> log";
  ASSERT_EQ(std::system(command.c_str()), 0) << command;
  const std::string dom = ReadWholeFile(folder.Path("dom.html"));
  EXPECT_EQ(TextOf(dom), kHostile);
  EXPECT_NE(dom.find("<title>&lt;/title&gt;&lt;b&gt;</title>"), std::string::npos) << dom;
  for (const char* part : {"<script", "<img", "<!--", "<b>", "<i>"})
    EXPECT_EQ(dom.find(part), std::string::npos) << part;
}

}  // namespace
}  // namespace vendrel
