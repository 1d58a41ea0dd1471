// Reads project files of VB.NET, and has each source file scan itself.

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/ObjectRegistry.h"
#include "core/SharedText.h"
#include "core/WeakHandle.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "dotnet/NetXml.h"
#include "dotnet/SourceScan.h"
#include "project/BeginLoad.h"
#include "project/NetLoader.h"
#include "text/Like.h"
#include "text/Words.h"

namespace vendrel {
namespace {

constexpr std::string_view kRootName = "VisualStudioProject";

class NetProjectReader {
 public:
  explicit NetProjectReader(VBProject& project) : mProject(project), mRules(project.Reading) {}
  void Read();

 private:
  std::shared_ptr<XmlDocument> Parse(FileSystemObject& file);
  void MakeResolver();
  void ReadCompanion();
  void TakeBuild(const XmlElement& build);
  void TakeReference(const XmlElement& e);
  void TakeSettings(const XmlElement& settings);
  void TakeOutput();
  void TakeConstants(const XmlElement& settings);
  void TakeFiles(const XmlElement& files);
  void TakeFile(const XmlElement& e);
  bool IsSource(std::string_view path) const;

  VBProject& mProject;
  const ReadingRules& mRules;
  NetResolver* mResolver = nullptr;
  std::shared_ptr<std::vector<std::string>> mImports = std::make_shared<std::vector<std::string>>();
  XmlElement mLanguage;  // the first child of the root, whatever its name
};

// Line ends are taken out before the text is parsed.
std::shared_ptr<XmlDocument> NetProjectReader::Parse(FileSystemObject& file) {
  file.OpenFile(omRead);
  const std::shared_ptr<const SourceText> source = file.Source();
  if (&file == &mProject.FileName) mProject.SourceForm = source;
  file.CloseFile();
  auto document = std::make_shared<XmlDocument>();
  document->LoadXml(ReplaceAll(source->Text, "\r\n", ""));
  return document;
}

void NetProjectReader::MakeResolver() {
  mResolver = mProject.NetResolver();
  if (!mResolver)
    throw VendrelError(errCannotCreate,
                       "no resolver is registered as " + std::string(kNetResolverProgId));
  mProject.mNetLoader = ObjectRegistry::Create<NetLoader>(kNetLoaderProgId);
}

void NetProjectReader::ReadCompanion() {
  FileSystemObject companion(mProject.FileName.FullPath());
  companion.SetExtension("vbproj.user");
  if (!companion.Exists()) return;
  std::shared_ptr<XmlDocument> document;
  try {
    document = Parse(companion);
  } catch (const VendrelError& error) {
    return Report(DiagnosticCode::UnreadableFile, {companion.FullPath(), error.Text()});
  }
  const XmlElement root = document->Root();
  if (root.Name() != kRootName) return;
  for (const XmlElement build : root.Elements().Item(1).Elements()) {
    if (!IsNamed(build, "build")) continue;
    for (const XmlElement settings : build.Elements())
      if (IsNamed(settings, "settings"))
        if (const auto path = AttributeOf(settings, "ReferencePath"))
          mProject.DotNetReferencePath = *path;
  }
  if (!mRules.NetProjectItems || mProject.DotNetReferencePath.empty()) return;
  std::vector<std::string> folders = mProject.ReferencePath;
  for (std::string_view rest = mProject.DotNetReferencePath; !rest.empty();) {
    const std::string_view folder = Trim(TakeField(rest, ';'));
    if (!folder.empty()) folders.push_back(FileSystemObject(folder).NativePath());
  }
  mResolver->searchfolders(folders);
}

void NetProjectReader::Read() try {
  const TextPool names;
  const CellPool links;
  const DiagnosticScope scope(&mProject.Diagnostics, mProject.FileName.FullPath());
  MakeResolver();
  ReadCompanion();
  mProject.mProjectDoc = Parse(mProject.FileName);
  mProject.Components.SetVBProject(&mProject);
  const XmlElement root = mProject.mProjectDoc->Root();
  if (root.Name() == kRootName) {
    mLanguage = root.Elements().Item(1);
    if (const auto guid = mLanguage ? AttributeOf(mLanguage, "ProjectGUID") : std::nullopt)
      mProject.VBNETProjectGUID = mProject.mCLSID = *guid;
    for (const XmlElement child :
         mLanguage ? mLanguage.Elements() : XmlElements(pugi::xml_node())) {
      if (IsNamed(child, "build")) TakeBuild(child);
      if (IsNamed(child, "files")) TakeFiles(child);
    }
  }
  PlaceSourceDocumentation(mProject);
  GiveBackRoom(mProject);
  mProject.Components.DoNotPopulate = true;
}
VENDREL_CONTEXT(trace::Me(mProject))

// In the order of the document: what stands behind the files comes too late for them.
void NetProjectReader::TakeBuild(const XmlElement& build) {
  for (const XmlElement part : build.Elements()) {
    if (IsNamed(part, "references"))
      for (const XmlElement reference : part.Elements()) TakeReference(reference);
    if (IsNamed(part, "imports"))
      for (const XmlElement import : part.Elements())
        if (const auto space = AttributeOf(import, "Namespace")) {
          mResolver->addglobalnamespace(*space);
          mImports->push_back(*space);
        }
    if (IsNamed(part, "settings")) TakeSettings(part);
  }
}

void NetProjectReader::TakeReference(const XmlElement& e) try {
  FileSystemObject file;
  file.SetBaseFile(&mProject.FileName);
  const auto hint = AttributeOf(e, "HintPath");
  if (hint) file.SetFullPath(*hint);
  const bool exists = hint && !hint->empty() && file.Exists() && !file.IsFolder();
  const auto project = AttributeOf(e, "Project");
  if (exists) mResolver->addassembly(file.FullPath());
  if (exists && !mRules.NetProjectItems) return;
  if (project) {
    auto reference = std::make_shared<Reference>();
    reference->SetParentProject(&mProject);
    reference->ProjectGUID = *project;
    if (mRules.NetProjectItems) reference->SourceString = AttributeOf(e, "Name").value_or("");
    if (!mProject.References.HasKey(*project)) mProject.References.Add(reference, *project);
    if (!mRules.NetProjectItems) return;
  }
  const auto name = AttributeOf(e, "AssemblyName");
  if (exists || !name) return;
  try {
    mResolver->addassembly(*name);
  } catch (const VendrelError&) {  // what cannot be read is told by the resolver
  }
} catch (const VendrelError& error) {
  Report(DiagnosticCode::AssemblyPart, {"a reference is left out: " + error.Text()});
}

void NetProjectReader::TakeSettings(const XmlElement& settings) try {
  mProject.RootNamespace = RequiredAttribute(settings, "RootNamespace");
  mProject.ProjectName = RequiredAttribute(settings, "AssemblyName");
  AssemblyOf(mProject);
  if (mProject.Assembly()->Name().empty()) mProject.Assembly()->SetName(mProject.ProjectName);
  TakeOutput();
  if (mRules.NetConditions) TakeConstants(settings);
}
VENDREL_CONTEXT(trace::Me(mProject))

// Of all settings of the project: the last one wins.
void NetProjectReader::TakeOutput() {
  std::string type;
  for (const XmlElement build : mLanguage.Elements()) {
    if (!IsNamed(build, "build")) continue;
    for (const XmlElement settings : build.Elements()) {
      if (!IsNamed(settings, "settings")) continue;
      if (const auto name = AttributeOf(settings, "AssemblyName"))
        mProject.VBNETAssemblyName = *name;
      if (const auto output = AttributeOf(settings, "OutputType")) type = *output;
      mProject.ProjectType = ContainsNoCaseAscii(type, "EXE") ? ptOleExe : ptOleDLL;
    }
  }
}

// The constants of the configuration that was asked for; of "Debug", else of the first.
void NetProjectReader::TakeConstants(const XmlElement& settings) {
  const std::string& wanted = mProject.Configuration;
  XmlElement chosen;
  for (const XmlElement config : settings.Elements()) {
    if (!IsNamed(config, "config")) continue;
    const std::string name = AttributeOf(config, "Name").value_or("");
    const bool fits = EqualsNoCaseAscii(name, wanted.empty() ? "Debug" : std::string_view(wanted));
    if (!chosen || fits) chosen = config;
    if (fits) break;
  }
  if (!chosen) return;
  const auto isTrue = [&](std::string_view name) {
    const auto value = AttributeOf(chosen, name);
    return value && EqualsNoCaseAscii(*value, "true");
  };
  const std::string constants = AttributeOf(chosen, "DefineConstants").value_or("");
  const auto add = [&](const std::string& clause) {
    mProject.CompilerConstants.AddFromDeclaration(clause, &mProject);
  };
  SplitCursor clauses(constants, ",", true);
  for (std::string_view clause; clauses.Next(clause);)
    if (!Trim(clause).empty())
      add(clause.find('=') == kNotFound ? std::string(Trim(clause)) + " = True"
                                        : std::string(Trim(clause)));
  if (isTrue("DefineDebug")) add("DEBUG = True");
  if (isTrue("DefineTrace")) add("TRACE = True");
}

void NetProjectReader::TakeFiles(const XmlElement& files) {
  for (const XmlElement include : files.Elements()) {
    if (!IsNamed(include, "include")) continue;
    for (const XmlElement file : include.Elements()) TakeFile(file);
  }
}

bool NetProjectReader::IsSource(std::string_view path) const {
  return mRules.NetProjectItems ? EndsWithNoCaseAscii(path, ".vb") : Like(path, "*.vb");
}

void NetProjectReader::TakeFile(const XmlElement& e) try {
  if (!IsSource(RequiredAttribute(e, "relpath"))) return;
  auto file = std::make_shared<ProjectFile>();
  file->SetVBProject(&mProject);
  file->LoadFromXML(e);
  file->Scanned().ProjectImports = mImports;
  mProject.ProjectFiles.Add(file);
  file->Populate();
}
VENDREL_CONTEXT(trace::Me(mProject))

}  // namespace

void ProjectFile::LoadFromXML(const XmlElement& e) try {
  vendrel::VBProject* project = VBProject();
  FileName.SetBaseFile(project ? &project->FileName : nullptr);
  FileName.SetFullPath(RequiredAttribute(e, "RelPath"));
  const std::string whole = FileName.FullPath();
  FileName.SetBaseFile(nullptr);
  FileName.SetFullPath(whole);
  if (const auto type = AttributeOf(e, "SubType")) SubType = *type;
  BuildAction = RequiredAttribute(e, "BuildAction");
}
VENDREL_CONTEXT()

bool VBProject::LoadDotNet(std::string_view ProjectFileName) try {
  const vendrel::Workspace::Use use(Workspace());
  BeginLoad();
  AddLineNumbers = false;
  SetLanguageVersion(lvVisualBasicDotNet);
  TypeName = "oledll";
  FileName.SetFullPath(ProjectFileName);
  if (!FileName.Exists()) {
    LastErrorString = "Passed filename was invalid / did not exist";
    return false;
  }
  OutputFileName.SetBaseName(FileName.BaseName());
  OutputFileName.SetExtension(FileName.Extension());
  NetProjectReader(*this).Read();
  ProjectSourceType = ptsVisualBasicProject;
  ProjectSourceAccess = psaReadWrite;
  return true;
}
VENDREL_CONTEXT(ProjectFileName, *this)

}  // namespace vendrel
