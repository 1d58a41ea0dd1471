#include "typelib/TypeLibService.h"

#include <algorithm>
#include <charconv>

#include "core/ObjectRegistry.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "project/VBProject.h"
#include "services/SettingsReader.h"
#include "typelib/reader/LibraryFinder.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel {
namespace {

using typelib::TypeLibInfo;
using typelib::TypeLibOptions;

std::string NativeOf(const std::string& path) { return FileSystemObject(path).NativePath(); }

// A version as the registry keeps it, in hexadecimal: "2.a".
struct RegisteredVersion {
  int Major = 0, Minor = 0;
  std::string Key;
};

RegisteredVersion ParseVersion(const std::string& key) {
  RegisteredVersion version{0, 0, key};
  const char* end = key.data() + key.size();
  const char* dot = std::from_chars(key.data(), end, version.Major, 16).ptr;
  if (dot != end && *dot == '.') std::from_chars(dot + 1, end, version.Minor, 16);
  return version;
}

// Versions of a library that serve in place of the one wanted: that one, then later ones of the
// same major version, the latest first.
std::vector<RegisteredVersion> ServingVersions(const std::string& libraryKey, int major,
                                               int minor) {
  std::vector<RegisteredVersion> versions;
  for (const std::string& key : SettingsReader::Default().SubKeys(HKEY_CLASSES_ROOT, libraryKey)) {
    RegisteredVersion version = ParseVersion(key);
    if (version.Major == major && version.Minor >= minor) versions.push_back(std::move(version));
  }
  std::stable_sort(versions.begin(), versions.end(), [minor](const auto& a, const auto& b) {
    if ((a.Minor == minor) != (b.Minor == minor)) return a.Minor == minor;
    return a.Minor > b.Minor;
  });
  return versions;
}

std::string RegisteredFile(const std::string& libraryId, int major, int minor, unsigned) {
  SettingsReader& settings = SettingsReader::Default();
  const std::string libraryKey = "Typelib\\" + libraryId;
  for (const RegisteredVersion& version : ServingVersions(libraryKey, major, minor)) {
    const std::string versionKey = libraryKey + "\\" + version.Key;
    for (const std::string& language : settings.SubKeys(HKEY_CLASSES_ROOT, versionKey))
      for (const char* system : {"\\Win32", "\\Win64"}) {
        const std::string path =
            settings.ReadValue(HKEY_CLASSES_ROOT, versionKey + "\\" + language + system, "");
        if (!path.empty()) return NativeOf(path);
      }
  }
  return {};
}

class OwnService final : public TLIApplication {
 public:
  std::shared_ptr<const TypeLibInfo> TypeLibInfoFromFile(const std::string& path) override {
    TypeLibOptions options;
    options.CodePage = TextPage();
    options.Finder =
        std::make_shared<typelib::FileLibraryFinder>(SearchPath, RegisteredFile, TextPage());
    return typelib::TypeLibInfoFromFile(NativeOf(path), options);
  }
  std::string LibraryName(const std::string& path) override {
    TypeLibOptions options;
    options.CodePage = TextPage();
    options.HeaderOnly = true;
    return std::string(typelib::TypeLibInfoFromFile(NativeOf(path), options)->Name);
  }
};

std::string NameOfLibrary(const std::string& nativePath) {
  return TLIApplication::New()->LibraryName(nativePath);
}

struct TextPageOfLibraries {
  std::string Name;
};

}  // namespace

std::string TLIApplication::LibraryName(const std::string& Path) {
  const auto library = TypeLibInfoFromFile(Path);
  return library ? std::string(library->Name) : std::string();
}

std::string& TLIApplication::TextPage() { return InUse<TextPageOfLibraries>().Name; }

std::shared_ptr<TLIApplication> TLIApplication::New() {
  auto service = ObjectRegistry::Create<TLIApplication>(kTypeLibProgId);
  return service ? service : std::make_shared<OwnService>();
}

std::string FileVersion(const FileSystemObject& file, std::string_view delimiter) try {
  return typelib::ReadFileVersion(file.NativePath(), std::string(delimiter));
}
VENDREL_CONTEXT(trace::Parameter("file", file.FullPath()), delimiter)

void ConnectLibraryReaders() {
  if (!ObjectRegistry::Has(kTypeLibProgId))
    ObjectRegistry::Register<TLIApplication>(kTypeLibProgId,
                                             [] { return std::make_shared<OwnService>(); });
  FileSystemObject::SetClassIdReader(typelib::ReadLibraryId);
  Reference::SetLibraryNameReader(NameOfLibrary);
}

}  // namespace vendrel
