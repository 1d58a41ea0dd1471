#pragma once
// What has a place in the site: projects, namespaces, modules, members, source files, and the
// address of each. Made once, before any page is written, so that pages can link forward.

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "project/VBProject.h"
#include "site/PageNames.h"

namespace vendrel::site {

/// A place in the site. `Folder` ends with "/" or is empty for the root.
struct Address {
  std::string_view Folder;
  std::string Leaf;
  explicit operator bool() const { return !Leaf.empty(); }
};

/// One file of source, in pieces that fit a page.
struct SourceEntry {
  /// As the project names it, with "/"; nothing of it depends on the machine.
  std::string Path;
  std::string_view Text;
  std::string Folder;
  /// Name of its pages without extension and number.
  std::string Stem;
  /// Lines of the header that designers write; 0 for none.
  std::int32_t DesignerLines = 0;
  /// 1-based first line of each piece, and where it begins in the text.
  std::vector<std::pair<std::int32_t, std::size_t>> Pieces;
  std::int32_t Lines = 0;
  const Component* Module = nullptr;
  const struct ProjectEntry* Project = nullptr;

  std::size_t PieceOf(std::int32_t line) const;
  std::string LeafOf(std::size_t piece) const;
  Address AddressOf(std::int32_t line) const;
};

/// Members of one name and kind: the procedures of a property, the overloads of a method. One page.
struct MemberEntry {
  std::string_view Name;
  /// As in lists: "Function", "Property", "Event".
  std::string_view Kind;
  std::vector<const CodeElement*> Elements;
  std::string_view Leaf;
  const CodeElement& First() const { return *Elements.front(); }
};

/// Constants or variables of a module, which share pages.
struct FieldEntry {
  const CodeElement* Element;
  std::string_view Leaf;
};

struct ModuleEntry {
  const Component* Module = nullptr;
  const struct ProjectEntry* Project = nullptr;
  std::string Name;
  std::string_view Kind;
  std::string Folder;
  std::vector<MemberEntry> Members;
  std::vector<MemberEntry> Types;  // enumerations and structures
  std::vector<FieldEntry> Constants, Variables;
  /// Its place among the modules of its project.
  std::size_t Index = 0;
  bool HasForm = false;
  const SourceEntry* Source = nullptr;
};

struct NamespaceEntry {
  std::string Name;
  std::string Leaf;
  std::vector<const ModuleEntry*> Modules;
};

struct ProjectEntry {
  const VBProject* Project = nullptr;
  std::string Name;
  std::string_view Kind;
  std::string Folder;
  std::deque<ModuleEntry> Modules;
  std::vector<NamespaceEntry> Namespaces;
  std::deque<SourceEntry> Sources;
  std::size_t Lines = 0;
  bool IsNet() const { return Project->LanguageVersion() == lvVisualBasicDotNet; }
};

/// How many constants, or variables, one page lists.
inline constexpr std::size_t kFieldsOnPage = 500;
/// Lines and bytes of source on a page.
inline constexpr std::int32_t kLinesOnPage = 2000;
inline constexpr std::size_t kSourceOnPage = 96 << 10;

struct SiteMapOptions {
  bool Private = false;
  bool Source = true;
};

class SiteMap {
 public:
  SiteMap(const std::vector<VBProject*>& projects, const SiteMapOptions& options);
  SiteMap(const SiteMap&) = delete;
  SiteMap& operator=(const SiteMap&) = delete;

  const std::deque<ProjectEntry>& Projects() const { return mProjects; }
  /// The page, or place on one, that tells of an element; none if no page does.
  Address Of(const CodeElement* element) const;
  bool Has(const CodeElement* element) const { return mAddresses.contains(element); }
  /// The leaf of that address; empty for none.
  std::string_view LeafOf(const CodeElement& element) const;
  /// The lines that declare an element; none without source.
  Address SourceOf(const CodeElement& element) const;
  const ModuleEntry* ModuleOf(const Component* component) const;
  const ProjectEntry* ProjectOf(const VBProject* project) const;
  /// The element of a qualified name, case ignored; null if no page tells of one.
  const CodeElement* Named(std::string_view qualifiedName) const;

 private:
  void AddProject(VBProject& project);
  void AddNamespaces(ProjectEntry& entry);
  void AddModule(ProjectEntry& project, const Component& component, PageNames& names);
  void AddMembers(ModuleEntry& module);
  void AddFields(ModuleEntry& module);
  void AddControls(const ModuleEntry& module);
  void AddTypes(ModuleEntry& module, PageNames& names);
  void AddSources(ProjectEntry& project);
  SourceEntry& AddSource(ProjectEntry& project, const FileSystemObject& file, std::string_view text,
                         PageNames& names);
  /// Gives the leaf, which stays as long as the map.
  std::string_view Set(const CodeElement* element, std::string_view folder, std::string_view leaf);
  bool IsShown(const CodeElement& element, std::string_view access) const;

  struct Place {
    std::string_view Folder, Leaf;
  };
  SiteMapOptions mOptions;
  TextPool mTexts;
  std::deque<ProjectEntry> mProjects;
  std::unordered_map<const CodeElement*, Place> mAddresses;
  std::unordered_map<const Component*, const ModuleEntry*> mModules;
  std::unordered_map<const VBProject*, const ProjectEntry*> mByProject;
  std::unordered_map<std::string, const SourceEntry*> mSourceByPath;
  mutable std::unordered_map<std::uint64_t, const CodeElement*> mByName;
};

/// The address as seen from a folder of the site.
std::string HrefFrom(std::string_view folder, const Address& to);
/// "../../" or nothing: from a folder to the root.
std::string RootFrom(std::string_view folder);

/// What people call a module: "class", "form", "standard module", "interface", "structure".
std::string_view KindOfModule(const Component& component);
/// The form and its controls, each container in front of what it holds, with their depths.
std::vector<std::pair<const VBControl*, int>> ControlsOf(const Component& form);
/// The page, counted from 0, of the controls of a form.
std::string PageOfControls(std::size_t page);
/// Whether an access is that of something private.
bool IsPrivateAccess(std::string_view access);

}  // namespace vendrel::site
