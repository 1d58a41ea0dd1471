#pragma once
// One module of a project.

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/Enums.h"
#include "model/Blocks.h"
#include "model/CodeElement.h"
#include "model/Declarations.h"
#include "model/Events.h"
#include "model/Example.h"
#include "model/Permission.h"
#include "model/ProjectOptions.h"
#include "model/PropertyGroup.h"
#include "model/TaggedComment.h"
#include "model/VBControl.h"
#include "services/FileSystemObject.h"

namespace vendrel {

struct ModuleIntake;

/// Type names of a module: name to 3 (enumeration) or 6 (structure). The first entry of a name
/// stays.
class ComponentTypeCache {
 public:
  void Add(std::string_view name, std::int32_t number);
  /// The number under that name, case ignored; 0 if none.
  std::int32_t Find(std::string_view name) const;
  std::size_t Count() const { return mEntries.size(); }

 private:
  std::unordered_map<std::string, std::int32_t> mEntries;
};

/// The letter ranges of one `Def...` statement: short type name ("Int") and ranges such as "A:C".
struct DefaultTypeEntry {
  std::string Name;
  std::vector<std::string> Ranges;
};

/// A module: class, standard module, form, user control, user document, designer or property page.
class Component : public ElementOf<Component> {
 public:
  Component();
  ~Component() override;

  vendrel::Blocks Blocks;
  vendrel::EventDeclarations EventDeclarations;
  vendrel::DeclareDeclarations Declarations;
  vendrel::UDTs UDTs;
  vendrel::Interfaces Interfaces;
  vendrel::Enumerations Enumerations;
  vendrel::PropertyGroups PropertyGroups;
  ComponentTypeCache TypeCache;
  FileSystemObject FileName;
  std::string Name;
  FileTypeEnum FileType = ftUnknown;
  /// "PUBLIC" once the module is exposed.
  SharedText Access = "PRIVATE";
  bool OptionExplicit = false;
  bool OptionPrivate = false;
  SharedText OptionCompare;
  std::int32_t OptionBase = 0;
  std::string DefaultMemberName;
  SharedText InheritsFrom = "System.Object";
  LoadStateEnum LoadState = lsNotLoaded;
  /// Physical lines taken from the file so far.
  std::int32_t LinesAlreadyRead = 0;
  std::int32_t HelpContextID = 0;
  /// The help context ID of its attribute line; 0 without one.
  std::int32_t HelpContextIDRead = 0;
  std::int32_t RelationshipLevels = 0;
  LateText TaggedDescription;
  LateText UnTaggedDescription;
  /// A comment on its way from one block to the next.
  std::string CommentBuffer;
  std::string VMCommentBuffer;
  std::string ClassHierarchy;
  /// The file as it was decoded; empty before the load and after `UnloadSourceCode`.
  std::shared_ptr<const SourceText> SourceForm;
  /// The line of the project file that named the module.
  std::string ProjectLineRaw;
  bool IsNew = false;
  bool IncludeFlag = false;
  bool IsExample = false;
  bool ExcludeFlag = false;
  bool RootFlag = false;
  bool NoLineNumbers = false;
  bool IsInterface = false;
  bool IsAbstract = false;
  bool IsSealed = false;
  bool IsStructure = false;
  bool IsEnumeration = false;
  /// Declared inside another type, whose name stands before the last dot of its own.
  bool IsNested = false;
  /// Root of the control tree of a form-like module; null for others.
  std::shared_ptr<vendrel::VBControl> VBControl;
  /// Every control but the root, children before their container.
  vendrel::VBControls AllVBControls;
  OnDemand<vendrel::Examples> Examples;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  /// Tagged comments waiting for the element they precede.
  OnDemand<vendrel::TaggedComments> TaggedCommentBuffer;
  OnDemand<vendrel::Permissions> Permissions;
  OnDemand<vendrel::Exceptions> Exceptions;
  /// The block that receives lines.
  WeakHandle<Block> CurrentBlock;
  /// The code element read last, for comments that follow it.
  WeakHandle<CodeElement> LastElement;
  WeakHandle<vendrel::Namespace> Namespace;
  /// Names of references that the documentation leaves out; the first spelling of each stays.
  std::vector<std::string> IgnoreReferences;
  /// Their folded names; only comments/ touches it.
  OnDemand<std::unordered_set<std::string>> IgnoreReferenceKeys;

