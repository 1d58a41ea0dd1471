#include "project/ProjectFileLines.h"

#include "project/VBProject.h"

namespace vendrel {
namespace {

// Between values that are compared as one: no line holds it.
constexpr char kBetween = '\n';

}  // namespace

void ProjectFileLines::Note(const VBProject& project) {
  Documents = project.RelatedDocuments;
  for (std::size_t i = 0; i < kProjectSettings; ++i)
    Settings[i] = ValueOf(project, static_cast<ProjectSetting>(i));
}

std::string ProjectFileLines::ValueOf(const VBProject& project, ProjectSetting setting) {
  switch (setting) {
    case ProjectSetting::Name: return project.ProjectName;
    case ProjectSetting::HelpFile: return project.HelpFile;
    case ProjectSetting::HelpContextID: return std::to_string(project.HelpContextID);
    case ProjectSetting::IconForm: return project.IconForm;
    case ProjectSetting::Startup: return project.Startup;
    case ProjectSetting::CompatibleMode: return std::to_string(project.CompatibleMode);
    case ProjectSetting::CompatibleExe: return project.CompatibleFileName.FullPath();
    case ProjectSetting::ExeName: return project.EXEName32;
    case ProjectSetting::Path: return project.Path32;
    case ProjectSetting::AutoIncrement: return project.AutoIncrement ? "1" : "0";
  }
  return {};
}

std::string ProjectFileLines::ValueOf(const Component& module) {
  return std::to_string(module.FileType) + kBetween + module.Name;
}

std::string ProjectFileLines::ValueOf(const vendrel::Reference& reference) {
  std::string value = reference.ReferenceType;
  for (const std::string& part :
       {reference.StoredCLSID, reference.Version, reference.Locale, reference.SourceString,
        reference.Name(), reference.FileName.FullPath()})
    value.append(1, kBetween).append(part);
  return value.append(1, kBetween).append(reference.CompiledReference ? "1" : "0");
}

}  // namespace vendrel
