// Names of elements, there and back.

#include "names/Names.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "names/NameWalk.h"
#include "project/VBProjectGroup.h"
#include "support/MemoryFiles.h"

namespace vendrel {
namespace {

using test::MemoryFiles;

constexpr const char* kProject =
    "Type=Exe\r\nForm=F.frm\r\nClass=M; M.cls\r\nModule=D; D.bas\r\nName=\"P\"\r\n";
constexpr const char* kClass =
    "VERSION 1.0 CLASS\r\n"
    "Attribute VB_Name = \"M\"\r\n"
    "Option Explicit\r\n"
    "Implements IShape\r\n"
    "Public Event Moved(ByVal By As Long)\r\n"
    "Public Enum Colour\r\n"
    "  Red = 1\r\n"
    "  Blue\r\n"
    "End Enum\r\n"
    "Private Type Pair\r\n"
    "  First As Long\r\n"
    "End Type\r\n"
    "Private Const Limit = 5\r\n"
    "Private x As Long\r\n"
    "\r\n"
    "Public Property Get Size(Optional ByVal Unit As Long) As Long\r\n"
    "  Dim result As Long\r\n"
    "End Property\r\n"
    "Public Property Let Size(Optional ByVal Unit As Long, ByVal value As Long)\r\n"
    "  Dim result As Long\r\n"
    "End Property\r\n"
    "Public Sub Walk(ByVal Steps As Long)\r\n"
    "  Const Pace = 2\r\n"
    "  Dim i As Long\r\n"
    "End Sub\r\n"
    "Public Sub Paint_I(ByVal c As Long)\r\n"
    "End Sub\r\n";
constexpr const char* kForm =
    "VERSION 5.00\r\n"
    "Begin VB.Form F\r\n"
    "  Caption = \"f\"\r\n"
    "  Begin VB.Frame Box\r\n"
    "    Begin VB.CommandButton cmd\r\n"
    "      Index = 0\r\n"
    "    End\r\n"
    "    Begin VB.CommandButton cmd\r\n"
    "      Index = 1\r\n"
    "    End\r\n"
    "  End\r\n"
    "End\r\n"
    "Attribute VB_Name = \"F\"\r\n";
constexpr const char* kModule =
    "Attribute VB_Name = \"D\"\r\n"
    "Public Declare Function GetIt Lib \"user32\" (ByVal h As Long) As Long\r\n"
    "Public Total As Long\r\n";

class NamesTest : public testing::Test {
 protected:
  void Load(const ReadingRules& reading) {
    mProject.Reading = reading;
    ASSERT_TRUE(mProject.Load("/p/P.vbp"));
    mProject.Components.Populate();
  }
  /// Class and qualified name of what is found.
  std::string Find(std::string_view name) {
    const CodeElement* found = mProject.GetObjectByName(name);
    if (!found) return "-";
    return std::string(found->ClassName()) + " " + found->QualifiedName();
  }

