// Parts that several kinds of pages are made of.

#include <algorithm>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "model/Component.h"
#include "project/VBProject.h"
#include "site/SiteChanges.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

constexpr std::size_t kNeighbours = 12;  // on either side

// Pages of neighbours are folders' own, and so their addresses are short.
constexpr std::size_t kBytesOnPage = std::size_t{1} << 20;

}  // namespace

Page PageIn(const ProjectEntry& project, std::string_view leaf, std::string_view title) {
  Page page;
  page.Folder = project.Folder;
  page.Leaf = leaf;
  page.Title = title;
  const bool isIndex = leaf == "index.html";
  page.Crumbs.push_back({project.Name, isIndex ? "" : "index.html"});
  if (!isIndex) page.Crumbs.push_back({page.Title, ""});
  return page;
}

Page PageIn(const ModuleEntry& module, std::string_view leaf, std::string_view title) {
  Page page;
  page.Folder = module.Folder;
  page.Leaf = leaf;
  page.Title = title;
  page.Crumbs.push_back({module.Project->Name, "../index.html"});
  const bool isIndex = leaf == "index.html";
  page.Crumbs.push_back({module.Name, isIndex ? "" : "index.html"});
  if (!isIndex) page.Crumbs.push_back({page.Title, ""});
  return page;
}

PageLink NeighbourOf(const MemberEntry& member) {
  return {std::string(member.Name), std::string(member.Leaf)};
}

void AddNeighbours(Page& page, std::string barTitle, std::size_t count, std::size_t at,
                   const std::function<PageLink(std::size_t)>& entry) {
  const std::size_t from = at > kNeighbours ? at - kNeighbours : 0;
  const std::size_t end = std::min(count, at + kNeighbours + 1);
  page.BarTitle = std::move(barTitle);
  for (std::size_t i = from; i < end; ++i) {
    page.Neighbours.push_back(entry(i));
    if (i == at) page.Neighbours.back().Href.clear();
  }
}

void AppendHeading(Page& page, std::string_view kind, std::string_view name,
                   std::string_view tags) {
  page.Content.append("<h1><span class=\"kind\">").append(Text(kind)).append("</span>");
  page.Content.append(Name(Shortened(name, 2000))).append(tags).append("</h1>\n");
}

void AppendSection(std::string& html, std::string_view id, std::string_view title,
                   std::size_t count) {
  html.append("<h2 id=\"").append(id).append("\">").append(Text(title));
  if (count > 0) html.append("<span class=\"count\">").append(Number(count)).append("</span>");
  html.append("</h2>\n");
}

void AppendFact(std::string& html, std::string_view term, std::string_view valueHtml) {
  if (valueHtml.empty()) return;
  html.append("<dt>").append(term).append("</dt><dd>").append(valueHtml).append("</dd>\n");
}

void AppendFactList(std::string& html, std::string_view facts) {
  if (!facts.empty()) html.append("<dl class=\"facts\">\n").append(facts).append("</dl>\n");
}

void AppendPath(const SiteRun& run, Page& page, const CodeElement& element) {
  const Component* module = element.OwnComponent();
  const VBProject* project = module ? module->VBProject() : nullptr;
  std::string name = module ? module->FullName() : element.ElementName();
  // A name of .NET is full without its project.
  if (project && project->LanguageVersion() != lvVisualBasicDotNet)
    name.insert(0, project->ProjectName + ".");
  if (module && module != &element) name.append(".").append(element.ElementName());
  page.Content.append("<p class=\"path\"><code data-copy=\"").append(Plain(name)).append("\">");
  page.Content.append(Name(Shortened(name, 2000))).append("</code>");
  if (const Address source = run.Map.SourceOf(element))
    page.Content.append(" <a href=\"")
        .append(HrefFrom(page.Folder, source))
        .append("\">Source</a>");
  page.Content.append("</p>\n");
}

std::string NameWithModule(const CodeElement& element) {
  const auto* field = As<Variable>(&element);
  const UDT* type = field ? As<UDT>(field->Parent.Get()) : nullptr;
  std::string name = element.ElementName();
  if (type) return type->Name + "." + name;
  if (const auto* member = As<EnumMember>(&element))
    if (const Enumeration* enumeration = member->Enumeration.Get())
      return enumeration->Name + "." + name;
  const Component* module = element.OwnComponent();
  return !module || module == &element ? name : module->Name + "." + name;
}

std::string LinkTo(const SiteRun& run, std::string_view folder, const CodeElement& element) {
  const Address address = run.Map.Of(&element);
  if (address) return Link(HrefFrom(folder, address), NameWithModule(element));
  if (const Address source = run.Map.SourceOf(element))
    return Link(HrefFrom(folder, source), NameWithModule(element));
  return Name(NameWithModule(element));
}

std::string Summary(std::string_view line) {
  return line.empty() ? std::string() : "<span dir=\"auto\">" + std::string(line) + "</span>";
}

std::string TagsOf(const SiteRun& run, const CodeElement& element, bool isNew) {
  std::string tags;
  if (isNew) tags.append("<span class=\"tag new\">new</span>");
  if (run.Changes) tags.append(run.Changes->TagOf(element));
  return tags;
}

