#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/ObjectRegistry.h"
#include "core/Workspace.h"
#include "project/VBProject.h"
#include "support/Services.h"
#include "typelib/SampleImages.h"
#include "typelib/ShopIdl.h"
#include "typelib/TypeLibService.h"
#include "typelib/Widl.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel {
namespace {

using test::DiskFolder;
using typelib::test::PeBuilder;
using typelib::test::Widl;

std::string Text(const Parameter& p) {
  std::string text = p.IsOptional ? "?" : "";
  if (p.IsParamArray) text += "...";
  text += (p.IsByRef ? "&" : "") + p.Name() + (p.IsArray ? "()" : "") + ":" + p.VariableType.str();
  return p.DefaultValue.empty() ? text : text + "=" + p.DefaultValue.str();
}

std::string Text(const Parameters* parameters) {
  std::string text;
  for (std::size_t i = 1; parameters && i <= parameters->Count(); ++i)
    text += (i > 1 ? ", " : "") + Text(*parameters->Item(i));
  return "(" + text + ")";
}

// One line a member: type number, name, parameters, return type; "-" in front of hidden ones.
std::string Text(const Component& c) {
  std::string text;
  for (const Interface& i : c.Interfaces) text += "implements " + i.Name + "\n";
  for (const EventDeclaration& e : c.EventDeclarations)
    text += "event " + e.Name + Text(e.Parameters.IfAny()) + "\n";
  if (c.Constants())
    for (const Constant& k : *c.Constants())
      text += "const " + k.Name + ":" + k.TypeName.str() + "=" + k.Value + "\n";
  for (const Enumeration& e : c.Enumerations) {
    text += "enum " + e.Name;
    for (const EnumMember& m : e.Members()) text += " " + m.Name + "=" + m.Value;
    text += "\n";
  }
  for (const UDT& u : c.UDTs) {
    text += "type " + u.Name;
    for (const Variable& m : u.Members)
      text += " " + m.Name + (m.IsArray ? "(" + m.ArraySubscript.str() + ")" : "") + ":" +
              m.TypeName.str();
    text += "\n";
  }
  for (const Block& b : c.Blocks)
    if (b.BlockType() != btDeclarations)
      text += (b.IsHiddenMember ? "-" : "") + std::to_string(b.BlockType()) + " " + b.Name() +
              Text(b.Parameters.IfAny()) + (b.ReturnTypeIsArray ? "()" : "") +
              (b.ReturnType.empty() ? "" : ":" + b.ReturnType.str()) + "\n";
  return text;
}

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string Told(const VBProject& project) {
  std::string text;
  for (const Diagnostic& item : project.Diagnostics) text += item.Text + "\n";
  return text;
}

class LoadFromTypeLib : public testing::Test {
 protected:
  void SetUp() override { ConnectLibraryReaders(); }
  void TearDown() override { State().Silent = true; }

  // The two libraries of the samples; the second one is taken away if it is not wanted.
  bool Compile(bool withParts) {
    mWidl.Folder().Write("types.idl", typelib::test::kPartTypesIdl);
    mShop = mWidl.Compile("parts", typelib::test::kPartsIdl);
    mShop = mShop.empty() ? "" : mWidl.Compile("shop", typelib::test::kShopIdl);
    if (!withParts) std::filesystem::remove(mWidl.Folder().Path("parts.tlb"));
    return !mShop.empty();
  }
  std::unique_ptr<VBProject> Load(const ReadingRules& reading, bool silent = true) {
    auto project = std::make_unique<VBProject>();
    State().Silent = silent;
    project->Reading = reading;
    project->LoadTypeLibHelpStrings = true;
    EXPECT_TRUE(project->LoadFromTypeLib(mShop)) << project->LastErrorString;
    return project;
  }

