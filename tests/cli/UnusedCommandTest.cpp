// What nobody uses, each reason on a small program.
#include <gtest/gtest.h>

#include "support/MemoryFiles.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

constexpr const char* kUnusedProject =
    "Type=Exe\n"
    "Reference=*\\G{A}#1.0#0#C:\\W\\scrrun.dll#Microsoft Scripting Runtime\n"
    "Reference=*\\G{B}#2.5#0#C:\\W\\msado15.dll#Microsoft ActiveX Data Objects 2.5 Library\n"
    "Object={C}#1.2#0; COMDLG32.OCX\nObject={D}#1.2#0; MSCOMCTL.OCX\n"
    "Module=modMain; modMain.bas\nModule=modOld; modOld.bas\nForm=frmMain.frm\n"
    "Class=Item; Item.cls\nClass=IPrice; IPrice.cls\nClass=Orphan; Orphan.cls\n"
    "Startup=\"Sub Main\"\nName=\"Shop\"\n[VBCompiler]\nLinkSwitches=-DLL -EXPORT:Shown,@1\n";

constexpr const char* kUnusedMain = R"(Attribute VB_Name = "modMain"
Option Explicit
Public Const UsedConst = 1
Public Const DeadConst = 2
Private Total As Long
Public Kept As Long
Private Held As Item
Private Declare Sub Beep Lib "kernel32" (ByVal Hertz As Long)
Private Declare Sub Sleep Lib "kernel32" (ByVal Time As Long)
Public Enum Colour
  Red = UsedConst
  Blue
End Enum
Private Enum Gone
  First
End Enum
Private Type TPoint
  X As Long
End Type
Private Type TDead
  X As Long
End Type
Public Sub Main()
  Dim p As TPoint, i As Long, spare As Long, idle As Long
  Dim any As Object, rs As ADODB.Recordset
  idle = 2
  For i = 1 To 3: Beep 1: Next
  p.X = Red
  Total = 1
  Kept = p.X
  Set Held = New Item
  Set any = New Item
  any.LateCall
  CallByName any, "Named", VbMethod
  frmMain.Show
  Fold Kept, 2
  SetTimer AddressOf Tick
#If Trace Then
  OnlyTrace
#End If
End Sub
Private Sub SetTimer(ByVal Address As Long)
  Debug.Print Address
End Sub
Private Sub Fold(ByVal a As Long, ByVal b As Long)
  Debug.Print a
End Sub
Private Sub Tick(ByVal Window As Long, ByVal Message As Long)
  Debug.Print "Tock"
End Sub
Private Sub OnlyTrace()
End Sub
Private Sub Ping()
  Pong
End Sub
Private Sub Pong()
  Ping
End Sub
Private Function Recursive(ByVal n As Long) As Long
  Recursive = Recursive(n - 1)
End Function
Private Sub Dead()
  Dim inner As Long
  FromDead
End Sub
Private Sub FromDead()
End Sub
Private Sub Tock()
End Sub
'##USED The installer calls it.
Public Sub Install()
  Marked
End Sub
Private Sub Marked()
End Sub
Public Sub Shown()
End Sub
)";

constexpr const char* kUnusedForm = R"(VERSION 5.00
Begin VB.Form frmMain
  Begin VB.CommandButton cmdGo
  End
  Begin MSComctlLib.ListView lvw
  End
End
Attribute VB_Name = "frmMain"
Public Sub Fill()
End Sub
Private Sub Form_Load()
  Fill
End Sub
Private Sub Form_Fill()
End Sub
Private Sub cmdGo_Click()
End Sub
Private Sub cmdGo_Scroll()
End Sub
Private Sub cmdGone_Click()
End Sub
Private Sub lvw_ItemClick(ByVal Item As Object)
End Sub
)";

constexpr const char* kUnusedItem = R"(VERSION 1.0 CLASS
Attribute VB_Name = "Item"
Implements IPrice
Public Event Sold()
Public Event Lost()
Public Note As String
Private Sub Class_Initialize()
  RaiseEvent Sold
