// The words of mark-up: tags and entities.

#include <charconv>

#include "core/Ascii.h"
#include "core/Utf8.h"
#include "site/Prose.h"

namespace vendrel::site {
namespace {

constexpr std::size_t kLongestTag = 2000;

bool IsTagByte(char c) { return IsLetterAscii(c) || IsDigitAscii(c) || c == '-' || c == ':'; }
bool IsWhite(char c) { return IsGap(c) || c == '\r' || c == '\n'; }

void SkipWhite(std::string_view text, std::size_t& at) {
  while (at < text.size() && IsWhite(text[at])) ++at;
}

bool TakeAttribute(std::string_view text, std::size_t& at, ProseTag& tag) {
  const std::size_t from = at;
  while (at < text.size() && IsTagByte(text[at])) ++at;
  if (at == from) return false;
  std::string name = LowerAscii(text.substr(from, at - from));
  std::string value;
  SkipWhite(text, at);
  if (at < text.size() && text[at] == '=') {
    ++at;
    SkipWhite(text, at);
    if (at >= text.size()) return false;
    const char quote = text[at];
    std::size_t end = 0;
    if (quote == '"' || quote == '\'') {
      end = text.find(quote, ++at);
      if (end == kNotFound) return false;
    } else {
      end = std::min(text.find_first_of(" \t\r\n>", at), text.size());
    }
    AppendDecoded(value, text.substr(at, end - at));
    at = end + (quote == '"' || quote == '\'');
  }
  tag.Attributes.emplace_back(std::move(name), std::move(value));
  return true;
}

// The character of "&name;" at the front of `text`; empty if it is none that is known.
std::string EntityOf(std::string_view text, std::size_t& size) {
  const std::size_t end = text.substr(0, 12).find(';');
  if (end == kNotFound || end < 2) return {};
  size = end + 1;
  const std::string_view name = text.substr(1, end - 1);
  constexpr std::pair<std::string_view, std::string_view> kKnown[] = {
      {"lt", "<"},   {"gt", ">"},   {"amp", "&"}, {"quot", "\""}, {"apos", "'"},
      {"nbsp", " "}, {"copy", "©"}, {"reg", "®"}, {"ndash", "–"}, {"mdash", "—"}};
  for (const auto& [known, character] : kKnown)
    if (known == name) return std::string(character);
  if (!name.starts_with('#')) return {};
  const bool isHex = name.size() > 2 && (name[1] == 'x' || name[1] == 'X');
  const std::string_view digits = name.substr(isHex ? 2 : 1);
  std::uint32_t number = 0;
  const auto [behind, failure] =
      std::from_chars(digits.data(), digits.data() + digits.size(), number, isHex ? 16 : 10);
  if (failure != std::errc() || behind != digits.data() + digits.size() || number == 0) return {};
  std::string character;
  AppendUtf8(character, number);
  return character;
}

}  // namespace

std::string_view ProseTag::Attribute(std::string_view name) const {
  for (const auto& [known, value] : Attributes)
    if (known == name) return value;
  return {};
}

bool TakeTag(std::string_view text, std::size_t& at, ProseTag& tag) {
  // A "<" without its ">" nearby is text; looking on would take the square of a long one.
  text = text.substr(0, std::min(text.size(), at + kLongestTag));
  std::size_t next = at + 1;
  tag = {};
  if (next < text.size() && text[next] == '/') {
    tag.IsEnd = true;
    ++next;
  }
  const std::size_t from = next;
  while (next < text.size() && IsTagByte(text[next])) ++next;
  if (next == from || !IsLetterAscii(text[from])) return false;
  tag.Name = LowerAscii(text.substr(from, next - from));
  for (;;) {
    SkipWhite(text, next);
    if (next >= text.size()) return false;
    if (text[next] == '>') break;
    if (text[next] == '/' && next + 1 < text.size() && text[next + 1] == '>') {
      tag.IsEmpty = true;
      ++next;
      break;
    }
    if (!TakeAttribute(text, next, tag)) return false;
  }
  at = next + 1;
  return true;
}

void AppendDecoded(std::string& out, std::string_view text) {
  for (std::size_t at = text.find('&'); at != kNotFound; at = text.find('&')) {
    out.append(text, 0, at);
    text.remove_prefix(at);
    std::size_t size = 1;
    const std::string character = EntityOf(text, size);
    out.append(character.empty() ? "&" : character);
    text.remove_prefix(character.empty() ? 1 : size);
  }
  out.append(text);
}

}  // namespace vendrel::site
