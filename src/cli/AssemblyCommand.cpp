#include <memory>
#include <unordered_set>

#include "cli/Commands.h"
#include "cli/JsonLines.h"
#include "cli/ProjectSettings.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/Session.h"
#include "dotnet/DocumentationCheck.h"
#include "dotnet/metadata/AssemblyLister.h"
#include "output/Json.h"

namespace vendrel::cli {
namespace {

using metadata::ListedEntry;

struct AssemblyArguments {
  CommonOptions Common;
  std::string File;
  metadata::ListingOptions Listing;
  bool Json = false;
  bool CheckDocs = false;
};

void WriteTexts(JsonWriter& json, std::string_view key, const std::vector<std::string>& texts) {
  if (texts.empty()) return;
  json.Key(key);
  json.BeginArray();
  for (const std::string& text : texts) json.String(text);
  json.EndArray();
}

void WriteJson(JsonLines& list, const std::string& file, const ListedEntry& entry) {
  JsonWriter& json = list.Writer();
  const auto text = [&](std::string_view key, std::string_view value) {
    if (value.empty()) return;
    json.Key(key);
    json.String(value);
  };
  const auto mark = [&](std::string_view key, bool value) {
    if (!value) return;
    json.Key(key);
    json.Truth(true);
  };
  list.Begin();
  text("Name", entry.Name);
  text("Kind", entry.Kind);
  text("Access", AccessWord(entry.Access));
  text("In", entry.In);
  mark("IsStatic", entry.IsStatic);
  mark("IsVirtual", entry.IsVirtual);
  mark("IsAbstract", entry.IsAbstract);
  mark("IsSealed", entry.IsSealed);
  mark("IsExplicit", entry.IsExplicit);
  mark("IsExtension", entry.IsExtension);
  mark("IsHidden", entry.IsHidden);
  text("Type", entry.Type);
  WriteTexts(json, "Parameters", entry.Parameters);
  WriteTexts(json, "Implements", entry.Implements);
  text("Value", entry.Value);
  if (entry.Obsolete.Marked) {
    json.Key("Obsolete");
    json.String(entry.Obsolete.Text);
  }
  text("Damage", entry.Damage);
  list.Place(file, 0);
  list.End();
}

// What is told on the way, to the error stream.
class Told {
 public:
  Told(const AssemblyArguments& arguments, const Streams& streams)
      : mArguments(arguments), mStreams(streams) {}
  void operator()(const std::string& message) {
    mAny = true;
    if (!mArguments.Common.Quiet)
      TellRemark(mStreams, mArguments.Common, mArguments.File + ": warning: " + message,
                 {AbsolutePath(mArguments.File), 0, 0, "warning",
                  CodeName(DiagnosticCode::AssemblyPart), message, exDone});
  }
  int Code() const { return mAny && mArguments.Common.Strict ? exWarnings : exDone; }

 private:
  const AssemblyArguments& mArguments;
  const Streams& mStreams;
  bool mAny = false;
};

std::string NativeInput(const AssemblyArguments& arguments) {
  if (KindOfInput(arguments.File) == InputKind::Missing)
    RefuseInput(arguments.File, InputKind::Missing);
  return FileSystemObject(AbsolutePath(arguments.File)).NativePath();
}

int List(const AssemblyArguments& arguments, const Streams& streams) {
  VBProject settings;
  ApplyToProject(arguments.Common, settings);
  metadata::AssemblyStore store(settings.ReferencePath);
  Told told(arguments, streams);
  store.OnMissing = [&](const std::string& name) {
    if (arguments.Common.Quiet) return;
    const std::string text =
        "assembly " + name + " not found; --reference-path names folders to look in";
    TellRemark(streams, arguments.Common, arguments.File + ": note: " + text,
               {AbsolutePath(arguments.File), 0, 0, "note",
                CodeName(DiagnosticCode::MissingAssembly), text, exDone});
  };
  const metadata::AssemblyFile* file = nullptr;
  try {
    file = store.Open(NativeInput(arguments));
  } catch (const VendrelError& error) {
    throw ToolError(exFailed, arguments.File + ": cannot be read: " + error.Text());
  }
  for (const std::string& message : file->Image->Messages()) told(message);
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    JsonLines list(out, "assembly", arguments.Common, arguments.Json);
    const std::string place = FileSystemObject(AbsolutePath(arguments.File)).FullPath();
    const std::string rest =
        ListAssembly(store, *file, arguments.Listing, [&](const ListedEntry& entry) {
          if (!entry.Damage.empty()) told(entry.Name + ": " + entry.Damage);
          if (arguments.Json)
            WriteJson(list, place, entry);
          else
            out << entry.Name << '\n';
        });
    if (!rest.empty()) told(rest);
  });
  return told.Code();
}

