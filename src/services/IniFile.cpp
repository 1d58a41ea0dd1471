#include "services/IniFile.h"

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Utf8.h"
#include "services/SourceText.h"

namespace vendrel {
namespace {

std::string_view WithoutEnclosingQuotes(std::string_view value) {
  const bool enclosed = value.size() > 1 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
  return enclosed ? value.substr(1, value.size() - 2) : value;
}

bool IsContinuationByte(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
  std::size_t end = 0;
  while (end < text.size() && count-- > 0) {
    ++end;
    while (end < text.size() && IsContinuationByte(text[end])) ++end;
  }
  return text.substr(0, end);
}

// Name of the section that a line opens; empty if it opens none.
std::string_view SectionName(std::string_view line) {
  if (!line.starts_with('[')) return {};
  return TrimGaps(line.substr(1, line.find(']') - 1));
}

}  // namespace

std::string IniFile::Value(std::string_view section, std::string_view key,
                           std::size_t buffer) const {
  bool inside = false;
  for (std::string_view rest = mText; !rest.empty();) {
    const std::string_view line = TrimGaps(TakeLine(rest));
    if (line.starts_with('[')) {
      if (inside) break;
      inside = EqualsNoCase(SectionName(line), section);
      continue;
    }
    const std::size_t equals = line.find('=');
    if (!inside || line.starts_with(';') || equals == std::string_view::npos) continue;
    if (!EqualsNoCase(TrimGaps(line.substr(0, equals)), key)) continue;
    const std::string_view value = WithoutEnclosingQuotes(TrimGaps(line.substr(equals + 1)));
    return std::string(FirstCharacters(value, buffer - 1));
  }
  return {};
}

}  // namespace vendrel
