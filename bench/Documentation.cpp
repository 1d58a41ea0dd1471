#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>

#include "bench/Measure.h"
#include "bench/Micro.h"
#include "dotnet/DocumentationFile.h"
#include "model/Events.h"
#include "project/Assembly.h"
#include "services/FileSource.h"

namespace vendrel::bench {
namespace {

constexpr int kMethods = 40;

std::string TypeName(int type) { return "Bench.Space.Type" + std::to_string(type); }

// What a compiler writes for one class of a library that is documented well.
std::string DocumentationOf(int type) {
  const std::string name = TypeName(type), next = TypeName(type + 1);
  std::string text = "        <member name=\"T:" + name + "\">\n            <summary>\n";
  text += "            Holds what <see cref=\"T:" + next + "\"/> gives out.\n";
  text += "            </summary>\n        </member>\n";
  for (int i = 0; i < kMethods; ++i) {
    const std::string method = "M:" + name + ".Work" + std::to_string(i);
    text += "        <member name=\"" + method + "(System.String,System.Int32)\">\n";
    text +=
        "            <summary>\n            Does the work that was asked for, and tells of it "
        "when it is\n            done. A second call waits for the first.\n"
        "            </summary>\n"
        "            <param name=\"text\">What is written for people to read.</param>\n"
        "            <param name=\"amount\">How often; 0 or less is <c>1</c>.</param>\n"
        "            <returns>Whether all of it could be done, see <see cref=\"" +
        method + "(System.String,System.Int32)\"/>.</returns>\n";
    if (i % 4 == 0)
      text +=
          "            <remarks>It is <see langword=\"null\"/> for <paramref name=\"text\"/> "
          "that is empty.\n            <para>The <see cref=\"T:" +
          next +
          "\">other one</see> does not care.</para></remarks>\n"
          "            <exception cref=\"T:System.ArgumentException\">It is empty.</exception>\n";
    if (i % 10 == 0)
      text +=
          "            <example>How it is called:\n<code>\n    var done = Work(\"x\", 2);\n"
          "    if (!done) throw;\n</code></example>\n";
    text += "        </member>\n";
  }
  return text;
}

struct Sample {
  std::string Path;
  int Types = 0;
  double Bytes = 0;
};

Sample Write(const DocumentationBenchOptions& options) {
  std::filesystem::create_directories(options.WorkFolder);
  Sample sample{options.WorkFolder + "/Documentation.xml"};
  std::ofstream out(sample.Path, std::ios::binary);
  out << "<?xml version=\"1.0\"?>\n<doc>\n    <assembly><name>Bench</name></assembly>\n"
         "    <members>\n";
  while (static_cast<double>(out.tellp()) < 1e6 * options.Megabytes)
    out << DocumentationOf(sample.Types++);
  out << "    </members>\n</doc>\n";
  sample.Bytes = static_cast<double>(out.tellp());
  return sample;
}

std::shared_ptr<VBProject> TreeOf(const Sample& sample, bool classic) {
  auto project = std::make_shared<VBProject>();
  project->Reading = classic ? ReadingRules::Classic() : ReadingRules::Complete();
  project->SetLanguageVersion(lvVisualBasicDotNet);
  project->Components.DoNotPopulate = true;
  for (int type = 0; type < sample.Types; ++type) {
    const std::string name = TypeName(type);
    const auto component = project->netCreateComponent(lsFullyLoadedNoCode, name, "PUBLIC", ftClass,
                                                       name, false, false, {});
    for (int i = 0; i < kMethods; ++i) {
      Block* block =
          component->netCreateBlock(btFunction, "Work" + std::to_string(i), "PUBLIC",
                                    "System.Boolean", true, {}, false, false, false, false);
      block->netCreateParameter("text", "System.String", {}, false);
      block->netCreateParameter("amount", "System.Int32", {}, false);
    }
  }
  return project;
}

// Wall and processor seconds, bytes kept, the peak above what was there, members.
using Result = std::vector<double>;

Result Cut(const Sample& sample) {
  const Stopwatch wall;
  const CpuWatch cpu;
  const Allocated before = Allocated::Now();
  const std::int64_t peak = PeakResident();
  const auto file = DocumentationFile::Read(sample.Path);
  return {wall.Seconds(), cpu.Seconds(), static_cast<double>(Allocated::Now().Sum() - before.Sum()),
          static_cast<double>(PeakResident() - peak), static_cast<double>(file->Members().size())};
}

Result Integrate(const Sample& sample, bool classic) {
  const auto project = TreeOf(sample, classic);
  Assembly assembly;
  assembly.FileName.SetFullPath(sample.Path);
  assembly.FileName.SetExtension("dll");
  const Allocated before = Allocated::Now();
  const std::int64_t peak = PeakResident();
  const Stopwatch wall;
  const CpuWatch cpu;
  assembly.IntegrateCommentFile(*project, nullptr, true, false);
  return {wall.Seconds(), cpu.Seconds(), static_cast<double>(Allocated::Now().Sum() - before.Sum()),
          static_cast<double>(PeakResident() - peak),
          static_cast<double>(assembly.Documentation->Placed)};
}

void AddRow(Table& table, const char* what, double bytes, int runs,
            const std::function<Result()>& work) {
  const TimedRuns timed = TimeRuns(runs, work);
  std::vector<std::string> row = timed.Columns(what);
  row.push_back(Decimal(bytes / 1e6 / timed.Computed, 1));
  row.push_back(Decimal(timed.Last[2] / bytes, 2));
  row.push_back(Decimal(timed.Last[3] / bytes, 2));
  row.push_back(Grouped(static_cast<std::int64_t>(timed.Last[4])));
  table.Add(std::move(row));
}

}  // namespace

int RunDocumentation(const DocumentationBenchOptions& options) {
  const Sample sample = Write(options);
  std::printf("%s, %s MB\n", sample.Path.c_str(), Decimal(sample.Bytes / 1e6, 2).c_str());
  Table table({"", "best ms", "median ms", "cpu ms", "MB/s", "kept/byte", "peak/byte", "members"});
  AddRow(table, "cut into members", sample.Bytes, options.Runs, [&] { return Cut(sample); });
  AddRow(table, "into the tree", sample.Bytes, options.Runs,
         [&] { return Integrate(sample, options.Classic); });
  std::fputs(table.Text().c_str(), stdout);
  std::filesystem::remove(sample.Path);
  return 0;
}

}  // namespace vendrel::bench
