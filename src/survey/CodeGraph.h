#pragma once
// Who refers to whom: projects and libraries, modules, classes and interfaces, as a graph.

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "project/VBProject.h"
#include "uses/CallGraph.h"

namespace vendrel {

/// What the nodes are.
enum class GraphLevel {
  /// Projects, and the projects and libraries that they refer to.
  Project,
  /// Their modules too.
  Module,
  /// Classes, forms and interfaces alone: whatever can be a type.
  Class
};

/// Takes projects one after the other, each freed before the next one is read; `Finish` ties what
/// they name to each other.
class CodeGraph {
 public:
  struct Node {
    /// Unique among the nodes.
    std::string Label;
    /// "EXE", "library", "form", "class module", "interface" ...
    std::string Kind;
    /// Path of this machine, from the root; empty for what stands in no file.
    std::string File;
    /// 1-based; 0 for the file as a whole.
    std::int32_t Line = 0;
    /// Label of the project that a module stands in; empty for others.
    std::string Project;
  };
  /// Edges run from the one that names the other.
  struct Edge {
    std::size_t From = 0, To = 0;
    /// "references", "implements", "inherits", "calls", or "uses": a type of a declaration, or a
    /// control.
    std::string_view Relation;
    /// In how many places.
    std::int64_t Count = 0;
  };

  /// `nativeRoot`: the folder of this machine from which files are shown; empty: absolute paths.
  CodeGraph(GraphLevel level, std::string nativeRoot);
  /// Takes a project; for modules and classes a loaded one. With calls the modules whose procedures
  /// call each other have edges, too.
  void Add(const VBProject& project, const CallGraph* calls = nullptr);
  /// Makes `Nodes` and `Edges` of what was added.
  void Finish();
  /// Leaves only what lies within `depth` edges, in either direction, of the nodes of that name: a
  /// label, or the name of a module, letter case aside. False if there is none.
  bool Focus(std::string_view name, int depth);

  std::vector<Node> Nodes;
  std::vector<Edge> Edges;

 private:
  /// A node before its label is settled.
  struct Candidate {
    Node Shown;
    /// As its project calls it.
    std::string Name;
    std::size_t Project = 0;
    bool IsDrawn = true;
  };
  struct Mention {
    std::size_t From;
    std::string Name;
    std::string_view Relation;
    std::int64_t Count = 1;
  };
  struct LibraryReference {
    std::size_t From;
    std::string Name, Path, ClassId, Guid, Leaf;
  };
  /// What is known of a project, to tie references and names.
  struct ProjectNames {
    std::size_t Node;
    std::string Output;
    /// Modules by their folded names.
    std::unordered_map<std::string, std::size_t> Modules;
    std::vector<std::size_t> Referenced;
  };

  void AddReferences(const VBProject& project, std::size_t node);
  void AddModule(const Component& component, ProjectNames& names);
  void AddMentions(const Component& component, std::size_t node);
  void AddMention(std::size_t from, std::string_view type, std::string_view relation);
  void AddCalls(const CallGraph& calls, const ProjectNames& names);
  void TieReferences();
  void TieMentions();
  void AddEdge(std::size_t from, std::size_t to, std::string_view relation, std::int64_t count = 1);
  std::size_t NodeFor(const std::string& key, std::string name, std::string_view kind);
  std::size_t ModuleNamed(const ProjectNames& names, const std::string& key) const;
  void SettleLabels();
  void LeaveOut(const std::vector<bool>& kept);

  GraphLevel mLevel;
  std::string mNativeRoot;
  std::vector<Candidate> mCandidates;
  std::vector<ProjectNames> mProjects;
  /// What a reference can name a project by, folded, to its index in `mProjects`.
  std::unordered_map<std::string, std::size_t> mProjectKeys;
  std::vector<LibraryReference> mReferences;
  std::vector<Mention> mMentions;
  /// Nodes of libraries and of types that no project has.
  std::unordered_map<std::string, std::size_t> mOutside;
  std::map<std::tuple<std::size_t, std::size_t, std::string_view>, std::size_t> mEdgeOf;
};

}  // namespace vendrel
