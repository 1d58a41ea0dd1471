#pragma once
// The mark-up of XML documentation as the HTML fragments that texts of tagged comments use. Nodes
// are rewritten in place; whoever calls bounds their depth.

#include <functional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "project/Assembly.h"

namespace vendrel {

/// How texts are parsed: blanks, comments and processing instructions are kept.
inline constexpr unsigned kMarkUpParse =
    pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_comments | pugi::parse_pi;

inline std::string AttributeText(const pugi::xml_node& node, const char* name) {
  return node.attribute(name).value();
}

/// The XML of a node, as its readers expect it: line feeds as CR LF, ">" as "&gt;", empty elements
/// as "<x/>".
void AppendXml(std::string& out, const pugi::xml_node& node);
/// Without blanks at both ends; tabs and line ends stay.
std::string_view TrimBlanks(std::string_view text);
/// Without white space of any kind at both ends.
std::string_view TrimWhite(std::string_view text);

/// Texts and elements of a node: elements and texts as XML, CDATA sections as their text with line
/// feeds as CR LF; without blanks at both ends. Empty for no node.
std::string GetXML(const pugi::xml_node& e);

/// Puts the nodes of an XML text in the place of a node, and gives them. Where the text is not
/// well-formed the node stays and the result is empty.
std::vector<pugi::xml_node> ReplaceNode(const pugi::xml_node& n, const std::string& text);

/// Rewrites the mark-up of the documentation of one element.
class MarkUp {
 public:
  /// Finds an element by its .NET name.
  using Finder = std::function<CodeElement*(std::string_view)>;
  /// Takes a tagged comment for the element.
  using Taker = std::function<void(std::string_view tag, const std::string& text)>;

  MarkUp(const VBProject& project, ExternalDocs* externalDocs, Finder find, Taker takeComment)
      : mProject(project),
        mExternalDocs(externalDocs),
        mFind(std::move(find)),
        mTake(std::move(takeComment)) {}

  /// The element that is documented; a link to it is none.
  void SetCurrentItem(CodeElement* item) { mCurrent = item; }
  /// Rewrites a node and what is in it. Elements alone are touched.
  void ProcessXMLNode(const pugi::xml_node& n);
  /// Rewrites what is in a node and gives it as text. `RemoveLineBreaks` takes line ends out; in
  /// the complete reading each leaves a blank.
  std::string ParseOutXML(const pugi::xml_node& source, bool RemoveLineBreaks);
  /// The address of a .NET name without prefix in documentation outside; empty if there is none.
  std::string AddressOf(std::string_view name) const {
    return mExternalDocs ? mExternalDocs->url(name) : std::string();
  }

 private:
  bool Keeps() const { return mProject.Reading.DocumentationElements; }
  void ProcessChildren(const pugi::xml_node& n);
  void Replace(const pugi::xml_node& n, const std::string& text);
  void ProcessSee(const pugi::xml_node& n);
  std::string LinkTo(const pugi::xml_node& n, std::string_view cref) const;
  void ProcessSeeAlso(const pugi::xml_node& n);
  void ProcessList(const pugi::xml_node& n);
  void ProcessCode(const pugi::xml_node& n);

  const VBProject& mProject;
  ExternalDocs* mExternalDocs;
  Finder mFind;
  Taker mTake;
  CodeElement* mCurrent = nullptr;
};

}  // namespace vendrel
