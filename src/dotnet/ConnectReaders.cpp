#include "core/Workspace.h"
#include "dotnet/Assemblies.h"
#include "project/VBProject.h"
#include "typelib/TypeLibService.h"

namespace vendrel {

void VBProject::ConnectReaders() {
  bool& connected = Workspace::Current().ReadersConnected;
  if (connected) return;
  connected = true;
  ConnectLibraryReaders();
  ConnectNetLoaders();
  ConnectMSBuildLoader();
}

}  // namespace vendrel
