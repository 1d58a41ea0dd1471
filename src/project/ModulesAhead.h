#pragma once
// Modules of one project read side by side. Each thread reads whole modules, in a workspace that
// stands in for that of the project; what a module does to its project waits for its turn, so that
// the tree, what is told and the order of both are those of one thread.

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include "core/Workspace.h"
#include "diagnostics/Diagnostic.h"
#include "diagnostics/ErrorReport.h"
#include "model/Component.h"

namespace vendrel {

class ModulesAhead;

/// A module that is read before its turn.
class AsideModule {
 public:
  /// The one that this thread reads; null where a module is read at its turn.
  static AsideModule* Current();

  AsideModule(ModulesAhead& owner, Component& module, std::string path)
      : mOwner(&owner), mModule(&module), mPath(std::move(path)) {}

  /// What the module tells.
  Diagnostics& Told() { return mTold; }
  /// Keeps a change of the project until its turn.
  void Later(std::function<void()> change) { mLater.push_back(std::move(change)); }
  /// Leaves the module to its turn, as if nobody had begun with it.
  void GiveBack() { mIsGivenBack = true; }
  /// What the host answers, on its own thread, at the turn of the module.
  StepOver Ask(std::function<StepOver()> question);

 private:
  friend class ModulesAhead;
  enum class State { Free, Loading, Asking, Done };

  ModulesAhead* mOwner;
  Component* mModule;
  std::string mPath;
  std::optional<std::string> mBytes;
  State mState = State::Free;
  bool mIsGivenBack = false;
  Diagnostics mTold;
  std::vector<std::function<void()>> mLater;
  std::vector<std::int32_t> mNumberedLines;
  std::int32_t mBlockIDs = 0;
  std::exception_ptr mFailure;
  std::function<StepOver()> mQuestion;
  std::optional<StepOver> mAnswer;
};

/// Changes a project now, or at the turn of the module that this thread reads ahead.
void ChangeProject(std::function<void()> change);

/// The modules of one population. Used by the thread of the population alone.
class ModulesAhead {
 public:
  /// Begins to read those of `modules` that nobody has begun with, on `Workspace.Jobs` threads.
  ModulesAhead(VBProject& project, KeyedCollection<Component>& modules);
  /// Waits for what is under way.
  ~ModulesAhead();
  ModulesAhead(const ModulesAhead&) = delete;
  ModulesAhead& operator=(const ModulesAhead&) = delete;

  /// Whether a population is one that several threads may share: of Visual Basic 6, of several
  /// modules, without boxes to be shown and from files that may be read by any thread.
  static bool MayRead(const VBProject& project, const KeyedCollection<Component>& modules);

  /// Whether a module is among those read ahead whose turn has not come.
  bool Has(const Component& module) const { return mWaiting.contains(&module); }
  /// The turn of a module: what it did to its project is done. Raises what its load raised.
  void Take(Component& module);

 private:
  friend class AsideModule;
  void Begin(Component& component);
  void FurnishAnother();
  // comments/
  /// Has a workspace that stands in know the tags of the one in use.
  static void ShareTags(Workspace& standIn);
  void ReadUntilDone(Workspace& standIn);
  /// Leaves each module that nobody has begun with to its turn. Needs the lock, once threads run.
  void GiveAllBack();
  static void Read(AsideModule& module, Workspace& standIn);
  void Await(AsideModule& module);
  static void Settle(AsideModule& module, Component& component);

  VBProject& mProject;
  std::deque<AsideModule> mModules;
  std::unordered_map<const Component*, AsideModule*> mWaiting;
  std::deque<Workspace> mStandIns;
  std::size_t mClaimed = 0;
  bool mStops = false;
  std::mutex mMutex;
  std::condition_variable mChanged;
  std::vector<std::thread> mThreads;
};

}  // namespace vendrel
