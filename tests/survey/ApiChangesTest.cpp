// Each rule of the public surface with a change that it is for.

#include "survey/ApiChanges.h"

#include "services/FileSource.h"
#include "support/MemoryFiles.h"
#include "support/SourceRoot.h"
#include "support/ToolRun.h"
#include "survey/ApiReport.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

// What a case changes: the body of an exposed class, a whole class file, the settings of its
// project, or a source file of VB.NET.
enum class Of { Class, ClassFile, Project, Net };

struct ApiCase {
  ApiRuleId Rule;
  Of Part;
  std::string Before, After;
};

std::string ClassFile(const std::string& name, const std::string& body,
                      const std::string& marks = "Creatable") {
  return "VERSION 1.0 CLASS\nAttribute VB_Name = \"" + name +
         "\"\nAttribute VB_Exposed = True\nAttribute VB_" + marks + " = True\n" + body;
}

void AddFiles(test::MemoryFiles& files, const std::string& folder, Of part,
              const std::string& text) {
  if (part == Of::Net) {
    files.Add(folder + "/P.vbproj",
              "<Project><PropertyGroup><AssemblyName>P</AssemblyName></PropertyGroup><ItemGroup>"
              "<Compile Include=\"a.vb\"/></ItemGroup></Project>");
    files.Add(folder + "/a.vb", text);
    return;
  }
  files.Add(folder + "/P.vbp",
            part == Of::Project ? text : "Type=OleDll\nClass=A; A.cls\nName=\"P\"\n");
  files.Add(folder + "/A.cls", part == Of::Class       ? ClassFile("A", text)
                               : part == Of::ClassFile ? text
                                                       : ClassFile("A", "Sub S()\nEnd Sub\n"));
}

struct ApiRows {
  std::vector<json> Changes, Summaries;
};

ApiRows RowsFor(const test::MemoryFiles& files, const std::string& file) {
  ApiRows rows;
  const ToolRun run = Tool({"diff", "/a/" + file, "/b/" + file, "--api", "--json"});
  std::istringstream lines(run.Out);
  for (std::string line; std::getline(lines, line);) {
    json row = json::parse(line);
    if (row.value("Record", "") == "change")
      rows.Changes.push_back(std::move(row));
    else if (row.value("Record", "") == "summary")
      rows.Summaries.push_back(std::move(row));
  }
  bool breaks = false;
  for (const json& row : rows.Changes) breaks = breaks || row["Breaks"] != "no";
  EXPECT_EQ(run.Code, breaks ? exNo : exDone) << run.Err << files.Paths().size();
  return rows;
}

const std::string kBody = "x = 1\ny = 2\nz = 3\nEnd Sub\n";

