// Each flag that changes what a declaration means, on both sides.

#include <gtest/gtest.h>

#include "support/Projects.h"

namespace vendrel {
namespace {

using test::Describe;
using test::TestModule;

struct FlagCase {
  const char* Flag;
  const char* File;
  const char* Body;
  const char* Classic;
  const char* Flagged;
};

void ExpectBoth(const std::vector<FlagCase>& cases) {
  for (const FlagCase& c : cases) {
    TestModule classic(c.File, c.Body);
    EXPECT_EQ(Describe(*classic), c.Classic) << "classic " << c.Body;
    TestModule flagged(c.File, c.Body, test::Reading(c.Flag));
    EXPECT_EQ(Describe(*flagged), c.Flagged) << c.Flag << " " << c.Body;
  }
}

TEST(ReadingFlagsTest, StaticVariablesOfProcedures) {
  const char* const body =
      "Dim z\nSub S()\n  Static x As Long, y\n  StaticX = 1\nEnd Sub\nStatic q\n";
  ExpectBoth({{"LocalStatics", "M.bas", body,
               "M\n attributes\n declarations\n  var PRIVATE z As Variant implicit @1/2\n"
               " sub PUBLIC S() As Variant @3\n",
               "M\n attributes\n declarations\n  var PRIVATE z As Variant implicit @1/2\n"
               " sub PUBLIC S() As Variant @3\n  var PRIVATE x As Long static @2/4\n"
               "  var PRIVATE y As Variant implicit static @2/4\n"
               "  var PRIVATE q As Variant implicit static @5/7\n"}});
}

TEST(ReadingFlagsTest, EarlyDeclarations) {
  ExpectBoth({{"EarlyDeclarations", "C.cls", "Implements I\nDefInt A-Z\nDim a\n",
               "C\n attributes\n declarations\n  var PRIVATE a As Variant implicit @1/8\n",
               "C\n implements I @1/6\n attributes\n declarations\n  var PRIVATE a As Integer "
               "implicit @3/8\n"},
              {"EarlyDeclarations", "C.cls", "Event E()\nSub S()\nEnd Sub\n",
               "C\n event E() @2/6\n attributes\n sub PUBLIC S() As Variant @7\n",
               "C\n event E() @1/6\n attributes\n declarations\n sub PUBLIC S() As Variant @7\n"},
              {"EarlyDeclarations", "M.bas", "Declare Sub D Lib _\n  \"k\" ()\nDim a\n",
               "M\n declare sub D lib k.dll() @2/2\n attributes\n declarations\n"
               "  var PRIVATE a As Variant implicit @1/4\n",
               "M\n declare sub D lib k.dll() @1/2\n attributes\n declarations\n"
               "  var PRIVATE a As Variant implicit @3/4\n"},
              {"EarlyDeclarations", "M.bas", "#Const A = 1\nSub S()\nEnd Sub\n",
               "M\n attributes\n sub PUBLIC S() As Variant @3\n",
               "M\n attributes\n declarations\n sub PUBLIC S() As Variant @3\n"}});
}

TEST(ReadingFlagsTest, StaticProceduresNeedTheKeyword) {
  const char* const body =
      "Sub A()\nEnd Sub\nStatic Sub B()\nEnd Sub\nPrivate Static Function C()\nEnd Function\n"
      "Sub StaticX()\nEnd Sub\nSub D(Static1)\nEnd Sub\nFriend static Property Get E()\nEnd "
      "Property\n";
  const auto statics = [&](const test::Prepare& reading) {
    TestModule module("M.bas", body, reading);
    std::string names;
    for (const Block& block : module->Blocks) names += block.IsStatic ? block.Name() + " " : "";
    return names;
  };
  // An absent keyword counts as standing in front of the name.
  EXPECT_EQ(statics({}), "A B C E ");
  EXPECT_EQ(statics(test::Reading("KeywordStatic")), "B C E ");
}

TEST(ReadingFlagsTest, ReturnTypesStandBehindTheParameterList) {
  ExpectBoth({{"ReturnTypes", "M.bas",
               "Sub S(a() As Long)\nEnd Sub\nSub T()\nEnd Sub\nProperty Get F%()\nEnd Property\n"
               "Function G(a As Long)\nEnd Function\n",
               "M\n property PUBLIC F get\n attributes\n sub PUBLIC S(a() As Long) As Long @2\n"
               " sub PUBLIC T() As Variant @4\n get PUBLIC F() As Variant @6\n"
               " function PUBLIC G(a As Long) As Variant @8\n",
               "M\n property PUBLIC F get\n attributes\n sub PUBLIC S(a() As Long) @2\n"
               " sub PUBLIC T() @4\n get PUBLIC F() As Integer @6\n"
               " function PUBLIC G(a As Long) As Variant @8\n"}});
}

TEST(ReadingFlagsTest, DefaultsAndListsAreReadWhole) {
  ExpectBoth(
      {{"WholeDefaults", "M.bas", "Dim s As String * 10, t As Long\n",
        "M\n attributes\n declarations\n  var PRIVATE s As String fixed @1/2\n",
        "M\n attributes\n declarations\n  var PRIVATE s As String fixed @1/2\n  var PRIVATE t As "
        "Long @1/2\n"},
       {"WholeDefaults", "M.bas", "Dim a,b,c(1,2) As Long\n",
        "M\n attributes\n declarations\n  var PRIVATE a,b,c(1,2) As Long @1/2\n",
        "M\n attributes\n declarations\n  var PRIVATE a As Variant implicit @1/2\n"
        "  var PRIVATE b As Variant implicit @1/2\n  var PRIVATE c(1,2) As Long @1/2\n"},
       {"WholeDefaults", "M.bas",
        "Sub S(Optional x = 1 + 2, Optional y As String = \"a, b\", Optional z = -1)\nEnd Sub\n",
        "M\n attributes\n sub PUBLIC S(Optional x As Variant implicit = 2, Optional y As String = "
        "\"a, b\", Optional z As Variant implicit = -1) As Variant @2\n",
        "M\n attributes\n sub PUBLIC S(Optional x As Variant implicit = 1 + 2, Optional y As "
        "String = \"a, b\", Optional z As Variant implicit = -1) As Variant @2\n"},
       {"WholeDefaults", "C.cls", "Dim z\nEvent Done\n",
        "C\n event Don() @2/7\n attributes\n declarations\n  var PRIVATE z As Variant implicit "
        "@1/6\n",
        "C\n event Done() @2/7\n attributes\n declarations\n  var PRIVATE z As Variant implicit "
        "@1/6\n"}});
}

TEST(ReadingFlagsTest, InitialiseProceduresAreReadAsAnyOther) {
  TestModule classic("F.frm", "Private Sub Form_Unload(Cancel As Integer)\nEnd Sub\n");
  EXPECT_EQ(Describe(*classic), "F\n attributes\n unload PRIVATE Form_Unload on F @5\n");
  EXPECT_EQ(classic->Blocks.Item("Form_Unload")->DefinitionLine, "");
  const char* const body =
      "Private Sub Form_Unload(Cancel As Integer)\nEnd Sub\nPublic Sub FORM_LOAD()\nEnd Sub\n";
  TestModule flagged("F.frm", body, test::Reading("InitialiseProcedures"));
  EXPECT_EQ(Describe(*flagged),
            "F\n attributes\n unload PRIVATE Form_Unload(Cancel As Integer) on F @5\n"
            " load PUBLIC FORM_LOAD() on F @7\n");
  EXPECT_EQ(flagged->Blocks.Item("Form_Unload")->DefinitionLine,
            "Private Sub Form_Unload(Cancel As Integer)");
}

TEST(ReadingFlagsTest, EverySeparatorPartsDeclarations) {
  TestModule module("M.bas",
                    "Public a As Long: Public b\nPrivate Type P: x As Long: y As Byte: End Type\n"
                    "Enum E\n  ea: eb\nEnd Enum\n"
                    "Declare Sub S Lib \"k\" (): Declare Sub T Lib \"k\" ()\n"
                    "Sub A()\nDim d As Double: d = Round(1.5, 6) ' the sum\nConst c = 5: p = c\n"
                    "l: Dim z As Long\nIf x Then Dim k: Dim n\nEnd Sub: Sub B(): Dim q: End Sub\n",
                    test::Complete());
  EXPECT_EQ(Describe(*module),
            "M\n enum PUBLIC E {ea=0, eb=1} @3/4\n"
            " type PRIVATE P {PRIVATE x As Long, PRIVATE y As Byte} @2/3\n"
            " declare PUBLIC sub S lib k.dll() @6/7\n declare PUBLIC sub T lib k.dll() @6/7\n"
            " attributes\n declarations\n  var PUBLIC a As Long @1/2\n"
            "  var PUBLIC b As Variant implicit @1/2\n sub PUBLIC A() @8\n  const PRIVATE c=5\n"
            "  var PRIVATE d As Double 'the sum' @2/9\n  var PRIVATE z As Long @4/11\n"
            "  var PRIVATE k As Variant implicit @5/12\n  var PRIVATE n As Variant implicit @5/12\n"
            " sub PUBLIC B() @13\n  var PRIVATE q As Variant implicit @0/13\n");
  EXPECT_EQ(test::Told(module.Project->Diagnostics), "");
}

TEST(ReadingFlagsTest, MembersHaveTheNamesOfKeywords) {
  TestModule module("M.bas",
                    "Dim a\nType P\n  sUB As Long\n  Event As Long\n  ' note\n  Rem note\n\n"
                    "  Property As Byte\nEnd Type\nEnum E\n  Property\nEnd Enum\nDim b\n"
                    "Type Q\n  x As Long\nPrivate Sub S()\nEnd Sub\n",
                    test::Complete());
  EXPECT_EQ(Describe(*module),
            "M\n enum PUBLIC E {Property=0} @10/11\n"
            " type PUBLIC P {PRIVATE sUB As Long, PRIVATE Event As Long, PRIVATE Property As Byte}"
            " @2/3\n type PUBLIC Q {PRIVATE x As Long} @14/15\n attributes\n declarations\n"
            "  var PRIVATE a As Variant implicit @1/2\n  var PRIVATE b As Variant implicit @13/14\n"
            " sub PRIVATE S() @17\n");
  EXPECT_EQ(test::Told(module.Project->Diagnostics), "17 unended-declaration\n");
}

TEST(ReadingFlagsTest, NamesInBracketsAreReadWhole) {
  TestModule module("M.bas",
                    "Dim [my var] As [Some Type], [x]%\nType [my type]\n  [a b](1) As Long\n"
                    "End Type\nDeclare Function F Lib \"u\"(ByVal a As Long)As Long\n"
                    "Function [my fn](ByVal [p q] As Long)As [t u]\nEnd Function\n",
                    test::Complete());
  EXPECT_EQ(Describe(*module),
            "M\n type PUBLIC my type {PRIVATE a b(1) As Long} @2/3\n"
            " declare PUBLIC function F lib u.dll(ByVal a As Long) As Long @5/6\n"
            " attributes\n declarations\n  var PRIVATE my var As Some Type @1/2\n"
            "  var PRIVATE x As Integer @1/2\n"
            " function PUBLIC my fn(ByVal p q As Long) As t u @7\n");
}

TEST(ReadingFlagsTest, ASuffixIsNoPartOfTheNameOfAnEnumMember) {
  ExpectBoth({{"BracketedNames", "M.bas", "Enum E\n  a& = 1\n  [d&] = 3\nEnd Enum\n",
               "M\n enum PUBLIC E {a&=1, d&=3} @1/2\n attributes\n declarations\n",
               "M\n enum PUBLIC E {a=1, d&=3} @1/2\n attributes\n declarations\n"}});
}

// A bracket that nothing closes is a character like any other, wherever the statement is cut at it.
TEST(ReadingFlagsTest, AnOpenBracketEnds) {
  ExpectBoth({{"BracketedNames WholeDefaults", "M.bas",
               "Type T\n  [a As Long\n  [\nEnd Type\nDim [x, y[\n",
               "M\n type PUBLIC T {PRIVATE [a As Long, PRIVATE [ As  implicit} @1/2\n attributes\n"
               " declarations\n  var PRIVATE [x As Variant implicit @5/6\n"
               "  var PRIVATE y[ As Variant implicit @5/6\n",
               "M\n type PUBLIC T {PRIVATE a As Long, PRIVATE  As  implicit} @1/2\n attributes\n"
               " declarations\n  var PRIVATE x As Variant implicit @5/6\n"
               "  var PRIVATE y[ As Variant implicit @5/6\n"}});
}

TEST(ReadingFlagsTest, EventsAndDeclaresHaveTheAccessOfTheLanguage) {
  const char* const body =
      "Dim z\nEvent E()\nDeclare Sub S Lib \"k\" ()\nPrivate Declare Sub T Lib \"k\" ()\n";
  ExpectBoth({{"DefaultAccess", "C.cls", body,
               "C\n event E() @2/7\n declare sub S lib k.dll() @3/8\n declare PRIVATE sub T lib "
               "k.dll() @4/9\n"
               " attributes\n declarations\n  var PRIVATE z As Variant implicit @1/6\n",
               "C\n event PUBLIC E() @2/7\n declare PRIVATE sub S lib k.dll() @3/8\n"
               " declare PRIVATE sub T lib k.dll() @4/9\n"
               " attributes\n declarations\n  var PRIVATE z As Variant implicit @1/6\n"},
              {"DefaultAccess", "M.bas", "Dim z\nDeclare Sub S Lib \"k\" ()\n",
               "M\n declare sub S lib k.dll() @2/3\n attributes\n declarations\n  var PRIVATE z As "
               "Variant implicit @1/2\n",
               "M\n declare PUBLIC sub S lib k.dll() @2/3\n attributes\n declarations\n  var "
               "PRIVATE z As Variant implicit @1/2\n"}});
}

TEST(ReadingFlagsTest, EveryDeclareHasItsLibrary) {
  const auto linked = [](const test::Prepare& reading) {
    test::TestProject project(
        {{"A.bas", "Declare Sub S Lib \"k\" ()\nDeclare Sub T Lib \"K.DLL\" ()\n"},
         {"B.bas", "Declare Sub s Lib \"k\" ()\n"}},
        reading);
    std::string text;
    for (const Component& component : project.Project->Components)
      for (const DeclareDeclaration& item : component.Declarations)
        text += item.Name + (item.LibraryObject ? "=" + item.LibraryObject->Name : "") + " ";
    EXPECT_EQ(project.Project->Libraries->Count(), 1u);
    EXPECT_EQ(project.Project->Libraries->Item(1)->DeclareDeclarations.Count(), 2u);
    return text;
  };
  EXPECT_EQ(linked({}), "S=k.dll T=k.dll s ");
  EXPECT_EQ(linked(test::Reading("SharedLibraries")), "S=k.dll T=k.dll s=k.dll ");
}

TEST(ReadingFlagsTest, TheCompleteReadingTakesAllTogether) {
  TestModule module(
      "C.cls",
      "' about the class\nOption Explicit\nImplements IFoo\nEvent Done\n' used below\n"
      "Private mA, mB As String * 10, mC\n\n' starts\nPrivate Sub Class_Initialize(): mA = 1: End "
      "Sub\n"
      "' finds\nPublic Function Find(x() As Long, Optional y = 1 + 1) As Long()\n"
      "  Static n As Long : n = n + 1\nEnd Function\n",
      test::Complete());
  EXPECT_EQ(Describe(*module),
            "C explicit 'about the class'\n implements IFoo @3/8\n event PUBLIC Done() @4/9\n "
            "attributes\n"
            " declarations\n"
            "  var PRIVATE mA As Variant implicit 'used below' @6/11\n  var PRIVATE mB As String "
            "fixed @6/11\n"
            "  var PRIVATE mC As Variant implicit @6/11\n"
            " initialize PRIVATE Class_Initialize() on C @14 'starts'\n"
            " function PUBLIC Find(x() As Long, Optional y As Variant implicit = 1 + 1) As Long() "
            "@16 'finds'\n"
            "  var PRIVATE n As Long static @2/17\n");
}

}  // namespace
}  // namespace vendrel
