// The page of a module: what it is, and lists of its members.

#include <algorithm>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "output/SignatureText.h"
#include "project/VBProject.h"
#include "site/SiteChanges.h"
#include "site/SiteGraphs.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

constexpr std::string_view kOpenTable = "<table class=\"list\">\n<tbody>\n";
constexpr std::string_view kCloseTable = "</tbody>\n</table>\n";

std::string Heading(std::string_view id, std::string_view title, std::size_t count) {
  std::string html;
  AppendSection(html, id, title, count);
  return html;
}

std::string TypeLink(const SiteRun& run, const ModuleEntry& module, std::string_view type) {
  if (type.empty()) return {};
  const std::string href = run.Types.Href(module.Folder, module.Module, type);
  return href.empty() ? "<span class=\"t\">" + Text(type) + "</span>" : Link(href, type, "t");
}

std::string InterfaceLinks(const SiteRun& run, const ModuleEntry& module) {
  std::string html;
  std::size_t count = 0;
  for (const Interface& interface : module.Module->Interfaces) {
    if (++count > kListedAtMost) break;
    html.append(html.empty() ? "" : ", ").append(TypeLink(run, module, interface.Name));
  }
  return html;
}

std::string ModuleLinks(std::string_view folder, std::span<const ModuleEntry* const> modules) {
  std::string html;
  for (std::size_t i = 0; i < modules.size() && i < kListedAtMost; ++i)
    html.append(i > 0 ? ", " : "")
        .append(Link(HrefFrom(folder, {modules[i]->Folder, "index.html"}), modules[i]->Name));
  if (modules.size() > kListedAtMost)
    html.append(" and ").append(Number(modules.size() - kListedAtMost)).append(" more");
  return html;
}

std::string Properties(const Component& component) {
  std::string words;
  const auto add = [&](bool is, std::string_view word) {
    if (is) words.append(words.empty() ? "" : ", ").append(word);
  };
  add(component.IsAbstract, "MustInherit");
  add(component.IsSealed, "NotInheritable");
  add(component.IsCollection(), "a collection");
  add(component.IsMDI(), "holds child windows");
  add(component.VBProject() && component.VBProject()->LanguageVersion() != lvVisualBasicDotNet &&
          EqualsNoCaseAscii(component.Access.view(), "PUBLIC"),
      "visible to other programs");
  return words;
}

void AppendFacts(const SiteRun& run, const ModuleEntry& module, Page& page) {
  const Component& component = *module.Module;
  std::string facts;
  const std::string base = component.InheritsFrom.str();
  if (base != "System.Object" || run.Relations.BaseOf(module))
    AppendFact(facts, "Inherits", TypeLink(run, module, base));
  AppendFact(facts, "Implements", InterfaceLinks(run, module));
  AppendFact(facts, "Inherited by", ModuleLinks(page.Folder, run.Relations.DerivedFrom(module)));
  AppendFact(facts, "Implemented by",
             ModuleLinks(page.Folder, run.Relations.ImplementersOf(module)));
  if (!component.DefaultMemberName.empty())
    AppendFact(facts, "Default member", Name(component.DefaultMemberName));
  AppendFact(facts, "Is", Text(Properties(component)));
  if (module.HasForm)
    AppendFact(facts, "Controls",
               "<a href=\"form.html\">" + Text(Count(component.AllVBControls.Count(), "control")) +
                   ", with a picture</a>");
  if (module.Source)
    AppendFact(facts, "File",
               Link(HrefFrom(page.Folder, module.Source->AddressOf(0)), module.Source->Path) +
                   ", " + Count(static_cast<std::size_t>(module.Source->Lines), "line"));
  AppendFactList(page.Content, facts);
}

