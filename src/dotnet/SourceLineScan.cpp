#include "dotnet/SourceLineScan.h"

#include "core/Ascii.h"
#include "text/Separators.h"

namespace vendrel {
namespace {

constexpr bool IsNameStart(char c) { return IsWordByte(c) && !IsDigitAscii(c); }

}  // namespace

// What an operand follows, on the next line as well.
bool SourceLineScan::MayGoOn(char before) {
  return before != '\0' && std::string_view("=(,{&+").find(before) != kNotFound;
}

bool SourceLineScan::GoesOn(std::string_view line) {
  mLine = line;
  mExplicit = false;
  mWord = {};
  mCodeEnd = line.size();
  for (mAt = 0; mAt < mCodeEnd; ++mAt) {
    if (InLiteral()) {
      Frame& top = mOpen.back();
      if (top.What == Mode::Text || top.What == Mode::Interpolated) {
        TakeText(top);
        continue;
      }
      if (top.What == Mode::Xml) {
        TakeXml(top);
        continue;
      }
      if (EndsHole(top)) continue;
    }
    TakeCode();
  }
  if (mSimple) mOpen.clear();
  if (InLiteral()) return true;
  const std::string_view code = TrimRight(TrimGaps(line.substr(0, mCodeEnd)));
  mExplicit = code == "_" || code.ends_with(" _") || code.ends_with("\t_");
  if (mExplicit || mSimple) return mExplicit;
  return mInAttribute || (mOnlyAttributes && mAnyAttribute && !mOfFile);
}

void SourceLineScan::TakeText(Frame& top) {
  if (Here() == '"') {
    if (Next() == '"')
      ++mAt;
    else
      Leave('"');
  } else if (top.What == Mode::Interpolated && Here() == '{') {
    if (Next() == '{')
      ++mAt;
    else
      mOpen.push_back({Mode::TextHole});
  }
}

// Whether the hole in a literal ends here.
bool SourceLineScan::EndsHole(Frame& top) {
  if (top.What == Mode::XmlHole) {
    if (!IsAt("%>")) return false;
    mOpen.pop_back();
    ++mAt;
    return true;
  }
  if (Here() == '{') ++top.Depth;
  if (Here() != '}' || top.Depth-- > 0) return false;
  mOpen.pop_back();
  return true;
}

void SourceLineScan::TakeXml(Frame& top) {
  if (top.In != Tag::None) return TakeTag(top);
  if (Here() != '<') return;
  if (IsAt("<!--")) {
    top.In = Tag::Comment;
    mAt += 3;
  } else if (IsAt("<%=")) {
    mOpen.push_back({Mode::XmlHole});
    mAt += 2;
  } else if (IsAt("<![CDATA[")) {
    top.In = Tag::Data;
    mAt += 8;
  } else if (Next() == '?') {
    top.In = Tag::Instruction;
    top.IsDocument |= top.Depth == 0;
    ++mAt;
  } else {
    top.In = Next() == '/' ? Tag::Closing : Tag::Opening;
  }
}

void SourceLineScan::TakeTag(Frame& top) {
  switch (top.In) {
    case Tag::Comment: return EndTag(top, "-->");
    case Tag::Data: return EndTag(top, "]]>");
    case Tag::Instruction: return EndTag(top, "?>");
    default: break;
  }
  const char c = Here();
  if (IsAt("<%=")) {
    mOpen.push_back({Mode::XmlHole});
    mAt += 2;
  } else if (c == '"' || c == '\'') {
    const std::size_t close = mLine.find(c, mAt + 1);
    if (close != kNotFound) mAt = close;
  } else if (c == '>') {
    if (top.In == Tag::Closing)
      --top.Depth;
    else if (mLine[mAt > 0 ? mAt - 1 : 0] != '/')
      ++top.Depth;
    top.IsDocument = false;
    EndTag(top, ">");
  }
}

// Goes behind what ends the tag, if that stands on the line. The literal ends with its root, or
// with a comment or data outside of any.
void SourceLineScan::EndTag(Frame& top, std::string_view mark) {
  const std::size_t found = mLine.find(mark, mAt);
  if (found == kNotFound) {
    mAt = mLine.size() - 1;
    return;
  }
  mAt = found + mark.size() - 1;
  top.In = Tag::None;
  if (top.Depth <= 0 && !top.IsDocument) Leave('>');
}

void SourceLineScan::TakeCode() {
  const char c = Here();
  if (c == '"') {
    mOpen.push_back({mBefore == '$' ? Mode::Interpolated : Mode::Text});
    if (!mInAttribute) mOnlyAttributes = false;
    return;
  }
  if (c == '\'') {
    mCodeEnd = mAt;
    return;
  }
  if (IsGap(c)) return;
  const bool isLiteral = c == '<' && (IsAt("<![CDATA[") || IsAt("<!--"));
  if (mInAttribute || (c == '<' && mOnlyAttributes && !isLiteral)) return TakeAttribute();
  if (IsNameStart(c)) return TakeWord();
  if (isLiteral ? !mSimple : c == '<' && MayBeginXml()) {
    mOpen.push_back({Mode::Xml});
    mOnlyAttributes = false;
    --mAt;  // the literal begins with its bracket
    return;
  }
  mOnlyAttributes = false;
  mBefore = c;
}

void SourceLineScan::TakeAttribute() {
  const char c = Here();
  mBefore = c;
  if (mInAttribute) {
    if (c == '(') ++mLists;
    if (c == ')') --mLists;
    if (c == '>' && mLists <= 0) mInAttribute = false;
    return;
  }
  mInAttribute = mAnyAttribute = true;
  mLists = 0;
  const std::string_view inside = TrimLeft(mLine.substr(mAt + 1));
  mOfFile = StartsWithNoCaseAscii(inside, "assembly") || StartsWithNoCaseAscii(inside, "module");
}

void SourceLineScan::TakeWord() {
  const std::size_t begin = mAt;
  while (mAt + 1 < mLine.size() && IsWordByte(mLine[mAt + 1])) ++mAt;
  mWord = mLine.substr(begin, mAt + 1 - begin);
  if (EqualsNoCaseAscii(mWord, "rem") && (mBefore == '\0' || mBefore == ':')) {
    mCodeEnd = begin;
    return;
  }
  if (mWord != "_") mOnlyAttributes = false;
  mBefore = Here();
}

// "<Out> ByVal a As String" and not "<a>As </a>": an attribute.
bool SourceLineScan::IsOfParameter() const {
  constexpr std::size_t kLongest = 512;  // so that a line of many is walked once
  const std::string_view here = mLine.substr(mAt, kLongest);
  const std::size_t close = here.find('>');
  if (close == kNotFound) return false;
  const std::string_view behind = here.substr(close);
  return FindNoCaseAscii(behind, " as ") != kNotFound && behind.find("</") == kNotFound;
}

// Behind what an expression begins, so that "<a" is no comparison.
bool SourceLineScan::MayBeginXml() const {
  const char next = Next();
  if (mSimple || !(IsNameStart(next) || next == '!' || next == '?') || mBefore == '\0')
    return false;
  if (MayGoOn(mBefore)) return true;
  if (mBefore == '(' || mBefore == ',') return !IsOfParameter();
  for (const std::string_view known : {"return", "in", "select", "yield", "from", "then", "else"})
    if (EqualsNoCaseAscii(mWord, known)) return true;
  return false;
}

}  // namespace vendrel
