#include "typelib/reader/TypeLibListing.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "typelib/SampleImages.h"
#include "typelib/reader/ListingWords.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel::typelib {
namespace {

using test::MsftBuilder;

TEST(TypeLibListing, AsJsonHasTheNamesOfTheService) {
  const auto library = TypeLibInfoFromBytes(test::OldLibrary().Build());
  for (int indent : {-1, 2}) {
    const auto json = nlohmann::json::parse(TypeLibJson(*library, indent));
    EXPECT_EQ(json["Name"], "OldLib");
    EXPECT_EQ(json["MajorVersion"], 2);
    const auto& brush = json["TypeInfos"][2];
    EXPECT_EQ(brush["TypeKindString"], "dispinterface");
    EXPECT_EQ(brush["Interfaces"][0]["Name"], "IDispatch");
    const auto& paint = brush["Members"][9];
    EXPECT_EQ(paint["Name"], "Paint");
    EXPECT_EQ(paint["ReturnType"]["VarType"], vtBstr | vtArrayBit);
    EXPECT_EQ(paint["Parameters"][0]["VarTypeInfo"]["PointerLevel"], 1);
    EXPECT_EQ(paint["Parameters"][1]["Optional"], true);
    EXPECT_EQ(json["TypeInfos"][0]["Members"][1]["Value"], 1000000);
    EXPECT_EQ(json["TypeInfos"][1]["ResolvedType"]["TypeInfo"], "Colours");
  }
}

TEST(TypeLibListing, WritesTypesAsIdlDoes) {
  MsftBuilder builder;
  const std::int32_t pointer = builder.AddNode(vtPointer, MsftBuilder::Plain(vtI4));
  const std::int32_t twice = builder.AddNode(vtPointer, pointer);
  const std::int32_t array = builder.AddNode(vtSafeArray, pointer);
  const std::int32_t arrayPointer = builder.AddNode(vtPointer, array);
  builder.Arrays.I32(MsftBuilder::Plain(vtBstr)).U16(2).U16(16).U32(3).I32(0).U32(4).I32(1);
  const std::int32_t fixed = builder.AddNode(vtFixedArray, 0);
  const std::int32_t absent = builder.AddNode(vtUserDefined, 700);
  const std::int32_t import = builder.AddNode(vtUserDefined, 1201);
  struct {
    std::int32_t Code;
    const char* Text;
  } const cases[] = {{MsftBuilder::Plain(vtVariant), "VARIANT field"},
                     {twice, "long** field"},
                     {arrayPointer, "SAFEARRAY(long*)* field"},
                     {fixed, "BSTR field[3][1:4]"},
                     {absent, "?type7 field"},
                     {import, "?import100 field"},
                     {8 * 900, "?damaged field"},
                     {MsftBuilder::Plain(77), "VT_77 field"}};
  MsftBuilder::Type record{.Kind = tkRecord, .Name = builder.AddName("All")};
  const std::int32_t name = builder.AddName("field");
  std::string expected = "\n    struct All {\n";
  for (const auto& item : cases) {
    MsftBuilder::AddField(record, item.Code, name, vkField, 0);
    expected += std::string("        ") + item.Text + ";\n";
  }
  builder.Types.push_back(record);
  const std::string listing = TypeLibListing(*TypeLibInfoFromBytes(builder.Build()));
  EXPECT_EQ(listing.substr(listing.find("{\n") + 2), expected + "    };\n}\n");
}

TEST(TypeLibListing, KeepsBitsAndCharactersThatHaveNoWord) {
  EXPECT_EQ(FlagTexts(0x8011, TypeFlagWords()),
            (std::vector<std::string>{"appobject", "hidden", "flags(0x8000)"}));
  EXPECT_EQ(QuotedText("a\"b\\\n\xC3\xA9"), "\"a\\\"b\\\\\\x0a\xC3\xA9\"");
}

}  // namespace
}  // namespace vendrel::typelib
