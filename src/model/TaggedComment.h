#pragma once
// A tagged comment: a comment line whose first word begins with "##", or an item of that shape from
// a comment file or library. Its rules stand in comments/.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Enums.h"
#include "core/WeakHandle.h"
#include "model/CodeElement.h"
#include "model/ElementCollection.h"
#include "model/Fwd.h"
#include "model/Property.h"

namespace vendrel {

/// One tagged comment. It moves from the buffer of its module to an element, or dissolves into the
/// description of one.
class TaggedComment : public HandleTarget {
 public:
  /// The tag with its two hashes, e.g. "##SUMMARY"; upper case after `Initialise`.
  SharedText TagIdentifier;
  /// The member that the comment addresses; empty for most tags.
  SharedText Qualifier;
  /// Free for the client.
  SharedText Tag;
  SharedText State;
  /// 1-based line of its block on which it was read.
  std::int32_t LineIndex = 0;
  /// 1-based physical line in the file of its module; 0: not from source.
  std::int32_t SourceLine = 0;
  /// Joins earlier text with one blank, whatever the definition says.
  bool AlwaysJoinWithWhitespace = false;
  /// The text behind tag and qualifier.
  std::string Text;
  /// The element it has been applied to.
  WeakHandle<vendrel::CodeElement> CodeElement;

  /// Parses the comment part of a line. Always true.
  bool Initialise(std::string_view Source);
  /// Replaces a legacy tag; `ForAssociation` while the comment has just been read.
  void Upgrade(bool ForAssociation);
  /// A new comment with element, qualifier, tag, identifier and text of this one.
  std::shared_ptr<TaggedComment> Clone() const;
  /// The definition of the tag, looked up at each call; null if the tag is not defined.
  const vendrel::TaggedCommentDef* TaggedCommentDef() const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"TagIdentifier", &Own::TagIdentifier},
                         Prop{"Qualifier", &Own::Qualifier},
                         Prop{"Tag", &Own::Tag},
                         Prop{"State", &Own::State},
                         Prop{"LineIndex", &Own::LineIndex},
                         Prop{"SourceLine", &Own::SourceLine},
                         Prop{"AlwaysJoinWithWhitespace", &Own::AlwaysJoinWithWhitespace},
                         Prop{"Text", &Own::Text},
                         Prop{"CodeElement", &Own::CodeElement, PropertyKind::Link}};
  }
};

/// Tagged comments of one element or buffer. A key already taken raises 457.
class TaggedComments : public PlainCollection<TaggedComment> {
 public:
  /// For clients that fill the collection without keys: `Item` then also searches by tag.
  bool CollectionIsNotKeyed_SearchByTagID = false;

  using PlainCollection::Item;
  TaggedComment* Item(std::string_view key) {
    return const_cast<TaggedComment*>(std::as_const(*this).Item(key));
  }
  const TaggedComment* Item(std::string_view key) const;
  /// Removes by position or key; a missing one is ignored.
  void Remove(std::size_t index);
  void Remove(std::string_view key);
  void Remove(int index) { Remove(static_cast<std::size_t>(index > 0 ? index : 0)); }

  // For the walk over waiting comments (comments/WaitingComments.cpp).
  /// Removes the comments at the marked 0-based positions from `first` on.
  void RemoveMarked(std::size_t first, const std::vector<bool>& marked);
  std::shared_ptr<struct OfferMemory> mOffers;
  /// The comments stand behind the end of the procedure that is open.
  bool mBehindEnd = false;
};

}  // namespace vendrel
