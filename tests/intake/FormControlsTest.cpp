// The description of controls at the head of a form-like module.

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

#include "services/CodePage.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

std::string Tree(const VBControl& control, const std::string& indent = "") {
  std::string text = indent + control.ProgID + " " + control.Name + " (" +
                     std::to_string(control.x) + "," + std::to_string(control.y) + ")";
  if (!control.Caption.empty()) text += " '" + control.Caption + "'";
  if (!control.Text.empty()) text += " text=" + control.Text;
  if (!control.Property("Index").empty()) text += " index=" + control.Property("Index");
  text += "\n";
  for (const VBControl& child : control.VBControls) text += Tree(child, indent + " ");
  return text;
}

// A form of that description, with a procedure; `companion` are the bytes of its "F.frx".
struct Form : test::TestProject {
  Form(const std::string& description, const test::Prepare& prepare = {},
       const std::string& companion = {})
      : TestProject({{"F.frm", "VERSION 5.00\n" + description +
                                   "Attribute VB_Name = \"F\"\nAttribute VB_Exposed = False\n"
                                   "Private Sub cmd_Click(Index As Integer)\nEnd Sub\n"}},
                    prepare) {
    Files.Add("/p/F.frx", companion);
    Module = &TestProject::Module("F");
  }
  Component* Module;
};

const char kDescription[] =
    "Begin VB.MDIForm F\n"
    "   Caption         =   \"It's \"\"F\"\"\" 'note\n"
    "   ClientLeft      =   60\n"
    "   BeginProperty Font {0BE35203-8F91-11CE-9DE3-00AA004BB851} \n"
    "      Left            =   99\n"
    "   EndProperty\n"
    "   Begin VB.Frame fra\n"
    "      Left            =   1.20e2 'x\n"
    "      Top             =   240\n"
    "      Begin VB.CommandButton cmd\n"
    "         Caption         =   \"One\"\n"
    "         Index           =   0\n"
    "      End\n"
    "      Begin VB.CommandButton cmd\n"
    "         Index           =   2\n"
    "      End\n"
    "   End\n"
    "   Begin VB.TextBox txt\n"
    "      Text            =   \"a = b\"\n"
    "   End\n"
    "End\n";

TEST(FormControlsTest, TheTreeOfControlsIsReadAndStaysPartOfTheSource) {
  Form form(kDescription);
  Component& module = *form.Module;
  ASSERT_TRUE(module.VBControl);
  EXPECT_TRUE(module.IsMDI());
  EXPECT_EQ(Tree(*module.VBControl),
            "VB.MDIForm F (0,0) 'It's \"\"F\"\"'\n"
            " VB.Frame fra (120,240)\n"
            "  VB.CommandButton cmd(0) (0,0) 'One' index=0:0\n"
            "  VB.CommandButton cmd(0) (0,0) index=0:2\n"
            " VB.TextBox txt (0,0) text=a = b\n");
  EXPECT_EQ(test::Names(module.AllVBControls), "cmd(0) cmd(0) fra txt ");
  EXPECT_EQ(module.AllVBControls.Item("CMD")->Caption, "One");
  EXPECT_EQ(module.VBControl->FindControl("TXT"), module.AllVBControls.Item("txt"));
  EXPECT_EQ(module.AllVBControls.Item("cmd")->Parent.Get(), module.AllVBControls.Item("fra"));
  EXPECT_EQ(module.AllVBControls.Item("txt")->SourceLine(), 19);
  // All lines of the description, those of properties too.
  EXPECT_EQ(module.Blocks.Item(1)->CodeLines->Count(), 24);
  EXPECT_EQ(module.Blocks.Item(1)->CodeLines->LineText(6), "      Left            =   99");
  EXPECT_EQ(module.Blocks.Item("cmd_Click")->EventSource.Get(), module.AllVBControls.Item("cmd"));
  EXPECT_EQ(module.LinesAlreadyRead, 26);
  EXPECT_EQ(test::Told(form.Project->Diagnostics), "");
}

