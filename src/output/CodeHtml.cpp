#include "output/CodeHtml.h"

#include "diagnostics/Context.h"
#include "output/CodePieces.h"
#include "output/HtmlText.h"
#include "project/VBProject.h"
#include "services/SourceText.h"

namespace vendrel {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::string_view ColourOf(CodePart part) {
  switch (part) {
    case CodePart::Keyword: return "#000080";
    case CodePart::Comment: return "#008000";
    default: return "#808080";
  }
}

void AppendWord(std::string& html, const CodePiece& piece) {
  if (piece.Part == CodePart::Plain) return AppendHtml(html, piece.Text, heTags);
  html.append("<font color=\"").append(ColourOf(piece.Part)).append("\">");
  AppendHtml(html, piece.Text, piece.Part == CodePart::String ? heQuotes : heTags);
  html.append("</font>");
}

void AppendWords(std::string& html, std::string_view line) {
  std::size_t lead = 0;
  for (; lead < line.size() && line[lead] == ' '; ++lead) html.append("&nbsp;");
  line.remove_prefix(lead);
  CodePiece piece;
  for (WordPieces pieces(line); pieces.Next(piece);) AppendWord(html, piece);
  html.append("<BR/>").append(kLineEnd);
}

void AppendCode(std::string& html, std::string_view code) {
  const std::size_t start = html.size();
  while (!code.empty()) {
    const std::size_t end = code.find(kLineEnd);
    AppendWords(html, code.substr(0, end));
    if (end == std::string_view::npos) break;
    code.remove_prefix(end + kLineEnd.size());
    if (code.empty()) AppendWords(html, {});  // the cut leaves an empty line behind the last end
  }
  if (html.size() == start) html.append("<BR/>");
}

void AppendWithoutTabs(std::string& out, std::string_view text) {
  for (std::size_t tab = text.find('\t'); tab != std::string_view::npos; tab = text.find('\t')) {
    out.append(text, 0, tab).append("    ");
    text.remove_prefix(tab + 1);
  }
  out.append(text);
}

void AppendAnchor(std::string& html, std::string_view qualifiedName) {
  html.append("<a name=\"");
  AppendHtml(html, qualifiedName);
  html.append("\"></a>");
}

std::string InCodeTag(std::string html) {
  if (!html.ends_with(kLineEnd)) html.append(kLineEnd);
  return html.insert(0, "<CODE>\r\n").append("</CODE>\r\n");
}

}  // namespace

std::string CodeToHTML(std::string_view SourceVBCode) {
  std::string html;
  html.reserve(SourceVBCode.size() * 2);
  AppendCode(html, SourceVBCode);
  return html;
}

std::string VBProject::CodeToHTML(std::string_view Code) const { return vendrel::CodeToHTML(Code); }

void ForEachShownLine(const Block& block, bool includeTaggedComments,
                      const std::function<void(std::string_view, bool)>& visit) try {
  const CodeLines* lines = block.CodeLines.IfAny();
  if (!lines) return;
  // A remainder behind a separator stands in its physical line already.
  const bool sourceOnly = block.Options().Reading.KeepLinesBehindSeparators;
  for (std::int32_t i = 1; i <= lines->Count(); ++i) {
    const bool isShown = !(sourceOnly && lines->NotInSource(i)) &&
                         (includeTaggedComments || lines->LineType(i) != TAGGED_COMMENT);
    if (isShown) visit(lines->LineView(i), lines->Continued(i));
    if (lines->IsEndLine(i)) break;
  }
}
VENDREL_CONTEXT(block, includeTaggedComments)

std::string Block::CodeAsHTML(bool UseCodeTag, bool IncludeTaggedComments) const try {
  std::string html;
  AppendAnchor(html, QualifiedName());
  std::string statement;
  bool isOpen = false;
  ForEachShownLine(*this, IncludeTaggedComments, [&](std::string_view text, bool continued) {
    AppendWithoutTabs(statement, text);
    isOpen = continued;
    if (continued) {
      statement.append(kLineEnd);
      return;
    }
    AppendCode(html, statement);
    statement.clear();
  });
  // The last line asks for one that is not there.
  if (isOpen) AppendCode(html, std::string_view(statement).substr(0, statement.size() - 2));
  return UseCodeTag ? InCodeTag(std::move(html)) : html;
}
VENDREL_CONTEXT(UseCodeTag, IncludeTaggedComments, *this)

std::string ModuleAsHTML(const Component& component, bool useCodeTag) try {
  if (!component.SourceForm) return {};
  std::string html;
  html.reserve(component.SourceForm->Text.size() * 2);
  AppendAnchor(html, component.QualifiedName());
  std::string line;
  for (std::string_view rest = component.SourceForm->Text; !rest.empty();) {
    line.clear();
    AppendWithoutTabs(line, TakeLine(rest, component.SourceForm->LineEnds.Form));
    AppendWords(html, line);
  }
  return useCodeTag ? InCodeTag(std::move(html)) : html;
}
VENDREL_CONTEXT(component, useCodeTag)

}  // namespace vendrel
