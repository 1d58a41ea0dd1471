// The command `site`: hostile input, growth, and what becomes of the files of a folder.

#include "site/CheckedSite.h"
#include "support/MemoryFiles.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

constexpr const char* kProject =
    "Type=Exe\r\nModule=modMain; modMain.bas\r\nClass=Item; Item.cls\r\nName=\"Shop\"\r\n";
constexpr const char* kItem =
    "VERSION 1.0 CLASS\r\nBEGIN\r\n  MultiUse = -1\r\nEND\r\nAttribute VB_Name = \"Item\"\r\n"
    "'##SUMMARY How many.\r\nPublic Property Get Size() As Long\r\nEnd Property\r\n"
    "Private Sub Inner()\r\n  Dim a As Currency.Sum\r\nEnd Sub\r\n";

class SiteCommand : public testing::Test {
 protected:
  test::MemoryFiles mFiles{
      {"/g/Shop.vbp", kProject},
      {"/g/Item.cls", kItem},
      {"/g/modMain.bas",
       "Attribute VB_Name = \"modMain\"\r\nPublic Const RATE = 3\r\nPublic Sub Run(x As Item)\r\n"
       "  x.Size\r\nEnd Sub\r\n"}};

  std::string Make(const std::vector<std::string>& more = {}, int code = exDone) {
    std::vector<std::string> arguments{"site", "/g/Shop.vbp", "--to", "/out", "--quiet"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunFor(arguments, code);
  }
  test::CheckedSite Site() const {
    std::map<std::string, std::string> files;
    for (const std::string& path : mFiles.Paths())
      if (path.starts_with("/out/")) files[path.substr(5)] = mFiles[path];
    return test::CheckedSite(std::move(files));
  }
};

// Lines of source as a browser shows them, and the list below them.
TEST_F(SiteCommand, NamesOfSourceLeadToDeclarationsAndDeclarationsToUses) {
  mFiles.Add("/g/modMain.bas",
             "Attribute VB_Name = \"modMain\"\r\nPrivate mTotal\r\n"
             "Public Sub Run(x As Item)\r\n  Dim sum, never\r\n  sum = x.Size\r\n"
             "  mTotal = sum + sum\r\nEnd Sub\r\n");
  Make();
  const test::CheckedSite site = Site();
  EXPECT_THAT(site.Faults(), testing::IsEmpty());
  const std::string& page = site["Shop/source/modMain.bas.html"];
  for (const char* part :
       {"<a class=\"u\" href=\"#d2-9\">mTotal</a>", "href=\"#d4-7\">sum</a>",
        "href=\"#d3-16\">x</a>", "href=\"#L2\"><bdi>mTotal</bdi>",
        "href=\"../Item/Size.html\">Size</a>",
        "<li id=\"d4-7\"><a href=\"#L4\"><bdi>sum</bdi></a> <span class=\"of\">of "
        "<bdi>Run</bdi>, used in lines <a href=\"#L5\">5</a>, <a "
        "href=\"#L6\">6</a></span></li>"})
    EXPECT_THAT(page, HasSubstr(part));
  EXPECT_THAT(page, testing::Not(HasSubstr("id=\"d4-12\"")));
}

TEST_F(SiteCommand, NamesOfVBNetSourceAreBoundInEachPartOfAType) {
  mFiles.Add("/n/Net.vbproj",
             "<Project><PropertyGroup><RootNamespace>Net</RootNamespace></PropertyGroup><ItemGroup>"
             "<Compile Include=\"A.vb\"/><Compile Include=\"B.vb\"/></ItemGroup></Project>");
  mFiles.Add("/n/A.vb",
             "Partial Public Class Till\n  Public Sub Pay(sum As Long)\n    mCount += sum\n"
             "  End Sub\nEnd Class\nPublic Class Shop\n  Public Sub Open(t As Till)\n"
             "    t.Pay(1)\n  End Sub\nEnd Class\n");
  mFiles.Add("/n/B.vb",
             "Partial Public Class Till\n  Public Sub Other()\n  End Sub\n"
             "  Private mCount As Long\nEnd Class\n");
  RunFor({"site", "/n/Net.vbproj", "--to", "/out", "--quiet"});
  const test::CheckedSite site = Site();
  EXPECT_THAT(site.Faults(), testing::IsEmpty());
  const std::string& page = site["Net/source/A.vb.html"];
  for (const char* part :
       {"href=\"../Till/index.html\">Till</a>", "href=\"../Till/Pay.html\">Pay</a>(",
        "href=\"B.vb.html#L4\">mCount</a>", "href=\"#d2-18\">sum</a>",
        "<li id=\"d2-18\"><a href=\"#L2\"><bdi>sum</bdi></a> <span class=\"of\">of "
        "<bdi>Pay</bdi>, used in line <a href=\"#L3\">3</a></span></li>"})
    EXPECT_THAT(page, HasSubstr(part));
  EXPECT_THAT(site["Net/Till/Pay.html"], HasSubstr("<bdi>Shop.Open</bdi>"));
}

TEST_F(SiteCommand, NothingOfASourceBecomesMarkUpOrScript) {
  const std::string evil = "</code></pre><script>alert(1)</script><img src=x onerror=alert(1)>";
  mFiles.Add("/g/Shop.vbp",
             "Type=Exe\r\nModule=modMain; modMain.bas\r\nForm=F.frm\r\nClass=Item; Item.cls\r\n"
             "Name=\"<b onclick='x'>\"\r\nDescription=\"" +
                 evil + "\"\r\n");
  mFiles.Add("/g/F.frm", "VERSION 5.00\r\nBegin VB.Form F\r\n  Caption = \"" + evil +
                             "\"\r\n  ClientWidth = 3000\r\n  ClientHeight = 3000\r\n"
                             "  Begin VB.<script>x c<script>\r\n    Left = 1\r\n    Width = 900\r\n"
                             "    Caption = \"&<i>\"\r\n  End\r\nEnd\r\n"
                             "Attribute VB_Name = \"F\"\r\n");
  mFiles.Add("/g/modMain.bas",
             "Attribute VB_Name = \"modMain\"\r\n'##SUMMARY " + evil +
                 "<a href=\"javascript:x\">a</a><a href='https://e.org/?a=\"><script>'>b</a>"
                 "<b><ul><li></b></ul><table><li>\r\n"
                 "Public Sub Run(Optional s = \"" +
                 evil + "\")\r\n  s = \"\x01\xE2\x80\xAE\" ' " + evil +
                 "\r\nEnd Sub\r\nPublic Const A = \"" + evil + "\"\r\n");
  Make({"--private", "--title", evil});
  const test::CheckedSite site = Site();
  EXPECT_THAT(site.Faults(), testing::IsEmpty());
  for (const auto& [path, content] : site.Files())
    EXPECT_THAT(content, Not(HasSubstr("href=\"javascript"))) << path;
  for (const auto& [path, content] : site.Files()) {
    if (path.starts_with("search/")) {
      EXPECT_THAT(content, Not(HasSubstr("</"))) << path;
    }
  }
  EXPECT_THAT(site["name-b-onclick--x---a5b5d6b3/index.html"] + site["index.html"],
              HasSubstr("&lt;script&gt;alert(1)"));
}

TEST_F(SiteCommand, NamesThatAreNoFileNamesComeOutRight) {
  const std::string longName(300, 'x');
  std::string code = "Attribute VB_Name = \"modMain\"\r\n";
  for (const std::string& name :
       {std::string("con"), std::string("index"), std::string("Итого"), std::string("итоги"),
        std::string("合計"), std::string("مجموع"), longName + "a", longName + "b",
        std::string("[a/../b]"), std::string("constants"), std::string("_")})
    code.append("Public Sub ").append(name).append("()\r\nEnd Sub\r\n");
  mFiles.Add("/g/modMain.bas", code);
  mFiles.Add("/g/ITEM2.cls", "Attribute VB_Name = \"ITEM\"\r\n");
  mFiles.Add("/g/Shop.vbp", std::string(kProject) + "Class=aux; ITEM2.cls\r\n");
  Make({"--private"});
  const test::CheckedSite site = Site();
  EXPECT_THAT(site.Faults(), testing::IsEmpty());
  std::set<std::string> lower;
  for (const auto& [path, content] : site.Files()) {
    EXPECT_TRUE(lower.insert(LowerAscii(path)).second) << path;
    EXPECT_EQ(path.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                     "0123456789_-./"),
              std::string::npos)
        << path;
    EXPECT_LT(path.size(), 220u);
    EXPECT_EQ(path.find("con.html"), std::string::npos);
  }
  std::size_t members = 0;
  for (const auto& [path, content] : site.Files()) members += path.starts_with("Shop/modMain/");
  EXPECT_EQ(members, 12u);
}

