// The loader of project files with a root `Project`, by the door that the object model leaves open
// for loaders of others.

#include <algorithm>
#include <unordered_set>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/ObjectRegistry.h"
#include "core/SharedText.h"
#include "core/WeakHandle.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "dotnet/Assemblies.h"
#include "dotnet/MSBuildExpressions.h"
#include "dotnet/MSBuildImports.h"
#include "dotnet/NetXml.h"
#include "dotnet/SourceScan.h"
#include "dotnet/Sources.h"
#include "services/FolderCache.h"

namespace vendrel {
namespace {

constexpr std::string_view kSdkImports[] = {
    "Microsoft.VisualBasic", "System",      "System.Collections", "System.Collections.Generic",
    "System.Diagnostics",    "System.Linq", "System.Xml.Linq",    "System.Threading.Tasks"};
constexpr std::string_view kSdkAssemblies[] = {"System", "System.Core", "System.Xml.Linq",
                                               "Microsoft.VisualBasic"};

class MSBuildReader {
 public:
  MSBuildReader(VBProject& project, std::string_view path) : mProject(project) {
    mProject.FileName.SetFullPath(path);
  }
  void Read();

 private:
  void SetKnownProperties();
  void TakeItems();
  void TellNotUnderstood();
  void TakeItem(const XmlElement& item);
  void TakeCompile(const XmlElement& item);
  void TakeReference(const XmlElement& item, const std::string& include);
  void Include(std::string_view pattern, const XmlElement& item);
  void Settle();
  void TakeConstants();
  void Scan();
  std::string Child(const XmlElement& e, std::string_view name) const;
  std::vector<std::string> SourcesBelow(const std::string& folder) const;
  bool IsTrue(std::string_view name) const {
    return EqualsNoCaseAscii(mProperties.Get(name), "true");
  }

  struct Source {
    std::string Path;  // seen from the project, or whole
    std::string SubType;
  };

