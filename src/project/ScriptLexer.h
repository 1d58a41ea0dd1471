#pragma once
// Cuts script text into tokens. What "&" and "#" mean depends on whether an operand or an operator
// is due, so the parser says which with each step.

#include <string_view>

#include "project/ScriptValue.h"

namespace vendrel {

/// The two forms of the language that are understood.
enum class ScriptDialect {
  /// VBScript: literals and names without type suffix.
  VBScript,
  /// Constant expressions of Visual Basic: suffixes on literals and names, the operator Like, and
  /// constants all through, so that every comparison converts.
  VisualBasic,
};

enum class ScriptTokenKind {
  Literal,         // Value
  Name,            // Text: the name, with dots between its parts
  Word,            // Text: a reserved word, as written
  Symbol,          // Text: an operator sign
  Open,            // (
  Close,           // )
  Comma,           // ,
  EndOfStatement,  // line end, ":" or a comment behind the statement
  End,             // of the text
};

struct ScriptToken {
  ScriptTokenKind Kind = ScriptTokenKind::End;
  std::string_view Text;
  ScriptValue Value;

  /// Whether it is the reserved word `word` (upper case).
  bool IsWord(std::string_view word) const;
  bool IsSymbol(std::string_view symbol) const {
    return Kind == ScriptTokenKind::Symbol && Text == symbol;
  }
};

class ScriptLexer {
 public:
  /// The text must outlive the lexer and its tokens.
  ScriptLexer(std::string_view text, ScriptDialect dialect) : mRest(text), mDialect(dialect) {}

  /// The next token. Raises an error of the 1002 family for what is none.
  ScriptToken Next(bool operandDue);

  ScriptDialect Dialect() const { return mDialect; }

 private:
  void SkipBlanks();
  ScriptToken Take(ScriptTokenKind kind, std::size_t length);
  ScriptToken TakeComment();
  ScriptToken TakeWord();
  ScriptToken TakeBracketedName();
  ScriptToken TakeString();
  ScriptToken TakeDate();
  ScriptToken TakeNumber();
  ScriptToken TakeRadixNumber();
  ScriptToken TakeSymbol();
  ScriptValue WithSuffix(double number, bool whole);

  std::string_view mRest;
  ScriptDialect mDialect;
};

}  // namespace vendrel
