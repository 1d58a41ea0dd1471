#include <memory>
#include <vector>

#include "cli/ClosestName.h"
#include "cli/Commands.h"
#include "cli/Elements.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/Results.h"
#include "cli/ShownText.h"
#include "core/CaseFold.h"
#include "output/Dump.h"
#include "output/Json.h"
#include "output/UniqueNames.h"

namespace vendrel::cli {
namespace {

struct ControlsArguments {
  CommonOptions Common;
  Inputs File;
  std::string Module;
  bool Json = false;
  bool Properties = false;
};

struct OpenControl {
  const VBControl* Control;
  int Depth;
};

void WriteControl(std::ostream& out, const VBControl& control, int depth, ShownPaths& paths) {
  std::string line = control.ProgID;
  line.append(" ").append(control.Name);
  const SharedText& text = control.Caption.empty() ? control.Text : control.Caption;
  if (!text.empty()) line.append(" \"").append(text.view()).append("\"");
  line.append(" at ").append(std::to_string(control.x)).append(",");
  line.append(std::to_string(control.y)).append("  ").append(PlaceOf(control, paths));
  out << std::string(IndentOf(depth), ' ') << Shown(line) << '\n';
}

// A text as JSON has it: on one line, whatever is in it.
std::string InQuotes(std::string_view text) {
  std::string quoted;
  AppendJsonString(quoted, text);
  return quoted;
}

// What is written without quotation marks.
std::string WithoutQuotes(std::string_view text) {
  std::string shown;
  for (const char c : text) {
    if (static_cast<unsigned char>(c) < ' ') {
      const std::string escaped = InQuotes({&c, 1});
      shown.append(escaped, 1, escaped.size() - 2);
    } else {
      shown += c;
    }
  }
  return shown;
}

void WriteProperty(std::ostream& out, const ControlProperty& property, int depth) {
  std::string line(IndentOf(depth + property.Depth), ' ');
  line += WithoutQuotes(property.Name);
  const bool isGroup = property.Kind == ControlValue::Group;
  if (!isGroup) line += " =";
  if (property.Kind == ControlValue::Text) {
    line.append(" ").append(InQuotes(property.Value));
  } else if (property.Kind == ControlValue::List) {
    for (std::size_t i = 0; i < property.Items.size(); ++i)
      line.append(i == 0 ? " " : ", ").append(InQuotes(property.Items[i]));
  } else if (!property.Value.empty()) {
    line.append(" ").append(WithoutQuotes(property.Value));
  }
  out << line << '\n';
}

// Containers before what they hold, from an explicit stack.
void WriteTree(std::ostream& out, const VBControl& root, bool properties, ShownPaths& paths) {
  std::vector<OpenControl> open{{&root, 0}};
  while (!open.empty()) {
    const OpenControl next = open.back();
    open.pop_back();
    WriteControl(out, *next.Control, next.Depth, paths);
    if (properties)
      for (const ControlProperty& property : next.Control->ControlProperties())
        WriteProperty(out, property, next.Depth + 2);
    for (std::size_t i = next.Control->VBControls.Count(); i >= 1; --i)
      open.push_back({next.Control->VBControls.Item(i), next.Depth + 1});
  }
}

int RunControls(const ControlsArguments& arguments, const Streams& streams) {
  int code = exDone;
  bool found = false;
  ClosestName closest(arguments.Module);
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    ShownPaths paths;
    const JsonLines list(out, "controls", arguments.Common, arguments.Json);
    UniqueNames names;
    DumpOptions shown;
    shown.Indented = false;
    shown.NativeRoot = NativeRootOf(arguments.Common);
    shown.Names = &names;
    shown.ControlProperties = arguments.Properties;
    code = ForEachProject(arguments.File, arguments.Common, streams, [&](VBProject& project) {
      if (arguments.Json) names.Add(Describe(project));
      closest.OfferModulesOf(project);
      for (const Component& component : project.Components.Listed()) {
        if (!arguments.Module.empty() && !EqualsNoCase(component.Name, arguments.Module)) continue;
        found = found || !arguments.Module.empty() || component.VBControl;
        if (!component.VBControl) continue;
        if (arguments.Json)
          Dump(out, Describe(*component.VBControl), shown);
        else
          WriteTree(out, *component.VBControl, arguments.Properties, paths);
      }
    });
  });
  if (found) return code;
  if (arguments.Module.empty())
    throw ToolError(Worse(code, exNo), arguments.File.Shown() + ": no module has controls");
  throw ToolError(Worse(code, exNo), arguments.File.Shown() + ": has no module '" +
                                         arguments.Module + "'" +
                                         HintOr(closest, "; tree --depth 2 lists its modules"));
}

}  // namespace

void AddControlsCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("controls", "The control trees of forms and their kin");
  const auto arguments = std::make_shared<ControlsArguments>();
  AddInputsAndName(*command, arguments->File, "MODULE, where only one is wanted");
  command->add_flag("--json", arguments->Json, "Each tree as JSON, one a line");
  command->add_flag("--properties", arguments->Properties, "All properties of each control too");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] {
      arguments->Module = TakeNameIfAny(arguments->File);
      return RunControls(*arguments, streams);
    };
  });
}

}  // namespace vendrel::cli
