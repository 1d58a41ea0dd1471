#pragma once
// Projects of a folder, loaded side by side and given in order.

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "cli/Session.h"
#include "core/Workspace.h"

namespace vendrel::cli {

/// Loads each of several projects as `LoadOneOf` does, while those before it are looked at: with N
/// jobs, N are in memory besides the one at hand. Each job has workspaces of its own, one for each
/// project in memory, which the next one takes over with what it knows of folders and libraries.
///
///     ProjectsAhead projects(paths, options, streams, LoadDepth::Modules);
///     while (const auto turn = projects.Next(told))
///       if (turn->Project) ...
///
/// What comes of it, and in which order, does not depend on the number of jobs.
class ProjectsAhead {
 public:
  /// What is done with a project on the thread that loads it: one object a project. It shares
  /// nothing that changes with the others.
  class Task {
   public:
    virtual ~Task() = default;
    /// Gets the project before its modules are read.
    virtual void Prepare(VBProject&) {}
    /// Gets it when it has been read. What is raised is raised again by `Next`.
    virtual void Run(VBProject&) {}
  };
  using TaskMaker = std::function<std::unique_ptr<Task>()>;
  using Preparation = std::function<void(VBProject&)>;
  /// With `prepare`, which gets each project before its modules are read, there is one job.
  ProjectsAhead(std::vector<std::string> paths, const CommonOptions& options,
                const Streams& streams, LoadDepth depth, Preparation prepare = {});
  /// With a task for each project, made by `make` on any thread.
  ProjectsAhead(std::vector<std::string> paths, const CommonOptions& options,
                const Streams& streams, TaskMaker make);
  ~ProjectsAhead();
  ProjectsAhead(const ProjectsAhead&) = delete;
  ProjectsAhead& operator=(const ProjectsAhead&) = delete;

  struct Slot;
  /// One project, with its workspace in use on this thread. Both end with it.
  struct Turn {
    Turn(ProjectsAhead& owner, Slot& slot);
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    /// Null if it could not be read.
    std::shared_ptr<VBProject> Project;
    std::string Path;
    /// What was done with it; null without tasks.
    std::unique_ptr<Task> Done;
    /// It was loaded in a workspace of its own.
    bool IsAside = false;

   private:
    ProjectsAhead& mOwner;
    Slot& mSlot;
    Workspace::Use mUse;
  };
  /// The next one in order; null behind the last. What the load told besides the project's own
  /// diagnostics is added to `told`. The turn before must have ended.
  std::unique_ptr<Turn> Next(Diagnostics& told);

 private:
  void Start();
  Slot* Claim();
  void Load(Slot& slot);
  void WorkUntilDone();
  void Release(Slot& slot);

  const std::vector<std::string> mPaths;
  const std::size_t mJobs;
  const CommonOptions mOptions;
  const Streams& mStreams;
  const LoadDepth mDepth;
  const Preparation mPrepare;
  const TaskMaker mMake;
  std::deque<Slot> mSlots;
  std::size_t mClaimed = 0, mGiven = 0;
  bool mStops = false;
  std::mutex mMutex;
  std::condition_variable mChanged;
  std::vector<std::thread> mWorkers;
};

}  // namespace vendrel::cli
