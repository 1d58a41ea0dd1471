#include <algorithm>
#include <memory>

#include "cli/CheckSettings.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/ReferencedLibraries.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/ShownText.h"
#include "cli/UnusedRows.h"
#include "cli/UseSets.h"
#include "model/Component.h"

namespace vendrel::cli {
namespace {

struct UnusedArguments {
  CommonOptions Common;
  Inputs File;
  std::vector<std::string> Kinds;
  std::string Sure = "possible";
  std::vector<std::string> Used;
  bool CouldBePrivate = false;
  bool Fail = false;
  bool Json = false;
};

Sureness SurenessOf(const std::string& word) {
  for (const Sureness one : {Sureness::Certain, Sureness::Likely})
    if (word == WordOf(one)) return one;
  return Sureness::Possible;
}

bool IsWanted(const UnusedArguments& arguments, const UnusedFinding& finding) {
  const auto& kinds = arguments.Kinds;
  return finding.How >= SurenessOf(arguments.Sure) &&
         (kinds.empty() || std::find(kinds.begin(), kinds.end(), finding.Kind) != kinds.end());
}

const VBProject* ProjectWith(const UnusedFinding& finding, const VBProject& otherwise) {
  if (const auto* reference = As<Reference>(finding.Element)) return reference->ParentProject();
  const Component* home = finding.Element->OwnComponent();
  return home && home->VBProject() ? home->VBProject() : &otherwise;
}

void Gather(const UnusedArguments& arguments, VBProject& project, ReferencedLibraries& libraries,
            UnusedRows& rows) {
  const std::vector<VBProject*> projects = ProjectsTogether(project);
  if (projects.empty()) return;
  Reach reach;
  reach.UsedFromOutside = arguments.Used;
  for (VBProject* one : projects) {
    RefuseWithoutStatements(*one);
    libraries.Load(*one);
    rows.AddFilesOf(*one);
    reach.Add(*one);
  }
  reach.Sweep();
  const auto take = [&](const UnusedFinding& finding) {
    if (!IsWanted(arguments, finding)) return;
    const VBProject* home = ProjectWith(finding, project);
    rows.Add(finding, home ? *home : project);
  };
  if (arguments.CouldBePrivate) return FindTooPublic(reach, take);
  FindUnused(reach, take);
  FindUnusedReferences(reach, take);
}

std::string ReasonFor(const UnusedRow& row) {
  std::string reason(SentenceOf(row.Reason));
  if (!row.By.empty()) reason += ": " + row.By;
  return reason;
}

std::string SureFor(const UnusedRow& row) {
  std::string sure(WordOf(row.How));
  if (!row.Doubt.empty()) sure += ": " + row.Doubt;
  return sure;
}

void WriteJsonRow(JsonLines& json, const UnusedRow& row) {
  json.Begin();
  json.Text("QualifiedName", row.Name);
  json.Text("Kind", row.Kind);
  json.Text("Reason", WordOf(row.Reason));
  json.Text("Sureness", WordOf(row.How));
  json.Text("Text", ReasonFor(row));
  if (!row.Doubt.empty()) json.Text("Doubt", row.Doubt);
  if (!row.By.empty()) json.Text("By", row.By);
  json.Place(row.WindowsPath, row.Line, row.Column);
  json.End();
}

int RunUnused(UnusedArguments& arguments, const Streams& streams) {
  ApplyToProcess(arguments.Common);
  CheckSettings settings({});
  for (const std::string& path : arguments.File.Paths)
    for (const std::string& name : settings.AtPath(path).Used) arguments.Used.push_back(name);
  int code = exDone;
  bool any = false;
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    UnusedRows rows;
    ReferencedLibraries libraries;
    code = ForEachProject(arguments.File, arguments.Common, streams,
                          [&](VBProject& project) { Gather(arguments, project, libraries, rows); });
    JsonLines json(out, "unused", arguments.Common, arguments.Json);
    ShownPaths paths;
    for (const UnusedRow* row : rows.Agreed()) {
      any = true;
      if (arguments.Json)
        WriteJsonRow(json, *row);
      else
        WriteRow(out, {row->Kind, row->Name, ReasonFor(*row), SureFor(*row),
                       paths.Place(row->WindowsPath, row->Line)});
    }
  });
  return any && arguments.Fail ? Worse(code, exNo) : code;
}

}  // namespace

void AddUnusedCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("unused", "What of a program nobody uses, and why");
  const auto arguments = std::make_shared<UnusedArguments>();
  AddInputs(*command, arguments->File);
  const auto kinds = UnusedKinds();
  command->add_option("--kind", arguments->Kinds, "Only elements of this kind; may be repeated")
      ->type_name("KIND")
      ->check(CLI::IsMember(std::vector<std::string>(kinds.begin(), kinds.end())));
  command->add_option("--sure", arguments->Sure, "Only what is at least that sure")
      ->check(CLI::IsMember({"certain", "likely", "possible"}))
      ->capture_default_str();
  command
      ->add_option("--used", arguments->Used,
                   "A qualified name, or a pattern with * and ?, of what is used from outside; may "
                   "be repeated")
      ->type_name("NAME");
  command->add_flag("--could-be-private", arguments->CouldBePrivate,
                    "Instead: what is public and used by its own module only");
  command->add_flag("--fail", arguments->Fail, "Exit code 4 if there is something");
  command->add_flag("--json", arguments->Json, "As JSON, a finding a line");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunUnused(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
