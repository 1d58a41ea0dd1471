// VB.NET projects back to their files: backups, source files, project file.

#include <unordered_set>

#include "core/CaseFold.h"
#include "core/MessageService.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "dotnet/Sources.h"
#include "output/Xml.h"
#include "project/VBProject.h"
#include "services/Procedures.h"
#include "writer/ModuleWriter.h"
#include "writer/WriteRun.h"

namespace vendrel {
namespace {

constexpr std::string_view kBackupFolder = "SourceBackup";
constexpr std::string_view kFileCopyError = "File copy error";

// The whole tree in one line.
struct OneLine final : pugi::xml_writer {
  std::string Text;
  void write(const void* data, std::size_t size) override {
    Text.append(static_cast<const char*>(data), size);
  }
};
std::string WholeText(XmlDocument& document) {
  OneLine writer;
  document.Root().Node().root().print(writer, "", pugi::format_raw | pugi::format_no_declaration,
                                      pugi::encoding_utf8);
  return std::move(writer.Text);
}

class NetProjectWriter {
 public:
  explicit NetProjectWriter(VBProject& project)
      : mProject(project), mRules(project.Reading), mSameLocation(project.SameLocation()) {}
  bool Run(bool onlyProjectFile);

 private:
  bool IsRefused() const;
  bool MakeBackupFolder();
  bool KeepInBackup(const FileSystemObject& file);
  bool WriteFiles();
  bool KeepBeside();
  bool WriteProjectFile();
  bool GoesOn(const std::string& problem, std::string_view question, std::string_view caption,
              int style) const;

