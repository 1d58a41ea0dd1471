#include "typelib/reader/CompiledFile.h"

#include <algorithm>
#include <cstdint>

#include "core/Ascii.h"

namespace vendrel::typelib {
namespace {

// Directory of all resources together; real ones end far below.
constexpr std::size_t kMaxResourceBytes = std::size_t{256} << 20;
constexpr std::uint32_t kHighBit = 0x80000000u;
constexpr std::uint32_t kVersionType = 16;

ByteStream Stream(const std::vector<std::uint8_t>& bytes, const char* name) {
  return ByteStream(bytes, name);
}

struct DirectoryEntry {
  std::uint32_t Name, Offset;
};

// A resource directory: 16 bytes of header with the counts of named and numbered entries, then the
// entries of two words. Only as many as are wanted are read, for directories may overlap.
std::vector<DirectoryEntry> ReadDirectory(ByteStream resources, std::uint32_t offset,
                                          std::size_t limit = SIZE_MAX) {
  resources.Seek(offset).Skip(12);
  const std::size_t named = resources.U16();
  const std::size_t count = std::min(limit, named + resources.U16());
  std::vector<DirectoryEntry> entries;
  for (std::size_t i = 0; i < count && resources.Left() >= 8; ++i) {
    const std::uint32_t name = resources.U32();
    entries.push_back({name, resources.U32()});
  }
  return entries;
}

bool HasName(ByteStream resources, std::uint32_t offset, std::string_view name) {
  if (offset > resources.Size()) return false;
  resources.Seek(offset);
  if (resources.Left() < 2 || resources.U16() != name.size() || resources.Left() < 2 * name.size())
    return false;
  return std::all_of(name.begin(), name.end(), [&](char c) {
    const std::uint16_t unit = resources.U16();
    return unit < 0x80 && UpperAscii(static_cast<char>(unit)) == c;
  });
}

}  // namespace

bool CompiledFile::HasMagic(ByteSource& source) {
  const std::vector<std::uint8_t> start = source.Read(0, 2);
  return start.size() == 2 && start[0] == 'M' && start[1] == 'Z';
}

CompiledFile::CompiledFile(ByteSource& source) : mSource(source) {
  const std::vector<std::uint8_t> start = source.Read(0, 0x40);
  const std::uint32_t header = Stream(start, "the program header").At(0x3C).U32();
  const std::vector<std::uint8_t> magic = source.Read(header, 4);
  if (magic.size() == 4 && magic[0] == 'P' && magic[1] == 'E' && magic[2] == 0 && magic[3] == 0) {
    ReadPe(header);
  } else if (magic.size() >= 2 && magic[0] == 'N' && magic[1] == 'E') {
    ReadNe(header);
  } else {
    throw DataError("neither a PE nor an NE file");
  }
}

void CompiledFile::ReadPe(std::uint32_t header) {
  const std::vector<std::uint8_t> start = mSource.Read(header, 24);
  const std::uint16_t sections = Stream(start, "the PE header").At(6).U16();
  const std::uint16_t optionalSize = Stream(start, "the PE header").At(20).U16();
  const std::vector<std::uint8_t> bytes =
      mSource.Read(header, std::size_t{24} + optionalSize + std::size_t{40} * sections);
  ByteStream file = Stream(bytes, "the PE header");
  const bool isWide = file.At(24).U16() == 0x20B;
  const std::size_t count = 24 + (isWide ? 108 : 92);
  if (file.At(count).U32() < 3) throw DataError("a PE file without resources");
  const std::uint32_t resourceAddress = file.At(count + 4 + 16).U32();
  if (resourceAddress == 0) throw DataError("a PE file without resources");
  file.Seek(std::size_t{24} + optionalSize);
  for (unsigned i = 0; i < sections && file.Left() >= 40; ++i) {
    file.Skip(8);
    Section section{};
    section.VirtualSize = file.U32();
    section.Address = file.U32();
    section.RawSize = file.U32();
    section.RawOffset = file.U32();
    file.Skip(16);
    mSections.push_back(section);
  }
  const auto home = std::find_if(mSections.begin(), mSections.end(), [&](const Section& section) {
    return resourceAddress >= section.Address &&
           resourceAddress - section.Address < section.RawSize;
  });
  if (home == mSections.end()) throw DataError("the resources lie in no section");
  const std::uint32_t inSection = resourceAddress - home->Address;
  mResources = mSource.Read(std::uint64_t{home->RawOffset} + inSection,
                            std::min<std::size_t>(home->RawSize - inSection, kMaxResourceBytes));
}

void CompiledFile::ReadNe(std::uint32_t header) {
  mIsNe = true;
  const std::vector<std::uint8_t> bytes = mSource.Read(header, 0x40);
  ByteStream file = Stream(bytes, "the NE header");
  file.Seek(0x24);
  const std::uint16_t table = file.U16();
  const std::uint16_t end = file.U16();
  if (end <= table) throw DataError("an NE file without resources");
  mResources = mSource.Read(std::uint64_t{header} + table, std::size_t{end} - table);
}

std::vector<Resource> CompiledFile::TypeLibraries() const { return Find({"TYPELIB", 0}); }
std::vector<Resource> CompiledFile::VersionBlocks() const { return Find({"", kVersionType}); }

std::vector<Resource> CompiledFile::Find(const ResourceType& type) const {
  return mIsNe ? FindNe(type) : FindPe(type);
}

// Three levels: type, number, language. The first language counts.
std::vector<Resource> CompiledFile::FindPe(const ResourceType& type) const {
  const ByteStream resources = Stream(mResources, "the resource directory");
  std::vector<Resource> found;
  for (const DirectoryEntry& kind : ReadDirectory(resources, 0)) {
    const bool isNamed = (kind.Name & kHighBit) != 0;
    const bool isWanted = type.Name.empty()
                              ? !isNamed && kind.Name == type.Number
                              : isNamed && HasName(resources, kind.Name & ~kHighBit, type.Name);
    if (!isWanted || (kind.Offset & kHighBit) == 0) continue;
    for (const DirectoryEntry& item : ReadDirectory(resources, kind.Offset & ~kHighBit)) {
      if ((item.Name & kHighBit) != 0 || (item.Offset & kHighBit) == 0) continue;
      const auto languages = ReadDirectory(resources, item.Offset & ~kHighBit, 1);
      if (!languages.empty() && (languages.front().Offset & kHighBit) == 0)
        found.push_back(Leaf(languages.front().Offset, static_cast<int>(item.Name)));
    }
    break;
  }
  return found;
}

Resource CompiledFile::Leaf(std::uint32_t entry, int id) const {
  ByteStream leaf = Stream(mResources, "the resource directory").At(entry);
  const std::uint32_t address = leaf.U32();
  const std::uint32_t length = leaf.U32();
  return {id, FileOffset(address), length};
}

// The end of the file, where nothing can be read, for an address that is in no section.
std::uint64_t CompiledFile::FileOffset(std::uint32_t address) const {
  for (const Section& section : mSections) {
    if (address < section.Address ||
        address - section.Address >= std::max(section.VirtualSize, section.RawSize))
      continue;
    return std::uint64_t{section.RawOffset} + (address - section.Address);
  }
  return mSource.Size();
}

// A shift count, then groups of a type with its resources; names and data are in units of 1 <<
// shift.
std::vector<Resource> CompiledFile::FindNe(const ResourceType& type) const {
  ByteStream table = Stream(mResources, "the resource table");
  const unsigned shift = table.U16() & 15;
  std::vector<Resource> found;
  while (table.Left() >= 8) {
    const std::uint16_t kind = table.U16();
    if (kind == 0) break;
    const std::uint16_t count = table.U16();
    table.Skip(4);
    bool isWanted = false;
    if ((kind & 0x8000) != 0) {
      isWanted = type.Name.empty() && (kind & 0x7FFFu) == type.Number;
    } else if (!type.Name.empty()) {
      ByteStream name = table.At(kind);
      isWanted = name.U8() == type.Name.size() &&
                 EqualsNoCaseAscii(name.Chars(type.Name.size()), type.Name);
    }
    for (unsigned i = 0; i < count; ++i) {
      const std::uint64_t offset = std::uint64_t{table.U16()} << shift;
      const std::size_t length = std::size_t{table.U16()} << shift;
      table.Skip(2);
      const std::uint16_t id = table.U16();
      table.Skip(4);
      if (isWanted && (id & 0x8000) != 0) found.push_back({id & 0x7FFF, offset, length});
    }
  }
  return found;
}

}  // namespace vendrel::typelib
