#include "typelib/reader/SltgReader.h"

#include <algorithm>
#include <charconv>

#include "core/Ascii.h"
#include "typelib/reader/SltgGroup.h"
#include "typelib/reader/TypeLibLimits.h"

namespace vendrel::typelib {
namespace {

constexpr std::size_t kFrameBytes = 36;
constexpr std::uint16_t kNone = 0xFFFF;
constexpr std::uint16_t kLibraryMagic = 0x51CC;

// Numbers in references are hexadecimal.
std::uint32_t HexNumber(std::string_view text) {
  std::uint32_t value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value, 16);
  return value;
}

}  // namespace

SltgReader::SltgReader(TypeLibInfo& library, const TypeLibOptions& options)
    : mLibrary(library),
      mOptions(options),
      mImage(library.Image, "the file", library.Coverage.get()),
      mTexts(std::make_unique<ImageTexts>(library, options.CodePage, 0)) {}

SltgReader::~SltgReader() = default;

void SltgReader::Read() {
  mLibrary.Format = LibraryFormat::Sltg;
  ReadFrame();
  ReadLibraryBlock();
  if (!mOptions.HeaderOnly) ReadTypes();
}

// {magic, blocks + 1, 9, bytes of index strings, first block, format id, two words}; then for each
// block {length, index string, next}; the index strings; nine zeros; the blocks in chain order.
void SltgReader::ReadFrame() {
  ByteStream frame = mImage;
  if (mLibrary.Coverage)
    mLibrary.Coverage->AddRegion("the frame", 0, std::min(kFrameBytes, mImage.Size()));
  frame.Skip(4);
  const std::size_t count = std::size_t{frame.U16()} - 1;
  frame.Skip(2);
  const std::size_t indexBytes = frame.U16();
  std::size_t at = frame.U16();
  frame.Skip(24);
  ByteStream table = frame.Part(kFrameBytes, 8 * count, "the list of blocks");
  const ByteStream index = frame.Part(kFrameBytes + 8 * count, indexBytes, "the index strings");
  index.Cover(indexBytes);
  table.Cover(8 * count);
  frame.Seek(kFrameBytes + 8 * count + indexBytes).Skip(9);
  std::size_t place = frame.Position();
  std::vector<bool> used(count);
  // The blocks lie in the order of the chain, not of the table: each begins where the last one
  // ended.
  while (at != 0 && at <= count && !used[at - 1]) {
    used[at - 1] = true;
    table.Seek(8 * (at - 1));
    const std::size_t length = table.U32();
    const std::uint16_t nameOffset = table.U16();
    at = table.U16();
    const std::size_t present = std::min(length, mImage.Size() - place);
    if (present < length) mLibrary.Warn("the file is cut short");
    const ByteStream block = mImage.Part(place, present, "a block");
    if (mLibrary.Coverage) mLibrary.Coverage->AddRegion("block", place, present);
    place += present;
    const std::string name(index.At(nameOffset).CharsToNul(indexBytes));
    if (name == "dir") {
      mLibraryBlock = block;
    } else {
      mBlocks.emplace(name, block);
    }
  }
  // What follows the last block tells nothing.
  mImage.At(place).Cover(mImage.Size() - place);
  if (mLibraryBlock.Size() == 0) throw DataError("the block of the library is missing");
}

void SltgReader::ReadLibraryBlock() {
  ByteStream block = mLibraryBlock;
  if (block.U16() != kLibraryMagic) throw DataError("the block of the library is damaged");
  block.Skip(2);
  const std::uint16_t name = block.U16();
  PrefixedText(block);
  const std::string_view help = PrefixedText(block);
  const std::string_view helpFile = PrefixedText(block);
  mLibrary.HelpContext = block.U32();
  mLibrary.SysKind = block.U16();
  mLibrary.Lcid = block.U16();
  block.Skip(4);
  mLibrary.AttributeMask = block.U16();
  mLibrary.MajorVersion = block.U16();
  mLibrary.MinorVersion = block.U16();
  mLibrary.Id = Guid::FromBytes(block.Bytes(16));
  // From here on the language is known, and with it the code page of the texts.
  mTexts = std::make_unique<ImageTexts>(mLibrary, mOptions.CodePage, mLibrary.Lcid);
  mLibrary.HelpString = mTexts->String(help);
  mLibrary.HelpFile = mTexts->String(helpFile);
  Guarded("library", [&] {
    block.Skip(0x40);
    const std::size_t count = block.U16();
    for (std::size_t i = 0; i < count; ++i) ReadEntry(block, mEntries.emplace_back());
    // Names first: help words are only texts, names are what all else is found by.
    const std::size_t names = block.U32();
    Guarded("names", [&] { ReadNameTable(mLibraryBlock, names); });
    Guarded("help words", [&] {
      if (block.Position() + 6 <= names)
        mHelp = HelpTree(block.Part(block.Position(), names - block.Position(), "the help words"));
    });
  });
  Guarded("library", [&] { mLibrary.Name = Name(name); });
}

// {index string, another, FFFF, name, compressed help, FFFF, help context, hash link, id, kind}.
void SltgReader::ReadEntry(ByteStream& block, Entry& entry) {
  entry.Index = PrefixedText(block);
  PrefixedText(block);
  block.Skip(2);
  entry.Name = block.U16();
  const std::size_t length = block.U16();
  if (length != 0 && length != kNone) {
    entry.Help = block.Part(block.Position(), length, "a help string");
    block.Skip(length);
  }
  block.Skip(2);
  entry.HelpContext = block.U32();
  block.Skip(2);
  entry.Id = Guid::FromBytes(block.Bytes(16));
  entry.Kind = block.U16();
}

