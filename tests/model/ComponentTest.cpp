#include "model/Component.h"

#include <gtest/gtest.h>

#include "model/Building.h"
#include "model/Namespace.h"
#include "support/Projects.h"
#include "support/Raised.h"

namespace vendrel {
namespace {

using test::Raised;

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

TEST(Component, KindDecidesExtensionEventPrefixAndFirstAndLastProcedure) {
  const struct {
    FileTypeEnum Kind;
    bool IsMdi;
    const char *Extension, *Header, *Init, *Term;
  } cases[] = {
      {ftClass, false, "cls", "Class_", "Class_Initialize", "Class_Terminate"},
      {ftModule, false, "bas", "", "", ""},
      {ftForm, false, "frm", "Form_", "Form_Load", "Form_Unload"},
      {ftForm, true, "frm", "Form_", "MDIForm_Load", "MDIForm_Unload"},
      {ftUserControl, false, "ctl", "UserControl_", "Usercontrol_Initialize",
       "Usercontrol_Terminate"},
      {ftUserDocument, false, "dob", "UserDocument_", "Userdocument_Initialize",
       "Userdocument_Terminate"},
      {ftDesigner, false, "dsr", "", "", ""},
      {ftPropertyPage, false, "", "PropertyPage_", "", ""},
      {ftOther, false, "wct", "", "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Kind);
    Component component;
    component.FileName.SetFullPath("Z:\\src\\page.wct");
    component.FileType = c.Kind;
    component.SetIsMDI(c.IsMdi);
    EXPECT_EQ(component.Extension(), c.Extension);
    EXPECT_EQ(component.EventProcedureHeader(), c.Header);
    EXPECT_EQ(component.InitBlock(), nullptr);
    const Block* init = component.InitBlock(true);
    const Block* term = component.TermBlock(true);
    EXPECT_EQ(init ? init->Name() : "", c.Init);
    EXPECT_EQ(term ? term->Name() : "", c.Term);
    EXPECT_EQ(component.InitBlock(), init) << "made once";
    EXPECT_EQ(component.TermBlock(), term) << "made once";
  }
}

TEST(Component, SkeletonsHaveTheirTypeAndLines) {
  Component form;
  form.FileType = ftForm;
  EXPECT_EQ(form.InitBlock(true)->BlockType(), btFormLoad);
  EXPECT_EQ(test::ShowLines(*form.InitBlock()),
            "Private Sub Form_Load() | FORM_LOAD [Private Sub Form_Load()]\n"
            "End Sub | END_SUB [End Sub]\n");
  EXPECT_EQ(form.TermBlock(true)->BlockType(), btFormUnload);
  EXPECT_EQ(form.BlockOfType(btSub, true), nullptr) << "has no skeleton";
  EXPECT_EQ(form.BlockOfType(btDeclarations, true)->BlockType(), btDeclarations);
  form.SetIsMDI(true);
  EXPECT_EQ(form.TermBlock(true)->CodeLines->Count(), 3);
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
  Block block;
  Component component;
  Variable variable;
  EventDeclaration event;
  Enumeration enumeration;
  EnumMember member;
  UDT udt;
  Interface implemented;
  for (CodeElement* element : std::initializer_list<CodeElement*>{
           &block, &component, &variable, &event, &enumeration, &member, &udt, &implemented}) {
    EXPECT_EQ(Raised([&] { element->SetDescription("text"); }), errReadOnlyProperty)
        << element->ClassName();
  }
  DeclareDeclaration declaration;
  declaration.SetDescription("text");
  EXPECT_EQ(declaration.Description(), "");
  Parameter parameter;
  parameter.SetDescription("text");
  EXPECT_EQ(parameter.mDescription, "text");
}

TEST(CodeElement, IsCastToItsOwnClassAlone) {
  Block block;
  CodeElement* element = &block;
  EXPECT_EQ(As<Block>(element), &block);
  EXPECT_EQ(As<Component>(element), nullptr);
  EXPECT_EQ(As<Block>(static_cast<CodeElement*>(nullptr)), nullptr);
  EXPECT_TRUE((IsA<UDT, Block>(element)));
  EXPECT_FALSE((IsA<UDT, Variable>(element)));
  EXPECT_EQ(As<VBProject>(&ProjectOptions::Defaults()), nullptr) << "stands in for one";
}

TEST(Enumeration, RefusesToLoseItsMembers) {
  Enumeration enumeration;
  std::string text;
  EXPECT_EQ(Raised([&] { enumeration.SetMembers(nullptr); }, &text), errObjectNotSet);
  EXPECT_NE(text.find("Enumeration.Members - attempt to set to Nothing"), std::string::npos);
}

// What few elements have is made when it is set, and what many have alike is shared until it is
// changed.
TEST(RareMembers, AreMadeByWhatSaysSomething) {
  Variable variable;
  variable.TaggedDescription = "";
  variable.IsVirtual = false;
  variable.HelpContextID = 0;
  EXPECT_FALSE(variable.IsShadow);
  EXPECT_TRUE(variable.InheritedFrom.empty());
  EXPECT_EQ(variable.TaggedComments.IfAny(), nullptr);
  EXPECT_EQ(std::as_const(variable).TaggedDescriptionField()->view(), "");
  EXPECT_EQ(variable.mParts.IfMade(), nullptr);
  variable.Value = "5";
  EXPECT_NE(variable.mParts.IfMade(), nullptr);
  EXPECT_EQ(variable.Value, "5");
  variable.TaggedDescriptionField()->Edit() = "of it";
  EXPECT_EQ(variable.TaggedDescription, "of it");
  EXPECT_FALSE(variable.IsVirtual);
}

TEST(SharedLinks, AreSharedUntilOneOfThemChanges) {
  Component module, other;
  Block procedure;
  Variable first, second;
  first.Component = &module;
  first.Procedure = &procedure;
  second.StandBeside(first);
  EXPECT_EQ(second.Component.Get(), &module);
  second.Component = &other;
  EXPECT_EQ(first.Component.Get(), &module);
  EXPECT_EQ(second.Component.Get(), &other);
  EXPECT_EQ(second.Procedure.Get(), &procedure);
  EXPECT_EQ(second.Parent.Get(), nullptr);
  {
    Component gone;
    first.Component = &gone;
  }
  EXPECT_EQ(first.Component.Get(), nullptr);
}

}  // namespace
}  // namespace vendrel
