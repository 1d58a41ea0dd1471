#include "cli/ProjectSettings.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <string>

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "output/Describe.h"

namespace vendrel::cli {
namespace {

// What may be set before a load.
template <typename Visitor>
void ForEachOption(Visitor&& visit) {
  for (const PropertyDescription& property : DescriptionOf<VBProject>().AllProperties)
    if (property.IsOption) visit(property);
}

const PropertyDescription* FindOption(std::string_view name) {
  const PropertyDescription* found = nullptr;
  ForEachOption([&](const PropertyDescription& property) {
    if (EqualsNoCaseAscii(property.Name, name)) found = &property;
  });
  return found;
}

[[noreturn]] void RefuseValue(const NamedValue& setting, std::string_view wanted) {
  throw ToolError(exUsage, "--set: '" + setting.Value + "' is no value for " + setting.Name +
                               "; write " + std::string(wanted));
}

bool TruthOf(const NamedValue& setting) {
  if (EqualsNoCaseAscii(setting.Value, "True")) return true;
  if (EqualsNoCaseAscii(setting.Value, "False")) return false;
  RefuseValue(setting, "True or False");
}

// "0 (all procedures), 1 (Get) or 2 (Let and Set)".
std::string Choice(std::span<const EnumName> names) {
  std::string choice;
  for (const EnumName& name : names) {
    if (&name != &names.front()) choice += &name == &names.back() ? " or " : ", ";
    choice += std::to_string(name.Value) + " (";
    choice.append(name.Words.empty() ? name.Name : name.Words) += ")";
  }
  return choice;
}

std::int64_t NumberOf(const NamedValue& setting, std::string_view wanted) {
  std::int64_t number = -1;
  const char* end = setting.Value.data() + setting.Value.size();
  const auto [stop, error] = std::from_chars(setting.Value.data(), end, number);
  if (error != std::errc() || stop != end) RefuseValue(setting, wanted);
  return number;
}

void Assign(VBProject& project, const PropertyDescription& option, const NamedValue& setting) {
  const std::string wanted = option.Names.empty() ? "a number" : Choice(option.Names);
  PropertyValue value;
  if (option.Shape == PropertyShape::Truth)
    value.Truth = TruthOf(setting);
  else if (option.Shape == PropertyShape::Number)
    value.Number = NumberOf(setting, wanted);
  else
    value.Text = setting.Value;
  if (!option.Write(&project, value)) RefuseValue(setting, wanted);
}

}  // namespace

std::vector<std::string_view> ProjectOptionNames() {
  std::vector<std::string_view> names;
  ForEachOption([&](const PropertyDescription& option) { names.push_back(option.Name); });
  std::sort(names.begin(), names.end());
  return names;
}

void SetProjectOption(VBProject& project, const NamedValue& setting) {
  if (const PropertyDescription* option = FindOption(setting.Name))
    return Assign(project, *option, setting);
  ReadingRules changed = project.Reading;
  if (!changed.Set(setting.Name, false))
    throw ToolError(exUsage, "--set: no option of a project and no flag of the reading is named '" +
                                 setting.Name + "'; docs/tool.md lists them");
  project.Reading.Set(setting.Name, TruthOf(setting));
}

void ApplyToProject(const CommonOptions& options, VBProject& project) {
  project.Reading = options.Preset();
  project.LoadTypeLibHelpStrings = true;
  project.Configuration = options.Configuration;
  for (const std::string& folder : options.ReferencePath)
    project.ReferencePath.push_back(FileSystemObject(AbsolutePath(folder)).NativePath());
  for (const std::string& folder : options.TypeLibPath)
    project.TypeLibPath.push_back(FileSystemObject(AbsolutePath(folder)).NativePath());
  for (const std::string& text : options.Settings)
    SetProjectOption(project, CutNamedValue("--set", text));
  for (const std::string& text : options.Defines) {
    NamedValue constant = CutNamedValue("--define", text);
    project.Defines.emplace_back(std::move(constant.Name), std::move(constant.Value));
  }
}

}  // namespace vendrel::cli
