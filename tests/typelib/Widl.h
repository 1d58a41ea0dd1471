#pragma once
// Compiles IDL with widl, where it is installed (Debian: mingw-w64-tools).

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "services/FileSource.h"
#include "support/DiskFolder.h"

namespace vendrel::typelib::test {

class Widl {
 public:
  static constexpr const char* kMissing = "widl is not installed (package mingw-w64-tools)";

  static bool IsInstalled(const std::string& machine = "x86_64") {
    return std::system(("command -v " + Command(machine) + " >/dev/null 2>&1").c_str()) == 0;
  }

  Widl() {
    mFolder.Write("base.idl", kBase);
    mFolder.Write("stdole2.idl", kStdOle);
    Run("x86_64", "stdole2");
  }

  /// Path of the compiled library `name`; empty, and a failed test, when widl refuses.
  std::string Compile(const std::string& name, const std::string& idl,
                      const std::string& machine = "x86_64") {
    mFolder.Write(name + ".idl", "import \"base.idl\";\n" + idl);
    return Run(machine, name);
  }

  const vendrel::test::DiskFolder& Folder() const { return mFolder; }

 private:
  static std::string Command(const std::string& machine) { return machine + "-w64-mingw32-widl"; }

  std::string Run(const std::string& machine, const std::string& name) {
    const std::string command = "cd '" + mFolder.Path() + "' && " + Command(machine) +
                                " -I. -L. -t -o " + name + ".tlb " + name + ".idl >" + name +
                                ".log 2>&1";
    if (std::system(command.c_str()) == 0) return mFolder.Path(name + ".tlb");
    ADD_FAILURE() << ReadWholeFile(mFolder.Path(name + ".log"));
    return {};
  }

  static constexpr const char* kBase = R"(
typedef long HRESULT;
typedef unsigned short *BSTR;
typedef short VARIANT_BOOL;
typedef double DATE;
typedef struct tagVARIANT { long words[4]; } VARIANT;
typedef struct tagCY { hyper amount; } CURRENCY;
[uuid(00000000-0000-0000-C000-000000000046), object, hidden] interface IUnknown { }
[uuid(00020400-0000-0000-C000-000000000046), object, restricted] interface IDispatch : IUnknown { }
)";
  static constexpr const char* kStdOle = R"(
import "base.idl";
[uuid(00020430-0000-0000-C000-000000000046), version(2.0)]
library stdole { interface IUnknown; interface IDispatch; }
)";

  vendrel::test::DiskFolder mFolder;
};

}  // namespace vendrel::typelib::test
