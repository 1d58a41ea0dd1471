#pragma once
// What all pages share: the template around them, where a reader is, the neighbours, and the place
// where their content goes out.

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "site/SiteFiles.h"

namespace vendrel::site {

/// Files that make up the looks of a site: those built in, or those of a folder.
class SiteAssets {
 public:
  /// `folder` is a native path; those that are not in it are the built-in ones. Raises 53 and 75.
  explicit SiteAssets(const std::string& folder);
  const std::string& Template() const { return mFiles.at("page.html"); }
  /// All but the template, by name.
  const std::map<std::string, std::string>& Files() const { return mFiles; }

 private:
  std::map<std::string, std::string> mFiles;
};

/// The template cut at its marks: "{{content}}" and the like.
class PageTemplate {
 public:
  explicit PageTemplate(std::string_view text);
  using Values = std::vector<std::pair<std::string_view, std::string_view>>;
  /// The page; a mark that is not among the values stands for nothing.
  std::string Fill(const Values& values) const;

 private:
  /// Text, and the mark behind it.
  std::vector<std::pair<std::string, std::string>> mParts;
};

/// A name and where it leads; no address for the page itself.
struct PageLink {
  std::string Name;
  std::string Href;
};

/// One page that is being written. Pages are made one after the other, and none is kept.
struct Page {
  std::string Folder;
  std::string Leaf;
  std::string Title;
  /// From the project down to what stands around this page.
  std::vector<PageLink> Crumbs;
  /// The heading of the bar, and what stands in it.
  std::string BarTitle;
  std::vector<PageLink> Neighbours;
  std::string Content;
};

/// Puts pages in their frame and their files in place.
class PageWriter {
 public:
  PageWriter(SiteFiles& files, const SiteAssets& assets, std::string siteTitle, std::string foot);
  void Put(const Page& page);
  void PutFile(std::string_view path, std::string_view content) { mFiles.Put(path, content); }

 private:
  SiteFiles& mFiles;
  PageTemplate mTemplate;
  std::string mSiteTitle;
  std::string mFoot;
};

}  // namespace vendrel::site
