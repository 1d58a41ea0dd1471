#include "dotnet/metadata/Image.h"

#include <cstring>

#include "diagnostics/Context.h"
#include "dotnet/metadata/MetadataLimits.h"
#include "dotnet/metadata/PeImage.h"
#include "services/ByteSource.h"

namespace vendrel::metadata {
namespace {

constexpr std::uint32_t kInvalidLength = 0xFFFFFFFF;

AssemblyIdentity IdentityIn(const Image& image, Table table, unsigned firstVersion,
                            unsigned nameColumn, std::uint32_t row) {
  AssemblyIdentity identity;
  identity.Name = image.Text(table, nameColumn, row);
  for (unsigned i = 0; i < 4; ++i)
    identity.Version[i] =
        static_cast<std::uint16_t>(image.Tables().Cell(table, firstVersion + i, row));
  return identity;
}

// The length in front of a blob: one, two or four bytes.
std::uint32_t TakeLength(ByteStream& heap) {
  const std::uint32_t first = heap.U8();
  if (first < 0x80) return first;
  if (first < 0xC0) return (first & 0x3F) << 8 | heap.U8();
  if (first >= 0xE0) return kInvalidLength;
  std::uint32_t length = first & 0x1F;
  for (int i = 0; i < 3; ++i) length = length << 8 | heap.U8();
  return length;
}

std::string WithoutExtension(std::string_view name) {
  return std::string(name.substr(0, name.rfind('.')));
}

}  // namespace

std::string AssemblyIdentity::VersionText() const {
  std::string text;
  for (const std::uint16_t part : Version) text += (text.empty() ? "" : ".") + std::to_string(part);
  return text;
}

std::shared_ptr<const Image> Image::Open(std::vector<std::uint8_t> bytes, std::string path) {
  const std::shared_ptr<Image> image(new Image);
  image->mBytes = std::move(bytes);
  image->mPath = std::move(path);
  try {
    MemoryBytes file(image->mBytes);
    const CompiledHeaders headers = ReadHeaders(file);
    if (headers.Kind == FileKind::NotCompiled)
      throw VendrelError(errInvalidFileFormat, "not a compiled file");
    if (headers.Kind == FileKind::Native)
      throw VendrelError(errInvalidFileFormat, "native code: the file holds no .NET metadata");
    image->ReadMetadata(headers.MetadataOffset, headers.MetadataSize);
  } catch (const DataError& error) {
    throw VendrelError(errInvalidFileFormat, error.what());
  }
  return image;
}

void Image::ReadMetadata(std::uint64_t offset, std::uint32_t size) {
  if (offset >= mBytes.size()) throw DataError("the metadata begin past the end of the file");
  std::span<const std::uint8_t> metadata(mBytes);
  metadata = metadata.subspan(static_cast<std::size_t>(offset));
  if (size < metadata.size())
    metadata = metadata.first(size);
  else if (size > metadata.size())
    mMessages.push_back("the metadata are cut off by the end of the file");
  mStreams = ReadRoot(metadata);
  mTables = metadata::Tables(mStreams.Tables, mStreams.WideIndexes, mMessages);
}

std::shared_ptr<const Image> OpenImage(const std::string& nativePath) try {
  const auto file = OpenBytes(nativePath);
  if (file->Size() > kMaxFileBytes) throw VendrelError(errInvalidFileFormat, "larger than 512 MB");
  return Image::Open(file->Read(0, static_cast<std::size_t>(file->Size())), nativePath);
}
VENDREL_CONTEXT(nativePath)

AssemblyIdentity Image::Identity() const {
  if (mTables.Rows(tAssembly) > 0) return IdentityIn(*this, tAssembly, 1, 7, 1);
  AssemblyIdentity part;
  part.Name = WithoutExtension(Text(tModule, 1, 1));
  return part;
}

AssemblyIdentity Image::Reference(std::uint32_t assemblyRef) const {
  return IdentityIn(*this, tAssemblyRef, 0, 6, assemblyRef);
}

std::string_view Image::Text(std::uint32_t index) const {
  const auto heap = mStreams.Strings;
  if (index >= heap.size()) return {};
  const auto* start = reinterpret_cast<const char*>(heap.data()) + index;
  const std::size_t window = std::min(heap.size() - index, kMaxNameText);
  const void* end = std::memchr(start, 0, window);
  return {start, end ? static_cast<std::size_t>(static_cast<const char*>(end) - start) : window};
}

ByteStream Image::Blob(std::uint32_t index) const {
  if (index == 0) return {};
  ByteStream heap(mStreams.Blobs, "the blob heap");
  heap.Seek(index);
  const std::uint32_t length = TakeLength(heap);
  if (length == kInvalidLength) throw DataError("a blob has no length");
  return heap.Part(heap.Position(), length, "a blob");
}

}  // namespace vendrel::metadata
