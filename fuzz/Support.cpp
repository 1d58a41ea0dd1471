#include "Support.h"

#include <cstdlib>
#include <ostream>
#include <streambuf>

#include "core/Workspace.h"
#include "names/NameWalk.h"
#include "output/Dump.h"
#include "output/Xml.h"

namespace vendrel::fuzz {
namespace {

constexpr std::string_view kOpen = "==> ";
constexpr std::string_view kClose = " <==\n";

// Takes what is printed and keeps nothing.
class Nowhere final : public std::streambuf {
 protected:
  int overflow(int c) override { return c; }
  std::streamsize xsputn(const char*, std::streamsize size) override { return size; }
};

}  // namespace

std::vector<std::pair<std::string, std::string>> CutFiles(std::string_view input) {
  std::vector<std::pair<std::string, std::string>> files{{}};
  while (!input.empty()) {
    std::size_t at = 0;
    while (at != std::string_view::npos && input.substr(at, kOpen.size()) != kOpen) {
      at = input.find('\n', at);
      if (at != std::string_view::npos) ++at;
    }
    files.back().second = input.substr(0, at);
    if (at == std::string_view::npos) break;
    input.remove_prefix(at + kOpen.size());
    const std::size_t end = input.find(kClose);
    if (end == std::string_view::npos) break;
    files.emplace_back(input.substr(0, end), "");
    input.remove_prefix(end + kClose.size());
  }
  return files;
}

Choice TakeChoice(std::string_view& input) {
  Choice choice;
  choice.Classic = input.starts_with('c');
  choice.DotNet = input.size() > 1 && input[1] == 'n';
  input.remove_prefix(input.size() < 2 ? input.size() : 2);
  return choice;
}

std::shared_ptr<VBProject> NewProject(const Choice& choice) {
  State().Reset();
  State().Silent = true;
  auto project = std::make_shared<VBProject>();
  project->SetSilent(true);
  if (!choice.Classic) project->Reading = ReadingRules::Complete();
  if (choice.DotNet) project->SetLanguageVersion(lvVisualBasicDotNet);
  project->OnLineFailure = [](const VendrelError&, std::string_view, std::int32_t) {
    return StepOver::SkipLine;
  };
  return project;
}

void Exercise(VBProject& project) {
  project.Components.Populate();
  Nowhere nowhere;
  std::ostream out(&nowhere);
  DumpOptions options;
  options.Lines = true;
  Dump(out, Describe(project), options);
  project.Manifest(false, true);
  std::size_t names = 0;
  ForEachNamedElement(project, [&](const CodeElement& element) {
    const std::string name = element.QualifiedName();
    if (++names <= 200) project.GetObjectByName(name);
  });
  for (const Component& component : project.Components.Listed())
    for (const Block& block : component.Blocks)
      if (block.StartLine() < 0 || block.EndLine() < 0) std::abort();
  project.UnloadSourceCode();
}

}  // namespace vendrel::fuzz
