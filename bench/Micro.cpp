#include "bench/Micro.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "bench/Generator.h"
#include "bench/Registered.h"
#include "core/Workspace.h"
#include "project/VBProject.h"
#include "services/SourceText.h"
#include "services/Startup.h"
#include "text/Classifier.h"

namespace vendrel::bench {

const ReadingRules& Preset(bool classic) {
  return classic ? ReadingRules::Classic() : ReadingRules::Complete();
}

void Register(const std::string& name, int runs, std::function<void(benchmark::State&)> body) {
  benchmark::RegisterBenchmark(name.c_str(), std::move(body))
      ->Repetitions(runs)
      ->Unit(benchmark::kMicrosecond);
}

int RunRegistered() {
  std::string program = "vendrelmodel_bench";
  std::array<char*, 2> words{program.data(), nullptr};
  int count = 1;
  benchmark::Initialize(&count, words.data());
  const std::size_t ran = benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return ran > 0 ? 0 : 1;
}

void CountItems(benchmark::State& state, std::int64_t items, std::int64_t bytes) {
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * items);
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * bytes);
}

namespace {

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) lines.push_back(TakeLine(text, LineEnds::Kind::CrLf));
  return lines;
}

void ClassifyAll(const std::vector<std::string_view>& lines, LineClassifier& classifier) {
  ParsedLine line;
  for (const std::string_view text : lines) {
    if (line.Continued)
      classifier.Next(text, line);
    else
      classifier.First(text, line);
    benchmark::DoNotOptimize(line.LineType);
  }
}

// A condition over the last of the constants known, so that none can be overlooked.
std::string ConditionOver(int constants) {
  return "#If C" + std::to_string(constants) + " = " + std::to_string(constants) +
         " And Not C1 = 2 Then";
}

void FillConstants(CompilerConstants& into, int count) {
  for (int i = 1; i <= count; ++i) {
    const std::string number = std::to_string(i);
    into.AddFromDeclaration(std::string("#Const C").append(number).append(" = ").append(number));
  }
}

}  // namespace

int RunClassify(const MicroOptions& options) {
  EnsureStarted();
  GeneratorOptions size;
  size.Lines = 20'000;
  std::string text;
  GenerateProject(size, [&](const GeneratedFile& file) {
    if (file.Name != kProjectFileName)
      text += SourceText::Decode(file.Text, FileOptions::Current().Page())->Text;
  });
  const auto lines = LinesOf(text);
  Register("classify", options.Runs, [&](benchmark::State& state) {
    LineClassifier classifier(lvVisualBasic5or6, Preset(options.Classic));
    for (auto _ : state) ClassifyAll(lines, classifier);
    CountItems(state, static_cast<std::int64_t>(lines.size()),
               static_cast<std::int64_t>(text.size()));
  });
  return RunRegistered();
}

int RunEvaluate(const MicroOptions& options) {
  EnsureStarted();
  VBProject project;
  project.Reading = Preset(options.Classic);
  for (const int constants : {1, 10, 100}) {
    Register("evaluate/constants:" + std::to_string(constants), options.Runs,
             [&project, constants](benchmark::State& state) {
               CompilerConstants known;
               FillConstants(known, constants);
               const std::string condition = ConditionOver(constants);
               if (!known.Evaluate(condition, &project)) return state.SkipWithError("not true");
               for (auto _ : state) benchmark::DoNotOptimize(known.Evaluate(condition, &project));
               CountItems(state, 1, static_cast<std::int64_t>(condition.size()));
             });
  }
  return RunRegistered();
}

}  // namespace vendrel::bench
