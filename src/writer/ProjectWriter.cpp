// A project back to its files: backups, modules, project file, in the order of the rule.

#include <optional>

#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "writer/Backups.h"
#include "writer/LineNumbers.h"
#include "writer/ModuleWriter.h"
#include "writer/ProjectFileWriter.h"
#include "writer/SideFiles.h"
#include "writer/WriteRun.h"

namespace vendrel {
namespace {

class ProjectWriter {
 public:
  ProjectWriter(VBProject& project, bool onlyProjectFile)
      : mProject(project),
        mOnlyProjectFile(onlyProjectFile),
        mSameLocation(project.SameLocation()),
        mNames(project) {}

  void Run();

 private:
  bool IsRefused() const;
  bool BackUpFirst();
  bool WriteModules();
  void CopyCompatibleFile();

  VBProject& mProject;
  const bool mOnlyProjectFile;
  const bool mSameLocation;
  OutputNames mNames;
  std::optional<Backups> mBackups;
  /// The run that remembers what was written; null where each file is written as often as listed.
  WriteRun* mRun = nullptr;
  std::int32_t mFirstNumber = 0;
};

void ProjectWriter::Run() try {
  if (IsRefused()) return;
  const WriteRun runOfItsOwn;  // counts only where no other one is open
  if (mSameLocation && mProject.Reading.DistinctBackups) mRun = WriteRun::Current();
  if (mRun && mRun->IsWritten(mProject.FileName)) return;
  if (mSameLocation) mBackups.emplace(mProject, mRun);
  mFirstNumber = BeginNumbering(mProject);
  if (!mOnlyProjectFile && !(BackUpFirst() && WriteModules())) return;
  if (mBackups && !mBackups->KeepProjectFileBesideItself()) return;
  mProject.OutputFileName.SetBaseName(mProject.FileName.BaseName());
  mProject.OutputFileName.SetExtension(mProject.FileName.Extension());
  const bool elsewhere = !mSameLocation && !mOnlyProjectFile;
  ProjectFileWriter(mProject, mNames, elsewhere).Run();
  if (mRun) mRun->NoteWritten(mProject.FileName);
  if (elsewhere) CopyCompatibleFile();
}
VENDREL_CONTEXT(trace::Local("OnlyProjectFile", mOnlyProjectFile),
                trace::Local("SameLocation", mSameLocation), trace::Me(mProject))

// In spite of its words nothing of this project is written; a group goes on with its next one.
bool ProjectWriter::IsRefused() const {
  const FileSystemObject& output = mProject.OutputFileName;
  const bool readOnly =
      mSameLocation ? mProject.FileName.IsReadOnly() : output.Exists() && output.IsReadOnly();
  if (!readOnly) return false;
  ReportRefused(
      "Could not write to the .vbp file at '" + mProject.FileName.FullPath() +
          "' as the file is read-only.  Processing will continue, but source code for this "
          "project will not be written.",
      ".vbp file read-only");
  return true;
}

bool ProjectWriter::BackUpFirst() {
  return !mBackups || (mBackups->MakeFolder() && mBackups->KeepProjectFile());
}

bool ProjectWriter::WriteModules() try {
  bool first = true;
  for (Component& component : mProject.Components) {  // loads what is not loaded
    mProject.WriteProgress.Raise(component);
    if (mRun && mRun->IsWritten(component.FileName)) continue;
    if (mBackups && !mBackups->KeepModule(component.FileName)) return false;
    if (!first && mProject.LineNumberPerModule) State().CurrentLineNumber = mFirstNumber;
    first = false;
    const bool written = WriteModule(component, mNames.Of(component));
    if (mRun && written) mRun->NoteWritten(component.FileName);
  }
  return true;
}
VENDREL_CONTEXT(trace::Me(mProject))

void ProjectWriter::CopyCompatibleFile() {
  const FileSystemObject& file = mProject.CompatibleFileName;
  if (mSameLocation || !file.Exists() || file.IsFolder()) return;
  CopyOrTell(file.FullPath(), mProject.OutputFileName.FolderPath() + file.LeafName());
}

}  // namespace

bool VBProject::SameLocation() const {
  return EqualsNoCase(FileName.FullPath(), OutputFileName.FullPath());
}

void VBProject::WriteOut(bool OnlyProjectFile) try {
  const Workspace::Use use(Workspace());
  if (LanguageVersion() == lvVisualBasicDotNet) {
    WriteOutDotNet(OnlyProjectFile);
    return;
  }
  if (ProjectSourceAccess != psaReadWrite) return;
  const DiagnosticScope scope(&Diagnostics, FileName.FullPath());
  ProjectWriter(*this, OnlyProjectFile).Run();
}
VENDREL_CONTEXT(OnlyProjectFile, trace::Parameter("OutputFileName", OutputFileName.FullPath()),
                *this)

}  // namespace vendrel