TEST_F(SiteCommand, LongThingsGoOverSeveralPages) {
  std::string code = "Attribute VB_Name = \"modMain\"\r\nPublic Enum E\r\n";
  for (int i = 0; i < 1200; ++i) code += "  e" + std::to_string(i) + "\r\n";
  code += "End Enum\r\n";
  for (int i = 0; i < 1200; ++i)
    code += "Public Const C" + std::to_string(i) + " = \"" + std::string(300, '<') + "\"\r\n";
  for (int i = 0; i < 1700; ++i) code += "Public Sub S" + std::to_string(i) + "()\r\nEnd Sub\r\n";
  code += "' " + std::string(3 << 20, '&') + "\r\n";
  mFiles.Add("/g/modMain.bas", code);
  Make();
  const test::CheckedSite site = Site();
  EXPECT_THAT(site.Faults(), testing::IsEmpty());
  for (const char* page :
       {"Shop/modMain/index--3.html", "Shop/modMain/constants--3.html", "Shop/modMain/E--3.html",
        "Shop/source/modMain.bas--3.html", "names/letter-s--3.html"})
    EXPECT_NE(site[page], "") << page;
  EXPECT_THAT(site["Shop/modMain/S1699.html"], HasSubstr("source/modMain.bas--"));
}

TEST_F(SiteCommand, WritesWhatChangedAndRemovesWhatIsGone) {
  Make();
  mFiles.Add("/out/notes.txt", "mine");
  EXPECT_THAT(Make(), StartsWith("/out: 0 files written"));
  mFiles.Add("/g/Item.cls", ReplaceAll(kItem, "How many.", "How much."));
  const std::string told = Make();
  EXPECT_THAT(told, HasSubstr(", 0 removed"));
  EXPECT_THAT(told, Not(HasSubstr(" 0 files written")));
  EXPECT_THAT(mFiles["/out/Shop/Item/Size.html"], HasSubstr("How much."));
  mFiles.Add("/g/Item.cls", ReplaceAll(kItem, "Size", "Extent"));
  EXPECT_THAT(Make(), HasSubstr(", 1 removed"));
  EXPECT_FALSE(mFiles.Has("/out/Shop/Item/Size.html"));
  EXPECT_EQ(mFiles["/out/notes.txt"], "mine");
  mFiles.Remove("/out/Shop/Item/Extent.html");
  EXPECT_THAT(Make(), StartsWith("/out: 1 file written"));
}

