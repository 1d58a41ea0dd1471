// The compiled half of the package `vendrelmodel`; what users see stands in
// vendrelmodel/__init__.py.

#include "Element.h"
#include "cli/Tool.h"

namespace vendrel::python {
namespace {

// Enumerations by name, each a list of number, name and words.
py::dict Enumerations() {
  py::dict enumerations;
  const auto add = [&](std::string_view type, std::span<const EnumName> names) {
    const py::str name{std::string(type)};
    if (names.empty() || enumerations.contains(name)) return;
    py::list values;
    for (const EnumName& each : names)
      values.append(py::make_tuple(each.Value, std::string(each.Name), std::string(each.Words)));
    enumerations[name] = values;
  };
  add("LineTypeEnum", NamesOf(LineTypeEnum()));
  add("TypeClassEnum", NamesOf(TypeClassEnum()));
  for (const ClassDescription* description : AllClasses())
    for (const PropertyDescription& property : description->AllProperties)
      add(property.EnumType, property.Names);
  return enumerations;
}

// Classes with their properties, for stubs and documentation: name, name in snake case, type, one
// sentence, whether it can be set.
py::dict Classes() {
  py::dict classes;
  for (const ClassDescription* description : AllClasses()) {
    py::list properties;
    for (const PropertyDescription& property : description->AllProperties)
      properties.append(py::make_tuple(std::string(property.Name), SnakeCase(property.Name),
                                       TypeOf(property), SentenceOn(property),
                                       property.Write != nullptr));
    classes[py::str(std::string(description->Name))] =
        py::make_tuple(std::string(RowOf(description->Kind).Word), properties);
  }
  return classes;
}

}  // namespace
}  // namespace vendrel::python

PYBIND11_MODULE(_native, module) {
  using namespace vendrel::python;
  module.doc() = "The compiled half of vendrelmodel.";
  module.attr("version") = std::string(vendrel::cli::ToolVersion());
  AddErrors(module);
  AddCollections(module);
  AddLoading(module);
  AddOperations(module);
  module.def("make_types", &MakeTypes);
  module.def("enumerations", &Enumerations);
  module.def("classes", &Classes);
}
