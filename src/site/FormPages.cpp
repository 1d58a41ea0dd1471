// The page of a form: the picture, and the tree of its controls with their procedures.

#include <algorithm>

#include "core/CaseFold.h"
#include "project/VBProject.h"
#include "site/FormDrawing.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

/// Procedures by what raises the event that they handle. Controls of an array share theirs, which
/// the tree knows by one of them.
class Handlers {
 public:
  explicit Handlers(const Component& form) {
    for (const Block& block : form.Blocks.Listed()) {
      const CodeElement* source = block.IsEventProcedure ? block.EventSource.Get() : nullptr;
      if (!source) continue;
      const auto* control = As<VBControl>(source);
      mBlocks[FoldKey(control ? control->ShortName() : source->ElementName())].push_back(&block);
    }
  }
  const std::vector<const Block*>* Of(const VBControl& control) const {
    const auto found = mBlocks.find(FoldKey(control.ShortName()));
    return found == mBlocks.end() ? nullptr : &found->second;
  }

 private:
  std::unordered_map<std::string, std::vector<const Block*>> mBlocks;
};

std::string ControlRow(const SiteRun& run, const ModuleEntry& module, const VBControl& control,
                       int depth, const Handlers& handlers) {
  std::string row = "<tr id=\"";
  row.append(AnchorOfLeaf(run.Map.LeafOf(control))).append("\"><td class=\"first\"><div");
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
  if (const auto* blocks = handlers.Of(control))
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
  const Handlers handlers(form);
  for (std::size_t from = 0; from < controls.size(); from += kFieldsOnPage) {
    const std::size_t number = from / kFieldsOnPage;
    Page page = PageIn(module, PageOfControls(number),
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
