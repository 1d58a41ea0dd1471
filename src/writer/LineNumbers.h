#pragma once
// Visual Basic line numbers in front of executable statements.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text/CodeLines.h"

namespace vendrel {

class VBProject;

/// Readies project and process for numbers as the project's tag asks for them: "start:increment" or
/// "start:increment.interval". Without the tag there will be none. Gives the first number.
std::int32_t BeginNumbering(VBProject& project);

/// The numbers of one procedure. Its lines are offered in order; the number to use next is that of
/// the process, `ProcessState::CurrentLineNumber`.
class LineNumbers {
 public:
  /// `numberable`: keep away from labels and places that the compiler refuses.
  LineNumbers(const CodeLines& lines, bool numberable);

  /// What to write in front of a line of the source that is no attribute line: a number, blanks as
  /// wide, or nothing. Valid until the next call. Raises 11 if the interval is 0.
  std::string_view Before(std::int32_t index);
  /// Takes note of a line that is not in the source.
  void Pass(std::int32_t index);

 private:
  /// One open `Select Case`.
  struct Select {
    bool AtFirstCase = true;
    bool CaseSeen = false;
  };

  bool IsEligible(std::int32_t index);
  bool BeginsEligible(std::int32_t index);
  bool MayStandBefore(std::int32_t index);
  bool TakeCase();
  bool TakeEndSelect();
  LineTypeEnum StatementType(std::int32_t index);
  LineTypeEnum LastTypeNotInSource();
  void TrackProcedure(LineTypeEnum type);
  std::string_view Print(std::int32_t index);
  std::string_view Spacer();
  void SpellNumber();

  const CodeLines& mLines;
  const bool mNumberable;
  const std::int32_t mLineInterval;
  std::int32_t mLineCount;
  LineTypeEnum mLineType = static_cast<LineTypeEnum>(0);
  bool mContinued;
  bool mInProcedure = false;
  /// Classic: the one level that is tracked; else the innermost last.
  std::vector<Select> mSelects;
  std::int32_t mLastNotInSource = -1;
  std::int32_t mSpelled = -1;
  std::string mNumber;
  std::string mBlanks;
};

}  // namespace vendrel
