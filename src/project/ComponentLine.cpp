// The line of a project file that names a module.

#include "core/Ascii.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

std::string KeyPart(const Component& component) {
  switch (component.FileType) {
    case ftClass: return "Class=" + component.Name + ";";
    case ftModule: return "Module=" + component.Name + ";";
    case ftForm: return "Form=";
    case ftUserControl: return "UserControl=";
    case ftUserDocument: return "UserDocument=";
    case ftDesigner: return "Designer=";
    case ftPropertyPage: return "PropertyPage=";
    case ftOther:
      return component.ProjectLineRaw.substr(0, component.ProjectLineRaw.find('=')) + "=";
    default: return {};
  }
}

}  // namespace

std::string Component::ProjectLine(bool NoPath) const {
  if (NoPath) return KeyPart(*this) + FileName.LeafName();
  FileSystemObject file = FileName;
  if (vendrel::VBProject* project = VBProject()) file.SetBaseFile(&project->FileName);
  return KeyPart(*this) + file.RelativePath();
}

}  // namespace vendrel
