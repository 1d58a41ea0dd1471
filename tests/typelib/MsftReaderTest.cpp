#include <gtest/gtest.h>

#include "diagnostics/VendrelError.h"
#include "services/CodePage.h"
#include "typelib/ImageBuilders.h"
#include "typelib/LedgerIdl.h"
#include "typelib/Widl.h"
#include "typelib/reader/TypeLibListing.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel::typelib {
namespace {

using test::kLedgerIdl;
using test::MsftBuilder;
using test::Widl;

// The head without the marks that the compiler leaves.
constexpr const char* kLedgerListing = R"(
    [uuid({11111111-2222-3333-4444-555555555502}), helpstring("Kinds of account")]
    enum AccountKind {
        akCash = 1,
        akBank = 500000000,
        akNone = -1,
    };

    struct Entry {
        long Amount;
        BSTR Text;
        double Rates[3][4];
        AccountKind Kind;
    };

    union Either {
        long Whole;
        double Real;
    };

    typedef Entry EntryAlias;

    [uuid({11111111-2222-3333-4444-555555555504}), dllname("ledger.dll")]
    module Tools {
        [id(0x60000000), entry(7), helpstring("Closes")] void CloseLedger([in] long handle);
    };

    [uuid({11111111-2222-3333-4444-555555555505}), helpstring("A \"ledger\""), helpcontext(0x4d), hidden, dual, oleautomation, dispatchable]
    interface _Ledger : IDispatch {
        [id(0x0), propget, helpstring("The name"), helpcontext(0x5)] HRESULT Name([out, retval] BSTR* result);
        [id(0x0), propput] HRESULT Name([in] BSTR);
        [id(0x2), propputref] HRESULT Owner([in] IDispatch*);
        [id(0xfffffffc), propget, restricted] HRESULT _NewEnum([out, retval] IUnknown** result);
        [id(0x3)] HRESULT Post([in] long Amount, [in, optional, defaultvalue("none")] BSTR Text, [in, optional] VARIANT extra, [in, optional, defaultvalue(-3)] AccountKind Kind, [out, retval] VARIANT_BOOL* ok);
        [id(0x4), vararg] HRESULT Sum([in, out] SAFEARRAY(VARIANT)* values, [out, retval] double* result);
        [id(0x5), hidden] HRESULT Find([in] long number, [lcid] long lcid, [out, retval] _Ledger** found);
        [id(0x6)] HRESULT Fill([in, out] EntryAlias* Entry, [in] SAFEARRAY(BSTR) names);
    };

    [uuid({11111111-2222-3333-4444-555555555506}), dispatchable]
    dispinterface __Ledger {
        [id(0x1), helpstring("Was posted")] void Posted([in] long Amount);
        [id(0xa), readonly] long Count;
    };

    [uuid({11111111-2222-3333-4444-555555555507}), oleautomation]
    interface IStore : IUnknown {
        [id(0x60010000)] HRESULT Save([in] BSTR path);
    };

    [uuid({11111111-2222-3333-4444-555555555508}), oleautomation]
    interface IStore2 : IStore {
        [id(0x60020000)] HRESULT Flush();
    };

    [uuid({11111111-2222-3333-4444-555555555509}), dispatchable]
    dispinterface StoreView shows IStore2 {
    };

    [uuid({11111111-2222-3333-4444-55555555550A}), helpstring("The ledger")]
    coclass Ledger {
        interface IStore;
        [default] interface _Ledger;
        [default, source] interface __Ledger;
    };
}
)";

class CompiledLedger : public testing::Test {
 protected:
  void SetUp() override {
    if (!Widl::IsInstalled()) GTEST_SKIP() << Widl::kMissing;
    TypeLibOptions options;
    options.CheckCoverage = true;
    Library = TypeLibInfoFromFile(Compiler.Compile("ledger", kLedgerIdl), options);
  }
  const TypeInfo& Type(std::string_view name) const { return *Library->FindType(name); }
  const MemberInfo& Member(std::string_view type, std::string_view name, int invokeKind = 1) const {
    for (const MemberInfo& member : Type(type).OwnMembers)
      if (member.Name == name && member.InvokeKind == invokeKind) return member;
    throw std::runtime_error("no member " + std::string(name));
  }

