// What each kind of line makes of a module: small module texts and the tree that they give.

#include <gtest/gtest.h>

#include "support/Projects.h"

namespace vendrel {
namespace {

using test::Describe;
using test::TestModule;

struct DeclarationCase {
  const char* Body;
  const char* Tree;
};

void ExpectTrees(const std::string& file, const std::vector<DeclarationCase>& cases,
                 const test::Prepare& prepare = {}) {
  for (const DeclarationCase& c : cases) {
    TestModule module(file, c.Body, prepare);
    EXPECT_EQ(Describe(*module), c.Tree) << c.Body;
    EXPECT_EQ(module->LoadState, lsFullyLoaded);
  }
}

TEST(DeclarationsTest, ProceduresHaveNameTypeAndParameters) {
  ExpectTrees(
      "M.bas",
      {{"Option Explicit\n"
        "Sub Main()\nEnd Sub\n"
        "Private Function F%()\nEnd Function\n"
        "Friend Function G(a, ByVal b As Long, Optional ByVal c As Long = 5, ParamArray d()) As "
        "String()\n"
        "End Function\n"
        "Public Static Function H&(s$, o As Lib.Thing)\nEnd Function\n"
        "Function [Odd]() As Long\nEnd Function\n",
        "M explicit\n"
        " attributes\n"
        " declarations\n"
        " sub PUBLIC Main() As Variant @3\n"
        " function PRIVATE F() As Integer @5\n"
        " function FRIEND G(a As Variant implicit, ByVal b As Long, Optional ByVal c As Long = 5, "
        "ParamArray d() As Variant implicit) As String() @7\n"
        " function PUBLIC H(s As String, o As Lib.Thing) As Long @9\n"
        " function PUBLIC [Odd]() As Long @11\n"},
       {"Dim a\nSub Class_Initialize()\nEnd Sub\nSub Class_Terminate()\nEnd Sub\nSub "
        "Form_Load()\nEnd Sub\n"
        "Sub Form_Unload(Cancel As Integer)\nEnd Sub\nSub UserControl_Initialize()\nEnd Sub\n"
        "Sub UserControl_Terminate()\nEnd Sub\nSub UserDocument_Initialize()\nEnd Sub\n"
        "Sub UserDocument_Terminate()\nEnd Sub\n",
        "M\n attributes\n declarations\n  var PRIVATE a As Variant implicit @1/2\n"
        " initialize PRIVATE Class_Initialize @3\n"
        " terminate PRIVATE Class_Terminate @5\n"
        " load PRIVATE Form_Load @7\n"
        " unload PRIVATE Form_Unload @9\n"
        " ucinit PRIVATE Usercontrol_Initialize @11\n"
        " ucterm PRIVATE Usercontrol_Terminate @13\n"
        " udinit PRIVATE Userdocument_Initialize @15\n"
        " udterm PRIVATE Userdocument_Terminate @17\n"},
       // A procedure on the second line: no declarations section at all.
       {"Sub Main()\nEnd Sub\n", "M\n attributes\n sub PUBLIC Main() As Variant @2\n"},
       // Two of one name: both stay.
       {"Sub A()\nEnd Sub\nSub A(x)\nEnd Sub\n",
        "M\n attributes\n sub PUBLIC A() As Variant @2\n sub PUBLIC A(x As Variant implicit) As "
        "Variant @4\n"}});
}

TEST(DeclarationsTest, PropertiesFormGroups) {
  ExpectTrees("C.cls",
              {{"Private mX As Long\n"
                "Public Property Get X() As Long\nEnd Property\n"
                "Friend Property Let x(ByVal v As Long)\nEnd Property\n"
                "Private Property Set Font(f As StdFont)\nEnd Property\n"
                "Property Let Item(i, v)\nEnd Property\n"
                "Property Get Name$()\nEnd Property\n"
                "Property Get All() As Long()\nEnd Property\n",
                "C\n"
                " property PUBLIC X get let\n"
                " property PRIVATE Font set\n"
                " property PUBLIC Item let\n"
                " property PUBLIC Name get\n"
                " property PUBLIC All get\n"
                " attributes\n declarations\n"
                "  var PRIVATE mX As Long @1/6\n"
                " get PUBLIC X() As Long @7\n"
                " let FRIEND x(ByVal v As Long) As Long @9\n"
                " set PRIVATE Font(f As StdFont) As StdFont @11\n"
                " let PUBLIC Item(i As Variant implicit, v As Variant implicit) As Variant @13\n"
                " get PUBLIC Name() As Variant @15\n"
                " get PUBLIC All() As Long() @17\n"}});
}

TEST(DeclarationsTest, VariablesOfModulesAndProcedures) {
  ExpectTrees(
      "M.bas",
      {{"DefInt A-C, X\n"
        "Public a, b As Long, c(1 To 3) As Byte, d() As String, e$\n"
        "Dim WithEvents f As Foo, g As New Foo\n"
        "Global h As String * 10\n"
        "Private i( 1 To 2 , 3 ) As Long, j&\n"
        "Sub S()\n  Dim x, y!\n  Static z As Long\n  Const K = 1\nEnd Sub\n",
        "M\n attributes\n declarations\n"
        "  var PUBLIC a As Variant implicit @1/3\n"
        "  var PUBLIC b As Long @1/3\n"
        "  var PUBLIC c(1 To 3) As Byte @1/3\n"
        "  var PUBLIC d() As String @1/3\n"
        "  var PUBLIC e As String @1/3\n"
        "  var PRIVATE f As Foo events @2/4\n"
        "  var PRIVATE g As Foo @2/4\n"
        "  var PUBLIC h As String fixed @3/5\n"
        "  var PRIVATE i(1 To 2 , 3) As Long @4/6\n"
        "  var PRIVATE j As Long @4/6\n"
        " sub PUBLIC S() As Variant @7\n"
        "  const PRIVATE K=1\n"
        "  var PRIVATE x As Variant implicit @2/8\n"
        "  var PRIVATE y As Single @2/8\n"},
       // DefInt does count behind a line that opens the section.
       {"Option Base 1\nDefInt A-C, X\nDefstr S\nDefByte B\nDefInt M-M\nDefDate Z-A\n"
        "Dim a, b, m, s, z\nFunction Xa(c, q)\nEnd Function\n",
        "M base=1\n attributes\n declarations\n"
        "  var PRIVATE a As Integer implicit @7/8\n"
        "  var PRIVATE b As Integer implicit @7/8\n"
        "  var PRIVATE m As Integer implicit @7/8\n"
        "  var PRIVATE s As Variant implicit @7/8\n"
        "  var PRIVATE z As Variant implicit @7/8\n"
        " function PUBLIC Xa(c As Integer implicit, q As Variant implicit) As Integer @9\n"},
       {"Option Private Module\nPublic a As Long\nType T\n  x As Long\nEnd Type\nPublic Sub "
        "S()\nEnd Sub\n",
        "M private\n type PRIVATE T {PRIVATE x As Long} @3/4\n attributes\n declarations\n"
        "  var PRIVATE a As Long @2/3\n sub PRIVATE S() As Variant @7\n"}});
}

TEST(DeclarationsTest, LoadBlocksOnlyDropsLocalVariables) {
  TestModule module("M.bas", "Dim a\nSub S()\n  Dim x\n  ' late\n  Const K = 1\nEnd Sub\n",
                    [](VBProject& project) { project.LoadBlocksOnly = true; });
  EXPECT_EQ(Describe(*module),
            "M\n attributes\n declarations\n  var PRIVATE a As Variant implicit @1/2\n"
            " sub PUBLIC S() As Variant @3\n  const PRIVATE K=1\n");
  EXPECT_EQ(module->Blocks.Item(3)->CodeLines->Count(), 5);
}

TEST(DeclarationsTest, ConstantsAreCutAtCommasOutsideOfStrings) {
  ExpectTrees(
      "M.bas",
      {{"Public Const A = 1, B = \"x,y\", C As Long = &HFF\nConst X$ = \"a\" ' note\n"
        "Private Const [Odd] = 2 , D = 1  +  2\nGlobal Const G = #1/2/2000#\n",
        "M\n attributes\n declarations\n"
        "  const PUBLIC A=1\n  const PUBLIC B=\"x,y\"\n  const PUBLIC C=&HFF As Long\n"
        "  const PRIVATE X=\"a\" As String\n  const PRIVATE Odd=2\n  const PRIVATE D=1 + 2\n"
        "  const PUBLIC G=#1/2/2000#\n"}});
}

TEST(DeclarationsTest, EnumerationsAndTypesCollectTheirMembers) {
  ExpectTrees("C.cls",
              // Lines of a false branch do not count in `LineIndex`: they never reach the block.
              {{"Public Enum Colour ' palette\n"
                "  Red = 1 ' warm\n"
                "\n"
                "  ' a comment line\n"
                "  [Dark Blue]\n"
                "#If False Then\n"
                "#End If\n"
                "  Mixed = Red + 1\n"
                "End Enum\n"
                "Private Enum E\nEnd Enum\n"
                "Type Point\n  X As Long ' across\n  Y(1 To 2) As String * 4\n  Tag\nEnd Type\n"
                "Private Type P\n  q As New Foo\nEnd Type\n",
                "C\n"
                " enum PUBLIC Colour {Red=1, Dark Blue, Mixed=Red + 1} @1/6\n"
                " enum PRIVATE E {} @9/15\n"
                " type PUBLIC Point {PRIVATE X As Long, PRIVATE Y(1 To 2) As String fixed, PRIVATE "
                "Tag As  implicit} @11/17\n"
                " type PRIVATE P {PRIVATE q As Foo} @16/22\n"
                " attributes\n declarations\n"},
               // An end line without its beginning, a block left open.
               {"Dim a\nEnd Enum\nEnd Type\nEnum Open\n  x\n",
                "C\n attributes\n declarations\n  var PRIVATE a As Variant implicit @1/6\n"},
               // Two of a name: the first stays.
               {"Enum E\n  a\n  a = 2\nEnd Enum\nEnum e\n  b\nEnd Enum\n",
                "C\n enum PUBLIC E {a} @1/6\n attributes\n declarations\n"}});
  ExpectTrees("F.frm",
              {{"Type T\n  x As Long\nEnd Type\n",
                "F\n type PRIVATE T {PRIVATE x As Long} @1/5\n attributes\n declarations\n"}});
  TestModule module("C.cls",
                    "Enum Colour ' palette\n  Red = 1 ' warm\nEnd Enum\n"
                    "Type Point ' place\n  X As Long ' across\nEnd Type\n",
                    [](VBProject& project) {
                      project.UnTaggedEnumerations = project.UnTaggedUDTs = true;
                      project.UnTaggedVariables = true;
                    });
  EXPECT_EQ(module->Enumerations.Item(1)->Members().Item(1)->UnTaggedDescription, "warm");
  EXPECT_EQ(module->UDTs.Item(1)->Members.Item(1)->UnTaggedDescription, "across ");
  EXPECT_EQ(Describe(*module->Blocks.Item(2)), " declarations\n");
  EXPECT_EQ(test::Show(module->Blocks.Item(2)->CodeLines->Item(2)), "OTHER [Red = 1 ] 'warm");
}

TEST(DeclarationsTest, EventsAndDeclaresAndInterfaces) {
  ExpectTrees(
      "C.cls",
      {{"Option Explicit\n"
        "Implements Lib.IFoo\nImplements IFoo\nImplements IBar\n"
        "Public Event Changed(ByVal x As Long, y, y)\n"
        "Event Done()\nEvent done()\n"
        "Private Declare Function F Lib \"user32\" Alias \"FA\" (ByVal a As Long, b() As Byte) As "
        "Long\n"
        "Declare Sub S Lib \"a.drv\" ()\n"
        "Public Declare Function G$ Lib \"user32\" (ByVal x$)\n"
        "Private Declare Function F Lib \"user32\" () As Long\n"
        "Declare Function L Lib \"k\" () As Long()\n"
        "Private Sub IFoo_Bar()\nEnd Sub\nPrivate Property Get IBar_Name() As String\nEnd "
        "Property\n",
        "C explicit\n"
        " implements IFoo @2/7\n implements IBar @4/9\n"
        " event Changed(ByVal x As Long, y As Variant implicit, y As Variant implicit) @5/10\n"
        " event Done() @6/11\n"
        " declare PRIVATE function F lib user32.dll alias FA(ByVal a As Long, b() As Byte) As Long "
        "@8/13\n"
        " declare sub S lib a.drv() @9/14\n"
        " declare PUBLIC function G lib user32.dll(ByVal x As String) As String @10/15\n"
        " declare function L lib k.dll() As Long() @12/17\n"
        " property PRIVATE IBar_Name get\n"
        " attributes\n declarations\n"
        " sub PRIVATE IFoo_Bar() As Variant of IFoo @18\n"
        " get PRIVATE IBar_Name() As String of IBar @20\n"}});
}

TEST(DeclarationsTest, OptionsCountInTheDeclarationsOnly) {
  ExpectTrees("M.bas",
              {{"Option Explicit\nOption Compare Text\nOption Base 1\nOption Private Module\nSub "
                "S()\nEnd Sub\n",
                "M explicit private compare=Text base=1\n attributes\n declarations\n"
                " sub PRIVATE S() As Variant @6\n"},
               {"OPTION  EXPLICIT\nOption Compare   Binary  ' x\n",
                "M explicit compare=Binary\n attributes\n declarations\n"},
               {"Sub S()\nOption Explicit\nOption Base 1\nEnd Sub\n",
                "M\n attributes\n sub PUBLIC S() As Variant @2\n"},
               // Implements, Def... and the like do not open the section.
               {"Implements IFoo\nDefInt A-Z\nDim a\n",
                "M\n attributes\n declarations\n  var PRIVATE a As Variant implicit @1/4\n"}});
}

TEST(DeclarationsTest, AttributesDescribeModuleBlockAndElements) {
  ExpectTrees(
      "C.cls",
      {{"Attribute VB_Exposed = True\nAttribute VB_HelpID = 12\nAttribute VB_Description = \"d\"\n"
        "Public a As Long\nAttribute a.VB_VarHelpID = 7\nAttribute a.VB_MemberFlags = \"40\"\n"
        "Attribute missing.VB_VarHelpID = 99\n"
        "Event E()\nAttribute E.VB_HelpID = 8\nAttribute E.VB_MemberFlags = \"40\"\n"
        "Enum N\n  x\nEnd Enum\nAttribute N.VB_MemberFlags = \"40\"\n"
        "Type T\n  x As Long\nEnd Type\nAttribute T.VB_MemberFlags = \"40\"\n"
        "Public Property Get Item(i) As Long\nAttribute Item.VB_HelpID = 20\n"
        "Attribute Item.VB_UserMemId = 0\nAttribute Item.VB_MemberFlags = \"40\"\nEnd Property\n"
        "Public Function NewEnum() As IUnknown\nAttribute NewEnum.VB_UserMemId = -4\nEnd "
        "Function\n",
        "C PUBLIC default=Item collection help=12\n"
        " event E() hidden help=8 @5/13\n"
        " enum PUBLIC N {x} hidden @7/16\n"
        " type PUBLIC T {PRIVATE x As Long} hidden @11/20\n"
        " property PUBLIC Item get\n"
        " attributes\n declarations\n  var PUBLIC a As Long hidden help=7 @1/9\n"
        " get PUBLIC Item(i As Variant implicit) As Long hidden help=20 @24\n"
        " function PUBLIC NewEnum() As IUnknown @29\n"}});
}

TEST(DeclarationsTest, HelpAttributeLinesAreDroppedOrKept) {
  const std::string body =
      "Attribute VB_HelpID = 12\nPublic a As Long\nAttribute a.VB_VarHelpID = 7\nEvent E()\n"
      "Attribute E.VB_HelpID = 30\nSub S()\nAttribute S.VB_HelpID = 20\nEnd Sub\n";
  const auto texts = [&](const test::Prepare& prepare) {
    TestModule module("C.cls", body, prepare);
    EXPECT_EQ(module.Project->HighestHelpContextID(), 30);
    std::string text;
    for (const Block& block : module->Blocks)
      for (const CodeLine& line : block.CodeLines->LinesOfType(ATTRIBUTE_LINE))
        text += line.Text + "\n";
    return text;
  };
  EXPECT_EQ(texts({}), "Attribute VB_Name = \"C\"\n");
  EXPECT_EQ(texts(test::Reading("KeepHelpAttributes")),
            "Attribute VB_Name = \"C\"\nAttribute VB_HelpID = 12\nAttribute a.VB_VarHelpID = 7\n"
            "Attribute E.VB_HelpID = 30\nAttribute S.VB_HelpID = 20\n");
}

TEST(DeclarationsTest, EventProceduresHaveTheirSource) {
  TestModule module("F.frm",
                    "Private WithEvents mTimer As Clock\nPrivate mPlain As Clock\n"
                    "Private Sub Form_Resize()\nEnd Sub\nPrivate Sub mTimer_Tick()\nEnd Sub\n"
                    "Private Sub mPlain_Tick()\nEnd Sub\nPrivate Sub Nobody_Tick()\nEnd Sub\n"
                    "Private Sub FORM_Click()\nEnd Sub\n");
  EXPECT_EQ(Describe(*module),
            "F\n attributes\n declarations\n  var PRIVATE mTimer As Clock events @1/5\n"
            "  var PRIVATE mPlain As Clock @2/6\n"
            " sub PRIVATE Form_Resize() As Variant on F @7\n"
            " sub PRIVATE mTimer_Tick() As Variant on mTimer @9\n"
            " sub PRIVATE mPlain_Tick() As Variant @11\n"
            " sub PRIVATE Nobody_Tick() As Variant @13\n"
            " sub PRIVATE FORM_Click() As Variant on F @15\n");
  EXPECT_EQ(module->Blocks.Item("Form_Resize")->EventSource.Get(), &*module);
}

// `LineIndex` counts the continuations of the whole block, as documented; the place in the file
// does not.
TEST(DeclarationsTest, ElementsPointAtTheFirstLineOfTheirStatement) {
  TestModule module(
      "M.bas",
      "Dim z\nDim a As Long, _\n  b As Long\nPrivate Declare Sub S _\n  Lib \"k\" _\n ()\n"
      "Sub Main( _\n  x, _\n  y)\n  Dim q, _\n r\nEnd Sub\n");
  EXPECT_EQ(
      Describe(*module),
      "M\n declare PRIVATE sub S lib k.dll() @3/5\n attributes\n declarations\n"
      "  var PRIVATE z As Variant implicit @1/2\n"
      "  var PRIVATE a As Long @2/3\n  var PRIVATE b As Long @2/3\n"
      " sub PUBLIC Main(x As Variant implicit, y As Variant implicit) As Variant @8\n"
      "  var PRIVATE q As Variant implicit @2/11\n  var PRIVATE r As Variant implicit @2/11\n");
}

}  // namespace
}  // namespace vendrel
