#include "diagnostics/ErrorReport.h"

#include <cstdio>
#include <exception>
#include <memory>

#include "core/ObjectRegistry.h"

namespace vendrel {
namespace {

bool sTraceWholeElements = false;

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
  report.Version = VENDREL_VERSION;
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

// Appends reports to a file or to stderr.
class ReportFile final : public ErrorObject {
 public:
  explicit ReportFile(std::string path) : mPath(std::move(path)) {}

  void ErrorHandlerEx(const ErrorReport& report) override { Append(report); }
  void ErrorHandler(const ErrorReport& report) override { Append(report); }

 private:
  void Append(const ErrorReport& report) {
    const std::string text = "<Error>\r\n" + Render(report) + "</Error>\r\n";
    std::FILE* file = mPath == "-" ? stderr : std::fopen(mPath.c_str(), "ab");
    if (!file) return;
    std::fwrite(text.data(), 1, text.size(), file);
    if (file != stderr) std::fclose(file);
  }
  std::string mPath;
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
  ObjectRegistry::Register<ErrorObject>(
      kErrorObject, [path = std::string(path)] { return std::make_shared<ReportFile>(path); });
}

void SetTraceWholeElements(bool whole) { sTraceWholeElements = whole; }
bool TraceWholeElements() { return sTraceWholeElements; }

}  // namespace vendrel
