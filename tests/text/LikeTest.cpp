#include "text/Like.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "support/Raised.h"

namespace vendrel {
namespace {

struct LikeCase {
  std::string_view Pattern;
  std::vector<std::string_view> Matching, Others;
};

TEST(Like, FollowsTheRulesOfTheLanguage) {
  const LikeCase cases[] = {
      {"", {""}, {"a"}},
      {"*", {""}, {}},
      {"?", {"é"}, {""}},
      {"??", {"日本"}, {"日"}},
      {"option *", {"option explicit"}, {"option"}},
      {"*Build of '*' succeeded.*", {"Build of 'a.exe' succeeded."}, {}},
      {"a#b", {"a1b"}, {"axb"}},
      {"a*a", {"aBBBa"}, {}},
      {"[A-Z]", {"F"}, {"f"}},
      {"[!A-Z]", {}, {"F"}},
      {"a[L-P]#[!c-e]", {"aM5b"}, {}},
      {"B?T*", {"BAT123khg"}, {"CAT123khg"}},
      {"[#]CONST*", {"#CONST x"}, {}},
      {"*()", {"Long()"}, {}},
      {"[[]x]", {"[x]"}, {}},
      {"[]x[]", {"x"}, {}},
      {"[]", {""}, {"a"}},
      {"[][]", {""}, {}},
      {"[!]", {"!"}, {"a"}},
      {"[-a]", {"-"}, {}},
      {"[a-]", {"-"}, {"b"}},
      {"[!-a]", {}, {"-"}},
      {"[*]", {"*"}, {}},
      {"[*?#]", {}, {"x"}},
      {"a[b!]", {"a!"}, {}},
      {"ma?ana", {"mañana"}, {}},
      {"[é-ö]", {"ñ"}, {"z"}},
      {"[!a]", {"日"}, {}},
      {"*?c", {"ab日c"}, {}},
      {"*ab", {"abab"}, {"abac"}},
      {"a*X?", {"aXbXc"}, {}},
  };
  for (const LikeCase& c : cases) {
    SCOPED_TRACE(c.Pattern);
    for (const std::string_view text : c.Matching) EXPECT_TRUE(Like(text, c.Pattern)) << text;
    for (const std::string_view text : c.Others) EXPECT_FALSE(Like(text, c.Pattern)) << text;
  }
}

TEST(Like, IgnoresCaseInEveryScriptOnRequest) {
  EXPECT_TRUE(LikeNoCase("OPTION Explicit", "option *"));
  EXPECT_TRUE(LikeNoCase("ИМЯ", "и[а-я]я"));
  EXPECT_TRUE(LikeNoCase("f", "[A-Z]"));
  EXPECT_FALSE(LikeNoCase("1", "[A-Z]"));
}

TEST(Like, RaisesOnAPatternThatIsNone) {
  for (const std::string_view pattern : {"[", "a[b", "[z-a]", "x*[!9-0]", "[]["})
    EXPECT_EQ(test::Raised([&] { Like("a", pattern); }), errInvalidPattern) << pattern;
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
