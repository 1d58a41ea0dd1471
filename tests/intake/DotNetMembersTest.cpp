// Members of VB.NET types, line by line into one module.

#include <gtest/gtest.h>

#include "core/Ascii.h"
#include "model/Namespace.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::Describe;

// A VB.NET project of one module that takes lines.
struct NetModule {
  explicit NetModule(std::string_view lines, const std::function<void(Component&)>& prepare = {}) {
    Project.SetLanguageVersion(lvVisualBasicDotNet);
    Space.Name = "N";
    auto component = std::make_shared<Component>();
    component->Name = "C";
    component->SetVBProject(&Project);
    component->Namespace = &Space;
    Module = component.get();
    Project.Components.Add(component, "C");
    if (prepare) prepare(*component);
    while (!lines.empty()) component->AddLineOfCode(TakeField(lines, '\n'));
  }
  VBProject Project;
  Namespace Space;
  Component* Module;
};

std::string Blocks(const NetModule& net) {
  std::string text;
  for (const Block& block : net.Module->Blocks)
    if (!block.Name().empty()) text += Describe(block);
  return text;
}

TEST(DotNetMembersTest, ModifiersOfProcedures) {
  const std::pair<const char*, const char*> cases[] = {
      {"Public Sub New()\nEnd Sub\n", " sub PUBLIC _ctor() constructor @0\n"},
      {"Protected Friend Overridable Function F(ByVal x As Integer, y) As String\nEnd Function\n",
       " function PROTECTED FRIEND F(ByVal x As System.Int32, ByVal y As System.Object "
       "implicit) As System.String virtual @0\n"},
      {"Public NotOverridable Overrides Sub S()\nEnd Sub\n", " sub PUBLIC S() sealed @0\n"},
      {"Public MustOverride Sub S(ByRef o As Foo)\n", " sub PUBLIC S(o As Foo) abstract @0\n"},
      {"Private Shadows Shared Function F()\nEnd Function\n",
       " function PRIVATE F() As System.Object shadow @0\n"},
      {"<Obsolete(\"x\")> Public Function F() As Long()\nEnd Function\n",
       " function PUBLIC F() As System.Int64() @0\n"}};
  for (const auto& [lines, tree] : cases) EXPECT_EQ(Blocks(NetModule(lines)), tree) << lines;
  const NetModule shared("Private Shared Sub S() Implements IFoo.S\nEnd Sub\n");
  EXPECT_TRUE(shared.Module->Blocks.Item("S")->IsStatic);
  EXPECT_EQ(shared.Module->Blocks.Item("S")->ImplementsName(), "IFoo.S");
}

TEST(DotNetMembersTest, APropertyStandsForGetAndSet) {
  const std::pair<const char*, const char*> cases[] = {
      {"Public Property P() As Long",
       "C\n property PUBLIC P get set\n unrecognised\n get PUBLIC P() As System.Int64 access=3 "
       "@0\n"},
      {"Public ReadOnly Property P() As Long",
       "C\n property PUBLIC P get\n unrecognised\n get PUBLIC P() As System.Int64 access=2 @0\n"},
      {"Public WriteOnly Property P() As Long",
       "C\n property PUBLIC P get\n unrecognised\n set PUBLIC P() As System.Int64 access=1 @0\n"},
      {"Default Public Property P(ByVal i As Integer) As Long",
       "C default=P\n property PUBLIC P get set\n unrecognised\n"
       " get PUBLIC P(ByVal i As System.Int32) As System.Int64 access=3 @0\n"}};
  for (const auto& [head, tree] : cases) {
    const NetModule net(std::string(head) +
                        "\nGet\nReturn 1\nEnd Get\nSet(ByVal v As Long)\nEnd Set\nEnd Property\n");
    EXPECT_EQ(Describe(*net.Module), tree) << head;
  }
}