  std::string Description() const override;
  std::string QualifiedName() const override;
  Component* OwnComponent() const override { return const_cast<Component*>(this); }

  const ProjectOptions& Options() const;
  ProjectOptions* Project() const { return mProject.Get(); }
  vendrel::VBProject* VBProject() const;
  void SetVBProject(ProjectOptions* project);
  /// The link to the project, to be copied by what the module holds.
  const WeakHandle<ProjectOptions>& ProjectLink() const { return mProject; }
  AccessTypeEnum AccessType() const { return AccessTypeFromstring(Access); }
  /// Namespace and name, or the name alone.
  std::string FullName() const;
  bool IsMDI() const { return mIsMDI; }
  void SetIsMDI(bool value) { mIsMDI = value; }
  /// Set by a comment, an attribute or a loader; no list sets it.
  bool IsCollection() const { return mIsCollection; }
  void SetIsCollection(bool value) { mIsCollection = value; }
  /// Constants of the declarations block; null without one.
  vendrel::Constants* Constants();
  const vendrel::Constants* Constants() const;
  /// `#Const` values of this module; made at first use.
  vendrel::CompilerConstants& CompilerConstants();
  const vendrel::CompilerConstants& CompilerConstants() const;
  /// Prefix of the event procedures of the module itself ("Form_"); empty for kinds without one.
  std::string_view EventProcedureHeader() const;
  /// Extension of a file of this kind, without the dot.
  std::string Extension() const;
  /// The line of the project file that names the module; without folder if `NoPath`.
  std::string ProjectLine(bool NoPath = false) const;

  // Reading (intake/).
  /// Loads the file; only header and declarations if `OnlyHeader`, a later call goes on behind
  /// them. The result is false in every case.
  bool Load(bool OnlyHeader = false);
  /// One physical line into the current block, with continuation, separators, conditions.
  void AddLineOfCode(std::string_view Source);
  /// Chooses the block and hands on the line, or each line of a text; also adds generated code.
  void AddCode(std::string_view Source, bool AddLine = true);
  void AddCode(const CodeLine& Source, bool AddLine = true);
  /// A new block at the end; procedures with a fixed name get their skeleton.
  Block* NewBlock(BlockTypeEnum BlockType = btUnrecognised);
  /// First block of that type; created for the types that allow it if asked. Null if none.
  Block* BlockOfType(BlockTypeEnum BlockType, bool CreateIfNotFound = false);
  Block* InitBlock(bool CreateIfNotFound = false);
  Block* TermBlock(bool CreateIfNotFound = false);
  /// Type that the `Def...` statements give a name; "Variant" where none does, empty for no name.
  std::string_view DefaultType(std::string_view Name) const;
  /// True while the line at hand lies in a false branch of `#If`.
  bool Ignore() const;
  void UnloadSourceCode();
  /// Gives back the memory that was set aside for more elements and longer descriptions.
  void Fit();
  /// `Def...` statements in order.
  std::vector<DefaultTypeEntry>& DefaultTypes() {
    mLetterTypes.clear();
    return mDefaultTypes;
  }
  const std::vector<DefaultTypeEntry>& DefaultTypes() const { return mDefaultTypes; }
  ModuleIntake& Intake() { return mIntake ? *mIntake : BeginIntake(); }
  ModuleIntake* IntakeIfAny() const { return mIntake.get(); }
  /// Frees what only a load needs.
  void DropIntake() { mIntake.reset(); }

  // Properties as one element (model/PropertyGroup.cpp, comments/PropertyComments.cpp).
  void AddPropertyBlockToPropertyGroup(Block* block);
  Block* ConsolidatedPropertyBlock(std::string_view Name, bool IncludePrivate = true);
  bool IsFirstPropertyBlock(const Block* block) const;
  std::string PropertyDescription(std::string_view Name) const;
  /// Texts of the attribute lines of all procedures of the property `Name`, for the writer.
  std::vector<std::string> AttributeLines(std::string_view Name) const;

