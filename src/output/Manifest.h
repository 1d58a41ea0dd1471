#pragma once
// The manifest: an XML dump of a loaded project, by which two loads are compared as text. It
// compares structure and attributes: an element that holds text alone is dropped.

#include "model/Fwd.h"

namespace vendrel {

/// Adds a child "TaggedComment" for each comment; nothing for an absent collection.
void TaggedCommentManifest(XmlElement& e, const TaggedComments* TaggedComments);

}  // namespace vendrel