// Names in the metadata, to tell what was not found from what is not there.
std::unordered_set<std::string> NamesInMetadata(const std::string& nativePath) {
  metadata::AssemblyStore store;
  std::unordered_set<std::string> names;
  metadata::ListingOptions all;
  all.Private = true;
  ListAssembly(store, *store.Open(nativePath), all,
               [&](const ListedEntry& entry) { names.insert(entry.Name); });
  return names;
}

void WriteCheck(std::ostream& out, const DocumentationCheck& check,
                const std::unordered_set<std::string>& inMetadata) {
  for (const std::string& name : check.Missing)
    out << "not found: " << name
        << (inMetadata.count(name) > 0 ? "" : " (the assembly has no such name)") << '\n';
  for (const std::string& name : check.Loose) out << "found by a part of it: " << name << '\n';
  for (const std::string& name : check.Different) out << "another name: " << name << '\n';
  const std::size_t tenths = check.Names == 0 ? 1000 : check.Found * 1000 / check.Names;
  out << check.Found << " of " << check.Names << " names found (" << tenths / 10 << '.'
      << tenths % 10 << " %)\n";
}

int CheckDocs(const AssemblyArguments& arguments, const Streams& streams) {
  const std::string nativePath = NativeInput(arguments);
  const std::vector<std::string> documentation = DocumentationBeside(nativePath);
  if (documentation.empty())
    throw ToolError(exFailed, arguments.File + ": no documentation file (.xml) beside it");
  const std::vector<std::string> names = DocumentedNames(documentation);
  CommonOptions options = arguments.Common;
  options.As = "assembly";
  options.Settings.push_back("LoadPrivateMembers=True");
  const auto project = LoadInput(arguments.File, options, streams);
  const DocumentationCheck check = CheckDocumentation(*project, names);
  WriteResult(arguments.Common, streams, arguments.File,
              [&](std::ostream& out) { WriteCheck(out, check, NamesInMetadata(nativePath)); });
  return check.Missing.empty() ? exDone : exNo;
}

int RunAssembly(const AssemblyArguments& arguments, const Streams& streams) {
  ApplyToProcess(arguments.Common);
  return arguments.CheckDocs ? CheckDocs(arguments, streams) : List(arguments, streams);
}

}  // namespace

void AddAssemblyCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand(
      "assembly", "Types and members of a .NET assembly, named as documentation files name them");
  const auto arguments = std::make_shared<AssemblyArguments>();
  command->add_option("file", arguments->File, "An assembly (.dll, .exe, .netmodule, .winmd)")
      ->required();
  command->add_flag("--json", arguments->Json, "An object a line, with types and values");
  command->add_flag("--private", arguments->Listing.Private,
                    "What only the assembly itself can use too");
  command->add_flag("--inherited", arguments->Listing.Inherited,
                    "Behind the members of each type those that it inherits");
  command->add_flag("--check-docs", arguments->CheckDocs,
                    "Look up each name of the documentation file beside it; 4 if one is not found");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunAssembly(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
