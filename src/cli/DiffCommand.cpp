#include <map>
#include <memory>

#include "cli/Changes.h"
#include "cli/Commands.h"
#include "cli/ProjectSets.h"
#include "cli/Results.h"
#include "core/CaseFold.h"
#include "services/Paths.h"

namespace vendrel::cli {
namespace {

struct DiffArguments {
  CommonOptions Common;
  std::string Before;
  std::string After;
  bool Json = false;
  bool NoText = false;
  bool Places = false;
};

DifferenceOptions OptionsOf(const DiffArguments& arguments) {
  DifferenceOptions options;
  options.Lines = !arguments.NoText;
  options.Places = arguments.Places;
  return options;
}

// Groups are compared with groups, folders with folders, single projects and modules with either.
InputKind KindToCompare(const std::string& path) {
  const InputKind kind = KindOfInput(path);
  return kind == InputKind::Module ? InputKind::Project : kind;
}

// Both sides of one comparison are told of; the worse exit code counts.
int ComparePair(VBProject& first, VBProject& second, const DiffArguments& arguments,
                const Streams& streams, ChangeWriter& writer) {
  writer.Compare(Describe(first), Describe(second), OptionsOf(arguments));
  return Worse(ReportDiagnostics(first, arguments.Common, streams.Err),
               ReportDiagnostics(second, arguments.Common, streams.Err));
}

int CompareProjects(const DiffArguments& arguments, const Streams& streams, ChangeWriter& writer) {
  const auto first = LoadInput(arguments.Before, arguments.Common, streams);
  const auto second = LoadInput(arguments.After, arguments.Common, streams);
  return ComparePair(*first, *second, arguments, streams, writer);
}

int CompareGroups(const DiffArguments& arguments, const Streams& streams, ChangeWriter& writer) {
  const CommonOptions& common = arguments.Common;
  const auto first = LoadGroup(arguments.Before, common, streams);
  const auto second = LoadGroup(arguments.After, common, streams);
  writer.Compare(Describe(*first), Describe(*second), OptionsOf(arguments));
  return Worse(ReportGroup(*first, common, streams.Err), ReportGroup(*second, common, streams.Err));
}

// Project files below a folder, by their folded path as seen from it.
std::map<std::string, std::string> ProjectsByPath(const std::string& folder, Diagnostics& told) {
  std::string root = WindowsPath(AbsolutePath(folder));
  if (!root.ends_with('\\')) root.push_back('\\');
  std::map<std::string, std::string> files;
  for (const FileSystemObject& file : ProjectFilesBelow(folder, told))
    files.emplace(FoldKey(RelativePath(root, file.FullPath())), file.FullPath());
  return files;
}

void ReportAlone(ChangeKind kind, const std::string& path, ChangeWriter& writer) {
  Change change{kind, ElementKind::VBProject, {}, {}, {}, {}, {}, {}};
  const FileSystemObject file(path);
  change.Element = file.BaseName();
  (kind == ChangeKind::Gone ? change.PlaceBefore : change.PlaceAfter).File = file.FullPath();
  change.Word = RowOf(change.Class).Word;
  change.Whole = {nullptr,        change.Word,        change.Class,
                  change.Element, change.PlaceBefore, change.PlaceAfter};
  writer.Write(change);
}

// Projects of two folders are paired by their paths, and read two at a time. A pair of which one
// cannot be read is told, and the others are compared.
int CompareFolders(const DiffArguments& arguments, const Streams& streams, ChangeWriter& writer) {
  const CommonOptions& common = arguments.Common;
  Diagnostics told;
  const auto before = ProjectsByPath(arguments.Before, told);
  auto after = ProjectsByPath(arguments.After, told);
  int code = exDone;
  for (const auto& [key, path] : before) {
    const auto partner = after.find(key);
    if (partner == after.end()) {
      ReportAlone(ChangeKind::Gone, path, writer);
      continue;
    }
    const auto first = LoadOneOf(path, common, streams, told);
    const auto second = LoadOneOf(partner->second, common, streams, told);
    if (first && second)
      code = Worse(code, ComparePair(*first, *second, arguments, streams, writer));
    after.erase(partner);
  }
  for (const auto& [key, path] : after) ReportAlone(ChangeKind::Added, path, writer);
  return Worse(code, ReportList(told, common, streams.Err));
}

int CompareAll(const DiffArguments& arguments, const Streams& streams, ChangeWriter& writer) {
  ApplyToProcess(arguments.Common);
  const InputKind kind = KindToCompare(arguments.Before);
  const bool known = kind != InputKind::Missing && kind != InputKind::Unknown;
  if (known && KindToCompare(arguments.After) != InputKind::Missing &&
      kind != KindToCompare(arguments.After))
    throw ToolError(exUsage, "'" + arguments.Before + "' and '" + arguments.After +
                                 "' are not of one kind; compare two projects, two groups or two "
                                 "folders");
  if (kind == InputKind::Group) return CompareGroups(arguments, streams, writer);
  if (kind == InputKind::Folder) return CompareFolders(arguments, streams, writer);
  return CompareProjects(arguments, streams, writer);
}

int RunDiff(const DiffArguments& arguments, const Streams& streams) {
  int code = exDone;
  std::size_t count = 0;
  WriteResult(arguments.Common, streams, arguments.Before, [&](std::ostream& out) {
    ChangeWriter writer(out, "diff", arguments.Common, arguments.Json);
    code = CompareAll(arguments, streams, writer);
    count = writer.Count();
  });
  return count > 0 ? Worse(code, exNo) : code;
}

}  // namespace

void AddDiffCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("diff", "What differs between two projects, by element");
  const auto arguments = std::make_shared<DiffArguments>();
  command->add_option("before", arguments->Before, "A project, module, group or folder")
      ->required();
  command->add_option("after", arguments->After, "Another of the same kind")->required();
  command->add_flag("--json", arguments->Json, "A JSON object for each difference");
  command->add_flag("--no-text", arguments->NoText, "Without code lines: declarations alone");
  command->add_flag("--places", arguments->Places, "With the lines on which elements stand");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunDiff(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
