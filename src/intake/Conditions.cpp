#include "intake/Conditions.h"

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/ModuleIntake.h"
#include "model/Component.h"
#include "project/CompilerConstants.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

void OpenIf(Component& component, ModuleIntake& intake, std::string_view statement) {
  const bool live = component.CompilerConstants().Evaluate(statement, component.VBProject());
  intake.Conditions.Push(!live, live);
}

void TakeElseIf(Component& component, ModuleIntake& intake, std::string_view statement) {
  ConditionStack& conditions = intake.Conditions;
  if (conditions.Executed()) {
    if (!conditions.TopIgnores()) conditions.SetTopIgnores(true);
    return;
  }
  if (component.CompilerConstants().Evaluate(statement, component.VBProject())) {
    conditions.SetTopExecuted(true);
    if (conditions.TopIgnores()) conditions.SetTopIgnores(false);
  } else if (!conditions.Ignore()) {
    conditions.SetTopIgnores(true);
  }
}

void TakeElse(ModuleIntake& intake) {
  ConditionStack& conditions = intake.Conditions;
  if (!conditions.Executed())
    conditions.SetTopIgnores(false);
  else if (!conditions.Ignore())
    conditions.SetTopIgnores(true);
}

}  // namespace

void UpdateConditions(Component& component, ModuleIntake& intake, std::string_view statement) try {
  statement = Trim(statement);
  if (StartsWithNoCaseAscii(statement, "#IF"))
    OpenIf(component, intake, statement);
  else if (StartsWithNoCaseAscii(statement, "#ELSEIF"))
    TakeElseIf(component, intake, statement);
  else if (StartsWithNoCaseAscii(statement, "#CONST"))
    component.CompilerConstants().AddFromDeclaration(statement, component.VBProject());
  else if (StartsWithNoCaseAscii(statement, "#ELSE"))
    TakeElse(intake);
  else if (StartsWithNoCaseAscii(statement, "#END IF"))
    intake.Conditions.Pop();
}
VENDREL_CONTEXT_AT(LineReached(), component, statement,
                   trace::Local("Depth", intake.Conditions.Depth()))

}  // namespace vendrel
