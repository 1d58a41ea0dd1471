#include "text/Masking.h"

#include <gtest/gtest.h>

#include <random>

#include "core/Ascii.h"
#include "text/Words.h"

namespace vendrel {
namespace {

TEST(Template, MasksStringsAndTheComment) {
  EXPECT_EQ(Template("x = \"a'b\" 'it's"), "x = \"___\" '____");
  EXPECT_EQ(Template("a \"\"\"q\"\"\" b"), "a \"\"\"_\"\"\" b");
  EXPECT_EQ(Template("\"open"), "\"____");
  EXPECT_EQ(Template("\"ñ\"("), "\"__\"(");
  EXPECT_EQ(Template(""), "");
}

TEST(InStrEx, FindsOnlyOutsideStringsAndComment) {
  struct Case {
    std::size_t Start;
    std::string_view Source, Sought;
    bool NoCase;
    std::size_t Position;
  };
  const Case cases[] = {
      {1, "Const A = \"(\" & B(1)", "(", false, 18},
      {1, "x = \"a)\" ')", ")", false, 0},
      {1, "a \"<\" < b", "<", false, 7},
      {7, "a(1) (2) (3)", "(", false, 10},
      {6, "a(1) (2)", "(", false, 6},
      {1, "Dim x aS Long", " AS ", true, 6},
      {1, "Dim x aS Long", " AS ", false, 0},
      {1, "\" as \" As Long", " AS ", true, 7},
      {1, "\"ñ\" (", "(", false, 6},
      {9, "abc", "a", false, 0},
      {0, "abc", "a", false, 1},
      {2, "abc", "", false, 2},
      {1, "", "", false, 0},
  };
  for (const Case& c : cases)
    EXPECT_EQ(InStrEx(c.Start, c.Source, c.Sought, c.NoCase), c.Position)
        << c.Sought << " in " << c.Source;
}

// The referee builds the copy and searches it, as the rule says.
TEST(InStrEx, AgreesWithASearchInTheMaskedCopy) {
  const std::string_view alphabet = "ab\"'( _";
  std::mt19937 random(7);
  const auto next = [&random](std::size_t n) { return std::size_t{random() % n}; };
  for (int round = 0; round < 20000; ++round) {
    std::string source(next(12), ' '), sought(1 + next(3), ' ');
    for (char& c : source) c = alphabet[next(7)];
    for (char& c : sought) c = alphabet[next(7)];
    const std::size_t start = 1 + next(4);
    const std::size_t found = Template(source).find(sought, start - 1);
    ASSERT_EQ(InStrEx(start, source, sought), found == std::string::npos ? 0 : found + 1)
        << sought << " in " << source << " from " << start;
  }
}

TEST(StripAttributes, CutsBracketsOutsideStrings) {
  EXPECT_EQ(StripAttributes("<A()> <B(\"x>y\")> Public Sub S()"), "  Public Sub S()");
  EXPECT_EQ(StripAttributes("Sub S(<Out> x, y)"), "Sub S( x, y)");
  EXPECT_EQ(StripAttributes("x = \"<a>\" '<b>"), "x = \"<a>\" '<b>");
  EXPECT_EQ(StripAttributes("a > b < c"), "a > b < c");
  EXPECT_EQ(StripAttributes("a < b"), "a < b");
}

TEST(StripTags, CutsEachSpanUntilNoneIsLeft) {
  EXPECT_EQ(StripTags("<p>a <b>bold</b> > b</p>"), "a bold > b");
  EXPECT_EQ(StripTags("a<b<c>d>e"), "ad>e");
  EXPECT_EQ(StripTags("1 < 2"), "1 < 2");
  EXPECT_EQ(StripTags(std::string(200000, '<')), std::string(200000, '<'));
}

}  // namespace
}  // namespace vendrel
