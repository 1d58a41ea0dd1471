#include "site/SiteHtml.h"

#include <array>

#include "core/Ascii.h"
#include "core/Utf8.h"

namespace vendrel::site {
namespace {

// What a byte of text needs: nothing, a name, a symbol, or a look at the character it begins.
enum class Need : unsigned char { None, Escape, Symbol, Look };

constexpr std::array<Need, 256> MakeNeeds() {
  std::array<Need, 256> needs{};
  for (int c = 0; c < 32; ++c) needs[static_cast<std::size_t>(c)] = Need::Symbol;
  needs['\t'] = needs['\n'] = Need::None;
  needs[0x7F] = Need::Symbol;
  for (const char c : {'<', '>', '&', '"', '\''})
    needs[static_cast<unsigned char>(c)] = Need::Escape;
  // C1 controls; U+202A to U+202E and U+2066 to U+2069; non-characters.
  for (const int lead : {0xC2, 0xE2, 0xEF, 0xF0, 0xF1, 0xF2, 0xF3, 0xF4})
    needs[static_cast<std::size_t>(lead)] = Need::Look;
  return needs;
}
constexpr auto kNeeds = MakeNeeds();

std::string_view EscapeOf(char c) {
  switch (c) {
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '&': return "&amp;";
    case '"': return "&quot;";
    default: return "&#39;";
  }
}

bool IsForbidden(char32_t c) {
  return (c >= 0x80 && c < 0xA0) || (c & 0xFFFE) == 0xFFFE || (c >= 0xFDD0 && c <= 0xFDEF);
}

void AppendSpecial(std::string& html, std::string_view character, char32_t c, bool marked) {
  if (IsForbidden(c)) return AppendUtf8(html, ReplacementCharacter);
  if (!IsDirectionControl(c)) {
    html += character;
    return;
  }
  const std::string name = CodePointName(c);
  if (!marked) {
    html.append("[").append(name).append("]");
    return;
  }
  html.append("<span class=\"turn\" title=\"").append(name).append("\">");
  html.append(character).append("</span>");
}

void Append(std::string& html, std::string_view text, bool marked) {
  std::size_t from = 0;
  for (std::size_t i = 0; i < text.size();) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const Need need = kNeeds[byte];
    if (need == Need::None) {
      ++i;
      continue;
    }
    html.append(text, from, i - from);
    std::size_t behind = i;
    const char32_t c = TakeCharacter(text, behind);
    if (need == Need::Escape)
      html += EscapeOf(text[i]);
    else if (need == Need::Symbol)
      AppendUtf8(html, byte == 0x7F ? 0x2421 : 0x2400 + c);
    else
      AppendSpecial(html, text.substr(i, behind - i), c, marked);
    from = i = behind;
  }
  html.append(text, from);
}

}  // namespace

void AppendText(std::string& html, std::string_view text) { Append(html, text, true); }
std::string Text(std::string_view text) {
  std::string html;
  Append(html, text, true);
  return html;
}
void AppendPlain(std::string& html, std::string_view text) { Append(html, text, false); }
std::string Plain(std::string_view text) {
  std::string html;
  Append(html, text, false);
  return html;
}

std::string Name(std::string_view name) { return "<bdi>" + Text(name) + "</bdi>"; }

std::string Link(std::string_view href, std::string_view text, std::string_view className) {
  std::string html = "<a";
  if (!className.empty()) html.append(" class=\"").append(className).append("\"");
  html.append(" href=\"").append(href).append("\">");
  return html.append(Name(text)).append("</a>");
}

std::string SafeAddress(std::string_view address) {
  bool isKnown = false;
  for (const std::string_view scheme : {"http://", "https://", "mailto:"})
    isKnown = isKnown || StartsWithNoCaseAscii(address, scheme);
  if (!isKnown) return {};
  std::string safe;
  for (const char c : address) {
    const auto byte = static_cast<unsigned char>(c);
    constexpr char kHex[] = "0123456789ABCDEF";
    if (byte <= 0x20 || byte >= 0x7F || std::string_view("\"'<>\\^`{|}").find(c) != kNotFound)
      safe.append({'%', kHex[byte >> 4], kHex[byte & 15]});
    else if (c == '&')
      safe += "&amp;";
    else
      safe += c;
  }
  return safe;
}

std::string Shortened(std::string_view text, std::size_t most) {
  if (text.size() <= most) return std::string(text);
  while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0) == 0x80) --most;
  return std::string(text.substr(0, most)) + "…";
}

std::string Number(std::size_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, ",");
  return digits;
}

std::string Count(std::size_t count, std::string_view singular) {
  std::string text = Number(count) + " ";
  if (count == 1) return text.append(singular);
  if (!singular.ends_with('y')) {
    text.append(singular);
    return text.append(singular.ends_with("ss") ? "es" : "s");
  }
  return text.append(singular.substr(0, singular.size() - 1)).append("ies");
}

}  // namespace vendrel::site
