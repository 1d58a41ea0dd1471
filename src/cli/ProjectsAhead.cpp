#include "cli/ProjectsAhead.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <utility>

#include "cli/ProjectSets.h"
#include "cli/WatchedFiles.h"
#include "services/FolderCache.h"

namespace vendrel::cli {

struct ProjectsAhead::Slot {
  enum class State { Free, Loading, Ready };
  std::unique_ptr<Workspace> Own;  // none where a single job uses the one at hand
  Workspace* Surroundings = nullptr;
  // Projects of one folder look for the same libraries in the same places.
  std::optional<KeptFolders> Folders;
  State Is = State::Free;
  std::size_t Index = 0;
  std::shared_ptr<VBProject> Project;
  std::unique_ptr<Task> Done;
  Diagnostics Told;
  std::exception_ptr Failure;
};

namespace {

// Whoever prepares projects counts on one thread.
std::size_t JobsFor(const std::vector<std::string>& paths, const CommonOptions& options,
                    bool mayBeSeveral) {
  return mayBeSeveral ? std::min<std::size_t>(options.JobsAtHand(), paths.size()) : 1;
}

// Where projects are loaded side by side, each of them takes one thread.
CommonOptions ForEach(const CommonOptions& options, std::size_t jobs) {
  return jobs > 1 ? OneAfterTheOther(options) : options;
}

}  // namespace

ProjectsAhead::Turn::Turn(ProjectsAhead& owner, Slot& slot)
    : Project(std::move(slot.Project)),
      Path(owner.mPaths[slot.Index]),
      Done(std::move(slot.Done)),
      IsAside(slot.Own != nullptr),
      mOwner(owner),
      mSlot(slot),
      mUse(*slot.Surroundings) {}

ProjectsAhead::Turn::~Turn() {
  Done.reset();
  Project.reset();
  mOwner.Release(mSlot);
}

ProjectsAhead::ProjectsAhead(std::vector<std::string> paths, const CommonOptions& options,
                             const Streams& streams, LoadDepth depth, Preparation prepare)
    : mPaths(std::move(paths)),
      mJobs(JobsFor(mPaths, options, !prepare)),
      mOptions(ForEach(options, mJobs)),
      mStreams(streams),
      mDepth(depth),
      mPrepare(std::move(prepare)) {
  Start();
}

ProjectsAhead::ProjectsAhead(std::vector<std::string> paths, const CommonOptions& options,
                             const Streams& streams, TaskMaker make)
    : mPaths(std::move(paths)),
      mJobs(JobsFor(mPaths, options, true)),
      mOptions(ForEach(options, mJobs)),
      mStreams(streams),
      mDepth(LoadDepth::Modules),
      mMake(std::move(make)) {
  Start();
}

void ProjectsAhead::Start() {
  if (mJobs <= 1) {
    Slot& slot = mSlots.emplace_back();
    slot.Surroundings = &Workspace::Current();
    slot.Folders.emplace();
    return;
  }
  for (std::size_t i = 0; i < mJobs + 1; ++i) {
    Slot& slot = mSlots.emplace_back();
    slot.Own = std::make_unique<Workspace>();
    slot.Surroundings = slot.Own.get();
    WatchedFiles::ShareWith(*slot.Own);
    const Workspace::Use use(*slot.Own);
    slot.Folders.emplace();
  }
  try {
    for (std::size_t i = 1; i < mJobs; ++i) mWorkers.emplace_back([this] { WorkUntilDone(); });
  } catch (const std::system_error&) {
    // The system refuses a thread: this one loads what the others do not (`Next`).
  }
}

ProjectsAhead::~ProjectsAhead() {
  {
    const std::lock_guard lock(mMutex);
    mStops = true;
  }
  mChanged.notify_all();
  for (std::thread& worker : mWorkers) worker.join();
  for (Slot& slot : mSlots) {
    const Workspace::Use use(*slot.Surroundings);
    slot.Done.reset();
    slot.Project.reset();
  }
}

// Takes the next path that nobody has taken, if there is room for its project. Needs the lock.
ProjectsAhead::Slot* ProjectsAhead::Claim() {
  if (mStops || mClaimed == mPaths.size()) return nullptr;
  for (Slot& slot : mSlots) {
    if (slot.Is != Slot::State::Free) continue;
    slot.Is = Slot::State::Loading;
    slot.Index = mClaimed++;
    return &slot;
  }
  return nullptr;
}

// Side by side, what is shown is how many projects are done, not how far one of them is.
void ProjectsAhead::Load(Slot& slot) {
  const Workspace::Use use(*slot.Surroundings);
  Streams streams = mStreams;
  if (slot.Own) streams.ErrIsTerminal = false;
  try {
    if (mMake) slot.Done = mMake();
    const Preparation prepare =
        mMake ? Preparation([&slot](VBProject& project) { slot.Done->Prepare(project); })
              : mPrepare;
    slot.Project = LoadOneOf(mPaths[slot.Index], mOptions, streams, slot.Told, mDepth, prepare);
    if (slot.Project && slot.Done) slot.Done->Run(*slot.Project);
  } catch (...) {
    slot.Failure = std::current_exception();
  }
  {
    const std::lock_guard lock(mMutex);
    slot.Is = Slot::State::Ready;
  }
  mChanged.notify_all();
}

void ProjectsAhead::WorkUntilDone() {
  std::unique_lock lock(mMutex);
  while (!mStops && mClaimed < mPaths.size()) {
    Slot* slot = Claim();
    if (!slot) {
      mChanged.wait(lock);
      continue;
    }
    lock.unlock();
    Load(*slot);
    lock.lock();
  }
}

void ProjectsAhead::Release(Slot& slot) {
  {
    const std::lock_guard lock(mMutex);
    slot.Is = Slot::State::Free;
  }
  mChanged.notify_all();
}

std::unique_ptr<ProjectsAhead::Turn> ProjectsAhead::Next(Diagnostics& told) {
  if (mGiven == mPaths.size()) return nullptr;
  std::unique_lock lock(mMutex);
  while (true) {
    const auto ready = std::find_if(mSlots.begin(), mSlots.end(), [&](const Slot& slot) {
      return slot.Is == Slot::State::Ready && slot.Index == mGiven;
    });
    if (ready != mSlots.end()) {
      lock.unlock();
      ++mGiven;
      for (const Diagnostic& item : ready->Told) told.Add(item);
      ready->Told.Clear();
      auto turn = std::make_unique<Turn>(*this, *ready);
      if (ready->Failure) std::rethrow_exception(std::exchange(ready->Failure, nullptr));
      return turn;
    }
    // Rather than wait for the others, this thread loads one too.
    if (Slot* slot = Claim()) {
      lock.unlock();
      Load(*slot);
      lock.lock();
    } else {
      mChanged.wait(lock);
    }
  }
}

}  // namespace vendrel::cli
