#include "comments/WaitingComments.h"

#include "comments/TaggedCommentRules.h"
#include "core/Ascii.h"
#include "model/Block.h"
#include "model/Component.h"

namespace vendrel {
namespace {

void AddLastElement(OfferState& state, const CodeElement* last) {
  state.LastElement = last;
  if (const auto* block = dynamic_cast<const Block*>(last)) {
    state.LastBlockType = block->BlockType();
    state.LastIsNamed = !block->Name().empty();
    state.LastHasParameters = block->Parameters.IfAny() != nullptr;
  } else if (const auto* enumeration = dynamic_cast<const Enumeration*>(last)) {
    state.LastMembers = enumeration->Members().Count();
  } else if (const auto* udt = dynamic_cast<const UDT*>(last)) {
    state.LastMembers = udt->Members.Count();
  }
}

// Walks the buffer from the 0-based position `first` on; what was accepted leaves it, in one pass
// and also when a later comment fails.
void OfferFrom(TaggedComments& buffer, std::size_t first, Block& block) {
  struct Sweep {
    TaggedComments& Buffer;
    std::size_t First;
    std::vector<bool> Accepted;
    ~Sweep() {
      if (!Accepted.empty()) Buffer.RemoveMarked(First, Accepted);
    }
  } sweep{buffer, first, {}};
  const std::size_t count = buffer.Count();
  for (std::size_t i = first; i < count; ++i) {
    const std::shared_ptr<TaggedComment> comment = buffer.Share(i + 1);
    if (!comment || !block.ApplyTaggedComment(comment)) continue;
    if (sweep.Accepted.empty()) {
      sweep.First = i;
      sweep.Accepted.resize(count - i);
    }
    sweep.Accepted[i - sweep.First] = true;
  }
}

}  // namespace

OfferState OfferState::Of(const Component& component, const Block& block) {
  OfferState state;
  state.Target = &block;
  state.CurrentEnum = block.CurrentEnum.get();
  state.CurrentUDT = block.CurrentUDT.get();
  if (block.CurrentEnum) state.EnumMembers = block.CurrentEnum->Members().Count();
  if (block.CurrentUDT) state.UDTMembers = block.CurrentUDT->Members.Count();
  if (const vendrel::Variables* variables = block.Variables.IfAny())
    state.Variables = variables->Count();
  state.Interfaces = component.Interfaces.Count();
  state.IsNamed = !block.Name().empty();
  state.HasParameters = block.Parameters.IfAny() != nullptr;
  const ProjectOptions& options = block.Options();
  state.Preserves = options.PreserveOriginalTaggedComments;
  state.FromTypeLibrary = options.WasReadFromTypeLibrary;
  AddLastElement(state, component.LastElement.Get());
  return state;
}

void NoteChangedText(TaggedComments& buffer, const TaggedComment& comment) {
  if (buffer.mOffers && EqualsNoCaseAscii(comment.TagIdentifier, "##INTERFACE_ALIAS"))
    buffer.mOffers->Refused = 0;
}

void OfferEveryTaggedComment(Component& component, Block& block) {
  TaggedComments* buffer = component.TaggedCommentBuffer.IfAny();
  if (buffer) OfferFrom(*buffer, 0, block);
}

void OfferTaggedComments(Component& component, Block& block) {
  TaggedComments* buffer = component.TaggedCommentBuffer.IfAny();
  if (!buffer || buffer->Count() == 0) return;
  const OfferState state = OfferState::Of(component, block);
  if (!buffer->mOffers) buffer->mOffers = std::make_shared<OfferMemory>();
  OfferMemory& memory = *buffer->mOffers;
  const bool known = memory.State == state && memory.Refused <= buffer->Count();
  const std::size_t first = known ? memory.Refused : 0;
  memory.State = state;
  memory.Offers += buffer->Count() - first;
  memory.Refused = 0;  // should a comment fail, all are offered again
  OfferFrom(*buffer, first, block);
  memory.Refused = buffer->Count();
}

}  // namespace vendrel
