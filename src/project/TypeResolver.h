#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/WeakHandle.h"

namespace vendrel {

/// Records the type libraries that a project refers to, for clients that resolve types in them.
class TypeResolver : public HandleTarget {
 public:
  /// One library as the project file names it.
  struct Library {
    std::string ClassID;
    std::int32_t Major = 0;
    std::int32_t Minor = 0;
    std::int32_t Locale = 0;
    std::string Path;
  };
  ~TypeResolver() override = default;
  /// True if the registered library of that id could be taken; this recorder keeps the id and
  /// answers false, so that the path follows.
  virtual bool AddTypeLibByID(std::string_view classId, std::int32_t major, std::int32_t minor,
                              std::int32_t locale);
  virtual void AddTypeLibByPath(std::string_view path);
  /// Called after a full population.
  virtual void FinishLoading() { Finished = true; }

  std::vector<Library> Libraries;
  bool Finished = false;
};

}  // namespace vendrel
