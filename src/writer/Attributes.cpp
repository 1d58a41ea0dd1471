#include "writer/Attributes.h"

#include <algorithm>
#include <utility>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/NumericText.h"
#include "project/VBProject.h"
#include "text/DescriptionText.h"

namespace vendrel {
namespace {

constexpr std::string_view kAttribute = "Attribute ";
constexpr std::string_view kModuleHelpID = "VB_HelpID";
constexpr std::string_view kHelpID = ".VB_HelpID";
constexpr std::string_view kVarHelpID = ".VB_VarHelpID";
constexpr std::size_t kLongestDescription = 49;

std::string NumberLine(std::string_view name, std::string_view word, std::int32_t id) {
  std::string line(kAttribute);
  return line.append(name).append(word).append(" = ").append(std::to_string(id));
}

std::string QuotedLine(std::string_view name, std::string_view word, std::string_view text) {
  std::string line(kAttribute);
  return line.append(name).append(word).append(" = \"").append(text).append("\"");
}

std::size_t CharacterCount(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

// The comment as it is and the description bare; in the whole form one of them that is not empty.
std::optional<std::string> TextFrom(std::optional<std::string> comment,
                                    const std::string& description, bool whole) {
  if (!whole) {
    if (comment || description.empty()) return comment;
    return BareDescription(description);
  }
  std::string text = comment ? OnOneLine(*comment) : std::string();
  if (text.empty()) text = FirstSentence(description);
  if (text.empty()) return std::nullopt;
  return ReplaceAll(text, "\"", "\"\"");
}

// A line that gives a help ID, taken apart.
struct HelpLine {
  std::string_view Subject;  // empty: the module
  bool OfVariable = false;
  std::int32_t ID = 0;
  std::size_t BehindEquals = 0;
};

std::optional<HelpLine> TakeApart(std::string_view text) {
  const std::size_t equals = text.find('=');
  const std::string_view trimmed = TrimLeft(text.substr(0, equals));
  if (equals == std::string_view::npos || !StartsWithNoCaseAscii(trimmed, kAttribute))
    return std::nullopt;
  // The reader takes the word behind "Attribute", whatever stands between it and the ID.
  std::string_view target = TrimLeft(trimmed.substr(kAttribute.size()));
  target = target.substr(0, target.find(' '));
  HelpLine line;
  line.OfVariable = EndsWithNoCaseAscii(target, kVarHelpID);
  if (line.OfVariable)
    line.Subject = target.substr(0, target.size() - kVarHelpID.size());
  else if (EndsWithNoCaseAscii(target, kHelpID))
    line.Subject = target.substr(0, target.size() - kHelpID.size());
  else if (!EqualsNoCaseAscii(target, kModuleHelpID))
    return std::nullopt;
  line.ID = NumericValue(text.substr(equals + 1));
  line.BehindEquals = equals + 1;
  return line;
}

}  // namespace

std::string HelpIDLine(std::string_view name, std::int32_t id) {
  return NumberLine(name, kHelpID, id);
}

std::string VarHelpIDLine(std::string_view name, std::int32_t id) {
  return NumberLine(name, kVarHelpID, id);
}

std::string DescriptionLine(std::string_view name, std::string_view text) {
  return QuotedLine(name, ".VB_Description", text);
}

std::string VarDescriptionLine(std::string_view name, std::string_view text) {
  return QuotedLine(name, ".VB_VarDescription", text);
}

std::optional<std::string> CommentText(CodeElement& element, std::string_view tag) {
  const OnDemand<TaggedComments>* comments = std::as_const(element).TaggedCommentsField();
  if (!comments || !comments->IfAny()) return std::nullopt;
  const TaggedComment* comment = (*comments)->Item(tag);
  if (!comment) return std::nullopt;
  return comment->Text;
}

std::optional<std::string> BrowserText(CodeElement& element, bool whole) {
  return TextFrom(CommentText(element, "##OBJECTBROWSER"), element.Description(), whole);
}

std::optional<std::string> PropertyBrowserText(Block& block, bool whole) {
  Component* component = block.Component.Get();
  Block* consolidated = block.Consolidated ? &block
                        : component        ? component->ConsolidatedPropertyBlock(block.Name())
                                           : nullptr;
  if (!consolidated) return std::nullopt;
  return TextFrom(CommentText(*consolidated, "##OBJECTBROWSER"),
                  consolidated->TaggedDescription.str(), whole);
}

std::optional<std::string> ModuleBrowserText(Component& component, bool whole) {
  const auto text = CommentText(component, "##MODULE_OBJECTBROWSER");
  const std::string description = component.Description();
  if (whole) return TextFrom(text, description, true);
  if (text) return BareDescription(*text);
  if (!description.empty() && CharacterCount(description) <= kLongestDescription)
    return BareDescription(description);
  const VBProject* project = component.VBProject();
  return (project ? project->ProjectName : std::string()) + "." + component.Name;
}

bool IsDescriptionLine(std::string_view text) {
  return text.find(".VB_VarDescription = ") != std::string_view::npos ||
         text.find(".VB_Description = ") != std::string_view::npos;
}

HelpIDs::HelpIDs(Block& block) : mBlock(block), mComponent(block.Component.Get()) {}

std::optional<std::string> HelpIDs::Kept(std::string_view text) const {
  std::optional<std::string> as(text);
  const auto line = TakeApart(text);
  if (!line) return as;
  const auto id = ChangedID(line->Subject, line->OfVariable);
  if (!id || *id == line->ID) return as;
  // Lines of false branches were never read.
  const std::vector<std::string>& lines = mBlock.Attributes();
  if (std::find(lines.begin(), lines.end(), text) == lines.end()) return as;
  if (*id == 0) return std::nullopt;
  std::string written(text.substr(0, line->BehindEquals));
  return written.append(" ").append(std::to_string(*id));
}

// Nothing for an element that is not there, and for one whose ID is that of its line.
std::optional<std::int32_t> HelpIDs::ChangedID(std::string_view subject, bool ofVariable) const {
  const auto changed = [](const auto* element) -> std::optional<std::int32_t> {
    if (!element || element->HelpContextID == element->HelpContextIDRead) return std::nullopt;
    return element->HelpContextID;
  };
  if (ofVariable) {
    const Variables* variables = mBlock.Variables.IfAny();
    return changed(variables ? variables->Item(subject) : nullptr);
  }
  if (!mComponent) return std::nullopt;
  if (subject.empty()) return changed(mComponent);
  if (const EventDeclaration* event = mComponent->EventDeclarations.Item(subject))
    return changed(event);
  return changed(EqualsNoCase(subject, mBlock.Name()) ? &mBlock : nullptr);
}

bool HelpIDs::HasLineOfModule() const { return HasLineOf({}); }

bool HelpIDs::HasLineOf(std::string_view name) const {
  const std::vector<std::string>& lines = mBlock.Attributes();
  return std::any_of(lines.begin(), lines.end(), [&](const std::string& text) {
    const auto line = TakeApart(text);
    return line && EqualsNoCase(line->Subject, name);
  });
}

}  // namespace vendrel
