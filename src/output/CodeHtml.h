#pragma once
// Source as coloured HTML, in the documented form: `<font color=...>` and `<BR/>`. "&" stays as it
// stands in that form; a page (output/HtmlPage.h) has a form of its own.

#include <functional>
#include <string>
#include <string_view>

#include "model/Fwd.h"

namespace vendrel {

/// Visual Basic source, lines parted by CR LF, as coloured HTML: keywords, comments and strings in
/// colours, each leading blank as "&nbsp;", each line ended by "<BR/>" and CR LF. An empty text
/// gives "<BR/>". Linear in the length of the text.
std::string CodeToHTML(std::string_view SourceVBCode);

/// The whole file of a module, coloured, behind an anchor of its qualified name; line ends of any
/// form count, tabs become four blanks. Empty for a module without source.
std::string ModuleAsHTML(const Component& component, bool useCodeTag);

/// Calls `visit` for each line of a block that is shown as its source, up to its end line, with
/// whether the statement goes on in the next line.
void ForEachShownLine(const Block& block, bool includeTaggedComments,
                      const std::function<void(std::string_view text, bool continued)>& visit);

}  // namespace vendrel
