#pragma once
// Libraries whose types a library needs and that cannot be found. One such library may be missed
// hundreds of times; a load counts, and tells each library once.

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "typelib/reader/TypeLibInfo.h"

namespace vendrel {

/// The library that holds a type which `importer` refers to, as messages show it; empty where the
/// type is found, or its library is.
std::string MissingLibraryOf(const typelib::TypeLibInfo& importer,
                             typelib::TypeReference reference);

/// While one lives, what needs a missing library is counted instead of told. They nest.
class MissingLibraries {
 public:
  MissingLibraries();
  ~MissingLibraries();
  MissingLibraries(const MissingLibraries&) = delete;
  MissingLibraries& operator=(const MissingLibraries&) = delete;

  /// Counts one thing that needs `library`; false where nobody counts, or none is missing.
  static bool Count(const std::string& library);
  /// Tells each library, in the order in which they were missed, with its count.
  void Report() const;

 private:
  std::vector<std::pair<std::string, std::size_t>> mMissed;
  std::map<std::string, std::size_t> mPlaces;
  MissingLibraries*& mInnermost;  // of the workspace in use
  MissingLibraries* mOuter;
};

}  // namespace vendrel
