#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>

#include "bench/Measure.h"
#include "bench/Micro.h"
#include "project/VBProject.h"
#include "typelib/ImageBuilders.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel::bench {
namespace {

using typelib::test::Image;
using typelib::test::MsftBuilder;

constexpr int kMethods = 20;

// One enumeration, one dual interface with its methods, and the class that shows it.
void AddTypes(MsftBuilder& builder, int number) {
  const std::string suffix = std::to_string(number);
  const auto name = [&](const std::string& text) { return builder.AddName(text); };
  const int first = static_cast<int>(builder.Types.size());
  MsftBuilder::Type kind;
  kind.Kind = typelib::tkEnum;
  kind.Name = name("Kind" + suffix);
  for (int i = 0; i < 6; ++i)
    MsftBuilder::AddField(kind, MsftBuilder::Plain(typelib::vtI4),
                          name("kind" + suffix + "_" + std::to_string(i)), typelib::vkConstant,
                          static_cast<std::int32_t>(0x80000000u | 3u << 26) + i);
  MsftBuilder::Type shown;
  shown.Kind = typelib::tkDispatch;
  shown.Flags = 0x50;
  shown.Name = name("_Thing" + suffix);
  const auto own = [&](int at) { return builder.AddNode(typelib::vtUserDefined, 100 * at); };
  const std::int32_t self = builder.AddNode(typelib::vtPointer, own(first + 1));
  const std::int32_t result = builder.AddNode(typelib::vtPointer, self);
  const std::int32_t choice = own(first);
  for (int i = 0; i < kMethods; ++i) {
    const std::string method = "Work" + std::to_string(i) + "Of" + suffix;
    const std::int32_t help = builder.AddString("Does the work " + method + " and tells of it.");
    MsftBuilder::AddFunction(shown, 1, name(method), i + 1, help,
                             {{MsftBuilder::Plain(typelib::vtI4), name("amount" + method), 1},
                              {MsftBuilder::Plain(typelib::vtBstr), name("text" + method), 1},
                              {choice, name("choice" + method), 1},
                              {result, name("result"), 10}});
  }
  MsftBuilder::Type owner;
  owner.Kind = typelib::tkCoclass;
  owner.Name = name("Thing" + suffix);
  owner.Implemented = 1;
  owner.DataType = static_cast<std::int32_t>(builder.References.Size());
  builder.References.I32(100 * (first + 1)).U32(1).I32(-1).I32(-1);
  for (auto* type : {&kind, &shown, &owner}) builder.Types.push_back(std::move(*type));
}

std::string Generate(double megabytes) {
  MsftBuilder builder;
  builder.AddGuid(0x11);
  builder.LibraryName = builder.AddName("Generated");
  const double bytesEach = [] {
    MsftBuilder sample;
    for (int i = 100; i < 110; ++i) AddTypes(sample, i);
    return static_cast<double>(sample.Build().size()) / 10;
  }();
  for (int i = 0; i < static_cast<int>(megabytes * 1e6 / bytesEach) + 1; ++i) AddTypes(builder, i);
  const Image image = builder.Build();
  std::string path = (std::filesystem::temp_directory_path() / "vendrelmodel-bench.tlb").string();
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(image.data()),
             static_cast<std::streamsize>(image.size()));
  return path;
}

// Seconds of wall time and of the processor, bytes allocated, elements made.
using Result = std::vector<double>;

Result ReadObjects(const std::string& path) {
  const Allocated before = Allocated::Now();
  const CpuWatch cpu;
  const Stopwatch watch;
  const auto library = typelib::TypeLibInfoFromFile(path);
  const double seconds = watch.Seconds(), computed = cpu.Seconds();
  std::size_t members = 0;
  for (const typelib::TypeInfo& type : library->TypeInfos) members += type.OwnMembers.size();
  return {seconds, computed, static_cast<double>(Allocated::Now().Sum() - before.Sum()),
          static_cast<double>(members + library->Parameters.size())};
}

Result LoadTree(const std::string& path, bool classic) {
  const Allocated before = Allocated::Now();
  VBProject project;
  project.Reading = classic ? ReadingRules::Classic() : ReadingRules::Complete();
  const CpuWatch cpu;
  const Stopwatch watch;
  if (!project.LoadFromTypeLib(path)) throw std::runtime_error(project.LastErrorString);
  const double seconds = watch.Seconds(), computed = cpu.Seconds();
  std::size_t elements = 0;
  for (const Component& component : project.Components.Listed()) {
    for (const Block& block : component.Blocks) elements += 1 + block.Parameters->Count();
    for (const Enumeration& item : component.Enumerations) elements += item.Members().Count();
  }
  return {seconds, computed, static_cast<double>(Allocated::Now().Sum() - before.Sum()),
          static_cast<double>(elements)};
}

void AddRow(Table& table, const char* what, double bytes, int runs,
            const std::function<Result()>& work) {
  const TimedRuns timed = TimeRuns(runs, work);
  std::vector<std::string> row = timed.Columns(what);
  row.push_back(Decimal(bytes / 1e6 / timed.Best, 1));
  row.push_back(Decimal(timed.Last[2] / bytes, 2));
  row.push_back(Grouped(static_cast<std::int64_t>(timed.Last[3])));
  table.Add(std::move(row));
}

}  // namespace

int RunTypeLib(const TypeLibBenchOptions& options) {
  const std::string path = options.File.empty() ? Generate(options.Megabytes) : options.File;
  const double bytes = static_cast<double>(typelib::TypeLibInfoFromFile(path)->Image.size());
  std::printf("%s, a library of %s MB\n", path.c_str(), Decimal(bytes / 1e6, 2).c_str());
  Table table({"", "best ms", "median ms", "cpu ms", "MB/s", "kept", "elements"});
  AddRow(table, "objects of the reader", bytes, options.Runs, [&] { return ReadObjects(path); });
  AddRow(table, "the tree, reading included", bytes, options.Runs,
         [&] { return LoadTree(path, options.Classic); });
  std::fputs(table.Text().c_str(), stdout);
  return 0;
}

}  // namespace vendrel::bench