  VBProject& mProject;
  const ReadingRules& mRules;
  const bool mSameLocation;
  bool mNoBackupCopy = false;
  std::string mBackupFolder;
  /// The run that remembers what was backed up; null where nothing is remembered.
  WriteRun* mRun = nullptr;
};

bool NetProjectWriter::GoesOn(const std::string& problem, std::string_view question,
                              std::string_view caption, int style) const {
  Report(DiagnosticCode::WriteRefused, {problem});
  if (State().Silent) return false;
  return MessageService::Current().Ask(problem + "\r\n\r\n" + std::string(question), caption,
                                       style);
}

bool NetProjectWriter::IsRefused() const {
  const FileSystemObject& output = mProject.OutputFileName;
  const bool readOnly =
      mSameLocation ? mProject.FileName.IsReadOnly() : output.Exists() && output.IsReadOnly();
  if (!readOnly) return false;
  ReportRefused("Could not write to the .vbproj file at '" + mProject.FileName.FullPath() +
                    "' as the file is read-only.  Processing will continue, but source code for "
                    "this project will not be written.",
                ".vbproj file read-only");
  return true;
}

bool NetProjectWriter::MakeBackupFolder() {
  mBackupFolder = mProject.FileName.FolderPath() + std::string(kBackupFolder) + "\\";
  FileSystemObject folder;
  folder.SetFolderPath(mBackupFolder);
  try {
    folder.CreateFolderPath();
  } catch (const VendrelError&) {  // whether it is there is looked at below
  }
  if (folder.IsFolder()) return true;
  mNoBackupCopy = true;
  return GoesOn("Failed to create a directory '" + mProject.FileName.FolderPath() +
                    std::string(kBackupFolder) + "'.",
                "This directory is required to store backup copies of the source code.  Do you "
                "wish to proceed ?",
                "Could not create directory", msProceedQuestion);
}

// Under its leaf name; where nothing may be lost, as it stood before the run, and two of one name
// get two places.
bool NetProjectWriter::KeepInBackup(const FileSystemObject& file) {
  if (mNoBackupCopy || !file.Exists() || (mRun && mRun->IsBackedUp(file))) return true;
  FileSystemObject backup(mBackupFolder + file.LeafName());
  for (int number = 2; mRun && !mRun->Take(backup.FullPath()); ++number)
    backup.SetBaseName(file.BaseName() + "_" + std::to_string(number));
  if (FileCopy(file.FullPath(), backup.FullPath())) {
    if (mRun) mRun->NoteBackedUp(file);
    return true;
  }
  return GoesOn("Backup file copy error (" + file.LeafName() + ") : " + State().FileCopy_LastError,
                "Do you wish to proceed with other files ?", kFileCopyError, msYesNoQuestion);
}

bool NetProjectWriter::WriteFiles() {
  std::unordered_set<std::string> taken;
  for (ProjectFile& file : mProject.ProjectFiles) {
    if (mRun && mRun->IsWritten(file.FileName)) continue;
    if (mSameLocation && !KeepInBackup(file.FileName)) return false;
    const std::string target = TargetOfSource(mProject, file);
    if (mRules.NetKeepPlaces && !taken.insert(FoldKey(target)).second) {
      Report(DiagnosticCode::WriteRefused,
             {"two files of the project would be written to '" + target + "'; the second, '" +
              file.FileName.FullPath() + "', is left out"});
      continue;
    }
    if (file.WriteOut(target) && mRun) mRun->NoteWritten(file.FileName);
  }
  return true;
}

bool NetProjectWriter::KeepBeside() {
  const FileSystemObject& file = mProject.FileName;
  FileSystemObject backup(file.FullPath() + ".bak");
  try {
    if (backup.IsReadOnly()) backup.DeleteFile();
  } catch (const VendrelError&) {  // the copy tells
  }
  if (!file.Exists() || FileCopy(file.FullPath(), backup.FullPath())) return true;
  return GoesOn(
      "Backup project file copy error (" + file.LeafName() + ") : " + State().FileCopy_LastError,
      "Do you wish to proceed (all other files have been written) ?", kFileCopyError,
      msYesNoQuestion);
}

// As the document of the load; where nothing may be lost, byte for byte.
bool NetProjectWriter::WriteProjectFile() {
  FileSystemObject& output = mProject.OutputFileName;
  output.SetBaseName(mProject.FileName.BaseName());
  output.SetExtension(mProject.FileName.Extension());
  if (mRules.NetKeepSource || !mProject.mProjectDoc) {
    if (mSameLocation) return true;  // it is what it was
    output.CreateFolderPath();
    if (FileCopy(mProject.FileName.FullPath(), output.FullPath())) return true;
    ReportNotOpened(output.LeafName());
    return false;
  }
  try {
    output.CreateFolderPath();
    output.OpenFile(omWrite, 2);
  } catch (const VendrelError&) {
    ReportNotOpened(output.LeafName());
    return false;
  }
  output.WriteLine(WholeText(*mProject.mProjectDoc));
  output.CloseFile();
  return true;
}

bool NetProjectWriter::Run(bool onlyProjectFile) try {
  if (IsRefused()) return false;
  const WriteRun runOfItsOwn;  // counts only where no other one is open
  if (mSameLocation && mRules.DistinctBackups) mRun = WriteRun::Current();
  if (mRun && mRun->IsWritten(mProject.FileName)) return true;
  if (!onlyProjectFile) {
    if (mSameLocation && !(MakeBackupFolder() && KeepInBackup(mProject.FileName))) return false;
    if (!WriteFiles()) return false;
  }
  if (mSameLocation && !KeepBeside()) return false;
  if (!WriteProjectFile()) return false;
  if (mRun) mRun->NoteWritten(mProject.FileName);
  return true;
}
VENDREL_CONTEXT(onlyProjectFile, trace::Local("SameLocation", mSameLocation), trace::Me(mProject))

}  // namespace

bool VBProject::WriteOutDotNet(bool OnlyProjectFile) try {
  const vendrel::Workspace::Use use(Workspace());
  if (ProjectSourceAccess != psaReadWrite) return false;
  const DiagnosticScope scope(&Diagnostics, FileName.FullPath());
  return NetProjectWriter(*this).Run(OnlyProjectFile);
}
VENDREL_CONTEXT(OnlyProjectFile, trace::Parameter("OutputFileName", OutputFileName.FullPath()),
                *this)

}  // namespace vendrel
