// Any bytes as a type library or a compiled file: read, walk, print.

#include <cstdint>

#include "diagnostics/VendrelError.h"
#include "typelib/reader/TypeLibListing.h"
#include "typelib/reader/TypeLibReader.h"

using namespace vendrel;
using namespace vendrel::typelib;

namespace {

// The questions whose answers the printers do not need.
void Ask(const VarTypeInfo& type) {
  try {
    type.VarType();
    type.TypeInfo();
  } catch (const VendrelError&) {
    // The type lies elsewhere or is damaged.
  }
}

void Walk(const TypeInfo& type) {
  for (const MemberInfo* member : type.Members()) {
    Ask(member->ReturnType);
    for (const ParameterInfo& parameter : member->Parameters()) {
      Ask(parameter.VarTypeInfo);
      if (parameter.Default()) parameter.DefaultValue->Text();
    }
    if (member->Value != nullptr) member->Value->IsNumeric();
  }
  for (const InterfaceInfo& item : type.Interfaces) {
    try {
      item.Members();
    } catch (const VendrelError&) {
    }
  }
  Ask(type.AliasType);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  for (int resource : {1, 2}) {
    try {
      TypeLibOptions options;
      options.CheckCoverage = size % 2 == 0;
      const auto library = TypeLibInfoFromBytes({data, size}, options, resource);
      for (const TypeInfo& type : library->TypeInfos) Walk(type);
      TypeLibListing(*library);
      TypeLibJson(*library);
      if (library->Coverage) library->Coverage->Leftovers();
      if (library->ResourceId == 0) break;
    } catch (const VendrelError&) {
      // A clear error is an answer.
    }
  }
  return 0;
}
