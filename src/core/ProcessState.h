#pragma once
// The values that all projects of a workspace share; loads of one workspace run one at a time.

#include <cstdint>
#include <string>
#include <vector>

#include "core/Enums.h"

namespace vendrel {

/// State shared by every object of a workspace (`Workspace::State`); without one of their own, of
/// the process. `Reset()` puts the start values back and reads the one persisted setting; it runs
/// by itself when the first project of a workspace is made.
struct ProcessState {
  /// True: no message box is shown. False until the first project exists.
  bool Silent = false;
  /// Text of the last failure of `FileCopy`; cleared by `VBProject::Load`.
  std::string FileCopy_LastError;
  /// Assigned at start (10) and by each load (5); nothing reads it.
  std::int32_t lLineNumber = 10;
  /// Next identity of a code line; each load starts at 1 again.
  std::int32_t LineID = 1;
  /// Next identity of a block; each load starts at 1 again.
  std::int32_t BlockID = 1;
  /// Next free source line number; raised by numbered lines.
  std::int32_t CurrentLineNumber = 0;
  /// Where numbered lines are noted in place of raising it: a module is read before its turn.
  std::vector<std::int32_t>* NumberedLines = nullptr;
  std::int32_t LineNumberIncrement = 0;
  std::int32_t LineNumberInterval = 0;
  /// Number of living `VBProject` objects.
  std::int32_t mInstanceIncrement = 0;
  /// Number behind the next `Key`.
  std::int32_t mKeyIncrement = 0;
  /// Language of the project being read.
  LanguageVersionEnum CurrentLanguageVersion = lvVisualBasic5or6;
  /// Untagged comment lines continue the tagged comment above them.
  bool AutoAppendUntagged = false;
  bool mUpgradeLegacyTaggedcomments = false;
  std::string mTaggedCommentUpgradeFlag;

  /// That of the workspace in use.
  static ProcessState& Get();

  /// Start values, then the setting "AutoAppendUntagged". `Silent` becomes false again.
  void Reset();

  /// Present block identity; the next call gives one more.
  std::int32_t NextBlockID() { return BlockID++; }
  /// A line with that number was read.
  void RaiseLineNumber(std::int32_t number) {
    if (NumberedLines)
      NumberedLines->push_back(number);
    else if (CurrentLineNumber <= number)
      CurrentLineNumber = number + 10;
  }
  /// Present key as decimal text ("0" first); the next call gives the next number.
  std::string Key() { return std::to_string(mKeyIncrement++); }

  /// Reads the setting behind `AutoAppendUntagged`; installed by the services room.
  using AutoAppendReader = bool (*)();
  void SetAutoAppendReader(AutoAppendReader reader) { mAutoAppendReader = reader; }

 private:
  AutoAppendReader mAutoAppendReader = nullptr;
};

}  // namespace vendrel
