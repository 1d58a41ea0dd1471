#pragma once
// What of a program is reached. It runs from where the program is entered; what is reached from
// nothing but dead code is dead itself, rings included. It is a matter of reach, not of a count.
//
// Entered are: the startup object; in a library (ActiveX DLL, EXE, control) the public members of
// its exposed classes; in loose modules, which have no project, whatever is public; what a comment
// ##USED or a list of names marks as used from outside.
//
// A class, form or control that is reached brings with it what runs without being named: its event
// procedures, the members of interfaces that it implements, its default members and enumerators.

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "uses/ReachGraph.h"

namespace vendrel {

class VBControl;

/// Why something is reached that nothing in the code needs to name.
enum class ReachCause : std::uint8_t {
  None,             ///< by a use, or not at all
  Startup,          ///< the startup object of the project
  PublicOfLibrary,  ///< public in what others refer to, or in modules without a project
  EventProcedure,   ///< of a module that is reached
  InterfaceMember,  ///< implements, or declares what others implement
  DefaultMember,    ///< has a member ID of its own, and so is called without its name
  Designer,         ///< a designer or property page, or made or called by markup (XAML, ASP.NET)
  ControlType,      ///< a user control that lies on a form
  Attribute,        ///< VB.NET: it has an attribute by which others may find and call it
  CalledByName,     ///< its name stands in a string, and the program calls by name
  MarkedUsed        ///< by ##USED or a list
};

/// Add all projects that belong together, then sweep, then ask.
class Reach {
 public:
  /// Qualified names, or patterns with * and ?, of what is used from outside; case ignored.
  std::vector<std::string> UsedFromOutside;

  /// Binds a project and takes its uses. The tree must outlive this object.
  void Add(VBProject& project);
  /// The same with uses that were taken already (`Graph().Add`).
  void AddBound(VBProject& project);
  /// Finds what is reached.
  void Sweep();

  bool IsReached(const CodeElement& element) const;
  ReachCause CauseOf(const CodeElement& element) const;
  /// Whether code that is reached reads, or writes, a variable.
  bool IsRead(const CodeElement& element) const;
  bool IsWritten(const CodeElement& element) const;
  /// All uses of an element but those within itself, reached or not.
  std::vector<const ReachEdge*> UsesOf(const CodeElement& element) const;
  /// Whether a class may be reached by its name alone, when the program runs.
  bool IsCalledLate(std::string_view name) const;
  /// Whether the name stands in a string of the program.
  bool StandsInString(std::string_view name) const;

  ReachGraph& Graph() { return mGraph; }
  const ReachGraph& Graph() const { return mGraph; }
  const std::vector<VBProject*>& Projects() const { return mProjects; }

  /// Whether others implement this module.
  bool IsInterface(const Component& module) const { return mInterfaces.contains(&module); }
  /// Whether what is public in a module may be used from outside.
  bool IsOpen(const Component& module) const;

 private:
  void Enter(const CodeElement& element, ReachCause cause);
  void Mark(std::uint32_t node);
  void MarkOwner(const CodeElement& element);
  void MarkModule(const Component& module);
  void MarkControls(const Component& module);
  void MarkWaiting(const Component& module);
  void FollowFrom(const CodeElement& element);
  void MarkLate(const std::string& name);
  void EnterStartup(VBProject& project);
  void EnterExports(const VBProject& project);
  void EnterPublic(const Component& module);
  void EnterMarked(VBProject& project);
  // NetReach.cpp
  void EnterNetStartup(VBProject& project);
  void EnterMarkup(VBProject& project);
  void EnterAttributed(VBProject& project);
  void EnterNetPublic(const Component& module);
  void MarkNetModule(const Component& module);
  void MarkFamily(const Block& block, const Component& home);
  bool IsListed(const CodeElement& element) const;
  void FollowEdge(const ReachEdge& edge);
  void IndexMembers(VBProject& project);

  struct State {
    bool Reached = false, Read = false, Written = false;
    ReachCause Cause = ReachCause::None;
  };
  State& At(std::uint32_t node);
  const State* Of(const CodeElement& element) const;

  ReachGraph mGraph;
  std::vector<VBProject*> mProjects;
  std::vector<State> mStates;
  std::vector<std::uint32_t> mOpen;
  std::vector<std::vector<std::uint32_t>> mFrom, mTo;  // edges of a node
  std::unordered_map<std::uint32_t, std::vector<const LateName*>> mLateOf;
  std::unordered_map<std::string, std::vector<const CodeElement*>> mMembers;  // of classes
  std::unordered_set<std::string> mLateNames, mReachedLate, mLiterals;
  std::unordered_map<std::string, std::vector<const Component*>> mModules;  // by folded name
  std::unordered_map<const Component*, std::vector<const CodeElement*>> mWaiting;
  std::unordered_set<const Component*> mInterfaces;
};

/// Modules without a project file, of which nobody knows who uses them.
bool IsLooseProject(const VBProject& project);
/// An ActiveX DLL, EXE or control; a library of VB.NET.
bool IsLibraryProject(const VBProject& project);
bool IsNetProject(const VBProject& project);
bool IsNetModule(const Component& module);
/// Whether designers of .NET find it by its name: `ShouldSerializeSize` and `ResetSize` of a class,
/// which tell of its property `Size` whether it is stored and what it is at first, and the mark of
/// the designer of pages.
bool IsFoundByDesigner(const CodeElement& element);

/// Whether a class, form or control is meant, of which there are objects, and no standard module.
bool HasObjects(const Component& module);

/// Whether a procedure handles an event that its source is known to have: of the module itself, of
/// a control on it or of a variable WithEvents.
bool HandlesEvent(const Block& procedure);

}  // namespace vendrel
