#include <gtest/gtest.h>

#include "model/Building.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

using test::AddBlock;

Block* AddProperty(Component& component, BlockTypeEnum type, std::string_view access,
                   std::string_view name = "Total") {
  Block* block = AddBlock(component, type, name, access);
  component.AddPropertyBlockToPropertyGroup(block);
  return block;
}

TEST(PropertyGroup, GathersTheProceduresOfOneNameInAnyCase) {
  Component component;
  Block* let = AddProperty(component, btPropertyLet, "PUBLIC", "foo");
  let->HelpContextID = 12;
  AddProperty(component, btPropertySet, "PUBLIC", "Other");
  Block* get = AddProperty(component, btPropertyGet, "PRIVATE", "Foo");
  ASSERT_EQ(component.PropertyGroups.Count(), 2u);
  const PropertyGroup& group = *component.PropertyGroups.Item("FOO");
  EXPECT_EQ(group.Name, "foo");
  EXPECT_EQ(group.FirstBlockInCode.Get(), let);
  EXPECT_EQ(group.PrimaryBlock(), get);
  EXPECT_EQ(group.Access(), "PUBLIC");
  EXPECT_EQ(group.PropertyAccess(atPublic), ptWrite);
  EXPECT_EQ(group.PropertyAccess(atPrivate), ptReadWrite);
  EXPECT_FALSE(group.ExcludeFlag());
  let->ExcludeFlag = true;
  EXPECT_TRUE(group.ExcludeFlag());
}

TEST(PropertyGroup, TheWidestAccessWins) {
  const struct {
    const char *Block, *Current, *Result;
  } cases[] = {
      {"PRIVATE", "", "PRIVATE"},           {"PRIVATE", "FRIEND", "FRIEND"},
      {"FRIEND", "private", "FRIEND"},      {"FRIEND", "PROTECTED", "PROTECTED"},
      {"PROTECTED", "FRIEND", "PROTECTED"}, {"PROTECTED", "PUBLIC", "PUBLIC"},
      {"PUBLIC", "PROTECTED", "PUBLIC"},    {"PROTECTED FRIEND", "PRIVATE", "PRIVATE"},
  };
  for (const auto& c : cases) {
    Block block;
    block.Access = c.Block;
    EXPECT_EQ(MaxAccess(&block, c.Current), c.Result) << c.Block << " against " << c.Current;
  }
  EXPECT_EQ(MaxAccess(nullptr, "FRIEND"), "FRIEND");
}

TEST(PropertyGroup, CommentsComeFromTheProceduresThatTheOptionNames) {
  const struct {
    PropertyCommentsFromEnum From;
    const char *Tags, *Description;
  } cases[] = {{pcAll, "##G ##L ", "reads writes"},
               {pcPropertyGet, "##G ", "reads"},
               {pcPropertyLetSet, "##L ", "writes"}};
  for (const auto& c : cases) {
    VBProject options;
    options.PropertyCommentsFrom = c.From;
    Component component;
    component.SetVBProject(&options);
    Block* let = AddProperty(component, btPropertyLet, "PUBLIC");
    Block* get = AddProperty(component, btPropertyGet, "PUBLIC");
    get->TaggedDescription = "reads";
    let->TaggedDescription = "writes";
    get->TaggedComments->Add(test::Tagged("##G", "g"), "##G");
    let->TaggedComments->Add(test::Tagged("##L", "l"), "##L");
    const PropertyGroup& group = *component.PropertyGroups.Item("Total");
    std::string tags;
    for (const TaggedComment& comment : group.TaggedComments()) {
      tags += comment.TagIdentifier + " ";
      EXPECT_EQ(comment.CodeElement.Get(), get);
    }
    EXPECT_EQ(tags, c.Tags);
    EXPECT_EQ(group.TaggedDescription(), c.Description);
  }
}

TEST(ConsolidatedPropertyBlock, RanksGetBeforeLetBeforeSet) {
  const struct {
    std::vector<BlockTypeEnum> Types;
    BlockTypeEnum Result;
    PropertyTypeEnum Access;
  } cases[] = {{{btPropertyLet}, btPropertyLet, ptWrite},
               {{btPropertySet, btPropertyLet}, btPropertyLet, ptWrite},
               {{btPropertyLet, btPropertySet}, btPropertyLet, ptWrite},
               {{btPropertySet, btPropertyGet}, btPropertyGet, ptReadWrite},
               {{btPropertyGet, btPropertyLet}, btPropertyGet, ptReadWrite}};
  for (const auto& c : cases) {
    Component component;
    AddBlock(component, btSub, "Other");
    for (const BlockTypeEnum type : c.Types) AddBlock(component, type, "Total");
    const Block* result = component.ConsolidatedPropertyBlock("TOTAL");
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->BlockType(), c.Result);
    EXPECT_EQ(result->PropertyType, c.Access);
  }
  Component empty;
  EXPECT_EQ(empty.ConsolidatedPropertyBlock("Total"), nullptr);
}

