#pragma once
// The walk over the characters of a line, up to the comment or separator that ends its statement. A
// statement continued over many lines is walked once: each further line resumes where the last
// stopped.

#include <cstddef>
#include <string_view>

#include "core/ReadingRules.h"
#include "text/StatementRules.h"

namespace vendrel {

/// The flags of a reading that the classifier knows.
struct ClassifierRules {
  // Bits: every list of lines holds them.
  bool RemComments : 1 = false;
  bool WholeCharacters : 1 = false;
  bool OneLineProcedures : 1 = false;
  bool EverySeparator : 1 = false;
  bool BracketedNames : 1 = false;

  ClassifierRules() = default;
  ClassifierRules(const ReadingRules& reading)  // NOLINT: a selection of the same flags
      : RemComments(reading.RemComments),
        WholeCharacters(reading.WholeCharacters),
        OneLineProcedures(reading.OneLineProcedures),
        EverySeparator(reading.EverySeparator),
        BracketedNames(reading.BracketedNames) {}
};

/// By what a line is scanned: the language, the reading, and where the line stands.
struct ScanRules {
  ScanRules(LanguageVersionEnum language, const ClassifierRules& reading)
      : Statements(&StatementRules::Of(language)), Reading(reading) {}

  const StatementRules* Statements;
  ClassifierRules Reading;
  /// Whether leading line numbers raise `ProcessState::CurrentLineNumber`.
  bool RaiseLineNumber = true;
  /// Every colon outside of strings separates statements: for the body of a one-line procedure.
  bool SplitAtEveryColon = false;
  /// False for lines of a header, where a colon parts nothing (`EverySeparator`).
  bool PartLines = true;
  /// Whether a label or line number may stand at the front: not in a remainder, nor in the list of
  /// a Type or Enum (`EverySeparator`).
  bool MayBeginWithLabel = true;

  bool PartsEvery() const { return Reading.EverySeparator && PartLines; }
};

/// Where a walk stands, and what it has found.
struct ScanState {
  enum class Found { Nothing, Comment, Separator };

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

  /// The line holds a number and blanks alone.
  bool OnlyNumber() const { return SeenDigit && !SeenOther; }
};

/// Walks a line on to `end`, or to what ends its statement. Where that is a comment,
/// `beforeComment` becomes the state in front of it.
void ScanLine(std::string_view text, std::size_t end, const ScanRules& rules, ScanState& state,
              ScanState& beforeComment);

/// Raises `ProcessState::CurrentLineNumber` above the number that a line begins with.
void TakeLineNumber(std::string_view text, const ScanRules& rules);

/// "Rem" and what follows it: a comment where the reading says so.
bool IsRemark(std::string_view text);

}  // namespace vendrel
