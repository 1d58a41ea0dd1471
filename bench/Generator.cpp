#include "bench/Generator.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "bench/ModuleText.h"

namespace vendrel::bench {
namespace {

constexpr const char* kSubjects[] = {"Account", "Invoice",  "Order",   "Customer",
                                     "Stock",   "Payment",  "Journal", "Address",
                                     "Product", "Supplier", "Ticket",  "Report"};

struct Module {
  ModuleKind kind;
  std::string name;
  std::string fileName;
};

Module NextModule(Dice& dice, int number) {
  const int roll = dice.Between(1, 100);
  const std::string name = dice.Pick(kSubjects) + std::to_string(number);
  if (roll <= 40) return {ModuleKind::Class, "C" + name, "C" + name + ".cls"};
  if (roll <= 75) return {ModuleKind::Standard, "mod" + name, "mod" + name + ".bas"};
  return {ModuleKind::Form, "frm" + name, "frm" + name + ".frm"};
}

std::string ProjectLine(const Module& module) {
  switch (module.kind) {
    case ModuleKind::Class: return "Class=" + module.name + "; " + module.fileName + "\r\n";
    case ModuleKind::Standard: return "Module=" + module.name + "; " + module.fileName + "\r\n";
    case ModuleKind::Form: break;
  }
  return "Form=" + module.fileName + "\r\n";
}

std::string ProjectText(const std::string& moduleLines) {
  return "Type=Exe\r\n"
         "Reference=*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#"
         "C:\\Windows\\System32\\stdole2.tlb#OLE Automation\r\n" +
         moduleLines +
         "Startup=\"Sub Main\"\r\n"
         "HelpFile=\"\"\r\n"
         "Title=\"Generated\"\r\n"
         "ExeName32=\"Generated.exe\"\r\n"
         "Command32=\"\"\r\n"
         "Name=\"Generated\"\r\n"
         "HelpContextID=\"0\"\r\n"
         "CompatibleMode=\"0\"\r\n"
         "MajorVer=1\r\n"
         "MinorVer=0\r\n"
         "RevisionVer=0\r\n"
         "AutoIncrementVer=0\r\n"
         "ServerSupportFiles=0\r\n"
         "CondComp=\"DEMO = 0 : TRACE = 1\"\r\n"
         "CompilationType=0\r\n"
         "\r\n"
         "[MS Transaction Server]\r\n"
         "AutoRefresh=1\r\n";
}

}  // namespace

std::int64_t GenerateProject(const GeneratorOptions& options,
                             const std::function<void(const GeneratedFile&)>& take) {
  Dice dice(options.Seed);
  std::string moduleLines;
  std::int64_t lines = 0;
  for (int number = 1; number == 1 || lines < options.Lines; ++number) {
    const Module module = NextModule(dice, number);
    const std::int64_t drawn = dice.Between(options.ModuleLinesMin, options.ModuleLinesMax);
    ModuleText text(module.kind, module.name, dice.Next());
    text.Fill(std::min(drawn, options.Lines - lines));
    moduleLines += ProjectLine(module);
    lines += text.Lines();
    take({module.fileName, text.TakeText(), text.Lines()});
  }
  const std::string project = ProjectText(moduleLines);
  take({kProjectFileName, project, std::count(project.begin(), project.end(), '\n')});
  return lines;
}

std::int64_t WriteProject(const GeneratorOptions& options, const std::string& folder) {
  std::filesystem::create_directories(folder);
  return GenerateProject(options, [&](const GeneratedFile& file) {
    const auto path = std::filesystem::path(folder) / file.Name;
    std::ofstream output(path, std::ios::binary);
    output.write(file.Text.data(), static_cast<std::streamsize>(file.Text.size()));
    output.close();
    if (!output) throw std::runtime_error("cannot write " + path.string());
  });
}

}  // namespace vendrel::bench
