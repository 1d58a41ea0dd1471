// Names of elements, there and back.

#include "names/NameLookup.h"

#include <gtest/gtest.h>

#include "model/Building.h"
#include "model/Namespace.h"
#include "project/VBProjectGroup.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

const test::TestProject::Modules kModules = {
    {"F.frm",
     "VERSION 5.00\n"
     "Begin VB.Form F\n"
     "  Begin VB.Frame Box\n"
     "    Begin VB.CommandButton cmd\n      Index = 0\n    End\n"
     "    Begin VB.CommandButton cmd\n      Index = 1\n    End\n"
     "  End\n"
     "End\n"
     "Attribute VB_Name = \"F\"\n"},
    {"M.cls",
     "Option Explicit\n"
     "Implements IShape\n"
     "Public Event Moved(ByVal By As Long)\n"
     "Public Enum Colour\n  Red = 1\n  Blue\nEnd Enum\n"
     "Private Type Pair\n  First As Long\nEnd Type\n"
     "Private Const Limit = 5\n"
     "Private x As Long\n"
     "Public Property Get Size(Optional ByVal Unit As Long) As Long\n"
     "  Dim result As Long\nEnd Property\n"
     "Public Property Let Size(Optional ByVal Unit As Long, ByVal value As Long)\n"
     "  Dim result As Long\nEnd Property\n"
     "Public Sub Walk(ByVal Steps As Long)\n  Const Pace = 2\n  Dim i As Long\nEnd Sub\n"
     "Public Sub Paint_I(ByVal c As Long)\nEnd Sub\n"},
    {"D.bas",
     "Public Declare Function GetIt Lib \"user32\" (ByVal h As Long) As Long\n"
     "Public Total As Long\n"}};

// A project of these modules, loaded.
struct Loaded : test::TestProject {
  explicit Loaded(const test::Prepare& prepare = {}) : TestProject(kModules, prepare) {
    Project->Components.Populate();
  }
  // Class and qualified name of what is found.
  std::string Find(std::string_view name) {
    const CodeElement* found = Project->GetObjectByName(name);
    if (!found) return "-";
    return std::string(found->ClassName()) + " " + found->QualifiedName();
  }
};

TEST(NamesTest, WhatANameFindsInEitherReading) {
  const char* const kSame = "the same";
  const struct {
    const char *Name, *Classic, *Complete;
  } cases[] = {{"P", "VBProject P", kSame},
               {"p", "VBProject P", kSame},
               {"Q", "-", kSame},
               {"", "-", kSame},
               {"P~M", "Component P~M", kSame},
               {"P~m", "Component P~M", kSame},
               {"P~Nothing", "-", kSame},
               {"P~M~Walk", "Block P~M~Walk", kSame},
               {"P~M~Walk:Steps", "Parameter P~M~Walk:Steps", kSame},
               {"P~M~Walk~i", "-", "Variable P~M~Walk~i"},
               {"P~M~Walk~Pace", "-", "Constant P~M~Walk~Pace"},
               {"P~M~Walk~no", "-", kSame},
               {"P~M~Walk~i~j", "-", kSame},
               {"P~M~Size", "Block P~M~Size", kSame},
               {"P~M~Size:Unit", "Parameter P~M~Size:Unit", kSame},
               {"P~M~Size:value", "-", "Parameter P~M~Size:value"},
               {"P~M~Size~result", "-", "Variable P~M~Size_PG~result"},
               {"P~M~Size_PL:value", "Parameter P~M~Size:value", kSame},
               {"P~M~Size_PL~result", "-", "Variable P~M~Size_PL~result"},
               {"P~M~size_PG", "Block P~M~Size", kSame},
               {"P~M~Size_PS", "-", kSame},
               {"P~M~Size_pl", "-", kSame},
               {"P~M~x", "Variable P~M~x", kSame},
               {"P~M~x:any", "Variable P~M~x", kSame},
               {"P~M~Limit", "-", "Constant P~M~Limit"},
               {"P~M~Moved_EV", "EventDeclaration P~M~Moved_EV", kSame},
               {"P~M~Moved_EV:By", "Parameter P~M~Moved_EV:By", kSame},
               {"P~M~Colour_EN", "Enumeration P~M~Colour_EN", kSame},
               {"P~M~Colour_EN:Blue", "EnumMember P~M~Colour_EN:Blue", kSame},
               {"P~M~Pair_UT:First", "Variable P~M~Pair_UT:First", kSame},
               {"P~M~IShape_I", "Interface P~M~IShape_I", kSame},
               {"P~M~Paint_I", "-", "Block P~M~Paint_I"},  // taken for an interface
               {"P~M~Paint_I:c", "-", "Parameter P~M~Paint_I:c"},
               {"P~F~F", "-", "VBControl P~F~F"},
               {"P~F~Box", "-", "VBControl P~F~Box"},
               {"P~F~cmd(1)", "-", "VBControl P~F~cmd(1)"},
               {"P~user32.dll_LIB", "-", "Library P~user32.dll_LIB"},
               {"P~user32.dll_LIB~GetIt", "-", kSame},
               {"P~user32.dll_LIB~GetIt_DEC", "-", "DeclareDeclaration P~user32.dll_LIB~GetIt_DEC"},
               {"P~user32.dll_LIB~GetIt_DEC:h", "-", "Parameter P~user32.dll_LIB~GetIt_DEC:h"}};
  Loaded classic;
  for (const auto& c : cases) EXPECT_EQ(classic.Find(c.Name), c.Classic) << c.Name;
  Loaded complete(test::Complete());
  for (const auto& c : cases)
    EXPECT_EQ(complete.Find(c.Name), c.Complete == kSame ? c.Classic : c.Complete) << c.Name;
}

