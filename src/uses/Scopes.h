#pragma once
// The names of modules and projects, gathered once, and the types that names of types mean.

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "project/VBProject.h"
#include "uses/LocalTable.h"

namespace vendrel {

/// A module with all that it declares.
struct ModuleScope {
  const Component* Module = nullptr;
  /// Variables, constants, procedures, properties, Declares, controls, members of enumerations.
  EntryMap Members;
  /// Enumerations and types.
  EntryMap Types;
  EntryMap Events;
  /// What the module is by itself: VB~Form for a form; null where it is nothing.
  const BuiltinType* Base = nullptr;
  /// The class above it, and the class around it, of VB.NET; null for none.
  const Component* Above = nullptr;
  const Component* Around = nullptr;
  /// What names alone mean inside of it, as far as they have been asked for; null for no member.
  SymbolMap<Entry*> SeenInside;
  /// Of VB.NET, with its namespace; None before it was asked for.
  Symbol FullName = word::None;
  /// The module has a base that is not known.
  bool HasForeignBase = false;
  /// Nothing of it has been read: its file is not there.
  bool IsMissing = false;
  const Entry* DefaultMember = nullptr;
  Entry Own;  ///< the module as a name
};

/// What a name means in a project, from the strongest to the weakest.
struct ProjectName {
  Entry* Module = nullptr;
  Entry* Member = nullptr;
  Entry* EnumMember = nullptr;
  Entry* Type = nullptr;
};

/// A project with what it makes known to its modules.
struct ProjectScope {
  VBProject* Project = nullptr;
  /// Read from a type library.
  bool IsLibrary = false;
  Entry Own;
  std::unordered_map<Symbol, ProjectName> Names;
  /// The projects and libraries behind its references, in their order.
  std::vector<ProjectScope*> References;
  /// Something that it refers to is not at hand.
  bool MissesReferences = false;
  /// VB.NET: what stands behind the last dot in the names of types, its own and those of projects
  /// that it refers to.
  std::unordered_set<Symbol> TypeWords;
  /// Of them those of nested types, which mean something inside of their class alone.
  std::unordered_set<Symbol> NestedWords;
};

/// VB.NET: a class in a file, whose imports hold there, and the types that names were found to
/// mean.
struct NetScope {
  ProjectFile* File = nullptr;
  ProjectScope* Project = nullptr;
  /// Of all classes of that namespace in files with these imports; nested types are not in it.
  SymbolMap<const Component*>* Shared = nullptr;
  /// Null for a name that means no type.
  SymbolMap<const Component*> Types;
  /// The same with the types of the classes above.
  SymbolMap<const Component*> TypesSeen;
};

/// Scopes of all modules and projects that names may lead to; each is made at its first use.
class Scopes {
 public:
  explicit Scopes(Symbols& symbols) : mSymbols(symbols), mBuiltins(Builtins::Table()) {}

  ProjectScope& Of(VBProject& project);
  ModuleScope& Of(const Component& module);

  /// The type of an entry, found at the first call.
  TypeRef TypeOf(const Entry& entry);
  /// What a property or function gives, a variable holds: "ADODB.Recordset", "String * 5".
  TypeRef TypeNamed(const Component* home, std::string_view name, bool isArray);
  /// The same of a name that was cut at its dots: `qualifier` is None without one.
  TypeRef TypeNamed(const Component* home, Symbol qualifier, Symbol name);
  /// The entry of a class, enumeration or type of that name as seen from a module; null if none.
  Entry* TypeEntry(const Component* home, Symbol qualifier, Symbol name);
  TypeRef TypeOfMember(const BuiltinMember& member);
  static TypeRef TypeOfModule(const Component& module);

  /// VB.NET: the class, structure, module or enumeration that a name means in a module; one of an
  /// assembly is loaded if need be. The imports are those of `file`; null: of the module's own.
  /// Null for none.
  const Component* NetType(const Component& home, std::string_view name,
                           ProjectFile* file = nullptr);
  /// The same of a name as source spells it, whose number is `folded`.
  const Component* NetType(const Component& home, NetScope& scope, Symbol folded,
                           std::string_view name);
  NetScope& NetScopeOf(const Component& home, ProjectFile* file = nullptr);
  TypeRef NetTypeNamed(const Component& home, std::string_view name, bool isArray);
  /// The member of a class, or of those above it; null for none. `isOpen` becomes true where a
  /// class above is not at hand.
  Entry* NetMember(const Component& module, Symbol name, bool& isOpen);
  /// What a name alone means inside of a class: a member of it, or of a class above or around.
  Entry* NetMemberInside(const Component& module, Symbol name);
  static bool IsNet(const Component& module);
  /// The first type that has a part in a file of VB.NET, or what stands outside of types there;
  /// null for none.
  const Component* FirstTypeOf(const ProjectFile& file);
  /// The files of VB.NET in which a module has a part.
  const std::vector<ProjectFile*>& FilesOf(const Component& module) { return mFilesOf[&module]; }

