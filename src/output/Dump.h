#pragma once
// The tree as JSON. Every element is an object with "Class" and each public property under its own
// name; collections are arrays of objects, links the qualified name of the other element or null.

#include <iosfwd>
#include <string>
#include <vector>

#include "output/Describe.h"

namespace vendrel {

class JsonWriter;
class UniqueNames;
struct ControlProperty;

/// Version of the form in which the tree is written as JSON. A new member leaves it as it is; one
/// that goes, or means something else, raises it.
inline constexpr int kJsonFormat = 1;

/// What a dump leaves out or changes.
struct DumpOptions {
  /// Code lines too, as arrays of records.
  bool Lines = false;
  /// Properties that differ from load to load: keys, ids, paths.
  bool Identity = true;
  bool SourceLines = true;
  /// Properties that say nothing too: empty texts and collections, 0, false, no link.
  bool Empty = true;
  /// A folder in Windows form ("Z:\home\me\ledger") that paths show as `Z:\root`; empty: none.
  std::string Root = {};
  /// A line for each member.
  bool Indented = true;
  /// Where each element stands: "File" (a path of this machine), "Line" and "Column".
  bool Places = true;
  /// The program that writes, with its version: the document begins with it and with the version of
  /// the format. Empty: it does not.
  std::string Tool = {};
  /// A folder of this machine from which "File" is shown; empty: absolute paths.
  std::string NativeRoot = {};
  /// The names of the elements, where they are to differ from those of other documents too; they
  /// must be of a tree that holds the element. Null: those of the element's own tree.
  const UniqueNames* Names = nullptr;
  /// All properties of controls too, as "Properties": an array of objects.
  bool ControlProperties = false;
};

/// Whether the elements of a property are its own and dumped as objects; else they stand elsewhere
/// and are shown by their names.
bool OwnsElements(const PropertyDescription& property);

/// Whether the property at an index of `AllProperties` is hidden from comparisons: a dump has it
/// where it says something.
bool IsHidden(const ClassDescription& description, std::size_t index);
/// Why such a property is in no dump; empty for one that is dumped.
std::string_view WhyNotDumped(const ClassDescription& description, std::size_t index);

/// The path of a file on this machine, from the root where it lies below it.
std::string ShownFile(const std::string& windowsPath, std::string_view nativeRoot = {});

/// Writes an element with everything below it. Loads no module: one that was not read shows what
/// the project file tells of it. The text ends with a line feed.
void Dump(std::ostream& out, ElementRef element, const DumpOptions& options = {});

/// Writes the properties of a control as an array; those of a group stand in an array of its own.
void DumpControlProperties(JsonWriter& json, const std::vector<ControlProperty>& properties);

/// Writes what a project or module has beside its properties into the object that is open:
/// "Version"; "DefaultTypes", "CompilerConstants", "Constants" (names). Nothing where it says
/// nothing.
void DumpFurtherMembers(JsonWriter& json, ElementRef element, const UniqueNames& names);

/// Writes the members of one code line into the object that is open.
void DumpLineMembers(JsonWriter& json, const CodeLine& line);

}  // namespace vendrel