End Sub
Public Sub LateCall()
End Sub
Public Sub Named()
End Sub
Public Sub NotNamed()
  Count
End Sub
Public Property Get Rank() As Long
Attribute Rank.VB_UserMemId = 0
End Property
Private Property Get IPrice_Value() As Currency
End Property
Private Sub Count()
End Sub
)";

// Kind, name, reason, how sure, place.
constexpr const char* kAllFindings =
    R"(constant	Shop~modMain~DeadConst	nothing uses it	certain	/s/modMain.bas:4
variable	Shop~modMain~Total	it is assigned and never read	certain	/s/modMain.bas:5
variable	Shop~modMain~Held	it is assigned and never read	possible: it may keep an object alive	/s/modMain.bas:7
declare	Shop~kernel32.dll_LIB~Sleep_DEC	nothing uses it	certain	/s/modMain.bas:9
enumeration-member	Shop~modMain~Colour_EN:Blue	nothing uses it	certain	/s/modMain.bas:12
enumeration	Shop~modMain~Gone_EN	nothing uses it	certain	/s/modMain.bas:14
type	Shop~modMain~TDead_UT	nothing uses it	certain	/s/modMain.bas:20
local-variable	Shop~modMain~Main~spare	nothing uses it	certain	/s/modMain.bas:24
local-variable	Shop~modMain~Main~idle	it is assigned and never read	certain	/s/modMain.bas:24
local-variable	Shop~modMain~Main~rs	nothing uses it	certain	/s/modMain.bas:25
parameter	Shop~modMain~Fold:b	nothing uses it	certain	/s/modMain.bas:45
procedure	Shop~modMain~OnlyTrace	only a branch of #If that does not hold uses it: Shop~modMain~Main	possible: with other values of #Const it is used	/s/modMain.bas:51
procedure	Shop~modMain~Ping	it and what uses it use only each other: Shop~modMain~Pong	certain	/s/modMain.bas:53
procedure	Shop~modMain~Pong	it and what uses it use only each other: Shop~modMain~Ping	certain	/s/modMain.bas:56
procedure	Shop~modMain~Recursive	nothing uses it	certain	/s/modMain.bas:59
procedure	Shop~modMain~Dead	nothing uses it	certain	/s/modMain.bas:62
procedure	Shop~modMain~FromDead	only what is unused itself uses it: Shop~modMain~Dead	certain	/s/modMain.bas:66
procedure	Shop~modMain~Tock	nothing uses it	possible: its name stands in a string	/s/modMain.bas:68
module	Shop~modOld	nothing of the module is used	certain	/s/modOld.bas
event-procedure	Shop~frmMain~Form_Fill	its form or control has no event of that name	certain	/s/frmMain.frm:14
event-procedure	Shop~frmMain~cmdGo_Scroll	its form or control has no event of that name	certain	/s/frmMain.frm:18
event-procedure	Shop~frmMain~cmdGone_Click	it is named for an event of a control that does not exist	certain	/s/frmMain.frm:20
event	Shop~Item~Lost_EV	nothing raises the event	certain	/s/Item.cls:5
variable	Shop~Item~Note	nothing uses it	likely: objects may be used without their class being known	/s/Item.cls:6
procedure	Shop~Item~NotNamed	nothing uses it	likely: objects may be used without their class being known	/s/Item.cls:14
procedure	Shop~Item~Count	only what is unused itself uses it: Shop~Item~NotNamed	likely: objects may be used without their class being known	/s/Item.cls:22
module	Shop~Orphan	nothing of the module is used	certain	/s/Orphan.cls
reference	Shop~Microsoft Scripting Runtime	nothing of the library is used	certain	/s/Shop.vbp
control-reference	Shop~COMDLG32.OCX	nothing of the library is used	certain	/s/Shop.vbp
)";

