#pragma once
// The root of the tree: one project.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/EventList.h"
#include "diagnostics/ErrorReport.h"
#include "model/Component.h"
#include "model/Components.h"
#include "project/CompilerConstants.h"
#include "project/NetLoader.h"
#include "project/NetResolver.h"
#include "project/ProjectFile.h"
#include "project/ProjectFileLines.h"
#include "project/Reference.h"
#include "project/TypeResolver.h"
#include "services/FileSystemObject.h"

namespace vendrel {

/// Free values of a client, by name (case ignored).
using TagCollection = std::map<std::string, std::string>;

/// Type names of a project: name to class number and component name ("7:Module"; a module: "1").
class ProjectTypeCache {
 public:
  struct Entry {
    std::int32_t Number = 0;
    std::string ComponentName;
  };
  /// Adds an entry; one that is there stays.
  void Add(std::string_view name, std::int32_t number, std::string_view componentName = {});
  /// The entry of a name, case ignored; null if none.
  const Entry* Find(std::string_view name) const;
  std::size_t Count() const { return mEntries.size(); }

 private:
  std::unordered_map<std::string, Entry> mEntries;
};

/// A project: create one, set its options, call `Load`, then walk `Components`.
class VBProject : public ElementOf<VBProject, ProjectOptions> {
 public:
  VBProject();
  ~VBProject() override;

  LateText TaggedDescription;
  /// After `Load` one above the highest help context ID seen so far.
  std::int32_t CurrentHelpContextID = 0;
  /// Reason of the last load that failed.
  std::string LastErrorString;
  /// Components visible from outside; a tracking collection for clients.
  std::shared_ptr<vendrel::Components> mVisibleComponents;
  /// Identity of this object in the process.
  std::string Key;
  bool HelpContextIDsAssigned = false;
  std::string ProjectName;
  std::string mDescription;
  /// Value of the `Type` line as read.
  std::string TypeName;
  ProjectTypeEnum ProjectType = ptUnknown;
  std::string Startup;
  /// Raw lines that are written back unchanged.
  std::vector<std::string> ProjectLines;
  std::vector<std::string> RelatedDocuments;
  FileSystemObject CompatibleFileName;
  CompatibleEnum CompatibleMode = CompatibleNone;
  /// The kept line behind which the writer puts the settings.
  std::string LastNormalProjectLineText;
  std::string HelpFile;
  std::int32_t HelpContextID = 0;
  std::string LastError;
  std::string Path32;
  std::string EXEName32;
  bool AutoIncrement = false;
  std::string IconForm;
  std::string TemplateName = "Default";
  std::vector<std::shared_ptr<TaggedComment>> OtherTaggedComments;
  bool IncludeFlag = true;
  bool RootFlag = false;
  bool ExamplesOnlyFlag = false;
  bool PlugInFlag = false;
  TagCollection Tags;
  ProjectTypeCache TypeCache;
  FileSystemObject CommentFile;
  std::string PersistSource;
  ProjectSourceTypeEnum ProjectSourceType = ptsNone;
  ProjectSourceAccessEnum ProjectSourceAccess = psaNone;
  /// Set by a client, from an event, to stop the population. Nothing clears it.
  bool CancelLoad = false;
  TagCollection NetTypeLocations;
  std::string DotNetReferencePath;
  std::string VBNETProjectGUID;
  std::string VBNETAssemblyName;
  bool DontPreLoadComponentDeclarations = false;
  std::string RootNamespace;
  /// Folder of the log of `Make`; empty: a fresh temporary one.
  std::string LogFolder;
  /// The configuration of a VB.NET project whose constants count; empty: "Debug", else the first.
  std::string Configuration;
  /// Folders searched for type libraries that others refer to (paths of this machine).
  std::vector<std::string> TypeLibPath;
  /// Folders searched for assemblies that others refer to (paths of this machine).
  std::vector<std::string> ReferencePath;
  /// A load of an assembly gives its private types and members too.
  bool LoadPrivateMembers = false;
  /// `--define`: constants added to, or put over, those of project and module (complete reading).
  std::vector<std::pair<std::string, std::string>> Defines;
  FileSystemObject FileName;
  FileSystemObject OutputFileName;
  /// The project file as it was decoded; empty before the load.
  std::shared_ptr<const SourceText> SourceForm;
  /// The lines of the project file and what came of each; empty before the load.
  std::shared_ptr<const ProjectFileLines> FileLines;
  vendrel::References References;
  vendrel::Components Components;
  /// The source files of a VB.NET project, in the order of its project file.
  vendrel::ProjectFiles ProjectFiles;
  vendrel::CompilerConstants CompilerConstants;
  OnDemand<vendrel::Libraries> Libraries;
  OnDemand<vendrel::Examples> Examples;
  OnDemand<vendrel::TaggedComments> TaggedComments;

