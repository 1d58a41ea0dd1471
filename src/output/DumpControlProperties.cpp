#include "model/ControlProperty.h"
#include "output/Dump.h"
#include "output/Json.h"

namespace vendrel {
namespace {

void DumpText(JsonWriter& json, std::string_view name, std::string_view text) {
  json.Key(name);
  json.String(text);
}

// The members of one property, but for the end of its object.
void OpenProperty(JsonWriter& json, const ControlProperty& property) {
  json.BeginObject();
  DumpText(json, "Name", property.Name);
  DumpText(json, "Kind", ControlValueName(property.Kind));
  DumpText(json, "Value", property.Value);
  json.Key("SourceLine");
  json.Number(property.SourceLine);
  if (property.Kind != ControlValue::List) return;
  json.Key("Items");
  json.BeginArray();
  for (const std::string& item : property.Items) json.String(item);
  json.EndArray();
}

}  // namespace

void DumpControlProperties(JsonWriter& json, const std::vector<ControlProperty>& properties) {
  std::int32_t depth = 0;
  const auto closeTo = [&](std::int32_t outer) {
    for (; depth > outer; --depth) {
      json.EndArray();
      json.EndObject();
    }
  };
  json.BeginArray();
  for (const ControlProperty& property : properties) {
    closeTo(property.Depth);
    OpenProperty(json, property);
    if (property.Kind == ControlValue::Group) {
      json.Key("Properties");
      json.BeginArray();
      ++depth;
    } else {
      json.EndObject();
    }
  }
  closeTo(0);
  json.EndArray();
}

}  // namespace vendrel
