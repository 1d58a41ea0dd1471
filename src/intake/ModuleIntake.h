#pragma once
// What a component keeps between two lines of its load. It lives from the first line on and
// outlives the load, since code can be added later and a load can stop behind the declarations.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/ReadingRules.h"
#include "intake/LanguageRules.h"
#include "model/Fwd.h"
#include "text/Classifier.h"
#include "text/CodeLine.h"

namespace vendrel {

/// A line of a statement that is not complete yet. Text of the module is only pointed at; any other
/// text is held.
struct PendingLine {
  ParsedLine Line;
  std::unique_ptr<CodeLine> Held;
  std::int32_t SourceLine = 0;
};

/// The open `#If`s of a module: one entry each for whether its present branch is false, and whether
/// one of its branches has been live.
class ConditionStack {
 public:
  void Push(bool ignore, bool executed);
  /// Takes the innermost `#If` off. Raises 9 when none is open.
  void Pop();
  /// Any present branch is false.
  bool Ignore() const { return mIgnoring > 0; }
  /// A branch of the innermost `#If` has been live; false when none is open.
  bool Executed() const { return !mEntries.empty() && mEntries.back().Executed; }
  bool TopIgnores() const { return !mEntries.empty() && mEntries.back().Ignored; }
  /// These change the innermost entry; raise 9 when there is none.
  void SetTopIgnores(bool value);
  void SetTopExecuted(bool value);
  std::size_t Depth() const { return mEntries.size(); }

 private:
  struct Entry {
    bool Ignored;
    bool Executed;
  };
  std::vector<Entry> mEntries;
  std::size_t mIgnoring = 0;
};

struct ModuleIntake {
  ModuleIntake(LanguageVersionEnum language, const ReadingRules& reading)
      : Language(LanguageRules::Of(language, reading)),
        Reading(reading),
        Classifier(language, reading) {}

  const LanguageRules& Language;
  ReadingRules Reading;
  LineClassifier Classifier;
  /// What the language keeps between lines; made by its rules.
  std::unique_ptr<LanguageState> OfLanguage;
  /// The decoded file, shared by the lines of all blocks.
  std::shared_ptr<const std::string> Text;

  // The previous line, as far as the next one needs it.
  bool PreviousContinued = false;
  bool PreviousMoreLines = false;
  bool InOneLineProcedure = false;
  std::string_view Remainder;
  /// The remainder, where it is no text of the module; and the one before it, in which the line at
  /// hand may lie.
  std::shared_ptr<const std::string> HeldRemainder;
  std::shared_ptr<const std::string> OlderRemainder;
  std::vector<PendingLine> ContinuationBuffer;

  ConditionStack Conditions;

  /// Comment lines directly above what comes next (complete reading).
  std::string LeadingComment;
  /// A delegate that left the blocks of its module keeps its lines until the next block.
  std::shared_ptr<Block> DetachedBlock;

  // Around the line at hand, where whoever hands in the lines knows it.
  /// The physical line behind it; empty where there is none, or it is not known.
  std::string_view NextLine;
  /// What the statement still lacks is no code (the inside of a literal): it ends with this line.
  bool EndsStatement = false;
  /// The line is a whole statement or none, unless the next one joins it.
  bool IsWholeLine = false;
  /// It is a statement of the type `OTHER`, of which nothing but outer blanks and tabs is cut off.
  bool IsPlainLine = false;

  // Places, 1-based physical lines of the file.
  std::int32_t PhysicalLine = 0;
  std::int32_t StatementLine = 0;

  /// Whether plain lines may take the short way (`PlainLines`).
  bool TakesPlainLines = true;
  bool AlreadyPopulated = false;
  bool PreScannedFile = false;
  bool Told = false;
  /// The line at hand has been put into a block.
  bool LineStored = false;

  /// Gives back the room that was kept for further lines.
  void Rest() {
    if (ContinuationBuffer.empty()) ContinuationBuffer.shrink_to_fit();
    LeadingComment.shrink_to_fit();
    if (!PreviousContinued) Classifier.Rest();
  }

  /// Whether a text lies in the module's text, and so can be pointed at.
  bool InText(std::string_view text) const { return Text && IsPart(text, *Text); }
  /// Whether a text lies in the remainder that is held.
  bool InHeld(std::string_view text) const { return HeldRemainder && IsPart(text, *HeldRemainder); }

 private:
  static bool IsPart(std::string_view text, const std::string& whole) {
    return text.data() >= whole.data() && text.data() + text.size() <= whole.data() + whole.size();
  }
};

}  // namespace vendrel
