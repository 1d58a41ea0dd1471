#include "output/Schema.h"

#include <algorithm>

#include "output/Describe.h"
#include "output/Dump.h"
#include "output/PropertyMeanings.h"

namespace vendrel {
namespace {

using Json = nlohmann::ordered_json;

Json TypeNamed(const char* type) { return Json{{"type", type}}; }

Json RefTo(std::string_view name) { return Json{{"$ref", "#/$defs/" + std::string(name)}}; }

Json ArrayOf(Json items) { return Json{{"type", "array"}, {"items", std::move(items)}}; }

Json ObjectSchema(Json properties, Json required) {
  return Json{{"type", "object"},
              {"properties", std::move(properties)},
              {"required", std::move(required)},
              {"additionalProperties", false}};
}

Json SchemaOf(const PropertyDescription& property) {
  const auto elements = [&] {
    if (!OwnsElements(property)) return TypeNamed("string");
    return RefTo(property.ElementClass().Name);
  };
  switch (property.Shape) {
    case PropertyShape::Text:
    case PropertyShape::Path: return TypeNamed("string");
    case PropertyShape::Number: return TypeNamed("integer");
    case PropertyShape::Truth: return TypeNamed("boolean");
    case PropertyShape::Texts: return ArrayOf(TypeNamed("string"));
    case PropertyShape::Link: return Json{{"type", Json::array({"string", "null"})}};
    case PropertyShape::Element:
      return Json{{"anyOf", Json::array({elements(), TypeNamed("null")})}};
    case PropertyShape::Elements: return ArrayOf(elements());
    case PropertyShape::Lines: return ArrayOf(RefTo("CodeLine"));
  }
  return {};
}

// The word of an enumeration; empty for a number without one, such as a sum of flags.
Json WordsOf(const PropertyDescription& property) {
  Json words = Json::array({""});
  for (const EnumName& name : property.Names)
    if (std::find(words.begin(), words.end(), name.Name) == words.end())
      words.push_back(std::string(name.Name));
  return Json{{"enum", std::move(words)}};
}

Json SchemaOf(const ClassDescription& description) {
  Json properties{{"Class", {{"const", std::string(description.Name)}}},
                  {"UniqueName", TypeNamed("string")},
                  {"File", TypeNamed("string")},
                  {"Line", TypeNamed("integer")},
                  {"Column", TypeNamed("integer")}};
  const bool isRoot =
      description.Kind == ElementKind::VBProject || description.Kind == ElementKind::VBProjectGroup;
  if (isRoot) {
    properties["FormatVersion"] = {{"const", kJsonFormat}};
    properties["Tool"] = TypeNamed("string");
  }
  for (std::size_t i = 0; i < description.AllProperties.size(); ++i) {
    if (!WhyNotDumped(description, i).empty()) continue;
    const PropertyDescription& property = description.AllProperties[i];
    const std::string name(property.Name);
    properties[name] = SchemaOf(property);
    if (const std::string_view meaning = MeaningOf(description.Name, name); !meaning.empty())
      properties[name]["description"] = meaning;
    if (!property.Names.empty()) properties[name + "Name"] = WordsOf(property);
  }
  if (description.Kind == ElementKind::VBProject) properties["Version"] = TypeNamed("string");
  if (description.Kind == ElementKind::Component) {
    properties["DefaultTypes"] = ArrayOf(
        ObjectSchema({{"Name", TypeNamed("string")}, {"Ranges", ArrayOf(TypeNamed("string"))}},
                     Json::array({"Name", "Ranges"})));
    properties["CompilerConstants"] =
        ArrayOf(ObjectSchema({{"Name", TypeNamed("string")}, {"Value", TypeNamed("string")}},
                             Json::array({"Name", "Value"})));
    properties["Constants"] = ArrayOf(TypeNamed("string"));
  }
  if (description.Kind == ElementKind::VBControl)
    properties["Properties"] = ArrayOf(RefTo("ControlProperty"));
  return ObjectSchema(std::move(properties), Json::array({"Class", "UniqueName"}));
}

Json SchemaOfLines() {
  const Json text = TypeNamed("string"), number = TypeNamed("integer"),
             truth = TypeNamed("boolean");
  return ObjectSchema({{"Line", number},
                       {"LineType", number},
                       {"LineTypeName", text},
                       {"Continued", truth},
                       {"Continuation", truth},
                       {"Text", text},
                       {"StatementPart", text},
                       {"CommentPart", text},
                       {"LineID", number},
                       {"MoreLines", truth},
                       {"Remainder", text},
                       {"NotInSource", truth},
                       {"EventIndex", number}},
                      Json::array({"LineType", "LineTypeName", "Text"}));
}

Json SchemaOfControlProperties() {
  Json properties{
      {"Name", TypeNamed("string")},           {"Kind", TypeNamed("string")},
      {"Value", TypeNamed("string")},          {"SourceLine", TypeNamed("integer")},
      {"Items", ArrayOf(TypeNamed("string"))}, {"Properties", ArrayOf(RefTo("ControlProperty"))}};
  return ObjectSchema(std::move(properties), Json::array({"Name", "Kind", "Value", "SourceLine"}));
}

}  // namespace

nlohmann::ordered_json SchemaOfClasses() {
  Json definitions;
  for (const ClassDescription* description : AllClasses())
    definitions[std::string(description->Name)] = SchemaOf(*description);
  definitions["CodeLine"] = SchemaOfLines();
  definitions["ControlProperty"] = SchemaOfControlProperties();
  return definitions;
}

}  // namespace vendrel
