// The parts that pages are made of: prose, tokens, names.

#include <gtest/gtest.h>

#include <algorithm>

#include "site/PageNames.h"
#include "site/Prose.h"
#include "site/SiteHtml.h"
#include "site/SourceTokens.h"

namespace vendrel::site {
namespace {

TEST(Prose, KnowsThreeKindsOfMarkUpAndTakesTheRestAsText) {
  const ProseLinks links{
      [](std::string_view name) { return name == "P~M" ? "m.html" : std::string(); }};
  const std::pair<const char*, const char*> cases[] = {
      {"a < b & c > d", "<p>a &lt; b &amp; c &gt; d</p>"},
      {"short<crlf>line", "<p>short<br/>line</p>"},
      {"a line that its author wrapped because it was full<crlf>goes on",
       "<p>a line that its author wrapped because it was full goes on</p>"},
      {"one<p>two</p>", "<p>one</p><p>two</p>"},
      {"<b>bold<i>both</b> none", "<p><strong>bold<em>both</em></strong> none</p>"},
      {"<ul><li>a<li>b</ul>c", "<ul><li>a</li><li>b</li></ul><p>c</p>"},
      {"<b>x<ul><li>y</ul>", "<p><strong>x</strong></p><ul><li>y</li></ul>"},
      {"<li>lost<td>too", "<p>lost</p><p>too</p>"},
      {"<a href=\"P~M.html\">M</a> <a href=\"P~X.html\">X</a>",
       "<p><a href=\"m.html\">M</a> X</p>"},
      {"<a href=\"https://e.org/?a=1&b='\">e</a>",
       "<p><a href=\"https://e.org/?a=1&amp;b=%27\">e</a></p>"},
      {"<see cref=\"P~M\"/> <see langword=\"Nothing\"/>",
       "<p><a href=\"m.html\"><bdi>P~M</bdi></a> <code>Nothing</code></p>"},
      {"<a href=\"P~M.html\">x <see cref=\"P~M\"/></a>",
       "<p><a href=\"m.html\">x <code>P~M</code></a></p>"},
      {"<list type=\"table\"><item><term>t</term><description>d</description></item></list>",
       "<table><tr><td>t</td><td>d</td></tr></table>"},
      {"<code>x = 1</code>", "<p><code>x = 1</code></p>"},
      {"<font color=\"red\" onclick='x'>r</font> <blink>", "<p>r &lt;blink&gt;</p>"},
      {"&lt;b&gt; &#233;&unknown;", "<p>&lt;b&gt; é&amp;unknown;</p>"},
      {"<dl><dt>t<dd>d</dl>", "<dl><dt>t</dt><dd>d</dd></dl>"},
      {"< b>", "<p>&lt; b&gt;</p>"},
      {"  ", ""},
  };
  for (const auto& [text, expected] : cases) {
    std::string html;
    AppendProse(html, text, links);
    if (html.ends_with('\n')) html.pop_back();
    EXPECT_EQ(html, expected) << text;
  }
  // Depth has a bound.
  std::string deep, html;
  for (int i = 0; i < 5000; ++i) deep += "<ul><li><b>";
  AppendProse(html, deep, links);
  int depth = 0, deepest = 0;
  for (std::size_t at = html.find('<'); at != std::string::npos; at = html.find('<', at + 1))
    deepest = std::max(deepest, depth += html[at + 1] == '/' ? -1 : 1);
  EXPECT_EQ(depth, 0);
  EXPECT_LT(deepest, 40);
}

TEST(Prose, FirstLineIsTheFirstSentenceAsText) {
  const std::pair<const char*, const char*> cases[] = {
      {"One. Two.", "One."},
      {"For e.g. this. That.", "For e.g. this."},
      {"<b>a</b> &lt;<crlf>b", "a &lt; b"},
      {"See <see cref=\"T:N.C\"/>!", "See N.C!"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(FirstLine(text), expected);
}

std::string TokensOf(std::string_view source, bool isNet) {
  std::string shown;
  TokenState state;
  for (std::string_view rest = source; !rest.empty();) {
    const std::size_t end = rest.find('\n');
    SourceToken token;
    for (SourceTokens tokens(rest.substr(0, end), isNet, state); tokens.Next(token);) {
      constexpr const char* kMarks = " kNnsdcp.";
      const char mark = kMarks[static_cast<int>(token.Kind)];
      if (mark == ' ' || mark == 'N' || mark == '.')
        shown += token.Text;
      else
        shown.append({'{', mark, '|'}).append(token.Text).append("}");
    }
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    if (end != std::string_view::npos) shown += '/';
  }
  return shown;
}

TEST(SourceTokens, TellApartWhatAReaderDoes) {
  struct Case {
    const char* Source;
    const char* Expected;
    bool IsNet = false;
  };
  const Case cases[] = {
      {"Dim a As Long: Rem x", "{k|Dim} a {k|As} {k|Long}: {c|Rem x}"},
      {"F(ByVal a%) = &HFF& + 1.5E3", "F({k|ByVal} a%) = {n|&HFF}& + {n|1.5E3}"},
      {"d = #12/31/1999#: Print #1, x", "d = {d|#12/31/1999#}: {k|Print} #{n|1}, x"},
      {"#If Win32 Then", "{p|#If} Win32 {k|Then}"},
      {"s = \"a\"\"b\" & rs!Date ' c _\nDim", "s = {s|\"a\"\"b\"} & rs!Date {c|' c _}/{c|Dim}"},
      {"[End].Next x:=Me", "[End].Next x:={k|Me}"},
      {"s = \"open\nDim", "s = {s|\"open}/{k|Dim}"},
      {"s = $\"open\nmore\" & x ' _\nTry", "s = {s|$\"open}/{s|more\"} & x {c|' _}/{k|Try}", true},
      {"Итого = мод Mod 2", "Итого = мод {k|Mod} {n|2}"},
  };
  for (const Case& each : cases)
    EXPECT_EQ(TokensOf(each.Source, each.IsNet), each.Expected) << each.Source;
  EXPECT_EQ(AsWritten("PROTECTED", true), "Protected");
  EXPECT_EQ(AsWritten("protected", false), "protected");
}

TEST(PageNames, AreSafeAndTellApart) {
  PageNames names{"index"};
  const auto take = [&](std::string_view name) { return names.Take(name); };
  EXPECT_EQ(take("Total"), "Total");
  EXPECT_EQ(take("total"), "total-2");
  EXPECT_EQ(take("TOTAL"), "TOTAL-3");
  EXPECT_EQ(take("Index"), "Index-2");
  EXPECT_EQ(take("System.Xml"), "System.Xml");
  EXPECT_EQ(take("..\\..").substr(0, 5), "name-");
  EXPECT_EQ(take("COM1").substr(0, 5), "COM1-");
  EXPECT_NE(take("a b"), take("a-b"));
  EXPECT_NE(take("Ж"), take("Д"));
  EXPECT_LT(take(std::string(5000, 'y')).size(), 100u);
  // One that had to be changed is called the same whatever came before.
  EXPECT_EQ(PageNames().Take("a b"), PageNames{"x"}.Take("a b"));
}

TEST(SiteHtml, HoldsWhatAPageMayHold) {
  EXPECT_EQ(Text("a<'&\">\x01\x7F\t"), "a&lt;&#39;&amp;&quot;&gt;␁␡\t");
  EXPECT_EQ(Text("\xC2\x85\xEF\xBF\xBF"), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(Plain("\xE2\x80\xAE"), "[U+202E]");
  EXPECT_EQ(SafeAddress("JavaScript:alert(1)"), "");
  EXPECT_EQ(SafeAddress("data:text/html,x"), "");
  EXPECT_EQ(Shortened("Жуж", 3), "Ж…");
  EXPECT_EQ(Count(1, "property") + Count(1204, "property"), "1 property1,204 properties");
}

}  // namespace
}  // namespace vendrel::site
