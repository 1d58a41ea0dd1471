// A registry file of any content, asked for the values that the library asks for.

#include "Support.h"
#include "services/RegistryFile.h"

using namespace vendrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto source = SourceText::Decode(std::string(fuzz::Text(data, size)), CodePage::Default());
  const RegistryFile file(*source);
  for (const char* key : {"HKEY_LOCAL_MACHINE\\Software\\Classes\\TypeLib", "HKEY_CLASSES_ROOT",
                          "HKCR\\VisualBasic.Project\\shell\\make\\command", ""}) {
    file.Value(key, "");
    std::map<std::string, std::string> names;
    file.SubKeys(key, names);
    for (const auto& [folded, name] : names) file.Value(std::string(key) + "\\" + name, "");
  }
  return 0;
}
