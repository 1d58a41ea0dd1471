#pragma once
// Where a compiled file keeps its metadata.

#include <cstdint>
#include <string>

#include "services/ByteSource.h"

namespace vendrel::metadata {

enum class FileKind {
  NotCompiled,  // no program at all
  Native,       // a program without metadata
  Managed
};

/// What the headers of a file tell.
struct CompiledHeaders {
  FileKind Kind = FileKind::NotCompiled;
  std::uint64_t MetadataOffset = 0;
  std::uint32_t MetadataSize = 0;
  /// Of the CLI header: 1 IL only, 2 needs 32 bits, 8 signed.
  std::uint32_t Flags = 0;
};

/// Reads the headers and nothing else. A file whose headers are damaged behind the signature of a
/// program raises DataError.
CompiledHeaders ReadHeaders(ByteSource& file);

/// Whether a file of this machine holds metadata; false where it cannot be read.
bool HoldsMetadata(const std::string& nativePath);

}  // namespace vendrel::metadata
