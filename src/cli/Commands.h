#pragma once
// One function a command: it adds the command with its options and says what runs.

#include <CLI/CLI.hpp>
#include <functional>

#include "cli/Tool.h"

namespace vendrel::cli {

/// What the command line asked for, run once it has been read whole.
struct Job {
  const vendrel::cli::Streams& Streams;
  std::function<int()> Run;
};

void AddTreeCommand(CLI::App& app, Job& job);
void AddDumpCommand(CLI::App& app, Job& job);
void AddManifestCommand(CLI::App& app, Job& job);
void AddCommentsCommand(CLI::App& app, Job& job);
void AddCheckCommand(CLI::App& app, Job& job);
void AddLinesCommand(CLI::App& app, Job& job);
void AddEvaluateCommand(CLI::App& app, Job& job);
void AddNamesCommand(CLI::App& app, Job& job);
void AddFindCommand(CLI::App& app, Job& job);
void AddUsesCommand(CLI::App& app, Job& job);
void AddResolveCommand(CLI::App& app, Job& job);
void AddControlsCommand(CLI::App& app, Job& job);
void AddTypeLibCommand(CLI::App& app, Job& job);
void AddAssemblyCommand(CLI::App& app, Job& job);
void AddAssembliesCommand(CLI::App& app, Job& job);
void AddStructureCommand(CLI::App& app, Job& job);
void AddHtmlCommand(CLI::App& app, Job& job);
void AddMembersCommand(CLI::App& app, Job& job);
void AddHelpIDsCommand(CLI::App& app, Job& job);
void AddWriteCommand(CLI::App& app, Job& job);
void AddDiffCommand(CLI::App& app, Job& job);
void AddBuildCommand(CLI::App& app, Job& job);
void AddCallsCommand(CLI::App& app, Job& job);
void AddUnusedCommand(CLI::App& app, Job& job);
void AddInventoryCommand(CLI::App& app, Job& job);
void AddSchemaCommand(CLI::App& app, Job& job);
void AddRoundtripCommand(CLI::App& app, Job& job);
void AddSiteCommand(CLI::App& app, Job& job);

}  // namespace vendrel::cli
