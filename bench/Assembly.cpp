#include <cstdio>
#include <filesystem>
#include <functional>
#include <stdexcept>

#include "bench/Measure.h"
#include "bench/Micro.h"
#include "dotnet/metadata/AssemblyLister.h"
#include "model/Events.h"
#include "project/VBProject.h"
#include "services/FileSource.h"

namespace vendrel::bench {
namespace {

// Seconds of wall time and of the processor, bytes allocated, elements made.
using Result = std::vector<double>;

struct Watch {
  Allocated Before = Allocated::Now();
  CpuWatch Cpu;
  Stopwatch Wall;
  Result Stop(std::size_t elements) const {
    const double seconds = Wall.Seconds(), computed = Cpu.Seconds();
    return {seconds, computed, static_cast<double>(Allocated::Now().Sum() - Before.Sum()),
            static_cast<double>(elements)};
  }
};

Result ReadBytes(const std::string& path) {
  const Watch watch;
  const std::string bytes = ReadWholeFile(path);
  return watch.Stop(0 * bytes.size());
}

Result ListNames(const std::string& path) {
  const Watch watch;
  metadata::AssemblyStore store;
  std::size_t names = 0;
  metadata::ListAssembly(store, *store.Open(path), {},
                         [&](const metadata::ListedEntry&) { ++names; });
  return watch.Stop(names);
}

std::size_t CountOwn(const VBProject& project) {
  std::size_t elements = 0;
  for (const Component& component : project.Components.Listed()) {
    elements += 1 + component.EventDeclarations.Listed().Count();
    for (const Block& block : component.Blocks.Listed()) {
      elements += 1 + block.Parameters->Count() + block.Variables->Count();
      if (const Blocks* overloads = block.OverloadBlocks().IfAny())
        for (const Block& overload : *overloads) elements += 1 + overload.Parameters->Count();
    }
  }
  return elements;
}

// What is inherited is made and measured apart: bytes and elements are those of it alone.
Result LoadTree(const std::string& path, bool classic, bool inherited) {
  VBProject project;
  project.Reading = classic ? ReadingRules::Classic() : ReadingRules::Complete();
  const Watch own;
  project.LoadFromAssembly(path);
  Result result = own.Stop(0);
  if (!inherited) {
    result[3] = static_cast<double>(CountOwn(project));
    return result;
  }
  const std::size_t before = CountOwn(project);
  const Watch watch;
  for (const Component& component : project.Components.Listed()) component.Blocks.Count();
  result = watch.Stop(0);
  result[3] = static_cast<double>(CountOwn(project) - before);
  return result;
}

void AddRow(Table& table, const char* what, double bytes, int runs,
            const std::function<Result()>& work) {
  const TimedRuns timed = TimeRuns(runs, work);
  const double members = timed.Last[3];
  std::vector<std::string> row = timed.Columns(what);
  row.push_back(Decimal(timed.Last[2] / bytes, 2));
  row.push_back(members > 0 ? Decimal(timed.Last[2] / members, 0) : "");
  row.push_back(Grouped(static_cast<std::int64_t>(members)));
  table.Add(std::move(row));
}

}  // namespace

int RunAssembly(const AssemblyBenchOptions& options) {
  const double bytes = static_cast<double>(std::filesystem::file_size(options.File));
  const std::string path = std::filesystem::absolute(options.File).string();
  std::printf("%s, %s MB\n", path.c_str(), Decimal(bytes / 1e6, 2).c_str());
  Table table({"", "best ms", "median ms", "cpu ms", "kept/byte", "bytes each", "elements"});
  AddRow(table, "the bytes alone", bytes, options.Runs, [&] { return ReadBytes(path); });
  AddRow(table, "names, no tree", bytes, options.Runs, [&] { return ListNames(path); });
  AddRow(table, "the tree, own members", bytes, options.Runs,
         [&] { return LoadTree(path, options.Classic, false); });
  AddRow(table, "inherited members on top", bytes, options.Runs,
         [&] { return LoadTree(path, options.Classic, true); });
  std::fputs(table.Text().c_str(), stdout);
  return 0;
}

}  // namespace vendrel::bench
