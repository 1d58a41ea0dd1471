// A project from a type library: each entry becomes a module, but enumerations and records, which
// are gathered in two invented ones.

#include <memory>

#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "model/Declarations.h"
#include "model/ModuleKinds.h"
#include "project/VBProject.h"
#include "services/FolderCache.h"
#include "services/TextUtility.h"
#include "typelib/LibraryTypes.h"
#include "typelib/MissingLibraries.h"
#include "typelib/TypeLibService.h"

namespace vendrel {
namespace {

using namespace typelib;

// Numbers of the type cache.
constexpr std::int32_t kCachedModule = 1, kCachedEnum = 4, kCachedStructure = 7;
constexpr int kHiddenEntry = 16;

std::shared_ptr<const TypeLibInfo> OpenLibrary(VBProject& project, const std::string& path) {
  try {
    const auto service = TLIApplication::New();
    service->SearchPath = project.TypeLibPath;
    auto library = service->TypeLibInfoFromFile(path);
    if (!library) project.LastErrorString = path + ": holds no type library";
    return library;
  } catch (const VendrelError& error) {
    project.LastErrorString = error.Text();
  } catch (const std::exception& error) {  // a service of the host's own may raise anything
    project.LastErrorString = error.what();
  }
  return nullptr;
}

void TakeVersion(VBProject& project, const TypeLibInfo& library) {
  const FileSystemObject& file = project.CompatibleFileName;
  if (!file.Exists()) return;
  if (file.Extension() == "tlb") {
    project.mMajorVersion = std::to_string(library.MajorVersion);
    project.mMinorVersion = std::to_string(library.MinorVersion);
    project.mIncrement = "0 (Typelib version)";
    return;
  }
  const std::string version = FileVersion(file, ".");
  project.mMajorVersion = TextUtility::Field(version, ".", 1);
  project.mMinorVersion = TextUtility::Field(version, ".", 2);
  project.mIncrement = TextUtility::Field(version, ".", 4);
}

ProjectTypeEnum TypeByExtension(const FileSystemObject& file) {
  const std::string extension = file.Extension();
  if (EqualsNoCase(extension, "exe")) return ptOleExe;
  if (EqualsNoCase(extension, "ocx")) return ptControl;
  return ptOleDLL;
}

class LibraryLoader {
 public:
  LibraryLoader(VBProject& project, const TypeLibInfo& library)
      : mProject(project), mLibrary(library) {}

  void LoadEntries() {
    for (const TypeInfo& type : mLibrary.TypeInfos) {
      if (type.AttributeMask == kHiddenEntry || type.Name.starts_with('_')) continue;
      const std::string_view kind = type.TypeKindString();
      if (kind == "enum") {
        AddEnumeration(type);
      } else if (kind == "record") {
        AddStructure(type);
      } else {
        AddComponent(type);
      }
    }
  }

 private:
  void AddComponent(const TypeInfo& type);
  Component& Invented(Component*& module, std::string_view name);
  void AddEnumeration(const TypeInfo& type);
  void AddStructure(const TypeInfo& type);
  std::shared_ptr<Variable> NewField(const MemberInfo& member, UDT& structure) const;
  void Cache(std::string_view name, std::int32_t number, std::string_view module = {}) {
    if (mProject.BuildTypeCache) mProject.TypeCache.Add(name, number, module);
  }

