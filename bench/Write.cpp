#include "bench/Write.h"

#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "bench/Generator.h"
#include "bench/Measure.h"
#include "project/VBProject.h"
#include "services/Procedures.h"

namespace vendrel::bench {
namespace {

namespace fs = std::filesystem;

// Seconds of the best of some runs.
double BestOf(int runs, const std::function<void()>& work) {
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const Stopwatch watch;
    work();
    times.push_back(watch.Seconds());
  }
  return Best(times);
}

std::string Rate(double bytes, double seconds) { return Decimal(bytes / seconds / 1e6, 0); }

// The limit that has the same safety: each file copied beside its target, flushed and renamed.
void CopyAll(const fs::path& from, const fs::path& to) {
  for (const auto& file : fs::directory_iterator(from))
    if (!FileCopy(file.path().string(), (to / file.path().filename()).string()))
      throw std::runtime_error("cannot copy " + file.path().string());
}

void AddRow(Table& table, const LoadOptions& options, std::int64_t lines) {
  const std::string file = GeneratedProject(options.WorkFolder, lines);
  VBProject project;
  project.Reading = options.Classic ? ReadingRules::Classic() : ReadingRules::Complete();
  if (!project.Load(file)) throw std::runtime_error("cannot read " + file);
  project.Components.Populate();
  const fs::path target = fs::path(options.WorkFolder) / "written";
  fs::remove_all(target);
  fs::create_directories(target);
  project.OutputFileName.SetFolderPath(target.string());
  const double plain = BestOf(options.Runs, [&] { project.WriteOut(); });
  double bytes = 0;
  for (const auto& written : fs::directory_iterator(target))
    bytes += static_cast<double>(written.file_size());
  const double copied =
      BestOf(options.Runs, [&] { CopyAll(fs::path(file).parent_path(), target); });
  project.Tags["fvbOutputLineNumbers"] = "10:10";
  const double numbered = BestOf(options.Runs, [&] { project.WriteOut(); });
  table.Add({Grouped(lines), Grouped(static_cast<std::int64_t>(project.Components.Count())),
             Decimal(bytes / 1e6, 1), Decimal(plain * 1e3, 1), Rate(bytes, plain),
             Decimal(plain / static_cast<double>(lines) * 1e9, 0), Rate(bytes, numbered),
             Rate(bytes, copied)});
  fs::remove_all(target);
}

}  // namespace

int RunWrite(const LoadOptions& options) {
  std::vector<std::int64_t> sizes = options.Lines;
  if (sizes.empty()) sizes = {10'000, 100'000, 1'000'000};
  Table table(
      {"lines", "modules", "MB", "best ms", "MB/s", "ns/line", "numbered MB/s", "copied MB/s"});
  for (const std::int64_t lines : sizes) AddRow(table, options, lines);
  std::fputs(table.Text().c_str(), stdout);
  return 0;
}

}  // namespace vendrel::bench
