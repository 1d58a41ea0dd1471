#include "project/ModulesAhead.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "model/Block.h"
#include "project/VBProject.h"
#include "services/CodePage.h"
#include "services/Paths.h"
#include "services/SourceCache.h"

namespace vendrel {
namespace {

struct ModuleAtHand {
  AsideModule* Module = nullptr;
};

bool Waits(const Component& module) { return module.LoadState == lsNotLoaded; }

}  // namespace

AsideModule* AsideModule::Current() { return InUse<ModuleAtHand>().Module; }

StepOver AsideModule::Ask(std::function<StepOver()> question) {
  std::unique_lock lock(mOwner->mMutex);
  mQuestion = std::move(question);
  mAnswer.reset();
  mState = State::Asking;
  mOwner->mChanged.notify_all();
  mOwner->mChanged.wait(lock, [this] { return mAnswer || mOwner->mStops; });
  mState = State::Loading;
  return mAnswer.value_or(StepOver::Raise);
}

void ChangeProject(std::function<void()> change) {
  if (AsideModule* aside = AsideModule::Current())
    aside->Later(std::move(change));
  else
    change();
}

bool ModulesAhead::MayRead(const VBProject& project, const KeyedCollection<Component>& modules) {
  const Workspace& workspace = project.Workspace();
  return workspace.Jobs > 1 && !AsideModule::Current() &&
         project.LanguageVersion() == lvVisualBasic5or6 &&
         !project.DontPreLoadComponentDeclarations && workspace.State.Silent &&
         !workspace.State.mUpgradeLegacyTaggedcomments && FileSource::Current().MayBeShared() &&
         std::count_if(modules.begin(), modules.end(), Waits) > 1;
}

ModulesAhead::ModulesAhead(VBProject& project, KeyedCollection<Component>& modules)
    : mProject(project) {
  for (Component& component : modules)
    if (Waits(component)) Begin(component);
  const auto jobs = static_cast<std::size_t>(project.Workspace().Jobs);
  while (mStandIns.size() < std::min(jobs, mModules.size())) FurnishAnother();
  try {
    for (Workspace& standIn : mStandIns)
      mThreads.emplace_back([this, &standIn] { ReadUntilDone(standIn); });
  } catch (const std::system_error&) {
    // The system refuses a thread: those that it gave read, or each module is read at its turn.
    if (mThreads.empty()) GiveAllBack();
  }
}

void ModulesAhead::GiveAllBack() {
  for (; mClaimed < mModules.size(); ++mClaimed) {
    mModules[mClaimed].mState = AsideModule::State::Done;
    mModules[mClaimed].mIsGivenBack = true;
  }
}

void ModulesAhead::Begin(Component& component) {
  AsideModule& module = mModules.emplace_back(*this, component, component.FileName.NativePath());
  module.mBytes = SourceCache::TakeBytes(module.mPath);
  mWaiting[&component] = &module;
}

// Surroundings of a thread: what changes while modules are read is its own, the rest is as the
// project has it.
void ModulesAhead::FurnishAnother() {
  const FileOptions& options = FileOptions::Current();
  const DriveMap& drives = DriveMap::Current();
  const std::shared_ptr<FileSource> source = FileSource::Installed();
  Workspace& standIn = mStandIns.emplace_back();
  standIn.StandInFor(mProject.Workspace());
  ShareTags(standIn);
  const Workspace::Use use(standIn);
  FileOptions::Current() = options;
  DriveMap::Current() = drives;
  FileSource::Install(source);
}

ModulesAhead::~ModulesAhead() {
  {
    const std::lock_guard lock(mMutex);
    mStops = true;
  }
  mChanged.notify_all();
  for (std::thread& thread : mThreads) thread.join();
}

void ModulesAhead::ReadUntilDone(Workspace& standIn) {
  std::unique_lock lock(mMutex);
  while (!mStops && mClaimed < mModules.size()) {
    AsideModule& module = mModules[mClaimed++];
    module.mState = AsideModule::State::Loading;
    lock.unlock();
    Read(module, standIn);
    lock.lock();
    module.mState = AsideModule::State::Done;
    // As with this one, so it will be with most.
    if (module.mIsGivenBack) GiveAllBack();
    mChanged.notify_all();
  }
}

void ModulesAhead::Read(AsideModule& module, Workspace& standIn) {
  const Workspace::Use use(standIn);
  standIn.State.BlockID = 1;
  standIn.State.NumberedLines = &module.mNumberedLines;
  InUse<ModuleAtHand>().Module = &module;
  try {
    const SourceCache::Scope readOnce;
    if (module.mBytes) SourceCache::Put(module.mPath, *std::exchange(module.mBytes, std::nullopt));
    module.mModule->Load(false);
  } catch (...) {
    if (!module.mFailure) module.mFailure = std::current_exception();
  }
  InUse<ModuleAtHand>().Module = nullptr;
  module.mBlockIDs = standIn.State.BlockID - 1;
}

void ModulesAhead::Take(Component& component) {
  AsideModule& module = *mWaiting.at(&component);
  mWaiting.erase(&component);
  Await(module);
  if (!module.mIsGivenBack) return Settle(module, component);
  if (module.mBytes) SourceCache::Put(module.mPath, *std::exchange(module.mBytes, std::nullopt));
  component.Load(false);
}

void ModulesAhead::Settle(AsideModule& module, Component& component) {
  ProcessState& state = vendrel::State();
  for (Block& block : component.Blocks) block.BlockID += state.BlockID - 1;
  state.BlockID += module.mBlockIDs;
  for (const std::int32_t number : module.mNumberedLines) state.RaiseLineNumber(number);
  for (const auto& change : module.mLater) change();
  VBProject* project = component.VBProject();
  for (const Diagnostic& item : module.mTold) project->Diagnostics.Add(item);
  module.mTold.Clear();
  module.mLater.clear();
  if (module.mFailure) std::rethrow_exception(module.mFailure);
}

// Until it is read; its questions are answered meanwhile.
void ModulesAhead::Await(AsideModule& module) {
  std::unique_lock lock(mMutex);
  while (true) {
    mChanged.wait(lock, [&] {
      return module.mState == AsideModule::State::Done ||
             (module.mState == AsideModule::State::Asking && !module.mAnswer);
    });
    if (module.mState == AsideModule::State::Done) return;
    lock.unlock();
    StepOver answer = StepOver::Raise;
    try {
      answer = module.mQuestion();
    } catch (...) {
      module.mFailure = std::current_exception();
    }
    lock.lock();
    module.mAnswer = answer;
    mChanged.notify_all();
  }
}

}  // namespace vendrel
