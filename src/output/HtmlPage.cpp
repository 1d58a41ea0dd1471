#include "output/HtmlPage.h"

#include <algorithm>

#include "core/Utf8.h"
#include "diagnostics/Context.h"
#include "model/Component.h"
#include "output/CodeHtml.h"
#include "output/CodePieces.h"
#include "output/HtmlText.h"
#include "services/SourceText.h"

namespace vendrel {
namespace {

constexpr std::string_view kStyle = R"css(
:root{color-scheme:light dark;--back:#fff;--text:#1b1f24;--dim:#6a737d;--rule:#d8dee4;
--keyword:#000080;--comment:#006b00;--string:#5c5c5c}
@media (prefers-color-scheme:dark){:root{--back:#16191d;--text:#d7dce2;--dim:#8a939d;
--rule:#343a41;--keyword:#8ab4f8;--comment:#7cc47f;--string:#c8a879}}
body{margin:0 auto;max-width:76rem;padding:1.5rem;background:var(--back);color:var(--text);
font:1rem/1.5 system-ui,sans-serif}
h1{font-size:1.5rem;margin:0 0 1rem}h2{font-size:1.15rem;margin:2rem 0 .5rem}
h2 small{unicode-bidi:isolate}h2 small{color:var(--dim);font-weight:normal;margin-left:.75rem}
a{color:inherit}nav{column-width:16rem;font-size:.9rem;margin:.5rem 0}
nav a{display:block;overflow-wrap:anywhere}
pre{margin:0;padding:.75rem 0;overflow-x:auto;border:solid var(--rule);border-width:1px 0;
font:.875rem/1.45 ui-monospace,Consolas,"DejaVu Sans Mono",monospace;tab-size:4}
.l{counter-increment:line}.l::before{content:counter(line);display:inline-block;width:3.5em;
margin-right:1em;text-align:right;color:var(--dim);user-select:none}
.l:target{background:var(--rule)}
.k{color:var(--keyword)}.c{color:var(--comment)}.s{color:var(--string)}
.c,.s,.b{unicode-bidi:isolate;direction:ltr}
.b::before{content:attr(title);padding:0 .25em;color:var(--back);background:var(--text);font-size:.75em}
)css";

std::string_view ClassOf(CodePart part) {
  switch (part) {
    case CodePart::Keyword: return "k";
    case CodePart::Comment: return "c";
    default: return "s";
  }
}

// Characters that turn the direction are shown by their names, each isolated so that it turns
// nothing; the text stays what it is.
void AppendText(std::string& html, std::string_view text, HtmlEscapes escapes = heAmpersands) {
  for (std::size_t at = FirstDirectionControl(text); at < text.size();
       at = FirstDirectionControl(text)) {
    AppendHtml(html, text.substr(0, at), escapes);
    std::size_t behind = at;
    const std::string name = CodePointName(TakeCharacter(text, behind));
    html.append("<span class=b title=\"").append(name).append("\">");
    html.append(text.substr(at, behind - at)).append("</span>");
    text.remove_prefix(behind);
  }
  AppendHtml(html, text, escapes);
}

// For the title, which holds no elements.
std::string Html(std::string_view text) {
  std::string html;
  AppendHtml(html, text);
  return html;
}

std::string Heading(std::string_view text) {
  std::string html;
  AppendText(html, text, heAll);
  return html;
}

void AppendPiece(std::string& html, const CodePiece& piece) {
  if (piece.Part == CodePart::Plain) return AppendText(html, piece.Text);
  html.append("<span class=").append(ClassOf(piece.Part)).append(">");
  AppendText(html, piece.Text);
  html.append("</span>");
}

}  // namespace

HtmlPage::HtmlPage(std::ostream& out, std::string_view title) : mOut(out) {
  mOut << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
          "<meta http-equiv=\"Content-Security-Policy\" "
          "content=\"default-src 'none'; style-src 'unsafe-inline'\">\n"
          "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>"
       << Html(title) << "</title>\n<style>" << kStyle << "</style>\n</head>\n<body>\n<h1>"
       << Heading(title) << "</h1>\n";
}

void HtmlPage::AddIndex(const std::vector<std::string>& names) {
  mOut << "<nav>\n";
  for (std::size_t i = 0; i < names.size(); ++i)
    mOut << "<a href=\"#m" << static_cast<std::size_t>(mListings) + i + 1 << "\">"
         << Heading(names[i]) << "</a>\n";
  mOut << "</nav>\n";
}

void HtmlPage::Add(const Listing& listing) {
  ++mListings;
  mOut << "<section id=m" << mListings << ">\n<h2>" << Heading(listing.Name) << "<small>"
       << Heading(listing.Place) << "</small></h2>\n";
  AddLinks(listing);
  AddCode(listing);
  mOut << "</section>\n";
}

void HtmlPage::AddLinks(const Listing& listing) {
  if (listing.Anchors.empty()) return;
  mOut << "<details><summary>Procedures: " << listing.Anchors.size() << "</summary><nav>\n";
  for (const auto& [line, name] : listing.Anchors)
    mOut << "<a href=\"#m" << mListings << "-" << line << "\">" << Heading(name) << "</a>\n";
  mOut << "</nav></details>\n";
}

void HtmlPage::AddCode(const Listing& listing) {
  const std::string listingName = "m" + std::to_string(mListings) + "-";
  std::string html =
      "<pre style=\"counter-reset:line " + std::to_string(listing.FirstLine - 1) + "\"><code>";
  std::int32_t number = listing.FirstLine;
  auto anchor = listing.Anchors.begin();
  bool commentGoesOn = false;
  for (std::string_view rest = listing.Text; !rest.empty(); ++number) {
    const std::string_view line = TakeLine(rest);
    html.append("<span class=l id=").append(listingName).append(std::to_string(number)).append(">");
    for (; anchor != listing.Anchors.end() && anchor->first <= number; ++anchor) {
      html.append("<a id=\"");
      AppendHtml(html, anchor->second);
      html.append("\"></a>");
    }
    if (line.empty()) commentGoesOn = false;
    CodePiece piece;
    for (TokenPieces pieces(line, commentGoesOn); pieces.Next(piece);) AppendPiece(html, piece);
    html.append("</span>\n");
    if (html.size() < (std::size_t{1} << 16)) continue;
    mOut << html;
    html.clear();
  }
  mOut << html << "</code></pre>\n";
}

void HtmlPage::Finish() { mOut << "</body>\n</html>\n"; }

HtmlPage::Listing ListingOf(const Component& component, std::string_view place) try {
  HtmlPage::Listing listing{component.Name, place, {}, 1, {}};
  if (component.SourceForm) listing.Text = component.SourceForm->Text;
  for (const Block& block : component.Blocks) {
    const bool isFirst = component.Blocks.Item(block.Name()) == &block;  // of a property
    if (!block.Name().empty() && block.SourceLine() > 0 && isFirst)
      listing.Anchors.emplace_back(block.SourceLine(), block.QualifiedName());
  }
  std::stable_sort(listing.Anchors.begin(), listing.Anchors.end());
  return listing;
}
VENDREL_CONTEXT(component, place)

HtmlPage::Listing ListingOf(const Block& block, std::string_view place, std::string& text) try {
  text.clear();
  const CodeLines* lines = block.CodeLines.IfAny();
  std::int32_t above = 0;
  for (std::int32_t i = 1; lines && i < block.FirstLine(); ++i) above += !lines->NotInSource(i);
  ForEachShownLine(block, true, [&](std::string_view line, bool) { text.append(line) += '\n'; });
  return {block.Name(), place, text, std::max(1, block.SourceLine() - above), {}};
}
VENDREL_CONTEXT(block, place, text)

}  // namespace vendrel