  MemoryFiles mFiles{
      {"/p/P.vbp", kProject}, {"/p/M.cls", kClass}, {"/p/F.frm", kForm}, {"/p/D.bas", kModule}};
  VBProject mProject;
};

TEST_F(NamesTest, WhatANameFindsInTheClassicReading) {
  Load(ReadingRules::Classic());
  const std::pair<const char*, const char*> names[] = {
      {"P", "VBProject P"},
      {"p", "VBProject P"},
      {"Q", "-"},
      {"", "-"},
      {"P~M", "Component P~M"},
      {"P~m", "Component P~M"},
      {"P~Nothing", "-"},
      {"P~M~Walk", "Block P~M~Walk"},
      {"P~M~Walk:Steps", "Parameter P~M~Walk:Steps"},
      {"P~M~Size", "Block P~M~Size"},
      {"P~M~Size:Unit", "Parameter P~M~Size:Unit"},
      {"P~M~Size:value", "-"},
      {"P~M~Size_PL:value", "Parameter P~M~Size:value"},
      {"P~M~size_PG", "Block P~M~Size"},
      {"P~M~Size_PS", "-"},
      {"P~M~Size_pl", "-"},
      {"P~M~x", "Variable P~M~x"},
      {"P~M~x:any", "Variable P~M~x"},
      {"P~M~Limit", "-"},
      {"P~M~Moved_EV", "EventDeclaration P~M~Moved_EV"},
      {"P~M~Moved_EV:By", "Parameter P~M~Moved_EV:By"},
      {"P~M~Colour_EN", "Enumeration P~M~Colour_EN"},
      {"P~M~Colour_EN:Blue", "EnumMember P~M~Colour_EN:Blue"},
      {"P~M~Pair_UT:First", "Variable P~M~Pair_UT:First"},
      {"P~M~IShape_I", "Interface P~M~IShape_I"},
      {"P~M~Paint_I", "-"},  // taken for an interface
      {"P~M~Walk~i", "-"},
      {"P~F~Box", "-"},
      {"P~user32.dll_LIB", "-"},
      {"P~M~Walk~i~j", "-"}};
  for (const auto& [name, expected] : names) EXPECT_EQ(Find(name), expected) << name;
}

TEST_F(NamesTest, WhatANameFindsMoreInTheCompleteReading) {
  Load(ReadingRules::Complete());
  const std::pair<const char*, const char*> names[] = {
      {"P~M~Size:value", "Parameter P~M~Size:value"},
      {"P~M~Limit", "Constant P~M~Limit"},
      {"P~M~Paint_I", "Block P~M~Paint_I"},
      {"P~M~Paint_I:c", "Parameter P~M~Paint_I:c"},
      {"P~M~IShape_I", "Interface P~M~IShape_I"},
      {"P~M~Walk~i", "Variable P~M~Walk~i"},
      {"P~M~Walk~Pace", "Constant P~M~Walk~Pace"},
      {"P~M~Walk~no", "-"},
      {"P~M~Size~result", "Variable P~M~Size_PG~result"},
      {"P~M~Size_PL~result", "Variable P~M~Size_PL~result"},
      {"P~F~F", "VBControl P~F~F"},
      {"P~F~Box", "VBControl P~F~Box"},
      {"P~F~cmd(1)", "VBControl P~F~cmd(1)"},
      {"P~user32.dll_LIB", "Library P~user32.dll_LIB"},
      {"P~user32.dll_LIB~GetIt_DEC", "DeclareDeclaration P~user32.dll_LIB~GetIt_DEC"},
      {"P~user32.dll_LIB~GetIt_DEC:h", "Parameter P~user32.dll_LIB~GetIt_DEC:h"},
      {"P~user32.dll_LIB~GetIt", "-"}};
  for (const auto& [name, expected] : names) EXPECT_EQ(Find(name), expected) << name;
}

TEST_F(NamesTest, TheConsolidatedBlockStandsForAProperty) {
  Load(ReadingRules::Classic());
  Component& component = *mProject.Components.Item("M");
  EXPECT_EQ(mProject.GetObjectByName("P~M~Size"),
            component.ConsolidatedPropertyBlock("Size", true));
  const auto* let = dynamic_cast<Block*>(mProject.GetObjectByName("P~M~Size_PL"));
  ASSERT_TRUE(let);
  EXPECT_EQ(let->BlockType(), btPropertyLet);
  EXPECT_EQ(component.PropertyGroups.Item("Size")->QualifiedName(), "P~M~Size");
}

TEST_F(NamesTest, TheMainObjectOfAMemberIsItsProcedureOrEvent) {
  Load(ReadingRules::Classic());
  const auto main = [&](std::string_view name) {
    const CodeElement* found = mProject.GetObjectByName_MainObject(name);
    return found ? found->QualifiedName() : "-";
  };
  EXPECT_EQ(main("P~M~Walk:Steps"), "P~M~Walk");
  EXPECT_EQ(main("P~M~Moved_EV:By"), "P~M~Moved_EV");
  EXPECT_EQ(main("P~M~Walk"), "P~M~Walk");
  EXPECT_EQ(mProject.GetComponentByName("M"), nullptr);
}

TEST_F(NamesTest, NamesOfOtherProjectsAreFoundThroughTheGroup) {
  mFiles.Add("/p/O.vbp", "Type=Exe\r\nModule=D; D.bas\r\nName=\"O\"\r\n");
  mFiles.Add("/p/G.vbg", "Project=P.vbp\r\nProject=O.vbp\r\n");
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
  const auto block = std::make_shared<Block>();
  block->SetName("Handler");
  block->SetIsDelegate(true);
  block->SetNamespace(&space);
  block->SetVBProject(&project);
  block->Component = delegates.get();
  delegates->Blocks.Add(block);
  EXPECT_EQ(block->QualifiedName(), "P~A.B.Handler");
  EXPECT_EQ(project.GetObjectByName("P~A.B.Handler"), block.get());
  EXPECT_EQ(project.GetObjectByName("P~A.B.Handler_Delegate"), block.get());
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
