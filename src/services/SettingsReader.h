#pragma once
// Registry values, on a machine without a registry.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "services/RegistryFile.h"

namespace vendrel {

/// Handle values of the hives, as published.
enum HiveEnum : std::uint32_t {
  HKEY_CLASSES_ROOT = 0x80000000u,
  HKEY_CURRENT_USER = 0x80000001u,
  HKEY_LOCAL_MACHINE = 0x80000002u,
  HKEY_USERS = 0x80000003u,
};

/// Reads values from the files named by the environment variable VENDRELMODEL_REGISTRY (native
/// paths with colons between). Files are read at the first question, and again when the variable
/// has changed. The first file that has a value wins. A file that cannot be read is told as a
/// diagnostic once, and tried again at the next question. A host with a registry of its own derives
/// from this class and installs its object.
class SettingsReader {
 public:
  SettingsReader() = default;
  virtual ~SettingsReader() = default;
  SettingsReader(const SettingsReader&) = delete;
  SettingsReader& operator=(const SettingsReader&) = delete;

  /// A value as text. An empty `valueName` is the key's default value. A missing key or value, and
  /// data that is neither text nor number, give empty text. HKEY_CLASSES_ROOT is seen as the
  /// classes of the user, then those of the machine, those for 32-bit programs last.
  virtual std::string ReadValue(HiveEnum hive, std::string_view keyPath,
                                std::string_view valueName);
  /// Names of the keys directly below a key, as written, in order with letter case ignored.
  virtual std::vector<std::string> SubKeys(HiveEnum hive, std::string_view keyPath);

  /// The reader in force, made at its first use.
  static SettingsReader& Default();
  /// Puts a reader in force; an empty pointer restores the one for files.
  static void Install(std::shared_ptr<SettingsReader> reader);

 private:
  void Refresh();
  const RegistryValue* Find(const std::vector<std::string>& keyPaths, std::string_view valueName);
  std::string Expand(std::string_view text);

  /// A file that could not be read has no values, and is tried again.
  struct ExportFile {
    std::string Path;
    std::optional<RegistryFile> Values;
  };
  void Read(ExportFile& file, bool tellFailure);

  bool mRead = false;
  std::string mVariable;
  std::vector<ExportFile> mFiles;
};

}  // namespace vendrel
