#include "services/ByteStream.h"

#include <algorithm>
#include <cstring>

#include "services/CoverageMap.h"

namespace vendrel {

ByteStream& ByteStream::Seek(std::size_t offset) {
  if (offset > mBytes.size()) {
    mAt = 0;
    Fail(offset);
  }
  mAt = offset;
  return *this;
}

ByteStream ByteStream::Part(std::size_t offset, std::size_t length, const char* name) const {
  if (offset > mBytes.size() || length > mBytes.size() - offset)
    throw DataError(std::string(name) + " runs past the end of " + mName);
  return ByteStream(mBytes.subspan(offset, length), name, mCoverage);
}

ByteStream ByteStream::At(std::size_t offset) const {
  ByteStream copy = *this;
  copy.Seek(offset);
  return copy;
}

std::string_view ByteStream::CharsToNul(std::size_t limit) {
  const std::size_t window = std::min(Left(), limit);
  const std::uint8_t* start = mBytes.data() + mAt;
  const void* end = window == 0 ? nullptr : std::memchr(start, 0, window);
  if (end == nullptr) throw DataError(std::string("text without an end in ") + mName);
  const std::size_t length =
      static_cast<std::size_t>(static_cast<const std::uint8_t*>(end) - start);
  return Chars(length + 1).substr(0, length);
}

void ByteStream::Cover(std::size_t count) const {
  if (mCoverage != nullptr) Mark(mBytes.data() + mAt, std::min(count, Left()));
}

void ByteStream::Mark(const std::uint8_t* start, std::size_t count) const {
  mCoverage->Mark(start, count);
}

void ByteStream::Fail(std::size_t count) const {
  throw DataError(std::to_string(count) + " bytes at " + std::to_string(mAt) +
                  " run past the end of " + mName);
}

}  // namespace vendrel