  Widl mWidl;
  std::string mShop;
};

std::string Module(const VBProject& project, const char* name) {
  const Component* component = project.Components.Item(name);
  return component ? Text(*component) : "no such module";
}

TEST_F(LoadFromTypeLib, MakesAModuleOfEachEntryAndTwoOfEnumerationsAndRecords) {
  if (!Widl::IsInstalled()) GTEST_SKIP() << Widl::kMissing;
  ASSERT_TRUE(Compile(true));
  const auto project = Load(ReadingRules::Classic());
  EXPECT_EQ(project->ProjectName + " " + project->Description(), "Shop A shop");
  EXPECT_EQ(project->MajorVersion() + "." + project->MinorVersion() + " " + project->Increment(),
            "3.7 0 (Typelib version)");
  EXPECT_EQ(project->ClsID(), "{11111111-2222-3333-4444-555555555501}");
  EXPECT_EQ(project->ProjectType, ptControl);
  EXPECT_TRUE(project->WasReadFromTypeLibrary);
  std::string names;
  for (const Component& c : project->Components) {
    names += c.Name + " ";
    EXPECT_EQ(c.LoadState, lsFullyLoadedNoCode);
    EXPECT_EQ(c.FileName.LeafName(), c.Name + ".cls");
  }
  EXPECT_EQ(names, "Enumerations AccountPointer Structures Tools Board Account Panel ");
  const Component& account = *project->Components.Item("Account");
  EXPECT_EQ(account.HelpContextID, 12);
  EXPECT_EQ(account.DefaultMemberName, "Name");
  EXPECT_TRUE(account.IsCollection());
  EXPECT_EQ(account.Blocks.Item("IStore_Save")->Interface, "IStore");
  EXPECT_EQ(account.Blocks.Item("Name")->TaggedComments->Item(1)->Text, "The name");
  EXPECT_EQ(account.Blocks.Item("Name")->HelpContextID, 5);
  const Component& panel = *project->Components.Item("Panel");
  EXPECT_EQ(panel.FileType, ftUserControl);
  EXPECT_EQ(panel.Access, "PRIVATE");
  EXPECT_EQ(project->TypeCache.Find("Kind")->Number, 4);
  EXPECT_EQ(project->TypeCache.Find("Entry")->ComponentName, "Structures");
  EXPECT_EQ(project->TypeCache.Find("Account")->Number, 1);
  EXPECT_EQ(project->Diagnostics.Count(), 0u);
}

// What HideComMembers leaves out.
constexpr const char* kComMembers =
    "-1 QueryInterface(&riid:GUID, ppvObj:Void)\n-2 AddRef():ULong\n-2 Release():ULong\n"
    "-1 GetTypeInfoCount(&pctinfo:UInt)\n-1 GetTypeInfo(itinfo:UInt, lcid:ULong, pptinfo:Void)\n"
    "-1 GetIDsOfNames(&riid:GUID, rgszNames:Byte, cNames:UInt, lcid:ULong, &rgdispid:Long)\n"
    "-1 Invoke(dispidMember:Long, &riid:GUID, lcid:ULong, wFlags:Unsigned Integer, "
    "&pdispparams:DISPPARAMS, &pvarResult:Variant, &pexcepinfo:EXCEPINFO, &puArgErr:UInt)\n";

TEST_F(LoadFromTypeLib, ShowsMembersInTheTwoReadings) {
  if (!Widl::IsInstalled()) GTEST_SKIP() << Widl::kMissing;
  ASSERT_TRUE(Compile(true));
  const auto classic = Load(ReadingRules::Classic());
  EXPECT_EQ(Module(*classic, "Enumerations"), "enum Kind kdCash=1 kdNone=-1\n");
  EXPECT_EQ(Module(*classic, "Structures"),
            "type Entry amount:Long extra:Any Names():String Kinds():{Urecognised type 8192} "
            "Owner:Account Width:Size\n");
  EXPECT_EQ(Module(*classic, "Tools"), "2 Mid$(handle:Long, Width:Size):Long\n");
  EXPECT_EQ(Module(*classic, "Board"),
            "2 Broken():Size\n3 count():Long\n4 count(RHS:Long):Long\n3 Width():Size\n"
            "4 Width(RHS:Size):Size\n3 Height():Long\n4 Height(RHS:Long):Long\n");
  EXPECT_EQ(Module(*classic, "Account"),
            "implements IStore\nevent Posted(amount:Long)\n" + std::string(kComMembers) +
                "3 Name():String\n4 Name(RHS:String):String\n5 Owner(RHS:Unknown):Unknown\n"
                "-3 _NewEnum():Unknown\n"
                "2 Post(amount:Integer, ?text:String=\"none\", ?extra:Variant, ?Kind:Kind=-3, "
                "?&count:Long):Boolean\n1 Sum(?&values():Variant)\n"
                "-1 Find(from:Account, found:Account, other:AccountPointer, &Entry:Entry, "
                "Kinds():{Urecognised type 8192})\n2 Measure(Width:Size, bolt:IBolt):Size\n"
                "1 IStore_Save(path:String)\n");
  const Blocks& blocks = classic->Components.Item("Account")->Blocks;
  EXPECT_FALSE(blocks.HasKey("NewEnum"));
  EXPECT_EQ(classic->Components.Item("Board")->Blocks.Item("Height")->BlockType(), btPropertyGet);

  const auto complete = Load(ReadingRules::Complete());
  EXPECT_EQ(Module(*complete, "Structures"),
            "type Entry amount:Long extra:Any Names(0 To 2):String Kinds(0 To 1):Kind "
            "Owner:Account Width:Size\n");
  EXPECT_EQ(Module(*complete, "Account"),
            "implements IStore\nevent Posted(amount:Long)\n3 Name():String\n"
            "4 Name(RHS:String):String\n5 Owner(RHS:IUnknown):IUnknown\n-3 _NewEnum():IUnknown\n"
            "2 Post(amount:Long, ?text:String=\"none\", ?extra:Variant, ?Kind:Kind=-3, "
            "?&count:Long):Boolean\n1 Sum(?...&values():Variant)\n"
            "-1 Find(from:Account, &found:Account, &other:AccountPointer, &Entry:Entry, "
            "Kinds():Kind)\n2 Measure(Width:Size, bolt:Bolt):Size\n1 IStore_Save(path:String)\n");
  EXPECT_TRUE(complete->Components.Item("Account")->Blocks.HasKey("NewEnum"));
}

TEST_F(LoadFromTypeLib, TellsWhatLiesInAMissingLibrary) {
  if (!Widl::IsInstalled()) GTEST_SKIP() << Widl::kMissing;
  ASSERT_TRUE(Compile(false));
  test::NotedMessages boxes;
  const std::string missing = "48 Missing type information: Error reading type information for ";
  const std::string tail =
      ".  One or more dependant files containing type information may be missing.  Processing will "
      "continue, ";
  const auto member = [&](const char* module, const char* name) {
    return missing + "module '" + module + "', member '" + name + "'" + tail +
           "this member will be skipped.";
  };
  const auto parameter = [&](const char* name) {
    return missing + "a parameter named '" + name + "'" + tail +
           "this parameters type information will be missing.";
  };
  // A variable behind a function that could not be read goes with it.
  const std::vector<std::string> board = {member("Board", "Broken"), member("Board", "count"),
                                          member("Board", "Width"), member("Board", "Height")};
  std::vector<std::string> expected = {missing + "member 'Width' of structure (UDT) 'Entry'" +
                                           tail + "this members type information will be missing.",
                                       parameter("Width")};
  expected.insert(expected.end(), board.begin(), board.end());
  expected.push_back(member("Account", "Measure"));
  for (const char* name : {"Broken", "count", "Width", "Height"})
    expected.push_back(member("Panel", name));
  const auto classic = Load(ReadingRules::Classic(), false);
  EXPECT_EQ(boxes.Shown, expected);
  EXPECT_THAT(Told(*classic), StartsWith("type library parts.tlb ({"));
  EXPECT_THAT(Told(*classic), EndsWith(" not found, needed in 11 places; --typelib-path names "
                                       "folders to search\n"));
  EXPECT_EQ(Module(*classic, "Board"), "");
  boxes.Shown.clear();

  const auto complete = Load(ReadingRules::Complete(), false);
  EXPECT_EQ(boxes.Shown, (std::vector<std::string>{expected[0], parameter("Width"),
                                                   parameter("Width"), parameter("bolt")}));
  EXPECT_THAT(Told(*complete), HasSubstr(" not found, needed in 9 places; "));
  EXPECT_EQ(Module(*complete, "Board"),
            "2 Broken()\n3 count():Long\n4 count(RHS:Long):Long\n3 Width()\n4 Width(RHS:)\n"
            "3 Height():Long\n4 Height(RHS:Long):Long\n");
}

// A class whose second interface lies in a library that is nowhere, and a module with constants,
// offered by a service of the host's own.
class HostService final : public TLIApplication {
 public:
  std::shared_ptr<const typelib::TypeLibInfo> TypeLibInfoFromFile(const std::string&) override {
    using typelib::test::MsftBuilder;
    MsftBuilder builder;
    builder.AddGuid(0x11);
    builder.AddImport(builder.AddGuid(0x22), "Other.tlb", 4, 2);
    builder.LibraryName = builder.AddName("Hosted");
    MsftBuilder::Type record{.Kind = typelib::tkUnion, .Name = builder.AddName("IShown")};
    MsftBuilder::AddField(record, MsftBuilder::Plain(typelib::vtI4), builder.AddName("Field"),
                          typelib::vkField, 0);
    const MsftBuilder::Type owner{.Kind = typelib::tkCoclass,
                                  .Name = builder.AddName("Owner"),
                                  .DataType = 0,
                                  .Implemented = 2};
    builder.References.I32(0).U32(1).I32(-1).I32(16).I32(1).U32(0).I32(-1).I32(-1);
    MsftBuilder::Type constants{.Kind = typelib::tkModule, .Name = builder.AddName("Numbers")};
    MsftBuilder::AddField(constants, MsftBuilder::Plain(typelib::vtI4), builder.AddName("Limit"),
                          typelib::vkConstant, MsftBuilder::Packed(typelib::vtI4, 40));
    builder.Types = {record, owner, constants};
    return typelib::TypeLibInfoFromBytes(builder.Build());
  }
};

TEST_F(LoadFromTypeLib, AsksTheServiceThatAHostHasRegistered) {
  ObjectRegistry::Register<TLIApplication>(kTypeLibProgId,
                                           [] { return std::make_shared<HostService>(); });
  test::NotedMessages boxes;
  mShop = "Z:\\none\\Hosted.exe";
  const auto classic = Load(ReadingRules::Classic(), false);
  EXPECT_EQ(classic->ProjectName, "Hosted");
  EXPECT_EQ(classic->ProjectType, ptOleExe);
  EXPECT_EQ(classic->MajorVersion(), "");
  EXPECT_EQ(boxes.Shown,
            std::vector<std::string>{
                "48 Missing typelib information: There was an error reading typelib information "
                "for one or more interfaces in module 'Owner'.  One or more dependant files "
                "containing type information may be missing.  Processing will continue, this "
                "component will be incomplete."});
  EXPECT_EQ(Module(*classic, "Owner") + Module(*classic, "Numbers"), "");
  const auto complete = Load(ReadingRules::Complete(), false);
  EXPECT_EQ(boxes.Shown.size(), 1u);
  EXPECT_THAT(Told(*complete), StartsWith("type library Other.tlb ({"));
  EXPECT_THAT(Told(*complete), HasSubstr("} 4.2) not found, needed in 1 place; "));
  EXPECT_EQ(Module(*complete, "Owner"), "3 Field():Long\n4 Field(RHS:Long):Long\n");
  EXPECT_EQ(Module(*complete, "Numbers"), "const Limit:Long=40\n");
  ObjectRegistry::Register<TLIApplication>(kTypeLibProgId,
                                           [] { return std::shared_ptr<TLIApplication>(); });
}

TEST_F(LoadFromTypeLib, TakesTheVersionOfACompiledFileAndServesReferences) {
  const DiskFolder folder;
  PeBuilder compiled;
  compiled.TypeLibraries = {{1, typelib::test::SmallLibrary().Build()},
                            {2, typelib::test::OldLibrary().Build()}};
  compiled.VersionBlock = PeBuilder::Version(1, 2, 3, 4);
  mShop = folder.Write("Both.OCX", compiled.Build());
  const auto first = Load(ReadingRules::Classic());
  EXPECT_EQ(first->ProjectName + " " + first->MajorVersion() + "." + first->MinorVersion() + "." +
                first->Increment(),
            "Small 1.2.4");
  EXPECT_EQ(first->ProjectType, ptControl);
  EXPECT_EQ(first->FileName.ClassID(), "{11111111-1111-1111-1111-111111111111}");
  mShop += "/2";
  EXPECT_EQ(Load(ReadingRules::Classic())->ProjectName, "OldLib");

  const std::string project =
      folder.Write("A.vbp", "Type=Exe\r\nReference=*\\G{0}#1.0#0#both.ocx\r\nName=\"A\"\r\n");
  VBProject user;
  ASSERT_TRUE(user.Load(project));
  EXPECT_EQ(user.References.Item(1)->Name(), "Small");
  EXPECT_EQ(user.References.Item(1)->ClsID(), "{11111111-1111-1111-1111-111111111111}");
}

TEST_F(LoadFromTypeLib, IsFalseAndSilentWhereThereIsNoLibrary) {
  const DiskFolder folder;
  test::NotedMessages boxes;
  for (const std::string& path :
       {folder.Path("absent.dll"), folder.Write("text.tlb", "no library")}) {
    VBProject project;
    State().Silent = false;
    EXPECT_FALSE(project.LoadFromTypeLib(path));
    EXPECT_EQ(project.ProjectSourceType, ptsTypeLibrary);
    EXPECT_FALSE(project.WasReadFromTypeLibrary);
    EXPECT_NE(project.LastErrorString, "");
    EXPECT_EQ(project.Diagnostics.Count() + boxes.Shown.size(), 0u);
  }
}

// A type of a library that is not found, behind pointers: its kind is the one stored.
TEST(TypeLibParameters, OfMissingTypesAreByReferenceByTheStoredKind) {
  using namespace typelib;
  struct {
    int Kind;
    const char* Classic;
    const char* Complete;
  } const cases[] = {{tkInterface, "010", "001"}, {tkDispatch, "010", "001"},
                     {tkCoclass, "010", "001"},   {tkRecord, "010", "111"},
                     {tkEnum, "010", "010"},      {tkAlias, "010", "010"},
                     {-1, "010", "010"}};
  for (const auto& item : cases) {
    TypeLibInfo library;
    library.Imports.resize(1);
    library.ImportedTypes.resize(1);
    library.ImportedTypes[0].TypeKind = item.Kind;
    library.TypeNodes = {{vtUserDefined, 0, 0, TypeReference::Imported(0).Code},
                         {vtPointer, 0, 0, 0},
                         {vtPointer, 0, 0, 1}};
    std::string classic, complete;
    for (TypeCode level = 0; level < 3; ++level) {
      ParameterInfo parameter;
      parameter.VarTypeInfo = {&library, level};
      VBProject project;
      classic += project.TypeLibParameter(library, parameter)->IsByRef ? '1' : '0';
      project.Reading = ReadingRules::Complete();
      complete += project.TypeLibParameter(library, parameter)->IsByRef ? '1' : '0';
    }
    EXPECT_EQ(classic, item.Classic) << item.Kind;
    EXPECT_EQ(complete, item.Complete) << item.Kind;
  }
}

TEST(TypeLibParameters, HaveNoDefaultWhereItIsNothing) {
  using namespace typelib;
  struct {
    int VarType;
    bool IsNull;
    const char* Text;
  } const cases[] = {{vtDispatch, true, ""},
                     {vtUnknown, true, ""},
                     {vtVariant, true, ""},
                     {vtBstr, true, "\"\""},
                     {vtI4, false, "0"}};
  const TypeLibInfo library;
  for (const auto& item : cases) {
    ParameterInfo parameter;
    parameter.VarTypeInfo = {&library, PlainType(vtVariant)};
    parameter.Optional = true;
    TypeLibValue value;
    value.VarType = item.VarType;
    value.IsNull = item.IsNull;
    parameter.DefaultValue = &value;
    for (const ReadingRules& reading : {ReadingRules::Classic(), ReadingRules::Complete()}) {
      VBProject project;
      project.Reading = reading;
      EXPECT_EQ(project.TypeLibParameter(library, parameter)->DefaultValue, item.Text);
    }
  }
}

TEST(TypeWords, OfNumbersDropTheArrayBit) {
  const VBProject project;
  EXPECT_EQ(project.psTranslateType(8200), "String");
  EXPECT_TRUE(project.IsArrayType(8200));
  EXPECT_EQ(project.psTranslateType(18), "Unsigned Integer");
  EXPECT_EQ(project.psTranslateType(25), "");
  EXPECT_EQ(project.psTranslateType(0), "{Urecognised type 0}");
  EXPECT_EQ(project.psTranslateType(4096 + 15), "{Urecognised type 4111}");
  EXPECT_EQ(project.TypeLibBlockType(1, 24), btSub);
  EXPECT_EQ(project.TypeLibBlockType(1, 3), btFunction);
  EXPECT_EQ(project.TypeLibBlockType(16, 3), 0);
}

TEST(ExpressionOfAText, HasControlCharactersAsCalls) {
  const VBProject project;
  struct {
    const char* Given;
    const char* Expected;
  } const cases[] = {{"", "\""},
                     {"ab", "\"ab\""},
                     {"a\rb", "\"a& \" & Chr$(13) & \"b\""},
                     {"\r\n", "Chr$(13) & Chr$(10) "},
                     {"\ra", "Chr$(13) & \"a\""}};
  for (const auto& item : cases) EXPECT_EQ(project.ParseForNonPrintable(item.Given), item.Expected);
}

}  // namespace
}  // namespace vendrel
