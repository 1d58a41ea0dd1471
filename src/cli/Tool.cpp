#include "cli/Tool.h"

#include <CLI/CLI.hpp>

namespace vendrel::cli {

int RunTool(int argc, char** argv) {
  CLI::App app{"vendrelmodel: the object model of Visual Basic code"};
  app.set_version_flag("--version", "vendrelmodel 2.0.0");
  CLI11_PARSE(app, argc, argv);
  return 0;
}

}  // namespace vendrel::cli
