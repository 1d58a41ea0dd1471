#pragma once
// "Did you mean ...?": of the names there are the one that is closest to what was typed.

#include <string>
#include <string_view>

#include "model/Fwd.h"

namespace vendrel::cli {

/// Is offered names one by one and keeps the closest.
class ClosestName {
 public:
  explicit ClosestName(std::string_view typed);

  void Offer(std::string_view name);
  /// The names of the modules of a project.
  void OfferModulesOf(const VBProject& project);
  /// The closest name that is close enough to have been meant; empty if none is.
  const std::string& Name() const { return mName; }
  /// "; did you mean 'Post'?", or nothing.
  std::string Hint() const;

 private:
  std::string mTyped, mName;
  std::size_t mAllowed;
};

/// The hint, or `otherwise` where there is none.
inline std::string HintOr(const ClosestName& closest, const std::string& otherwise) {
  return closest.Name().empty() ? otherwise : closest.Hint();
}

}  // namespace vendrel::cli
