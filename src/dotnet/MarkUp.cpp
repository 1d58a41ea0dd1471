#include "dotnet/MarkUp.h"

#include <algorithm>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "names/NameLookup.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

std::string NameOfElement(const pugi::xml_node& node) { return LowerAscii(node.name()); }

std::string Strong(const std::string& text) { return "<strong>" + text + "</strong>"; }
std::string Link(const std::string& address, const std::string& caption) {
  return "<a href=\"" + address + "\">" + caption + "</a>";
}

std::vector<pugi::xml_node> ChildrenOf(const pugi::xml_node& node) {
  return {node.children().begin(), node.children().end()};
}

// ---- Lists -------------------------------------------------------------------------------------

struct ListTags {
  std::string_view Type, Start, Item, ItemEnd, End;
  bool IsTable = false;
  bool IsTermList = false;
};

constexpr ListTags kLists[] = {
    {"bullet", "<ul class=\"xmldocbulletlist\">", "<li class=\"xmldocbulletlist\">", "</li>",
     "</ul>"},
    {"number", "<ol class=\"xmldocnumberedlist\">", "<li class=\"xmldocnumberedlist\">", "</li>",
     "</ol>"},
    {"table", "<table class=\"xmldoctable\" CellSpacing=\"0\">", "<td class=\"xmldoctable\">",
     "</td>", "</table>", true, false},
    {"termdef", "<dl>", "", "", "</dl>", false, true},
};

ListTags TagsOf(std::string_view type, bool complete) {
  if (complete && type == "definition") type = "termdef";
  for (const ListTags& tags : kLists)
    if (tags.Type == type) return tags;
  return {};
}

struct ListEntry {
  pugi::xml_node Node;
  bool IsHeader = false;
  std::string Term, Description;
};

void AppendRow(std::string& text, const ListEntry& entry, const ListTags& tags) {
  const std::string_view start = entry.IsHeader ? "<th>" : tags.Item;
  const std::string_view end = entry.IsHeader ? "</th>" : tags.ItemEnd;
  text.append("<tr>").append(start).append(entry.Term).append(end);
  text.append(start).append(entry.Description).append(end).append("</tr>");
}

// What an entry of a plain list shows: its term, else all of it. In the complete reading its
// description too, and never with the element around it.
std::string TextOfEntry(const ListEntry& entry, bool complete) {
  const bool hasTerm = !entry.Node.child("term").empty();
  if (!complete) return hasTerm ? entry.Term : GetXML(entry.Node);
  const bool hasDescription = !entry.Node.child("description").empty();
  if (!hasTerm && !hasDescription) return GetXML(entry.Node);
  if (!hasTerm || !hasDescription) return entry.Term + entry.Description;
  return entry.Term + " " + entry.Description;
}

// ---- Code --------------------------------------------------------------------------------------

std::size_t LeadingBlanks(std::string_view line) {
  return std::min(line.find_first_not_of(' '), line.size());
}

// Takes the indentation of the first line that tells one from all lines that have it. Attributes in
// brackets tell none.
std::string WithoutIndentation(std::string_view text) {
  constexpr std::size_t kNotFixed = std::string_view::npos;
  std::size_t indentation = kNotFixed;
  std::string result;
  for (bool more = true; more;) {
    const std::size_t end = text.find("\r\n");
    std::string_view line = text.substr(0, end);
    more = end != std::string_view::npos;
    if (more) text.remove_prefix(end + 2);
    if (line.starts_with('\n')) line.remove_prefix(1);
    if (indentation == kNotFixed && !TrimBlanks(line).empty() && !line.starts_with('['))
      indentation = LeadingBlanks(line);
    if (indentation != kNotFixed && LeadingBlanks(line) >= indentation)
      line.remove_prefix(indentation);
    result += line;
    if (more) result += "\r\n";
  }
  return result;
}

}  // namespace

void MarkUp::ProcessChildren(const pugi::xml_node& n) {
  for (const pugi::xml_node& child : ChildrenOf(n)) ProcessXMLNode(child);
}

void MarkUp::Replace(const pugi::xml_node& n, const std::string& text) {
  for (const pugi::xml_node& node : ReplaceNode(n, text)) ProcessXMLNode(node);
}

