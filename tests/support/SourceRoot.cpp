#include "support/SourceRoot.h"

namespace vendrel::test {

const std::string& SourceRoot() {
  static const std::string root = VENDREL_SOURCE_ROOT;
  return root;
}

}  // namespace vendrel::test
