#include "survey/Assessment.h"

#include <algorithm>

#include "core/Ascii.h"
#include "output/Dump.h"
#include "survey/CodeMetrics.h"

namespace vendrel {
namespace {

std::int64_t PercentOf(const VariantShare& share) {
  return share.Declared == 0 ? 0 : 100 * share.Variants / share.Declared;
}

// "SendMessageA" and "SendMessageW" are one function.
std::string WithoutForm(const std::string& function) {
  const bool hasForm = function.size() > 2 && (function.back() == 'A' || function.back() == 'W') &&
                       function[function.size() - 2] >= 'a' && function[function.size() - 2] <= 'z';
  return hasForm ? function.substr(0, function.size() - 1) : function;
}

}  // namespace

HindranceWeights::HindranceWeights() {
  for (std::size_t i = 0; i < kHindranceCount; ++i) mWeights[i] = kHindrances[i].Weight;
}

bool HindranceWeights::Set(std::string_view id, std::int64_t weight) {
  for (std::size_t i = 0; i < kHindranceCount; ++i)
    if (EqualsNoCaseAscii(kHindrances[i].Id, id)) {
      mWeights[i] = weight;
      return true;
    }
  return false;
}

void Assessment::Sums::Add(const Sums& other) {
  Code += other.Code;
  Findings += other.Findings;
  Points += other.Points;
  Variants.Declared += other.Variants.Declared;
  Variants.Variants += other.Variants.Variants;
}

std::int64_t Assessment::ScoreOf(std::int64_t points, std::int64_t linesOfCode) {
  return points <= 0 ? 0 : 100 * points / (points + std::max<std::int64_t>(linesOfCode, 1));
}

void Assessment::Add(VBProject& project) {
  if (project.LanguageVersion() == lvVisualBasicDotNet ||
      project.ProjectSourceType == ptsTypeLibrary)
    return;
  Project row{project.ProjectName, ShownFile(project.FileName.FullPath(), NativeRoot), 0, 0, {}};
  const DeclaredFunctions declared(project);
  UseBinder names(project);
  for (const Component& component : std::as_const(project).Components.Listed())
    if (component.SourceForm) AddModule(component, declared, names, row);
  AddReferences(project, row);
  mProjects.push_back(std::move(row));
}

void Assessment::AddModule(const Component& component, const DeclaredFunctions& declared,
                           UseBinder& names, Project& project) {
  ++project.Modules;
  const std::string file = ShownFile(component.FileName.FullPath(), NativeRoot);
  const auto [known, isNew] = mByFile.try_emplace(file, mModules.size());
  if (!isNew) return project.Sum.Add(mModules[known->second].Sum);
  const std::size_t index = mModules.size();
  Module module{component.Name, file, {}};
  module.Sum.Code = LineCountsOf(component).Code;
  const auto take = [&](const HindranceFinding& finding) {
    Count(finding, module.Sum, index);
    if (KeepsFindings) Keep(finding, file);
  };
  module.Sum.Variants = FindHindrances(component, declared, take);
  FindDefaultMembers(names, component, take);
  for (const DeclareDeclaration& declare : component.Declarations) {
    const auto [library, function] = FunctionNamedBy(declare);
    NameCount& count = mApis[NamesOf(library, function)];
    ++count.Declares;
    count.Modules.insert(index);
  }
  project.Sum.Add(module.Sum);
  mModules.push_back(std::move(module));
}

Assessment::TwoNames Assessment::NamesOf(const std::string& library, const std::string& function) {
  return {library, WithoutForm(function)};
}

void Assessment::AddReferences(const VBProject& project, Project& row) {
  for (const Reference& reference : project.References) {
    if (reference.FileName.Exists() || reference.ReferencedProject()) continue;
    ++row.MissingFiles;
    HindranceFinding finding{Hindrance::MissingFile, reference.Name(), &reference,
                             reference.SourceLine()};
    Count(finding, row.Sum, mModules.size());
    if (KeepsFindings) Keep(finding, row.File);
  }
}

void Assessment::Count(const HindranceFinding& finding, Sums& sum, std::size_t module) {
  ++sum.Findings;
  sum.Points += Weights.Of(finding.Kind);
  const auto count = [&](NameCount& name) {
    ++name.Count;
    name.Modules.insert(module);
  };
  count(mKinds[static_cast<std::size_t>(finding.Kind)]);
  if (finding.Runtime) count(mRuntime[finding.Runtime->Name]);
  if (finding.Api) count(mApis[NamesOf(finding.Api->Library, finding.Api->Function)]);
}

void Assessment::Keep(const HindranceFinding& finding, const std::string& file) {
  const CodeElement& element = *finding.Element;
  const std::string name = element.QualifiedName();
  mFindings.push_back({std::string(RowOf(finding.Kind).Id), finding.Subject,
                       name.empty() ? element.ElementName() : name, file,
                       std::int64_t{finding.Line}});
}

Table Assessment::ProjectTable() const {
  Table table{"project",
              "projects",
              {"Name", "File", "Modules", "Code", "VariantPercent", "MissingFiles", "Findings",
               "Points", "Score"},
              {},
              "Points"};
  for (const Project& project : mProjects)
    table.Rows.push_back({project.Name, project.File, project.Modules, project.Sum.Code,
                          PercentOf(project.Sum.Variants), project.MissingFiles,
                          project.Sum.Findings, project.Sum.Points,
                          ScoreOf(project.Sum.Points, project.Sum.Code)});
  return table;
}

Table Assessment::KindTable() const {
  Table table{"hindrance",
              "kinds of what is in the way",
              {"Hindrance", "Count", "Modules", "Weight", "Points", "What"},
              {},
              {}};
  for (std::size_t i = 0; i < kHindranceCount; ++i) {
    const std::int64_t weight = Weights.Of(static_cast<Hindrance>(i));
    table.Rows.push_back({std::string(kHindrances[i].Id), mKinds[i].Count,
                          SizeOf(mKinds[i].Modules.size()), weight, weight * mKinds[i].Count,
                          std::string(kHindrances[i].What)});
  }
  return table;
}

Table Assessment::ModuleTable() const {
  Table table{"module",
              "modules",
              {"Name", "File", "Code", "Declared", "VariantPercent", "Findings", "Points", "Score"},
              {},
              "Points"};
  for (const Module& module : mModules)
    table.Rows.push_back({module.Name, module.File, module.Sum.Code, module.Sum.Variants.Declared,
                          PercentOf(module.Sum.Variants), module.Sum.Findings, module.Sum.Points,
                          ScoreOf(module.Sum.Points, module.Sum.Code)});
  return table;
}

Table Assessment::ApiTable() const {
  Table table{"api",
              "functions that Declare names",
              {"Library", "Function", "Declares", "Calls", "Modules", "Replacement"},
              {},
              "Calls"};
  for (const auto& [names, count] : mApis)
    table.Rows.push_back({names.first, names.second, count.Declares, count.Count,
                          SizeOf(count.Modules.size()),
                          std::string(ApiReplacementOf(names.first, LowerAscii(names.second)))});
  return table;
}

Table Assessment::RuntimeTable() const {
  Table table{"name",
              "functions and statements of the language",
              {"Name", "Hindrance", "Count", "Modules", "Replacement"},
              {},
              "Count"};
  for (const auto& [name, count] : mRuntime) {
    const RuntimeName& row = *FindRuntimeName(name);
    table.Rows.push_back({std::string(name), std::string(RowOf(row.Kind).Id), count.Count,
                          SizeOf(count.Modules.size()), std::string(row.Replacement)});
  }
  return table;
}

std::vector<Table> Assessment::Tables() const {
  return {
      ProjectTable(),
      KindTable(),
      ModuleTable(),
      ApiTable(),
      RuntimeTable(),
      {"finding", "places", {"Hindrance", "Subject", "Element", "File", "Line"}, mFindings, {}}};
}

}  // namespace vendrel
