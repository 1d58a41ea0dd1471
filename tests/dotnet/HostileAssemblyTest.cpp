// Damaged assemblies: a clear error, or a part with messages; never more than a small multiple of
// the file.
#include <random>

#include "diagnostics/VendrelError.h"
#include "dotnet/SampleAssemblies.h"
#include "dotnet/metadata/AssemblyLister.h"
#include "support/MemoryFiles.h"

namespace vendrel::metadata {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct Outcome {
  bool Refused = false;
  std::size_t Entries = 0;
  std::size_t Damaged = 0;
};

Outcome Read(Bytes bytes) {
  const test::MemoryFiles nothingBeside;
  Outcome outcome;
  const std::size_t size = bytes.size();
  try {
    AssemblyStore store;
    const AssemblyFile* file = store.Add(Image::Open(std::move(bytes), "/a.dll"));
    ListingOptions all;
    all.Private = true;
    all.Inherited = true;
    std::size_t text = 0;
    ListAssembly(store, *file, all, [&](const ListedEntry& entry) {
      ++outcome.Entries;
      outcome.Damaged += entry.Damage.empty() ? 0 : 1;
      text += entry.Name.size() + entry.Type.size();
    });
    EXPECT_LT(text, (std::size_t{1} << 25) + 256 * size);
  } catch (const VendrelError& error) {
    EXPECT_EQ(error.Number(), errInvalidFileFormat);
    outcome.Refused = true;
  }
  return outcome;
}

TEST(HostileAssembly, CutAnywhereItIsRefusedOrReadInPart) {
  const Bytes whole = test::DataBytes("Shop.dll");
  const std::size_t entries = Read(whole).Entries;
  std::size_t partly = 0;
  for (std::size_t size = 0; size < whole.size(); size += 61) {
    const Outcome outcome = Read(Bytes(whole.begin(), whole.begin() + static_cast<long>(size)));
    EXPECT_LE(outcome.Entries, entries);
    partly += !outcome.Refused && outcome.Entries > 0 ? 1 : 0;
  }
  EXPECT_GT(partly, 0u);
}

TEST(HostileAssembly, ChangedAnywhereTheRestIsRead) {
  const Bytes whole = test::DataBytes("Shop.dll");
  const std::size_t entries = Read(whole).Entries;
  std::mt19937 random(7);
  std::size_t refused = 0, damaged = 0, nearlyWhole = 0;
  for (int run = 0; run < 600; ++run) {
    Bytes bytes = whole;
    for (int i = 0; i < 1 + run % 4; ++i)
      bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
    const Outcome outcome = Read(std::move(bytes));
    refused += outcome.Refused ? 1 : 0;
    damaged += outcome.Damaged > 0 ? 1 : 0;
    nearlyWhole += outcome.Entries * 10 > entries * 9 ? 1 : 0;
  }
  EXPECT_GT(damaged, 0u);
  EXPECT_LT(refused, 200u);
  EXPECT_GT(nearlyWhole, 300u);  // damage stays where it is
}

// Bytes of the table stream of Shop.dll, found by the row of a type: rings are made by hand.
class Patched {
 public:
  explicit Patched(const std::string& name) : mBytes(test::DataBytes(name)) {
    mImage = Image::Open(mBytes, "/a.dll");
  }
  // Replaces a cell of two bytes; the row is found by its content.
  void Set(Table table, unsigned column, std::uint32_t row, std::uint16_t value) {
    const Tables& tables = mImage->Tables();
    std::vector<std::size_t> places;
    for (std::size_t at = 0; at + 2 <= mBytes.size(); ++at) {
      Bytes trial = mBytes;
      trial[at] = static_cast<std::uint8_t>(value);
      trial[at + 1] = static_cast<std::uint8_t>(value >> 8);
      try {
        const auto changed = Image::Open(trial, "/a.dll");
        if (changed->Tables().Rows(table) != tables.Rows(table) ||
            changed->Tables().Cell(table, column, row) != value ||
            tables.Cell(table, column, row) == value)
          continue;
        mBytes = trial;
        mImage = Image::Open(mBytes, "/a.dll");
        return;
      } catch (const VendrelError&) {
        // These two bytes were something else.
      }
    }
    ADD_FAILURE() << "no such cell";
  }
  Bytes Result() const { return mBytes; }
  const Image& Now() const { return *mImage; }

 private:
  Bytes mBytes;
  std::shared_ptr<const Image> mImage;
};

TEST(HostileAssembly, RingsEnd) {
  Patched nested("Shop.dll");
  // The first nested type and the type around it lie in each other.
  const std::uint32_t inner = nested.Now().Tables().Cell(tNestedClass, 0, 1);
  nested.Set(tNestedClass, 1, 1, static_cast<std::uint16_t>(inner));
  EXPECT_GT(Read(nested.Result()).Entries, 0u);
  // A class extends itself.
  Patched based("Shop.dll");
  const std::uint32_t names = based.Now().FindType("Shop", "Names");
  based.Set(tTypeDef, 3, names, static_cast<std::uint16_t>(names << 2));
  EXPECT_GT(Read(based.Result()).Entries, 0u);
}

TEST(HostileAssembly, OtherFilesAreRefusedByTheirKind) {
  const auto reason = [](Bytes bytes) -> std::string {
    try {
      Image::Open(std::move(bytes), "/a.dll");
    } catch (const VendrelError& error) {
      return error.Text();
    }
    return {};
  };
  EXPECT_NE(reason({}).find("not a compiled file"), std::string::npos);
  EXPECT_NE(reason(Bytes(4096, 0)).find("not a compiled file"), std::string::npos);
  Bytes native = test::DataBytes("ShopBase.dll");
  const std::size_t at = native[0x3C] + native[0x3D] * 256u + 24 + 96 + 8 * 14;
  for (std::size_t i = 0; i < 4; ++i) native[at + i] = 0;
  EXPECT_NE(reason(native).find("native code"), std::string::npos);
}

TEST(HostileAssembly, ADamagedOneLoadsAsAProjectWithMessages) {
  const Bytes whole = test::DataBytes("Shop.dll");
  std::mt19937 random(11);
  std::size_t told = 0;
  for (int run = 0; run < 150; ++run) {
    Bytes bytes = whole;
    for (int i = 0; i < 6; ++i)
      bytes[0x200 + random() % (bytes.size() - 0x200)] = static_cast<std::uint8_t>(random());
    const test::MemoryFiles files{{"/a.dll", std::string(bytes.begin(), bytes.end())}};
    VBProject project;
    project.Reading = run % 2 == 0 ? ReadingRules::Complete() : ReadingRules::Classic();
    project.LoadPrivateMembers = run % 3 == 0;
    try {
      project.LoadFromAssembly("/a.dll");
    } catch (const VendrelError&) {
      continue;
    }
    for (const Component& component : project.Components)
      for (const Block& block : component.Blocks)
        project.GetObjectFromDotNetName(block.DotNetName());
    told += project.Diagnostics.CountOf(DiagnosticCode::AssemblyPart);
  }
  EXPECT_GT(told, 0u);
}

}  // namespace
}  // namespace vendrel::metadata
