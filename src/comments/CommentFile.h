#pragma once
// Comment files: tagged comments kept outside the source, as XML. Below a root of any name stands
// one element for each comment: "eid" names the code element (its qualified name), "tid" the tag,
// "q" the qualifier, and the text of the element is the comment. Where several elements have that
// name, "n" may say the how many-th of them it is, 1-based in the order of the tree.

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include "model/CodeElement.h"

namespace pugi {
class xml_document;
class xml_node;
}  // namespace pugi

namespace vendrel {

/// Calls `visit` for every element of the project that can carry tagged comments, in the order of
/// the tree: the project, each module, its events, enumerations, structures, declarations and
/// interfaces with their members and parameters, its blocks with parameters and variables. Loads
/// nothing.
void ForEachCommentedElement(VBProject& project, const std::function<void(CodeElement&)>& visit);

/// Writes every tagged comment of the project as a comment file: those kept on elements, and each
/// tagged description as a summary. A tag that would find another element when it is read back from
/// a file is written in its element-prefixed form. Load the project with
/// `PreserveOriginalTaggedComments` to have every comment apart.
void WriteCommentFile(VBProject& project, std::ostream& out);

/// A comment file of several projects, whose names tell their elements apart.
class CommentFileOfSeveral {
 public:
  CommentFileOfSeveral();
  ~CommentFileOfSeveral();
  void Add(VBProject& project);
  void Write(std::ostream& out) const;

 private:
  std::unique_ptr<pugi::xml_document> mDocument;
};

/// The text of an element with everything below it, however deep that goes.
std::string XmlTextOf(const pugi::xml_node& element);

/// Parses XML text whole. Raises 5 with `name`, line and column where it is not well-formed.
void ParseXml(pugi::xml_document& document, std::string_view text, std::string_view name);
/// The position of the first "&" that begins no reference which XML knows by itself ("&lt;",
/// "&#160;"), comments and CDATA sections passed over; npos if there is none. Nothing ever declares
/// further ones: those of a document type are refused too.
std::size_t FindForeignReference(std::string_view text);

}  // namespace vendrel
