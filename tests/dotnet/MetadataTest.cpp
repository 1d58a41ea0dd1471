// The reader of assemblies, without a tree.
#include <gmock/gmock.h>

#include "diagnostics/VendrelError.h"
#include "dotnet/SampleAssemblies.h"
#include "dotnet/metadata/AssemblyLister.h"

namespace vendrel::metadata {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;

std::vector<ListedEntry> Entries(const std::string& name, const ListingOptions& options = {}) {
  AssemblyStore store;
  std::vector<ListedEntry> entries;
  const AssemblyFile* file = store.Open(test::DataPath(name));
  EXPECT_EQ(ListAssembly(store, *file, options,
                         [&](const ListedEntry& entry) { entries.push_back(entry); }),
            "");
  for (const ListedEntry& entry : entries) EXPECT_EQ(entry.Damage, "") << entry.Name;
  return entries;
}

std::vector<std::string> Names(const std::string& name, const ListingOptions& options = {}) {
  std::vector<std::string> names;
  for (const ListedEntry& entry : Entries(name, options)) names.push_back(entry.Name);
  return names;
}

// One entry as a line: kind, access, marks, type, parameters, value.
std::string Line(const ListedEntry& entry) {
  std::string line = std::string(entry.Kind) + " " + std::string(AccessWord(entry.Access));
  if (entry.IsStatic) line += " static";
  if (entry.IsVirtual) line += " virtual";
  if (entry.IsAbstract) line += " abstract";
  if (entry.IsExplicit) line += " explicit";
  if (entry.IsExtension) line += " extension";
  if (entry.Obsolete.Marked) line += " obsolete(" + entry.Obsolete.Text + ")";
  line += ": " + entry.Type;
  for (const std::string& parameter : entry.Parameters) line += "; " + parameter;
  return entry.Value.empty() ? line : line + " = " + entry.Value;
}

TEST(Metadata, MembersOfEachKindAreTold) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"T:Shop.Days", "enumeration PUBLIC: System.Enum"},
      {"F:Shop.Days.Monday", "constant PUBLIC static: Shop.Days = 1"},
      {"T:Shop.Price", "structure PUBLIC: System.ValueType"},
      {"F:Shop.Price.Amount", "field PUBLIC: System.Decimal"},
      {"F:Shop.Price.Highest", "constant PUBLIC static: System.Decimal = -12.50"},
      {"F:Shop.Price.Unit", "constant PUBLIC static: System.String = \"say \"\"x\"\"\""},
      {"F:Shop.Price.Mark", "constant PUBLIC static: System.Char = \"c\"c"},
      {"F:Shop.Price.Half", "constant PUBLIC static: System.Double = 0.5"},
      {"F:Shop.Price.None", "constant PUBLIC static: System.Object = Nothing"},
      {"F:Shop.Tools.Big", "constant PUBLIC static: System.Int64 = 1099511627776"},
      {"M:Shop.Price.System#IComparable#CompareTo(System.Object)",
       "method PRIVATE explicit: System.Int32; other As System.Object"},
      {"M:Shop.Price.op_Explicit(Shop.Price)~System.Int32",
       "method PUBLIC static: System.Int32; p As Shop.Price"},
      {"T:Shop.Call`2", "delegate PUBLIC: `1; value As `0; used As System.Int32@"},
      {"M:Shop.Goods`1.Raw(System.Int32*,System.Byte**,System.Void*)",
       "method PUBLIC static: System.Int32*; p As System.Int32*; q As System.Byte**; r As "
       "System.Void*"},
      {"M:Shop.Goods`1.Order(System.Int32,System.String,System.Decimal,Shop.Days)",
       "method PUBLIC: System.Void; count As System.Int32 = 5; text As System.String = \"a\"; "
       "price As System.Decimal = 1.5; day As Shop.Days = 1"},
      {"M:Shop.Goods`1.Look", "method PUBLIC obsolete(use Find): System.Void"},
      {"E:Shop.Goods`1.Changed", "event PUBLIC: System.EventHandler{System.EventArgs}"},
      {"P:Shop.Goods`1.Item(System.Int32,System.String)",
       "property PUBLIC: `0; index As System.Int32; name As System.String"},
      {"M:Shop.Goods`1.Node`1.Both(`0,`1,Shop.Goods{`1}.Node{`0}[])",
       "method PUBLIC: System.Void; first As `0; second As `1; rest As "
       "Shop.Goods{`1}.Node{`0}[]"},
      {"M:Shop.Goods`1.Convert``1(``0,`0[]@,System.Int32[0:,0:],"
       "System.Collections.Generic.Dictionary{System.String,``0[]})",
       "method PUBLIC: ``0; value As ``0; all As `0[]@; table As System.Int32[0:,0:]; map As "
       "System.Collections.Generic.Dictionary{System.String,``0[]}"},
      {"M:Shop.Helpers.Twice(System.Int32)",
       "method PUBLIC static extension: System.Int32; value As System.Int32"},
      {"T:Shop.Tools", "module PUBLIC: System.Object"},
  };
  const auto entries = Entries("Shop.dll");
  for (const auto& [name, line] : rows) {
    std::string found;
    for (const ListedEntry& entry : entries)
      if (entry.Name == name) found = Line(entry);
    EXPECT_EQ(found, line) << name;
  }
}

