#include "services/SettingsReader.h"

#include <cstdlib>
#include <map>

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Diagnostic.h"
#include "diagnostics/VendrelError.h"

namespace vendrel {
namespace {

constexpr const char* VariableName = "VENDRELMODEL_REGISTRY";

struct InstalledReader {
  std::shared_ptr<SettingsReader> Reader = std::make_shared<SettingsReader>();
};

// The places in which a key may stand, the nearest first. Programs of 32 bits, which is what is
// read here, had a branch of their own on later machines.
std::vector<std::string> Places(HiveEnum hive, std::string_view keyPath) {
  const std::string key(keyPath);
  switch (hive) {
    case HKEY_CLASSES_ROOT:
      return {"HKEY_CURRENT_USER\\Software\\Classes\\" + key,
              "HKEY_LOCAL_MACHINE\\Software\\Classes\\" + key,
              "HKEY_LOCAL_MACHINE\\Software\\Classes\\Wow6432Node\\" + key,
              "HKEY_LOCAL_MACHINE\\Software\\Wow6432Node\\Classes\\" + key};
    case HKEY_CURRENT_USER: return {"HKEY_CURRENT_USER\\" + key};
    case HKEY_LOCAL_MACHINE:
      if (StartsWithNoCaseAscii(key, "software\\"))
        return {"HKEY_LOCAL_MACHINE\\" + key,
                "HKEY_LOCAL_MACHINE\\Software\\Wow6432Node" + key.substr(8)};
      return {"HKEY_LOCAL_MACHINE\\" + key};
    default: return {"HKEY_USERS\\" + key};
  }
}

struct SystemVariable {
  std::string_view Name, Key, Value, Usual;
};
constexpr std::string_view Versions =
    "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion";
constexpr std::string_view SystemKey =
    "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows NT\\CurrentVersion";
constexpr SystemVariable SystemVariables[] = {
    {"SystemRoot", SystemKey, "SystemRoot", "C:\\windows"},
    {"windir", SystemKey, "SystemRoot", "C:\\windows"},
    {"SystemDrive", "", "", "C:"},
    {"ProgramFiles", Versions, "ProgramFilesDir", "C:\\Program Files"},
    {"CommonProgramFiles", Versions, "CommonFilesDir", "C:\\Program Files\\Common Files"},
};

}  // namespace

SettingsReader& SettingsReader::Default() { return *InUse<InstalledReader>().Reader; }

void SettingsReader::Install(std::shared_ptr<SettingsReader> reader) {
  InUse<InstalledReader>().Reader = reader ? std::move(reader) : std::make_shared<SettingsReader>();
}

void SettingsReader::Refresh() {
  const char* value = std::getenv(VariableName);
  std::string variable = value ? value : "";
  if (mRead && variable == mVariable) {
    for (ExportFile& file : mFiles)
      if (!file.Values) Read(file, false);
    return;
  }
  mRead = true;
  mVariable = std::move(variable);
  mFiles.clear();
  std::string_view rest = mVariable;
  while (!rest.empty()) {
    std::string path(TakeField(rest, ':'));
    if (!path.empty()) Read(mFiles.emplace_back(ExportFile{std::move(path), {}}), true);
  }
}

void SettingsReader::Read(ExportFile& file, bool tellFailure) {
  try {
    file.Values.emplace(*SourceText::Read(file.Path));
  } catch (const VendrelError& error) {
    if (tellFailure) Report(DiagnosticCode::UnreadableFile, {file.Path, error.Text()});
  }
}

const RegistryValue* SettingsReader::Find(const std::vector<std::string>& keyPaths,
                                          std::string_view valueName) {
  for (const std::string& keyPath : keyPaths)
    for (const ExportFile& file : mFiles)
      if (const RegistryValue* value =
              file.Values ? file.Values->Value(keyPath, valueName) : nullptr)
        return value;
  return nullptr;
}

std::string SettingsReader::ReadValue(HiveEnum hive, std::string_view keyPath,
                                      std::string_view valueName) {
  Refresh();
  if (mFiles.empty()) return {};
  const RegistryValue* value = Find(Places(hive, keyPath), valueName);
  if (!value) return {};
  return value->Expandable ? Expand(value->Text) : value->Text;
}

std::vector<std::string> SettingsReader::SubKeys(HiveEnum hive, std::string_view keyPath) {
  Refresh();
  std::map<std::string, std::string> names;
  for (const std::string& place : Places(hive, keyPath))
    for (const ExportFile& file : mFiles)
      if (file.Values) file.Values->SubKeys(place, names);
  std::vector<std::string> result;
  result.reserve(names.size());
  for (auto& [folded, name] : names) result.push_back(std::move(name));
  return result;
}

// "%SystemRoot%\x.tlb": the variables in which paths of libraries are written; others stay.
std::string SettingsReader::Expand(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t open = text.find('%');
    const std::size_t close = open == std::string_view::npos ? open : text.find('%', open + 1);
    if (close == std::string_view::npos) return result.append(text);
    result.append(text.substr(0, open));
    const std::string_view name = text.substr(open + 1, close - open - 1);
    const SystemVariable* known = nullptr;
    for (const SystemVariable& variable : SystemVariables)
      if (EqualsNoCaseAscii(variable.Name, name)) known = &variable;
    const RegistryValue* value = known ? Find({std::string(known->Key)}, known->Value) : nullptr;
    if (known)
      result.append(value ? std::string_view(value->Text) : known->Usual);
    else
      result.push_back('%');
    text.remove_prefix(known ? close + 1 : open + 1);
    if (!known) {
      result.append(name);
      text.remove_prefix(name.size());
    }
  }
  return result;
}

}  // namespace vendrel
