// One source file of a VB.NET project back to its file.

#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "dotnet/FileLayout.h"
#include "services/Procedures.h"
#include "writer/BlockWriter.h"
#include "writer/ModuleWriter.h"
#include "writer/SourceStream.h"

namespace vendrel {
namespace {

class SourceFileWriter {
 public:
  SourceFileWriter(ProjectFile& file, FileSystemObject& target) : mFile(file), mTarget(target) {}

  bool Run() {
    if (mTarget.Exists() && mTarget.IsReadOnly()) {
      ReportRefused(
          "Could not write to the file '" + mTarget.FullPath() +
              "' as the file is read-only.  Processing will continue, but source code for "
              "this file will not be written.",
          "File read-only");
      return false;
    }
    const bool keeps = Rules().NetKeepSource;
    if (keeps && !mFile.SourceForm) return CopyUnread();
    mTarget.CreateFolderPath();
    if (mFile.SourceForm) mTarget.SetWriteForm(*mFile.SourceForm);
    try {
      mTarget.OpenFile(omWrite, 2);
    } catch (const VendrelError&) {
      ReportNotOpened(mTarget.LeafName());
      return false;
    }
    try {
      if (keeps)
        WriteKept();
      else
        WriteTypes();
    } catch (const CharactersRefused&) {
      mTarget.Discard();  // told where it was met; the file stays as it was
      return false;
    }
    mTarget.CloseFile();
    CopyAssociated();
    return true;
  }

 private:
  const ReadingRules& Rules() const { return mFile.VBProject()->Reading; }

  // A file that was not read is taken along as it is.
  bool CopyUnread() {
    if (!mFile.FileName.Exists() || EqualsNoCase(mFile.FileName.FullPath(), mTarget.FullPath()))
      return false;
    mTarget.CreateFolderPath();
    return FileCopy(mFile.FileName.FullPath(), mTarget.FullPath());
  }

  void WriteTypes() {
    for (Component& component : mFile.Components)
      if (!component.IsNested)
        for (Block& block : component.Blocks) block.WriteOutDotNet(mTarget);
  }

  void WriteKept() {
    FileLayout layout(mFile);
    SourceStream stream(mTarget, *mFile.SourceForm, mFile.SourceForm.get(), Rules().KeepLineEnds);
    for (const PlacedLine& line : layout.Lines())
      if (const std::string* text = layout.NewText(line))
        stream.Replaced(*line.Lines, line.Index, *text);
      else
        stream.Line(*line.Lines, line.Index);
    stream.Finish();
  }

  // What designers keep beside a source file goes with it.
  void CopyAssociated() {
    if (EqualsNoCase(mFile.FileName.FolderPath(), mTarget.FolderPath())) return;
    std::vector<FileSystemObject> beside;
    FileSystemObject folder(mFile.FileName.FolderPath());
    try {
      folder.FindFiles(mFile.FileName.BaseName() + ".*", 1, beside);
    } catch (const VendrelError&) {
      return;
    }
    for (const FileSystemObject& file : beside)
      if (!EqualsNoCase(file.Extension(), mTarget.Extension()))
        FileCopy(file.FullPath(), mTarget.FolderPath() + file.LeafName());
  }

  ProjectFile& mFile;
  FileSystemObject& mTarget;
};

}  // namespace

bool ProjectFile::WriteOut(std::string_view TargetName) try {
  vendrel::VBProject* project = VBProject();
  if (!project) throw VendrelError(errObjectNotSet, "the source file has no project");
  const Workspace::Use use(project->Workspace());
  const DiagnosticScope scope(&project->Diagnostics, FileName.FullPath());
  FileSystemObject target(TargetName);
  return SourceFileWriter(*this, target).Run();
}
VENDREL_CONTEXT(TargetName, trace::Field("FileName", FileName.FullPath()))

bool Block::WriteOutDotNet(FileSystemObject& f) try {
  const vendrel::CodeLines* lines = CodeLines.IfAny();
  vendrel::VBProject* project = VBProject();
  for (std::int32_t i = 1; lines && i <= lines->Count(); ++i) {
    if (lines->LineType(i) == NESTED_CLASS_PLACEHOLDER) {
      const std::string name = lines->Item(i).StatementPart;
      vendrel::Component* nested = project ? project->Components.Item(name) : nullptr;
      if (!nested) throw VendrelError(errObjectNotSet, "no module of the nested class " + name);
      for (Block& block : nested->Blocks) block.WriteOut(f);
    } else if (!lines->NotInSource(i)) {
      f.WriteLine(lines->LineView(i));
    }
  }
  if (Blocks* overloads = Overloads())
    for (Block& overload : *overloads) overload.WriteOutDotNet(f);
  return true;
}
VENDREL_CONTEXT(trace::Parameter("f", f.FullPath()), *this)

}  // namespace vendrel
