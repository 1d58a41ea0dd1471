// Reads a module file: the header, the attributes, and then every line through `AddLineOfCode`.

#include <string>

#include "comments/TaggedCommentRules.h"
#include "core/Ascii.h"
#include "core/Utf8.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/FormControls.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "intake/vb6/PlainLines.h"
#include "model/Component.h"
#include "model/ModuleKinds.h"
#include "project/ModulesAhead.h"
#include "project/VBProject.h"
#include "services/BinaryText.h"
#include "services/FileSource.h"
#include "services/Paths.h"

namespace vendrel {
namespace {

// A host is told of tagged comments on its own thread.
bool MayTellOfTags(const VBProject& project, std::string_view text) {
  return !project.NewTaggedComment.Empty() && text.find("##") != std::string_view::npos;
}

// One module on its way from file to tree.
class ModuleReader {
 public:
  explicit ModuleReader(Component& component)
      : mComponent(component),
        mIntake(component.Intake()),
        mFile(component.FileName),
        mPlainLines(component, mIntake) {}

  void Load(bool onlyHeader);

 private:
  bool Open();
  void OpenAgain();
  void ReportMissing();
  void ReportSpelling() const;
  void ReportInProject(DiagnosticCode code,
                       std::initializer_list<std::string_view> arguments) const;
  void ReportDirectionControls(const SourceText& source) const;
  void ReportKind() const;
  void ReadFirstLine();
  void ReadHeader();
  void ReadControls();
  void ReadAttributes();
  bool ReadBody(bool onlyHeader);
  void AddLineOfCode(std::string_view text);
  void StepOver(const VendrelError& error, std::string_view procedure, std::string_view text);
  vendrel::StepOver Ask(const VBProject& project, const VendrelError& failure) const;
  void StorePending(Block& block);
  void Finish();
  std::string_view NextLine();
  ParsedLine Classify(std::string_view text);

