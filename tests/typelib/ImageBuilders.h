#pragma once
// Small images laid out byte by byte: both library formats and the compiled files around them.

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vendrel::typelib::test {

using Image = std::vector<std::uint8_t>;

class Bytes {
 public:
  Image Data;
  /// The lowest bytes of any number, the least first.
  Bytes& U8(auto v) { return Put(static_cast<std::uint64_t>(v), 1); }
  Bytes& U16(auto v) { return Put(static_cast<std::uint64_t>(v), 2); }
  Bytes& U32(auto v) { return Put(static_cast<std::uint64_t>(v), 4); }
  Bytes& I32(std::int32_t v) { return U32(v); }
  Bytes& Text(std::string_view text) {
    // One by one: GCC 12 warns of an overflow where a whole text goes into a fresh vector.
    for (const char c : text) U8(c);
    return *this;
  }
  Bytes& Fill(std::size_t count, unsigned v = 0) {
    Data.insert(Data.end(), count, static_cast<std::uint8_t>(v));
    return *this;
  }
  Bytes& Append(const Image& image) {
    Data.insert(Data.end(), image.begin(), image.end());
    return *this;
  }
  Bytes& PadTo(std::size_t unit, unsigned v = 0x57) {
    while (Data.size() % unit != 0) U8(v);
    return *this;
  }
  void Set32(std::size_t at, std::size_t v) {
    for (std::size_t i = 0; i < 4; ++i) Data[at + i] = static_cast<std::uint8_t>(v >> 8 * i);
  }
  std::size_t Size() const { return Data.size(); }
  /// Where the next byte goes, as the formats refer to it.
  std::int32_t End() const { return static_cast<std::int32_t>(Data.size()); }

 private:
  Bytes& Put(std::uint64_t v, int count) {
    for (int i = 0; i < count; ++i) Data.push_back(static_cast<std::uint8_t>(v >> 8 * i));
    return *this;
  }
};

/// The newer format. Add names, strings, types, then `Build`.
class MsftBuilder {
 public:
  struct Type {
    int Kind = 0;
    std::int32_t Name = -1;
    std::uint32_t Flags = 0;
    std::int32_t DataType = -1;
    unsigned Implemented = 0;
    unsigned Functions = 0, Variables = 0;
    /// Records, without the length in front and the three lists behind.
    Bytes Records{};
    std::vector<std::int32_t> Ids{}, Names{}, Places{};
    std::int32_t Guid = -1;
    /// Member block of another type instead of an own one.
    int SharedBlock = -1;
  };

  Bytes ImportedTypes, Imports, References, Guids, Names, Strings, TypeNodes, Arrays, Values,
      Custom;
  std::vector<Type> Types;
  std::uint32_t Lcid = 0x409;
  std::int32_t LibraryName = -1, LibraryHelp = -1;

  std::int32_t AddName(std::string_view text) {
    const std::int32_t at = Names.End();
    Names.I32(-1).I32(-1).U32(text.size()).Text(text).PadTo(4);
    return at;
  }
  std::int32_t AddString(std::string_view text) {
    const std::int32_t at = Strings.End();
    Strings.U16(text.size()).Text(text).PadTo(4);
    while (Strings.End() - at < 8) Strings.U8(0x57);
    return at;
  }
  /// An id whose bytes are all `fill`.
  std::int32_t AddGuid(unsigned fill) {
    const std::int32_t at = Guids.End();
    Guids.Fill(16, fill).I32(-2).I32(-1);
    return at;
  }
  /// Imports a library, and of it the type of position 0 as the first imported one.
  void AddImport(std::int32_t guid, std::string_view file, int major, int minor) {
    Imports.I32(guid).U32(0).U16(major).U16(minor).U16(file.size() << 2 | 1).Text(file).PadTo(4);
    ImportedTypes.U32(0).I32(0).I32(0);
  }
  /// Type description; the result is the encoded type.
  std::int32_t AddNode(unsigned kind, std::int32_t data) {
    const std::int32_t at = TypeNodes.End();
    TypeNodes.U16(kind).U16(0x7FFF).I32(data);
    return at;
  }
  /// A value that is stored outside of its member.
  std::int32_t AddValue(const Bytes& value) {
    const std::int32_t at = Values.End();
    Values.Append(value.Data).PadTo(4);
    return at;
  }
  /// A value that stands in its member.
  static std::int32_t Packed(int varType, unsigned bits) {
    return static_cast<std::int32_t>(0x80000000u | static_cast<unsigned>(varType) << 26 | bits);
  }
  static std::int32_t Plain(int varType) {
    return static_cast<std::int32_t>(0x80000000u | static_cast<unsigned>(varType) << 16 |
                                     static_cast<unsigned>(varType));
  }
  static void AddField(Type& type, std::int32_t encoded, std::int32_t name, unsigned kind,
                       std::int32_t value) {
    type.Places.push_back(type.Records.End());
    type.Records.U16(20).U16(type.Variables).I32(encoded).U32(0).U16(kind).U16(0).I32(value);
    type.Names.push_back(name);
    type.Ids.push_back(0x40000000 + static_cast<std::int32_t>(type.Variables++));
  }
  struct Argument {
    std::int32_t Type;
    std::int32_t Name;
    std::uint32_t Flags;
  };
  /// A virtual function that gives nothing but a failure code; `kind` 1 function, 2 get, 4 let. All
  /// functions of a type come before its fields.
  static void AddFunction(Type& type, unsigned kind, std::int32_t name, std::int32_t id,
                          std::int32_t help, const std::vector<Argument>& arguments) {
    type.Places.push_back(type.Records.End());
    Bytes& record = type.Records;
    record.U16(24 + 8 + 12 * arguments.size()).U16(type.Functions);
    record.I32(Plain(25)).U32(0).U16(8 * type.Functions).U16(0).U32(0x400 | kind << 3 | 1);
    record.U16(arguments.size()).U16(0).I32(0).I32(help);
    for (const Argument& item : arguments) record.I32(item.Type).I32(item.Name).U32(item.Flags);
    type.Names.push_back(name);
    type.Ids.push_back(id);
    ++type.Functions;
  }

  Image Build() const {
    Bytes file;
    file.Text("MSFT").U32(0x00010002).I32(Guids.Size() == 0 ? -1 : 0).U32(Lcid).U32(0).U32(0x41);
    file.U16(1).U16(2).U32(0).U32(Types.size());
    file.I32(LibraryHelp).U32(0).U32(0).U32(0).U32(0).I32(LibraryName).I32(-1).I32(-1);
    file.U32(0x20).U32(0x80).I32(-1).U32(ImportedTypes.Size() / 12);
    for (std::size_t i = 0; i < Types.size(); ++i) file.U32(100 * i);
    const std::size_t directory = file.Size();
    file.Fill(240);
    Bytes infos;
    infos.Fill(100 * Types.size());
    const Bytes guidHash = Bytes().Fill(0x80, 0xFF), nameHash = Bytes().Fill(0x200, 0xFF), none;
    const Bytes* segments[15] = {&infos,  &ImportedTypes, &Imports, &References, &guidHash,
                                 &Guids,  &nameHash,      &Names,   &Strings,    &TypeNodes,
                                 &Arrays, &Values,        &Custom,  &none,       &none};
    std::size_t typesAt = 0;
    for (std::size_t i = 0; i < 15; ++i) {
      if (i == 0) typesAt = file.Size();
      const std::size_t at = segments[i]->Size() == 0 ? 0xFFFFFFFFu : file.Size();
      file.Append(segments[i]->Data);
      file.Set32(directory + 16 * i, at);
      file.Set32(directory + 16 * i + 4, segments[i]->Size());
      file.Set32(directory + 16 * i + 8, 0xFFFFFFFFu);
      file.Set32(directory + 16 * i + 12, 15);
    }
    std::vector<std::size_t> blocks;
    for (std::size_t i = 0; i < Types.size(); ++i) {
      const Type& type = Types[i];
      std::size_t block = file.Size();
      if (type.SharedBlock >= 0) {
        block = blocks[static_cast<std::size_t>(type.SharedBlock)];
      } else if (!type.Ids.empty()) {
        file.U32(type.Records.Size()).Append(type.Records.Data);
        for (const auto* list : {&type.Ids, &type.Names, &type.Places})
          for (std::int32_t item : *list) file.I32(item);
      }
      blocks.push_back(block);
      const Bytes info = TypeRecord(type, i, block);
      std::copy(info.Data.begin(), info.Data.end(), &file.Data[typesAt + 100 * i]);
    }
    return file.Data;
  }

 private:
  static Bytes TypeRecord(const Type& type, std::size_t index, std::size_t block) {
    Bytes info;
    info.U32(type.Kind | 0x20 | index << 16);
    info.U32(block).U32(0).U32(0).U32(3).U32(0);
    info.U16(type.Functions).U16(type.Variables).Fill(16).I32(type.Guid).U32(type.Flags);
    info.I32(type.Name).U16(0).U16(0).I32(-1).U32(0).U32(0).I32(-1).U16(type.Implemented).U16(0);
    return info.U32(0).I32(type.DataType).U32(0).U32(0).I32(-1);
  }
};

/// The older format: entries with a group of records each.
class SltgBuilder {
 public:
  struct Entry {
    unsigned Name = 0;
    unsigned Kind = 0, BlockKind = 0;
    unsigned Flags = 0;
    unsigned GuidFill = 0;
    /// Compressed help string.
    Image Help;
    /// Records; offsets are from their start.
    Image Group;
    unsigned Functions = 0, Variables = 0, Implemented = 0;
    unsigned FirstFunction = 0xFFFF, FirstVariable = 0xFFFF, FirstImplemented = 0xFFFF;
    unsigned Alias = 0;
    bool IsPlainAlias = true;
    std::vector<std::string> References;
  };

  std::vector<Entry> Entries;
  unsigned LibraryName = 0;
  Bytes NameTable;
  /// Longest string, length, nodes.
  Image HelpTree;

  unsigned AddName(std::string_view text) {
    const auto at = static_cast<unsigned>(NameTable.Size());
    NameTable.Fill(8, 0xFF).Text(text).U8(0).PadTo(2, 0);
    return at;
  }

  Image Build() const {
    Bytes index;
    index.U8(1).Text("CompObj").U8(0).Text("dir").U8(0);
    std::vector<std::size_t> indexAt;
    for (std::size_t i = 0; i < Entries.size(); ++i) {
      indexAt.push_back(index.Size());
      index.Text(IndexName(i)).U8(0);
    }
    std::vector<Image> blocks;
    for (const Entry& entry : Entries) blocks.push_back(TypeBlock(entry));
    const Image library = LibraryBlock();
    Bytes file;
    file.Text("SLTG").U16(Entries.size() + 2).U16(9).U16(index.Size()).U16(1);
    file.Fill(16, 0x46).U32(0x44).U32(0xFFFF0000u);
    for (std::size_t i = 0; i < Entries.size(); ++i)
      file.U32(blocks[i].size()).U16(indexAt[i]).U16(i + 2);
    file.U32(library.size()).U16(9).U16(0);
    file.Append(index.Data).Fill(9);
    for (const Image& block : blocks) file.Append(block);
    return file.Append(library).Fill(20).Text("TYPELIB").Fill(40).Data;
  }

 private:
  static std::string IndexName(std::size_t i) {
    return "AAAAAAAAA" + std::string(1, static_cast<char>('A' + i));
  }
  static Bytes& Prefixed(Bytes& out, std::string_view text) {
    return out.U16(text.size()).Text(text);
  }

  static Image TypeBlock(const Entry& entry) {
    Bytes block;
    block.U16(0x0501);
    const std::size_t referencesAt = block.Size();
    block.U32(0xFFFFFFFFu).U32(0xFFFFFFFFu);
    const std::size_t membersAt = block.Size();
    block.U32(0).U32(0xFFFFFFFFu).U16(1).U16(0).U32(0xFFFE0000u);
    block.U8((entry.Flags & 31) << 3 | 2).U8(entry.Flags >> 5).U8(2).U8(entry.BlockKind).U32(0);
    if (!entry.References.empty()) {
      block.Set32(referencesAt, block.Size());
      const std::size_t count = entry.References.size();
      block.U8(0xDF).Fill(0x43).U32(8 * count).Fill(8 * count).Fill(7);
      for (const std::string& reference : entry.References) Prefixed(block, reference);
      block.U8(0xDF);
    }
    block.Set32(membersAt, block.Size());
    block.U16(0).U16(0).U8(0).U32(entry.Group.size());
    block.Append(entry.Group);
    block.U16(entry.Functions).U16(entry.Variables).U16(entry.Implemented).U16(0);
    block.U16(entry.FirstFunction).U16(entry.FirstVariable).U16(entry.FirstImplemented).Fill(6);
    block.U16(entry.Alias).U16(0).U32(1000).U16(entry.IsPlainAlias ? 1 : 0).U16(0);
    block.U16(4).U16(4).U32(0).U16(0).Fill(10);
    return block.U16(entry.Group.size()).Data;
  }

  Image LibraryBlock() const {
    Bytes block;
    block.U16(0x51CC).U16(3).U16(LibraryName).U16(0xFFFF);
    Prefixed(block, "An old library");
    block.U16(0xFFFF).U32(0).U16(1).U16(0x409).U32(0).U16(0).U16(2).U16(5).Fill(16, 0x11);
    block.Fill(0x40, 0xFF).U16(Entries.size());
    for (std::size_t i = 0; i < Entries.size(); ++i) {
      const Entry& entry = Entries[i];
      Prefixed(block, IndexName(i)).U16(0xFFFF).U16(0xFFFF).U16(entry.Name);
      block.U16(entry.Help.size()).Append(entry.Help).U16(0xFFFF).U32(77);
      block.U16(0xFFFF).Fill(16, entry.GuidFill).U16(entry.Kind);
    }
    block.U32(block.Size() + 4 + HelpTree.size()).Append(HelpTree);
    block.U16(0xFFFF).Fill(10).Fill(0x200, 0xFF).U32(NameTable.Size());
    return block.Append(NameTable.Data).Data;
  }
};

/// A PE file of one section with resources.
struct PeBuilder {
  bool IsWide = false;
  std::map<int, Image> TypeLibraries;
  Image VersionBlock;

  static Image Version(unsigned a, unsigned b, unsigned c, unsigned d) {
    Bytes block;
    block.U16(92).U16(52).U16(0);
    for (char c16 : std::string_view("VS_VERSION_INFO")) block.U16(c16);
    block.U16(0).PadTo(4, 0);
    return block.U32(0xFEEF04BD).U32(0x10000).U32(a << 16 | b).U32(c << 16 | d).Fill(36).Data;
  }

  Image Build() const {
    constexpr std::uint32_t address = 0x3000, offset = 0x400;
    const Image resources = Resources(address);
    Bytes file;
    file.Text("MZ").Fill(58).U32(0x80).PadTo(0x80, 0).Text("PE").U16(0);
    const unsigned optional = (IsWide ? 112 : 96) + 128;
    file.U16(IsWide ? 0x8664 : 0x14C).U16(1).Fill(12).U16(optional).U16(0x2102);
    file.U16(IsWide ? 0x20B : 0x10B).Fill(IsWide ? 106 : 90).U32(16).Fill(16).U32(address);
    file.U32(resources.size()).Fill(128 - 24);
    file.Text(".rsrc").Fill(3).U32(resources.size()).U32(address);
    file.U32(resources.size()).U32(offset).Fill(16).PadTo(offset, 0);
    return file.Append(resources).Data;
  }

 private:
  // Root, one directory a type, one a number; then leaves, the name of the type and the data.
  Image Resources(std::uint32_t address) const {
    struct Item {
      int Id;
      const Image* Data;
    };
    std::vector<std::vector<Item>> types;
    if (!TypeLibraries.empty()) types.emplace_back();
    for (const auto& [id, data] : TypeLibraries) types.back().push_back({id, &data});
    if (!VersionBlock.empty()) types.push_back({{1, &VersionBlock}});
    std::size_t at = 16 + 8 * types.size();
    std::vector<std::size_t> typeAt;
    for (const auto& items : types) {
      typeAt.push_back(at);
      at += 16 + 8 * items.size() + (24 + 16) * items.size();
    }
    const std::size_t nameAt = at;
    at += 16;
    Bytes out;
    const bool hasLibraries = !TypeLibraries.empty();
    out.Fill(12).U16(hasLibraries ? 1 : 0).U16(types.size() - (hasLibraries ? 1 : 0));
    for (std::size_t i = 0; i < types.size(); ++i)
      out.U32(i == 0 && hasLibraries ? 0x80000000u | nameAt : 16).U32(0x80000000u | typeAt[i]);
    Bytes data;
    for (std::size_t i = 0; i < types.size(); ++i) {
      const auto& items = types[i];
      out.Fill(14).U16(items.size());
      std::size_t leaf = typeAt[i] + 16 + 8 * items.size();
      for (std::size_t k = 0; k < items.size(); ++k)
        out.U32(items[k].Id).U32(0x80000000u | (leaf + 40 * k));
      for (const Item& item : items) {
        out.Fill(14).U16(1).U32(0x409).U32(leaf + 24);
        out.U32(address + at + data.Size());
        out.U32(item.Data->size()).U32(0).U32(0);
        data.Append(*item.Data).PadTo(4, 0);
        leaf += 40;
      }
    }
    out.U16(7);
    for (char c : std::string_view("TypeLib")) out.U16(c);
    return out.Append(data.Data).Data;
  }
};

}  // namespace vendrel::typelib::test