  // Events.
  EventList<std::int32_t> ComponentLoaded;
  EventList<> LoadCancelled;
  EventList<> TransformCancelled;
  EventList<std::string_view> TransformProgress;
  EventList<Component&> WriteProgress;
  EventList<Block&, TaggedComment&, const CodeLine&> NewTaggedComment;

  /// Asked when a line fails, with the failure; absent: the error object of the process is.
  std::function<StepOver(const VendrelError&, std::string_view file, std::int32_t line)>
      OnLineFailure;
  /// What the host says about a line that failed; `Raise` without a host that says otherwise.
  StepOver AskAboutFailure(const VendrelError& failure, std::string_view file,
                           std::int32_t line) const {
    return OnLineFailure ? OnLineFailure(failure, file, line) : ReportError(failure);
  }

  std::string ElementName() const override { return ProjectName; }
  std::string Description() const override { return mDescription; }
  void SetDescription(std::string_view text) override { mDescription = text; }
  std::string QualifiedName() const override { return ProjectName; }

  const std::string& Name() const { return ProjectName; }
  /// "EXE", "ActiveX EXE", "ActiveX DLL", "ActiveX Control", or empty.
  std::string_view ProjectTypeDescription() const;
  /// Library id of the compatible binary if that exists, else the stored one.
  std::string ClsID() const;
  vendrel::TypeResolver& TypeResolver() const { return *mTypeResolver; }
  void SetTypeResolver(std::shared_ptr<vendrel::TypeResolver> resolver);
  /// The resolver of .NET type names; null while none is registered.
  vendrel::NetResolver* NetResolver();
  /// The process-wide flag: true shows no message box for any project.
  bool Silent() const;
  void SetSilent(bool value);
  bool DoNotPopulateComponents() const { return Components.DoNotPopulate; }
  void SetDoNotPopulateComponents(bool value) { Components.DoNotPopulate = value; }
  /// Always false; assigning is ignored.
  bool AutoGatherComments() const { return false; }
  void SetAutoGatherComments(bool) {}
  bool UpgradeLegacyTaggedcomments() const;
  void SetUpgradeLegacyTaggedcomments(bool value);
  std::string TaggedCommentUpgradeFlag() const;
  void SetTaggedCommentUpgradeFlag(std::string_view value);
  /// The assembly that the project is the content of; null for a project that is none's.
  vendrel::Assembly* Assembly() const;
  /// Ties the project to an assembly, which owns the project or is kept by who made it.
  void SetAssembly(vendrel::Assembly* assembly);
  /// The same with an assembly that the project owns: that of a project loaded alone.
  void OwnAssembly(std::shared_ptr<vendrel::Assembly> assembly);
  /// The group that the project stands in; null if none.
  vendrel::VBProjectGroup* VBProjectGroup() const;
  void SetVBProjectGroup(vendrel::VBProjectGroup* group);
  const std::string& MajorVersion() const { return mMajorVersion; }
  const std::string& MinorVersion() const { return mMinorVersion; }
  const std::string& Increment() const { return mIncrement; }
  /// Major version; from 1 part on with the minor version, from 2 on with the increment.
  std::string Version(std::string_view Delimeter = ".", std::int32_t Parts = 2) const;
  std::int32_t HighestHelpContextID() const { return mHighestHelpContextID; }
  /// Offers an ID read from a file; the highest stays.
  void LoadedHelpContextID(std::int32_t id);

  /// Reads a project file: settings, references and the list of modules, which stay unread until
  /// `Components` is walked. False if the file does not exist (`LastErrorString` says so).
  bool Load(std::string_view ProjectFileName);
  /// Loads one module as a project of its own, named after it.
  bool LoadModule(std::string_view FileName);
  void UnloadSourceCode();
  void FireLoadCancelled() { LoadCancelled.Raise(); }
  void FireTransformCancelled() { TransformCancelled.Raise(); }
  void FireNewTaggedComment(Block& block, TaggedComment& comment, const CodeLine& line) {
    NewTaggedComment.Raise(block, comment, line);
  }

