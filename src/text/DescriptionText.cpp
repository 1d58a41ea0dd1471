#include "text/DescriptionText.h"

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "text/Masking.h"

namespace vendrel {
namespace {

constexpr std::string_view kLineBreak = "<crlf>";

void AppendParagraph(std::string& description, std::string_view text) {
  const bool isParagraph = StartsWithNoCaseAscii(text, "<p>");
  if (!isParagraph) description.append("<p>");
  description.append(text);
  if (!isParagraph) description.append("</p>");
}

// Position behind the tag that begins at `at`; `at` itself where none does: "a < b" is text.
std::size_t BehindTag(std::string_view text, std::size_t at) {
  if (text[at] != '<' || at + 1 >= text.size()) return at;
  const bool isTag = IsLetterAscii(text[at + 1]) || text[at + 1] == '/';
  const std::size_t close = isTag ? text.find('>', at) : kNotFound;
  return close == kNotFound ? at : close + 1;
}

bool IsParagraph(std::string_view tag) {
  return StartsWithNoCaseAscii(tag, "<p>") || StartsWithNoCaseAscii(tag, "</p>") ||
         StartsWithNoCaseAscii(tag, "<br");
}

// "e.g. this" goes on.
bool EndsSentence(std::string_view text, std::size_t at) {
  if (text[at] != '.' && text[at] != '!' && text[at] != '?') return false;
  if (at + 1 >= text.size()) return true;
  if (text[at + 1] != ' ') return false;
  const std::string_view behind = TrimLeft(text.substr(at + 1));
  return behind.empty() || behind.front() < 'a' || behind.front() > 'z';
}

}  // namespace

std::string& AppendDescription(std::string& Description, std::string_view& NewText,
                               WrapTypeEnum& WrapType, LanguageVersionEnum Language) {
  if (Language == lvVisualBasicDotNet && TrimLeft(NewText).starts_with('_')) {
    WrapType = wrapSpace;
    NewText = TrimLeft(TrimLeft(NewText).substr(1));
  }
  if (Description.empty() && NewText.empty()) return Description;
  if (NewText.empty()) NewText = " ";
  if (WrapType == wrapParagraph) {
    AppendParagraph(Description, NewText);
    return Description;
  }
  if (!Description.empty()) Description.append(WrapType == wrapLineBreak ? kLineBreak : " ");
  return Description.append(NewText);
}

std::string& AppendDescription(std::string& Description, std::string_view NewText,
                               WrapTypeEnum& WrapType) {
  return AppendDescription(Description, NewText, WrapType, State().CurrentLanguageVersion);
}

std::string& AppendDescription(std::string& Description, std::string_view NewText,
                               WrapTypeEnum&& WrapType) {
  return AppendDescription(Description, NewText, WrapType);
}

std::string OnOneLine(std::string_view text) {
  std::string line = ReplaceAll(ReplaceAll(text, kLineBreak, " "), "\r\n", " ");
  for (char& c : line)
    if (c == '\r' || c == '\n') c = ' ';
  return std::string(Trim(line));
}

std::string FirstSentence(std::string_view description) {
  const std::string line = OnOneLine(description);
  std::string sentence;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (const std::size_t behind = BehindTag(line, i); behind > i) {
      if (IsParagraph(std::string_view(line).substr(i)) && !sentence.empty()) break;
      i = behind - 1;
    } else if (line[i] != ' ' || (!sentence.empty() && sentence.back() != ' ')) {
      sentence.push_back(line[i]);
      if (EndsSentence(line, i)) break;
    }
  }
  return std::string(Trim(sentence));
}

std::string BareDescription(std::string_view S) {
  std::string bare;
  for (const char c : S)
    if (c != '%') bare.push_back(c);
  const std::size_t at = bare.find(kLineBreak);
  if (at != std::string::npos) bare.erase(at);
  return StripTags(bare);
}

}  // namespace vendrel
