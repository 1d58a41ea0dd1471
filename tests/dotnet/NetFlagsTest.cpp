// Each flag for VB.NET source alone: what the classic reading makes of a source, and what that flag
// changes by itself.

#include <gmock/gmock.h>

#include "dotnet/NetProjects.h"
#include "dotnet/Sources.h"
#include "dotnet/XmlComments.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::NetProject;
using Probe = std::string (*)(NetProject&);

std::string FieldsOf(const Component& type) {
  std::string text;
  for (const Block& block : type.Blocks)
    if (const Variables* fields = block.Variables.IfAny())
      for (const Variable& field : *fields)
        text += field.Name + " As " + field.TypeName.str() +
                (field.Value.empty() ? std::string() : " = " + std::string(field.Value)) + "; ";
  return text;
}

std::string Fields(NetProject& n) { return FieldsOf(*n.Project->Components.Item(1)); }
std::string Keys(NetProject& n) { return n.Keys(); }
std::string FileNames(NetProject& n) { return test::Names(n.Project->ProjectFiles); }
std::string Hierarchy(NetProject& n) {
  n.Resolve();
  return n.Project->Components.Item(1)->ClassHierarchy;
}
std::string Resolved(NetProject& n) {
  n.Resolve();
  return Fields(n);
}
std::string Procedures(NetProject& n) {
  std::string text;
  for (const Block& block : n.Project->Components.Item(1)->Blocks) {
    if (block.Name().empty()) continue;
    text += block.Name();
    if (const Blocks* overloads = block.OverloadBlocks().IfAny())
      for (const Block& overload : *overloads) text += " " + overload.Name();
    text += "; ";
  }
  return text;
}
std::string LinesOfTheFirstBlock(NetProject& n) {
  const CodeLines& lines = *n.Project->Components.Item(1)->Blocks.Item(1)->CodeLines;
  std::string text;
  for (std::int32_t i = 1; i <= lines.Count(); ++i) text += std::string(lines.LineView(i)) + "|";
  return text;
}
std::string Outside(NetProject& n) {
  return n.Project->ProjectFiles.Item(1)->Outside() ? "kept" : "none";
}
std::string Target(NetProject& n) {
  n.Project->OutputFileName.SetFullPath("C:\\out\\N.vbproj");
  return TargetOfSource(*n.Project, *n.Project->ProjectFiles.Item(1));
}
std::string NameOfType(NetProject& n) {
  const CodeElement* type = n.Project->GetObjectFromDotNetName("M:R.C.F(System.Byte)");
  return type ? As<Block>(type)->DotNetName() : "none";
}
std::string Descriptions(NetProject& n) {
  const Component& type = *n.Project->Components.Item(1);
  const Block& block = *type.Blocks.Item("F");
  return "type: " + type.Description() + " F: " + block.Description() +
         block.UnTaggedDescription.str();
}

struct FlagRow {
  const char* Flag;
  NetProject::Sources Sources;
  Probe Look;
  const char* Off;
  const char* On;
};

std::vector<FlagRow> FlagRows() {
  return {
      {"NetLines",
       {{"a.vb", "Class C\n\tx = a + _\n  b  \nEnd Class\n"}},
       LinesOfTheFirstBlock,
       "Class C|    x = a +    b|End Class|",
       "Class C|\tx = a + _|  b  |End Class|"},
      {"NetKeepSource", {{"a.vb", "Imports X\nClass C\nEnd Class\n"}}, Outside, "none", "kept"},
      {"NetKeepPlaces",
       {{"sub/a.vb", "Class C\nEnd Class\n"}},
       Target,
       "C:\\out\\a.vb",
       "C:\\out\\sub\\a.vb"},
      {"NetProjectItems", {{"a.vb", ""}, {"B.VB", ""}}, FileNames, "a.vb ", "a.vb B.VB "},
      {"NetTypeStatements",
       {{"a.vb", "class A(Of T)\nEnd  Class\nStructure B\nEnd Structure\n"}},
       Keys,
       "r.t) r.t).b ",
       "r.a`1 r.b "},
      {"NetMembers",
       {{"a.vb", "Class C\n Dim A, [B] As Byte\n WithEvents D As Timer\nEnd Class\n"}},
       Fields,
       "A As System.Object; [B] As System.Byte; ",
       "A As System.Byte; B As System.Byte; D As Timer; "},
      {"NetEnumerations",
       {{"a.vb", "Enum E As Byte\n A = 1\nEnd Enum\n"}},
       Fields,
       "A As System.Int32; ",
       "A As System.Byte = 1; "},
      {"NetOverloads",
       {{"a.vb", "Class C\n Sub F(a As A.X)\n End Sub\n Sub F(a As B.X)\n End Sub\nEnd Class\n"}},
       Procedures,
       "F F(X); ",
       "F F(X) F(X); "},
      {"NetConditions",
       {{"a.vb",
         "Class A\nEnd Class\n#If False Then\nClass C\nEnd Class\nClass D\n"
         "End Class\n"}},
       Keys,
       "r.a r.c r.d ",
       "r.a "},
      {"NetTypeNames",
       {{"a.vb", "Class C\n Public F As SByte\nEnd Class\n"}},
       Resolved,
       "F As SByte; ",
       "F As System.SByte; "},
      {"NetInheritance",
       {{"a.vb",
         "Class C\n Inherits B\nEnd Class\nClass B\n Inherits A\nEnd Class\nClass A\n"
         "End Class\n"}},
       Hierarchy,
       "R.C,R.B,System.Object",
       "R.C,R.B,R.A,System.Object"},
      {"NetNames",
       {{"a.vb", "Class C\n Sub F(a As Byte)\n End Sub\nEnd Class\n"}},
       NameOfType,
       "M:R.C.F",
       "M:R.C.F(System.Byte)"},
      {"NetXmlComments",
       {{"a.vb",
         "''' <summary>c</summary>\nClass C\n ''' <summary>f</summary>\n Sub F()\n"
         " End Sub\nEnd Class\n"}},
       Descriptions,
       "type:  F: '' <summary>f</summary>",
       "type: c F: f"},
  };
}

TEST(NetFlags, EachAloneMakesItsDifference) {
  std::vector<std::string> shown, flags;
  for (const FlagRow& row : FlagRows()) {
    shown.push_back(row.Flag);
    NetProject off(row.Sources);
    EXPECT_EQ(row.Look(off), row.Off) << row.Flag << " off";
    NetProject on(row.Sources, test::Reading(row.Flag));
    EXPECT_EQ(row.Look(on), row.On) << row.Flag << " on";
  }
  ForEachReadingRule([&](const ReadingRule& rule) {
    if (rule.Name.starts_with("Net")) flags.emplace_back(rule.Name);
  });
  EXPECT_THAT(shown, testing::UnorderedElementsAreArray(flags));
}

}  // namespace
}  // namespace vendrel
