#include "project/BeginLoad.h"

#include "core/Workspace.h"
#include "services/FolderCache.h"

namespace vendrel {

void BeginLoad() {
  ForgetFoldersOfLoad();
  ProcessState& state = State();
  state.lLineNumber = 5;
  state.LineID = 1;
  state.BlockID = 1;
  state.CurrentLineNumber = 0;
  state.LineNumberIncrement = 0;
  state.FileCopy_LastError.clear();
}

}  // namespace vendrel
