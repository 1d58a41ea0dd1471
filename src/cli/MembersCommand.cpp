#include <algorithm>
#include <memory>

#include "cli/ClosestName.h"
#include "cli/Commands.h"
#include "cli/Elements.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/Results.h"
#include "cli/ShownText.h"
#include "core/CaseFold.h"
#include "output/MemberLists.h"
#include "output/UniqueNames.h"

namespace vendrel::cli {
namespace {

struct MembersArguments {
  CommonOptions Common;
  Inputs File;
  std::string Module;
  std::string Kind;
  bool Private = false;
  bool Friend = false;
  std::string Interface;
  bool Json = false;
};

// In the order in which a module is described.
constexpr std::pair<std::string_view, MemberKind> kKinds[] = {
    {"enums", MemberKind::Enumerations}, {"types", MemberKind::Types},
    {"events", MemberKind::Events},      {"properties", MemberKind::Properties},
    {"methods", MemberKind::Methods},    {"collections", MemberKind::Collections}};

std::vector<std::string> KindWords() {
  std::vector<std::string> words;
  for (const auto& [word, kind] : kKinds) words.emplace_back(word);
  return words;
}

// By its name or qualified name; of .NET with as much of its namespaces as wanted, and without the
// number of its type parameters where none is given.
bool IsCalled(const Component& component, std::string_view name) {
  const std::string qualified = component.QualifiedName();
  if (EqualsNoCase(component.Name, name) || EqualsNoCase(qualified, name)) return true;
  std::string_view own = qualified;
  own.remove_prefix(own.rfind('~') + 1);
  if (name.find('`') == std::string_view::npos) own = own.substr(0, own.rfind('`'));
  if (own.size() < name.size() || !EqualsNoCase(own.substr(own.size() - name.size()), name))
    return false;
  return own.size() == name.size() || own[own.size() - name.size() - 1] == '.';
}

class MembersWriter {
 public:
  MembersWriter(const MembersArguments& arguments, std::ostream& out)
      : mArguments(arguments), mOut(out), mJson(out, "members", arguments.Common, arguments.Json) {}

  std::size_t Modules() const { return mModules; }
  std::size_t Members() const { return mMembers; }

  void Write(VBProject& project) {
    if (mArguments.Json) mNames.Add(vendrel::Describe(project));
    for (Component& component : project.Components.Listed())
      if (IsCalled(component, mArguments.Module)) Write(component);
  }

 private:
  void Write(Component& component) {
    ++mModules;
    const MemberFilter filter{mArguments.Private, mArguments.Friend, mArguments.Interface};
    for (const auto& [word, kind] : kKinds) {
      // Collections stand among the properties already: they come when they are asked for.
      const bool isAsked =
          mArguments.Kind.empty() ? kind != MemberKind::Collections : mArguments.Kind == word;
      if (!isAsked) continue;
      for (const CodeElement* member : MembersOf(component, kind, filter)) Write(*member, word);
    }
  }

  void Write(const CodeElement& member, std::string_view kind) {
    ++mMembers;
    if (!mArguments.Json) {
      WriteRow(mOut,
               {member.ElementName(), kind, {SignatureOf(member), true}, PlaceOf(member, mPaths)},
               mArguments.Common.XmlDocs ? member.Description() : std::string());
      return;
    }
    mJson.Begin();
    mJson.Text("Name", member.ElementName());
    mJson.Text("Kind", kind);
    mJson.Text("UniqueName", mNames.Of(member));
    mJson.Text("QualifiedName", member.QualifiedName());
    mJson.Text("Signature", SignatureOf(member));
    mJson.Place(member);
    if (mArguments.Common.XmlDocs) mJson.Text("Description", member.Description());
    mJson.End();
  }

  const MembersArguments& mArguments;
  std::ostream& mOut;
  JsonLines mJson;
  UniqueNames mNames;
  ShownPaths mPaths;
  std::size_t mModules = 0, mMembers = 0;
};

// Why there is an empty list, and what would fill it.
std::string NothingToShow(const MembersArguments& arguments) {
  std::string text = " has no ";
  if (!arguments.Private) text += arguments.Friend ? "public or friend " : "public ";
  text += arguments.Kind.empty() ? "members" : arguments.Kind;
  if (!arguments.Interface.empty())
    text += " of the interface '" + Shown(arguments.Interface) + "'";
  if (!arguments.Private)
    text +=
        arguments.Friend ? "; --private shows the others" : "; --private and --friend show others";
  return text;
}

int RunMembers(const MembersArguments& arguments, const Streams& streams) {
  int code = exDone;
  std::size_t modules = 0, members = 0;
  ClosestName closest(arguments.Module);
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    MembersWriter writer(arguments, out);
    code = ForEachProject(arguments.File, arguments.Common, streams, [&](VBProject& project) {
      closest.OfferModulesOf(project);
      writer.Write(project);
    });
    modules = writer.Modules();
    members = writer.Members();
  });
  if (modules > 0 && members == 0 && !arguments.Common.Quiet)
    TellRemark(streams, arguments.Common, Shown(arguments.Module) + NothingToShow(arguments),
               {{},
                0,
                0,
                "note",
                CodeName(DiagnosticCode::Told),
                arguments.Module + NothingToShow(arguments),
                exDone});
  if (modules > 0) return code;
  throw ToolError(Worse(code, exNo), arguments.File.Shown() + ": no module is called '" +
                                         arguments.Module + "'" +
                                         HintOr(closest, "; names --kind module lists them"));
}

}  // namespace

void AddMembersCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("members", "The members of a module as its users see them");
  const auto arguments = std::make_shared<MembersArguments>();
  AddInputsAndName(*command, arguments->File, "MODULE, bare or qualified");
  command->add_option("--kind", arguments->Kind, "Only this list")
      ->type_name("KIND")
      ->check(CLI::IsMember(KindWords()));
  command->add_flag("--private", arguments->Private, "Private and hidden members too");
  command->add_flag("--friend", arguments->Friend, "Friend members too");
  command->add_option("--interface", arguments->Interface,
                      "Only members of this interface; Default: of none");
  command->add_flag("--json", arguments->Json, "One JSON object a line");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] {
      arguments->Module = TakeName(arguments->File, "a module");
      return RunMembers(*arguments, streams);
    };
  });
}

}  // namespace vendrel::cli
