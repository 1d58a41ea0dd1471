#include "services/ProcessRunner.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/VendrelError.h"
#include "services/FileSource.h"

extern char** environ;

namespace vendrel {
namespace {

constexpr int SignalBase = 128;

class MachineProcesses final : public ProcessRunner {
 public:
  int Run(const std::vector<std::string>& arguments, const ProcessOptions& options) override {
    if (arguments.empty() || arguments[0].empty()) throw VendrelError(errInvalidArgument);
    Reap();
    const pid_t process = Start(arguments, options);
    if (options.Wait) return WaitFor(process);
    mRunning.push_back(process);
    return 0;
  }

 private:
  static std::vector<char*> Pointers(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
    return pointers;
  }

  // The first of a name counts.
  static std::vector<char*> EnvironmentOf(const ProcessOptions& options) {
    std::vector<char*> pointers = Pointers(options.Environment);
    for (char** at = environ; at && *at; ++at) {
      const std::string_view entry = *at;
      const std::string_view name = entry.substr(0, entry.find('=') + 1);
      const bool isReplaced =
          std::any_of(options.Environment.begin(), options.Environment.end(),
                      [&](const std::string& own) { return own.starts_with(name); });
      if (!isReplaced) pointers.push_back(*at);
    }
    pointers.push_back(nullptr);
    return pointers;
  }

  static pid_t Start(const std::vector<std::string>& arguments, const ProcessOptions& options) {
    std::vector<char*> pointers = Pointers(arguments);
    pointers.push_back(nullptr);
    std::vector<char*> environment = EnvironmentOf(options);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (!options.OutputFile.empty()) {
      posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, options.OutputFile.c_str(),
                                       O_WRONLY | O_CREAT | O_TRUNC, 0600);
      posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    }
    if (!options.Folder.empty())
      posix_spawn_file_actions_addchdir_np(&actions, options.Folder.c_str());
    pid_t process = 0;
    const int failure =
        posix_spawnp(&process, pointers[0], &actions, nullptr, pointers.data(), environment.data());
    posix_spawn_file_actions_destroy(&actions);
    if (failure) throw FileError(failure, arguments[0]);
    return process;
  }

  static int WaitFor(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0)
      if (errno != EINTR) return 0;  // somebody else took its exit code
    return WIFSIGNALED(status) ? SignalBase + WTERMSIG(status) : WEXITSTATUS(status);
  }

  // Programs nobody waited for keep a table entry until they are asked for.
  void Reap() {
    std::vector<pid_t> running;
    for (const pid_t process : mRunning)
      if (waitpid(process, nullptr, WNOHANG) == 0) running.push_back(process);
    mRunning = std::move(running);
  }

  std::vector<pid_t> mRunning;
};

struct InstalledRunner {
  std::shared_ptr<ProcessRunner> Runner = std::make_shared<MachineProcesses>();
};

std::string TakeProgram(std::string_view& rest) {
  std::string program;
  bool quoted = false;
  while (!rest.empty() && (quoted || !IsGap(rest[0]))) {
    if (rest[0] == '"')
      quoted = !quoted;
    else
      program.push_back(rest[0]);
    rest.remove_prefix(1);
  }
  return program;
}

std::string TakeArgument(std::string_view& rest) {
  std::string argument;
  bool quoted = false;
  while (!rest.empty() && (quoted || !IsGap(rest[0]))) {
    const std::size_t slashes = std::min(rest.find_first_not_of('\\'), rest.size());
    rest.remove_prefix(slashes);
    const bool atQuote = !rest.empty() && rest[0] == '"';
    argument.append(atQuote ? slashes / 2 : slashes, '\\');
    if (!atQuote) {
      if (slashes > 0 || rest.empty()) continue;
      argument.push_back(rest[0]);
    } else if (slashes % 2 == 1) {
      argument.push_back('"');
    } else if (quoted && rest.size() > 1 && rest[1] == '"') {
      argument.push_back('"');
      rest.remove_prefix(1);
    } else {
      quoted = !quoted;
    }
    rest.remove_prefix(1);
  }
  return argument;
}

}  // namespace

ProcessRunner& ProcessRunner::Current() { return *InUse<InstalledRunner>().Runner; }

void ProcessRunner::Install(std::shared_ptr<ProcessRunner> runner) {
  InUse<InstalledRunner>().Runner =
      runner ? std::move(runner) : std::make_shared<MachineProcesses>();
}

std::vector<std::string> SplitCommandLine(std::string_view rest) {
  std::vector<std::string> arguments;
  const auto skipGap = [&] {
    while (!rest.empty() && IsGap(rest[0])) rest.remove_prefix(1);
  };
  skipGap();
  if (!rest.empty()) arguments.push_back(TakeProgram(rest));
  for (skipGap(); !rest.empty(); skipGap()) arguments.push_back(TakeArgument(rest));
  return arguments;
}

std::string EscapedArgument(std::string_view text) {
  std::string result;
  std::size_t slashes = 0;
  for (const char c : text) {
    if (c == '"') result.append(slashes + 1, '\\');
    slashes = c == '\\' ? slashes + 1 : 0;
    result.push_back(c);
  }
  return result.append(slashes, '\\');
}

std::string QuotedArgument(std::string_view text) { return '"' + EscapedArgument(text) + '"'; }

}  // namespace vendrel