  void MergeTaggedComment(std::string_view TagID, bool OnlyUseIfBlank, bool Overwrite);

  // Writing (writer/).
  /// Writes the module from its blocks to where its project goes. The result is false in every
  /// case; a module that is not fully loaded, or a read-only target, is told and left out.
  bool WriteOut();
  /// Copies the other files of the module's base name (its binary companion) into a folder.
  void CopyTo(std::string_view Path);
  /// Whether a path is the project file's or that of one of the modules, case ignored.
  bool IsOtherFileName(std::string_view Name) const;
  /// Whether one of the project's modules is written to that path, case ignored.
  bool IsComponentOutputFileName(std::string_view Name) const;

  // Lists of member names, sorted (output/). `AsHTML` has no effect. Without `Interface`, members
  // of an interface documented elsewhere get their `ExcludeFlag` set and are left out; "Default"
  // asks for members of no interface, any other name for those of that interface.
  std::vector<std::string> MethodList(bool AsHTML = false, bool IncludePrivate = false,
                                      bool IncludeFriend = false, std::string_view Interface = {});
  std::vector<std::string> FilteredMethodList(std::string_view Access, bool IsStatic,
                                              std::string_view Interface = {});
  std::vector<std::string> PropertyList(bool AsHTML = false, bool IncludePrivate = false,
                                        bool IncludeFriend = false,
                                        std::string_view Interface = {});
  std::vector<std::string> FilteredPropertyList(std::string_view Access, bool IsStatic,
                                                std::string_view Interface = {});
  std::vector<std::string> CollectionList(bool AsHTML = false, bool IncludePrivate = false);
  std::vector<std::string> EnumList(bool AsHTML = false, bool IncludePrivate = false);
  std::vector<std::string> UDTList(bool AsHTML = false, bool IncludePrivate = false);
  std::vector<std::string> EventList(bool AsHTML = false, bool IncludePrivate = false);
  /// Numbers the public elements of a public module that is no standard module and no form.
  void AssignHelpContextIDs(bool ForceReassign = false);
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;

