#include "diagnostics/VendrelError.h"

namespace vendrel {

std::string_view ErrorText(int number) {
  switch (number) {
    case errInvalidArgument: return "Invalid procedure call or argument";
    case errOverflow: return "Overflow";
    case errSubscript: return "Subscript out of range";
    case errDivisionByZero: return "Division by zero";
    case errTypeMismatch: return "Type mismatch";
    case errOutOfStringSpace: return "Out of string space";
    case errFileNotFound: return "File not found";
    case errDiskFull: return "Disk full";
    case errPermissionDenied: return "Permission denied";
    case errPathAccess: return "Path/File access error";
    case errObjectNotSet: return "Object variable or With block variable not set";
    case errInvalidPattern: return "Invalid pattern string";
    case errInvalidUseOfNull: return "Invalid use of Null";
    case errInvalidFileFormat: return "Invalid file format";
    case errReadOnlyProperty: return "Property is read-only";
    case errObjectRequired: return "Object required";
    case errCannotCreate: return "Component cannot create object";
    case errDuplicateKey:
      return "This key is already associated with an element of this collection";
    case errScriptSyntax: return "Syntax error";
    case errScriptParenthesis: return "Expected ')'";
    case errScriptBracket: return "Expected ']'";
    case errScriptEnd: return "Expected 'End'";
    case errScriptEndOfStatement: return "Expected end of statement";
    case errScriptNumber: return "Invalid number";
    case errScriptCharacter: return "Invalid character";
    case errScriptString: return "Unterminated string constant";
    case errRegExpSyntax: return "Syntax error in regular expression";
    default: return "Application-defined error";
  }
}

VendrelError::VendrelError(int number, std::string_view detail, const char* file, int line)
    : mNumber(number), mLine(line), mFile(file), mText(ErrorText(number)) {
  if (!detail.empty()) mText.append(": ").append(detail);
}

ErrorContext& VendrelError::AddContext(std::string_view procedure, std::string_view module,
                                       long line) {
  ErrorContext& context = mContexts.emplace_back();
  context.Procedure = procedure;
  context.Module = module;
  context.Line = line;
  return context;
}

}  // namespace vendrel
