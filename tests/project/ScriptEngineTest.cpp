#include "project/ScriptEngine.h"

#include <gtest/gtest.h>

#include "core/ObjectRegistry.h"
#include "support/Raised.h"

namespace vendrel {
namespace {

using test::Raised;

TEST(Eval, GivesTheTextOfAFunctionAndNothingForAFailureWhileItRuns) {
  const std::pair<const char*, const char*> scripts[] = {
      {"cc1 = 1\r\ncc2 = 0\r\nFunction F()\r\nF = (cc1 And cc2 = 1)\r\nEnd Function\r\n", "0"},
      {"FZDebug = True\nFunction F()\nF = (FZDebug)\nEnd Function\n", "True"},
      {"cc1 = #1/1/2000#\nFunction F()\nF = (cc1 > #1/1/1999#)\nEnd Function", "True"},
      {"Function F()\nF = (Undefined)\nEnd Function", ""},
      {"Function F()\nF = (\"a\" = 1)\nEnd Function", "False"},
      {"Function F()\nF = (\"a\" - 1)\nEnd Function", ""},
      {"Function G()\nG = 1\nEnd Function", ""}};
  for (const auto& [code, text] : scripts) EXPECT_EQ(Eval(code, "F"), text) << code;
}

TEST(Eval, RaisesForCodeThatIsNone) {
  EXPECT_EQ(Raised([] { Eval("Function F()\nF = (1 =)\nEnd Function", "F"); }), errScriptSyntax);
  EXPECT_EQ(Eval("Function F()\nF = 2\nEnd Function", "F"), "2") << "after a failure";
}

TEST(ScriptControl, KeepsCodeAndVariablesInItsModulesUntilReset) {
  ScriptControl control;
  EXPECT_EQ(Raised([&] { control.SetLanguage("JScript"); }), errCannotCreate);
  control.SetLanguage("vbscript");
  const auto module = control.Modules().Add("Code");
  EXPECT_EQ(Raised([&] { control.Modules().Add("CODE"); }), errDuplicateKey);
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
  EXPECT_EQ(Raised([&] { control.Modules().Add("Code")->Run("Count"); }), errTypeMismatch);
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
    EXPECT_EQ(Raised([&] { module->AddCode(code); }), number) << code;
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
  EXPECT_EQ(Raised([] { GetScriptEngine("JScript"); }), errCannotCreate);
}

}  // namespace
}  // namespace vendrel
