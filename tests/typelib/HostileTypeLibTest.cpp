// Files that lie: whatever their bytes, reading and printing ends, with an error or with messages,
// within time and memory that follow from the size of the file.

#include <gtest/gtest.h>

#include <random>

#include "diagnostics/VendrelError.h"
#include "typelib/LedgerIdl.h"
#include "typelib/SampleImages.h"
#include "typelib/Widl.h"
#include "typelib/reader/TypeLibListing.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel::typelib {
namespace {

using test::Image;
using test::MsftBuilder;
using test::PeBuilder;
using test::SmallLibrary;

// Everything that a client can ask for.
std::size_t ReadAll(const Image& file) {
  try {
    const auto library = TypeLibInfoFromBytes(file);
    std::size_t size = TypeLibListing(*library).size() + TypeLibJson(*library).size();
    for (const TypeInfo& type : library->TypeInfos) {
      for (const MemberInfo* member : type.Members()) {
        try {
          size += static_cast<std::size_t>(member->ReturnType.VarType() >= 0);
        } catch (const VendrelError&) {
        }
      }
    }
    return size;
  } catch (const VendrelError& error) {
    EXPECT_EQ(error.Number(), errInvalidFileFormat);
    return 0;
  }
}

TEST(HostileTypeLib, MayEndAnywhereOrHoldAnyByte) {
  PeBuilder compiled;
  compiled.TypeLibraries = {{1, SmallLibrary().Build()}};
  compiled.VersionBlock = PeBuilder::Version(1, 2, 3, 4);
  for (const Image& file : {SmallLibrary().Build(), compiled.Build(), test::OldLibrary().Build()}) {
    for (std::size_t length = 0; length < file.size(); length += length < 200 ? 1 : 3)
      ReadAll(Image(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)));
    for (std::size_t at = 0; at < file.size(); ++at) {
      Image changed = file;
      if (changed[at] == 0xFF && at % 4 != 0) continue;
      changed[at] = changed[at] == 0 || at % 2 == 0 ? 0xFF : 0;
      ReadAll(changed);
    }
  }
}

TEST(HostileTypeLib, MayBeChangedInManyPlaces) {
  if (!test::Widl::IsInstalled()) GTEST_SKIP() << test::Widl::kMissing;
  test::Widl compiler;
  const std::string bytes = ReadWholeFile(compiler.Compile("victim", test::kLedgerIdl));
  const Image file(bytes.begin(), bytes.end());
  ASSERT_GT(ReadAll(file), 500u);
  std::mt19937 random(7);
  for (int round = 0; round < 800; ++round) {
    Image changed = file;
    for (unsigned i = 0, count = 1 + random() % 8; i < count; ++i)
      changed[random() % changed.size()] =
          static_cast<std::uint8_t>(random() % 3 == 0 ? 0xFF : random());
    ReadAll(changed);
  }
}

TEST(HostileTypeLib, CannotGoInCircles) {
  MsftBuilder builder = SmallLibrary();
  const std::int32_t toItself = builder.AddNode(vtPointer, builder.TypeNodes.End());
  builder.Types.push_back({.Kind = tkAlias, .DataType = toItself});
  builder.Types.push_back({.Kind = tkDispatch, .DataType = 200});  // itself
  builder.References.I32(0).U32(1).I32(-1).I32(0);                 // the next is itself
  builder.Types.push_back({.Kind = tkCoclass, .DataType = 0, .Implemented = 0xFFFF});
  const auto library = TypeLibInfoFromBytes(builder.Build());
  EXPECT_THROW(library->TypeInfos[1].AliasType.VarType(), VendrelError);
  EXPECT_TRUE(library->TypeInfos[2].Members().empty());
  EXPECT_LT(library->TypeInfos[3].Interfaces.size(), 1000u);
  EXPECT_FALSE(library->Messages.empty());
}

TEST(HostileTypeLib, CannotUseOneBlockManyTimes) {
  MsftBuilder builder = SmallLibrary();
  for (int i = 0; i < 200; ++i)
    MsftBuilder::AddField(builder.Types[0], MsftBuilder::Plain(vtI4), -1, vkField, 4 * i);
  for (int i = 0; i < 2000; ++i) {
    MsftBuilder::Type copy = builder.Types[0];
    copy.SharedBlock = 0;
    builder.Types.push_back(copy);
  }
  const Image file = builder.Build();
  const auto library = TypeLibInfoFromBytes(file);
  std::size_t members = 0;
  for (const TypeInfo& type : library->TypeInfos) members += type.OwnMembers.size();
  EXPECT_LT(members, file.size() / 20);
  EXPECT_FALSE(library->Messages.empty());
  EXPECT_LE(library->Messages.size(), 201u);
}

TEST(HostileTypeLib, CannotRepeatLongTextsOrBases) {
  MsftBuilder builder;
  MsftBuilder::Type base{.Kind = tkModule};
  const auto title = builder.AddValue(test::Bytes().U16(vtBstr).I32(60000).Fill(60000, 'x'));
  for (int i = 0; i < 2000; ++i)
    MsftBuilder::AddField(base, MsftBuilder::Plain(vtBstr), -1, vkConstant, title);
  builder.Types.push_back(base);
  const std::int32_t longHelp = builder.AddString(std::string(60000, 'h'));
  // Each of many entries points at one help string.
  for (int i = 0; i < 3000; ++i) builder.Types.push_back({.Kind = tkRecord});
  Image file = builder.Build();
  const std::size_t types = 0x54 + 4 * builder.Types.size() + 240;
  for (std::size_t i = 1; i < builder.Types.size(); ++i)
    for (std::size_t k = 0; k < 4; ++k)
      file[types + 100 * i + 0x3C + k] = static_cast<std::uint8_t>(longHelp >> 8 * k);
  const auto library = TypeLibInfoFromBytes(file);
  std::size_t shown = 0;
  for (const TypeInfo& type : library->TypeInfos) shown += type.HelpString.size();
  EXPECT_GT(shown, 60000u);
  EXPECT_LT(shown, 10 * file.size());
}

}  // namespace
}  // namespace vendrel::typelib
