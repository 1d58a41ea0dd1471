#pragma once
// The tree as JSON. Every element is an object with "Class" and each public property under its own
// name; collections are arrays of objects, links the qualified name of the other element or null.

#include <iosfwd>
#include <string>
#include <vector>

#include "output/Describe.h"

namespace vendrel {

class JsonWriter;
struct ControlProperty;

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
  /// All properties of controls too, as "Properties": an array of objects.
  bool ControlProperties = false;
};

/// Writes an element with everything below it. Loads no module: one that was not read shows what
/// the project file tells of it. The text ends with a line feed.
void Dump(std::ostream& out, ElementRef element, const DumpOptions& options = {});

/// Writes the properties of a control as an array; those of a group stand in an array of its own.
void DumpControlProperties(JsonWriter& json, const std::vector<ControlProperty>& properties);

/// Writes the members of one code line into the object that is open.
void DumpLineMembers(JsonWriter& json, const CodeLine& line);

}  // namespace vendrel
