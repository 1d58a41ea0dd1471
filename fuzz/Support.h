#pragma once
// What the targets that load projects share: files in memory and what is done with a project that
// was loaded from them.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "project/VBProject.h"
#include "support/MemoryFiles.h"

namespace vendrel::fuzz {

inline std::string_view Text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// Cuts the input at lines of the form "==> NAME <==": the text in front of the first one, then
/// name and text of each file.
std::vector<std::pair<std::string, std::string>> CutFiles(std::string_view input);

/// The first two characters of an input choose the rest: the reading ('c' classic, else complete)
/// and the language ('n' VB.NET, else 5 or 6). They are cut from `input`.
struct Choice {
  bool Classic = false;
  bool DotNet = false;
};
Choice TakeChoice(std::string_view& input);

/// A project with those choices that steps over what fails.
std::shared_ptr<VBProject> NewProject(const Choice& choice);

/// Reads all modules, then prints and walks everything: dump with lines, manifest, names, look-up
/// of every name, and lets go of the source. Aborts if a rule that holds for every input is broken.
void Exercise(VBProject& project);

}  // namespace vendrel::fuzz
