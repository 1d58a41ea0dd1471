#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "core/ProcessState.h"
#include "diagnostics/VendrelError.h"
#include "support/Projects.h"
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

TEST(ClassifierTest, KeywordsAndPrefixesGiveTheTypeInVisualBasic) {
  struct TypeRow {
    const char* Text;
    LineTypeEnum Type;
  };
  for (const TypeRow& row : std::vector<TypeRow>{
           {"Sub S()", START_SUB},
           {"sub s", START_SUB},
           {"Static Sub S()", START_SUB},
           {"Friend Sub S()", START_SUB},
           {"Public Static Function F()", START_FUNCTION},
           {"Static Public Function F()", OTHER},
           {"Function F()", START_FUNCTION},
           {"Functional = 1", OTHER},
           {"Private Sub Class_Initialize()", START_CLASS_INITIALISE},
           {"Private Sub Class_Initialize ()", START_SUB},
           {"Sub AddinInstance_Initialize()", START_CLASS_INITIALISE},
           {"Sub DataEnvironment_Initialize()", START_CLASS_INITIALISE},
           {"Sub DataReport_Initialize()", START_CLASS_INITIALISE},
           {"Sub DHTMLPage_Initialize()", START_CLASS_INITIALISE},
           {"PRIVATE SUB CLASS_TERMINATE()", START_CLASS_TERMINATE},
           {"Sub AddinInstance_Terminate()", START_CLASS_TERMINATE},
           {"Sub DataEnvironment_Terminate()", START_CLASS_TERMINATE},
           {"Sub DataReport_Terminate()", START_CLASS_TERMINATE},
           {"Sub DHTMLPage_Terminate()", START_CLASS_TERMINATE},
           {"Private Sub Form_Load()", FORM_LOAD},
           {"Private Sub Form_Load(x)", START_SUB},
           {"Private Sub Form_Unload(Cancel As Integer)", FORM_UNLOAD},
           {"Private Sub Form_Unload (Cancel As Integer)", START_SUB},
           {"Private Sub UserControl_Initialize()", START_USERCONTROL_INITIALISE},
           {"Private Sub UserControl_Terminate()", START_USERCONTROL_TERMINATE},
           {"Private Sub UserDocument_Initialize()", START_USERDOCUMENT_INITIALISE},
           {"Private Sub UserDocument_Terminate()", START_USERDOCUMENT_TERMINATE},
           {"Property Get P() As Long", START_PROPERTY},
           {"Property Let P(v)", START_PROPERTY},
           {"Private Property Set P(v)", START_PROPERTY},
           {"Property = 1", OTHER},
           {"Public Property As Long", START_PROPERTY},  // behind an access word no look further
           {"Enum E", START_ENUM},
           {"Private Enum E", START_ENUM},
           {"Type T", START_TYPE},
           {"Public Type T", START_TYPE},
           {"Event Changed()", EVENT_DECLARATION},
           {"Public Event Changed()", EVENT_DECLARATION},
           {"Declare Sub S Lib \"k\" ()", DECLARE_STATEMENT},
           {"Private Declare Function F Lib \"k\" ()", DECLARE_STATEMENT},
           {"Public Declare Function F Lib \"k\" ()", DECLARE_STATEMENT},
           {"#If x Then", COMPILER_DIRECTIVE},
           {"End Sub", END_SUB},
           {"End SubX", END_SUB},  // no word boundary
           {"End Function", END_FUNCTION},
           {"End Property", END_PROPERTY},
           {"Const A = 1", CONST_DECLARATION},
           {"Global Const A = 1", CONST_DECLARATION},
           {"Private Const A = 1", CONST_DECLARATION},
           {"Public Const A = 1", CONST_DECLARATION},
           {"Private x As Long", VAR_DECLARATION},
           {"Public X As Long", VAR_DECLARATION},
           {"Global X", VAR_DECLARATION},
           {"dim x", VAR_DECLARATION},
           {"Public WithEvents c As C", VAR_DECLARATION},
           {"Friend X As Long", OTHER},
           {"Protected X As Long", OTHER},
           {"Static X As Long", OTHER},
           {"Select Case x", SELECT_CASE_LINE},
           {"Select  Case x", SELECT_CASE_LINE},
           {"Case 1", CASE_LINE},
           {"Case", OTHER},
           {"CaseX = 1", OTHER},
           {"End Select", END_SELECT_LINE},
           {"Attribute VB_Name = \"M\"", ATTRIBUTE_LINE},
           {"Exit Sub", EXIT_LINE},
           {"Exit Function", EXIT_LINE},
           {"Exit Property", EXIT_LINE},
           {"Exit Do", OTHER},
           {"End Type", END_TYPE},
           {"End Enum", END_ENUM},
           {"End If", OTHER},
           {"End", OTHER},
           {"Class A", OTHER},
           {"Namespace N", OTHER},
           {"End Class", OTHER},
           {"End Set", OTHER},
           {"Implements IFoo", OTHER},
           {"Imports System", OTHER},
           {"Option Explicit", OTHER},
           {"DefInt A-Z", OTHER},
           {"[Sub] = 1", OTHER},
       }) {
    EXPECT_EQ(LineTypeName(InitialiseCodeLine(row.Text, VB).LineType), LineTypeName(row.Type))
        << row.Text;
  }
}

