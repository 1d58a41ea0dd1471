#pragma once
// Who calls whom: the uses of procedures as edges from the procedure in which they stand. Made from
// the records of the binder, on demand; the tree does not grow by it.
//
//   from   the procedure that holds the use; in declarations the element declared, else the module
//   to     a procedure (of a property that of the accessor), a Declare, or an event that is raised
//
// Two kinds of edges run from what is declared to what answers to it: an event of the projects to
// the procedures that handle it, a member of an interface to those that implement it.

#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "uses/NameUse.h"

namespace vendrel {

class VBProject;

/// That one procedure calls another, once for each pair and kind.
struct CallEdge {
  const CodeElement* From = nullptr;
  const CodeElement* To = nullptr;
  /// `Call`; `Read` and `Write` of a property or function; `Address`; `Raise`; `Handle` and
  /// `Implements` as above.
  UseKind Kind = UseKind::Call;
  /// Bound late, or to one of several elements of that name: it may be another one that is called.
  bool IsSure = true;
  /// How many uses there are, and where the first of them stands.
  std::int32_t Count = 0;
  const Component* Module = nullptr;
  /// The file: of VB.NET perhaps another one than the module begins in.
  const FileSystemObject* File = nullptr;
  std::int32_t Line = 0;
  std::int32_t Column = 0;
};

/// Which way a walk goes.
enum class CallDirection : std::uint8_t { Callees, Callers };

/// An edge met on a walk.
struct CallStep {
  const CallEdge* Edge = nullptr;
  /// What the edge leads to in that direction.
  const CodeElement* Element = nullptr;
  /// 1 for the neighbours of the start.
  int Depth = 0;
  /// Was met before, and is not walked again.
  bool Repeated = false;
};

/// The calls of one or several projects. Add all of them first, then ask.
class CallGraph {
 public:
  /// Calls of members of libraries and assemblies that were read are edges, too. Set before `Add`.
  bool WithLibraries = false;

  /// Binds all modules of a project and adds their calls. The tree must outlive the graph.
  void Add(VBProject& project);
  /// Adds one use, if it is a call, for those who bind themselves.
  void Add(const NameUse& use);

  /// All edges by `From` in the order in which these were met, then by place.
  std::span<const CallEdge> Edges() const;
  std::span<const CallEdge> CalleesOf(const CodeElement& from) const;
  /// In the order of `Edges`.
  std::span<const CallEdge* const> CallersOf(const CodeElement& to) const;

  /// What can be reached from `start`, depth first, each element walked once; `depth` 0: all of it.
  std::vector<CallStep> Walk(const CodeElement& start, CallDirection direction,
                             int depth = 0) const;
  /// A shortest chain of calls from one of `from` to one of `to`; empty if there is none, or if an
  /// element stands in both.
  std::vector<const CallEdge*> PathBetween(std::span<const CodeElement* const> from,
                                           std::span<const CodeElement* const> to) const;

 private:
  void AddEdge(const CodeElement* from, const CodeElement* to, UseKind kind, bool sure,
               const NameUse& use);
  void Sort() const;

  struct Range {
    std::uint32_t First = 0, Count = 0;
  };
  using Ranges = std::unordered_map<const CodeElement*, Range>;
  static std::vector<std::uint32_t> Gathered(const std::vector<CallEdge>& edges,
                                             const CodeElement* CallEdge::*end, Ranges& ranges);
  struct EdgeKey {
    const CodeElement* From;
    const CodeElement* To;
    UseKind Kind;
    bool operator==(const EdgeKey&) const = default;
  };
  struct EdgeHash {
    std::size_t operator()(const EdgeKey& key) const;
  };
  std::vector<CallEdge> mFound;                                 // as they were met
  std::unordered_map<EdgeKey, std::uint32_t, EdgeHash> mKnown;  // position in mFound
  // Made from these when first asked for.
  mutable bool mIsSorted = false;
  mutable std::vector<CallEdge> mEdges;
  mutable std::vector<const CallEdge*> mByTarget;
  mutable Ranges mFrom, mTo;
};

/// The same by module: what procedures of one call in another, one edge for each pair, of kind
/// `Call`. Calls within a module make none, nor do Declares and their libraries.
std::vector<CallEdge> CallsBetweenModules(const CallGraph& graph);

/// How many others an element is called by, and calls.
struct CallFan {
  std::size_t In = 0, Out = 0;
};
CallFan FanOf(const CallGraph& graph, const CodeElement& element);

/// Whether an element can be called: a procedure, a Declare, an event.
bool IsCallable(const CodeElement* element);

}  // namespace vendrel
