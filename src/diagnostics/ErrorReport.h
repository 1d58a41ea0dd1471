#pragma once
// What becomes of a failure that nobody above can mend: its contexts are handed, innermost first,
// to the error object of the process, which may write them down and says what is to be done. The
// object is reached by ProgID, so that a host puts its own in place.

#include <string>
#include <string_view>

#include "diagnostics/VendrelError.h"

namespace vendrel {

/// ProgID of the error object. Nothing is registered until a host does, or asks for
/// `WriteErrorReports`.
inline constexpr std::string_view kErrorObject = "VendrelError.Error";

/// What the reader of a line or file does about its failure.
enum class StepOver { Raise, SkipLine };

/// One context of a failure as text.
struct ErrorReport {
  int Number = 0;
  std::string Description;
  std::string Project = "VendrelModel_V2";
  /// Major, minor and revision number, joined with ".".
  std::string Version;
  std::string Module;
  std::string Procedure;
  long Line = 0;
  /// "<Parameters>" with one element for each parameter.
  std::string Parameters;
  /// "<Variables>" with locals, fields and globals, the last of which are never shown.
  std::string Variables;
};

/// The outside object that takes reports.
class ErrorObject {
 public:
  virtual ~ErrorObject() = default;
  /// A failure that passed a procedure.
  virtual void ErrorHandlerEx(const ErrorReport& report) = 0;
  /// A failure that passed none: number and text only.
  virtual void ErrorHandler(const ErrorReport& report) = 0;
  /// Read after each call.
  StepOver Action = StepOver::Raise;
};

/// Renders the contexts of a failure and hands them to the error object, made anew. The last
/// `Action`; `Raise` if there is no such object or it fails itself.
StepOver ReportError(const VendrelError& failure);

/// The contexts of a failure as one XML-like text, "<Error>" around all of them.
std::string RenderError(const VendrelError& failure);

/// Registers the built-in error object: it appends each report to a file ("-": stderr) and leaves
/// the failure to the caller. A file that cannot be written is passed over, and told on stderr
/// once; a pipe that nobody reads counts as such.
void WriteErrorReports(std::string_view path);

/// While true, elements in contexts are taken with all of their properties instead of class and
/// qualified name. No module is loaded for it.
void SetTraceWholeElements(bool whole);
bool TraceWholeElements();

}  // namespace vendrel
