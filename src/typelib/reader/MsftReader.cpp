#include "typelib/reader/MsftReader.h"

#include <algorithm>

#include "core/Ascii.h"
#include "services/TellingBytes.h"
#include "typelib/reader/TypeLibLimits.h"

namespace vendrel::typelib {
namespace {

constexpr std::size_t kHeaderBytes = 0x54;
constexpr std::size_t kShortestString = 8;
constexpr std::uint32_t kHasHelpStringDll = 0x100;
constexpr const char* kSegmentNames[] = {"the types",        "the imported types",
                                         "the import files", "the references",
                                         "the id hash",      "the ids",
                                         "the name hash",    "the names",
                                         "the strings",      "the type descriptions",
                                         "the arrays",       "the values",
                                         "the custom data",  "segment 13",
                                         "segment 14"};

constexpr std::size_t RoundUp4(std::size_t size) { return (size + 3) & ~std::size_t{3}; }

}  // namespace

MsftReader::MsftReader(TypeLibInfo& library, const TypeLibOptions& options)
    : mLibrary(library),
      mOptions(options),
      mImage(library.Image, "the file", library.Coverage.get()),
      mRecordBytesLeft(library.Image.size()) {}

// One damaged text or member must not cost the library: the step is given up, told, and the next
// begins.
void MsftReader::Guarded(const char* what, const std::function<void()>& step) {
  try {
    step();
  } catch (const DataError& error) {
    mLibrary.Warn(std::string(what) + ": " + error.what());
  }
}

void MsftReader::Read() {
  mLibrary.Format = LibraryFormat::Msft;
  ReadHeader();
  ReadDirectory();
  ChooseCodePage();
  Guarded("library", [&] { ReadLibraryTexts(); });
  if (mOptions.HeaderOnly) return;
  Guarded("import files", [&] { ReadImports(); });
  Guarded("imported types", [&] { ReadImportedTypes(); });
  Guarded("type descriptions", [&] { ReadTypeNodes(); });
  Guarded("types", [&] { ReadTypeInfos(); });
  Guarded("custom data", [&] { mLibrary.CustomData = CustomData(mCustomData); });
}

void MsftReader::ReadHeader() {
  ByteStream header = mImage.Part(0, std::min(kHeaderBytes, mImage.Size()), "the header");
  if (mLibrary.Coverage) mLibrary.Coverage->AddRegion("the header", 0, header.Size());
  header.Skip(4);
  if (header.U32() != 0x00010002) mLibrary.Warn("unknown version of the format");
  mIdOffset = header.I32();
  mLibrary.Lcid = header.U32();
  header.Skip(4);
  const std::uint32_t flags = header.U32();
  mLibrary.SysKind = static_cast<int>(flags & 15);
  mHasHelpStringDll = (flags & kHasHelpStringDll) != 0;
  mLibrary.MajorVersion = header.U16();
  mLibrary.MinorVersion = header.U16();
  mLibrary.AttributeMask = static_cast<int>(header.U32() & 0xFFFF);
  mTypeCount = header.U32();
  mHelpString = header.I32();
  mLibrary.HelpStringContext = header.U32();
  mLibrary.HelpContext = header.U32();
  header.Skip(8);  // numbers of names and of their characters
  mName = header.I32();
  mHelpFile = header.I32();
  mCustomData = header.I32();
  header.Skip(16);  // bucket counts, IDispatch, number of imported types
}

// The strings tell the code page of all texts, so they are looked at before any is converted.
void MsftReader::ChooseCodePage() {
  TellingBytes telling;
  ByteStream strings = mSegments[segStrings];
  while (EqualsNoCaseAscii(mOptions.CodePage, "auto") && strings.Left() >= 2) {
    const std::size_t start = strings.Position();
    const std::size_t length = std::min<std::size_t>(strings.U16(), strings.Left());
    telling.Feed(strings.Chars(length));
    const std::size_t end = std::max(start + kShortestString, RoundUp4(strings.Position()));
    strings.Skip(std::min(end - strings.Position(), strings.Left()));
  }
  mTexts = std::make_unique<ImageTexts>(mLibrary, mOptions.CodePage, mLibrary.Lcid, &telling);
}

// Behind the header an offset for each entry, then fifteen times {offset, length, -1, 15}: the two
// constants tell whether the place was computed rightly and the entry is sound.
void MsftReader::ReadDirectory() {
  // No count is believed before the file is seen to have room for it.
  if (mTypeCount > mImage.Size() / 4) {
    mLibrary.Warn("more types than the file has room for");
    mTypeCount = 0;
  }
  mDirectoryOffset = kHeaderBytes + (mHasHelpStringDll ? 4 : 0) + std::size_t{4} * mTypeCount;
  ByteStream directory = mImage.At(kHeaderBytes);
  if (mLibrary.Coverage)
    mLibrary.Coverage->AddRegion("the directory", kHeaderBytes,
                                 mDirectoryOffset - kHeaderBytes + 240);
  directory.Skip(mDirectoryOffset - kHeaderBytes);
  for (int i = 0; i < segCount; ++i) {
    const std::uint32_t offset = directory.U32();
    const std::uint32_t length = directory.U32();
    const bool isSound = directory.U32() == 0xFFFFFFFFu && directory.U32() == 0x0F;
    mSegments[i] = ByteStream({}, kSegmentNames[i]);
    if (length == 0 || length == 0xFFFFFFFFu) continue;
    if (!isSound || offset > mImage.Size()) {
      mLibrary.Warn(std::string(kSegmentNames[i]) + ": damaged entry of the directory");
      continue;
    }
    const std::size_t present = std::min<std::size_t>(length, mImage.Size() - offset);
    if (present < length) mLibrary.Warn(std::string(kSegmentNames[i]) + " are cut short");
    mSegments[i] = mImage.Part(offset, present, kSegmentNames[i]);
    if (mLibrary.Coverage) mLibrary.Coverage->AddRegion(kSegmentNames[i], offset, present);
  }
  // Hash tables serve those who look names up in the file; all entries are read here in any case.
  mSegments[segGuidHash].Cover(mSegments[segGuidHash].Size());
  mSegments[segNameHash].Cover(mSegments[segNameHash].Size());
}

void MsftReader::ReadLibraryTexts() {
  mLibrary.Id = ReadGuid(mIdOffset);
  mLibrary.Name = Name(mName);
  mLibrary.HelpString = String(mHelpString);
  mLibrary.HelpFile = String(mHelpFile);
  if (mHasHelpStringDll) mLibrary.HelpStringDll = String(mImage.At(kHeaderBytes).I32());
}

// {id, language, version, length << 2 and two bits, file name}, padded to 4.
void MsftReader::ReadImports() {
  ByteStream segment = mSegments[segImports];
  while (segment.Left() >= 14) {
    const std::int32_t offset = static_cast<std::int32_t>(segment.Position());
    LibraryImport import;
    import.LibraryId = ReadGuid(segment.I32());
    import.Lcid = segment.U32();
    import.MajorVersion = segment.U16();
    import.MinorVersion = segment.U16();
    const std::size_t length = segment.U16() >> 2;  // the two low bits are flags
    import.LeafName = mTexts->Name(segment.Chars(length));
    mImportByOffset.emplace(offset, static_cast<std::uint32_t>(mLibrary.Imports.size()));
    mLibrary.Imports.push_back(std::move(import));
    const std::size_t padded = RoundUp4(segment.Position());
    segment.Skip(std::min(padded - segment.Position(), segment.Left()));
  }
}

// {running index, bit 16 "by id", kind in the high byte; import file; id or position}.
void MsftReader::ReadImportedTypes() {
  ByteStream segment = mSegments[segImportedTypes];
  while (segment.Left() >= 12) {
    const std::uint32_t flags = segment.U32();
    const auto file = mImportByOffset.find(segment.I32());
    const std::int32_t target = segment.I32();
    ImportedType type;
    type.Library = file == mImportByOffset.end() ? UINT32_MAX : file->second;
    type.TypeKind = static_cast<int>(flags >> 24);
    type.ByGuid = (flags & 0x10000) != 0;
    type.Number = static_cast<std::uint32_t>(target);
    if (type.ByGuid) Guarded("imported type", [&] { type.Id = ReadGuid(target); });
    if (type.Library == UINT32_MAX) mLibrary.Warn("imported type of an unknown library");
    mLibrary.ImportedTypes.push_back(type);
  }
}

// {kind, resolved kind, target}. The table is kept as it stands, so that codes are places in it.
void MsftReader::ReadTypeNodes() {
  ByteStream segment = mSegments[segTypeNodes];
  mLibrary.TypeNodes.reserve(segment.Size() / 8);
  while (segment.Left() >= 8) {
    TypeNode node;
    node.VarType = segment.U16() & vtTypeMask;
    segment.Skip(2);
    const std::int32_t data = segment.I32();
    switch (node.VarType) {
      case vtPointer:
      case vtSafeArray: node.Link = Code(data); break;
      case vtFixedArray: Guarded("array", [&] { ReadBounds(data, node); }); break;
      case vtUserDefined: node.Link = Reference(data).Code; break;
      default: break;
    }
    mLibrary.TypeNodes.push_back(node);
  }
}

// {element, dimensions, 8 * dimensions}, then count and lower bound of each.
void MsftReader::ReadBounds(std::int32_t offset, TypeNode& node) {
  node.Link = PlainType(vtVoid);
  if (offset < 0) throw DataError("an array without a description");
  ByteStream array = mSegments[segArrays].At(static_cast<std::size_t>(offset));
  node.Link = Code(array.I32());
  const std::uint16_t dimensions = array.U16();
  array.Skip(2);
  if (dimensions > kMaxDimensions) throw DataError("an array of too many dimensions");
  // Several types may point at one description. It is read once, and all of them together cannot
  // hold more bounds than the segment has bytes for.
  auto [known, isNew] = mBoundsByOffset.try_emplace(offset);
  if (isNew) {
    known->second = {static_cast<std::uint32_t>(mLibrary.ArrayBounds.size()), std::uint16_t{0}};
    if (mLibrary.ArrayBounds.size() + dimensions > mSegments[segArrays].Size() / 8 + 1)
      throw DataError("overlapping arrays");
    for (unsigned i = 0; i < dimensions; ++i) {
      const std::uint32_t count = array.U32();
      mLibrary.ArrayBounds.push_back({count, array.I32()});
      ++known->second.second;
    }
  }
  node.FirstBound = known->second.first;
  node.Dimensions = known->second.second;
}

std::string_view MsftReader::Name(std::int32_t offset) {
  if (offset < 0) return {};
  ByteStream entry = mSegments[segNames].At(static_cast<std::size_t>(offset));
  entry.Skip(8);
  const std::size_t length = entry.U32() & 0xFF;  // above it flags and a hash
  const std::string_view bytes = entry.Chars(length);
  entry.Cover(RoundUp4(length) - length);
  return mTexts->Name(bytes);
}

std::string_view MsftReader::String(std::int32_t offset) {
  if (offset < 0) return {};
  ByteStream entry = mSegments[segStrings].At(static_cast<std::size_t>(offset));
  const std::size_t length = entry.U16();
  const std::string_view bytes = entry.Chars(length);
  // The smallest entry has 8 bytes.
  entry.Cover(std::max<std::size_t>(8, RoundUp4(length + 2)) - (length + 2));
  return mTexts->String(bytes);
}

Guid MsftReader::ReadGuid(std::int32_t offset) {
  if (offset < 0) return {};
  ByteStream entry = mSegments[segGuids].At(static_cast<std::size_t>(offset));
  const Guid guid = Guid::FromBytes(entry.Bytes(16));
  entry.Skip(8);
  return guid;
}

// Bit 0 marks an imported type, bit 1 the other half of a dual interface.
TypeReference MsftReader::Reference(std::int32_t stored) const {
  if (stored < 0) return {};
  const std::size_t offset = static_cast<std::size_t>(stored & ~3);
  return (stored & 1) != 0 ? TypeReference::Imported(offset / 12)
                           : TypeReference::Own(offset / kTypeInfoBytes);
}

TypeCode MsftReader::Code(std::int32_t stored) const {
  return stored < 0 ? PlainType(stored & vtTypeMask) : stored / 8;
}

}  // namespace vendrel::typelib
