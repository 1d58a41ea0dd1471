#include "services/Procedures.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <vector>

#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "services/AtomicFile.h"
#include "services/FileSource.h"
#include "services/FileSystemObject.h"
#include "services/Paths.h"

namespace vendrel {
namespace {

constexpr std::size_t ChunkSize = 1 << 18;

std::uint64_t SizeOf(const std::string& nativePath) {
  FileStatus status;
  const int result = FileSource::Current().Status(nativePath, status);
  if (result < 0) throw FileError(-result, nativePath);
  return status.Size;
}

void CopyBytes(int from, const std::string& fromPath, AtomicFile& to) {
  std::string chunk(ChunkSize, '\0');
  while (true) {
    const std::int64_t count = FileSource::Current().Read(from, chunk.data(), chunk.size());
    if (count < 0) throw FileError(static_cast<int>(-count), fromPath);
    if (count == 0) return;
    to.Write(std::string_view(chunk).substr(0, static_cast<std::size_t>(count)));
  }
}

bool IsSameFile(const FileStatus& status, const std::string& nativePath) {
  FileStatus other;
  return FileSource::Current().Status(nativePath, other) >= 0 && other.IsSameFile(status);
}

void CopyFile(const std::string& from, const std::string& to) {
  FileStatus status;
  const int handle = OpenRegularFile(from, status);
  try {
    if (IsSameFile(status, to)) throw VendrelError(errPermissionDenied, to);
    AtomicFile target(to);
    CopyBytes(handle, from, target);
    target.Commit();
  } catch (...) {
    FileSource::Current().Close(handle);
    throw;
  }
  FileSource::Current().Close(handle);
}

std::string NativeOrRaise(const FileSystemObject& file) {
  FoundPath found = file.Find();
  if (found.Path.empty()) throw VendrelError(errPathAccess, file.FullPath());
  if (found.Failure) throw FileError(found.Failure, found.Path);
  return std::move(found.Path);
}

struct Replacement {
  std::string_view Barred;
  char By;
};
constexpr Replacement Replacements[] = {
    {"\\/:", '-'},
    {"*?<>", ' '},
    {"\"", '\''},
    {"|", ';'},
};

}  // namespace

int RunCommandLine(std::string_view commandLine, const ProcessOptions& options) try {
  std::vector<std::string> arguments = SplitCommandLine(commandLine);
  if (arguments.empty()) throw VendrelError(errInvalidArgument);
  if (IsAbsolutePath(arguments[0]))
    if (std::string native = FileSystemObject(arguments[0]).NativePath(); !native.empty())
      arguments[0] = std::move(native);
  return ProcessRunner::Current().Run(arguments, options);
}
VENDREL_CONTEXT(commandLine, trace::Parameter("Folder", options.Folder))

void ExecCmd(std::string_view commandLine) {
  try {
    RunCommandLine(commandLine);
  } catch (const VendrelError&) {  // not detected, by design
  }
}

bool FileCopy(std::string_view source, std::string_view destination) {
  std::string& lastError = State().FileCopy_LastError;
  lastError.clear();
  try {
    const std::string from = NativeOrRaise(FileSystemObject(source));
    const std::string to = NativeOrRaise(FileSystemObject(destination));
    CopyFile(from, to);
    if (SizeOf(from) == SizeOf(to)) return true;
    lastError =
        "File copy operation reported no errors but source and destination file sizes do not match "
        "after copy.";
  } catch (const VendrelError& error) {
    lastError = std::to_string(error.Number()) + " " + error.Text();
  }
  return false;
}

std::string SafeFileName(std::string_view text) {
  std::string name(text);
  for (char& c : name)
    for (const Replacement& replacement : Replacements)
      if (replacement.Barred.find(c) != std::string_view::npos) {
        c = replacement.By;
        break;
      }
  return name;
}

bool IsNT() { return true; }

std::string CurrentEXEName() {
  char buffer[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer);
  return length > 0 ? std::string(buffer, static_cast<std::size_t>(length)) : std::string();
}

std::string StrZToStr(std::string_view text) {
  return std::string(text.substr(0, text.find('\0')));
}

std::int64_t ProcFromProcID(std::int64_t processId) {
  if (processId <= 0 || processId > INT_MAX) return 0;
  return kill(static_cast<pid_t>(processId), 0) == 0 || errno == EPERM ? processId : 0;
}

std::int64_t ModFromProcID(std::int64_t processId) { return ProcFromProcID(processId); }

}  // namespace vendrel
