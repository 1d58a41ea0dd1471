// Writes a generated project: vendrelmodel_generate OUT_FOLDER LINES [--seed N]
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

#include "bench/Generator.h"

int main(int argc, char** argv) {
  CLI::App app{"Writes a Visual Basic project of about LINES lines into OUT_FOLDER"};
  vendrel::bench::GeneratorOptions options;
  std::string folder;
  app.add_option("OUT_FOLDER", folder, "Folder to write; made if it is not there")->required();
  app.add_option("LINES", options.Lines, "Lines of all modules together")
      ->required()
      ->check(CLI::Range(1, 1'000'000'000));
  app.add_option("--seed", options.Seed, "The same seed gives the same bytes");
  CLI11_PARSE(app, argc, argv);
  try {
    const auto lines = vendrel::bench::WriteProject(options, folder);
    std::printf("%s/%s: %lld lines\n", folder.c_str(), vendrel::bench::kProjectFileName,
                static_cast<long long>(lines));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
