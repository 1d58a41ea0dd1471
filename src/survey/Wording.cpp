#include "survey/Wording.h"

#include "core/Ascii.h"
#include "model/ModuleKinds.h"

namespace vendrel {
namespace {

bool IsOfNet(const ProjectOptions* project) {
  return project && project->LanguageVersion() == lvVisualBasicDotNet;
}

}  // namespace

std::string_view KindOfProject(const VBProject& project) {
  if (project.ProjectSourceType == ptsTypeLibrary)
    return IsOfNet(&project) ? "assembly" : "type library";
  if (!IsOfNet(&project)) return project.ProjectTypeDescription();
  return project.ProjectType == ptOleExe ? "VB.NET program" : "VB.NET library";
}

std::string_view KindWordOf(const Component& component) {
  if (component.IsInterface) return "interface";
  if (component.IsStructure) return "structure";
  if (component.IsEnumeration) return "enumeration";
  if (!IsOfNet(component.Project())) return KindOfModule(component.FileType).FullWord;
  return component.FileType == ftModule ? "module" : "class";
}

std::string ReferenceNameOf(const Reference& reference) {
  const std::string name = reference.Name();
  if (!name.empty() || !IsOfNet(reference.ParentProject())) return name;
  const std::string_view source = reference.SourceString;
  return std::string(Trim(source.substr(0, source.find(','))));
}

bool IsWithoutFile(const Reference& reference) {
  if (IsOfNet(reference.ParentProject()) && reference.FileName.FullPath().empty()) return false;
  return !reference.FileName.Exists();
}

}  // namespace vendrel
