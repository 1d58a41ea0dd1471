// The rows of an inventory as tables, in the order in which a person reads them.
#include <unordered_map>

#include "survey/Inventory.h"

namespace vendrel {
namespace {

// Columns of rows that totals are made of.
constexpr std::size_t kControlCount = 1, kReferenceFound = 4;

Table Rows(std::string_view row, std::string_view title, std::vector<std::string_view> columns,
           std::vector<std::vector<TableValue>> rows = {}, std::string_view largestBy = {}) {
  return {row, title, std::move(columns), std::move(rows), largestBy};
}

// With what is known of uses, where it was counted.
std::vector<std::string_view> Columns(std::vector<std::string_view> columns, bool countsUses,
                                      std::initializer_list<std::string_view> ofUses) {
  if (countsUses) columns.insert(columns.end(), ofUses);
  return columns;
}

}  // namespace

Table Inventory::TotalsTable() const {
  LineCounts counts;
  std::int64_t procedures = 0;
  for (const Module& module : mModules) {
    if (!module.IsOfNet) counts.Add(module.Counts);
    procedures += module.Procedures;
  }
  for (const auto& [file, lines] : mNetFiles) counts.Add(lines);
  std::int64_t controls = 0, lost = 0;
  for (const auto& row : mControls) controls += std::get<std::int64_t>(row[kControlCount]);
  for (const auto& row : mReferences) {
    const bool* found = std::get_if<bool>(&row[kReferenceFound]);
    lost += found && !*found;
  }
  return Rows("total", "totals", {"What", "Count"},
              {{"projects", SizeOf(mProjects.size())},
               {"modules", SizeOf(mModules.size())},
               {"lines of code", counts.Code},
               {"lines of comment", counts.Comment},
               {"blank lines", counts.Blank},
               {"lines of headers", counts.Header},
               {"procedures", procedures},
               {"references", SizeOf(mReferences.size())},
               {"references not found", lost},
               {"controls", controls},
               {"module files that no project lists", SizeOf(mFiles.size())}});
}

Table Inventory::ModuleTable() const {
  Table table = Rows("module", "modules",
                     {"Name", "Kind", "File", "Code", "Comment", "Blank", "Header", "Procedures",
                      "CodePage", "LineEnds", "Projects"},
                     {}, "Code");
  for (const Module& module : mModules)
    table.Rows.push_back({module.Name, module.Kind, module.File, module.Counts.Code,
                          module.Counts.Comment, module.Counts.Blank, module.Counts.Header,
                          module.Procedures, module.CodePage, module.LineEnds,
                          SizeOf(module.Projects.size())});
  return table;
}

Table Inventory::UnlistedTable() const {
  Table table =
      Rows("unlisted", "module files that no project lists", {"File", "Lines"}, {}, "Lines");
  for (const auto& [file, lines] : mFiles) table.Rows.push_back({file, lines});
  return table;
}

Table Inventory::SharedTable() const {
  Table table = Rows("shared", "modules that several projects list",
                     {"File", "Code", "Projects", "Listed"}, {}, "Projects");
  for (const Module& module : mModules) {
    if (module.Projects.size() < 2 || !module.IsFirstOfFile) continue;
    std::string listed;
    for (const std::string& project : module.Projects)
      listed.append(listed.empty() ? "" : ", ").append(project);
    table.Rows.push_back(
        {module.File, module.Counts.Code, SizeOf(module.Projects.size()), std::move(listed)});
  }
  return table;
}

Table Inventory::EqualTable() const {
  Table table =
      Rows("equal", "modules equal to another one", {"File", "Code", "EqualTo"}, {}, "Code");
  std::unordered_map<std::size_t, const Module*> first;
  for (const Module& module : mModules) {
    if (!module.IsFirstOfFile) continue;
    const auto [known, isNew] = first.try_emplace(module.Content, &module);
    if (!isNew) table.Rows.push_back({module.File, module.Counts.Code, known->second->File});
  }
  return table;
}

Table Inventory::NearTable() const {
  Table table = Rows("near", "modules nearly equal to another one",
                     {"File", "Code", "NearlyEqualTo", "Percent"}, {}, "Code");
  for (const NearDuplicate& pair : mNear.Find())
    table.Rows.push_back({mModules[pair.Second].File, mModules[pair.Second].Counts.Code,
                          mModules[pair.First].File, std::int64_t{pair.Percent}});
  return table;
}

Table Inventory::CodePageTable() const {
  Table table = Rows("encoding", "code pages and line ends", {"CodePage", "LineEnds", "Modules"});
  std::map<std::pair<std::string, std::string>, std::int64_t> counts;
  for (const Module& module : mModules)
    if (!module.CodePage.empty()) ++counts[{module.CodePage, module.LineEnds}];
  for (const auto& [form, count] : counts) table.Rows.push_back({form.first, form.second, count});
  return table;
}

std::vector<Table> Inventory::Tables() const {
  Table libraries = Rows("library", "libraries whose functions are declared",
                         {"Library", "Functions", "Declares", "Modules"}, {}, "Declares");
  for (const auto& [name, library] : mLibraries)
    libraries.Rows.push_back(
        {name, SizeOf(library.Functions.size()), library.Declares, SizeOf(library.Modules.size())});
  std::vector<Table> tables{
      TotalsTable(),
      Rows("project", "projects",
           {"Name", "File", "Kind", "Modules", "Missing", "Code", "Comment", "Blank", "Header",
            "Procedures"},
           mProjects, "Code"),
      ModuleTable(),
      Rows("procedure", "procedures",
           Columns({"QualifiedName", "File", "Line", "Lines", "Complexity", "Nesting"}, CountsUses,
                   {"FanIn", "FanOut"}),
           mProcedures, "Complexity"),
      Rows("reference", "references",
           Columns({"Name", "Type", "Version", "Path", "Found", "Project"}, CountsUses, {"Uses"}),
           mReferences),
      Rows("control", "controls",
           Columns({"ProgID", "Count", "Found", "Module", "Project"}, CountsUses, {"Uses"}),
           mControls, "Count"),
      std::move(libraries),
      Rows("progid", "objects made by name", {"ProgID", "Call", "File", "Line"}, mProgIDs),
      UnlistedTable(),
      SharedTable(),
      EqualTable(),
  };
  if (FindsNearDuplicates) tables.push_back(NearTable());
  if (CountsUses)
    tables.push_back(Rows("call", "calls between modules",
                          {"From", "To", "Calls", "IsSure", "Project"}, mCalls, "Calls"));
  tables.push_back(CodePageTable());
  return tables;
}

}  // namespace vendrel
