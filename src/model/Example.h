#pragma once
#include <memory>
#include <string>
#include <string_view>

#include "model/CodeElement.h"
#include "model/TaggedComment.h"

namespace vendrel {

/// A module or procedure that serves as a code example of another element.
class Example : public ElementOf<Example> {
 public:
  /// From the parameter "key"; used internally only.
  std::string Key;
  /// Qualified name of the element that the example is for.
  std::string RelatedElement;
  /// Taken from the block or module that is the example.
  std::string mDescription;
  /// Example code, as coloured HTML.
  std::string Text;
  /// Page layout of the example page.
  std::string Template;
  bool InLine = false;
  std::string Language;
  std::string Caption;

  std::string ElementName() const override { return Caption; }
  std::string Description() const override { return mDescription; }
  std::string QualifiedName() const override;
  /// The `Caption`.
  const std::string& Name() const { return Caption; }

  /// Reads the parameters of an example comment ("for=..., caption=..."). Missing ones are told.
  void Load(std::string_view Source);
  /// The `Block` or `Component` that is the example.
  CodeElement* RelatedItem() const { return mRelatedItem.Get(); }
  /// Stores the object and takes its description.
  void SetRelatedItem(CodeElement* item);
  /// Comments shared with the related item; null without one.
  vendrel::TaggedComments* TaggedComments() const;
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;

  static constexpr auto Properties() {
    return std::tuple{
        Prop{"Key", &Example::Key},
        Prop{"RelatedElement", &Example::RelatedElement},
        Prop{"Description", &Example::mDescription},
        Prop{"Text", &Example::Text},
        Prop{"Template", &Example::Template},
        Prop{"InLine", &Example::InLine},
        Prop{"Language", &Example::Language},
        Prop{"Caption", &Example::Caption},
        Prop{"QualifiedName", &Example::QualifiedName, PropertyKind::Derived},
        Prop{"Name", &Example::Name, PropertyKind::Derived}.Hide(),
        Prop{"RelatedItem", &Example::RelatedItem, &Example::SetRelatedItem, PropertyKind::Link}
            .Hide()};
  }

 private:
  WeakHandle<CodeElement> mRelatedItem;
};

class Examples : public PlainCollection<Example> {};

}  // namespace vendrel
