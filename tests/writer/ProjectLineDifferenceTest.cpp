#include "writer/ProjectLineDifference.h"

#include <gtest/gtest.h>

namespace vendrel {
namespace {

TEST(CompareProjectLines, PartsWhatIsRebuiltFromWhatIsLost) {
  const struct {
    const char *Before, *After, *Changes;  // "-" went, "+" came; "r" by rule
  } cases[] = {
      {"Type=Exe\r\nTitle=\"x\"\r\n", "Title=\"x\"\nType=Exe", ""},
      {"Class=A; A.cls\r\n", "Class=A;A.cls\r\n", "-r1 +r1 "},
      {"Class=A; A.cls\r\nClass=B; B.cls\r\n", "Class=A;A.cls\r\n", "-r1 -2 +r1 "},
      {"", "HelpFile=\"\"\r\nClass=A;A.cls\r\n", "+r1 +2 "},
      {"Title=a\r\nTitle=a\r\n", "Title=a\r\nTitle=b\r\n", "-2 +2 "},
      {"IconForm=\"F\"\r\nResFile32=\"a.txt\"\r\n", "RelatedDoc=a.txt\r\n", "-r1 -r2 +r1 "},
  };
  for (const auto& c : cases) {
    std::string changes;
    for (const ProjectLineChange& change : CompareProjectLines(c.Before, c.After))
      changes.append(change.IsWritten ? "+" : "-")
          .append(change.ByRule ? "r" : "")
          .append(std::to_string(change.Line))
          .append(" ");
    EXPECT_EQ(changes, c.Changes) << c.Before;
  }
}

}  // namespace
}  // namespace vendrel
