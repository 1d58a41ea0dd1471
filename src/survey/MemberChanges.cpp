#include "survey/MemberChanges.h"

#include <algorithm>

#include "core/CaseFold.h"

namespace vendrel {
namespace {

using enum ApiRuleId;

// Types are one where their last names are: one side may name the library.
bool IsSameType(std::string_view before, std::string_view after) {
  if (EqualsNoCase(before, after)) return true;
  const auto dot = [](std::string_view name) { return name.rfind('.') != std::string_view::npos; };
  if (dot(before) == dot(after)) return false;
  const auto last = [](std::string_view name) { return name.substr(name.rfind('.') + 1); };
  return EqualsNoCase(last(before), last(after));
}

const SurfaceParameter* Named(const std::vector<SurfaceParameter>& parameters,
                              const std::string& name) {
  const auto found = std::find_if(
      parameters.begin(), parameters.end(),
      [&](const SurfaceParameter& parameter) { return EqualsNoCase(parameter.Name, name); });
  return found == parameters.end() ? nullptr : &*found;
}

}  // namespace

std::string TypesOfParameters(const SurfaceMember& member) {
  std::string types;
  for (const SurfaceParameter& parameter : member.Parameters) {
    AppendFolded(types, parameter.Type);
    types.append(parameter.ByRef ? "&," : ",");
  }
  return types;
}

void ChangeTeller::Tell(ApiChange change) {
  const ApiRule& rule = RowOf(change.Rule);
  change.Breaks = World == SurfaceWorld::Com ? rule.Com : rule.Net;
  if (IsShared && change.Breaks == ApiBreak::Binary) change.Breaks = ApiBreak::No;
  if (IsShared && change.Breaks == ApiBreak::Both) change.Breaks = ApiBreak::Source;
  Changes.push_back(std::move(change));
}

void ChangeTeller::Tell(ApiRuleId rule, const SurfaceType& type, bool isGone) {
  ApiChange change{rule, ApiBreak::No, WordOf(type.Kind), type.Element, {}, {}, {}, {}};
  (isGone ? change.PlaceBefore : change.PlaceAfter) = type.Place;
  Tell(std::move(change));
}

void ChangeTeller::Tell(ApiRuleId rule, const SurfaceMember& member, bool isGone) {
  ApiChange change{rule, ApiBreak::No, WordOf(member.Kind), member.Element, {}, {}, {}, {}};
  (isGone ? change.PlaceBefore : change.PlaceAfter) = member.Place;
  (isGone ? change.Before : change.After) = SignatureOf(member);
  Tell(std::move(change));
}

void ChangeTeller::Tell(ApiRuleId rule, const SurfaceType& before, const SurfaceType& after,
                        std::string beforeText, std::string afterText) {
  Tell({rule, ApiBreak::No, WordOf(after.Kind), after.Element, std::move(beforeText),
        std::move(afterText), before.Place, after.Place});
}

void ChangeTeller::Tell(ApiRuleId rule, const SurfaceMember& before, const SurfaceMember& after,
                        std::string beforeText, std::string afterText) {
  Tell({rule, ApiBreak::No, WordOf(after.Kind), after.Element, std::move(beforeText),
        std::move(afterText), before.Place, after.Place});
}

void MemberComparison::Tell(ApiRuleId rule, std::string before, std::string after) {
  mTeller.Tell(rule, mBefore, mAfter, std::move(before), std::move(after));
}

void MemberComparison::Run() {
  CompareNames();
  if (mBefore.Kind != mAfter.Kind) return CompareKinds();
  if (!IsSameType(mBefore.Type, mAfter.Type)) Tell(MemberType, mBefore.Type, mAfter.Type);
  if (mBefore.Value != mAfter.Value)
    Tell(mBefore.Kind == SurfaceMemberKind::EnumMember ? EnumValue : ConstantValue, mBefore.Value,
         mAfter.Value);
  CompareMarks();
  CompareParameters();
}

void MemberComparison::CompareNames() {
  if (!EqualsNoCase(mBefore.Name, mAfter.Name))
    Tell(MemberRenamed, mBefore.Name, mAfter.Name);
  else if (mBefore.Name != mAfter.Name && mTeller.World == SurfaceWorld::Net)
    Tell(NameCase, mBefore.Name, mAfter.Name);
}

void MemberComparison::CompareKinds() {
  const auto isField = [](const SurfaceMember& member) {
    return member.Kind == SurfaceMemberKind::Field || member.Kind == SurfaceMemberKind::Property;
  };
  const bool isSameUse = isField(mBefore) && isField(mAfter) && mBefore.Parameters.empty() &&
                         mAfter.Parameters.empty() && IsSameType(mBefore.Type, mAfter.Type);
  Tell(isSameUse ? FieldProperty : MemberKind, std::string(WordOf(mBefore.Kind)),
       std::string(WordOf(mAfter.Kind)));
  if (isSameUse && mAfter.IsReadOnly && !mBefore.IsReadOnly) Tell(PropertyReadOnly, {}, {});
}

void MemberComparison::CompareMarks() {
  if (mAfter.IsProtected && !mBefore.IsProtected) Tell(MemberProtected, "Public", "Protected");
  if (mAfter.IsStatic != mBefore.IsStatic)
    Tell(StaticChanged, mBefore.IsStatic ? "Shared" : "", mAfter.IsStatic ? "Shared" : "");
  if (mBefore.IsVirtual && !mAfter.IsVirtual && !mType.IsSealed) Tell(NotVirtual, {}, {});
  if (mAfter.IsAbstract && !mBefore.IsAbstract) Tell(ObligationAdded, {}, {});
  if (mAfter.IsReadOnly != mBefore.IsReadOnly)
    Tell(mAfter.IsReadOnly ? PropertyReadOnly : PropertyWritable, {}, {});
}

// The value that a property is given has a name that no caller uses.
bool MemberComparison::IsWriter() const {
  return mBefore.Kind == SurfaceMemberKind::Letter || mBefore.Kind == SurfaceMemberKind::Setter;
}

void MemberComparison::CompareParameters() {
  if (TellOrder()) return;
  if (mBefore.Parameters.size() == mAfter.Parameters.size())
    PairByPlace();
  else
    PairByName();
}

// Whether all of them are there, in another order.
bool MemberComparison::TellOrder() {
  const auto &before = mBefore.Parameters, &after = mAfter.Parameters;
  if (before.size() != after.size()) return false;
  bool isMoved = false;
  for (std::size_t i = 0; i < before.size(); ++i) {
    const SurfaceParameter* now = Named(after, before[i].Name);
    if (!now) return false;
    isMoved = isMoved || now != &after[i];
  }
  if (isMoved) Tell(ParameterOrder, SignatureOf(mBefore), SignatureOf(mAfter));
  return isMoved;
}

void MemberComparison::PairByPlace() {
  for (std::size_t i = 0; i < mBefore.Parameters.size(); ++i)
    CompareParameter(mBefore.Parameters[i], mAfter.Parameters[i]);
}

// What has no partner by name: the first ones of both sides are renamed, the rest came or went.
void MemberComparison::PairByName() {
  std::vector<const SurfaceParameter*> gone, added;
  for (const SurfaceParameter& old : mBefore.Parameters) {
    const SurfaceParameter* now = Named(mAfter.Parameters, old.Name);
    if (now)
      CompareParameter(old, *now);
    else
      gone.push_back(&old);
  }
  for (const SurfaceParameter& now : mAfter.Parameters)
    if (!Named(mBefore.Parameters, now.Name)) added.push_back(&now);
  const std::size_t renamed = std::min(gone.size(), added.size());
  for (std::size_t i = 0; i < renamed; ++i) CompareParameter(*gone[i], *added[i]);
  for (std::size_t i = renamed; i < gone.size(); ++i)
    Tell(ParameterRemoved, SignatureOf(*gone[i]), {});
  for (std::size_t i = renamed; i < added.size(); ++i) TellAdded(*added[i]);
}

// An optional one behind all that were there leaves source as it is.
void MemberComparison::TellAdded(const SurfaceParameter& parameter) {
  const bool isBehind =
      static_cast<std::size_t>(&parameter - mAfter.Parameters.data()) >= mBefore.Parameters.size();
  const bool isOptional =
      parameter.Optional && isBehind && mAfter.Kind != SurfaceMemberKind::Event && !IsWriter();
  Tell(isOptional ? OptionalAdded : ParameterAdded, {}, SignatureOf(parameter));
}

void MemberComparison::CompareParameter(const SurfaceParameter& before,
                                        const SurfaceParameter& after) {
  const auto tell = [&](ApiRuleId rule) { Tell(rule, SignatureOf(before), SignatureOf(after)); };
  const bool isValue = IsWriter() && &before == &mBefore.Parameters.back();
  if (!EqualsNoCase(before.Name, after.Name) && !isValue)
    tell(mBefore.Kind == SurfaceMemberKind::Event ? EventParameterRenamed : ParameterRenamed);
  if (before.ParamArray != after.ParamArray) {
    tell(after.ParamArray ? ParamArrayAdded : ParamArrayLost);
    return;
  }
  if (!IsSameType(before.Type, after.Type)) tell(ParameterType);
  if (before.ByRef != after.ByRef && !isValue) tell(ParameterPassing);
  if (before.Optional != after.Optional)
    tell(after.Optional ? ParameterOptional : ParameterRequired);
  else if (before.DefaultValue != after.DefaultValue)
    tell(DefaultValue);
}

}  // namespace vendrel
