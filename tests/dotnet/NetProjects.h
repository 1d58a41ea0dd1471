#pragma once
// VB.NET projects given as literals.

#include <string>
#include <utility>
#include <vector>

#include "project/Assembly.h"
#include "support/Projects.h"

namespace vendrel::test {

/// "/n/N.vbproj" with these files; loaded. `more` stands among the references, imports and
/// settings.
class NetProject {
 public:
  using Sources = std::vector<std::pair<std::string, std::string>>;

  NetProject(const Sources& sources, const Prepare& prepare = {}, const std::string& root = "R",
             const std::string& more = {})
      : Files({}), Project(std::make_shared<VBProject>()) {
    std::string listed;
    for (const auto& [name, text] : sources) {
      std::string path = name;
      for (char& c : path)
        if (c == '/') c = '\\';
      listed += "<File RelPath=\"" + path + "\" BuildAction=\"Compile\"/>";
      Files.Add("/n/" + name, text);
    }
    Files.Add("/n/N.vbproj",
              "<VisualStudioProject>\r\n  <VisualBasic ProjectGUID=\"{1}\">\r\n    <Build>"
              "<Settings AssemblyName=\"N\" OutputType=\"Library\" RootNamespace=\"" +
                  root + "\"/>" + more + "</Build>\r\n    <Files><Include>" + listed +
                  "</Include></Files>\r\n  </VisualBasic>\r\n</VisualStudioProject>\r\n");
    if (prepare) prepare(*Project);
    Project->LoadDotNet("/n/N.vbproj");
  }
  Component& operator[](const std::string& key) { return *Project->Components.Item(key.c_str()); }
  /// Keys of all types, in their order.
  std::string Keys() const {
    std::string keys;
    const KeyedCollection<Component>& all = std::as_const(Project->Components).Listed();
    for (std::size_t i = 1; i <= all.Count(); ++i) keys.append(all.KeyOf(i)) += ' ';
    return keys;
  }
  void Resolve() {
    for (ProjectFile& file : Project->ProjectFiles) {
      file.ResolveTypeNames();
      file.ResolveInheritedMembers();
    }
  }

  MemoryFiles Files;
  std::shared_ptr<VBProject> Project;
};

}  // namespace vendrel::test
