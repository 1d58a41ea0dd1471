#include "typelib/reader/MemberRules.h"

#include <algorithm>

namespace vendrel::typelib {
namespace {

VarTypeInfo WithoutPointer(const VarTypeInfo& type) {
  if (IsPlainType(type.Code)) return type;
  const std::size_t place = static_cast<std::size_t>(type.Code);
  if (place >= type.Library->TypeNodes.size()) return type;
  const TypeNode& node = type.Library->TypeNodes[place];
  return node.VarType == vtPointer ? VarTypeInfo{type.Library, node.Link} : type;
}

// A property let or set ends with the value, after which only a return value may stand.
const ParameterInfo* PropertyValue(std::span<const ParameterInfo> parameters, int invokeKind) {
  if (invokeKind != ikLet && invokeKind != ikSet) return nullptr;
  for (std::size_t i = parameters.size(); i-- > 0;)
    if ((parameters[i].Flags & (paramRetval | paramLcid)) == 0) return &parameters[i];
  return nullptr;
}

}  // namespace

void ArrangeParameters(TypeLibInfo& library, MemberInfo& member) {
  const std::span<ParameterInfo> all =
      std::span(library.Parameters).subspan(member.FirstParameter, member.AllParameters);
  const ParameterInfo* value = PropertyValue(all, member.InvokeKind);
  if (value != nullptr) member.ReturnType = value->VarTypeInfo;
  for (const ParameterInfo& parameter : all)
    if ((parameter.Flags & paramRetval) != 0)
      member.ReturnType = WithoutPointer(parameter.VarTypeInfo);
  const int valuePosition = value == nullptr ? -1 : value->Position;
  const auto end = std::stable_partition(all.begin(), all.end(), [&](const ParameterInfo& item) {
    return (item.Flags & (paramRetval | paramLcid)) == 0 && item.Position != valuePosition;
  });
  const std::size_t visible = static_cast<std::size_t>(end - all.begin());
  member.VisibleParameters = static_cast<std::uint16_t>(visible);
  const bool takesArray = member.OptionalCount == -1;
  const std::size_t optional =
      takesArray ? 1 : static_cast<std::size_t>(std::max<int>(member.OptionalCount, 0));
  for (std::size_t i = visible - std::min(visible, optional); i < visible; ++i)
    all[i].Optional = true;
  if (takesArray && visible > 0) all[visible - 1].IsParamArray = true;
}

void AddDispatchInterface(TypeInfo& type) {
  const TypeLibInfo& builtIn = BuiltInLibrary();
  const TypeInfo* dispatch = builtIn.FindType("IDispatch");
  type.Interfaces.push_back(
      {&builtIn, TypeReference::Own(static_cast<std::size_t>(dispatch->TypeInfoNumber)), 0, -1});
}

}  // namespace vendrel::typelib
