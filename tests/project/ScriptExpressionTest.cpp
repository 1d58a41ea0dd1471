#include "project/ScriptExpression.h"

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <vector>

#include "project/ScriptDate.h"
#include "project/ScriptEngine.h"
#include "support/Raised.h"

namespace vendrel {
namespace {

// Kind and text.
std::string Show(const ScriptValue& value) {
  const char* const kinds[] = {"Empty",  "Null", "Boolean", "Integer", "Long",
                               "Double", "Date", "String",  "Nothing"};
  const std::string text = ToText(value);
  return kinds[static_cast<int>(value.Kind)] + (text.empty() ? "" : " " + text);
}

// The value as its kind and text, or "error" and the number.
std::string Shown(const std::function<ScriptValue()>& value) {
  std::string shown;
  const int raised = test::Raised([&] { shown = Show(value()); });
  return raised ? "error " + std::to_string(raised) : shown;
}

// The value of an expression in a script with a few variables.
std::string Script(std::string_view expression) {
  ScriptControl control;
  const auto module = control.Modules().Add("Code");
  return Shown([&] {
    module->AddCode(
        "one = 1: two = 2: t1 = \"1\": abc = \"abc\": yes = \"True\"\n"
        "half = 0.5: day = #1/31/2000#\r\n"
        "Function F()\nF = (" +
        std::string(expression) + ")\nEnd Function\n");
    return module->Run("f");
  });
}

struct ExpressionCase {
  std::string_view Expression, Result;
};

template <std::size_t N>
void ExpectScript(const ExpressionCase (&cases)[N]) {
  for (const ExpressionCase& c : cases) EXPECT_EQ(Script(c.Expression), c.Result) << c.Expression;
}

TEST(ScriptExpression, BindsOperatorsInTheOrderOfTheLanguage) {
  ExpectScript({{"2 + 3 * 4", "Integer 14"},
                {"-2 ^ 2", "Double -4"},
                {"2 ^ -1", "Double 0.5"},
                {"2 ^ 3 ^ 2", "Double 64"},
                {"2 ^ -1 * 4", "Double 2"},
                {"7 \\ 2 * 2", "Integer 1"},
                {"7 Mod 4 \\ 2", "Integer 1"},
                {"1 + 7 Mod 4", "Integer 4"},
                {"1 & 2 + 3", "String 15"},
                {"1 + 1 & 1 = 21", "Boolean True"},
                {"Not one = 2", "Boolean True"},
                {"Not 0 And 0", "Integer 0"},
                {"True Or False And False", "Boolean True"},
                {"True Xor True Or True", "Boolean False"},
                {"False Imp False Eqv False", "Boolean True"},
                {"1 < 2 = True", "Boolean True"},
                {"one = Not 0", "Boolean False"},
                {"2 * Not 0 + 1", "Integer -4"},
                {"- - 3", "Integer 3"},
                {"(1 + 2) * (3)", "Integer 9"},
                {"1) + (2", "Integer 3"},
                {"8 / 2 / 2", "Double 2"},
                {"7 - 2 - 1", "Integer 4"},
                {"1 => 1 And 1 =< 1 And 1 >< 2", "Boolean True"}});
}

TEST(ScriptExpression, PromotesNumbersAndRoundsHalvesToEven) {
  ExpectScript({{"32767", "Integer 32767"},
                {"32768", "Long 32768"},
                {"2147483648", "Double 2147483648"},
                {"32767 + 1", "Long 32768"},
                {"2147483647 + 1", "Double 2147483648"},
                {"300 * 300", "Long 90000"},
                {"1.0", "Double 1"},
                {".5 + 5.", "Double 5.5"},
                {"1E3", "Double 1000"},
                {"1.5e-3", "Double 0.0015"},
                {"6 / 3", "Double 2"},
                {"1 / 3", "Double 0.333333333333333"},
                {"2.5 \\ 1", "Long 2"},
                {"3.5 \\ 1", "Long 4"},
                {"-7 \\ 2", "Integer -3"},
                {"-7 Mod 3", "Integer -1"},
                {"7.5 Mod 5", "Long 3"},
                {"True + True", "Integer -2"},
                {"-True", "Integer 1"},
                {"nothere + 1", "Integer 1"},
                {"nothere", "Empty"},
                {"nothere & nothere", "String"},
                {"1 / 0", "error 11"},
                {"1 \\ 0", "error 11"},
                {"1 Mod 0.4", "error 11"},
                {"0 / 0", "error 6"},
                {"3000000000 \\ 1", "error 6"},
                {"1E200 * 1E200", "error 6"},
                {"(-8) ^ 0.5", "error 5"},
                {"Not 2.5", "Long -3"},
                {"6 And 3", "Integer 2"},
                {"70000 Or 1", "Long 70001"}});
}

TEST(ScriptExpression, ReadsHexadecimalAndOctalNumbersSigned) {
  ExpectScript({{"&HFFFF", "Integer -1"},
                {"&H7FFF", "Integer 32767"},
                {"&hFFFF&", "Long 65535"},
                {"&H10000", "Long 65536"},
                {"&HFFFFFFFF", "Long -1"},
                {"&O17", "Integer 15"},
                {"&H100000000", "error 1031"},
                {"&HG", "error 1002"},
                {"1 & &H10", "String 116"}});
}

TEST(ScriptExpression, ConvertsTextByTheOperator) {
  ExpectScript({{"\"1\" + \"2\"", "String 12"},
                {"\"1\" + 2", "Double 3"},
                {"\"a\"\"b\"", "String a\"b"},
                {"\" 1,000.5 \" * 2", "Double 2001"},
                {"\"&H10\" - 0", "Double 16"},
                {"\"$5\" - 0", "Double 5"},
                {"\"a\" - 1", "error 13"},
                {"\"\" + 1", "error 13"},
                {"-\"2\"", "Double -2"},
                {"1 & True & Null & nothere", "String 1True"},
                {"yes And True", "Boolean True"},
                {"Not yes", "Boolean False"},
                {"abc And True", "error 13"},
                {"Null + 1", "Null"},
                {"Null = Null", "Null"},
                {"Null And False", "Boolean False"},
                {"Null Or 5", "Integer 5"},
                {"False Imp Null", "Boolean True"},
                {"Not Null", "Null"}});
}

TEST(ScriptExpression, ComparesVariablesByKindAndConvertsForLiterals) {
  ExpectScript({{"one = t1", "Boolean False"},
                {"two < t1", "Boolean True"},
                {"abc > one", "Boolean True"},
                {"t1 = 1", "Boolean True"},
                {"t1 = (1)", "Boolean True"},
                {"t1 > -1", "Boolean True"},
                {"one = \"1.0\"", "Boolean True"},
                {"abc = 1", "Boolean False"},
                {"one <> \"abc\"", "Boolean False"},
                {"abc = True", "Boolean False"},
                {"abc = \"ABC\"", "Boolean False"},
                {"\"b\" > abc", "Boolean True"},
                {"yes = True", "Boolean True"},
                {"nothere = 0", "Boolean True"},
                {"nothere = \"\"", "Boolean True"},
                {"nothere = one - 1", "Boolean True"},
                {"nothere < abc", "Boolean True"},
                {"one = True", "Boolean False"},
                {"day = \"1/31/2000\"", "Boolean True"},
                {"day > #12/31/1999#", "Boolean True"},
                {"Nothing Is Nothing", "Boolean True"},
                {"one Is Nothing", "error 424"},
                {"Nothing = 1", "error 91"},
                {"Nothing", "error 91"},
                {"nothere.Member", "error 424"}});
}

TEST(ScriptExpression, RefusesWhatIsNone) {
  const std::pair<int, std::vector<std::string_view>> refused[] = {
      {1002, {"", "1 +", "* 1", "one And Or two", "Debug", "1& = one", "#nodate#"}},
      {1006, {"(1", "1 2", "1 , 2", "one Like one", "5abc"}},
      {1007, {"[a"}},
      {1025, {"1))"}},
      {1032, {"1 ? 2"}},
      {1033, {"\"a"}}};
  for (const auto& [number, expressions] : refused)
    for (const std::string_view expression : expressions)
      EXPECT_EQ(Script(expression), "error " + std::to_string(number)) << expression;
}

TEST(ScriptExpression, KnowsDatesAndFunctions) {
  ExpectScript({{"#1/31/2000#", "Date 1/31/2000"},
                {"day + 1", "Date 2/1/2000"},
                {"day - #1/1/2000#", "Double 30"},
                {"#1/1/2000 4:05:00 PM#", "Date 1/1/2000 4:05:00 PM"},
                {"#2/29/2001#", "error 1002"},
                {"#4 PM#", "Date 4:00:00 PM"},
                {"[one] + [two]", "Integer 3"},
                {"Int(-2.5)", "Double -3"},
                {"Fix(-2.5) & Abs(-3) & Sgn(-9)", "String -23-1"},
                {"Len(\"año\")", "Long 3"},
                {"CBool(yes) And CInt(\"2.5\") = 2", "Boolean True"},
                {"CInt(40000)", "error 6"},
                {"one(1)", "error 13"},
                {"Abs(1, 2)", "error 13"},
                {"Abs()", "error 13"},
                {"Abs(Abs(-1) - (3))", "Integer 2"}});
}

TEST(ScriptValue, HasTheTextOfTheLanguage) {
  const std::pair<double, std::string_view> numbers[] = {{0, "0"},
                                                         {-0.0, "0"},
                                                         {0.1 + 0.2, "0.3"},
                                                         {1e15, "1E+15"},
                                                         {123456789012345, "123456789012345"},
                                                         {1e-5, "0.00001"},
                                                         {1.0 / 3e5, "3.33333333333333E-06"},
                                                         {-2.50, "-2.5"},
                                                         {1e300, "1E+300"},
                                                         {1234567.125, "1234567.125"}};
  for (const auto& [number, text] : numbers) EXPECT_EQ(ToText(ScriptValue::Double(number)), text);
  EXPECT_EQ(ToText(ScriptValue()), "");
  EXPECT_EQ(ToText(ScriptValue::Null()), "");
}

TEST(ScriptValue, KnowsWhichTextIsNumeric) {
  for (const std::string_view text :
       {"1", " -1.5e3 ", "&HFF", "1,000", "$5", ".5", "+3", "&HFFFF&", "1D2"})
    EXPECT_TRUE(NumberFromText(text)) << text;
  for (const std::string_view text :
       {"", " ", "abc", "1x", "&H", "&HXY", ".", "1.2.3", "1/1/2000", "--1", "inf", "nan"})
    EXPECT_FALSE(NumberFromText(text)) << text;
  EXPECT_EQ(NumberFromText("&HFFFF"), -1);
}

TEST(ScriptDate, ReadsAndWritesEveryDay) {
  for (int number = int(kFirstDate); number <= int(kLastDate); number += 397) {
    const double day = number;
    ASSERT_EQ(DateFromText(DateText(day)), day) << DateText(day);
  }
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"1/1/30", "1/1/1930"},
      {"1/1/29", "1/1/2029"},
      {"31/1/2000", "1/31/2000"},
      {"2000-02-29", "2/29/2000"},
      {"31 Jan 2000", "1/31/2000"},
      {"January 31, 2000 12:00 am", "1/31/2000"},
      {"12/30/1899 12:00 PM", "12:00:00 PM"},
      {"12/29/1899 6:00", "12/29/1899 6:00:00 AM"},
      {"1/1/100", "1/1/100"},
      {"0:00", "12:00:00 AM"},
      {"23:59:59", "11:59:59 PM"}};
  for (const auto& [text, shown] : cases) {
    const auto date = DateFromText(text);
    EXPECT_EQ(date ? DateText(*date) : "none", shown) << text;
  }
  for (const std::string_view text :
       {"", "x", "1/1", "13/13/2000", "25:00", "1:60", "1/1/2000/1", "Foo 1 2000", "13 PM"})
    EXPECT_FALSE(DateFromText(text)) << text;
}

