#pragma once
// The walk over the comments that wait in the buffer of a module. The rule offers each of them
// after each line. Here a comment that was refused is filed under what it waits for, and offered
// again when that may have come:
//
// - a name: a variable, member or interface that its qualifier names;
// - a place: the tag alone decides whether it fits the element at hand, once for all comments of
// it;
// - any change of what the rule reads, for the few that are judged by more.
//
// What is offered together is offered in the order of the buffer.

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "comments/TagDefinitions.h"
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

/// A comment of the buffer; serial numbers rise in its order.
struct WaitingComment {
  std::uint64_t Serial;
  std::shared_ptr<TaggedComment> Comment;
};
using WaitingList = std::vector<WaitingComment>;

/// Comments that wait for a name in one kind of collection, and how much of it they know.
struct NameWatch {
  std::unordered_map<std::string, WaitingList> ByName;
  const void* Collection = nullptr;
  std::size_t Seen = 0;
};

/// What is known of the comments of one buffer.
struct OfferMemory {
  OfferState State;
  const TaggedCommentDefs* Definitions = nullptr;
  std::size_t DefinitionCount = 0;
  std::uint64_t NextSerial = 1;
  /// Of the comments of the buffer that have been offered, by position.
  std::vector<std::uint64_t> Serials;
  std::map<const TaggedCommentDef*, WaitingList> ByTag;
  std::array<NameWatch, 4> Names;
  WaitingList Others;
  bool OthersChanged = false;
  /// Offers made so far, by which the growth of the walk is measured.
  std::size_t Offers = 0;
};

/// The text of a waiting comment has changed. Only an interface alias is judged by its text.
void NoteChangedText(TaggedComments& buffer, const TaggedComment& comment);

}  // namespace vendrel
