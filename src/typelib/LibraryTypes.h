#pragma once
// How the type of a member or parameter of a library reads in Visual Basic.

#include <optional>
#include <string>

#include "project/VBProject.h"
#include "typelib/reader/TypeLibInfo.h"

namespace vendrel {

/// What the type belongs to.
enum class TypeUse { Return, Parameter, Field };

/// A type as it is shown.
struct ShownType {
  /// False if it lies in a library that cannot be found, or its description is damaged; why.
  bool Readable = true;
  std::string Failure;
  /// The library that cannot be found, where that is why.
  std::string MissingLibrary;
  /// Automation type number, 0 for a user type.
  std::int32_t VarType = 0;
  std::string Name;
  bool IsArray = false;
  /// Bounds of a fixed array, "0 To 3"; kept in the complete reading only.
  std::string Subscript;

  bool IsVoid() const { return Readable && VarType == typelib::vtVoid; }
};

ShownType ShowType(const VBProject& project, const typelib::TypeLibInfo& library,
                   const typelib::VarTypeInfo& type, TypeUse use);

/// The name less one leading "_".
std::string_view WithoutUnderscore(std::string_view name);

/// The name of a module, member or parameter in single quotes, for messages.
std::string Quoted(std::string_view name);

/// Tells that something of a library could not be read: `told` as a diagnostic, or as one more use
/// of `missingLibrary` where a load counts those.
void ReportUnread(const std::string& missingLibrary, const std::string& told);

/// The same, and `boxText` in a box that says which part of the tree is missing.
void ReportMissing(const std::string& missingLibrary, const std::string& told,
                   const std::string& boxText, std::string_view caption);

}  // namespace vendrel
