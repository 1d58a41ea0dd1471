#include "text/Keywords.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "core/Ascii.h"
#include "text/net/DeclarationWords.h"

#include "support/Raised.h"
#include "text/RegExp.h"

namespace vendrel {
namespace {

TEST(IsKeyword, EndsTheWordAtListedCharactersOnly) {
  struct Case {
    std::string_view Text;
    bool Is;
    std::size_t Length;
  };
  const Case cases[] = {
      {"Dim", true, 3},
      {"dim(", true, 3},
      {"If;x", true, 2},
      {"Dim ", false, 3},
      {"Dim)", false, 3},
      {"Dimension", false, 9},
      {"", false, 0},
      {"(", false, 0},
      {"Rem", false, 3},
      {"ByRef", false, 5},
      {"Friend", false, 6},
      {"Dim1", false, 3},
      {"Overridable", true, 11},
      {"WITHEVENTS", true, 10},
      {"NotInheritable.", true, 14},
      {"e", false, 1},
      {"é", false, 0},
  };
  for (const Case& c : cases) {
    std::size_t length = 99;
    EXPECT_EQ(IsKeyword(c.Text, length), c.Is) << c.Text;
    EXPECT_EQ(length, c.Length) << c.Text;
  }
}

constexpr std::string_view kStatementPattern =
    "^( |<.*>)*(public|private|protected|friend|dim|event|class|namespace|enum|structure|start|"
    "declare|function|sub|property|get|set[(]|shadows|mustoverride|overridable|notoverridable|"
    "overrides|default|overloads|implements|imports|inherits|mustinherit|module|notinheritable|"
    "readonly|shared|static|writeonly)";

constexpr std::string_view kPieces =
    " |  |<|>|=|\n|\"|ñ|x|<A()>|Public|PRIVATE|protected|set(|set|get|Sub|dimension|Start|Sta|tic|"
    "WriteOnly|notInheritable|overloads|MustOverride|Inherits|import|imports|Default|declare|"
    "Namespace|module";

TEST(MatchesDotNetStatement, AgreesWithTheRegularExpression) {
  std::vector<std::string_view> pieces;
  for (std::string_view rest = kPieces; !rest.empty();) pieces.push_back(TakeField(rest, '|'));
  std::mt19937 random(1);
  const auto next = [&random](std::size_t n) { return std::size_t{random() % n}; };
  int matches = 0;
  for (int round = 0; round < 50000; ++round) {
    std::string line;
    for (std::size_t n = next(7); n > 0; --n) line += pieces[next(pieces.size())];
    const bool expected = MatchRegExp(line, kStatementPattern);
    ASSERT_EQ(MatchesDotNetStatement(line), expected) << line;
    matches += expected;
  }
  EXPECT_GT(matches, 5000);
  EXPECT_FALSE(MatchesDotNetStatement(std::string(200000, '<') + std::string(200000, '>')));
}

TEST(MatchRegExp, IgnoresCaseAndRefusesWhatIsNoPattern) {
  EXPECT_TRUE(MatchRegExp("Public Sub", "^public +sub$"));
  EXPECT_FALSE(MatchRegExp("a\nb", "a$"));
  EXPECT_EQ(test::Raised([] { MatchRegExp("a", "("); }), errRegExpSyntax);
}

}  // namespace
}  // namespace vendrel
