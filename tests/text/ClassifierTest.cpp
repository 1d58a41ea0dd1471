#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "core/Workspace.h"
#include "diagnostics/VendrelError.h"
#include "support/Projects.h"
#include "support/Raised.h"
#include "text/Classifier.h"

namespace vendrel {
namespace {

using test::Show;

struct Row {
  const char* Text;
  const char* Expected;
};

void ExpectRows(const std::vector<Row>& rows, LanguageVersionEnum language,
                const ReadingRules& reading = ReadingRules::Classic()) {
  for (const Row& row : rows) {
    const CodeLine line = InitialiseCodeLine(row.Text, language, reading);
    EXPECT_EQ(Show(line), row.Expected) << row.Text;
    EXPECT_EQ(line.Text, row.Text);
    EXPECT_EQ(line.LineID, 0);
    EXPECT_FALSE(line.Continuation || line.NotInSource);
  }
}

ReadingRules Only(bool ReadingRules::*flag) {
  ReadingRules rules;
  rules.*flag = true;
  return rules;
}

constexpr auto VB = lvVisualBasic5or6;
constexpr auto NET = lvVisualBasicDotNet;

TEST(ClassifierTest, EveryColonThatMayPartsStatements) {
  ExpectRows(
      {
          {"Dim d As Double: d = 1", "VAR_DECLARATION [Dim d As Double] more( d = 1)"},
          {"a:b", "OTHER [b]"},
          {"lbl: Dim z", "VAR_DECLARATION [Dim z]"},
          {"lbl:", "OTHER [lbl:]"},
          {"10 Dim f", "VAR_DECLARATION [Dim f]"},
          {"20: x = 1: y = 2", "OTHER [x = 1] more( y = 2)"},
          {"30 lbl: End Sub", "END_SUB [End Sub]"},
          {"40", "BLANK_LINE"},
          {"Else: Dim k", "OTHER [Else] more( Dim k)"},
          {"If x Then: Dim k", "OTHER [If x Then] more( Dim k)"},
          {"If x Then Dim k Else y = 1", "OTHER [If x Then] more(Dim k Else y = 1)"},
          {"If x = \" Then Dim k\" Then y = 1", "OTHER [If x = \" Then Dim k\" Then y = 1]"},
          {"Case 1: Dim m", "CASE_LINE [Case 1] more( Dim m)"},
          {"Foo a:=1, b:=2", "OTHER [Foo a:=1, b:=2]"},
          {"Dim a: ' why: so", "VAR_DECLARATION [Dim a] 'why: so"},
          {"Dim a::", "VAR_DECLARATION [Dim a]"},
          {": : x = 1 : : y = 2", "OTHER [x = 1] more( y = 2)"},
          {":", "BLANK_LINE"},
          {"s = \"a: b\": t = 1", "OTHER [s = \"a: b\"] more( t = 1)"},
          {"x = [a: b] + 1", "OTHER [x = [a: b] + 1]"},
          {"x = #10:30:00 PM#: y = #Mar 1, 2000 1:00#",
           "OTHER [x = #10:30:00 PM#] more( y = #Mar 1, 2000 1:00#)"},
          {"Close #1: Close #2", "OTHER [Close #1] more( Close #2)"},
          {"a# = 1: b# = 2", "OTHER [a# = 1] more( b# = 2)"},
          {"10 Rem a: b", "OTHER [Rem a] more( b)"},
          {"Private Type P: x As Long: End Type",
           "START_TYPE [Private Type P] more( x As Long: End Type)"},
      },
      VB, Only(&ReadingRules::EverySeparator));
  ExpectRows(
      {
          {"x = <a:b>c: d</a:b> : y = 1", "OTHER [x = <a:b>c: d</a:b> ] more( y = 1)"},
          {"x = e.<n:a>.@n:b: y = 1", "OTHER [x = e.<n:a>.@n:b: y = 1]"},
          {"s = $\"{d(\"h:m\"):N2}: x\" : y = 1",
           "OTHER [s = $\"{d(\"h:m\"):N2}: x\" ] more( y = 1)"},
          {"If a < b Then x = 1: y = 2", "OTHER [If a < b Then x = 1] more( y = 2)"},
      },
      NET, Only(&ReadingRules::EverySeparator));
}

TEST(ClassifierTest, BlanksOfEveryKindAreBlanks) {
  ExpectRows({{"Dim\xC2\xA0x As\xE3\x80\x80Long", "VAR_DECLARATION [Dim x As Long]"},
              {"\xC2\xA0' note", "Comment 'note"},
              {"\xE3\x80\x80", "BLANK_LINE"},
              {"s = \"\xC2\xA0\"", "OTHER [s = \"\xC2\xA0\"]"}},
             VB, Only(&ReadingRules::BracketedNames));
}

TEST(ClassifierTest, StatementCommentAndSeparatorAreToldApart) {
  ExpectRows(
      {
          {"", "BLANK_LINE"},
          {" \t  \t", "BLANK_LINE"},
          {"'", "Comment"},
          {"  ' note ", "Comment 'note"},
          {"'' twice", "Comment '' twice"},
          {"x = 1", "OTHER [x = 1]"},
          {"\tx = 1\t' why", "OTHER [x = 1 ] 'why"},
          {"x   =  \"a   b\"", "OTHER [x = \"a b\"]"},  // literals are collapsed too
          {"x = \"it's\" ' it's", "OTHER [x = \"it's\" ] 'it's"},
          {"x = \"a \"\"b\"\" 'c\" 'd", "OTHER [x = \"a \"\"b\"\" 'c\" ] 'd"},
          {"x = \"open ' not", "OTHER [x = \"open ' not]"},
          {"x = 1 '", "OTHER [x = 1 ]"},
          // A colon needs a blank in front, something behind, and no "=" there.
          {"Foo: Bar", "OTHER [Foo: Bar]"},
          {"Foo : Bar", "OTHER [Foo ] more( Bar)"},
          {"a : b : c", "OTHER [a ] more( b : c)"},
          {"Foo :", "OTHER [Foo :]"},
          {": Foo", "OTHER [: Foo]"},
          {"Call Foo(a:=1)", "OTHER [Call Foo(a:=1)]"},
          {"Call Foo(a :=1)", "OTHER [Call Foo(a :=1)]"},
          {"Call Foo(a : =1)", "OTHER [Call Foo(a ] more( =1))"},
          {"x = \"a : b\"", "OTHER [x = \"a : b\"]"},
          {"a : b ' c", "OTHER [a ] more( b ' c)"},
          {"' a : b", "Comment 'a : b"},
          {"Dim x :y = 1", "VAR_DECLARATION [Dim x ] more(y = 1)"},
          {"\ta : b", "OTHER [a ] more( b)"},
          {"Rem note", "OTHER [Rem note]"},
          {"Select  Case x", "SELECT_CASE_LINE [Select Case x]"},
      },
      VB);
}

TEST(ClassifierTest, EachPlaceOfALineIsLookedAt) {
  for (std::size_t n = 2; n < 40; ++n) {
    const std::string plain(n, 'a');
    const auto show = [&](const std::string& text) { return Show(InitialiseCodeLine(text, VB)); };
    EXPECT_EQ(show(plain + "'b"), "OTHER [" + plain + "] 'b");
    EXPECT_EQ(show(plain + " : b"), "OTHER [" + plain + " ] more( b)");
    EXPECT_EQ(show(plain + "\"'\" 'b"), "OTHER [" + plain + "\"'\" ] 'b");
    EXPECT_EQ(show(plain + "  bcdefghijk"), "OTHER [" + plain + " bcdefghijk]");
    // What differs from the sought characters by one bit, and stands behind them.
    EXPECT_EQ(show(plain + " !#&;9! b"), "OTHER [" + plain + " !#&;9! b]");
  }
}

TEST(ClassifierTest, AContinuedLineStaysOther) {
  ExpectRows(
      {
          {"Private Sub S( _", "OTHER [Private Sub S( _] continued(Private Sub S( )"},
          {"x = 1 + _  ", "OTHER [x = 1 + _] continued(x = 1 + )"},
          {"x = 1 _ 'no", "OTHER [x = 1 _ ] 'no"},
          {"' note _", "OTHER 'note _ continued(' note )"},
          {"x = 1 ' note _", "OTHER [x = 1 ] 'note _ continued(x = 1 ' note )"},
          {"x = 1 _'", "OTHER [x = 1 _] continued(x = 1 _)"},
          {"x = 1 _'\u00E9", "OTHER [x = 1 _] '\u00E9 continued(x = 1 _')"},
          {"x = 1_", "OTHER [x = 1_]"},
          {"_", "OTHER [_]"},
          {"x = y\t_", "OTHER [x = y    _] continued(x = y    )"},
          // Behind a separator nothing continues: the remainder does.
          {"a : b _", "OTHER [a ] more( b _)"},
      },
      VB);
  // A continued line is left as it stands: blanks are collapsed on the last line only.
  EXPECT_EQ(Show(InitialiseCodeLine("x  = _", VB)), "OTHER [x  = _] continued(x  = )");
}

TEST(ClassifierTest, LeadingLineNumbersRaiseTheNextFreeOne) {
  struct NumberRow {
    const char* Text;
    const char* Expected;
    std::int32_t Before, After;
  };
  for (const NumberRow& row : std::vector<NumberRow>{
           {"100", "BLANK_LINE", 0, 110},
           {"  100  ", "BLANK_LINE", 0, 110},
           {"100", "BLANK_LINE", 100, 110},
           {"100", "BLANK_LINE", 101, 101},
           {"100 ' note", "OTHER [100 ] 'note", 0, 110},
           {"100' note", "OTHER [100] 'note", 0, 0},
           {"100 Sub S()", "OTHER [100 Sub S()]", 0, 110},
           {"100 End Sub", "OTHER [100 End Sub]", 0, 110},
           {"100: x = 1", "OTHER [100: x = 1]", 0, 0},
           {"100 : x = 1", "OTHER [100 ] more( x = 1)", 0, 110},
           {"100x = 1", "OTHER [100x = 1]", 0, 0},
           {"x 100 = 1", "OTHER [x 100 = 1]", 0, 0},
           {"2147483647 x", "OTHER [2147483647 x]", 5, 5},
           {"99999999999999999999 x", "OTHER [99999999999999999999 x]", 5, 5},
       }) {
    State().CurrentLineNumber = row.Before;
    EXPECT_EQ(Show(InitialiseCodeLine(row.Text, VB)), row.Expected) << row.Text;
    EXPECT_EQ(State().CurrentLineNumber, row.After) << row.Text;
  }
}

struct TypeRow {
  LineTypeEnum Type;
  std::vector<std::string> Texts;
};

void ExpectTypes(const std::vector<TypeRow>& rows, LanguageVersionEnum language) {
  for (const TypeRow& row : rows)
    for (const std::string& text : row.Texts)
      EXPECT_EQ(Show(InitialiseCodeLine(text, language)),
                std::string(LineTypeName(row.Type)) + " [" + text + "]");
}

TEST(ClassifierTest, KeywordsAndPrefixesGiveTheTypeInVisualBasic) {
  ExpectTypes(
      {
          {START_SUB,
           {"Sub S()", "sub s", "Static Sub S()", "Friend Sub S()", "Sub Class_Initialize ()",
            "Sub Form_Load(x)", "Sub Form_Unload (Cancel As Integer)"}},
          {START_CLASS_INITIALISE,
           {"Private Sub Class_Initialize()", "Sub AddinInstance_Initialize()",
            "Sub DataEnvironment_Initialize()", "Sub DataReport_Initialize()",
            "Sub DHTMLPage_Initialize()"}},
          {START_CLASS_TERMINATE,
           {"PRIVATE SUB CLASS_TERMINATE()", "Sub AddinInstance_Terminate()",
            "Sub DataEnvironment_Terminate()", "Sub DataReport_Terminate()",
            "Sub DHTMLPage_Terminate()"}},
          {FORM_LOAD, {"Private Sub Form_Load()"}},
          {FORM_UNLOAD, {"Private Sub Form_Unload(Cancel As Integer)"}},
          {START_USERCONTROL_INITIALISE, {"Private Sub UserControl_Initialize()"}},
          {START_USERCONTROL_TERMINATE, {"Private Sub UserControl_Terminate()"}},
          {START_USERDOCUMENT_INITIALISE, {"Private Sub UserDocument_Initialize()"}},
          {START_USERDOCUMENT_TERMINATE, {"Private Sub UserDocument_Terminate()"}},
          {START_FUNCTION, {"Function F()", "Public Static Function F()"}},
          {START_PROPERTY,
           {"Property Get P() As Long", "Property Let P(v)", "Private Property Set P(v)",
            "Public Property As Long"}},  // behind an access word no look further
          {START_ENUM, {"Enum E", "Private Enum E"}},
          {START_TYPE, {"Type T", "Public Type T"}},
          {EVENT_DECLARATION, {"Event Changed()", "Public Event Changed()"}},
          {DECLARE_STATEMENT,
           {"Declare Sub S Lib \"k\" ()", "Private Declare Function F Lib \"k\" ()",
            "Public Declare Function F Lib \"k\" ()"}},
          {COMPILER_DIRECTIVE, {"#If x Then"}},
          {END_SUB, {"End Sub", "End SubX"}},  // no word boundary
          {END_FUNCTION, {"End Function"}},
          {END_PROPERTY, {"End Property"}},
          {CONST_DECLARATION,
           {"Const A = 1", "Global Const A = 1", "Private Const A = 1", "Public Const A = 1"}},
          {VAR_DECLARATION,
           {"Private x As Long", "Public X As Long", "Global X", "dim x",
            "Public WithEvents c As C"}},
          {SELECT_CASE_LINE, {"Select Case x", "select case x"}},
          {CASE_LINE, {"Case 1"}},
          {END_SELECT_LINE, {"End Select"}},
          {ATTRIBUTE_LINE, {"Attribute VB_Name = \"M\""}},
          {EXIT_LINE, {"Exit Sub", "Exit Function", "Exit Property"}},
          {END_TYPE, {"End Type"}},
          {END_ENUM, {"End Enum"}},
          {OTHER, {"Functional = 1", "Property = 1", "[Sub] = 1", "Case", "CaseX = 1"}},
          {OTHER, {"Exit Do", "End If", "End", "Option Explicit", "DefInt A-Z"}},
          {OTHER, {"Static Public Function F()", "Friend X As Long", "Protected X As Long"}},
          {OTHER, {"Static X As Long", "Class A", "Namespace N", "End Class", "End Set"}},
          {OTHER, {"Implements IFoo", "Imports System"}},
      },
      VB);
}

TEST(ClassifierTest, KeywordsAndPrefixesGiveTheTypeInVisualBasicDotNet) {
  ExpectTypes(
      {
          {START_CLASS, {"Public Class A", "Friend NotInheritable Class A"}},
          {START_STRUCTURE, {"Public Structure S", "Structure S"}},
          {START_INTERFACE, {"Public Interface I"}},
          {START_NAMESPACE, {"Namespace N"}},
          {IMPORTS_STATEMENT, {"Imports System.IO"}},
          {INHERITS_STATEMENT, {"Inherits Base"}},
          {IMPLEMENTS_STATEMENT, {"Implements IFoo"}},
          {START_SUB,
           {"Protected Overrides Sub S()", "Public Sub New()", "Public Delegate Sub D()"}},
          {START_FUNCTION,
           {"Public MustOverride Function F() As Long",
            "Dim f As Function"}},  // the walk takes any word
          {START_PROPERTY,
           {"Public Default ReadOnly Property P() As Long", "Property P() As Long"}},
          {START_PROPERTY_SUBBLOCK, {"Get", "Set(ByVal v As Long)", "Private Set(v)"}},
          {END_PROPERTY_SUBBLOCK, {"End Get", "End Set"}},
          {END_NAMESPACE, {"End Namespace"}},
          {END_CLASS, {"End Class"}},
          {VAR_DECLARATION,
           {"Protected x As Long", "Protected Friend x As Long", "Friend X As Long",
            "Public Type T"}},
          {START_ENUM, {"Public Enum E"}},
          {EVENT_DECLARATION, {"Public Event E()"}},
          {CONST_DECLARATION, {"Private Const A As Long = 1"}},
          {OTHER, {"Set x = y", "Shared x As Long", "Type T", "x = Function", "Getter = 1"}},
      },
      NET);
  // The form for clients knows the older language alone.
  State().CurrentLanguageVersion = NET;
  EXPECT_EQ(Globals().InitialiseCodeLine("Class A").LineType, OTHER);
}

TEST(ClassifierTest, AttributesInFrontAreNoPartOfTheStatementInVisualBasicDotNet) {
  ExpectRows(
      {
          {"<Serializable()> Public Class A", "START_CLASS [Public Class A]"},
          {"<Description(\"a > b\")> Class A ' x", "START_CLASS [Class A ] 'x"},
          {"<Serializable()>", "Comment"},
          {"<Serializable()> _", "OTHER [_] continued(<Serializable()> )"},
      },
      NET);
}

TEST(ClassifierTest, AWordThatNeedsAnotherFails) {
  for (const char* text : {"Public", "private", "Friend", "Static", "Sub", "Property",
                           "Public Static", "Private Sub", "  Public  "}) {
    EXPECT_EQ(test::Raised([&] { InitialiseCodeLine(text, VB); }), errSubscript) << text;
    LineClassifier classifier(VB, ReadingRules::Classic());
    ParsedLine line;
    EXPECT_EQ(classifier.First(text, line), LineClassifier::Result::MissingWord);
    EXPECT_EQ(line.LineType, OTHER);
    EXPECT_EQ(line.Text, text);
  }
  EXPECT_THROW(InitialiseCodeLine("Public Sub", NET), VendrelError);
  for (const char* text : {"Function", "Enum", "Declare", "Public 'x", "Dim"})
    EXPECT_NO_THROW(InitialiseCodeLine(text, VB)) << text;
  EXPECT_EQ(InitialiseCodeLine("Public", NET).LineType, OTHER);
}

TEST(ClassifierTest, RemIsACommentInTheCompleteReading) {
  ExpectRows({{"Rem note", "Comment 'note"},
              {"REM", "Comment"},
              {"Rem note _", "OTHER 'note _ continued(Rem note )"},
              {"Rem it's : all", "Comment 'it's : all"},
              {"Remark = 1", "OTHER [Remark = 1]"},
              {"Remarks", "OTHER [Remarks]"}},
             VB, Only(&ReadingRules::RemComments));
}

TEST(ClassifierTest, WholeCharactersAreComparedInTheCompleteReading) {
  // U+0422 ends in 0x22 (quote), U+0427 in 0x27 (apostrophe), U+0430 in 0x30 (digit 0).
  ExpectRows({{"x = \"\u0422\" ' c", "OTHER [x = \"\u0422\" ' c]"},
              {"\u0427 = 1", "Comment '= 1"},
              {"\u0430", "BLANK_LINE"},
              {"x = \"\"\"\" ' c", "OTHER [x = \"\"\"\" ] 'c"},
              {"x = \"\"\"\"' c", "OTHER [x = \"\"\"\"' c]"}},
             VB);
  ExpectRows({{"x = \"\u0422\" ' c", "OTHER [x = \"\u0422\" ] 'c"},
              {"\u0427 = 1", "OTHER [\u0427 = 1]"},
              {"\u0430", "OTHER [\u0430]"},
              {"x = \"\"\"\"' c", "OTHER [x = \"\"\"\"] 'c"},
              {"x = \"a\"\"\"\"b' \" ' c", "OTHER [x = \"a\"\"\"\"b' \" ] 'c"}},
             VB, Only(&ReadingRules::WholeCharacters));
}

TEST(ClassifierTest, AOneLineProcedureIsTakenApartInTheCompleteReading) {
  const char* const text = "Sub A(): x = 1: End Sub";
  ExpectRows({{text, "START_SUB [Sub A(): x = 1: End Sub]"}}, VB);
  ExpectRows({{text, "START_SUB [Sub A()] more( x = 1: End Sub)"},
              {"Sub A(Optional x = \"a:b\"): End Sub",
               "START_SUB [Sub A(Optional x = \"a:b\")] more( End Sub)"},
              {"Private Sub Form_Load(): Beep: End Sub",
               "FORM_LOAD [Private Sub Form_Load()] more( Beep: End Sub)"},
              {"Sub A() : End Sub", "START_SUB [Sub A() ] more( End Sub)"},
              {"Foo: Bar", "OTHER [Foo: Bar]"}},
             VB, Only(&ReadingRules::OneLineProcedures));
}

TEST(ClassifierTest, LineTypesHaveTheirStableNumbersAndGroups) {
  std::string starts, ends, named;
  int declarations = 0;
  for (int i = 0; i < 100; ++i) {
    const auto type = static_cast<LineTypeEnum>(i);
    if (IsStartLineType(type)) starts += std::to_string(i) + " ";
    if (IsEndLineType(type)) ends += std::to_string(i) + " ";
    if (IsDeclarationsLineType(type, "")) ++declarations;
    if (!LineTypeName(type).empty()) named += std::to_string(i) + " ";
  }
  EXPECT_EQ(starts, "9 11 19 21 22 40 41 54 55 56 57 ");
  EXPECT_EQ(ends, "10 12 20 26 27 ");
  EXPECT_EQ(declarations, 7);
  EXPECT_EQ(named,
            "9 10 11 12 13 14 15 16 17 18 19 20 21 22 26 27 28 29 30 31 32 33 40 41 47 48 49 50 51 "
            "52 53 54 55 56 57 58 59 60 61 62 63 64 65 66 67 68 69 70 71 72 73 74 ");
  EXPECT_TRUE(IsDeclarationsLineType(OTHER, " OPTION Base 1"));
  EXPECT_FALSE(IsDeclarationsLineType(OTHER, "Optional"));
  EXPECT_FALSE(IsDeclarationsLineType(DECLARE_STATEMENT, "option x"));
}

// The classifier resumes a continued statement where it stopped; the obvious way is to join the
// text and begin anew. Both give the same record, whatever the pieces.
TEST(ClassifierTest, ResumingAContinuedLineEqualsClassifyingTheJoinedText) {
  const std::vector<std::string> pieces = {
      "Sub S(",      "a",       " ",      "  ",     "\t",      "\"",   "\"\"",
      "'",           " : ",     ":",      ":=",     " _",      "_",    "10",
      "Dim ",        "Public ", "\u0422", "\u0427", "\u0430",  "Rem ", "\"a'b\"",
      "(x As Long)", "<A> ",    "=",      "#If ",   "End Sub", "1 ",   "\U0001F600"};
  std::mt19937 random(20);
  const auto text = [&] {
    std::string result;
    for (unsigned n = random() % 6; n > 0; --n) result += pieces[random() % pieces.size()];
    return result;
  };
  ReadingRules all = ReadingRules::Complete();
  int continued = 0;
  for (int round = 0; round < 40000; ++round) {
    const ReadingRules& rules = round % 2 ? all : ReadingRules::Classic();
    const auto language = round % 3 ? VB : NET;
    LineClassifier classifier(language, rules);
    classifier.RaiseLineNumber = false;
    ParsedLine line;
    std::string whole = text() + " _";
    const std::string first = whole;
    classifier.First(first, line);
    for (int n = 0; n < 3 && line.Continued; ++n, ++continued) {
      const std::string physical = text() + (random() % 2 ? " _" : "");
      whole = JoinContinuation(line.Remainder, physical);
      const auto result = classifier.Next(physical, line);
      CodeLine expected;
      try {
        expected = InitialiseCodeLine(whole, language, rules);
      } catch (const VendrelError&) {
        ASSERT_EQ(result, LineClassifier::Result::MissingWord) << whole;
        break;
      }
      CodeLine resumed = line.Record();
      resumed.Text = expected.Text;
      ASSERT_EQ(Show(resumed), Show(expected)) << first << " | " << whole << " | " << physical;
      ASSERT_EQ(resumed, expected) << whole;
    }
  }
  EXPECT_GT(continued, 20000);
}

}  // namespace
}  // namespace vendrel
