#pragma once
// The XML documents of the library: names and values as the object model speaks of them, over
// pugixml. Elements and collections are light handles into a document, which must outlive them.

#include <cstddef>
#include <cstdint>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <type_traits>

namespace vendrel {

/// Appends `text` as XML can hold it: each control character that XML forbids, and each byte that
/// is no UTF-8, becomes U+FFFD.
void AppendXmlText(std::string& out, std::string_view text);

/// One attribute; a missing one converts to false and has an empty value.
class XmlAttribute {
 public:
  explicit XmlAttribute(pugi::xml_attribute attribute = {}) : mAttribute(attribute) {}
  explicit operator bool() const { return !mAttribute.empty(); }
  std::string Name() const { return mAttribute.name(); }
  std::string Value() const { return mAttribute.value(); }

 private:
  pugi::xml_attribute mAttribute;
};

/// The attributes of an element.
class XmlAttributes {
 public:
  explicit XmlAttributes(pugi::xml_node node) : mNode(node) {}
  std::size_t Count() const;
  /// The attribute of that name, case-sensitive.
  XmlAttribute Item(const char* name) const { return XmlAttribute(mNode.attribute(name)); }
  XmlAttribute Item(const std::string& name) const { return Item(name.c_str()); }

 private:
  pugi::xml_node mNode;
};

class XmlElements;

/// One element; a missing one converts to false.
class XmlElement {
 public:
  XmlElement() = default;
  explicit XmlElement(pugi::xml_node node) : mNode(node) {}
  explicit operator bool() const { return !mNode.empty(); }

  std::string Name() const { return mNode.name(); }
  void SetName(std::string_view name);

  /// Adds an attribute, or gives one that is there another value. Truth values read "True" or
  /// "False", numbers and enumerations are decimal.
  template <typename T>
  void SetAttribute(const char* name, const T& value) {
    if constexpr (requires { value.Value(); })
      SetAttribute(name, value.Value());  // a member that few elements have
    else if constexpr (std::is_same_v<T, bool>)
      SetText(name, value ? "True" : "False");
    else if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>)
      SetNumber(name, static_cast<std::int64_t>(value));
    else
      SetText(name, std::string_view(value));
  }

  /// Adds a last child element with this text, and gives it.
  XmlElement AddElement(const char* name, std::string_view text = {});

  XmlAttributes Attributes() const { return XmlAttributes(mNode); }
  XmlElements Elements() const;
  /// The text directly inside the element.
  std::string Text() const;

  /// The node itself, for what this class does not offer.
  pugi::xml_node Node() const { return mNode; }

  /// The element as text, like `XmlDocument::Xml` without the declaration; so many levels in.
  std::string Xml(unsigned depth) const;

  /// The element is known to a manifest alone until it is stripped: whatever attribute it is given
  /// it did not have, and no child is added that would hold text alone.
  XmlElement& AsDraft() {
    mIsDraft = true;
    return *this;
  }
  bool IsDraft() const { return mIsDraft; }

 private:
  void SetText(const char* name, std::string_view value);
  void SetNumber(const char* name, std::int64_t value);

  pugi::xml_node mNode;
  bool mIsDraft = false;
};

/// The child elements of an element, in order.
class XmlElements {
 public:
  explicit XmlElements(pugi::xml_node node) : mNode(node) {}
  std::size_t Count() const;
  /// The element at a 1-based position; none outside. Walks up to there: to visit all, iterate.
  XmlElement Item(std::size_t index) const;
  /// Removes the element at a 1-based position; raises 9 outside.
  void Remove(std::size_t index);

  class Iterator {
   public:
    explicit Iterator(pugi::xml_node node) : mNode(node) {}
    XmlElement operator*() const { return XmlElement(mNode); }
    Iterator& operator++();
    bool operator==(const Iterator& other) const { return mNode == other.mNode; }

   private:
    pugi::xml_node mNode;
  };
  Iterator begin() const;
  Iterator end() const { return Iterator(pugi::xml_node()); }

 private:
  pugi::xml_node mNode;
};

/// A document with one root element.
class XmlDocument {
 public:
  /// The root element, made without a name if there is none.
  XmlElement Root();
  /// The whole document as text: UTF-8, with a declaration, indented, lines ended by LF.
  std::string Xml() const;
  /// Replaces the document by one parsed from a text. Raises 5 with the reason and the place (byte,
  /// 0-based) where it is not well-formed.
  void LoadXml(std::string_view text);

 private:
  pugi::xml_document mDocument;
};

}  // namespace vendrel
