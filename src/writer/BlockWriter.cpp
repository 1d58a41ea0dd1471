#include "writer/BlockWriter.h"

#include "diagnostics/Context.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

Component& ComponentOf(const Block& block) {
  Component* component = block.Component.Get();
  if (!component) throw VendrelError(errObjectNotSet, "the block has no component");
  return *component;
}

const CodeLines& LinesOf(const Block& block) {
  static const CodeLines none;
  const CodeLines* lines = block.CodeLines.IfAny();
  return lines ? *lines : none;
}

bool IsSection(BlockTypeEnum type) { return type == btDeclarations || type == btAttributes; }

// The subject of "Attribute Name.VB_Description = ...".
std::string_view DescribedName(std::string_view text) {
  const std::size_t blank = text.find(' ');
  if (blank == std::string_view::npos) return {};
  const std::string_view behind = text.substr(blank + 1);
  return behind.substr(0, behind.find('.'));
}

}  // namespace

BlockWriter::BlockWriter(Block& block, SourceStream& stream)
    : mBlock(block),
      mComponent(ComponentOf(block)),
      mOptions(block.Options()),
      mLines(LinesOf(block)),
      mStream(stream),
      mHelpIDs(block) {
  ChooseAttributes();
  if (mOptions.AddLineNumbers && !mComponent.NoLineNumbers && !IsSection(block.BlockType()))
    mNumbers = std::make_unique<LineNumbers>(mLines, mOptions.Reading.NumberableLines);
}

void BlockWriter::ChooseAttributes() try {
  const BlockTypeEnum type = mBlock.BlockType();
  if (type != btSub && type != btFunction && !mBlock.IsPropertyType()) return;
  mAttributesBehind = std::max(mBlock.StartLine(), 1);
  if (!mBlock.IsPropertyType()) return;
  mFirstPropertyBlock = mComponent.IsFirstPropertyBlock(&mBlock);
  mWriteAttributes = mFirstPropertyBlock;
}
VENDREL_CONTEXT(trace::Me(mBlock))

void BlockWriter::TakeHeader(const HeaderLines& header) {
  mHeader = &header;
  mLastAttribute = mLines.Count();
  while (mLastAttribute > 0 && mLines.LineType(mLastAttribute) != ATTRIBUTE_LINE) --mLastAttribute;
  if (mLastAttribute == 0) mLastAttribute = mLines.Count();
}

void BlockWriter::PutNew() {
  for (const std::string& line : mHeader->New) mStream.Line(line);
}

void BlockWriter::Run() {
  const std::int32_t count = mLines.Count();
  bool attributesDone = mAttributesBehind == 0;
  if (mHeader && mLastAttribute == 0) PutNew();
  for (std::int32_t i = 1; i <= count; ++i) {
    if (mLines.NotInSource(i)) {
      if (mNumbers) mNumbers->Pass(i);
      continue;
    }
    if (!mHeader || !mHeader->ReplaceDescription || !IsModuleDescription(mLines, i)) Line(i);
    if (mHeader && i == mLastAttribute) PutNew();
    if (attributesDone || i < mAttributesBehind || mLines.Continued(i)) continue;
    attributesDone = true;
    ProcedureAttributes();
  }
  if (mBlock.BlockType() == btDeclarations) VariableAttributes();
}

void BlockWriter::Line(std::int32_t index) try {
  const LineTypeEnum type = mLines.LineType(index);
  if (type == ATTRIBUTE_LINE) return AttributeLine(index);
  mStream.Line(mLines, index, mNumbers ? mNumbers->Before(index) : std::string_view());
  if (type == EVENT_DECLARATION) EventAttributes(index);
}
VENDREL_CONTEXT_AT(mStream.LineNumber(), index, trace::Me(mBlock))

void BlockWriter::AttributeLine(std::int32_t index) {
  const std::string_view text = mLines.LineView(index);
  if (IsDescriptionLine(text)) {
    if (DescriptionStays(text)) mStream.Line(mLines, index);
    return;
  }
  const bool stays = mWriteAttributes && !mFirstPropertyBlock;
  if (!stays && !mOptions.Reading.KeepAttributePlaces) return;
  if (!mOptions.Reading.KeepHelpAttributes) return mStream.Line(mLines, index);
  const auto kept = mHelpIDs.Kept(text);
  if (kept && *kept == text)
    mStream.Line(mLines, index);
  else if (kept)
    mStream.Replaced(mLines, index, *kept);
}

