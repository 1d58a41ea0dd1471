// Who derives from whom, and what is implemented where.

#include <algorithm>
#include <map>

#include "core/CaseFold.h"
#include "site/SiteGraphs.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

constexpr int kDeepestShown = 8;

bool IsNamedBefore(const ModuleEntry* a, const ModuleEntry* b) {
  return FoldKey(a->Module->FullName()) < FoldKey(b->Module->FullName());
}

std::string TreeRow(std::string_view folder, const ModuleEntry& module, int depth) {
  std::string row = "<li";
  if (depth > 0)
    row.append(" class=\"d").append(std::to_string(std::min(depth, kDeepestShown))).append("\"");
  row.append(">").append(
      Link(HrefFrom(folder, {module.Folder, "index.html"}), module.Module->FullName()));
  row.append(" <span class=\"of\">").append(Text(module.Kind)).append("</span>");
  return row.append("</li>\n");
}

// Types whose base is not among those of the site, by the name of that base.
std::map<std::string, std::vector<const ModuleEntry*>> RootsOf(const SiteRun& run,
                                                               const ProjectEntry& project) {
  std::map<std::string, std::vector<const ModuleEntry*>> roots;
  for (const ModuleEntry& module : project.Modules) {
    const ModuleEntry* base = run.Relations.BaseOf(module);
    if (base && base->Project == &project) continue;
    if (base)
      roots[base->Module->FullName()].push_back(&module);
    else
      roots[module.Module->IsInterface ? "" : module.Module->InheritsFrom.str()].push_back(&module);
  }
  return roots;
}

// Trees as rows, each with its depth, so that they can be cut into pages anywhere.
void AddTrees(const SiteRun& run, const ProjectEntry& project, PagedList& list,
              std::vector<const ModuleEntry*> roots) {
  std::sort(roots.begin(), roots.end(), IsNamedBefore);
  std::vector<std::pair<const ModuleEntry*, int>> open;
  for (auto root = roots.rbegin(); root != roots.rend(); ++root) open.emplace_back(*root, 0);
  while (!open.empty()) {
    const auto [module, depth] = open.back();
    open.pop_back();
    list.Add(TreeRow(project.Folder, *module, depth));
    if (depth > 200) continue;  // bases that run in a circle
    std::vector<const ModuleEntry*> derived;
    for (const ModuleEntry* each : run.Relations.DerivedFrom(*module))
      if (each->Project == &project) derived.push_back(each);
    std::sort(derived.begin(), derived.end(), IsNamedBefore);
    for (auto each = derived.rbegin(); each != derived.rend(); ++each)
      open.emplace_back(*each, depth + 1);
  }
}

void AddImplementers(const SiteRun& run, const ProjectEntry& project, PagedList& list) {
  std::vector<const ModuleEntry*> interfaces;
  for (const ModuleEntry& module : project.Modules)
    if (!run.Relations.ImplementersOf(module).empty()) interfaces.push_back(&module);
  if (interfaces.empty()) return;
  std::sort(interfaces.begin(), interfaces.end(), IsNamedBefore);
  std::string heading;
  AppendSection(heading, "interfaces", "What is implemented", interfaces.size());
  list.Section(heading);
  for (const ModuleEntry* interface : interfaces) {
    list.Add(TreeRow(project.Folder, *interface, 0));
    for (const ModuleEntry* each : run.Relations.ImplementersOf(*interface))
      list.Add(TreeRow(project.Folder, *each, 1));
  }
}

}  // namespace

void WriteHierarchyPages(const SiteRun& run, const ProjectEntry& project) {
  Page page = PageIn(project, "hierarchy.html", "Who derives from whom");
  AppendHeading(page, project.Name, page.Title);
  if (run.Graphs) run.Graphs->AppendHierarchy(page.Content, run, project);
  PagedList list(run, std::move(page), "<ul class=\"tree\">\n", "</ul>\n");
  std::size_t number = 0;
  for (auto& [base, roots] : RootsOf(run, project)) {
    const bool isPlain = base.empty() || base == "System.Object";
    std::string heading;
    AppendSection(heading, "base-" + std::to_string(++number),
                  isPlain ? (base.empty() && project.IsNet() ? "Interfaces" : "From nothing else")
                          : "From " + base,
                  roots.size());
    list.Section(heading);
    AddTrees(run, project, list, roots);
  }
  AddImplementers(run, project, list);
  if (project.Modules.empty()) list.Behind() = "<p>There are no types.</p>\n";
  list.Finish();
}

}  // namespace vendrel::site
