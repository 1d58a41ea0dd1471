#include "cli/ProjectSettings.h"

#include <algorithm>
#include <charconv>
#include <variant>

#include "core/Ascii.h"
#include "core/Workspace.h"

namespace vendrel::cli {
namespace {

using Setter =
    std::variant<bool VBProject::*, std::string VBProject::*, PropertyCommentsFromEnum VBProject::*,
                 void (VBProject::*)(bool), void (VBProject::*)(std::string_view)>;

struct Entry {
  std::string_view Name;
  Setter Set;
};

// What may be set before a load, in the order of their names.
const Entry kEntries[] = {
    {"AddLineNumbers", &VBProject::AddLineNumbers},
    {"BuildTypeCache", &VBProject::BuildTypeCache},
    {"DetectNewBlocksOnAddCode", &VBProject::DetectNewBlocksOnAddCode},
    {"DoNotPopulateComponents", &VBProject::SetDoNotPopulateComponents},
    {"DontPreLoadComponentDeclarations", &VBProject::DontPreLoadComponentDeclarations},
    {"DotNetReferencePath", &VBProject::DotNetReferencePath},
    {"ExamplesOnlyFlag", &VBProject::ExamplesOnlyFlag},
    {"IncludeFlag", &VBProject::IncludeFlag},
    {"LineNumberPerModule", &VBProject::LineNumberPerModule},
    {"LoadBlocksOnly", &VBProject::LoadBlocksOnly},
    {"LoadPrivateMembers", &VBProject::LoadPrivateMembers},
    {"LoadTypeLibHelpStrings", &VBProject::LoadTypeLibHelpStrings},
    {"LogFolder", &VBProject::LogFolder},
    {"OutputConditionalCompilationBlocks", &VBProject::OutputConditionalCompilationBlocks},
    {"PlugInFlag", &VBProject::PlugInFlag},
    {"PreserveOriginalTaggedComments", &VBProject::PreserveOriginalTaggedComments},
    {"PropertyCommentsFrom", &VBProject::PropertyCommentsFrom},
    {"RetainContextIDs", &VBProject::RetainContextIDs},
    {"RootFlag", &VBProject::RootFlag},
    {"RootNamespace", &VBProject::RootNamespace},
    {"TaggedCommentUpgradeFlag", &VBProject::SetTaggedCommentUpgradeFlag},
    {"TaggedCommentsBeforeElement", &VBProject::TaggedCommentsBeforeElement},
    {"TemplateName", &VBProject::TemplateName},
    {"UnTaggedBlocks", &VBProject::UnTaggedBlocks},
    {"UnTaggedEnumerations", &VBProject::UnTaggedEnumerations},
    {"UnTaggedEvents", &VBProject::UnTaggedEvents},
    {"UnTaggedModules", &VBProject::UnTaggedModules},
    {"UnTaggedUDTs", &VBProject::UnTaggedUDTs},
    {"UnTaggedVariables", &VBProject::UnTaggedVariables},
    {"UpgradeLegacyTaggedcomments", &VBProject::SetUpgradeLegacyTaggedcomments},
    {"WriteHelpDescriptions", &VBProject::WriteHelpDescriptions},
};

[[noreturn]] void RefuseValue(const NamedValue& setting, std::string_view wanted) {
  throw ToolError(exUsage, "--set: '" + setting.Value + "' is no value for " + setting.Name +
                               "; write " + std::string(wanted));
}

bool TruthOf(const NamedValue& setting) {
  if (EqualsNoCaseAscii(setting.Value, "True")) return true;
  if (EqualsNoCaseAscii(setting.Value, "False")) return false;
  RefuseValue(setting, "True or False");
}

PropertyCommentsFromEnum CommentsFromOf(const NamedValue& setting) {
  int number = -1;
  const char* end = setting.Value.data() + setting.Value.size();
  const auto [stop, error] = std::from_chars(setting.Value.data(), end, number);
  if (error != std::errc() || stop != end || number < pcAll || number > pcPropertyLetSet)
    RefuseValue(setting, "0 (all procedures), 1 (Get) or 2 (Let and Set)");
  return static_cast<PropertyCommentsFromEnum>(number);
}

struct Assign {
  VBProject& Project;
  const NamedValue& Setting;
  void operator()(bool VBProject::*member) const { Project.*member = TruthOf(Setting); }
  void operator()(std::string VBProject::*member) const { Project.*member = Setting.Value; }
  void operator()(PropertyCommentsFromEnum VBProject::*member) const {
    Project.*member = CommentsFromOf(Setting);
  }
  void operator()(void (VBProject::*set)(bool)) const { (Project.*set)(TruthOf(Setting)); }
  void operator()(void (VBProject::*set)(std::string_view)) const { (Project.*set)(Setting.Value); }
};

}  // namespace

std::vector<std::string_view> ProjectOptionNames() {
  std::vector<std::string_view> names;
  for (const Entry& entry : kEntries) names.push_back(entry.Name);
  return names;
}

void SetProjectOption(VBProject& project, const NamedValue& setting) {
  for (const Entry& entry : kEntries)
    if (EqualsNoCaseAscii(entry.Name, setting.Name))
      return std::visit(Assign{project, setting}, entry.Set);
  ReadingRules changed = project.Reading;
  if (!changed.Set(setting.Name, false))
    throw ToolError(exUsage, "--set: no option of a project and no flag of the reading is named '" +
                                 setting.Name + "'; docs/tool.md lists them");
  project.Reading.Set(setting.Name, TruthOf(setting));
}

void ApplyToProject(const CommonOptions& options, VBProject& project) {
  project.Reading = options.Preset();
  project.LoadTypeLibHelpStrings = true;
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
  State().CurrentReading = project.Reading;
}

}  // namespace vendrel::cli
