#pragma once
// All lines that a source file has now, in their order.

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "dotnet/SourceScan.h"

namespace vendrel {

/// A line at the place that it has in the file that was read, or takes from its neighbours.
struct PlacedLine {
  std::size_t Place;
  const CodeLines* Lines;
  std::int32_t Index;
};

/// The lines of one file out of its modules. A line that was read stands where it stood, one that
/// was added behind the line in front of it, a block that was added behind the one in front of it.
class FileLayout {
 public:
  explicit FileLayout(ProjectFile& file);

  const std::vector<PlacedLine>& Lines() const { return mLines; }
  /// What stands on a line in place of its text; null where that stays.
  const std::string* NewText(const PlacedLine& line) const;

 private:
  void Add(const Component& component);
  void Add(const Block& block);
  void Add(const CodeLines& lines);
  void NoteNewName(const Component& component);
  std::size_t FirstPlace(const CodeLines& lines) const;

  const std::string* mText;
  const ScannedSource& mScanned;
  std::vector<PlacedLine> mLines;
  std::map<std::pair<const CodeLines*, std::int32_t>, std::string> mNewTexts;
  std::size_t mBehind = 0;
  bool mHere = true;  // the block stands in this file, or behind one that does
};

}  // namespace vendrel
