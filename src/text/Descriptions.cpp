#include "text/Descriptions.h"

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

std::string BareDescription(std::string_view S) {
  std::string bare;
  for (const char c : S)
    if (c != '%') bare.push_back(c);
  const std::size_t at = bare.find(kLineBreak);
  if (at != std::string::npos) bare.erase(at);
  return StripTags(bare);
}

}  // namespace vendrel
