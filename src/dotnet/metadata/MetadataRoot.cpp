#include "dotnet/metadata/MetadataRoot.h"

#include <algorithm>
#include <vector>

#include "core/Ascii.h"
#include "services/ByteStream.h"

namespace vendrel::metadata {
namespace {

constexpr std::uint32_t kSignature = 0x424A5342;
constexpr std::size_t kMaxStreams = 64, kMaxVersion = 255, kMaxStreamName = 32;

struct Entry {
  std::string_view Name;
  std::span<const std::uint8_t> Bytes;
};

constexpr std::size_t Padded(std::size_t size) { return (size + 3) & ~std::size_t{3}; }

// A stream that runs past the end has what is there.
Entry ReadEntry(ByteStream& root, std::span<const std::uint8_t> metadata) {
  const std::uint32_t offset = root.U32();
  const std::uint32_t size = root.U32();
  const std::size_t nameAt = root.Position();
  Entry entry;
  entry.Name = root.CharsToNul(kMaxStreamName);
  const std::size_t end = nameAt + Padded(root.Position() - nameAt);
  root.Seek(std::min(end, root.Size()));
  if (offset < metadata.size())
    entry.Bytes = metadata.subspan(offset, std::min<std::size_t>(size, metadata.size() - offset));
  return entry;
}

std::vector<Entry> ReadEntries(ByteStream& root, std::span<const std::uint8_t> metadata) {
  root.Skip(2);
  const std::size_t count = std::min<std::size_t>(root.U16(), kMaxStreams);
  std::vector<Entry> entries;
  for (std::size_t i = 0; i < count && root.Left() >= 9; ++i)
    entries.push_back(ReadEntry(root, metadata));
  return entries;
}

// In plain metadata the last stream of a name counts and letter case with it; metadata that can be
// edited while the program runs takes the first, in any case.
std::span<const std::uint8_t> Find(const std::vector<Entry>& entries, std::string_view name,
                                   bool edited) {
  std::span<const std::uint8_t> found;
  for (const Entry& entry : entries) {
    if (edited && EqualsNoCaseAscii(entry.Name, name)) return entry.Bytes;
    if (!edited && entry.Name == name) found = entry.Bytes;
  }
  return found;
}

bool Has(const std::vector<Entry>& entries, std::string_view name) {
  return std::any_of(entries.begin(), entries.end(),
                     [&](const Entry& entry) { return EqualsNoCaseAscii(entry.Name, name); });
}

}  // namespace

Streams ReadRoot(std::span<const std::uint8_t> metadata) {
  ByteStream root(metadata, "the metadata root");
  if (root.U32() != kSignature) throw DataError("the metadata do not begin with BSJB");
  root.Skip(8);
  const std::uint32_t length = root.U32();
  if (length > kMaxVersion + 1) throw DataError("the version text of the metadata has no end");
  Streams streams;
  streams.Version = root.Chars(Padded(length));
  streams.Version = streams.Version.substr(0, streams.Version.find('\0'));
  const std::vector<Entry> entries = ReadEntries(root, metadata);
  const bool edited = Has(entries, "#-") || Has(entries, "#Schema");
  streams.WideIndexes = edited && Has(entries, "#JTD");
  streams.Tables = Find(entries, "#-", edited);
  if (streams.Tables.empty()) streams.Tables = Find(entries, "#~", edited);
  if (streams.Tables.empty()) throw DataError("the metadata have no tables");
  streams.Strings = Find(entries, "#Strings", edited);
  streams.Blobs = Find(entries, "#Blob", edited);
  streams.Guids = Find(entries, "#GUID", edited);
  return streams;
}

}  // namespace vendrel::metadata
