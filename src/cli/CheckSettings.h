#pragma once
// The settings files beside the sources, and how much each rule of a check matters: by --rule, and
// by these files.

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "cli/Options.h"
#include "project/VBProject.h"
#include "survey/Assessment.h"
#include "survey/Rules.h"

namespace vendrel::cli {

/// The name of a settings file (TOML). One holds for the folder it lies in and all below; what a
/// nearer one says goes before it.
inline constexpr const char* kSettingsFile = ".vendrelmodel.toml";

/// The settings of a check. Files are looked for when a file of their folder is asked about.
/// Several threads may ask at once.
class CheckSettings {
 public:
  /// `rules`: values of --rule, "ID=LEVEL"; they go before every file. Raises a usage error for one
  /// that is no rule or no level.
  explicit CheckSettings(const std::vector<std::string>& rules);

  struct LevelOfRule {
    RuleLevel Level;
    /// Somebody set it; else it is the rule's own.
    bool IsSet;
  };
  /// For a finding in that file (Windows form). Raises a usage error, with file and line, for a
  /// settings file that cannot be understood.
  LevelOfRule LevelOf(const Rule& rule, const std::string& file);
  /// Whether the rule is on for any module of a project, or for its file.
  bool IsOnIn(const VBProject& project, const Rule& rule);

  /// What holds for a run as a whole: the settings at its first path.
  struct ForRun {
    /// Path of this machine; empty for none.
    std::string Baseline;
    bool Strict = false;
    /// Of [assess].
    HindranceWeights Weights;
    /// Of [unused]: names and patterns of what is used from outside.
    std::vector<std::string> Used;
  };
  ForRun AtPath(const std::string& path);

 private:
  using Levels = std::map<const Rule*, RuleLevel>;
  struct Folder {
    Levels Rules;
    ForRun Run;
  };
  const Folder& At(const std::string& folder);
  const Folder& KnownAt(const std::string& folder);
  static void ReadFile(const FileSystemObject& file, Folder& folder);

  Levels mOfCommandLine;
  /// By folder, in Windows form with its backslash.
  std::map<std::string, std::unique_ptr<const Folder>> mFolders;
  std::mutex mMutex;
};

}  // namespace vendrel::cli
