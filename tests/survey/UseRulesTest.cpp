// Rules of a check that know what names mean.

#include "support/MemoryFiles.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

struct UseRuleCase {
  const char* Rule;
  // Of the form F with the control Button, behind a class C and the interface IShape.
  std::string Code;
  // "line text" of each finding.
  std::vector<std::string> Found;
};

const std::vector<UseRuleCase>& UseRuleCases() {
  static const std::vector<UseRuleCase> cases{
      {"event-source",
       "Dim WithEvents Sink As C\nPrivate Sub Button_Click()\nEnd Sub\n"
       "Private Sub Old_Click()\nEnd Sub\nPrivate Sub Sink_Done()\nEnd Sub\n"
       "Private Sub Form_Load()\nUsed_Click\nEnd Sub\nPrivate Sub Used_Click()\nEnd Sub\n"
       "Private Sub Any_Thing()\nEnd Sub\nPublic Sub Open_Click()\nEnd Sub\n",
       {"10 'Old_Click' handles no event: there is no 'Old'"}},
      {"argument-count",
       "Private Sub Two(a, Optional b)\nEnd Sub\nPrivate Function Nil()\nEnd Function\n"
       "Private Sub All(ParamArray z())\nEnd Sub\nPrivate Function One(a) As Long\nEnd Function\n"
       "Private Sub Form_Load()\nTwo 1: Two (1), 2: Call Two(1, \"a,b\"): All 1, 2, 3\n"
       "x = Nil(1) + One(Two2(1, 2))\nIf x Then Two 1, 2 Else Two One(3)\n"
       "Two\nCall Two\nTwo 1, _\n  2, 3\nx = One(1, 2): Two a:=1, b:=2: Two , 2\nx = One\nEnd "
       "Sub\n",
       {"19 'Two' takes 1 to 2 arguments, here are 0",
        "20 'Two' takes 1 to 2 arguments, here are 0",
        "21 'Two' takes 1 to 2 arguments, here are 3", "23 'One' takes 1 argument, here are 2",
        "24 'One' takes 1 argument, here are 0"}},
      {"unknown-name",
       "Option Explicit\nPrivate Sub Form_Load()\nDim a As Long\na = zz + Len(Button.Caption)\nEnd "
       "Sub\n",
       {"10 no declaration gives the name 'zz'"}},
      {"implicit-constant",
       "Private Sub Form_Load()\na = vbYesNoo + vbx + Hidden + vbSet1 + vbYesNo\nvbSet1 = 2\nb = "
       "Hidden\nEnd Sub\n",
       {"8 'Hidden' is no constant here but an empty variable; N declares a private one",
        "8 'vbYesNoo' is no constant here but an empty variable"}},
      {"never-read",
       "Private Sub Form_Load()\nDim a As Long, b As Long, c As Long, d As Object, e As Long\n"
       "a = 1: b = 2: c = b: Set d = Me: Fill e\nDim f As Long\nFor f = 1 To 2: Next\nEnd Sub\n"
       "Private Sub Fill(n As Long)\nn = 1\nEnd Sub\n",
       {"8 'a' is assigned and never read", "8 'c' is assigned and never read"}},
  };
  return cases;
}

std::vector<std::string> FoundBy(const std::string& rule, const std::string& file) {
  std::vector<std::string> found;
  const ToolRun run = Tool({"check", "/p/P.vbp", "--json", "--rule", rule + "=note"});
  std::istringstream lines(run.Out);
  for (std::string line; std::getline(lines, line);) {
    const auto row = nlohmann::json::parse(line);
    if (row.value("Code", "") == rule && row["File"] == file)
      found.push_back(std::to_string(row["Line"].get<int>()) + " " +
                      row["Text"].get<std::string>());
  }
  return found;
}

struct UseRuleProject {
  explicit UseRuleProject(const std::string& form) {
    Files.Add("/p/P.vbp",
              "Type=Exe\nForm=F.frm\nClass=C; C.cls\nClass=IShape; IShape.cls\nModule=M; M.bas\n"
              "Module=N; N.bas\nName=\"P\"\n");
    Files.Add("/p/F.frm",
              "VERSION 5.00\nBegin VB.Form F\nBegin VB.CommandButton Button\nEnd\nEnd\nAttribute "
              "VB_Name = \"F\"\n" +
                  form);
    const std::string head = "VERSION 1.0 CLASS\nAttribute VB_Name = ";
    Files.Add("/p/C.cls", head +
                              "\"C\"\nImplements IShape\nPublic Event Done()\nPrivate Sub "
                              "IShape_Draw(a)\nEnd Sub\nPrivate Property Get IShape_Size()\nEnd "
                              "Property\n");
    Files.Add("/p/IShape.cls", head +
                                   "\"IShape\"\nPublic Size As Long\nPublic Sub Draw(a)\nEnd "
                                   "Sub\nPublic Function Area() As Long\nEnd Function\nPrivate Sub "
                                   "Class_Initialize()\nEnd Sub\n");
    Files.Add("/p/M.bas",
              "Attribute VB_Name = \"M\"\nPublic Const A = 1, B = 2\nSub Main()\nOwn\nEnd Sub\n"
              "Sub Own()\nx = A + B\nEnd Sub\nSub Other()\nEnd Sub\nSub Nobody()\nEnd Sub\n");
    Files.Add(
        "/p/N.bas",
        "Attribute VB_Name = \"N\"\nPrivate Const Hidden = 3\nSub T()\nOther\ny = M.B\nEnd Sub\n");
  }
  test::MemoryFiles Files;
};

TEST(UseRules, FindWhatNamesTell) {
  for (const UseRuleCase& one : UseRuleCases()) {
    const UseRuleProject project(one.Code);
    EXPECT_EQ(FoundBy(one.Rule, "/p/F.frm"), one.Found) << one.Rule << "\n" << one.Code;
  }
  const UseRuleProject project("");
  EXPECT_EQ(
      FoundBy("interface-member", "/p/C.cls"),
      std::vector<std::string>{"3 interface 'IShape' is implemented without Function IShape_Area"});
  EXPECT_EQ(FoundBy("own-module-only", "/p/M.bas"),
            (std::vector<std::string>{"2 constant 'A' is public and used by its own module alone",
                                      "6 procedure 'Own' is public and used by its own module "
                                      "alone"}));
}

}  // namespace
}  // namespace vendrel::cli
