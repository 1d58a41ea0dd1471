// Conditional compilation: the first line is the constants of the project, lines that begin with
// "#Const" are those of the module, the others are conditions.

#include "Support.h"
#include "core/Workspace.h"
#include "diagnostics/VendrelError.h"

using namespace vendrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = fuzz::Text(data, size);
  const auto project = fuzz::NewProject(fuzz::TakeChoice(input));
  CompilerConstants module;
  bool first = true;
  while (!input.empty()) {
    const std::size_t end = input.find('\n');
    const std::string line(input.substr(0, end));
    input.remove_prefix(end == std::string_view::npos ? input.size() : end + 1);
    try {
      if (first)
        project->CompilerConstants.AddFromProjectLine(line, project.get());
      else if (line.starts_with("#Const"))
        module.AddFromDeclaration(line, project.get());
      else
        module.Evaluate(line, project.get());
    } catch (const VendrelError&) {
      // A condition that does not compile.
    }
    first = false;
  }
  return 0;
}
