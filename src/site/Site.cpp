#include "site/Site.h"

#include <memory>
#include <optional>

#include "core/Version.h"
#include "diagnostics/Context.h"
#include "site/SiteChanges.h"
#include "site/SiteGraphs.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

void PutAssets(PageWriter& pages, const SiteAssets& assets) {
  for (const auto& [name, content] : assets.Files())
    if (name != "page.html") pages.PutFile("assets/" + name, content);
}

}  // namespace

FileCounts WriteSite(const std::vector<VBProject*>& projects, const std::string& folder,
                     const SiteOptions& options) try {
  const SiteAssets assets(options.AssetsFolder);
  std::optional<GraphDrawer> graphs;
  if (options.Graphs) graphs.emplace();
  SiteFiles files(folder, options.Force);
  PageWriter pages(files, assets, options.Title,
                   "Made by vendrelmodel " + std::string(LibraryVersion()));
  const SiteMap map(projects, {options.Private, options.Source});
  const TypeLinks types(map, options.Links);
  const Relations relations(map, types);
  EstateUses uses;
  std::optional<SiteChanges> changes;
  if (options.Before) changes.emplace(projects, *options.Before);
  const SiteRun run{options,
                    map,
                    types,
                    relations,
                    uses,
                    pages,
                    changes ? &*changes : nullptr,
                    graphs ? &*graphs : nullptr};
  PutAssets(pages, assets);
  std::size_t done = 0, all = 0;
  for (const ProjectEntry& project : map.Projects())
    all += project.Sources.size() + project.Modules.size();
  const auto step = [&] {
    const FileCounts& counts = files.SoFar();
    if (options.Progress) options.Progress(++done, all, counts.Written + counts.Unchanged);
  };
  for (const ProjectEntry& project : map.Projects())
    uses.Bind(project, [&](const SourceEntry& source, std::span<const BoundName> names) {
      WriteSource(run, source, names);
      step();
    });
  uses.Finish();
  WriteEstatePages(run);
  for (const ProjectEntry& project : map.Projects()) {
    WriteProjectPages(run, project);
    WriteHierarchyPages(run, project);
    for (const ModuleEntry& module : project.Modules) {
      WriteModulePages(run, module);
      step();
    }
    WriteSourceList(run, project);
  }
  uses.Release();
  WriteNamePages(run);
  WriteUndocumentedPages(run);
  WriteChangePages(run);
  return files.Finish();
}
VENDREL_CONTEXT(folder)

}  // namespace vendrel::site
