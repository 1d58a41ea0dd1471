#pragma once
#include <string>
#include <string_view>

namespace vendrel {

/// Characters that `AppendHtml` replaces by their HTML names, beside "<" and ">".
enum HtmlEscapes : unsigned { heTags = 0, heQuotes = 1, heAmpersands = 2, heAll = 3 };

/// Appends text so that it stays text: "<" and ">" always become "&lt;" and "&gt;", a double quote
/// and "&" as asked. A NUL, which no page may hold, becomes U+FFFD.
void AppendHtml(std::string& out, std::string_view text, HtmlEscapes escapes = heAll);

}  // namespace vendrel