// A member on its own page: name, what kind it is, what is said of it.
std::string MemberRow(const SiteRun& run, const MemberEntry& member, bool tellsKind) {
  const CodeElement& first = member.First();
  const bool* isNew = first.IsNewField();
  std::string row = "<tr><td class=\"first\">" + Link(member.Leaf, member.Name);
  std::string note(tellsKind ? member.Kind : "");
  if (member.Kind != "Property" && member.Elements.size() > 1)
    note.append(note.empty() ? "" : ", ").append(Count(member.Elements.size(), "form"));
  if (!note.empty()) row.append(" <span class=\"of\">").append(note).append("</span>");
  row.append(TagsOf(run, first, isNew && *isNew)).append("</td>\n<td>");
  std::string summary;
  for (const CodeElement* element : member.Elements)
    if (summary.empty()) summary = FirstLine(SummaryOf(*element));
  return row.append(Summary(summary)).append("</td></tr>\n");
}

// A constant or variable, which has no page: how it is declared, and all that is said of it.
std::string FieldRow(const SiteRun& run, const ModuleEntry& module, const FieldEntry& field) {
  constexpr std::size_t kLongestDeclaration = 400;
  const CodeElement& element = *field.Element;
  std::string row = "<tr id=\"";
  row.append(AnchorOfLeaf(field.Leaf)).append("\"><td class=\"first\"><code>");
  run.Types.AppendDeclaration(row, Shortened(SignatureText(element), kLongestDeclaration),
                              module.Folder, module.Module);
  row.append("</code>").append(TagsOf(run, element, false));
  if (const Address source = run.Map.SourceOf(element))
    row.append(" <a class=\"of\" href=\"")
        .append(HrefFrom(module.Folder, source))
        .append("\">Source</a>");
  row.append("</td>\n<td><div class=\"prose\" dir=\"auto\">");
  AppendProse(row, Shortened(SummaryOf(element), 1500), LinksFor(run, module.Folder, element));
  row.append("</div>");
  const std::string users = UserLinks(run, module.Folder, element, 8);
  if (!users.empty()) row.append("<p class=\"of\">Used by ").append(users).append("</p>");
  return row.append("</td></tr>\n");
}

struct MemberSection {
  std::string_view Id, Title;
  std::vector<std::string_view> Kinds;
};

void AddMemberLists(const SiteRun& run, const ModuleEntry& module, PagedList& list) {
  const MemberSection sections[] = {{"constructors", "Constructors", {"Constructor"}},
                                    {"events", "Events", {"Event"}},
                                    {"properties", "Properties", {"Property"}},
                                    {"methods", "Methods", {"Sub", "Function"}},
                                    {"delegates", "Delegates", {"Delegate"}},
                                    {"declares", "Declares", {"Declare"}},
                                    {"types", "Types", {"Type"}},
                                    {"enumerations", "Enumerations", {"Enum"}}};
  for (const MemberSection& section : sections) {
    std::vector<const MemberEntry*> members;
    for (const auto* all : {&module.Members, &module.Types})
      for (const MemberEntry& member : *all)
        if (std::find(section.Kinds.begin(), section.Kinds.end(), member.Kind) !=
            section.Kinds.end())
          members.push_back(&member);
    if (members.empty()) continue;
    list.Section(Heading(section.Id, section.Title, members.size()));
    for (const MemberEntry* member : members)
      list.Add(MemberRow(run, *member, section.Kinds.size() > 1));
  }
}

