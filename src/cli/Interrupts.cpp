#include "cli/Interrupts.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>

namespace vendrel::cli {
namespace {

constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP, SIGPIPE};

// Lock-free, as a handler needs it; the tool may run on several threads of a host.
std::atomic<int> sHolds = 0;
std::atomic<int> sSignal = 0;
static_assert(std::atomic<int>::is_always_lock_free);
int sPipe[2] = {-1, -1};
std::array<struct sigaction, NSIG> sBefore;

// Calls nothing but what a handler may.
void OnSignal(int signal) {
  const int error = errno;
  if (sHolds > 0 && sSignal == 0) {
    NoteSignal(signal);
  } else {
    sigaction(signal, &sBefore[static_cast<std::size_t>(signal)], nullptr);
    raise(signal);  // delivered when this handler returns
  }
  errno = error;
}

}  // namespace

void InstallInterruptHandlers() {
  if (pipe2(sPipe, O_CLOEXEC | O_NONBLOCK) != 0) sPipe[0] = sPipe[1] = -1;
  struct sigaction action {};
  action.sa_handler = OnSignal;
  action.sa_flags = SA_ONSTACK;
  sigemptyset(&action.sa_mask);
  // One at a time: two that come together are a first and a second.
  for (const int signal : kSignals) sigaddset(&action.sa_mask, signal);
  for (const int signal : kSignals) {
    struct sigaction& before = sBefore[static_cast<std::size_t>(signal)];
    if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
      sigaction(signal, &action, nullptr);
  }
}

InterruptHold::InterruptHold() { ++sHolds; }
InterruptHold::~InterruptHold() { --sHolds; }

int NotedSignal() { return sSignal; }

void NoteSignal(int signal) {
  sSignal = signal;
  if (signal != 0 && sPipe[1] >= 0) {
    // A pipe that is full can be read as well.
    [[maybe_unused]] const ssize_t written = write(sPipe[1], "", 1);
  }
}

void LookForSignal() {
  if (const int signal = sSignal; signal != 0) throw Interrupted{signal};
}

int SignalPipe() { return sPipe[0]; }

void EndBySignal(int signal) {
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  sigemptyset(&action.sa_mask);
  sigaction(signal, &action, nullptr);
  raise(signal);
}

}  // namespace vendrel::cli
