#include <gtest/gtest.h>

#include "typelib/ImageBuilders.h"
#include "typelib/reader/TypeLibListing.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel::typelib {
namespace {

using test::Bytes;
using test::Image;
using test::SltgBuilder;

// A tree of three words: bit 1 "The", bits 01 "name", bits 00 the end.
Image WordTree() {
  Bytes nodes;
  nodes.U8(0x80).U8(0).U8(8);                     // 0: zero to 8, one to 3
  nodes.U8(0x00).Text("The").U8(0);               // 3
  nodes.U8(0x80).U8(0).U8(17);                    // 8: zero to 17, one to 11
  nodes.U8(0x00).Text("name").U8(0).U8(0).U8(0);  // 11, 17
  return Bytes().U16(100).U32(static_cast<std::uint32_t>(nodes.Size())).Append(nodes.Data).Data;
}
constexpr unsigned kTheName = 0b10100000;

SltgBuilder OldLibrary() {
  SltgBuilder builder;
  builder.HelpTree = WordTree();
  builder.LibraryName = builder.AddName("OldLib");

  SltgBuilder::Entry colours;
  colours.Name = builder.AddName("Colours");
  colours.Kind = colours.BlockKind = tkEnum;
  colours.Help = {kTheName};
  colours.Variables = 2;
  colours.FirstVariable = 0;
  Bytes group;
  // Red: type and value in place, help at 36 with the distance 3 from the group's number.
  group.U8(0x0A)
      .U8(0x1A)
      .U16(18)
      .U16(builder.AddName("Red"))
      .U16(0xFFFF)
      .U16(vtInt)
      .U32(0x40000000);
  group.U16(3 << 2 | 1).U16(36);
  // Deep: value at 37.
  group.U8(0x0A)
      .U8(0x12)
      .U16(0xFFFF)
      .U16(builder.AddName("Deep"))
      .U16(37)
      .U16(vtInt)
      .U32(0x40000001);
  group.U16(0xFFFE).U16(0xFFFF).U8(kTheName).U32(1000000);
  colours.Group = group.Data;
  builder.Entries.push_back(colours);

  SltgBuilder::Entry alias;
  alias.Name = builder.AddName("Shade");
  alias.Kind = alias.BlockKind = tkAlias;
  alias.IsPlainAlias = false;
  alias.References = {"*\\Rffff*#0"};
  alias.Group = Bytes().U16(vtUserDefined).U16(0).Data;
  builder.Entries.push_back(alias);

  SltgBuilder::Entry dual;
  dual.Name = builder.AddName("IBrush");
  dual.Kind = tkDispatch;
  dual.BlockKind = tkInterface;
  dual.Flags = 0x50;
  dual.GuidFill = 0x33;
  const unsigned stdole =
      builder.AddName("*\\G{00020430-0000-0000-C000-000000000046}#1.a#0#C:\\WIN\\stdole32.tlb#OLE");
  char text[32];
  std::snprintf(text, sizeof text, "*\\R%04x*#4", stdole);
  dual.References = {text, "*\\Rffff*#0"};
  dual.Implemented = 1;
  dual.FirstImplemented = 0;
  dual.Functions = 3;
  dual.FirstFunction = 22;
  Bytes functions;
  functions.U16(0x4A).U16(0xFFFF).U16(0).U8(0).U8(0x80).U16(0).U16(0).U16(0).U16(0).U16(0);
  functions.U16(vtUserDefined).U16(0);
  const unsigned colour = builder.AddName("Colour");
  // Get of Colour: one parameter at 90, an out return value of the entry of reference 1.
  functions.U8(0x6C).U8(ikGet << 4).U16(46).U16(colour).U32(0).U16(0xFFFE).U16(0xFFFF).U16(90);
  functions.U8(1 << 3 | 4).U8(0x80).U16(vtHresult).U16(28).U16(0x40);
  // Let of Colour: the name of the member before, an unnamed value at 96.
  functions.U8(0x4C).U8(ikLet << 4).U16(68).U16(0xFFFE).U32(0).U16(0xFFFE).U16(0xFFFF).U16(96);
  functions.U8(1 << 3 | 4).U8(0x80).U16(vtHresult).U16(32);
  // Paint: two parameters at 100, the last of them optional; returns through an offset.
  functions.U8(0x4C).U8(ikFunction << 4).U16(0xFFFF).U16(builder.AddName("Paint")).U32(1);
  functions.U16(0xFFFE).U16(0xFFFF).U16(100).U8(2 << 3 | 4).U8(1 << 1).U16(112).U16(36);
  functions.U16(0xFFFF).U16(0x4080 | 0x0E00 | vtUserDefined).U16(4);
  functions.U16(0xFFFF).U16(vtI4);
  const unsigned area = builder.AddName("area"), extra = builder.AddName("extra");
  functions.U16(area).U16(108).U16(extra + 1).U16(vtVariant);
  functions.U16(0x8000 | vtPointer).U16(vtR4);
  functions.U16(vtSafeArray).U16(0).U16(vtBstr);
  dual.Group = functions.Data;
  builder.Entries.push_back(dual);
  return builder;
}

TEST(SltgReader, ReadsALibraryLaidOutByHand) {
  TypeLibOptions options;
  options.CheckCoverage = true;
  const auto library = TypeLibInfoFromBytes(OldLibrary().Build(), options);
  EXPECT_EQ(
      TypeLibListing(*library),
      "// SLTG, 3 types, system 1\n"
      "[uuid({11111111-1111-1111-1111-111111111111}), version(2.5), lcid(0x409), "
      "helpstring(\"An old library\")]\n"
      "library OldLib\n{\n"
      "    importlib(\"C:\\\\WIN\\\\stdole32.tlb\");  // "
      "{00020430-0000-0000-C000-000000000046} 1.10\n\n"
      "    [version(1.0), helpstring(\"The name\"), helpcontext(0x4d)]\n"
      "    enum Colours {\n"
      "        [helpstring(\"The name\"), helpcontext(0x3eb)] Red = -1,\n"
      "        Deep = 1000000,\n"
      "    };\n\n"
      "    [version(1.0), helpcontext(0x4d)]\n"
      "    typedef Colours Shade;\n\n"
      "    [uuid({33333333-3333-3333-3333-333333333333}), version(1.0), helpcontext(0x4d), "
      "hidden, dual]\n"
      "    interface IBrush : IDispatch {\n"
      "        [id(0x0), propget, hidden] HRESULT Colour([out, retval] Colours*);\n"
      "        [id(0x0), propput] HRESULT Colour([in] long);\n"
      "        [id(0x1)] SAFEARRAY(BSTR) Paint([in, out] single* area, [in, optional] VARIANT "
      "extra);\n"
      "    };\n"
      "}\n");
  for (const auto& left : library->Coverage->Leftovers())
    ADD_FAILURE() << left.Region << ": " << left.Unread << " bytes from " << left.First;
}

TEST(SltgReader, ShowsMembersAsTheNewerFormatDoes) {
  const auto library = TypeLibInfoFromBytes(OldLibrary().Build());
  const TypeInfo& brush = *library->FindType("IBrush");
  EXPECT_EQ(brush.TypeKind, tkDispatch);
  EXPECT_EQ(brush.Interfaces.front().Name(), "IDispatch");
  const auto& members = brush.Members();
  ASSERT_EQ(members.size(), 10u);
  EXPECT_EQ(members[7]->Parameters().size(), 0u);
  EXPECT_EQ(members[7]->ReturnType.TypeInfo(), library->FindType("Colours"));
  EXPECT_EQ(members[8]->Name, "Colour");
  EXPECT_EQ(members[8]->ReturnType.VarType(), vtI4);
  EXPECT_TRUE(members[9]->Parameters()[1].Optional && !members[9]->Parameters()[0].Optional);
  EXPECT_EQ(library->FindType("Shade")->ResolvedType(), library->FindType("Colours"));
}

TEST(SltgReader, EndsCircularListsAndTrees) {
  SltgBuilder builder = OldLibrary();
  Image& group = builder.Entries[0].Group;
  group[2] = group[20] = 0;  // both variables name the first as the next
  builder.Entries[0].Variables = 60000;
  builder.HelpTree[6 + 2] = 0;  // the root is its own child
  const auto library = TypeLibInfoFromBytes(builder.Build());
  EXPECT_LE(library->TypeInfos[0].OwnMembers.size(), group.size());
  EXPECT_FALSE(library->Messages.empty());
  EXPECT_EQ(library->TypeInfos[2].OwnMembers.size(), 3u);
}

}  // namespace
}  // namespace vendrel::typelib
