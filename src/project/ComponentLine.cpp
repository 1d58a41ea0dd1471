// The line of a project file that names a module.

#include "core/Ascii.h"
#include "model/ModuleKinds.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

std::string KeyPart(const Component& component) {
  if (component.FileType == ftOther)
    return component.ProjectLineRaw.substr(0, component.ProjectLineRaw.find('=')) + "=";
  const ModuleKind& kind = KindOfModule(component.FileType);
  if (kind.Key.empty()) return {};
  std::string part(kind.Key);
  part.push_back('=');
  if (kind.LineTellsName) part.append(component.Name).push_back(';');
  return part;
}

}  // namespace

std::string Component::ProjectLine(bool NoPath) const {
  if (NoPath) return KeyPart(*this) + FileName.LeafName();
  FileSystemObject file = FileName;
  if (vendrel::VBProject* project = VBProject()) file.SetBaseFile(&project->FileName);
  return KeyPart(*this) + file.RelativePath();
}

}  // namespace vendrel
