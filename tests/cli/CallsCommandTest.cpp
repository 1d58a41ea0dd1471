// Who calls whom, as lists, trees, chains and drawings.
#include <gtest/gtest.h>

#include "support/MemoryFiles.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

class CallsCommand : public testing::Test {
 protected:
  test::MemoryFiles mFiles{
      {"/c/C.vbp",
       "Type=Exe\nModule=M; M.bas\nClass=Shape; Shape.cls\nClass=Square; Square.cls\n"
       "Startup=\"Sub Main\"\nName=\"P\"\n"},
      {"/c/M.bas",
       "Attribute VB_Name = \"M\"\n"
       "Private Declare Sub Beep Lib \"kernel32\" (ByVal Hertz As Long)\n"
       "Sub Main()\n  First\n  First\n  Second 1\nEnd Sub\n"
       "Sub First()\n  Third\nEnd Sub\n"
       "Sub Second(ByVal n As Long)\n  Third\n  If n > 0 Then Second n - 1\nEnd Sub\n"
       "Sub Third()\n  Dim s As Shape, o As Object\n  Set s = New Square\n  s.Side = 2\n"
       "  Debug.Print s.Area\n  Set o = s\n  o.Draw\n  Beep 1\nEnd Sub\n"
       "Sub Alone()\nEnd Sub\n"},
      {"/c/Shape.cls",
       "VERSION 1.0 CLASS\nAttribute VB_Name = \"Shape\"\n"
       "Public Property Let Side(ByVal Value As Long)\nEnd Property\n"
       "Public Function Area() As Long\nEnd Function\n"},
      {"/c/Square.cls",
       "VERSION 1.0 CLASS\nAttribute VB_Name = \"Square\"\nImplements Shape\n"
       "Public Sub Draw()\nEnd Sub\n"
       "Private Property Let Shape_Side(ByVal Value As Long)\nEnd Property\n"
       "Private Function Shape_Area() As Long\nEnd Function\n"}};
};

TEST_F(CallsCommand, ListsEveryCall) {
  EXPECT_EQ(RunFor({"calls", "/c/C.vbp"}),
            "P~M~Main\tcall 2 times\tP~M~First\t/c/M.bas:4\n"
            "P~M~Main\tcall\tP~M~Second\t/c/M.bas:6\n"
            "P~M~First\tcall\tP~M~Third\t/c/M.bas:9\n"
            "P~M~Second\tcall\tP~M~Third\t/c/M.bas:12\n"
            "P~M~Second\tcall\tP~M~Second\t/c/M.bas:13\n"
            "P~M~Third\twrite\tP~Shape~Side [let]\t/c/M.bas:18\n"
            "P~M~Third\tcall\tP~Shape~Area\t/c/M.bas:19\n"
            "P~M~Third\tperhaps call\tP~Square~Draw\t/c/M.bas:21\n"
            "P~M~Third\tcall\tP~kernel32.dll_LIB~Beep_DEC\t/c/M.bas:22\n"
            "P~Shape~Side [let]\timplements\tP~Square~Shape_Side [let]\t/c/Square.cls:6\n"
            "P~Shape~Area\timplements\tP~Square~Shape_Area\t/c/Square.cls:8\n");
}

TEST_F(CallsCommand, ShowsWhatIsAroundAProcedure) {
  EXPECT_EQ(RunFor({"calls", "/c/C.vbp", "Third"}),
            "P~M~Third\t/c/M.bas:15\n"
            "  <- P~M~First\tcall\t/c/M.bas:9\n"
            "  <- P~M~Second\tcall\t/c/M.bas:12\n"
            "  -> P~Shape~Side [let]\twrite\t/c/M.bas:18\n"
            "  -> P~Shape~Area\tcall\t/c/M.bas:19\n"
            "  -> P~Square~Draw\tperhaps call\t/c/M.bas:21\n"
            "  -> P~kernel32.dll_LIB~Beep_DEC\tcall\t/c/M.bas:22\n");
  EXPECT_EQ(RunFor({"calls", "/c/C.vbp", "p~m~main", "--callees", "--depth", "2"}),
            "P~M~Main\t/c/M.bas:3\n"
            "  -> P~M~First\tcall 2 times\t/c/M.bas:4\n"
            "    -> P~M~Third\tcall\t/c/M.bas:9\n"
            "  -> P~M~Second\tcall\t/c/M.bas:6\n"
            "    -> P~M~Third\tcall\t/c/M.bas:12\tas above\n"
            "    -> P~M~Second\tcall\t/c/M.bas:13\tas above\n");
  EXPECT_EQ(RunFor({"calls", "/c/C.vbp", "Shape_Area", "--callers", "--depth", "0"}),
            "P~Square~Shape_Area\t/c/Square.cls:8\n"
            "  <- P~Shape~Area\timplements\t/c/Square.cls:8\n"
            "    <- P~M~Third\tcall\t/c/M.bas:19\n"
            "      <- P~M~First\tcall\t/c/M.bas:9\n"
            "        <- P~M~Main\tcall 2 times\t/c/M.bas:4\n"
            "      <- P~M~Second\tcall\t/c/M.bas:12\n"
            "        <- P~M~Main\tcall\t/c/M.bas:6\tas above\n"
            "        <- P~M~Second\tcall\t/c/M.bas:13\tas above\n");
}

