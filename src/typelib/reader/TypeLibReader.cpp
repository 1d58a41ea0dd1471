#include "typelib/reader/TypeLibReader.h"

#include <algorithm>
#include <cstring>

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "typelib/reader/CompiledFile.h"
#include "typelib/reader/LibraryFinder.h"
#include "typelib/reader/MsftReader.h"
#include "typelib/reader/SltgReader.h"
#include "typelib/reader/TypeLibLimits.h"

namespace vendrel::typelib {
namespace {

struct Location {
  std::string File;
  /// 0: none was given.
  int ResourceId = 0;
};

// A number behind the path counts only when no file bears the full name.
std::unique_ptr<ByteSource> Open(const std::string& path, Location& location) {
  location = {path, 0};
  const std::size_t mark = path.find_last_of("\\/");
  const bool hasNumber =
      mark != std::string::npos && mark + 1 < path.size() && path.size() - mark <= 6 &&
      std::all_of(path.begin() + static_cast<std::ptrdiff_t>(mark) + 1, path.end(), IsDigitAscii);
  if (!hasNumber) return OpenBytes(path);
  try {
    return OpenBytes(path);
  } catch (const VendrelError&) {
    location = {path.substr(0, mark), std::stoi(path.substr(mark + 1))};
    return OpenBytes(location.File);
  }
}

bool StartsWith(std::span<const std::uint8_t> bytes, const char* magic) {
  return bytes.size() >= 4 && std::memcmp(bytes.data(), magic, 4) == 0;
}

// The bytes of the library: the file itself, or the resource of the wanted number.
std::vector<std::uint8_t> ReadImage(ByteSource& source, int& resourceId) {
  if (!CompiledFile::HasMagic(source)) {
    if (source.Size() > kMaxImageBytes) throw DataError("larger than any type library");
    if (!StartsWith(source.Read(0, 4), "MSFT") && !StartsWith(source.Read(0, 4), "SLTG"))
      throw DataError("not a type library");
    resourceId = 0;
    return source.Read(0, static_cast<std::size_t>(source.Size()));
  }
  if (resourceId == 0) resourceId = 1;
  const std::vector<Resource> found = CompiledFile(source).TypeLibraries();
  for (const Resource& resource : found)
    if (resource.Id == resourceId)
      return source.Read(resource.Offset, std::min(resource.Length, kMaxImageBytes));
  if (found.empty()) throw DataError("the file holds no type library");
  throw DataError("no type library of number " + std::to_string(resourceId));
}

std::shared_ptr<TypeLibInfo> Load(ByteSource& source, const Location& location,
                                  const TypeLibOptions& options) try {
  try {
    auto library = std::make_shared<TypeLibInfo>();
    library->ContainingFile = location.File;
    library->ResourceId = location.ResourceId;
    library->Image = ReadImage(source, library->ResourceId);
    library->OwnedFinder = options.Finder;
    library->Finder = options.Finder.get();
    if (options.CheckCoverage) library->Coverage = std::make_unique<CoverageMap>(library->Image);
    if (StartsWith(library->Image, "MSFT")) {
      MsftReader(*library, options).Read();
    } else if (StartsWith(library->Image, "SLTG")) {
      SltgReader(*library, options).Read();
    } else {
      throw DataError("the resource is not a type library");
    }
    return library;
  } catch (const DataError& error) {
    throw VendrelError(errInvalidFileFormat,
                       location.File.empty() ? error.what() : location.File + ": " + error.what());
  }
}
VENDREL_CONTEXT(trace::Parameter("File", location.File),
                trace::Parameter("ResourceId", location.ResourceId))

// A version block: lengths, a key, and the fixed part behind it, found by its signature.
std::string VersionText(std::span<const std::uint8_t> block, const std::string& delimiter) {
  constexpr std::uint32_t signature = 0xFEEF04BD;
  constexpr std::size_t searched = 128;
  ByteStream stream(block, "the version block");
  for (std::size_t at = 0; at < searched && at + 16 <= block.size(); at += 4) {
    stream.Seek(at);
    if (stream.U32() != signature) continue;
    stream.Skip(4);
    const std::uint32_t high = stream.U32(), low = stream.U32();
    return std::to_string(high >> 16) + delimiter + std::to_string(high & 0xFFFF) + delimiter +
           std::to_string(low >> 16) + delimiter + std::to_string(low & 0xFFFF);
  }
  return {};
}

}  // namespace

std::shared_ptr<TypeLibInfo> TypeLibInfoFromFile(const std::string& path,
                                                 const TypeLibOptions& options) try {
  Location location;
  const std::unique_ptr<ByteSource> source = Open(path, location);
  return Load(*source, location, options);
}
VENDREL_CONTEXT(path)

std::shared_ptr<TypeLibInfo> TypeLibInfoFromBytes(std::span<const std::uint8_t> file,
                                                  const TypeLibOptions& options,
                                                  int resourceId) try {
  MemoryBytes source(file);
  return Load(source, {"", resourceId}, options);
}
VENDREL_CONTEXT(resourceId)

std::vector<int> TypeLibResourceIds(const std::string& path) {
  std::vector<int> ids;
  try {
    Location location;
    const std::unique_ptr<ByteSource> source = Open(path, location);
    if (CompiledFile::HasMagic(*source))
      for (const Resource& resource : CompiledFile(*source).TypeLibraries())
        ids.push_back(resource.Id);
  } catch (const std::exception&) {
    // Whatever is wrong with the file, it has no libraries to offer.
  }
  return ids;
}

bool HoldsTypeLibrary(ByteSource& file) {
  if (CompiledFile::HasMagic(file)) return !CompiledFile(file).TypeLibraries().empty();
  const std::vector<std::uint8_t> magic = file.Read(0, 4);
  return StartsWith(magic, "MSFT") || StartsWith(magic, "SLTG");
}

std::string ReadLibraryId(const std::string& nativePath) {
  try {
    TypeLibOptions options;
    options.HeaderOnly = true;
    const auto library = TypeLibInfoFromFile(nativePath, options);
    return library->Id.IsNull() ? std::string() : library->GUID();
  } catch (const std::exception&) {
    return {};
  }
}

std::string ReadFileVersion(const std::string& nativePath, const std::string& delimiter) {
  try {
    const std::unique_ptr<ByteSource> source = OpenBytes(nativePath);
    if (!CompiledFile::HasMagic(*source)) return {};
    constexpr std::size_t enough = 512;
    for (const Resource& block : CompiledFile(*source).VersionBlocks())
      return VersionText(source->Read(block.Offset, std::min(block.Length, enough)), delimiter);
  } catch (const std::exception&) {
    // No version block.
  }
  return {};
}

}  // namespace vendrel::typelib
