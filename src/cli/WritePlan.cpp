#include "cli/WritePlan.h"

#include <map>

#include "cli/Options.h"
#include "cli/PretendedFiles.h"
#include "cli/WatchedFiles.h"
#include "cli/WrittenFiles.h"
#include "dotnet/Sources.h"
#include "services/FileSource.h"

namespace vendrel::cli {
namespace {

using Origins = std::map<std::string, std::string>;

std::vector<PlannedFile> FilesOf(const PretendedFiles& files, const Origins& origins) {
  const WatchedFiles* watched = WatchedFiles::Current();
  std::vector<PlannedFile> plan;
  for (const auto& [real, bytes] : files.Written()) {
    const std::string& path = watched ? watched->AsAsked(real) : real;
    const auto origin = origins.find(path);
    plan.push_back({path, bytes, origin == origins.end() ? std::string() : origin->second});
  }
  return plan;
}

// Of two modules of one name the second one is renamed by writing it.
class KeptNames {
 public:
  explicit KeptNames(VBProject& project) : mProject(project) {
    for (const Component& component : project.Components.Listed()) {
      mNames.push_back(component.FileName.BaseName());
      Sources.push_back(component.FileName.NativePath());
    }
  }
  ~KeptNames() {
    std::size_t index = 0;
    for (Component& component : mProject.Components.Listed())
      if (component.FileName.BaseName() != mNames[index++])
        component.FileName.SetBaseName(mNames[index - 1]);
  }
  KeptNames(const KeptNames&) = delete;
  KeptNames& operator=(const KeptNames&) = delete;

  std::vector<std::string> Sources;

 private:
  VBProject& mProject;
  std::vector<std::string> mNames;
};

}  // namespace

std::vector<PlannedFile> PlanOf(VBProject& project, const std::function<void()>& write) {
  const KeptNames kept(project);
  PretendedFiles files;
  write();
  Origins origins;
  std::size_t index = 0;
  for (const ProjectFile& file : project.ProjectFiles)
    origins.emplace(FileSystemObject(TargetOfSource(project, file)).NativePath(),
                    file.FileName.NativePath());
  for (const Component& component : project.Components.Listed())
    origins.emplace(TargetOf(project, component), kept.Sources[index++]);
  origins.emplace(project.OutputFileName.NativePath(), project.FileName.NativePath());
  return FilesOf(files, origins);
}

std::vector<PlannedFile> PlanOf(const std::string& origin, const std::function<void()>& write) {
  PretendedFiles files;
  write();
  std::vector<PlannedFile> plan = FilesOf(files, {});
  for (PlannedFile& file : plan) file.Origin = origin;
  return plan;
}

std::string BytesAt(const std::string& nativePath) {
  const WatchedFiles::Aside aside;
  try {
    return ReadWholeFile(nativePath);
  } catch (const VendrelError&) {  // none there, or none that can be read
    return {};
  }
}

bool IsThere(const std::string& nativePath) {
  FileStatus status;
  return FileSource::Current().Status(nativePath, status) >= 0;
}

std::vector<std::string> WrittenOver(const std::vector<PlannedFile>& plan) {
  const WatchedFiles* watched = WatchedFiles::Current();
  std::vector<std::string> over;
  for (const PlannedFile& file : plan) {
    if (const std::string* source = watched ? watched->SourceAt(file.Path) : nullptr)
      throw ToolError(exUsage, "--to: '" + file.Path + "' is a source of what is written" +
                                   (*source == file.Path ? "" : ", read as '" + *source + "'") +
                                   "; name another folder, or say --in-place");
    if (IsThere(file.Path) && BytesAt(file.Path) != file.Bytes) over.push_back(file.Path);
  }
  return over;
}

}  // namespace vendrel::cli
