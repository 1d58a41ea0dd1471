#pragma once
// The closing count of a check.

#include <ostream>
#include <string>
#include <vector>

#include "project/VBProject.h"

namespace vendrel::cli {

/// What is there of the projects that were checked. A module dropped because its name was taken is
/// listed, but neither found nor missing: nothing of it is left to look for.
struct ProjectCounts {
  std::size_t Projects = 0;
  std::size_t Unread = 0;
  std::size_t Listed = 0;
  std::size_t Found = 0;
  std::size_t OtherCase = 0;
  std::size_t Missing = 0;
  /// There, but not to be read.
  std::size_t Unreadable = 0;
  std::size_t DuplicateNames = 0;
  std::size_t ReferencesWithoutFile = 0;
  /// Findings that were told, by their levels, and those that a baseline hid.
  std::size_t Errors = 0, Warnings = 0, Notes = 0, Known = 0;

  /// Adds what is there of a loaded project.
  void Add(const VBProject& project);
  /// The members of that object.
  static std::vector<std::string> Names();
  /// Writes one line: words, or a JSON object.
  void Write(std::ostream& out, bool asJson) const;
};

}  // namespace vendrel::cli
