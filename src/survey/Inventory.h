#pragma once
// What lies in many projects: taken one after the other, each freed before the next one is read.

#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "project/VBProject.h"
#include "survey/CodeMetrics.h"
#include "survey/NearDuplicates.h"
#include "survey/ProjectUses.h"
#include "survey/Table.h"

namespace vendrel {

/// Gathers rows of projects. A module that several projects list is counted once, by its file.
class Inventory {
 public:
  /// Folder of this machine from which files are shown; empty: absolute paths.
  std::string NativeRoot;
  /// Whether modules that are nearly equal are looked for.
  bool FindsNearDuplicates = false;

  /// Whether rows tell what the names in code do: who is called by how many, how often references
  /// and controls are used, which modules call each other. Each project needs its uses then.
  bool CountsUses = false;

  /// Takes a loaded project; nothing of it is kept but rows.
  void Add(const VBProject& project, const ProjectUses* uses = nullptr);
  /// A module file that was found on the disk, once all projects were added. Those that no project
  /// lists make a table.
  void AddFile(const FileSystemObject& file);
  /// All tables, in the order in which a person reads them.
  std::vector<Table> Tables() const;

 private:
  struct Module {
    std::string Name, Kind, File, CodePage, LineEnds;
    LineCounts Counts;
    std::int64_t Procedures = 0;
    std::vector<std::string> Projects;
    std::size_t Content = 0;
    /// A type of VB.NET, whose file may hold others.
    bool IsOfNet = false;
    bool IsFirstOfFile = false;
  };
  struct DeclaredLibrary {
    std::set<std::string> Functions;
    std::set<std::string> Modules;
    std::int64_t Declares = 0;
  };

  std::string FileOf(const Component& component) const;
  const Module& AddModule(const Component& component, const std::string& project,
                          const std::string& file);
  void TakeSource(const Component& component, Module& module);
  LineCounts AddNetFiles(const VBProject& project);
  void AddProcedures(const Component& component, Module& module);
  void AddCalls(const std::string& project);
  void AddDeclares(const Component& component);
  void AddProgIDs(const Component& component, const std::string& file);
  void AddControls(const Component& component, const std::string& project);
  void AddReferences(const VBProject& project);
  Table TotalsTable() const;
  Table ModuleTable() const;
  Table UnlistedTable() const;
  Table SharedTable() const;
  Table EqualTable() const;
  Table NearTable() const;
  Table CodePageTable() const;

  std::vector<std::vector<TableValue>> mProjects, mProcedures, mReferences, mControls, mProgIDs,
      mCalls;
  const ProjectUses* mUses = nullptr;  // of the project at hand
  std::vector<Module> mModules;
  /// Index of a module by its file and, where a file holds several, its name.
  std::map<std::pair<std::string, std::string>, std::size_t> mByFile;
  /// Files that projects list; those that names of classes were looked for in.
  std::unordered_set<std::string> mListed, mSearched;
  std::map<std::string, LineCounts> mNetFiles;
  std::map<std::string, DeclaredLibrary> mLibraries;
  /// Files on the disk that no project lists, and their lines.
  std::map<std::string, std::int64_t> mFiles;
  NearDuplicates mNear;
};

}  // namespace vendrel