  /// Ties each reference to the project of `projects` with its library id or, if `SearchByName`,
  /// with the leaf name of its file. References without such a project stay as they are.
  void CementReferences(VBProjects& projects, bool SearchByName = false);

  // writer/
  /// Writes the project file, and with it the modules unless `OnlyProjectFile`: in place with
  /// backups, or to the folder of `OutputFileName`, flattened. Without write access nothing.
  void WriteOut(bool OnlyProjectFile = false);
  /// Whether `OutputFileName` is the file that was read, case ignored.
  bool SameLocation() const;
  /// Command that compiles the project: the one assigned, else the host if that is the compiler,
  /// else the registered one. Remembered.
  std::string Compiler();
  void SetCompiler(std::string_view command) { mCompiler = command; }
  /// Compiles the written project and waits. True when the log says so; else `LastError` tells.
  bool Make();
  /// Opens the written project in its development environment; waits unless `Asynchronous`.
  void OpenInVB(bool Asynchronous = false);
  /// Runs the steps of a plan in the order of the kinds of the registered transformation manager.
  /// The result is false in every case.
  bool TransformWithPlan(TransformationPlan& Plan);
  /// A new module with its header lines; without `FileName` in a file of its name.
  std::shared_ptr<Component> NewComponent(FileTypeEnum ComponentType, std::string_view Name,
                                          std::string_view FileName = {});
  /// The first `Sub Main`; made in a new module "modStartup" where there is none. It becomes the
  /// start of the project.
  Block* StartupBlock();
  std::string DefaultComponentFileName() const;
  /// The item of source control that holds the project; null without one.
  std::shared_ptr<VSSItem> SourceSafeItem();

  // typelib/
  /// Makes the readers of compiled files known to the workspace in use: references and files ask
  /// type libraries for names and ids by them. Every project does that first; only the first call
  /// acts. Defined in the highest room that has such a reader, since a static library would leave
  /// out a reader that nobody names.
  static void ConnectReaders();
  /// Fills the project from a type library or compiled file. False if it holds no library.
  bool LoadFromTypeLib(std::string_view Path);
  /// Keeps a help string as a tagged comment of an element, if `LoadTypeLibHelpStrings`.
  void AddHelpDescription(CodeElement& element, std::string_view HelpText);
  /// Name to show for a type: the class of a generated interface, else without one leading "_".
  std::string TypeLibAdjustType(const typelib::TypeLibInfo& library,
                                const typelib::TypeInfo& type) const;
  /// Visual Basic word of an automation type number.
  std::string psTranslateType(std::int32_t lType) const;
  /// Whether an automation type number says array.
  bool IsArrayType(std::int32_t lType) const { return (lType & 8192) != 0; }
  /// Visual Basic expression of a text that may hold control characters.
  std::string ParseForNonPrintable(std::string_view vThis) const;
  std::shared_ptr<Component> TypeLibComponent(const typelib::TypeLibInfo& library,
                                              const typelib::TypeInfo& type);
  std::shared_ptr<Parameter> TypeLibParameter(const typelib::TypeLibInfo& library,
                                              const typelib::ParameterInfo& parameter);
  BlockTypeEnum TypeLibBlockType(std::int32_t InvokeKind, std::int32_t VarType) const;