  Widl Compiler;
  std::shared_ptr<TypeLibInfo> Library;
};

TEST_F(CompiledLedger, ListsAsItsIdl) {
  const std::string listing = TypeLibListing(*Library);
  EXPECT_EQ(listing.substr(listing.find("importlib")),
            "importlib(\"stdole2.tlb\");  // {00020430-0000-0000-C000-000000000046} 2.0\n" +
                std::string(kLedgerListing));
  EXPECT_NE(listing.find("version(3.7), lcid(0x409), helpstring(\"Test library\"), "
                         "helpcontext(0x10), helpfile(\"Ledger.hlp\"), hidden"),
            std::string::npos)
      << listing.substr(0, 400);
}

TEST_F(CompiledLedger, IsReadToTheLastByte) {
  EXPECT_TRUE(Library->Messages.empty()) << Library->Messages.front();
  for (const CoverageMap::Leftover& left : Library->Coverage->Leftovers())
    ADD_FAILURE() << left.Region << ": " << left.Unread << " bytes from " << left.First;
}

TEST_F(CompiledLedger, ReadsAlikeForBothMachines) {
  if (!Widl::IsInstalled("i686")) GTEST_SKIP() << Widl::kMissing;
  const auto other = TypeLibInfoFromFile(Compiler.Compile("ledger32", kLedgerIdl, "i686"));
  const std::string mine = TypeLibListing(*Library), theirs = TypeLibListing(*other);
  EXPECT_EQ(mine.substr(mine.find("importlib")), theirs.substr(theirs.find("importlib")));
}

TEST_F(CompiledLedger, HidesReturnValuesLocalesAndValuesOfProperties) {
  struct {
    const char* Name;
    int InvokeKind;
    std::size_t Parameters;
    int VarType, PointerLevel;
  } const cases[] = {{"Name", ikGet, 0, vtBstr, 0},      {"Name", ikLet, 0, vtBstr, 0},
                     {"Owner", ikSet, 0, vtDispatch, 0}, {"_NewEnum", ikGet, 0, vtUnknown, 0},
                     {"Post", ikFunction, 4, vtBool, 0}, {"Sum", ikFunction, 1, vtR8, 0},
                     {"Find", ikFunction, 1, 0, 1},      {"Fill", ikFunction, 2, vtHresult, 0}};
  for (const auto& expected : cases) {
    const MemberInfo& member = Member("_Ledger", expected.Name, expected.InvokeKind);
    EXPECT_EQ(member.Parameters().size(), expected.Parameters) << expected.Name;
    EXPECT_EQ(member.ReturnType.VarType(), expected.VarType) << expected.Name;
    EXPECT_EQ(member.ReturnType.PointerLevel(), expected.PointerLevel) << expected.Name;
  }
}

TEST_F(CompiledLedger, FlattensDispatchInterfacesOnly) {
  struct {
    const char* Name;
    std::vector<std::string> Members;
  } const cases[] = {
      {"IStore2", {"Flush"}},
      {"StoreView", {"QueryInterface", "AddRef", "Release", "Save", "Flush"}},
      {"__Ledger", {"Posted", "Count"}},
  };
  for (const auto& expected : cases) {
    std::vector<std::string> names;
    for (const MemberInfo* member : Type(expected.Name).Members()) names.emplace_back(member->Name);
    EXPECT_EQ(names, expected.Members) << expected.Name;
  }
  const auto& dual = Type("_Ledger").Members();
  ASSERT_EQ(dual.size(), 15u);
  EXPECT_EQ(dual[6]->Name, "Invoke");
  EXPECT_EQ(dual[6]->AttributeMask & 1, 1);
  EXPECT_EQ(dual[7]->Name, "Name");
}

