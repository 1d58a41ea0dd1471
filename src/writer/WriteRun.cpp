#include "writer/WriteRun.h"

#include "core/CaseFold.h"
#include "core/Workspace.h"

namespace vendrel {
namespace {

struct OpenRun {
  WriteRun* Outermost = nullptr;
};

}  // namespace

WriteRun::WriteRun() : mOutermost(InUse<OpenRun>().Outermost), mOuter(mOutermost) {
  if (!mOuter) mOutermost = this;
}

WriteRun::~WriteRun() {
  if (!mOuter) mOutermost = nullptr;
}

WriteRun* WriteRun::Current() { return InUse<OpenRun>().Outermost; }

bool WriteRun::Take(std::string_view backupPath) {
  return mBackups.insert(FoldKey(backupPath)).second;
}

bool WriteRun::Files::Holds(const FileSystemObject& file) const {
  if (mPaths.empty()) return false;
  const FoundPath found = file.Find();
  if (found.Match == PathMatch::None) return false;
  return mIdentities.contains({found.Status.Device, found.Status.Number}) ||
         mPaths.contains(found.Path);
}

void WriteRun::Files::Note(const FileSystemObject& file) {
  const FoundPath found = file.Find();
  if (found.Match == PathMatch::None) return;
  mIdentities.emplace(found.Status.Device, found.Status.Number);
  mPaths.insert(found.Path);
}

}  // namespace vendrel
