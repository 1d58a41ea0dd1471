#include <gtest/gtest.h>

#include "project/VBProjectGroup.h"
#include "support/Projects.h"
#include "support/Raised.h"

namespace vendrel {
namespace {

using test::MemoryFiles;

constexpr const char* kTypes =
    "Public Type Pair\r\n  a As Long\r\nEnd Type\r\n"
    "Private Type Hidden\r\n  a As Long\r\nEnd Type\r\n"
    "Public Enum Colour\r\n  Red\r\nEnd Enum\r\n";

std::string Module(const std::string& name, const std::string& body) {
  return "Attribute VB_Name = \"" + name + "\"\r\n" + body;
}

class TypeResolutionTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(mGroup.Load("/g/G.vbg"));
    for (VBProject& project : mGroup.VBProjects()) {
      project.SetDoNotPopulateComponents(false);
      project.Components.Populate();
    }
    mGroup.VBProjects().CementReferences();
    mProject = mGroup.VBProjects().Item("P");
    ASSERT_TRUE(mProject);
  }
  /// Class number and qualified name of what `name` means in a module of P (or in none).
  std::string Resolve(std::string_view name, std::string_view module = {}) {
    TypeClassEnum typeClass = tcUnresolved;
    Component* component = module.empty() ? nullptr : mProject->Components.Item(module);
    const CodeElement* found = mProject->ResolveType(component, name, typeClass);
    return std::to_string(typeClass) + (found ? " " + found->QualifiedName() : "");
  }

  MemoryFiles mFiles{
      {"/g/G.vbg", "Project=P.vbp\r\nProject=L1.vbp\r\nProject=L2.vbp\r\n"},
      {"/g/P.vbp",
       "Type=Exe\r\nReference=*\\AL1.vbp\r\nReference=*\\AL2.vbp\r\nModule=M; M.bas\r\n"
       "Module=T; T.bas\r\nModule=U; U.bas\r\nName=\"P\"\r\n"},
      {"/g/M.bas", Module("M",
                          "Public Type Pair\r\n  b As Long\r\nEnd Type\r\n"
                          "Public Total As Long\r\nPrivate Own As Long\r\n"
                          "Public Sub Run(ByVal p As Pair)\r\nEnd Sub\r\n")},
      {"/g/T.bas", Module("T", kTypes)},
      {"/g/U.bas", Module("U", "Public Other As Hidden\r\nPrivate Sub Stay()\r\nEnd Sub\r\n")},
      {"/g/L1.vbp",
       "Type=OleDll\r\nClass=Customer; C1.cls\r\nModule=Types; X1.bas\r\nName=\"L1\"\r\n"},
      {"/g/C1.cls", "VERSION 1.0 CLASS\r\n" +
                        Module("Customer", "Attribute VB_Exposed = True\r\nPublic x As Long\r\n")},
      {"/g/X1.bas", Module("Types", "Public Enum Far\r\n  One\r\nEnd Enum\r\n")},
      {"/g/L2.vbp", "Type=OleDll\r\nClass=Customer; C2.cls\r\nName=\"L2\"\r\n"},
      {"/g/C2.cls",
       "VERSION 1.0 CLASS\r\n" +
           Module(
               "Customer",
               "Attribute VB_Exposed = True\r\nPublic Type Deep\r\n  d As Long\r\nEnd Type\r\n")}};
  VBProjectGroup mGroup;
  VBProject* mProject = nullptr;
};

TEST_F(TypeResolutionTest, ATypeNameIsSoughtFromNearToFar) {
  struct Case {
    const char* Name;
    const char* Module;
    const char* Expected;
  };
  const Case cases[] = {{"  long ", "M", "9"},
                        {"Control", "", "9"},
                        {"P.Long", "M", "0"},
                        {"M", "T", "1 P~M"},
                        {"Pair", "M", "6 P~M~Pair_UT"},
                        {"pair", "T", "6 P~T~Pair_UT"},
                        {"Pair", "U", "7 P~M~Pair_UT"},  // the module loaded first owns the name
                        {"Pair", "", "7 P~M~Pair_UT"},
                        {"Colour", "T", "3 P~T~Colour_EN"},
                        {"Colour", "M", "4 P~T~Colour_EN"},
                        {"Hidden", "M", "7 P~T~Hidden_UT"},
                        {"Customer", "M", "2 L2~Customer"},  // the last reference wins
                        {"Far", "M", "5 L1~Types~Far_EN"},
                        {"Deep", "M", "8 L2~Customer~Deep_UT"},
                        {"P.Pair", "M", "6 P~M~Pair_UT"},
                        {"p.Pair", "U", "7 P~M~Pair_UT"},
                        {"L1.Customer", "M", "2 L1~Customer"},
                        {"L1.Customer", "", "0"},
                        {"L1.Pair", "M", "0"},
                        {"Unknown.Customer", "M", "0"},
                        {"Nowhere", "M", "0"},
                        {"", "M", "0"}};
  for (const Case& c : cases)
    EXPECT_EQ(Resolve(c.Name, c.Module), c.Expected) << c.Name << " in " << c.Module;
}

