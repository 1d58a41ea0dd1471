// The page of a form: the picture, and the tree of its controls with their procedures.

#include <algorithm>

#include "core/Ascii.h"
#include "project/VBProject.h"
#include "site/FormDrawing.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

using Handlers = std::unordered_map<const CodeElement*, std::vector<const Block*>>;

// Procedures by what raises the event that they handle.
Handlers HandlersOf(const Component& form) {
  Handlers handlers;
  for (const Block& block : form.Blocks.Listed())
    if (block.IsEventProcedure && block.EventSource.Get())
      handlers[block.EventSource.Get()].push_back(&block);
  return handlers;
}

// Controls of an array share procedures; the tree knows them by the first.
const std::vector<const Block*>* HandlersFor(const Handlers& handlers, const Component& form,
                                             const VBControl& control) {
  auto found = handlers.find(&control);
  if (found == handlers.end() && control.ShortName() != control.Name)
    for (const VBControl& other : form.AllVBControls)
      if (found == handlers.end() && EqualsNoCaseAscii(other.ShortName(), control.ShortName()))
        found = handlers.find(&other);
  return found == handlers.end() ? nullptr : &found->second;
}

std::string ControlRow(const SiteRun& run, const ModuleEntry& module, const VBControl& control,
                       int depth, const Handlers& handlers) {
  const std::string leaf = run.Map.Of(&control).Leaf;
  std::string row = "<tr id=\"" + leaf.substr(leaf.find('#') + 1) + "\"><td class=\"first\"><div";
  if (depth > 0) row.append(" class=\"d").append(std::to_string(std::min(depth, 8))).append("\"");
  row.append(">").append(Name(control.Name));
  if (const Address source = run.Map.SourceOf(control))
    row.append(" <a class=\"of\" href=\"")
        .append(HrefFrom(module.Folder, source))
        .append("\">Source</a>");
  row.append("</div></td>\n<td>");
  const std::string href = run.Types.Href(module.Folder, module.Module, control.ProgID);
  row.append(href.empty() ? "<span class=\"t\">" + Text(control.ProgID) + "</span>"
                          : Link(href, control.ProgID, "t"));
  const std::string caption = control.Caption.empty() ? control.Text : control.Caption;
  if (!caption.empty())
    row.append("<br/><span class=\"s\">").append(Text(Shortened(caption, 300))).append("</span>");
  row.append("</td>\n<td>");
  if (const auto* blocks = HandlersFor(handlers, *module.Module, control))
    for (std::size_t i = 0; i < blocks->size() && i < 60; ++i) {
      const Block& block = *(*blocks)[i];
      Address address = run.Map.Of(&block);
      if (!address) address = run.Map.SourceOf(block);
      row.append(i > 0 ? ", " : "")
          .append(address ? Link(HrefFrom(module.Folder, address), block.Name())
                          : Name(block.Name()));
    }
  return row.append("</td></tr>\n");
}

}  // namespace

void WriteFormPage(const SiteRun& run, const ModuleEntry& module) {
  const Component& form = *module.Module;
  const auto controls = ControlsOf(form);
  const Handlers handlers = HandlersOf(form);
  for (std::size_t from = 0; from < controls.size(); from += kFieldsOnPage) {
    const std::size_t number = from / kFieldsOnPage;
    Page page = PageIn(run, module, PageOfControls(number),
                       number == 0 ? "Controls" : "Controls, page " + std::to_string(number + 1));
    AppendHeading(page, "controls of " + module.Name, page.Title);
    if (number == 0) AppendFormPicture(page.Content, run, form);
    AppendSection(page.Content, "controls", "Controls", controls.size() - 1);
    page.Content.append(
        "<table class=\"list\">\n<thead><tr><th class=\"first\">Name</th><th>Class "
        "and text</th><th>Procedures</th></tr></thead>\n<tbody>\n");
    const std::size_t end = std::min(controls.size(), from + kFieldsOnPage);
    for (std::size_t i = from; i < end; ++i)
      page.Content.append(
          ControlRow(run, module, *controls[i].first, controls[i].second, handlers));
    page.Content.append("</tbody>\n</table>\n");
    if (end < controls.size())
      page.Content.append("<nav class=\"pages\" aria-label=\"Pages\"><a rel=\"next\" href=\"")
          .append(PageOfControls(number + 1))
          .append("\">Next page</a></nav>\n");
    run.Pages.Put(page);
  }
}

}  // namespace vendrel::site
