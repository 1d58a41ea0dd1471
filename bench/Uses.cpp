#include <filesystem>

#include "bench/Generator.h"
#include "bench/Micro.h"
#include "bench/Registered.h"
#include "services/SourceText.h"
#include "uses/UseIndex.h"

namespace vendrel::bench {
namespace {

std::shared_ptr<VBProject> LoadProject(const std::string& path, const ReadingRules& reading) {
  auto project = std::make_shared<VBProject>();
  project->Reading = reading;
  project->SetSilent(true);
  project->Load(path);
  project->Components.Populate();
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
  for (const Component& module : std::as_const(project.Components))
    if (module.SourceForm) bytes += static_cast<std::int64_t>(module.SourceForm->Text.size());
  return bytes;
}

// The scopes are made anew each time, as they are for one run of the tool.
void Measure(const std::string& name, int runs, const std::shared_ptr<VBProject>& project) {
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
  Register("index/" + name, runs, [project](benchmark::State& state) {
    for (auto _ : state) {
      UseIndex index;
      index.Add(*project);
      benchmark::DoNotOptimize(index.All().size());
    }
    CountItems(state, 1, BytesOf(*project));
  });
}

}  // namespace

int RunUses(const UsesBenchOptions& options) {
  const ReadingRules& reading = Preset(options.Classic);
  if (!options.File.empty()) {
    Measure("file", options.Runs, LoadProject(options.File, reading));
  } else {  // two sizes, so that growth shows
    Measure("lines:10k", options.Runs, GeneratedProject(10'000, reading));
    Measure("lines:100k", options.Runs, GeneratedProject(100'000, reading));
  }
  return RunRegistered();
}

}  // namespace vendrel::bench