// Fields of a module that has many stand on pages of their own, each `kFieldsOnPage` of them, as
// their addresses say.
void WriteFieldPages(const SiteRun& run, const ModuleEntry& module, std::string_view title,
                     const std::vector<FieldEntry>& fields) {
  for (std::size_t from = 0; from < fields.size(); from += kFieldsOnPage) {
    Page page = PageIn(module, PageOfLeaf(fields[from].Leaf),
                       std::string(title) + ", page " + std::to_string(from / kFieldsOnPage + 1));
    AppendHeading(page, module.Name, page.Title);
    page.Content.append(kOpenTable);
    const std::size_t end = std::min(fields.size(), from + kFieldsOnPage);
    for (std::size_t i = from; i < end; ++i) page.Content.append(FieldRow(run, module, fields[i]));
    page.Content.append(kCloseTable).append("<nav class=\"pages\" aria-label=\"Pages\">");
    if (end < fields.size())
      page.Content.append("<a rel=\"next\" href=\"")
          .append(PageOfLeaf(fields[end].Leaf))
          .append("\">Next page</a>");
    else
      page.Content.append("<span>Last page</span>");
    page.Content.append("</nav>\n");
    run.Pages.Put(page);
  }
}

void AddFields(const SiteRun& run, const ModuleEntry& module, std::string_view id,
               std::string_view title, const std::vector<FieldEntry>& fields, std::string& html) {
  if (fields.empty()) return;
  AppendSection(html, id, title, fields.size());
  if (fields.size() > kFieldsOnPage) {
    html.append("<p>").append(
        Link(PageOfLeaf(fields.front().Leaf), "All " + Number(fields.size())));
    html.append("</p>\n");
    return WriteFieldPages(run, module, title, fields);
  }
  html.append(kOpenTable);
  for (const FieldEntry& field : fields) html.append(FieldRow(run, module, field));
  html.append(kCloseTable);
}

// What comes from the types above, folded.
void AppendInherited(const SiteRun& run, const ModuleEntry& module, std::string& html) {
  std::vector<const ModuleEntry*> seen{&module};
  for (const ModuleEntry* base = run.Relations.BaseOf(module);
       base && seen.size() < 20 && std::find(seen.begin(), seen.end(), base) == seen.end();
       base = run.Relations.BaseOf(*base)) {
    seen.push_back(base);
    if (base->Members.empty()) continue;
    html.append("<details><summary>Inherited from ").append(Text(base->Name)).append(", ");
    html.append(Count(base->Members.size(), "member")).append("</summary>\n<ul class=\"names\">\n");
    for (std::size_t i = 0; i < base->Members.size() && i < kListedAtMost; ++i)
      html.append("<li>")
          .append(Link(HrefFrom(module.Folder, {base->Folder, std::string(base->Members[i].Leaf)}),
                       base->Members[i].Name))
          .append("</li>\n");
    html.append("</ul>\n</details>\n");
  }
}

}  // namespace

void WriteModulePages(const SiteRun& run, const ModuleEntry& module) {
  const Component& component = *module.Module;
  Page page = PageIn(module, "index.html", module.Name);
  const auto& modules = module.Project->Modules;
  AddNeighbours(page, "In " + Link("../index.html", module.Project->Name), modules.size(),
                module.Index, [&](std::size_t i) {
                  return PageLink{modules[i].Name,
                                  HrefFrom(module.Folder, {modules[i].Folder, "index.html"})};
                });
  const Documentation found = DocumentationOf(component);
  AppendHeading(page, module.Kind, component.FullName(), TagsOf(run, component, found.IsNew));
  AppendPath(run, page, component);
  AppendDocumentation(run, page, component, found);
  AppendFacts(run, module, page);
  if (run.Graphs) run.Graphs->AppendCalls(page.Content, run, module);

  std::string behind;
  AddFields(run, module, "constants", "Constants", module.Constants, behind);
  AddFields(run, module, "variables", "Variables", module.Variables, behind);
  AppendInherited(run, module, behind);
  Page uses;
  uses.Folder = page.Folder;
  AppendUses(run, uses, component);
  behind.append(uses.Content);

  PagedList list(run, std::move(page), kOpenTable, kCloseTable);
  AddMemberLists(run, module, list);
  list.Behind() = std::move(behind);
  list.Finish();

  WriteMemberPages(run, module);
  WriteTypePages(run, module);
  if (module.HasForm) WriteFormPage(run, module);
}

}  // namespace vendrel::site
