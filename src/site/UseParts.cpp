// Who uses an element, and what it uses, as parts of pages.

#include <algorithm>
#include <unordered_map>

#include "model/Component.h"
#include "project/VBProject.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

/// All uses of one element by another.
struct UseGroup {
  const CodeElement* Other;
  std::vector<std::string_view> Kinds;
  const ElementUse* First;
  std::int32_t Count = 0;
};

// The procedures of a property have one page, and so are one.
const CodeElement* SharerOfPage(const CodeElement& element) {
  const auto* block = As<Block>(&element);
  const Component* module = block && block->IsPropertyType() ? block->OwnComponent() : nullptr;
  const PropertyGroup* group =
      module ? module->PropertyGroups.Item(std::string_view(block->Name())) : nullptr;
  return group ? group : &element;
}

std::vector<UseGroup> GroupsOf(const std::vector<ElementUse>& uses) {
  std::vector<UseGroup> groups;
  std::unordered_map<const CodeElement*, std::size_t> places;
  for (const ElementUse& use : uses) {
    const auto [entry, isNew] = places.try_emplace(SharerOfPage(*use.Other), groups.size());
    if (isNew) groups.push_back({use.Other, {}, &use});
    UseGroup& group = groups[entry->second];
    group.Count += use.Count;
    if (std::find(group.Kinds.begin(), group.Kinds.end(), use.Kind) == group.Kinds.end())
      group.Kinds.push_back(use.Kind);
  }
  return groups;
}

void AppendUseList(const SiteRun& run, Page& page, const std::vector<UseGroup>& groups,
                   bool showsPlace) {
  std::string& html = page.Content;
  html.append("<ul class=\"rows\">\n");
  for (std::size_t i = 0; i < groups.size() && i < kListedAtMost; ++i) {
    const UseGroup& group = groups[i];
    html.append("<li>").append(LinkTo(run, page.Folder, *group.Other));
    html.append(" <span class=\"of\">");
    for (const std::string_view kind : group.Kinds)
      html.append(kind == group.Kinds.front() ? "" : ", ").append(Text(kind));
    if (group.Count > 1) html.append(", ").append(std::to_string(group.Count)).append(" times");
    const ModuleEntry* module = showsPlace ? run.Map.ModuleOf(group.First->Module) : nullptr;
    if (module && module->Source)
      html.append(", <a href=\"")
          .append(HrefFrom(page.Folder, module->Source->AddressOf(group.First->Line)))
          .append("\">line ")
          .append(std::to_string(group.First->Line))
          .append("</a>");
    html.append("</span></li>\n");
  }
  html.append("</ul>\n");
  if (groups.size() > kListedAtMost)
    html.append("<p class=\"note\">")
        .append(Number(groups.size() - kListedAtMost))
        .append(" more are not listed.</p>\n");
}

}  // namespace

void AppendUses(const SiteRun& run, Page& page, const std::vector<const CodeElement*>& elements) {
  std::vector<ElementUse> users, calls, others;
  for (const CodeElement* element : elements) {
    for (const ElementUse& use : run.Uses.UsersOf(*element)) users.push_back(use);
    for (const ElementUse& use : run.Uses.UsedBy(*element))
      (IsA<Block, DeclareDeclaration, EventDeclaration>(use.Other) ? calls : others).push_back(use);
  }
  std::string& html = page.Content;
  if (const auto groups = GroupsOf(users); !groups.empty()) {
    AppendSection(html, "used-by", "Used by", groups.size());
    AppendUseList(run, page, groups, true);
  }
  if (const auto groups = GroupsOf(calls); !groups.empty()) {
    AppendSection(html, "calls", "Calls", groups.size());
    AppendUseList(run, page, groups, false);
  }
  const auto groups = GroupsOf(others);
  if (groups.empty()) return;
  html.append("<details>\n<summary>Uses ").append(Count(groups.size(), "name"));
  html.append(" beside</summary>\n");
  AppendUseList(run, page, groups, false);
  html.append("</details>\n");
}

std::string UserLinks(const SiteRun& run, std::string_view folder, const CodeElement& element,
                      std::size_t most) {
  const auto groups = GroupsOf(run.Uses.UsersOf(element));
  std::string links;
  for (std::size_t i = 0; i < groups.size() && i < most; ++i)
    links.append(i > 0 ? ", " : "").append(LinkTo(run, folder, *groups[i].Other));
  if (groups.size() > most)
    links.append(" and ").append(Number(groups.size() - most)).append(" more");
  return links;
}

void AppendUses(const SiteRun& run, Page& page, const CodeElement& element) {
  AppendUses(run, page, std::vector<const CodeElement*>{&element});
}

}  // namespace vendrel::site