  VBProject& mProject;
  MSBuildProperties mProperties;
  MSBuildImports mFiles{mProject.FileName, mProperties};
  bool mIsSdk = false;
  std::vector<Source> mSources;
  std::shared_ptr<std::vector<std::string>> mImports = std::make_shared<std::vector<std::string>>();
};

std::string MSBuildReader::Child(const XmlElement& e, std::string_view name) const {
  for (const XmlElement child : e.Elements())
    if (IsNamed(child, name)) return mProperties.Expand(Trim(child.Text()));
  if (const auto attribute = AttributeOf(e, name)) return mProperties.Expand(*attribute);
  return {};
}

void MSBuildReader::SetKnownProperties() {
  const FileSystemObject& file = mProject.FileName;
  const std::string folder = file.FolderPath();
  mProperties.Set("Configuration",
                  mProject.Configuration.empty() ? "Debug" : mProject.Configuration);
  mProperties.Set("Platform", "AnyCPU");
  mProperties.Set("MSBuildProjectName", file.BaseName());
  mProperties.Set("MSBuildProjectFile", file.LeafName());
  mProperties.Set("MSBuildProjectFullPath", file.FullPath());
  mProperties.Set("MSBuildProjectDirectory", folder.substr(0, folder.size() - 1));
  mProperties.Set("RootNamespace", file.BaseName());
  mProperties.Set("AssemblyName", file.BaseName());
}

void MSBuildReader::Read() try {
  ForgetFolders();
  mProject.SetLanguageVersion(lvVisualBasicDotNet);
  mProject.TypeName = "oledll";
  if (!mProject.FileName.Exists())
    throw VendrelError(errFileNotFound, mProject.FileName.FullPath());
  const DiagnosticScope scope(&mProject.Diagnostics, mProject.FileName.FullPath());
  mProject.OutputFileName.SetBaseName(mProject.FileName.BaseName());
  mProject.OutputFileName.SetExtension(mProject.FileName.Extension());
  mProject.FileName.OpenFile(omRead);
  mProject.SourceForm = mProject.FileName.Source();
  mProject.FileName.CloseFile();
  XmlDocument document;
  document.LoadXml(mProject.SourceForm->Text);
  const XmlElement root = document.Root();
  if (root.Name() != "Project")
    throw VendrelError(errInvalidArgument,
                       "the root of the project file is <" + root.Name() + ">, not <Project>");
  SetKnownProperties();
  mIsSdk = AttributeOf(root, "Sdk").has_value();
  for (const XmlElement child : root.Elements())
    if (IsNamed(child, "Sdk") || (IsNamed(child, "Import") && AttributeOf(child, "Sdk")))
      mIsSdk = true;
  // Properties first: items see all of them, wherever they stand.
  mFiles.Take(root, mIsSdk);
  mFiles.Enter(mProject.FileName);
  Settle();
  TakeItems();
  TellNotUnderstood();
  Scan();
}
VENDREL_CONTEXT(trace::Me(mProject))

void MSBuildReader::TakeItems() {
  for (const MSBuildImports::Group& group : mFiles.Groups()) {
    mFiles.Enter(group.File);
    for (const XmlElement item : group.Element.Elements())
      if (mFiles.Holds(item)) TakeItem(item);
  }
}

void MSBuildReader::TellNotUnderstood() {
  for (const std::string& text : mProperties.NotUnderstood())
    Report(DiagnosticCode::ProjectLineSkipped, {text});
}

// What the properties say of the project, once all are known.
void MSBuildReader::Settle() {
  mProject.RootNamespace = mProperties.Get("RootNamespace");
  mProject.ProjectName = mProject.VBNETAssemblyName = mProperties.Get("AssemblyName");
  mProject.VBNETProjectGUID = mProject.mCLSID = mProperties.Get("ProjectGuid");
  mProject.ProjectType =
      ContainsNoCaseAscii(mProperties.Get("OutputType"), "exe") ? ptOleExe : ptOleDLL;
  mProject.Startup = mProperties.Get("StartupObject");
  if (NetResolver* resolver = mProject.NetResolver(); resolver && mIsSdk) {
    for (const std::string_view assembly : kSdkAssemblies) resolver->addassembly(assembly);
    for (const std::string_view space : kSdkImports) {
      resolver->addglobalnamespace(space);
      mImports->emplace_back(space);
    }
  }
  if (mIsSdk && !EqualsNoCaseAscii(mProperties.Get("EnableDefaultCompileItems"), "false") &&
      !EqualsNoCaseAscii(mProperties.Get("EnableDefaultItems"), "false"))
    for (std::string& path : SourcesBelow(mProject.FileName.FolderPath())) {
      const std::string front = LowerAscii(path.substr(0, 4));
      if (front != "bin\\" && front != "obj\\") mSources.push_back({std::move(path), {}});
    }
  if (mProject.Reading.NetConditions) TakeConstants();
}

void MSBuildReader::TakeConstants() {
  const auto add = [&](const std::string& clause) {
    mProject.CompilerConstants.AddFromDeclaration(clause, &mProject);
  };
  std::string_view rest = mProperties.Get("DefineConstants");
  std::string constants(rest);
  std::replace(constants.begin(), constants.end(), ';', ',');
  for (rest = constants; !rest.empty();) {
    const std::string clause(Trim(TakeField(rest, ',')));
    if (!clause.empty()) add(clause.find('=') == std::string::npos ? clause + " = True" : clause);
  }
  // What the build hands to the compiler beside.
  add("CONFIG = \"" + mProperties.Get("Configuration") + "\"");
  add("PLATFORM = \"" + mProperties.Get("Platform") + "\"");
  const std::string& kind = mProperties.Get("MyType");
  add("_MYTYPE = \"" + (kind.empty() ? "Windows" : kind) + "\"");
  const bool isDebug = mIsSdk && EqualsNoCaseAscii(mProperties.Get("Configuration"), "debug");
  if (IsTrue("DefineDebug") || isDebug) add("DEBUG = True");
  if (IsTrue("DefineTrace") || mIsSdk) add("TRACE = True");
}

void MSBuildReader::TakeItem(const XmlElement& item) {
  if (IsNamed(item, "Compile")) return TakeCompile(item);
  const std::string include = mProperties.Expand(AttributeOf(item, "Include").value_or(""));
  if (include.empty()) return;
  NetResolver* resolver = mProject.NetResolver();
  if (IsNamed(item, "Import")) {
    if (resolver) resolver->addglobalnamespace(include);
    mImports->push_back(include);
  } else if (IsNamed(item, "Reference") || IsNamed(item, "PackageReference") ||
             IsNamed(item, "ProjectReference")) {
    TakeReference(item, include);
  }
}

void MSBuildReader::TakeReference(const XmlElement& item, const std::string& include) try {
  auto reference = std::make_shared<Reference>();
  reference->SetParentProject(&mProject);
  reference->SourceString = include;
  NetResolver* resolver = mProject.NetResolver();
  FileSystemObject file;
  file.SetBaseFile(&mProject.FileName);
  if (IsNamed(item, "ProjectReference")) {
    file.SetFullPath(include);
    reference->FileName.SetFullPath(file.FullPath());
    reference->ProjectGUID = Child(item, "Project");
    if (!file.Exists()) Report(DiagnosticCode::MissingReference, {file.FullPath()});
  } else if (IsNamed(item, "PackageReference")) {
    reference->Version = Child(item, "Version");
  } else {
    const std::string hint = Child(item, "HintPath");
    if (!hint.empty()) file.SetFullPath(hint);
    const bool exists = !hint.empty() && file.Exists() && !file.IsFolder();
    if (!hint.empty()) reference->FileName.SetFullPath(file.FullPath());
    if (resolver) resolver->addassembly(exists ? file.FullPath() : include);
  }
  mProject.References.Add(reference);
} catch (const VendrelError& error) {
  Report(DiagnosticCode::AssemblyPart,
         {"the reference to " + include + " is left out: " + error.Text()});
}

// The source files in and below a folder, seen from the project.
std::vector<std::string> MSBuildReader::SourcesBelow(const std::string& folder) const {
  std::vector<FileSystemObject> found;
  try {
    FileSystemObject(folder).FindFiles("*.vb", 0, found);
  } catch (const VendrelError&) {
    return {};
  }
  std::vector<std::string> paths;
  for (FileSystemObject& file : found) {
    file.SetBaseFile(const_cast<FileSystemObject*>(&mProject.FileName));
    paths.push_back(file.RelativePath());
  }
  return paths;
}

void MSBuildReader::Include(std::string_view pattern, const XmlElement& item) {
  const std::string subType = Child(item, "SubType");
  const std::string path = ReplaceAll(pattern, "/", "\\");
  const std::size_t wild = path.find_first_of("*?");
  if (wild == std::string::npos) {
    mSources.push_back({path, subType});
    return;
  }
  FileSystemObject folder;
  folder.SetBaseFile(&mProject.FileName);
  folder.SetFullPath(path.substr(0, path.rfind('\\', wild) + 1) + "x");
  for (std::string& source : SourcesBelow(folder.FolderPath()))
    if (MatchesGlob(source, path)) mSources.push_back({std::move(source), subType});
}

void MSBuildReader::TakeCompile(const XmlElement& item) {
  const auto excluded = AttributeOf(item, "Exclude");
  const std::string exclude = mProperties.Expand(excluded.value_or(""));
  const std::string include = mProperties.Expand(AttributeOf(item, "Include").value_or(""));
  const std::string remove = mProperties.Expand(AttributeOf(item, "Remove").value_or(""));
  const std::size_t first = mSources.size();
  for (std::string_view rest = include; !rest.empty();)
    if (const std::string_view one = Trim(TakeField(rest, ';')); !one.empty()) Include(one, item);
  const auto drop = [&](std::string_view patterns, std::size_t from) {
    for (std::string_view rest = patterns; !rest.empty();) {
      const std::string pattern = ReplaceAll(Trim(TakeField(rest, ';')), "/", "\\");
      const auto goes = [&](const Source& source) { return MatchesGlob(source.Path, pattern); };
      mSources.erase(std::remove_if(mSources.begin() + static_cast<std::ptrdiff_t>(from),
                                    mSources.end(), goes),
                     mSources.end());
    }
  };
  drop(exclude, first);
  drop(remove, 0);
}

void MSBuildReader::Scan() {
  const TextPool names;
  const CellPool links;
  AssemblyOf(mProject);
  mProject.Components.SetVBProject(&mProject);
  std::unordered_set<std::string> taken;
  for (const Source& source : mSources) {
    auto file = std::make_shared<ProjectFile>();
    file->SetVBProject(&mProject);
    FileSystemObject place;
    place.SetBaseFile(&mProject.FileName);
    place.SetFullPath(source.Path);
    const std::string path = place.FullPath();
    if (!EndsWithNoCaseAscii(path, ".vb") || !taken.insert(FoldKey(path)).second) continue;
    file->FileName.SetFullPath(path);
    file->SubType = source.SubType;
    file->BuildAction = "Compile";
    file->Scanned().ProjectImports = mImports;
    mProject.ProjectFiles.Add(file);
    file->Populate();
  }
  PlaceSourceDocumentation(mProject);
  GiveBackRoom(mProject);
  mProject.Components.DoNotPopulate = true;
  mProject.ProjectSourceType = ptsVisualBasicProject;
  mProject.ProjectSourceAccess = psaReadWrite;
}

class MSBuildLoader final : public NetLoader {
 public:
  void LoadVBProject(VBProject& project, std::string_view data) override {
    const Workspace::Use use(project.Workspace());
    MSBuildReader(project, data).Read();
  }
};

}  // namespace

void ConnectMSBuildLoader() {
  if (!ObjectRegistry::Has(kMSBuildLoaderProgId))
    ObjectRegistry::Register<NetLoader>(kMSBuildLoaderProgId,
                                        [] { return std::make_shared<MSBuildLoader>(); });
}

}  // namespace vendrel
