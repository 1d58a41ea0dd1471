#pragma once
// The manifest: an XML dump of a loaded project, by which two loads are compared as text. It
// compares structure and attributes: an element that holds text alone is dropped.

#include <functional>
#include <string_view>

#include "model/Fwd.h"

namespace vendrel {

/// Adds a child "TaggedComment" for each comment; nothing for an absent collection.
void TaggedCommentManifest(XmlElement& e, const TaggedComments* TaggedComments);

/// Hands on the text of `VBProject::Manifest` in pieces, and has no more of it in memory than one
/// module at a time.
void WriteManifest(VBProject& project, bool justProject, bool includeTaggedComments,
                   const std::function<void(std::string_view)>& write);

}  // namespace vendrel
