// Constants of conditional compilation: how values are stored, the exact script of a condition, and
// the truth of conditions in both readings.

#include <gtest/gtest.h>

#include "core/Workspace.h"
#include "diagnostics/VendrelError.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

std::string List(const CompilerConstants& constants) {
  std::string text;
  for (const CompilerConstant& constant : constants)
    text += constant.Name + "=" + constant.Value + "|";
  return text;
}

TEST(CompilerConstantsTest, ValuesTakeTheFormOfScriptText) {
  const std::pair<const char*, const char*> cases[] = {{"#Const X = 1", "X=1|"},
                                                       {"  #CONST X=-1  ", "X=-1|"},
                                                       {"X = 2", "X=2|"},
                                                       {"#Const X = &H10", "X=16|"},
                                                       {"#Const X = &hFFFF", "X=-1|"},
                                                       {"#Const X = 5&", "X=5|"},
                                                       {"#Const X = 5!", "X=5|"},
                                                       {"#Const X = #1/1/2000#", "X=#1/1/2000#|"},
                                                       {"#Const X = abc", "X=\"abc\"|"},
                                                       {"#Const X = \"abc\"", "X=\"abc\"|"},
                                                       {"#Const X = True", "X=\"True\"|"},
                                                       {"#Const Y", "Y=\"\"|"},
                                                       {"#Const X = 1 = 2", "X=1|"},
                                                       {"#Const = 1", ""},
                                                       {"", ""}};
  for (const auto& [source, stored] : cases) {
    CompilerConstants constants;
    constants.AddFromDeclaration(source);
    EXPECT_EQ(List(constants), stored) << source;
  }
}

TEST(CompilerConstantsTest, TheProjectLineIsCutAtColonsAndTheFirstValueStays) {
  CompilerConstants constants;
  constants.AddFromProjectLine("A = 1 : B = 0 : : a = 5 :");
  constants.AddFromDeclaration("#Const B = 7");
  EXPECT_EQ(List(constants), "A=1|B=0|");
  EXPECT_EQ(constants.Item(std::string_view("b"))->Value, "0");
  EXPECT_FALSE(constants.DoesThisBlockApply());
}

constexpr char kEnd[] = ")\r\nEnd Function\r\n";

TEST(CompilerConstantsTest, TheScriptIsBuiltWordByWord) {
  VBProject project;
  project.CompilerConstants.AddFromProjectLine("Win32 = 1 : DEBUGMODE = 0");
  CompilerConstants own;
  own.AddFromDeclaration("#Const Demo = abc");
  own.AddFromDeclaration("#Const Late = 3");
  struct Case {
    const char* Condition;
    const char* Assignments;
    const char* Expression;
  };
  for (const Case& c : std::vector<Case>{
           {"#If Win32 And DEBUGMODE = 1 Then", "cc1 = 1\r\ncc2 = 0\r\n", "cc1 And cc2 = 1"},
           {"  #if Late = 3& then", "cc5 = 3\r\n", "cc5 = 3"},  // one number stays unused
           {"#ElseIf Demo = \"abc\" Then", "cc4 = \"abc\"\r\n", "cc4 = \"abc\""},
           {"#If WIN32X Then", "cc1 = 1\r\n", "cc1X"},  // inside a longer word
           {"#If \"Win32\" = x Then", "cc1 = 1\r\n", "\"cc1\" = x"},
           {"#If 1& = X Then", "", "1& = X"},
           {"#If X = 1& Or Y# Then", "", "X = 1 Or Y"},
           {"#If X = #1/1/2000# Then", "", "X = #1/1/2000#"},
           {"#If X = # Then", "", "X = #"},
           {"#If Debug Then", "", "FZDebug"},
           {"#If DEBUG = debug Then", "", "FZDebug = FZDebug"},
           {"#If Not (Debug) Then", "", "Not (Debug)"},
           {"#If  Then", "", ""},
           {"= 1", "", " = 1"}}) {
    const std::string script = own.EvaluationScript(c.Condition, &project);
    EXPECT_EQ(script, std::string(c.Assignments) + "Function Evaluate()\r\nEvaluate = (" +
                          c.Expression + kEnd)
        << c.Condition;
  }
  State().CurrentLanguageVersion = lvVisualBasicDotNet;
  EXPECT_EQ(
      own.EvaluationScript("#If Win32 And Debug Then", &project),
      std::string("FZDebug = True\r\nFunction Evaluate()\r\nEvaluate = (cc1 And FZDebug") + kEnd);
  State().CurrentLanguageVersion = lvVisualBasic5or6;
  EXPECT_EQ(own.EvaluationScript("#If Demo Then", nullptr),
            std::string("cc2 = \"abc\"\r\nFunction Evaluate()\r\nEvaluate = (cc2") + kEnd);
}

