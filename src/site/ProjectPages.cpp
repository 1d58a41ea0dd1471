// The pages of the estate, of projects and of namespaces.

#include <algorithm>
#include <map>

#include "core/CaseFold.h"
#include "site/SiteChanges.h"
#include "site/SiteGraphs.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

struct ProjectTotals {
  std::size_t Members = 0;
  std::size_t Types = 0;
  std::size_t Fields = 0;
};

ProjectTotals TotalsOf(const ProjectEntry& project) {
  ProjectTotals totals;
  for (const ModuleEntry& module : project.Modules) {
    totals.Members += module.Members.size();
    totals.Types += module.Types.size();
    totals.Fields += module.Constants.size() + module.Variables.size();
  }
  return totals;
}

std::string ReferenceName(const SiteRun& run, std::string_view folder, const Reference& reference) {
  const ProjectEntry* project = run.Map.ProjectOf(reference.ReferencedProject());
  if (project) return Link(HrefFrom(folder, {project->Folder, "index.html"}), project->Name);
  std::string name = reference.Name();
  if (name.empty()) name = reference.FileName.LeafName();
  const std::string href = run.Types.OutsideHref(name);
  return href.empty() ? Name(name) : Link(href, name);
}

std::string ModuleRow(const SiteRun& run, std::string_view folder, const ModuleEntry& module) {
  const Component& component = *module.Module;
  std::string row = "<tr><td class=\"first\">";
  row.append(Link(HrefFrom(folder, {module.Folder, "index.html"}), module.Name));
  row.append(TagsOf(run, component, component.IsNew)).append("</td>\n<td>");
  return row.append(Summary(FirstLine(SummaryOf(component)))).append("</td></tr>\n");
}

// Kinds of modules in the order in which a page lists them.
struct ModuleGroup {
  std::string_view Kind, Title;
};
constexpr ModuleGroup kGroups[] = {{"class module", "Classes"},
                                   {"class", "Classes"},
                                   {"interface", "Interfaces"},
                                   {"structure", "Structures"},
                                   {"enumeration", "Enumerations"},
                                   {"form", "Forms"},
                                   {"user control", "User controls"},
                                   {"user document", "User documents"},
                                   {"property page", "Property pages"},
                                   {"designer", "Designers"},
                                   {"standard module", "Standard modules"},
                                   {"module", "Modules"}};

std::string_view TitleOfGroup(std::string_view kind) {
  for (const ModuleGroup& group : kGroups)
    if (group.Kind == kind) return group.Title;
  return "Other modules";
}

void AddModules(const SiteRun& run, std::string_view folder, PagedList& list,
                const std::vector<const ModuleEntry*>& modules) {
  std::map<std::size_t, std::vector<const ModuleEntry*>> groups;
  for (const ModuleEntry* module : modules) {
    const auto* group = std::find_if(
        std::begin(kGroups), std::end(kGroups),
        [&](const ModuleGroup& each) { return TitleOfGroup(module->Kind) == each.Title; });
    groups[static_cast<std::size_t>(group - std::begin(kGroups))].push_back(module);
  }
  std::size_t number = 0;
  for (auto& [place, members] : groups) {
    std::stable_sort(members.begin(), members.end(),
                     [](const ModuleEntry* a, const ModuleEntry* b) {
                       return FoldKey(a->Name) < FoldKey(b->Name);
                     });
    std::string heading;
    AppendSection(heading, "modules-" + std::to_string(++number),
                  TitleOfGroup(members.front()->Kind), members.size());
    list.Section(heading);
    for (const ModuleEntry* module : members) list.Add(ModuleRow(run, folder, *module));
  }
}