TEST(FormControlsTest, MembersOfAControlArrayHaveTheirIndexInTheCompleteReading) {
  Form form(kDescription, test::Reading("ControlIndexes"));
  EXPECT_EQ(test::Names(form.Module->AllVBControls), "cmd(0) cmd(2) fra txt ");
  EXPECT_EQ(form.Module->AllVBControls.Item("cmd")->Name, "cmd(0)");
}

TEST(FormControlsTest, CaptionsMayStandInTheCompanionFile) {
  struct Case {
    const char* Value;
    const char* Classic;
    const char* Quoted;
  };
  const std::string companion = std::string("\1\2\3\0\0", 5) + "Hello" + "\xEB" + "behind";
  for (const Case& c : std::vector<Case>{{"\"Name: \"", "", "Name: "},
                                         {"\"plain\"", "plain", "plain"},
                                         {"$\"F.frx\":0003", "Hello", "Hello"},
                                         {"\"F.frx\":0000", "Hello", "Hello"},
                                         {"\"F.frx\":0006", "", ""},
                                         {"\"F.frx\":FFFF", "", ""},
                                         {"\"gone.frx\":0000", "", ""}}) {
    const std::string description =
        "Begin VB.Form F\n   Caption = " + std::string(c.Value) + "\n   Left = 1\nEnd\n";
    Form classic(description, {}, companion);
    EXPECT_EQ(classic.Module->VBControl->Caption, c.Classic) << c.Value;
    EXPECT_EQ(classic.Module->VBControl->x, 1);
    Form quoted(description, test::Reading("QuotedCompanions"), companion);
    EXPECT_EQ(quoted.Module->VBControl->Caption, c.Quoted) << c.Value;
    EXPECT_EQ(quoted.Module->LoadState, lsFullyLoaded);
  }
}

// The records of a companion file, by the values that name them.
struct Companion {
  std::string Bytes;
  std::string Add(const std::string& record, const char* sign = "") {
    char place[40];
    std::snprintf(place, sizeof place, "%s\"F.frx\":%04zX", sign, Bytes.size());
    Bytes += record;
    return place;
  }
};

std::string Record(std::initializer_list<int> bytes, const std::string& text = {}) {
  std::string record;
  for (const int byte : bytes) record += static_cast<char>(byte);
  return record + text;
}

TEST(FormControlsTest, ATextOfTheCompanionFileHasTheLengthThatItsRecordStates) {
  Companion file;
  const std::string longText(300, 'x');
  const std::vector<std::tuple<std::string, std::string, std::string>> cases{
      {"Caption", file.Add(Record({4, 0, 0, 0}, "caf\xEB"), "$"), "cafë"},
      {"Text", file.Add(Record({3}, "a\r\n")), "a\r\n"},
      {"Text", file.Add(Record({255, 44, 1}, longText)), longText},
      {"Text", file.Add(Record({44, 1, 0, 0}, longText), "$"), longText},
      {"Caption", file.Add(Record({1}, "Z")), "Z"},
      {"Text", file.Add(Record({0})), ""},
      {"Text", file.Add(Record({2, 'a', 0})), ""},  // a NUL: no text
      {"Caption", file.Add(Record({9, 0, 0, 0}, "cut off"), "$"), ""}};
  const auto textOf = [&](const std::string& name, const std::string& value, const char* progID) {
    Form form("Begin " + std::string(progID) + " F\n  " + name + " = " + value + "\nEnd\n",
              test::Reading("CompanionTexts QuotedCompanions"), file.Bytes);
    const VBControl& control = *form.Module->VBControl;
    return name == "Text" ? control.Text : control.Caption;
  };
  for (const auto& [name, value, text] : cases)
    EXPECT_EQ(textOf(name, value, "VB.Box"), text) << name << value;
  // Other controls write what they like without a sign.
  EXPECT_EQ(textOf("Text", std::get<1>(cases[1]), "Lib.Box"), "");
  EXPECT_EQ(textOf("Text", std::get<1>(cases[3]), "Lib.Box"), longText);
  FileOptions::Current().CodePage = "1251";
  EXPECT_EQ(textOf("Caption", std::get<1>(cases[0]), "VB.Box"), "cafл");
  FileOptions::Current().CodePage.clear();
}

