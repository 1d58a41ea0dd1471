#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

namespace vendrel {

/// A statement of VB.NET on its way through its physical lines: whether an underscore, attributes,
/// or a text or XML literal of several lines joins the next one.
class SourceLineScan {
 public:
  /// `simple` knows neither texts nor literals of several lines. `before` is the last character of
  /// code in front of the statement, 0 for none: behind an operator "<" begins no attribute.
  SourceLineScan(bool simple, char before)
      : mSimple(simple), mOnlyAttributes(!MayGoOn(before)), mBefore(MayGoOn(before) ? before : 0) {}

  /// Walks one line; true if the statement goes on behind it.
  bool GoesOn(std::string_view line);

  bool InLiteral() const { return !mOpen.empty(); }
  bool InAttribute() const { return mInAttribute; }
  /// The line ends in " _".
  bool IsExplicit() const { return mExplicit; }
  /// The last character of code, 0 for none.
  char Before() const { return mBefore; }

 private:
  enum class Mode : std::uint8_t { Text, Interpolated, TextHole, Xml, XmlHole };
  // What stands between "<" and ">" of an XML literal.
  enum class Tag : std::uint8_t { None, Opening, Closing, Comment, Data, Instruction };
  struct Frame {
    Mode What;
    int Depth = 0;  // of elements, or of braces in a hole
    Tag In = Tag::None;
    bool IsDocument = false;  // begins with "<?": the root comes behind
  };

  static bool MayGoOn(char before);
  // Each takes what stands at `mAt` and leaves `mAt` on its last byte.
  void TakeText(Frame& top);
  void TakeXml(Frame& top);
  void TakeTag(Frame& top);
  void EndTag(Frame& top, std::string_view mark);
  bool EndsHole(Frame& top);
  void TakeAttribute();
  void TakeCode();
  void TakeWord();
  bool MayBeginXml() const;
  bool IsOfParameter() const;

  char Here() const { return mLine[mAt]; }
  char Next() const { return mAt + 1 < mLine.size() ? mLine[mAt + 1] : '\0'; }
  bool IsAt(std::string_view text) const { return mLine.substr(mAt).starts_with(text); }
  void Leave(char before) {
    mOpen.pop_back();
    mBefore = before;
  }

  std::vector<Frame> mOpen;
  bool mSimple;
  bool mOnlyAttributes;       // nothing but attributes so far
  bool mInAttribute = false;  // within "<" and ">"
  bool mAnyAttribute = false;
  bool mOfFile = false;  // "<Assembly: ...>"
  int mLists = 0;        // open parentheses in an attribute
  bool mExplicit = false;
  char mBefore;  // the last character of code, blanks aside
  // The line at hand.
  std::string_view mLine;
  std::size_t mAt = 0;
  std::size_t mCodeEnd = 0;
  std::string_view mWord;  // the last one
};

}  // namespace vendrel