class UnusedCommand : public testing::Test {
 protected:
  test::MemoryFiles mFiles{
      {"/s/Shop.vbp", kUnusedProject},
      {"/s/modMain.bas", kUnusedMain},
      {"/s/modOld.bas", "Attribute VB_Name = \"modOld\"\nPublic Sub Old()\nEnd Sub\n"},
      {"/s/frmMain.frm", kUnusedForm},
      {"/s/Item.cls", kUnusedItem},
      {"/s/IPrice.cls",
       "VERSION 1.0 CLASS\nAttribute VB_Name = \"IPrice\"\n"
       "Public Property Get Value() As Currency\nEnd Property\n"},
      {"/s/Orphan.cls",
       "VERSION 1.0 CLASS\nAttribute VB_Name = \"Orphan\"\nPublic Sub Go()\n  Old\nEnd Sub\n"}};
};

TEST_F(UnusedCommand, TellsEachReason) {
  EXPECT_EQ(RunFor({"unused", "/s/Shop.vbp"}), kAllFindings);
}

TEST_F(UnusedCommand, ChoosesByKindSurenessAndName) {
  EXPECT_EQ(RunFor({"unused", "/s/Shop.vbp", "--kind", "event", "--kind", "type"}),
            "type\tShop~modMain~TDead_UT\tnothing uses it\tcertain\t/s/modMain.bas:20\n"
            "event\tShop~Item~Lost_EV\tnothing raises the event\tcertain\t/s/Item.cls:5\n");
  EXPECT_EQ(RunFor({"unused", "/s/Shop.vbp", "--kind", "procedure", "--sure", "certain", "--used",
                    "Shop~modMain~Dead", "--used", "*~Recur*", "--used", "Shop~modMain~Ping"}),
            "");
  EXPECT_EQ(ToolEnding(exDone, {"unused", "/s/Shop.vbp"}).Err, "");
  ToolEnding(exNo, {"unused", "/s/Shop.vbp", "--fail"});
  ToolEnding(exDone, {"unused", "/s/Shop.vbp", "--fail", "--kind", "type", "--used", "*TDead*"});
  ToolEnding(exUsage, {"unused", "/s/Shop.vbp", "--kind", "nonsense"});
  mFiles.Add("/s/.vendrelmodel.toml", "[unused]\nused = [\"*TDead*\"]\n");
  ToolEnding(exDone, {"unused", "/s/Shop.vbp", "--fail", "--kind", "type"});
}

TEST_F(UnusedCommand, WritesAFindingALine) {
  const auto rows = JsonLines({"unused", "/s/Shop.vbp", "--json", "--kind", "procedure"});
  ASSERT_EQ(rows.size(), 9u);
  EXPECT_EQ(rows[1], json::parse(R"({"QualifiedName":"Shop~modMain~Ping","Kind":"procedure",
      "Reason":"ring","Sureness":"certain",
      "Text":"it and what uses it use only each other: Shop~modMain~Pong",
      "By":"Shop~modMain~Pong","File":"/s/modMain.bas","Line":53,"Column":13})"));
}

TEST_F(UnusedCommand, TellsWhatCouldBePrivate) {
  EXPECT_EQ(RunFor({"unused", "/s/Shop.vbp", "--could-be-private"}),
            "constant\tShop~modMain~UsedConst\tonly its own module uses it\tcertain\t"
            "/s/modMain.bas:3\n"
            "variable\tShop~modMain~Kept\tonly its own module uses it\tcertain\t"
            "/s/modMain.bas:6\n"
            "enumeration\tShop~modMain~Colour_EN\tonly its own module uses it\tcertain\t"
            "/s/modMain.bas:10\n"
            "procedure\tShop~frmMain~Fill\tonly its own module uses it\tcertain\t"
            "/s/frmMain.frm:9\n");
}

