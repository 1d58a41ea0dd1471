#include "writer/ProjectFileWriter.h"

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "writer/KeptProjectLines.h"
#include "writer/ModuleWriter.h"
#include "writer/ProjectLineParts.h"
#include "writer/SideFiles.h"

namespace vendrel {
namespace {

TextForm FormOf(const VBProject& project) {
  return project.SourceForm ? TextForm(*project.SourceForm) : TextForm();
}

}  // namespace

ProjectFileWriter::ProjectFileWriter(VBProject& project, OutputNames& names, bool copyOthers)
    : mProject(project),
      mNames(names),
      mCopyOthers(copyOthers),
      mSameLocation(project.SameLocation()),
      mStream(project.OutputFileName, FormOf(project), project.SourceForm.get(),
              project.Reading.KeepLineEnds || KeepsLines()) {
  if (!project.SourceForm) return;
  const std::string_view text = project.SourceForm->Text;
  for (const auto& [offset, bytes] : project.SourceForm->RawLines) {
    std::string_view rest = text.substr(offset);
    mRawLines.emplace(TakeLine(rest), bytes);
  }
}

void ProjectFileWriter::Run() try {
  FileSystemObject& file = mProject.OutputFileName;
  file.SetWriteForm(FormOf(mProject));
  try {
    file.OpenFile(omWrite, 2);
  } catch (const VendrelError&) {
    ReportNotOpened(file.LeafName());
    throw;
  }
  try {
    Rows();
    mStream.Finish();
    file.CloseFile();
  } catch (...) {
    file.Discard();
    throw;
  }
}
VENDREL_CONTEXT_AT(mStream.LineNumber(),
                   trace::Parameter("OutputFileName", mProject.OutputFileName.FullPath()),
                   trace::Me(mProject))

bool ProjectFileWriter::KeepsLines() const {
  return mProject.Reading.KeepProjectLines && mProject.FileLines && mProject.SourceForm;
}

// What the rows below copy on their way.
void ProjectFileWriter::CopyOthers() {
  SideFiles sideFiles(mProject, mNames);
  const std::string folder = mProject.OutputFileName.FolderPath();
  for (Component& component : mProject.Components.Listed()) {
    if (!mSameLocation) mNames.Of(component);  // settles the leaf name
    if (mCopyOthers) sideFiles.Copy(component, folder);
  }
  for (const std::string& entry : mProject.RelatedDocuments) CopyDocument(entry);
}

// The order is that of the file format.
void ProjectFileWriter::Rows() {
  if (KeepsLines()) {
    CopyOthers();
    return KeptProjectLines(mProject, mNames, mStream).Run();
  }
  FirstLine();
  References();
  Modules();
  RelatedDocuments();
  Quoted("HelpFile", mProject.HelpFile);
  Quoted("HelpContextID", std::to_string(mProject.HelpContextID));
  KeptLines();
  Startup();
  Compatibility();
  Target();
  LinesBehind();
}

void ProjectFileWriter::Quoted(std::string_view key, std::string_view value) try {
  std::string line(key);
  mStream.Line(line.append("=\"").append(value).append("\""));
}
VENDREL_CONTEXT_AT(mStream.LineNumber(), key, value, trace::Me(mProject))

void ProjectFileWriter::KeptLine(const std::string& line) try {
  const auto raw = mRawLines.find(line);
  if (raw == mRawLines.end())
    mStream.Line(line);
  else
    mStream.Raw(raw->second);
}
VENDREL_CONTEXT_AT(mStream.LineNumber(), line, trace::Me(mProject))

void ProjectFileWriter::FirstLine() {
  if (!mProject.ProjectLines.empty()) KeptLine(mProject.ProjectLines.front());
}

void ProjectFileWriter::References() try {
  for (Reference& reference : mProject.References) {
    KeptLine(WrittenLine(reference, mProject.OutputFileName));
    reference.FileName.SetBaseFile(&mProject.OutputFileName);  // as documented
  }
}
VENDREL_CONTEXT(trace::Me(mProject))

void ProjectFileWriter::Modules() try {
  SideFiles sideFiles(mProject, mNames);
  const std::string folder = mProject.OutputFileName.FolderPath();
  for (Component& component : mProject.Components.Listed()) {
    if (!mSameLocation) mNames.Of(component);  // settles the leaf name
    KeptLine(component.ProjectLine(!mSameLocation));
    if (mCopyOthers) sideFiles.Copy(component, folder);
  }
}
VENDREL_CONTEXT(trace::Me(mProject))

FileSystemObject ProjectFileWriter::CopyDocument(const std::string& entry) {
  FileSystemObject file;
  file.SetBaseFile(&mProject.FileName);
  file.SetFullPath(entry);
  if (mCopyOthers && file.Exists())
    CopyOrTell(file.FullPath(), mProject.OutputFileName.FolderPath() + file.LeafName());
  return file;
}

// Chosen by extension, not by the key that the entry came from.
void ProjectFileWriter::RelatedDocuments() try {
  for (const std::string& entry : mProject.RelatedDocuments) {
    const FileSystemObject file = CopyDocument(entry);
    const std::string path = mSameLocation ? file.RelativePath() : file.LeafName();
    if (EqualsNoCaseAscii(file.Extension(), "RES"))
      Quoted("ResFile32", path);
    else
      mStream.Line("RelatedDoc=" + path);
  }
}
VENDREL_CONTEXT(trace::Me(mProject))

void ProjectFileWriter::KeptLines() {
  std::string& last = mProject.LastNormalProjectLineText;
  if (last.empty() && !mProject.ProjectLines.empty()) last = mProject.ProjectLines.back();
  for (const std::string& line : mProject.ProjectLines) {
    if (StartsWithNoCaseAscii(line, "name="))
      Quoted("Name", mProject.ProjectName);
    else if (!line.starts_with("Type="))
      KeptLine(line);
    if (line == last) return;
  }
}

void ProjectFileWriter::Startup() {
  if (!EqualsNoCase(mProject.IconForm, mProject.Startup)) Quoted("IconForm", mProject.IconForm);
  Quoted("Startup", mProject.Startup);
}

void ProjectFileWriter::Compatibility() {
  Quoted("CompatibleMode", std::to_string(mProject.CompatibleMode));
  FileSystemObject& file = mProject.CompatibleFileName;
  if (!mSameLocation) file.SetBaseFile(&mProject.OutputFileName);
  Quoted("CompatibleEXE32", file.BaseName().empty() ? std::string() : file.RelativePath());
  file.SetBaseFile(&mProject.FileName);
}

void ProjectFileWriter::Target() {
  Quoted("EXEName32", mProject.EXEName32);
  Quoted("Path32", mProject.Path32);
  mStream.Line(mProject.AutoIncrement ? "AutoIncrementVer=1" : "AutoIncrementVer=0");
}

// Behind the first line of that text, not the last.
void ProjectFileWriter::LinesBehind() {
  bool behind = false;
  for (const std::string& line : mProject.ProjectLines) {
    if (behind) KeptLine(line);
    behind = behind || line == mProject.LastNormalProjectLineText;
  }
}

}  // namespace vendrel
