// A saved set of any content, with the files that it names behind lines "==> NAME <==": loaded,
// saved, loaded again with as many assemblies, and given its comments.

#include <cstdlib>
#include <pugixml.hpp>
#include <sstream>

#include "Support.h"
#include "comments/CommentFile.h"
#include "diagnostics/VendrelError.h"
#include "project/Assembly.h"

using namespace vendrel;

namespace {

std::string TextOf(const Assemblies& set) {
  pugi::xml_document document;
  set.Save(document.append_child("Assemblies"));
  std::ostringstream text;
  document.save(text, "", pugi::format_raw);
  return text.str();
}

bool Load(Assemblies& set, std::string_view text, const fuzz::Choice& choice) {
  set.NewProject = [choice] { return fuzz::NewProject(choice); };
  try {
    pugi::xml_document document;
    ParseXml(document, text, "set.xml");
    return set.Load(document.document_element());
  } catch (const VendrelError&) {
    return false;
  }
}

void TakeComments(Assemblies& set) {
  for (Assembly& assembly : set) {
    VBProject& project = *assembly.VBProject();
    assembly.IntegrateCommentFile(project, nullptr, true, true);
    assembly.PopulateInheritedComments(project, nullptr, true);
    for (const Component& component : project.Components.Listed())
      set.GetObjectFromQualifiedName(component.QualifiedName());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = fuzz::Text(data, size);
  const fuzz::Choice choice = fuzz::TakeChoice(input);
  const auto files = fuzz::CutFiles(input);
  test::MemoryFiles memory;
  for (std::size_t i = 1; i < files.size(); ++i) memory.Add("/" + files[i].first, files[i].second);
  Assemblies set;
  if (files.empty() || !Load(set, files[0].second, choice)) return 0;
  Assemblies again;
  if (Load(again, TextOf(set), choice) && again.Count() != set.Count()) std::abort();
  try {
    TakeComments(set);
  } catch (const VendrelError&) {
  }
  return 0;
}
