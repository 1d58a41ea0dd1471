// Assemblies as projects, and the names that lead from documentation to their elements.
#include <gmock/gmock.h>

#include "dotnet/DocumentationCheck.h"
#include "dotnet/SampleAssemblies.h"
#include "model/Events.h"
#include "support/MemoryFiles.h"
#include "support/Raised.h"

namespace vendrel {
namespace {

using test::LoadData;
using testing::ElementsAre;

const Component& Module(const VBProject& project, const std::string& name) {
  const Component* found = project.Components.Item(name);
  EXPECT_NE(found, nullptr) << name;
  static const Component none;
  return found ? *found : none;
}

std::string Marks(const Block& block) {
  std::string text = std::to_string(block.BlockType()) + " " + block.Access.str();
  if (block.IsStatic) text += " static";
  if (block.IsVirtual) text += " virtual";
  if (block.IsAbstract) text += " abstract";
  if (block.IsSealed) text += " sealed";
  if (block.IsShadow) text += " shadow";
  if (block.IsConstructor) text += " constructor";
  if (!block.Implemented) text += " inherited";
  if (!block.InheritedFrom().empty()) text += " from " + block.InheritedFrom().str();
  if (!block.Interface.empty()) text += " of " + block.Interface.str();
  return text;
}

// Blocks with their overloads, without what every class has from the core library.
std::vector<std::string> Procedures(const Component& component) {
  std::vector<std::string> lines;
  const auto add = [&](const Block& block, const char* indent) {
    if (block.InheritedFrom().view().starts_with("System.")) return;
    lines.push_back(indent + block.Name() + ": " + Marks(block));
  };
  for (const Block& block : component.Blocks) {
    if (block.BlockType() == btDeclarations) continue;
    add(block, "");
    if (const Blocks* overloads = block.OverloadBlocks().IfAny())
      for (const Block& overload : *overloads) add(overload, "  ");
  }
  return lines;
}

TEST(LoadFromAssembly, TypesAreModules) {
  const auto project = LoadData("Shop.dll");
  std::vector<std::string> lines;
  for (const Component& c : project->Components.Listed()) {
    std::string line = c.Name + " " + c.Access.str() + (c.FileType == ftModule ? " module" : "");
    if (c.IsEnumeration) line += " enumeration";
    if (c.IsStructure) line += " structure";
    if (c.IsInterface) line += " interface";
    if (c.IsAbstract) line += " abstract";
    if (c.IsSealed) line += " sealed";
    if (c.IsNested) line += " nested";
    for (const Interface& item : c.Interfaces) line += " +" + item.Name;
    lines.push_back(line);
  }
  EXPECT_THAT(lines, ElementsAre("Shop.Days PUBLIC enumeration",
                                 "Shop.Price PUBLIC structure +System.IComparable",
                                 "__Delegates PRIVATE", "Shop.Goods`1 PUBLIC +Shop.Base.IStock{`0}",
                                 "Shop.Goods`1.Node`1 PUBLIC nested", "Shop.Names PUBLIC sealed",
                                 "Shop.Helpers PUBLIC abstract sealed", "Shop.Tools PUBLIC module"))
      << testing::PrintToString(lines);
  EXPECT_EQ(project->ProjectName, "Shop");
  EXPECT_EQ(project->LanguageVersion(), lvVisualBasicDotNet);
  EXPECT_TRUE(project->Silent());
  EXPECT_FALSE(Module(*LoadData("Shop.dll", true), "Shop.Goods`1.Node`1").IsNested);
  const Component& names = Module(*project, "Shop.Names");
  EXPECT_EQ(names.InheritsFrom, "Shop.Goods`1");
  EXPECT_EQ(names.ClassHierarchy, "Shop.Names,Shop.Goods`1,Shop.Base.Store`1,System.Object");
  EXPECT_EQ(project->NetTypeLocations.count("Shop.Base.Store`1"), 1u);
  EXPECT_EQ(Module(*project, "Shop.Goods`1").DefaultMemberName, "Item");
}

TEST(LoadFromAssembly, MembersJoinTheirFamilies) {
  const auto project = LoadData("Shop.dll");
  EXPECT_THAT(Procedures(Module(*project, "Shop.Goods`1")),
              ElementsAre("_ctor: 1 PUBLIC constructor", "  _ctor(): 1 PUBLIC constructor",
                          "  _ctor(String): 1 PUBLIC constructor",
                          "Shop#Base#IStock{T}#Take: 2 PRIVATE sealed of Shop.Base.IStock{`0}",
                          "Find: 2 PUBLIC virtual",
                          "  Find(String): 2 PUBLIC virtual from Shop.Base.Store`1",
                          "  Find(String,Boolean): 2 PUBLIC",
                          "  Find(Int32): 2 PUBLIC virtual inherited from Shop.Base.Store`1",
                          "Add: 1 PUBLIC virtual from Shop.Base.Store`1", "Convert``1: 2 PUBLIC",
                          "Raw: 2 PUBLIC static", "Order: 1 PUBLIC", "Look: 1 PUBLIC",
                          "Shop#Base#IStock{T}#Count: 3 PRIVATE sealed of Shop.Base.IStock{`0}",
                          "Item: 3 PUBLIC", "Size: 5 PUBLIC shadow",
                          "Close: 1 PROTECTED FRIEND virtual inherited from Shop.Base.Store`1",
                          "Dispose: 1 PUBLIC inherited from Shop.Base.Store`1"))
      << testing::PrintToString(Procedures(Module(*project, "Shop.Goods`1")));
  // Arguments of the base stand in the members that come from it.
  const Component& names = Module(*project, "Shop.Names");
  const Block* add = names.Blocks.Item("Add");
  ASSERT_NE(add, nullptr);
  EXPECT_EQ(add->DotNetSignature(), "System.String,System.String[]");
  const auto base = LoadData("ShopBase.dll");
  EXPECT_TRUE(
      Module(*base, "Shop.Base.Store`1").Blocks.Item("Add")->Parameters->Item(2)->IsParamArray);
}

TEST(LoadFromAssembly, InheritedMembersHaveNumbersAsIfMadeAtOnce) {
  const auto numbers = [](bool backwards) {
    const auto project = LoadData("Shop.dll");
    std::vector<const Component*> order;
    for (const Component& component : project->Components.Listed()) order.push_back(&component);
    if (backwards)
      for (auto component = order.rbegin(); component != order.rend(); ++component)
        (*component)->Blocks.Count();
    std::vector<std::pair<std::string, std::int32_t>> found;
    for (const Component* component : order)
      for (const Block& block : component->Blocks)
        found.emplace_back(component->Name + "." + block.Name(),
                           block.BlockID - order[0]->Blocks.Item(1)->BlockID);
    return found;
  };
  const auto forwards = numbers(false);
  EXPECT_EQ(forwards, numbers(true));
  std::set<std::int32_t> different;
  for (const auto& [name, number] : forwards) different.insert(number);
  EXPECT_EQ(different.size(), forwards.size());
}

TEST(LoadFromAssembly, FieldsEventsAndParametersCarryWhatTheyHave) {
  const auto project = LoadData("Shop.dll");
  const auto field = [&](const char* name) -> const Variable& {
    const auto* found = static_cast<const Variable*>(project->GetObjectFromDotNetName(name));
    EXPECT_NE(found, nullptr) << name;
    static const Variable none;
    return found ? *found : none;
  };
  EXPECT_EQ(field("F:Shop.Days.Both").Value, "3");
  EXPECT_EQ(field("F:Shop.Price.Highest").Value, "-12.50");
  EXPECT_EQ(field("F:Shop.Price.Unit").Value, "\"say \"\"x\"\"\"");
  EXPECT_EQ(field("F:Shop.Goods`1.mCount").InheritedFrom, "Shop.Base.Store`1");
  EXPECT_FALSE(field("F:Shop.Goods`1.mCount").Implemented);
  const Component& goods = Module(*project, "Shop.Goods`1");
  std::vector<std::string> events;
  for (const EventDeclaration& event : goods.EventDeclarations)
    events.push_back(event.Name + " " + event.DelegateName.str() + " " + event.InheritedFrom.str());
  EXPECT_THAT(events, ElementsAre("Changed System.EventHandler{System.EventArgs} ",
                                  "Emptied Shop.Base.Notice Shop.Base.Store`1"));
  std::string parameters;
  for (const Parameter& parameter : *goods.EventDeclarations.Item("Emptied")->Parameters)
    parameters += parameter.Name() + " As " + parameter.VariableType.str() + ";";
  EXPECT_EQ(parameters, "sender As System.Object;text As System.String;");
  const Block& order = *goods.Blocks.Item("Order");
  EXPECT_EQ(order.Parameters->Item(3)->DefaultValue, "1.5");
  EXPECT_TRUE(order.Parameters->Item(3)->IsOptional);
  EXPECT_EQ(goods.Blocks.Item("Item")->PropertyType, ptReadWrite);
  EXPECT_EQ(goods.Blocks.Item("Look")->TaggedComments->Item("##OBSOLETE")->Text, "use Find");
  EXPECT_THAT(Module(*project, "Shop.Helpers").Blocks.Item("Twice")->Attributes(),
              ElementsAre("Extension"));
}

TEST(LoadFromAssembly, DelegatesAreBlocksOfOneModule) {
  const auto project = LoadData("Shop.dll");
  EXPECT_EQ(project->Components.Item("Shop.Call`2"), nullptr);
  const auto* block = static_cast<Block*>(project->GetObjectFromDotNetName("T:Shop.Call`2"));
  ASSERT_NE(block, nullptr);
  EXPECT_TRUE(block->IsDelegate());
  EXPECT_EQ(block->DelegateQualifiedName(), "Shop.Call`2");
  EXPECT_EQ(block->Component->Name, "__Delegates");
  EXPECT_TRUE(block->Parameters->Item("used")->IsByRef);
  EXPECT_EQ(block->DotNetName(), "T:Shop.Call`2");
  EXPECT_EQ(project->GetObjectFromDotNetName("T:__Delegates.Shop.Call`2"), block);
  EXPECT_EQ(project->GetObjectFromDotNetName("M:Shop.Call`2.Invoke(`0,System.Int32@)"), block);
  EXPECT_EQ(project->GetObjectFromDotNetName("M:Shop.Call`2.Other"), nullptr);
  const auto classic = LoadData("Shop.dll", true);
  EXPECT_EQ(classic->Components.Item("__Delegates")->Blocks.Item(1)->DotNetName(),
            "T:__Delegates.Shop.Call`2");
  EXPECT_NE(classic->GetObjectFromDotNetName("T:Shop.Call`2"), nullptr);
}

TEST(LoadFromAssembly, EveryDocumentedNameIsFoundAndComesBack) {
  const auto names = DocumentedNames(DocumentationBeside(test::DataPath("Shop.dll")));
  EXPECT_GT(names.size(), 25u);
  const auto check = CheckDocumentation(*LoadData("Shop.dll", false, true), names);
  EXPECT_THAT(check.Missing, ElementsAre());
  EXPECT_THAT(check.Different, ElementsAre());
}

TEST(LoadFromAssembly, NamesWrittenByHandAreFoundByWhatIsRightInThem) {
  const auto check = CheckDocumentation(
      *LoadData("Shop.dll", false, true),
      {"M:Shop.Goods`1.Shop#Base#IStock{Item}#Take(`0,System.Int32@)",
       "M:Shop.Goods`1.Shop#Base#IStock{Item}#Take", "M:Shop.Goods`1.Shop#Base#IStock{Item}#Give",
       "M:Shop.Goods`1.Look(System.Int32)", "M:Shop.Goods`1.Find(System.Int64)"});
  const std::string take = " -> M:Shop.Goods`1.Shop#Base#IStock{T}#Take(`0,System.Int32@)";
  EXPECT_THAT(check.Loose,
              ElementsAre("M:Shop.Goods`1.Shop#Base#IStock{Item}#Take(`0,System.Int32@)" + take,
                          "M:Shop.Goods`1.Shop#Base#IStock{Item}#Take" + take,
                          "M:Shop.Goods`1.Look(System.Int32) -> M:Shop.Goods`1.Look"));
  EXPECT_THAT(check.Missing, ElementsAre("M:Shop.Goods`1.Shop#Base#IStock{Item}#Give",
                                         "M:Shop.Goods`1.Find(System.Int64)"));
}

TEST(LoadFromAssembly, NamesLeadToElementsInBothReadings) {
  struct Row {
    const char* Name;
    const char* Classic;  // the name that comes back, "" where nothing is found
    const char* Complete;
  };
  const Row rows[] = {
      {"M:Shop.Goods`1.#ctor", "M:Shop.Goods`1._ctor", "M:Shop.Goods`1.#ctor"},
      {"M:Shop.Goods`1.#ctor(System.String)", "M:Shop.Goods`1._ctor(System.String)",
       "M:Shop.Goods`1.#ctor(System.String)"},
      {"M:Shop.Goods`1._ctor(String)", "M:Shop.Goods`1._ctor(System.String)",
       "M:Shop.Goods`1.#ctor(System.String)"},
      {"M:Shop.Goods`1.Find(System.String,System.Boolean)",
       "M:Shop.Goods`1.Find(System.String,System.Boolean)",
       "M:Shop.Goods`1.Find(System.String,System.Boolean)"},
      {"M:Shop.Goods`1.Raw(System.Int32*,System.Byte**,System.Void*)", "M:Shop.Goods`1.Raw",
       "M:Shop.Goods`1.Raw(System.Int32*,System.Byte**,System.Void*)"},
      {"M:Shop.Goods`1.Look", "M:Shop.Goods`1.Look", "M:Shop.Goods`1.Look"},
      {"P:Shop.Goods`1.Item(System.Int32,System.String)", "P:Shop.Goods`1.Item",
       "P:Shop.Goods`1.Item(System.Int32,System.String)"},
      {"E:shop.goods`1.CHANGED", "E:Shop.Goods`1.Changed", "E:Shop.Goods`1.Changed"},
      {"M:Shop.Goods`1.None", "", ""},
      {"M:Shop.None.Find", "", ""},
      {"N:Shop", "", ""},
      {"!:Shop.Goods", "", ""},
      {"", "", ""},
      {"M:", "", ""},
  };
  const auto name = [](const VBProject& project, const char* sought) -> std::string {
    const CodeElement* found = project.GetObjectFromDotNetName(sought);
    if (!found) return {};
    if (const auto* block = As<Block>(found)) return block->DotNetName();
    return static_cast<const EventDeclaration*>(found)->DotNetName();
  };
  const auto classic = LoadData("Shop.dll", true), complete = LoadData("Shop.dll");
  for (const Row& row : rows) {
    EXPECT_EQ(name(*classic, row.Name), row.Classic) << row.Name;
    EXPECT_EQ(name(*complete, row.Name), row.Complete) << row.Name;
  }
}

TEST(LoadFromAssembly, NamesAreCutAtTheirLastDot) {
  std::string component, member;
  VBProject::SplitDotNetName("Ns.Cls.Run(System.Int32,System.String)", component, member);
  EXPECT_EQ(component + "|" + member, "Ns.Cls|Run(System.Int32,System.String)");
  VBProject::SplitDotNetName("Run", component, member);
  EXPECT_EQ(component + "|" + member, "|Run");
}

TEST(LoadFromAssembly, FactoriesTakeWhatTheyAreGiven) {
  VBProject project;
  const auto component = project.netCreateComponent(lsFullyLoaded, "A.B", "PUBLIC", ftClass,
                                                    "A.B,System.Object", true, false, "X");
  EXPECT_EQ(project.Components.Item("a.b"), component.get());
  EXPECT_NE(project.TypeCache.Find("A.B"), nullptr);
  Block* block = component->netCreateBlock(btSub, "Invoke", "PUBLIC", "", true, "", false, false,
                                           false, false);
  EXPECT_EQ(project.netCreateDelegate(block, "A.D", "A.D, Lib"), block);
  EXPECT_EQ(project.Components.Item("A.B"), nullptr);
  EXPECT_EQ(project.Components.Item("__Delegates")->Blocks.Count(), 1u);
  project.AddTypeLocation("one.dll", "A.T");
  project.AddTypeLocation("two.dll", "A.T");
  EXPECT_EQ(project.NetTypeLocations.at("A.T"), "one.dll");
}

TEST(LoadFromAssembly, FailuresSayWhatIsWrong) {
  const test::MemoryFiles files{{"/p/a.dll", "no program"}, {"/p/A.VBPROJ", "<x/>"}};
  for (const char* path : {"/p/a.dll", "/p/A.VBPROJ"}) {
    VBProject project;
    EXPECT_EQ(test::Raised([&] { project.LoadFromAssembly(path); }), errInvalidFileFormat) << path;
  }
  VBProject project;
  EXPECT_EQ(test::Raised([&] { project.LoadFromAssembly("/p/none.dll"); }), errFileNotFound);
  EXPECT_EQ(test::Raised([&] { project.LoadFromCustom("No.Such", ""); }), errCannotCreate);
}

}  // namespace
}  // namespace vendrel