TEST_F(TypeResolutionTest, WithoutAGroupADottedNameIsNotCut) {
  mProject->SetVBProjectGroup(nullptr);
  EXPECT_EQ(Resolve("P.Pair", "M"), "0");
  EXPECT_EQ(Resolve("Customer", "M"), "2 L2~Customer");
}

TEST_F(TypeResolutionTest, ATypeLibraryLooksInTheOtherProjectsOfItsGroup) {
  mProject->WasReadFromTypeLibrary = true;
  for (Reference& reference : mProject->References) reference.SetReferencedProject(nullptr);
  EXPECT_EQ(Resolve("Customer", "M"), "2 L2~Customer");
  EXPECT_EQ(Resolve("Far", "M"), "5 L1~Types~Far_EN");
}

TEST_F(TypeResolutionTest, PrivateTypesOfOtherModulesAreNotFound) {
  Component* m = mProject->Components.Item("M");
  Component* t = mProject->Components.Item("T");
  EXPECT_EQ(mProject->FindUDT("Hidden", m), nullptr);
  EXPECT_EQ(mProject->FindUDT("Hidden", t), t->UDTs.Item("Hidden"));
  EXPECT_EQ(mProject->FindUDT("Pair", t), t->UDTs.Item("Pair"));
  EXPECT_EQ(mProject->FindUDT("Colour", t), nullptr);
  EXPECT_EQ(mProject->FindEnum("colour", m), t->Enumerations.Item("Colour"));
  EXPECT_EQ(mProject->FindEnum("Pair", m), nullptr);
  const Variable* other = dynamic_cast<Variable*>(mProject->GetObjectByName("P~U~Other"));
  ASSERT_TRUE(other);
  EXPECT_FALSE(other->IsUDT(mProject->Components.Item("U")));
  EXPECT_TRUE(other->IsUDT(t));
  const Block* run = m->Blocks.Item("Run");
  EXPECT_TRUE(run->Parameters->Item("p")->IsUDT(m));
}

TEST_F(TypeResolutionTest, ACachedElementThatHasGoneRaises9) {
  mProject->Components.Item("T")->Enumerations.Clear();
  EXPECT_EQ(test::Raised([&] { Resolve("Colour", "M"); }), errSubscript);
}

TEST_F(TypeResolutionTest, VisibleModulesAreThoseOfTheProjectAndPublicOnesOfTheGroup) {
  Components& visible = mProject->AllVisibleComponents();
  EXPECT_EQ(visible.Item("M"), mProject->Components.Item("M"));
  EXPECT_EQ(visible.Item("P.M"), visible.Item("M"));
  EXPECT_EQ(visible.Item("Customer")->QualifiedName(),
            "L1~Customer");  // the first one keeps the name
  EXPECT_EQ(visible.Item("L1.Customer"), visible.Item("Customer"));
  EXPECT_EQ(visible.Item("Types"), nullptr);
  EXPECT_EQ(visible.Count(), 8u);
  EXPECT_EQ(&mProject->AllVisibleComponents(), &visible);
}

TEST_F(TypeResolutionTest, GlobalsAreThoseOfStandardModules) {
  EXPECT_EQ(test::Names(*mProject->GlobalVariables()), "Total Other ");
  EXPECT_EQ(test::Names(*mProject->GlobalBlocks()), "Run Stay ");
  // The blocks stand in both collections.
  EXPECT_EQ(mProject->Components.Item("M")->Blocks.Item("Run")->Name(), "Run");
}

TEST(IntrinsicTypeTest, ThirteenNamesWithBlanksAndInAnyCase) {
  for (const char* name : {"Variant", "BYTE", "boolean", "Integer", " Long", "Single ", "Double",
                           "Currency", "Date", "Decimal", "String", "Object", "Control"})
    EXPECT_TRUE(VBProject::IsIntrinsicType(name)) << name;
  for (const char* name : {"", "LongPtr", "Form", "Lon g", "System.Int32"})
    EXPECT_FALSE(VBProject::IsIntrinsicType(name)) << name;
}

}  // namespace
}  // namespace vendrel
