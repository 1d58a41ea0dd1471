#include "text/Words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vendrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(SplitEx, CutsOutsideStringLiterals) {
  EXPECT_THAT(SplitEx("a, \"b,c\",d", ",", true), ElementsAre("a", " \"b,c\"", "d"));
  EXPECT_THAT(SplitEx("a,b,", ",", false), ElementsAre("a,", "b,"));
  EXPECT_THAT(SplitEx(",,a", ",", true), ElementsAre("", "", "a"));
  EXPECT_THAT(SplitEx("a And b And c", " And ", true), ElementsAre("a", "b", "c"));
  EXPECT_THAT(SplitEx("a\"\"\",\"\"\"b,c", ",", true), ElementsAre("a\"\"\",\"\"\"b", "c"));
  EXPECT_THAT(SplitEx("a,\"open, b", ",", true), ElementsAre("a", "\"open, b"));
  EXPECT_THAT(SplitEx("a", "", true), ElementsAre("a"));
  EXPECT_THAT(SplitEx("", ",", true), IsEmpty());
}

TEST(SplitCode, KeepsEveryDelimiterAndTheEmptyTextBetween) {
  EXPECT_THAT(SplitCode("a(b)"), ElementsAre("a", "(", "b", ")"));
  EXPECT_THAT(SplitCode("f(), \"x.y\" z"),
              ElementsAre("f", "(", "", ")", "", ",", "", " ", "\"x.y\"", " ", "z"));
  EXPECT_THAT(SplitCode(""), IsEmpty());
}

TEST(TrimmedCollectionFromstring, HoldsTheWordsBetweenBlanks) {
  EXPECT_THAT(TrimmedCollectionFromstring("  a   b\tc  "), ElementsAre("a", "b\tc"));
  EXPECT_THAT(TrimmedWords("Sub S()"), ElementsAre("Sub", "S()"));
  EXPECT_THAT(TrimmedWords("   "), IsEmpty());
}

TEST(StripQuotes, TakesEachEndByItself) {
  EXPECT_EQ(StripQuotes("\"a\""), "a");
  EXPECT_EQ(StripQuotes("a\""), "a");
  EXPECT_EQ(StripQuotes("\"\"a"), "\"a");
  EXPECT_EQ(StripQuotes("\""), "");
  EXPECT_EQ(StripQuotes(" \"a\""), " \"a");
}

TEST(GetParameters, KeepsTheFirstOfAName) {
  EXPECT_THAT(GetParameters("File = \"a=b\", junk, FILE=c ,Lines=,=v"),
              ElementsAre(Pair("File", "a=b"), Pair("Lines", ""), Pair("", "v")));
  EXPECT_THAT(GetParameters(""), IsEmpty());
}

}  // namespace
}  // namespace vendrel
