#pragma once
// The type of a statement, from its first words and prefixes in a fixed order: a later test only
// runs when every earlier one failed.

#include <string_view>

#include "core/Enums.h"

namespace vendrel {

struct StatementJudgement {
  LineTypeEnum LineType = OTHER;
  /// A keyword stands where another word must follow, and none does.
  bool MissingWord = false;
};

/// Judges a statement whose runs of blanks are collapsed. ASCII case is ignored.
StatementJudgement JudgeStatement(std::string_view statement, LanguageVersionEnum language);

}  // namespace vendrel
