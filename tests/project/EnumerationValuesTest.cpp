#include <gtest/gtest.h>

#include "support/Projects.h"

namespace vendrel {
namespace {

using test::TestProject;

std::string Members(TestProject& project, std::string_view module) {
  std::string text;
  for (const Enumeration& enumeration : project.Module(module).Enumerations)
    for (const EnumMember& member : enumeration.Members()) text += test::Describe(member) + " ";
  return text;
}

TEST(EnumerationValuesTest, AMemberNamedLikeAConstantTakesItsValue) {
  TestProject project(
      {{"A.bas",
        "Public Const K = 7, Own = 1\nEnum E\n  a = K\n  b = Own\n  c = Far\n  d = K + 1\n"
        "  e\n  f = 3\n  g = k\n  h = Nowhere\n  i = &H10\nEnd Enum\n"},
       {"B.bas", "Public Const Own = 2\nConst Far = Farther\n"},
       {"C.bas", "Const Farther = 9\nConst Far = 0\n"}});
  EXPECT_EQ(Members(project, "A"), "a=7 b=1 c=9 d=K + 1 e f=3 g=7 h=Nowhere i=&H10 ");
}

TEST(EnumerationValuesTest, AMissingModuleKeepsAllMembersAsWritten) {
  const char* const text = "Const K = 7\nEnum E\n  a = K\n  b\nEnd Enum\n";
  for (const bool complete : {false, true}) {
    TestProject project({{"A.bas", text}, {"B.bas", ""}},
                        [&](VBProject& p) { p.Reading.EnumerationValues = complete; });
    project.Files.FailOn("/p/B.bas", ENOENT);
    EXPECT_EQ(Members(project, "A"), complete ? "a=7(K) b=8 " : "a=K b ");
  }
}

TEST(EnumerationValuesTest, EveryMemberGetsItsNumberInTheCompleteReading) {
  TestProject project(
      {{"A.bas",
        "Public Const K = 7\nConst Loop1 = Loop2, Loop2 = Loop1\nConst Words = \"w\"\n"
        "Enum E\n  a\n  b\n  c = 5\n  d\n  e = K\n  f = K * 2 + c\n  g = Far\n  h\n  i = &HFF\n"
        "  j = -1\n  k1\n  l = Nowhere\n  m\n  n = Loop1\n  o = Words\n  p = a Or 8\n  q = "
        "&HFFFF&\n"
        "  r = 2147483647\nEnd Enum\nEnum F\n  x = E.d\n  y = d\nEnd Enum\n"},
       {"B.bas", "Public Const Far = K + 1\nEnum G\n  a = 100\n  z = a\nEnd Enum\n"}},
      test::Reading("EnumerationValues"));
  EXPECT_EQ(Members(project, "A"),
            "a=0 b=1 c=5 d=6 e=7(K) f=19(K * 2 + c) g=8(Far) h=9 i=255(&HFF) j=-1 k1=0 l=Nowhere m "
            "n=Loop1 o=Words p=8(a Or 8) q=65535(&HFFFF&) r=2147483647 x=6(E.d) y=6(d) ");
  EXPECT_EQ(Members(project, "B"), "a=100 z=100(a) ");
}

}  // namespace
}  // namespace vendrel
