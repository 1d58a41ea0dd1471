// The documented colouring, as text: {k|...} for a run in the keyword colour, {c|...} comment,
// {s|...} string.

#include "output/CodeHtml.h"

#include <gtest/gtest.h>

#include "core/Ascii.h"
#include "support/Projects.h"
#include "text/Masking.h"

namespace vendrel {
namespace {

using test::TestModule;

std::string Short(std::string html) {
  html = ReplaceAll(html, "<font color=\"#000080\">", "{k|");
  html = ReplaceAll(html, "<font color=\"#008000\">", "{c|");
  html = ReplaceAll(html, "<font color=\"#808080\">", "{s|");
  html = ReplaceAll(html, "</font>", "}");
  html = ReplaceAll(html, "<BR/>\r\n", "/\n");
  return ReplaceAll(html, "<BR/>", "/");
}

struct HtmlCase {
  const char* Source;
  const char* Expected;
};

TEST(CodeToHTML, ColoursALineWordByWord) {
  const HtmlCase cases[] = {
      {"", "/"},
      {"\r\n", "/\n/\n"},
      {"x = 1", "x = 1/\n"},
      {"  x", "&nbsp;&nbsp;x/\n"},
      {"   ", "&nbsp;&nbsp;&nbsp;/\n"},
      {"a\r\n\r\nb", "a/\n/\nb/\n"},
      {"a\nb", "a\nb/\n"},
      {"a  b ", "a  b /\n"},
      {"Dim x As Long", "{k|Dim} x {k|As} {k|Long}/\n"},
      {"DIM(3)", "{k|DIM}(3)/\n"},
      {"End.If Integer, Me.x", "{k|End}.If {k|Integer}, {k|Me}.x/\n"},
      {"Dimx If1 If_ F(ByVal Friend", "Dimx If1 If_ F(ByVal Friend/\n"},
      {"If<3 a<b>c & d", "If&lt;3 a&lt;b&gt;c & d/\n"},
      {"\tDim", "\tDim/\n"},
      {"Rem If", "Rem {k|If}/\n"},
  };
  for (const HtmlCase& c : cases) EXPECT_EQ(Short(CodeToHTML(c.Source)), c.Expected) << c.Source;
}

TEST(CodeToHTML, FindsStringsAndComments) {
  const HtmlCase cases[] = {
      {"s = \"a\"", "s = {s|&quot;a&quot;}/\n"},
      {"s = \"a If b\" & If", "s = {s|&quot;a If b&quot;} & {k|If}/\n"},
      {"F(\"a\",\"b\")", "F({s|&quot;a&quot;},{s|&quot;b&quot;})/\n"},
      {"\"a\"\"b\"", "{s|&quot;a&quot;}{s|&quot;b&quot;}/\n"},
      {"If(\"a\") Then", "If({s|&quot;a&quot;}) {k|Then}/\n"},
      {"\"it's\" 'yes", "{s|&quot;it's&quot;} {c|'yes}/\n"},
      {"\"a 'b\" c", "{s|&quot;a 'b&quot;} c/\n"},
      {"s = \"open If", "s = {s|&quot;open If}/\n"},
      {"s = \"open\r\nIf", "s = {s|&quot;open}/\n{k|If}/\n"},
      {"' If \"a\" <b>", "{c|' If \"a\" &lt;b&gt;}/\n"},
      {"  'c", "&nbsp;&nbsp;{c|'c}/\n"},
      {"x = 1 ' If  so", "x = 1 {c|' If  so}/\n"},
      {"x = 1'no If", "x = 1'no {k|If}/\n"},
      {"\"</font><script>\"", "{s|&quot;&lt;/font&gt;&lt;script&gt;&quot;}/\n"},
  };
  for (const HtmlCase& c : cases) EXPECT_EQ(Short(CodeToHTML(c.Source)), c.Expected) << c.Source;
}

TEST(CodeToHTML, KeepsEveryCharacterOfTheText) {
  const std::string pieces[] = {" ", "\"", "'", "If", "If(", "a", "<", ">", ",", "x_1", ""};
  std::string line;
  for (std::size_t i = 0; i < 20'000; ++i) {
    line.clear();
    for (std::size_t n = i; n > 0; n /= std::size(pieces)) line += pieces[n % std::size(pieces)];
    std::string text = StripTags(CodeToHTML(line));
    for (const auto& [name, character] :
         {std::pair{"&nbsp;", " "}, {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"\r\n", ""}})
      text = ReplaceAll(text, name, character);
    ASSERT_EQ(text, line);
  }
}

TEST(CodeAsHTML, BeginsWithAnAnchorAndEndsWithTheBlock) {
  TestModule module("M.bas",
                    "Sub A()\n'##SUMMARY Adds.\n'plain\n\tx = 1 + _\n\t\t2\n\nEnd Sub\n' behind\n");
  const Block& block = *module->Blocks.Item("A");
  EXPECT_EQ(
      Short(block.CodeAsHTML()),
      "<a name=\"P~M~A\"></a>{k|Sub} A()/\n{c|'plain}/\n"
      "&nbsp;&nbsp;&nbsp;&nbsp;x = 1 + _/\n&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;2/\n"
      "/{k|End} {k|Sub}/\n");
  const std::string whole = Short(block.CodeAsHTML(true, true));
  EXPECT_TRUE(whole.starts_with("<CODE>\r\n<a name=\"P~M~A\"></a>")) << whole;
  EXPECT_TRUE(whole.ends_with("{k|Sub}/\n</CODE>\r\n")) << whole;
  EXPECT_NE(whole.find("{c|'##SUMMARY Adds.}"), std::string::npos) << whole;
  EXPECT_EQ(module.Project->CodeToHTML("Dim"), CodeToHTML("Dim"));
}

TEST(CodeAsHTML, TellsALineOfSeveralStatementsOnceInTheCompleteReading) {
  const char* body = "Sub A()\nx = 1 : y = 2\nEnd Sub\n";
  TestModule complete("M.bas", body, test::Complete());
  EXPECT_EQ(Short(complete->Blocks.Item("A")->CodeAsHTML()),
            "<a name=\"P~M~A\"></a>{k|Sub} A()/\nx = 1 : y = 2/\n{k|End} {k|Sub}/\n");
}

TEST(CodeAsHTML, TakesABlockThatIsEmptyOrBreaksOff) {
  const Block empty;
  EXPECT_EQ(empty.CodeAsHTML(), "<a name=\"~\"></a>");
  EXPECT_EQ(empty.CodeAsHTML(true), "<CODE>\r\n<a name=\"~\"></a>\r\n</CODE>\r\n");
  Block open;
  CodeLine line;
  line.Text = "x = _";
  line.Continued = true;
  open.CodeLines->Add(line);
  EXPECT_EQ(open.CodeAsHTML(), "<a name=\"~\"></a>x = _<BR/>\r\n");
  open.UnloadSourceCode();
  EXPECT_EQ(open.CodeAsHTML(), "<a name=\"~\"></a>");
}

TEST(ModuleAsHTML, ColoursTheWholeFileWhateverItsLineEnds) {
  TestModule module("M.bas", "Dim a\n\n\tDim b\rDim c");
  EXPECT_EQ(Short(ModuleAsHTML(*module, false)),
            "<a name=\"P~M\"></a>Attribute VB_Name = {s|&quot;M&quot;}/\n{k|Dim} a/\n/\n"
            "&nbsp;&nbsp;&nbsp;&nbsp;{k|Dim} b/\n{k|Dim} c/\n");
  EXPECT_EQ(ModuleAsHTML(Component(), true), "");
}

}  // namespace
}  // namespace vendrel
