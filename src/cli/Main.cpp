#include <unistd.h>

#include <iostream>

#include "cli/Tool.h"
#include "diagnostics/FatalSignals.h"

#ifdef VENDREL_MIMALLOC
#include <mimalloc.h>
#endif

int main(int argc, char** argv) {
#ifdef VENDREL_MIMALLOC
  mi_option_enable(mi_option_large_os_pages);
#endif
  vendrel::InstallFatalSignalHandler();
  std::ios::sync_with_stdio(false);
  const vendrel::cli::Streams streams{std::cout, std::cerr, isatty(STDOUT_FILENO) != 0,
                                      isatty(STDERR_FILENO) != 0,
                                      isatty(STDIN_FILENO) != 0 ? &std::cin : nullptr};
  return vendrel::cli::RunTool(argc, argv, streams);
}
