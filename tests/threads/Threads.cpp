// Two threads, each with a workspace of its own that reads files and modules on two more, guess
// code pages, load, resolve, write and drop projects at once, and must come to what one thread
// comes to alone:
//     vendrelmodel_threads FOLDER...
// takes every project (.vbp) in and below the folders, and a generated one. Built with Thread
// Sanitizer (preset tsan) it also tells of every access that two threads share. Nothing is written
// in the folders.

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <iostream>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "bench/Generator.h"
#include "core/Workspace.h"
#include "diagnostics/VendrelError.h"
#include "output/Dump.h"
#include "project/ProjectCodePage.h"
#include "project/VBProject.h"
#include "services/CodePage.h"
#include "services/FileSource.h"
#include "services/SourceCache.h"

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kGeneratedLines = 20'000;

std::vector<std::string> ProjectsIn(int argc, char** argv, const fs::path& generated) {
  vendrel::bench::GeneratorOptions options;
  options.Lines = kGeneratedLines;
  vendrel::bench::WriteProject(options, generated.string());
  std::vector<std::string> paths{(generated / vendrel::bench::kProjectFileName).string()};
  for (int i = 1; i < argc; ++i)
    for (const auto& entry : fs::recursive_directory_iterator(argv[i]))
      if (entry.is_regular_file() && entry.path().extension() == ".vbp")
        paths.push_back(fs::absolute(entry.path()).string());
  return paths;
}

void ResolveAll(vendrel::VBProject& project, std::ostream& out) {
  for (vendrel::Component& component : project.Components)
    for (vendrel::Block& block : component.Blocks) {
      vendrel::TypeClassEnum typeClass{};
      out << block.QualifiedName() << ' '
          << (project.ResolveType(&component, block.ReturnType, typeClass) != nullptr) << ' '
          << (project.GetObjectByName(block.QualifiedName()) != nullptr) << '\n';
    }
}

void WriteAll(vendrel::VBProject& project, const std::string& folder, std::ostream& out) {
  fs::create_directories(folder);
  project.OutputFileName.SetFolderPath(folder);
  project.WriteOut();
  std::vector<fs::path> files(fs::directory_iterator{folder}, fs::directory_iterator{});
  std::sort(files.begin(), files.end());
  for (const fs::path& file : files)
    out << file.filename().string() << '\n' << vendrel::ReadWholeFile(file.string());
  fs::remove_all(folder);
}

// Everything that is seen of one project, in a workspace that ends with it and reads modules on so
// many threads.
std::size_t Outcome(const std::string& path, const std::string& folder, int jobs) {
  vendrel::Workspace workspace;
  workspace.Jobs = jobs;
  const vendrel::Workspace::Use use(workspace);
  std::ostringstream seen;
  try {
    vendrel::VBProject project;
    project.Reading = vendrel::ReadingRules::Complete();
    {
      const vendrel::SourceCache::Scope readOnce;  // ahead, by the threads of the workspace
      const std::string page = vendrel::GuessCodePage(vendrel::FileSystemObject(path)).Page;
      vendrel::FileOptions::Current().CodePage = page;
      seen << page << ' ' << project.Load(path) << '\n';
    }
    ResolveAll(project, seen);
    vendrel::DumpOptions options;
    options.Lines = true;
    vendrel::Dump(seen, vendrel::Describe(project), options);
    WriteAll(project, folder, seen);
  } catch (const vendrel::VendrelError& failure) {
    seen << failure.Text();
  }
  return std::hash<std::string>()(seen.str());
}

}  // namespace

int main(int argc, char** argv) {
  const fs::path scratch =
      fs::temp_directory_path() / ("vendrel-threads-" + std::to_string(std::random_device()()));
  const std::vector<std::string> paths = ProjectsIn(argc, argv, scratch / "generated");
  std::vector<std::size_t> alone;
  for (const std::string& path : paths) alone.push_back(Outcome(path, (scratch / "0").string(), 1));

  std::array<std::vector<std::size_t>, 2> together;
  std::array<std::thread, 2> threads;
  for (std::size_t n = 0; n < threads.size(); ++n)
    threads[n] = std::thread([&, n] {
      const std::string folder = (scratch / std::to_string(n + 1)).string();
      for (const std::string& path : paths) together[n].push_back(Outcome(path, folder, 2));
    });
  for (std::thread& thread : threads) thread.join();
  fs::remove_all(scratch);

  std::size_t different = 0;
  for (const auto& outcomes : together)
    for (std::size_t i = 0; i < paths.size(); ++i)
      if (outcomes[i] != alone[i]) {
        ++different;
        std::cout << "different beside another thread: " << paths[i] << '\n';
      }
  std::cout << paths.size() << " projects, twice beside each other: " << different
            << " different\n";
  return different == 0 ? 0 : 1;
}