TEST(DotNetMembersTest, OverloadsAreCollectedUnderOneMaster) {
  const NetModule net(
      "Public Sub S(ByVal a As Integer)\nEnd Sub\nPublic Sub Other()\nEnd Sub\n"
      "Public Sub S(ByVal a As String)\nEnd Sub\nPublic Sub S()\nEnd Sub\n");
  EXPECT_EQ(Blocks(net),
            " sub PUBLIC Other() @0\n"
            " sub PUBLIC S @0\n"
            "  sub PUBLIC S(Int32)(ByVal a As System.Int32) overloaded @0\n"
            "  sub PUBLIC S(String)(ByVal a As System.String) overloaded @0\n"
            "  sub PUBLIC S()() overloaded @0\n");
  const Component& module = *net.Module;
  EXPECT_EQ(module.Blocks.Item("S(System.String)")->Parameters->Count(), 1u);
  EXPECT_EQ(module.Blocks.Item("s")->OverloadBlocks()->Count(), 3u);
  EXPECT_TRUE(module.Blocks.Item("S")->Implemented);
}

TEST(DotNetMembersTest, FieldsOfAModule) {
  const NetModule net(
      "Protected Friend Shared a As Integer = 5\nPublic WithEvents b As Foo, c\n"
      "Private ReadOnly d As New Bar(1, 2)\nPrivate e(3) As Long\nSub S()\n  Dim x As Integer\nEnd "
      "Sub\n"
      "Public late As Byte\n");
  std::string fields;
  for (const Block& block : net.Module->Blocks)
    for (const Variable& variable : *block.Variables)
      fields += block.Name() + ": " + Describe(variable) + "\n";
  EXPECT_EQ(
      fields,
      ": PROTECTED FRIEND a As System.Int32 static\n: PUBLIC b As Foo\n"
      ": PUBLIC c As System.Object implicit\n: PRIVATE d As Bar\n: PRIVATE e(3) As System.Int64\n"
      "S: PRIVATE x As System.Int32\n: PUBLIC late As System.Byte\n");
  // Behind a complete procedure a field belongs to the declarations.
  EXPECT_TRUE(net.Module->BlockOfType(btDeclarations)->Variables->HasKey("late"));
}

TEST(DotNetMembersTest, EventsHaveDelegatesAndDelegatesAreNoMembers) {
  const NetModule net(
      "Public Event Changed(ByVal x As Integer)\n"
      "Public Delegate Function D(ByVal y As String) As Long\nSub S()\nEnd Sub\n");
  EXPECT_EQ(Blocks(net), " sub PUBLIC S() @0\n");
  std::string delegates;
  for (const Block& block : net.Space.Delegates) delegates += Describe(block);
  EXPECT_EQ(delegates,
            " sub PUBLIC ChangedEventHandler(ByVal x As System.Int32) @0\n"
            " function PUBLIC D(ByVal y As System.String) As System.Int64 @0\n");
  EXPECT_EQ(net.Module->EventDeclarations.Item(1)->DelegateName, "N.ChangedEventHandler");
  EXPECT_TRUE(net.Space.Delegates.Item("D")->IsDelegate());
}

TEST(DotNetMembersTest, InheritsAndImports) {
  const NetModule plain("Inherits Base.Class\n");
  EXPECT_EQ(plain.Module->InheritsFrom, "Base.Class");
  const NetModule interface("Inherits IOne, ITwo\n", [](Component& c) { c.IsInterface = true; });
  EXPECT_EQ(test::Names(interface.Module->Interfaces), "IOne ITwo ");
  EXPECT_EQ(interface.Module->InheritsFrom, "System.Object");
  EXPECT_NO_THROW(NetModule("Imports System.IO\n"));
}

TEST(DotNetMembersTest, TheDebugConstantIsTrue) {
  const NetModule net(
      "#If Debug Then\nDim a\n#Else\nDim b\n#End If\n#If Not Debug Then\nDim c\n#End If\n");
  ASSERT_EQ(net.Module->Blocks.Count(), 1u);
  EXPECT_EQ(test::Names(*net.Module->Blocks.Item(1)->Variables), "a ");
}

}  // namespace
}  // namespace vendrel