TEST_F(CompiledLedger, FindsInterfacesOfAClass) {
  const TypeInfo& ledger = Type("Ledger");
  EXPECT_EQ(ledger.TypeKindString(), "coclass");
  EXPECT_EQ(ledger.DefaultInterface()->Name(), "_Ledger");
  EXPECT_EQ(ledger.DefaultEventInterface()->Name(), "__Ledger");
  EXPECT_EQ(ledger.DefaultEventInterface()->AttributeMask, 3);
  EXPECT_EQ(&ledger.DefaultInterface()->Members(), &Type("_Ledger").Members());
  EXPECT_EQ(ledger.DefaultInterface()->TypeInfoNumber(), Type("_Ledger").TypeInfoNumber);
  EXPECT_EQ(Type("IStore2").Interfaces.front().Name(), "IStore");
  EXPECT_EQ(Type("_Ledger").Interfaces.front().Name(), "IDispatch");
  EXPECT_EQ(Type("_Ledger").DefaultInterface(), nullptr);
  EXPECT_EQ(Type("EntryAlias").ResolvedType(), &Type("Entry"));
}

TEST_F(CompiledLedger, GivesItsHeadAlone) {
  TypeLibOptions options;
  options.HeaderOnly = true;
  const auto head = TypeLibInfoFromFile(Library->ContainingFile, options);
  EXPECT_EQ(head->Name, "LedgerLib");
  EXPECT_TRUE(head->TypeInfos.empty());
  EXPECT_EQ(ReadLibraryId(Library->ContainingFile), "{11111111-2222-3333-4444-555555555501}");
}

// Constants of modules, which that compiler does not write.
TEST(MsftReader, UnpacksConstants) {
  MsftBuilder builder;
  const auto packed = MsftBuilder::Packed;
  const auto stored = [&](const test::Bytes& value) { return builder.AddValue(value); };
  struct {
    const char* Name;
    int VarType;
    std::int32_t Value;
    const char* Text;
  } const cases[] = {
      {"Small", vtI2, packed(vtI2, 0xFFFE), "-2"},
      {"Yes", vtBool, packed(vtBool, 0xFFFF), "True"},
      {"Byte", vtUI1, packed(vtUI1, 200), "200"},
      {"Nothing", vtDispatch, packed(vtDispatch, 0), ""},
      {"Whole", vtI4, stored(test::Bytes().U16(vtI4).U32(0xFFFFFFF9u)), "-7"},
      {"Half", vtR8, stored(test::Bytes().U16(vtR8).U32(0).U32(0x3FE00000u)), ".5"},
      {"Price", vtCurrency, stored(test::Bytes().U16(vtCurrency).U32(125000).U32(0)), "12.5"},
      {"Day", vtDate, stored(test::Bytes().U16(vtDate).U32(0).U32(0x40400000u)), "1/31/1900"},
      {"Title", vtBstr, stored(test::Bytes().U16(vtBstr).U32(4).Text("T\351st")), "T\xC3\xA9st"},
      {"Null", vtBstr, stored(test::Bytes().U16(vtBstr).I32(-1)), ""},
  };
  MsftBuilder::Type module{.Kind = tkModule};
  for (const auto& item : cases)
    MsftBuilder::AddField(module, MsftBuilder::Plain(item.VarType), builder.AddName(item.Name),
                          vkConstant, item.Value);
  builder.Types.push_back(module);
  const auto library = TypeLibInfoFromBytes(builder.Build());
  EXPECT_TRUE(library->Messages.empty()) << library->Messages.front();
  const auto& members = library->TypeInfos[0].OwnMembers;
  ASSERT_EQ(members.size(), std::size(cases));
  for (std::size_t i = 0; i < members.size(); ++i) {
    EXPECT_EQ(members[i].Name, cases[i].Name);
    EXPECT_EQ(members[i].InvokeKind, ikConstant);
    EXPECT_EQ(members[i].Value->Text(), cases[i].Text) << cases[i].Name;
  }
}

