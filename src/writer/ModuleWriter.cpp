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

// Up to `prefix`, case counting, as the lines of a module are written.
bool IsLine(const CodeLines& lines, std::int32_t index, std::string_view prefix) {
  return lines.LineType(index) == ATTRIBUTE_LINE && lines.LineView(index).starts_with(prefix);
}

void RemoveLines(CodeLines& lines, bool helpIDs, bool descriptions) {
  for (std::int32_t i = lines.Count(); i >= 1; --i)
    if ((helpIDs && IsLine(lines, i, "Attribute VB_HelpID")) ||
        (descriptions && IsLine(lines, i, "Attribute VB_Description")))
      lines.Remove(i);
}

// At the end of the block, as documented. The complete reading puts it behind the last attribute
// line: a section without declarations goes on with comments, where the compiler takes none.
void Append(CodeLines& lines, const std::string& text, bool behindAttributes) {
  std::int32_t last = behindAttributes ? lines.Count() : 0;
  while (last > 0 && lines.LineType(last) != ATTRIBUTE_LINE) --last;
  lines.Add(InitialiseCodeLine(text, State().CurrentLanguageVersion), 0, last);
}

// Whether a line of the source gives the module its help ID, wherever damage has put it.
bool HasHelpIDLine(Component& component) {
  return std::any_of(component.Blocks.begin(), component.Blocks.end(),
                     [](Block& block) { return HelpIDs(block).HasLineOfModule(); });
}

// A module with a help ID gets its attributes anew.
void RewriteAttributes(Component& component) try {
  if (component.HelpContextID == 0) return;
  const ProjectOptions& options = component.Options();
  const bool keeps = options.Reading.KeepHelpAttributes;
  const bool stands =
      keeps && (component.HelpContextID == component.HelpContextIDRead || HasHelpIDLine(component));
  std::optional<std::string> description;
  if (options.WriteHelpDescriptions)
    description = ModuleBrowserText(component, options.Reading.WholeHelpDescriptions);
  if (stands && !description) return;
  Block* block = component.BlockOfType(btAttributes, true);
  if (!block) block = component.NewBlock(btAttributes);
  CodeLines& lines = *block->CodeLines;
  RemoveLines(lines, !keeps, description.has_value());
  if (!stands)
    Append(lines, "Attribute VB_HelpID = " + std::to_string(component.HelpContextID), keeps);
  if (description) Append(lines, "Attribute VB_Description=\"" + *description + "\"", keeps);
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
  for (Block* block : BlocksInOrder(component)) BlockWriter(*block, stream).Run();
  stream.Finish();
}
VENDREL_CONTEXT(trace::Parameter("target", target.FullPath()), trace::Me(component))

void Open(FileSystemObject& target) {
  try {
    target.OpenFile(omWrite, 2);
  } catch (const VendrelError&) {
    TellNotOpened(target.LeafName());
    throw;
  }
}

}  // namespace

void TellRefused(std::string_view text, std::string_view caption) {
  TellBox(DiagnosticCode::WriteRefused, {text}, text, caption, msExclamation);
}

void TellNotOpened(std::string_view leafName) {
  const std::string text = "Error opening " + std::string(leafName) +
                           " for write.  Check that the target file is not read-only.";
  Tell(DiagnosticCode::WriteRefused, {text});
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
    TellBox(DiagnosticCode::Told, {text}, text, "Error", msExclamation);
    return false;
  }
  FileSystemObject target(path);
  if (target.Exists() && target.IsReadOnly()) {
    TellRefused("Could not write to the file '" + target.FullPath() +
                    "' as the file is read-only.  Processing will continue, but source "
                    "code for this file will not be written.",
                "File read-only");
    return false;
  }
  target.CreateFolderPath();
  target.SetWriteForm(WriteFormOf(component));
  Open(target);
  RewriteAttributes(component);
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
