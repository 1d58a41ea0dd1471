#include <memory>

#include "cli/Commands.h"
#include "cli/ProjectSettings.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/Session.h"
#include "typelib/TypeLibService.h"
#include "typelib/reader/TypeLibListing.h"

namespace vendrel::cli {
namespace {

struct TypeLibArguments {
  CommonOptions Common;
  std::string File;
  bool Json = false;
};

int RunTypeLib(const TypeLibArguments& arguments, const Streams& streams) {
  ApplyToProcess(arguments.Common);
  VBProject settings;
  ApplyToProject(arguments.Common, settings);
  if (KindOfInput(arguments.File) == InputKind::Missing)
    RefuseInput(arguments.File, InputKind::Missing);
  const auto service = TLIApplication::New();
  service->SearchPath = settings.TypeLibPath;
  std::shared_ptr<const typelib::TypeLibInfo> library;
  try {
    library = service->TypeLibInfoFromFile(AbsolutePath(arguments.File));
  } catch (const VendrelError& error) {
    throw ToolError(exFailed,
                    arguments.File + ": cannot be read: " + ReasonOf(error, arguments.File));
  }
  if (!library) throw ToolError(exFailed, arguments.File + ": holds no type library");
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    out << (arguments.Json ? typelib::TypeLibJson(*library, 2, ToolVersion())
                           : typelib::TypeLibListing(*library));
  });
  return arguments.Common.Strict && !library->Messages.empty() ? exWarnings : exDone;
}

}  // namespace

void AddTypeLibCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("typelib", "A type library as it is stored, in the manner of IDL");
  const auto arguments = std::make_shared<TypeLibArguments>();
  command->add_option("file", arguments->File, "A type library or compiled file")->required();
  command->add_flag("--json", arguments->Json, "As JSON, by the names of the reading service");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunTypeLib(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
