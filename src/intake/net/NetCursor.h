#pragma once
// A declaration of VB.NET on its way through its words: names, lists, types, expressions.

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "core/Ascii.h"
#include "core/SharedText.h"

namespace vendrel {

/// Walks one statement from its front; blanks are passed over behind whatever is taken.
class NetCursor {
 public:
  explicit NetCursor(std::string_view text) : mText(text) { SkipBlanks(); }

  bool AtEnd() const { return mAt >= mText.size(); }
  /// The next character; NUL at the end.
  char Here() const { return AtEnd() ? '\0' : mText[mAt]; }
  std::string_view Rest() const { return mText.substr(mAt); }
  void Skip(std::size_t count) {
    mAt = std::min(mAt + count, mText.size());
    SkipBlanks();
  }
  /// Passes over attributes in front of a declaration or parameter.
  void SkipAttributes();

  /// An identifier, or a name with its brackets; empty where none stands.
  std::string_view Word();
  /// Takes the word if it is that one, case ignored.
  bool TakeWord(std::string_view keyword);
  bool Take(char c);
  /// What stands between the parenthesis that opens here and the one that closes it; without one,
  /// all of the rest.
  std::string_view Group();
  /// The expression up to a comma outside of lists.
  std::string_view Expression();
  /// "Global.A.B(Of C, D())?()": a type with all that belongs to it.
  std::string_view Type();
  /// A name without brackets; `type` becomes the one that its type character gives, if it has one.
  std::string Name(std::string& type);
  /// "x()()": the first of the lists behind a name. The others belong to its type: they go to
  /// `marks`.
  std::string_view Subscripts(std::string& marks);

 private:
  void SkipBlanks() {
    while (mAt < mText.size() && IsGap(mText[mAt])) ++mAt;
  }
  bool BelongsToType() const;
  template <typename Ends>
  void GoTo(Ends ends);

  std::string_view mText;
  std::size_t mAt = 0;
};

/// A text cut at the commas that stand outside of strings, lists and braces; parts are trimmed.
std::vector<std::string_view> NetList(std::string_view text);

/// Cuts the mark of an array from the end of a type ("Integer(,)"); false if there is none.
bool CutArray(std::string_view& type);

/// "(a As Integer, b As String)" as the type that stands for it, "System.ValueTuple(Of Integer,
/// String)"; any other text as it is.
std::string TypeOfTuple(std::string_view written, int depth = 0);

/// A type as the tree has it: without brackets, an intrinsic one by its full name.
SharedText NetTypeNamed(std::string_view written);

}  // namespace vendrel