  Entry* Field(const UDT& structure, Symbol name);
  /// The first control of an array, or the one with that index.
  const VBControl* ControlAt(const Entry& group, std::int32_t index) const;

  const BuiltinMember* Global(Symbol name);
  const BuiltinMember* Member(const BuiltinType& type, Symbol name) const {
    return mBuiltins.FindMember(type, mSymbols.TextOf(name));
  }
  const BuiltinMember* SiteMember(Symbol name) const {
    return mBuiltins.FindSiteMember(mSymbols.TextOf(name));
  }
  const BuiltinType* Type(Symbol name) { return mBuiltins.FindType(mSymbols.TextOf(name)); }
  const Builtins& Table() const { return mBuiltins; }
  Symbols& Names() { return mSymbols; }

  /// Members of that name of all classes, forms and controls: what late binding may reach.
  const std::vector<const CodeElement*>& LateCandidates(ProjectScope& project, Symbol name);
  /// A library that is not at hand, by its name in source; the pointer holds.
  const std::string* LibraryName(std::string_view name);
  ProjectScope* ScopeOf(const Component& module);

  /// Of the procedure that is being read.
  LocalTable Locals;

 private:
  Entry* Add(EntryMap& map, Symbol name, Entry entry);
  Entry* Make(Entry entry) { return &mEntries.emplace_back(entry); }
  void AddProcedures(ModuleScope& scope);
  void AddDeclarations(ModuleScope& scope);
  void AddTypes(ModuleScope& scope);
  void AddControls(ModuleScope& scope);
  void FindBase(ModuleScope& scope);
  void AddModule(ProjectScope& scope, const Component& module);
  void AddReferences(ProjectScope& scope);
  const Component* TypeOpenedIn(const ProjectFile& file);
  void AddTypeWords(ProjectScope& scope, const VBProject& project);
  TypeRef TypeOfEntry(const Entry& entry);
  TypeRef TypeOfControl(const Entry& entry, const VBControl& control);
  Entry* TypeInProject(ProjectScope& scope, Symbol name, bool asLibrary);

  ProjectFile* FileOf(const Component& module);
  enum class NetWord : std::uint8_t { NoType, Type, Nested };
  NetWord SortOfNetWord(const NetScope& scope, std::string_view name);
  const Component* AskForNetType(const Component& home, ProjectFile* file, std::string_view name);

  Symbols& mSymbols;
  const Builtins& mBuiltins;
  std::deque<Entry> mEntries;
  std::unordered_map<const VBProject*, std::unique_ptr<ProjectScope>> mProjects;
  std::unordered_map<const Component*, std::unique_ptr<ModuleScope>> mModules;
  std::unordered_map<const UDT*, std::unique_ptr<EntryMap>> mFields;
  std::unordered_map<const Entry*, std::unordered_map<std::int32_t, const VBControl*>> mGroups;
  std::unordered_map<std::string, std::string> mLibraries;      // by folded name: as first met
  std::vector<std::pair<bool, const BuiltinMember*>> mGlobals;  // by symbol: looked for, found
  VBProject* mNetProject = nullptr;  // the first of VB.NET: the one whose modules are read
  std::unordered_map<const SourceText*, ProjectFile*> mFiles;
  std::unordered_map<const Component*, std::vector<ProjectFile*>> mFilesOf;
  std::map<std::pair<const ProjectFile*, const Component*>, NetScope> mNetScopes;
  // By project, namespace and imports.
  std::map<std::pair<const ProjectScope*, std::string>, SymbolMap<const Component*>> mNetShared;
  const ProjectScope* mCandidatesOf = nullptr;
  std::unordered_map<Symbol, std::vector<const CodeElement*>> mCandidates;
};

}  // namespace vendrel
