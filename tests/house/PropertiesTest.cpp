// Holds the tables of properties to be complete: a public data member of a class stands in its
// table, unless it is no value of the element.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "output/Describe.h"
#include "support/SourceRoot.h"

namespace vendrel {
namespace {

namespace fs = std::filesystem;

// Caches, events, hooks, diagnostics, texts of whole files, lists of what is no element.
const std::regex kNoValue(
    "TypeCache|EventList|Diagnostics|shared_ptr<const|TagCollection|std::pair|std::function|"
    "ReadingRules|unordered_set|ControlSpan|ExternalDocs|vendrel::Assemblies|std::vector<std::"
    "shared_ptr");

// Class and public data members of each class of a header that has a table of its own or, as the
// options do, adds to that of another.
void ReadClasses(const fs::path& header, std::map<std::string, std::set<std::string>>& members) {
  static const std::regex opening("(?:class|struct) (\\w+)[^;]*\\{");
  static const std::regex member("  (\\w[\\w:<>, *]*[>\\w*]) (\\w+)(?: = [^;]*)?;");
  std::ifstream input(header);
  std::string name;
  bool isPublic = false;
  std::smatch found;
  for (std::string line; std::getline(input, line);) {
    if (std::regex_match(line, found, opening)) {
      name = found[1];
      isPublic = true;
    } else if (line == " private:" || line == " protected:") {
      isPublic = false;
    } else if (line == " public:") {
      isPublic = true;
    } else if (isPublic && std::regex_match(line, found, member)) {
      const std::string type = found[1], field = found[2];
      const bool isState = field.size() > 1 && field[0] == 'm' && std::isupper(field[1]);
      if (!isState && type != "using" && type != "friend class" && type != "struct" &&
          !std::regex_search(type, kNoValue))
        members[name].insert(field);
    }
  }
}

TEST(Properties, TablesAreComplete) {
  std::map<std::string, std::set<std::string>> members;
  for (const char* room : {"model", "project"})
    for (const auto& entry : fs::directory_iterator(fs::path(test::SourceRoot()) / "src" / room))
      if (entry.path().extension() == ".h") ReadClasses(entry.path(), members);
  members["VBProject"].merge(members["ProjectOptions"]);
  std::size_t known = 0;
  for (const ClassDescription* description : AllClasses()) {
    std::set<std::string> missing = members[std::string(description->Name)];
    for (const PropertyDescription& property : description->AllProperties)
      known += missing.erase(std::string(property.Name));
    for (const std::string& name : missing)
      ADD_FAILURE() << description->Name << "." << name << " is missing from Properties()";
  }
  EXPECT_GT(known, 200u);  // else the headers were not understood
}

}  // namespace
}  // namespace vendrel
