#include "survey/ApiChanges.h"

#include <algorithm>
#include <functional>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "survey/MemberChanges.h"

namespace vendrel {
namespace {

using enum ApiRuleId;

constexpr int kSamePercent = 80;
constexpr std::size_t kFewestLinesOfRenamed = 3;

template <typename Thing>
struct Pair {
  const Thing* Before = nullptr;
  const Thing* After = nullptr;
};
using MemberPair = Pair<SurfaceMember>;
using TypePair = Pair<SurfaceType>;

bool IsEnumeration(const SurfaceType& type) { return type.Kind == SurfaceTypeKind::Enumeration; }

// Members of one name, first those with the same parameters, then those of the same kind, then
// what is left if that is one on each side.
void PairNamesakes(std::vector<const SurfaceMember*> before,
                   std::vector<const SurfaceMember*> after, std::vector<MemberPair>& pairs) {
  const auto pairBy = [&](const auto& isSame) {
    for (const SurfaceMember*& old : before)
      for (const SurfaceMember*& now : after)
        if (old && now && isSame(*old, *now)) {
          pairs.push_back({old, now});
          old = now = nullptr;
        }
    std::erase(before, nullptr);
    std::erase(after, nullptr);
  };
  pairBy([](const SurfaceMember& a, const SurfaceMember& b) {
    return a.Kind == b.Kind && TypesOfParameters(a) == TypesOfParameters(b);
  });
  // Of several overloads it is not known which became which.
  const bool areOverloads =
      before.size() > 1 && after.size() > 1 && before.front()->Kind == SurfaceMemberKind::Method;
  if (!areOverloads)
    pairBy([&](const SurfaceMember& a, const SurfaceMember& b) { return a.Kind == b.Kind; });
  if (before.size() == 1 && after.size() == 1)
    pairBy([](const auto&, const auto&) { return true; });
  for (const SurfaceMember* old : before) pairs.push_back({old, nullptr});
  for (const SurfaceMember* now : after) pairs.push_back({nullptr, now});
}

std::vector<MemberPair> PairMembers(const SurfaceType& before, const SurfaceType& after) {
  std::map<std::string,
           std::pair<std::vector<const SurfaceMember*>, std::vector<const SurfaceMember*>>>
      names;
  for (const SurfaceMember& member : before.Members)
    names[FoldKey(member.Name)].first.push_back(&member);
  for (const SurfaceMember& member : after.Members)
    names[FoldKey(member.Name)].second.push_back(&member);
  std::vector<MemberPair> pairs;
  for (auto& [name, both] : names) PairNamesakes(both.first, both.second, pairs);
  return pairs;
}

// One of another name: of the same kind, which takes the same and whose lines are the same.
bool IsRenamed(const SurfaceMember& before, const SurfaceMember& after) {
  return before.Kind == after.Kind && before.Type == after.Type &&
         TypesOfParameters(before) == TypesOfParameters(after) &&
         std::min(before.Content.Count(), after.Content.Count()) >= kFewestLinesOfRenamed &&
         before.Content.PercentCommon(after.Content) >= kSamePercent;
}

void JoinRenamed(std::vector<MemberPair>& pairs) {
  for (MemberPair& gone : pairs) {
    if (gone.After) continue;
    for (MemberPair& added : pairs)
      if (!added.Before && added.After && IsRenamed(*gone.Before, *added.After)) {
        gone.After = added.After;
        added.After = nullptr;
        break;
      }
  }
  std::erase_if(pairs, [](const MemberPair& pair) { return !pair.Before && !pair.After; });
}

std::unordered_set<std::string> MemberNames(const SurfaceType& type) {
  std::unordered_set<std::string> names;
  for (const SurfaceMember& member : type.Members) names.insert(FoldKey(member.Name));
  return names;
}

bool IsRenamed(const SurfaceType& before, const SurfaceType& after) {
  const auto a = MemberNames(before), b = MemberNames(after);
  if (before.Kind != after.Kind || a.size() < 2) return false;
  const auto common = static_cast<std::size_t>(
      std::count_if(a.begin(), a.end(), [&](const std::string& name) { return b.contains(name); }));
  return 200 * common >= kSamePercent * (a.size() + b.size());
}

class SurfaceComparison {
 public:
  SurfaceComparison(const PublicSurface& before, const PublicSurface& after)
      : mBefore(before), mAfter(after), mTeller{before.World, after.IsShared, {}} {}

