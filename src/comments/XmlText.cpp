// Parsing of XML text with the place of what is wrong. The parser lets some faults pass that would
// silently change a text; those are looked for here.

#include <pugixml.hpp>

#include "comments/CommentFile.h"
#include "core/Ascii.h"
#include "diagnostics/Context.h"

namespace vendrel {
namespace {

[[noreturn]] void Refuse(std::string_view text, std::size_t at, std::string_view name,
                         std::string_view reason) {
  std::size_t line = 1, column = 1;
  for (const char c : text.substr(0, at)) {
    if (c == '\n')
      ++line, column = 1;
    else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80)
      ++column;
  }
  std::string message(name);
  message += ": line " + std::to_string(line) + ", column " + std::to_string(column);
  throw VendrelError(errInvalidArgument, message.append(": ").append(reason));
}

bool IsReference(std::string_view name) {
  for (const std::string_view known : {"amp", "lt", "gt", "quot", "apos"})
    if (name == known) return true;
  if (!name.starts_with('#') || name.size() < 2) return false;
  name.remove_prefix(1);
  const bool hex = name.starts_with('x');
  if (hex) name.remove_prefix(1);
  const std::string_view digits = hex ? "0123456789abcdefABCDEF" : "0123456789";
  return !name.empty() && name.find_first_not_of(digits) == std::string_view::npos;
}

// The position behind a comment, CDATA section, declaration or processing instruction at `at`; 0
// where none begins.
std::size_t BehindMarkup(std::string_view text, std::size_t at) {
  constexpr std::string_view kinds[][2] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
  for (const auto& kind : kinds) {
    if (text.substr(at, kind[0].size()) != kind[0]) continue;
    const std::size_t end = text.find(kind[1], at + kind[0].size());
    return end == std::string_view::npos ? text.size() : end + kind[1].size();
  }
  return 0;
}

void CheckReferences(std::string_view text, std::string_view name) {
  const std::size_t at = FindForeignReference(text);
  if (at != std::string_view::npos)
    Refuse(text, at, name, "\"&\" that begins no character reference");
}

void CheckRoot(const pugi::xml_document& document, std::string_view text, std::string_view name) {
  const pugi::xml_node second = document.document_element().next_sibling();
  for (pugi::xml_node node = second; node; node = node.next_sibling())
    if (node.type() == pugi::node_element)
      Refuse(text, static_cast<std::size_t>(node.offset_debug()), name, "a second root element");
}

}  // namespace

std::size_t FindForeignReference(std::string_view text) {
  if (text.find('&') == std::string_view::npos) return std::string_view::npos;
  for (std::size_t at = text.find_first_of("&<"); at != std::string_view::npos;
       at = text.find_first_of("&<", at)) {
    const std::size_t behind = text[at] == '<' ? BehindMarkup(text, at) : 0;
    if (text[at] == '&') {
      const std::size_t end = text.substr(at, 16).find(';');
      if (end == std::string_view::npos || !IsReference(text.substr(at + 1, end - 1))) return at;
    }
    at = behind ? behind : at + 1;
  }
  return std::string_view::npos;
}

void ParseXml(pugi::xml_document& document, std::string_view text, std::string_view name) try {
  const pugi::xml_parse_result result = document.load_buffer(
      text.data(), text.size(), pugi::parse_default | pugi::parse_ws_pcdata, pugi::encoding_utf8);
  if (!result) Refuse(text, static_cast<std::size_t>(result.offset), name, result.description());
  CheckRoot(document, text, name);
  CheckReferences(text, name);
}
VENDREL_CONTEXT(name, trace::Local("Size", text.size()))

}  // namespace vendrel
