// A loader of one's own, in a shared library: it fills a project from a text in which each line is
// a type and its methods.
//
//   Shop.Goods Add Find
//   Shop.Names Find
//
// vendrelmodel tree --loader ./OutlineLoader.so --custom Outline.Loader=outline.txt

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "diagnostics/VendrelError.h"
#include "project/VBProject.h"

using namespace vendrel;

namespace {

class OutlineLoader final : public NetLoader {
 public:
  // `data` is whatever stands behind the "=" of --custom; here it is a path.
  void LoadVBProject(VBProject& project, std::string_view data) override {
    std::ifstream file{std::string(data)};
    if (!file) throw VendrelError(errFileNotFound, data);
    project.ProjectName = "Outline";
    for (std::string line; std::getline(file, line);) AddType(project, line);
  }

 private:
  // The component first, then its members: that is the order which the factories want.
  static void AddType(VBProject& project, const std::string& line) {
    std::istringstream words(line);
    std::string name, method;
    if (!(words >> name)) return;
    const auto component =
        project.netCreateComponent(lsFullyLoadedNoCode, name, "PUBLIC", ftClass,
                                   name + ",System.Object", false, false, "System.Object");
    while (words >> method)
      component->netCreateBlock(btSub, method, "PUBLIC", "", true, "", false, false, false, false);
  }
};

}  // namespace

// The one entry point: refuses another version of the interface by giving its own.
extern "C" std::int32_t VendrelModelCreateLoader(std::int32_t version, const char* progId,
                                                 NetLoader** loader) {
  if (version == kNetLoaderVersion && std::string_view(progId) == "Outline.Loader")
    *loader = new OutlineLoader;
  return kNetLoaderVersion;
}
