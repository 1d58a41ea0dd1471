// The insides of generated procedures.
#include "bench/ModuleText.h"
#include "bench/Words.h"

namespace vendrel::bench {
namespace {

constexpr size_t kDeepest = 4;  // blocks inside each other

constexpr const char* kEndIf = "End If";

}  // namespace

void ModuleText::Indented(std::string_view text) {
  mText.append(4 + 4 * mOpen.size(), ' ');
  Line(text);
}

// Ends within two lines of `lines`, the end of the procedure and a blank line not counted.
void ModuleText::Body(int lines, const char* kind) {
  const std::int64_t end = mLines + lines;
  if (lines > 4) Locals();
  const bool handler = lines > 20 && mDice.Chance(40);
  const std::int64_t closing = handler ? 3 : 0;
  if (handler) Indented("On Error GoTo Failed");
  while (mLines + static_cast<std::int64_t>(mOpen.size()) + closing < end) Statement();
  while (!mOpen.empty()) CloseBlock();
  if (handler) {
    Indented(std::string("Exit ") + kind);
    Line("Failed:");
    Indented("MsgBox Err.Description, vbExclamation");
  }
  Line(std::string("End ") + kind);
  Blank();
}

void ModuleText::Locals() {
  for (int i = 0, count = mDice.Between(1, 5); i < count; ++i) {
    mLocals.push_back(Name() + std::to_string(i + 4));
    std::string line = "Dim " + mLocals.back() + " As " + mDice.Pick(kTypes);
    if (mDice.Chance(20)) {
      mLocals.push_back(Name() + std::to_string(i + 10));
      line += ", " + mLocals.back() + " As " + mDice.Pick(kValueTypes);
    }
    Indented(line);
  }
  Blank();
}

void ModuleText::Statement() {
  const int roll = mDice.Between(1, 1000);
  if (roll <= 135) {
    Indented("' " + Phrase(2, 9));
  } else if (roll <= 190) {
    Blank();
  } else if (roll <= 208) {
    ContinuedCall();
  } else if (roll <= 310 && mOpen.size() < kDeepest) {
    OpenBlock();
  } else if (roll <= 490 && roll > 310 && !mOpen.empty()) {
    CloseBlock();
  } else {
    SimpleStatement();
  }
}

void ModuleText::ContinuedCall() {
  Indented("Call " + Callee() + "(" + Value() + ", _");
  Indented("    " + Value() + ", " + Value() + ")");
}

void ModuleText::OpenBlock() {
  switch (mDice.Between(1, 10)) {
    case 1:
      Indented("For " + Variable() + " = 1 To " + Variable());
      mOpen.push_back("Next");
      break;
    case 2: SelectBlock(); break;
    case 3:
      Indented("Do While " + Condition());
      mOpen.push_back("Loop");
      break;
    case 4:
      Indented("With " + Variable());
      mOpen.push_back("End With");
      break;
    default: Indented("If " + Condition() + " Then"); mOpen.push_back(kEndIf);
  }
}

void ModuleText::SelectBlock() {
  Indented("Select Case " + Variable());
  for (int i = 1, cases = mDice.Between(2, 4); i <= cases; ++i) {
    Indented("Case " + std::to_string(i));
    Indented("    " + Assignment());
  }
  Indented("Case Else");
  mOpen.push_back("End Select");
}

void ModuleText::CloseBlock() {
  const char* const end = mOpen.back();
  mOpen.pop_back();
  if (end == kEndIf && mDice.Chance(30)) {
    Indented("Else");
    Indented("    " + Assignment());
  }
  Indented(end);
}

void ModuleText::SimpleStatement() {
  switch (mDice.Between(1, 12)) {
    case 1: Indented("If " + Condition() + " Then " + Variable() + " = " + Literal()); break;
    case 2: Indented(Callee() + " " + Variable() + ", " + Value()); break;
    case 3: Indented("Set " + Variable() + " = Nothing"); break;
    case 4: Indented(Variable() + "." + mDice.Pick(kNouns) + " = " + Value()); break;
    case 5:
      Indented(Variable() + " = " + Literal() + (mDice.Chance(25) ? " ' " + Phrase(2, 4) : ""));
      break;
    case 6: Indented("MsgBox \"" + Phrase(2, 7) + ": \" & " + Variable()); break;
    case 7: Indented(mDice.Chance(10) ? Variable() + " = 0: " + Assignment() : Assignment()); break;
    default: Indented(Assignment());
  }
}

// ---- Parts of a line ----

std::string ModuleText::Numbered(std::string_view name) {
  return std::string(name) + std::to_string(++mNumber);
}

std::string ModuleText::Name() { return std::string(mDice.Pick(kAdjectives)) + mDice.Pick(kNouns); }

std::string ModuleText::Callee() { return std::string(mDice.Pick(kVerbs)) + mDice.Pick(kNouns); }

std::string ModuleText::Variable() {
  const bool local = !mLocals.empty() && mDice.Chance(65);
  const auto& names = local ? mLocals : mFields;
  return names[mDice.Next() % names.size()];
}

std::string ModuleText::Value() {
  switch (mDice.Between(1, 7)) {
    case 1: return Variable() + " + " + std::to_string(mDice.Between(1, 9));
    case 2: return Variable() + " & " + Literal();
    case 3: return std::string(mDice.Pick(kNouns)) + "s(" + Variable() + ")";
    case 4: return "Left$(" + Variable() + ", " + std::to_string(mDice.Between(1, 20)) + ")";
    case 5: return Variable();
    default: return Literal();
  }
}

std::string ModuleText::Condition() {
  constexpr const char* operators[] = {" = ", " <> ", " > ", " < ", " >= "};
  switch (mDice.Between(1, 5)) {
    case 1: return "Len(" + Variable() + ") > 0";
    case 2: return "Not " + Variable() + " Is Nothing";
    case 3:
      return Variable() + " = 0 And " + Variable() + " < " + std::to_string(mDice.Between(1, 99));
    default: return Variable() + mDice.Pick(operators) + Literal();
  }
}

std::string ModuleText::Literal() {
  switch (mDice.Between(1, 8)) {
    case 1: return "\"" + Phrase(1, 4) + "\"";
    case 2: return "\"" + Phrase(1, 1) + " \"\"" + Phrase(1, 1) + "\"\" '\"";
    case 3: return "vbNullString";
    case 4: return "&H" + std::to_string(mDice.Between(10, 99)) + "&";
    case 5: return mDice.Chance(50) ? "True" : "False";
    case 6: return std::to_string(mDice.Between(0, 99)) + ".5";
    default: return std::to_string(mDice.Between(0, 100));
  }
}

std::string ModuleText::Phrase(int low, int high) {
  std::string phrase;
  for (int i = mDice.Between(low, high); i > 0; --i) {
    phrase += mForeignLetters && mDice.Chance(1) ? mDice.Pick(kForeignWords) : mDice.Pick(kWords);
    if (i > 1) phrase += ' ';
  }
  return phrase;
}

}  // namespace vendrel::bench
