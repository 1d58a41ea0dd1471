#pragma once
// Compiled files are large and their libraries small, so a file is read in the pieces asked for.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace vendrel::typelib {

/// A file of known size, on disk or in memory.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  virtual std::uint64_t Size() const = 0;
  /// Up to `length` bytes from `offset` on; fewer at the end of the file.
  virtual std::vector<std::uint8_t> Read(std::uint64_t offset, std::size_t length) = 0;
};

class MemorySource final : public ByteSource {
 public:
  explicit MemorySource(std::span<const std::uint8_t> bytes) : mBytes(bytes) {}
  std::uint64_t Size() const override { return mBytes.size(); }
  std::vector<std::uint8_t> Read(std::uint64_t offset, std::size_t length) override;

 private:
  std::span<const std::uint8_t> mBytes;
};

/// Opens a regular file. Raises VendrelError 53 when it is absent, 75 when it cannot be read.
std::unique_ptr<ByteSource> OpenFileSource(const std::string& nativePath);

}  // namespace vendrel::typelib
