#include "diagnostics/VendrelError.h"

namespace vendrel {

std::string_view ErrorText(int number) {
  switch (number) {
    case errInvalidArgument: return "Invalid procedure call or argument";
    case errOverflow: return "Overflow";
    case errSubscript: return "Subscript out of range";
    case errDivisionByZero: return "Division by zero";
    case errTypeMismatch: return "Type mismatch";
    case errFileNotFound: return "File not found";
    case errDiskFull: return "Disk full";
    case errPermissionDenied: return "Permission denied";
    case errPathAccess: return "Path/File access error";
    case errObjectNotSet: return "Object variable or With block variable not set";
    case errInvalidFileFormat: return "Invalid file format";
    case errReadOnlyProperty: return "Property is read-only";
    case errCannotCreate: return "Component cannot create object";
    case errDuplicateKey: return "This key is already associated with an element of this collection";
    case errScriptSyntax: return "Syntax error";
    default: return "Application-defined error";
  }
}

VendrelError::VendrelError(int number, std::string_view detail)
    : mNumber(number), mText(ErrorText(number)) {
  if (!detail.empty()) mText.append(": ").append(detail);
}

void VendrelError::AddContext(std::string_view procedure, std::string_view module, long line) {
  mContexts.push_back({std::string(procedure), std::string(module), line, {}});
}

}  // namespace vendrel
