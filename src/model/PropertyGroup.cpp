#include "model/PropertyGroup.h"

#include <algorithm>

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "model/Component.h"

namespace vendrel {
namespace {

// First of these blocks that is a procedure of a property, leaving out `Friend` ones if asked.
const Block* FirstProperty(std::span<const Block* const> blocks, bool withFriends) {
  for (const Block* block : blocks)
    if (block->IsPropertyType() && (withFriends || !block->IsFriend)) return block;
  return nullptr;
}

bool Counts(const Block& block, bool includeFriend, bool includePrivate) {
  return !block.Interface.empty() || block.AccessType() == atPublic ||
         (block.AccessType() == atFriend && includeFriend) || includePrivate;
}

bool IsIncluded(const Block* block, AccessTypeEnum access) {
  return block && (access & block->AccessType()) == block->AccessType();
}

}  // namespace

std::string MaxAccess(const Block* block, std::string_view Current) {
  if (!block) return std::string(Current);
  const std::string access = LowerAscii(block->Access);
  const std::string current = UpperAscii(Current);
  const bool wider =
      access == "public" || (access == "private" && current.empty()) ||
      (access == "friend" && (current.empty() || current == "PRIVATE")) ||
      (access == "protected" && (current.empty() || current == "PRIVATE" || current == "FRIEND"));
  return wider ? block->Access.str() : std::string(Current);
}

void PropertyGroup::SetBlock(WeakHandle<Block>& slot, Block* block) {
  mGathered.reset();
  slot = block;
  if (!block) return;
  IsHiddenMember |= block->IsHiddenMember;
  if (HelpContextID == 0) HelpContextID = block->HelpContextID;
}

Block* PropertyGroup::PrimaryBlock() const {
  if (Block* get = mGet.Get()) return get;
  if (Block* set = mSet.Get()) return set;
  return mLet.Get();
}

std::string PropertyGroup::Access() const {
  return MaxAccess(mSet.Get(), MaxAccess(mLet.Get(), MaxAccess(mGet.Get(), "")));
}

bool PropertyGroup::ExcludeFlag() const {
  const auto excluded = [](const Block* block) { return block && block->ExcludeFlag; };
  return excluded(mGet.Get()) || excluded(mLet.Get()) || excluded(mSet.Get());
}

std::string PropertyGroup::Interface() const {
  const Block* primary = PrimaryBlock();
  return primary ? primary->Interface.str() : std::string();
}

PropertyTypeEnum PropertyGroup::PropertyAccess(AccessTypeEnum AccessType) const {
  const bool read = IsIncluded(mGet.Get(), AccessType);
  const bool write = IsIncluded(mLet.Get(), AccessType) || IsIncluded(mSet.Get(), AccessType);
  return read && write ? ptReadWrite : read ? ptRead : write ? ptWrite : ptNone;
}

std::string_view PropertyGroup::TaggedDescription() const {
  ConsolidateDescriptions();
  return mGathered->TaggedDescription;
}

std::string_view PropertyGroup::UnTaggedDescription() const {
  ConsolidateDescriptions();
  return mGathered->UnTaggedDescription;
}

TaggedComments& PropertyGroup::TaggedComments() {
  ConsolidateDescriptions();
  return mGathered->TaggedComments;
}

const TaggedComments& PropertyGroup::TaggedComments() const {
  ConsolidateDescriptions();
  return mGathered->TaggedComments;
}

void Component::AddPropertyBlockToPropertyGroup(Block* block) try {
  PropertyGroup* group = PropertyGroups.Item(block->Name());
  if (!group) {
    const auto created = std::make_shared<PropertyGroup>();
    created->Name = block->Name();
    created->Component = this;
    created->FirstBlockInCode = block;
    PropertyGroups.Add(created, block->Name());
    group = created.get();
  }
  if (block->BlockType() == btPropertyGet) group->SetPropertyGetBlock(block);
  if (block->BlockType() == btPropertyLet) group->SetPropertyLetBlock(block);
  if (block->BlockType() == btPropertySet) group->SetPropertySetBlock(block);
}
VENDREL_CONTEXT(block, *this)

bool Component::IsFirstPropertyBlock(const Block* block) const {
  if (!block) return false;
  const std::span<const Block* const> named = Blocks.Named(block->Name());
  const Block* first = FirstProperty(named, false);
  return block == (first ? first : FirstProperty(named, true));
}

std::string Component::PropertyDescription(std::string_view name) const {
  std::string text;
  for (const Block* block : Blocks.Named(name))
    if (block->IsPropertyType()) text += block->Description();
  return text;
}

std::vector<std::string> Component::AttributeLines(std::string_view name) const try {
  std::vector<std::string> texts;
  for (const Block* block : Blocks.Named(name)) {
    const CodeLines* lines = block->CodeLines.IfAny();
    if (!lines || !block->IsPropertyType() || block->Name() != name) continue;
    for (std::int32_t i = 1; i <= lines->Count(); ++i)
      if (lines->LineType(i) == ATTRIBUTE_LINE) texts.push_back(lines->LineText(i));
  }
  return texts;
}
VENDREL_CONTEXT(name, *this)

bool Block::IsProperty() const {
  if (mBlockType == btPropertyGet) return true;
  if (!IsPropertyType()) return false;
  const vendrel::Component* component = Component.Get();
  if (!component) return true;
  const std::span<const Block* const> named = component->Blocks.Named(mName);
  return std::none_of(named.begin(), named.end(), [](const Block* block) {
    return block->BlockType() == btPropertyGet && block->Access == "PUBLIC";
  });
}

void Block::SetPropertyType(bool IncludeFriend, bool IncludePrivate) {
  int type = ptNone;
  if (const vendrel::Component* component = Component.Get())
    for (const Block* block : component->Blocks.Named(mName)) {
      if (!block->IsPropertyType() || !Counts(*block, IncludeFriend, IncludePrivate)) continue;
      type |= block->BlockType() == btPropertyGet ? ptRead : ptWrite;
    }
  PropertyType = static_cast<PropertyTypeEnum>(type);
}

AccessTypeEnum Block::ConsolidatedAccessType() const {
  AccessTypeEnum access = AccessType();
  const vendrel::Component* component = Component.Get();
  if (!IsPropertyType() || access == atPublic || !component) return access;
  for (const Block* block : component->Blocks.Named(mName))
    access = std::min(access, block->AccessType());
  return access;
}

}  // namespace vendrel
