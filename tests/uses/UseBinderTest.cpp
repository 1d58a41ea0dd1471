#include "uses/UseBinder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "support/ToolRun.h"
#include "uses/ShownUses.h"

namespace vendrel {
namespace {

using test::Complete;
using test::UsesFrom;
using testing::HasSubstr;

// What the statements below may name.
constexpr const char* kHelpers =
    "Option Explicit\n"
    "Public Type Point\n  X As Long\n  Y As Long\nEnd Type\n"
    "Public Type Shape\n  Name As String\n  At As Point\n  Corners(1 To 4) As Point\n"
    "End Type\n"
    "Public Enum Colour\n  Red\n  Green\nEnd Enum\n"
    "Public Counter As Long\n"
    "Public Const LIMIT = 3\n"
    "Public Sub Take(a As Long, ByVal b As Long, Optional c As Long)\nEnd Sub\n"
    "Public Function Sum(ParamArray all() As Variant) As Long\nEnd Function\n"
    "Public Function Corners() As Point()\nEnd Function\n"
    "Public Function NewBox() As Box\nEnd Function\n";
constexpr const char* kBox =
    "Option Explicit\n"
    "Public Owner As Box\n"
    "Public Event Opened(ByVal Size As Long)\n"
    "Private mSize As Long\n"
    "Public Property Get Size() As Long\nAttribute Size.VB_UserMemId = 0\nEnd Property\n"
    "Public Property Let Size(ByVal NewSize As Long)\nEnd Property\n"
    "Public Property Get Part(ByVal Index As Long) As Box\nEnd Property\n"
    "Public Property Set Part(ByVal Index As Long, ByVal NewPart As Box)\nEnd Property\n"
    "Public Sub Shut(Hard As Long)\nEnd Sub\n";
constexpr const char* kForm =
    "VERSION 5.00\nBegin VB.Form F\n"
    "  Begin VB.TextBox Text1\n  End\n"
    "  Begin VB.CommandButton cmd\n    Index = 0\n  End\n"
    "  Begin VB.CommandButton cmd\n    Index = 1\n  End\n"
    "  Begin Foreign.Grid grd\n  End\n"
    "End\nAttribute VB_Name = \"F\"\nOption Explicit\n"
    "Public Title As String\n"
    "Private Sub cmd_Click(Index As Integer)\nEnd Sub\n";

// The statements as the body of a procedure, in a project with those modules.
class Statements {
 public:
  explicit Statements(const std::string& body, bool isExplicit = true, bool missing = false,
                      const std::string& file = "M.bas")
      : mProject({{"Helpers.bas", kHelpers},
                  {"Box.cls", kBox},
                  {"F.frm", kForm},
                  {file, (isExplicit ? std::string("Option Explicit\n") : std::string()) +
                             "Sub T(p As Long, v As Variant)\n"
                             "Dim n As Long, s As String, b As Box, o As Object, pt As Point, "
                             "sh As Shape, list() As Point, col As New Collection\n" +
                             body + "\nEnd Sub\n"}},
                 [missing](VBProject& project) {
                   Complete()(project);
                   (void)missing;
                 }) {
    for (Component& module : mProject.Project->Components) mLast = &module;
  }
  std::string Uses(bool withMeaning = false) {
    // behind the declarations of the body
    return UsesFrom(*mProject.Project, *mLast, FirstLine(), withMeaning);
  }

