// The program that measures: vendrelmodel_bench
// load|write|classify|evaluate|names|colour|uses|typelib|assembly|documentation. Other parts of the
// library join by a row of their own.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "bench/Load.h"
#include "bench/Micro.h"
#include "bench/Write.h"

namespace {

using namespace vendrel::bench;

// The options that all measurements share.
struct Shared {
  int Runs = 5;
  bool Classic = false;
};

CLI::App* AddCommand(CLI::App& app, const char* name, const char* text, Shared& shared) {
  CLI::App* command = app.add_subcommand(name, text);
  command->add_option("--runs", shared.Runs, "Runs; the best and the median count")
      ->check(CLI::Range(1, 1000));
  command->add_flag("--classic", shared.Classic,
                    "The classic reading in place of the complete one");
  return command;
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"Measures the library; build it with the preset `bench`"};
  app.require_subcommand(1);
  Shared shared;
  LoadOptions load;
  load.WorkFolder = (std::filesystem::temp_directory_path() / "vendrelmodel-bench").string();
  CLI::App* loadCommand = AddCommand(app, "load", "Projects from disk to tree", shared);
  loadCommand->add_option("--lines", load.Lines, "Lines of a generated project; may be repeated")
      ->check(CLI::Range(std::int64_t{1}, std::int64_t{1'000'000'000}));
  loadCommand->add_flag("--dotnet", load.DotNet, "The generated projects as VB.NET too");
  loadCommand->add_option("--folder", load.Folders, "Every .vbp and .vbproj below this folder")
      ->check(CLI::ExistingDirectory);
  loadCommand->add_option("--work", load.WorkFolder, "Folder that keeps generated projects");
  CLI::App* writeCommand = AddCommand(app, "write", "Projects from tree to disk", shared);
  writeCommand->add_option("--lines", load.Lines, "Lines of a generated project; may be repeated")
      ->check(CLI::Range(std::int64_t{1}, std::int64_t{1'000'000'000}));
  writeCommand->add_option("--work", load.WorkFolder,
                           "Folder that keeps generated projects and is written to");
  CLI::App* classify = AddCommand(app, "classify", "Lines a second of the classifier", shared);
  CLI::App* evaluate = AddCommand(app, "evaluate", "Conditions a second", shared);
  CLI::App* names = AddCommand(app, "names", "Names and types looked up a second", shared);
  CLI::App* colour = AddCommand(app, "colour", "Source coloured as HTML a second", shared);
  UsesBenchOptions bound;
  CLI::App* uses = AddCommand(app, "uses", "Source whose names are bound a second", shared);
  uses->add_option("--file", bound.File, "This project in place of generated ones")
      ->check(CLI::ExistingFile);
  TypeLibBenchOptions library;
  CLI::App* typelib = AddCommand(app, "typelib", "A type library from disk to tree", shared);
  typelib->add_option("--file", library.File, "This library in place of a generated one")
      ->check(CLI::ExistingFile);
  typelib->add_option("--megabytes", library.Megabytes, "Size of the generated library")
      ->check(CLI::Range(0.01, 500.0));
  AssemblyBenchOptions compiled;
  CLI::App* assembly = AddCommand(app, "assembly", "An assembly from disk to tree", shared);
  assembly->add_option("file", compiled.File, "The assembly")->required()->check(CLI::ExistingFile);
  DocumentationBenchOptions documented;
  CLI::App* documentation =
      AddCommand(app, "documentation", "A documentation file into a tree", shared);
  documentation->add_option("--megabytes", documented.Megabytes, "Size of the generated file")
      ->check(CLI::Range(0.01, 1000.0));
  CLI11_PARSE(app, argc, argv);
  try {
    load.Runs = shared.Runs;
    load.Classic = shared.Classic;
    if (loadCommand->parsed()) return RunLoad(load);
    if (writeCommand->parsed()) return RunWrite(load);
    const MicroOptions micro{shared.Runs, shared.Classic};
    if (classify->parsed()) return RunClassify(micro);
    if (evaluate->parsed()) return RunEvaluate(micro);
    if (names->parsed()) return RunNames(micro);
    if (colour->parsed()) return RunColour(micro);
    if (uses->parsed()) {
      bound.Runs = shared.Runs;
      bound.Classic = shared.Classic;
      return RunUses(bound);
    }
    if (typelib->parsed()) {
      library.Runs = shared.Runs;
      library.Classic = shared.Classic;
      return RunTypeLib(library);
    }
    if (assembly->parsed()) {
      compiled.Runs = shared.Runs;
      compiled.Classic = shared.Classic;
      return RunAssembly(compiled);
    }
    if (documentation->parsed()) {
      documented.Runs = shared.Runs;
      documented.Classic = shared.Classic;
      documented.WorkFolder = load.WorkFolder;
      return RunDocumentation(documented);
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
  }
  return 1;
}
