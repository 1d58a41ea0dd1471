#pragma once
// What a type has from the types above it.

#include <vector>

#include "dotnet/metadata/AssemblyStore.h"
#include "dotnet/metadata/Members.h"

namespace vendrel::metadata {

/// A type above another, with what its generic parameters stand for there.
struct BaseType {
  TypeHandle Type;
  TypeArguments Arguments;
};

/// The classes above a class, nearest first; for an interface, those that it inherits. Ends at what
/// cannot be found and where a ring closes.
std::vector<BaseType> BasesOf(AssemblyStore& store, TypeHandle type);

/// What tells one member from others of its type: the name, with the arguments of methods and
/// properties, in the terms of the type that has it or inherits it.
std::string KeyOfMember(const Signatures& signatures, const Member& member,
                        const TypeArguments& arguments);

/// A member of a type above.
struct InheritedMember {
  /// Which of `BasesOf` declares it.
  std::size_t Base = 0;
  metadata::Member Member;
  std::string Key;
  /// One of the same name and arguments stands nearer.
  bool IsHidden = false;
};

/// What an own member does to one above it.
struct OverridingMember {
  std::size_t Own = 0;
  std::size_t Base = 0;
  /// It hides it; false: it overrides it.
  bool Hides = false;
};

/// All that a type inherits.
struct Inheritance {
  std::vector<BaseType> Bases;
  std::vector<InheritedMember> Members;
  std::vector<OverridingMember> Overriding;
};
/// `own`: the members of the type itself, to which `Overriding` counts. Constructors and members
/// that the type cannot see are not inherited; what is overridden is left out.
Inheritance InheritanceOf(AssemblyStore& store, TypeHandle type, const std::vector<Member>& own,
                          const MemberFilter& filter);

}  // namespace vendrel::metadata
