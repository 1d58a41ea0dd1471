#include <gtest/gtest.h>

#include "core/Ascii.h"
#include "core/ObjectRegistry.h"
#include "diagnostics/VendrelError.h"
#include "dotnet/NetProjects.h"
#include "dotnet/Sources.h"
#include "project/VBProjectGroup.h"
#include "support/Boxes.h"

namespace vendrel {
namespace {

using test::Complete;
using test::Names;
using test::NetProject;
using Sources = NetProject::Sources;

constexpr const char* kOdd =
    "\xEF\xBB\xBFOption Strict On\r\nImports System _\n  .Data\n\n<Assembly: A()>\r\n"
    "#Region \"x\"\n"
    "''' <summary>x</summary>\n<Serializable()> _\nPublic Class A ' first\r"
    "\tPublic F As Integer : Public G\n\n"
    "  Delegate Sub D1(ByVal x As Integer)\n  Sub M()\n  End Sub\n"
    "  Class Inner : Inherits A\n    Sub M()\n    End Sub\n  End Class\n"
    "  Sub M(x As Integer)\n    Dim s = \"Class X\n End Class\"\n  End Sub\n"
    "  Sub M(x As Integer)\n  End Sub\n"
    "  Enum E As Byte\n    One = 1 ' the first\n  End Enum\n  Class Inner\n  End Class\n"
    "  ' behind\nEnd  class\n#If False Then\nClass Gone\nEnd Class\n#End If\n"
    "Delegate Function D2() As String\nEnd Class\n#End Region\n"
    "Namespace X\n  Module M : Sub Main() : End Sub : End Module\nEnd Namespace\nClass Open\n  Sub "
    "N()\n"
    "  x = <a>\n";

TEST(NetWriting, UntouchedSourceComesBack) {
  NetProject n(Sources{{"sub/a.vb", kOdd}, {"b.vb", "' nothing\r\n"}, {"c.vb", ""}}, Complete());
  n.Project->OutputFileName.SetFullPath("/out/N.vbproj");
  EXPECT_TRUE(n.Project->WriteOutDotNet());
  EXPECT_EQ(test::FirstDifference(kOdd, n.Files["/out/sub/a.vb"]), "");
  EXPECT_EQ(n.Files["/out/b.vb"], "' nothing\r\n");
  EXPECT_TRUE(n.Files.Has("/out/c.vb"));
  EXPECT_EQ(n.Files["/out/N.vbproj"], n.Files["/n/N.vbproj"]);
}

TEST(NetWriting, UnloadedSourceIsCopied) {
  NetProject n(Sources{{"a.vb", kOdd}}, Complete());
  n.Project->UnloadSourceCode();
  EXPECT_FALSE(n.Project->ProjectFiles.Item(1)->SourceForm);
  EXPECT_EQ(n["R.A"].Blocks.Item("M")->Name(), "M");
  n.Project->OutputFileName.SetFullPath("/out/N.vbproj");
  EXPECT_TRUE(n.Project->WriteOutDotNet());
  EXPECT_EQ(test::FirstDifference(kOdd, n.Files["/out/a.vb"]), "");
}

TEST(NetWriting, WhatIsAmendedIsWrittenAtItsPlace) {
  const std::string source =
      "Class A\n  Sub One()\n  End Sub\n\n  Sub Two()\n  End Sub\nEnd Class\nClass B\nEnd Class\n";
  NetProject n(Sources{{"a.vb", source}}, Complete());
  Component& a = n["R.A"];
  a.AddCode("  Sub Three()\n  End Sub");
  a.Blocks.Item("Two")->CodeLines->SetLineText(1, "  Sub Second()");
  n.Project->OutputFileName.SetFullPath("/out/N.vbproj");
  n.Project->WriteOutDotNet();
  EXPECT_EQ(n.Files["/out/a.vb"],
            "Class A\n  Sub One()\n  End Sub\n\n  Sub Second()\n  End Sub\n  Sub Three()\n"
            "  End Sub\nEnd Class\nClass B\nEnd Class\n");
  for (std::size_t i = a.Blocks.Count(); i > 0; --i)
    if (a.Blocks.Item(i)->Name() == "One") a.Blocks.Remove(i);
  n["R.B"].Name = "Renamed";
  n.Project->WriteOutDotNet();
  EXPECT_EQ(n.Files["/out/a.vb"],
            "Class A\n  Sub Second()\n  End Sub\n  Sub Three()\n  End Sub\nEnd Class\n"
            "Class Renamed\nEnd Class\n");
}

// Members with attributes, documentation, literals and lambdas around those that are amended.
TEST(NetWriting, OddMembersAreAmendedAtTheirPlaces) {
  const std::string first =
      "Imports System ' why\r\n"
      "#Region \"All\"\r\n"
      "<Serializable(),\r\n Obsolete(\"Class X\")>\r\n"
      "Partial Public Class Pair(Of K, V) : Inherits Base(Of K)\r\n"
      "  Private WithEvents a, b As Button\r\n"
      "\r\n"
      "  ''' <summary>Text.</summary>\r\n"
      "  <Obsolete(\"Property\",\r\n            False)>\r\n"
      "  Public Property Two(i As Integer,\r\n                      j As Integer) As String\r\n"
      "    Get\r\n      Return <a>\r\n        End Property\r\n      </a>.Value\r\n    End Get\r\n"
      "    Set(v As String)\r\n    End Set\r\n"
      "  End Property\r\n"
      "  Sub Run() Handles a.Click,\r\n      b.Click\r\n"
      "    Each(Sub(x)\r\n           x()\r\n         End Sub)\r\n"
      "  End Sub\r\n"
      "  Public Property Auto As Integer = 5 ' five\r\n"
      "  Class [Class]\r\n    Public Const C = 1\r\n  End Class\r\n"
      "End Class\r\n"
      "#End Region\r\n";
  const std::string second = "Partial Class Pair(Of K, V)\n  Sub Other()\n  End Sub\nEnd Class";
  NetProject n(Sources{{"a.vb", first}, {"b.vb", second}}, Complete());
  Component& pair = n["R.Pair`2"];
  n.Project->OutputFileName.SetFullPath("/out/N.vbproj");
  n.Project->WriteOutDotNet();
  EXPECT_EQ(n.Files["/out/a.vb"], first);
  EXPECT_EQ(n.Files["/out/b.vb"], second);

  const auto remove = [&](std::string_view name) {
    for (std::size_t i = pair.Blocks.Count(); i > 0; --i)
      if (pair.Blocks.Item(i)->Name() == name) pair.Blocks.Remove(i);
  };
  remove("Run");
  pair.Name = "Couple`2";
  n["R.Pair`2.Class"].Name = "Couple`2.Inner";
  pair.AddCode("  Function Added(Of T)() As T\r\n  End Function");
  n.Project->WriteOutDotNet();
  std::string expected = ReplaceAll(first, "Class Pair(", "Class Couple(");
  expected = ReplaceAll(expected, "Class [Class]", "Class [Inner]");
  const std::size_t at = expected.find("  Sub Run()"),
                    end = expected.find("  Public Property Auto");
  expected.erase(at, end - at);
  EXPECT_EQ(n.Files["/out/a.vb"], expected);
  EXPECT_EQ(n.Files["/out/b.vb"],
            "Partial Class Couple(Of K, V)\n  Sub Other()\n  End Sub\n"
            "  Function Added(Of T)() As T\n  End Function\nEnd Class");

  remove("Two");
  n.Project->WriteOutDotNet();
  const std::size_t attribute = expected.find("  <Obsolete(\"Property");
  expected.erase(attribute, expected.find("  Public Property Auto") - attribute);
  EXPECT_EQ(n.Files["/out/a.vb"], expected);
}

TEST(NetWriting, AsDescribedTheProjectFileIsOneLine) {
  NetProject n(Sources{{"a.vb", "Imports System\r\nClass A\r\nEnd Class\r\n' lost\r\n"}});
  n.Files.Add("/n/a.resx", "r");
  n.Project->OutputFileName.SetFullPath("/out/N.vbproj");
  EXPECT_TRUE(n.Project->WriteOutDotNet());
  EXPECT_EQ(n.Files["/out/a.vb"], "Imports System\r\nClass A\r\nEnd Class\r\n");
  EXPECT_EQ(n.Files["/out/a.resx"], "r");
  const std::string project = n.Files["/out/N.vbproj"];
  EXPECT_TRUE(project.starts_with("<VisualStudioProject>"));
  EXPECT_EQ(project.find("\r\n"), project.size() - 2);
}

TEST(NetWriting, ANestedClassOfANamespaceCannotBeWrittenAsDescribed) {
  NetProject n(Sources{{"a.vb", "Class Outer\n  Class Inner\n  End Class\nEnd Class\n"}});
  n.Project->OutputFileName.SetFullPath("/out/N.vbproj");
  EXPECT_THROW(n.Project->WriteOutDotNet(), VendrelError);
}

TEST(NetWriting, InPlaceThereAreBackups) {
  const auto boxes = test::InstallBoxes();
  NetProject n(Sources{{"a.vb", "Class A\r\nEnd Class\r\n"}});
  const std::string before = n.Files["/n/N.vbproj"];
  n.Project->OutputFileName.SetFullPath("/n/N.vbproj");
  EXPECT_TRUE(n.Project->WriteOutDotNet());
  EXPECT_EQ(n.Files["/n/SourceBackup/a.vb"], "Class A\r\nEnd Class\r\n");
  EXPECT_EQ(n.Files["/n/SourceBackup/N.vbproj"], before);
  EXPECT_EQ(n.Files["/n/N.vbproj.bak"], before);
  n.Project->SetSilent(false);
  n.Files.Add("/n/a.vb", "Class A\r\nEnd Class\r\n", 0444);
  n.Project->WriteOutDotNet();
  n.Files.Add("/n/N.vbproj", before, 0444);
  EXPECT_FALSE(n.Project->WriteOutDotNet());
  EXPECT_EQ(boxes->Said,
            "File read-only|Could not write to the file 'Z:\\n\\a.vb' as the file is read-only.  "
            "Processing will continue, but source code for this file will not be written.|48\n"
            ".vbproj file read-only|Could not write to the .vbproj file at 'Z:\\n\\N.vbproj' as "
            "the file is read-only.  Processing will continue, but source code for this project "
            "will not be written.|48\n");
  MessageService::Install(nullptr);
}

TEST(NetWriting, TwoFilesThatMeetAreToldWherePlacesAreKept) {
  NetProject n(Sources{{"a.vb", "Class A\nEnd Class\n"}, {"../a.vb", "Class B\nEnd Class\n"}},
               Complete());
  n.Project->OutputFileName.SetFullPath("/out/N.vbproj");
  n.Project->WriteOutDotNet();
  EXPECT_EQ(n.Files["/out/a.vb"], "Class A\nEnd Class\n");
  EXPECT_EQ(n.Project->Diagnostics.CountOf(DiagnosticCode::WriteRefused), 1u);
}

// --- Newer project files ------------------------------------------------------------------------

TEST(MSBuild, ItemsConditionsAndPatternsAreRead) {
  const std::string body = "Class C\nEnd Class\n";
  test::MemoryFiles files{
      {"/m/M.vbproj",
       "<Project Sdk='Microsoft.NET.Sdk'>\n<PropertyGroup><RootNamespace>Shop</RootNamespace>"
       "<Kind>b</Kind><OutputType Condition=\" '$(Kind)' == 'B' And !Exists('none.txt') \">Exe"
       "</OutputType><OutputType Condition=\"'$(Kind)' == "
       "'x'\">Library</OutputType></PropertyGroup>\n"
       "<ItemGroup><Compile Remove='old/**' /><Compile Include='../shared/*.vb;gen\\G.vb' "
       "Exclude='../shared/Not.vb' /><Import Include='System.IO' />"
       "<ProjectReference Include='../L/L.vbproj' /></ItemGroup></Project>"},
      {"/m/A.vb", "Class A\nEnd Class\n"},
      {"/m/sub/B.vb", "Class B\nEnd Class\n"},
      {"/m/old/C.vb", body},
      {"/m/bin/C.vb", body},
      {"/m/obj/x/C.vb", body},
      {"/m/gen/G.vb", "Class G\nEnd Class\n"},
      {"/shared/S.vb", "Class S\nEnd Class\n"},
      {"/shared/Not.vb", body},
      {"/L/L.vbproj", "<Project/>"}};
  VBProject project;
  project.Reading = ReadingRules::Complete();
  project.LoadFromCustom("VendrelModel.MSBuildLoader", "/m/M.vbproj");
  EXPECT_EQ(Names(project.ProjectFiles), "A.vb G.vb B.vb S.vb ");
  EXPECT_EQ(project.ProjectType, ptOleExe);
  EXPECT_EQ(project.ProjectName, "M");
  EXPECT_NE(project.Components.Item("Shop.S"), nullptr);
  EXPECT_EQ(ReferencedProjectFiles(project), std::vector<std::string>{"Z:\\L\\L.vbproj"});
  project.OutputFileName.SetFullPath("/out/M.vbproj");
  project.WriteOutDotNet();
  EXPECT_EQ(files["/out/sub/B.vb"], "Class B\nEnd Class\n");
  EXPECT_EQ(files["/out/M.vbproj"], files["/m/M.vbproj"]);
  EXPECT_THROW(project.LoadFromCustom("VendrelModel.MSBuildLoader", "/m/None.vbproj"),
               VendrelError);
}

TEST(MSBuild, ImportsAreTakenWhereTheyStand) {
  const std::string body = "Class C\nEnd Class\n";
  const test::MemoryFiles files{
      {"/m/p/M.vbproj",
       "<Project Sdk='X'><PropertyGroup><Kind>b</Kind></PropertyGroup>"
       "<Import Project='../Shared.props'/><Import Project='gone.props'/>"
       "<Import Project='$(MSBuildToolsPath)\\x.targets'/>"
       "<Choose><When Condition=\"'$(Kind)' == 'x'\"/><When Condition=\"'$(Size)' &gt;= '4.10'\">"
       "<PropertyGroup><RootNamespace>$(Front.Replace('A','B').ToLower())$(Front.Replace('A', 'B'))"
       "</RootNamespace></PropertyGroup></When></Choose>"
       "<PropertyGroup><AssemblyName>$([MSBuild]::Twice('x'))N$([MSBuild]::Twice('x'))"
       "</AssemblyName><StartupObject Condition=\"no sense\">S</StartupObject></PropertyGroup>"
       "</Project>"},
      {"/m/Directory.Build.props",
       "<Project><PropertyGroup><Size>4.10.1</Size></PropertyGroup>"
       "</Project>"},
      {"/m/Shared.props",
       "<Project><Import Project='p/M.vbproj'/><Import Project='Shared.props'/>"
       "<PropertyGroup><Front>A</Front></PropertyGroup>"
       "<ItemGroup><Compile Include='$(MSBuildThisFileDirectory)Other.vb'/></ItemGroup></Project>"},
      {"/m/Other.vb", body}};
  VBProject project;
  project.Reading = ReadingRules::Complete();
  project.LoadFromCustom("VendrelModel.MSBuildLoader", "/m/p/M.vbproj");
  EXPECT_EQ(project.RootNamespace, "bB");
  EXPECT_EQ(project.ProjectName, "N");
  EXPECT_EQ(Names(project.ProjectFiles), "Other.vb ");
  EXPECT_EQ(project.Diagnostics.CountOf(DiagnosticCode::MissingReference), 1u);
  EXPECT_EQ(project.Diagnostics.CountOf(DiagnosticCode::ProjectLineSkipped), 2u);
}

TEST(MSBuild, ASolutionIsAGroup) {
  const test::MemoryFiles files{
      {"/s/S.sln",
       "Microsoft Visual Studio Solution File, Format Version 8.00\r\n"
       "Project(\"{F}\") = \"N\", \"n\\N.vbproj\", \"{1}\"\r\nEndProject\r\n"
       "Project(\"{C}\") = \"C\", \"c\\C.csproj\", \"{2}\"\r\nEndProject\r\n"
       "Project(\"{W}\") = \"Web\", \"http://localhost/n/N.vbproj\", \"{4}\"\r\n"
       "Project(\"{D}\") = \"Docs\", \"Docs\", \"{3}\"\r\nEndProject\r\n"},
      {"/s/n/N.vbproj",
       "<VisualStudioProject><V><Build><Settings RootNamespace='' AssemblyName='Net'/></Build>"
       "</V></VisualStudioProject>"}};
  VBProjectGroup group;
  ASSERT_TRUE(group.Load("/s/S.sln"));
  EXPECT_EQ(Names(group.AllVBProjects()), "Net ");
  EXPECT_EQ(test::Told(group.Diagnostics), "6 project-repeated\n");
}

}  // namespace
}  // namespace vendrel
