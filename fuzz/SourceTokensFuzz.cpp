// Lines of source, cut for colouring: the tokens of a line are that line, and what they become is
// well-formed whatever it holds. The first byte chooses the language.

#include <cstdlib>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "Support.h"
#include "core/Utf8.h"
#include "services/SourceText.h"
#include "site/SourceTokens.h"

using namespace vendrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  std::string_view rest = fuzz::Text(data + 1, size - 1);
  if (!IsValidUtf8(rest)) return 0;  // texts in memory always are
  site::TokenState state;
  std::string html = "<pre>";
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest);
    std::size_t at = 0;
    site::SourceToken token;
    for (site::SourceTokens tokens(line, (data[0] & 1) != 0, state); tokens.Next(token);) {
      if (token.Text.empty() || token.Text.data() != line.data() + at) std::abort();
      at += token.Text.size();
      site::AppendColoured(html, token.Kind, token.Text);
    }
    if (at != line.size()) std::abort();
    html += '\n';
  }
  html.append("</pre>");
  pugi::xml_document page;
  if (!page.load_buffer(html.data(), html.size())) std::abort();
  return 0;
}
