#pragma once
// A documentation site of projects: static pages that open from a folder, without a server.

#include <functional>
#include <string>
#include <vector>

#include "project/VBProject.h"
#include "site/SiteFiles.h"
#include "site/TypeLinks.h"

namespace vendrel::site {

class ReleaseState;

struct SiteOptions {
  std::string Title;
  /// Private members, and in .NET private types, get pages too.
  bool Private = false;
  /// Source is shown, and linked to.
  bool Source = true;
  /// Graphs drawn by Graphviz.
  bool Graphs = false;
  /// A folder that already holds files is taken.
  bool Force = false;
  /// A native folder of files that replace those built in; empty for these.
  std::string AssetsFolder;
  std::vector<OutsideLink> Links;
  /// What another release held; null without comparison.
  const ReleaseState* Before = nullptr;
  /// Told behind each module and each file of source: how many of them are done, how many there
  /// are, and how many files of the site there are so far. May raise, which ends the run; what it
  /// wrote is known to the next one.
  std::function<void(std::size_t done, std::size_t all, std::size_t files)> Progress;
};

/// Writes the site of loaded projects to a native folder. They are to stay as they are; references
/// to each other have been tied. The same projects give the same bytes. Raises what files raise, 75
/// for a folder of something else, 53 for `Graphs` without Graphviz.
FileCounts WriteSite(const std::vector<VBProject*>& projects, const std::string& folder,
                     const SiteOptions& options);

}  // namespace vendrel::site
