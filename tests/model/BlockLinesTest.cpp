#include <gtest/gtest.h>

#include "model/Building.h"

namespace vendrel {
namespace {

using test::AddBlock;
using test::AddLines;

struct Places {
  const char* Case;
  BlockTypeEnum Type;
  std::vector<std::string_view> Lines;
  std::int32_t Start, First, End;
};

TEST(BlockLines, StartFirstAndEndAreThePlacesOfTheOuterLines) {
  const Places cases[] = {
      {"no lines", btSub, {}, 0, 0, 0},
      {"plain", btSub, {"Sub A()", "x = 1", "End Sub"}, 1, 1, 3},
      {"comment in front", btSub, {"' c", "Sub A()", "End Sub", "' d"}, 2, 2, 3},
      {"continued header", btSub, {"Sub A(x, _", "Sub A(x, y)", "End Sub"}, 2, 1, 3},
      {"attributes", btSub, {"Sub A()", "Attribute A.VB_HelpID = 1", "x = 1", "End Sub"}, 2, 1, 4},
      {"never ended", btSub, {"Sub A()", "x = 1", "y = 2"}, 1, 1, 3},
      {"no start line", btDeclarations, {"Option Explicit", "Dim a"}, 0, 0, 2},
  };
  for (const Places& place : cases) {
    Component component;
    Block* block = AddBlock(component, place.Type, "A");
    AddLines(*block, place.Lines);
    EXPECT_EQ(block->StartLine(), place.Start) << place.Case;
    EXPECT_EQ(block->FirstLine(), place.First) << place.Case;
    EXPECT_EQ(block->EndLine(), place.End) << place.Case;
    block->SetStoredLines(7, 9);
    EXPECT_EQ(block->StartLine() * 10 + block->EndLine(), 79) << place.Case;
  }
}

TEST(BlockLines, LinesOfTypeBeginBehindTheEndOfTheBlockBefore) {
  Component component;
  AddLines(*AddBlock(component, btSub, "A"), {"Sub A()", "' in A", "End Sub", "' above B"});
  Block* b = AddBlock(component, btSub, "B");
  AddLines(*b, {"' first in B", "Sub B()", "' under B", "End Sub", "' behind B"});
  std::string texts;
  for (const CodeLine& line : b->LinesOfType(Comment)) texts += line.CommentPart + "|";
  EXPECT_EQ(texts, "above B|first in B|under B|");
  EXPECT_EQ(b->LinesOfType(END_SUB).size(), 1u);
}

TEST(Block, ACloneHasTheSignatureAndCommentsOnlyWhenAsked) {
  Component owner, heir;
  Block* block = AddBlock(owner, btFunction, "Total", "FRIEND");
  block->ReturnType = "Currency";
  block->TaggedDescription = "Sum.";
  block->TaggedComments->Add(test::Tagged("##REMARKS", "r"), "##REMARKS");
  block->Parameters->Add(CreateParameter("upTo", "System.DateTime&", "", true), "upTo");
  AddLines(*block, {"Function Total()", "End Function"});
  const auto bare = block->Clone(&heir, false);
  EXPECT_EQ(bare->Name() + "/" + bare->Access.str() + "/" + bare->ReturnType.str(),
            "Total/FRIEND/Currency");
  EXPECT_EQ(bare->Component.Get(), &heir);
  EXPECT_EQ(bare->TaggedDescription, "");
  EXPECT_EQ(bare->TaggedComments->Count(), 0u);
  EXPECT_EQ(bare->CodeLines->Count(), 0);
  const Parameter* parameter = bare->Parameters->Item("UPTO");
  ASSERT_NE(parameter, nullptr);
  EXPECT_TRUE(parameter->IsByRef && parameter->IsOptional);
  EXPECT_EQ(parameter->VariableType, "System.DateTime");
  EXPECT_EQ(parameter->Parent.Get(), bare.get());
  const auto full = block->Clone(&heir, true);
  EXPECT_EQ(full->TaggedDescription, "Sum.");
  EXPECT_EQ(full->TaggedComments->Item("##remarks")->Text, "r");
}

}  // namespace
}  // namespace vendrel
