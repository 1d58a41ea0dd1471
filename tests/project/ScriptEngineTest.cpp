#include "project/ScriptEngine.h"

#include <gtest/gtest.h>

#include "core/ObjectRegistry.h"
#include "diagnostics/VendrelError.h"

namespace vendrel {
namespace {

int NumberOf(const std::function<void()>& action) {
  try {
    action();
    return 0;
  } catch (const VendrelError& error) {
    return error.Number();
  }
}

TEST(Eval, RunsTheGeneratedScript) {
  EXPECT_EQ(Eval("cc1 = 1\r\ncc2 = 0\r\nFunction Evaluate()\r\nEvaluate = (cc1 And cc2 = 1)\r\n"
                 "End Function\r\n",
                 "Evaluate"),
            "0");
  EXPECT_EQ(
      Eval("FZDebug = True\nFunction Evaluate()\nEvaluate = (FZDebug)\nEnd Function\n", "Evaluate"),
      "True");
  EXPECT_EQ(
      Eval("cc1 = #1/1/2000#\nFunction Evaluate()\nEvaluate = (cc1 > #1/1/1999#)\nEnd Function",
           "Evaluate"),
      "True");
  EXPECT_EQ(Eval("Function Evaluate()\nEvaluate = (Undefined)\nEnd Function", "Evaluate"), "");
}

TEST(Eval, GivesNothingForAFailureWhileRunningAndRaisesForCodeThatIsNone) {
  EXPECT_EQ(Eval("Function F()\nF = (\"a\" = 1)\nEnd Function", "F"), "");
  EXPECT_EQ(Eval("Function F()\nF = 1\nEnd Function", "G"), "");
  EXPECT_EQ(NumberOf([] { Eval("Function F()\nF = (1 =)\nEnd Function", "F"); }), errScriptSyntax);
  EXPECT_EQ(Eval("Function F()\nF = 2\nEnd Function", "F"), "2") << "after a failure";
}

TEST(ScriptControl, KeepsCodeAndVariablesInItsModulesUntilReset) {
  ScriptControl control;
  EXPECT_EQ(NumberOf([&] { control.SetLanguage("JScript"); }), errCannotCreate);
  control.SetLanguage("vbscript");
  const auto module = control.Modules().Add("Code");
  EXPECT_EQ(NumberOf([&] { control.Modules().Add("CODE"); }), errDuplicateKey);
  module->AddCode(
      "g = 1 ' first\n"
      "Rem a remark\n"
      "\n"
      "Function Count\n"
      "  l = g + _\n  1 : G = l\n"
      "  Count = l + count\n"
      "End Function : h = 5\n"
      "Function ReadLocal() : ReadLocal = l & h : End Function");
  EXPECT_EQ(ToText(module->Run("Count")), "2");
  EXPECT_EQ(ToText(module->Run("COUNT")), "3") << "the variable outside has grown";
  EXPECT_EQ(ToText(module->Run("ReadLocal")), "5") << "a variable of another function is not seen";
  control.Reset();
  EXPECT_EQ(NumberOf([&] { control.Modules().Add("Code")->Run("Count"); }), errTypeMismatch);
}

TEST(ScriptControl, RefusesStatementsThatItDoesNotKnow) {
  const std::pair<std::string_view, int> cases[] = {
      {"x", errScriptSyntax},
      {"If x Then y = 1", errScriptSyntax},
      {"x = 1 y = 2", errScriptEndOfStatement},
      {"Function F()\nF = 1", errScriptEnd},
      {"End Function", errScriptSyntax},
      {"Function F()\nFunction G()\nEnd Function\nEnd Function", errScriptSyntax},
      {"Function F(a)\nEnd Function", errScriptParenthesis},
      {"1 = 1", errScriptSyntax},
      {"x = 1 / 0", errDivisionByZero}};
  for (const auto& [text, number] : cases) {
    const std::string_view code = text;
    ScriptControl control;
    const auto module = control.Modules().Add("Code");
    EXPECT_EQ(NumberOf([&] { module->AddCode(code); }), number) << code;
  }
}

TEST(GetScriptEngine, KeepsOneEngineForALanguageAndTakesTheHostsOwn) {
  struct Hosts : ScriptControl {};
  const auto first = GetScriptEngine("");
  EXPECT_EQ(first->Language(), "VBScript");
  EXPECT_EQ(GetScriptEngine(""), first);
  EXPECT_NE(GetScriptEngine("VBScript"), first);
  ReleaseScriptEngines();
  ObjectRegistry::Register<IScriptControl>(kScriptControlProgId,
                                           [] { return std::make_shared<Hosts>(); });
  EXPECT_TRUE(std::dynamic_pointer_cast<Hosts>(GetScriptEngine("")));
  ReleaseScriptEngines();
  RegisterScriptEngine();
  EXPECT_FALSE(std::dynamic_pointer_cast<Hosts>(GetScriptEngine("")));
  EXPECT_EQ(NumberOf([] { GetScriptEngine("JScript"); }), errCannotCreate);
}

}  // namespace
}  // namespace vendrel
