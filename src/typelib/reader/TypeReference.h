#pragma once

#include <cstdint>
#include <string>

#include "typelib/reader/Guid.h"

namespace vendrel::typelib {

class TypeInfo;

/// A user type as a library refers to it: an entry of its own, or an entry of its list of imported
/// types.
struct TypeReference {
  /// -1 none; from 0 on an own entry; from -2 downwards an imported type.
  std::int32_t Code = -1;

  static TypeReference Own(std::size_t index) { return {static_cast<std::int32_t>(index)}; }
  static TypeReference Imported(std::size_t index) {
    return {-2 - static_cast<std::int32_t>(index)};
  }
  bool IsNone() const { return Code == -1; }
  bool IsExternal() const { return Code < -1; }
  /// 0-based position in `TypeInfos` or `ImportedTypes`.
  std::size_t Index() const { return static_cast<std::size_t>(Code < -1 ? -2 - Code : Code); }
  bool operator==(const TypeReference&) const = default;
};

/// Another library, as the importing one remembers it.
struct LibraryImport {
  Guid LibraryId;
  std::uint32_t Lcid = 0;
  std::uint16_t MajorVersion = 0;
  std::uint16_t MinorVersion = 0;
  /// File name as stored, mostly without a folder; may end in `\2`.
  std::string LeafName;
};

/// A type of another library: by its id where it has one, else by its position there. Its name is
/// not stored.
struct ImportedType {
  /// Position in `Imports`.
  std::uint32_t Library = 0;
  /// Kind of the target, -1 if not told.
  int TypeKind = -1;
  bool ByGuid = false;
  Guid Id;
  std::uint32_t Number = 0;
};

/// Where the chain of a type description stands: below 0 a plain automation type, else a place in
/// the library's `TypeNodes`.
using TypeCode = std::int32_t;
constexpr TypeCode PlainType(int varType) { return -0x10000 | (varType & 0xFFF); }
constexpr bool IsPlainType(TypeCode code) { return code < 0; }
constexpr int PlainVarType(TypeCode code) { return code & 0xFFF; }

/// One step of a type description.
struct TypeNode {
  /// vtPointer, vtSafeArray, vtFixedArray, vtUserDefined, or a plain type.
  std::uint16_t VarType = 0;
  /// Of a fixed array: how many of `ArrayBounds` are its own, from `FirstBound` on.
  std::uint16_t Dimensions = 0;
  std::uint32_t FirstBound = 0;
  /// Pointers and arrays: `TypeCode` of the target. User types: `TypeReference::Code`.
  std::int32_t Link = -1;
};

struct ArrayBound {
  std::uint32_t Count = 0;
  std::int32_t Lower = 0;
};

}  // namespace vendrel::typelib
