#pragma once
// Differences between two trees, as the commands show them.

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

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

/// Writes differences, each as a line with tabs between its columns (change, class, element, place,
/// what changed) and lines with "-" and "+" below where it takes several, or as a JSON object.
class ChangeWriter {
 public:
  ChangeWriter(std::ostream& out, bool json) : mOut(out), mJson(json) {}
  /// Writes one and counts it.
  void Write(const Change& change);
  /// Compares two elements and writes what differs.
  void Compare(ElementRef before, ElementRef after, const DifferenceOptions& options);
  std::size_t Count() const { return mCount; }

 private:
  void WriteText(const Change& change);
  void WriteJson(const Change& change);

  std::ostream& mOut;
  bool mJson;
  ShownPaths mPaths;
  std::size_t mCount = 0;
};

/// Writes each line of a text behind a mark ("  - "), the first ones of a long text alone.
void WriteMarkedLines(std::ostream& out, std::string_view mark, std::string_view text);

/// Writes the lines that differ between two texts, with "-" and "+"; "quoted" so that blanks and
/// line ends are seen. "..." stands for the lines between two changes.
void WriteLineChanges(std::ostream& out, std::string_view before, std::string_view after,
                      bool quoted = false);

}  // namespace vendrel::cli
