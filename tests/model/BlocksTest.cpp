#include "model/Blocks.h"

#include <gtest/gtest.h>

#include <random>

#include "core/CaseFold.h"
#include "model/Building.h"
#include "model/Namespace.h"
#include "support/Boxes.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::AddBlock;
using test::Names;

std::shared_ptr<Block> NewNamed(std::string_view name) {
  auto block = std::make_shared<Block>();
  block->SetName(name);
  return block;
}

TEST(Blocks, AreFoundByTheNameTheyGotAfterTheyWereAdded) {
  Component component;
  Block* first = component.NewBlock();
  EXPECT_EQ(component.Blocks.Item("Pay"), nullptr);
  first->SetName("Pay");
  Block* second = AddBlock(component, btSub, "pay");
  EXPECT_EQ(component.Blocks.Item("PAY"), first);
  EXPECT_EQ(component.Blocks.Named("Pay").size(), 2u);
  first->SetName("Charge");
  EXPECT_EQ(component.Blocks.Item("Pay"), second);
  EXPECT_EQ(component.Blocks.Item("charge"), first);
  EXPECT_FALSE(component.Blocks.HasKey("Charge")) << "a block added without a name has no key";
  EXPECT_THROW(component.Blocks.Item(3), VendrelError);
  EXPECT_THROW(component.Blocks.Item(0), VendrelError);
}

TEST(Blocks, AKeyThatIsTakenIsToldAndTheBlockDropped) {
  const auto boxes = test::InstallBoxes();
  Blocks blocks;
  EXPECT_TRUE(blocks.Add(NewNamed("Pay"), "Pay"));
  EXPECT_FALSE(blocks.Add(NewNamed("PAY"), "PAY"));
  EXPECT_TRUE(blocks.Add(NewNamed("Pay")));
  EXPECT_TRUE(blocks.Add(NewNamed("Before"), "Before", 1));
  EXPECT_EQ(Names(blocks), "Before Pay Pay ");
  EXPECT_EQ(boxes->Said, "Duplicate Block|Duplicate Block, 'PAY'.  Processing will continue.|48\n");
}

TEST(Blocks, OverloadsAreFoundByTheirParameterTypes) {
  Component component;
  Block* head = AddBlock(component, btSub, "Run");
  Block* constructor = AddBlock(component, btSub, "_ctor");
  for (const char* name : {"Run(Int32,String)", "Run()"}) {
    const auto overload = NewNamed(name);
    overload->SetOverloaded(true);
    head->AddOverload(overload, name);
  }
  const auto name = [&](const char* key) {
    const Block* block = component.Blocks.Item(key);
    return block ? block->Name() : "nothing";
  };
  EXPECT_EQ(name("Run(System.Int32,System.String)"), "Run(Int32,String)");
  EXPECT_EQ(name("run(int32,string)"), "Run(Int32,String)");
  EXPECT_EQ(name("Run()"), "Run()");
  EXPECT_EQ(name("Run"), "Run");
  EXPECT_EQ(name("Run(Int64)"), "nothing");
  EXPECT_EQ(name("#ctor"), "_ctor");
  EXPECT_EQ(name("#ctor(System.String)"), "_ctor") << "no overloads: the head itself";
  EXPECT_EQ(component.Blocks.Item("#ctor"), constructor);
}

TEST(Blocks, DelegatesAreFoundWithAndWithoutTheirNamespace) {
  Namespace space;
  space.Name = "Ledger.Core";
  Component component;
  Block* delegate = AddBlock(component, btSub, "Posted");
  EXPECT_EQ(component.Blocks.Item("Ledger.Core.Posted"), nullptr);
  delegate->SetIsDelegate(true);
  delegate->SetNamespace(&space);
  EXPECT_EQ(delegate->FullName(), "Ledger.Core.Posted");
  EXPECT_EQ(component.Blocks.Item("ledger.core.posted"), delegate);
  EXPECT_EQ(component.Blocks.Item("Posted"), delegate);
}