TEST(ClassifierTest, KeywordsAndPrefixesGiveTheTypeInVisualBasicDotNet) {
  ExpectRows(
      {
          {"Public Class A", "START_CLASS [Public Class A]"},
          {"<Serializable()> Public Class A", "START_CLASS [Public Class A]"},
          {"<Description(\"a > b\")> Class A ' x", "START_CLASS [Class A ] 'x"},
          {"<Serializable()>", "Comment"},
          {"<Serializable()> _", "OTHER [_] continued(<Serializable()> )"},
          {"Friend NotInheritable Class A", "START_CLASS [Friend NotInheritable Class A]"},
          {"Public Structure S", "START_STRUCTURE [Public Structure S]"},
          {"Structure S", "START_STRUCTURE [Structure S]"},
          {"Public Interface I", "START_INTERFACE [Public Interface I]"},
          {"Namespace N", "START_NAMESPACE [Namespace N]"},
          {"Imports System.IO", "IMPORTS_STATEMENT [Imports System.IO]"},
          {"Inherits Base", "INHERITS_STATEMENT [Inherits Base]"},
          {"Implements IFoo", "IMPLEMENTS_STATEMENT [Implements IFoo]"},
          {"Protected Overrides Sub S()", "START_SUB [Protected Overrides Sub S()]"},
          {"Public Sub New()", "START_SUB [Public Sub New()]"},
          {"Public MustOverride Function F() As Long",
           "START_FUNCTION [Public MustOverride Function F() As Long]"},
          {"Public Default ReadOnly Property P() As Long",
           "START_PROPERTY [Public Default ReadOnly Property P() As Long]"},
          {"Property P() As Long", "START_PROPERTY [Property P() As Long]"},
          {"Get", "START_PROPERTY_SUBBLOCK [Get]"},
          {"Set(ByVal v As Long)", "START_PROPERTY_SUBBLOCK [Set(ByVal v As Long)]"},
          {"Private Set(v)", "START_PROPERTY_SUBBLOCK [Private Set(v)]"},
          {"Set x = y", "OTHER [Set x = y]"},
          {"End Get", "END_PROPERTY_SUBBLOCK [End Get]"},
          {"End Set", "END_PROPERTY_SUBBLOCK [End Set]"},
          {"End Namespace", "END_NAMESPACE [End Namespace]"},
          {"End Class", "END_CLASS [End Class]"},
          {"Protected x As Long", "VAR_DECLARATION [Protected x As Long]"},
          {"Protected Friend x As Long", "VAR_DECLARATION [Protected Friend x As Long]"},
          {"Friend X As Long", "VAR_DECLARATION [Friend X As Long]"},
          {"Shared x As Long", "OTHER [Shared x As Long]"},
          {"Public Enum E", "START_ENUM [Public Enum E]"},
          {"Type T", "OTHER [Type T]"},
          {"Public Type T", "VAR_DECLARATION [Public Type T]"},
          {"Public Event E()", "EVENT_DECLARATION [Public Event E()]"},
          {"Private Const A As Long = 1", "CONST_DECLARATION [Private Const A As Long = 1]"},
          {"Public Delegate Sub D()", "START_SUB [Public Delegate Sub D()]"},
          {"Dim f As Function", "START_FUNCTION [Dim f As Function]"},  // the walk takes any word
          {"x = Function", "OTHER [x = Function]"},
          {"Getter = 1", "OTHER [Getter = 1]"},
      },
      NET);
  // The form for clients knows the older language alone.
  State().CurrentLanguageVersion = NET;
  EXPECT_EQ(Globals().InitialiseCodeLine("Class A").LineType, OTHER);
}

TEST(ClassifierTest, AWordThatNeedsAnotherFails) {
  for (const char* text : {"Public", "private", "Friend", "Static", "Sub", "Property",
                           "Public Static", "Private Sub", "  Public  "}) {
    try {
      InitialiseCodeLine(text, VB);
      ADD_FAILURE() << text;
    } catch (const VendrelError& error) {
      EXPECT_EQ(error.Number(), errSubscript) << text;
    }
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
  EXPECT_EQ(START_FUNCTION, 9);
  EXPECT_EQ(START_CLASS_TERMINATE, 22);
  EXPECT_EQ(END_CLASS_INITIALISE, 26);
  EXPECT_EQ(EXIT_LINE, 33);
  EXPECT_EQ(FORM_LOAD, 40);
  EXPECT_EQ(START_ENUM, 47);
  EXPECT_EQ(START_INTERFACE, 74);
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
