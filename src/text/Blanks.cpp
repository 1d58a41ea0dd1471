#include "text/Blanks.h"

#include "core/Ascii.h"

namespace vendrel {
namespace {

// Where two blanks stand together, or the last character where they do nowhere. (A search for
// each blank costs more: they are dense.)
std::size_t TwoBlanks(std::string_view text) {
  std::size_t at = 0;
  const auto here = [&] { return text[at] == ' ' && text[at + 1] == ' '; };
  while (at + 9 <= text.size()) {
    const std::size_t next = at + 8;
    if ((MayBe(EightAt(text, at), ' ') & MayBe(EightAt(text, at + 1), ' ') & kHighBits) != 0)
      for (; at < next; ++at)
        if (here()) return at;
    at = next;
  }
  while (at + 1 < text.size() && !here()) ++at;
  return at;
}

}  // namespace

std::size_t OtherBlankAt(std::string_view text, std::size_t at) {
  const std::string_view two = text.substr(at, 2), three = text.substr(at, 3);
  if (two == "\xC2\xA0") return 2;
  if (three == "\xE3\x80\x80" || three == "\xE2\x80\xAF" || three == "\xE2\x81\x9F") return 3;
  if (three.size() < 3 || !three.starts_with("\xE2\x80")) return 0;
  return static_cast<unsigned char>(three[2]) <= 0x8A ? 3 : 0;
}

std::string_view WithPlainBlanks(std::string_view statement, std::string& buffer) {
  buffer.clear();
  bool inString = false;
  for (std::size_t i = 0; i < statement.size();) {
    const char c = statement[i];
    if (c == '"') inString = !inString;
    const std::size_t blank = inString ? 0 : OtherBlankAt(statement, i);
    buffer.push_back(blank > 0 ? ' ' : c);
    i += blank > 0 ? blank : 1;
  }
  return TrimLeft(buffer);
}

std::string_view Collapsed(std::string_view statement, std::string& buffer) {
  const std::size_t run = TwoBlanks(statement);
  if (run + 1 >= statement.size()) return statement;
  buffer.assign(statement.substr(0, run + 1));
  for (std::size_t i = run + 1; i < statement.size(); ++i) {
    if (statement[i] != ' ' || buffer.back() != ' ') buffer.push_back(statement[i]);
  }
  return buffer;
}

}  // namespace vendrel
