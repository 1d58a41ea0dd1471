#pragma once
#include <cstddef>
#include <string_view>

#include "intake/net/NetStatementScan.h"

namespace vendrel {

/// A line on its way through its tokens; what they say of the statement goes to `S`.
struct NetStatementScan::LineScan {
  NetStatementScan& S;
  std::string_view Line;
  std::size_t At = 0;
  std::size_t CodeEnd = 0;  // behind the code of the line
  bool Explicit = false;    // the line ends in " _"
  bool First = true;        // no token of the line yet
  // The header of a lambda that the line may end with.
  int LambdaDepth = 0;  // of the parenthesis that opens its list; 0: none
  bool LambdaClosed = false;
  bool LambdaType = false;
  bool LambdaWord = false;
  std::string_view Previous = {};  // the word before
  bool NoBracket = false;

  void Run();
  bool TakeAttribute(char c);
  void TakeWord();
  void TakeMark(char c);
  void Note(Token token, bool inType = false);
};

}  // namespace vendrel