// What two programs share is unused if neither uses it; what a library shows is used from outside.
TEST_F(UnusedCommand, ProjectsMustAgreeOnWhatTheyShare) {
  const auto program = [](const std::string& name) {
    return "Type=Exe\nModule=Shared; Shared.bas\nModule=" + name + "; " + name +
           ".bas\nStartup=\"Sub Main\"\nName=\"" + name + "\"\n";
  };
  const test::MemoryFiles files{
      {"/e/One.vbp", program("One")},
      {"/e/Two.vbp", program("Two")},
      {"/e/One.bas", "Attribute VB_Name = \"One\"\nSub Main()\n  OfOne\nEnd Sub\n"},
      {"/e/Two.bas", "Attribute VB_Name = \"Two\"\nSub Main()\n  OfTwo\nEnd Sub\n"},
      {"/e/Shared.bas",
       "Attribute VB_Name = \"Shared\"\nSub OfOne()\nEnd Sub\nSub OfTwo()\nEnd Sub\n"
       "Sub OfNone()\nEnd Sub\n"},
      {"/e/Lib.vbp", "Type=OleDll\nClass=Shown; Shown.cls\nClass=Own; Own.cls\nName=\"Lib\"\n"},
      {"/e/Shown.cls",
       "VERSION 1.0 CLASS\nAttribute VB_Name = \"Shown\"\nAttribute VB_Exposed = True\n"
       "Public Sub Open(ByVal Way As Long)\nDebug.Print 1\nEnd Sub\nFriend Sub Near()\nEnd Sub\n"
       "Private Sub Inside()\nEnd Sub\n"},
      {"/e/Own.cls", "VERSION 1.0 CLASS\nAttribute VB_Name = \"Own\"\nPublic Sub Go()\nEnd Sub\n"},
      {"/l/loose.bas",
       "Attribute VB_Name = \"loose\"\nPublic Sub Macro()\nEnd Sub\nPrivate Sub Gone()\nEnd "
       "Sub\n"}};
  EXPECT_EQ(
      RunFor({"unused", "/e"}),
      "parameter\tLib~Shown~Open:Way\tnothing uses it\tpossible: what is called from outside has "
      "fixed parameters\t/e/Shown.cls:4\n"
      "procedure\tLib~Shown~Near\tnothing uses it\tlikely: objects may be used without their class "
      "being known\t/e/Shown.cls:7\n"
      "procedure\tLib~Shown~Inside\tnothing uses it\tcertain\t/e/Shown.cls:9\n"
      "module\tLib~Own\tnothing of the module is used\tcertain\t/e/Own.cls\n"
      "procedure\tOne~Shared~OfNone\tnothing uses it\tcertain\t/e/Shared.bas:6\n");
  EXPECT_EQ(RunFor({"unused", "/l/loose.bas"}),
            "procedure\tloose~loose~Gone\tnothing uses it\tcertain\t/l/loose.bas:4\n");
}

constexpr const char* kNetProgram =
    R"(<Project xmlns="http://schemas.microsoft.com/developer/msbuild/2003"><PropertyGroup>
<OutputType>Exe</OutputType><RootNamespace>N</RootNamespace><StartupObject>N.Program</StartupObject>
</PropertyGroup><ItemGroup><Compile Include="Program.vb" /><Compile Include="Later.vb" />
<Compile Include="Page.aspx.vb" /><Compile Include="Made.Designer.vb" /></ItemGroup></Project>)";

constexpr const char* kNetSource = R"(Module Program
  Sub Main()
    Dim k As Base = New Kept(1)
    Dim spare As Integer
    k.Turn()
    k.ToString().Late()
    "a".Shout()
    Fold("a", 2)
  End Sub
  Sub Fold(a As String, b As Integer)
    System.Console.WriteLine(a)
  End Sub
  Sub Fold(a As Integer)
  End Sub
  Sub Late()
  End Sub
  Sub Ping()
    Ping()
  End Sub
End Module
Module Extensions
  <Extension()>
  Sub Shout(s As String)
    System.Console.WriteLine(s)
  End Sub
End Module
Interface ITurn
  Sub Turn()
