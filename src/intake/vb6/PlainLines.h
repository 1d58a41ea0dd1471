#pragma once
// The short way of a line. Most lines of a module stand in the body of a procedure, declare nothing
// and change nothing of what the intake knows: of all stages only `StoreLine` has anything to do.

#include <cstdint>
#include <string>
#include <string_view>

#include "model/Fwd.h"
#include "services/SourceText.h"
#include "text/vb6/PlainStatements.h"

namespace vendrel {

struct ModuleIntake;

/// Takes the lines of one module for which the short way does what the stages would. Where it
/// stands is quiet as long as nothing waits for a further line (a continuation, a remainder, a
/// comment for the next element, an open Type or condition); a line that goes through the stages
/// may end that, or bring it about.
class PlainLines {
 public:
  PlainLines(Component& component, ModuleIntake& intake);

  /// Looks where the next line will stand. To be called behind each line that went through the
  /// stages.
  void Look();
  /// Takes as many lines as it may off the front of `rest`, what is left of the text of the module,
  /// and counts them; gives their bytes. Only where lines end alike, and are of everyday length.
  std::size_t TakeRun(std::string_view rest, const LineEnds& ends);
  /// Takes the next line of the text of the module; false if it has to go through the stages.
  bool Take(std::string_view text);
  /// Gives the last block its last comment; to be called behind the last line.
  void Settle();

 private:
  bool IsQuiet() const;
  bool LiesInFalseBranch() const;
  bool MayTake(const PlainLine& plain) const;
  void Store(std::string_view text, const PlainLine& plain);
  void TakeNote(const PlainLine& plain);
  void KeepComment(std::string_view comment);
  void EndProcedure();

  Component& mComponent;
  ModuleIntake& mIntake;
  /// The block that takes plain lines; null where nothing is quiet.
  Block* mBlock = nullptr;
  bool mTakesBlanks = false;
  /// It stands in a false branch of `#If`.
  bool mIsLeftOut = false;
  /// A glance has told that the next line has to go through the stages.
  bool mNextIsOdd = false;
  ClassifierRules mRules;
  /// The last comment taken, of which its block gets an object in the end: only the last counts.
  Block* mCommented = nullptr;
  std::string_view mComment;
  std::int32_t mCommentIndex = 0;
  std::int32_t mCommentLine = 0;
  std::string mBuffer;
};

}  // namespace vendrel
