// Reaches into three rooms of the installed library, one of which needs a library of the system.
#include <vendrelmodel/vendrelmodel.h>

#include <cstdio>

int main() {
  try {
    if (!vendrel::EqualsNoCase("ЖУРНАЛ", "журнал")) return 1;
    const vendrel::KeptFolders folders;
    if (vendrel::KeptFolders::Run() == 0) return 1;
    throw vendrel::VendrelError(9, "Subscript out of range");
  } catch (const vendrel::VendrelError& error) {
    std::printf("consumer: %s\n", error.what());
  }
  return 0;
}
