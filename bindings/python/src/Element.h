#pragma once
// Elements as objects of Python, one type a class of the tree, each made from the description of
// the class: a property under its own name and in snake case.

#include <memory>

#include "Root.h"

namespace vendrel::python {

/// What an object of Python holds of an element.
struct Held {
  std::shared_ptr<python::Root> Root;
  WeakHandle<HandleTarget> Handle;
  ElementRef Element;

  /// The element; raises ReferenceError where it has left its tree.
  ElementRef Get() const;
};

/// Makes the types. `docs` has what the headers say, by class and property; `enumerations` the
/// types of Python for those of the library, by name. Gives the types by name, the base first.
py::dict MakeTypes(const py::dict& docs, const py::dict& enumerations);

/// The element as an object; None for none. Under `Using`.
py::object Wrap(const std::shared_ptr<Root>& root, ElementRef element);
py::object Wrap(const std::shared_ptr<Root>& root, const CodeElement* element);

/// What such an object holds; raises TypeError for any other object.
const Held& HeldBy(py::handle object);

/// The element as what it is; null for one of another class.
template <typename Class>
Class* ObjectAs(ElementRef element) {
  if (!element || element.Class->Kind != kKindOf<Class>) return nullptr;
  // The elements of a tree are no constants to its host.
  return const_cast<Class*>(static_cast<const Class*>(element.Object));
}

/// The value of a property, and its assignment.
py::object ReadProperty(py::handle self, const PropertyDescription& property);
void WriteProperty(const Held& held, const PropertyDescription& property, py::handle value);

/// A text of the library, which may hold what is no UTF-8.
py::str TextOf(std::string_view text);
/// A text of Python for the library.
std::string TextFrom(py::handle text);

/// "HelpContextIDsAssigned" as "help_context_ids_assigned".
std::string SnakeCase(std::string_view name);

/// One sentence on a property: what it is and whether it can be set.
std::string SentenceOn(const PropertyDescription& property);
/// Its type, as a stub names it.
std::string TypeOf(const PropertyDescription& property);

/// Collections and lists of lines.
void AddCollections(py::module_& module);
py::object WrapCollection(py::handle owner, const PropertyDescription& property);
py::object WrapLines(py::handle owner, const PropertyDescription& property);

/// Shows this module to loaders in shared libraries, which find the factories of the tree in it.
void OfferToLoaders();

/// Sets the error of Python for the exception at hand.
void SetError();
void AddErrors(py::module_& module);
void AddLoading(py::module_& module);
void AddOperations(py::module_& module);

}  // namespace vendrel::python
