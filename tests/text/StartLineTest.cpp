#include "text/StartLine.h"

#include <gtest/gtest.h>

#include <string>

#include "text/DescriptionText.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

TEST(GetName, IsTheWordInFrontOfTheParenthesis) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"Public Sub Foo(x As Long)", "Foo"},
      {"Sub Foo (x)", "Foo"},
      {"Sub Foo  (x)", ""},
      {"Foo(x)", "Foo"},
      {"Property Get F$()", "F$"},
      {"Property Get Total As Long", "Total"},
      {"Property Get Class", "Cl"},
      {"Sub Foox", "Foo"},
      {"Sub Año(x)", "Año"},
      {"Sub Año", "Añ"},
      {"Sub Caé", "Ca"},
      {"(x)", ""},
      {"", ""},
  };
  for (const auto& [line, name] : cases) EXPECT_EQ(GetName(line), name) << line;
}

// "Long()" for an array, "-" where the default type does not apply.
std::string Show(const ReturnTypeText& type) {
  std::string shown(type.ReturnType);
  if (type.IsArray) shown += "()";
  return type.TakesDefault ? shown : shown + "-";
}

TEST(GetReturnType, IsJudgedByTheLastWordsOrByTheSignature) {
  struct Case {
    std::string_view Line, Default, Complete;
  };
  const Case cases[] = {
      {"Function F() As Long", "Long", "Long"},
      {"Function F(a As Long) As String()", "String()", "String()"},
      {"Function F() As Long 'As String", "Long", "Long"},
      {"Function F(ByVal a As Long)", "", ""},
      {"Function F(ByVal a As Long) as ADODB.Recordset", "ADODB.Recordset", "ADODB.Recordset"},
      {"Sub S(a As Long)", "", "-"},
      {"Sub S(a() As Long)", "Long", "-"},
      {"Sub S()", "", "-"},
      {"Function F&(a() As String)", "String", "Long"},
      {"Property Get P%()", "", "Integer"},
      {"Property Get P As Long", "Long", "Long"},
      {"Property Get P As Long()", "", "Long()"},
      {"Function F(Optional s As String = \")'\") As Date", "", "Date"},
      {"Public Static Function F (x) As New Collection", "", "Collection"},
      {"Property Let P(ByVal i As Long, ByVal v As String)", "", "String"},
      {"Property Set P(o As Object)", "", "Object"},
      {"Property Let P(v#)", "", "Double"},
      {"Property Let P(v() As Byte)", "Byte", "Byte()"},
      {"Property Let P(v)", "", ""},
      {"Function F(", "", ""},
      {"Long", "", ""},
      {"", "", ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Show(GetReturnType(c.Line, lvVisualBasic5or6)), c.Default) << c.Line;
    EXPECT_EQ(Show(GetReturnType(c.Line, lvVisualBasic5or6, true)), c.Complete) << c.Line;
    EXPECT_EQ(Show(GetReturnType(c.Line, lvVisualBasicDotNet)), "") << c.Line;
  }
}

TEST(TypeFromName, KnowsTheSuffixes) {
  EXPECT_EQ(TypeFromName("a%"), "Integer");
  EXPECT_EQ(TypeFromName("a& "), "Long");
  EXPECT_EQ(TypeFromName("a!"), "Single");
  EXPECT_EQ(TypeFromName("a#"), "Double");
  EXPECT_EQ(TypeFromName("a@"), "Currency");
  EXPECT_EQ(TypeFromName("$"), "String");
  EXPECT_EQ(TypeFromName("a$x"), "");
  EXPECT_EQ(TypeFromName(" "), "");
}

TEST(AccessTypeFromstring, IsPrivateForAnythingUnknown) {
  EXPECT_EQ(AccessTypeFromstring("Public"), atPublic);
  EXPECT_EQ(AccessTypeFromstring("FRIEND"), atFriend);
  EXPECT_EQ(AccessTypeFromstring("Protected"), atPrivate);
}

TEST(Names, HaveShortAndFullForms) {
  EXPECT_EQ(ShortName("A.B.Foo(x.y)"), "Foo");
  EXPECT_EQ(ShortName("Foo@"), "Foo");
  EXPECT_EQ(ShortName("Foo."), "");
  EXPECT_EQ(DotNetType("integer"), "System.Int32");
  EXPECT_EQ(DotNetType("Date"), "System.DateTime");
  EXPECT_EQ(DotNetType("Integers"), "Integers");
}

TEST(AppendDescription, JoinsByTheWrapType) {
  struct Case {
    std::string Description;
    std::string_view Text;
    WrapTypeEnum Wrap;
    LanguageVersionEnum Language;
    std::string_view Result;
  };
  const Case cases[] = {
      {"", "", wrapLineBreak, lvVisualBasic5or6, ""},
      {"a", "", wrapLineBreak, lvVisualBasic5or6, "a<crlf> "},
      {"a", "b", wrapSpace, lvVisualBasic5or6, "a b"},
      {"", "b", wrapParagraph, lvVisualBasic5or6, "<p>b</p>"},
      {"a", "b", wrapParagraph, lvVisualBasic5or6, "a<p>b</p>"},
      {"a", "<P>b", wrapParagraph, lvVisualBasic5or6, "a<P>b"},
      {"a", " _ b", wrapLineBreak, lvVisualBasicDotNet, "a b"},
      {"a", "_ b", wrapLineBreak, lvVisualBasic5or6, "a<crlf>_ b"},
  };
  for (Case c : cases) {
    AppendDescription(c.Description, c.Text, c.Wrap, c.Language);
    EXPECT_EQ(c.Description, c.Result) << c.Text;
    EXPECT_EQ(c.Wrap == wrapSpace, c.Result == "a b") << "the caller's wrap type";
  }
}

TEST(BareDescription, IsOneLineWithoutMarkup) {
  EXPECT_EQ(BareDescription("50%<crlf>more"), "50");
  EXPECT_EQ(BareDescription("<b>A</b> %1 < 2"), "A 1 < 2");
}

}  // namespace
}  // namespace vendrel