void AppendReferences(const SiteRun& run, Page& page, const ProjectEntry& project) {
  std::string rows;
  std::size_t count = 0;
  for (const Reference& reference : project.Project->References) {
    if (reference.ReferenceType == "Line" || ++count > kListedAtMost) continue;
    rows.append("<li>").append(ReferenceName(run, page.Folder, reference)).append("</li>\n");
  }
  if (count > 0) {
    AppendSection(page.Content, "references", "Refers to", count);
    page.Content.append("<ul class=\"names\">\n").append(rows).append("</ul>\n");
  }
  rows.clear();
  count = 0;
  for (const ProjectEntry& other : run.Map.Projects()) {
    bool refers = false;
    for (const Reference& reference : other.Project->References)
      refers = refers || reference.ReferencedProject() == project.Project;
    if (!refers) continue;
    ++count;
    rows.append("<li>")
        .append(Link(HrefFrom(page.Folder, {other.Folder, "index.html"}), other.Name))
        .append("</li>\n");
  }
  if (count == 0) return;
  AppendSection(page.Content, "referred-to-by", "Referred to by", count);
  page.Content.append("<ul class=\"names\">\n").append(rows).append("</ul>\n");
}

void AppendProjectFacts(const SiteRun& run, Page& page, const ProjectEntry& project) {
  const VBProject& vbp = *project.Project;
  std::string facts;
  const auto add = [&](std::string_view term, const std::string& html) {
    AppendFact(facts, term, html);
  };
  const ProjectTotals totals = TotalsOf(project);
  if (!project.IsNet()) add("Builds", Text(vbp.ProjectTypeDescription()));
  add("Version", vbp.MajorVersion().empty() ? "" : Text(vbp.Version(".", 3)));
  add("Starts with", Text(vbp.Startup));
  add("File", Name(vbp.FileName.LeafName()));
  std::string holds = Count(project.Modules.size(), "module");
  holds.append(", ").append(Count(totals.Members, "member"));
  if (project.Lines > 0) holds.append(", ").append(Count(project.Lines, "line"));
  add("Holds", holds);
  std::string lists = "<a href=\"hierarchy.html\">Who derives from whom</a>";
  if (!project.Sources.empty()) lists.append(", <a href=\"source/index.html\">source files</a>");
  add("Lists", lists);
  if (run.Changes) add("Changes", "<a href=\"../changes.html\">since the release before</a>");
  AppendFactList(page.Content, facts);
}

void WriteNamespacePage(const SiteRun& run, const ProjectEntry& project,
                        const NamespaceEntry& space) {
  const std::string title = space.Name.empty() ? "Types outside of namespaces" : space.Name;
  Page page = PageIn(project, space.Leaf, title);
  const auto& spaces = project.Namespaces;
  AddNeighbours(
      page, "In " + Link("index.html", project.Name), spaces.size(),
      static_cast<std::size_t>(&space - spaces.data()), [&](std::size_t i) {
        return PageLink{spaces[i].Name.empty() ? "(none)" : spaces[i].Name, spaces[i].Leaf};
      });
  AppendHeading(page, "namespace", title);
  if (const Namespace* element = space.Modules.front()->Module->Namespace.Get())
    AppendDocumentation(run, page, *element, DocumentationOf(*element));
  const std::string folder = page.Folder;
  PagedList list(run, std::move(page), "<table class=\"list\">\n<tbody>\n", "</tbody>\n</table>\n");
  AddModules(run, folder, list, space.Modules);
  list.Finish();
}

std::string ProjectRow(const SiteRun& run, const ProjectEntry& project) {
  std::string row = "<tr><td class=\"first\">" + Link(project.Folder + "index.html", project.Name) +
                    " <span class=\"of\">";
  row.append(project.Kind).append("</span>").append(TagsOf(run, *project.Project, false));
  row.append("</td>\n<td>");
  const std::string summary = FirstLine(SummaryOf(*project.Project));
  row.append(Summary(summary)).append(summary.empty() ? "" : "<br/>");
  row.append("<span class=\"of\">");
  row.append(Count(project.Modules.size(), "module")).append(", ");
  row.append(Count(TotalsOf(project).Members, "member"));
  if (project.Lines > 0) row.append(", ").append(Count(project.Lines, "line"));
  return row.append("</span></td></tr>\n");
}

