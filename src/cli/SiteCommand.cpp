#include <cstring>
#include <memory>

#include "cli/AssemblySet.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/Progress.h"
#include "cli/Report.h"
#include "cli/ShownText.h"
#include "dotnet/Sources.h"
#include "site/Site.h"
#include "site/SiteChanges.h"

namespace vendrel::cli {
namespace {

struct SiteArguments {
  CommonOptions Common;
  Inputs Paths;
  std::string To;
  std::string Title;
  std::string Assets;
  std::string Before;
  std::vector<std::string> Links;
  bool Private = false;
  bool NoSource = false;
  bool Graphs = false;
  bool Yes = false;
};

/// Projects that stay loaded together: pages link from each to each.
class LoadedEstate {
 public:
  LoadedEstate(const CommonOptions& options, const Streams& streams)
      : mOptions(options), mStreams(streams) {}

  int Load(const Inputs& inputs) {
    const int code = ForEachInput(inputs, mOptions, mStreams,
                                  [&](const std::string& path) { return LoadPath(path); });
    Tie();
    return code;
  }
  const std::vector<VBProject*>& All() const { return mAll; }

 private:
  int LoadPath(const std::string& path) {
    const InputKind kind = KindOfInput(path);
    if (kind == InputKind::Group) return TakeGroup(path);
    if (kind == InputKind::Folder) return TakeFolder(path);
    if (kind == InputKind::Unknown && IsSetFile(path)) return TakeSet(path);
    Take(LoadInput(path, mOptions, mStreams));
    return ReportDiagnostics(*mAll.back(), mOptions, mStreams.Err);
  }

  void Take(std::shared_ptr<VBProject> project) {
    mAll.push_back(project.get());
    const std::string& name = project->ProjectName;
    mProjects.Add(std::move(project), mProjects.HasKey(name) ? std::string_view() : name);
  }

  int TakeGroup(const std::string& path) {
    mGroups.push_back(LoadGroup(path, mOptions, mStreams));
    VBProjects& members = mGroups.back()->AllVBProjects();
    for (std::size_t i = 1; i <= members.Count(); ++i) Take(members.Share(i));
    return ReportGroup(*mGroups.back(), mOptions, mStreams.Err);
  }

  int TakeFolder(const std::string& path) {
    Diagnostics told;
    int code = exDone;
    const std::vector<FileSystemObject> files = ProjectFilesBelow(path, told);
    for (const FileSystemObject& file : files) {
      auto project = LoadOneOf(file.FullPath(), mOptions, mStreams, told);
      if (!project) continue;
      code = Worse(code, ReportDiagnostics(*project, mOptions, mStreams.Err));
      Take(std::move(project));
    }
    code = Worse(code, ReportList(told, mOptions, mStreams.Err));
    if (!files.empty()) return code;
    auto project = LoadFolderOfModules(path, mOptions, mStreams, LoadDepth::Modules, {}, code);
    code = Worse(code, ReportDiagnostics(*project, mOptions, mStreams.Err));
    Take(std::move(project));
    return code;
  }

  int TakeSet(const std::string& path) {
    SetOptions options;
    options.Common = mOptions;
    options.Files.push_back(path);
    mSets.push_back(LoadSet(options));
    for (Assembly& assembly : *mSets.back()) mAll.push_back(assembly.VBProject());
    return ReportSet(*mSets.back(), mOptions, mStreams.Err);
  }

  void Tie() {
    mProjects.CementReferences();
    std::vector<VBProject*> ofNet;
    for (VBProject* project : mAll)
      if (project->LanguageVersion() == lvVisualBasicDotNet) ofNet.push_back(project);
    for (VBProject* project : ofNet) TieNetReferences(*project, ofNet);
  }

