#include "project/ProjectFile.h"

#include "project/VBProject.h"

namespace vendrel {

ProjectFile::ProjectFile() { Components.DoNotPopulate = true; }
ProjectFile::~ProjectFile() = default;

VBProject* ProjectFile::VBProject() const {
  return static_cast<vendrel::VBProject*>(mProject.Get());
}

}  // namespace vendrel
