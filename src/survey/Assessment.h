#pragma once
// What of an estate stands in the way of a move to another platform, counted, weighed and placed.

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "survey/Hindrances.h"
#include "survey/ModuleHindrances.h"
#include "survey/Table.h"

namespace vendrel {

/// How many points one of each kind counts; those of the table where nobody sets others.
class HindranceWeights {
 public:
  HindranceWeights();
  std::int64_t Of(Hindrance kind) const { return mWeights[static_cast<std::size_t>(kind)]; }
  /// False for an id that is none.
  bool Set(std::string_view id, std::int64_t weight);

 private:
  std::array<std::int64_t, kHindranceCount> mWeights{};
};

/// Takes projects of Visual Basic 5/6 one after the other. A module that several list counts once,
/// by its file.
class Assessment {
 public:
  /// Folder of this machine from which files are shown; empty: absolute paths.
  std::string NativeRoot;
  HindranceWeights Weights;
  /// Whether each finding is kept with its place, not counted alone.
  bool KeepsFindings = false;

  /// Takes a loaded project; nothing of it is kept but rows. One of VB.NET, or that was compiled,
  /// is left out.
  void Add(VBProject& project);
  /// All tables, in the order in which a person reads them.
  std::vector<Table> Tables() const;

  /// Of 0 to 99: 0 where nothing stands in the way, 50 with a point for each line of code.
  static std::int64_t ScoreOf(std::int64_t points, std::int64_t linesOfCode);

 private:
  struct Sums {
    std::int64_t Code = 0, Findings = 0, Points = 0;
    VariantShare Variants;
    void Add(const Sums& other);
  };
  struct Module {
    std::string Name, File;
    Sums Sum;
  };
  struct Project {
    std::string Name, File;
    std::int64_t Modules = 0, MissingFiles = 0;
    Sums Sum;
  };
  struct NameCount {
    std::int64_t Declares = 0, Count = 0;
    std::set<std::size_t> Modules;
  };
  using TwoNames = std::pair<std::string, std::string>;

  void AddModule(const Component& component, const DeclaredFunctions& declared, UseBinder& names,
                 Project& project);
  void AddReferences(const VBProject& project, Project& row);
  void Count(const HindranceFinding& finding, Sums& sum, std::size_t module);
  void Keep(const HindranceFinding& finding, const std::string& file);
  static TwoNames NamesOf(const std::string& library, const std::string& function);
  Table ProjectTable() const;
  Table KindTable() const;
  Table ModuleTable() const;
  Table ApiTable() const;
  Table RuntimeTable() const;

  std::vector<Project> mProjects;
  std::vector<Module> mModules;
  std::map<std::string, std::size_t> mByFile;
  std::array<NameCount, kHindranceCount> mKinds;
  /// By library and function, by name.
  std::map<TwoNames, NameCount> mApis;
  std::map<std::string_view, NameCount> mRuntime;
  std::vector<std::vector<TableValue>> mFindings;
};

}  // namespace vendrel
