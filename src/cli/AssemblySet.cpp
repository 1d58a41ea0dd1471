#include "cli/AssemblySet.h"

#include <algorithm>
#include <pugixml.hpp>
#include <sstream>

#include "cli/ProjectSets.h"
#include "cli/ProjectSettings.h"
#include "cli/Report.h"
#include "cli/Session.h"
#include "comments/CommentFile.h"
#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/ErrorReport.h"
#include "services/AtomicFile.h"
#include "services/FileSource.h"
#include "services/FolderCache.h"

namespace vendrel::cli {
namespace {

class ToolPlugIn final : public PlugInHost {
 public:
  explicit ToolPlugIn(int mode) : mMode(mode) {}
  int helpdescriptionimport() override { return mMode; }

 private:
  int mMode;
};

class ToolHostSettings final : public HostSettings {
 public:
  explicit ToolHostSettings(std::vector<CommentFileLocation> locations)
      : mLocations(std::move(locations)) {}
  std::vector<CommentFileLocation> CommentFileLocations() override { return mLocations; }

 private:
  std::vector<CommentFileLocation> mLocations;
};

// "{name}" in an address stands for the name of the element; without it the name goes at the end.
class PrefixedDocs final : public ExternalDocs {
 public:
  explicit PrefixedDocs(std::vector<NamedValue> prefixes) : mPrefixes(std::move(prefixes)) {}
  std::string url(std::string_view name) override {
    const NamedValue* best = nullptr;
    for (const NamedValue& prefix : mPrefixes)
      if (name.starts_with(prefix.Name) && (!best || prefix.Name.size() > best->Name.size()))
        best = &prefix;
    if (!best) return {};
    std::string address = best->Value;
    constexpr std::string_view kMark = "{name}";
    const std::size_t at = address.find(kMark);
    if (at == std::string::npos) return address.append(name);
    return address.replace(at, kMark.size(), name);
  }

 private:
  std::vector<NamedValue> mPrefixes;
};

int ModeOf(const std::string& word) { return word == "keep" ? 1 : word == "replace" ? 3 : 2; }

std::vector<NamedValue> Cut(const std::string& option, const std::vector<std::string>& texts) {
  std::vector<NamedValue> values;
  for (const std::string& text : texts) values.push_back(CutNamedValue(option, text));
  return values;
}

void InstallHost(const SetOptions& options) {
  HostObjects& host = InUse<HostObjects>();
  host = {};
  host.PlugIn = std::make_shared<ToolPlugIn>(ModeOf(options.ImportMode));
  std::vector<CommentFileLocation> locations;
  for (const NamedValue& place : Cut("--doc-location", options.DocLocations))
    locations.push_back({place.Name, FileSystemObject(AbsolutePath(place.Value)).FullPath()});
  host.Settings = std::make_shared<ToolHostSettings>(std::move(locations));
}

void LoadSetFile(Assemblies& set, const std::string& path) {
  const FileSystemObject file(AbsolutePath(path));
  try {
    pugi::xml_document document;
    ParseXml(document, ReadWholeFile(file.NativePath()), path);
    if (std::string_view(document.document_element().name()) != "Assemblies")
      throw InputError(path, "no saved set: its root element is not Assemblies");
    set.Load(document.document_element());
  } catch (const VendrelError& error) {
    ReportError(error);
    throw InputError(path, "cannot be read: " + ReasonOf(error, path));
  }
}

void LoadOne(Assemblies& set, const std::string& path) {
  auto assembly = std::make_shared<Assembly>();
  assembly->FileName.SetFullPath(AbsolutePath(path));
  const DiagnosticScope scope(&set.Diagnostics, assembly->FileName.FullPath());
  if (!assembly->FileName.Exists())
    return Report(DiagnosticCode::AssemblyDropped, {assembly->FileName.FullPath()});
  if (EqualsNoCase(assembly->FileName.Extension(), "vbproj"))
    assembly->AssemblyType = atVBNETSource;
  try {
    set.Add(std::move(assembly));
  } catch (const VendrelError& error) {
    ReportError(error);
    Report(DiagnosticCode::UnreadProject, {"cannot be read: " + ReasonOf(error, path)});
  }
}

Assembly& Required(Assemblies& set, const std::string& option, const std::string& name) {
  if (Assembly* assembly = set.Item(std::string_view(name))) return *assembly;
  throw ToolError(exUsage, option + ": no assembly of the set is named '" + name + "'");
}

void SetRoots(Assemblies& set, const SetOptions& options) {
  if (!options.RootAssembly.empty())
    Required(set, "--root-assembly", options.RootAssembly).SetRootFlag(true);
  if (options.RootModule.empty()) return;
  auto* module = As<Component>(set.GetObjectFromQualifiedName(options.RootModule));
  if (!module) module = set.FindComponent(options.RootModule, nullptr);
  if (!module)
    throw ToolError(exUsage, "--root-module: no type of the set is named '" + options.RootModule +
                                 "'; write Namespace.Type or Assembly~Namespace.Type");
  module->RootFlag = true;
}

void TakeComments(Assemblies& set, const SetOptions& options) {
  for (const NamedValue& file : Cut("--comment-file", options.CommentFiles))
    Required(set, "--comment-file", file.Name).CommentFile =
        FileSystemObject(AbsolutePath(file.Value)).FullPath();
  const auto external = Cut("--external-docs", options.ExternalDocs);
  for (Assembly& assembly : set)
    if (!external.empty()) assembly.ExternalDocs = std::make_shared<PrefixedDocs>(external);
  for (Assembly& assembly : set)
    assembly.IntegrateCommentFile(*assembly.VBProject(), nullptr, options.Common.XmlDocs,
                                  options.Drill);
  for (Assembly& assembly : set) assembly.ResolveInheritDocs();
  if (!options.Inherit && !options.Drill) return;
  for (Assembly& assembly : set)
    assembly.PopulateInheritedComments(*assembly.VBProject(), nullptr, options.Drill);
}

}  // namespace

bool IsSetFile(const std::string& path) {
  return EqualsNoCase(FileSystemObject(AbsolutePath(path)).Extension(), "xml");
}

int ReportSet(const Assemblies& set, const CommonOptions& options, std::ostream& err) {
  int code = ReportList(set.Diagnostics, options, err);
  for (const Assembly& assembly : set)
    code = Worse(code, ReportDiagnostics(*assembly.VBProject(), options, err));
  return code;
}

std::shared_ptr<Assemblies> LoadSet(const SetOptions& options) {
  ApplyToProcess(options.Common);
  ForgetFolders();
  InstallHost(options);
  auto set = std::make_shared<Assemblies>();
  set->NewProject = [common = options.Common] {
    auto project = std::make_shared<VBProject>();
    ApplyToProject(common, *project);
    return project;
  };
  for (const std::string& path : options.Files)
    if (IsSetFile(path))
      LoadSetFile(*set, path);
    else
      LoadOne(*set, path);
  for (Assembly& assembly : *set) assembly.ResolveTypes();
  SetRoots(*set, options);
  TakeComments(*set, options);
  return set;
}

void SaveSet(const Assemblies& set, const std::string& path) {
  pugi::xml_document document;
  set.Save(document.append_child("Assemblies"));
  std::ostringstream text;
  document.save(text, "  ", pugi::format_default, pugi::encoding_utf8);
  try {
    AtomicFile file(FileSystemObject(AbsolutePath(path)).NativePath());
    file.Write(text.str());
    file.Commit();
  } catch (const VendrelError& error) {
    throw ToolError(exFailed, "--save: " + path + ": " + ReasonOf(error, path));
  }
}

}  // namespace vendrel::cli