// Projects and the projects of the site that they refer to.
void AppendEdges(const SiteRun& run, std::string& html) {
  std::string rows;
  std::size_t count = 0;
  for (const ProjectEntry& project : run.Map.Projects()) {
    std::string targets;
    for (const Reference& reference : project.Project->References)
      if (const ProjectEntry* other = run.Map.ProjectOf(reference.ReferencedProject()))
        targets.append(targets.empty() ? "" : ", ")
            .append(Link(other->Folder + "index.html", other->Name));
    if (targets.empty() || ++count > kListedAtMost) continue;
    rows.append("<li>").append(Link(project.Folder + "index.html", project.Name));
    rows.append(" refers to ").append(targets).append("</li>\n");
  }
  if (rows.empty()) return;
  AppendSection(html, "references", "Who refers to whom");
  if (run.Graphs) run.Graphs->AppendProjects(html, run);
  html.append("<ul class=\"rows\">\n").append(rows).append("</ul>\n");
}

}  // namespace

void WriteProjectPages(const SiteRun& run, const ProjectEntry& project) {
  Page page = PageIn(project, "index.html", project.Name);
  const auto& projects = run.Map.Projects();
  std::size_t at = 0;
  while (&projects[at] != &project) ++at;
  if (projects.size() > 1)
    AddNeighbours(page, Link("../index.html", "All projects"), projects.size(), at,
                  [&](std::size_t i) {
                    return PageLink{projects[i].Name,
                                    HrefFrom(page.Folder, {projects[i].Folder, "index.html"})};
                  });
  AppendHeading(page, project.Kind, project.Name, TagsOf(run, *project.Project, false));
  AppendDocumentation(run, page, *project.Project, DocumentationOf(*project.Project));
  AppendProjectFacts(run, page, project);
  const std::string folder = page.Folder;
  Page references;
  references.Folder = folder;
  AppendReferences(run, references, project);

  const bool hasNamespaces = project.Namespaces.size() > 1;
  PagedList list(run, std::move(page),
                 hasNamespaces ? "<ul class=\"rows\">\n" : "<table class=\"list\">\n<tbody>\n",
                 hasNamespaces ? "</ul>\n" : "</tbody>\n</table>\n");
  if (hasNamespaces) {
    std::string heading;
    AppendSection(heading, "namespaces", "Namespaces", project.Namespaces.size());
    list.Section(heading);
    for (const NamespaceEntry& space : project.Namespaces)
      list.Add("<li>" +
               Link(space.Leaf, space.Name.empty() ? "(outside of namespaces)" : space.Name) +
               " <span class=\"of\">" + Count(space.Modules.size(), "type") + "</span></li>\n");
  } else {
    std::vector<const ModuleEntry*> modules;
    for (const ModuleEntry& module : project.Modules) modules.push_back(&module);
    AddModules(run, folder, list, modules);
  }
  list.Behind() = std::move(references.Content);
  list.Finish();
  for (const NamespaceEntry& space : project.Namespaces) WriteNamespacePage(run, project, space);
}

void WriteEstatePages(const SiteRun& run) {
  Page page;
  page.Leaf = "index.html";
  std::size_t modules = 0, members = 0, lines = 0;
  for (const ProjectEntry& project : run.Map.Projects()) {
    modules += project.Modules.size();
    members += TotalsOf(project).Members;
    lines += project.Lines;
  }
  AppendHeading(page, "documentation", run.Options.Title);
  std::string counts = Count(run.Map.Projects().size(), "project") + ", " +
                       Count(modules, "module") + ", " + Count(members, "member");
  if (lines > 0) counts.append(", ").append(Count(lines, "line"));
  page.Content.append("<p class=\"note\">").append(counts).append("</p>\n");
  if (run.Changes)
    page.Content.append("<p><a href=\"changes.html\">Changes since the release before</a></p>\n");
  page.Content.append(
      "<p class=\"letters\"><a href=\"names/index.html\">All names</a> "
      "<a href=\"names/undocumented.html\">What is undocumented</a></p>\n");
  std::string behind;
  AppendEdges(run, behind);
  PagedList list(run, std::move(page), "<table class=\"list\">\n<tbody>\n", "</tbody>\n</table>\n");
  std::string heading;
  AppendSection(heading, "projects", "Projects", run.Map.Projects().size());
  list.Section(heading);
  for (const ProjectEntry& project : run.Map.Projects()) list.Add(ProjectRow(run, project));
  list.Behind() = std::move(behind);
  list.Finish();
}

}  // namespace vendrel::site
