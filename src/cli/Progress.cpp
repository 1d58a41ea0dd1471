#include "cli/Progress.h"

#include <algorithm>
#include <cmath>

#include "cli/Report.h"
#include "cli/ShownText.h"
#include "core/Workspace.h"

namespace vendrel::cli {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kPatience = std::chrono::milliseconds(300);
constexpr auto kStep = std::chrono::milliseconds(50);

// Of the run in the workspace in use.
struct Reached {
  /// The project at hand, in Windows form; empty between two.
  std::string Path;
  std::size_t Done = 0, All = 0;
  /// Of several projects; 0 of 0 for one alone.
  std::size_t Project = 0, Projects = 0;
  /// Modules of those before.
  std::size_t Before = 0;
  Clock::time_point Start, Next;
  bool IsShown = false;

  void Begin() {
    Start = Clock::now();
    Next = Start + kPatience;
    Before = 0;
  }
};

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// "3 s", "2 min".
std::string Duration(double seconds) {
  if (seconds < 100) return std::to_string(std::lround(std::ceil(seconds))) + " s";
  return std::to_string(std::lround(seconds / 60)) + " min";
}

std::string BarOf(double share) {
  constexpr std::size_t width = 30;
  const auto filled = std::min(width, static_cast<std::size_t>(share * width));
  return "[" + std::string(filled, '#') + std::string(width - filled, ' ') + "] ";
}

std::string LineOf(const Reached& reached) {
  const double inProject =
      reached.All == 0 ? 1 : static_cast<double>(reached.Done) / static_cast<double>(reached.All);
  const double share = reached.Projects == 0
                           ? inProject
                           : (static_cast<double>(reached.Project - 1) + inProject) /
                                 static_cast<double>(reached.Projects);
  std::string line = BarOf(share);
  if (reached.Projects > 0)
    line += "project " + std::to_string(reached.Project) + " of " +
            std::to_string(reached.Projects) + ", ";
  else
    line += std::to_string(reached.Done) + " of " + CountedWith(reached.All, "module") + ", ";
  const double seconds = std::max(SecondsSince(reached.Start), 0.001);
  line +=
      std::to_string(std::lround(static_cast<double>(reached.Before + reached.Done) / seconds)) +
      " modules a second";
  if (share > 0.02) line += ", " + Duration(seconds * (1 - share) / share) + " left";
  return line;
}

bool ShowsBar(const CommonOptions& options, const Streams& streams) {
  return streams.ErrIsTerminal && !options.Quiet && !IsDumbTerminal();
}

void ShowLine(Reached& reached, std::ostream& err) {
  const auto now = Clock::now();
  if (now < reached.Next) return;
  reached.Next = now + kStep;
  err << "\r\033[K" << LineOf(reached) << std::flush;
  reached.IsShown = true;
}

void HideLine(Reached& reached, std::ostream& err) {
  if (reached.IsShown) err << "\r\033[K" << std::flush;
  reached.IsShown = false;
}

}  // namespace

ProgressBar::ProgressBar(VBProject& project, const CommonOptions& options, const Streams& streams)
    : mProject(project), mErr(streams.Err), mIsShowing(ShowsBar(options, streams)) {
  Reached& reached = InUse<Reached>();
  if (reached.Projects == 0) reached.Begin();
  reached.Path = project.FileName.FullPath();
  reached.Done = 0;
  reached.All = project.Components.Count();
  project.ComponentLoaded.Add([this](std::int32_t index) { Reach(index); });
}

ProgressBar::~ProgressBar() { mProject.ComponentLoaded.Clear(); }

void ProgressBar::Reach(std::int32_t done) {
  Reached& reached = InUse<Reached>();
  reached.Done = static_cast<std::size_t>(done);
  if (NotedSignal() != 0) mProject.CancelLoad = true;
  if (mIsShowing) ShowLine(reached, mErr);
}

void ProgressBar::Finish() {
  Reached& reached = InUse<Reached>();
  mProject.ComponentLoaded.Clear();
  HideLine(reached, mErr);
  LookForSignal();
  reached.Before += reached.Done;
  reached.Path.clear();
}

ProgressOfMany::ProgressOfMany(std::size_t count, const CommonOptions& options,
                               const Streams& streams)
    : mWorkspace(Workspace::Current()), mErr(streams.Err), mIsShowing(ShowsBar(options, streams)) {
  Reached& reached = mWorkspace.Get<Reached>();
  reached.Begin();
  reached.Project = 0;
  reached.Projects = count;
}

ProgressOfMany::~ProgressOfMany() { mWorkspace.Get<Reached>().Projects = 0; }

void ProgressOfMany::Step() {
  Reached& reached = mWorkspace.Get<Reached>();
  if (reached.Project == reached.Projects) return;
  ++reached.Project;
  if (mIsShowing) ShowLine(reached, mErr);
}

void ProgressOfMany::Add(const VBProject& project) {
  mWorkspace.Get<Reached>().Before += project.Components.Count();
}

void ProgressOfMany::Clear() { HideLine(mWorkspace.Get<Reached>(), mErr); }

ProgressOfPages::ProgressOfPages(const CommonOptions& options, const Streams& streams)
    : mErr(streams.Err),
      mIsShowing(ShowsBar(options, streams)),
      mStart(Clock::now()),
      mNext(mStart + kPatience) {}

ProgressOfPages::~ProgressOfPages() {
  if (mIsShown) mErr << "\r\033[K" << std::flush;
}

void ProgressOfPages::Reach(std::size_t done, std::size_t all, std::size_t files) {
  mFiles = files;
  LookForSignal();
  if (!mIsShowing || Clock::now() < mNext) return;
  mNext = Clock::now() + kStep;
  mIsShown = true;
  const double share = static_cast<double>(done) / static_cast<double>(std::max(all, done));
  const double seconds = std::max(SecondsSince(mStart), 0.001);
  mErr << "\r\033[K" << BarOf(share) << CountedWith(files, "page") << ", "
       << std::lround(static_cast<double>(files) / seconds) << " pages a second";
  if (share > 0.02) mErr << ", " << Duration(seconds * (1 - share) / share) << " left";
  mErr << std::flush;
}

std::string ReachedSoFar() {
  const Reached& reached = InUse<Reached>();
  if (reached.Path.empty() && reached.Projects > 0)  // they were read side by side
    return std::to_string(std::max<std::size_t>(reached.Project, 1) - 1) + " of " +
           CountedWith(reached.Projects, "project") + " had been read; ";
  if (reached.Path.empty()) return {};
  std::string text = std::to_string(reached.Done) + " of " + CountedWith(reached.All, "module") +
                     " of " + ShownPaths().Of(reached.Path) + " had been read; ";
  if (reached.Projects > 0)
    text = "in project " + std::to_string(reached.Project) + " of " +
           std::to_string(reached.Projects) + ", " + text;
  return text;
}

}  // namespace vendrel::cli