TEST_F(SiteCommand, LeavesFilesOfOthersAlone) {
  mFiles.Add("/out/index.html", "mine");
  const std::string refused = Make({}, exFailed);
  EXPECT_THAT(refused, AllOf(HasSubstr("/out"), HasSubstr("--yes")));
  EXPECT_EQ(mFiles.Paths().size(), 4u);
  Make({"--yes"});
  EXPECT_THAT(mFiles["/out/index.html"], StartsWith("<!DOCTYPE html>"));
  mFiles.Add("/g/Item.cls", ReplaceAll(kItem, "Size", "Extent"));
  mFiles.Add("/out/Shop/Item/Extent.html", "mine");
  EXPECT_THAT(Make({}, exFailed), HasSubstr("no file of this site"));
  EXPECT_EQ(mFiles["/out/Shop/Item/Extent.html"], "mine");
  // A list that was tampered with reaches nothing outside.
  mFiles.Remove("/out/Shop/Item/Extent.html");
  mFiles.Add("/kept.txt", "mine");
  mFiles.Add("/out/site-files.txt", mFiles["/out/site-files.txt"] +
                                        "0000000000000000 4 ../kept.txt\n"
                                        "0000000000000000 4 /kept.txt\n");
  Make();
  EXPECT_EQ(mFiles["/kept.txt"], "mine");
}

TEST_F(SiteCommand, GoesOnWhereARunWasEnded) {
  for (const int call : {40, 80, 160, 320}) {
    mFiles.FailAt(call, ENOSPC);
    Tool({"site", "/g/Shop.vbp", "--to", "/out", "--quiet"});
    mFiles.FailAt(0, 0);
    Make();
    EXPECT_THAT(Site().Faults(), testing::IsEmpty()) << call;
    for (const std::string& path : mFiles.Paths())
      if (path.starts_with("/out/")) {
        EXPECT_FALSE(path.ends_with(".part")) << path;
        mFiles.Remove(path);
      }
  }
}

