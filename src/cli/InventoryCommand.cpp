#include <memory>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/ReferencedLibraries.h"
#include "cli/TableWriter.h"
#include "survey/Inventory.h"

namespace vendrel::cli {
namespace {

struct InventoryArguments {
  CommonOptions Common;
  Inputs Paths;
  TableForms Forms;
  bool NearDuplicates = false;
  bool Uses = false;
  bool All = false;
};

void AddFilesBelow(const std::string& path, Inventory& inventory) {
  if (KindOfInput(path) != InputKind::Folder) return;
  for (const FileSystemObject& file : SourceFilesBelow(path)) inventory.AddFile(file);
}

int RunInventory(const InventoryArguments& arguments, const Streams& streams) {
  int code = exDone;
  WriteResult(arguments.Common, streams, arguments.Paths, [&](std::ostream& out) {
    Inventory inventory;
    inventory.NativeRoot = FolderSeenFrom(arguments.Common, arguments.Forms.Json);
    inventory.FindsNearDuplicates = arguments.NearDuplicates;
    inventory.CountsUses = arguments.Uses;
    ReferencedLibraries libraries;
    code = ForEachProject(arguments.Paths, arguments.Common, streams, [&](VBProject& project) {
      if (!arguments.Uses) return inventory.Add(project);
      libraries.Load(project);
      const ProjectUses uses(project);
      inventory.Add(project, &uses);
    });
    for (const std::string& path : arguments.Paths.Paths) AddFilesBelow(path, inventory);
    WriteTables(out, inventory.Tables(),
                {"inventory", "Inventory", arguments.Forms.Chosen(), arguments.All},
                arguments.Common);
  });
  return code;
}

}  // namespace

void AddInventoryCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("inventory", "What there is in numbers, as tables");
  const auto arguments = std::make_shared<InventoryArguments>();
  AddInputs(*command, arguments->Paths);
  AddTableForms(*command, arguments->Forms);
  command->add_flag("--near-duplicates", arguments->NearDuplicates,
                    "Modules of which four in five lines are the same, too");
  command->add_flag("--uses", arguments->Uses,
                    "What names in code tell: calls, uses of references and controls, too");
  command->add_flag("--all", arguments->All, "Every row, not the largest alone");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunInventory(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
