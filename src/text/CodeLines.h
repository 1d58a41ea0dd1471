#pragma once
// The lines of one block. A line costs 16 bytes: its place in the text of the module, which all
// blocks share, and what cannot be derived from it. `Item` classifies again; a line whose record no
// longer follows from its text (replaced, commented out, added by a client) is kept whole beside.

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/Classifier.h"
#include "text/CodeLine.h"

namespace vendrel {

/// Ordered list of `CodeLine` records without keys; positions are 1-based, and one outside 1 to
/// `Count` raises 9. After `UnloadSourceCode` every other operation raises 91.
class CodeLines {
 public:
  CodeLines() = default;
  /// Lines that point into `text`, classified by `language` and `rules`.
  CodeLines(std::shared_ptr<const std::string> text, LanguageVersionEnum language,
            const ClassifierRules& rules);

  /// A copy of the record at that position.
  CodeLine Item(std::int32_t Key) const;
  void Remove(std::int32_t Index);
  /// Stores a copy: before `Before` if that is not 0, else behind `After` if that is not 0, else
  /// last.
  void Add(const CodeLine& Item, std::int32_t Before = 0, std::int32_t After = 0);
  std::int32_t Count() const;

  bool Continued(std::int32_t Index) const;
  bool Continuation(std::int32_t Index) const;
  bool NotInSource(std::int32_t Index) const;
  LineTypeEnum LineType(std::int32_t Index) const;
  /// Copies of all records of that type, in order.
  std::vector<CodeLine> LinesOfType(LineTypeEnum type) const;
  /// Copies of all records whose text matches: tabs as four blanks, lower-cased, trimmed, by
  /// `Like`.
  std::vector<CodeLine> LinesMatchingPattern(std::string_view Pattern) const;
  std::string LineText(std::int32_t Index) const;
  /// The text without a copy; valid until the list changes.
  std::string_view LineView(std::int32_t Index) const;
  /// Replaces the text; classification and parts of the record stay as they were.
  void SetLineText(std::int32_t Index, std::string_view text);
  /// Name of the procedure whose start line this text is.
  std::string EventName(std::int32_t Index) const;
  bool IsStartLine(std::int32_t Index) const { return IsStartLineType(LineType(Index)); }
  bool IsEndLine(std::int32_t Index) const { return IsEndLineType(LineType(Index)); }
  std::int16_t EventIndex(std::int32_t Index) const;
  /// 0-based offset at which the line began in the text that the list points into, also after its
  /// text was replaced; nothing for a line that no file had.
  std::optional<std::size_t> SourceOffset(std::int32_t Index) const;
  /// Whether the text of the line still is the one that was read.
  bool AsRead(std::int32_t Index) const;
  /// The text that lines point into; null for a list without one.
  const std::string* SourceText() const { return mText.get(); }
  void UnloadSourceCode();
  /// Number of continuation records in the whole list; kept up to date, not counted.
  std::int32_t ContinuationCount() const;
  /// Whether the lines have been unloaded.
  bool Unloaded() const { return mUnloaded; }

  // For the readers: a line without a record.
  /// Appends a line; one whose text lies in the module's text costs no copy.
  void Append(const ParsedLine& line) { AddParsed(line, 0, 0); }
  /// `held` may be a text outside of the module's in which that of the line lies.
  void AddParsed(const ParsedLine& line, std::int32_t before, std::int32_t after,
                 const std::shared_ptr<const std::string>& held = {});
  /// Gives back the room kept for further lines.
  void Shrink() { mLines.shrink_to_fit(); }

 private:
  enum Flag : std::uint8_t {
    kContinued = 1,
    kContinuation = 2,
    kNotInSource = 4,
    kWhole = 8,  // the record stands in mWhole, under the number in Offset; Length is where the
                 // line began in the text, plus 1, or 0
    kHeld = 16,  // the text is a part of one in mHeld, under the number in Offset
    kEveryColon = 32,
    kUnparted = 64,
    kNoLabel = 128,
  };
  struct HeldText {
    std::shared_ptr<const std::string> Of;
    std::uint32_t Offset;
  };
  struct Line {
    std::uint32_t Offset;
    std::uint32_t Length;
    std::int16_t EventIndex;
    std::uint8_t Type;
    std::uint8_t Flags;
  };

  const Line& At(std::int32_t index) const;
  void Insert(const Line& line, std::int32_t before, std::int32_t after);
  Line KeepWhole(CodeLine record);
  void KeepText(Line& line, std::string_view text, const std::shared_ptr<const std::string>& held);
  bool InText(std::string_view text) const;
  CodeLine Classified(std::int32_t index) const;
  LineClassifier ClassifierFor(std::uint8_t flags) const;
  std::int32_t FirstOf(std::int32_t index) const;
  std::string LogicalText(std::int32_t index) const;

  std::vector<Line> mLines;
  std::shared_ptr<const std::string> mText;
  ClassifierRules mRules;
  std::unique_ptr<std::vector<CodeLine>> mWhole;
  std::unique_ptr<std::vector<HeldText>> mHeld;
  std::int32_t mContinuations = 0;
  LanguageVersionEnum mLanguage = lvVisualBasic5or6;
  bool mUnloaded = false;
};

}  // namespace vendrel
