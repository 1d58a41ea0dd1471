// Any bytes as an assembly: read, and listed with all that there is to list.

#include <cstdint>
#include <vector>

#include "diagnostics/VendrelError.h"
#include "dotnet/metadata/AssemblyLister.h"
#include "dotnet/metadata/MetadataLimits.h"
#include "support/MemoryFiles.h"

using namespace vendrel;
using namespace vendrel::metadata;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const test::MemoryFiles nothingBeside;
  AssemblyStore store;
  try {
    const AssemblyFile* file =
        store.Add(Image::Open(std::vector<std::uint8_t>(data, data + size), "/input.dll"));
    ListingOptions options;
    options.Private = size % 2 == 0;
    options.Inherited = size % 3 == 0;
    std::size_t length = 0;
    ListAssembly(store, *file, options,
                 [&](const ListedEntry& entry) { length += entry.Name.size(); });
  } catch (const VendrelError&) {
    // A clear error is an answer.
  }
  return 0;
}
