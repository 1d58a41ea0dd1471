#include <filesystem>
#include <functional>

#include "bench/Generator.h"
#include "bench/Micro.h"
#include "bench/Registered.h"
#include "core/Ascii.h"
#include "dotnet/Sources.h"
#include "project/ProjectFile.h"
#include "services/SourceText.h"
#include "uses/UseIndex.h"

namespace vendrel::bench {
namespace {

std::shared_ptr<VBProject> LoadProject(const std::string& path, const ReadingRules& reading) {
  auto project = std::make_shared<VBProject>();
  project->Reading = reading;
  project->SetSilent(true);
  std::string root;
  if (EndsWithNoCaseAscii(path, ".vbproj") &&
      FormOfNetProject(path, root) == NetProjectForm::MSBuild)
    project->LoadFromCustom(kMSBuildLoaderProgId, path);
  else
    project->Load(path);
  project->Components.Populate();
  ResolveSourceTypes(*project);
  return project;
}

std::shared_ptr<VBProject> GeneratedProject(std::int64_t lines, const ReadingRules& reading) {
  const auto folder = std::filesystem::temp_directory_path() / "vendrelmodel-bench" /
                      ("uses" + std::to_string(lines));
  GeneratorOptions options;
  options.Lines = lines;
  WriteProject(options, folder.string());
  return LoadProject((folder / kProjectFileName).string(), reading);
}

std::int64_t BytesOf(VBProject& project) {
  std::int64_t bytes = 0;
  const auto add = [&bytes](const auto& holder) {
    if (holder.SourceForm) bytes += static_cast<std::int64_t>(holder.SourceForm->Text.size());
  };
  if (project.ProjectFiles.Count() > 0) {
    for (const ProjectFile& file : project.ProjectFiles) add(file);
  } else {
    for (const Component& module : std::as_const(project.Components)) add(module);
  }
  return bytes;
}

// The scopes are made anew each time, as they are for one run of the tool.
void Measure(const std::string& name, int runs,
             const std::function<std::shared_ptr<VBProject>()>& load) {
  const std::shared_ptr<VBProject> project = load();
  Register("bind/" + name, runs, [project](benchmark::State& state) {
    std::int64_t uses = 0;
    for (auto _ : state) {
      UseBinder binder(*project);
      uses = 0;
      binder.BindAll([&uses](const NameUse&) { ++uses; });
      benchmark::DoNotOptimize(uses);
    }
    CountItems(state, uses, BytesOf(*project));
  });
  // The first time, when nothing of the assemblies behind a project of VB.NET has been read.
  Register("first/" + name, runs, [load](benchmark::State& state) {
    std::int64_t uses = 0, bytes = 0;
    for (auto _ : state) {
      state.PauseTiming();
      auto fresh = load();
      bytes = BytesOf(*fresh);
      state.ResumeTiming();
      uses = 0;
      UseBinder(*fresh).BindAll([&uses](const NameUse&) { ++uses; });
      state.PauseTiming();
      fresh.reset();
      state.ResumeTiming();
    }
    CountItems(state, uses, bytes);
  });
  Register("index/" + name, runs, [project](benchmark::State& state) {
    for (auto _ : state) {
      UseIndex index;
      index.Add(*project);
      benchmark::DoNotOptimize(index.All().size());
      state.counters["bytes kept/source byte"] =
          static_cast<double>(index.All().size_bytes()) / static_cast<double>(BytesOf(*project));
    }
    CountItems(state, 1, BytesOf(*project));
  });
}

}  // namespace

int RunUses(const UsesBenchOptions& options) {
  const ReadingRules& reading = Preset(options.Classic);
  if (!options.File.empty()) {
    Measure("file", options.Runs,
            [&options, &reading] { return LoadProject(options.File, reading); });
  } else {  // two sizes, so that growth shows
    Measure("lines:10k", options.Runs, [&reading] { return GeneratedProject(10'000, reading); });
    Measure("lines:100k", options.Runs, [&reading] { return GeneratedProject(100'000, reading); });
  }
  return RunRegistered();
}

}  // namespace vendrel::bench
