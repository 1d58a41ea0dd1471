#include "bench/Load.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>

#include "bench/Generator.h"
#include "bench/Measure.h"
#include "core/Ascii.h"
#include "project/VBProject.h"
#include "services/FileSource.h"
#include "services/FolderCache.h"

namespace vendrel::bench {
namespace {

namespace fs = std::filesystem;

using Projects = std::vector<std::shared_ptr<VBProject>>;

// What is loaded together and makes one row.
struct Case {
  std::string Name;
  std::vector<std::string> ProjectFiles;
};

// The limit of every load: the bytes alone.
struct Source {
  double Seconds = 0;
  double Bytes = 0;
  double Lines = 0;
  double Modules = 0;
};

// One load in a process of its own.
struct Run {
  double ProjectSeconds = 0;  // the project files, no module
  double Seconds = 0;         // project files and modules
  double Cpu = 0;             // the same as time of the processor
  double Release = 0;         // dropping the tree
  double Kept = 0;            // bytes allocated by the load and still there
  double Mapped = 0;          // those of them in blocks of their own
  double Unloaded = 0;        // still there after UnloadSourceCode
  double Left = 0;            // still there when the tree is gone
  double Peak = 0;            // largest resident size, program included
  double Allocations = 0;
  double Failed = 0;  // projects that could not be read
};

std::shared_ptr<VBProject> NewProject(bool classic) {
  auto project = std::make_shared<VBProject>();
  project->Reading = classic ? ReadingRules::Classic() : ReadingRules::Complete();
  project->SetSilent(true);
  project->OnLineFailure = [](const VendrelError&, std::string_view, std::int32_t) {
    return StepOver::SkipLine;
  };
  return project;
}

Projects LoadProjectFiles(const Case& which, bool classic, double& failed) {
  Projects projects;
  for (const std::string& file : which.ProjectFiles) {
    auto project = NewProject(classic);
    if (project->Load(file))
      projects.push_back(std::move(project));
    else
      ++failed;
  }
  return projects;
}

std::vector<std::string> ModuleFiles(const Projects& projects) {
  std::vector<std::string> files;
  for (const auto& project : projects) {
    for (const ProjectFile& file : project->ProjectFiles)
      files.push_back(file.FileName.NativePath());
    if (project->ProjectFiles.Count() > 0) continue;
    for (const Component& component : project->Components.Listed())
      if (component.FileName.Exists()) files.push_back(component.FileName.NativePath());
  }
  return files;
}

Source MeasureReading(const Case& which, int runs) {
  double failed = 0;
  const std::vector<std::string> files = ModuleFiles(LoadProjectFiles(which, false, failed));
  Source source;
  source.Modules = static_cast<double>(files.size());
  for (const std::string& file : files) {  // this turn also brings the files into memory
    const std::string bytes = ReadWholeFile(file);
    source.Bytes += static_cast<double>(bytes.size());
    source.Lines += static_cast<double>(std::count(bytes.begin(), bytes.end(), '\n'));
    if (!bytes.empty() && bytes.back() != '\n') ++source.Lines;
  }
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const Stopwatch watch;
    for (const std::string& file : files) ReadWholeFile(file);
    times.push_back(watch.Seconds());
  }
  source.Seconds = Best(times);
  return source;
}

double Difference(const Allocated& from, const Allocated& to) {
  return static_cast<double>(to.Sum() - from.Sum());
}

Run MeasureLoad(const Case& which, bool classic) {
  Run run;
  const Allocated before = Allocated::Now();
  const std::int64_t callsBefore = AllocationCount();
  const Stopwatch watch;
  const CpuWatch cpu;
  std::optional<KeptFolders> folders;
  folders.emplace();
  Projects projects = LoadProjectFiles(which, classic, run.Failed);
  run.ProjectSeconds = watch.Seconds();
  for (const auto& project : projects) {
    try {
      project->Components.Populate();
    } catch (const VendrelError&) {
      ++run.Failed;
    }
  }
  folders.reset();
  run.Seconds = watch.Seconds();
  run.Cpu = cpu.Seconds();
  run.Allocations = static_cast<double>(AllocationCount() - callsBefore);
  run.Peak = static_cast<double>(PeakResident());
  const Allocated loaded = Allocated::Now();
  run.Kept = Difference(before, loaded);
  run.Mapped = static_cast<double>(loaded.Mapped - before.Mapped);
  for (const auto& project : projects) project->UnloadSourceCode();
  run.Unloaded = Difference(before, Allocated::Now());
  const Stopwatch release;
  Projects().swap(projects);
  run.Release = release.Seconds();
  run.Left = Difference(before, Allocated::Now());
  return run;
}

// The numbers of a plain struct of doubles on their way between processes.
template <typename Numbers>
Numbers Measured(const std::function<Numbers()>& work) {
  constexpr std::size_t kCount = sizeof(Numbers) / sizeof(double);
  const auto numbers = InOwnProcess([&] {
    const Numbers result = work();
    const auto* first = reinterpret_cast<const double*>(&result);
    return std::vector<double>(first, first + kCount);
  });
  if (numbers.size() != kCount) throw std::runtime_error("a measuring process was cut short");
  Numbers result;
  std::copy(numbers.begin(), numbers.end(), reinterpret_cast<double*>(&result));
  return result;
}

std::vector<double> Times(const std::vector<Run>& runs, double Run::*member) {
  std::vector<double> times;
  times.reserve(runs.size());
  for (const Run& run : runs) times.push_back(run.*member);
  return times;
}

constexpr double kMillion = 1e6;

void AddRow(Table& table, const Case& which, const Source& source, const std::vector<Run>& runs) {
  const double best = Best(Times(runs, &Run::Seconds));
  const double median = Median(Times(runs, &Run::Seconds));
  const Run& one = runs.front();  // what is not a time is alike in all runs
  const double bytes = std::max(source.Bytes, 1.0), lines = std::max(source.Lines, 1.0);
  table.Add({which.Name,
             Grouped(static_cast<std::int64_t>(source.Modules)),
             Grouped(static_cast<std::int64_t>(source.Lines)),
             Decimal(bytes / kMillion, 2),
             Decimal(best * 1e3, 1),
             Decimal(median * 1e3, 1),
             Decimal(Best(Times(runs, &Run::Cpu)) * 1e3, 1),
             Decimal(lines / best / kMillion, 2),
             Decimal(lines / median / kMillion, 2),
             Decimal(bytes / best / kMillion, 1),
             Decimal(best / lines * 1e9, 0),
             Decimal(bytes / std::max(source.Seconds, 1e-9) / kMillion, 0),
             Decimal(Best(Times(runs, &Run::ProjectSeconds)) * 1e3, 2),
             Decimal(one.Kept / bytes, 2),
             Decimal(one.Mapped / bytes, 2),
             Decimal(one.Unloaded / bytes, 2),
             Decimal(one.Kept / lines, 1),
             Decimal(one.Peak / kMillion, 1),
             Decimal(one.Allocations / lines, 2),
             Decimal(Best(Times(runs, &Run::Release)) * 1e3, 1),
             Grouped(static_cast<std::int64_t>(one.Left))});
  if (one.Failed > 0)
    std::fprintf(stderr, "%s: %.0f of %zu projects could not be read\n", which.Name.c_str(),
                 one.Failed, which.ProjectFiles.size());
}

Case FolderCase(const std::string& folder) {
  Case found{fs::path(folder).filename().string(), {}};
  if (found.Name.empty()) found.Name = folder;
  for (const auto& entry :
       fs::recursive_directory_iterator(folder, fs::directory_options::skip_permission_denied))
    if (const std::string extension = entry.path().extension().string();
        entry.is_regular_file() &&
        (EqualsNoCaseAscii(extension, ".vbp") || EqualsNoCaseAscii(extension, ".vbproj")))
      found.ProjectFiles.push_back(fs::absolute(entry.path()).string());
  std::sort(found.ProjectFiles.begin(), found.ProjectFiles.end());
  return found;
}

std::vector<Case> Cases(const LoadOptions& options) {
  std::vector<Case> cases;
  std::vector<std::int64_t> sizes = options.Lines;
  if (sizes.empty() && options.Folders.empty()) sizes = {10'000, 100'000, 1'000'000};
  cases.reserve(sizes.size() + options.Folders.size());
  for (const std::int64_t lines : sizes)
    cases.push_back({Grouped(lines) + " lines", {GeneratedProject(options.WorkFolder, lines)}});
  if (options.DotNet)
    for (const std::int64_t lines : sizes)
      cases.push_back(
          {Grouped(lines) + " VB.NET", {GeneratedNetProject(options.WorkFolder, lines)}});
  for (const std::string& folder : options.Folders) cases.push_back(FolderCase(folder));
  return cases;
}

constexpr const char* kLegend =
    "ms, best, median: project file and modules from disk to tree; each run in its own process\n"
    "cpu: the least processor time of a run, system calls included; Mlines/s and MB/s are by ms\n"
    "limit: the bytes of the same files read and dropped    project: the project files alone\n"
    "kept, mapped, unloaded: bytes allocated for a byte of source after the load (text included),\n"
    "  those of them that the allocator has mapped, and what stays after UnloadSourceCode\n"
    "peak: largest resident size, program included    left: bytes not freed with the tree\n";

}  // namespace