  std::vector<ApiChange> Run() {
    CompareLibraries();
    for (const TypePair& pair : PairTypes()) {
      if (!pair.After)
        mTeller.Tell(TypeRemoved, *pair.Before);
      else if (!pair.Before)
        mTeller.Tell(TypeAdded, *pair.After, false);
      else
        CompareTypes(*pair.Before, *pair.After);
    }
    return std::move(mTeller.Changes);
  }

 private:
  void CompareLibraries() {
    const auto tell = [&](ApiRuleId rule, std::string before, std::string after) {
      mTeller.Tell({rule, ApiBreak::No, "library", mAfter.Library, std::move(before),
                    std::move(after), mBefore.Place, mAfter.Place});
    };
    if (!EqualsNoCase(mBefore.Library, mAfter.Library))
      tell(LibraryRenamed, mBefore.Library, mAfter.Library);
    if (mBefore.KeepsBinaryCompatibility && !mAfter.KeepsBinaryCompatibility && !mAfter.IsCompiled)
      tell(CompatibilityLost, "binary compatibility", "none");
  }

  std::vector<TypePair> PairTypes() const {
    std::unordered_map<std::string, const SurfaceType*> names;
    for (const SurfaceType& type : mAfter.Types) names.try_emplace(FoldKey(type.Name), &type);
    std::unordered_set<const SurfaceType*> taken;
    std::vector<TypePair> pairs;
    for (const SurfaceType& type : mBefore.Types) {
      const auto found = names.find(FoldKey(type.Name));
      const bool isFree = found != names.end() && taken.insert(found->second).second;
      pairs.push_back({&type, isFree ? found->second : nullptr});
    }
    for (TypePair& pair : pairs)
      for (const SurfaceType& type : mAfter.Types)
        if (!pair.After && !taken.contains(&type) && IsRenamed(*pair.Before, type)) {
          pair.After = &type;
          taken.insert(&type);
        }
    for (const SurfaceType& type : mAfter.Types)
      if (!taken.contains(&type)) pairs.push_back({nullptr, &type});
    return pairs;
  }

  void CompareTypes(const SurfaceType& before, const SurfaceType& after) {
    const auto tell = [&](ApiRuleId rule, std::string old, std::string now) {
      mTeller.Tell(rule, before, after, std::move(old), std::move(now));
    };
    if (!EqualsNoCase(before.Name, after.Name))
      tell(TypeRenamed, before.Name, after.Name);
    else if (before.Name != after.Name && mAfter.World == SurfaceWorld::Net)
      tell(NameCase, before.Name, after.Name);
    if (before.Kind != after.Kind)
      tell(TypeKind, std::string(WordOf(before.Kind)), std::string(WordOf(after.Kind)));
    if (!mAfter.IsShared && before.IsCreatable != after.IsCreatable)
      tell(after.IsCreatable ? Creatable : NotCreatable, {}, {});
    if (!mAfter.IsShared && before.IsGlobal && !after.IsGlobal) tell(NotGlobal, {}, {});
    if (before.Kind == after.Kind && !EqualsNoCase(before.Base, after.Base))
      tell(BaseChanged, before.Base, after.Base);
    if (after.IsAbstract && !before.IsAbstract) tell(TypeAbstract, {}, {});
    if (after.IsSealed && !before.IsSealed) tell(TypeSealed, {}, {});
    CompareInterfaces(before, after);
    // A default member that goes is told as gone.
    if (!before.DefaultMember.empty() && !EqualsNoCase(before.DefaultMember, after.DefaultMember))
      tell(ApiRuleId::DefaultMember, before.DefaultMember, after.DefaultMember);
    CompareMembers(before, after);
  }

