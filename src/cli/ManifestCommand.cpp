#include <memory>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/Results.h"
#include "output/Manifest.h"

namespace vendrel::cli {
namespace {

struct ManifestArguments {
  CommonOptions Common;
  Inputs File;
  bool ProjectOnly = false;
  bool TaggedComments = false;
};

constexpr std::string_view kDeclaration = "<?xml version=\"1.0\"?>\n";

// Several projects are one document: their manifests below one root.
int RunManifest(const ManifestArguments& arguments, const Streams& streams) {
  const auto depth = arguments.ProjectOnly ? LoadDepth::ProjectFile : LoadDepth::Modules;
  int code = exDone;
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    const InputKind kind = KindOfInput(arguments.File);
    const bool several = kind == InputKind::Group || kind == InputKind::Folder;
    const auto write = [&](VBProject& project) {
      WriteManifest(project, arguments.ProjectOnly, arguments.TaggedComments,
                    [&](std::string_view part) {
                      if (several && part.starts_with(kDeclaration))
                        part.remove_prefix(kDeclaration.size());
                      out << part;
                    });
    };
    if (several) out << kDeclaration << "<Projects>\n";
    code = ForEachProject(arguments.File, arguments.Common, streams, write, depth);
    if (several) out << "</Projects>\n";
  });
  return code;
}

}  // namespace

void AddManifestCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("manifest", "The manifest as XML: structure and attributes");
  const auto arguments = std::make_shared<ManifestArguments>();
  AddInputs(*command, arguments->File);
  command->add_flag("--project-only", arguments->ProjectOnly, "The project without its modules");
  command->add_flag("--tagged-comments", arguments->TaggedComments, "With tagged comments");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunManifest(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
