#include "output/HtmlText.h"

#include <array>

namespace vendrel {
namespace {

// For each byte the sets in which it is replaced: bit n for `HtmlEscapes` n.
constexpr std::array<unsigned char, 256> MakeReplaced() {
  std::array<unsigned char, 256> sets{};
  for (const char c : {'<', '>', '\0'}) sets[static_cast<unsigned char>(c)] = 0b1111;
  sets[static_cast<unsigned char>('"')] = (1u << heQuotes) | (1u << heAll);
  sets[static_cast<unsigned char>('&')] = (1u << heAmpersands) | (1u << heAll);
  return sets;
}
constexpr auto kReplaced = MakeReplaced();

std::string_view NameOf(char c) {
  switch (c) {
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '"': return "&quot;";
    case '&': return "&amp;";
    default: return "\xEF\xBF\xBD";
  }
}

}  // namespace

void AppendHtml(std::string& out, std::string_view text, HtmlEscapes escapes) {
  const unsigned char bit = static_cast<unsigned char>(1u << escapes);
  std::size_t from = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((kReplaced[static_cast<unsigned char>(text[i])] & bit) == 0) continue;
    out.append(text, from, i - from).append(NameOf(text[i]));
    from = i + 1;
  }
  out.append(text, from);
}

}  // namespace vendrel