// One line a property: what it is, where.
std::string Listed(const std::vector<ControlProperty>& properties) {
  std::string text;
  for (const ControlProperty& p : properties) {
    text += std::string(static_cast<std::size_t>(p.Depth), ' ') + p.Name + " " +
            std::string(ControlValueName(p.Kind)) + " " + p.Value;
    for (const std::string& item : p.Items) text += "|" + item;
    text += " @" + std::to_string(p.SourceLine) + "\n";
  }
  return text;
}

TEST(FormControlsTest, AllPropertiesOfAControlCanBeAskedFor) {
  Companion file;
  file.Add("..");
  const std::string list = file.Add(Record({2, 0, 5, 0, 3, 0, 'O', 'n', 'e', 5, 0}, "caf\xEB\xEB"));
  const std::string none = file.Add(Record({0, 0}));
  const std::string broken = file.Add(Record({2, 0, 3, 0, 9, 0}, "too long"));
  const std::string text = file.Add(Record({4, 0, 0, 0}, "Text"), "$");
  const std::string description =
      "Begin VB.Form F\n"
      "   Caption         =   \"It's \"\"F\"\"\" 'note\n"
      "   BeginProperty Panels {8E3867A5} \n"
      "      BeginProperty Panel1\n"
      "         Key         =   \"a = b\"\n"
      "      EndProperty\n"
      "      NumPanels       =   1\n"
      "   EndProperty\n"
      "   Enabled         =   0   'False\n"
      "   Begin VB.ListBox lst\n"
      "      List = " +
      list +
      "\n"
      "      ItemData = " +
      none +
      "\n"
      "      List = " +
      broken +
      "\n"
      "      Icon = " +
      list +
      "\n"
      "      Begin VB.Label lbl\n"
      "         ToolTipText = " +
      text +
      "\n"
      "      End\n"
      "      Shortcut = ^{F3}\n"
      "   End\n"
      "   BackColor       =   &H8000000F&\n"
      "End\n";
  const auto load = [&](const char* flags) {
    return Form(description, test::Reading(flags), file.Bytes);
  };
  Form form = load("ControlProperties CompanionTexts");
  VBControl& root = *form.Module->VBControl;
  const std::string own =
      "Caption text It's \"F\" @3\nPanels group {8E3867A5} @4\n Panel1 group  @5\n"
      "  Key text a = b @6\n NumPanels plain 1 @8\nEnabled plain 0 @10\n"
      "BackColor plain &H8000000F& @21\n";
  EXPECT_EQ(Listed(root.ControlProperties()), own);
  const VBControl& lst = *root.FindControl("lst");
  EXPECT_EQ(Listed(lst.ControlProperties()),
            "List list " + list + "|One|cafëë @12\nItemData list " + none + " @13\n" +
                "List companion " + broken + " @14\nIcon companion " + list + " @15\n" +
                "Shortcut plain ^{F3} @19\n");
  EXPECT_EQ(Listed(root.FindControl("lbl")->ControlProperties()), "ToolTipText text Text @17\n");
  // A control taken out of the tree is no part of the one it stood in.
  root.VBControls.Remove(1);
  EXPECT_EQ(Listed(root.ControlProperties()), own);
  form.Module->UnloadSourceCode();
  EXPECT_EQ(Listed(root.ControlProperties()), "");

  Form plain = load("ControlProperties");
  EXPECT_EQ(Listed(plain.Module->VBControl->FindControl("lbl")->ControlProperties()),
            "ToolTipText companion " + text + " @17\n");
  EXPECT_EQ(Listed(load("").Module->VBControl->ControlProperties()), "");
}

