#include "cli/DiffInputs.h"

#include <map>
#include <memory>

#include "cli/ProjectSets.h"
#include "cli/Report.h"
#include "core/CaseFold.h"
#include "services/Paths.h"

namespace vendrel::cli {
namespace {

// Groups are compared with groups, folders with folders, single projects and modules with either.
InputKind KindToCompare(const std::string& path) {
  const InputKind kind = KindOfInput(path);
  return kind == InputKind::Module ? InputKind::Project : kind;
}

class InputPair {
 public:
  InputPair(const CommonOptions& common, const Streams& streams, DiffTarget& target)
      : mCommon(common), mStreams(streams), mTarget(target) {}

  int Projects(const std::string& before, const std::string& after) {
    const auto first = LoadInput(before, mCommon, mStreams);
    const auto second = LoadInput(after, mCommon, mStreams);
    return Compare(*first, *second);
  }

  int Groups(const std::string& before, const std::string& after) {
    const auto first = LoadGroup(before, mCommon, mStreams);
    const auto second = LoadGroup(after, mCommon, mStreams);
    mTarget.Groups(*first, *second);
    const int ofFirst = ReportGroup(*first, mCommon, mStreams.Err);  // told in this order
    return Worse(ofFirst, ReportGroup(*second, mCommon, mStreams.Err));
  }

  // A pair of which one cannot be read is told, and the others are compared.
  int Folders(const std::string& before, const std::string& after) {
    Diagnostics told;
    const auto first = ProjectsByPath(before, told);
    auto second = ProjectsByPath(after, told);
    if (first.empty() && second.empty() && told.Count() == 0) return Modules(before, after);
    int code = exDone;
    for (const auto& [key, path] : first) {
      const auto partner = second.find(key);
      if (partner == second.end()) {
        mTarget.Alone(ChangeKind::Gone, path);
        continue;
      }
      const auto old = LoadOneOf(path, mCommon, mStreams, told);
      const auto now = LoadOneOf(partner->second, mCommon, mStreams, told);
      if (old && now) code = Worse(code, Compare(*old, *now));
      second.erase(partner);
    }
    for (const auto& [key, path] : second) mTarget.Alone(ChangeKind::Added, path);
    return Worse(code, ReportList(told, mCommon, mStreams.Err));
  }

 private:
  // Both sides of one comparison are told of; the worse exit code counts.
  int Compare(VBProject& before, VBProject& after) {
    mTarget.Projects(before, after);
    const int ofBefore = ReportDiagnostics(before, mCommon, mStreams.Err);
    return Worse(ofBefore, ReportDiagnostics(after, mCommon, mStreams.Err));
  }

  // Named after their folders, which differ.
  int Modules(const std::string& before, const std::string& after) {
    const auto first = LoadModules(before), second = LoadModules(after);
    first->ProjectName = second->ProjectName;
    return Compare(*first, *second);
  }
  std::shared_ptr<VBProject> LoadModules(const std::string& path) {
    return LoadFolderOfModules(path, mCommon, mStreams, LoadDepth::Modules, {});
  }

  // Project files below a folder, by their folded path as seen from it.
  static std::map<std::string, std::string> ProjectsByPath(const std::string& folder,
                                                           Diagnostics& told) {
    std::string root = WindowsPath(AbsolutePath(folder));
    if (!root.ends_with('\\')) root.push_back('\\');
    std::map<std::string, std::string> files;
    for (const FileSystemObject& file : ProjectFilesBelow(folder, told))
      files.emplace(FoldKey(RelativePath(root, file.FullPath())), file.FullPath());
    return files;
  }

  const CommonOptions& mCommon;
  const Streams& mStreams;
  DiffTarget& mTarget;
};

}  // namespace

int CompareInputs(const std::string& before, const std::string& after, const CommonOptions& common,
                  const Streams& streams, DiffTarget& target) {
  ApplyToProcess(common);
  const InputKind kind = KindToCompare(before), other = KindToCompare(after);
  const bool isKnown = kind != InputKind::Missing && kind != InputKind::Unknown;
  if (isKnown && other != InputKind::Missing && kind != other)
    throw ToolError(exUsage, "'" + before + "' and '" + after +
                                 "' are not of one kind; compare two projects, two groups or two "
                                 "folders");
  InputPair pair(common, streams, target);
  if (kind == InputKind::Group) return pair.Groups(before, after);
  if (kind == InputKind::Folder) return pair.Folders(before, after);
  return pair.Projects(before, after);
}

}  // namespace vendrel::cli
