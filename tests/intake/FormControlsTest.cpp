// The description of controls at the head of a form-like module.

#include <gtest/gtest.h>

#include <functional>

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
}

}  // namespace
}  // namespace vendrel
