// Comments of one tag folded into the descriptions of their elements, after loading.

#include <utility>

#include "comments/AppendDescription.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "model/Block.h"
#include "model/Component.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

struct MergeRequest {
  std::string_view TagID;
  bool OnlyUseIfBlank;
  bool Overwrite;

  void Into(CodeElement& element) const {
    const TaggedComments* comments = std::as_const(element).TaggedCommentsField()->IfAny();
    if (!comments || comments->Count() == 0) return;
    LateText& description = *element.TaggedDescriptionField();
    description = MergedTaggedDescription(description, *comments, TagID, OnlyUseIfBlank, Overwrite);
  }
  template <typename Elements>
  void IntoEach(Elements& elements) const {
    for (CodeElement& element : elements) Into(element);
  }
};

}  // namespace

void Block::MergeTaggedComment(std::string_view TagID, bool OnlyUseIfBlank, bool Overwrite) try {
  const MergeRequest merge{TagID, OnlyUseIfBlank, Overwrite};
  if (BlockType() != btDeclarations) return merge.Into(*this);
  if (vendrel::Variables* variables = Variables.IfAny()) merge.IntoEach(*variables);
}
VENDREL_CONTEXT(TagID, OnlyUseIfBlank, Overwrite, *this)

void Component::MergeTaggedComment(std::string_view TagID, bool OnlyUseIfBlank,
                                   bool Overwrite) try {
  const Workspace::Use use(Options().Workspace());
  const MergeRequest merge{TagID, OnlyUseIfBlank, Overwrite};
  merge.Into(*this);
  merge.IntoEach(EventDeclarations);
  for (Enumeration& enumeration : Enumerations) {
    merge.Into(enumeration);
    merge.IntoEach(enumeration.Members());
  }
  for (UDT& udt : UDTs) {
    merge.Into(udt);
    merge.IntoEach(udt.Members);
  }
  for (Block& block : Blocks)
    if (block.IsMethod() ||
        (block.IsProperty() && ConsolidatedPropertyBlock(block.Name(), true) == &block))
      block.MergeTaggedComment(TagID, OnlyUseIfBlank, Overwrite);
}
VENDREL_CONTEXT(TagID, OnlyUseIfBlank, Overwrite, *this)

void VBProject::MergeTaggedComment(std::string_view TagID, bool OnlyUseIfBlank,
                                   bool Overwrite) try {
  const Workspace::Use use(Workspace());
  for (Component& component : Components)
    component.MergeTaggedComment(TagID, OnlyUseIfBlank, Overwrite);
}
VENDREL_CONTEXT(TagID, OnlyUseIfBlank, Overwrite, *this)

}  // namespace vendrel
