#include "core/CaseFold.h"
#include "model/TaggedComment.h"

namespace vendrel {

const TaggedComment* TaggedComments::Item(std::string_view key) const {
  const TaggedComment* found = mCol.Find(key);
  if (found || !CollectionIsNotKeyed_SearchByTagID) return found;
  for (const TaggedComment& comment : mCol)
    if (EqualsNoCase(comment.TagIdentifier, key)) return &comment;
  return nullptr;
}

void TaggedComments::Remove(std::size_t index) {
  if (mCol.Find(index)) mCol.Remove(index);
}

void TaggedComments::Remove(std::string_view key) {
  if (mCol.HasKey(key)) mCol.Remove(key);
}

}  // namespace vendrel
