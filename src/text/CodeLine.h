#pragma once
// One source line and its classification. `CodeLine` is the record for users and holds its texts;
// `ParsedLine` is the same as views, for the readers, through which every line of a project passes
// once.

#include <cstdint>
#include <string>
#include <string_view>

#include "core/Enums.h"
#include "core/ReadingRules.h"

namespace vendrel {

/// Plain record of one source line; copied by value.
struct CodeLine {
  LineTypeEnum LineType = OTHER;
  /// The line ends in a continuation: the next physical line belongs to the same statement.
  bool Continued = false;
  /// The line continues an earlier one. Set by the reader of the module, not by the classifier.
  bool Continuation = false;
  /// The text as classified, tabs and outer blanks intact; of a continuation, the physical line.
  std::string Text;
  /// The code before a comment or separator, not upper-cased, runs of blanks collapsed to one.
  std::string StatementPart;
  /// The trimmed text behind the apostrophe.
  std::string CommentPart;
  /// Reserved; the classifier leaves it 0.
  std::int32_t LineID = 0;
  /// The line held a statement separator; `Remainder` is the text behind it.
  bool MoreLines = false;
  /// With `MoreLines` the text behind the separator; with `Continued` the line without its final
  /// underscore.
  std::string Remainder;
  /// Made from a remainder: no physical line of its own. Set by the reader of the module.
  bool NotInSource = false;
  /// Position of the `EventDeclaration` tied to the line, 1-based; 0 if none.
  std::int16_t EventIndex = 0;

  bool operator==(const CodeLine&) const = default;
};

/// The record as views. `Text` mostly points into the text of the module, the parts into that or
/// into the classifier's buffers, which the next line overwrites.
struct ParsedLine {
  LineTypeEnum LineType = OTHER;
  bool Continued = false;
  bool Continuation = false;
  bool MoreLines = false;
  bool NotInSource = false;
  /// `Text` does not follow from the file (commented out, built): it must be kept whole.
  bool OwnText = false;
  /// Taken apart at every colon, as the body of a one-line procedure is.
  bool EveryColon = false;
  /// A line of a header: not taken apart.
  bool Unparted = false;
  /// A line of a list, where no label can stand.
  bool NoLabel = false;
  /// A label or line number stands in front of the statement.
  bool HasLabel = false;
  std::int16_t EventIndex = 0;
  std::string_view Text;
  std::string_view StatementPart;
  std::string_view CommentPart;
  std::string_view Remainder;

  /// The record with texts of its own.
  CodeLine Record() const;
  /// Views of a record, which must outlive them.
  static ParsedLine Of(const CodeLine& line);
};

/// The classifier: one line of text to its record, by the rules of a language and a reading. A
/// statement of a single word that needs another ("Public", "Sub") raises 9.
/// Raises `ProcessState::CurrentLineNumber` above a leading line number.
CodeLine InitialiseCodeLine(std::string_view Text, LanguageVersionEnum LanguageVersion,
                            const ReadingRules& reading = ReadingRules::Classic());

/// Whether a line of this type opens a procedure block (eleven types do).
constexpr bool IsStartLineType(LineTypeEnum LineType) {
  switch (LineType) {
    case START_FUNCTION:
    case START_SUB:
    case START_PROPERTY:
    case START_CLASS_INITIALISE:
    case START_CLASS_TERMINATE:
    case FORM_LOAD:
    case FORM_UNLOAD:
    case START_USERCONTROL_INITIALISE:
    case START_USERCONTROL_TERMINATE:
    case START_USERDOCUMENT_INITIALISE:
    case START_USERDOCUMENT_TERMINATE: return true;
    default: return false;
  }
}
/// Whether a line of this type ends a procedure.
constexpr bool IsEndLineType(LineTypeEnum LineType) {
  return LineType == END_FUNCTION || LineType == END_SUB || LineType == END_PROPERTY ||
         LineType == END_CLASS_INITIALISE || LineType == END_CLASS_TERMINATE;
}
/// Whether a line ends the attributes and begins the declarations of a module.
bool IsDeclarationsLineType(LineTypeEnum LineType, std::string_view StatementPart);

/// "START_SUB" and the like; empty for a number that is no line type.
std::string_view LineTypeName(LineTypeEnum LineType);

/// The classifier as clients reach it: always by the rules of Visual Basic 5 or 6.
class Globals {
 public:
  CodeLine InitialiseCodeLine(std::string_view s) const {
    return vendrel::InitialiseCodeLine(s, lvVisualBasic5or6);
  }
  bool IsStartLineType(LineTypeEnum type) const { return vendrel::IsStartLineType(type); }
  bool IsEndLineType(LineTypeEnum type) const { return vendrel::IsEndLineType(type); }
  bool IsDeclarationsLineType(LineTypeEnum type, std::string_view statement) const {
    return vendrel::IsDeclarationsLineType(type, statement);
  }
};

}  // namespace vendrel
