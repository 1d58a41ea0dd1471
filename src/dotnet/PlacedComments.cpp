// The road of a comment from a file to its element: that of comments of source.

#include "comments/TagDefinitions.h"
#include "diagnostics/Diagnostic.h"
#include "dotnet/XmlComments.h"
#include "model/Component.h"
#include "model/Declarations.h"
#include "model/Events.h"

namespace vendrel {
namespace {

// Where a comment for an element is offered.
struct Place {
  vendrel::Component* Component = nullptr;
  vendrel::Block* Block = nullptr;
  CodeElement* LastElement = nullptr;
};

Block* DeclarationsOf(Component* component) {
  return component ? component->BlockOfType(btDeclarations, true) : nullptr;
}

Place PlaceOf(VBProject& project, CodeElement& obj) {
  if (auto* block = As<Block>(&obj)) return {block->Component.Get(), block, block};
  if (auto* parameter = As<Parameter>(&obj)) {
    CodeElement* parent = parameter->Parent.Get();
    return {obj.OwnComponent(), As<Block>(parent), parent};
  }
  if (IsA<VBProject, VBProjectGroup>(&obj)) {
    Component* first = project.Components.Item(1);
    return {first, DeclarationsOf(first), nullptr};
  }
  if (IsA<Interface>(&obj)) {
    Component* own = obj.OwnComponent();
    return {own, DeclarationsOf(own), own ? own->LastElement.Get() : nullptr};
  }
  if (auto* component = As<Component>(&obj))
    return {component, DeclarationsOf(component), component};
  if (IsA<EventDeclaration, DeclareDeclaration, Enumeration, UDT, Variable, Constant>(&obj)) {
    Component* own = obj.OwnComponent();
    return {own, DeclarationsOf(own), &obj};
  }
  return {};
}

template <typename Collection>
auto SharedIn(Collection& collection, const typename Collection::Element& element) {
  // Mostly it stands under its name; the walk is for one that does not.
  if (auto keyed = collection.Share(std::string_view(element.Name)); keyed.get() == &element)
    return keyed;
  for (std::size_t i = 1; i <= collection.Count(); ++i)
    if (collection.Item(i) == &element) return collection.Share(i);
  return decltype(collection.Share(std::size_t{1}))();
}

void Prepare(const Place& place, CodeElement& obj) {
  place.Component->LastElement = place.LastElement;
  if (auto* enumeration = As<Enumeration>(&obj))
    place.Block->CurrentEnum() = SharedIn(place.Component->Enumerations, *enumeration);
  if (auto* udt = As<UDT>(&obj)) place.Block->CurrentUDT() = SharedIn(place.Component->UDTs, *udt);
}

}  // namespace

void XmlComments::AddTaggedComment(CodeElement& obj, std::string_view TagIdentifier,
                                   std::string_view Qualifier, std::string_view Text) {
  auto comment = std::make_shared<TaggedComment>();
  comment->TagIdentifier = TagIdentifier;
  comment->Qualifier = Qualifier;
  const TaggedCommentDef* definition = comment->TaggedCommentDef();
  if (!definition) return;
  OnDemand<TaggedComments>* comments = obj.TaggedCommentsField();
  const TaggedComment* known =
      comments && comments->IfAny() ? comments->IfAny()->Item(TagIdentifier) : nullptr;
  const bool isForeign = known && known->Tag != kMadeHere;
  LateText* description = obj.TaggedDescriptionField();
  if (mMode == imKeep && definition->IsDescription && description && !description->empty()) return;
  if (mMode == imKeep && isForeign) return;
  if (mMode == imReplace && definition->IsDescription && description) description->clear();
  if (mMode == imReplace && isForeign) (*comments)->Remove(TagIdentifier);
  comment->Text = Text;
  if (mSourceLine > 0)
    comment->SourceLine = mSourceLine;
  else
    comment->Tag = kMadeHere;
  const bool isApplied = Apply(obj, comment);
  // Whatever the scope of its tag: what documentation says of a type stays with it.
  if (!isApplied && Keeps() && IsA<Component>(&obj) && TagIdentifier == "##REMARKS")
    mProject.AddTaggedComment(**comments, comment, false);
}

bool XmlComments::Apply(CodeElement& obj, const std::shared_ptr<TaggedComment>& comment) {
  if (comment->TagIdentifier == "##EXAMPLE_CS") {
    if (OnDemand<TaggedComments>* comments = obj.TaggedCommentsField())
      mProject.AddTaggedComment(**comments, comment, false);
    return true;
  }
  const Place place = PlaceOf(mProject, obj);
  if (!place.Component || !place.Block) {
    Report(DiagnosticCode::CommentUnplaced,
           {comment->TagIdentifier + " for " + obj.QualifiedName() + " (438)"});
    return true;
  }
  if (IsA<Interface>(&obj)) comment->Qualifier = obj.ElementName();
  Prepare(place, obj);
  return place.Block->ApplyTaggedComment(comment);
}

}  // namespace vendrel