TEST(FormControlsTest, TheLongestKnownNameIsTheSourceOfAProcedure) {
  const std::string form =
      "VERSION 5.00\nBegin VB.Form F\n  Begin VB.Menu mnu\n    Begin VB.Menu mnu_Open\n"
      "      Index = 1\n    End\n  End\nEnd\nAttribute VB_Name = \"F\"\n"
      "Implements I_Foo\nImplements I\nImplements mnu_Open_File\n"
      "Dim WithEvents m As T\nDim WithEvents m_Timer As T\nDim m_Timer_Plain As T\n";
  struct Case {
    const char* Procedure;
    const char* Classic;
    const char* Complete;
  };
  for (const Case& c : std::vector<Case>{{"mnu_Click", "mnu", "mnu"},
                                         {"MNU_open_Click", "mnu", "mnu_Open(1)"},
                                         {"mnu_Open_File_Bar", "mnu", "I:mnu_Open_File"},
                                         {"m_Timer_Tick", "m", "m_Timer"},
                                         {"m_Timer_Plain_Tick", "m", "m_Timer"},
                                         {"m_Other_Tick", "m", "m"},
                                         {"I_Foo_Bar", "I:I", "I:I_Foo"},
                                         {"i_Bar", "I:i", "I:i"},
                                         {"Form_Key_Down", "F", "F"},
                                         {"UserControl_Init_It", "", ""},
                                         {"No_Such_Source_", "", ""}}) {
    const auto sourceOf = [&](const char* flags) -> std::string {
      test::TestProject project(
          {{"F.frm", form + "Sub " + c.Procedure + "()\nEnd Sub\n"}},
          test::Reading(std::string("ControlIndexes EarlyDeclarations ") + flags));
      const Block& block = *project.Module("F").Blocks.Item(c.Procedure);
      if (!block.Interface.empty()) return "I:" + std::string(block.Interface.view());
      const CodeElement* source = block.EventSource.Get();
      EXPECT_EQ(block.IsEventProcedure, source != nullptr);
      return source ? source->ElementName() : "";
    };
    EXPECT_EQ(sourceOf(""), c.Classic) << c.Procedure;
    EXPECT_EQ(sourceOf("UnderscoredSources"), c.Complete) << c.Procedure;
  }
}

TEST(FormControlsTest, ADescriptionWithoutEndIsReadToTheEndOfTheFile) {
  Form form("Begin VB.Form F\n  Begin VB.Label lbl\n    Left = 5\n");
  ASSERT_TRUE(form.Module->VBControl);
  EXPECT_EQ(Tree(*form.Module->VBControl), "VB.Form F (0,0)\n VB.Label lbl (5,0)\n");
  EXPECT_EQ(form.Module->LoadState, lsFullyLoaded);
  EXPECT_EQ(form.Project->Diagnostics.CountOf(DiagnosticCode::ControlTreeOpen), 1u);
}

TEST(FormControlsTest, DeepNestingNeedsNoRecursion) {
  std::string description = "Begin VB.Form F\n";
  for (int i = 0; i < 50000; ++i) description += "Begin VB.Frame f\n";
  for (int i = 0; i < 50001; ++i) description += "End\n";
  Form form(description);
  EXPECT_EQ(form.Module->AllVBControls.Count(), 50000u);
  EXPECT_EQ(form.Module->Blocks.Count(), 2u);
  // Each control costs its own lines: those of the controls in it are stepped over.
  form.Project->Reading.ControlProperties = true;
  for (const VBControl& control : form.Module->AllVBControls)
    EXPECT_EQ(control.ControlProperties().size(), 0u);
}

}  // namespace
}  // namespace vendrel
