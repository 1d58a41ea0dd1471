#pragma once
// Declarations of VB.NET as the language has them (`NetMembers`): modifiers, names, generic lists,
// types, lists behind Handles and Implements.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/Component.h"

namespace vendrel {

/// Reads the first line of a procedure, property, operator or delegate.
void ReadNetMember(std::string_view statement, Block& o);
/// Whether a property has all its code on its line: `= value`, `As New X`.
bool HasNetInitialiser(std::string_view statement);
/// Reads an event; without a delegate of its own `DelegateName` stays empty.
void ReadNetEvent(std::string_view statement, EventDeclaration& o);
/// Reads a parameter list without its parentheses. A second parameter of one name is dropped.
void ReadNetParameters(std::string_view list, Parameters& parameters, CodeElement* parent);

/// One declared name of a variable or constant statement.
struct NetDeclarator {
  std::string Name;
  /// As written, without the mark of an array; empty if none is.
  std::string Type;
  bool IsArray = false;
  std::string_view Subscript;
  /// What stands behind "=".
  std::string_view Value;
};

/// Modifiers and declarators of a variable or constant statement. Of names that share one type each
/// has it.
struct NetVariables {
  explicit NetVariables(std::string_view statement);

  std::string Access = "PRIVATE";
  bool IsShared = false, IsShadow = false, IsWithEvents = false, IsStatic = false;
  std::vector<NetDeclarator> Declarators;
};

}  // namespace vendrel