  // dotnet/
  /// Reads a VB.NET project file of the form `VisualStudioProject` and scans its source files.
  /// False if it does not exist (`LastErrorString` says so); a root of another name gives a project
  /// without files. Raises 5 for what is no XML, or lacks an attribute that it must have.
  bool LoadDotNet(std::string_view ProjectFileName);
  /// Writes the source files, unless `OnlyProjectFile`, and the project file: in place with
  /// backups, or to the folder of `OutputFileName`. False if it ended early.
  bool WriteOutDotNet(bool OnlyProjectFile = false);
  /// Fills the project from a compiled assembly, by the registered loader, or from a ".vbproj".
  /// Shows no box from here on. Raises what the loader raises: 53, 75, 321.
  void LoadFromAssembly(std::string_view AssemblyFileName);
  /// Fills the project by the loader of that ProgID. Raises 429 if there is none.
  void LoadFromCustom(std::string_view ProgID, std::string_view Data);
  /// The element of a name such as "M:Ns.Type.Method(System.Int32)"; null if there is none.
  CodeElement* GetObjectFromDotNetName(std::string_view Name);
  const CodeElement* GetObjectFromDotNetName(std::string_view Name) const {
    return const_cast<VBProject*>(this)->GetObjectFromDotNetName(Name);
  }
  /// Cuts a member name without its prefix at the last dot in front of its parameters.
  static void SplitDotNetName(std::string_view Name, std::string& ComponentName,
                              std::string& MemberName);
  /// A module of that name, added to `Components`. Where the name is taken the new one is told as
  /// a duplicate and lives as long as the result is held.
  std::shared_ptr<Component> netCreateComponent(LoadStateEnum LoadState, std::string_view Name,
                                                std::string_view Access, FileTypeEnum FileType,
                                                std::string_view ClassHierarchy, bool IsAbstract,
                                                bool IsSealed, std::string_view InheritsFrom);
  /// Moves a block from its carrier, a module that goes, to the module "__Delegates".
  Block* netCreateDelegate(Block* Block, std::string_view Name,
                           std::string_view DelegateQualifiedName);
  /// The module that a type name means here, else one that the resolver builds; null if unknown.
  Component* netGetComponentForTypeName(std::string_view Name);
  /// Remembers the assembly of a type; the first one stays.
  void AddTypeLocation(std::string_view AssemblyLocation, std::string_view NetTypeName);

  // comments/
  void AddTaggedComment(vendrel::TaggedComments& col, const std::shared_ptr<TaggedComment>& tc,
                        bool IsBuffer) const;
  std::string& AppendDescription(std::string& Description, std::string& NewText,
                                 int& WrapType) const;
  void MergeTaggedComment(std::string_view TagID, bool OnlyUseIfBlank, bool Overwrite);
  void ApplyCommentFile();
  void ResolveExamples();

  // names/
  CodeElement* GetObjectByName(std::string_view Name);
  CodeElement* GetObjectByName_MainObject(std::string_view Name);
  /// Declared for clients; gives nothing.
  CodeElement* GetComponentByName(std::string_view) { return nullptr; }
  /// The module, enumeration or structure that a type name means in `component` (may be null): the
  /// module first, then the project, then the projects it refers to, of which the last one wins.
  /// `TypeClass` must come in as 0 and tells where it was found; an intrinsic type gives 9 and
  /// nothing. Keyed look-ups in the type caches. Raises 9 if a cached element has gone.
  CodeElement* ResolveType(Component* component, std::string_view Name, TypeClassEnum& TypeClass);
  /// The structure or enumeration that a name means in a module, if it stands there or is public.
  UDT* FindUDT(std::string_view Name, Component* component);
  Enumeration* FindEnum(std::string_view Name, Component* MustBeVisibleTo);
  static bool IsIntrinsicType(std::string_view TypeName);
  /// Every module visible to this project, each under its name and under "Project.Name". Built at
  /// the first call and kept, even if projects change.
  vendrel::Components& AllVisibleComponents();
  /// Public variables of the standard modules, by name.
  std::shared_ptr<Variables> GlobalVariables();
  /// Procedures of the standard modules, private ones too, by name.
  std::shared_ptr<Blocks> GlobalBlocks();

  // output/
  /// XML dump of the project; without its modules if `JustProject`.
  std::shared_ptr<XmlDocument> Manifest(bool JustProject, bool IncludeTaggedComments);
  void WriteManifestToFile(std::string_view FileName, bool JustProject, bool IncludeTaggedComments);
  /// Visual Basic source as coloured HTML.
  std::string CodeToHTML(std::string_view Code) const;
  /// Numbers the project and its public elements from `BeginAt` on; elements that have an ID keep
  /// it unless `ForceReassign` (and not `RetainContextIDs`).
  void AssignHelpContextIDs(std::int32_t BeginAt, bool ForceReassign = false);
  /// Removes empty descendants of `e`; true when `e` itself is empty.
  static bool StripElement(XmlElement& e);

