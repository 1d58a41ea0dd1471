#pragma once
// Resources of a compiled file: PE for 32 and 64 bits, and the 16-bit NE form. Only what leads to
// TYPELIB resources and the version block is read.

#include <cstdint>
#include <string>
#include <vector>

#include "services/ByteSource.h"
#include "services/ByteStream.h"

namespace vendrel::typelib {

/// A resource with its place in the file.
struct Resource {
  int Id = 0;
  std::uint64_t Offset = 0;
  std::size_t Length = 0;
};

class CompiledFile {
 public:
  /// Reads the headers. Raises DataError when they are damaged.
  explicit CompiledFile(ByteSource& source);

  /// Whether the first bytes say that this is a compiled file at all.
  static bool HasMagic(ByteSource& source);

  /// TYPELIB resources with a number, in the order stored.
  std::vector<Resource> TypeLibraries() const;
  /// The version block, empty when there is none.
  std::vector<Resource> VersionBlocks() const;

 private:
  struct Section {
    std::uint32_t Address, VirtualSize, RawOffset, RawSize;
  };
  /// Which resources are wanted: a type by name, or by number where the name is empty.
  struct ResourceType {
    std::string_view Name;
    std::uint32_t Number;
  };

  void ReadPe(std::uint32_t header);
  void ReadNe(std::uint32_t header);
  std::vector<Resource> Find(const ResourceType& type) const;
  std::vector<Resource> FindPe(const ResourceType& type) const;
  std::vector<Resource> FindNe(const ResourceType& type) const;
  Resource Leaf(std::uint32_t entry, int id) const;
  std::uint64_t FileOffset(std::uint32_t address) const;

  ByteSource& mSource;
  bool mIsNe = false;
  std::vector<Section> mSections;
  std::vector<std::uint8_t> mResources;
};

}  // namespace vendrel::typelib
