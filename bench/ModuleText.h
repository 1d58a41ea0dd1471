#pragma once
// The text of one generated module. What stands in it is drawn, in the shares of real business
// code; it reads like Visual Basic, but a compiler would not find the procedures that it calls.

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/Dice.h"

namespace vendrel::bench {

enum class ModuleKind { Standard, Class, Form };

/// Writes one module, line by line.
class ModuleText {
 public:
  ModuleText(ModuleKind kind, std::string name, std::uint64_t seed)
      : mDice(seed), mKind(kind), mName(std::move(name)), mForeignLetters(mDice.Chance(20)) {}

  /// Writes header and declarations, then procedures until `lines` lines are reached; the last
  /// procedure is finished.
  void Fill(std::int64_t lines);

  std::string TakeText() { return std::move(mText); }
  std::int64_t Lines() const { return mLines; }

 private:
  void Line(std::string_view text);
  void Indented(std::string_view text);  // as deep as the open blocks are
  void Blank() { Line(""); }

  // Header and declarations.
  void Header();
  void FormControls();
  void Control(int indent, int number);
  void Declarations(std::int64_t budget);
  void Enumeration();
  void Structure();
  void Declare();
  void ConstantOrField();

  // Procedures.
  void Procedure();
  void PropertyPair();
  void EventHandler();
  void CommentsAbove(std::string_view parameter);
  void Body(int lines, const char* kind);
  void Locals();
  void Statement();
  void SimpleStatement();
  void ContinuedCall();
  void OpenBlock();
  void SelectBlock();
  void CloseBlock();

  // Parts of a line.
  std::string Numbered(std::string_view name);  // made unique in the module
  std::string Name();                           // of two words
  std::string Callee();
  std::string Variable();
  std::string Value();
  std::string Condition();
  std::string Literal();
  std::string Assignment() { return Variable() + " = " + Value(); }
  std::string Phrase(int low, int high);  // that many words

  Dice mDice;
  ModuleKind mKind;
  std::string mName;
  std::string mText;
  std::int64_t mLines = 0;
  int mNumber = 0;
  bool mForeignLetters;  // has letters beyond ASCII
  std::vector<std::string> mLocals;
  std::vector<std::string> mFields;
  std::vector<const char*> mOpen;  // the ends of the blocks that are open, innermost last
};

}  // namespace vendrel::bench