  // project/ProjectReader.cpp
  struct ReadState;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{
        Prop{"ProjectName", &Own::ProjectName},
        Prop{"FileName", &Own::FileName, PropertyKind::Identity},
        Prop{"OutputFileName", &Own::OutputFileName, PropertyKind::Identity},
        Prop{"Key", &Own::Key, PropertyKind::Identity},
        Prop{"TaggedDescription", &Own::TaggedDescription},
        Prop{"Description", &Own::mDescription},
        Prop{"CurrentHelpContextID", &Own::CurrentHelpContextID},
        Prop{"HelpContextIDsAssigned", &Own::HelpContextIDsAssigned},
        Prop{"LastErrorString", &Own::LastErrorString},
        Prop{"TypeName", &Own::TypeName},
        Prop{"ProjectType", &Own::ProjectType},
        Prop{"ProjectTypeDescription", &Own::ProjectTypeDescription, PropertyKind::Derived},
        Prop{"Startup", &Own::Startup},
        Prop{"ProjectLines", &Own::ProjectLines},
        Prop{"RelatedDocuments", &Own::RelatedDocuments},
        Prop{"CompatibleFileName", &Own::CompatibleFileName, PropertyKind::Identity},
        Prop{"CompatibleMode", &Own::CompatibleMode},
        Prop{"LastNormalProjectLineText", &Own::LastNormalProjectLineText},
        Prop{"HelpFile", &Own::HelpFile},
        Prop{"HelpContextID", &Own::HelpContextID},
        Prop{"Path32", &Own::Path32},
        Prop{"EXEName32", &Own::EXEName32},
        Prop{"AutoIncrement", &Own::AutoIncrement},
        Prop{"MajorVersion", &Own::MajorVersion},
        Prop{"MinorVersion", &Own::MinorVersion},
        Prop{"Increment", &Own::Increment},
        Prop{"IconForm", &Own::IconForm},
        Prop{"ClsID", &Own::ClsID, PropertyKind::Derived},
        Prop{"TemplateName", &Own::TemplateName}.Option(),
        Prop{"IncludeFlag", &Own::IncludeFlag}.Option(),
        Prop{"ProjectSourceType", &Own::ProjectSourceType},
        Prop{"ProjectSourceAccess", &Own::ProjectSourceAccess},
        Prop{"LanguageVersion", &Own::LanguageVersion, &Own::SetLanguageVersion},
        Prop{"RootNamespace", &Own::RootNamespace}.Option(),
        Prop{"CompilerConstants", &Own::CompilerConstants, PropertyKind::Children},
        Prop{"References", &Own::References, PropertyKind::Children},
        Prop{"Libraries", &Own::Libraries, PropertyKind::Children},
        Prop{"Examples", &Own::Examples, PropertyKind::Children},
        Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
        Prop{"Components", &Own::Components, PropertyKind::Children},
        Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
        Prop{"ProjectFiles", &Own::ProjectFiles, PropertyKind::Children}.Rare(),
        Prop{"AddLineNumbers", &Own::AddLineNumbers}.Hide().Option(),
        Prop{"BuildTypeCache", &Own::BuildTypeCache}.Hide().Option(),
        Prop{"DetectNewBlocksOnAddCode", &Own::DetectNewBlocksOnAddCode}.Hide().Option(),
        Prop{"DontPreLoadComponentDeclarations", &Own::DontPreLoadComponentDeclarations}
            .Hide()
            .Option(),
        Prop{"Configuration", &Own::Configuration}.Hide().Option(),
        Prop{"DotNetReferencePath", &Own::DotNetReferencePath}.Hide().Option(),
        Prop{"ExamplesOnlyFlag", &Own::ExamplesOnlyFlag}.Hide().Option(),
        Prop{"LineNumberPerModule", &Own::LineNumberPerModule}.Hide().Option(),
        Prop{"LoadBlocksOnly", &Own::LoadBlocksOnly}.Hide().Option(),
        Prop{"LoadPrivateMembers", &Own::LoadPrivateMembers}.Hide().Option(),
        Prop{"LoadTypeLibHelpStrings", &Own::LoadTypeLibHelpStrings}.Hide().Option(),
        Prop{"LogFolder", &Own::LogFolder}.Hide().Option(),
        Prop{"OutputConditionalCompilationBlocks", &Own::OutputConditionalCompilationBlocks}
            .Hide()
            .Option(),
        Prop{"PlugInFlag", &Own::PlugInFlag}.Hide().Option(),
        Prop{"PreserveOriginalTaggedComments", &Own::PreserveOriginalTaggedComments}
            .Hide()
            .Option(),
        Prop{"PropertyCommentsFrom", &Own::PropertyCommentsFrom}.Hide().Option(),
        Prop{"RetainContextIDs", &Own::RetainContextIDs}.Hide().Option(),
        Prop{"RootFlag", &Own::RootFlag}.Hide().Option(),
        Prop{"TaggedCommentsBeforeElement", &Own::TaggedCommentsBeforeElement}.Hide().Option(),
        Prop{"UnTaggedBlocks", &Own::UnTaggedBlocks}.Hide().Option(),
        Prop{"UnTaggedEnumerations", &Own::UnTaggedEnumerations}.Hide().Option(),
        Prop{"UnTaggedEvents", &Own::UnTaggedEvents}.Hide().Option(),
        Prop{"UnTaggedModules", &Own::UnTaggedModules}.Hide().Option(),
        Prop{"UnTaggedUDTs", &Own::UnTaggedUDTs}.Hide().Option(),
        Prop{"UnTaggedVariables", &Own::UnTaggedVariables}.Hide().Option(),
        Prop{"WriteHelpDescriptions", &Own::WriteHelpDescriptions}.Hide().Option(),
        Prop{"DoNotPopulateComponents", &Own::DoNotPopulateComponents,
             &Own::SetDoNotPopulateComponents}
            .Hide()
            .Option(),
        Prop{"TaggedCommentUpgradeFlag", &Own::TaggedCommentUpgradeFlag,
             &Own::SetTaggedCommentUpgradeFlag}
            .Hide()
            .Option(),
        Prop{"UpgradeLegacyTaggedcomments", &Own::UpgradeLegacyTaggedcomments,
             &Own::SetUpgradeLegacyTaggedcomments}
            .Hide()
            .Option(),
        Prop{"LastError", &Own::LastError}.Hide(),
        Prop{"PersistSource", &Own::PersistSource}.Hide(),
        Prop{"CancelLoad", &Own::CancelLoad}.Hide(),
        Prop{"VBNETProjectGUID", &Own::VBNETProjectGUID}.Hide(),
        Prop{"VBNETAssemblyName", &Own::VBNETAssemblyName}.Hide(),
        Prop{"WasReadFromTypeLibrary", &Own::WasReadFromTypeLibrary}.Hide(),
        Prop{"TypeLibPath", &Own::TypeLibPath}.Hide(),
        Prop{"ReferencePath", &Own::ReferencePath}.Hide(),
        Prop{"AutoGatherComments", &Own::AutoGatherComments, &Own::SetAutoGatherComments}.Hide(),
        Prop{"Silent", &Own::Silent, &Own::SetSilent}.Hide(),
        Prop{"HighestHelpContextID", &Own::HighestHelpContextID, PropertyKind::Derived}.Hide(),
        Prop{"CommentFile", &Own::CommentFile, PropertyKind::Identity}.Hide(),
        Prop{"Assembly", &Own::Assembly, &Own::SetAssembly, PropertyKind::Link}.Hide(),
        Prop{"VBProjectGroup", &Own::VBProjectGroup, &Own::SetVBProjectGroup, PropertyKind::Link}
            .Hide()};
  }

