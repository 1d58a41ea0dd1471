// The pages of enumerations and of user-defined types.

#include "output/SignatureText.h"
#include "project/VBProject.h"
#include "site/SiteChanges.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

std::string ProseCell(const SiteRun& run, const Page& page, const CodeElement& element) {
  std::string cell = "<td><div class=\"prose\" dir=\"auto\">";
  AppendProse(cell, Shortened(SummaryOf(element), 1500), LinksFor(run, page.Folder, element));
  return cell.append("</div></td></tr>\n");
}

std::string MemberOfTypeRow(const SiteRun& run, const Page& page, const EnumMember& member) {
  std::string row = "<tr id=\"";
  row.append(AnchorOfLeaf(run.Map.LeafOf(member))).append("\"><td class=\"first\">");
  row.append(Name(member.Name)).append(TagsOf(run, member, false)).append("</td>\n<td><code>");
  row.append(Text(Shortened(member.Value, 200))).append("</code>");
  if (!member.ValueAsWritten.empty())
    row.append(" <span class=\"of\">")
        .append(Text(Shortened(member.ValueAsWritten.view(), 200)))
        .append("</span>");
  return row.append("</td>\n").append(ProseCell(run, page, member));
}

std::string MemberOfTypeRow(const SiteRun& run, const Page& page, const Variable& member) {
  std::string row = "<tr id=\"";
  row.append(AnchorOfLeaf(run.Map.LeafOf(member))).append("\"><td class=\"first\"><code>");
  run.Types.AppendDeclaration(row, Shortened(SignatureText(member), 400), page.Folder,
                              member.OwnComponent());
  row.append("</code>").append(TagsOf(run, member, false)).append("</td>\n");
  return row.append(ProseCell(run, page, member));
}

void AppendHead(Page& page, bool isEnumeration) {
  page.Content.append("<table class=\"list\">\n<thead><tr><th class=\"first\">Name</th>");
  if (isEnumeration) page.Content.append("<th>Value</th>");
  page.Content.append("<th>Meaning</th></tr></thead>\n<tbody>\n");
}

// Each `kFieldsOnPage` members are a page, as their addresses say.
template <typename Members>
void WriteMembers(const SiteRun& run, const ModuleEntry& module, Page page, const MemberEntry& type,
                  const Members& members) {
  constexpr bool kIsEnumeration = std::is_same_v<Members, EnumMembers>;
  const std::size_t count = members.Count();
  const std::string_view stem = type.Leaf.substr(0, type.Leaf.size() - 5);
  for (std::size_t from = 0, number = 0;; from += kFieldsOnPage, ++number) {
    const std::size_t end = std::min(count, from + kFieldsOnPage);
    if (count > 0) {
      AppendSection(page.Content, "members", kIsEnumeration ? "Values" : "Fields", count);
      AppendHead(page, kIsEnumeration);
      for (std::size_t i = from; i < end; ++i)
        page.Content.append(MemberOfTypeRow(run, page, *members.Item(i + 1)));
      page.Content.append("</tbody>\n</table>\n");
    }
    const std::string next = LeafOfPage(stem, number + 1);
    if (end < count)
      page.Content.append("<nav class=\"pages\" aria-label=\"Pages\"><a rel=\"next\" href=\"")
          .append(next)
          .append("\">Next page</a></nav>\n");
    if (number == 0) AppendUses(run, page, type.First());
    run.Pages.Put(page);
    if (end >= count) return;
    page = PageIn(module, next, std::string(type.Name) + ", page " + std::to_string(number + 2));
    AppendHeading(page, type.Kind, page.Title);
  }
}

}  // namespace

void WriteTypePages(const SiteRun& run, const ModuleEntry& module) {
  for (std::size_t i = 0; i < module.Types.size(); ++i) {
    const MemberEntry& type = module.Types[i];
    Page page = PageIn(module, type.Leaf, type.Name);
    AddNeighbours(page, "In " + Link("index.html", module.Name), module.Types.size(), i,
                  [&](std::size_t other) { return NeighbourOf(module.Types[other]); });
    AppendHeading(page, std::string(type.Kind) + " of " + module.Name, type.Name,
                  TagsOf(run, type.First(), false));
    AppendPath(run, page, type.First());
    page.Content.append("<pre class=\"signature\"><code>");
    run.Types.AppendDeclaration(page.Content, SignatureText(type.First()), page.Folder,
                                module.Module);
    page.Content.append("</code></pre>\n");
    AppendDocumentation(run, page, type.First(), DocumentationOf(type.First()));
    if (const auto* enumeration = As<Enumeration>(&type.First()))
      WriteMembers(run, module, std::move(page), type, enumeration->Members());
    else if (const auto* structure = As<UDT>(&type.First()))
      WriteMembers(run, module, std::move(page), type, structure->Members);
  }
}

}  // namespace vendrel::site
