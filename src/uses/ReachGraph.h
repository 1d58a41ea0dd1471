#pragma once
// All uses of projects as edges between elements, for the analysis of what is reached: who is used,
// by whom, read or written. A pair of elements has one edge; texts are not kept, but for names that
// are bound late or not at all.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "uses/NameUse.h"

namespace vendrel {

class VBProject;

/// That an element uses another.
struct ReachEdge {
  std::uint32_t From = 0, To = 0;  ///< positions of nodes
  bool Reads : 1 = false;
  bool Writes : 1 = false;
  /// Recursion, or the own result of a function.
  bool OwnOnly : 1 = false;
  /// A variable is given an object.
  bool HoldsObject : 1 = false;
  /// Its address is taken.
  bool IsAddress : 1 = false;
  /// Only in false branches of #If.
  bool FalseOnly : 1 = false;
};

/// A name of which it shows only when the program runs what it means.
struct LateName {
  std::uint32_t From = 0;
  std::string Name;  ///< folded
};

class ReachGraph {
 public:
  /// Takes the uses of a project. False branches of #If are bound, too.
  void Add(VBProject& project);
  /// Takes one use, for those who bind themselves.
  void Add(const NameUse& use);

  /// The position of an element; made where there is none.
  std::uint32_t NodeOf(const CodeElement& element);
  /// The position of an element, or `kNoNode`.
  std::uint32_t Find(const CodeElement& element) const;
  static constexpr std::uint32_t kNoNode = ~std::uint32_t{0};

  /// Whether all that declares an element of VB.NET stands in files that designers write.
  bool IsDesigned(const CodeElement& element) const {
    return mDesigned.contains(&element) && !mWritten.contains(&element);
  }

  const std::vector<const CodeElement*>& Nodes() const { return mNodes; }
  const std::vector<ReachEdge>& Edges() const { return mEdges; }
  const std::vector<LateName>& LateNames() const { return mLateNames; }
  /// Folded names that could not be bound, or may stand in a library that is not at hand.
  const std::unordered_set<std::string>& Unbound() const { return mUnbound; }
  /// Names of libraries from which something was named: "VBA", "ADODB", folded.
  const std::unordered_set<std::string>& Libraries() const { return mLibraries; }
  /// Something is used of which no type tells the library.
  bool HasUnnamedLibrary() const { return mUnnamedLibrary; }
  /// Members are called by a name that stands in a string, or is made while the program runs.
  bool CallsByName() const { return mCallsByName; }
  bool CallsByComputedName() const { return mComputedName; }

 private:
  void AddDeclared(const NameUse& use);
  void AddEdge(const NameUse& use, const CodeElement& target);
  void AddLateName(const NameUse& use);
  void AddLibrary(const NameUse& use);

  std::vector<const CodeElement*> mNodes;
  std::unordered_map<const CodeElement*, std::uint32_t> mPositions;
  std::vector<ReachEdge> mEdges;
  std::unordered_map<std::uint64_t, std::uint32_t> mKnown;  // pair of nodes to position of its edge
  std::vector<LateName> mLateNames;
  std::unordered_set<std::string> mLateKnown;
  std::unordered_set<std::string> mUnbound;
  std::unordered_set<std::string> mLibraries;
  std::unordered_set<const CodeElement*> mDesigned, mWritten;  // of mWritten types alone
  const FileSystemObject* mFile = nullptr;                     // the one last looked at
  bool mIsDesigner = false;
  bool mUnnamedLibrary = false;
  bool mCallsByName = false;
  bool mComputedName = false;
};

/// Designers write such files of VB.NET, and write them anew.
bool IsDesignerFile(const FileSystemObject& file);

/// What stands in the string literals of a module and could be a name, folded: a literal that is
/// one whole ("Refresh"), and the end of one with dots, with its last dot (".account" of
/// "Firm.Account").
void AddLiteralNames(const Component& module, std::unordered_set<std::string>& names);

}  // namespace vendrel
