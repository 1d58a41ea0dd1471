// Any bytes as a type library or a compiled file: read, walk, print; then the same as a project,
// in one of the two readings, dumped and written as a manifest.

#include <cstdint>
#include <ostream>
#include <streambuf>

#include "core/ObjectRegistry.h"
#include "diagnostics/VendrelError.h"
#include "output/Dump.h"
#include "project/VBProject.h"
#include "typelib/TypeLibService.h"
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

// The service whose every library is the input.
class InputService final : public TLIApplication {
 public:
  static inline std::span<const std::uint8_t> sInput;
  std::shared_ptr<const TypeLibInfo> TypeLibInfoFromFile(const std::string&) override {
    return TypeLibInfoFromBytes(sInput);
  }
};

// Puts that service in the place of the system's own.
class ServiceInPlace {
 public:
  ServiceInPlace() {
    ObjectRegistry::Register<TLIApplication>(kTypeLibProgId,
                                             [] { return std::make_shared<InputService>(); });
  }
  ~ServiceInPlace() {
    ObjectRegistry::Register<TLIApplication>(kTypeLibProgId,
                                             [] { return std::shared_ptr<TLIApplication>(); });
  }
  ServiceInPlace(const ServiceInPlace&) = delete;
  ServiceInPlace& operator=(const ServiceInPlace&) = delete;
};

class NullBuffer final : public std::streambuf {
  int overflow(int c) override { return c == EOF ? 0 : c; }
  std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

void LoadAsProject(std::span<const std::uint8_t> input) {
  const ServiceInPlace service;
  InputService::sInput = input;
  VBProject project;
  project.Reading = input.size() % 3 == 0 ? ReadingRules::Classic() : ReadingRules::Complete();
  project.LoadTypeLibHelpStrings = input.size() % 4 < 2;
  if (!project.LoadFromTypeLib("Z:\\input.dll")) return;
  project.Components.Populate();
  NullBuffer nothing;
  std::ostream out(&nothing);
  Dump(out, Describe(project));
  project.Manifest(false, true);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  LoadAsProject({data, size});
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
