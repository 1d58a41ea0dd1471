#include "cli/ClosestName.h"

#include "project/VBProject.h"
#include "text/EditDistance.h"

namespace vendrel::cli {

// One letter in three may be wrong, three at most.
ClosestName::ClosestName(std::string_view typed)
    : mTyped(typed), mAllowed(typed.size() > kLongestCompared ? 0 : typed.size() / 3) {
  if (mAllowed > 3) mAllowed = 3;
  if (mAllowed == 0 && typed.size() > 1 && typed.size() <= kLongestCompared) mAllowed = 1;
}

void ClosestName::Offer(std::string_view name) {
  if (mAllowed == 0 || name.size() > mTyped.size() + mAllowed ||
      mTyped.size() > name.size() + mAllowed || name.size() > kLongestCompared)
    return;
  const std::size_t distance = EditDistance(mTyped, name);
  if (distance > mAllowed || (!mName.empty() && distance == mAllowed)) return;
  mName = name;
  if (distance > 0) mAllowed = distance;
}

void ClosestName::OfferModulesOf(const VBProject& project) {
  for (const Component& module : project.Components.Listed()) Offer(module.Name);
}

std::string ClosestName::Hint() const {
  return mName.empty() ? std::string() : "; did you mean '" + mName + "'?";
}

}  // namespace vendrel::cli
