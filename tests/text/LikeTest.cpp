#include "text/Like.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "diagnostics/VendrelError.h"

namespace vendrel {
namespace {

struct Case {
  std::string_view Text, Pattern;
  bool Matches;
};

TEST(Like, FollowsTheRulesOfTheLanguage) {
  const Case cases[] = {
      {"", "", true},
      {"", "*", true},
      {"", "?", false},
      {"a", "", false},
      {"option explicit", "option *", true},
      {"option", "option *", false},
      {"Build of 'a.exe' succeeded.", "*Build of '*' succeeded.*", true},
      {"a1b", "a#b", true},
      {"axb", "a#b", false},
      {"aBBBa", "a*a", true},
      {"F", "[A-Z]", true},
      {"F", "[!A-Z]", false},
      {"f", "[A-Z]", false},
      {"a2a", "a#a", true},
      {"aM5b", "a[L-P]#[!c-e]", true},
      {"BAT123khg", "B?T*", true},
      {"CAT123khg", "B?T*", false},
      {"#CONST x", "[#]CONST*", true},
      {"Long()", "*()", true},
      {"[x]", "[[]x]", true},
      {"x", "[]x[]", true},
      {"", "[]", true},
      {"", "[][]", true},
      {"a", "[]", false},
      {"!", "[!]", true},
      {"a", "[!]", false},
      {"-", "[-a]", true},
      {"-", "[a-]", true},
      {"b", "[a-]", false},
      {"-", "[!-a]", false},
      {"*", "[*]", true},
      {"x", "[*?#]", false},
      {"a!", "a[b!]", true},
      {"mañana", "ma?ana", true},
      {"é", "?", true},
      {"日本", "??", true},
      {"日", "??", false},
      {"ñ", "[é-ö]", true},
      {"z", "[é-ö]", false},
      {"日", "[!a]", true},
      {"ab日c", "*?c", true},
      {"abab", "*ab", true},
      {"abac", "*ab", false},
      {"aXbXc", "a*X?", true},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Like(c.Text, c.Pattern), c.Matches) << c.Text << " Like " << c.Pattern;
}

TEST(Like, IgnoresCaseInEveryScriptOnRequest) {
  EXPECT_TRUE(LikeNoCase("OPTION Explicit", "option *"));
  EXPECT_TRUE(LikeNoCase("ИМЯ", "и[а-я]я"));
  EXPECT_TRUE(LikeNoCase("f", "[A-Z]"));
  EXPECT_FALSE(LikeNoCase("1", "[A-Z]"));
}

TEST(Like, RaisesOnAPatternThatIsNone) {
  for (const std::string_view pattern : {"[", "a[b", "[z-a]", "x*[!9-0]", "[]["}) {
    try {
      Like("a", pattern);
      ADD_FAILURE() << pattern;
    } catch (const VendrelError& error) {
      EXPECT_EQ(error.Number(), errInvalidPattern) << pattern;
    }
  }
}

TEST(Like, DoesNotRunAwayOnManyStars) {
  std::string pattern;
  for (int i = 0; i < 1000; ++i) pattern += "*a";
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(Like(std::string(20000, 'a'), pattern + "*b"));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

}  // namespace
}  // namespace vendrel
