#pragma once
// What a load depends on and what is not the tree: where files come from, drives, settings, outside
// objects, tag definitions, the counters of the process. Each room keeps its part here, made at its
// first use, so that the ground floor names no room above it.

#include <cstddef>
#include <memory>
#include <vector>

#include "core/ProcessState.h"

namespace vendrel {

class CellPool;
class TextPool;

/// The surroundings of one or more projects. A project, group or set belongs to the workspace that
/// was in use when it was made, and puts it in use itself while it loads, writes or builds. One
/// workspace is used by one thread at a time; two are used by two threads at once.
///
///     vendrel::Workspace workspace;
///     const vendrel::Workspace::Use use(workspace);  // for this thread, until the scope ends
///     vendrel::VBProject project;                    // belongs to `workspace`
///
/// It must outlive what belongs to it.
class Workspace {
 public:
  Workspace();
  ~Workspace();
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;

  /// The process's own, to which everything belongs that was made without another. Never ends.
  static Workspace& Process();
  /// The one in use on this thread: that of the innermost `Use`, else the process's own.
  static Workspace& Current() { return sInUse ? *sInUse : Process(); }

  /// Puts a workspace in use on this thread, until it ends. Nests; must end on its thread.
  class Use {
   public:
    explicit Use(Workspace& workspace) : mBefore(sInUse) {
      if (!sInUse || sInUse->mStandsFor != &workspace) sInUse = &workspace;
    }
    ~Use() { sInUse = mBefore; }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

   private:
    Workspace* mBefore;
  };

  /// Makes this the one that a second thread uses for projects of `other`: where the other one is
  /// put in use beside it, this stays, with the values that the other has now and parts of its own.
  void StandInFor(const Workspace& other) {
    mStandsFor = &other;
    State = other.State;
  }

  /// How many threads read the modules of a project. With 1 the library starts none.
  int Jobs = 1;
  /// The values of `modMain`.
  ProcessState State;
  /// Where equal texts are found again while a module is read; mostly null (core/SharedText.h).
  TextPool* Texts = nullptr;
  /// Where links take their memory meanwhile (core/WeakHandle.h).
  CellPool* Cells = nullptr;
  /// Whether the start values were set (`EnsureStarted`).
  bool Started = false;
  /// Whether the readers of compiled files are known (`VBProject::ConnectReaders`).
  bool ReadersConnected = false;

  /// The part of that type, made without arguments at its first use. Parts end in the opposite
  /// order.
  template <typename Part>
  Part& Get() {
    for (const Slot& slot : mSlots)
      if (slot.Tag == &kTag<Part>) return *static_cast<Part*>(slot.Object.get());
    auto part = std::make_shared<Part>();
    Part& result = *part;
    mSlots.push_back({&kTag<Part>, std::move(part)});
    return result;
  }

 private:
  struct Slot {
    const char* Tag;
    std::shared_ptr<void> Object;
  };
  template <typename Part>
  static constexpr char kTag = 0;

  const Workspace* mStandsFor = nullptr;
  std::vector<Slot> mSlots;
  static thread_local constinit Workspace* sInUse;
};

/// The values of `modMain` in the workspace in use.
inline ProcessState& State() { return Workspace::Current().State; }

/// The part of that type in the workspace in use.
template <typename Part>
Part& InUse() {
  return Workspace::Current().Get<Part>();
}

}  // namespace vendrel
