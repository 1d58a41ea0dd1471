#pragma once
// The engine behind `InitialiseCodeLine`. A line is judged by exact literals in a fixed order:
// first statement and comment are told apart (`Scan`), then keywords of the first words, then
// prefixes. A statement continued over many lines is scanned once: each further line resumes where
// the last stopped.

#include <cstddef>
#include <string>
#include <string_view>

#include "core/Enums.h"
#include "core/ReadingRules.h"
#include "text/CodeLine.h"

namespace vendrel {

/// The flags of a reading that the classifier knows.
struct ClassifierRules {
  bool RemComments = false;
  bool WholeCharacters = false;
  bool OneLineProcedures = false;
  bool EverySeparator = false;
  bool BracketedNames = false;

  ClassifierRules() = default;
  ClassifierRules(const ReadingRules& reading)  // NOLINT: a selection of the same flags
      : RemComments(reading.RemComments),
        WholeCharacters(reading.WholeCharacters),
        OneLineProcedures(reading.OneLineProcedures),
        EverySeparator(reading.EverySeparator),
        BracketedNames(reading.BracketedNames) {}
};

/// Classifies lines one after the other. The parts of a result stay valid until the next call.
class LineClassifier {
 public:
  enum class Result { Ok, MissingWord };

  LineClassifier(LanguageVersionEnum language, const ClassifierRules& rules)
      : mLanguage(language), mRules(rules) {}

  /// Whether leading line numbers raise `ProcessState::CurrentLineNumber`.
  bool RaiseLineNumber = true;
  /// Every colon outside of strings separates statements: for the body of a one-line procedure.
  bool SplitAtEveryColon = false;
  /// False for lines of a header, where a colon parts nothing (`EverySeparator`).
  bool PartLines = true;
  /// Whether a label or line number may stand at the front: not in a remainder, nor in the list of
  /// a Type or Enum (`EverySeparator`).
  bool MayBeginWithLabel = true;

  /// A line that begins a statement. `MissingWord`: a single word that needs another; the record is
  /// then `OTHER` with the whole text as its statement. A remainder holds no tabs; not to look for
  /// them again in each remainder of a line keeps its cost in proportion.
  Result First(std::string_view text, ParsedLine& line, bool mayHoldTabs = true);
  /// The physical line behind one that was `Continued`; the parts are those of the statement so
  /// far.
  Result Next(std::string_view physical, ParsedLine& line);
  /// The statement so far, without its final underscore, for a line that was `Continued`.
  std::string_view LogicalText() const {
    return std::string_view(mLogical).substr(0, mLogicalSize);
  }

 private:
  enum class Found { Nothing, Comment, Separator };
  struct ScanState {
    std::size_t At = 0;
    bool InString = false;
    bool SeenDigit = false;
    bool SeenOther = false;
    Found What = Found::Nothing;
    std::size_t Where = 0;     // byte of the apostrophe or colon
    std::size_t TextFrom = 0;  // first byte of the comment's text
    // Of EverySeparator and BracketedNames alone:
    std::size_t Begin = 0;     // first byte behind a line number or label
    std::size_t Searched = 0;  // up to here it is known what stands inside of brackets and dates
    bool HasLabel = false;
    bool HasOtherBlanks = false;
  };

  std::string_view WorkingCopy(std::string_view text);
  Result Process(std::string_view work, ParsedLine& line);
  void Scan(std::string_view text, std::size_t end);
  bool ScanQuote(std::string_view text, std::size_t next);
  bool IsSeparator(std::string_view text, std::size_t at) const;
  bool PartsAtColon(std::string_view text, std::size_t at);
  bool InBrackets(std::string_view text, std::size_t at);
  bool PartsEvery() const { return mRules.EverySeparator && PartLines; }
  void TakeLineNumber(std::string_view text) const;
  void Separate(std::string_view work, ParsedLine& line);
  void FindHiddenDeclaration(std::string_view work);
  void TrimStatement(std::string_view work, ParsedLine& line) const;
  void TakeOtherBlanks(ParsedLine& line);
  Result Judge(ParsedLine& line);
  void SplitOneLineProcedure(ParsedLine& line);
  std::string_view Collapsed(std::string_view statement);

  LanguageVersionEnum mLanguage;
  ClassifierRules mRules;
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