  const CommonOptions& mOptions;
  const Streams& mStreams;
  std::vector<std::shared_ptr<VBProjectGroup>> mGroups;
  std::vector<std::shared_ptr<Assemblies>> mSets;
  VBProjects mProjects;
  std::vector<VBProject*> mAll;
};

std::string TitleOf(const SiteArguments& arguments, const LoadedEstate& estate) {
  if (!arguments.Title.empty()) return arguments.Title;
  const FileSystemObject file(AbsolutePath(arguments.Paths.Paths.front()));
  if (!arguments.Paths.AreSeveral() && estate.All().size() > 1) return file.BaseName();
  return estate.All().size() == 1 ? estate.All().front()->ProjectName : "Projects";
}

std::string NativeOf(const std::string& path) {
  return FileSystemObject(AbsolutePath(path)).NativePath();
}

// A signal ends the run between two files, and what there is by then is said.
site::FileCounts WriteOrTell(const LoadedEstate& estate, const SiteArguments& arguments,
                             site::SiteOptions& options, const Streams& streams) {
  ProgressOfPages progress(arguments.Common, streams);
  options.Progress = [&](std::size_t done, std::size_t all, std::size_t files) {
    progress.Reach(done, all, files);
  };
  try {
    return site::WriteSite(estate.All(), NativeOf(arguments.To), options);
  } catch (const Interrupted& interrupt) {
    throw ToolError(static_cast<ExitCode>(SignalBase + interrupt.Signal),
                    std::string("interrupted (") + strsignal(interrupt.Signal) + "); " +
                        CountedWith(progress.Files(), "page") + " stood in " + Shown(arguments.To) +
                        " by then, and the same command goes on from there");
  }
}

int RunSite(const SiteArguments& arguments, const Streams& streams) {
  LoadedEstate estate(arguments.Common, streams);
  int code = estate.Load(arguments.Paths);
  if (estate.All().empty())
    throw ToolError(Worse(code, exNo), arguments.Paths.Shown() + ": nothing could be loaded");
  site::SiteOptions options;
  options.Title = TitleOf(arguments, estate);
  options.Private = arguments.Private;
  options.Source = !arguments.NoSource;
  options.Graphs = arguments.Graphs;
  options.Force = arguments.Yes;
  if (!arguments.Assets.empty()) options.AssetsFolder = NativeOf(arguments.Assets);
  for (const std::string& link : arguments.Links) {
    const NamedValue value = CutNamedValue("--link", link);
    options.Links.emplace_back(value.Name, value.Value);
  }
  site::ReleaseState before;
  if (!arguments.Before.empty()) {
    LoadedEstate old(arguments.Common, streams);
    code = Worse(code, old.Load({{arguments.Before}}));
    for (VBProject* project : old.All()) before.Add(*project);
    options.Before = &before;
  }
  const site::FileCounts counts = WriteOrTell(estate, arguments, options, streams);
  streams.Out << Shown(arguments.To) << ": " << CountedWith(counts.Written, "file") << " written, "
              << counts.Unchanged << " unchanged, " << counts.Removed << " removed\n";
  return code;
}

}  // namespace

void AddSiteCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("site", "A documentation site of projects, for a browser");
  const auto arguments = std::make_shared<SiteArguments>();
  AddInputs(*command, arguments->Paths);
  command->add_option("--to", arguments->To, "The folder of the site; made, or kept up to date")
      ->type_name("FOLDER")
      ->required();
  command->add_option("--title", arguments->Title, "What the site is called");
  command->add_flag("--private", arguments->Private, "Pages for private members too");
  command->add_flag("--no-source", arguments->NoSource, "Without the pages of source");
  command
      ->add_option("--link", arguments->Links,
                   "Types whose names begin so are described there; {name} is the name")
      ->type_name("PREFIX=URL")
      ->allow_extra_args(false);
  command->add_option("--diff", arguments->Before, "Marks what differs from another release")
      ->type_name("BEFORE");
  command->add_flag("--graphs", arguments->Graphs, "Graphs, drawn by Graphviz");
  command
      ->add_option("--assets", arguments->Assets,
                   "Files that replace page.html, style.css and site.js")
      ->type_name("FOLDER");
  command->add_flag("--yes", arguments->Yes, "Take a folder that holds other files");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    arguments->Common.XmlDocs = true;
    job.Run = [arguments, &streams = job.Streams] { return RunSite(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