std::string GeneratedProject(const std::string& workFolder, std::int64_t lines) {
  const fs::path folder = fs::path(workFolder) / std::to_string(lines);
  const fs::path file = folder / kProjectFileName;
  if (!fs::exists(file)) {  // written last, so it is there only when all modules are
    GeneratorOptions options;
    options.Lines = lines;
    WriteProject(options, folder.string());
  }
  return file.string();
}

// The procedures of the generated modules, each module as a class of VB.NET.
std::string GeneratedNetProject(const std::string& workFolder, std::int64_t lines) {
  const fs::path folder = fs::path(workFolder) / (std::to_string(lines) + "-net");
  const fs::path file = folder / "Generated.vbproj";
  if (fs::exists(file)) return file.string();
  fs::create_directories(folder);
  double failed = 0;
  const Case plain{{}, {GeneratedProject(workFolder, lines)}};
  std::string listed;
  for (const std::string& module : ModuleFiles(LoadProjectFiles(plain, false, failed))) {
    const std::string bytes = ReadWholeFile(module);
    const fs::path leaf = fs::path(module).stem().string() + ".vb";
    std::ofstream out(folder / leaf, std::ios::binary);
    out << "Public Class " << leaf.stem().string() << "\r\n";
    bool inHeader = true;
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t end = std::min(bytes.find('\n', at), bytes.size() - 1) + 1;
      const std::string line = bytes.substr(at, end - at);
      at = end;
      const bool isAttribute = StartsWithNoCaseAscii(line, "attribute ");
      if (isAttribute) inHeader = false;
      if (!inHeader && !isAttribute) out << line;
    }
    out << "End Class\r\n";
    listed += "<File RelPath=\"" + leaf.string() + "\" BuildAction=\"Compile\"/>";
  }
  std::ofstream(file) << "<VisualStudioProject><VisualBasic><Build><Settings RootNamespace=\"G\" "
                         "AssemblyName=\"G\"/></Build><Files><Include>"
                      << listed << "</Include></Files></VisualBasic></VisualStudioProject>";
  return file.string();
}

int RunLoad(const LoadOptions& options) {
  Table table({"source",     "modules",    "lines",  "MB",       "best ms",    "median ms",
               "cpu ms",     "Mlines/s",   "median", "MB/s",     "ns/line",    "limit MB/s",
               "project ms", "kept",       "mapped", "unloaded", "bytes/line", "peak MB",
               "news/line",  "release ms", "left"});
  bool any = false;
  for (const Case& which : Cases(options)) {
    if (which.ProjectFiles.empty()) {
      std::fprintf(stderr, "%s: no project file below it\n", which.Name.c_str());
      continue;
    }
    const auto source = Measured<Source>([&] { return MeasureReading(which, options.Runs); });
    std::vector<Run> runs;
    for (int i = 0; i < std::max(options.Runs, 1); ++i)
      runs.push_back(Measured<Run>([&] { return MeasureLoad(which, options.Classic); }));
    AddRow(table, which, source, runs);
    any = true;
  }
  if (!any) return 1;
  std::printf("%s reading, best and median of %d runs\n\n%s\n%s",
              options.Classic ? "classic" : "complete", options.Runs, table.Text().c_str(),
              kLegend);
  return 0;
}

}  // namespace vendrel::bench
