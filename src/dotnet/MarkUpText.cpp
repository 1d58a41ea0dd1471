// Nodes as text and text as nodes.

#include "comments/CommentFile.h"
#include "dotnet/DocumentationFile.h"
#include "dotnet/MarkUp.h"

namespace vendrel {
namespace {

void AppendEscaped(std::string& out, std::string_view text, bool isValue) {
  for (const char c : text) switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '\r': break;  // comes back with its line feed
      case '\n': out += isValue ? "&#10;" : "\r\n"; break;
      case '"':
        if (isValue)
          out += "&quot;";
        else
          out += c;
        break;
      default: out += c;
    }
}

void AppendElement(std::string& out, const pugi::xml_node& node) {
  out.append("<").append(node.name());
  for (const pugi::xml_attribute attribute : node.attributes()) {
    out.append(" ").append(attribute.name()).append("=\"");
    AppendEscaped(out, attribute.value(), true);
    out += '"';
  }
  if (!node.first_child()) {
    out += "/>";
    return;
  }
  out += '>';
  for (const pugi::xml_node child : node.children()) AppendXml(out, child);
  out.append("</").append(node.name()).append(">");
}

// Line feeds of CDATA, which the parser leaves bare.
void AppendWithCrLf(std::string& out, std::string_view text) {
  if (text.find("\r\n") != std::string_view::npos) {
    out += text;
    return;
  }
  for (const char c : text) {
    if (c == '\n') out += '\r';
    out += c;
  }
}

std::string_view TrimmedOf(std::string_view text, std::string_view characters) {
  const std::size_t first = text.find_first_not_of(characters);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(characters) - first + 1);
}

}  // namespace

std::string_view TrimBlanks(std::string_view text) { return TrimmedOf(text, " "); }
std::string_view TrimWhite(std::string_view text) { return TrimmedOf(text, " \t\r\n"); }

void AppendXml(std::string& out, const pugi::xml_node& node) {
  switch (node.type()) {
    case pugi::node_element: return AppendElement(out, node);
    case pugi::node_pcdata: return AppendEscaped(out, node.value(), false);
    case pugi::node_cdata: out.append("<![CDATA[").append(node.value()).append("]]>"); return;
    case pugi::node_comment: out.append("<!--").append(node.value()).append("-->"); return;
    case pugi::node_pi:
      out.append("<?").append(node.name()).append(" ").append(node.value()).append("?>");
      return;
    default: return;
  }
}

std::string GetXML(const pugi::xml_node& e) {
  std::string text;
  for (const pugi::xml_node child : e.children()) {
    if (child.type() == pugi::node_cdata)
      AppendWithCrLf(text, child.value());
    else if (child.type() == pugi::node_element || child.type() == pugi::node_pcdata)
      AppendXml(text, child);
  }
  const std::string_view trimmed = TrimBlanks(text);
  return trimmed.size() == text.size() ? text : std::string(trimmed);
}

// The text is parsed below the parent of the node, in an element of its own at the end.
std::vector<pugi::xml_node> ReplaceNode(const pugi::xml_node& n, const std::string& text) {
  pugi::xml_node parent = n.parent();
  const pugi::xml_node last = parent.last_child();
  const std::string whole = "<xmldoc>" + text + "</xmldoc>";
  std::vector<pugi::xml_node> nodes;
  const bool isWellFormed =
      parent.append_buffer(whole.data(), whole.size(), kMarkUpParse, pugi::encoding_utf8) &&
      last.next_sibling() == parent.last_child() &&
      FindForeignReference(text) == std::string_view::npos;
  if (isWellFormed) {
    const pugi::xml_node holder = parent.last_child();
    while (const pugi::xml_node child = holder.first_child())
      nodes.push_back(parent.insert_move_before(child, n));
    parent.remove_child(n);
    parent.remove_child(holder);
    return nodes;
  }
  while (parent.last_child() != last) parent.remove_child(parent.last_child());
  return nodes;
}

}  // namespace vendrel
