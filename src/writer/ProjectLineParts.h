#pragma once
// Where the parts of a line of a project file stand.

#include <optional>
#include <string>
#include <string_view>

#include "project/Reference.h"
#include "writer/LineEdit.h"

namespace vendrel {

/// Key of a line as the reader compares it: in capitals, without blanks. Empty without "=".
std::string ProjectLineKey(std::string_view line);
/// What stands behind "=", without blanks and quotation marks around it.
Region ValueRegion(std::string_view line);
/// Path in the line of a module: behind the first ";", up to the next one.
Region ModulePathRegion(std::string_view line);
/// Name in a "Class=" or "Module=" line; nothing where it does not stand where the reader looks.
std::optional<Region> ModuleNameRegion(std::string_view line);
/// The line of a reference in the file `output`, with paths as seen from there. The reference stays
/// as it is: a version that the line makes up, and the base of its path, are its own again.
std::string WrittenLine(Reference& reference, FileSystemObject& output);
/// Path in a "Reference=" or "Object=" line; nothing in one without.
std::optional<Region> ReferencePathRegion(std::string_view line);

/// How the entries of a list that was read stand in the one of now: equal ones at both ends are
/// the same; of those between them each stands in the place of the one in its place, and what one
/// list has more is gone, or new.
class ListMatch {
 public:
  template <typename Before, typename After>
  ListMatch(const Before& before, const After& after)
      : mBefore(before.size()), mAfter(after.size()) {
    const std::size_t shorter = mBefore < mAfter ? mBefore : mAfter;
    while (mSameAtFront < shorter && before[mSameAtFront] == after[mSameAtFront]) ++mSameAtFront;
    while (mSameAtEnd < shorter - mSameAtFront &&
           before[mBefore - mSameAtEnd - 1] == after[mAfter - mSameAtEnd - 1])
      ++mSameAtEnd;
  }
  /// Which entry of now stands for one that was read; nothing for one that is gone.
  std::optional<std::size_t> Of(std::size_t index) const {
    if (index >= mBefore - mSameAtEnd) return index + mAfter - mBefore;
    return index < mAfter - mSameAtEnd ? std::optional(index) : std::nullopt;
  }
  /// New entries: from the first up to, not including, the last.
  std::size_t FirstNew() const { return mBefore - mSameAtEnd; }
  std::size_t EndOfNew() const { return mAfter - mSameAtEnd; }

 private:
  std::size_t mBefore, mAfter, mSameAtFront = 0, mSameAtEnd = 0;
};

}  // namespace vendrel