TEST_F(SiteCommand, OptionsSayWhatIsShown) {
  Make();
  EXPECT_FALSE(mFiles.Has("/out/Shop/Item/Inner.html"));
  EXPECT_THAT(mFiles["/out/Shop/Item/index.html"], HasSubstr("../source/Item.cls.html"));
  Make({"--private", "--no-source", "--link", "Currency=https://example.org/{name}?a&b", "--title",
        "The Shop"});
  EXPECT_TRUE(mFiles.Has("/out/Shop/Item/Inner.html"));
  EXPECT_FALSE(mFiles.Has("/out/Shop/source/Item.cls.html"));
  EXPECT_THAT(mFiles["/out/index.html"], HasSubstr("<title>The Shop</title>"));
  EXPECT_THAT(Site().Faults(), testing::IsEmpty());
  mFiles.Add("/a/style.css", "body{}");
  mFiles.Add("/a/more.css", "p{}");
  Make({"--assets", "/a"});
  EXPECT_EQ(mFiles["/out/assets/style.css"], "body{}");
  EXPECT_EQ(mFiles["/out/assets/more.css"], "p{}");
  EXPECT_THAT(Make({"--link", "x"}, exUsage), HasSubstr("--link"));
}

TEST_F(SiteCommand, MarksWhatDiffersFromAnotherRelease) {
  mFiles.Add("/old/Shop.vbp", kProject);
  mFiles.Add("/old/Item.cls", ReplaceAll(kItem, "Inner", "Former"));
  mFiles.Add("/old/modMain.bas",
             "Attribute VB_Name = \"modMain\"\r\nPublic Const RATE = 4\r\nPublic Sub Run(x As Item)"
             "\r\nEnd Sub\r\n");
  Make({"--diff", "/old/Shop.vbp", "--private"});
  const test::CheckedSite site = Site();
  EXPECT_THAT(site.Faults(), testing::IsEmpty());
  const std::string& changes = site["changes.html"];
  for (const char* part : {">Item.Inner</bdi>", ">modMain.Run</bdi>", ">modMain.RATE</bdi>",
                           "Shop.Item.Former", "Declared otherwise", "Changed within", ">Gone<"})
    EXPECT_THAT(changes, HasSubstr(part));
  EXPECT_THAT(changes, Not(HasSubstr("Item.Size")));
  EXPECT_THAT(site["Shop/Item/Inner.html"], HasSubstr("class=\"tag new\""));
  Make({"--diff", "/g/Shop.vbp", "--private"});
  EXPECT_THAT(mFiles["/out/changes.html"], HasSubstr("Nothing differs."));
}

TEST_F(SiteCommand, XmlDocumentationOfSourceIsShown) {
  mFiles.Add("/n/A.vbproj",
             "<Project Sdk=\"Microsoft.NET.Sdk\"><PropertyGroup><RootNamespace>N</RootNamespace>"
             "</PropertyGroup></Project>");
  mFiles.Add("/n/C.vb",
             "''' <summary>Counts, see <see cref=\"T:N.D\"/>.</summary>\r\nPublic Class C\r\n"
             "  ''' <summary>Adds <paramref name=\"n\"/>.</summary>\r\n"
             "  ''' <param name=\"n\">How <c>much</c>.</param>\r\n"
             "  ''' <returns>A <list type=\"bullet\"><item>one</item></list></returns>\r\n"
             "  Public Function Add(n As Integer) As D\r\n  End Function\r\nEnd Class\r\n"
             "Public Class D\r\nEnd Class\r\n");
  RunFor({"site", "/n/A.vbproj", "--to", "/out", "--quiet"});
  const test::CheckedSite site = Site();
  EXPECT_THAT(site.Faults(), testing::IsEmpty());
  EXPECT_THAT(site["A/C/index.html"], HasSubstr("see <a href=\"../D/index.html\">"));
  const std::string& add = site["A/C/Add.html"];
  for (const char* part : {"Adds <em>n</em>.", "How <code>much</code>.", "<li>one</li>",
                           "<a class=\"t\" href=\"../D/index.html\">"})
    EXPECT_THAT(add, HasSubstr(part));
}

}  // namespace
}  // namespace vendrel::cli
