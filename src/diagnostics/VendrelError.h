#pragma once
// The one exception of the library: number and text, and the context that each procedure adds in a
// catch clause while the failure passes. Nothing is formatted until a report is asked for.

#include <exception>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/TraceValue.h"

namespace vendrel {

/// Failure numbers that callers test.
enum ErrorNumber : int {
  errInvalidArgument = 5,
  errOverflow = 6,
  errSubscript = 9,
  errDivisionByZero = 11,
  errTypeMismatch = 13,
  errOutOfStringSpace = 14,
  errFileNotFound = 53,
  errDiskFull = 61,
  errPermissionDenied = 70,
  errPathAccess = 75,
  errObjectNotSet = 91,
  errInvalidPattern = 93,
  errInvalidUseOfNull = 94,
  errInvalidFileFormat = 321,
  errReadOnlyProperty = 383,
  errObjectRequired = 424,
  errCannotCreate = 429,
  errDuplicateKey = 457,
  errScriptSyntax = 1002,
  errScriptParenthesis = 1006,
  errScriptBracket = 1007,
  errScriptEnd = 1014,
  errScriptEndOfStatement = 1025,
  errScriptNumber = 1031,
  errScriptCharacter = 1032,
  errScriptString = 1033,
  errRegExpSyntax = 5017,
};

/// The standard text of a failure number; "Application-defined error" for others.
std::string_view ErrorText(int number);

/// What one procedure knew when a failure passed through it.
struct ErrorContext {
  using Values = std::vector<std::pair<std::string, TraceValue>>;

  std::string Procedure;
  std::string Module;
  /// Line or step reached, as the procedure counts them; 0 if it keeps none.
  long Line = 0;
  Values Parameters;
  Values Locals;
  /// Fields of the object that the procedure belongs to.
  Values Fields;

  template <typename T>
  ErrorContext& Parameter(std::string_view name, const T& value) {
    Parameters.emplace_back(name, TraceOf(value));
    return *this;
  }
  template <typename T>
  ErrorContext& Local(std::string_view name, const T& value) {
    Locals.emplace_back(name, TraceOf(value));
    return *this;
  }
  template <typename T>
  ErrorContext& Field(std::string_view name, const T& value) {
    Fields.emplace_back(name, TraceOf(value));
    return *this;
  }
  /// The object itself, by class and qualified name.
  template <typename Element>
  ErrorContext& Of(const Element& object) {
    return Field("Me", object);
  }
};

/// A failure on its way to the caller.
class VendrelError : public std::exception {
 public:
  /// `file` and `line` are the place in the library's own source that raises the failure.
  explicit VendrelError(int number, std::string_view detail = {},
                        const char* file = __builtin_FILE(), int line = __builtin_LINE());

  /// One of `ErrorNumber`, or the number an outside object gave.
  int Number() const { return mNumber; }
  /// Standard text, with the detail behind it where there is one.
  const std::string& Text() const { return mText; }
  const char* what() const noexcept override { return mText.c_str(); }

  /// Where the failure was raised: path and 1-based line of the library's source.
  const char* RaisedIn() const { return mFile; }
  int RaisedAt() const { return mLine; }

  /// Contexts from the innermost procedure outwards.
  const std::vector<ErrorContext>& Contexts() const { return mContexts; }
  /// For a catch clause: adds procedure, module and line, and gives the context for the values.
  ErrorContext& AddContext(std::string_view procedure, std::string_view module, long line = 0);

 private:
  int mNumber;
  int mLine;
  const char* mFile;
  std::string mText;
  std::vector<ErrorContext> mContexts;
};

}  // namespace vendrel
