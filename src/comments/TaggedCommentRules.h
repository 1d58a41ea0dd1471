#pragma once
// How tagged comments come in: recognised, routed to an element or to the buffer of their module,
// and offered again to the elements that the following lines make.

#include <memory>
#include <string_view>

#include "model/TaggedComment.h"

namespace vendrel {

/// Whether the comment part of a line (without its apostrophe) is a tagged comment: its first word
/// is a defined tag, or "##". Allocates nothing for an ordinary comment.
bool IsTaggedCommentText(std::string_view commentPart);

/// Tells of a comment part that begins with "##" and a word close to a tag. Ornaments ("'####") and
/// words of a project's own are left alone.
void ReportMistypedTag(std::string_view commentPart);

/// Adds a comment to a collection. A comment already there under the same key takes the text
/// instead, joined by the wrap type of the tag, unless `Preserve`. The key is the tag; in a buffer
/// with ":" and the qualifier where there is one.
void AddTaggedComment(TaggedComments& col, const std::shared_ptr<TaggedComment>& tc, bool IsBuffer,
                      bool Preserve);

/// Offers the comments that wait in the buffer of `component` to `block` and removes those that
/// found their element: to be called for each line, and at the end of a module. A comment that was
/// refused is offered again only when something has changed that its refusal depended on, so the
/// result is that of `OfferEveryTaggedComment` at a fraction of the price.
void OfferTaggedComments(Component& component, Block& block);

/// The plain walk over all waiting comments, whatever was refused before.
void OfferEveryTaggedComment(Component& component, Block& block);

/// The scope name of an element ("FZ:Method"); "{none}" where there is none.
std::string_view NamespaceFromObject(const CodeElement* Element);

}  // namespace vendrel
