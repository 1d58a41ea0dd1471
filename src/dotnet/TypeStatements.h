#pragma once
// Statements of VB.NET source that open and close namespaces and types: as six documented patterns
// find them, or word by word.

#include <string>
#include <string_view>
#include <vector>

#include "core/Enums.h"
#include "core/SharedText.h"

namespace vendrel {

/// One such statement.
struct TypeStatement {
  enum class Kind { Namespace, EndNamespace, Type, EndType };
  Kind What = Kind::Type;
  /// What kind of type is opened, or closed.
  ComponentTypeEnum Type = ctClass;
  /// Of a type without brackets, generic ones with their count ("Foo`1"); of a namespace as written
  /// but for brackets.
  std::string Name;
  SharedText Access = "PUBLIC";
  bool IsAbstract = false;
  bool IsSealed = false;
  bool IsPartial = false;
  /// The statement in which a "Global." makes the name of a namespace whole.
  bool IsGlobal = false;
  /// Type of the members of an enumeration, as written; empty if none is.
  std::string Underlying;
};

/// The statement of a line that patterns and exact texts find (classic reading): of several on the
/// line the first. `text` is the logical line.
std::vector<TypeStatement> StatementsByPattern(std::string_view text);

/// The name that the patterns leave for a type: the last word, for an enumeration the word behind
/// "Enum", without brackets, in front of a ":".
std::string TypeNameByPattern(std::string_view text, ComponentTypeEnum type);

/// All statements of a logical line, read word by word (`NetTypeStatements`).
std::vector<TypeStatement> StatementsByWord(std::string_view text);

/// Where the name of the type stands that a logical line declares first: its first byte and length
/// with brackets; length 0 where there is none.
std::pair<std::size_t, std::size_t> PlaceOfTypeName(std::string_view text);

/// The six patterns, in the order in which they are tried: namespace, class, module, structure,
/// enumeration, interface.
std::vector<std::string_view> TypePatterns();

}  // namespace vendrel
