#include "site/Documentation.h"

#include <pugixml.hpp>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "dotnet/DocumentationFile.h"
#include "dotnet/MarkUp.h"
#include "model/Component.h"
#include "project/VBProject.h"

namespace vendrel::site {
namespace {

constexpr std::string_view kBreak = "<crlf>";

void AddText(std::string& to, std::string_view text, std::string_view between = "<p>") {
  if (TrimGaps(text).empty()) return;
  if (!to.empty()) to.append(between);
  to.append(text);
}

// "-----", "*****": a line that is there to be seen in source.
bool IsOrnament(std::string_view line) {
  return line.find_first_not_of("-=*#_~+ \t'/\\.|") == kNotFound;
}

// Untagged comments without what frames them.
std::string WithoutOrnaments(std::string_view comment) {
  std::string text;
  std::string_view line;
  for (FieldCursor lines(comment, kBreak); lines.Next(line);) {
    line = TrimGaps(line);
    if (IsOrnament(line)) continue;
    while (!line.empty() && (line.front() == '*' || line.front() == '\'')) line.remove_prefix(1);
    while (!line.empty() && line.back() == '*') line.remove_suffix(1);
    AddText(text, TrimGaps(line), kBreak);
  }
  return text;
}

bool IsXmlComment(std::string_view comment) {
  return comment.starts_with("''") && comment.find('<') != kNotFound;
}

// The lines behind "'''", as XML.
std::string XmlOf(std::string_view comment) {
  std::string xml;
  std::string_view line;
  for (FieldCursor lines(comment, kBreak); lines.Next(line);) {
    line = TrimGaps(line);
    if (line.starts_with("''")) line.remove_prefix(2);
    xml.append(line).append("\n");
  }
  return xml;
}

void TakeXmlElement(Documentation& found, const pugi::xml_node& node) {
  const std::string name = LowerAscii(node.name());
  const std::string text = GetXML(node);
  const auto named = [&](const char* attribute) {
    return Documentation::Entry(AttributeText(node, attribute), text);
  };
  if (name == "summary") return AddText(found.Summary, text);
  if (name == "remarks") return AddText(found.Remarks, text);
  if (name == "returns") return AddText(found.Returns, text);
  if (name == "value") return AddText(found.Value, text);
  if (name == "param" || name == "typeparam") return found.Parameters.push_back(named("name"));
  if (name == "exception") return found.Exceptions.push_back(named("cref"));
  if (name == "example") return found.Examples.push_back({"", text});
  if (name == "seealso") found.SeeAlso.push_back(named("cref"));
}

bool TakeXml(Documentation& found, std::string_view comment) {
  pugi::xml_document document;
  if (!ParseMarkUp(document, "<d>" + XmlOf(comment) + "</d>")) return false;
  for (const pugi::xml_node& node : document.document_element().children())
    TakeXmlElement(found, node);
  return true;
}

// `Target="P~M", Caption="..."`, or a name alone.
Documentation::Entry SeeAlsoIn(std::string_view text) {
  const auto value = [&](std::string_view key) {
    const std::size_t at = FindNoCaseAscii(text, std::string(key) + "=\"");
    if (at == kNotFound) return std::string();
    const std::string_view rest = text.substr(at + key.size() + 2);
    return std::string(rest.substr(0, rest.find('"')));
  };
  const std::string target = value("Target");
  if (target.empty()) return {std::string(TrimGaps(text)), ""};
  return {target, value("Caption")};
}

// "##BLOCK_REMARKS" asks what "##REMARKS" does.
bool IsTag(std::string_view tag, std::string_view name) {
  return EndsWithNoCaseAscii(tag, name) &&
         (tag.size() == name.size() + 2 || tag[tag.size() - name.size() - 1] == '_');
}

void TakeTagged(Documentation& found, const TaggedComment& comment, std::string& helpString) {
  const std::string_view tag = comment.TagIdentifier;
  if (IsTag(tag, "REMARKS")) return AddText(found.Remarks, comment.Text);
  if (IsTag(tag, "RETURNS")) return AddText(found.Returns, comment.Text, kBreak);
  if (IsTag(tag, "SEEALSO")) return found.SeeAlso.push_back(SeeAlsoIn(comment.Text));
  if (IsTag(tag, "EXAMPLE") || IsTag(tag, "EXAMPLECODE") || IsTag(tag, "EXAMPLE_CS"))
    return found.Examples.push_back({"", "<code>" + comment.Text + "</code>"});
  if (IsTag(tag, "EXAMPLEINTRO")) return AddText(found.Remarks, comment.Text);
  if (IsTag(tag, "TYPEPARAM")) return found.Parameters.push_back({comment.Qualifier, comment.Text});
  if (IsTag(tag, "OBJECTBROWSER")) AddText(helpString, comment.Text);
}

void TakeExceptions(Documentation& found, const CodeElement& element) {
  const auto* exceptions = const_cast<CodeElement&>(element).ExceptionsField();
  if (!exceptions || !exceptions->IfAny()) return;
  for (const Exception& exception : *exceptions->IfAny()) {
    const bool isKnown = !exception.TargetQualifiedName.empty();
    found.Exceptions.push_back(
        {isKnown ? exception.TargetQualifiedName : exception.Name, exception.Description()});
  }
}

void TakeExamples(Documentation& found, const CodeElement& element) {
  const auto* examples = element.ExamplesField();
  if (!examples || !examples->IfAny()) return;
  for (const Example& example : *examples->IfAny()) {
    const CodeElement* related = example.RelatedItem();
    if (related) found.SeeAlso.push_back({related->QualifiedName(), example.Caption});
  }
}

// The text of `Attribute F.VB_Description = "..."`; empty for any other line.
std::string DescriptionIn(std::string_view line) {
  const std::size_t at = FindNoCaseAscii(line, "VB_Description");
  const std::size_t open = at == kNotFound ? at : line.find('"', at);
  if (open == kNotFound) return {};
  const std::size_t close = line.rfind('"');
  if (close <= open) return {};
  return ReplaceAll(line.substr(open + 1, close - open - 1), "\"\"", "\"");
}

// The attributes of what a module declares stand in the lines behind the declaration.
std::string DescriptionBehind(const Component* module, std::int32_t line) {
  const Block* section = module ? module->Blocks.FirstOfType(btDeclarations) : nullptr;
  const CodeLines* lines = section ? section->CodeLines.IfAny() : nullptr;
  if (!lines || lines->Unloaded() || line < 1) return {};
  while (line < lines->Count() && lines->Continued(line)) ++line;
  while (++line <= lines->Count()) {
    const std::string_view text = lines->LineView(line);
    if (!StartsWithNoCaseAscii(TrimGaps(text), "Attribute ")) return {};
    if (std::string found = DescriptionIn(text); !found.empty()) return found;
  }
  return {};
}

std::string DescriptionAttribute(const CodeElement& element) {
  if (const auto* event = As<EventDeclaration>(&element))
    return DescriptionBehind(event->OwnComponent(), event->LineIndex);
  if (const auto* variable = As<Variable>(&element))
    return variable->Procedure.Get() || IsA<UDT>(variable->Parent.Get())
               ? std::string()
               : DescriptionBehind(variable->OwnComponent(), variable->LineIndex);
  const auto* block = As<Block>(&element);
  if (const auto* module = As<Component>(&element))
    block = module->Blocks.FirstOfType(btAttributes);
  if (!block) return {};
  for (const std::string& line : block->Attributes())
    if (std::string found = DescriptionIn(line); !found.empty()) return found;
  return {};
}

}  // namespace

std::string_view Documentation::Parameter(std::string_view name) const {
  for (const Entry& entry : Parameters)
    if (EqualsNoCase(entry.first, name)) return entry.second;
  return {};
}

Documentation DocumentationOf(const CodeElement& element) {
  Documentation found;
  std::string helpString;
  const LateText* tagged = element.TaggedDescriptionField();
  if (tagged) AddText(found.Summary, *tagged);
  if (const auto* comments = element.TaggedCommentsField(); comments && comments->IfAny())
    for (const TaggedComment& comment : *comments->IfAny()) TakeTagged(found, comment, helpString);
  if (const LateText* untagged = element.UnTaggedDescriptionField()) {
    if (!IsXmlComment(*untagged) || !TakeXml(found, *untagged))
      AddText(found.Summary, WithoutOrnaments(*untagged));
  }
  if (found.Summary.empty()) found.Summary = helpString;
  if (found.Summary.empty()) found.Summary = element.Description();
  if (found.Summary.empty()) found.Summary = DescriptionAttribute(element);
  if (const auto* block = As<Block>(&element); block && found.Returns.empty())
    found.Returns = block->ReturnDescription.str();
  if (const bool* isNew = element.IsNewField()) found.IsNew = *isNew;
  TakeExceptions(found, element);
  TakeExamples(found, element);
  return found;
}

std::string SummaryOf(const CodeElement& element) {
  if (const LateText* tagged = element.TaggedDescriptionField(); tagged && !tagged->empty())
    return tagged->str();
  Documentation found = DocumentationOf(element);
  return found.Summary.empty() ? found.Value : found.Summary;
}

}  // namespace vendrel::site
