#include <memory>

#include "cli/ClosestName.h"
#include "cli/Commands.h"
#include "cli/Elements.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/Results.h"
#include "cli/ShownText.h"
#include "names/NameWalk.h"
#include "output/UniqueNames.h"

namespace vendrel::cli {
namespace {

struct ResolveArguments {
  CommonOptions Common;
  Inputs File;
  std::string Type;
  std::string From;
  bool Json = false;
};

struct TypeClassText {
  std::string_view Name;
  std::string_view Meaning;
};
constexpr TypeClassText kTypeClasses[] = {{"tcUnresolved", "not found"},
                                          {"tcLocalProjectModule", "module of this project"},
                                          {"tcOtherProjectModule", "module of another project"},
                                          {"tcLocalModuleEnum", "enumeration of the module"},
                                          {"tcLocalProjectEnum", "enumeration of another module"},
                                          {"tcOtherProjectEnum", "enumeration of another project"},
                                          {"tcLocalModuleUDT", "type of the module"},
                                          {"tcLocalProjectUDT", "type of another module"},
                                          {"tcOtherProjectUDT", "type of another project"},
                                          {"tcIntrinsic", "intrinsic type"}};

struct Resolution {
  TypeClassEnum TypeClass = tcUnresolved;
  const CodeElement* Element = nullptr;
};

void WriteResolution(std::ostream& out, const Resolution& resolution, const VBProject& project,
                     const ResolveArguments& arguments) {
  const TypeClassText& text = kTypeClasses[resolution.TypeClass];
  ShownPaths paths;
  const std::string name = resolution.Element ? resolution.Element->QualifiedName() : "";
  const std::string place = resolution.Element ? PlaceOf(*resolution.Element, paths) : "";
  if (!arguments.Json) {
    if (resolution.Element) return WriteRow(out, {text.Meaning, name, place});
    return WriteRow(out, {text.Meaning});
  }
  JsonLines json(out, "resolve", arguments.Common, true);
  UniqueNames names;
  names.Add(Describe(project));
  json.Begin();
  json.Text("TypeClass", text.Name);
  json.Text("UniqueName", resolution.Element ? names.Of(*resolution.Element) : name);
  json.Text("QualifiedName", name);
  if (resolution.Element)
    json.Place(*resolution.Element);
  else
    json.Place(std::string(), 0);
  json.End();
}

// Modules, types and enumerations: what may stand behind As.
void OfferTypes(VBProject& project, ClosestName& closest) {
  ForEachNamedElement(project, [&](CodeElement& element) {
    const std::string_view kind = KindOf(element);
    if (kind == "module" || kind == "type" || kind == "enumeration")
      closest.Offer(element.ElementName());
  });
}

// The first project that knows the type, seen from the module asked for where that is given.
int RunResolve(const ResolveArguments& arguments, const Streams& streams) {
  int code = exDone;
  bool fromFound = arguments.From.empty(), resolved = false;
  ClosestName closestModule(arguments.From), closestType(arguments.Type);
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    code = ForEachProject(arguments.File, arguments.Common, streams, [&](VBProject& project) {
      Component* from = project.Components.Item(std::string_view(arguments.From));
      closestModule.OfferModulesOf(project);
      if (resolved || (!arguments.From.empty() && !from)) return;
      fromFound = true;
      Resolution resolution;
      resolution.Element = project.ResolveType(from, arguments.Type, resolution.TypeClass);
      if (resolution.TypeClass == tcUnresolved) return OfferTypes(project, closestType);
      resolved = true;
      WriteResolution(out, resolution, project, arguments);
    });
  });
  if (!fromFound)
    throw ToolError(Worse(code, exNo),
                    arguments.File.Shown() + ": has no module '" + arguments.From + "'" +
                        HintOr(closestModule, "; tree --depth 2 lists its modules"));
  if (resolved) return code;
  throw ToolError(Worse(code, exNo), arguments.File.Shown() + ": the type '" + arguments.Type +
                                         "' is not declared here" + closestType.Hint());
}

}  // namespace

void AddResolveCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("resolve", "Where a type is declared");
  const auto arguments = std::make_shared<ResolveArguments>();
  AddInputsAndName(*command, arguments->File, "TYPE, a type name, as behind As");
  command->add_option("--from", arguments->From, "The module in which the name stands")
      ->type_name("MODULE");
  command->add_flag("--json", arguments->Json, "As a JSON object");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] {
      arguments->Type = TakeName(arguments->File, "a type");
      return RunResolve(*arguments, streams);
    };
  });
}

}  // namespace vendrel::cli
