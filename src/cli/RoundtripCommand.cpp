#include <memory>

#include "cli/Commands.h"
#include "cli/Results.h"
#include "cli/RoundTrip.h"
#include "cli/ShownText.h"

namespace vendrel::cli {
namespace {

struct RoundtripArguments {
  CommonOptions Common;
  Inputs File;
  bool Json = false;
};

void WriteCounts(std::ostream& err, const RoundTripCounts& counts) {
  err << CountedWith(counts.Projects, "project") << ", " << CountedWith(counts.Modules, "module")
      << ", " << counts.Modules - counts.Changed << " of them byte for byte the same; "
      << CountedWith(counts.Differences, "difference") << ", " << counts.ByRule
      << " more by the rules for project files\n";
}

int RunRoundtrip(const RoundtripArguments& arguments, const Streams& streams) {
  int code = exDone;
  RoundTripCounts counts;
  CommonOptions options = OneAfterTheOther(arguments.Common);
  options.Unresolved = options.NoReferences = true;  // what is written does not depend on it
  WriteResult(options, streams, arguments.File, [&](std::ostream& out) {
    RoundTrip roundTrip(out, arguments.Json, options, streams);
    code = ForEachProject(arguments.File, options, streams,
                          [&](VBProject& project) { roundTrip.Run(project); });
    counts = roundTrip.Counts();
  });
  if (!arguments.Common.Quiet) WriteCounts(streams.Err, counts);
  return counts.Differences > 0 ? Worse(code, exNo) : code;
}

}  // namespace

void AddRoundtripCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("roundtrip", "Load, write elsewhere, load again: what differs");
  const auto arguments = std::make_shared<RoundtripArguments>();
  AddInputs(*command, arguments->File);
  command->add_flag("--json", arguments->Json, "A JSON object for each difference");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunRoundtrip(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