  VBProject& mProject;
  const TypeLibInfo& mLibrary;
  Component* mEnumerations = nullptr;
  Component* mStructures = nullptr;
  // A module whose name is taken is dropped by the project; what goes on filling it holds it here.
  std::vector<std::shared_ptr<Component>> mInvented;
};

void LibraryLoader::AddComponent(const TypeInfo& type) try {
  mProject.Components.Add(mProject.TypeLibComponent(mLibrary, type), type.Name);
  Cache(type.Name, kCachedModule);
}
VENDREL_CONTEXT(trace::Parameter("type", type.Name), trace::Me(mProject))

// The module "Enumerations" or "Structures", made when the first of its kind comes.
Component& LibraryLoader::Invented(Component*& module, std::string_view name) {
  if (module) return *module;
  auto made = std::make_shared<Component>();
  made->SetVBProject(&mProject);
  made->FileType = ftClass;
  made->FileName.SetFullPath(mProject.FileName.FullPath());
  made->FileName.SetBaseName(name);
  made->FileName.SetExtension(KindOfModule(ftClass).Extension);
  made->LoadState = lsFullyLoadedNoCode;
  made->Access = "PUBLIC";
  made->Name = name;
  module = made.get();
  mInvented.push_back(made);
  mProject.Components.Add(std::move(made), name);
  return *module;
}

void LibraryLoader::AddEnumeration(const TypeInfo& type) try {
  Component& module = Invented(mEnumerations, "Enumerations");
  auto enumeration = std::make_shared<Enumeration>();
  enumeration->Component = &module;
  enumeration->Name = type.Name;
  enumeration->HelpContextID = static_cast<std::int32_t>(type.HelpContext);
  enumeration->Access = "PUBLIC";
  mProject.AddHelpDescription(*enumeration, type.HelpString);
  for (const MemberInfo* info : type.Members()) {
    auto member = std::make_shared<EnumMember>();
    member->Enumeration = enumeration.get();
    member->Name = info->Name;
    if (info->Value) member->Value = info->Value->Text();
    mProject.AddHelpDescription(*member, info->HelpString);
    enumeration->Members().Add(std::move(member), info->Name);
  }
  Cache(type.Name, kCachedEnum, module.Name);
  module.Enumerations.Add(std::move(enumeration), type.Name);
}
VENDREL_CONTEXT(trace::Parameter("type", type.Name), trace::Me(mProject))

void LibraryLoader::AddStructure(const TypeInfo& type) try {
  Component& module = Invented(mStructures, "Structures");
  auto structure = std::make_shared<UDT>();
  structure->Component = &module;
  structure->Name = type.Name;
  structure->Access = "PUBLIC";
  structure->HelpContextID = static_cast<std::int32_t>(type.HelpContext);
  mProject.AddHelpDescription(*structure, type.HelpString);
  for (const MemberInfo* info : type.Members())
    structure->Members.Add(NewField(*info, *structure), info->Name);
  module.UDTs.Add(std::move(structure), type.Name);
  Cache(type.Name, kCachedStructure, module.Name);
}
VENDREL_CONTEXT(trace::Parameter("type", type.Name), trace::Me(mProject))

std::shared_ptr<Variable> LibraryLoader::NewField(const MemberInfo& member, UDT& structure) const {
  auto field = std::make_shared<Variable>();
  field->Parent = &structure;
  field->Name = member.Name;
  field->SetVBProject(&mProject);
  const ShownType type = ShowType(mProject, mLibrary, member.ReturnType, TypeUse::Field);
  if (!type.Readable) {
    ReportMissing(
        type.MissingLibrary,
        "member " + Quoted(member.Name) + " of structure " + Quoted(structure.Name) +
            " has no type: " + type.Failure,
        "Error reading type information for member '" + field->Name + "' of structure (UDT) '" +
            structure.Name +
            "'.  One or more dependant files containing type information may be missing.  "
            "Processing will continue, this members type information will be missing.",
        "Missing type information");
  }
  field->TypeName = type.Name;
  field->IsArray = type.IsArray;
  field->ArraySubscript = type.Subscript;
  mProject.AddHelpDescription(*field, member.HelpString);
  return field;
}

}  // namespace

bool VBProject::LoadFromTypeLib(std::string_view Path) try {
  const Workspace::Use use(Workspace());
  ForgetFolders();
  ProjectSourceType = ptsTypeLibrary;
  ProjectSourceAccess = psaNone;
  SetLanguageVersion(lvVisualBasic5or6);
  FileName.SetFullPath(Path);
  CompatibleFileName.SetFullPath(Path);
  const DiagnosticScope scope(&Diagnostics, FileName.FullPath());
  const auto library = OpenLibrary(*this, FileName.FullPath());
  if (!library) return false;
  ProjectName = library->Name;
  mDescription = library->HelpString;
  mCLSID = library->GUID();
  TakeVersion(*this, *library);
  ProjectType = TypeByExtension(FileName);
  {
    const MissingLibraries missing;
    LibraryLoader(*this, *library).LoadEntries();
    missing.Report();
  }
  if (!library->CodePageEvidence.empty())
    Report(DiagnosticCode::CodePageGuessed,
           {library->CodePage, "in place of that of the library's language: " +
                                   library->CodePageEvidence + "; --codepage sets another"});
  for (const std::string& message : library->Messages)
    Report(DiagnosticCode::TypeLibraryMember, {message});
  WasReadFromTypeLibrary = true;
  return true;
}
VENDREL_CONTEXT(Path, *this)

void VBProject::AddHelpDescription(CodeElement& element, std::string_view HelpText) try {
  const Workspace::Use use(Workspace());
  OnDemand<vendrel::TaggedComments>* comments = element.TaggedCommentsField();
  if (!LoadTypeLibHelpStrings || !comments) return;
  auto comment = std::make_shared<TaggedComment>();
  comment->TagIdentifier = "##OBJECTBROWSER";
  comment->CodeElement = &element;
  comment->Text = HelpText;
  AddTaggedComment(**comments, comment, false);
}
VENDREL_CONTEXT(HelpText, *this)

}  // namespace vendrel
