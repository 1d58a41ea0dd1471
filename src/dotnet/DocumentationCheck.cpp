#include "dotnet/DocumentationCheck.h"

#include <pugixml.hpp>
#include <unordered_set>

#include "model/Events.h"
#include "services/FileSource.h"
#include "services/FolderCache.h"

namespace vendrel {
namespace {

constexpr std::string_view kPrefixes = "TMPFE";

bool IsMemberName(std::string_view name) {
  return name.size() > 2 && name[1] == ':' && kPrefixes.find(name[0]) != std::string_view::npos;
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string NameOf(const CodeElement& element) {
  if (const auto* component = As<Component>(&element)) return component->DotNetName();
  if (const auto* block = As<Block>(&element)) return block->DotNetName();
  if (const auto* variable = As<Variable>(&element)) return variable->DotNetName();
  if (const auto* event = As<EventDeclaration>(&element)) return event->DotNetName();
  return {};
}

}  // namespace

std::string DocumentationBeside(const std::string& nativePath) {
  ForgetFolders();  // the file may have come just now
  FileSystemObject file(nativePath);
  file.SetExtension("xml");
  return file.Exists() ? file.NativePath() : std::string();
}

std::vector<std::string> DocumentedNames(const std::string& nativePath) {
  const std::string bytes = ReadWholeFile(nativePath);
  // Some files begin with NULs; what follows an error is lost, what precedes it counts.
  const std::size_t start = bytes.find_first_not_of('\0');
  pugi::xml_document document;
  if (start != std::string::npos) document.load_buffer(bytes.data() + start, bytes.size() - start);
  std::vector<std::string> names;
  std::unordered_set<std::string> known;
  for (const pugi::xml_node members : document.child("doc").children("members"))
    for (const pugi::xml_node member : members.children("member")) {
      std::string name(Trimmed(member.attribute("name").as_string()));
      if (IsMemberName(name) && known.insert(name).second) names.push_back(std::move(name));
    }
  return names;
}

DocumentationCheck CheckDocumentation(const VBProject& project,
                                      const std::vector<std::string>& names) {
  DocumentationCheck check;
  check.Names = names.size();
  for (const std::string& name : names) {
    const CodeElement* element = project.GetObjectFromDotNetName(name);
    if (!element) {
      check.Missing.push_back(name);
      continue;
    }
    ++check.Found;
    if (const std::string back = NameOf(*element); back != name)
      check.Different.push_back(name + " -> " + back);
  }
  return check;
}

}  // namespace vendrel
