#include "writer/Transformation.h"

#include "core/CaseFold.h"
#include "core/ObjectRegistry.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

template <typename T>
std::shared_ptr<T> CreateOrRaise(std::string_view progId) {
  auto object = ObjectRegistry::Create<T>(progId);
  if (!object) throw VendrelError(errCannotCreate, progId);
  return object;
}

void RunStep(VBProject& project, const TransformationKind& kind, TransformationStep& step) try {
  const auto transformation = CreateOrRaise<Transformation>(kind.ProgID);
  project.TransformProgress.Raise(transformation->Caption());
  transformation->process(step, project);
}
VENDREL_CONTEXT(project, trace::Parameter("ProgID", kind.ProgID))

}  // namespace

bool VBProject::TransformWithPlan(TransformationPlan& Plan) try {
  const Workspace::Use use(Workspace());
  const auto manager = CreateOrRaise<TransformationManager>(TransformationManager::kProgID);
  for (const TransformationKind& kind : manager->Kinds())
    for (std::size_t i = 1; i <= Plan.StepCount(); ++i)
      if (TransformationStep& step = Plan.Step(i); EqualsNoCase(step.Kind(), kind.Name))
        RunStep(*this, kind, step);
  return false;
}
VENDREL_CONTEXT(*this)

}  // namespace vendrel
