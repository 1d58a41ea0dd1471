#include "dotnet/metadata/PeImage.h"

#include <algorithm>
#include <vector>

#include "diagnostics/VendrelError.h"
#include "dotnet/metadata/MetadataLimits.h"
#include "services/ByteStream.h"

namespace vendrel::metadata {
namespace {

constexpr std::size_t kDosHeader = 0x40;
constexpr std::size_t kSectionSize = 40;
constexpr std::uint32_t kCliDirectory = 14;
constexpr std::size_t kCliHeader = 72;

struct Section {
  std::uint32_t VirtualSize, Address, RawSize, RawOffset;
};

// The place in the file of an address in memory; 0 where no section holds it.
std::uint64_t OffsetOf(const std::vector<Section>& sections, std::uint32_t address) {
  for (const Section& section : sections) {
    const std::uint64_t size = std::max(section.VirtualSize, section.RawSize);
    if (address >= section.Address && address - section.Address < size)
      return std::uint64_t{section.RawOffset} + (address - section.Address);
  }
  return 0;
}

std::vector<Section> ReadSections(ByteStream headers, std::size_t from, unsigned count) {
  std::vector<Section> sections;
  if (from > headers.Size()) return sections;
  headers.Seek(from);
  for (unsigned i = 0; i < count && headers.Left() >= kSectionSize; ++i) {
    headers.Skip(8);
    Section section{};
    section.VirtualSize = headers.U32();
    section.Address = headers.U32();
    section.RawSize = headers.U32();
    section.RawOffset = headers.U32();
    headers.Skip(16);
    sections.push_back(section);
  }
  return sections;
}

}  // namespace

CompiledHeaders ReadHeaders(ByteSource& file) {
  CompiledHeaders found;
  const std::vector<std::uint8_t> start = file.Read(0, kDosHeader);
  if (start.size() < kDosHeader || start[0] != 'M' || start[1] != 'Z') return found;
  const std::uint32_t at = ByteStream(start, "the program header").At(0x3C).U32();
  const std::vector<std::uint8_t> signature = file.Read(at, 4);
  if (signature != std::vector<std::uint8_t>{'P', 'E', 0, 0}) return found;
  found.Kind = FileKind::Native;
  const std::vector<std::uint8_t> coff = file.Read(at, 26);
  ByteStream header(coff, "the PE header");
  const std::uint16_t sectionCount = header.Seek(6).U16();
  const std::uint16_t optionalSize = header.Seek(20).U16();
  const bool isWide = header.Seek(24).U16() == 0x20B;
  const std::vector<std::uint8_t> bytes =
      file.Read(at, std::size_t{24} + optionalSize + kSectionSize * sectionCount);
  ByteStream headers(bytes, "the PE header");
  const std::size_t directories = 24 + (isWide ? 112 : 96);
  if (headers.At(directories - 4).U32() <= kCliDirectory) return found;
  const std::uint32_t cliAddress = headers.At(directories + 8 * kCliDirectory).U32();
  if (cliAddress == 0) return found;
  const std::vector<Section> sections =
      ReadSections(headers, std::size_t{24} + optionalSize, sectionCount);
  const std::vector<std::uint8_t> cli = file.Read(OffsetOf(sections, cliAddress), kCliHeader);
  ByteStream cliHeader(cli, "the CLI header");
  const std::uint32_t metadata = cliHeader.Seek(8).U32();
  found.MetadataSize = cliHeader.U32();
  found.Flags = cliHeader.U32();
  found.MetadataOffset = OffsetOf(sections, metadata);
  if (found.MetadataOffset == 0) throw DataError("the metadata lie in no section");
  found.Kind = FileKind::Managed;
  return found;
}

bool HoldsMetadata(const std::string& nativePath) {
  try {
    const auto file = OpenBytes(nativePath);
    return ReadHeaders(*file).Kind == FileKind::Managed;
  } catch (const VendrelError&) {
    return false;
  } catch (const DataError&) {
    return false;
  }
}

}  // namespace vendrel::metadata
