#pragma once
// The engine behind `InitialiseCodeLine`. A line is judged by exact literals in a fixed order:
// first statement and comment are told apart (`LineScan.h`), then the rules of the language tell
// the type of the statement (`StatementRules.h`).

#include <cstddef>
#include <string>
#include <string_view>

#include "text/CodeLine.h"
#include "text/LineScan.h"

namespace vendrel {

/// Classifies lines one after the other. The parts of a result stay valid until the next call.
class LineClassifier : public ScanRules {
 public:
  enum class Result { Ok, MissingWord };

  LineClassifier(LanguageVersionEnum language, const ClassifierRules& rules)
      : ScanRules(language, rules) {}

  /// A line that begins a statement. `MissingWord`: a single word that needs another; the record is
  /// then `OTHER` with the whole text as its statement. A remainder holds no tabs; not to look for
  /// them again in each remainder of a line keeps its cost in proportion.
  Result First(std::string_view text, ParsedLine& line, bool mayHoldTabs = true);
  /// The physical line behind one that was `Continued`; the parts are those of the statement so
  /// far.
  Result Next(std::string_view physical, ParsedLine& line);
  /// Gives back the room of its buffers, which views of the last line point into.
  void Rest() {
    for (std::string* buffer : {&mWork, &mStatement, &mBlanked, &mLogical})
      std::string().swap(*buffer);
    mLogicalSize = 0;
  }
  /// The statement so far, without its final underscore, for a line that was `Continued`.
  std::string_view LogicalText() const {
    return std::string_view(mLogical).substr(0, mLogicalSize);
  }

 private:
  std::string_view WorkingCopy(std::string_view text);
  Result Process(std::string_view work, ParsedLine& line);
  void Separate(std::string_view work, ParsedLine& line);
  void FindHiddenDeclaration(std::string_view work);
  void TrimStatement(std::string_view work, ParsedLine& line) const;
  void TakeOtherBlanks(ParsedLine& line);
  Result Classify(ParsedLine& line);
  void SplitOneLineProcedure(ParsedLine& line);

  ScanState mState;
  ScanState mBeforeComment;      // where the scan stood in front of the comment it found
  std::string mWork;             // the line with tabs as blanks
  std::string mStatement;        // the statement with runs of blanks collapsed
  std::string mBlanked;          // the statement with blanks of every kind as blanks
  std::string mLogical;          // the statement so far, across continuations
  std::size_t mLogicalSize = 0;  // what the next line continues: without the last underscore
};

/// Joins a continued line, given without its underscore, and the physical line behind it.
std::string JoinContinuation(std::string_view remainder, std::string_view physical);

}  // namespace vendrel
