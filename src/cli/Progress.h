#pragma once
// How far a run is: shown on a terminal while modules load, told where a signal stops it.

#include <chrono>
#include <cstdint>
#include <ostream>
#include <string>

#include "cli/Interrupts.h"
#include "cli/Options.h"
#include "core/Workspace.h"
#include "project/VBProject.h"

namespace vendrel::cli {

/// A bar on the terminal while the modules of a project load, with their rate and the time that is
/// left; gone when they are. A signal that comes meanwhile stops the load behind the module at
/// hand.
class ProgressBar {
 public:
  ProgressBar(VBProject& project, const CommonOptions& options, const Streams& streams);
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  /// Takes the bar away. Raises `Interrupted` where a signal stopped the load.
  void Finish();

 private:
  void Reach(std::int32_t done);

  const InterruptHold mHold;
  VBProject& mProject;
  std::ostream& mErr;
  bool mIsShowing;
};

/// While one lives several projects are read, and the bar tells how many.
class ProgressOfMany {
 public:
  ProgressOfMany(std::size_t count, const CommonOptions& options, const Streams& streams);
  ~ProgressOfMany();
  ProgressOfMany(const ProgressOfMany&) = delete;
  ProgressOfMany& operator=(const ProgressOfMany&) = delete;
  /// The next one is read.
  void Step();
  /// Counts the modules of a project that was loaded beside this thread.
  void Add(const VBProject& project);
  /// Takes the bar away, in front of what is told of the project.
  void Clear();

 private:
  Workspace& mWorkspace;  // of the run; that of a project may be in use meanwhile
  std::ostream& mErr;
  bool mIsShowing;
};

/// A bar on the terminal while the pages of a site are written. A signal that comes meanwhile stops
/// it between two files.
class ProgressOfPages {
 public:
  ProgressOfPages(const CommonOptions& options, const Streams& streams);
  ~ProgressOfPages();
  ProgressOfPages(const ProgressOfPages&) = delete;
  ProgressOfPages& operator=(const ProgressOfPages&) = delete;
  void Reach(std::size_t done, std::size_t all, std::size_t files);
  /// How many files of the site there are.
  std::size_t Files() const { return mFiles; }

 private:
  const InterruptHold mHold;
  std::ostream& mErr;
  bool mIsShowing, mIsShown = false;
  std::size_t mFiles = 0;
  std::chrono::steady_clock::time_point mStart, mNext;
};

/// "12 of 97 modules of /p/Shop.vbp had been read; " where a load was under way, else nothing.
std::string ReachedSoFar();

}  // namespace vendrel::cli