  // State of the reader of project files; only that room touches it.
  std::string mMajorVersion, mMinorVersion, mIncrement, mCLSID;
  std::int32_t mHighestHelpContextID = 0;
  // State of the reader of VB.NET projects: the parsed project file, and the loader of assemblies.
  std::shared_ptr<XmlDocument> mProjectDoc;
  std::shared_ptr<NetLoader> mNetLoader;

 private:
  static CodeElement* GetCachedMember(const ProjectTypeCache::Entry& Source, std::string_view Name,
                                      bool IsLocal, VBProject& vbp, TypeClassEnum& TypeClass);
  CodeElement* ResolveInOtherProjects(std::string_view Name, TypeClassEnum& TypeClass);

  std::string mCompiler;
  std::shared_ptr<vendrel::TypeResolver> mTypeResolver;
  std::shared_ptr<vendrel::NetResolver> mNetResolver;
  WeakHandle<vendrel::VBProjectGroup> mGroup;
  WeakHandle<vendrel::Assembly> mAssembly;
  std::shared_ptr<vendrel::Assembly> mOwnAssembly;
};

/// A project as a group makes its members: not populated, comments and directives kept, library
/// help strings loaded, blocks only, included, legacy tags upgraded.
std::shared_ptr<VBProject> NewVBProject();

}  // namespace vendrel
