#include "cli/Session.h"

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <unordered_set>

#include "cli/CompiledInput.h"
#include "cli/InputJudgement.h"
#include "cli/Progress.h"
#include "cli/ProjectSettings.h"
#include "cli/Report.h"
#include "cli/WrittenFiles.h"
#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "dotnet/Sources.h"
#include "model/ModuleKinds.h"
#include "project/Assembly.h"
#include "project/ModuleNames.h"
#include "project/ProjectCodePage.h"
#include "services/ByteSource.h"
#include "services/CodePage.h"
#include "services/FileSource.h"
#include "services/SourceCache.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel::cli {
namespace {

struct Extension {
  std::string_view Text;
  InputKind Kind;
};
// Beside those of modules.
constexpr std::array kExtensions{
    Extension{"vbp", InputKind::Project},
    Extension{"vbg", InputKind::Group},
    Extension{"vbproj", InputKind::DotNetProject},
    Extension{"tlb", InputKind::TypeLibrary},
    Extension{"sln", InputKind::Group},
    Extension{"olb", InputKind::TypeLibrary},
    Extension{"dll", InputKind::TypeLibrary},
    Extension{"ocx", InputKind::TypeLibrary},
    Extension{"exe", InputKind::TypeLibrary},
    Extension{"oca", InputKind::TypeLibrary},
    Extension{"netmodule", InputKind::TypeLibrary},
    Extension{"winmd", InputKind::TypeLibrary},
    Extension{"node", InputKind::TypeLibrary},
};

std::shared_ptr<VBProject> NewProject(const CommonOptions& options) {
  auto project = std::make_shared<VBProject>();
  ApplyToProject(options, *project);
  project->OnLineFailure = [](const VendrelError& failure, std::string_view, std::int32_t) {
    ReportError(failure);
    return StepOver::SkipLine;
  };
  return project;
}

// What the documentation file beside an assembly says joins the tree.
void TakeDocumentation(VBProject& project) {
  if (project.LanguageVersion() != lvVisualBasicDotNet) return;
  const auto assembly = std::make_shared<Assembly>();
  assembly->mName = project.ProjectName;
  assembly->FileName = project.FileName;
  assembly->TieOwner(&project);
  project.OwnAssembly(assembly);
  assembly->IntegrateCommentFile(project, nullptr, true, false);
}

// A library is one file: no modules are left to read.
std::shared_ptr<VBProject> LoadLibrary(const std::string& path, const CommonOptions& options) {
  FileOptions::Current().CodePage = options.CodePage;
  auto project = NewProject(options);
  FillFromCompiled(*project, path, options);
  if (options.XmlDocs) TakeDocumentation(*project);
  project->OutputFileName.SetFolderPath(project->FileName.FolderPath());
  return project;
}

std::shared_ptr<VBProject> LoadFile(const std::string& path, InputKind kind,
                                    const CommonOptions& options) {
  auto project = NewProject(options);
  const bool read = kind == InputKind::Project ? project->Load(path) : project->LoadModule(path);
  if (!read) throw InputError(path, "cannot be read: " + ReasonIn(project->LastErrorString, path));
  if (kind == InputKind::Project) RefuseNoProject(path, *project);
  // Nothing is written, but what is shown must not depend on the current folder.
  project->OutputFileName.SetFolderPath(project->FileName.FolderPath());
  return project;
}

// By the form of the project file, which its root tells.
std::shared_ptr<VBProject> LoadNetProject(const std::string& path, const CommonOptions& options) {
  const FileSystemObject file(path);
  std::string root;
  const NetProjectForm form = FormOfNetProject(file.NativePath(), root);
  if (form == NetProjectForm::Other && !root.empty())
    throw InputError(
        path, "no project: its root is <" + root + ">, not <VisualStudioProject> or <Project>");
  if (form == NetProjectForm::Other)
    throw InputError(path,
                     "no project: it holds no XML, as the files do that web editors keep "
                     "under the names of others (folders _vti_cnf)");
  auto project = NewProject(options);
  if (form == NetProjectForm::MSBuild)
    project->LoadFromCustom(kMSBuildLoaderProgId, file.FullPath());
  else if (!project->Load(path))
    throw InputError(path, "cannot be read: " + ReasonIn(project->LastErrorString, path));
  project->OutputFileName.SetFolderPath(project->FileName.FolderPath());
  return project;
}

// A project with those that it refers to, which live as long as it does.
struct ProjectSet {
  std::shared_ptr<VBProject> Main;
  std::vector<std::shared_ptr<VBProject>> Others;
};

// Those of the references of a project whose files are known and there.
void LoadReferenced(ProjectSet& set, const CommonOptions& options) {
  std::unordered_set<std::string> known{FoldKey(set.Main->FileName.FullPath())};
  std::vector<VBProject*> waiting{set.Main.get()};
  while (!waiting.empty()) {
    VBProject& project = *waiting.back();
    waiting.pop_back();
    for (const std::string& path : ReferencedProjectFiles(project)) {
      if (!known.insert(FoldKey(path)).second) continue;
      try {
        set.Others.push_back(LoadNetProject(path, options));
        waiting.push_back(set.Others.back().get());
      } catch (const std::exception& error) {
        const DiagnosticScope scope(&set.Main->Diagnostics, path);
        Report(DiagnosticCode::Told,
               {std::string("a referenced project is left out: ") + error.what()});
      }
    }
  }
}

std::shared_ptr<VBProject> ResolvedSet(std::shared_ptr<VBProject> project,
                                       const CommonOptions& options) {
  const auto set = std::make_shared<ProjectSet>();
  set->Main = std::move(project);
  if (!options.NoReferences) LoadReferenced(*set, options);
  std::vector<VBProject*> all{set->Main.get()};
  for (const auto& other : set->Others) all.push_back(other.get());
  for (VBProject* each : all) TieNetReferences(*each, all);
  for (std::size_t i = all.size(); i > 0; --i) ResolveSourceTypes(*all[i - 1]);
  return {set, set->Main.get()};
}

std::shared_ptr<VBProject> LoadWithCodePage(const std::string& path, InputKind kind,
                                            const CommonOptions& options) {
  const std::string evidence = UseCodePageFor(path, options);
  auto project = kind == InputKind::DotNetProject ? LoadNetProject(path, options)
                                                  : LoadFile(path, kind, options);
  if (evidence.empty()) return project;
  const DiagnosticScope scope(&project->Diagnostics, project->FileName.FullPath());
  Report(DiagnosticCode::CodePageGuessed,
         {FileOptions::Current().CodePage, evidence + "; --codepage sets another"});
  return project;
}

void ApplyCommentFile(VBProject& project, const CommonOptions& options) {
  if (options.CommentFile.empty()) return;
  project.CommentFile.SetFullPath(AbsolutePath(options.CommentFile));
  if (!project.CommentFile.Exists())
    throw ToolError(exFailed, "--comment-file: " + options.CommentFile + ": no such file");
  try {
    project.ApplyCommentFile();
  } catch (const VendrelError& error) {
    throw ToolError(exFailed, "--comment-file: " + options.CommentFile + ": " +
                                  ReasonOf(error, options.CommentFile));
  }
}

// As a project file lists one; the second of a name is told and left out.
void AddModule(VBProject& project, const FileSystemObject& file) {
  auto component = std::make_shared<Component>();
  component->SetVBProject(&project);
  component->FileName = file;
  component->FileType = ModuleKindOfExtension(file.Extension())->Type;
  component->Name = GetComponentName(file.FullPath());
  if (component->Name.empty()) component->Name = file.BaseName();
  const std::string name = component->Name;
  if (project.Components.Item(name))
    return Report(DiagnosticCode::DuplicateName, {"module", name + "' in '" + file.FullPath()});
  project.Components.Add(std::move(component), name);
  if (project.BuildTypeCache) project.TypeCache.Add(name, tcLocalProjectModule);
}

// ".bas, .cls, .frm"
std::string ModuleExtensions() {
  std::string list;
  for (const ModuleKind& kind : kModuleKinds)
    if (!kind.Extension.empty()) list.append(list.empty() ? "." : ", .").append(kind.Extension);
  return list;
}

InputKind KindByExtension(const FileSystemObject& file) {
  const std::string extension = file.Extension();
  if (ModuleKindOfExtension(extension)) return InputKind::Module;
  for (const Extension& known : kExtensions)
    if (EqualsNoCaseAscii(known.Text, extension)) return known.Kind;
  return InputKind::Unknown;
}

// What will be loaded is read at once; of a file that may be anything, however large, the head.
bool HoldsLibrary(const std::string& nativePath, InputKind kind) try {
  if (kind == InputKind::Unknown) return typelib::HoldsTypeLibrary(*OpenBytes(nativePath));
  const std::string_view bytes = SourceCache::Bytes(nativePath);
  MemoryBytes file({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  return typelib::HoldsTypeLibrary(file);
} catch (const std::exception&) {
  return false;
}

// A library is known by what it holds, a compiled file also by its extension.
InputKind KindByContent(const FileSystemObject& file) {
  const InputKind kind = KindByExtension(file);
  if (kind == InputKind::TypeLibrary) return kind;
  return HoldsLibrary(file.NativePath(), kind) ? InputKind::TypeLibrary : kind;
}

// "Both.dll\2": the second library of a compiled file.
bool IsNumberedLibrary(const std::string& path) {
  const std::size_t mark = path.find_last_of("\\/");
  if (mark == std::string::npos || mark + 1 == path.size()) return false;
  if (!std::all_of(path.begin() + static_cast<std::ptrdiff_t>(mark) + 1, path.end(), IsDigitAscii))
    return false;
  const FileSystemObject file(AbsolutePath(path.substr(0, mark)));
  return file.Exists() && KindByContent(file) == InputKind::TypeLibrary;
}

}  // namespace

std::vector<std::string> InputExtensions() {
  std::vector<std::string> extensions;
  for (const Extension& known : kExtensions) extensions.emplace_back(known.Text);
  for (const ModuleKind& kind : kModuleKinds)
    if (!kind.Extension.empty()) extensions.emplace_back(kind.Extension);
  return extensions;
}

InputKind KindOfInput(const std::string& path) {
  if (IsCustomInput(path)) return InputKind::TypeLibrary;
  const SourceCache::Scope lookOnce;
  const FileSystemObject file(AbsolutePath(path));
  if (file.IsFolder()) return InputKind::Folder;
  if (!file.Exists()) return IsNumberedLibrary(path) ? InputKind::TypeLibrary : InputKind::Missing;
  return KindByContent(file);
}

void RefuseInput(const std::string& path, InputKind kind) {
  if (kind == InputKind::Missing) {
    RefuseHidden(path);
    throw InputError(path, "no such file; check the path, and --drive for a drive");
  }
  if (kind == InputKind::Unknown)
    throw ToolError(exFailed, path + ": neither a project (.vbp, .vbproj), nor a module (" +
                                  ModuleExtensions() + "), by its extension, nor does it hold " +
                                  "an assembly or a type library");
  throw ToolError(exFailed, path + (kind == InputKind::Group ? ": a group" : ": a folder") +
                                " of projects; this command takes one of them at a time");
}

std::shared_ptr<VBProject> LoadInput(const std::string& path, const CommonOptions& options,
                                     const Streams& streams, LoadDepth depth,
                                     const std::function<void(VBProject&)>& prepare) try {
  ApplyToProcess(options);
  const SourceCache::Scope readOnce;
  const InputKind kind = KindOfInput(path);
  if (kind != InputKind::Project && kind != InputKind::Module && kind != InputKind::TypeLibrary &&
      kind != InputKind::DotNetProject)
    RefuseInput(path, kind);
  auto project = kind == InputKind::TypeLibrary
                     ? LoadLibrary(IsCustomInput(path) ? path : AbsolutePath(path), options)
                     : LoadWithCodePage(AbsolutePath(path), kind, options);
  if (kind == InputKind::DotNetProject && depth == LoadDepth::Modules && !options.Unresolved)
    project = ResolvedSet(std::move(project), options);
  if (streams.Lasting) streams.Lasting->push_back(project);
  if (depth == LoadDepth::ProjectFile) return project;
  if (prepare) prepare(*project);
  ProgressBar bar(*project, options, streams);
  project->Components.Populate();
  bar.Finish();
  if (kind == InputKind::Module) RefuseUnreadModule(path, *project);
  ApplyCommentFile(*project, options);
  return project;
} catch (const InputError& error) {
  throw InputError(path, error.Reason());  // as the user wrote it
} catch (const VendrelError& error) {
  ReportError(error);
  // With the failure inside, for a host that shows its contexts.
  std::throw_with_nested(InputError(path, "cannot be read: " + error.Text()));
}

std::shared_ptr<VBProject> LoadFolderOfModules(const std::string& path,
                                               const CommonOptions& options, const Streams& streams,
                                               LoadDepth depth,
                                               const std::function<void(VBProject&)>& prepare,
                                               int soFar) {
  std::vector<FileSystemObject> files = SourceFilesBelow(path);
  std::erase_if(files, [](const FileSystemObject& file) {
    return !ModuleKindOfExtension(file.Extension());  // those of VB.NET need a project
  });
  if (files.empty())
    throw ToolError(
        Worse(soFar, exNo),
        path + ": no project (.vbp, .vbproj) and no module lies in or below this folder");
  ApplyToProcess(options);
  const SourceCache::Scope readOnce;
  auto project = LoadWithCodePage(files.front().FullPath(), InputKind::Module, options);
  project->FileName.SetFullPath(AbsolutePath(path));
  project->ProjectName = project->FileName.LeafName();
  if (streams.Lasting) streams.Lasting->push_back(project);
  {
    const DiagnosticScope scope(&project->Diagnostics, project->FileName.FullPath());
    for (std::size_t i = 1; i < files.size(); ++i) AddModule(*project, files[i]);
  }
  if (depth == LoadDepth::ProjectFile) return project;
  if (prepare) prepare(*project);
  ProgressBar bar(*project, options, streams);
  project->Components.Populate();
  bar.Finish();
  ApplyCommentFile(*project, options);
  return project;
}

bool IsOfWebEditor(const FileSystemObject& file) {
  return EndsWithNoCaseAscii(file.FolderPath(), "\\_vti_cnf\\");
}

std::vector<FileSystemObject> SourceFilesBelow(const std::string& path) {
  std::vector<FileSystemObject> files;
  FileSystemObject(AbsolutePath(path)).FindFiles("*", 0, files);
  std::erase_if(files, [](const FileSystemObject& file) {
    const std::string extension = file.Extension();
    return (!ModuleKindOfExtension(extension) && !EqualsNoCaseAscii(extension, "vb")) ||
           IsOfWebEditor(file) || IsBackupPath(file.NativePath());
  });
  return files;
}

std::string UseCodePageFor(const std::string& path, const CommonOptions& options) {
  const CodePageChooser chooser(options.CodePage);
  CodePageGuess guess;
  if (chooser.Guesses()) {
    guess = GuessCodePage(FileSystemObject(path));
  } else {
    guess.Page = CodePage::Named(options.CodePage).Name();
  }
  FileOptions::Current().CodePage = guess.Page;
  return guess.Page == CodePage::Default().Name() ? std::string() : guess.Evidence;
}

std::string ReadByOptions(const std::string& nativePath, const CommonOptions& options) {
  std::string bytes = ReadWholeFile(nativePath);
  UseCodePageFor(nativePath, options);
  return bytes;
}

}  // namespace vendrel::cli