const std::vector<ApiCase>& Cases() {
  using enum ApiRuleId;
  static const std::vector<ApiCase> cases{
      {LibraryRenamed, Of::Project, "Type=OleDll\nClass=A; A.cls\nName=\"P\"\n",
       "Type=OleDll\nClass=A; A.cls\nName=\"Q\"\n"},
      {CompatibilityLost, Of::Project,
       "Type=OleDll\nClass=A; A.cls\nName=\"P\"\nCompatibleMode=\"2\"\n",
       "Type=OleDll\nClass=A; A.cls\nName=\"P\"\nCompatibleMode=\"1\"\n"},
      {TypeAdded, Of::Class, "", "Public Enum E\nn\nEnd Enum\n"},
      {TypeRemoved, Of::ClassFile, ClassFile("A", ""),
       "VERSION 1.0 CLASS\nAttribute VB_Name = \"A\"\n"},
      {TypeRenamed, Of::Net, "Public Class A\nPublic X As Long\nPublic Y As Long\nEnd Class\n",
       "Public Class B\nPublic X As Long\nPublic Y As Long\nEnd Class\n"},
      {TypeKind, Of::Net, "Public Class A\nEnd Class\n", "Public Structure A\nEnd Structure\n"},
      {NotCreatable, Of::ClassFile, ClassFile("A", ""), ClassFile("A", "", "Other")},
      {Creatable, Of::ClassFile, ClassFile("A", "", "Other"), ClassFile("A", "")},
      {NotGlobal, Of::ClassFile, ClassFile("A", "", "GlobalNameSpace"),
       ClassFile("A", "", "Other")},
      {BaseChanged, Of::Net, "Public Class A\nInherits System.Exception\nEnd Class\n",
       "Public Class A\nInherits System.EventArgs\nEnd Class\n"},
      {InterfaceAdded, Of::Class, "", "Implements IDo\n"},
      {InterfaceRemoved, Of::Class, "Implements IDo\n", ""},
      {TypeAbstract, Of::Net, "Public Class A\nEnd Class\n",
       "Public MustInherit Class A\nEnd Class\n"},
      {TypeSealed, Of::Net, "Public Class A\nEnd Class\n",
       "Public NotInheritable Class A\nEnd Class\n"},
      {DefaultMember, Of::Class, "Sub S()\nAttribute S.VB_UserMemId = 0\nEnd Sub\n",
       "Sub S()\nEnd Sub\n"},
      {MemberOrder, Of::Class, "Sub S()\nEnd Sub\nSub T()\nEnd Sub\n",
       "Sub T()\nEnd Sub\nSub S()\nEnd Sub\n"},
      {MemberInserted, Of::Class, "Sub T()\nEnd Sub\nPublic Event E()\n",
       "Sub S()\nEnd Sub\nSub T()\nEnd Sub\nPublic Event E()\n"},
      {FieldOrder, Of::Class, "Public Type T\na As Long\nb As Long\nEnd Type\n",
       "Public Type T\nb As Long\na As Long\nEnd Type\n"},
      {FieldAdded, Of::Class, "Public Type T\na As Long\nEnd Type\n",
       "Public Type T\na As Long\nb As Long\nEnd Type\n"},
      {MemberAdded, Of::Class, "Sub S()\nEnd Sub\n", "Sub S()\nEnd Sub\nSub T()\nEnd Sub\n"},
      {ObligationAdded, Of::Net, "Public Interface A\nSub S()\nEnd Interface\n",
       "Public Interface A\nSub S()\nSub T()\nEnd Interface\n"},
      {MemberRemoved, Of::Class, "Sub S()\nEnd Sub\n", "Private Sub S()\nEnd Sub\n"},
      {MemberRenamed, Of::Class, "Sub S()\n" + kBody, "Sub T()\n" + kBody},
      {NameCase, Of::Net, "Public Class A\nPublic Sub Go()\nEnd Sub\nEnd Class\n",
       "Public Class A\nPublic Sub GO()\nEnd Sub\nEnd Class\n"},
      {MemberKind, Of::Class, "Sub S()\nEnd Sub\n", "Property Get S()\nEnd Property\n"},
      {FieldProperty, Of::Net, "Public Class A\nPublic F As Integer\nEnd Class\n",
       "Public Class A\nPublic Property F() As Integer\nGet\nEnd Get\nSet(ByVal v As Integer)\nEnd "
       "Set\nEnd Property\nEnd Class\n"},
      {MemberProtected, Of::Net, "Public Class A\nPublic F As Integer\nEnd Class\n",
       "Public Class A\nProtected F As Integer\nEnd Class\n"},
      {StaticChanged, Of::Net, "Public Class A\nPublic Sub S()\nEnd Sub\nEnd Class\n",
       "Public Class A\nPublic Shared Sub S()\nEnd Sub\nEnd Class\n"},
      {NotVirtual, Of::Net, "Public Class A\nPublic Overridable Sub S()\nEnd Sub\nEnd Class\n",
       "Public Class A\nPublic Sub S()\nEnd Sub\nEnd Class\n"},
      {PropertyReadOnly, Of::Net,
       "Public Class A\nPublic Property F() As Integer\nGet\nEnd Get\nSet(ByVal v As Integer)\nEnd "
       "Set\nEnd Property\nEnd Class\n",
       "Public Class A\nPublic ReadOnly Property F() As Integer\nGet\nEnd Get\nEnd Property\nEnd "
       "Class\n"},
      {PropertyWritable, Of::Net,
       "Public Class A\nPublic ReadOnly Property F() As Integer\nGet\nEnd Get\nEnd Property\nEnd "
       "Class\n",
       "Public Class A\nPublic Property F() As Integer\nGet\nEnd Get\nSet(ByVal v As Integer)\nEnd "
       "Set\nEnd Property\nEnd Class\n"},
      {MemberType, Of::Class, "Function F() As Long\nEnd Function\n",
       "Function F() As Date\nEnd Function\n"},
      {ParameterAdded, Of::Class, "Sub S(a)\nEnd Sub\n", "Sub S(b, a)\nEnd Sub\n"},
      {OptionalAdded, Of::Class, "Sub S(a)\nEnd Sub\n", "Sub S(a, Optional b)\nEnd Sub\n"},
      {ParameterRemoved, Of::Class, "Sub S(a, b)\nEnd Sub\n", "Sub S(b)\nEnd Sub\n"},
      {ParameterOrder, Of::Class, "Sub S(a, b)\nEnd Sub\n", "Sub S(b, a)\nEnd Sub\n"},
      {ParameterType, Of::Class, "Sub S(a As Long)\nEnd Sub\n", "Sub S(a() As Long)\nEnd Sub\n"},
      {ParameterPassing, Of::Class, "Sub S(a)\nEnd Sub\n", "Sub S(ByVal a)\nEnd Sub\n"},
      {ParameterRenamed, Of::Class, "Sub S(a)\nEnd Sub\n", "Sub S(b)\nEnd Sub\n"},
      {EventParameterRenamed, Of::Class, "Event E(a As Long)\n", "Event E(b As Long)\n"},
      {ParameterRequired, Of::Class, "Sub S(Optional a)\nEnd Sub\n", "Sub S(a)\nEnd Sub\n"},
      {ParameterOptional, Of::Class, "Sub S(a)\nEnd Sub\n", "Sub S(Optional a)\nEnd Sub\n"},
      {DefaultValue, Of::Class, "Sub S(Optional a As Long = 1)\nEnd Sub\n",
       "Sub S(Optional a As Long = 2)\nEnd Sub\n"},
      {ParamArrayLost, Of::Class, "Sub S(ParamArray a())\nEnd Sub\n", "Sub S(a())\nEnd Sub\n"},
      {ParamArrayAdded, Of::Class, "Sub S(a())\nEnd Sub\n", "Sub S(ParamArray a())\nEnd Sub\n"},
      {EnumValue, Of::Net, "Public Enum E\na\nb\nEnd Enum\n",
       "Public Enum E\na\nb = 2\nEnd Enum\n"},
      {EnumMemberRemoved, Of::Class, "Public Enum E\na\nb\nEnd Enum\n",
       "Public Enum E\na\nEnd Enum\n"},
      {ConstantValue, Of::Net, "Public Module M\nPublic Const C = 1\nEnd Module\n",
       "Public Module M\nPublic Const C = 2\nEnd Module\n"},
  };
  return cases;
}