TEST(NamesTest, TheConsolidatedBlockStandsForAProperty) {
  Loaded loaded;
  Component& component = loaded.Module("M");
  EXPECT_EQ(loaded.Project->GetObjectByName("P~M~Size"),
            component.ConsolidatedPropertyBlock("Size", true));
  const auto* let = dynamic_cast<Block*>(loaded.Project->GetObjectByName("P~M~Size_PL"));
  ASSERT_TRUE(let);
  EXPECT_EQ(let->BlockType(), btPropertyLet);
  EXPECT_EQ(component.PropertyGroups.Item("Size")->QualifiedName(), "P~M~Size");
}

TEST(NamesTest, TheMainObjectOfAMemberIsItsProcedureOrEvent) {
  Loaded loaded;
  for (const auto& [name, main] : std::initializer_list<std::pair<const char*, const char*>>{
           {"P~M~Walk:Steps", "P~M~Walk"},
           {"P~M~Moved_EV:By", "P~M~Moved_EV"},
           {"P~M~Walk", "P~M~Walk"}}) {
    const CodeElement* found = loaded.Project->GetObjectByName_MainObject(name);
    ASSERT_TRUE(found) << name;
    EXPECT_EQ(found->QualifiedName(), main);
  }
  EXPECT_EQ(loaded.Project->GetComponentByName("M"), nullptr);
}

TEST(NamesTest, NamesOfOtherProjectsAreFoundThroughTheGroup) {
  Loaded loaded;
  loaded.Files.Add("/p/O.vbp", "Type=Exe\r\nModule=D; D.bas\r\nName=\"O\"\r\n");
  loaded.Files.Add("/p/G.vbg", "Project=P.vbp\r\nProject=O.vbp\r\n");
  VBProjectGroup group;
  ASSERT_TRUE(group.Load("/p/G.vbg"));
  VBProject& project = *group.VBProjects().Item("P");
  for (VBProject& member : group.VBProjects()) member.Components.Populate();
  EXPECT_EQ(project.GetObjectByName("O"), group.VBProjects().Item("O"));
  const CodeElement* found = project.GetObjectByName("O~D~Total");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->QualifiedName(), "O~D~Total");
  group.AllVBProjects().Item("O")->IncludeFlag = false;
  EXPECT_EQ(project.GetObjectByName("O~D~Total"), nullptr);
}

TEST(NameFormTest, TypeLibrariesAndDelegatesHaveModulesOfTheirOwn) {
  VBProject project;
  project.ProjectName = "P";
  const auto add = [&](const char* name) {
    const auto component = std::make_shared<Component>();
    component->SetVBProject(&project);
    component->Name = name;
    project.Components.Add(component, name);
    return component;
  };
  const auto free = add("Enumerations");
  const auto enumeration = std::make_shared<Enumeration>();
  enumeration->Name = "Colour";
  enumeration->Component = free.get();
  free->Enumerations.Add(enumeration, "Colour");
  EXPECT_EQ(project.GetObjectByName("P~colour"), enumeration.get());

  Namespace space;
  space.Name = "A.B";
  const auto delegates = add("__Delegates");
  Block* block = test::AddBlock(*delegates, btSub, "Handler");
  block->SetIsDelegate(true);
  block->SetNamespace(&space);
  EXPECT_EQ(block->QualifiedName(), "P~A.B.Handler");
  EXPECT_EQ(project.GetObjectByName("P~A.B.Handler"), block);
  EXPECT_EQ(project.GetObjectByName("P~A.B.Handler_Delegate"), block);
  Parameter* parameter = block->netCreateParameter("sender", "System.Object", "", false);
  EXPECT_EQ(project.GetObjectByName("P~A.B.Handler:sender"), parameter);

  Component inside;
  inside.SetVBProject(&project);
  inside.Name = "Foo";
  inside.Namespace = &space;
  EXPECT_EQ(inside.QualifiedName(), "P~A.B.Foo");
}

TEST(NameFormTest, NamesAsTheyAreShown) {
  Namespace outer, inner, other;
  outer.Name = "A";
  inner.Name = "A.B";
  other.Name = "C";
  Component first, second;
  first.Name = "First";
  second.Name = "N.Second";
  Block block;
  block.SetName("Run");
  block.Component = &first;
  EXPECT_EQ(FullName(&block), "First.Run");
  EXPECT_EQ(FullName(&first), "First");
  EXPECT_EQ(SmartName(&block, &second), "Run");
  first.Namespace = &inner;
  block.SetNamespace(&inner);
  second.Namespace = &outer;
  EXPECT_EQ(GetObjectNamespace(&block), "A.B");
  EXPECT_EQ(SmartName(&block, &second), "Run");
  EXPECT_EQ(SmartName(&second, &block), "Second");
  second.Namespace = &other;
  EXPECT_EQ(SmartName(&block, &second), "First.Run");
  Parameter parameter;
  parameter.SetName("p");
  parameter.Parent = &block;
  EXPECT_EQ(GetObjectNamespace(&parameter), "A.B");
  EXPECT_EQ(SmartName(nullptr, &block), "");
  EXPECT_EQ(GetObjectNamespace(nullptr), "");
}

}  // namespace
}  // namespace vendrel
