#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <iostream>
#include <streambuf>

#include "cli/Interrupts.h"
#include "cli/Tool.h"
#include "diagnostics/FatalSignals.h"

namespace {

// What a person types; a signal that was noted ends the waiting as the end of the input does.
class Keyboard final : public std::streambuf {
  int_type underflow() override {
    std::array<pollfd, 2> files{pollfd{STDIN_FILENO, POLLIN, 0},
                                pollfd{vendrel::cli::SignalPipe(), POLLIN, 0}};
    while (poll(files.data(), files.size(), -1) < 0)
      if (errno != EINTR) return traits_type::eof();
    if (vendrel::cli::NotedSignal() != 0) return traits_type::eof();
    const ssize_t count = read(STDIN_FILENO, mBuffer.data(), mBuffer.size());
    if (count <= 0) return traits_type::eof();
    setg(mBuffer.data(), mBuffer.data(), mBuffer.data() + count);
    return traits_type::to_int_type(mBuffer.front());
  }

  std::array<char, 256> mBuffer;
};

}  // namespace

int main(int argc, char** argv) {
  vendrel::InstallFatalSignalHandler();
  vendrel::cli::InstallInterruptHandlers();
  std::ios::sync_with_stdio(false);
  Keyboard keyboard;
  std::istream answers(&keyboard);
  static auto* const lasting = new std::vector<std::shared_ptr<const void>>;
  const vendrel::cli::Streams streams{std::cout,
                                      std::cerr,
                                      isatty(STDOUT_FILENO) != 0,
                                      isatty(STDERR_FILENO) != 0,
                                      isatty(STDIN_FILENO) != 0 ? &answers : nullptr,
                                      &answers,
                                      lasting};
  const int code = vendrel::cli::RunTool(argc, argv, streams);
  if (const int signal = vendrel::cli::NotedSignal();
      signal != 0 && code == vendrel::cli::SignalBase + signal) {
    std::cout.flush();
    vendrel::cli::EndBySignal(signal);
  }
  return code;
}
