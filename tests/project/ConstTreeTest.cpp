// A const tree gives const elements, and reading it loads and makes nothing.
#include <gtest/gtest.h>

#include <sstream>
#include <type_traits>
#include <utility>

#include "project/VBProject.h"
#include "support/MemoryFiles.h"

namespace vendrel {
namespace {

template <typename Collection>
constexpr bool kGivesConst =
    std::is_const_v<std::remove_reference_t<decltype(*std::declval<const Collection&>().begin())>>&&
        std::is_const_v<
            std::remove_reference_t<decltype(*std::declval<const Collection&>().Item(1))>> &&
    !std::is_const_v<std::remove_reference_t<decltype(*std::declval<Collection&>().Item(1))>>;
static_assert(kGivesConst<Components>);
static_assert(kGivesConst<Blocks>);
static_assert(kGivesConst<Variables>);
static_assert(kGivesConst<Parameters>);
static_assert(kGivesConst<EventDeclarations>);
static_assert(kGivesConst<TaggedComments>);
static_assert(kGivesConst<VBControls>);
static_assert(kGivesConst<References>);

class ConstTree : public testing::Test {
 protected:
  ConstTree() { EXPECT_TRUE(mProject.Load("/p/P.vbp")); }
  test::MemoryFiles mFiles{
      {"/p/P.vbp", "Type=Exe\r\nModule=M; M.bas\r\nName=\"P\"\r\n"},
      {"/p/M.bas", "Attribute VB_Name = \"M\"\r\nPublic a As Long\r\nSub S()\r\nEnd Sub\r\n"}};
  VBProject mProject;
  const VBProject& mConst = mProject;
};

TEST_F(ConstTree, IsWalkedWithoutLoading) {
  for (const Component& module : mConst.Components) EXPECT_EQ(module.LoadState, lsNotLoaded);
  EXPECT_EQ(mConst.Components.Item("M")->Blocks.Count(), 0u);
  mProject.Components.Populate();
  std::size_t blocks = 0;
  for (const Component& module : mConst.Components)
    for ([[maybe_unused]] const Block& block : module.Blocks) ++blocks;
  EXPECT_EQ(blocks, 3u);
}

TEST_F(ConstTree, ReadsAsEmptyWhatWasNeverMade) {
  mProject.Components.Populate();
  const Component& module = *mConst.Components.Item(1);
  const Block& block = *module.Blocks.Item("S");
  EXPECT_EQ(block.Constants->Count() + block.TaggedComments->Count() + mConst.Libraries->Count(),
            0u);
  EXPECT_EQ(module.CompilerConstants().Count(), 0u);
  EXPECT_EQ(module.Constants()->Count(), 0u);
  EXPECT_EQ(block.Constants.IfAny(), nullptr);
  EXPECT_EQ(mConst.Libraries.IfAny(), nullptr);
  EXPECT_EQ(module.Blocks.FirstOfType(btDeclarations)->Constants.IfAny(), nullptr);
}

TEST_F(ConstTree, FindsByAnyInteger) {
  mProject.Components.Populate();
  const Blocks& blocks = mConst.Components.Item(1u)->Blocks;
  EXPECT_EQ(blocks.Item(std::int16_t{3}), blocks.Item(3L));
  EXPECT_EQ(mConst.Components.Item(-1), nullptr);
  EXPECT_EQ(mConst.Components.Item(std::int64_t{2}), nullptr);
}

TEST(Texts, GoToStreamsAndCompare) {
  const SharedText shared = "Long";
  const LateText late = std::string_view("a text");
  std::ostringstream out;
  out << shared << ", " << late;
  EXPECT_EQ(out.str(), "Long, a text");
  EXPECT_TRUE(shared == "Long" && late == "a text" && std::string_view(late).size() == 6);
}

}  // namespace
}  // namespace vendrel
