// Tag definitions of any content; a table that is taken must answer for each of its tags.

#include <cstdlib>

#include "Support.h"
#include "comments/TagDefinitions.h"
#include "diagnostics/VendrelError.h"

using namespace vendrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const TaggedCommentDefs table = ReadTagDefinitions(fuzz::Text(data, size), "tags.json");
    for (const TaggedCommentDef& definition : table) {
      if (table.Find(definition.TagIdentifier) != &definition) std::abort();
      definition.TakesQualifier();
    }
    if (!table.UpgradeFault().empty()) std::abort();
  } catch (const VendrelError&) {
  }
  return 0;
}
