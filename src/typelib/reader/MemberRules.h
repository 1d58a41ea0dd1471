#pragma once
// What both formats share: how stored members are shown.

#include "typelib/reader/TypeLibInfo.h"

namespace vendrel::typelib {

enum ParameterFlag : int {
  paramIn = 1,
  paramOut = 2,
  paramLcid = 4,
  paramRetval = 8,
  paramOptional = 16,
  paramDefault = 32,
  paramCustomData = 64,
};

/// Of the parameters just added for `member`: puts those that callers see first, marks the optional
/// ones, and takes the return type from the return value or the value of a property.
void ArrangeParameters(TypeLibInfo& library, MemberInfo& member);

/// Every dispatch interface implements IDispatch, whatever it derives from.
void AddDispatchInterface(TypeInfo& type);

}  // namespace vendrel::typelib
