#include "typelib/reader/LibraryFinder.h"

#include <gtest/gtest.h>

#include "diagnostics/VendrelError.h"
#include "typelib/ImageBuilders.h"
#include "typelib/Widl.h"
#include "typelib/reader/TypeLibListing.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel::typelib {
namespace {

using test::Image;
using test::MsftBuilder;
using test::PeBuilder;
using vendrel::test::DiskFolder;

constexpr unsigned kOtherId = 0x22;
constexpr const char* kOtherText = "{22222222-2222-2222-2222-222222222222}";

// Holds an enumeration "Shade" at position 0.
Image OtherLibrary() {
  MsftBuilder builder;
  builder.AddGuid(kOtherId);
  builder.LibraryName = builder.AddName("Other");
  builder.Types.push_back({.Name = builder.AddName("Shade")});
  return builder.Build();
}

// A record with a field of the other library's type 0 and one of IUnknown.
Image UserLibrary() {
  MsftBuilder builder;
  builder.AddGuid(0x11);
  builder.AddImport(builder.AddGuid(kOtherId), "Other.tlb", 4, 2);
  const std::int32_t unknownId = builder.Guids.End();
  builder.Guids.Append(Image{0, 0, 0, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46}).I32(0).I32(-1);
  builder.ImportedTypes.U32(0x03010001).I32(0).I32(unknownId);
  MsftBuilder::Type record{.Kind = tkRecord, .Name = builder.AddName("Mix")};
  const std::int32_t unknown = builder.AddNode(vtUserDefined, 12 | 1);
  MsftBuilder::AddField(record, builder.AddNode(vtUserDefined, 1), builder.AddName("Tint"), vkField,
                        0);
  MsftBuilder::AddField(record, builder.AddNode(vtPointer, unknown), builder.AddName("Site"),
                        vkField, 4);
  builder.Types.push_back(record);
  return builder.Build();
}

std::string TintOf(const TypeLibInfo& library) {
  const VarTypeInfo& type = library.TypeInfos[0].OwnMembers[0].ReturnType;
  EXPECT_TRUE(type.IsExternalType());
  try {
    EXPECT_EQ(type.VarType(), 0);
    return std::string(type.TypeInfo()->Name) + " of " +
           std::string(type.TypeInfo()->Library->Name);
  } catch (const VendrelError& error) {
    return std::to_string(error.Number()) + " " + error.Text();
  }
}

TEST(LibraryFinder, LooksInSettingsBesideTheFileAndAlongThePath) {
  PeBuilder compiled;
  compiled.TypeLibraries = {{1, UserLibrary()}, {2, OtherLibrary()}};
  struct {
    const char* Where;
    const char* File;
    Image Data;
    bool HasSetting;
    bool IsFound;
  } const cases[] = {
      {"nowhere", "x/unrelated.txt", OtherLibrary(), false, false},
      {"beside, in another case", "user/OTHER.TLB", OtherLibrary(), false, true},
      {"beside, but another library of that name", "user/other.tlb", UserLibrary(), false, false},
      {"on the path", "path/other.tlb", OtherLibrary(), false, true},
      {"on the path, under another name", "path/renamed.olb", OtherLibrary(), false, true},
      {"on the path, of no known kind", "path/other.cmp", OtherLibrary(), false, true},
      {"in a second resource", "path/both.dll", compiled.Build(), false, true},
      {"in the settings", "set/any.bin", OtherLibrary(), true, true},
  };
  for (const auto& item : cases) {
    const DiskFolder folder;
    folder.Write("path/broken.dll", "MZ");
    const std::string file = folder.Write(item.File, item.Data);
    SettingsLookUp settings = [&](const std::string& id, int major, int minor, unsigned) {
      EXPECT_EQ(id + std::to_string(major) + "." + std::to_string(minor),
                kOtherText + std::string("4.2"));
      return item.HasSetting ? file : std::string();
    };
    TypeLibOptions options;
    options.Finder = std::make_shared<FileLibraryFinder>(
        std::vector<std::string>{folder.Path("absent"), folder.Path("path")}, settings);
    const auto library = TypeLibInfoFromFile(folder.Write("user/user.tlb", UserLibrary()), options);
    EXPECT_EQ(TintOf(*library), item.IsFound ? "Shade of Other"
                                             : "53 File not found: type #0 of library " +
                                                   std::string(kOtherText) + " 4.2 (Other.tlb)")
        << item.Where;
  }
}

TEST(LibraryFinder, IsNotNeededForTheRootInterfaces) {
  const auto library = TypeLibInfoFromBytes(UserLibrary());
  const VarTypeInfo& site = library->TypeInfos[0].OwnMembers[1].ReturnType;
  EXPECT_EQ(site.VarType(), 0);
  EXPECT_EQ(site.PointerLevel(), 1);
  EXPECT_EQ(site.TypeInfo()->Name, "IUnknown");
  EXPECT_NE(TypeLibListing(*library).find("Other.tlb!#0 Tint;"), std::string::npos);
}

TEST(LibraryFinder, OutlivesLibrariesThatImportEachOther) {
  const DiskFolder folder;
  MsftBuilder builder;
  builder.AddGuid(kOtherId);
  builder.AddImport(builder.AddGuid(0x11), "user.tlb", 1, 0);
  builder.Types.push_back({.Kind = tkAlias,
                           .Name = builder.AddName("Shade"),
                           .DataType = builder.AddNode(vtUserDefined, 1)});
  folder.Write("other.tlb", builder.Build());
  TypeLibOptions options;
  options.Finder = std::make_shared<FileLibraryFinder>();
  const auto library = TypeLibInfoFromFile(folder.Write("user.tlb", UserLibrary()), options);
  options.Finder.reset();
  const TypeInfo* shade = library->TypeInfos[0].OwnMembers[0].ReturnType.TypeInfo();
  EXPECT_EQ(shade->ResolvedType()->Name, "Mix");
}

}  // namespace
}  // namespace vendrel::typelib
