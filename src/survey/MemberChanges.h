#pragma once
// One member of a public surface against itself: what it gives and takes.

#include <string>
#include <string_view>
#include <vector>

#include "survey/ApiChanges.h"

namespace vendrel {

/// Gathers changes, each with whom it breaks in its world.
struct ChangeTeller {
  SurfaceWorld World;
  /// No caller was compiled before the change.
  bool IsShared;
  std::vector<ApiChange> Changes;

  void Tell(ApiChange change);
  /// A type or member that only one surface has.
  void Tell(ApiRuleId rule, const SurfaceType& type, bool isGone = true);
  void Tell(ApiRuleId rule, const SurfaceMember& member, bool isGone = true);
  /// A type or member of both.
  void Tell(ApiRuleId rule, const SurfaceType& before, const SurfaceType& after,
            std::string beforeText, std::string afterText);
  void Tell(ApiRuleId rule, const SurfaceMember& before, const SurfaceMember& after,
            std::string beforeText, std::string afterText);
};

/// The types of the parameters and how they are passed: what tells overloads apart.
std::string TypesOfParameters(const SurfaceMember& member);

/// Compares a member with itself.
class MemberComparison {
 public:
  MemberComparison(ChangeTeller& teller, const SurfaceType& type, const SurfaceMember& before,
                   const SurfaceMember& after)
      : mTeller(teller), mType(type), mBefore(before), mAfter(after) {}
  void Run();

 private:
  void CompareNames();
  void CompareKinds();
  void CompareMarks();
  void CompareParameters();
  bool TellOrder();
  void PairByPlace();
  void PairByName();
  void CompareParameter(const SurfaceParameter& before, const SurfaceParameter& after);
  void TellAdded(const SurfaceParameter& parameter);
  void Tell(ApiRuleId rule, std::string before, std::string after);
  bool IsWriter() const;

  ChangeTeller& mTeller;
  const SurfaceType& mType;
  const SurfaceMember& mBefore;
  const SurfaceMember& mAfter;
};

}  // namespace vendrel
