#include "output/Xml.h"

#include <charconv>

#include "core/Utf8.h"
#include "diagnostics/Context.h"

namespace vendrel {
namespace {

constexpr char kIndent[] = " ";

bool IsForbidden(unsigned char c) { return c < 0x20 && c != '\t' && c != '\n' && c != '\r'; }

// Beyond ASCII only U+FFFE and U+FFFF are forbidden; both begin with the same two bytes.
bool NeedsCare(std::string_view text) {
  for (const char c : text)
    if (IsForbidden(static_cast<unsigned char>(c)) || static_cast<unsigned char>(c) >= 0x80)
      return true;
  return false;
}

// Gives a node or an attribute its value, in which nothing need be replaced mostly.
template <typename Target>
void SetValue(Target target, std::string_view text) {
  if (!NeedsCare(text)) {
    target.set_value(text.data(), text.size());
    return;
  }
  std::string valid;
  AppendXmlText(valid, text);
  target.set_value(valid.data(), valid.size());
}

bool IsElement(pugi::xml_node node) { return node.type() == pugi::node_element; }

pugi::xml_node FirstElement(pugi::xml_node node) {
  while (node && !IsElement(node)) node = node.next_sibling();
  return node;
}

struct StringWriter final : pugi::xml_writer {
  std::string Text;
  void write(const void* data, std::size_t size) override {
    Text.append(static_cast<const char*>(data), size);
  }
};

}  // namespace

void AppendXmlText(std::string& out, std::string_view text) {
  if (!NeedsCare(text)) {
    out.append(text);
    return;
  }
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = TakeCharacter(text, at);
    const bool forbidden = character == IllFormed || character == 0xFFFE || character == 0xFFFF ||
                           (character < 0x20 && IsForbidden(static_cast<unsigned char>(character)));
    AppendUtf8(out, forbidden ? ReplacementCharacter : character);
  }
}

std::size_t XmlAttributes::Count() const {
  std::size_t count = 0;
  for (auto attribute = mNode.first_attribute(); attribute; attribute = attribute.next_attribute())
    ++count;
  return count;
}

void XmlElement::SetName(std::string_view name) { mNode.set_name(std::string(name).c_str()); }

void XmlElement::SetText(const char* name, std::string_view value) {
  pugi::xml_attribute attribute;
  if (!mIsDraft) attribute = mNode.attribute(name);
  if (!attribute) attribute = mNode.append_attribute(name);
  SetValue(attribute, value);
}

void XmlElement::SetNumber(const char* name, std::int64_t value) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  SetText(name, {digits, end});
}

XmlElement XmlElement::AddElement(const char* name, std::string_view text) {
  pugi::xml_node child = mNode.append_child(name);
  if (!text.empty()) SetValue(child.append_child(pugi::node_pcdata), text);
  return XmlElement(child);
}

std::string XmlElement::Xml(unsigned depth) const {
  StringWriter writer;
  mNode.print(writer, kIndent, pugi::format_indent, pugi::encoding_utf8, depth);
  return std::move(writer.Text);
}

XmlElements XmlElement::Elements() const { return XmlElements(mNode); }

std::string XmlElement::Text() const {
  std::string text;
  for (auto node = mNode.first_child(); node; node = node.next_sibling())
    if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) text += node.value();
  return text;
}

std::size_t XmlElements::Count() const {
  std::size_t count = 0;
  for (auto it = begin(); it != end(); ++it) ++count;
  return count;
}

XmlElement XmlElements::Item(std::size_t index) const {
  for (auto it = begin(); index > 0 && it != end(); ++it)
    if (--index == 0) return *it;
  return {};
}

void XmlElements::Remove(std::size_t index) try {
  const XmlElement element = Item(index);
  if (!element) throw VendrelError(errSubscript);
  mNode.remove_child(element.Node());
}
VENDREL_CONTEXT(index)

XmlElements::Iterator& XmlElements::Iterator::operator++() {
  mNode = FirstElement(mNode.next_sibling());
  return *this;
}

XmlElements::Iterator XmlElements::begin() const {
  return Iterator(FirstElement(mNode.first_child()));
}

XmlElement XmlDocument::Root() {
  pugi::xml_node root = mDocument.document_element();
  return XmlElement(root ? root : mDocument.append_child(pugi::node_element));
}

std::string XmlDocument::Xml() const {
  StringWriter writer;
  mDocument.save(writer, kIndent, pugi::format_indent, pugi::encoding_utf8);
  return std::move(writer.Text);
}

void XmlDocument::LoadXml(std::string_view text) try {
  const auto result = mDocument.load_buffer(text.data(), text.size(),
                                            pugi::parse_default | pugi::parse_ws_pcdata_single,
                                            pugi::encoding_utf8);
  if (!result)
    throw VendrelError(errInvalidArgument, std::string("the text is no XML document: ") +
                                               result.description() + " at byte " +
                                               std::to_string(result.offset));
}
VENDREL_CONTEXT(text)

}  // namespace vendrel
