#pragma once
// The types and members of an assembly as entries, in the order of the metadata.

#include <functional>
#include <string>

#include "dotnet/metadata/Inheritance.h"
#include "dotnet/metadata/Values.h"

namespace vendrel::metadata {

/// What is listed besides what other assemblies can use.
struct ListingOptions {
  /// Every type and member; static constructors too.
  bool Private = false;
  /// Behind the members of each type those that it inherits.
  bool Inherited = false;
};

/// One type or member.
struct ListedEntry {
  /// As documentation files name it: "M:Shop.List`1.Add(`0)".
  std::string Name;
  /// "class", "structure", "interface", "enumeration", "delegate", "module", "field", "constant",
  /// "constructor", "method", "event", "property".
  std::string_view Kind;
  metadata::Access Access = metadata::Access::Public;
  bool IsStatic = false;
  bool IsVirtual = false;
  bool IsAbstract = false;
  bool IsSealed = false;
  bool IsExplicit = false;
  bool IsExtension = false;
  /// Of an inherited member: one nearer hides it.
  bool IsHidden = false;
  /// Type of a field, property or event, result of a method, base of a type.
  std::string Type;
  /// Parameters as "name As Type".
  std::vector<std::string> Parameters;
  /// Interfaces of a type.
  std::vector<std::string> Implements;
  std::string Value;
  ObsoleteMark Obsolete;
  /// The type that inherits it, for an inherited member.
  std::string In;
  /// Why it could not be read whole.
  std::string Damage;
};

/// Gives every entry to `visit`. What is damaged comes with its name as far as that can be read.
/// Ends early, with a message as the result, where a small file would give more than any reader
/// wants.
std::string ListAssembly(AssemblyStore& store, const AssemblyFile& file,
                         const ListingOptions& options,
                         const std::function<void(const ListedEntry&)>& visit);

/// The name of a type or member with its prefix.
std::string DocumentedTypeName(const TypeHandle& type);

}  // namespace vendrel::metadata
