#include "writer/ModuleWriter.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "core/Ascii.h"
#include "core/MessageService.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "project/VBProject.h"
#include "writer/BlockWriter.h"
#include "writer/OutputNames.h"

namespace vendrel {
namespace {

bool IsHelpID(const CodeLines& lines, std::int32_t index) {
  return lines.LineType(index) == ATTRIBUTE_LINE &&
         lines.LineView(index).starts_with("Attribute VB_HelpID");
}

// Whether a line of the source gives the module its help ID, wherever damage has put it.
bool HasHelpIDLine(Component& component) {
  return std::any_of(component.Blocks.begin(), component.Blocks.end(),
                     [](Block& block) { return HelpIDs(block).HasLineOfModule(); });
}

// What a module with a help ID gets into its header.
HeaderLines HeaderOf(Component& component) {
  HeaderLines header;
  if (component.HelpContextID == 0) return header;
  const ProjectOptions& options = component.Options();
  const bool stands =
      options.Reading.KeepHelpAttributes &&
      (component.HelpContextID == component.HelpContextIDRead || HasHelpIDLine(component));
  if (!stands)
    header.New.push_back("Attribute VB_HelpID = " + std::to_string(component.HelpContextID));
  if (!options.WriteHelpDescriptions) return header;
  const auto text = ModuleBrowserText(component, options.Reading.WholeHelpDescriptions);
  header.ReplaceDescription = text.has_value();
  if (text) header.New.push_back("Attribute VB_Description=\"" + *text + "\"");
  return header;
}

// As documented, the new lines become lines of the block, at its end, in the place of the old ones.
// The complete reading leaves the block alone.
void RewriteAttributes(Component& component, const HeaderLines& header) try {
  if (header.New.empty()) return;
  Block* block = component.BlockOfType(btAttributes, true);
  if (!block) block = component.NewBlock(btAttributes);
  CodeLines& lines = *block->CodeLines;
  for (std::int32_t i = lines.Count(); i >= 1; --i)
    if (IsHelpID(lines, i) || (header.ReplaceDescription && IsModuleDescription(lines, i)))
      lines.Remove(i);
  for (const std::string& text : header.New)
    lines.Add(InitialiseCodeLine(text, State().CurrentLanguageVersion));
}
VENDREL_CONTEXT(trace::Me(component))

bool IsRead(const Block& block) {
  const CodeLines* lines = block.CodeLines.IfAny();
  for (std::int32_t i = 1; lines && i <= lines->Count(); ++i)
    if (lines->SourceOffset(i)) return true;
  return false;
}

// First the attributes, then the declarations. In the complete reading that holds for new blocks
// only: damaged source has attributes behind procedures.
std::vector<Block*> BlocksInOrder(Component& component) {
  const bool keepsOrder = component.Options().Reading.KeepBlockOrder;
  std::vector<Block*> order;
  for (Block& block : component.Blocks) order.push_back(&block);
  const auto moveForward = [&](auto first, BlockTypeEnum type) {
    return std::stable_partition(first, order.end(), [&](const Block* block) {
      return block->BlockType() == type && !(keepsOrder && IsRead(*block));
    });
  };
  auto behind = moveForward(order.begin(), btAttributes);
  while (behind != order.end() && (*behind)->BlockType() == btAttributes) ++behind;
  moveForward(behind, btDeclarations);
  return order;
}

void WriteBlocks(Component& component, FileSystemObject& target) try {
  SourceStream stream(target, WriteFormOf(component), component.SourceForm.get(),
                      component.Options().Reading.KeepLineEnds);
  HeaderLines header = HeaderOf(component);
  if (!component.Options().Reading.KeepHelpAttributes) {
    RewriteAttributes(component, header);
    header = {};
  }
  const Block* headed = component.Blocks.FirstOfType(btAttributes);
  if (!headed)
    for (const std::string& line : header.New) stream.Line(line);
  for (Block* block : BlocksInOrder(component)) {
    BlockWriter writer(*block, stream);
    if (block == headed && !header.New.empty()) writer.TakeHeader(header);
    writer.Run();
  }
  stream.Finish();
}
VENDREL_CONTEXT(trace::Parameter("target", target.FullPath()), trace::Me(component))

void Open(FileSystemObject& target) {
  try {
    target.OpenFile(omWrite, 2);
  } catch (const VendrelError&) {
    ReportNotOpened(target.LeafName());
    throw;
  }
}

}  // namespace

void ReportRefused(std::string_view text, std::string_view caption) {
  ReportBox(DiagnosticCode::WriteRefused, {text}, text, caption, msExclamation);
}

void ReportNotOpened(std::string_view leafName) {
  const std::string text = "Error opening " + std::string(leafName) +
                           " for write.  Check that the target file is not read-only.";
  Report(DiagnosticCode::WriteRefused, {text});
  MessageService::Current().Show(text, "File access error", msExclamation);
}

bool WriteModule(Component& component, std::string_view path) try {
  VBProject* project = component.VBProject();
  const DiagnosticScope scope(project ? &project->Diagnostics : nullptr,
                              component.FileName.FullPath());
  if (component.LoadState != lsFullyLoaded) {
    // Why it is not loaded has been told; what was never read cannot be lost by writing.
    constexpr std::string_view text =
        "Attempt to write out a component which is not fully loaded !";
    ReportBox(DiagnosticCode::Told, {text}, text, "Error", msExclamation);
    return false;
  }
  FileSystemObject target(path);
  if (target.Exists() && target.IsReadOnly()) {
    ReportRefused("Could not write to the file '" + target.FullPath() +
                      "' as the file is read-only.  Processing will continue, but source "
                      "code for this file will not be written.",
                  "File read-only");
    return false;
  }
  target.CreateFolderPath();
  target.SetWriteForm(WriteFormOf(component));
  Open(target);
  try {
    WriteBlocks(component, target);
  } catch (const CharactersRefused&) {
    target.Discard();  // told where it was met; the file stays as it was
    return false;
  }
  target.CloseFile();
  return true;
}
VENDREL_CONTEXT(component, path)

bool Component::WriteOut() try {
  const Workspace::Use use(Options().Workspace());
  vendrel::VBProject* project = VBProject();
  WriteModule(*this, project ? ComponentOutputFileName(*project, *this) : FileName.FullPath());
  return false;
}
VENDREL_CONTEXT(*this)

}  // namespace vendrel