TEST(MsftReader, ReadsTextsInTheCodePageOfTheLanguageOrTheOneGiven) {
  MsftBuilder builder;
  builder.LibraryHelp = builder.AddString("\xCC\xE8\xF0 \x81");
  struct {
    std::uint32_t Lcid;
    const char* CodePage;
    const char* Text;
  } const cases[] = {{0x409, "", "\xC3\x8C\xC3\xA8\xC3\xB0 \xC2\x81"},
                     {0x419, "", "\xD0\x9C\xD0\xB8\xD1\x80 \xD0\x83"},
                     {0x419, "auto", "\xD0\x9C\xD0\xB8\xD1\x80 \xD0\x83"},
                     {0x409, "1251", "\xD0\x9C\xD0\xB8\xD1\x80 \xD0\x83"},
                     {0x411, "", "\xEF\xBE\x8C\xE9\xA0\x8F \xEF\xBF\xBD"}};
  for (const auto& expected : cases) {
    builder.Lcid = expected.Lcid;
    TypeLibOptions options;
    options.CodePage = expected.CodePage;
    EXPECT_EQ(TypeLibInfoFromBytes(builder.Build(), options)->HelpString, expected.Text)
        << expected.Lcid;
  }
}

TEST(MsftReader, KeepsAHelpContextAsStored) {
  MsftBuilder builder;
  MsftBuilder::Type type{.Kind = tkInterface, .Name = builder.AddName("IOne")};
  MsftBuilder::AddFunction(type, 1, builder.AddName("Run"), 1, -1, {});
  type.Records.Set32(24, 0xFFFFFFFF);
  builder.Types.push_back(type);
  const auto library = TypeLibInfoFromBytes(builder.Build());
  EXPECT_EQ(static_cast<std::int32_t>(library->TypeInfos[0].OwnMembers[0].HelpContext), -1);
  EXPECT_NE(TypeLibJson(*library).find("\"HelpContext\": -1"), std::string::npos);
}

TEST(MsftReader, TakesThePageThatTheBytesTellWhereItMay) {
  struct {
    std::uint32_t Lcid;
    const char* CodePage;
    const char* Written;
    const char* Text;
    bool IsRead;
  } const cases[] = {
      {0x409, "auto", "936", "返回当前文件的名称和大小", true},
      {0x409, "", "936", "返回当前文件的名称和大小", false},
      {0x409, "1252", "936", "返回当前文件的名称和大小", false},
      {0x409, "gbk", "936", "返回当前文件的名称和大小", true},
      {0x419, "auto", "936", "返回当前文件的名称和大小", true},
      {0x809, "auto", "1251", "Возвращает имя текущего файла и его размер", true},
      {0, "auto", "1251", "Возвращает имя текущего файла и его размер", true},
      {0x411, "auto", "932", "表", true},
      {0x40C, "auto", "1252", "Le nom du fichier créé à côté", true},
      {0x409, "auto", "1252", "Größe, © 1998", true},
  };
  for (const auto& item : cases) {
    std::string bytes;
    ASSERT_TRUE(CodePage::Named(item.Written).Encode(item.Text, bytes));
    MsftBuilder builder;
    builder.AddString("first");
    builder.LibraryHelp = builder.AddString(bytes);
    builder.Lcid = item.Lcid;
    TypeLibOptions options;
    options.CodePage = item.CodePage;
    const auto library = TypeLibInfoFromBytes(builder.Build(), options);
    EXPECT_EQ(library->HelpString == item.Text, item.IsRead)
        << item.Lcid << item.CodePage << library->HelpString;
    EXPECT_EQ(library->CodePage == CodePage::Named(item.Written).Name(), item.IsRead);
  }
}

}  // namespace
}  // namespace vendrel::typelib
