#include "diagnostics/FatalSignals.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>

namespace vendrel {
namespace {

constexpr int kAnyCode = -1;

struct SignalWord {
  int Signal;
  int Code;
  const char* Words;
};

// The first row that fits holds.
constexpr std::array kWords{
    SignalWord{SIGSEGV, kAnyCode, "Access Violation"},
    SignalWord{SIGBUS, BUS_ADRALN, "Data Type Misalignment"},
    SignalWord{SIGBUS, kAnyCode, "In Page Error"},
    SignalWord{SIGFPE, FPE_INTDIV, "Integer Divide By Zero"},
    SignalWord{SIGFPE, FPE_INTOVF, "Integer Overflow"},
    SignalWord{SIGFPE, FPE_FLTDIV, "Divide By Zero"},
    SignalWord{SIGFPE, FPE_FLTOVF, "Float Overflow"},
    SignalWord{SIGFPE, FPE_FLTUND, "Float Underflow"},
    SignalWord{SIGFPE, FPE_FLTRES, "Floating Point Inexact Result"},
    SignalWord{SIGFPE, FPE_FLTSUB, "Array Bounds Exceeded"},
    SignalWord{SIGFPE, kAnyCode, "Invalid Operation"},
    SignalWord{SIGILL, ILL_PRVOPC, "Privileged Instruction"},
    SignalWord{SIGILL, ILL_PRVREG, "Privileged Instruction"},
    SignalWord{SIGILL, kAnyCode, "Illegal Instruction"},
    SignalWord{SIGTRAP, TRAP_TRACE, "Single Step"},
    SignalWord{SIGTRAP, kAnyCode, "Breakpoint"},
    SignalWord{SIGINT, kAnyCode, "Control-C Exit"},
};
constexpr std::array kSignals{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT, SIGINT};

constexpr const char* kStackOverflow = "Stack Overflow";
constexpr std::size_t kNear =
    1 << 20;  // a fault this close to the stack pointer is the stack's end

std::array<struct sigaction, NSIG> sBefore;

const char* WordsFor(int signal, int code) {
  for (const SignalWord& word : kWords)
    if (word.Signal == signal && (word.Code == code || word.Code == kAnyCode)) return word.Words;
  return nullptr;
}

// Where the thread stood when the signal came; 0 where the machine is not known.
std::uintptr_t StackPointer([[maybe_unused]] const void* context) {
#if defined(__x86_64__)
  return static_cast<std::uintptr_t>(
      static_cast<const ucontext_t*>(context)->uc_mcontext.gregs[REG_RSP]);
#elif defined(__aarch64__)
  return static_cast<const ucontext_t*>(context)->uc_mcontext.sp;
#else
  return 0;
#endif
}

bool IsStackOverflow(int signal, const siginfo_t& info, const void* context) {
  if (signal != SIGSEGV) return false;
  const auto at = reinterpret_cast<std::uintptr_t>(info.si_addr);
  const std::uintptr_t stack = StackPointer(context);
  return stack != 0 && at + kNear > stack && at < stack + kNear;
}

void Write(const char* text) {
  // A handler may do nothing about a write that fails.
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text, std::strlen(text));
}

// Eight hexadecimal digits, without the C library's formatting, which a handler must not call.
void WriteUnknown(int signal) {
  char text[] = "Unknown (&H00000000)";
  auto value = static_cast<unsigned>(signal);
  for (std::size_t i = 18; value != 0 && i > 10; --i, value /= 16)
    text[i] = "0123456789ABCDEF"[value % 16];
  Write(text);
}

void OnSignal(int signal, siginfo_t* info, void* context) {
  const char* words =
      IsStackOverflow(signal, *info, context) ? kStackOverflow : WordsFor(signal, info->si_code);
  Write("vendrelmodel: ");
  if (words)
    Write(words);
  else
    WriteUnknown(signal);
  Write("\n");
  sigaction(signal, &sBefore[static_cast<std::size_t>(signal)], nullptr);
  raise(signal);  // delivered when this handler returns
}

}  // namespace

std::string FatalSignalName(int signal, int code) {
  if (const char* words = WordsFor(signal, code)) return words;
  char text[32];
  std::snprintf(text, sizeof text, "Unknown (&H%08X)", static_cast<unsigned>(signal));
  return text;
}

void InstallFatalSignalHandler() {
  static bool installed = false;
  if (installed) return;
  installed = true;
  // The stack outlives everything: a signal may come while the process ends.
  static const std::size_t size = static_cast<std::size_t>(SIGSTKSZ) + 64 * 1024;
  static char* const memory = new char[size];
  stack_t stack{};
  stack.ss_sp = memory;
  stack.ss_size = size;
  if (sigaltstack(&stack, nullptr) != 0) return;
  struct sigaction action {};
  action.sa_sigaction = OnSignal;
  action.sa_flags = SA_SIGINFO | SA_ONSTACK;
  sigemptyset(&action.sa_mask);
  for (const int signal : kSignals) {
    // What is ignored stays ignored, as a shell asks for a program in the background.
    struct sigaction& before = sBefore[static_cast<std::size_t>(signal)];
    if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
      sigaction(signal, &action, nullptr);
  }
}

}  // namespace vendrel