  Component& mComponent;
  ModuleIntake& mIntake;
  FileSystemObject& mFile;
  PlainLines mPlainLines;
  std::string_view mText;   // the last physical line read
  bool mHoldsLine = false;  // that line is not consumed yet
};

void ModuleReader::Load(bool onlyHeader) {
  VBProject* project = mComponent.VBProject();
  AsideModule* aside = AsideModule::Current();
  const DiagnosticScope scope(aside     ? &aside->Told()
                              : project ? &project->Diagnostics
                                        : nullptr,
                              mFile.FullPath(), &mIntake.PhysicalLine);
  if (!mFile.Exists()) return ReportMissing();
  mIntake.ContinuationBuffer.clear();
  if (mIntake.AlreadyPopulated && !mIntake.PreScannedFile) return Finish();
  if (mIntake.PreScannedFile) {
    OpenAgain();
  } else {
    if (!Open()) return;
    mIntake.AlreadyPopulated = true;
    ReadFirstLine();
    ReadHeader();
    ReadAttributes();
    mComponent.LoadState = lsLoadedHeader;
  }
  if (!ReadBody(onlyHeader)) return;
  mFile.CloseFile();
  if (mIntake.Reading.KeepLinesBehindSeparators && mComponent.CurrentBlock)
    StorePending(*mComponent.CurrentBlock.Get());
  if (mComponent.CurrentBlock && mComponent.TaggedCommentBuffer.IfAny())
    OfferTaggedComments(mComponent, *mComponent.CurrentBlock.Get());
  mComponent.LoadState = lsFullyLoaded;
  Finish();
}

void ModuleReader::Finish() {
  Block* block = mComponent.CurrentBlock.Get();
  if (!block) return;
  block->Intake().CommentBuffer.clear();
  block->RestIntake();
  if (CodeLines* lines = block->CodeLines.IfAny(); lines && !lines->Unloaded()) lines->Shrink();
  if (mComponent.LoadState != lsFullyLoaded) return;
  mIntake.Rest();
  mComponent.Fit();
}

void ModuleReader::ReportMissing() {
  if (mIntake.Told) return;
  mIntake.Told = true;
  const std::string path = mFile.FullPath();
  if (path.empty()) return;
  if (mFile.IsFolder()) return Report(DiagnosticCode::NotAFile, {path});
  const FoundPath found = mFile.Find();
  if (found.Failure)  // it may be there
    return Report(DiagnosticCode::UnreadableFile,
                  {path, FileError(found.Failure, found.Path).Text()});
  ReportInProject(DiagnosticCode::MissingModule, {found.Path.empty() ? path : found.Path});
}

// What is wrong with the list of modules is mended where the list stands.
void ModuleReader::ReportInProject(DiagnosticCode code,
                                   std::initializer_list<std::string_view> arguments) const {
  const VBProject* project = mComponent.VBProject();
  if (!project || mComponent.SourceLine() == 0) return Report(code, arguments);
  ReportAt(code, project->FileName.FullPath(), mComponent.SourceLine(), arguments);
}

// Both spellings as seen from the project file, as it would have them.
void ModuleReader::ReportSpelling() const {
  const PathMatch match = mFile.Match();
  if (match != PathMatch::OtherCase && match != PathMatch::ShortName) return;
  const FileSystemObject onDisk(mFile.NativePath());
  const FileSystemObject* project = mFile.BaseFile();
  const std::string listed = mFile.RelativePath();
  const std::string spelled =
      project ? RelativePath(project->FolderPath(), onDisk.FullPath()) : onDisk.FullPath();
  if (listed == spelled) return;  // it is the folder of the project that was named in another case
  ReportInProject(DiagnosticCode::ModuleUnderOtherCase, {listed, spelled});
}

bool ModuleReader::Open() {
  if (mIntake.Told) return false;
  try {
    mFile.OpenFile(omRead);
  } catch (const VendrelError& error) {
    mIntake.Told = true;
    Report(DiagnosticCode::UnreadableFile, {mFile.FullPath(), error.Text()});
    return false;
  }
  AsideModule* aside = AsideModule::Current();
  if (aside && MayTellOfTags(*mComponent.VBProject(), mFile.Source()->Text)) {
    mFile.CloseFile();
    aside->GiveBack();
    return false;
  }
  if (LooksBinary(mFile.Source()->Text)) {
    mFile.CloseFile();
    mIntake.Told = true;
    Report(DiagnosticCode::BinaryModule, {mFile.FullPath()});
    return false;
  }
  ReportSpelling();
  const std::shared_ptr<const SourceText>& source = mFile.Source();
  mIntake.Text = std::shared_ptr<const std::string>(source, &source->Text);
  mComponent.SourceForm = source;
  if (source->Text.empty()) Report(DiagnosticCode::EmptyModule, {mFile.FullPath()});
  if (source->HasNul) Report(DiagnosticCode::NulCharacters, {mFile.FullPath()});
  ReportDirectionControls(*source);
  ReportKind();
  return true;
}

// Goes on behind the lines that an earlier load took, in the text that it read: lines of two texts
// in one module would have no common place to be written back to.
void ModuleReader::OpenAgain() try {
  mFile.OpenDecoded(mComponent.SourceForm);
  mIntake.PreScannedFile = false;
  mIntake.PhysicalLine = 0;
  for (std::int32_t i = 0; i < mComponent.LinesAlreadyRead && !mFile.AtEnd(); ++i)
    mText = NextLine();
}
VENDREL_CONTEXT_AT(LineReached(), trace::Field("FileName", mFile.FullPath()), trace::Me(mComponent))

// Each line with characters that turn what is behind them to another direction.
void ModuleReader::ReportDirectionControls(const SourceText& source) const {
  const std::string_view text = source.Text;
  if (source.Encoding == TextEncoding::Ascii || FirstDirectionControl(text) == text.size()) return;
  std::int32_t number = 0;
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view line = TakeLine(rest);
    ++number;
    std::size_t at = FirstDirectionControl(line);
    if (at == line.size()) continue;
    ReportAt(DiagnosticCode::DirectionControl, mFile.FullPath(), number,
             {CodePointName(TakeCharacter(line, at))});
  }
}

// The first line tells the kind that the file has, whatever its extension says.
void ModuleReader::ReportKind() const {
  const std::string_view text = *mIntake.Text;
  const std::string_view first = TrimLeft(text.substr(0, 256));
  if (first.empty()) return;
  const bool version = StartsWithNoCaseAscii(first, "VERSION ");
  const bool classFile = StartsWithNoCaseAscii(first, KindOfModule(ftClass).Header);
  const ModuleKind& kind = KindOfModule(mComponent.FileType);
  bool fits = true;
  if (kind.Type == ftClass) fits = classFile;
  if (kind.IsFormLike) fits = version && !classFile;
  if (kind.Type == ftModule) fits = !version;
  if (!fits) Report(DiagnosticCode::OtherKind, {mFile.FullPath(), kind.FullWord});
}

std::string_view ModuleReader::NextLine() {
  ++mIntake.PhysicalLine;
  return mFile.NextLine();
}

// A header line is stored as it is; one that cannot be judged stays `OTHER`.
ParsedLine ModuleReader::Classify(std::string_view text) {
  ParsedLine line;
  mIntake.Classifier.PartLines = false;
  mIntake.Classifier.First(text, line);
  mIntake.StatementLine = mIntake.PhysicalLine;
  return line;
}

void ModuleReader::ReadFirstLine() {
  Block* block = mComponent.NewBlock(btAttributes);
  mComponent.CurrentBlock = block;
  mText = NextLine();
  ++mComponent.LinesAlreadyRead;
  ParsedLine line = Classify(mText);
  try {
    block->AddParsedLine(line);
  } catch (const VendrelError& error) {
    StepOver(error, "ModuleReader.ReadFirstLine", mText);
  }
}

void ModuleReader::ReadHeader() try {
  std::int32_t beginCount = 0;
  bool started = false;
  Block& block = *mComponent.CurrentBlock.Get();
  while (!mFile.AtEnd()) {
    if (StartsWithNoCaseAscii(mText, "attribute ") || mComponent.FileType == ftModule) return;
    if (StartsWithNoCaseAscii(mText, "begin")) {
      if (StartsWithNoCaseAscii(Trim(mText), "begin vb.mdiform ")) mComponent.SetIsMDI(true);
      if (KindOfModule(mComponent.FileType).IsFormLike)
        ReadControls();
      else
        ++beginCount;
      started = true;
    } else if (StartsWithNoCaseAscii(mText, "end")) {
      --beginCount;
    }
    if (mFile.AtEnd()) return;
    mText = NextLine();
    ++mComponent.LinesAlreadyRead;
    StoreLine(block, Classify(mText));
    if (beginCount == 0 && started) return;
  }
}
VENDREL_CONTEXT_AT(LineReached(), trace::Field("FileName", mFile.FullPath()), trace::Me(mComponent))

void ModuleReader::ReadControls() {
  ControlReader reader(mComponent, *mComponent.CurrentBlock.Get(), mIntake);
  mComponent.VBControl = reader.Read(mText);
}

void ModuleReader::ReadAttributes() {
  Block& block = *mComponent.CurrentBlock.Get();
  while (!mFile.AtEnd()) {
    mText = NextLine();
    ++mComponent.LinesAlreadyRead;
    if (!StartsWithNoCaseAscii(mText, "ATTRIBUTE ")) {
      mHoldsLine = true;
      return;
    }
    ParsedLine line = Classify(mText);
    mIntake.LineStored = false;
    try {
      block.AddParsedLine(line);
    } catch (const VendrelError& error) {
      StepOver(error, "ModuleReader.ReadAttributes", mText);
    }
  }
}

// False when the load stops behind the declarations.
bool ModuleReader::ReadBody(bool onlyHeader) {
  while (!mFile.AtEnd()) {
    const Block* block = mComponent.CurrentBlock.Get();
    const BlockTypeEnum type = block ? block->BlockType() : btUnrecognised;
    if (onlyHeader && type != btAttributes && type != btDeclarations) {
      mFile.CloseFile();
      mIntake.PreScannedFile = true;
      return false;
    }
    if (mHoldsLine) {
      mHoldsLine = false;
      AddLineOfCode(mText);
    } else {
      mFile.Skip(mPlainLines.TakeRun(mFile.Rest(), mFile.Source()->LineEnds));
      if (mFile.AtEnd()) break;
      const std::string_view text = NextLine();
      ++mComponent.LinesAlreadyRead;
      if (mPlainLines.Take(text)) continue;
      AddLineOfCode(text);
    }
    mPlainLines.Look();
  }
  mPlainLines.Settle();
  if (mHoldsLine) AddLineOfCode(mText);
  mHoldsLine = false;
  return true;
}

void ModuleReader::AddLineOfCode(std::string_view text) {
  mIntake.LineStored = false;
  try {
    mComponent.AddLineOfCode(text);
  } catch (const VendrelError& error) {
    StepOver(error, "ModuleReader.AddLineOfCode", text);
  }
}

vendrel::StepOver ModuleReader::Ask(const VBProject& project, const VendrelError& failure) const {
  const auto ask = [&] {
    return project.AskAboutFailure(failure, mFile.FullPath(), mIntake.PhysicalLine);
  };
  AsideModule* aside = AsideModule::Current();
  return aside ? aside->Ask(ask) : ask();
}

// A host may say that the odd line is kept as it stands; else its failure ends the load.
void ModuleReader::StepOver(const VendrelError& error, std::string_view procedure,
                            std::string_view text) {
  mPlainLines.Settle();
  VBProject* project = mComponent.VBProject();
  VendrelError passed = error;
  passed.AddContext(procedure, "ModuleReader", mIntake.PhysicalLine)
      .Local("Line", text)
      .Of(mComponent);
  if (!project || Ask(*project, passed) == StepOver::Raise) {
    mFile.CloseFile();
    throw passed;
  }
  Report(DiagnosticCode::LineNotUnderstood, {Trim(text)});
  Block& block = *mComponent.CurrentBlock.Get();
  const bool stored = mIntake.LineStored;
  StorePending(block);
  if (stored) return;
  ParsedLine line;
  line.Text = text;
  line.StatementPart = text;
  ++block.Intake().mCurrentLineIndex;
  StoreLine(block, line);
}

// The lines of a statement that never became complete.
void ModuleReader::StorePending(Block& block) {
  for (PendingLine& pending : mIntake.ContinuationBuffer) StoreLine(block, pending.Line);
  mIntake.ContinuationBuffer.clear();
}

}  // namespace

bool Component::Load(bool OnlyHeader) try {
  const Workspace::Use use(Options().Workspace());
  if (LoadState == lsFullyLoadedNoCode) return false;  // read before, and unloaded since
  const TextPool names;
  const CellPool links;
  ModuleReader(*this).Load(OnlyHeader);
  return false;
}
VENDREL_CONTEXT_AT(Intake().PhysicalLine, OnlyHeader, trace::Local("LoadState", LoadState), *this)

}  // namespace vendrel
