#include "support/SourceRoot.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

const std::string kGroup = test::SourceRoot() + "/samples/Ledger.vbg";
const std::string kKinds = test::SourceRoot() + "/tests/uses/data/Kinds.vbp";

TEST(UsesCommand, ShowsWhereANameIsUsed) {
  const std::string text = RunFor({"uses", kGroup, "Ledger~modMain~FormatAmount"});
  EXPECT_THAT(text, HasSubstr("frmLedger.frm:251:46\tcall\tLedger~frmLedger~mJournal_Unbalanced\t"
                              "If MsgBox(\"The voucher is out by \" & "));
  EXPECT_THAT(text, HasSubstr("modMain.bas:156:5\twrite\t"));
  EXPECT_THAT(RunFor({"uses", kGroup, "formatAmount", "--declarations"}),
              HasSubstr("\tdeclare\tLedger~modMain~FormatAmount\t"));
  EXPECT_EQ(JsonLines({"uses", kGroup, "Ledger~Account~Number", "--json"}).size(), 4u);
  EXPECT_THAT(RunFor({"uses", kKinds, "VBA~Strings~Left"}), HasSubstr("Left(Caption, Width)"));
  EXPECT_THAT(RunFor({"uses", kKinds, "--kind", "part"}), HasSubstr("Start.bas:33:"));
  EXPECT_THAT(RunFor({"uses", kKinds, "Nobody*"}, exNo), HasSubstr("nothing uses 'Nobody*'"));
}

TEST(UsesCommand, FindsAControlArrayAndEachOfItsControls) {
  EXPECT_EQ(JsonLines({"uses", kKinds, "Kinds~Board~cmdPick(1)", "--json"}).size(), 1u);
  EXPECT_EQ(JsonLines({"uses", kKinds, "Kinds~Board~cmdPick", "--json"}).size(), 2u);
  EXPECT_EQ(JsonLines({"uses", kKinds, "cmdPick", "--json"}).size(), 3u);
}

TEST(UsesCommand, CountsByAnswer) {
  const std::string text = RunFor({"uses", kKinds, "--summary"});
  EXPECT_THAT(text,
              AllOf(HasSubstr("late\t3\t1."), HasSubstr("key\t2\n"),
                    HasSubstr("in false branches\t2\n"), HasSubstr("References are missing")));
  std::int64_t all = 0;
  for (const auto& count : JsonLines({"uses", kKinds, "--summary", "--json"}))
    all += count["Count"].get<std::int64_t>();
  EXPECT_GT(all, 200);
}

}  // namespace
}  // namespace vendrel::cli
