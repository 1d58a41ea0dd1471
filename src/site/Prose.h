#pragma once
// Descriptions as HTML. Comments may hold mark-up of three kinds: "<crlf>" between lines, the HTML
// that authors of help texts write, and that of XML documentation. What is known becomes elements
// of ours, always closed and where they may stand; everything else is text.

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vendrel::site {

/// Longer texts are cut, with a word that says so.
inline constexpr std::size_t kLongestProse = 128 << 10;

/// Where the links of texts lead.
struct ProseLinks {
  /// The address of an element by its qualified name ("P~M~F") or .NET name ("T:Ns.Type", with or
  /// without its prefix); empty if no page tells of it.
  std::function<std::string(std::string_view name)> Element;
};

/// Appends paragraphs, lists, tables and code; nothing for an empty text.
void AppendProse(std::string& html, std::string_view text, const ProseLinks& links);

/// The first sentence on one line, without mark-up, escaped.
std::string FirstLine(std::string_view text);

/// Text as a reader sees it: mark-up taken out, entities resolved, one line.
std::string WithoutMarkUp(std::string_view text);

/// One element of a text: its name in small letters, attributes, what it holds.
struct ProseTag {
  std::string Name;
  bool IsEnd = false;
  bool IsEmpty = false;
  std::vector<std::pair<std::string, std::string>> Attributes;
  std::string_view Attribute(std::string_view name) const;
};
/// Reads the tag at the "<" at `at` and moves behind it; false where none stands.
bool TakeTag(std::string_view text, std::size_t& at, ProseTag& tag);
/// Appends `text` with entities resolved: "&lt;", "&#233;".
void AppendDecoded(std::string& out, std::string_view text);

/// Source as a block of coloured code.
void AppendCodeBlock(std::string& html, std::string_view code, bool isNet);

}  // namespace vendrel::site
