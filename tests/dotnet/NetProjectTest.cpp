#include <gtest/gtest.h>

#include "diagnostics/VendrelError.h"
#include "dotnet/NetProjects.h"
#include "dotnet/Sources.h"

namespace vendrel {
namespace {

using test::Complete;
using test::Names;
using test::NetProject;
using Sources = NetProject::Sources;

TEST(NetProject, SettingsComeFromTheProjectFile) {
  for (const auto& [output, type] :
       {std::pair{"WinExe", ptOleExe}, {"exe", ptOleExe}, {"Library", ptOleDLL}, {"", ptOleDLL}}) {
    NetProject n(Sources(), {}, "Shop",
                 "<Settings AssemblyName=\"Last\" RootNamespace=\"Shop.B\" OutputType=\"" +
                     std::string(output) + "\"/>");
    EXPECT_EQ(n.Project->ProjectType, type) << output;
    EXPECT_EQ(n.Project->RootNamespace, "Shop.B");
    EXPECT_EQ(n.Project->VBNETAssemblyName, "Last");
    EXPECT_EQ(n.Project->VBNETProjectGUID, "{1}");
    EXPECT_EQ(n.Project->ProjectSourceType, ptsVisualBasicProject);
  }
}

TEST(NetProject, WhatTheProjectFileLacksEndsTheLoad) {
  const auto load = [](const std::string& text) -> std::string {
    const test::MemoryFiles files{{"/n/N.vbproj", text}};
    VBProject project;
    try {
      return project.Load("/n/N.vbproj") ? "loaded" : project.LastErrorString;
    } catch (const VendrelError& error) {
      return std::to_string(error.Number());
    }
  };
  const auto inside = [](const std::string& text) {
    return "<VisualStudioProject><V>" + text + "</V></VisualStudioProject>";
  };
  EXPECT_EQ(load("<Other/>"), "loaded");
  EXPECT_EQ(load("<VisualStudioProject/>"), "loaded");
  EXPECT_EQ(load("<VisualStudioProject>"), "5");
  EXPECT_EQ(load("no XML"), "5");
  EXPECT_EQ(load(inside("<Build><Settings AssemblyName='A'/></Build>")), "5");
  EXPECT_EQ(load(inside("<build><SETTINGS rootnamespace='A'/></build>")), "5");
  EXPECT_EQ(load(inside("<Files><Include><File BuildAction='x'/></Include></Files>")), "5");
  EXPECT_EQ(load(inside("<Files><Include><File RelPath='a.vb'/></Include></Files>")), "5");
  EXPECT_EQ(load(inside("<Files><Include><File relpath='a.bmp'/></Include></Files>")), "loaded");
  VBProject missing;
  EXPECT_FALSE(missing.Load("/n/None.vbproj"));
  EXPECT_EQ(missing.LastErrorString, "Passed filename was invalid / did not exist");
}

TEST(NetProject, ReferencedProjectsHaveNames) {
  const auto prepare = Complete();
  NetProject n({}, prepare, "R",
               "<References><Reference Name=\"Tools\" Project=\"{2}\"/>"
               "<Reference Project=\"{3}\"/></References>");
  ASSERT_EQ(n.Project->References.Count(), 2u);
  EXPECT_EQ(n.Project->References.Item(1)->Name(), "Tools");
  EXPECT_EQ(n.Project->References.Item(2)->Name(), "");
  VBProject other;
  other.VBNETProjectGUID = "{3}";
  other.FileName.SetFullPath("Z:\\o\\Other.vbproj");
  TieNetReferences(*n.Project, {n.Project.get(), &other});
  EXPECT_EQ(n.Project->References.Item(1)->ReferencedProject(), nullptr);
  EXPECT_EQ(n.Project->References.Item(2)->ReferencedProject(), &other);
  EXPECT_EQ(n.Project->References.Item(2)->Name(), "Other.vbproj");
}

// What looks like the end of a procedure in a literal, and like a literal in a list of parameters.
TEST(NetProject, LiteralsAndAttributesAreToldApart) {
  NetProject n({{"a.vb",
                 "Class A\n"
                 " Declare Sub P Lib \"k\" (<MarshalAs(1)> ByVal s As String, <Out> r As Long)\n"
                 " Sub B(<Out> a As String,\n"
                 "       <Out()> b As String, <[In]> c As String)\n"
                 "  Dim x =\n"
                 "   <root>\n"
                 "    End Sub\n"
                 "    <%= F(\"</root>\") %> <a b='>'/> <!-- </root> -->\n"
                 "   </root>\n"
                 "  Run(\n"
                 "<![CDATA[Class Q\n"
                 "End Class <a>\n"
                 "]]>.Value, <b c=<%= <d/> %>\n"
                 "End Sub='1'/>)\n"
                 "  Dim y\n"
                 " End Sub\n"
                 " <Obsolete(1,\n  2)> _\n"
                 " Sub C()\n"
                 " End Sub\n"
                 "End Class\n"}},
               Complete());
  Component& a = n["R.A"];
  ASSERT_EQ(a.Declarations.Count(), 1u);
  EXPECT_EQ(a.Declarations.Item(1)->Parameters->Count(), 2u);
  Block* b = a.Blocks.Item("B");
  ASSERT_TRUE(b && a.Blocks.Item("C"));
  EXPECT_EQ(b->Parameters->Count(), 3u);
  EXPECT_EQ(b->Variables->Count(), 2u);
  EXPECT_EQ(b->CodeLines->Count(), 14);
  EXPECT_EQ(a.Blocks.Item("C")->SourceLine(), 19);
  EXPECT_EQ(n.Project->Diagnostics.Count(), 0u);
}

TEST(NetProject, FilesAreThoseOfThePattern) {
  const Sources sources = {
      {"a.vb", "Class A\nEnd Class"}, {"B.VB", "Class B\nEnd Class"}, {"c.resx", ""}};
  EXPECT_EQ(Names(NetProject(sources).Project->ProjectFiles), "a.vb ");
  EXPECT_EQ(Names(NetProject(sources, Complete()).Project->ProjectFiles), "a.vb B.VB ");
}

constexpr const char* kTypes =
    "Imports System.Data\n"
    "'##SUMMARY dropped\n"
    "Public Class Outer\n"
    "  Public Class Inner\n"
    "    Public X As Integer\n"
    "  End Class\n"
    "  Private y As String\n"
    "End Class\n"
    "'##SUMMARY of the colours\n"
    "Namespace A.B\n"
    "  Public Enum Colors As Byte\n"
    "    Red = 1\n"
    "    Blue\n"
    "  End Enum\n"
    "End Namespace\n"
    "'##SUMMARY of the point\n"
    "Structure Point\n"
    "End Structure\n"
    "Module Main\n"
    "  Public Delegate Sub Done()\n"
    "End Module\n";

TEST(NetProject, TypesStandInTheirNamespaces) {
  NetProject n(Sources{{"a.vb", kTypes}});
  EXPECT_EQ(n.Keys(), "r.outer r.outer.inner r.a.b.colors r.point r.main ");
  EXPECT_TRUE(n["R.Outer.Inner"].IsNested);
  EXPECT_EQ(n["R.Outer.Inner"].Name, "Outer.Inner");
  EXPECT_EQ(n["R.Outer.Inner"].FullName(), "R.Outer.Inner");
  EXPECT_EQ(n["R.Main"].FileType, ftModule);
  EXPECT_EQ(n["R.Point"].Access, "PUBLIC");
  EXPECT_EQ(n["R.Outer"].TaggedDescription.str(), "");
  EXPECT_EQ(n["R.Point"].TaggedCommentBuffer->Count(), 1u);  // for the first element that takes it
  const Variables& fields = *n["R.A.B.Colors"].BlockOfType(btDeclarations)->Variables;
  EXPECT_EQ(Names(fields), "Red Blue ");
  EXPECT_EQ(fields.Item("Red")->TypeName, "System.Int32");
  EXPECT_TRUE(fields.Item("Red")->IsStatic);
  EXPECT_EQ(n["R.A.B.Colors"].Enumerations.Count(), 0u);
  const Assembly& assembly = *n.Project->Assembly();
  EXPECT_EQ(Names(assembly.Namespaces), "R R.A.B ");
  EXPECT_EQ(Names(assembly.Namespaces.Item("R")->Classes.Listed()), "Outer Outer.Inner Main ");
  EXPECT_EQ(Names(assembly.Namespaces.Item("R")->Structures.Listed()), "Point ");
  EXPECT_EQ(assembly.Namespaces.Item("R")->QualifiedName(), "N~R_namespace");
  const CodeLines& lines = *n["R.Outer"].Blocks.Item(1)->CodeLines;
  EXPECT_EQ(lines.LinesOfType(NESTED_CLASS_PLACEHOLDER).at(0).StatementPart, "Outer.Inner");
}

TEST(NetProject, WordByWordTypesAreAsWritten) {
  NetProject n(Sources{{"a.vb", kTypes}}, Complete());
  EXPECT_EQ(n.Keys(), "r.outer r.outer.inner r.a.b.colors r.point r.main ");
  EXPECT_EQ(n["R.Point"].Access, "FRIEND");
  EXPECT_EQ(n["R.Outer"].TaggedDescription.str(), "dropped");
  EXPECT_EQ(n["R.Point"].TaggedDescription.str(), "of the point");
  const Variables& fields = *n["R.A.B.Colors"].BlockOfType(btDeclarations)->Variables;
  EXPECT_EQ(fields.Item("Red")->TypeName, "System.Byte");
  EXPECT_EQ(fields.Item("Red")->Value.str(), "1");
  EXPECT_EQ(n["R.Outer"].SourceLine(), 3);
  EXPECT_NE(n.Project->GetObjectFromDotNetName("T:R.Done"), nullptr);
  EXPECT_EQ(n.Project->GetObjectFromDotNetName("T:R.A.B.Colors"), &n["R.A.B.Colors"]);
  EXPECT_EQ(n["R.Outer.Inner"].BlockOfType(btDeclarations)->Variables->Item("X")->SourceLine(), 5);
  EXPECT_EQ(n.Project->ProjectFiles.Item(1)->Imports.at(0), "System.Data");
}

TEST(NetProject, WithoutANamespaceTheKeyBeginsWithADot) {
  const Sources sources = {{"a.vb", "Class C\nEnd Class\n"}};
  EXPECT_EQ(NetProject(sources, {}, "").Keys(), ".c ");
  EXPECT_EQ(NetProject(sources, Complete(), "").Keys(), "c ");
}

TEST(NetProject, PartsOfATypeAreOne) {
  const Sources sources = {
      {"a.vb", "Partial Class C\n  Public A As Integer\n  Sub One()\n  End Sub\nEnd Class\n"},
      {"b.vb", "Class C\n  Public B As Integer\n  Sub Two()\n  End Sub\nEnd Class\n"}};
  NetProject n(sources, Complete());
  EXPECT_EQ(n.Keys(), "r.c ");
  EXPECT_EQ(Names(*n["R.C"].BlockOfType(btDeclarations)->Variables), "A B ");
  EXPECT_NE(n["R.C"].Blocks.Item("Two"), nullptr);
  EXPECT_EQ(n.Project->ProjectFiles.Item(2)->Components.Count(), 1u);
  NetProject classic(sources);
  EXPECT_EQ(classic.Project->Diagnostics.CountOf(DiagnosticCode::DuplicateName), 0u);
  EXPECT_EQ(classic.Keys(), "r.c ");
}

TEST(NetProject, ATypeInAFalseBranchIsLinesOnly) {
  const Sources sources = {{"a.vb",
                            "#Const Old = False\n#If Old Then\nClass A\nEnd Class\n"
                            "#ElseIf MINE Then\nClass B\nEnd Class\n#Else\nClass C\n"
                            "End Class\n#End If\n#End If\nClass D\nEnd Class\n"}};
  const std::string settings =
      "<Settings AssemblyName=\"N\" RootNamespace=\"R\"><Config Name=\"Release\"/>"
      "<Config Name=\"Debug\" DefineConstants=\"MINE=True\"/></Settings>";
  NetProject n(sources, Complete(), "R", settings);
  EXPECT_EQ(n.Keys(), "r.b r.d ");
  EXPECT_EQ(n.Project->Diagnostics.CountOf(DiagnosticCode::UnbalancedDirective), 1u);
  NetProject release(
      sources,
      [](VBProject& project) {
        project.Reading = ReadingRules::Complete();
        project.Configuration = "release";
      },
      "R", settings);
  EXPECT_EQ(release.Keys(), "r.c r.d ");
}

TEST(NetProject, AFileThatIsMissingIsTold) {
  test::MemoryFiles files{{"/n/N.vbproj",
                           "<VisualStudioProject><V><Build><Settings RootNamespace='R' "
                           "AssemblyName='N'/></Build><Files><Include><File RelPath='x.vb' "
                           "BuildAction='Compile'/><File RelPath='y.vb' BuildAction='Compile'/>"
                           "</Include></Files></V></VisualStudioProject>"},
                          {"/n/y.vb", "Class Y\nEnd Class\n"}};
  VBProject project;
  EXPECT_TRUE(project.Load("/n/N.vbproj"));
  EXPECT_EQ(project.Components.Count(), 1u);
  EXPECT_EQ(project.Diagnostics.CountOf(DiagnosticCode::MissingModule), 1u);
}

// --- Names and inheritance ----------------------------------------------------------------------

TEST(NetTypes, NamesBecomeWhole) {
  const Sources sources = {
      {"a.vb",
       "Namespace N\n  Class Store\n    Class Node\n    End Class\n    Public F As Node\n"
       "    Public G As Store\n    Public H As System.Text\n    Public I As Unknown\n"
       "    Function Find(k As Store) As Node\n    End Function\n"
       "    Event Done()\n  End Class\nEnd Namespace\n"}};
  for (const bool whole : {false, true}) {
    NetProject n(sources, whole ? Complete() : test::Prepare());
    n.Resolve();
    Component& store = n["R.N.Store"];
    const Variables& fields = *store.BlockOfType(btDeclarations)->Variables;
    EXPECT_EQ(fields.Item("F")->TypeName, "R.N.Store.Node");
    EXPECT_EQ(fields.Item("G")->TypeName, "R.N.Store");
    EXPECT_EQ(fields.Item("H")->TypeName, "System.Text");
    EXPECT_EQ(fields.Item("I")->TypeName, "Unknown");
    EXPECT_EQ(store.Blocks.Item("Find")->ReturnType, "R.N.Store.Node");
    EXPECT_EQ(store.Blocks.Item("Find")->Parameters->Item(1)->VariableType, "R.N.Store");
  }
}

TEST(NetTypes, EveryScopeIsLookedAt) {
  NetProject n(
      Sources{{"a.vb",
               "Imports P = R.Other\nImports R.Third\nNamespace N\n Class Outer\n  Class X\n"
               "  End Class\n  Class Y\n   Public A As X\n   Public B As P.Thing\n"
               "   Public C As Last\n   Public D As UInteger\n   Public E As List(Of X)\n"
               "   Public F As Integer?\n  End Class\n End Class\nEnd Namespace\n"
               "Namespace Other\n Class Thing\n End Class\nEnd Namespace\n"
               "Class Store(Of T)\n Sub Keep()\n End Sub\nEnd Class\n"
               "Class Own\n Inherits Store(Of Integer)\nEnd Class\n"
               "Namespace Third\n Class Last\n End Class\nEnd Namespace\n"}},
      Complete());
  n.Resolve();
  const Variables& fields = *n["R.N.Outer.Y"].BlockOfType(btDeclarations)->Variables;
  const auto type = [&](const char* name) { return fields.Item(name)->TypeName.str(); };
  EXPECT_EQ(type("A"), "R.N.Outer.X");
  EXPECT_EQ(type("B"), "R.Other.Thing");
  EXPECT_EQ(type("C"), "R.Third.Last");
  EXPECT_EQ(type("D"), "System.UInt32");
  EXPECT_EQ(n["R.Own"].InheritsFrom, "R.Store{System.Int32}");
  EXPECT_EQ(n["R.Own"].ClassHierarchy, "R.Own,R.Store`1,System.Object");
  EXPECT_NE(n["R.Own"].Blocks.Item("Keep"), nullptr);
}

TEST(NetTypes, MembersAreInherited) {
  const Sources sources = {{"a.vb",
                            "Class C\n Inherits B\nEnd Class\n"
                            "Class B\n Inherits A\n Overrides Sub Run()\n End Sub\n"
                            " Sub New()\n End Sub\nEnd Class\n"
                            "Class A\n Overridable Sub Run()\n End Sub\n Sub Stay()\n"
                            " End Sub\n Private Sub Own()\n End Sub\n"
                            " Public F As String\n Sub New()\n End Sub\nEnd Class\n"
                            "Class Ring\n Inherits Ring\nEnd Class\n"
                            "Structure S\n Public X As Integer\nEnd Structure\n"}};
  NetProject classic(sources);
  classic.Resolve();
  EXPECT_EQ(classic["R.Ring"].InheritsFrom, "System.Object");
  EXPECT_EQ(classic["R.S"].ClassHierarchy, "R.S,System.ValueType,System.Object");
  Block& run = *classic["R.B"].Blocks.Item("Run");
  EXPECT_TRUE(run.Implemented);
  EXPECT_EQ(run.InheritedFrom(), "R.A");
  Block& stay = *classic["R.B"].Blocks.Item("Stay");
  EXPECT_FALSE(stay.Implemented);
  EXPECT_EQ(stay.InheritedFrom(), "R.A");
  EXPECT_EQ(classic["R.B"].Blocks.Item("_ctor")->InheritedFrom(), "");
  EXPECT_EQ(classic["R.C"].Blocks.Item("Stay"), nullptr);  // its base had not got it yet
  EXPECT_EQ(classic["R.B"].BlockOfType(btDeclarations)->Variables->Item("F")->InheritedFrom, "R.A");

  NetProject whole(sources, Complete());
  whole.Resolve();
  EXPECT_EQ(whole["R.C"].ClassHierarchy, "R.C,R.B,R.A,System.Object");
  EXPECT_EQ(whole["R.C"].Blocks.Item("Stay")->InheritedFrom(), "R.A");
  EXPECT_EQ(whole["R.C"].Blocks.Item("Run")->InheritedFrom(), "R.B");
  EXPECT_EQ(whole["R.C"].Blocks.Item("Own"), nullptr);
  EXPECT_EQ(whole["R.C"].Blocks.Item("_ctor"), nullptr);
}

}  // namespace
}  // namespace vendrel
