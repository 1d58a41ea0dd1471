#pragma once
// The statements of a VB.NET file, each with the physical lines that it stands on.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "intake/net/LineShapes.h"

namespace vendrel {

/// One logical line.
struct SourceStatement {
  /// The lines as they are handed to the intake; valid until the next statement is read.
  std::vector<std::string_view> Lines;
  /// The statement in one line.
  std::string_view Text;
  /// 1-based physical line on which it begins.
  std::int32_t FirstLine = 0;
  /// Lines from this one on (0-based in `Lines`) are the inside of a text or of an XML literal.
  std::size_t InsideFrom = static_cast<std::size_t>(-1);
  /// The physical line behind the statement; empty where it is not known.
  std::string_view Next = {};
  /// What its first line tells by itself; `Unclear` where nobody asked.
  NetLineShape Shape = NetLineShape::Unclear;

  /// Makes it a new one on one line.
  void Begin(std::string_view line, std::int32_t number) {
    Lines.clear();
    Lines.push_back(line);
    Text = line;
    FirstLine = number;
    InsideFrom = static_cast<std::size_t>(-1);
    Next = {};
    Shape = NetLineShape::Unclear;
  }
};

/// Walks a file as the described behaviour has it: tabs are blanks, a bare line feed parts lines
/// outside of quotation marks, an underscore at the end of a line joins it to the next.
class ClassicSourceLines {
 public:
  explicit ClassicSourceLines(std::string_view text) : mRest(text) {}
  /// False at the end of the file; a continued line without a next one is lost there.
  bool Next(SourceStatement& statement);

 private:
  bool NextPiece(std::string_view& piece);
  void ReadLine();

  std::string_view mRest;
  std::string mLine;
  std::vector<std::string_view> mPieces;
  std::size_t mPiece = 0;
  std::string mBuffer, mJoined;
  std::int32_t mPhysical = 1;  // of the next piece
};

/// Walks a file by its physical lines (`NetLines`): the lines of a statement are those joined by a
/// blank and an underscore, those that attributes in front of a declaration stand on, and those of
/// a text or XML literal of several lines.
class SourceLines {
 public:
  explicit SourceLines(std::string_view text) : mText(text) {}
  bool Next(SourceStatement& statement);

 private:
  std::string_view TakePhysical();
  std::string_view Ahead();

  std::string_view mText;
  std::size_t mAt = 0;
  std::int32_t mPhysical = 0;
  // The line that begins at `mAheadOf`, and where it ends.
  std::size_t mAheadOf = static_cast<std::size_t>(-1), mBehindAhead = 0;
  std::string_view mAhead;
  std::string mJoined;
  // A text or XML literal without an end was looked for up to the end of the file.
  int mUnclosed = 0;
  // The last character of code in front of the line, where that may go on in it.
  char mBefore = '\0';
};

}  // namespace vendrel
