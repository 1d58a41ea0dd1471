#include "cli/RoundTrip.h"

#include <algorithm>
#include <sstream>

#include "cli/Interrupts.h"
#include "cli/ShownText.h"
#include "cli/UnifiedDiff.h"
#include "cli/WatchedFiles.h"
#include "core/CaseFold.h"
#include "dotnet/Sources.h"
#include "services/CodePage.h"
#include "services/FileSource.h"
#include "services/TemporaryFolder.h"
#include "writer/ProjectLineDifference.h"

namespace vendrel::cli {
namespace {

bool IsModuleAlone(const VBProject& project) {
  return project.ProjectSourceAccess != psaReadWrite && project.Components.Count() == 1;
}

// A reference to a member of the group may be written as one to its project instead of its library.
bool IsOfMember(const Change& change, const VBProject& before) {
  for (const Reference& reference : before.References)
    if (reference.ReferencedProject() && change.Element.ends_with("(" + reference.Name() + ")"))
      return change.Kind == ChangeKind::Changed;
  return false;
}

// Changes that follow from how project files are written: paths are seen from the other folder, an
// icon that is the form to start with is not named, and settings have no place of their own.
bool FollowsFromRules(const Change& change, const VBProject& before) {
  if (change.Class == ElementKind::Reference)
    return change.Property == "SourceString" || IsOfMember(change, before);
  // A copy has the files that came from elsewhere in its own folder, where patterns find them.
  if (change.Class == ElementKind::ProjectFile) return change.Kind == ChangeKind::Added;
  if (change.Class != ElementKind::VBProject) return false;
  if (change.Property == "IconForm")
    return EqualsNoCase(change.Before, before.Startup) && change.After.empty();
  return change.Property == "RelatedDocuments" || change.Property == "LastNormalProjectLineText";
}

bool IsUtf16(const TextForm& form) {
  return form.Encoding == TextEncoding::Utf16LE || form.Encoding == TextEncoding::Utf16BE;
}

std::string WithoutEnd(std::string_view line) { return std::string(TakeLine(line)); }

std::string_view EndOf(std::string_view line) { return line.substr(WithoutEnd(line).size()); }

// The code page that the files of a project were read with.
std::string CodePageOf(const VBProject& project) {
  if (project.SourceForm && !project.SourceForm->CodePageName.empty())
    return project.SourceForm->CodePageName;
  for (const Component& component : project.Components.Listed())
    if (component.SourceForm && !component.SourceForm->CodePageName.empty())
      return component.SourceForm->CodePageName;
  return FileOptions::Current().CodePage;
}

}  // namespace

void RoundTrip::Run(VBProject& project) {
  ++mCounts.Projects;
  const std::string file = project.FileName.FullPath();
  try {
    WriteAndCompare(project);
  } catch (const VendrelError& error) {
    ReportNotWritten(file, ReasonOf(error));
  } catch (const ToolError& error) {  // what was written cannot be loaded
    ReportNotWritten(file, error.what());
  }
}

void RoundTrip::WriteAndCompare(VBProject& project) {
  const InterruptHold hold;
  const WatchedFiles::Aside aside;
  const TemporaryFolder folder("roundtrip");
  std::vector<Module> modules = ModulesOf(project);
  const bool isModule = IsModuleAlone(project);
  project.OutputFileName.SetFolderPath(folder.Path());
  if (isModule)
    project.Components.Item(1)->WriteOut();
  else
    project.WriteOut();
  const std::string outputFolder = project.OutputFileName.FolderPath();
  for (std::size_t i = 0; i < modules.size(); ++i)
    modules[i].Written = project.ProjectFiles.Count() > 0
                             ? TargetOfSource(project, *project.ProjectFiles.Item(i + 1))
                             : outputFolder + project.Components.Item(i + 1)->FileName.LeafName();
  CompareModules(modules);
  if (!isModule) CompareProjectFile(project);
  CompareTrees(project, isModule ? modules.front().Written : project.OutputFileName.FullPath());
}

std::vector<RoundTrip::Module> RoundTrip::ModulesOf(const VBProject& project) const {
  std::vector<Module> modules;
  for (const ProjectFile& file : project.ProjectFiles)
    modules.push_back({file.FileName.Exists() ? file.FileName.NativePath() : "", {}});
  if (!modules.empty()) return modules;
  for (const Component& component : project.Components.Listed())
    modules.push_back({component.FileName.Exists() ? component.FileName.NativePath() : "", {}});
  return modules;
}

void RoundTrip::CompareModules(const std::vector<Module>& modules) {
  for (const Module& module : modules)
    if (!module.Path.empty()) CompareModule(module);
}

void RoundTrip::CompareModule(const Module& module) {
  ++mCounts.Modules;
  const FileSystemObject target(module.Written);
  const bool written = target.Exists();
  const std::string before = ReadWholeFile(module.Path);
  const std::string after = written ? ReadWholeFile(target.NativePath()) : std::string();
  if (written && before == after) return;
  ++mCounts.Changed;
  const std::string path = FileSystemObject(module.Path).FullPath();
  if (!written) return ReportNotWritten(path, {});
  ++mCounts.Differences;
  ReportBytes(path, before, after);
}

void RoundTrip::ReportNotWritten(const std::string& file, std::string_view text) {
  ++mCounts.Differences;
  Report("not-written", file, 0, text);
}

// At the first line that differs; all of them below it.
void RoundTrip::ReportBytes(const std::string& path, std::string_view before,
                            std::string_view after) {
  const std::vector<LineChange> changes = CompareLines(before, after);
  const auto line = changes.empty() ? 0 : static_cast<std::int32_t>(changes.front().OldLine) + 1;
  if (!mJson) {
    WriteRow(mOut, {"bytes", mPaths.Place(path, line)});
    return WriteLineChanges(mOut, before, after, true);
  }
  std::ostringstream text;
  WriteLineChanges(text, before, after, true);
  Report("bytes", path, line, text.str());
}

// By their bytes, but for UTF-16, whose lines are found in its text alone.
void RoundTrip::CompareProjectFile(const VBProject& project) {
  std::string before = ReadWholeFile(project.FileName.NativePath());
  std::string after = ReadWholeFile(project.OutputFileName.NativePath());
  if (before == after) return;
  if (project.SourceForm && IsUtf16(*project.SourceForm)) {
    before = SourceText::Decode(before, PageOf(*project.SourceForm))->Text;
    after = SourceText::Decode(after, PageOf(*project.SourceForm))->Text;
  }
  if (project.Reading.KeepProjectLines) return CompareKeptLines(project, before, after);
  for (const ProjectLineChange& change : CompareProjectLines(before, after))
    ReportLine(project, change.ByRule, change.IsWritten ? 0 : change.Line,
               (change.IsWritten ? "+ " : "- ") + change.Text);
}

// Only paths may be other ones, each in its line.
void RoundTrip::CompareKeptLines(const VBProject& project, std::string_view before,
                                 std::string_view after) {
  const NumberedLines oldLines(before), newLines(after);
  for (const LineChange& change : CompareLines(before, after)) {
    const std::size_t pairs = std::min(change.OldCount, change.NewCount);
    for (std::size_t i = 0; i < std::max(change.OldCount, change.NewCount); ++i) {
      const bool isOld = i < change.OldCount, isNew = i < change.NewCount;
      const std::string_view was = isOld ? oldLines.At(change.OldLine + i) : std::string_view();
      const std::string_view is = isNew ? newLines.At(change.NewLine + i) : std::string_view();
      const bool sameEnd = EndOf(was) == EndOf(is);
      const bool byRule = i < pairs && sameEnd && IsSamePathLine(was, is);
      const std::int32_t line = static_cast<std::int32_t>(change.OldLine + i) + 1;
      if (isOld) ReportLine(project, byRule, line, "- " + WithoutEnd(was));
      if (isNew) ReportLine(project, byRule, 0, "+ " + WithoutEnd(is));
      if (i < pairs && !sameEnd) ReportLine(project, false, line, "another line end");
    }
  }
}

void RoundTrip::ReportLine(const VBProject& project, bool byRule, std::int32_t line,
                           const std::string& bytes) {
  ++(byRule ? mCounts.ByRule : mCounts.Differences);
  const TextForm form = project.SourceForm ? TextForm(*project.SourceForm) : TextForm();
  Report(byRule ? "rebuilt" : "line", project.FileName.FullPath(), line,
         SourceText::Decode(bytes, PageOf(form))->Text);
}

void RoundTrip::CompareTrees(const VBProject& before, const std::string& written) {
  CommonOptions options = mOptions;
  options.CodePage = CodePageOf(before);  // what was guessed for the first holds
  const auto after = LoadInput(written, options, mStreams.ForOneOfMany());
  const DifferenceOptions wanted{.Lines = true, .Places = false, .Paths = false};
  Compare(Describe(before), Describe(*after), wanted, [&](Change change) {
    if (FollowsFromRules(change, before)) {
      ++mCounts.ByRule;
      return Report("rebuilt", before.FileName.FullPath(), 0,
                    change.Element + " " + std::string(change.Property));
    }
    ++mCounts.Differences;
    // That folder will be gone.
    if (!change.PlaceBefore.File.empty()) change.PlaceAfter = {};
    if (!change.Whole.PlaceBefore.File.empty()) change.Whole.PlaceAfter = {};
    mWriter.Write(change);
  });
  mWriter.Flush();
}

void RoundTrip::Report(std::string_view kind, const std::string& file, std::int32_t line,
                       std::string_view text) {
  if (!mJson) return WriteRow(mOut, {kind, mPaths.Place(file, line), text});
  JsonLines& json = mWriter.Lines();
  json.Begin();
  json.Text("Change", kind);
  json.Place(file, line);
  json.Text("Text", text);
  json.End();
}

}  // namespace vendrel::cli
