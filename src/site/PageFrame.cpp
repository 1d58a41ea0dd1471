#include "site/PageFrame.h"

#include "core/Ascii.h"
#include "services/FileSource.h"
#include "site/EmbeddedAssets.h"
#include "site/SiteHtml.h"
#include "site/SiteMap.h"

namespace vendrel::site {

SiteAssets::SiteAssets(const std::string& folder) {
  for (const EmbeddedAsset& asset : EmbeddedAssets()) mFiles.emplace(asset.Name, asset.Text);
  if (folder.empty()) return;
  std::vector<FolderEntry> entries;
  const int result = FileSource::Current().List(folder, entries);
  if (result < 0) throw FileError(-result, folder);
  for (const FolderEntry& entry : entries)
    if (!entry.IsFolder && !entry.Name.starts_with('.'))
      mFiles[entry.Name] = ReadWholeFile(folder + "/" + entry.Name);
}

PageTemplate::PageTemplate(std::string_view text) {
  while (!text.empty()) {
    const std::size_t at = text.find("{{");
    const std::size_t end = at == kNotFound ? at : text.find("}}", at);
    if (end == kNotFound) {
      mParts.emplace_back(text, "");
      return;
    }
    mParts.emplace_back(text.substr(0, at), text.substr(at + 2, end - at - 2));
    text.remove_prefix(end + 2);
  }
}

std::string PageTemplate::Fill(const Values& values) const {
  std::size_t size = 0;
  for (const auto& [name, value] : values) size += value.size();
  std::string page;
  page.reserve(size + 4096);
  for (const auto& [text, mark] : mParts) {
    page += text;
    for (const auto& [name, value] : values)
      if (name == mark) page += value;
  }
  return page;
}

PageWriter::PageWriter(SiteFiles& files, const SiteAssets& assets, std::string siteTitle,
                       std::string foot)
    : mFiles(files),
      mTemplate(assets.Template()),
      mSiteTitle(std::move(siteTitle)),
      mFoot(std::move(foot)) {}

void PageWriter::Put(const Page& page) {
  const std::string root = RootFrom(page.Folder);
  std::string crumbs, bar;
  for (const PageLink& crumb : page.Crumbs) {
    crumbs.append("<li>");
    crumbs.append(crumb.Href.empty() ? Name(crumb.Name) : Link(crumb.Href, crumb.Name));
    crumbs.append("</li>\n");
  }
  if (!page.Neighbours.empty()) {
    bar.append("<nav class=\"bar\" aria-label=\"Neighbours\">\n<p class=\"bar-title\">");
    bar.append(page.BarTitle).append("</p>\n<ul>\n");
    for (const PageLink& link : page.Neighbours) {
      bar.append("<li>");
      if (link.Href.empty())
        bar.append("<span aria-current=\"page\">").append(Name(link.Name)).append("</span>");
      else
        bar.append(Link(link.Href, link.Name));
      bar.append("</li>\n");
    }
    bar.append("</ul>\n</nav>\n");
  }
  const std::string title =
      page.Title.empty() ? Plain(mSiteTitle) : Plain(page.Title) + " – " + Plain(mSiteTitle);
  mFiles.Put(page.Folder + page.Leaf, mTemplate.Fill({{"root", root},
                                                      {"title", title},
                                                      {"site", Text(mSiteTitle)},
                                                      {"crumbs", crumbs},
                                                      {"bar", bar},
                                                      {"content", page.Content},
                                                      {"foot", mFoot}}));
}

}  // namespace vendrel::site
