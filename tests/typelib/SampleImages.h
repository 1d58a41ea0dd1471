#pragma once
// Whole small libraries, for tests and as seeds of the fuzz target.

#include <cstdio>

#include "typelib/ImageBuilders.h"
#include "typelib/reader/TypeLibInfo.h"

namespace vendrel::typelib::test {

// A record that refers to itself, in the newer format.
inline MsftBuilder SmallLibrary() {
  MsftBuilder builder;
  builder.AddGuid(0x11);
  builder.LibraryName = builder.AddName("Small");
  MsftBuilder::Type record{.Kind = tkRecord, .Name = builder.AddName("Pair")};
  const std::int32_t pointer = builder.AddNode(vtPointer, MsftBuilder::Plain(vtI4));
  MsftBuilder::AddField(record, pointer, builder.AddName("First"), vkField, 0);
  MsftBuilder::AddField(record, builder.AddNode(vtUserDefined, 0), builder.AddName("Next"), vkField,
                        4);
  builder.Types.push_back(record);
  return builder;
}

// A tree of three words: bit 1 "The", bits 01 "name", bits 00 the end.
inline Image WordTree() {
  Bytes nodes;
  nodes.U8(0x80).U8(0).U8(8);                     // 0: zero to 8, one to 3
  nodes.U8(0x00).Text("The").U8(0);               // 3
  nodes.U8(0x80).U8(0).U8(17);                    // 8: zero to 17, one to 11
  nodes.U8(0x00).Text("name").U8(0).U8(0).U8(0);  // 11, 17
  return Bytes().U16(100).U32(nodes.Size()).Append(nodes.Data).Data;
}
inline constexpr unsigned kTheName = 0b10100000;

// An enumeration, an alias and a dual interface in the older format.
inline SltgBuilder OldLibrary() {
  SltgBuilder builder;
  builder.HelpTree = WordTree();
  builder.LibraryName = builder.AddName("OldLib");

  SltgBuilder::Entry colours;
  colours.Name = builder.AddName("Colours");
  colours.Kind = colours.BlockKind = tkEnum;
  colours.Help = {kTheName};
  colours.Variables = 2;
  colours.FirstVariable = 0;
  const unsigned red = builder.AddName("Red"), deep = builder.AddName("Deep");
  Bytes group;
  // Red: type and value in place, help at 36 with the distance 3 from the group's number.
  group.U8(0x0A).U8(0x1A).U16(18).U16(red).U16(0xFFFF).U16(vtInt).U32(0x40000000);
  group.U16(3 << 2 | 1).U16(36);
  // Deep: value at 37.
  group.U8(0x0A).U8(0x12).U16(0xFFFF).U16(deep).U16(37).U16(vtInt).U32(0x40000001);
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

}  // namespace vendrel::typelib::test
