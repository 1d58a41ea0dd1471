#pragma once
// The lines of one block, with what is put between them.

#include <memory>
#include <string>
#include <vector>

#include "writer/Attributes.h"
#include "writer/LineNumbers.h"
#include "writer/SourceStream.h"

namespace vendrel {

/// Whether a line gives the module its description.
bool IsModuleDescription(const CodeLines& lines, std::int32_t index);

/// How the text of a module is encoded when it is written: as its file was read, a new one as its
/// project file.
TextForm WriteFormOf(const Component& component);

/// What the header of a module is written with that does not stand in its block.
struct HeaderLines {
  /// Descriptions that stand there give way to one of these.
  bool ReplaceDescription = false;
  std::vector<std::string> New;
};

/// Writes one block.
class BlockWriter {
 public:
  BlockWriter(Block& block, SourceStream& stream);
  /// For a block of attributes: new lines are put behind its last attribute line, where a section
  /// may go on with comments; to be set before `Run`.
  void TakeHeader(const HeaderLines& header);
  void Run();

 private:
  void PutNew();
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
  const HeaderLines* mHeader = nullptr;
  /// Line behind which the new lines of the header go.
  std::int32_t mLastAttribute = 0;
  /// Behind this line, or the first below it that is not continued, attributes are put; 0: never.
  std::int32_t mAttributesBehind = 0;
  bool mWriteAttributes = true;
  bool mFirstPropertyBlock = false;
};

}  // namespace vendrel
