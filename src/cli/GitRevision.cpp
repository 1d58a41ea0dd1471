#include "cli/GitRevision.h"

#include <filesystem>

#include "cli/Options.h"
#include "cli/Report.h"
#include "core/Ascii.h"
#include "diagnostics/VendrelError.h"
#include "services/FileSource.h"
#include "services/FileSystemObject.h"
#include "services/ProcessRunner.h"

namespace vendrel::cli {
namespace {

namespace fs = std::filesystem;

// The folder from the path upwards that holds a repository; empty where none does.
fs::path RepositoryAbove(const fs::path& path) {
  std::error_code ignored;
  for (fs::path folder = path;; folder = folder.parent_path()) {
    if (fs::exists(folder / ".git", ignored)) return folder;
    if (!folder.has_relative_path()) return {};
  }
}

}  // namespace

GitRevision::GitRevision(const std::string& path, const std::string& revision)
    : mRevision(revision) {
  const fs::path whole =
      fs::path(FileSystemObject(AbsolutePath(path)).NativePath()).lexically_normal();
  const fs::path repository = RepositoryAbove(whole);
  if (repository.empty())
    throw ToolError(exFailed,
                    path + ": no git repository holds it; --git compares revisions of one");
  mRepository = repository.string();
  // An option of git, not a revision.
  if (revision.empty() || revision.starts_with('-'))
    throw ToolError(exUsage, "--git: '" + revision + "' is no revision");
  if (Git({"rev-parse", "--verify", "--quiet", revision + "^{commit}"}) != 0)
    throw ToolError(exFailed, "--git: no revision '" + revision + "' in " + mRepository +
                                  (Told().empty() ? "; see: git log" : ": " + Told()));
  if (Git({"read-tree", revision + "^{commit}"}) != 0 ||
      Git({"checkout-index", "--all", "--prefix=" + Folder()}) != 0)
    throw ToolError(exFailed, "--git: cannot read revision '" + revision + "' of " + mRepository +
                                  ": " + Told());
  const fs::path inside = whole.lexically_relative(repository);
  mPath = (fs::path(Folder()) / inside).lexically_normal().string();
  std::error_code ignored;
  if (!fs::exists(mPath, ignored))
    throw ToolError(exFailed, path + ": not there in revision '" + revision + "'");
}

// An index of its own, so that nothing of the repository changes.
int GitRevision::Git(const std::vector<std::string>& arguments) try {
  std::vector<std::string> command{"git", "-c", "core.sparseCheckout=false", "-C", mRepository};
  command.insert(command.end(), arguments.begin(), arguments.end());
  ProcessOptions options;
  options.Environment = {"GIT_INDEX_FILE=" + mFolder.Path() + "/index", "LC_ALL=C"};
  options.OutputFile = mFolder.Path() + "/told";
  return ProcessRunner::Current().Run(command, options);
} catch (const VendrelError& error) {
  throw ToolError(exFailed, "--git: the program git cannot be started: " + ReasonOf(error));
}

// The first line of what git says.
std::string GitRevision::Told() const {
  const std::string text = ReadWholeFile(mFolder.Path() + "/told");
  return text.substr(0, text.find('\n'));
}

}  // namespace vendrel::cli
