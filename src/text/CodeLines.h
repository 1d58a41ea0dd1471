#pragma once
// The lines of one block. A line costs 4 bytes: its length in the text of the module, which all
// blocks share, and what cannot be derived from it; where it begins follows from the lines above
// it, back to the head of its group. Lists with a line that does not stand directly below the one
// above it (less than one list in ten) have 8 bytes a line, its place among them. `Item` classifies
// again; a line whose record no longer follows from its text (replaced, commented out, added by a
// client) is kept whole beside, and so is the place of one that does not fit.

#include <bit>
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
  /// Appends a line of which no more is known than its type. Its text lies in the module's text.
  void AppendPlain(std::string_view text, LineTypeEnum type) {
    Push(Packed({static_cast<std::uint32_t>(text.data() - mText->data()),
                 static_cast<std::uint32_t>(text.size()), 0},
                type, 0));
  }
  /// Appends a line; one whose text lies in the module's text costs no copy.
  void Append(const ParsedLine& line) { AddParsed(line, 0, 0); }
  /// `held` may be a text outside of the module's in which that of the line lies.
  void AddParsed(const ParsedLine& line, std::int32_t before, std::int32_t after,
                 const std::shared_ptr<const std::string>& held = {});
  /// Gives back the room kept for further lines.
  void Shrink();

  /// The statement that opens the procedure, as written; empty for other lists. A part of the
  /// module's text costs no copy.
  std::string_view Definition() const;
  void SetDefinition(std::string_view text);

 private:
  enum Flag : std::uint8_t {
    kContinued = 1,
    kContinuation = 2,
    kNotInSource = 4,
    kWhole = 8,  // the record stands among the whole ones, under the number in Offset; Length is
                 // where the line began in the text, plus 1, or 0
    kHeld = 16,  // the text is a part of one that is held, under the number in Offset
    kEveryColon = 32,
    kUnparted = 64,
    kNoLabel = 128,
  };
  struct HeldText {
    std::shared_ptr<const std::string> Of;
    std::uint32_t Offset;
  };
  struct Place {
    std::uint32_t Offset;
    std::uint32_t Length;
    std::int16_t EventIndex;
  };
  struct Line {
    std::uint32_t Offset;
    std::uint16_t Length;
    std::uint8_t Type;
    std::uint8_t Flags;
  };
  /// As the length of a line: its place stands among the far ones, under the number in Offset.
  static constexpr std::uint16_t kFar = 0xFFFF;
  /// What few lists have.
  struct OddLines {
    std::vector<Line> Lines;  // all of them, once one of them does not fit its group
    bool HasLines = false;
    std::vector<CodeLine> Whole;
    std::vector<HeldText> Held;
    std::vector<Place> Far;
    std::string Definition;
  };
  /// A line of a group.
  struct Step {
    std::uint16_t Length;
    std::uint8_t Type;
    std::uint8_t Flags;
  };
  /// A group is the place at which its first line begins and that many lines.
  static constexpr std::uint32_t kGroup = 16;
  static constexpr std::uint32_t WordOf(std::uint32_t line) { return line + line / kGroup + 1; }
  static constexpr std::uint32_t WordsOf(std::uint32_t lines) {
    return lines == 0 ? 0 : WordOf(lines - 1) + 1;
  }
  static constexpr std::uint32_t kNowhere = 0xFFFFFFFF;
  static constexpr std::uint8_t kNoGap = 0xFF;  // fewer than two lines: nothing between them yet

  Line Packed(const Place& place, LineTypeEnum type, unsigned flags) {
    const Line line{place.Offset, static_cast<std::uint16_t>(place.Length),
                    static_cast<std::uint8_t>(type), static_cast<std::uint8_t>(flags)};
    return place.Length < kFar && place.EventIndex == 0 ? line : Far(place, line);
  }
  Line Far(const Place& place, Line line);
  Place PlaceOf(const Line& line) const {
    return line.Length == kFar ? mOdd->Far[line.Offset] : Place{line.Offset, line.Length, 0};
  }
  OddLines& Odd();
  bool IsWide() const { return mOdd && mOdd->HasLines; }
  std::uint32_t Size() const {
    return IsWide() ? static_cast<std::uint32_t>(mOdd->Lines.size()) : mCount;
  }
  Line At(std::int32_t index) const;
  Line Unpacked(std::uint32_t line) const;
  // Most lines go on with the group of the line above them.
  void Push(const Line& line) {
    if (line.Offset != mNext || mCount % kGroup == 0 || mShrunk || mGap == kNoGap ||
        line.Length == kFar || line.Flags & (kWhole | kHeld))
      return PushOther(line);
    mWords[WordOf(mCount++)] =
        std::bit_cast<std::uint32_t>(Step{line.Length, line.Type, line.Flags});
    mNext += line.Length + mGap;
  }
  void PushOther(const Line& line);
  bool Steps(const Line& line);
  void MakeRoom();
  std::vector<Line>& Widen();
  void Insert(const Line& line, std::int32_t before, std::int32_t after);
  Line KeepWhole(CodeLine record, std::uint32_t began = 0);
  Line KeepText(const ParsedLine& line, const std::shared_ptr<const std::string>& held);
  bool InText(std::string_view text) const;
  CodeLine Classified(std::int32_t index) const;
  LineClassifier ClassifierFor(std::uint8_t flags) const;
  std::int32_t FirstOf(std::int32_t index) const;
  std::string LogicalText(std::int32_t index) const;

  std::unique_ptr<std::uint32_t[]> mWords;  // the groups
  std::shared_ptr<const std::string> mText;
  std::unique_ptr<OddLines> mOdd;
  std::uint32_t mCount = 0;  // lines in the groups
  std::uint32_t mNext = 0;   // where the next line begins that needs no place of its own;
                             // kNowhere once all lines have places
  std::uint32_t mDefinition = 0;
  std::int32_t mContinuations = 0;
  std::uint16_t mDefinitionLength = 0;  // of a part of the text
  ClassifierRules mRules;
  std::uint8_t mLanguage = lvVisualBasic5or6;
  std::uint8_t mGap = kNoGap;  // bytes between two lines
  bool mShrunk = false;        // no room is kept for further words
  bool mUnloaded = false;
};

}  // namespace vendrel
