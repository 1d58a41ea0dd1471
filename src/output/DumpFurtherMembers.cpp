// What a module and a project have that is no property of a kind the tables know: lists of pairs,
// and what another element holds.
#include "model/CodeElement.h"
#include "model/Component.h"
#include "output/Dump.h"
#include "output/Json.h"
#include "output/UniqueNames.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

void DumpMember(JsonWriter& json, std::string_view name, std::string_view text) {
  json.Key(name);
  json.String(text);
}

// Def... statements, with their ranges of letters.
void DumpDefaultTypes(JsonWriter& json, const Component& component) {
  if (component.DefaultTypes().empty()) return;
  json.Key("DefaultTypes");
  json.BeginArray();
  for (const DefaultTypeEntry& entry : component.DefaultTypes()) {
    json.BeginObject();
    DumpMember(json, "Name", entry.Name);
    json.Key("Ranges");
    json.BeginArray();
    for (const std::string& range : entry.Ranges) json.String(range);
    json.EndArray();
    json.EndObject();
  }
  json.EndArray();
}

// #Const lines.
void DumpConstantsOfConditions(JsonWriter& json, const Component& component) {
  if (component.CompilerConstants().Count() == 0) return;
  json.Key("CompilerConstants");
  json.BeginArray();
  for (const CompilerConstant& constant : component.CompilerConstants()) {
    json.BeginObject();
    DumpMember(json, "Name", constant.Name);
    DumpMember(json, "Value", constant.Value);
    json.EndObject();
  }
  json.EndArray();
}

// They stand in the declarations block: names alone.
void DumpNamesOfConstants(JsonWriter& json, const Component& component, const UniqueNames& names) {
  const Constants* constants = component.Constants();
  if (!constants || constants->Count() == 0) return;
  json.Key("Constants");
  json.BeginArray();
  for (const Constant& constant : *constants) json.String(names.Of(constant));
  json.EndArray();
}

}  // namespace

void DumpFurtherMembers(JsonWriter& json, ElementRef element, const UniqueNames& names) {
  if (element.Class->Kind == ElementKind::VBProject) {
    const std::string version = static_cast<const VBProject*>(element.Object)->Version();
    if (version.find_first_not_of('.') != std::string::npos) DumpMember(json, "Version", version);
  }
  if (element.Class->Kind != ElementKind::Component) return;
  const auto& component = *static_cast<const Component*>(element.Object);
  DumpDefaultTypes(json, component);
  DumpConstantsOfConditions(json, component);
  DumpNamesOfConstants(json, component, names);
}

}  // namespace vendrel
