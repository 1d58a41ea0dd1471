#include <gtest/gtest.h>

#include "support/Raised.h"
#include "typelib/ImageBuilders.h"
#include "typelib/Widl.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel::typelib {
namespace {

using test::Bytes;
using test::Image;
using test::MsftBuilder;
using test::PeBuilder;
using vendrel::test::DiskFolder;

Image NamedLibrary(std::string_view name) {
  MsftBuilder builder;
  builder.AddGuid(static_cast<unsigned char>(name[0]));
  builder.LibraryName = builder.AddName(name);
  return builder.Build();
}

int NumberOfFailure(const std::string& path) {
  return vendrel::test::Raised([&] { TypeLibInfoFromFile(path); });
}

TEST(CompiledFile, HoldsLibrariesByNumber) {
  for (bool isWide : {false, true}) {
    PeBuilder file;
    file.IsWide = isWide;
    file.TypeLibraries = {{1, NamedLibrary("First")}, {3, NamedLibrary("Third")}};
    file.VersionBlock = PeBuilder::Version(5, 1, 2600, 70000 % 65536);
    const DiskFolder folder;
    const std::string path = folder.Write("both.dll", file.Build());
    EXPECT_EQ(TypeLibResourceIds(path), (std::vector<int>{1, 3}));
    EXPECT_EQ(TypeLibInfoFromFile(path)->Name, "First");
    const auto third = TypeLibInfoFromFile(path + "\\3");
    EXPECT_EQ(third->Name, "Third");
    EXPECT_EQ(third->ContainingFile, path);
    EXPECT_EQ(third->ResourceId, 3);
    EXPECT_EQ(ReadLibraryId(path + "/3"), "{54545454-5454-5454-5454-545454545454}");
    EXPECT_EQ(NumberOfFailure(path + "\\2"), errInvalidFileFormat);
    EXPECT_EQ(ReadFileVersion(path), "5.1.2600.4464");
    EXPECT_EQ(ReadFileVersion(path, ","), "5,1,2600,4464");
  }
}

TEST(CompiledFile, OfSixteenBitsHoldsLibrariesToo) {
  const Image library = NamedLibrary("Old");
  Bytes file;
  file.Text("MZ").Fill(58).U32(0x40).Text("NE").Fill(0x22).U16(0x40).U16(0x70).Fill(0x18);
  // At 0x80: units of 16 bytes, one group named at 30, one resource at 0xB0.
  file.U16(4).U16(30).U16(1).U32(0).U16(0xB).U16(library.size() / 16 + 1);
  file.U16(0).U16(0x8001).U32(0).U16(0).PadTo(0x80 + 30, 0);
  file.U8(7).Text("TYPELIB").PadTo(0xB0, 0).Append(library).PadTo(16, 0);
  EXPECT_EQ(TypeLibInfoFromBytes(file.Data)->Name, "Old");
}

TEST(CompiledFile, FailsWithAClearError) {
  const DiskFolder folder;
  PeBuilder foreign;
  foreign.TypeLibraries = {{1, Image(64, 0xFF)}};
  struct {
    std::string Path;
    int Number;
  } const cases[] = {
      {folder.Path("absent.tlb"), errFileNotFound},
      {folder.Path("absent.dll\\2"), errFileNotFound},
      {folder.Path(""), errPathAccess},
      {folder.Write("empty.tlb", std::string()), errInvalidFileFormat},
      {folder.Write("text.tlb", "not a library"), errInvalidFileFormat},
      {folder.Write("head.tlb", "MSFT"), errInvalidFileFormat},
      {folder.Write("old.tlb", "SLTG"), errInvalidFileFormat},
      {folder.Write("dos.exe", "MZ" + std::string(200, '\0')), errInvalidFileFormat},
      {folder.Write("packed.ocx", foreign.Build()), errInvalidFileFormat},
      {folder.Write("plain.dll", PeBuilder{false, {}, PeBuilder::Version(1, 2, 3, 4)}.Build()),
       errInvalidFileFormat},
  };
  for (const auto& expected : cases) {
    EXPECT_EQ(NumberOfFailure(expected.Path), expected.Number) << expected.Path;
    EXPECT_EQ(ReadLibraryId(expected.Path), "") << expected.Path;
  }
  EXPECT_EQ(ReadFileVersion(folder.Path("plain.dll")), "1.2.3.4");
  EXPECT_EQ(ReadFileVersion(folder.Path("packed.ocx")), "");
  EXPECT_EQ(ReadFileVersion(folder.Path("absent.tlb")), "");
}

TEST(CompiledFile, OfThatVeryNameComesBeforeANumber) {
  const DiskFolder folder;
  folder.Write("lib/2", NamedLibrary("Plain"));
  EXPECT_EQ(TypeLibInfoFromFile(folder.Path("lib/2"))->Name, "Plain");
}

}  // namespace
}  // namespace vendrel::typelib