 private:
  std::int32_t FirstLine() const {
    const std::string& text = mLast->SourceForm->Text;
    const std::size_t at = text.find("Dim n As");
    return static_cast<std::int32_t>(std::count(text.begin(), text.begin() + at, '\n')) + 2;
  }
  test::TestProject mProject;
  const Component* mLast = nullptr;
};

struct Row {
  const char* Body;
  const char* Uses;
};

TEST(UseBinder, TellsWhatAStatementDoesWithItsNames) {
  const Row rows[] = {
      // reading, writing, parts
      {"n = p + 1", "n write local; p read parameter"},
      {"pt.X = 1", "pt part local; X write field"},
      {"n = sh.At.X", "n write local; sh read local; At read field; X read field"},
      {"sh.Corners(n).Y = 2", "sh part local; Corners part field; n read local; Y write field"},
      {"list(n).X = 1", "list part local; n read local; X write field"},
      {"With sh.At\n.X = 1\nEnd With",
       "sh read local; At read field; X write field; X part field (2); X part local (2)"},
      {"Set b = New Box", "b write local; Box new project"},
      {"Set b.Part(1) = b", "b read local; Part write set project; b read local"},
      {"b.Size = n", "b read local; Size write let project; n read local"},
      {"b = 5", "b read local; b write let project (2)"},
      {"n = b", "n write local; b read local; b read get project (2)"},
      {"If b Is Nothing Then n = 1", "b read local; n write local"},
      {"n = b.Part(2).Owner.Size",
       "n write local; b read local; Part read get project; Owner read project; Size read get "
       "project"},
      {"n = b _\n  .Owner _\n  .Size",
       "n write local; b read local; Owner read project; Size read get project"},
      // by reference
      {"Take n, n, n",
       "Take call project; n by-reference local; n read local; n by-reference local"},
      {"Take (n), p", "Take call project; n read local; p read parameter"},
      {"Call Take(pt.X, 1)", "Take call project; pt part local; X by-reference field"},
      {"Take c:=n, a:=p, b:=1",
       "Take call project; c name parameter; n by-reference local; a name parameter; p "
       "by-reference parameter; b name parameter"},
      {"n = Sum(n, p + 1)",
       "n write local; Sum call project; n by-reference local; p read "
       "parameter"},
      {"b.Shut n", "b read local; Shut call project; n by-reference local"},
      {"o.Shut n", "o read local; Shut call late; n read local"},
      {"MsgBox s", "MsgBox call library; s read local"},
      // statements that write their target
      {"For n = 1 To p Step 2\nNext n", "n write local; p read parameter; n read local"},
      {"For Each v In col\nNext", "v write parameter; col read local"},
      {"ReDim Preserve list(1 To n)", "list write local; n read local"},
      {"Erase list, sh.Corners", "list write local; sh part local; Corners write field"},
      {"Mid(s, 1, 2) = \"x\"", "Mid call library; s write local"},
      {"LSet s = \"x\"", "s write local"},
      {"Line Input #n, s", "n read local; s write local"},
      {"Get #1, n, pt", "n read local; pt write local"},
      {"Open s For Input Access Read Lock Write As #n Len = Len(s)",
       "s read local; n read local; Len call library; s read local"},
      {"Print #n, s; Tab(3); p", "n read local; s read local; Tab call library; p read parameter"},
      {"Name s As s & \"x\"", "s read local; s read local"},
      // control flow and labels
      {"If n Then p = 1 Else If p Then n = 2 Else s = \"\"",
       "n read local; p write parameter; p read parameter; n write local; s write local"},
      {"On Error GoTo Failed: n = 1\nFailed:\nResume Failed",
       "Failed read label; n write local; Failed read label"},
      {"Select Case n\nCase Is > p, Red To Green: s = \"\"\nEnd Select",
       "n read local; p read parameter; Red read enumeration-member; Green read "
       "enumeration-member; s write local"},
      {"If TypeOf o Is Box Then n = VarPtr(AddressOf Take)",
       "o read local; Box type project; n write local; VarPtr call library; Take address project"},
      // qualifiers, keys, brackets, type characters
      {"n = Helpers.Counter", "n write local; Helpers qualify project; Counter read project"},
      {"n = Colour.Red Or Helpers.Colour.Green",
       "n write local; Colour qualify type; Red read enumeration-member; Helpers qualify project; "
       "Colour qualify type; Green read enumeration-member"},
      {"s = VBA.Left$(s, 1) & VBA.Strings.Mid(s, 2)",
       "s write local; VBA qualify library; Left$ call library; s read local; VBA qualify library; "
       "Strings qualify library; Mid call library; s read local"},
      {"n = o!Field + o![A Field]",
       "n write local; o read local; Field read key; o read local; [A Field] read key"},
      {"n% = [n] + &HFF& + .5 + 1E3", "n% write local; [n] read local"},
      {"col.Add n: n = col(1): n = col(1).Size",
       "col read local; Add call library; n read local; n write local; col read local; col call "
       "library (2); n write local; col read local; col call library (2); Size read late"},
      {"n = NewBox.Size + Corners()(1).X",
       "n write local; NewBox call project; Size read get project; Corners call project; X read "
       "field"},
      // forms, controls
      {"F.Text1 = s", "F read project; Text1 read control; Text1 write library (2); s read local"},
      {"F.Text1.SelStart = Len(F.Title)",
       "F read project; Text1 read control; SelStart write library; Len call library; F read "
       "project; Title read project"},
      {"F.cmd(1).Enabled = F.cmd(n).Enabled",
       "F read project; cmd read control; Enabled write library; F read project; cmd read control; "
       "n read local; Enabled read library"},
      {"F.grd.Rows = 2: F.Show",
       "F read project; grd read control; Rows write external; F read "
       "project; Show call library"},
      {"F!Text1.Text = s", "F read project; Text1 read control; Text write library; s read local"},
      // what is nothing
      {"' n = 1\nRem n = 2\ns = \"n ' \"\"n\" ' n _\n n = 3", "s write local"},
      {"s = Format$(#1/2/2003#, \"n\")", "s write local; Format$ call library"},
      {"nothere = 1: Gone 2", "nothere write unknown; Gone call unknown"},
      {"n = b.Gone(1)", "n write local; b read local; Gone call unknown"},
  };
  for (const Row& row : rows) EXPECT_EQ(Statements(row.Body).Uses(), row.Uses) << row.Body;
}

TEST(UseBinder, TakesWhatNothingDeclaresForVariablesWithoutOptionExplicit) {
  EXPECT_EQ(Statements("x = y\nx.z 1\nGone 2\nz = Gone(2)", false).Uses(),
            "x write implicit; y read implicit; x read implicit; z call late; Gone call unknown; "
            "z write implicit; Gone call unknown");
  EXPECT_EQ(Statements("ReDim a(3)\na(1) = UBound(a)").Uses(),
            "a write local; UBound call library; a read local");
}

TEST(UseBinder, NamesWhatBuiltInsAndControlsMean) {
  EXPECT_EQ(Statements("s = Left$(s, 1): F.cmd(1).Caption = s: F.cmd(n).Caption = s").Uses(true),
            "s write local P~M~T~s; Left$ call library VBA~Strings~Left; s read local P~M~T~s; F "
            "read project P~F; cmd read control P~F~cmd(1); Caption write library "
            "VB~CommandButton~Caption; s read local P~M~T~s; F read project P~F; cmd read control "
            "P~F~cmd; n read local P~M~T~n; Caption write library VB~CommandButton~Caption; s read "
            "local P~M~T~s");
}

struct ModuleRow {
  const char* File;
  const char* Body;
  const char* Uses;
};

TEST(UseBinder, BindsDeclarationsHandlersAndOwnResults) {
  const ModuleRow rows[] = {
      {"C.cls", "Implements IThing\nPrivate Sub IThing_Do()\nEnd Sub\n",
       "IThing implements project; Do implements project (2)"},
      {"C.cls",
       "Private WithEvents mThing As IThing\nPrivate Sub mThing_Done(ByVal n As Long)\nEnd "
       "Sub\nPrivate Sub mThing_None()\nEnd Sub\n",
       "IThing type project; mThing handle own-module (2); Done handle project (2)"},
      {"C.cls", "Event Hit(x As Long)\nSub T()\nDim n As Long\nRaiseEvent Hit(n)\nEnd Sub",
       "Hit raise own-module; n by-reference local"},
      {"F.frm", "Private Sub Form_Load()\nCaption = Left(Caption, Width)\nEnd Sub\n",
       "Load handle library (2); Caption write library; Left call library; Caption read library; "
       "Width read library"},
      {"U.ctl", "Private Sub UserControl_Resize()\nUserControl.Width = Width\nEnd Sub",
       "Resize handle library (2); UserControl read library; Width write library; Width read "
       "library"},
      {"M.bas",
       "Function Fact(n As Long) As Long\nIf n > 1 Then Fact = n * Fact(n - 1) Else Fact = "
       "1\nn = Fact\nEnd Function",
       "n read parameter; Fact write own-module own; n read parameter; Fact call own-module own; n "
       "read parameter; Fact write own-module own; n write parameter; Fact read own-module own"},
      {"M.bas", "Function L() As String()\nL(1) = L(2)\nEnd Function",
       "L write own-module own; L read own-module own"},
      {"M.bas",
       "Const A = 2, B = A * 2\nType T\n  X(A To B) As String * A\nEnd Type\nEnum E\n  "
       "e1 = A\n  e2 = e1 Or 1\nEnd Enum\nPrivate Declare Sub D Lib \"k\" Alias \"d\" (a As "
       "T)\nSub S(Optional c As Long = A, Optional d As E)\nEnd Sub",
       "A read own-module; A read own-module; B read own-module; A read own-module; A read "
       "own-module; e1 read enumeration-member; T type type; A read own-module; E type type"},
      {"M.bas",
       "#If None Then\nSub S()\nx = 1\nEnd Sub\n#Else\nSub S()\nS\nEnd "
       "Sub\n#End If",
       "S call own-module own"},
      {"M.bas", "Sub S()\nShared\nN.Shared\nP.O.Shared\nEnd Sub",
       "Shared call ambiguous; N qualify project; Shared call project; P qualify project; O "
       "qualify project; Shared call project"},
  };
  for (const ModuleRow& row : rows) {
    test::TestProject project(
        {{"IThing.cls", "Event Done(ByVal n As Long)\nPublic Sub Do()\nEnd Sub\n"},
         {"N.bas", "Public Sub Shared()\nEnd Sub\n"},
         {"O.bas", "Public Sub Shared()\nEnd Sub\n"},
         {row.File, row.Body}},
        Complete());
    const Component* last = nullptr;
    for (Component& module : project.Project->Components) last = &module;
    EXPECT_EQ(UsesFrom(*project.Project, *last, 1), row.Uses) << row.Body;
  }
}

// Marks in the text say where each use stands: "<" in front of it, ">" behind it.
TEST(UseBinder, KnowsThePlaceOfEachUseAcrossContinuations) {
  const std::string marked =
      "Sub T()\n\tDim n As Long: <n> = \"\xC3\xA4\" & <n> _\n   + <n>: <n> = <MsgBox>( _\n"
      "  <vbCrLf>, _\n <n>)\n  <[n]> = 1\nEnd Sub\n";
  std::string text, expected;
  std::int32_t line = 2, column = 1;  // behind the header
  for (const char c : marked) {
    if (c == '<')
      expected += std::to_string(line) + ":" + std::to_string(column) + "-";
    else if (c == '>')
      expected += std::to_string(column) + " ";
    else {
      text += c;
      if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80U) ++column;
      if (c == '\n') {
        ++line;
        column = 1;
      }
    }
  }
  test::TestModule module("M.bas", text, Complete());
  std::string places;
  UseBinder binder(*module.Project);
  binder.Bind(*module, [&](const NameUse& use) {
    places += std::to_string(use.Line) + ":" + std::to_string(use.Column) + "-" +
              std::to_string(use.EndColumn) + " ";
  });
  EXPECT_EQ(places, expected);
}

TEST(UseBinder, CountsFalseBranchesAndBindsThemWhenAsked) {
  const char* body =
      "Private n As Long\nSub T()\n#If None Then\nn = n\n#End If\nn = 1\n"
      "End Sub\n";
  test::TestModule module("M.bas", body, Complete());
  UseBinder binder(*module.Project);
  binder.Bind(*module, {});
  EXPECT_EQ(binder.Counts().InFalseBranches, 2);
  EXPECT_EQ(binder.Counts().Of(UseAnswer::OwnModule), 1);
  EXPECT_EQ(UsesFrom(*module.Project, *module, 1, false, {false, true}),
            "n write own-module; n read own-module; n write own-module");
}

TEST(UseBinder, SaysWhatStandsInAReferenceThatIsMissing) {
  const std::string source =
      "Option Explicit\nDim c As ADODB.Connection\nSub T()\nc.Open adCmdText\nEnd Sub\n";
  test::MemoryFiles files(
      {{"/p/P.vbp", "Type=Exe\nReference=*\\G{1}#2.0#0#none.tlb#None\nModule=M; M.bas\n"},
       {"/p/M.bas", "Attribute VB_Name = \"M\"\n" + source}});
  VBProject project;
  Complete()(project);
  project.Load("/p/P.vbp");
  const Component* module = nullptr;
  for (Component& one : project.Components) module = &one;
  EXPECT_EQ(UsesFrom(project, *module, 1, true),
            "ADODB qualify external ADODB; Connection type external ADODB; c read own-module "
            "~M~c; Open call external ADODB; adCmdText read external");
}

// A library that has been loaded goes before the table of built-ins, its enumerations and classes
// included; what it does not tell is bound late.
TEST(UseBinder, FollowsReferencesToProjectsAndLibrariesThatAreAtHand) {
  const auto usesWith = [](bool isLibrary) {
    test::TestProject other(
        {{"Box.cls", "Public Enum Lid\nOpen1\nEnd Enum\nPublic Sub Shut()\nEnd Sub\n"}},
        [](VBProject& project) { test::Complete()(project); });
    other.Project->ProjectName = "Boxes";
    other.Project->Components.Populate();
    other.Project->WasReadFromTypeLibrary = isLibrary;
    test::TestProject own(
        {{"M.bas",
          "Option Explicit\nSub S(b As Box, c As Boxes.Box)\nb.Shut\nc.Gone Open1\n"
          "End Sub\n"}},
        Complete());
    const auto reference = std::make_shared<Reference>();
    reference->SetReferencedProject(other.Project.get());
    own.Project->References.Add(reference);
    return UsesFrom(*own.Project, own.Module("M"), 4);
  };
  EXPECT_EQ(usesWith(false),
            "b read parameter; Shut call project; c read parameter; Gone call unknown; Open1 read "
            "enumeration-member");
  EXPECT_EQ(usesWith(true),
            "b read parameter; Shut call library; c read parameter; Gone call "
            "late; Open1 read library");
}

TEST(UseBinder, TakesWhatAMissingModuleMayHoldForExternal) {
  test::MemoryFiles files({{"/p/P.vbp", "Type=Exe\nClass=Gone; Gone.cls\nModule=M; M.bas\n"},
                           {"/p/M.bas",
                            "Attribute VB_Name = \"M\"\nOption Explicit\nSub S(g As Gone)\n"
                            "g.Do1 More\nEnd Sub\n"}});
  VBProject project;
  Complete()(project);
  project.Load("/p/P.vbp");
  const Component* module = nullptr;
  for (Component& one : project.Components) module = &one;
  EXPECT_EQ(UsesFrom(project, *module, 4, true),
            "g read parameter ~M~S:g; Do1 call external Gone; More read external");
}

}  // namespace
}  // namespace vendrel
