// Lines of a source file on their way into its modules.

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "dotnet/SourceScan.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"

namespace vendrel {

void SourceScan::AddLine(Component& component, std::string_view line, std::string_view next) {
  ModuleIntake& intake = component.Intake();
  intake.NextLine = next;
  intake.PhysicalLine = mLine;
  intake.LineStored = false;
  try {
    component.AddLineOfCode(line);
  } catch (const VendrelError& error) {
    intake.EndsStatement = intake.IsWholeLine = intake.IsPlainLine = false;
    VendrelError passed = error;
    passed.AddContext("SourceScan.AddLine", "SourceScan", mLine).Local("Line", line).Of(component);
    if (mProject.AskAboutFailure(passed, mFile.FileName.FullPath(), mLine) == StepOver::Raise)
      throw passed;
    Report(DiagnosticCode::LineNotUnderstood, {Trim(line)});
    const bool stored = intake.LineStored;
    FinishPart(component);
    if (!stored) StoreRaw(component, line);
  }
  intake.NextLine = {};  // what a client adds later has no such line behind it
  if (intake.DetachedBlock) NoteDelegate(intake.DetachedBlock);
  NoteBlock(component);
}

void SourceScan::NoteBlock(const Component& component) {
  if (mTypes.empty() || !mTypes.back().IsLaterPart) return;
  OpenType& part = mTypes.back();
  Block* block = component.CurrentBlock.Get();
  if (part.Module.get() != &component || !block) return;
  if (part.Blocks.empty() || part.Blocks.back().Get() != block) part.Blocks.emplace_back(block);
}

// A line of a list of its own, not interpreted.
void SourceScan::StoreRaw(Component& component, std::string_view line, LineTypeEnum type) {
  Block& block = *component.CurrentBlock.Get();
  ParsedLine parsed;
  parsed.Text = line;
  parsed.StatementPart = line;
  parsed.LineType = type;
  ++block.Intake().mCurrentLineIndex;
  StoreLine(block, parsed);
}

void SourceScan::NoteDelegate(const std::shared_ptr<Block>& block) {
  if (!(mRules.NetKeepSource || mRules.NetXmlComments)) return;
  for (auto known = mScanned.Delegates.rbegin(); known != mScanned.Delegates.rend(); ++known)
    if (*known == block) return;
  mScanned.Delegates.push_back(block);
}

// The lines of a statement that never became complete.
void SourceScan::FinishPart(Component& component) {
  ModuleIntake& intake = component.Intake();
  for (PendingLine& pending : intake.ContinuationBuffer)
    StoreLine(*component.CurrentBlock.Get(), pending.Line);
  intake.ContinuationBuffer.clear();
  intake.PreviousContinued = false;
}

void SourceScan::FeedLines(Component& component, const SourceStatement& statement) {
  ModuleIntake& intake = component.Intake();
  for (std::size_t i = 0; i < statement.Lines.size(); ++i) {
    mLine = statement.FirstLine + static_cast<std::int32_t>(i);
    if (i >= statement.InsideFrom) {
      if (i == statement.InsideFrom) FinishPart(component);
      StoreRaw(component, statement.Lines[i]);
      continue;
    }
    // What a statement declares stands in front of the first literal of several lines.
    intake.EndsStatement = i + 1 == statement.InsideFrom;
    intake.IsWholeLine = statement.Shape != NetLineShape::Unclear;
    intake.IsPlainLine = statement.Shape == NetLineShape::Plain;
    AddLine(component, statement.Lines[i],
            i + 1 < statement.Lines.size() ? statement.Lines[i + 1] : statement.Next);
  }
  intake.EndsStatement = intake.IsWholeLine = intake.IsPlainLine = false;
}

}  // namespace vendrel