TEST(ConsolidatedPropertyBlock, MergesTheOthersOnceAndOnlyOnce) {
  Component component;
  Block* get = AddBlock(component, btPropertyGet, "Total");
  Block* let = AddBlock(component, btPropertyLet, "Total");
  AddBlock(component, btPropertySet, "Total");
  get->TaggedDescription = "reads";
  get->IsHiddenMember = true;
  let->TaggedDescription = "writes";
  let->HelpContextID = 31;
  let->TaggedComments->Add(test::Tagged("##L", "l"), "##L");
  for (int call = 0; call < 2; ++call) {
    ASSERT_EQ(component.ConsolidatedPropertyBlock("Total"), get);
    EXPECT_EQ(get->TaggedDescription, "reads writes");
    EXPECT_EQ(get->TaggedComments->Count(), 1u);
    EXPECT_EQ(get->HelpContextID, 31);
    EXPECT_FALSE(get->IsHiddenMember) << "the others decide";
  }
}

TEST(ConsolidatedPropertyBlock, AnExcludedInterfaceHidesEveryBlockFromThereOn) {
  Component component;
  component.netCreateImplementedInterface("IAccount")->ExcludeFlag = true;
  Block* let = AddBlock(component, btPropertyLet, "IAccount_Total");
  Block* get = AddBlock(component, btPropertyGet, "IAccount_Total");
  get->Interface = "IAccount";
  AddBlock(component, btPropertySet, "IAccount_Total");
  EXPECT_EQ(component.ConsolidatedPropertyBlock("IAccount_Total"), let);
  EXPECT_EQ(let->PropertyType, ptWrite);
}

TEST(Property, ALetCountsOnlyWithoutAPublicGetOfItsName) {
  Component component;
  Block* let = AddBlock(component, btPropertyLet, "Total");
  EXPECT_TRUE(let->IsProperty());
  Block* get = AddBlock(component, btPropertyGet, "total", "PRIVATE");
  EXPECT_TRUE(let->IsProperty() && get->IsProperty());
  get->Access = "PUBLIC";
  EXPECT_FALSE(let->IsProperty());
  EXPECT_FALSE(AddBlock(component, btSub, "Total")->IsProperty());
}

TEST(Property, TypeAndAccessComeFromAllProceduresThatCount) {
  Component component;
  Block* get = AddBlock(component, btPropertyGet, "Total");
  Block* let = AddBlock(component, btPropertyLet, "Total", "FRIEND");
  Block* set = AddBlock(component, btPropertySet, "Rate", "PRIVATE");
  get->SetPropertyType(false, false);
  EXPECT_EQ(get->PropertyType, ptRead);
  get->SetPropertyType(true, false);
  EXPECT_EQ(get->PropertyType, ptReadWrite);
  set->SetPropertyType(true, false);
  EXPECT_EQ(set->PropertyType, ptNone);
  set->Interface = "IAccount";
  set->SetPropertyType(false, false);
  EXPECT_EQ(set->PropertyType, ptWrite);
  EXPECT_EQ(let->ConsolidatedAccessType(), atPublic);
  EXPECT_EQ(set->ConsolidatedAccessType(), atPrivate);
}

TEST(Property, TheFirstBlockThatIsNotFriendStandsForIt) {
  Component component;
  Block* get = AddBlock(component, btPropertyGet, "Total", "FRIEND");
  Block* let = AddBlock(component, btPropertyLet, "Total");
  get->IsFriend = true;
  EXPECT_FALSE(component.IsFirstPropertyBlock(get));
  EXPECT_TRUE(component.IsFirstPropertyBlock(let));
  let->IsFriend = true;
  EXPECT_TRUE(component.IsFirstPropertyBlock(get));
}

TEST(Property, AttributeLinesKeepDuplicatesAndCompareTheNameExactly) {
  Component component;
  const char* line = "Attribute Total.VB_UserMemId = 0";
  for (const char* name : {"Total", "TOTAL", "Total"})
    test::AddLines(*AddBlock(component, btPropertyGet, name), {line});
  EXPECT_EQ(component.AttributeLines("Total"), (std::vector<std::string>{line, line}));
}

}  // namespace
}  // namespace vendrel
