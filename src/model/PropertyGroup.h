#pragma once
#include <memory>
#include <string>
#include <string_view>

#include "model/Block.h"
#include "model/TaggedComment.h"

namespace vendrel {

/// The live view of one property: its `Get`, `Let` and `Set` as one element.
class PropertyGroup : public ElementOf<PropertyGroup> {
 public:
  SharedText Name;
  /// First value that is not 0.
  std::int32_t HelpContextID = 0;
  /// Any block is hidden.
  bool IsHiddenMember = false;
  WeakHandle<Block> FirstBlockInCode;
  WeakHandle<vendrel::Component> Component;

  std::string Description() const override;
  std::string QualifiedName() const override;

  Block* PropertyGetBlock() const { return mGet.Get(); }
  Block* PropertyLetBlock() const { return mLet.Get(); }
  Block* PropertySetBlock() const { return mSet.Get(); }
  void SetPropertyGetBlock(Block* block) { SetBlock(mGet, block); }
  void SetPropertyLetBlock(Block* block) { SetBlock(mLet, block); }
  void SetPropertySetBlock(Block* block) { SetBlock(mSet, block); }
  /// The `Get`, else the `Set`, else the `Let`.
  Block* PrimaryBlock() const;
  /// The widest access of the blocks.
  std::string Access() const;
  bool ExcludeFlag() const;
  std::string Interface() const;
  /// Which procedures are visible under that access.
  PropertyTypeEnum PropertyAccess(AccessTypeEnum AccessType) const;

  /// Descriptions and comments of the blocks that `PropertyCommentsFrom` names, gathered once.
  std::string_view TaggedDescription() const;
  std::string_view UnTaggedDescription() const;
  vendrel::TaggedComments& TaggedComments();
  const vendrel::TaggedComments& TaggedComments() const;
  vendrel::VBProject* VBProject() const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{
        Prop{"Name", &Own::Name},
        Prop{"HelpContextID", &Own::HelpContextID},
        Prop{"IsHiddenMember", &Own::IsHiddenMember},
        Prop{"FirstBlockInCode", &Own::FirstBlockInCode, PropertyKind::Link},
        Prop{"PropertyGetBlock", &Own::PropertyGetBlock, &Own::SetPropertyGetBlock,
             PropertyKind::Link},
        Prop{"PropertyLetBlock", &Own::PropertyLetBlock, &Own::SetPropertyLetBlock,
             PropertyKind::Link},
        Prop{"PropertySetBlock", &Own::PropertySetBlock, &Own::SetPropertySetBlock,
             PropertyKind::Link},
        Prop{"Access", &Own::Access, PropertyKind::Derived},
        Prop{"ExcludeFlag", &Own::ExcludeFlag, PropertyKind::Derived},
        Prop{"Interface", &Own::Interface, PropertyKind::Derived},
        Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
        Prop{"Component", &Own::Component, PropertyKind::Link}.Hide(),
        Prop{"PrimaryBlock", &Own::PrimaryBlock, PropertyKind::Link}.Hide(),
        Prop{"VBProject", &Own::VBProject, PropertyKind::Link}.Hide(),
        Prop{"TaggedDescription", &Own::TaggedDescription, PropertyKind::Derived}.Hide(),
        Prop{"UnTaggedDescription", &Own::UnTaggedDescription, PropertyKind::Derived}.Hide(),
        Prop{"Description", &Own::Description, PropertyKind::Derived}.Hide(),
        Prop{"TaggedComments",
             static_cast<const vendrel::TaggedComments& (Own::*)() const>(&Own::TaggedComments),
             PropertyKind::Children}
            .Hide()};
  }

 private:
  void SetBlock(WeakHandle<Block>& slot, Block* block);
  void ConsolidateDescriptions() const;

  WeakHandle<Block> mGet, mLet, mSet;
  // Made when the descriptions of the blocks are gathered.
  struct Gathered {
    LateText TaggedDescription;
    LateText UnTaggedDescription;
    vendrel::TaggedComments TaggedComments;
  };
  mutable std::unique_ptr<Gathered> mGathered;
};

class PropertyGroups : public PlainCollection<PropertyGroup> {};

/// The wider of a block's access and `Current`; `Current` where there is no block.
std::string MaxAccess(const Block* block, std::string_view Current);

}  // namespace vendrel