TEST(Metadata, OnlyWhatOthersCanUseIsListedUnlessAskedFor) {
  ListingOptions all;
  all.Private = true;
  const std::vector<std::string> hidden = {"T:Shop.Inner",           "T:Shop.Inner.AlsoUnseen",
                                           "M:Shop.Inner.Unseen",    "M:Shop.Goods`1.#cctor",
                                           "F:Shop.Goods`1.mSecret", "M:Shop.Goods`1.Friendly"};
  const auto seen = Names("Shop.dll");
  EXPECT_THAT(Names("Shop.dll", all), IsSupersetOf(hidden));
  for (const std::string& name : hidden) EXPECT_THAT(seen, Not(Contains(name)));
  // Accessors and the parts of delegates are no entries in either.
  for (const char* name : {"M:Shop.Goods`1.get_Item(System.Int32,System.String)",
                           "M:Shop.Call`2.Invoke(`0,System.Int32@)", "T:<Module>"})
    EXPECT_THAT(Names("Shop.dll", all), Not(Contains(name)));
}

TEST(Metadata, MembersOfClassesAboveAreFoundInOtherFiles) {
  ListingOptions inherited;
  inherited.Inherited = true;
  std::vector<std::string> lines;
  for (const ListedEntry& entry : Entries("Shop.dll", inherited))
    if (entry.In == "T:Shop.Goods`1" && entry.Name.find("System.Object") == std::string::npos)
      lines.push_back((entry.IsHidden ? "hidden " : "") + entry.Name);
  EXPECT_THAT(lines, ElementsAre("F:Shop.Base.Store`1.mCount", "F:Shop.Base.Store`1.Owner",
                                 "M:Shop.Base.Store`1.Find(System.Int32)",
                                 "M:Shop.Base.Store`1.Close", "M:Shop.Base.Store`1.Dispose",
                                 "E:Shop.Base.Store`1.Emptied", "hidden P:Shop.Base.Store`1.Size"));
}

TEST(Metadata, AForwardedTypeIsFollowed) {
  AssemblyStore store;
  const AssemblyFile* user = store.Open(test::DataPath("ShopUser.dll"));
  const TypeHandle type = store.FindByFullName(*user, "User");
  ASSERT_TRUE(type);
  const auto bases = BasesOf(store, type);
  ASSERT_FALSE(bases.empty());
  EXPECT_EQ(bases[0].Type.Name(), "Shop.Base.Moved");
  EXPECT_EQ(bases[0].Type.File->Image->Identity().Name, "ShopBase");
}

TEST(Metadata, NamesAreWrittenAsDocumentationHasThem) {
  EXPECT_EQ(DocumentedName(".ctor"), "#ctor");
  EXPECT_EQ(DocumentedName("global::A.B<C,D>.E"), "A#B{C@D}#E");
  std::string text;
  AppendInstance(text, "N.A`1.B.C`2", {"x", "y", "z"});
  EXPECT_EQ(text, "N.A{x}.B.C{y,z}");
  text.clear();
  AppendInstance(text, "N.A`9`", {"x"});  // counts that do not hold
  EXPECT_EQ(text, "N.A`9`");
}

TEST(Metadata, ASearchedFileMustBeTheAssemblyOfThatName) {
  AssemblyStore store;
  std::vector<std::string> missing;
  store.OnMissing = [&](const std::string& name) { missing.push_back(name); };
  AssemblyIdentity wanted;
  wanted.Name = "shopbase";
  EXPECT_NE(store.Named(wanted, test::DataPath("").substr(0, test::DataPath("").size() - 1)),
            nullptr);
  for (const char* name : {"../data/Shop", "None"}) {
    wanted.Name = name;
    EXPECT_EQ(store.Named(wanted, test::DataPath("..")), nullptr);
    EXPECT_EQ(store.Named(wanted, test::DataPath("..")), nullptr);  // told once
  }
  EXPECT_THAT(missing, ElementsAre("../data/Shop", "None"));
}

}  // namespace
}  // namespace vendrel::metadata