TEST(ApiChanges, AreToldByOneRuleEach) {
  std::set<ApiRuleId> tested{ApiRuleId::LibraryAdded, ApiRuleId::LibraryRemoved};
  for (const ApiCase& one : Cases()) {
    tested.insert(one.Rule);
    const ApiRule& rule = RowOf(one.Rule);
    test::MemoryFiles files;
    AddFiles(files, "/a", one.Part, one.Before);
    AddFiles(files, "/b", one.Part, one.After);
    const bool isNet = one.Part == Of::Net;
    const ApiRows rows = RowsFor(files, isNet ? "P.vbproj" : "P.vbp");
    ASSERT_EQ(rows.Changes.size(), 1u) << rule.Id << json(rows.Changes).dump(1);
    EXPECT_EQ(rows.Changes[0]["Rule"], rule.Id);
    EXPECT_EQ(rows.Changes[0]["Breaks"], WordOf(isNet ? rule.Net : rule.Com)) << rule.Id;
  }
  EXPECT_EQ(tested.size(), kApiRules.size());
}

TEST(ApiChanges, AreOfNothingElse) {
  const std::vector<ApiCase> same{
      // A variable is the property by which callers reach it.
      {{},
       Of::Class,
       "Public V As Long\n",
       "Property Get V() As Long\nEnd Property\nProperty Let V(ByVal n As Long)\nEnd Property\n"},
      {{},
       Of::Class,
       "Sub S()\n' old\nEnd Sub\nPrivate Sub T()\nEnd Sub\n",
       "Sub s()\nx = 2\nEnd Sub\nFriend Sub U()\nEnd Sub\n"},
      {{}, Of::Class, "Public Enum E\na\nb\nEnd Enum\n", "Public Enum E\na = 0\nb = 1\nEnd Enum\n"},
      {{},
       Of::Class,
       "Sub S(Optional a As Long = 2)\nEnd Sub\n",
       "Private Const Two = 2\nSub S(Optional a As Long = Two)\nEnd Sub\n"},
      {{}, Of::Class, "Sub S(a As A)\nEnd Sub\n", "Sub S(a As P.A)\nEnd Sub\n"},
      // With binary compatibility the compiler keeps the order.
      {{},
       Of::Net,
       "Public Class A\nPublic Sub S()\nEnd Sub\nPublic Sub T()\nEnd Sub\nEnd Class\n",
       "Public Class A\nPublic Sub T()\nEnd Sub\nPublic Sub S()\nEnd Sub\nPrivate Class B\nPublic "
       "X "
       "As Long\nEnd Class\nEnd Class\n"},
  };
  for (const ApiCase& one : same) {
    test::MemoryFiles files;
    AddFiles(files, "/a", one.Part, one.Before);
    AddFiles(files, "/b", one.Part, one.After);
    const ApiRows rows = RowsFor(files, one.Part == Of::Net ? "P.vbproj" : "P.vbp");
    EXPECT_EQ(rows.Changes, std::vector<json>()) << one.After;
    ASSERT_EQ(rows.Summaries.size(), 1u);
    EXPECT_EQ(rows.Summaries[0]["Breaks"], 0);
  }
}