  void CompareInterfaces(const SurfaceType& before, const SurfaceType& after) {
    const auto has = [](const SurfaceType& type, const std::string& name) {
      return std::any_of(type.Interfaces.begin(), type.Interfaces.end(),
                         [&](const std::string& other) { return EqualsNoCase(name, other); });
    };
    for (const std::string& name : before.Interfaces)
      if (!has(after, name)) mTeller.Tell(InterfaceRemoved, before, after, name, {});
    for (const std::string& name : after.Interfaces)
      if (!has(before, name)) mTeller.Tell(InterfaceAdded, before, after, {}, name);
  }

  void CompareMembers(const SurfaceType& before, const SurfaceType& after) {
    std::vector<MemberPair> pairs = PairMembers(before, after);
    JoinRenamed(pairs);
    // In the order of the first surface, then of the second.
    const auto order = [](const MemberPair& pair) {
      return std::pair(!pair.Before, pair.Before ? pair.Before : pair.After);
    };
    std::sort(pairs.begin(), pairs.end(),
              [&](const MemberPair& a, const MemberPair& b) { return order(a) < order(b); });
    const SurfaceMember* last = LastOld(pairs);
    for (const MemberPair& pair : pairs) {
      if (!pair.After)
        mTeller.Tell(IsEnumeration(before) ? EnumMemberRemoved : MemberRemoved, *pair.Before);
      else if (!pair.Before)
        mTeller.Tell(RuleOfNew(*pair.After, before, after, last), *pair.After, false);
      else
        MemberComparison(mTeller, before, *pair.Before, *pair.After).Run();
    }
    TellOrder(pairs, before, after);
  }

  // The last member of the second surface that was there.
  static const SurfaceMember* LastOld(const std::vector<MemberPair>& pairs) {
    const SurfaceMember* last = nullptr;
    for (const MemberPair& pair : pairs)
      if (pair.Before && pair.After && pair.After->Kind != SurfaceMemberKind::Event)
        last = std::max(last, pair.After, std::less<const SurfaceMember*>());
    return last;
  }

  ApiRuleId RuleOfNew(const SurfaceMember& member, const SurfaceType& before,
                      const SurfaceType& after, const SurfaceMember* lastOld) const {
    if (after.Kind == SurfaceTypeKind::Interface || (member.IsAbstract && !before.IsSealed))
      return ObligationAdded;
    if (after.Kind == SurfaceTypeKind::Structure && member.Kind == SurfaceMemberKind::Field)
      return FieldAdded;
    const bool isInFront = lastOld && &member < lastOld;
    return isInFront && OrderCounts(after) && member.Kind != SurfaceMemberKind::Event
               ? MemberInserted
               : MemberAdded;
  }

  // Whether callers reach members by their place.
  bool OrderCounts(const SurfaceType& type) const {
    return mAfter.World == SurfaceWorld::Com && type.Kind == SurfaceTypeKind::Class &&
           !mAfter.KeepsBinaryCompatibility && !mAfter.IsShared;
  }

  void TellOrder(const std::vector<MemberPair>& pairs, const SurfaceType& before,
                 const SurfaceType& after) {
    const bool isStructure = after.Kind == SurfaceTypeKind::Structure;
    if (mAfter.IsShared || (!isStructure && !OrderCounts(after))) return;
    const SurfaceMember* highest = nullptr;
    for (const MemberPair& pair : pairs) {
      if (!pair.Before || !pair.After || pair.Before->Kind == SurfaceMemberKind::Event) continue;
      if (highest && pair.After < highest)
        return mTeller.Tell(isStructure ? FieldOrder : MemberOrder, before, after,
                            highest->Name + ", " + pair.After->Name,
                            pair.After->Name + ", " + highest->Name);
      highest = pair.After;
    }
  }

  const PublicSurface& mBefore;
  const PublicSurface& mAfter;
  ChangeTeller mTeller;
};

}  // namespace

std::vector<ApiChange> CompareSurfaces(const PublicSurface& before,
                                       const PublicSurface& after) try {
  if (before.World != after.World) throw VendrelError(errTypeMismatch);
  return SurfaceComparison(before, after).Run();
}
VENDREL_CONTEXT()

}  // namespace vendrel
