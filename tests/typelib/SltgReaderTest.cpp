#include <gtest/gtest.h>

#include "typelib/SampleImages.h"
#include "typelib/reader/TypeLibListing.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel::typelib {
namespace {

using test::Image;
using test::OldLibrary;
using test::SltgBuilder;

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
