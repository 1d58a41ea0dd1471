// Seeds of the fuzz targets go through them, whole and cut short.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "support/SourceRoot.h"

// Each target under its own name.
// clang-format off
#define VENDREL_TARGETS(X) \
  X(AssemblyFuzz) X(ColourFuzz) X(CommentFileFuzz) X(ConditionFuzz) X(ControlsFuzz) X(DocumentationFuzz) X(GroupFuzz) \
  X(LikeFuzz) X(LookupFuzz) X(MetadataFuzz) X(ModuleFuzz) X(NetProjectFuzz) X(NetSourceFuzz) X(ProjectFuzz) X(ProseFuzz) X(SetFuzz) \
  X(SettingsFuzz) X(SourceTokensFuzz) X(TagTableFuzz) X(TypeLibFuzz) X(UsesFuzz) \
  X(WriteFuzz)
// clang-format on
#define VENDREL_TARGET(name) extern "C" int name(const std::uint8_t* data, std::size_t size);
VENDREL_TARGETS(VENDREL_TARGET)
#undef VENDREL_TARGET

namespace {

namespace fs = std::filesystem;

void Replay(const char* name, int (*target)(const std::uint8_t*, std::size_t)) {
  std::size_t seeds = 0;
  for (const auto& entry :
       fs::directory_iterator(fs::path(vendrel::test::SourceRoot()) / "fuzz" / "seeds" / name)) {
    std::ifstream stream(entry.path(), std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(stream), {});
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    for (std::size_t part = 0; part <= 16; ++part)
      EXPECT_EQ(target(data, bytes.size() * part / 16), 0) << entry.path();
    ++seeds;
  }
  EXPECT_GT(seeds, 0u) << name;
}

#define VENDREL_TARGET(name)                                                                       \
  TEST(FuzzSeeds, name) { Replay(#name, name); }
VENDREL_TARGETS(VENDREL_TARGET)
#undef VENDREL_TARGET

TEST(FuzzSeeds, EveryTargetHasSome) {
  std::size_t targets = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(vendrel::test::SourceRoot()) / "fuzz"))
    targets += entry.path().filename().string().ends_with("Fuzz.cpp");
#define VENDREL_TARGET(name) --targets;
  VENDREL_TARGETS(VENDREL_TARGET)
#undef VENDREL_TARGET
  EXPECT_EQ(targets, 0u) << "a target is not replayed here";
}

}  // namespace
