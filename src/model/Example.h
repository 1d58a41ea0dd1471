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

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{
        Prop{"Key", &Own::Key},
        Prop{"RelatedElement", &Own::RelatedElement},
        Prop{"Description", &Own::mDescription},
        Prop{"Text", &Own::Text},
        Prop{"Template", &Own::Template},
        Prop{"InLine", &Own::InLine},
        Prop{"Language", &Own::Language},
        Prop{"Caption", &Own::Caption},
        Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
        Prop{"Name", &Own::Name, PropertyKind::Derived}.Hide(),
        Prop{"RelatedItem", &Own::RelatedItem, &Own::SetRelatedItem, PropertyKind::Link}.Hide()};
  }

 private:
  WeakHandle<CodeElement> mRelatedItem;
};

class Examples : public PlainCollection<Example> {};

}  // namespace vendrel
