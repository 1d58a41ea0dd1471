#include "cli/Report.h"

#include <algorithm>
#include <filesystem>

#include "output/Json.h"
#include "services/FileSystemObject.h"

namespace vendrel::cli {
namespace {

std::string NativeForm(const std::string& windowsPath) {
  std::string native = FileSystemObject(windowsPath).NativePath();
  if (native.empty()) return windowsPath;
  const std::string here = std::filesystem::current_path().string() + "/";
  return native.starts_with(here) ? native.substr(here.size()) : native;
}

void WriteAsJson(std::ostream& out, const Diagnostic& item, const std::string& file) {
  JsonWriter json(out, false);
  json.BeginObject();
  json.Key("File");
  json.String(file);
  json.Key("Line");
  json.Number(item.Line);
  json.Key("Severity");
  json.String(SeverityName(SeverityOf(item.Code)));
  json.Key("Code");
  json.String(CodeName(item.Code));
  json.Key("Text");
  json.String(item.Text);
  json.EndObject();
  json.NewLine();
}

}  // namespace

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

std::size_t IndentOf(int depth) {
  constexpr int kDeepest = 40;
  return 2 * static_cast<std::size_t>(std::min(depth, kDeepest));
}

void WriteDiagnostic(std::ostream& out, const Diagnostic& diagnostic, ShownPaths& paths,
                     bool json) {
  if (json) return WriteAsJson(out, diagnostic, paths.Of(diagnostic.File));
  std::string line = paths.Place(diagnostic.File, diagnostic.Line);
  if (!line.empty()) line += ": ";
  line.append(SeverityName(SeverityOf(diagnostic.Code))).append(": ").append(diagnostic.Text);
  line.append(" [").append(CodeName(diagnostic.Code)).append("]\n");
  out << line;
}

bool HasWarnings(const Diagnostics& diagnostics) {
  for (const Diagnostic& item : diagnostics)
    if (SeverityOf(item.Code) != Severity::Note) return true;
  return false;
}

int ReportDiagnostics(const VBProject& project, const CommonOptions& options, std::ostream& err) {
  ShownPaths paths;
  for (const Diagnostic& item : project.Diagnostics)
    if (!options.Quiet || SeverityOf(item.Code) == Severity::Error)
      WriteDiagnostic(err, item, paths, options.DiagnosticsAsJson());
  return options.Strict && HasWarnings(project.Diagnostics) ? exWarnings : exDone;
}

ProgressBar::ProgressBar(VBProject& project, const CommonOptions& options, const Streams& streams)
    : mProject(project), mErr(streams.Err) {
  if (!streams.ErrIsTerminal || options.Quiet) return;
  mNext = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
  project.ComponentLoaded.Add(
      [this](std::int32_t index) { Show(static_cast<std::size_t>(index)); });
}

void ProgressBar::Show(std::size_t done) {
  const auto now = std::chrono::steady_clock::now();
  if (now < mNext) return;
  mNext = now + std::chrono::milliseconds(50);
  constexpr std::size_t width = 30;
  const std::size_t all = mProject.Components.Count();
  const std::size_t filled = all == 0 ? width : done * width / all;
  mErr << "\r\033[K[" << std::string(filled, '#') << std::string(width - filled, ' ') << "] "
       << done << " of " << all << " modules" << std::flush;
  mShown = true;
}

void ProgressBar::Finish() {
  mProject.ComponentLoaded.Clear();
  if (mShown) mErr << "\r\033[K" << std::flush;
  mShown = false;
}

}  // namespace vendrel::cli