TEST(EvaluateExpression, ReadsConstantExpressionsOfTheSource) {
  const std::map<std::string, ScriptValue, std::less<>> constants = {
      {"WIN32", ScriptValue::Boolean(true)},
      {"A", ScriptValue::Whole(4)},
      {"Colors.Red", ScriptValue::Whole(255)},
      {"Name", ScriptValue::String("1")}};
  const ScriptNames names = [&](std::string_view name) {
    const auto found = constants.find(name);
    if (found == constants.end()) throw VendrelError(errInvalidArgument, name);
    return found->second;
  };
  const ExpressionCase cases[] = {{"WIN32 And A = 4&", "Boolean True"},
                                  {"1& = A", "Boolean False"},
                                  {"&HFFFF& + 1%", "Long 65536"},
                                  {"2# * 1.5!", "Double 3"},
                                  {"A% Or &H10", "Integer 20"},
                                  {"Colors.Red + [A]", "Integer 259"},
                                  {"Name$ Like \"[0-9]\"", "Boolean True"},
                                  {"Name = A - 3", "Boolean True"},
                                  {"-(2 ^ 3)", "Double -8"},
                                  {"70000%", "error 6"},
                                  {"Missing", "error 5"},
                                  {"A A", "error 1025"},
                                  {"A = 1 Then", "error 1025"},
                                  {"", "error 1002"}};
  for (const ExpressionCase& c : cases) {
    const std::string shown = Shown([&] { return EvaluateExpression(c.Expression, names); });
    EXPECT_EQ(shown, c.Result) << c.Expression;
  }
  EXPECT_EQ(Show(EvaluateExpression("Debug", {})), "Empty");
}

TEST(EvaluateExpression, TakesAnyDepthInLinearTime) {
  const int depth = 100000;
  const auto repeat = [](std::string_view text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) result += text;
    return result;
  };
  const auto start = std::chrono::steady_clock::now();
  const std::string open = repeat("(", depth), close = repeat(")", depth);
  EXPECT_EQ(Show(EvaluateExpression(open + "1" + close, {})), "Integer 1");
  EXPECT_EQ(Show(EvaluateExpression(repeat("Abs(", depth) + "-1" + close, {})), "Integer 1");
  EXPECT_EQ(Show(EvaluateExpression(repeat("1-(", depth) + "1" + close, {})), "Integer 1");
  EXPECT_EQ(Show(EvaluateExpression(repeat("Not ", depth) + "0", {})), "Integer 0");
  EXPECT_EQ(Show(EvaluateExpression(repeat("0 Or ", depth) + "1", {})), "Integer 1");
  EXPECT_THROW(EvaluateExpression(open, {}), VendrelError);
  EXPECT_THROW(EvaluateExpression(open + "1", {}), VendrelError);
  EXPECT_THROW(EvaluateExpression(repeat("\"a\"&(", depth) + "1" + close, {}), VendrelError);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

}  // namespace
}  // namespace vendrel
