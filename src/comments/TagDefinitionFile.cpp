// Tag definitions from a JSON file. A table that is wrong anywhere is refused as a whole, with the
// entry named: half a table would turn documentation into ordinary comments without a word.

#include <nlohmann/json.hpp>

#include "comments/TagDefinitions.h"
#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "services/FileSource.h"

namespace vendrel {
namespace {

using nlohmann::json;

[[noreturn]] void Refuse(std::string_view name, std::string_view reason) {
  throw VendrelError(errInvalidArgument, std::string(name).append(": ").append(reason));
}

std::string PlaceInText(std::string_view text, std::size_t byte) {
  const std::string_view before = text.substr(0, byte > 0 ? byte - 1 : 0);
  std::size_t line = 1, column = 1;
  for (const char c : before) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++column;
    if (c == '\n') ++line, column = 1;
  }
  return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

json Parse(std::string_view text, std::string_view name) {
  try {
    return json::parse(text);
  } catch (const json::parse_error& failure) {
    Refuse(name, PlaceInText(text, failure.byte) + ": not well-formed JSON");
  } catch (const json::out_of_range&) {
    Refuse(name, "a number is beyond all bounds");
  }
}

// Reads one property of an entry; `reason` is set where the value is of the wrong kind.
struct EntryReader {
  TaggedCommentDef& Definition;
  std::string Reason;

  void Text(const json& value, std::string& target) {
    if (value.is_string())
      target = value.get<std::string>();
    else
      Reason = "a text is expected";
  }
  void Truth(const json& value, bool& target) {
    if (value.is_boolean())
      target = value.get<bool>();
    else
      Reason = "true or false is expected";
  }
  template <typename Enum>
  void Number(const json& value, Enum& target, int lowest, int highest) {
    const bool fits = value.is_number_integer() && value >= lowest && value <= highest;
    if (fits)
      target = static_cast<Enum>(value.get<int>());
    else
      Reason = "a number from " + std::to_string(lowest) + " to " + std::to_string(highest) +
               " is expected";
  }
  void Property(const std::string& key, const json& value) {
    if (key == "TagIdentifier") return Text(value, Definition.TagIdentifier);
    if (key == "ElementType")
      return Number(value, Definition.ElementType, etNone, etImplementedInterface);
    if (key == "IsDescription") return Truth(value, Definition.IsDescription);
    if (key == "WrapType") return Number(value, Definition.WrapType, wrapSpace, wrapParagraph);
    if (key == "KeepSeparateInBuffer") return Truth(value, Definition.KeepSeparateInBuffer);
    if (key == "UpgradeTo") return Text(value, Definition.UpgradeTo);
    if (key == "Scope") return Text(value, Definition.Scope);
    if (key == "UpgradeFlags") return Text(value, Definition.UpgradeFlags);
    Reason = "no such property";
  }
};

std::string NameOfEntry(const json& entry, std::size_t number) {
  std::string name = "entry " + std::to_string(number);
  if (!entry.is_object()) return name;
  const auto tag = entry.find("TagIdentifier");
  if (tag == entry.end() || !tag->is_string()) return name;
  return name + " (" + tag->get<std::string>() + ")";
}

TaggedCommentDef ReadEntry(const json& entry, const std::string& where, std::string_view file) try {
  TaggedCommentDef definition;
  if (!entry.is_object()) Refuse(file, where + ": an object is expected");
  EntryReader reader{definition, {}};
  for (const auto& [key, value] : entry.items()) {
    reader.Property(key, value);
    if (!reader.Reason.empty())
      Refuse(file, std::string(where).append(": ").append(key).append(": ").append(reader.Reason));
  }
  if (definition.TagIdentifier.empty()) Refuse(file, where + ": TagIdentifier is missing");
  return definition;
}
VENDREL_CONTEXT(where, file)

class TagFile final : public TemplateObjects {
 public:
  explicit TagFile(vendrel::TaggedCommentDefs definitions) : mDefinitions(std::move(definitions)) {}
  const vendrel::TaggedCommentDefs& TaggedCommentDefs() const override { return mDefinitions; }

 private:
  vendrel::TaggedCommentDefs mDefinitions;
};

}  // namespace

TaggedCommentDefs ReadTagDefinitions(std::string_view text, std::string_view name) try {
  const json document = Parse(text, name);
  const auto tags = document.is_object() ? document.find("tags") : document.end();
  if (!document.is_object() || tags == document.end() || !tags->is_array())
    Refuse(name, "an object with an array \"tags\" is expected");
  TaggedCommentDefs definitions;
  std::size_t number = 0;
  const auto replace = document.find("replace");
  if (replace != document.end() && !replace->is_boolean())
    Refuse(name, "replace: true or false is expected");
  for (const json& entry : *tags) {
    const std::string where = NameOfEntry(entry, ++number);
    TaggedCommentDef definition = ReadEntry(entry, where, name);
    if (definitions.Find(definition.TagIdentifier)) Refuse(name, where + ": the tag is repeated");
    if (!definition.TagIdentifier.starts_with("##") ||
        definition.TagIdentifier.find(' ') != std::string::npos)
      Refuse(name, where + ": a tag begins with \"##\" and holds no blank");
    definitions.Add(std::move(definition));
  }
  if (replace == document.end() || !replace->get<bool>())
    for (const TaggedCommentDef& builtIn : BuiltinTagDefinitions())
      if (!definitions.Find(builtIn.TagIdentifier)) definitions.Add(builtIn);
  const std::string fault = definitions.UpgradeFault();
  if (!fault.empty()) Refuse(name, fault);
  return definitions;
}
VENDREL_CONTEXT(text, name)

void UseTagDefinitionFile(const std::string& nativePath) try {
  const std::string text = ReadWholeFile(nativePath);
  std::string_view body = text;
  if (body.starts_with("\xEF\xBB\xBF")) body.remove_prefix(3);
  TemplateObjects::Install(std::make_shared<TagFile>(ReadTagDefinitions(body, nativePath)));
}
VENDREL_CONTEXT(nativePath)

}  // namespace vendrel
