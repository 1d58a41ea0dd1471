#pragma once
#include "typelib/reader/TypeLibReader.h"
namespace vendrel::typelib {
class SltgReader {
 public:
  SltgReader(TypeLibInfo&, const TypeLibOptions&) {}
  void Read() {}
};
}  // namespace vendrel::typelib