TEST(ApiChanges, OfAProgramAreThoseOfAllModulesIfAsked) {
  test::MemoryFiles files;
  const std::string project = "Type=Exe\nModule=M; M.bas\nName=\"P\"\n";
  for (const char* folder : {"/a", "/b"}) files.Add(std::string(folder) + "/P.vbp", project);
  files.Add("/a/M.bas", "Attribute VB_Name = \"M\"\nPublic Const C = 1\nSub S()\nEnd Sub\n");
  files.Add("/b/M.bas", "Attribute VB_Name = \"M\"\nPublic Const C = 2\n");
  files.Add("/b/other/Q.vbp", project);
  EXPECT_THAT(ToolEnding(exDone, {"diff", "/a/P.vbp", "/b/P.vbp", "--api"}).Out,
              HasSubstr("exposes nothing"));
  const std::string all =
      ToolEnding(exNo, {"diff", "/a/P.vbp", "/b/P.vbp", "--api", "--all-modules"}).Out;
  EXPECT_THAT(all, StartsWith("# 1 project compared\n"));
  EXPECT_THAT(all, HasSubstr("no\tconstant-value\tconstant\tP~M~C\t1\t2\t"));
  EXPECT_THAT(all, HasSubstr("source\tmember-removed\tmethod\tP~M~S\tS()\t"));
  EXPECT_THAT(ToolEnding(exDone, {"diff", "/a", "/b", "--api"}).Out,
              HasSubstr("no\tlibrary-added\tlibrary\tQ\t"));
  EXPECT_THAT(ToolEnding(exNo, {"diff", "/b", "/a", "--api", "--html"}).Out,
              AllOf(StartsWith("<!DOCTYPE html>"), HasSubstr("<td>library-removed</td>")));
  EXPECT_THAT(RunFor({"diff", "/a", "/b", "--html"}, exUsage), HasSubstr("--api"));
}

TEST(ApiRules, StandOnTheirPage) {
  const std::string page = ReadWholeFile(test::SourceRoot() + "/docs/api-changes.md");
  for (const ApiRule& rule : kApiRules) {
    std::string row = "| `" + std::string(rule.Id) + "` | " + std::string(rule.What) + " | " +
                      std::string(WordOf(rule.Com)) + " | " + std::string(WordOf(rule.Net)) + " |";
    EXPECT_THAT(page, HasSubstr(row));
  }
}

}  // namespace
}  // namespace vendrel::cli
