#pragma once
// Ctrl-C and its kin. A signal ends the tool at once where nothing has to be cleaned up; where
// something has, it is noted, the work looks at every call on files and at every piece of a result,
// and what it made is removed on the way out. A second signal always ends it at once.

namespace vendrel::cli {

/// An exit code above this one is that of a signal, as shells have it.
constexpr int SignalBase = 128;

/// Raised where the work looks. Of no type that is caught on the way out of a command.
struct Interrupted {
  int Signal;
};

/// Takes over SIGINT, SIGTERM, SIGHUP and SIGPIPE; those that are ignored stay ignored. For the
/// program itself: whoever calls `RunTool` keeps their handlers.
void InstallInterruptHandlers();

/// While one lives a signal waits until the work looks.
class InterruptHold {
 public:
  InterruptHold();
  ~InterruptHold();
  InterruptHold(const InterruptHold&) = delete;
  InterruptHold& operator=(const InterruptHold&) = delete;
};

/// The signal that was noted; 0 if none was.
int NotedSignal();
/// As a handler does under a hold; 0 forgets.
void NoteSignal(int signal);
/// Raises `Interrupted` if a signal was noted.
void LookForSignal();

/// A file that can be read once a signal was noted, for `poll` beside what is waited for; -1 where
/// no handlers are installed.
int SignalPipe();

/// Ends the program as the signal would have without handlers.
void EndBySignal(int signal);

}  // namespace vendrel::cli
