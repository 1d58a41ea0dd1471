#include "cli/Report.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <system_error>

#include "cli/ShownText.h"
#include "core/Ascii.h"
#include "core/Workspace.h"
#include "output/Dump.h"
#include "output/Json.h"
#include "services/FileSystemObject.h"
#include "services/Paths.h"

namespace vendrel::cli {
namespace {

std::string NativeForm(const std::string& windowsPath) {
  std::string native = FileSystemObject(windowsPath).NativePath();
  if (native.empty()) return windowsPath;
  const std::string here = std::filesystem::current_path().string() + "/";
  return native.starts_with(here) ? native.substr(here.size()) : native;
}

// Errors that say more behind their class.
constexpr std::array kClasses{errInvalidArgument, errSubscript,        errTypeMismatch,
                              errFileNotFound,    errPermissionDenied, errPathAccess,
                              errObjectNotSet,    errInvalidPattern,   errInvalidFileFormat,
                              errCannotCreate,    errReadOnlyProperty, errRegExpSyntax,
                              errOverflow,        errInvalidUseOfNull, errObjectRequired};

bool IsWindowsPath(std::string_view text) {
  return text.size() > 2 && IsLetterAscii(text[0]) && text[1] == ':' && text[2] == '\\';
}

// Paths in Windows form as those of this machine. Blanks may stand in a path: it ends where the
// sentence goes on.
std::string WithShownPaths(std::string_view text) {
  constexpr std::array<std::string_view, 6> kBehind{" is ", " are ", " for ", ": ", " (", ", "};
  ShownPaths paths;
  std::string shown;
  for (std::size_t i = 0; i < text.size();) {
    const bool isStart = i == 0 || text[i - 1] == ' ' || text[i - 1] == '(';
    if (!isStart || !IsWindowsPath(text.substr(i))) {
      shown += text[i++];
      continue;
    }
    std::size_t end = text.size();
    for (const std::string_view behind : kBehind) end = std::min(end, text.find(behind, i));
    shown += paths.Of(std::string(text.substr(i, end - i)));
    i = end;
  }
  return shown;
}

std::string_view WordsFor(int number) {
  switch (number) {
    case errFileNotFound: return "no such file";
    case errPermissionDenied: return "permission denied";
    default: return "it cannot be opened";
  }
}

// What stands behind a path at the front of a text: all of it for another path.
std::string_view BehindPath(std::string_view text, const std::string& path, int number) {
  if (path.empty()) return text;
  const FileSystemObject file(AbsolutePath(path));
  for (const std::string& form : {path, file.FullPath(), file.NativePath()}) {
    if (form.empty() || !text.starts_with(form)) continue;
    const std::string_view behind = text.substr(form.size());
    if (behind.empty()) return WordsFor(number);
    if (behind.starts_with(": ")) return behind.substr(2);
    if (behind.starts_with(" (") && behind.ends_with(')'))
      return behind.substr(2, behind.size() - 3);
  }
  return text;
}

struct JsonRoot {
  std::string Native;
};

}  // namespace

void SetJsonRoot(const std::string& nativeRoot) { InUse<JsonRoot>().Native = nativeRoot; }

void WriteDiagnosticObject(std::ostream& out, const DiagnosticObject& object) {
  JsonWriter json(out, false);
  const auto text = [&](std::string_view name, std::string_view value) {
    json.Key(name);
    json.String(value);
  };
  const auto number = [&](std::string_view name, std::int64_t value) {
    json.Key(name);
    json.Number(value);
  };
  json.BeginObject();
  const std::string& root = InUse<JsonRoot>().Native;
  text("File", object.WindowsPath.empty() ? std::string() : ShownFile(object.WindowsPath, root));
  number("Line", object.Line);
  number("Column", object.Column);
  text("Severity", object.Severity);
  text("Code", object.Code);
  text("Text", object.Text);
  if (object.ExitCode != exDone) number("ExitCode", object.ExitCode);
  json.EndObject();
  json.NewLine();
}

void ReportFailure(std::ostream& err, const std::string& text, int code, bool json) {
  if (!json) {
    err << "vendrelmodel: " << Shown(text) << '\n';
    return;
  }
  WriteDiagnosticObject(err,
                        {{}, 0, 0, "error", code == exUsage ? "usage" : "failure", text, code});
}

std::string ShownTextOf(const Finding& finding, ShownPaths& paths) {
  const std::string_view rule = finding.Rule->Id;
  if (rule == CodeName(DiagnosticCode::WriteRefused) || rule == CodeName(DiagnosticCode::Told))
    return WithShownPaths(BehindPath(finding.Text, finding.File, 0));
  std::string text = finding.Text;
  const std::size_t at = finding.Path.empty() ? std::string::npos : text.find(finding.Path);
  if (at == std::string::npos) return text;
  std::string behind = text.substr(at + finding.Path.size());
  if (rule == CodeName(DiagnosticCode::UnreadableFile) && behind.ends_with(')')) {
    const std::size_t reason = behind.find('(') + 1;
    const std::string error = behind.substr(reason, behind.size() - reason - 1);
    behind.replace(reason, error.size(), ReasonIn(error, finding.Path));
  }
  text.resize(at);
  const std::string& shown = paths.Of(finding.Path);
  if (shown != paths.Of(finding.File)) return text + shown + behind;
  if (text.empty()) return "the file" + behind;
  while (text.ends_with(' ') || text.ends_with(':')) text.pop_back();
  return text + behind;
}

void TellRemark(const Streams& streams, const CommonOptions& options, const std::string& line,
                const DiagnosticObject& object) {
  if (options.DiagnosticsAsJson())
    WriteDiagnosticObject(streams.Err, object);
  else
    streams.Err << line << '\n';
}

const std::string& ShownPaths::Of(const std::string& windowsPath) {
  const auto [entry, isNew] = mKnown.try_emplace(windowsPath);
  if (isNew && !windowsPath.empty()) entry->second = NativeForm(windowsPath);
  return entry->second;
}

std::string ShownPaths::Place(const std::string& windowsPath, std::int32_t line) {
  std::string place = Of(windowsPath);
  if (line > 0) place += ':' + std::to_string(line);
  return place;
}

std::string ReasonIn(std::string_view errorText, const std::string& path) {
  for (const int number : kClasses) {
    const std::string_view name = ErrorText(number);
    if (!errorText.starts_with(name)) continue;
    const std::string_view behind = errorText.substr(name.size());
    if (behind.empty()) return std::string(errorText);
    if (!behind.starts_with(": ")) continue;
    const std::string_view detail = behind.substr(2);
    std::string reason = WithShownPaths(BehindPath(detail, path, number));
    const bool isPath = (detail.starts_with('/') || IsWindowsPath(detail)) &&
                        detail.find(": ") == kNotFound && detail.find(" (") == kNotFound;
    if (!isPath || reason == WordsFor(number)) return reason;
    return reason.append(": ").append(WordsFor(number));
  }
  return WithShownPaths(BehindPath(errorText, path, 0));
}

std::string ReasonOf(const VendrelError& error, const std::string& path) {
  return ReasonIn(error.Text(), path);
}

std::string CannotBeWritten(const std::string& path, int reason) {
  std::string text = path + ": cannot be written";
  if (reason != 0) text += ": " + std::generic_category().message(reason);
  return text;
}

std::size_t IndentOf(int depth) {
  constexpr int kDeepest = 40;
  return 2 * static_cast<std::size_t>(std::min(depth, kDeepest));
}

void WriteFindingLine(std::ostream& out, const Finding& finding, RuleLevel level,
                      ShownPaths& paths) {
  std::string line = Shown(paths.Place(finding.File, finding.Line));
  if (!line.empty()) line += ": ";
  line.append(LevelName(level)).append(": ");
  AppendShown(line, ShownTextOf(finding, paths));
  line.append(" [").append(finding.Rule->Id).append("]\n");
  out << line;
}

void TellDiagnostics(const Diagnostics& diagnostics, const CommonOptions& options,
                     std::ostream& err, const VBProject* project) {
  ShownPaths paths;
  std::optional<ProjectSources> sources;
  if (project && options.DiagnosticsAsJson() && diagnostics.Count() > 0) sources.emplace(*project);
  for (const Diagnostic& item : diagnostics) {
    if (options.Quiet && SeverityOf(item.Code) != Severity::Error) continue;
    Finding finding = FindingOf(item);
    if (!options.DiagnosticsAsJson()) {
      WriteFindingLine(err, finding, finding.Rule->Level, paths);
      continue;
    }
    if (sources) sources->Complete(finding);
    WriteDiagnosticObject(
        err, {finding.File, finding.Line, finding.Column, LevelName(finding.Rule->Level),
              finding.Rule->Id, ShownTextOf(finding, paths), exDone});
  }
}

bool HasWarnings(const Diagnostics& diagnostics) {
  for (const Diagnostic& item : diagnostics)
    if (SeverityOf(item.Code) != Severity::Note) return true;
  return false;
}

int ReportDiagnostics(const VBProject& project, const CommonOptions& options, std::ostream& err) {
  TellDiagnostics(project.Diagnostics, options, err, &project);
  return options.Strict && HasWarnings(project.Diagnostics) ? exWarnings : exDone;
}

}  // namespace vendrel::cli
