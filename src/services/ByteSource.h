#pragma once
// A file read in the pieces asked for: compiled files are large, and what is wanted of them small.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace vendrel {

/// A file of known size, on disk or in memory.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  virtual std::uint64_t Size() const = 0;
  /// Up to `length` bytes from `offset` on; fewer at the end of the file. Raises 70 or 75.
  virtual std::vector<std::uint8_t> Read(std::uint64_t offset, std::size_t length) = 0;
};

/// Bytes that someone else keeps.
class MemoryBytes final : public ByteSource {
 public:
  explicit MemoryBytes(std::span<const std::uint8_t> bytes) : mBytes(bytes) {}
  std::uint64_t Size() const override { return mBytes.size(); }
  std::vector<std::uint8_t> Read(std::uint64_t offset, std::size_t length) override;

 private:
  std::span<const std::uint8_t> mBytes;
};

/// Opens a regular file of the file source in force. Raises as `ReadWholeFile` does.
std::unique_ptr<ByteSource> OpenBytes(const std::string& nativePath);

}  // namespace vendrel
