#pragma once
// What changed of the public surfaces of some projects, as tables: in numbers first, then each
// change, then the rules behind them.

#include <cstdint>
#include <string>
#include <vector>

#include "survey/ApiChanges.h"
#include "survey/Table.h"

namespace vendrel {

/// Gathers comparisons of surfaces.
class ApiReport {
 public:
  /// Folder of this machine from which files are shown; empty: absolute paths.
  std::string NativeRoot;

  void Add(const PublicSurface& before, const PublicSurface& after);
  /// A project that is there once only.
  void AddAlone(const std::string& name, const ChangePlace& place, bool isGone);
  /// Number of changes that break callers.
  std::int64_t Breaks() const;
  /// The tables, in the order in which a person reads them.
  std::vector<Table> Tables() const;

 private:
  struct Project {
    std::string Name, File, Note;
    SurfaceWorld World = SurfaceWorld::Com;
    std::size_t TypesBefore = 0, TypesAfter = 0;
    std::vector<ApiChange> Changes;
  };
  Table SummaryTable() const;
  Table ChangeTable() const;
  Table RuleTable() const;

  std::vector<Project> mProjects;
};

}  // namespace vendrel
