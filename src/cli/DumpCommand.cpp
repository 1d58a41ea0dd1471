#include <memory>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/Results.h"
#include "output/Dump.h"
#include "output/UniqueNames.h"
#include "services/Paths.h"

namespace vendrel::cli {
namespace {

struct DumpArguments {
  CommonOptions Common;
  Inputs File;
  bool Lines = false;
  bool Comparable = false;
  bool Compact = false;
  bool Brief = false;
};

DumpOptions OptionsOf(const DumpArguments& arguments) {
  DumpOptions options;
  options.Lines = arguments.Lines;
  options.Identity = options.SourceLines = !arguments.Comparable;
  options.Empty = !arguments.Brief;
  options.Indented = !arguments.Compact;
  options.Places = !arguments.Comparable;
  if (!arguments.Comparable) options.Tool = ToolVersion();
  options.NativeRoot = NativeRootOf(arguments.Common);
  if (!arguments.Common.Root.empty())
    options.Root = WindowsPath(AbsolutePath(arguments.Common.Root));
  while (options.Root.ends_with('\\')) options.Root.pop_back();
  return options;
}

int RunDump(const DumpArguments& arguments, const Streams& streams) {
  DumpOptions options = OptionsOf(arguments);
  int code = exDone;
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    const InputKind kind = KindOfInput(arguments.File);
    if (kind == InputKind::Group) {
      const auto group = LoadGroup(arguments.File.Paths.front(), arguments.Common, streams);
      Dump(out, Describe(*group), options);
      code = ReportGroup(*group, arguments.Common, streams.Err);
      return;
    }
    UniqueNames names;
    options.Names = &names;
    const bool isList = kind == InputKind::Folder;
    const JsonLines list(out, "dump", arguments.Common, isList);
    if (isList) {
      options.Indented = false;
      options.Tool.clear();
    }
    code = ForEachProject(arguments.File, arguments.Common, streams, [&](VBProject& project) {
      names.Add(Describe(project));
      Dump(out, Describe(project), options);
    });
  });
  return code;
}

}  // namespace

void AddDumpCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("dump", "The whole tree as JSON");
  const auto arguments = std::make_shared<DumpArguments>();
  AddInputs(*command, arguments->File);
  command->add_flag("--lines", arguments->Lines, "With the code lines");
  command->add_flag("--comparable", arguments->Comparable,
                    "Without what differs from load to load: keys, ids, paths, line numbers");
  command->add_flag("--brief", arguments->Brief,
                    "Without properties that say nothing: empty, 0, false");
  command->add_flag("--compact", arguments->Compact, "On one line");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunDump(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
