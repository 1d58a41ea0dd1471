#include "dotnet/SourceLines.h"

#include <algorithm>

#include "core/Ascii.h"
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

// Where a statement stands while its lines are walked.
struct SourceLines::Scan {
  enum class Mode : std::uint8_t { Text, Interpolated, TextHole, Xml, XmlHole };
  struct Frame {
    Mode What;
    int Depth = 0;
  };
  std::vector<Frame> Open;
  bool Simple = false;         // neither texts nor literals of several lines
  bool OnlyAttributes = true;  // nothing but attributes so far
  bool AttributeOpen = false;  // within "<" and ">"
  bool HasAttribute = false;
  bool OfFile = false;                     // "<Assembly: ...>"
  int Lists = 0;                           // open parentheses in an attribute
  bool Explicit = false;                   // the line ends in " _"
  char Before = '\0';                      // the last character of code, blanks aside
  std::size_t WordBegin = 0, WordEnd = 0;  // the last word of the line
  std::size_t InTag = 0;                   // in the tag of an element: 1, in a closing one: 2

  bool InLiteral() const { return !Open.empty(); }
};

namespace {

constexpr bool IsNameStart(char c) {
  return IsLetterAscii(c) || c == '_' || (static_cast<unsigned char>(c) & 0x80);
}

// Behind what an expression begins, so that "<a" is no comparison.
bool MayBeginExpression(char before, std::string_view word) {
  if (before == '\0') return false;
  if (std::string_view("=(,{&+").find(before) != kNotFound) return true;
  for (const std::string_view known : {"return", "in", "select", "yield", "from", "then", "else"})
    if (EqualsNoCaseAscii(word, known)) return true;
  return false;
}

// Whether a line is a statement of its own, by a look at its characters.
bool StandsAlone(std::string_view line) {
  const std::string_view trimmed = TrimRight(TrimGaps(line));
  if (trimmed.empty() || trimmed.front() == '\'' || trimmed.front() == '#') return true;
  if (trimmed.back() == '_' || line.find('<') != kNotFound) return false;
  if (CountOf(line, '"') % 2 != 0) return false;
  return line.find('\'') == kNotFound || line.find('_') == kNotFound;
}

}  // namespace

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

