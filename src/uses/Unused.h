#pragma once
// What of a program nobody uses, with the reason and how sure that is.

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "uses/Reach.h"

namespace vendrel {

// X(value, its word, sentence).
// clang-format off
#define VENDREL_UNUSED_REASONS(X)                                                                  \
  X(NeverUsed,      "never-used",       "nothing uses it")                                         \
  X(OnlyDead,       "only-from-unused", "only what is unused itself uses it")                      \
  X(Ring,           "ring",             "it and what uses it use only each other")                 \
  X(NeverRead,      "never-read",       "it is assigned and never read")                           \
  X(NeverRaised,    "never-raised",     "nothing raises the event")                                \
  X(NothingOfIt,    "nothing-used",     "nothing of the module is used")                           \
  X(NoControl,      "no-control",       "it is named for an event of a control that does not exist")  \
  X(NoEvent,        "no-event",         "its form or control has no event of that name")           \
  X(OnlyOffBranch,  "only-off-branch",  "only a branch of #If that does not hold uses it")         \
  X(OwnModuleOnly,  "could-be-private", "only its own module uses it")                             \
  X(NoneOfLibrary,  "reference-unused", "nothing of the library is used")
// clang-format on

enum class UnusedReason : std::uint8_t {
#define VENDREL_UNUSED_VALUE(value, word, sentence) value,
  VENDREL_UNUSED_REASONS(VENDREL_UNUSED_VALUE)
#undef VENDREL_UNUSED_VALUE
};
/// "never-used".
std::string_view WordOf(UnusedReason reason);
/// "nothing uses it".
std::string_view SentenceOf(UnusedReason reason);

/// How sure a finding is.
enum class Sureness : std::uint8_t {
  Possible,  ///< something hints at a use that cannot be seen; `Finding::Doubt` says what
  Likely,    ///< it may be reached through an object whose class is not known where it is used
  Certain
};
std::string_view WordOf(Sureness sureness);

/// One thing that nobody uses.
struct UnusedFinding {
  /// An element of the tree, or a `Reference` of a project.
  const CodeElement* Element = nullptr;
  /// "procedure", "variable", "local-variable", "parameter", "constant", "enumeration",
  /// "enumeration-member", "type", "declare", "event", "module", "event-procedure", "reference",
  /// "control-reference".
  std::string_view Kind;
  UnusedReason Reason = UnusedReason::NeverUsed;
  Sureness How = Sureness::Certain;
  /// What makes it less than certain; empty where it is certain.
  std::string_view Doubt;
  /// One of those that use it, where only unused ones do; else null.
  const CodeElement* By = nullptr;
};

/// All kinds that a finding can have.
std::span<const std::string_view> UnusedKinds();

/// Hands out what of the projects of `reach`, which has been swept, nobody uses: by project and
/// module in their order, by line within a module. A module of which nothing is used is one
/// finding, and so is an enumeration; what is declared inside a procedure that is unused is none. A
/// type of VB.NET is judged as a module is; files that designers write are left out.
void FindUnused(const Reach& reach, const std::function<void(const UnusedFinding&)>& take);

/// Hands out what is public, is used, and by its own module only.
void FindTooPublic(const Reach& reach, const std::function<void(const UnusedFinding&)>& take);

/// Hands out references of the projects, to libraries and to controls, of which nothing is used;
/// none of VB.NET, where a library is named by its namespaces.
void FindUnusedReferences(const Reach& reach,
                          const std::function<void(const UnusedFinding&)>& take);

/// The name by which source knows the library in a file: "ADODB" for "msado15.dll"; empty for a
/// file that is not among the well-known ones.
std::string_view LibraryNameOfFile(std::string_view leafName);
/// The same of a reference: of a project or library that was loaded its own name.
std::string LibraryNameOf(const Reference& reference);

}  // namespace vendrel
