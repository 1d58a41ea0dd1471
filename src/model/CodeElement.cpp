#include "model/CodeElement.h"

#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/ErrorReport.h"

namespace vendrel {
namespace {

struct InstalledTracer {
  ElementTracer Tracer = nullptr;
};

}  // namespace

void CodeElement::SetDescription(std::string_view) try {
  throw VendrelError(errReadOnlyProperty, std::string(ClassName()) + ".Description");
}
VENDREL_CONTEXT(*this)

TraceValue TraceOf(const CodeElement* element) {
  if (!element) return TraceValue::Nothing();
  try {
    const ElementTracer trace = TraceWholeElements() ? InUse<InstalledTracer>().Tracer : nullptr;
    if (trace) return trace(*element);
    return TraceValue::Object(std::string(element->ClassName()) + " " + element->QualifiedName());
  } catch (const VendrelError& failure) {
    return TraceValue::Failed(failure.Number());
  }
}

void SetElementTracer(ElementTracer tracer) { InUse<InstalledTracer>().Tracer = tracer; }

}  // namespace vendrel
