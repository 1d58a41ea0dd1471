#pragma once
// Sets of assemblies as the command `assemblies` loads and shows them.

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "cli/Options.h"
#include "project/Assembly.h"

namespace vendrel::cli {

/// What the command line says about a set.
struct SetOptions {
  CommonOptions Common;
  std::vector<std::string> Files;
  /// NAME=FILE
  std::vector<std::string> CommentFiles;
  std::string RootAssembly;
  std::string RootModule;
  /// "keep", "add" or "replace"
  std::string ImportMode = "add";
  /// PATTERN=FOLDER
  std::vector<std::string> DocLocations;
  /// PREFIX=URL
  std::vector<std::string> ExternalDocs;
  bool Drill = false;
  bool Inherit = false;
};

/// Whether a path is that of a saved set, by its extension.
bool IsSetFile(const std::string& path);
/// Writes the diagnostics of a set and of its projects; gives the exit code.
int ReportSet(const Assemblies& set, const CommonOptions& options, std::ostream& err);

/// Loads the files as one set, with the comments that the options ask for. A file that is missing
/// or cannot be read is told and left out.
std::shared_ptr<Assemblies> LoadSet(const SetOptions& options);

/// The set as lines: assemblies, namespaces, types and delegates, with what describes them.
void WriteSet(std::ostream& out, const Assemblies& set);
/// The set as JSON: an array of objects with "Assembly" and "VBProject".
void WriteSetAsJson(std::ostream& out, const Assemblies& set);
/// What is documented and not there, and what is there and not documented. Gives whether anything
/// is.
bool WriteSetCheck(std::ostream& out, const Assemblies& set);
/// Saves the set as XML, in place of a file that is there.
void SaveSet(const Assemblies& set, const std::string& path);

}  // namespace vendrel::cli