End Interface
MustInherit Class Base
  Public MustOverride Sub Turn()
End Class
Class Kept
  Inherits Base
  Implements ITurn
  Private mTable As Table = Table.Made()
  Private mIdle As Integer
  Sub New(n As Integer)
    mIdle = n
  End Sub
  Public Overrides Sub Turn()
    OfTurn()
  End Sub
  Private Sub Other() Implements ITurn.Turn
  End Sub
  Private Sub OfTurn()
  End Sub
  Private Sub Gone()
  End Sub
  Public Property Size() As Integer
  Private Function ShouldSerializeSize() As Boolean
  End Function
  Private Sub ResetSize()
  End Sub
  Private Sub ResetAll()
  End Sub
  Partial Private Sub OnMade(n As Integer)
  End Sub
  Public Shared Operator +(a As Kept, b As Kept) As Kept
    Return Nothing
  End Operator
End Class
Class Table
  Public Shared Function Made() As Table
    Return Nothing
  End Function
End Class
Class Lost
  Sub Go()
  End Sub
End Class
Enum Colour
  Red
End Enum
Class Tests
  <Test()> _
  Public Sub Adds()
  End Sub
  <Obsolete()> Private Sub Old()
  End Sub
End Class
)";

// What runs without being named: what overrides or implements, constructors, values of fields, what
// attributes and markup name.
TEST(UnusedOfNet, FollowsWhatRunsWithoutBeingNamed) {
  const test::MemoryFiles files{
      {"/n/N.vbproj", kNetProgram},
      {"/n/Program.vb", kNetSource},
      {"/n/Later.vb",
       "Partial Class Kept\n  Private Sub InitializeComponent()\n  End Sub\n  Private Sub "
       "Later()\n  End Sub\n  Private Sub Click() Handles "
       "MyBase.Click\n    OfClick()\n  End Sub\n  Private Sub OfClick()\n  End Sub\nEnd Class\n"},
      {"/n/Page.aspx", "<asp:Button OnClick=\"Buy_Click\" />"},
      {"/n/Page.aspx.vb",
       "Class Page1\n  Sub Page_Load()\n  End Sub\n  Sub Buy_Click(e As Object)\n    Shown = 1\n"
       "  End Sub\n  Sub Sell_Click()\n  End Sub\nEnd Class\n"},
      {"/n/Made.Designer.vb", "Class Generated\n  Sub Nothing1()\n  End Sub\nEnd Class\n"}};
  EXPECT_EQ(
      RunFor({"unused", "/n/N.vbproj", "--quiet"}),
      "local-variable\tN~N.Program~Main~spare\tnothing uses it\tcertain\t/n/Program.vb:4\n"
      "parameter\tN~N.Program~Fold(String,Int32):b\tnothing uses it\tcertain\t/n/Program.vb:10\n"
      "procedure\tN~N.Program~Ping\tnothing uses it\tcertain\t/n/Program.vb:17\n"
      "procedure\tN~N.Kept~Later\tnothing uses it\tcertain\t/n/Later.vb:4\n"
      "variable\tN~N.Kept~mTable\tnothing uses it\tcertain\t/n/Program.vb:36\n"
      "variable\tN~N.Kept~mIdle\tit is assigned and never read\tcertain\t/n/Program.vb:37\n"
      "procedure\tN~N.Kept~Gone\tnothing uses it\tcertain\t/n/Program.vb:48\n"
      "procedure\tN~N.Kept~Size [get]\tnothing uses it\tlikely: objects may be used without "
      "their class being known\t/n/Program.vb:50\n"
      "procedure\tN~N.Kept~ShouldSerializeSize\tnothing uses it\tpossible: a designer may show or "
      "set it\t/n/Program.vb:51\n"
      "procedure\tN~N.Kept~ResetSize\tnothing uses it\tpossible: a designer may show or set "
      "it\t/n/Program.vb:53\n"
      "procedure\tN~N.Kept~ResetAll\tnothing uses it\tcertain\t/n/Program.vb:55\n"
      "type\tN~N.Lost\tnothing of the module is used\tcertain\t/n/Program.vb\n"
      "enumeration\tN~N.Colour\tnothing of the module is used\tcertain\t/n/Program.vb\n"
      "procedure\tN~N.Tests~Old\tnothing uses it\tcertain\t/n/Program.vb:79\n"
      "parameter\tN~N.Page1~Buy_Click:e\tnothing uses it\tpossible: what is called from outside "
      "has "
      "fixed parameters\t/n/Page.aspx.vb:4\n"
      "procedure\tN~N.Page1~Sell_Click\tnothing uses it\tlikely: objects may be used without "
      "their class being known\t/n/Page.aspx.vb:7\n");
}

