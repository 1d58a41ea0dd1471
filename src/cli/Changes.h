#pragma once
// Differences between two trees, as the commands show them.

#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/JsonLines.h"
#include "cli/Report.h"
#include "output/Difference.h"

namespace vendrel::cli {

/// The lines of a text with their ends, by their 0-based number.
class NumberedLines {
 public:
  explicit NumberedLines(std::string_view text);
  std::string_view At(std::size_t index) const {
    return mText.substr(mStarts[index], mStarts[index + 1] - mStarts[index]);
  }

 private:
  std::string_view mText;
  std::vector<std::size_t> mStarts;
};

/// Writes differences, those of one procedure (or of another element) together: a line with tabs
/// between its columns (change, kind, element, place, and what changed if that is one thing), below
/// it a line for each further part, and lines with "-" and "+"; or one JSON object.
class ChangeWriter {
 public:
  ChangeWriter(std::ostream& out, std::string_view command, const CommonOptions& options, bool json)
      : mOut(out), mJson(json), mLines(out, command, options, json) {}
  /// Takes one difference. It is written with the others of its whole, when the next one begins.
  void Write(const Change& change);
  /// Writes what has been taken.
  void Flush();
  /// Compares two elements and writes what differs.
  void Compare(ElementRef before, ElementRef after, const DifferenceOptions& options);
  /// What has been written, in numbers: "2 module changed, 1 procedure renamed".
  std::string Summary() const;
  /// Number of those taken.
  std::size_t Count() const { return mCount; }
  /// Where its objects go, for others of the same list.
  JsonLines& Lines() { return mLines; }

 private:
  bool BelongsToEntry(const Change& change) const;
  void CountEntry();
  void WriteText();
  void WritePart(const Change& part);
  void WriteJson();
  void WritePlace(std::string_view name, const ChangePlace& place);

  std::ostream& mOut;
  bool mJson;
  JsonLines mLines;
  ShownPaths mPaths;
  std::size_t mCount = 0;
  /// Differences of one whole.
  std::vector<Change> mEntry;
  std::map<ChangeKind, std::map<std::string, std::size_t, std::less<>>> mCounts;
};

/// Writes each line of a text behind a mark ("  - "), the first ones of a long text alone.
void WriteMarkedLines(std::ostream& out, std::string_view mark, std::string_view text);

/// Writes the lines that differ between two texts, with "-" and "+"; "quoted" so that blanks and
/// line ends are seen. "..." stands for the lines between two changes.
void WriteLineChanges(std::ostream& out, std::string_view before, std::string_view after,
                      bool quoted = false);

}  // namespace vendrel::cli
