#include "services/Startup.h"

#include "core/ProcessState.h"
#include "services/SettingsReader.h"

namespace vendrel {
namespace {

bool AutoAppendSetting() {
  return SettingsReader::Default().ReadValue(HKEY_CURRENT_USER,
                                             "Software\\Vendrelsoft\\VendrelModel_V2",
                                             "AutoAppendUntagged") == "True";
}

}  // namespace

void EnsureStarted() {
  static bool started = false;
  if (started) return;
  started = true;
  ProcessState::SetAutoAppendReader(AutoAppendSetting);
  State().Reset();
  ConnectLibraryReaders();
  ConnectNetLoaders();
}

}  // namespace vendrel