constexpr const char* kDesignedProgram =
    R"(<Project xmlns="http://schemas.microsoft.com/developer/msbuild/2003"><PropertyGroup>
<OutputType>Exe</OutputType><RootNamespace>D</RootNamespace><StartupObject>D.Program</StartupObject>
</PropertyGroup><ItemGroup><Compile Include="Form1.Designer.vb" /><Compile Include="Form1.vb" />
<Compile Include="Program.vb" /></ItemGroup></Project>)";

// Each element is judged by the file that declares it, and each local by its own block; a field is
// no surer than the public property that alone uses it.
TEST(UnusedOfNet, JudgesEachPartOfATypeByItsFile) {
  const test::MemoryFiles files{
      {"/d/D.vbproj", kDesignedProgram},
      {"/d/Form1.Designer.vb",
       "Partial Class Form1\n  Private Sub InitializeComponent()\n    Helper()\n  End Sub\n  "
       "Private Sub Made()\n  End Sub\n  Private mMade As Integer\nEnd Class\n"},
      {"/d/Form1.vb",
       "Class Form1\n  Private mKept As Integer\n  Private Sub Helper()\n  End Sub\n  Private Sub "
       "Other()\n  End Sub\n  Public ReadOnly Property Kept() As Integer\n    Get\n      Return "
       "mKept\n    End Get\n  End Property\n  Private mPart As Integer\n  Public Overloads "
       "Property Part() As Integer\n    Get\n      Return mPart\n    End Get\n    Set(ByVal v As "
       "Integer)\n    End Set\n  End Property\n  Public Overloads Property Part(ByVal n As "
       "Integer) As Integer\n    Get\n      Return 1\n    End Get\n    Set(ByVal v As Integer)\n   "
       "   mPart = n\n    End Set\n  End Property\nEnd Class\n"},
      {"/d/Program.vb",
       "Module Program\n  Sub Main()\n    Dim f As New Form1\n    f.Part(1) = 2\n    If f Is "
       "Nothing Then\n      Dim "
       "n "
       "As Integer = 1\n      Take(n)\n    Else\n      Dim n As Integer = 2\n      Take(n)\n      "
       "Dim idle As Integer\n    End If\n  End Sub\n  Sub Take(ByVal n As Integer)\n    "
       "System.Console.WriteLine(n)\n  End Sub\nEnd Module\n"}};
  constexpr std::string_view late =
      "likely: objects may be used without their class being known\t/d/Form1.vb:";
  EXPECT_EQ(RunFor({"unused", "/d/D.vbproj", "--quiet"}),
            "variable\tD~D.Form1~mKept\tonly what is unused itself uses it: D~D.Form1~Kept "
            "[get]\t" +
                std::string(late) +
                "2\nprocedure\tD~D.Form1~Other\tnothing uses it\tcertain\t/d/Form1.vb:5\n"
                "procedure\tD~D.Form1~Kept [get]\tnothing uses it\t" +
                std::string(late) +
                "7\nlocal-variable\tD~D.Program~Main~idle\tnothing uses "
                "it\tcertain\t/d/Program.vb:11\n");
}

}  // namespace
}  // namespace vendrel::cli
