// Sets of assemblies, and documentation brought into them.
#include <gmock/gmock.h>

#include <pugixml.hpp>
#include <sstream>

#include "core/Workspace.h"
#include "dotnet/Documented.h"
#include "dotnet/SampleAssemblies.h"
#include "support/Boxes.h"
#include "support/DiskFolder.h"
#include "support/MemoryFiles.h"
#include "support/Raised.h"

namespace vendrel {
namespace {

using test::DataPath;
using testing::ElementsAre;

// Shop.dll with the assembly that it builds on.
std::shared_ptr<Assemblies> ShopSet(bool classic = false) {
  auto set = std::make_shared<Assemblies>();
  set->NewProject = [classic] {
    auto project = std::make_shared<VBProject>();
    project->Reading = classic ? ReadingRules::Classic() : ReadingRules::Complete();
    return project;
  };
  for (const char* name : {"Shop.dll", "ShopBase.dll"}) {
    auto assembly = std::make_shared<Assembly>();
    assembly->FileName.SetFullPath(DataPath(name));
    set->Add(std::move(assembly));
  }
  return set;
}

std::vector<std::string> NamesIn(const Components& types) {
  std::vector<std::string> names;
  for (const Component& type : types.Listed()) names.push_back(type.Name);
  return names;
}

TEST(AssemblySet, TypesAreSharedOutOverNamespaces) {
  const auto set = ShopSet();
  const Assembly& shop = *set->Item("Shop");
  EXPECT_EQ(set->Item("shopbase.DLL"), set->Item(2));
  ASSERT_EQ(shop.Namespaces.Count(), 1u);
  const Namespace& space = *shop.Namespaces.Item(1);
  EXPECT_EQ(space.QualifiedName(), "Shop~Shop_namespace");
  EXPECT_EQ(space.DotNetName(), "N:Shop");
  EXPECT_THAT(NamesIn(space.Enumerations), ElementsAre("Days"));
  EXPECT_THAT(NamesIn(space.Structures), ElementsAre("Price"));
  EXPECT_THAT(NamesIn(space.Classes),
              ElementsAre("Goods`1", "Goods`1.Node`1", "Names", "Helpers", "Tools"));
  EXPECT_EQ(space.Delegates.Item("Call`2")->QualifiedName(), "Shop~Shop.Call`2");
  const Component& node = *shop.VBProject()->Components.Item("Shop.Goods`1.Node`1");
  EXPECT_TRUE(node.IsNested && node.IncludeFlag);
  EXPECT_EQ(node.FullName(), "Shop.Goods`1.Node`1");
  EXPECT_NE(shop.VBProject()->GetObjectFromDotNetName("T:Shop.Call`2"), nullptr);
  EXPECT_TRUE(shop.VBProject()->WasReadFromTypeLibrary && shop.VBProject()->PlugInFlag);
  // Classic: a nested type founds a namespace.
  EXPECT_EQ(ShopSet(true)->Item("Shop")->Namespaces.Item(2)->Name, "Shop.Goods`1");
}

TEST(AssemblySet, NamesLeadIntoIt) {
  const auto set = ShopSet();
  const auto nameOf = [&](const char* name) {
    const CodeElement* found = set->GetObjectFromQualifiedName(name);
    return found ? std::string(found->ClassName()) + " " + found->QualifiedName() : "none";
  };
  EXPECT_EQ(nameOf("Shop"), "Assembly Shop");
  EXPECT_EQ(nameOf("None~Shop.Price"), "none");
  EXPECT_EQ(nameOf("Shop~Shop_namespace"), "Namespace Shop~Shop_namespace");
  EXPECT_EQ(nameOf("Shop~_namespace"), "none");
  EXPECT_EQ(nameOf("Shop~Shop.Price"), "Component Shop~Shop.Price");
  EXPECT_EQ(nameOf("Shop~Shop.Goods`1~Look"), "Block Shop~Shop.Goods`1~Look");
  EXPECT_EQ(nameOf("Shop~Call`2_Delegate"), "Block Shop~Shop.Call`2");
  EXPECT_EQ(nameOf("Shop~Call`2_Delegate:value"), "Parameter Shop~Shop.Call`2:value");
  EXPECT_EQ(nameOf("Shop~Call`2_Delegate:none"), "none");
  VBProject* project = set->Item("Shop")->VBProject();
  const Component* store = set->FindComponent("Shop.Base.Store`1", project);
  ASSERT_NE(store, nullptr);
  const Component& goods = *project->Components.Item("Shop.Goods`1");
  EXPECT_EQ(set->GetInheritedFromObject(*goods.Blocks.Item("Close")), store->Blocks.Item("Close"));
  EXPECT_EQ(set->GetInheritedFromObject(*goods.EventDeclarations.Item("Emptied")),
            store->EventDeclarations.Item("Emptied"));
}

TEST(AssemblySet, SignaturesAreThoseOfDocumentation) {
  const test::DocumentedTree tree;
  Block& go = *tree.Go;
  go.netCreateParameter("by", "System.Int32&", {}, false);
  EXPECT_EQ(Assembly().DotNetMethodSignature(go), "Go(System.String,System.Int32@)");
  EXPECT_EQ(Assembly().DotNetMethodSignature(*tree.RunForms[0]), "Run");
}

TEST(AssemblySet, IsSavedAndLoadedAgain) {
  const auto set = ShopSet();
  set->Item("Shop")->SetRootFlag(true);
  set->Item("Shop")->CommentFile = "Z:\\c.xml";
  set->Item("Shop")->VBProject()->ExamplesOnlyFlag = true;
  for (const char* name : {"Shop.Price", "Shop.Names"})
    set->Item("Shop")->VBProject()->Components.Item(name)->RootFlag = true;
  const auto textOf = [](const Assemblies& saved) {
    pugi::xml_document document;
    saved.Save(document.append_child("Assemblies"));
    std::ostringstream text;
    document.save(text, "", pugi::format_raw);
    return text.str();
  };
  const std::string text = textOf(*set);
  EXPECT_THAT(text,
              testing::HasSubstr("<Assemblies RootAssemblyName=\"Shop\"><Assembly FileName="));
  EXPECT_THAT(text, testing::HasSubstr("RootModule=\"Shop~Shop.Names\" AssemblyName=\"Shop\" "
                                       "AssemblyType=\"1\" ExamplesOnly=\"True\"/>"));
  pugi::xml_document document;
  document.load_string(text.c_str());
  Assemblies again;
  EXPECT_TRUE(again.Load(document.document_element()));
  EXPECT_EQ(textOf(again), text);
  EXPECT_EQ(again.RootAssembly(), again.Item("Shop"));
}

TEST(AssemblySet, AMissingFileIsAskedForThenDropped) {
  struct Dialog final : FileDialog {
    std::string Filter;
    std::string OpenFile(std::string_view filter, std::string_view title) override {
      Filter = std::string(title) + "|" + std::string(filter);
      return DataPath("ShopBase.dll");
    }
  };
  pugi::xml_document document;
  document.load_string(
      "<Assemblies RootAssemblyName=''><Assembly FileName='/none/A.dll' "
      "CommentFile=''/></Assemblies>");
  Assemblies without;
  without.Load(document.document_element());
  EXPECT_EQ(without.Count(), 0u);
  EXPECT_EQ(without.Diagnostics.CountOf(DiagnosticCode::AssemblyDropped), 1u);
  const auto boxes = test::InstallBoxes();
  const auto dialog = std::make_shared<Dialog>();
  InUse<HostObjects>().Dialog = dialog;
  Assemblies with;
  with.Load(document.document_element());
  InUse<HostObjects>() = {};
  EXPECT_NE(with.Item("ShopBase"), nullptr);
  EXPECT_THAT(boxes->Said,
              testing::StartsWith("Could not find assembly|Assembly 'Z:\\none\\A.dll'"));
  EXPECT_EQ(
      dialog->Filter,
      ".NET Item|.NET Assembly or VB.NET Project (*.dll;*.exe;*.vbproj)|*.dll;*.exe;*.vbproj");
  // Without its attribute an assembly is told and left out.
  document.load_string(("<A><Assembly FileName='" + DataPath("Shop.dll") + "'/></A>").c_str());
  Assemblies damaged;
  damaged.Load(document.document_element());
  EXPECT_EQ(damaged.Count(), 0u);
  EXPECT_EQ(damaged.Diagnostics.CountOf(DiagnosticCode::UnreadProject), 1u);
}

TEST(AssemblySet, DocumentationBesideAnAssemblyReachesItsElements) {
  const auto set = ShopSet();
  Assembly& shop = *set->Item("Shop");
  shop.IntegrateCommentFile(*shop.VBProject(), nullptr, true, false);
  ASSERT_NE(shop.Documentation, nullptr);
  EXPECT_GT(shop.Documentation->Members, 25u);
  EXPECT_EQ(shop.Documentation->Placed, shop.Documentation->Members);
  EXPECT_TRUE(shop.Documentation->NotPlaced.empty());
  const auto described = [&](const char* name) {
    const CodeElement* found = shop.VBProject()->GetObjectFromDotNetName(name);
    return found ? found->Description() : "none";
  };
  EXPECT_EQ(described("T:Shop.Price"), "A price.");
  EXPECT_EQ(described("M:Shop.Goods`1.Find(System.String)"), "Finds.");
  EXPECT_EQ(described("T:Shop.Call`2"), "Calls.");
}

TEST(AssemblySet, TheCommentFileDescribesAndMarks) {
  const test::DiskFolder folder;
  const auto set = ShopSet();
  Assembly& shop = *set->Item("Shop");
  shop.CommentFile = folder.Write(
      "c.xml",
      "<c><x eid='Shop~Shop.Price' tid='##SUMMARY'>one</x>"
      "<x eid='Shop~Shop.Price' tid='##SUMMARY'>two</x><x eid='Shop~None' tid='##SUMMARY'>n</x>"
      "<x eid='Shop~Shop_namespace' tid='##REMARKS' q='q'>r</x>"
      "<x eid='Shop~Shop.Tools' tid='##EXCLUDE'/><x eid='Shop~Shop.Names' tid='##ISNEW'/>"
      "<x eid='Shop' tid='##MINE'>kept</x></c>");
  shop.IntegrateCommentFile(*shop.VBProject(), nullptr, false, false);
  const auto& types = shop.VBProject()->Components;
  EXPECT_EQ(types.Item("Shop.Price")->TaggedDescription, "one<crlf>two");
  EXPECT_FALSE(types.Item("Shop.Tools")->IncludeFlag);
  EXPECT_TRUE(types.Item("Shop.Names")->IsNew);
  EXPECT_EQ(test::CommentsOf(*shop.Namespaces.Item("Shop")), "##REMARKS=r\n");
  EXPECT_EQ(test::CommentsOf(shop), "##MINE=kept\n");
  EXPECT_EQ(shop.VBProject()->Diagnostics.CountOf(DiagnosticCode::ElementNotFound), 1u);
}

// A copy of the sample assemblies with documentation of one's own beside them.
struct Copies {
  test::DiskFolder Folder;
  Assemblies Set;

