#include "bench/ModuleText.h"

#include "bench/Words.h"

namespace vendrel::bench {

void ModuleText::Fill(std::int64_t lines) {
  mText.reserve(static_cast<size_t>(lines) * 36);
  Header();
  Declarations(lines / 12);
  while (mLines < lines) {
    const int roll = mDice.Between(1, 100);
    if (mKind == ModuleKind::Class && roll <= 35) {
      PropertyPair();
    } else if (mKind == ModuleKind::Form && roll <= 60) {
      EventHandler();
    } else {
      Procedure();
    }
  }
}

void ModuleText::Line(std::string_view text) {
  mText += text;
  mText += "\r\n";
  ++mLines;
}

void ModuleText::Header() {
  if (mKind == ModuleKind::Class) {
    for (const char* line : {"VERSION 1.0 CLASS", "BEGIN", "  MultiUse = -1  'True",
                             "  Persistable = 0  'NotPersistable", "END"})
      Line(line);
  } else if (mKind == ModuleKind::Form) {
    FormControls();
  }
  Line("Attribute VB_Name = \"" + mName + "\"");
  if (mKind == ModuleKind::Standard) return;
  const bool form = mKind == ModuleKind::Form;
  Line("Attribute VB_GlobalNameSpace = False");
  Line(form ? "Attribute VB_Creatable = False" : "Attribute VB_Creatable = True");
  Line(form ? "Attribute VB_PredeclaredId = True" : "Attribute VB_PredeclaredId = False");
  Line("Attribute VB_Exposed = False");
}

void ModuleText::FormControls() {
  Line("VERSION 5.00");
  Line("Begin VB.Form " + mName + " ");
  Line("   Caption         =   \"" + Phrase(3, 3) + ": " + Phrase(1, 1) + "\"");
  Line("   ClientHeight    =   " + std::to_string(mDice.Between(3000, 9000)));
  Line("   ClientLeft      =   60");
  Line("   ClientTop       =   345");
  const int controls = mDice.Between(3, 14);
  for (int i = 1; i <= controls; ++i) {
    if (i % 4 != 0) {
      Control(3, i);
      continue;
    }
    Line("   Begin VB.Frame fra" + std::to_string(i) + " ");
    Line("      Caption         =   \"" + Phrase(2, 2) + "\"");
    Control(6, i);
    Line("   End");
  }
  Line("End");
}

void ModuleText::Control(int indent, int number) {
  const ControlKind& kind = mDice.Pick(kControls);
  const std::string margin(static_cast<size_t>(indent), ' ');
  Line(margin + "Begin VB." + kind.type + " " + kind.prefix + mDice.Pick(kNouns) +
       std::to_string(number) + " ");
  if (mDice.Chance(50)) Line(margin + "   Caption         =   \"&" + Phrase(2, 2) + "\"");
  if (mDice.Chance(20)) {
    Line(margin + "   BeginProperty Font ");
    Line(margin + "      Name            =   \"Tahoma\"");
    Line(margin + "      Size            =   8.25");
    Line(margin + "   EndProperty");
  }
  for (const char* property :
       {"Height          ", "Left            ", "TabIndex        ", "Width           "})
    Line(margin + "   " + property + "=   " + std::to_string(mDice.Between(0, 6000)));
  Line(margin + "End");
}

void ModuleText::Declarations(std::int64_t budget) {
  const std::int64_t end = mLines + budget;
  if (mDice.Chance(30)) Line("'##MODULE_SUMMARY " + Phrase(8, 8) + ".");
  Line("Option Explicit");
  Blank();
  ConstantOrField();
  while (mLines < end) {
    switch (mDice.Between(1, 16)) {
      case 1: Enumeration(); break;
      case 2: Structure(); break;
      case 3: Declare(); break;
      default: ConstantOrField();
    }
  }
  Blank();
}

void ModuleText::Enumeration() {
  const std::string name = Numbered(Name());
  Line((mDice.Chance(50) ? "Public Enum " : "Private Enum ") + name);
  for (int i = 0, members = mDice.Between(2, 12); i < members; ++i) {
    std::string member = "    en" + name + mDice.Pick(kNouns) + std::to_string(i);
    if (mDice.Chance(40)) member += " = " + std::to_string(i * 2);
    if (mDice.Chance(10)) member += "  '##SUMMARY " + Phrase(3, 5) + ".";
    Line(member);
  }
  Line("End Enum");
  Blank();
}

void ModuleText::Structure() {
  Line("Private Type T" + Numbered(Name()));
  for (int i = 0, members = mDice.Between(2, 10); i < members; ++i) {
    const std::string member = "    " + Name() + std::to_string(i);
    if (mDice.Chance(10)) {
      Line(member + "(1 To 10) As Long");
    } else {
      Line(member + " As " + mDice.Pick(kValueTypes));
    }
  }
  Line("End Type");
  Blank();
}

void ModuleText::Declare() {
  constexpr const char* libraries[] = {"kernel32", "user32", "gdi32", "advapi32"};
  const std::string name = Numbered(Callee());
  std::string line = "Private Declare Function " + name + " Lib \"" + mDice.Pick(libraries) + "\"";
  if (mDice.Chance(50)) line += " Alias \"" + name + "A\"";
  line += " (";
  if (mDice.Chance(30)) {
    Line(line + " _");
    line = "    ";
  }
  Line(line + "ByVal hWnd As Long, ByVal lp" + mDice.Pick(kNouns) +
       " As String, lParam As Any) As Long");
}

void ModuleText::ConstantOrField() {
  if (!mFields.empty() && mDice.Chance(35)) {
    Line("Private Const k" + Numbered(Name()) +
         " As Long = " + std::to_string(mDice.Between(0, 5000)));
  } else {
    mFields.push_back(Numbered("m" + Name()));
    Line("Private " + mFields.back() + " As " + mDice.Pick(kTypes));
  }
  if (mDice.Chance(12)) Line("' " + Phrase(3, 9));
  if (mDice.Chance(8)) Blank();
}

void ModuleText::CommentsAbove(std::string_view parameter) {
  if (mDice.Chance(10)) {
    Line("'##SUMMARY " + Phrase(4, 10) + ".");
    if (!parameter.empty()) Line("'##PARAM " + std::string(parameter) + " " + Phrase(3, 7) + ".");
  } else if (mDice.Chance(35)) {
    Line("' " + Phrase(4, 12) + ".");
  }
}

void ModuleText::Procedure() {
  const char* access = "Private ";
  if (mDice.Chance(40))
    access = mDice.Chance(80) || mKind == ModuleKind::Standard ? "Public " : "Friend ";
  const char* kind = mDice.Chance(45) ? "Function" : "Sub";
  mLocals = {Name()};
  CommentsAbove(mLocals[0]);
  std::string header = access + (kind + (" " + Numbered(Callee()))) + "(ByVal " + mLocals[0] +
                       " As " + mDice.Pick(kTypes);
  if (mDice.Chance(40)) header += ", " + Name() + "2 As " + mDice.Pick(kTypes);
  if (mDice.Chance(15))
    header += ", Optional ByVal " + Name() + "3 As Long = " + std::to_string(mDice.Between(0, 9));
  header += ")";
  if (kind[0] == 'F') header += std::string(" As ") + mDice.Pick(kValueTypes);
  Line(header);
  Body(mDice.Between(3, 58), kind);
}

void ModuleText::PropertyPair() {
  const std::string name = Numbered(Name());
  const std::string type = mDice.Pick(kValueTypes);
  CommentsAbove({});
  Line("Public Property Get " + name + "() As " + type);
  if (mDice.Chance(15)) Line("Attribute " + name + ".VB_Description = \"" + Phrase(4, 8) + "\"");
  mLocals.clear();
  Line("    " + name + " = " + Variable());
  Line("End Property");
  Blank();
  mLocals = {"NewValue"};
  Line("Public Property Let " + name + "(ByVal NewValue As " + type + ")");
  Body(mDice.Chance(30) ? mDice.Between(4, 10) : 1, "Property");
}

void ModuleText::EventHandler() {
  mLocals.clear();
  CommentsAbove({});
  Line("Private Sub " + Numbered(std::string(mDice.Pick(kControls).prefix) + mDice.Pick(kNouns)) +
       "_" + mDice.Pick(kEvents) + (mDice.Chance(20) ? "(Index As Integer)" : "()"));
  Body(mDice.Between(3, 40), "Sub");
}

}  // namespace vendrel::bench
