#include "core/Version.h"

namespace vendrel {

std::string_view LibraryVersion() { return VENDREL_VERSION; }

}  // namespace vendrel
