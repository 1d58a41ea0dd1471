// Descriptions as plain text, and code as it stands in them.

#include <algorithm>

#include "core/Ascii.h"
#include "services/SourceText.h"
#include "site/Prose.h"
#include "site/SiteHtml.h"
#include "site/SourceTokens.h"

namespace vendrel::site {

void AppendCodeBlock(std::string& html, std::string_view code, bool isNet) {
  html.append("<pre class=\"code\"><code>");
  TokenState state;
  while (!code.empty()) {
    const std::string_view line = TakeLine(code);
    SourceToken token;
    for (SourceTokens tokens(line, isNet, state); tokens.Next(token);)
      AppendColoured(html, token.Kind, token.Text);
    if (!code.empty()) html += '\n';
  }
  html.append("</code></pre>\n");
}

std::string WithoutMarkUp(std::string_view text) {
  std::string plain;
  std::size_t from = 0;
  const auto add = [&](std::string_view part) { AppendDecoded(plain, part); };
  for (std::size_t at = text.find('<'); at != kNotFound; at = text.find('<', at)) {
    std::size_t behind = at;
    ProseTag tag;
    if (text.substr(at).starts_with("<![CDATA[")) {
      behind = at + 9;
    } else if (!TakeTag(text, behind, tag)) {
      ++at;
      continue;
    }
    add(text.substr(from, at - from));
    if (tag.Name == "crlf" || tag.Name == "br" || tag.Name == "p" || tag.Name == "para")
      plain += ' ';
    std::string_view target = tag.Attribute("cref");
    if (target.empty()) target = tag.Attribute("langword");
    if (target.empty() && tag.Name.ends_with("paramref")) target = tag.Attribute("name");
    if (tag.IsEmpty && !target.empty())
      plain.append(target.size() > 2 && target[1] == ':' ? target.substr(2) : target);
    from = at = behind;
  }
  add(text.substr(from));
  plain = ReplaceAll(plain, "]]>", "");
  std::string line;
  for (const char c : plain) {
    const bool isWhite = IsGap(c) || c == '\r' || c == '\n';
    if (!isWhite)
      line += c;
    else if (!line.empty() && line.back() != ' ')
      line += ' ';
  }
  if (line.ends_with(' ')) line.pop_back();
  return line;
}

std::string FirstLine(std::string_view text) {
  constexpr std::size_t kLongest = 240;
  const std::string plain = WithoutMarkUp(text.substr(0, std::min<std::size_t>(text.size(), 4000)));
  std::size_t end = plain.size();
  for (std::size_t at = plain.find_first_of(".!?"); at != kNotFound;
       at = plain.find_first_of(".!?", at + 1)) {
    const bool isEnd = at + 1 == plain.size() || (plain[at + 1] == ' ' && at + 2 < plain.size() &&
                                                  !(plain[at + 2] >= 'a' && plain[at + 2] <= 'z'));
    if (!isEnd) continue;
    end = at + 1;
    break;
  }
  return Text(Shortened(std::string_view(plain).substr(0, end), kLongest));
}

}  // namespace vendrel::site
