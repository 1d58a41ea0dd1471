#include "dotnet/DocumentationCheck.h"

#include <algorithm>
#include <unordered_set>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "dotnet/DocumentationFile.h"
#include "dotnet/DocumentedElements.h"
#include "services/FileSource.h"
#include "services/FolderCache.h"

namespace vendrel {
namespace {

constexpr std::string_view kPrefixes = "TMPFE";

bool IsMemberName(std::string_view name) {
  return name.size() > 2 && name[1] == ':' && kPrefixes.find(name[0]) != std::string_view::npos;
}

// "en", "zh-Hans", "sr-Latn-CS"
bool IsCultureFolder(std::string_view name) {
  const std::string_view language = name.substr(0, name.find('-'));
  if (language.size() < 2 || language.size() > 3 || name.size() > 11) return false;
  return std::all_of(language.begin(), language.end(), IsLetterAscii) &&
         std::all_of(name.begin(), name.end(),
                     [](char c) { return c == '-' || IsLetterAscii(c) || IsDigitAscii(c); });
}

std::string WithExtensionXml(const std::string& nativePath) {
  FileSystemObject file(nativePath);
  file.SetExtension("xml");
  return file.Exists() ? file.NativePath() : std::string();
}

bool IsEnglish(std::string_view culture) {
  return EqualsNoCase(culture.substr(0, culture.find('-')), "en");
}

}  // namespace

std::vector<std::string> DocumentationBeside(const std::string& nativePath) {
  ForgetFolders();  // the file may have come just now
  std::vector<std::string> found;
  const auto take = [&](const std::string& assembly) {
    if (std::string file = WithExtensionXml(assembly); !file.empty())
      found.push_back(std::move(file));
  };
  take(nativePath);
  const std::size_t slash = nativePath.rfind('/');
  const std::string folder = nativePath.substr(0, slash + 1), leaf = nativePath.substr(slash + 1);
  std::vector<FolderEntry> entries;
  if (FileSource::Current().List(folder, entries) < 0) return found;
  std::sort(entries.begin(), entries.end(), [](const FolderEntry& a, const FolderEntry& b) {
    const bool aIsEnglish = IsEnglish(a.Name), bIsEnglish = IsEnglish(b.Name);
    return aIsEnglish != bIsEnglish ? aIsEnglish : a.Name < b.Name;
  });
  for (const FolderEntry& entry : entries)
    if ((entry.IsFolder || entry.Unsure) && IsCultureFolder(entry.Name))
      take(folder + entry.Name + "/" + leaf);
  return found;
}

std::vector<std::string> DocumentedNames(const std::vector<std::string>& nativePaths) {
  std::vector<std::string> names;
  std::unordered_set<std::string> known;
  for (const std::string& path : nativePaths)
    for (std::string& name : DocumentationFile::NamesIn(ReadWholeFile(path)))
      if (IsMemberName(name) && known.insert(name).second) names.push_back(std::move(name));
  return names;
}

DocumentationCheck CheckDocumentation(VBProject& project, const std::vector<std::string>& names) {
  DocumentationCheck check;
  check.Names = names.size();
  DocumentedElements elements(project);
  for (const std::string& name : names) {
    const DocumentedElement found = elements.Find(name);
    if (!found.Element) {
      check.Missing.push_back(name);
      continue;
    }
    ++check.Found;
    const std::string back = DocumentedNameOf(*found.Element);
    if (back == name) continue;
    (found.Join == NameJoin::Exact ? check.Different : check.Loose).push_back(name + " -> " + back);
  }
  return check;
}

}  // namespace vendrel
