#pragma once
// The control tree at the head of a form-like module.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "intake/CompanionFile.h"
#include "intake/ModuleIntake.h"
#include "model/Component.h"
#include "text/vb6/PlainStatements.h"

namespace vendrel {

/// Reads the description between `Begin` and `End` from the open file of a module. Open containers
/// stand on a stack of our own: their depth is the input's.
class ControlReader {
 public:
  ControlReader(Component& component, Block& block, ModuleIntake& intake);
  /// Reads from behind the `Begin` line of the root to its `End`, or to the end of the file.
  std::shared_ptr<VBControl> Read(std::string_view beginLine);

 private:
  struct OpenControl {
    std::shared_ptr<VBControl> Control;
    bool Indexed = false;
    std::size_t CaptionPosition = 0;
  };

  void Open(std::string_view beginLine);
  void Close(bool atEndLine);
  void KeepEnd(VBControl& control, bool atEndLine) const;
  void TakeLine(std::string_view line);
  void SkipProperty();
  void TakeProperty(std::string_view line);
  void TakeCaption(std::string_view value);
  bool ReadCompanion(std::string_view value);
  bool TakeCompanionText(std::string_view property, std::string_view value, SharedText& text);
  std::string_view NextLine();
  std::uint32_t OffsetOf(std::string_view line) const;

  Component& mComponent;
  Block& mBlock;
  ModuleIntake& mIntake;
  ClassifierRules mRules;
  bool mMayBePlain;
  bool mTakesGlances;
  std::string mPlainBuffer;
  std::vector<OpenControl> mOpen;
  std::shared_ptr<VBControl> mRoot;
  std::string_view mLine;  // the one at hand, as it stands
  std::string mCompanionName;
  std::string mCompanionBytes;
  CompanionFile mCompanion;
};

}  // namespace vendrel
