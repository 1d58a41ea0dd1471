// Descriptions become mark-up that is whole: every element is closed, none is one that a page must
// not hold, and nothing of the text stands outside of what was meant.

#include <cstdlib>
#include <pugixml.hpp>
#include <string_view>

#include "Support.h"
#include "core/Utf8.h"
#include "site/Prose.h"
#include "site/SiteHtml.h"

namespace {

using namespace vendrel;

struct Judge : pugi::xml_tree_walker {
  bool for_each(pugi::xml_node& node) override {
    const std::string_view name = node.name();
    for (const std::string_view never :
         {"script", "style", "img", "iframe", "object", "form", "base"})
      if (name == never) std::abort();
    if (name == "a")
      for (pugi::xml_node above = node.parent(); above; above = above.parent())
        if (std::string_view(above.name()) == "a") std::abort();
    for (const pugi::xml_attribute attribute : node.attributes()) {
      const std::string_view key = attribute.name(), value = attribute.value();
      if (key.starts_with("on") || key == "style") std::abort();
      if (key == "href" && value != "known.html" && site::SafeAddress(value).empty()) std::abort();
    }
    return true;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::Text(data, size);
  if (!IsValidUtf8(text)) return 0;  // texts in memory always are
  const site::ProseLinks links{
      [](std::string_view name) { return std::string(name.starts_with("A") ? "known.html" : ""); }};
  std::string html = "<div>";
  site::AppendProse(html, text, links);
  html.append("<p>").append(site::FirstLine(text)).append("</p></div>");
  pugi::xml_document page;
  if (!page.load_buffer(html.data(), html.size())) std::abort();
  Judge judge;
  page.traverse(judge);
  site::WithoutMarkUp(text);
  return 0;
}
