#include "model/Namespace.h"

namespace vendrel {

// What stands in these lists has been read.
Namespace::Namespace() {
  for (Components* list : {&Classes, &Interfaces, &Enumerations, &Structures})
    list->DoNotPopulate = true;
}

}  // namespace vendrel
