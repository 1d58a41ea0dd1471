#pragma once
// The parts of the rule by which a comment is placed, shared by the sources that make it up and by
// the walk over waiting comments.

#include <memory>
#include <string_view>

#include "comments/TagDefinitions.h"
#include "core/Ascii.h"
#include "model/Block.h"
#include "model/Component.h"
#include "project/VBProject.h"

namespace vendrel {

/// Where one comment is going: what is known of it and of the block in which it was read, and what
/// the phases of the rule have decided so far. `LastElement` is what was declared last in front of
/// it, `Kind` the class that the scope of its tag names.
struct Placement {
  vendrel::Block& Block;
  vendrel::Component& Component;
  VBProject* Project;
  std::shared_ptr<TaggedComment> Comment;
  const TaggedCommentDef* Definition;
  CodeElement* LastElement;
  bool Preserves;
  bool Applied = false;
  int Wrap;
  ElementTypeEnum Kind = etNone;
  bool IsDescription = false;
  bool Exclude = false;

  bool Is(std::string_view tag) const { return EqualsNoCaseAscii(Comment->TagIdentifier, tag); }
  bool ScopeHas(std::string_view name) const {
    return ContainsNoCaseAscii(Definition->Scope, name);
  }
  /// The last element if it is of that class, else null.
  template <typename T>
  T* LastAs() const {
    return As<T>(LastElement);
  }
  /// Adds the comment under its tag; a comment already there stays alone.
  void AddByTag(CodeElement& element) const {
    OnDemand<TaggedComments>* comments = element.TaggedCommentsField();
    if (comments && !(*comments)->HasKey(Comment->TagIdentifier))
      (*comments)->Add(Comment, Comment->TagIdentifier);
  }
};

/// Whether the waiting comments stand behind the end of the procedure that still receives the lines
/// (complete reading): they do not describe its parameters and variables.
inline bool StandsBehindEnd(const Placement& a) {
  if (!a.Block.CompletelyLoaded() || !a.Block.Options().Reading.CommentsBehindEnd) return false;
  const TaggedComments* buffer = a.Component.TaggedCommentBuffer.IfAny();
  return buffer && buffer->mBehindEnd;
}

/// The variable of the block under that name; null if there is none.
inline Variable* VariableNamed(const Placement& a, std::string_view name) {
  Variables* variables = StandsBehindEnd(a) ? nullptr : a.Block.Variables.IfAny();
  return variables ? variables->Item(name) : nullptr;
}

/// What a command left to do: nothing, the further phases, or nothing since it has been refused.
enum class Outcome { Applied, GoesOn, Refused };

/// Acts on a tag that is a command; other tags go on.
Outcome ActOnCommand(Placement& a);

/// Whether a tag is a command, judged by a rule of its own.
bool IsCommandTag(std::string_view tag);

/// The kind of element of a tag wherever it stands; `etNone` where that depends on the place.
ElementTypeEnum FixedKind(const TaggedCommentDef& definition);

/// Whether a comment of this tag could be placed here: one that is no command and is not looked up
/// by its qualifier.
bool FindsElement(const TaggedCommentDef& definition, Component& component, Block& block);

}  // namespace vendrel
