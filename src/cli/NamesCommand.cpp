#include <memory>

#include "cli/Commands.h"
#include "cli/Elements.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/Results.h"
#include "cli/ShownText.h"
#include "names/NameCheck.h"
#include "names/NameWalk.h"
#include "output/UniqueNames.h"

namespace vendrel::cli {
namespace {

struct NamesArguments {
  CommonOptions Common;
  Inputs File;
  std::string Kind;
  bool Unsure = false;
  bool Json = false;
};

std::string_view RemarkOf(NameState state) {
  switch (state) {
    case NameState::Clashes: return "clashes with an earlier name";
    case NameState::Lost: return "not found by this name";
    default: return {};
  }
}

class NamesWriter {
 public:
  NamesWriter(const NamesArguments& arguments, std::ostream& out)
      : mArguments(arguments), mOut(out), mJson(out, "names", arguments.Common, arguments.Json) {}

  void Write(VBProject& project) {
    if (mArguments.Json) mNames.Add(vendrel::Describe(project));
    ForEachNamedElement(project, [&](CodeElement& element) {
      const std::string_view kind = KindOf(element);
      if (!mArguments.Kind.empty() && kind != mArguments.Kind) return;
      std::string name = element.QualifiedName();
      const NameState state = StateOfName(project, element, name);
      if (mArguments.Unsure && state == NameState::Leads) return;
      if (mArguments.Json)
        WriteAsJson(element, name, kind, state);
      else
        WriteAsText(element, std::move(name), kind, state);
    });
  }

 private:
  void WriteAsText(const CodeElement& element, std::string name, std::string_view kind,
                   NameState state) {
    if (name.empty()) name = element.ElementName();
    const std::string place = PlaceOf(element, mPaths);
    if (state == NameState::Leads)
      WriteRow(mOut, {name, kind, place});
    else
      WriteRow(mOut, {name, kind, place, RemarkOf(state)});
  }

  void WriteAsJson(const CodeElement& element, const std::string& name, std::string_view kind,
                   NameState state) {
    mJson.Begin();
    mJson.Text("UniqueName", mNames.Of(element, name));
    mJson.Text("QualifiedName", name);
    mJson.Text("Kind", kind);
    mJson.Place(element);
    if (state != NameState::Leads) mJson.Text("Remark", RemarkOf(state));
    mJson.End();
  }

  const NamesArguments& mArguments;
  std::ostream& mOut;
  JsonLines mJson;
  UniqueNames mNames;
  ShownPaths mPaths;
};

int RunNames(const NamesArguments& arguments, const Streams& streams) {
  int code = exDone;
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    NamesWriter writer(arguments, out);
    code = ForEachProject(arguments.File, arguments.Common, streams,
                          [&](VBProject& project) { writer.Write(project); });
  });
  return code;
}

}  // namespace

void AddNamesCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("names", "Every qualified name, with its kind and place in the source");
  const auto arguments = std::make_shared<NamesArguments>();
  AddInputs(*command, arguments->File);
  command->add_option("--kind", arguments->Kind, "Only elements of this kind")
      ->type_name("KIND")
      ->check(CLI::IsMember(std::vector<std::string>(AllKinds().begin(), AllKinds().end())));
  command->add_flag("--unsure", arguments->Unsure,
                    "Only names that do not lead back to their element, with the reason");
  command->add_flag("--json", arguments->Json, "One JSON object a line");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunNames(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
