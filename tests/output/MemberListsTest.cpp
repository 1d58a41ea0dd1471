#include "output/MemberLists.h"

#include <gtest/gtest.h>

#include "support/Projects.h"

namespace vendrel {
namespace {

using test::TestModule;
using test::TestProject;

std::string Join(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : " ") + name;
  return text;
}

// A class with every combination: procedures and properties named by access, H for hidden, X for
// excluded; members of two interfaces, of which IFar is documented elsewhere.
class MemberLists : public testing::Test {
 protected:
  MemberLists() {
    for (const char* access : {"Public", "Private", "Friend"})
      for (const char* mark : {"", "H", "X"}) {
        AddBlock("Sub", std::string(access) + mark, access);
        AddBlock("Get", std::string("p") + access + mark, access);
      }
    AddBlock("Sub", "INear_A", "PRIVATE", "INear");
    AddBlock("Sub", "INear_H", "PRIVATE", "INear");
    AddBlock("Sub", "IFar_A", "PUBLIC", "IFar");
    AddBlock("Get", "IFar_P", "PUBLIC", "IFar");
    for (const char* name : {"INear", "IFar"}) {
      const auto interface = std::make_shared<Interface>();
      interface->Name = name;
      interface->DocumentationLocation = *name && name[1] == 'F' ? "Other" : "";
      mClass.Interfaces.Add(interface, name);
    }
  }

  Block& AddBlock(const std::string& kind, const std::string& name, std::string_view access,
                  std::string_view interface = {}) {
    const auto block = std::make_shared<Block>();
    block->SetBlockType(kind == "Sub"   ? btSub
                        : kind == "Get" ? btPropertyGet
                        : kind == "Let" ? btPropertyLet
                                        : btDeclarations);
    block->SetName(name);
    block->Access = access;
    block->Interface = interface;
    block->IsHiddenMember = name.ends_with('H');
    block->ExcludeFlag = name.ends_with('X');
    block->Component = &mClass;
    mClass.Blocks.Add(block);
    return *block;
  }
  void AddVariable(Block& block, const char* name, const char* access, bool isStatic = false) {
    const auto variable = std::make_shared<Variable>();
    variable->Name = name;
    variable->Access = access;
    variable->IsStatic = isStatic;
    variable->IsHiddenMember = std::string_view(name).ends_with('H');
    block.Variables->Add(variable, name);
  }

  Component mClass;
};

TEST_F(MemberLists, ChooseMethodsByAccessHiddenFlagAndInterface) {
  struct Case {
    bool Private, Friend;
    const char* Interface;
    const char* Expected;
  };
  const Case cases[] = {
      {false, false, "Default", "Public"},
      {false, true, "Default", "Friend FriendH Public"},
      {true, false, "Default", "Friend FriendH Private PrivateH Public PublicH"},
      {false, false, "default", ""},
      {false, false, "inear", "INear_A"},
      {true, false, "INear", "INear_A INear_H"},
      {false, false, "IFar", "IFar_A"},
      {false, false, "", "Public"},
      {true, true, "", "Friend FriendH INear_A INear_H Private PrivateH Public PublicH"},
      {false, false, "IFar", ""},  // the list before has excluded it
  };
  for (const Case& c : cases)
    EXPECT_EQ(Join(mClass.MethodList(c.Private, c.Private, c.Friend, c.Interface)), c.Expected)
        << c.Private << c.Friend << c.Interface;
  EXPECT_TRUE(mClass.Blocks.Item("IFar_A")->ExcludeFlag);
  EXPECT_FALSE(mClass.Blocks.Item("INear_A")->ExcludeFlag);
}

TEST_F(MemberLists, ChooseMethodsOfOneAccess) {
  EXPECT_EQ(Join(mClass.FilteredMethodList("public", false)), "Public PublicH");
  EXPECT_EQ(Join(mClass.FilteredMethodList("FRIEND", false, "Default")), "Friend FriendH");
  EXPECT_EQ(Join(mClass.FilteredMethodList("public", true)), "");
  EXPECT_EQ(Join(mClass.FilteredMethodList("public", true, "INEAR")), "INear_A INear_H");
}

TEST_F(MemberLists, ListAPropertyOnceByItsWidestAccess) {
  AddBlock("Get", "Both", "Private");
  AddBlock("Let", "Both", "Public");
  Block& declarations = AddBlock("Declarations", "", "PRIVATE");
  AddVariable(declarations, "vPublic", "PUBLIC");
  AddVariable(declarations, "vPublicH", "PUBLIC");
  AddVariable(declarations, "vPrivate", "PRIVATE");
  EXPECT_EQ(Join(mClass.PropertyList(false, false, false, "IFar")), "IFar_P");
  EXPECT_EQ(Join(mClass.PropertyList()), "Both pPublic vPublic");
  EXPECT_EQ(Join(mClass.PropertyList(false, false, false, "IFar")), "");
  EXPECT_EQ(Join(mClass.PropertyList(false, false, true, "Default")),
            "Both pFriend pFriendH pPublic vPublic");
  EXPECT_EQ(Join(mClass.PropertyList(false, true)),
            "Both pFriend pFriendH pPrivate pPrivateH pPublic pPublicH vPrivate vPublic vPublicH");
  EXPECT_EQ(Join(mClass.FilteredPropertyList("PUBLIC", false)),
            "pPublic pPublicH vPublic vPublicH");
  EXPECT_EQ(Join(mClass.FilteredPropertyList("private", false, "Default")),
            "Both pPrivate pPrivateH vPrivate");
}

TEST(MemberListsOfSource, KnowCollectionsByTheirEnumerator) {
  TestProject project({{"Items.cls", "Public Function NewEnum() As IUnknown\nEnd Function\n"},
                       {"C.cls",
                        "Public Items\nPublic Other As Items\n"
                        "Public Property Get List() As Items\nEnd Property\n"
                        "Private Property Get Mine() As Collection\nEnd Property\n"
                        "Public Property Get Count() As Long\nEnd Property\n"}},
                      test::Complete());
  project.Project->Components.Populate();
  Component& module = project.Module("C");
  EXPECT_EQ(Join(module.CollectionList()), "Items List");  // variables go by their name
  EXPECT_EQ(Join(module.CollectionList(false, true)), "Items List Mine");
  EXPECT_FALSE(module.IsCollection());
}

TEST(MemberListsOfSource, OfTypesTakeNoFriendAndOfEventsTakeAll) {
  TestModule module("C.cls",
                    "Public Enum E1\na = 1\nEnd Enum\nPrivate Enum E2\nb = 1\nEnd Enum\n"
                    "Public Type T1\nx As Long\nEnd Type\nPrivate Type T2\nx As Long\nEnd Type\n"
                    "Event Late()\nEvent Early()\nEvent Hidden()\nEvent Out()\n",
                    test::Complete());
  module->EventDeclarations.Item("Hidden")->IsHiddenMember = true;
  module->EventDeclarations.Item("Out")->ExcludeFlag = true;
  EXPECT_EQ(Join(module->EnumList()), "E1");
  EXPECT_EQ(Join(module->EnumList(true, true)), "E1 E2");
  EXPECT_EQ(Join(module->UDTList()), "T1");
  EXPECT_EQ(Join(module->UDTList(false, true)), "T1 T2");
  module->UDTs.Item("T1")->Access = "Public";
  EXPECT_EQ(Join(module->UDTList()), "");
  EXPECT_EQ(Join(module->EventList()), "Early Late");
  EXPECT_EQ(Join(module->EventList(false, true)), "Early Late");
}

}  // namespace
}  // namespace vendrel