  // Factories for loaders (dotnet/, typelib/).
  EventDeclaration* netCreateEvent(std::string_view Name, std::string_view DelegateName,
                                   bool Implemented, std::string_view InheritedFrom);
  vendrel::Interface* netCreateImplementedInterface(std::string_view Name);
  std::shared_ptr<Variable> netCreateField(std::string_view Name, std::string_view TypeName,
                                           std::string_view Access, bool IsStatic, bool Implemented,
                                           std::string_view InheritedFrom,
                                           bool AddToModuleVariables);
  Block* netCreateBlock(BlockTypeEnum BlockType, std::string_view Name, std::string_view Access,
                        std::string_view ReturnType, bool Implemented,
                        std::string_view InheritedFrom, bool IsStatic, bool IsVirtual,
                        bool IsAbstract, bool IsShadow);
  std::string DotNetName() const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{
        Prop{"Name", &Own::Name},
        Prop{"FileName", &Own::FileName, PropertyKind::Identity},
        Prop{"FileType", &Own::FileType},
        Prop{"Access", &Own::Access},
        Prop{"OptionExplicit", &Own::OptionExplicit},
        Prop{"OptionPrivate", &Own::OptionPrivate},
        Prop{"OptionCompare", &Own::OptionCompare},
        Prop{"OptionBase", &Own::OptionBase},
        Prop{"DefaultMemberName", &Own::DefaultMemberName},
        Prop{"InheritsFrom", &Own::InheritsFrom},
        Prop{"ClassHierarchy", &Own::ClassHierarchy},
        Prop{"LoadState", &Own::LoadState},
        Prop{"LinesAlreadyRead", &Own::LinesAlreadyRead, PropertyKind::Identity},
        Prop{"IsMDI", &Own::IsMDI, &Own::SetIsMDI},
        Prop{"IsCollection", &Own::IsCollection, &Own::SetIsCollection},
        Prop{"IsInterface", &Own::IsInterface},
        Prop{"IsAbstract", &Own::IsAbstract},
        Prop{"IsSealed", &Own::IsSealed},
        Prop{"IsStructure", &Own::IsStructure},
        Prop{"HelpContextID", &Own::HelpContextID},
        Prop{"RelationshipLevels", &Own::RelationshipLevels},
        Prop{"TaggedDescription", &Own::TaggedDescription},
        Prop{"UnTaggedDescription", &Own::UnTaggedDescription},
        Prop{"Description", &Own::Description, PropertyKind::Derived},
        Prop{"IsNew", &Own::IsNew},
        Prop{"IncludeFlag", &Own::IncludeFlag},
        Prop{"IsExample", &Own::IsExample},
        Prop{"ExcludeFlag", &Own::ExcludeFlag},
        Prop{"RootFlag", &Own::RootFlag},
        Prop{"NoLineNumbers", &Own::NoLineNumbers},
        Prop{"IgnoreReferences", &Own::IgnoreReferences},
        Prop{"VBControl", &Own::VBControl, PropertyKind::Children},
        Prop{"EventDeclarations", &Own::EventDeclarations, PropertyKind::Children},
        Prop{"Enumerations", &Own::Enumerations, PropertyKind::Children},
        Prop{"UDTs", &Own::UDTs, PropertyKind::Children},
        Prop{"Declarations", &Own::Declarations, PropertyKind::Children},
        Prop{"Interfaces", &Own::Interfaces, PropertyKind::Children},
        Prop{"PropertyGroups", &Own::PropertyGroups, PropertyKind::Children},
        Prop{"Blocks", &Own::Blocks, PropertyKind::Children},
        Prop{"Examples", &Own::Examples, PropertyKind::Children},
        Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
        Prop{"TaggedCommentBuffer", &Own::TaggedCommentBuffer, PropertyKind::Children},
        Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
        Prop{"IsEnumeration", &Own::IsEnumeration}.Rare(),
        Prop{"IsNested", &Own::IsNested}.Rare(),
        Prop{"Namespace", &Own::Namespace, PropertyKind::Link}.Rare(),
        Prop{"Permissions", &Own::Permissions, PropertyKind::Children}.Rare(),
        Prop{"Exceptions", &Own::Exceptions, PropertyKind::Children}.Rare(),
        Prop{"HelpContextIDRead", &Own::HelpContextIDRead}.Hide(),
        Prop{"CommentBuffer", &Own::CommentBuffer}.Hide(),
        Prop{"VMCommentBuffer", &Own::VMCommentBuffer}.Hide(),
        Prop{"ProjectLineRaw", &Own::ProjectLineRaw}.Hide(),
        Prop{"AccessType", &Own::AccessType, PropertyKind::Derived}.Hide(),
        Prop{"FullName", &Own::FullName, PropertyKind::Derived}.Hide(),
        Prop{"EventProcedureHeader", &Own::EventProcedureHeader, PropertyKind::Derived}.Hide(),
        Prop{"Extension", &Own::Extension, PropertyKind::Derived}.Hide(),
        Prop{"CurrentBlock", &Own::CurrentBlock, PropertyKind::Link}.Hide(),
        Prop{"LastElement", &Own::LastElement, PropertyKind::Link}.Hide(),
        Prop{"VBProject", &Own::VBProject, &Own::SetVBProject, PropertyKind::Link}.Hide(),
        Prop{"AllVBControls", &Own::AllVBControls, PropertyKind::Derived}.Hide()};
  }

 private:
  ModuleIntake& BeginIntake();

  WeakHandle<ProjectOptions> mProject;
  std::vector<DefaultTypeEntry> mDefaultTypes;
  /// Answer of `DefaultType` for each ASCII letter asked for so far.
  mutable std::vector<std::string_view> mLetterTypes;
  std::shared_ptr<ModuleIntake> mIntake;
  std::shared_ptr<vendrel::CompilerConstants> mCompilerConstants;
  bool mIsMDI = false;
  bool mIsCollection = false;
};

}  // namespace vendrel
