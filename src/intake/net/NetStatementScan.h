#pragma once
// Where a statement of VB.NET ends: lines that an underscore, an open parenthesis, an operator or a
// comma at their end join to the next, a query operator, Handles or Implements at the front of the
// next, attributes in front of a declaration, and lambdas of several lines, whose bodies are
// statements of their own inside of an open list.

#include <string>
#include <string_view>
#include <vector>

#include "intake/LanguageRules.h"

namespace vendrel {

/// The open statement of a module, fed line by line; each character is looked at once.
class NetStatementScan final : public LanguageState {
 public:
  /// Forgets the open statement.
  void Begin();
  /// Takes a physical line, with `next` behind it as far as that is known. True if the statement
  /// goes on there.
  bool Feed(std::string_view line, std::string_view next = {});
  /// The same for a line that is whole (`NetLineShape`), where no statement is open: false if it
  /// needs `Begin` and `Feed` all the same, for a lambda is open or `next` may join it.
  bool TakeWhole(std::string_view next);
  /// Whether a line cannot belong to the open statement: it ends or begins a member or a type.
  bool Refuses(std::string_view line) const;
  /// The statement so far in one line, comments of its lines left out.
  std::string& Text() { return mText; }
  /// Nothing but attributes has come so far.
  bool HasOnlyAttributes() const { return mOnlyAttributes; }
  /// The statement ends the body of a lambda, and no procedure.
  bool EndsLambda() const { return mEndsLambda; }
  /// Whether a lambda of several lines is open.
  bool InLambda() const { return !mLambdas.empty(); }
  void ForgetLambdas() { mLambdas.clear(); }

  // What the members of a module leave for the next line.
  /// A property has begun, and none of its accessors yet.
  bool PropertyHeader = false;
  /// Between `Custom Event` and its end.
  bool CustomEvent = false;

 private:
  enum class Token { None, Operand, Operator, Open };
  struct LineScan;

  bool IsJoinedBy(std::string_view next) const;

  std::string mText;
  std::vector<int> mLambdas;  // open parentheses around each lambda that is open
  int mDepth = 0;
  Token mLast = Token::None;
  bool mOnlyModifiers = true;  // attributes and modifiers alone so far
  bool mOnlyAttributes = true;
  bool mAnyAttribute = false;
  bool mInAttribute = false;
  int mAttributeDepth = 0;
  bool mEndsLambda = false;
  bool mInQuery = false;  // "From x In" or "Aggregate x In" has come
};

}  // namespace vendrel