TEST(Blocks, ABlockInTwoCollectionsIsFoundInBothAfterARename) {
  Blocks first, second;
  const auto shared = NewNamed("Old");
  first.Add(shared);
  EXPECT_EQ(first.Item("Old"), shared.get());
  second.Add(shared, "Old");
  EXPECT_EQ(second.Item("Old"), shared.get());
  shared->SetName("New");
  shared->SetBlockType(btSub);
  for (const Blocks* blocks : {&first, &second}) {
    EXPECT_EQ(blocks->Item("New"), shared.get());
    EXPECT_EQ(blocks->Item("Old"), nullptr);
    EXPECT_EQ(blocks->FirstOfType(btSub), shared.get());
  }
  second.Remove("Old");
  shared->SetName("Last");
  EXPECT_EQ(first.Item("Last"), shared.get());
  EXPECT_EQ(second.Item("Last"), nullptr);
}

TEST(Blocks, SortPutsTheGreatestNameFirstAndKeepsTheOrderOfEqualOnes) {
  Blocks blocks;
  const auto first = NewNamed("b");
  blocks.Add(NewNamed("a"), "a");
  blocks.Add(first, "b");
  blocks.Add(NewNamed("b"));
  blocks.Add(NewNamed("C"));
  blocks.Sort();
  EXPECT_TRUE(blocks.Sorted);
  EXPECT_EQ(Names(blocks), "b b a C ");
  EXPECT_EQ(blocks.Item(1), first.get());
  EXPECT_FALSE(blocks.HasKey("a"));
  blocks.Add(NewNamed("x"));
  EXPECT_FALSE(blocks.Sorted);
}

TEST(Blocks, SortOfAListWithNamelessBlocksFailsUnlessTheyComeLast) {
  Blocks blocks;
  blocks.Add(NewNamed(""));
  blocks.Add(NewNamed("a"));
  EXPECT_THROW(blocks.Sort(), VendrelError);
  EXPECT_EQ(blocks.Count(), 2u);
  Blocks last;
  last.Add(NewNamed("a"));
  last.Add(NewNamed(""));
  last.Add(NewNamed("b"));
  last.Sort();
  EXPECT_EQ(Names(last), "b a  ");
}

// The rule as it is told: a walk over all blocks.
const Block* Walked(const Blocks& blocks, std::string_view name) {
  for (const Block& block : blocks)
    if (EqualsNoCase(block.FullName(), name)) return &block;
  return nullptr;
}

const Block* WalkedType(const Blocks& blocks, BlockTypeEnum type) {
  for (const Block& block : blocks)
    if (block.BlockType() == type) return &block;
  return nullptr;
}

TEST(Blocks, TheIndexGivesWhatAWalkGivesThroughAnyChange) {
  std::mt19937 random(7);
  const auto pick = [&random](std::size_t below) { return std::size_t{random() % below}; };
  const auto name = [&pick] { return std::string(1, "aAbBcC"[pick(6)]) + "." + "xy"[pick(2)]; };
  Blocks blocks;
  for (int step = 0; step < 4000; ++step) {
    const std::size_t count = blocks.Count();
    const std::size_t at = count ? pick(count) + 1 : 0;
    switch (pick(count < 5 ? 2 : 7)) {
      case 0: blocks.Add(NewNamed(name())); break;
      case 1:
        if (at) blocks.Add(NewNamed(name()), "key" + std::to_string(step), at);
        break;
      case 2: blocks.Remove(at); break;
      case 3: blocks.Item(at)->SetBlockType(static_cast<BlockTypeEnum>(1 + pick(7))); break;
      default: blocks.Item(at)->SetName(name());
    }
    const std::string sought = name();
    ASSERT_EQ(blocks.Item(sought), Walked(blocks, sought)) << sought << " in step " << step;
    const auto type = static_cast<BlockTypeEnum>(1 + pick(7));
    ASSERT_EQ(blocks.FirstOfType(type), WalkedType(blocks, type)) << "in step " << step;
    if (blocks.Count() > 1) {
      const std::size_t place = 2 + pick(blocks.Count() - 1);
      ASSERT_EQ(blocks.Previous(blocks.Item(place)), blocks.Item(place - 1)) << step;
      ASSERT_EQ(blocks.ShareOf(blocks.Item(place)).get(), blocks.Item(place)) << step;
    }
  }
}

}  // namespace
}  // namespace vendrel
