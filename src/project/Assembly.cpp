#include "project/Assembly.h"

namespace vendrel {

Assembly::Assembly() = default;
Assembly::~Assembly() = default;
Assemblies::~Assemblies() = default;

void Assembly::TieVBProject(std::shared_ptr<vendrel::VBProject> project) {
  mProject = project.get();
  mOwnProject = std::move(project);
}

bool Assembly::RootFlag() const {
  const vendrel::VBProject* project = VBProject();
  return project && project->RootFlag;
}

void Assembly::SetRootFlag(bool value) {
  if (vendrel::VBProject* project = VBProject()) project->RootFlag = value;
}

}  // namespace vendrel