TEST_F(CallsCommand, CountsBetweenModulesAndAroundProcedures) {
  EXPECT_EQ(RunFor({"calls", "/c/C.vbp", "--modules"}),
            "P~M\tcall 2 times\tP~Shape\t/c/M.bas:18\n"
            "P~M\tperhaps call\tP~Square\t/c/M.bas:21\n");
  EXPECT_EQ(RunFor({"calls", "/c/C.vbp", "--modules", "--mermaid"}),
            "flowchart LR\n    n1[\"P~M\"]\n    n2[\"P~Shape\"]\n    n3[\"P~Square\"]\n"
            "  n1 --> n2\n  n1 -.-> n3\n");
  EXPECT_THAT(RunFor({"calls", "/c/C.vbp", "--fan"}),
              HasSubstr("P~M~Second\t2\t2\t/c/M.bas:11\nP~M~Third\t2\t4\t/c/M.bas:15\n"));
  ToolEnding(exUsage, {"calls", "/c/C.vbp", "Main", "--fan"});
}

TEST(Calls, AVariableGoesBeforeTheClassOfItsName) {
  const test::MemoryFiles files{
      {"/v/V.vbp", "Type=Exe\nModule=M; M.bas\nModule=N; N.bas\nClass=Log; Log.cls\nName=\"V\"\n"},
      {"/v/M.bas", "Attribute VB_Name = \"M\"\nPublic Log As New Log\n"},
      {"/v/N.bas", "Attribute VB_Name = \"N\"\nSub Main()\n  Log.Post\nEnd Sub\n"},
      {"/v/Log.cls",
       "VERSION 1.0 CLASS\nAttribute VB_Name = \"Log\"\nPublic Sub Post()\nEnd Sub\n"}};
  EXPECT_EQ(RunFor({"calls", "/v/V.vbp"}), "V~N~Main\tcall\tV~Log~Post\t/v/N.bas:3\n");
  EXPECT_EQ(RunFor({"unused", "/v/V.vbp"}), "");
}

TEST_F(CallsCommand, FindsAChain) {
  EXPECT_EQ(RunFor({"calls", "/c/C.vbp", "Main", "--reaches", "Square"}),
            "P~M~Main\tcall 2 times\tP~M~First\t/c/M.bas:4\n"
            "P~M~First\tcall\tP~M~Third\t/c/M.bas:9\n"
            "P~M~Third\tperhaps call\tP~Square~Draw\t/c/M.bas:21\n");
  ToolEnding(exNo, {"calls", "/c/C.vbp", "Alone", "--reaches", "Main"});
}

TEST_F(CallsCommand, SaysWhatIsNotThere) {
  EXPECT_THAT(ToolEnding(exNo, {"calls", "/c/C.vbp", "Nothing"}).Err, HasSubstr("'Nothing'"));
  ToolEnding(exNo, {"calls", "/c/C.vbp", "Alone"});
  ToolEnding(exNo, {"calls", "/c/C.vbp", "Main", "--reaches", "Nothing"});
  ToolEnding(exUsage, {"calls", "/c/C.vbp", "--callers"});
  ToolEnding(exUsage, {"calls", "/c/C.vbp", "--dot", "--json"});
}

TEST_F(CallsCommand, DrawsAndWritesJson) {
  EXPECT_EQ(RunFor({"calls", "/c/C.vbp", "Draw", "--dot"}),
            "digraph calls {\n"
            "  rankdir=LR;\n"
            "  node [shape=box];\n"
            "  subgraph cluster_1 {\n"
            "    label=\"P~M\";\n"
            "    n1 [label=\"Third\"];\n"
            "  }\n"
            "  subgraph cluster_2 {\n"
            "    label=\"P~Square\";\n"
            "    n2 [label=\"Draw\"];\n"
            "  }\n"
            "  n1 -> n2 [style=dashed];\n"
            "}\n");
  EXPECT_EQ(RunFor({"calls", "/c/C.vbp", "Draw", "--mermaid"}),
            "flowchart LR\n"
            "  subgraph m1[\"P~M\"]\n"
            "    n1[\"Third\"]\n"
            "  end\n"
            "  subgraph m2[\"P~Square\"]\n"
            "    n2[\"Draw\"]\n"
            "  end\n"
            "  n1 -.-> n2\n");
  const auto rows = JsonLines({"calls", "/c/C.vbp", "Draw", "--json"});
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0], json::parse(R"({"Callee":"P~Square~Draw",
"Caller":"P~M~Third",
"Column":5,
"Count":1,
"Depth":1,
"Direction":"callers",
"File":"/c/M.bas",
"Kind":"call",
"Line":21,
"Repeated":false,
"Sure":false})"));
}

}  // namespace
}  // namespace vendrel::cli
