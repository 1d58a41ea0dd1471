#pragma once
// The members of a module as its lists of names give them, but as elements.

#include <string_view>
#include <vector>

#include "model/Fwd.h"

namespace vendrel {

enum class MemberKind { Methods, Properties, Events, Enumerations, Types, Collections };

/// Which members a list has; the arguments of `Component::MethodList` and its kin.
struct MemberFilter {
  bool IncludePrivate = false;
  bool IncludeFriend = false;
  /// Empty: of every interface that is documented here; "Default": of none; else of that one.
  std::string_view Interface;
};

/// The members of that kind, sorted by name; those of an interface that is documented elsewhere get
/// their `ExcludeFlag` set where the list would set it. Parts of the filter that the list of a kind
/// does not take have no effect.
std::vector<const CodeElement*> MembersOf(Component& component, MemberKind kind,
                                          const MemberFilter& filter = {});

}  // namespace vendrel