ProseLinks LinksFor(const SiteRun& run, std::string_view folder, const CodeElement& element) {
  const Component* module = element.OwnComponent();
  const VBProject* project = module ? module->VBProject() : As<VBProject>(&element);
  return {[&run, folder = std::string(folder), module, project](std::string_view name) {
    std::string href = run.Types.HrefOfName(folder, project, name);
    if (href.empty() && module && name.find('~') == std::string_view::npos)
      href = run.Types.HrefOfName(folder, project, module->Name + "~" + std::string(name));
    return href;
  }};
}

namespace {

void AppendBox(std::string& html, std::string_view text, const ProseLinks& links) {
  html.append("<div class=\"prose\" dir=\"auto\">\n");
  AppendProse(html, text, links);
  html.append("</div>\n");
}

}  // namespace

void AppendSummary(const SiteRun& run, Page& page, const CodeElement& element,
                   const Documentation& found) {
  const ProseLinks links = LinksFor(run, page.Folder, element);
  if (!found.Summary.empty()) AppendBox(page.Content, found.Summary, links);
  if (!found.Value.empty()) AppendBox(page.Content, found.Value, links);
}

void AppendDocumentation(const SiteRun& run, Page& page, const CodeElement& element,
                         const Documentation& found) {
  AppendSummary(run, page, element, found);
  AppendDetails(run, page, element, found);
}

void AppendDetails(const SiteRun& run, Page& page, const CodeElement& element,
                   const Documentation& found) {
  std::string& html = page.Content;
  const ProseLinks links = LinksFor(run, page.Folder, element);
  if (!found.Remarks.empty()) {
    AppendSection(html, "remarks", "Remarks");
    AppendBox(html, found.Remarks, links);
  }
  if (!found.Exceptions.empty()) {
    AppendSection(html, "raises", "Raises");
    html.append("<dl class=\"facts\">\n");
    for (const auto& [name, text] : found.Exceptions) {
      const std::string href = links.Element(name);
      const std::string shown = name.size() > 2 && name[1] == ':' ? name.substr(2) : name;
      html.append("<dt>").append(href.empty() ? Name(shown) : Link(href, shown, "t"));
      html.append("</dt>\n<dd>");
      AppendProse(html, text, links);
      html.append("</dd>\n");
    }
    html.append("</dl>\n");
  }
  if (!found.Examples.empty()) {
    AppendSection(html, "examples", "Examples");
    for (const auto& [caption, text] : found.Examples) AppendBox(html, text, links);
  }
  if (found.SeeAlso.empty()) return;
  AppendSection(html, "see-also", "See also");
  html.append("<ul>\n");
  for (const auto& [target, caption] : found.SeeAlso) {
    std::string href = SafeAddress(target);
    if (href.empty()) href = links.Element(target);
    std::string shown = WithoutMarkUp(caption.empty() ? target : caption);
    if (caption.empty() && shown.size() > 2 && shown[1] == ':') shown.erase(0, 2);
    shown = ReplaceAll(shown, "~", ".");
    html.append("<li>").append(href.empty() ? Name(shown) : Link(href, shown)).append("</li>\n");
  }
  html.append("</ul>\n");
}

PagedList::PagedList(const SiteRun& run, Page first, std::string_view open, std::string_view close)
    : mRun(run), mPage(std::move(first)), mOpen(open), mClose(close) {
  mStem = mPage.Leaf.substr(0, mPage.Leaf.rfind('.'));
  mTitle = mPage.Title;
}

void PagedList::OpenRows() {
  if (mIsOpen) return;
  mPage.Content.append(mHeading).append(mOpen);
  mIsOpen = true;
}

void PagedList::CloseRows() {
  if (mIsOpen) mPage.Content.append(mClose);
  mIsOpen = false;
}

void PagedList::Section(std::string_view heading) {
  CloseRows();
  mHeading = heading;
}

void PagedList::Add(std::string_view row) {
  if (mRows >= kRowsOnPage || (mRows > 0 && mPage.Content.size() + row.size() > kBytesOnPage)) {
    CloseRows();
    Put(false);
    ++mNumber;
    mPage.Content.clear();
    mPage.Leaf = LeafOfPage(mStem, mNumber - 1);
    mPage.Title = mTitle + ", page " + std::to_string(mNumber);
    AppendHeading(mPage, "page " + std::to_string(mNumber), mTitle);
    mRows = 0;
  }
  OpenRows();
  mPage.Content.append(row);
  ++mRows;
}

void PagedList::Put(bool isLast) {
  if (mNumber > 1 || !isLast) {
    mPage.Content.append("<nav class=\"pages\" aria-label=\"Pages of this list\">");
    if (mNumber > 1)
      mPage.Content.append("<a rel=\"prev\" href=\"")
          .append(LeafOfPage(mStem, mNumber - 2))
          .append("\">Previous page</a> ");
    mPage.Content.append("<span>Page ").append(std::to_string(mNumber)).append("</span>");
    if (!isLast)
      mPage.Content.append(" <a rel=\"next\" href=\"")
          .append(LeafOfPage(mStem, mNumber))
          .append("\">Next page</a>");
    mPage.Content.append("</nav>\n");
  }
  mRun.Pages.Put(mPage);
}

void PagedList::Finish() {
  CloseRows();
  mPage.Content.append(mBehind);
  Put(true);
}

}  // namespace vendrel::site
