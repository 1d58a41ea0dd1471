#pragma once
// The one way to untrusted bytes. A stream knows its part of the image and its name for messages;
// whatever would read past its end raises DataError, which costs one type, member or table and not
// the library. Little-endian, as both formats are.

#include <cstddef>
#include <cstdint>
#include <exception>
#include <span>
#include <string>
#include <string_view>

namespace vendrel {

class CoverageMap;

/// A place of the file that cannot be read. Never leaves the reader: it becomes a message.
class DataError : public std::exception {
 public:
  explicit DataError(std::string text) : mText(std::move(text)) {}
  const char* what() const noexcept override { return mText.c_str(); }

 private:
  std::string mText;
};

/// A cursor over a part of the image.
class ByteStream {
 public:
  ByteStream() = default;
  /// `name` must outlive the stream; `coverage` (may be null) is told what is read.
  ByteStream(std::span<const std::uint8_t> bytes, const char* name, CoverageMap* coverage = nullptr)
      : mBytes(bytes), mName(name), mCoverage(coverage) {}

  std::size_t Size() const { return mBytes.size(); }
  std::size_t Position() const { return mAt; }
  std::size_t Left() const { return mBytes.size() - mAt; }
  const char* Name() const { return mName; }

  /// Goes to `offset` from the start; the end itself is a valid place.
  ByteStream& Seek(std::size_t offset);
  /// The bytes from `offset` on, `length` of them, as a stream of their own.
  ByteStream Part(std::size_t offset, std::size_t length, const char* name) const;
  /// The whole part again, with the cursor at `offset`.
  ByteStream At(std::size_t offset) const;

  /// The byte at the cursor, which stays.
  std::uint8_t Peek() const {
    if (Left() == 0) Fail(1);
    return mBytes[mAt];
  }
  std::uint8_t U8() { return *Take(1); }
  std::uint16_t U16() {
    const std::uint8_t* p = Take(2);
    return static_cast<std::uint16_t>(p[0] | p[1] << 8);
  }
  std::uint32_t U32() {
    const std::uint8_t* p = Take(4);
    return static_cast<std::uint32_t>(p[0]) | static_cast<std::uint32_t>(p[1]) << 8 |
           static_cast<std::uint32_t>(p[2]) << 16 | static_cast<std::uint32_t>(p[3]) << 24;
  }
  std::uint64_t U64() {
    const std::uint64_t low = U32();
    return low | static_cast<std::uint64_t>(U32()) << 32;
  }
  std::int16_t I16() { return static_cast<std::int16_t>(U16()); }
  std::int32_t I32() { return static_cast<std::int32_t>(U32()); }
  std::int64_t I64() { return static_cast<std::int64_t>(U64()); }

  std::span<const std::uint8_t> Bytes(std::size_t count) { return {Take(count), count}; }
  /// `count` bytes as they stand, in the code page of the file.
  std::string_view Chars(std::size_t count) {
    return {reinterpret_cast<const char*>(Take(count)), count};
  }
  /// Bytes up to the next NUL, which is consumed too; DataError when there is none in the part or
  /// within `limit` bytes.
  std::string_view CharsToNul(std::size_t limit);
  /// Passes over bytes that carry nothing, and counts them as read.
  void Skip(std::size_t count) { Take(count); }
  /// Counts up to `count` bytes at the cursor as read, if they exist, without moving.
  void Cover(std::size_t count) const;

 private:
  const std::uint8_t* Take(std::size_t count) {
    if (count > mBytes.size() - mAt) Fail(count);
    const std::uint8_t* start = mBytes.data() + mAt;
    mAt += count;
    if (mCoverage != nullptr) Mark(start, count);
    return start;
  }
  void Mark(const std::uint8_t* start, std::size_t count) const;
  [[noreturn]] void Fail(std::size_t count) const;

  std::span<const std::uint8_t> mBytes;
  std::size_t mAt = 0;
  const char* mName = "";
  CoverageMap* mCoverage = nullptr;
};

}  // namespace vendrel
