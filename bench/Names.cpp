#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "bench/Generator.h"
#include "bench/Micro.h"
#include "bench/Registered.h"
#include "names/NameWalk.h"
#include "project/VBProjectGroup.h"

namespace vendrel::bench {
namespace {

constexpr int kProjects = 4;
constexpr std::int64_t kLinesOfEach = 250'000;

/// Type names as they stand in declarations, each with its module.
using TypeUses = std::vector<std::pair<Component*, std::string>>;

// A group of generated projects, of which the first refers to the others.
std::shared_ptr<VBProjectGroup> LoadGenerated(const ReadingRules& reading) {
  auto group = std::make_shared<VBProjectGroup>();
  for (int i = 1; i <= kProjects; ++i) {
    const auto folder = std::filesystem::temp_directory_path() / "vendrelmodel-bench" /
                        ("names" + std::to_string(i));
    GeneratorOptions options;
    options.Lines = kLinesOfEach;
    options.Seed = static_cast<std::uint64_t>(i);
    WriteProject(options, folder.string());
    const auto project = std::make_shared<VBProject>();
    project->Reading = reading;
    project->Load((folder / kProjectFileName).string());
    project->ProjectName = "Project" + std::to_string(i);
    project->SetVBProjectGroup(group.get());
    project->Components.Populate();
    group->AllVBProjects().Add(project, project->ProjectName);
  }
  VBProject& first = *group->AllVBProjects().Item(1);
  for (int i = 2; i <= kProjects; ++i) {
    const auto reference = std::make_shared<Reference>();
    reference->SetReferencedProject(group->AllVBProjects().Item(i));
    first.References.Add(reference);
  }
  return group;
}

std::vector<std::string> NamesOf(VBProjectGroup& group) {
  std::vector<std::string> names;
  for (VBProject& project : group.AllVBProjects())
    ForEachNamedElement(project, [&](const CodeElement& e) { names.push_back(e.QualifiedName()); });
  return names;
}

TypeUses TypesOf(VBProjectGroup& group) {
  TypeUses uses;
  VBProject& first = *group.AllVBProjects().Item(1);
  for (VBProject& project : group.AllVBProjects())
    ForEachNamedElement(project, [&](CodeElement& element) {
      const auto* parameter = dynamic_cast<const Parameter*>(&element);
      const auto* variable = dynamic_cast<const Variable*>(&element);
      if (!parameter && !variable) return;
      const std::string_view type = parameter ? parameter->VariableType : variable->TypeName;
      if (!VBProject::IsIntrinsicType(type))
        uses.emplace_back(element.OwnComponent(), std::string(type));
    });
  // The first project looks for the types of all, from a module of its own.
  for (auto& use : uses) use.first = first.Components.Item(1);
  return uses;
}

}  // namespace

int RunNames(const MicroOptions& options) {
  const auto group = LoadGenerated(Preset(options.Classic));
  VBProject& first = *group->AllVBProjects().Item(1);
  const auto names = NamesOf(*group);
  const TypeUses types = TypesOf(*group);
  Register("GetObjectByName", options.Runs, [&](benchmark::State& state) {
    for (auto _ : state)
      for (const std::string& name : names) benchmark::DoNotOptimize(first.GetObjectByName(name));
    CountItems(state, static_cast<std::int64_t>(names.size()), 0);
  });
  Register("ResolveType", options.Runs, [&](benchmark::State& state) {
    for (auto _ : state) {
      for (const auto& [component, type] : types) {
        TypeClassEnum typeClass = tcUnresolved;
        benchmark::DoNotOptimize(first.ResolveType(component, type, typeClass));
      }
    }
    CountItems(state, static_cast<std::int64_t>(types.size()), 0);
  });
  return RunRegistered();
}

}  // namespace vendrel::bench
