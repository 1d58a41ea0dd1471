// Seeds of a fuzz target go through it, whole and cut short.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int TypeLibFuzz(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

void Replay(const char* name, int (*target)(const std::uint8_t*, std::size_t)) {
  std::size_t seeds = 0;
  for (const auto& entry :
       fs::directory_iterator(fs::path(VENDREL_SOURCE_ROOT) / "fuzz" / "seeds" / name)) {
    std::ifstream stream(entry.path(), std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(stream), {});
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    for (std::size_t part = 0; part <= 16; ++part)
      EXPECT_EQ(target(data, bytes.size() * part / 16), 0) << entry.path();
    ++seeds;
  }
  EXPECT_GT(seeds, 0u) << name;
}

TEST(FuzzSeeds, OfTypeLibrariesAreRead) { Replay("TypeLibFuzz", TypeLibFuzz); }

}  // namespace
