#pragma once
// A site as a test looks at it: every page parsed, every link followed.

#include <map>
#include <pugixml.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/Ascii.h"

namespace vendrel::test {

/// Files of a site by their paths within it.
class CheckedSite {
 public:
  explicit CheckedSite(std::map<std::string, std::string> files) : mFiles(std::move(files)) {
    for (const auto& [path, content] : mFiles)
      if (path.ends_with(".html")) Parse(path, content);
    for (const Reference& link : mLinks) Follow(link);
  }

  /// What is wrong, a line each: pages that are not well-formed, names given twice, links that lead
  /// nowhere, scripts and handlers that no page of ours has, pages that are too large.
  const std::vector<std::string>& Faults() const { return mFaults; }
  std::size_t Pages() const { return mNames.size(); }
  std::size_t Links() const { return mLinks.size(); }
  const std::string& operator[](const std::string& path) const {
    static const std::string none;
    const auto found = mFiles.find(path);
    return found == mFiles.end() ? none : found->second;
  }
  const std::map<std::string, std::string>& Files() const { return mFiles; }

 private:
  struct Reference {
    std::string Page, Href;
  };

  void Parse(const std::string& path, const std::string& content) {
    constexpr std::string_view kType = "<!DOCTYPE html>";
    if (content.size() > (2u << 20)) mFaults.push_back(path + " is too large");
    if (!content.starts_with(kType)) mFaults.push_back(path + " has no document type");
    pugi::xml_document page;
    const auto result =
        page.load_buffer(content.data(), content.size(), pugi::parse_default | pugi::parse_doctype);
    auto& names = mNames[path];
    if (!result) {
      mFaults.push_back(path + ": " + result.description() + " at " +
                        content.substr(static_cast<std::size_t>(result.offset), 60));
      return;
    }
    struct Walker : pugi::xml_tree_walker {
      bool for_each(pugi::xml_node& node) override {
        Site->Look(*Path, node, *Names);
        return true;
      }
      CheckedSite* Site;
      const std::string* Path;
      std::set<std::string>* Names;
    } walker;
    walker.Site = this;
    walker.Path = &path;
    walker.Names = &names;
    page.traverse(walker);
  }

  void Look(const std::string& path, const pugi::xml_node& node, std::set<std::string>& names) {
    const std::string_view name = node.name();
    const std::string_view source = node.attribute("src").value();
    if (name == "script" && !source.ends_with("assets/site.js"))
      mFaults.push_back(path + " has a script of its own");
    for (const std::string_view never : {"img", "iframe", "object", "style", "base", "form"})
      if (name == never) mFaults.push_back(path + " has a <" + std::string(name) + ">");
    for (const pugi::xml_attribute attribute : node.attributes()) {
      const std::string_view key = attribute.name();
      if (key.starts_with("on") || key == "style")
        mFaults.push_back(path + " has " + std::string(key));
      if (key == "id" && !names.insert(attribute.value()).second)
        mFaults.push_back(path + " has two of id " + attribute.value());
      if (key == "href" || key == "src") mLinks.push_back({path, attribute.value()});
    }
  }

  void Follow(const Reference& link) {
    if (StartsWithNoCaseAscii(link.Href, "https:") || StartsWithNoCaseAscii(link.Href, "http:"))
      return;
    const std::size_t mark = link.Href.find('#');
    const std::string path = link.Href.substr(0, mark);
    const std::string target = path.empty() ? link.Page : Joined(link.Page, path);
    if (!mFiles.contains(target))
      mFaults.push_back(link.Page + " leads to " + link.Href + ", which is not there");
    else if (mark != std::string::npos && !mNames[target].contains(link.Href.substr(mark + 1)))
      mFaults.push_back(link.Page + " leads to " + link.Href + ", of which the page is there");
  }

  static std::string Joined(const std::string& page, std::string_view path) {
    std::string folder = page.substr(0, page.rfind('/') + 1);
    while (path.starts_with("../")) {
      path.remove_prefix(3);
      if (folder.empty()) return "outside";
      folder.pop_back();
      folder.resize(folder.rfind('/') + 1);
    }
    return folder.append(path);
  }

  std::map<std::string, std::string> mFiles;
  std::map<std::string, std::set<std::string>> mNames;
  std::vector<Reference> mLinks;
  std::vector<std::string> mFaults;
};

}  // namespace vendrel::test
