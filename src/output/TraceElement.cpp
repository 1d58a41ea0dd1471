// An element of the tree in an error report, whole: its own values, and its child collections by
// their number of elements.

#include "output/TraceElement.h"

#include "diagnostics/ErrorReport.h"
#include "model/CodeElement.h"
#include "output/Describe.h"
#include "text/CodeLines.h"

namespace vendrel {
namespace {

TraceValue TracedValue(const PropertyDescription& property, const void* object) {
  if (property.Shape == PropertyShape::Element || property.Shape == PropertyShape::Elements)
    return TraceValue::Object(std::to_string(property.Count(object)) + " elements");
  PropertyValue value;
  property.Read(object, value);
  switch (property.Shape) {
    case PropertyShape::Number: return value.Number;
    case PropertyShape::Truth: return value.Truth;
    case PropertyShape::Texts: {
      std::vector<std::pair<std::string, TraceValue>> items;
      for (const std::string& text : value.Texts) items.emplace_back(std::string(), text);
      return TraceValue::Enumerable(std::move(items));
    }
    case PropertyShape::Link:
      if (!value.Link) return TraceValue::Nothing();
      return TraceValue::Object(std::string(value.Link->ClassName()) + " " +
                                value.Link->QualifiedName());
    case PropertyShape::Lines:
      return TraceValue::Object(std::to_string(value.Lines ? value.Lines->Count() : 0) + " lines");
    default: return value.Text;
  }
}

TraceValue TraceWhole(const CodeElement& element) {
  const ElementRef described = DescribeElement(element);
  if (!described) return TraceValue::Object(element.ClassName());
  std::vector<std::pair<std::string, TraceValue>> fields;
  fields.emplace_back("Class", element.ClassName());
  for (const PropertyDescription& property : described.Class->Properties)
    if (property.Kind != PropertyKind::Derived)
      fields.emplace_back(property.Name, TracedValue(property, described.Object));
  return TraceValue::Enumerable(std::move(fields));
}

}  // namespace

void TraceElementsWhole(bool whole) {
  SetElementTracer(TraceWhole);
  SetTraceWholeElements(whole);
}

}  // namespace vendrel