TEST(CompilerConstantsTest, ConditionsAreTrueOrFalse) {
  enum class Is { True, False, Failure };
  const struct {
    Is Classic;
    bool Complete;
    std::vector<std::string> Conditions;
  } cases[] = {
      {Is::True, true, {"A", "A = 1", "Missing = 0", "Not B", "A = 1 Or Missing", "2 > 1"}},
      {Is::True, true, {"Text = \"one\""}},
      {Is::False, false, {"B", "Missing", "Text = \"ONE\"", "CBool(0)", "Win16", "Debug", "AB"}},
      {Is::False, false, {"1 / 0", "\"abc\""}},           // a failure while it runs; no truth value
      {Is::False, true, {"Win32", "VBA6 = True"}},        // built in
      {Is::Failure, false, {"B And True", "(", "1 +"}}};  // "And" holds the constant A
  VBProject project;
  project.CompilerConstants.AddFromProjectLine("A = 1 : B = 0");
  CompilerConstants own;
  own.AddFromDeclaration("#Const Text = one");
  for (const auto& c : cases) {
    for (const std::string& condition : c.Conditions) {
      const std::string text = "#If " + condition + " Then";
      project.Reading = ReadingRules::Classic();
      if (c.Classic == Is::Failure) {
        EXPECT_THROW(own.Evaluate(text, &project), VendrelError) << text;
      } else {
        EXPECT_EQ(own.Evaluate(text, &project), c.Classic == Is::True) << text;
      }
      project.Reading = ReadingRules::Complete();
      EXPECT_EQ(own.Evaluate(text, &project), c.Complete) << text;
    }
  }
}

TEST(CompilerConstantsTest, ConstantsAreExpressionsInTheCompleteReading) {
  VBProject project;
  project.Reading = ReadingRules::Complete();
  project.CompilerConstants.AddFromProjectLine("A = 1", &project);
  project.Defines = {{"Given", "5"}, {"Win16", "True"}};
  CompilerConstants own;
  for (const char* line :
       {"#Const B = A + 1", "#Const C = B > 1 And Not False", "#Const D = \"x\" & \"y\"",
        "#Const E = Win32", "#Const F = &H10&", "#Const G = Nothing1", "#Const H = 1 = 1"})
    own.AddFromDeclaration(line, &project);
  EXPECT_EQ(List(own), "B=2|C=True|D=\"xy\"|E=True|F=16|G=0|H=True|");
  for (const char* text :
       {"#If C Then", "#If B = 2 Then", "#If D = \"xy\" Then", "#If Given = 5 Then",
        "#If Win16 Then", "#ElseIf (A)Then", "#If \"A\" = \"A\" Then"})
    EXPECT_TRUE(own.Evaluate(text, &project)) << text;
  {
    const DiagnosticScope scope(&project.Diagnostics, "f");
    EXPECT_FALSE(own.Evaluate("#If ) Then", &project));
    own.AddFromDeclaration("#Const Bad = 1 +", &project);
  }
  EXPECT_EQ(project.Diagnostics.CountOf(DiagnosticCode::ConditionFailed), 2u);
}

}  // namespace
}  // namespace vendrel
