#include <memory>

#include "cli/Commands.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/Session.h"
#include "output/Xml.h"

namespace vendrel::cli {
namespace {

struct ManifestArguments {
  CommonOptions Common;
  std::string File;
  bool ProjectOnly = false;
  bool TaggedComments = false;
};

int RunManifest(const ManifestArguments& arguments, const Streams& streams) {
  const auto depth = arguments.ProjectOnly ? LoadDepth::ProjectFile : LoadDepth::Modules;
  const auto project = LoadInput(arguments.File, arguments.Common, streams, depth);
  const auto document = project->Manifest(arguments.ProjectOnly, arguments.TaggedComments);
  WriteResult(arguments.Common, streams, arguments.File,
              [&](std::ostream& out) { out << document->Xml(); });
  return ReportDiagnostics(*project, arguments.Common, streams.Err);
}

}  // namespace

void AddManifestCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("manifest", "The manifest as XML: structure and attributes");
  const auto arguments = std::make_shared<ManifestArguments>();
  command->add_option("file", arguments->File, "A project or a module")->required();
  command->add_flag("--project-only", arguments->ProjectOnly, "The project without its modules");
  command->add_flag("--tagged-comments", arguments->TaggedComments, "With tagged comments");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunManifest(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
