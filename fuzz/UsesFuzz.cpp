// Modules of a project, whose names are bound: each use has a place behind the one in front of it,
// and no token two answers. The first characters choose reading and language; behind a line
// "==> NAME <==" another module follows.

#include <cstdlib>

#include "Support.h"
#include "diagnostics/VendrelError.h"
#include "uses/UseIndex.h"

using namespace vendrel;

namespace {

void Bind(VBProject& project) {
  UseIndex index;
  UseBinder binder(project, {true, true});
  for (const Component& module : project.Components.Listed()) {
    std::pair<std::int32_t, std::int32_t> last;
    binder.Bind(module, [&](const NameUse& use) {
      const std::pair place{use.Line, use.Column};
      const bool goesOn = use.Secondary ? place >= last : place > last;
      if (!goesOn || use.EndColumn <= use.Column || use.StatementLine > use.Line) std::abort();
      if (!use.Secondary) last = place;
      static_cast<void>(MeaningOf(use));
      index.Add(use);
    });
  }
  static_cast<void>(index.Edges());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = fuzz::Text(data, size);
  const fuzz::Choice choice = fuzz::TakeChoice(input);
  const auto modules = fuzz::CutFiles(input);
  test::MemoryFiles files;
  std::string project = "Type=Exe\r\nReference=*\\G{1}#1.0#0#none.tlb#None\r\nName=\"P\"\r\n";
  for (std::size_t i = 0; i < modules.size(); ++i) {
    const std::string name = i == 0 ? "M.bas" : modules[i].first;
    files.Add("/p/" + name, modules[i].second);
    const bool isForm = name.ends_with(".frm"), isClass = name.ends_with(".cls");
    const bool isControl = name.ends_with(".ctl");
    project += isForm      ? "Form=" + name
               : isControl ? "UserControl=" + name
               : isClass   ? "Class=C" + std::to_string(i) + "; " + name
                           : "Module=M" + std::to_string(i) + "; " + name;
    project += "\r\n";
  }
  files.Add("/p/P.vbp", project);
  const auto loaded = fuzz::NewProject(choice);
  try {
    if (!loaded->Load("/p/P.vbp")) return 0;
    loaded->Components.Populate();
  } catch (const VendrelError&) {
    return 0;  // a clear error is an answer
  }
  Bind(*loaded);
  return 0;
}
