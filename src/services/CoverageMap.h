#pragma once
// Which bytes of an image the reader looked at: the proof that a library was read to the end.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vendrel {

class CoverageMap {
 public:
  /// What one region of the image left unread.
  struct Leftover {
    std::string Region;
    std::size_t Size = 0;
    std::size_t Unread = 0;
    /// Offset in the image of the first unread byte.
    std::size_t First = 0;
  };

  explicit CoverageMap(std::span<const std::uint8_t> image)
      : mStart(image.data()), mRead(image.size(), 0) {}

  void Mark(const std::uint8_t* start, std::size_t count);
  /// Names a region; bytes in no region are reported as "between".
  void AddRegion(std::string name, std::size_t offset, std::size_t length);
  bool IsRead(std::size_t offset) const { return mRead[offset] != 0; }
  /// The regions that have unread bytes.
  std::vector<Leftover> Leftovers() const;

 private:
  struct Region {
    std::string Name;
    std::size_t Offset, Length;
  };
  const std::uint8_t* mStart;
  std::vector<std::uint8_t> mRead;
  std::vector<Region> mRegions;
};

}  // namespace vendrel
