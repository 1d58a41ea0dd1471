#pragma once
// Makes Visual Basic projects of any size, to measure with: the same seed gives the same bytes, and
// the time grows with the number of lines. Depends on nothing of the library that is measured.

#include <cstdint>
#include <functional>
#include <string>

namespace vendrel::bench {

/// One file of a generated project. Lines end with CR LF; letters are those of windows-1252.
struct GeneratedFile {
  std::string Name;
  std::string Text;
  /// Lines in `Text`.
  std::int64_t Lines = 0;
};

struct GeneratorOptions {
  /// Lines of all modules together; exceeded by less than one procedure. At least one module
  /// is made, with its header and declarations.
  std::int64_t Lines = 10'000;
  std::uint64_t Seed = 1;
  /// Lines of one module, drawn between these bounds.
  int ModuleLinesMin = 500;
  int ModuleLinesMax = 3000;
};

/// Name of the project file among the files of a generated project.
inline constexpr const char* kProjectFileName = "Generated.vbp";

/// Hands out the modules of a project one by one and the project file last, so that a project of
/// any size takes the memory of one module. Gives the number of lines of all modules.
std::int64_t GenerateProject(const GeneratorOptions& options,
                             const std::function<void(const GeneratedFile&)>& take);

/// Writes a generated project into a folder, which is made if it is not there. Gives the number of
/// lines of all modules; throws std::runtime_error where a file cannot be written.
std::int64_t WriteProject(const GeneratorOptions& options, const std::string& folder);

}  // namespace vendrel::bench
