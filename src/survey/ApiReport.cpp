#include "survey/ApiReport.h"

#include <algorithm>
#include <map>

#include "output/Dump.h"

namespace vendrel {
namespace {

std::int64_t BreaksIn(const std::vector<ApiChange>& changes) {
  return std::count_if(changes.begin(), changes.end(),
                       [](const ApiChange& change) { return change.Breaks != ApiBreak::No; });
}

// What the numbers do not tell.
std::string NoteOn(const PublicSurface& before, const PublicSurface& after) {
  if (before.Types.empty() && after.Types.empty())
    return "exposes nothing to other programs; --all-modules judges the public members of each "
           "module";
  const bool isSource = after.World == SurfaceWorld::Com && !after.IsCompiled && !after.IsShared;
  if (isSource && !after.KeepsBinaryCompatibility && !after.Library.empty())
    return "keeps no binary compatibility: each build gives new ids";
  return {};
}

}  // namespace

void ApiReport::Add(const PublicSurface& before, const PublicSurface& after) {
  mProjects.push_back({after.Library, after.Place.File, NoteOn(before, after), after.World,
                       before.Types.size(), after.Types.size(), CompareSurfaces(before, after)});
}

void ApiReport::AddAlone(const std::string& name, const ChangePlace& place, bool isGone) {
  ApiChange change{isGone ? ApiRuleId::LibraryRemoved : ApiRuleId::LibraryAdded,
                   isGone ? ApiBreak::Both : ApiBreak::No,
                   "library",
                   name,
                   {},
                   {},
                   isGone ? place : ChangePlace(),
                   isGone ? ChangePlace() : place};
  mProjects.push_back({name, place.File, {}, SurfaceWorld::Com, 0, 0, {std::move(change)}});
}

std::int64_t ApiReport::Breaks() const {
  std::int64_t count = 0;
  for (const Project& project : mProjects) count += BreaksIn(project.Changes);
  return count;
}

Table ApiReport::SummaryTable() const {
  Table table{
      "summary",
      "projects compared",
      {"Project", "File", "Rules", "TypesBefore", "TypesAfter", "Changes", "Breaks", "Note"},
      {},
      {}};
  for (const Project& project : mProjects)
    table.Rows.push_back({project.Name, ShownFile(project.File, NativeRoot),
                          project.World == SurfaceWorld::Com ? "COM" : ".NET",
                          static_cast<std::int64_t>(project.TypesBefore),
                          static_cast<std::int64_t>(project.TypesAfter),
                          static_cast<std::int64_t>(project.Changes.size()),
                          BreaksIn(project.Changes), project.Note});
  return table;
}

Table ApiReport::ChangeTable() const {
  Table table{"change",
              "changes of the public surface",
              {"Breaks", "Rule", "Kind", "Element", "Before", "After", "File", "Line"},
              {},
              {}};
  for (const Project& project : mProjects)
    for (const ApiChange& change : project.Changes) {
      const ChangePlace& place =
          change.PlaceAfter.File.empty() ? change.PlaceBefore : change.PlaceAfter;
      table.Rows.push_back({std::string(WordOf(change.Breaks)), std::string(RowOf(change.Rule).Id),
                            std::string(change.Word), change.Element, change.Before, change.After,
                            ShownFile(place.File, NativeRoot), std::int64_t{place.Line}});
    }
  return table;
}

Table ApiReport::RuleTable() const {
  Table table{"rule", "rules behind them", {"Rule", "Breaks", "Changes", "What"}, {}, {}};
  std::map<std::pair<ApiRuleId, ApiBreak>, std::int64_t> counts;
  for (const Project& project : mProjects)
    for (const ApiChange& change : project.Changes) ++counts[{change.Rule, change.Breaks}];
  for (const auto& [rule, count] : counts)
    table.Rows.push_back({std::string(RowOf(rule.first).Id), std::string(WordOf(rule.second)),
                          count, std::string(RowOf(rule.first).What)});
  return table;
}

std::vector<Table> ApiReport::Tables() const {
  return {SummaryTable(), ChangeTable(), RuleTable()};
}

}  // namespace vendrel