void MarkUp::ProcessXMLNode(const pugi::xml_node& n) {
  if (n.type() != pugi::node_element) return;
  const std::string name = NameOfElement(n);
  if (name == "see") return ProcessSee(n);
  if (name == "seealso") return ProcessSeeAlso(n);
  if (name == "list") return ProcessList(n);
  if (name == "para") return Replace(n, "<p>" + GetXML(n) + "</p>");
  if (name == "paramref" || (name == "typeparamref" && Keeps()))
    return Replace(n, "<i>" + AttributeText(n, "name") + "</i>");
  if (name == "code" || name == "c") return ProcessCode(n);
  ProcessChildren(n);
}

void MarkUp::ProcessSee(const pugi::xml_node& n) {
  if (n.attribute("cref")) return Replace(n, LinkTo(n, n.attribute("cref").value()));
  if (n.attribute("langword")) return Replace(n, Strong(AttributeText(n, "langword")));
  if (Keeps() && n.attribute("href")) {
    std::string address, caption = GetXML(n);
    // The address comes out of its attribute bare.
    AppendXml(address, n);
    address = address.substr(address.find("href=\"") + 6);
    address.erase(address.find('"'));
    return Replace(n, Link(address, caption.empty() ? address : caption));
  }
  ProcessChildren(n);
}

std::string MarkUp::LinkTo(const pugi::xml_node& n, std::string_view cref) const {
  const CodeElement* target = mFind(cref);
  std::string caption = GetXML(n);
  if (target) {
    if (caption.empty()) caption = SmartName(target, mCurrent);
    return target == mCurrent ? Strong(caption) : Link(target->QualifiedName() + ".html", caption);
  }
  const std::size_t colon = cref.find(':');
  const std::string_view name = colon == std::string_view::npos ? cref : cref.substr(colon + 1);
  if (caption.empty()) caption = name;
  const std::string address = AddressOf(name);
  return address.empty() ? Strong(caption) : Link(address, caption);
}

void MarkUp::ProcessSeeAlso(const pugi::xml_node& n) {
  const std::string_view cref = n.attribute("cref").value();
  const CodeElement* target = cref.empty() ? nullptr : mFind(cref);
  if (target) {
    std::string caption = GetXML(n);
    if (caption.empty()) caption = SmartName(target, mCurrent);
    mTake("##SEEALSO", "Target=\"" + target->QualifiedName() + "\", Caption=\"" + caption + "\"");
    ReplaceNode(n, "<seealso cref=\"\"/>");
    return;
  }
  ProcessChildren(n);
}

void MarkUp::ProcessList(const pugi::xml_node& n) {
  const ListTags tags = TagsOf(LowerAscii(n.attribute("type").value()), Keeps());
  ProcessChildren(n);
  std::string text(tags.Start);
  for (const pugi::xml_node& child : n.children()) {
    const std::string_view name = child.name();
    if (name != "item" && name != "listheader") continue;
    const ListEntry entry{child, name == "listheader", GetXML(child.child("term")),
                          GetXML(child.child("description"))};
    if (tags.IsTable)
      AppendRow(text, entry, tags);
    else if (tags.IsTermList)
      text.append("<dt>" + entry.Term + "</dt><dd>" + entry.Description + "</dd>");
    else
      text.append(tags.Item).append(TextOfEntry(entry, Keeps())).append(tags.ItemEnd);
  }
  Replace(n, text.append(tags.End));
}

void MarkUp::ProcessCode(const pugi::xml_node& n) {
  const std::string text = GetXML(n);
  ReplaceNode(n, "<code lang=\"" + AttributeText(n, "lang") + "\"><![CDATA[" +
                     WithoutIndentation(text) + "]]></code>");
}

std::string MarkUp::ParseOutXML(const pugi::xml_node& source, bool RemoveLineBreaks) {
  ProcessChildren(source);
  std::string text;
  for (const pugi::xml_node& child : source.children()) {
    if (child.type() == pugi::node_cdata)
      text += child.value();
    else if (child.type() == pugi::node_element || child.type() == pugi::node_pcdata)
      AppendXml(text, child);
  }
  if (RemoveLineBreaks && text.find("\r\n") != std::string::npos) {
    std::string joined;
    joined.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text.compare(i, 2, "\r\n") != 0) {
        joined += text[i];
        continue;
      }
      ++i;
      if (Keeps()) joined += ' ';
    }
    text.swap(joined);
  }
  const std::string_view trimmed = TrimBlanks(text);
  return trimmed.size() == text.size() ? text : std::string(trimmed);
}

}  // namespace vendrel