// A description gives way to the one that is written for its element; where none may be lost, or
// attribute lines keep their places, only if there is one.
bool BlockWriter::DescriptionStays(std::string_view text) {
  if (!mOptions.WriteHelpDescriptions) return true;
  if (!mOptions.Reading.KeepHelpAttributes && !WholeTexts()) return false;
  const std::string_view name = DescribedName(text);
  if (mBlock.BlockType() != btDeclarations)
    return mAttributesBehind == 0    ? true
           : mBlock.IsPropertyType() ? !PropertyBrowserText(mBlock, WholeTexts())
                                     : !BrowserText(mBlock, WholeTexts());
  if (EventDeclaration* event = mComponent.EventDeclarations.Item(name))
    return !BrowserText(*event, WholeTexts());
  Variables* variables = mBlock.Variables.IfAny();
  Variable* variable = variables ? variables->Item(name) : nullptr;
  return !variable || variable->HelpContextID <= 0 || !BrowserText(*variable, WholeTexts());
}

// Help ID lines that stand in the source are not written again.
template <typename Element>
bool BlockWriter::NeedsHelpLine(const Element& element, std::string_view name) const {
  if (element.HelpContextID <= 0) return false;
  if (!mOptions.Reading.KeepHelpAttributes) return true;
  if (element.HelpContextID == element.HelpContextIDRead) return false;
  if (mHelpIDs.HasLineOf(name)) return false;
  if (!mBlock.IsPropertyType()) return true;
  for (Block* block : mComponent.Blocks.Named(name))
    if (block->IsPropertyType() && HelpIDs(*block).HasLineOf(name)) return false;
  return true;
}

void BlockWriter::EventAttributes(std::int32_t index) try {
  EventDeclaration* event =
      mComponent.EventDeclarations.Item(static_cast<int>(mLines.EventIndex(index)));
  if (!event) return;
  if (NeedsHelpLine(*event, event->Name))
    mStream.Line(HelpIDLine(event->Name, event->HelpContextID));
  if (!mOptions.WriteHelpDescriptions) return;
  if (const auto text = BrowserText(*event, WholeTexts()))
    mStream.Line(DescriptionLine(event->Name, *text));
}
VENDREL_CONTEXT_AT(mStream.LineNumber(), index, trace::Me(mBlock))

void BlockWriter::ProcedureAttributes() try {
  if (mFirstPropertyBlock) {
    PropertyAttributes();
  } else if (mOptions.WriteHelpDescriptions && mWriteAttributes) {
    if (const auto text = BrowserText(mBlock, WholeTexts()))
      mStream.Line(DescriptionLine(mBlock.Name(), *text));
  }
  if (mWriteAttributes && NeedsHelpLine(mBlock, mBlock.Name()))
    mStream.Line(HelpIDLine(mBlock.Name(), mBlock.HelpContextID));
}
VENDREL_CONTEXT_AT(mStream.LineNumber(), trace::Me(mBlock))

// The attributes of all procedures of a property stand behind its first one.
void BlockWriter::PropertyAttributes() try {
  if (!mOptions.Reading.KeepAttributePlaces)
    for (const std::string& line : mComponent.AttributeLines(mBlock.Name()))
      if (line.find(".VB_Description = ") == std::string::npos) mStream.Line(line);
  if (!mOptions.WriteHelpDescriptions) return;
  if (const auto text = PropertyBrowserText(mBlock, WholeTexts()))
    mStream.Line(DescriptionLine(mBlock.Name(), *text));
}
VENDREL_CONTEXT_AT(mStream.LineNumber(), trace::Me(mBlock))

void BlockWriter::VariableAttributes() try {
  Variables* variables = mBlock.Variables.IfAny();
  if (!variables) return;
  for (Variable& variable : *variables) {
    if (variable.HelpContextID <= 0) continue;
    if (NeedsHelpLine(variable, variable.Name))
      mStream.Line(VarHelpIDLine(variable.Name, variable.HelpContextID));
    if (!mOptions.WriteHelpDescriptions) continue;
    if (const auto text = BrowserText(variable, WholeTexts()))
      mStream.Line(VarDescriptionLine(variable.Name, *text));
  }
}
VENDREL_CONTEXT_AT(mStream.LineNumber(), trace::Me(mBlock))

bool IsModuleDescription(const CodeLines& lines, std::int32_t index) {
  return lines.LineType(index) == ATTRIBUTE_LINE &&
         lines.LineView(index).starts_with("Attribute VB_Description");
}

TextForm WriteFormOf(const Component& component) {
  if (component.SourceForm) return *component.SourceForm;
  const VBProject* project = component.VBProject();
  return project && project->SourceForm ? TextForm(*project->SourceForm) : TextForm();
}

void Block::WriteOut(FileSystemObject& f) try {
  const vendrel::Component& component = ComponentOf(*this);
  SourceStream stream(f, WriteFormOf(component), component.SourceForm.get(),
                      Options().Reading.KeepLineEnds);
  BlockWriter(*this, stream).Run();
  stream.Finish();
}
VENDREL_CONTEXT(trace::Parameter("f", f.FullPath()), *this)

}  // namespace vendrel
