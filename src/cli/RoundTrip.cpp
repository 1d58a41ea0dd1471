#include "cli/RoundTrip.h"

#include <sstream>

#include "cli/ShownText.h"
#include "cli/UnifiedDiff.h"
#include "core/CaseFold.h"
#include "output/Json.h"
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
  if (change.ClassName == "Reference")
    return change.Property == "SourceString" || IsOfMember(change, before);
  if (change.ClassName != "VBProject") return false;
  if (change.Property == "IconForm")
    return EqualsNoCase(change.Before, before.Startup) && change.After.empty();
  return change.Property == "RelatedDocuments" || change.Property == "LastNormalProjectLineText";
}

using Field = std::pair<std::string_view, std::string_view>;

void WriteFields(std::ostream& out, std::initializer_list<Field> fields) {
  JsonWriter json(out, false);
  json.BeginObject();
  for (const auto& [name, value] : fields) {
    json.Key(name);
    json.String(value);
  }
  json.EndObject();
  json.NewLine();
}

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
  const std::string place = mPaths.Of(project.FileName.FullPath());
  try {
    WriteAndCompare(project);
  } catch (const VendrelError& error) {
    TellNotWritten(place, ReasonOf(error));
  } catch (const ToolError& error) {  // what was written cannot be loaded
    TellNotWritten(place, error.what());
  }
}

void RoundTrip::WriteAndCompare(VBProject& project) {
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
    modules[i].Written = outputFolder + project.Components.Item(i + 1)->FileName.LeafName();
  CompareModules(modules);
  if (!isModule) CompareProjectFile(project);
  CompareTrees(project, isModule ? modules.front().Written : project.OutputFileName.FullPath());
}

std::vector<RoundTrip::Module> RoundTrip::ModulesOf(const VBProject& project) const {
  std::vector<Module> modules;
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
  if (!written) return TellNotWritten(mPaths.Of(path), {});
  ++mCounts.Differences;
  TellBytes(path, before, after);
}

void RoundTrip::TellNotWritten(const std::string& place, std::string_view text) {
  ++mCounts.Differences;
  Tell("not-written", place, text);
}

// At the first line that differs; all of them below it.
void RoundTrip::TellBytes(const std::string& path, std::string_view before,
                          std::string_view after) {
  const std::vector<LineChange> changes = CompareLines(before, after);
  const auto line = changes.empty() ? 0 : static_cast<std::int32_t>(changes.front().OldLine) + 1;
  const std::string place = mPaths.Place(path, line);
  if (!mJson) {
    WriteRow(mOut, {"bytes", place});
    return WriteLineChanges(mOut, before, after, true);
  }
  std::ostringstream text;
  WriteLineChanges(text, before, after, true);
  Tell("bytes", place, text.str());
}

void RoundTrip::CompareProjectFile(const VBProject& project) {
  const auto before = SourceText::Read(project.FileName.NativePath());
  const auto after = SourceText::Read(project.OutputFileName.NativePath());
  for (const ProjectLineChange& change : CompareProjectLines(before->Text, after->Text)) {
    ++(change.ByRule ? mCounts.ByRule : mCounts.Differences);
    const std::int32_t line = change.IsWritten ? 0 : change.Line;
    Tell(change.ByRule ? "rebuilt" : "line", mPaths.Place(project.FileName.FullPath(), line),
         (change.IsWritten ? "+ " : "- ") + change.Text);
  }
}

void RoundTrip::CompareTrees(const VBProject& before, const std::string& written) {
  CommonOptions options = mOptions;
  options.CodePage = CodePageOf(before);  // what was guessed for the first holds
  const auto after = LoadInput(written, options, mStreams);
  const DifferenceOptions wanted{.Lines = true, .Places = false, .Paths = false};
  Compare(Describe(before), Describe(*after), wanted, [&](Change change) {
    if (FollowsFromRules(change, before)) {
      ++mCounts.ByRule;
      return Tell("rebuilt", mPaths.Of(before.FileName.FullPath()),
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

void RoundTrip::Tell(std::string_view kind, const std::string& place, std::string_view text) {
  if (mJson)
    WriteFields(mOut, {{"Change", kind}, {"Place", place}, {"Text", text}});
  else
    WriteRow(mOut, {kind, place, text});
}

}  // namespace vendrel::cli
