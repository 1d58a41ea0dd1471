#include "model/Component.h"

#include <gtest/gtest.h>

#include "core/ProcessState.h"
#include "model/Building.h"

namespace vendrel {
namespace {

TEST(Component, DefaultTypeIsThatOfTheLastStatementWithTheLetter) {
  Component component;
  EXPECT_EQ(component.DefaultType("x"), "Variant");
  EXPECT_EQ(component.DefaultType(""), "");
  component.DefaultTypes() = {{"Int", {"A:C", "X:X"}}, {"Byte", {"b:b"}}, {"", {}}};
  const struct {
    const char *Name, *Type;
  } cases[] = {{"apple", "Integer"}, {"Box", "Byte"},   {"cat", "Integer"},  {"dog", "Variant"},
               {"x1", "Integer"},    {"_a", "Variant"}, {"ärger", "Variant"}};
  for (const auto& c : cases) EXPECT_EQ(component.DefaultType(c.Name), c.Type) << c.Name;
  component.DefaultTypes().push_back({"str", {"A : C", "AB:Z", "a:Z"}});
  for (const auto& c : cases) EXPECT_EQ(component.DefaultType(c.Name), "String") << c.Name;
}

TEST(Component, KindDecidesExtensionAndEventPrefix) {
  const struct {
    FileTypeEnum Kind;
    const char *Extension, *Header;
  } cases[] = {{ftClass, "cls", "Class_"},
               {ftModule, "bas", ""},
               {ftForm, "frm", "Form_"},
               {ftUserControl, "ctl", "UserControl_"},
               {ftUserDocument, "dob", "UserDocument_"},
               {ftDesigner, "dsr", ""},
               {ftPropertyPage, "", "PropertyPage_"},
               {ftOther, "wct", ""}};
  for (const auto& c : cases) {
    Component component;
    component.FileName.SetFullPath("Z:\\src\\page.wct");
    component.FileType = c.Kind;
    EXPECT_EQ(component.Extension(), c.Extension);
    EXPECT_EQ(component.EventProcedureHeader(), c.Header);
  }
}

TEST(Component, SkeletonsAreMadeOnceForTheKindsThatHaveThem) {
  Component form;
  form.FileType = ftForm;
  EXPECT_EQ(form.InitBlock(), nullptr);
  Block* load = form.InitBlock(true);
  ASSERT_NE(load, nullptr);
  EXPECT_EQ(load->BlockType(), btFormLoad);
  EXPECT_EQ(load->CodeLines->LineText(1), "Private Sub Form_Load()");
  EXPECT_EQ(load->CodeLines->Count(), 2);
  EXPECT_EQ(form.InitBlock(true), load);
  EXPECT_EQ(form.TermBlock(true)->BlockType(), btFormUnload);
  EXPECT_EQ(form.BlockOfType(btSub, true), nullptr);
  EXPECT_EQ(form.BlockOfType(btDeclarations, true)->BlockType(), btDeclarations);

  Component mdi;
  mdi.FileType = ftForm;
  mdi.SetIsMDI(true);
  Block* unload = mdi.TermBlock(true);
  ASSERT_NE(unload, nullptr);
  EXPECT_EQ(unload->Name(), "MDIForm_Unload");
  EXPECT_EQ(unload->CodeLines->Count(), 3);
  EXPECT_EQ(mdi.TermBlock(), unload);

  Component module;
  module.FileType = ftModule;
  EXPECT_EQ(module.InitBlock(true), nullptr);
}

TEST(Component, TheTypeCacheKeepsTheFirstEntryOfAName) {
  ComponentTypeCache cache;
  cache.Add("Colour", 3);
  cache.Add("COLOUR", 6);
  EXPECT_EQ(cache.Find("colour"), 3);
  EXPECT_EQ(cache.Find("Shape"), 0);
  EXPECT_EQ(cache.Count(), 1u);
}

TEST(Component, FactoriesBuildTheTreeOfALoader) {
  Namespace space;
  space.Name = "Ledger";
  Component component;
  component.Name = "Account";
  component.Namespace = &space;
  EventDeclaration* event = component.netCreateEvent("Closed", "Ledger.H", true, "");
  event->netCreateParameter("sender", "System.Object", "", false);
  const auto field =
      component.netCreateField("mRate", "System.Double", "PRIVATE", true, true, "", true);
  Block* block = component.netCreateBlock(btFunction, "Sum", "PUBLIC", "System.Int32", true, "",
                                          false, true, false, false);
  block->netCreateParameter("a", "System.Int32&", "", false);
  block->netCreateParameter("b", "System.Char*", "x", true);
  EXPECT_EQ(component.DotNetName(), "T:Ledger.Account");
  EXPECT_EQ(event->DotNetName(), "E:Ledger.Account.Closed");
  EXPECT_EQ(event->Parameters->Item(1)->Parent.Get(), event);
  EXPECT_EQ(field->DotNetName(), "F:Ledger.Account.mRate");
  EXPECT_EQ(component.BlockOfType(btDeclarations)->Variables->Item("mrate"), field.get());
  EXPECT_EQ(block->DotNetName(), "M:Ledger.Account.Sum");
  EXPECT_EQ(block->OverloadedMethodSignature(), "Sum(Int32,Char)");
  block->SetName(block->OverloadedMethodSignature());
  block->SetOverloaded(true);
  EXPECT_EQ(block->DotNetName(), "M:Ledger.Account.Sum(System.Int32,System.Char)");
  EXPECT_TRUE(block->Parameters->Item("a")->IsByRef);
  EXPECT_EQ(component.Blocks.ItemByDotNetSignature("system.int32,SYSTEM.char"), block);
  block->SetBlockType(btPropertyGet);
  EXPECT_EQ(block->DotNetName().substr(0, 2), "P:");
}

TEST(CodeElement, AssigningADescriptionIsRefusedIgnoredOrStoredByClass) {
  Variable variable;
  Block block;
  Enumeration enumeration;
  Component component;
  for (CodeElement* element :
       std::initializer_list<CodeElement*>{&variable, &block, &enumeration, &component}) {
    try {
      element->SetDescription("text");
      ADD_FAILURE() << element->ClassName() << " took a description";
    } catch (const VendrelError& error) {
      EXPECT_EQ(error.Number(), errReadOnlyProperty);
    }
  }
  DeclareDeclaration declaration;
  EXPECT_NO_THROW(declaration.SetDescription("text"));
  Parameter parameter;
  parameter.SetDescription("text");
  EXPECT_EQ(parameter.mDescription, "text");
  EXPECT_TRUE(TypeMatch(&block, "BLOCK"));
  EXPECT_FALSE(TypeMatch(nullptr, "Block"));
}

TEST(Enumeration, RefusesToLoseItsMembers) {
  Enumeration enumeration;
  try {
    enumeration.SetMembers(nullptr);
    FAIL();
  } catch (const VendrelError& error) {
    EXPECT_EQ(error.Number(), errObjectNotSet);
    EXPECT_NE(error.Text().find("Enumeration.Members - attempt to set to Nothing"),
              std::string::npos);
  }
}

TEST(ProjectOptions, TheLanguageOfAProjectIsInForceForTheProcess) {
  ProjectOptions options;
  options.Reading = ReadingRules::Complete();
  options.SetLanguageVersion(lvVisualBasicDotNet);
  EXPECT_EQ(State().CurrentLanguageVersion, lvVisualBasicDotNet);
  EXPECT_EQ(State().CurrentReading, ReadingRules::Complete());
}

}  // namespace
}  // namespace vendrel
