// A module of each kind, in both languages and both readings. The first characters choose reading
// and language, the third the kind of module.

#include <array>

#include "Support.h"
#include "diagnostics/VendrelError.h"

using namespace vendrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static constexpr std::array kKinds{"bas", "cls", "frm", "ctl", "dob", "pag", "dsr"};
  std::string_view input = fuzz::Text(data, size);
  const fuzz::Choice choice = fuzz::TakeChoice(input);
  std::size_t kind = 0;
  if (!input.empty()) {
    kind = static_cast<unsigned char>(input.front()) % kKinds.size();
    input.remove_prefix(1);
  }
  const std::string path = std::string("/p/M.") + kKinds[kind];
  test::MemoryFiles files{{path, std::string(input)}};
  try {
    const auto project = fuzz::NewProject(choice);
    if (project->LoadModule(path)) fuzz::Exercise(*project);
  } catch (const VendrelError&) {
  }
  return 0;
}
