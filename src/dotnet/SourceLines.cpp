#include "dotnet/SourceLines.h"

#include <algorithm>

#include "core/Ascii.h"
#include "dotnet/SourceLineScan.h"
#include "services/SourceText.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// Texts and XML literals without an end are looked for so often; behind that each line stands for
// itself, or a damaged file would be walked once a line.
constexpr int kMostUnclosed = 16;
// Attributes over more lines are none.
constexpr std::size_t kMostAttributeLines = 64;

std::size_t CountOf(std::string_view text, char c) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), c));
}

}  // namespace

// --- As described -------------------------------------------------------------------------------

// One line up to CR LF or CR, its tabs as four blanks, parted at the line feeds in it.
void ClassicSourceLines::ReadLine() {
  const std::size_t end = std::min(mRest.find('\r'), mRest.size());
  mLine = ReplaceAll(mRest.substr(0, end), "\t", "    ");
  mRest.remove_prefix(end);
  if (mRest.starts_with("\r\n"))
    mRest.remove_prefix(2);
  else if (!mRest.empty())
    mRest.remove_prefix(1);
  mPiece = 0;
  if (mLine.find('\n') == std::string::npos)
    mPieces = {mLine};
  else
    mPieces = SplitEx(mLine, "\n", true);
}

bool ClassicSourceLines::NextPiece(std::string_view& piece) {
  while (mPiece >= mPieces.size()) {
    if (mRest.empty()) return false;
    ReadLine();
  }
  piece = mPieces[mPiece++];
  return true;
}

bool ClassicSourceLines::Next(SourceStatement& statement) {
  statement = {};
  mBuffer.clear();
  for (std::string_view piece; NextPiece(piece);) {
    if (statement.FirstLine == 0) statement.FirstLine = mPhysical;
    mPhysical += 1 + static_cast<std::int32_t>(CountOf(piece, '\n'));
    piece = TrimRight(piece);
    if (piece.ends_with('_')) {
      mBuffer.append(piece.substr(0, piece.size() - 1)) += ' ';
      continue;
    }
    mJoined = mBuffer;
    mJoined += piece;
    statement.Text = mJoined;
    statement.Lines = {statement.Text};
    return true;
  }
  return false;
}

// --- By physical lines --------------------------------------------------------------------------

// Each line is looked for once: it is seen ahead, then taken.
std::string_view SourceLines::Ahead() {
  if (mAheadOf != mAt) {
    std::string_view rest = mText.substr(mAt);
    mAhead = TakeLine(rest);
    mBehindAhead = mText.size() - rest.size();
    mAheadOf = mAt;
  }
  return mAhead;
}

std::string_view SourceLines::TakePhysical() {
  const std::string_view line = Ahead();
  mAt = mBehindAhead;
  ++mPhysical;
  return line;
}

bool SourceLines::Next(SourceStatement& statement) {
  if (mAt >= mText.size()) return false;
  const std::size_t begin = mAt;
  const std::int32_t beginPhysical = mPhysical;
  std::string_view line = TakePhysical();
  statement.Begin(line, mPhysical);
  statement.Next = Ahead();
  statement.Shape = ShapeOfNetLine(line);
  if (statement.Shape != NetLineShape::Unclear) {
    if (statement.Shape != NetLineShape::Bare) mBefore = '\0';
    return true;
  }
  for (const bool simple : {mUnclosed >= kMostUnclosed, true}) {
    SourceLineScan scan(simple, mBefore);
    statement.Begin(line, statement.FirstLine);
    bool goesOn = scan.GoesOn(line);
    mJoined.assign(line);
    while (goesOn && mAt < mText.size()) {
      if (scan.InAttribute() && statement.Lines.size() > kMostAttributeLines) break;
      if (scan.IsExplicit())
        mJoined.resize(mJoined.rfind('_'));
      else if (!scan.InLiteral() && !scan.InAttribute()) {
        // Attributes go with what follows them at once.
        const std::string_view following = TrimGaps(Ahead());
        if (following.empty() || following.front() == '\'' || following.front() == '#') break;
      }
      const bool inside = scan.InLiteral();
      const std::string_view physical = TakePhysical();
      if (inside) statement.InsideFrom = std::min(statement.InsideFrom, statement.Lines.size());
      statement.Lines.push_back(physical);
      mJoined.append(1, inside ? '\n' : ' ').append(physical);
      goesOn = scan.GoesOn(physical);
    }
    if (simple || !(scan.InLiteral() || scan.InAttribute())) {
      mBefore = scan.Before();
      break;
    }
    // No end: what was taken for a text or literal is none.
    ++mUnclosed;
    mAt = begin;
    mPhysical = beginPhysical;
    line = TakePhysical();
  }
  statement.Text = mJoined;
  statement.Next = Ahead();
  return true;
}

}  // namespace vendrel
