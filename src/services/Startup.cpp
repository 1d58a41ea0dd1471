#include "services/Startup.h"

#include "core/Workspace.h"
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
  Workspace& workspace = Workspace::Current();
  if (workspace.Started) return;
  workspace.Started = true;
  workspace.State.SetAutoAppendReader(AutoAppendSetting);
  workspace.State.Reset();
}

}  // namespace vendrel
