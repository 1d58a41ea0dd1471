#pragma once
// The walk over the comments that wait in the buffer of a module. The rule offers each of them
// after each line; most lines change nothing that a refusal depended on, and then nothing is
// offered.

#include <cstdint>
#include <memory>

#include "model/TaggedComment.h"

namespace vendrel {

/// All that `Block::ApplyTaggedComment` reads of the tree when it refuses a comment.
struct OfferState {
  const Block* Target = nullptr;
  const CodeElement* LastElement = nullptr;
  const Enumeration* CurrentEnum = nullptr;
  const UDT* CurrentUDT = nullptr;
  std::size_t EnumMembers = 0;
  std::size_t UDTMembers = 0;
  std::size_t LastMembers = 0;
  std::size_t Variables = 0;
  std::size_t Interfaces = 0;
  std::int32_t LastBlockType = 0;
  bool IsNamed = false;
  bool HasParameters = false;
  bool LastIsNamed = false;
  bool LastHasParameters = false;
  bool Preserves = false;
  bool FromTypeLibrary = false;

  bool operator==(const OfferState&) const = default;

  static OfferState Of(const Component& component, const Block& block);
};

/// What the last walk left: the state it met, and how many comments from the first on were refused
/// under it.
struct OfferMemory {
  OfferState State;
  std::size_t Refused = 0;
  /// Offers made so far, by which the growth of the walk is measured.
  std::size_t Offers = 0;
};

/// The text of a waiting comment has changed. Only an interface alias is judged by its text.
void NoteChangedText(TaggedComments& buffer, const TaggedComment& comment);

}  // namespace vendrel
