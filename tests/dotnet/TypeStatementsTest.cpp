#include <gtest/gtest.h>

#include "dotnet/SourceLines.h"
#include "dotnet/TypeStatements.h"
#include "text/RegExp.h"

namespace vendrel {
namespace {

std::string Show(const std::vector<TypeStatement>& statements) {
  std::string text;
  for (const TypeStatement& s : statements) {
    constexpr const char* kKinds[] = {"namespace", "end-namespace", "type", "end"};
    constexpr const char* kTypeWords[] = {"", "class", "module", "enum", "structure", "interface"};
    if (!text.empty()) text += "; ";
    text += kKinds[static_cast<int>(s.What)];
    if (s.What == TypeStatement::Kind::Type || s.What == TypeStatement::Kind::EndType)
      text += std::string(" ") + kTypeWords[s.Type];
    if (!s.Name.empty()) text += " " + s.Name;
    if (!s.Access.empty()) text += " " + s.Access.str();
    if (s.IsAbstract) text += " abstract";
    if (s.IsSealed) text += " sealed";
    if (s.IsPartial) text += " partial";
    if (s.IsGlobal) text += " global";
    if (!s.Underlying.empty()) text += " as " + s.Underlying;
  }
  return text;
}

struct TypeRow {
  const char* Line;
  const char* ByPattern;
  const char* ByWord;
};

TEST(TypeStatements, PatternsAndWordsTellTypes) {
  const TypeRow rows[] = {
      {"Public Class Foo", "type class Foo PUBLIC", "type class Foo PUBLIC"},
      {"Public Class [Select]", "type class Select PUBLIC", "type class Select PUBLIC"},
      {"Class Foo : Inherits Bar", "type class Foo PUBLIC", "type class Foo"},
      {"MustInherit Class A ' last", "type class last PUBLIC abstract", "type class A abstract"},
      {"Friend NotInheritable Class A", "type class A PUBLIC", "type class A FRIEND sealed"},
      {"<Serializable()> Public Class Foo", "type class Foo PUBLIC", "type class Foo PUBLIC"},
      {"Public Enum Colors As Byte", "type enum Colors PUBLIC as Byte",
       "type enum Colors PUBLIC as Byte"},
      {"public enum Colors", "type enum public enum Colors PUBLIC", "type enum Colors PUBLIC"},
      {"Partial Class A(Of K, V As {New, I(Of K)})", "", "type class A`2 partial"},
      {"Protected Friend Structure P", "type structure P PUBLIC",
       "type structure P PROTECTED FRIEND"},
      {"Namespace A.B", "namespace A.B PUBLIC", "namespace A.B PUBLIC"},
      {"Namespace Global.[Me].B", "namespace Global.[Me].B PUBLIC", "namespace Me.B PUBLIC global"},
      {"End Class", "end class PUBLIC", "end class PUBLIC"},
      {"End  Class ' Foo", "", "end class PUBLIC"},
      {"end namespace", "", "end-namespace PUBLIC"},
      {"Class A : End Class", "type class A PUBLIC", "type class A; end class PUBLIC"},
      {"Dim s = \"Class X\" : Rem Class Y", "", ""},
      {"Property Class As Integer", "", ""},
      {"If a Then Class b", "", ""},
      {"<A(\"x>:\")> Interface I", "type interface I PUBLIC", "type interface I"}};
  for (const TypeRow& row : rows) {
    EXPECT_EQ(Show(StatementsByPattern(row.Line)), row.ByPattern) << row.Line;
    EXPECT_EQ(Show(StatementsByWord(row.Line)), row.ByWord) << row.Line;
  }
}

// Each pattern must be found by the word that is looked for before it is tried.
TEST(TypeStatements, NoPatternIsPassedOver) {
  for (const std::string_view pattern : TypePatterns())
    for (const char* line : {"  NAMESPACE x", "Private CLASS a", "<A> Friend mOdule b", "Enum c",
                             "Shadows Structure d", "\tInterface e", "Classy f", "no Class g"}) {
      if (!MatchRegExp(line, pattern)) continue;
      EXPECT_EQ(StatementsByPattern(line).size(), 1u) << line << " by " << pattern;
    }
}

TEST(TypeStatements, AnyLineTakesLinearTime) {
  for (const char* part : {"<", "public ", "<a> ", ":<", "Class [:", "<(", "\"", "<a \""}) {
    std::string line;
    while (line.size() < (1u << 20)) line += part;
    for (const std::string& text : {line, line + "Class "}) {
      StatementsByPattern(text);
      StatementsByWord(text);
    }
    SourceLines lines(line);
    for (SourceStatement statement; lines.Next(statement);) {
    }
  }
}

std::string Groups(std::string_view text) {
  SourceLines lines(text);
  std::string groups;
  for (SourceStatement s; lines.Next(s);)
    groups += std::to_string(s.FirstLine) + "+" + std::to_string(s.Lines.size()) + " ";
  return groups;
}

TEST(SourceLines, StatementsHaveTheirLines) {
  EXPECT_EQ(Groups("a\r\nb _\nc\rd"), "1+1 2+2 4+1 ");
  EXPECT_EQ(Groups("name_\n' comment _\nRem x _\nq\n"), "1+1 2+1 3+1 4+1 ");
  EXPECT_EQ(Groups("<A(1, _\n 2)> _\nClass B\n<C>\nClass D\n<Assembly: X()>\nClass E"),
            "1+3 4+2 6+1 7+1 ");
  EXPECT_EQ(Groups("s = \"one\ntwo \"\"\nthree\"\nd"), "1+3 4+1 ");
  EXPECT_EQ(Groups("s = \"never closed\nClass A\nEnd Class\n"), "1+1 2+1 3+1 ");
  EXPECT_EQ(Groups("x = <a b=\"1\">\n<c/> End Class <%= \"</a>\" %>\n</a>\ny"), "1+3 4+1 ");
  EXPECT_EQ(Groups("If a <b Then\nx = <open>\nClass A\n"), "1+1 2+1 3+1 ");
}

std::string ClassicLines(std::string_view text) {
  ClassicSourceLines lines(text);
  std::string all;
  for (SourceStatement s; lines.Next(s);)
    all += std::to_string(s.FirstLine) + ":" + std::string(s.Text) + "|";
  return all;
}

TEST(SourceLines, AsDescribedTheyAreJoinedAndParted) {
  EXPECT_EQ(ClassicLines("\ta  \r\nb _\r\n  c\r\nd"), "1:    a|2:b    c|4:d|");
  EXPECT_EQ(ClassicLines("a\nb\r\n' don\"t\nc\nd\r\ne"), "1:a|2:b|3:' don\"t\nc\nd|6:e|");
}

}  // namespace
}  // namespace vendrel
