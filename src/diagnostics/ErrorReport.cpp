#include "diagnostics/ErrorReport.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <utility>

#include "core/ObjectRegistry.h"
#include "core/Version.h"
#include "core/Workspace.h"

namespace vendrel {
namespace {

struct TraceDepth {
  bool WholeElements = false;
};

std::string Section(std::string_view tag, const ErrorContext::Values& values, int depth) {
  const std::string indent(static_cast<std::size_t>(depth), ' ');
  std::string text = indent + "<" + std::string(tag) + ">\r\n";
  for (const auto& [name, value] : values) text += DumpValue(name, value, depth + 1);
  return text + indent + "</" + std::string(tag) + ">\r\n";
}

ErrorReport ReportOf(const VendrelError& failure, const ErrorContext& context) {
  ErrorReport report;
  report.Number = failure.Number();
  report.Description = failure.Text();
  report.Version = LibraryVersion();
  report.Module = context.Module;
  report.Procedure = context.Procedure;
  report.Line = context.Line;
  report.Parameters = Section("Parameters", context.Parameters, 1);
  report.Variables = " <Variables>\r\n" + Section("LocalVariables", context.Locals, 2) +
                     Section("ModuleVariables", context.Fields, 2) +
                     "  <GlobalVariables>{Disabled}</GlobalVariables>\r\n </Variables>\r\n";
  return report;
}

std::string Render(const ErrorReport& report) {
  return DumpValue("Number", report.Number) + DumpValue("Description", report.Description) +
         DumpValue("Project", report.Project) + DumpValue("Version", report.Version) +
         DumpValue("Module", report.Module) + DumpValue("Procedure", report.Procedure) +
         DumpValue("Line", report.Line) + report.Parameters + report.Variables;
}

// Where reports go. A pipe that nobody reads must not be waited for.
class ReportTarget {
 public:
  explicit ReportTarget(std::string path) : mPath(std::move(path)) {}

  void Append(const std::string& text) {
    if (mPath == "-") {
      std::fwrite(text.data(), 1, text.size(), stderr);
      return;
    }
    const int file = open(mPath.c_str(),
                          O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
    if (file < 0) return Report();
    if (!WriteAll(file, text)) Report();
    close(file);
  }

 private:
  static bool WriteAll(int file, std::string_view rest) {
    while (!rest.empty()) {
      const ssize_t count = write(file, rest.data(), rest.size());
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return false;
      rest.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
  }
  // Once: the failures that were to be reported are told elsewhere, too.
  void Report() {
    if (!std::exchange(mTold, true))
      std::fprintf(stderr, "error report: %s: %s\n", mPath.c_str(), std::strerror(errno));
  }

  std::string mPath;
  bool mTold = false;
};

class ReportFile final : public ErrorObject {
 public:
  explicit ReportFile(std::shared_ptr<ReportTarget> target) : mTarget(std::move(target)) {}

  void ErrorHandlerEx(const ErrorReport& report) override { Append(report); }
  void ErrorHandler(const ErrorReport& report) override { Append(report); }

 private:
  void Append(const ErrorReport& report) {
    mTarget->Append("<Error>\r\n" + Render(report) + "</Error>\r\n");
  }
  std::shared_ptr<ReportTarget> mTarget;
};

}  // namespace

StepOver ReportError(const VendrelError& failure) {
  const auto object = ObjectRegistry::Create<ErrorObject>(kErrorObject);
  if (!object) return StepOver::Raise;
  try {
    if (failure.Contexts().empty()) object->ErrorHandler(ReportOf(failure, {}));
    for (const ErrorContext& context : failure.Contexts())
      object->ErrorHandlerEx(ReportOf(failure, context));
    return object->Action;
  } catch (const std::exception&) {
    return StepOver::Raise;
  }
}

std::string RenderError(const VendrelError& failure) {
  std::string text = "<Error>\r\n";
  if (failure.Contexts().empty()) text += Render(ReportOf(failure, {}));
  for (const ErrorContext& context : failure.Contexts()) text += Render(ReportOf(failure, context));
  return text + "</Error>\r\n";
}

void WriteErrorReports(std::string_view path) {
  const auto target = std::make_shared<ReportTarget>(std::string(path));
  ObjectRegistry::Register<ErrorObject>(kErrorObject,
                                        [target] { return std::make_shared<ReportFile>(target); });
}

void SetTraceWholeElements(bool whole) { InUse<TraceDepth>().WholeElements = whole; }
bool TraceWholeElements() { return InUse<TraceDepth>().WholeElements; }

}  // namespace vendrel
