#pragma once
// The lines of one block, with what is put between them.

#include <memory>

#include "writer/Attributes.h"
#include "writer/LineNumbers.h"
#include "writer/SourceStream.h"

namespace vendrel {

/// How the text of a module is encoded when it is written: as its file was read, a new one as its
/// project file.
TextForm WriteFormOf(const Component& component);

/// Writes one block.
class BlockWriter {
 public:
  BlockWriter(Block& block, SourceStream& stream);
  void Run();

 private:
  void ChooseAttributes();
  void Line(std::int32_t index);
  void AttributeLine(std::int32_t index);
  bool DescriptionStays(std::string_view text);
  bool WholeTexts() const { return mOptions.Reading.WholeHelpDescriptions; }
  void EventAttributes(std::int32_t index);
  void ProcedureAttributes();
  void PropertyAttributes();
  void VariableAttributes();
  template <typename Element>
  bool NeedsHelpLine(const Element& element, std::string_view name) const;

  Block& mBlock;
  Component& mComponent;
  const ProjectOptions& mOptions;
  const CodeLines& mLines;
  SourceStream& mStream;
  HelpIDs mHelpIDs;
  std::unique_ptr<LineNumbers> mNumbers;
  /// Behind this line, or the first below it that is not continued, attributes are put; 0: never.
  std::int32_t mAttributesBehind = 0;
  bool mWriteAttributes = true;
  bool mFirstPropertyBlock = false;
};

}  // namespace vendrel
