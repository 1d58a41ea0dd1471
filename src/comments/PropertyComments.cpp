// A property is up to three procedures of one name; clients want one description of it.

#include "comments/TaggedCommentRules.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "model/Component.h"
#include "text/DescriptionText.h"

namespace vendrel {
namespace {

/// The procedures of a property, by rank: the one that stands for it, and the others.
struct RankedBlocks {
  Block* Result = nullptr;
  std::vector<Block*> Others;
  int Type = ptNone;
  int Counted = 0;
  bool WasConsolidated = false;
};

bool ImplementsExcluded(const Component& component, const Block& block) {
  if (block.Interface.empty()) return false;
  const Interface* interface = component.Interfaces.Item(block.Interface.view());
  return interface && interface->ExcludeFlag;
}

// Get before Let before Set.
void Rank(RankedBlocks& ranked, Block* block) {
  ranked.Type |= block->BlockType() == btPropertyGet ? ptRead : ptWrite;
  const bool higher =
      !ranked.Result || block->BlockType() == btPropertyGet ||
      (block->BlockType() == btPropertyLet && ranked.Result->BlockType() == btPropertySet);
  if (!higher) {
    ranked.Others.push_back(block);
    return;
  }
  if (ranked.Result) ranked.Others.push_back(ranked.Result);
  ranked.Result = block;
}

RankedBlocks RankedProperty(Component& component, std::string_view name) {
  RankedBlocks ranked;
  bool excluded = false;
  for (Block* block : component.Blocks.Named(name)) {
    ++ranked.Counted;
    excluded = excluded || ImplementsExcluded(component, *block);
    if (excluded) continue;
    if (block->Consolidated) {
      ranked.Result = block;
      ranked.WasConsolidated = true;
      return ranked;
    }
    if (block->IsPropertyType()) Rank(ranked, block);
  }
  return ranked;
}

bool CommentsCount(const Block& block, PropertyCommentsFromEnum from) {
  return from == pcAll || (from == pcPropertyGet) == (block.BlockType() == btPropertyGet);
}

void CopyComments(const Block& from, CodeElement* element, TaggedComments& to, bool preserve) {
  for (const TaggedComment& comment : *from.TaggedComments) {
    const std::shared_ptr<TaggedComment> copy = comment.Clone();
    copy->CodeElement = element;
    AddTaggedComment(to, copy, false, preserve);
  }
}

void AppendIfAny(LateText& description, std::string_view text) {
  if (!text.empty()) AppendDescription(description.Edit(), text);
}

}  // namespace

Block* Component::ConsolidatedPropertyBlock(std::string_view name, bool /*includePrivate*/) try {
  const Workspace::Use use(Options().Workspace());
  const RankedBlocks ranked = RankedProperty(*this, name);
  Block* result = ranked.Result;
  if (!result || ranked.WasConsolidated) return result;
  const ProjectOptions& options = Options();
  if (options.LanguageVersion() != lvVisualBasicDotNet)
    result->PropertyType = static_cast<PropertyTypeEnum>(ranked.Type);
  bool hidden = false;
  for (const Block* other : ranked.Others) {
    if (CommentsCount(*other, options.PropertyCommentsFrom)) {
      CopyComments(*other, result, *result->TaggedComments, options.PreserveOriginalTaggedComments);
      AppendIfAny(result->TaggedDescription, other->TaggedDescription);
      AppendIfAny(result->UnTaggedDescription, other->UnTaggedDescription);
      hidden |= other->IsHiddenMember;
    }
    if (result->HelpContextID == 0) result->HelpContextID = other->HelpContextID;
  }
  result->Consolidated = true;
  if (ranked.Counted > 1) result->IsHiddenMember = hidden;
  return result;
}
VENDREL_CONTEXT(name, *this)

void PropertyGroup::ConsolidateDescriptions() const try {
  if (mGathered) return;
  mGathered = std::make_unique<Gathered>();
  const vendrel::Component* component = Component.Get();
  const ProjectOptions& options = component ? component->Options() : ProjectOptions::Defaults();
  for (const Block* block : {mGet.Get(), mLet.Get(), mSet.Get()}) {
    if (!block || !CommentsCount(*block, options.PropertyCommentsFrom)) continue;
    CopyComments(*block, PrimaryBlock(), mGathered->TaggedComments,
                 options.PreserveOriginalTaggedComments);
    AppendDescription(mGathered->TaggedDescription.Edit(), block->TaggedDescription);
    AppendDescription(mGathered->UnTaggedDescription.Edit(), block->UnTaggedDescription);
  }
}
VENDREL_CONTEXT(*this)

}  // namespace vendrel
