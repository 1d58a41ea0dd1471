#include "cli/Session.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "cli/CompiledInput.h"
#include "cli/ProjectSettings.h"
#include "cli/Report.h"
#include "core/Ascii.h"
#include "core/ProcessState.h"
#include "services/CodePage.h"
#include "services/FileSource.h"

namespace vendrel::cli {
namespace {

struct Extension {
  std::string_view Text;
  InputKind Kind;
};
constexpr std::array kExtensions{
    Extension{"vbp", InputKind::Project},
    Extension{"bas", InputKind::Module},
    Extension{"cls", InputKind::Module},
    Extension{"frm", InputKind::Module},
    Extension{"ctl", InputKind::Module},
    Extension{"dob", InputKind::Module},
    Extension{"pag", InputKind::Module},
    Extension{"dsr", InputKind::Module},
    Extension{"vbg", InputKind::Group},
    Extension{"vbproj", InputKind::DotNetProject},
    Extension{"tlb", InputKind::TypeLibrary},
    Extension{"olb", InputKind::TypeLibrary},
    Extension{"dll", InputKind::TypeLibrary},
    Extension{"ocx", InputKind::TypeLibrary},
    Extension{"exe", InputKind::TypeLibrary},
    Extension{"oca", InputKind::TypeLibrary},
    Extension{"netmodule", InputKind::TypeLibrary},
    Extension{"winmd", InputKind::TypeLibrary},
    Extension{"node", InputKind::TypeLibrary},
};

// Shows the chooser every file of a project; one that cannot be read is told when it is loaded.
void FeedFiles(CodePageChooser& chooser, const VBProject& project) {
  const auto feed = [&](const FileSystemObject& file) {
    try {
      if (file.Exists()) chooser.Feed(ReadWholeFile(file.NativePath()));
    } catch (const VendrelError&) {
    }
  };
  feed(project.FileName);
  for (const Component& component : project.Components.Listed()) feed(component.FileName);
}

std::shared_ptr<VBProject> NewProject(const CommonOptions& options) {
  auto project = std::make_shared<VBProject>();
  ApplyToProject(options, *project);
  project->OnLineFailure = [](const VendrelError& failure, std::string_view, std::int32_t) {
    ReportError(failure);
    return StepOver::SkipLine;
  };
  return project;
}

// A library is one file: no modules are left to read.
std::shared_ptr<VBProject> LoadLibrary(const std::string& path, const CommonOptions& options) {
  const CodePageChooser chooser(options.CodePage);
  FileOptions::Current().CodePage =
      chooser.Guesses() ? CodePage::Default().Name() : options.CodePage;
  auto project = NewProject(options);
  FillFromCompiled(*project, path, options);
  project->OutputFileName.SetFolderPath(project->FileName.FolderPath());
  return project;
}

std::shared_ptr<VBProject> LoadFile(const std::string& path, InputKind kind,
                                    const CommonOptions& options) {
  auto project = NewProject(options);
  const bool read = kind == InputKind::Project ? project->Load(path) : project->LoadModule(path);
  if (!read) throw ToolError(exFailed, path + ": cannot be read: " + project->LastErrorString);
  // Nothing is written, but what is shown must not depend on the current folder.
  project->OutputFileName.SetFolderPath(project->FileName.FolderPath());
  return project;
}

// The guess needs the list of files, and that list may need the guess: names of files are text of
// the project file. So the project is listed once, and again if the guess is not what it was listed
// by.
std::shared_ptr<VBProject> LoadWithCodePage(const std::string& path, InputKind kind,
                                            const CommonOptions& options) {
  CodePageChooser chooser(options.CodePage);
  if (!chooser.Guesses()) {
    FileOptions::Current().CodePage = chooser.Choose();
    return LoadFile(path, kind, options);
  }
  FileOptions::Current().CodePage = CodePage::Default().Name();
  auto project = LoadFile(path, kind, options);
  FeedFiles(chooser, *project);
  const std::string chosen = chooser.Choose();
  if (chosen == CodePage::Default().Name()) return project;
  FileOptions::Current().CodePage = chosen;
  project.reset();
  State().Reset();  // the second listing counts as the first: keys and ids begin anew
  project = LoadFile(path, kind, options);
  const DiagnosticScope scope(&project->Diagnostics, project->FileName.FullPath());
  Tell(DiagnosticCode::CodePageGuessed, {chosen, "guessed; --codepage sets another"});
  return project;
}

std::string_view WordsFor(InputKind kind) {
  switch (kind) {
    case InputKind::Group: return "project groups";
    case InputKind::DotNetProject: return "VB.NET projects";
    default: return "folders of projects";
  }
}

void ApplyCommentFile(VBProject& project, const CommonOptions& options) {
  if (options.CommentFile.empty()) return;
  project.CommentFile.SetFullPath(AbsolutePath(options.CommentFile));
  if (!project.CommentFile.Exists())
    throw ToolError(exFailed, "--comment-file: " + options.CommentFile + ": no such file");
  project.ApplyCommentFile();
}

InputKind KindByExtension(const FileSystemObject& file) {
  const std::string extension = file.Extension();
  for (const Extension& known : kExtensions)
    if (EqualsNoCaseAscii(known.Text, extension)) return known.Kind;
  return InputKind::Unknown;
}

// "Both.dll\2": the second library of a compiled file.
bool IsNumberedLibrary(const std::string& path) {
  const std::size_t mark = path.find_last_of("\\/");
  if (mark == std::string::npos || mark + 1 == path.size()) return false;
  if (!std::all_of(path.begin() + static_cast<std::ptrdiff_t>(mark) + 1, path.end(), IsDigitAscii))
    return false;
  const FileSystemObject file(AbsolutePath(path.substr(0, mark)));
  return file.Exists() && KindByExtension(file) == InputKind::TypeLibrary;
}

}  // namespace

InputKind KindOfInput(const std::string& path) {
  if (IsCustomInput(path)) return InputKind::TypeLibrary;
  const FileSystemObject file(AbsolutePath(path));
  if (file.IsFolder()) return InputKind::Folder;
  if (!file.Exists()) return IsNumberedLibrary(path) ? InputKind::TypeLibrary : InputKind::Missing;
  return KindByExtension(file);
}

void RefuseInput(const std::string& path, InputKind kind) {
  if (kind == InputKind::Missing)
    throw ToolError(exFailed, path + ": no such file; check the path, and --drive for a drive");
  if (kind == InputKind::Unknown)
    throw ToolError(
        exFailed, path + ": neither a project (.vbp), nor a module (.bas, .cls, .frm, " +
                      ".ctl, .dob, .pag, .dsr), nor an assembly or a type library " +
                      "(.dll, .exe, .netmodule, .winmd, .tlb, .olb, .ocx), by its " + "extension");
  throw ToolError(exFailed, path + ": " + std::string(WordsFor(kind)) +
                                " come later; this version reads a project (.vbp) or a single " +
                                "module (.bas, .cls, .frm, ...)");
}

std::shared_ptr<VBProject> LoadInput(const std::string& path, const CommonOptions& options,
                                     const Streams& streams, LoadDepth depth,
                                     const std::function<void(VBProject&)>& prepare) {
  ApplyToProcess(options);
  const InputKind kind = KindOfInput(path);
  if (kind != InputKind::Project && kind != InputKind::Module && kind != InputKind::TypeLibrary)
    RefuseInput(path, kind);
  auto project = kind == InputKind::TypeLibrary
                     ? LoadLibrary(IsCustomInput(path) ? path : AbsolutePath(path), options)
                     : LoadWithCodePage(AbsolutePath(path), kind, options);
  if (depth == LoadDepth::ProjectFile) return project;
  if (prepare) prepare(*project);
  ProgressBar bar(*project, options, streams);
  project->Components.Populate();
  bar.Finish();
  ApplyCommentFile(*project, options);
  return project;
}

std::string ReadByOptions(const std::string& nativePath, const CommonOptions& options) {
  std::string bytes = ReadWholeFile(nativePath);
  CodePageChooser chooser(options.CodePage);
  chooser.Feed(bytes);
  FileOptions::Current().CodePage = chooser.Choose();
  return bytes;
}

}  // namespace vendrel::cli