// Walks one line; true if the statement goes on behind it.
bool SourceLines::GoesOn(Scan& scan, std::string_view line) {
  using Mode = Scan::Mode;
  scan.Explicit = false;
  scan.WordBegin = scan.WordEnd = 0;
  std::size_t codeEnd = line.size();
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    const char next = i + 1 < line.size() ? line[i + 1] : '\0';
    if (scan.InLiteral()) {
      Scan::Frame& top = scan.Open.back();
      if (top.What == Mode::Text || top.What == Mode::Interpolated) {
        if (c == '"') {
          if (next == '"')
            ++i;
          else
            scan.Open.pop_back(), scan.Before = '"';
        } else if (top.What == Mode::Interpolated && c == '{') {
          if (next == '{')
            ++i;
          else
            scan.Open.push_back({Mode::TextHole});
        }
        continue;
      }
      if (top.What == Mode::Xml) {
        const std::string_view here = line.substr(i);
        if (scan.InTag != 0) {
          if (here.starts_with("<%=")) {
            scan.Open.push_back({Mode::XmlHole});
            i += 2;
          } else if (c == '"' || c == '\'') {
            const std::size_t close = line.find(c, i + 1);
            if (close != kNotFound) i = close;
          } else if (c == '>') {
            if (scan.InTag == 2)
              --top.Depth;
            else if (line[i > 0 ? i - 1 : 0] != '/')
              ++top.Depth;
            scan.InTag = 0;
            if (top.Depth <= 0) scan.Open.pop_back(), scan.Before = '>';
          }
        } else if (here.starts_with("<!--")) {
          top.Depth += 1 << 16;
          i += 3;
        } else if (top.Depth >= 1 << 16) {  // within a comment
          if (here.starts_with("-->")) {
            top.Depth -= 1 << 16;
            i += 2;
          }
        } else if (here.starts_with("<%=")) {
          scan.Open.push_back({Mode::XmlHole});
          i += 2;
        } else if (here.starts_with("<![CDATA[")) {
          const std::size_t close = line.find("]]>", i);
          if (close != kNotFound) i = close + 2;
        } else if (here.starts_with("<?")) {
          const std::size_t close = line.find("?>", i);
          if (close != kNotFound) i = close + 1;
        } else if (c == '<') {
          scan.InTag = next == '/' ? 2 : 1;
        }
        continue;
      }
      if (top.What == Mode::XmlHole && c == '%' && next == '>') {
        scan.Open.pop_back();
        ++i;
        continue;
      }
      if (top.What == Mode::TextHole) {
        if (c == '{') ++top.Depth;
        if (c == '}' && top.Depth-- == 0) {
          scan.Open.pop_back();
          continue;
        }
      }
    }
    // Code.
    if (c == '"') {
      const bool interpolated = scan.Before == '$';
      scan.Open.push_back({interpolated ? Mode::Interpolated : Mode::Text});
      if (!scan.AttributeOpen) scan.OnlyAttributes = false;
      continue;
    }
    if (c == '\'') {
      codeEnd = i;
      break;
    }
    if (c == ' ' || c == '\t') continue;
    if (scan.AttributeOpen) {
      if (c == '(') ++scan.Lists;
      if (c == ')') --scan.Lists;
      if (c == '>' && scan.Lists <= 0) scan.AttributeOpen = false;
      scan.Before = c;
      continue;
    }
    if (c == '<' && scan.OnlyAttributes) {
      scan.AttributeOpen = scan.HasAttribute = true;
      scan.Lists = 0;
      const std::string_view inside = TrimLeft(line.substr(i + 1));
      scan.OfFile =
          StartsWithNoCaseAscii(inside, "assembly") || StartsWithNoCaseAscii(inside, "module");
      scan.Before = c;
      continue;
    }
    if (IsNameStart(c)) {
      scan.WordBegin = i;
      while (i + 1 < line.size() && (IsNameStart(line[i + 1]) || IsDigitAscii(line[i + 1]))) ++i;
      scan.WordEnd = i + 1;
      const std::string_view word = line.substr(scan.WordBegin, scan.WordEnd - scan.WordBegin);
      if (EqualsNoCaseAscii(word, "rem") && (scan.Before == '\0' || scan.Before == ':')) {
        codeEnd = scan.WordBegin;
        break;
      }
      if (word != "_") scan.OnlyAttributes = false;
      scan.Before = line[i];
      continue;
    }
    if (c == '<' && !scan.Simple && (IsNameStart(next) || next == '!' || next == '?') &&
        MayBeginExpression(scan.Before,
                           line.substr(scan.WordBegin, scan.WordEnd - scan.WordBegin))) {
      scan.Open.push_back({Mode::Xml});
      scan.InTag = 0;
      --i;  // the literal begins with its bracket
      continue;
    }
    scan.OnlyAttributes = false;
    scan.Before = c;
  }
  if (scan.Simple)
    while (scan.InLiteral()) scan.Open.pop_back();
  if (scan.InLiteral()) {
    // A hole of code ends its line as code does.
    return true;
  }
  const std::string_view code = TrimRight(TrimGaps(line.substr(0, codeEnd)));
  scan.Explicit = code == "_" || code.ends_with(" _") || code.ends_with("\t_");
  if (scan.Explicit || scan.Simple) return scan.Explicit;
  if (scan.AttributeOpen) return true;
  return scan.OnlyAttributes && scan.HasAttribute && !scan.OfFile;
}

bool SourceLines::Next(SourceStatement& statement) {
  if (mAt >= mText.size()) return false;
  const std::size_t begin = mAt;
  const std::int32_t beginPhysical = mPhysical;
  std::string_view line = TakePhysical();
  statement.Begin(line, mPhysical);
  statement.Next = Ahead();
  if (StandsAlone(line)) return true;
  for (const bool simple : {mUnclosed >= kMostUnclosed, true}) {
    Scan scan;
    scan.Simple = simple;
    statement.Begin(line, statement.FirstLine);
    bool goesOn = GoesOn(scan, line);
    mJoined.assign(line);
    while (goesOn && mAt < mText.size()) {
      if (scan.AttributeOpen && statement.Lines.size() > kMostAttributeLines) break;
      if (scan.Explicit)
        mJoined.resize(mJoined.rfind('_'));
      else if (!scan.InLiteral() && !scan.AttributeOpen) {
        // Attributes go with what follows them at once.
        const std::string_view following = TrimGaps(Ahead());
        if (following.empty() || following.front() == '\'' || following.front() == '#') break;
      }
      const bool inside = scan.InLiteral();
      const std::string_view physical = TakePhysical();
      if (inside) statement.InsideFrom = std::min(statement.InsideFrom, statement.Lines.size());
      statement.Lines.push_back(physical);
      mJoined.append(1, inside ? '\n' : ' ').append(physical);
      goesOn = GoesOn(scan, physical);
    }
    if (simple || !(scan.InLiteral() || scan.AttributeOpen)) break;
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
