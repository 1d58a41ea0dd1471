#pragma once
// Where a statement of VB.NET ends: lines that an underscore, an open parenthesis, an operator or a
// comma at their end join to the next, attributes in front of a declaration, and lambdas of several
// lines, whose bodies are statements of their own inside of an open list.

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
  /// Takes a physical line. True if the statement goes on in the next one.
  bool Feed(std::string_view line);
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
};

}  // namespace vendrel