  explicit Copies(std::string_view shopMembers, std::string_view baseMembers = {},
                  bool withBase = true) {
    Set.NewProject = [] {
      auto project = std::make_shared<VBProject>();
      project->Reading = ReadingRules::Complete();
      return project;
    };
    for (const std::string name : {"Shop.dll", "ShopBase.dll"})
      Folder.Write(name, test::DataBytes(name));
    Add("Shop", shopMembers, true);
    Add("ShopBase", baseMembers, withBase);
    for (Assembly& assembly : Set)
      assembly.IntegrateCommentFile(*assembly.VBProject(), nullptr, true, false);
  }
  void Add(const std::string& name, std::string_view members, bool inSet) {
    Folder.Write((inSet ? "" : "docs/") + name + ".xml",
                 "<doc><members>" + std::string(members) + "</members></doc>");
    if (!inSet) return;
    auto assembly = std::make_shared<Assembly>();
    assembly->FileName.SetFullPath(Folder.Path(name + ".dll"));
    Set.Add(std::move(assembly));
  }
  Assembly& Shop() { return *Set.Item("Shop"); }
  std::string Described(const char* name) {
    const CodeElement* found = Shop().VBProject()->GetObjectFromDotNetName(name);
    return found ? found->Description() : "none";
  }
};

constexpr std::string_view kBaseMembers =
    "<member name='T:Shop.Base.Store`1'><summary>A store.</summary></member>"
    "<member name='M:Shop.Base.Store`1.Close'><summary>Closes.</summary>"
    "<remarks>r</remarks></member>"
    "<member name='M:Shop.Base.Store`1.Find(System.String)'><summary>Base find.</summary>"
    "<param name='name'>The name.</param></member>"
    "<member name='E:Shop.Base.Store`1.Emptied'><summary>Empty.</summary></member>"
    "<member name='M:Shop.Base.IStock`1.Take(`0,System.Int32@)'><summary>Takes.</summary></member>";

TEST(InheritedComments, ComeFromTheMemberThatIsInherited) {
  Copies copies("<member name='M:Shop.Goods`1.Add(`0,`0[])'><summary>Adds.</summary></member>",
                kBaseMembers);
  Assembly& shop = copies.Shop();
  shop.PopulateInheritedComments(*shop.VBProject(), nullptr, false);
  Component& goods = *shop.VBProject()->Components.Item("Shop.Goods`1");
  EXPECT_EQ(goods.Blocks.Item("Close")->TaggedDescription, "Closes.");
  EXPECT_EQ(test::CommentsOf(*goods.Blocks.Item("Close")), "##REMARKS=r\n");
  EXPECT_EQ(goods.EventDeclarations.Item("Emptied")->TaggedDescription, "Empty.");
  // Names is Goods of String: what it has from there has other types.
  const Component& names = *shop.VBProject()->Components.Item("Shop.Names");
  ASSERT_NE(names.Blocks.Item("Add"), nullptr);
  EXPECT_EQ(names.Blocks.Item("Add")->TaggedDescription, "Adds.");
  EXPECT_EQ(goods.TaggedDescription, "") << "its base is in another project";
  EXPECT_EQ(copies.Described("M:Shop.Goods`1.Find(System.String)"), "") << "it is its own";
}

TEST(InheritedComments, OutsideOfTheSetAreDrilledFor) {
  struct Settings final : HostSettings {
    std::string Folder;
    std::vector<CommentFileLocation> CommentFileLocations() override {
      return {{"none*", "/none"}, {"SHOPBASE.*", Folder}};
    }
  };
  Copies copies("", kBaseMembers, false);
  const auto settings = std::make_shared<Settings>();
  settings->Folder = copies.Folder.Path("docs");
  InUse<HostObjects>().Settings = settings;
  Assembly& shop = copies.Shop();
  Component& goods = *shop.VBProject()->Components.Item("Shop.Goods`1");
  shop.PopulateInheritedComments(*shop.VBProject(), nullptr, false);
  EXPECT_EQ(goods.Blocks.Item("Close")->TaggedDescription, "");
  shop.PopulateInheritedComments(*shop.VBProject(), nullptr, true);
  InUse<HostObjects>() = {};
  EXPECT_EQ(goods.Blocks.Item("Close")->TaggedDescription, "Closes.");
  EXPECT_EQ(goods.EventDeclarations.Item("Emptied")->TaggedDescription, "") << "never drilled";
}

// What a type inherits from a generic one outside has types in the place of its parameters.
TEST(InheritedComments, DrillingSeesThroughTypeArguments) {
  struct Settings final : HostSettings {
    std::vector<CommentFileLocation> CommentFileLocations() override { return {{"*", "/docs"}}; }
  };
  const test::MemoryFiles files{
      {"/docs/Out.xml",
       "<doc><members><member name='M:Out.Base`1.Add(`0)'><summary>Adds.</summary></member>"
       "<member name='M:Out.Base`1.Put(`0,System.Int32)'><summary>Number.</summary></member>"
       "<member name='M:Out.Base`1.Put(`0,System.Byte)'><summary>Byte.</summary></member>"
       "<member name='M:Out.Base`1.Two(`0)'><summary>1</summary></member>"
       "<member name='M:Out.Base`1.Two(X{`0})'><summary>2</summary></member>"
       "</members></doc>"}};
  for (const bool classic : {false, true}) {
    test::DocumentedTree tree(classic);
    tree.Class->InheritsFrom = "Out.Base{System.String}";
    tree.Class->IncludeFlag = true;
    tree.Project->NetTypeLocations["Out.Base`1"] = "/out/Out.dll";
    std::vector<Block*> blocks;
    for (const auto& [name, second] : {std::pair{"Add", ""}, {"Put", "System.Byte"}, {"Two", ""}}) {
      blocks.push_back(tree.Class->netCreateBlock(btSub, name, "PUBLIC", {}, false, "Out.Base`1",
                                                  false, false, false, false));
      blocks.back()->netCreateParameter("a", "System.String", {}, false);
      if (*second) blocks.back()->netCreateParameter("b", second, {}, false);
    }
    const Workspace::Use use(tree.Project->Workspace());
    InUse<HostObjects>().Settings = std::make_shared<Settings>();
    Assembly assembly;
    assembly.PopulateInheritedComments(*tree.Project, nullptr, true);
    InUse<HostObjects>() = {};
    EXPECT_EQ(blocks[0]->TaggedDescription, classic ? "" : "Adds.");
    EXPECT_EQ(blocks[1]->TaggedDescription, classic ? "" : "Byte.");
    EXPECT_EQ(blocks[2]->TaggedDescription, "") << "either would fit";
  }
}

TEST(InheritedComments, InheritDocTakesWhatIsNamedOverriddenOrImplemented) {
  Copies copies(
      "<member name='M:Shop.Goods`1.Find(System.String)'><inheritdoc/></member>"
      "<member name='M:Shop.Goods`1.Shop#Base#IStock{T}#Take(`0,System.Int32@)'><inheritdoc/>"
      "</member><member name='T:Shop.Names'><inheritdoc cref='T:Shop.Tools'/></member>"
      "<member name='T:Shop.Tools'><inheritdoc cref='T:Shop.Price'/></member>"
      "<member name='T:Shop.Price'><summary>Chained.</summary></member>"
      "<member name='T:Shop.Days'><inheritdoc cref='T:Shop.Helpers'/></member>"
      "<member name='T:Shop.Helpers'><inheritdoc cref='T:Shop.Days'/></member>",
      kBaseMembers);
  Assembly& shop = copies.Shop();
  EXPECT_EQ(copies.Described("M:Shop.Goods`1.Find(System.String)"), "") << "its base comes later";
  shop.ResolveInheritDocs();
  EXPECT_EQ(copies.Described("M:Shop.Goods`1.Find(System.String)"), "Base find.");
  EXPECT_EQ(copies.Described("M:Shop.Goods`1.Shop#Base#IStock{T}#Take(`0,System.Int32@)"),
            "Takes.");
  EXPECT_EQ(copies.Described("T:Shop.Names"), "Chained.");
  EXPECT_EQ(copies.Described("T:Shop.Tools"), "Chained.");
  EXPECT_EQ(copies.Described("T:Shop.Days"), "") << "a ring";
  const auto* find =
      As<Block>(shop.VBProject()->GetObjectFromDotNetName("M:Shop.Goods`1.Find(System.String)"));
  EXPECT_EQ(find->Parameters->Item(1)->Description(), "The name.");
}

TEST(AssemblySet, DocumentationThatCannotBeReadIsToldAndSkipped) {
  Copies copies("<member name='T:Shop.Price'><summary></member>");
  EXPECT_EQ(copies.Described("T:Shop.Price"), "");
  EXPECT_EQ(copies.Shop().VBProject()->Diagnostics.CountOf(DiagnosticCode::DocumentationUnread),
            1u);
  Copies dropped(
      "<member name='T:Shop.None'/><member name='M:Shop.Goods`1.Look'><param name='x'>y</param>"
      "</member>");
  const auto& list = dropped.Shop().Documentation->NotPlaced;
  ASSERT_EQ(list.size(), 2u);
  EXPECT_EQ(list[0].Why, DocumentationReport::Reason::NoElement);
  EXPECT_EQ(list[1].Part, "x");
}

}  // namespace
}  // namespace vendrel