// {FFFF and ten bytes, hash, length, records}; a record is two links, the text and its NUL.
void SltgReader::ReadNameTable(ByteStream block, std::size_t offset) {
  block.Seek(offset);
  if (block.At(offset).U16() != kNone) block.Skip(0x20);
  block.Skip(12 + 0x200);
  const std::size_t length = block.U32();
  const std::size_t present = std::min(length, block.Left());
  if (present < length) mLibrary.Warn("the names are cut short");
  mNames = block.Part(block.Position(), present, "the names");
  // Tables that speed up a search follow.
  block.Skip(present);
  block.Cover(block.Left());
}

void SltgReader::ReadTypes() {
  mLibrary.TypeInfos.resize(mEntries.size());
  for (std::size_t i = 0; i < mEntries.size(); ++i) {
    TypeInfo& type = mLibrary.TypeInfos[i];
    type.Library = &mLibrary;
    type.TypeInfoNumber = static_cast<int>(i);
    type.AliasType.Library = &mLibrary;
    Guarded("type " + std::to_string(i), [&] { ReadType(mEntries[i], type); });
  }
}

void SltgReader::ReadType(Entry& entry, TypeInfo& type) {
  type.TypeKind = entry.Kind;
  type.Id = entry.Id;
  type.HelpContext = entry.HelpContext;
  Guarded("name of a type", [&] { type.Name = Name(entry.Name); });
  if (entry.Help.Size() != 0)
    Guarded(type.Name, [&] { type.HelpString = mTexts->KeepDecoded(mHelp.Decode(entry.Help)); });
  const auto found = mBlocks.find(entry.Index);
  if (found == mBlocks.end()) throw DataError(std::string(type.Name) + " has no block");
  Group group;
  group.Block = found->second;
  // A second entry of the same index string finds nothing, so that no block is read twice.
  mBlocks.erase(found);
  ByteStream block = group.Block;
  block.Skip(2);
  const std::uint32_t references = block.U32();
  block.Skip(4);
  const std::uint32_t members = block.U32();
  block.Skip(4);
  type.MajorVersion = block.U16();
  type.MinorVersion = block.U16();
  block.Skip(4);
  // The flags begin three bits into the first byte.
  const unsigned low = block.U8(), high = block.U8();
  type.AttributeMask = static_cast<int>(low >> 3 | high << 5);
  block.Skip(6);
  if (references != 0xFFFFFFFFu)
    Guarded(type.Name, [&] { ReadReferences(group.Block, references, group); });
  block.Seek(members).Skip(5);
  const std::size_t length = block.U32();
  group.Records = group.Block.Part(block.Position(), length, "the members");
  group.Tail = group.Block.Part(block.Position() + length, kTailBytes, "the end of the members");
  group.Tail.Cover(kTailBytes);
  ReadGroup(group, type);
}

// 44 bytes, 8 times the count, so many words, 7 bytes, then a text for each reference.
void SltgReader::ReadReferences(ByteStream block, std::size_t offset, Group& group) {
  block.Seek(offset).Skip(0x44);
  const std::size_t bytes = block.U32();
  block.Skip(bytes);
  block.Skip(7);
  for (std::size_t i = 0; i < bytes / 8; ++i)
    group.References.push_back(ParseReference(PrefixedText(block)));
  block.Cover(1);
}

// "*\Rffff*#n": entry n of this library; "*\Rxxxx*#n": of the library that name xxxx describes.
TypeReference SltgReader::ParseReference(std::string_view text) {
  if (text.size() < 9 || text.substr(0, 3) != "*\\R") return {};
  const std::uint32_t home = HexNumber(text.substr(3, 4));
  const std::size_t mark = text.find('#', 7);
  if (mark == std::string_view::npos) return {};
  const std::uint32_t number = HexNumber(text.substr(mark + 1));
  if (home == kNone) return TypeReference::Own(std::min<std::uint32_t>(number, 0xFFFF));
  ImportedType type;
  type.Library = ImportOf(Name(home));
  type.Number = number;
  mLibrary.ImportedTypes.push_back(type);
  return TypeReference::Imported(mLibrary.ImportedTypes.size() - 1);
}

// "*\G{id}#major.minor#language#path#description".
std::uint32_t SltgReader::ImportOf(std::string_view description) {
  const auto [known, isNew] = mImports.try_emplace(
      std::string(description), static_cast<std::uint32_t>(mLibrary.Imports.size()));
  if (!isNew) return known->second;
  std::string_view rest = description;
  if (rest.substr(0, 3) == "*\\G") rest.remove_prefix(3);
  LibraryImport import;
  if (const auto id = Guid::Parse(TakeField(rest, '#'))) {
    import.LibraryId = *id;
  } else {
    mLibrary.Warn("reference to an unknown library");
  }
  std::string_view version = TakeField(rest, '#');
  import.MajorVersion = static_cast<std::uint16_t>(HexNumber(TakeField(version, '.')));
  import.MinorVersion = static_cast<std::uint16_t>(HexNumber(version));
  import.Lcid = HexNumber(TakeField(rest, '#'));
  import.LeafName = TakeField(rest, '#');
  mLibrary.Imports.push_back(std::move(import));
  return known->second;
}

std::string_view SltgReader::Name(std::uint32_t offset) {
  if (offset >= kPreviousName) return {};
  ByteStream entry = mNames.At(offset);
  entry.Skip(8);
  const std::string_view bytes = entry.CharsToNul(kMaxPrefixedName);
  if (entry.Position() % 2 != 0) entry.Cover(1);
  return mTexts->Name(bytes);
}

std::string_view SltgReader::PrefixedText(ByteStream& stream) {
  const std::uint16_t length = stream.U16();
  return length == kNone ? std::string_view() : stream.Chars(length);
}

}  // namespace vendrel::typelib
