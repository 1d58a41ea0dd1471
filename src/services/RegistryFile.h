#pragma once
// One file of registry text: an export ("Windows Registry Editor Version 5.00", "REGEDIT4") or the
// form in which Wine keeps its registry ("WINE REGISTRY Version 2").

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "services/SourceText.h"

namespace vendrel {

/// A value as text: strings as they are, numbers as decimal text, lists of strings with line feeds
/// between; other data is empty.
struct RegistryValue {
  std::string Text;
  /// The text holds names of variables between "%".
  bool Expandable = false;
};

/// Keys and values of one file. Letter case counts nowhere. Within a file the last entry wins, and
/// entries that delete are obeyed. Any input is read; what is not understood is passed over.
class RegistryFile {
 public:
  explicit RegistryFile(const SourceText& source);

  /// `keyPath` starts with a hive: "HKEY_LOCAL_MACHINE\Software\...". An empty `valueName` is the
  /// default value of the key. nullptr if there is no such value.
  const RegistryValue* Value(std::string_view keyPath, std::string_view valueName) const;
  /// Adds the names of the keys directly below, folded name to name as written; one already there
  /// stays.
  void SubKeys(std::string_view keyPath, std::map<std::string, std::string>& names) const;

 private:
  friend class RegistryParser;
  struct Key {
    std::string Path;
    std::map<std::string, RegistryValue> Values;
  };
  // By folded path with U+0001 between the parts: the keys below one follow it directly.
  std::map<std::string, Key> mKeys;
};

/// A path of keys as `RegistryFile` keeps it: HKEY_CLASSES_ROOT is part of HKEY_LOCAL_MACHINE,
/// short names of hives and the keys of one user are written out.
std::string CanonicalKeyPath(std::string_view keyPath);

}  // namespace vendrel
