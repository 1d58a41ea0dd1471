#include "Element.h"

#include <array>
#include <deque>
#include <string>

#include "output/Places.h"
#include "output/PropertyMeanings.h"
#include "project/Assembly.h"

namespace vendrel::python {
namespace {

struct ElementObject {
  PyObject_HEAD Held* Data;
};

/// A property with its class: what an attribute of a type stands for.
struct Attribute {
  const PropertyDescription* Property;
  std::string Name, Doc;
};

// They live as long as the process, as types of extensions do.
PyTypeObject* sBase = nullptr;
std::array<PyTypeObject*, static_cast<std::size_t>(ElementKind::None)> sTypes{};

template <typename Class>
HandleTarget* TargetOf(const void* object) {
  return const_cast<Class*>(static_cast<const Class*>(object));
}

HandleTarget* TargetOf(ElementRef element) {
  switch (element.Class->Kind) {
#define VENDREL_CASE(Class, word, named, scope)                                                    \
  case ElementKind::Class: return TargetOf<Class>(element.Object);
    VENDREL_ELEMENT_KINDS(VENDREL_CASE)
#undef VENDREL_CASE
    case ElementKind::None: break;
  }
  return nullptr;
}

const Held& HeldByUnchecked(PyObject* self) {
  return *reinterpret_cast<ElementObject*>(self)->Data;
}

template <typename Step>
auto Guarded(Step step, decltype(step()) failed) {
  try {
    return step();
  } catch (...) {
    SetError();
    return failed;
  }
}

void Dealloc(PyObject* self) {
  PyTypeObject* type = Py_TYPE(self);
  Held* data = reinterpret_cast<ElementObject*>(self)->Data;
  if (data) {
    data->Root->Bury(std::move(data->Handle));
    delete data;
  }
  type->tp_free(self);
  Py_DECREF(type);
}

PyObject* GetAttribute(PyObject* self, void* closure) {
  return Guarded(
      [&]() -> PyObject* {
        const auto& attribute = *static_cast<const Attribute*>(closure);
        return ReadProperty(self, *attribute.Property).release().ptr();
      },
      nullptr);
}

int SetAttribute(PyObject* self, PyObject* value, void* closure) {
  return Guarded(
      [&] {
        const auto& attribute = *static_cast<const Attribute*>(closure);
        if (!value) throw py::type_error("a property cannot be deleted");
        WriteProperty(HeldByUnchecked(self), *attribute.Property, value);
        return 0;
      },
      -1);
}

Py_hash_t Hash(PyObject* self) {
  return static_cast<Py_hash_t>(
      reinterpret_cast<std::uintptr_t>(HeldByUnchecked(self).Element.Object) >> 4);
}

PyObject* Compare(PyObject* self, PyObject* other, int operation) {
  if ((operation != Py_EQ && operation != Py_NE) || !PyObject_TypeCheck(other, sBase))
    Py_RETURN_NOTIMPLEMENTED;
  const bool same = HeldByUnchecked(self).Element.Object == HeldByUnchecked(other).Element.Object;
  return PyBool_FromLong(same == (operation == Py_EQ));
}

std::string ShownName(ElementRef element) {
  if (const CodeElement* code = AsCodeElement(element)) {
    std::string name = code->QualifiedName();
    return name.empty() ? code->ElementName() : name;
  }
  for (const PropertyDescription& property : element.Class->AllProperties) {
    if (property.Shape != PropertyShape::Text || !property.Read) continue;
    PropertyValue value;
    property.Read(element.Object, value);
    return std::string(value.Text);  // the first text of a class is what it is called
  }
  return {};
}

PyObject* Repr(PyObject* self) {
  return Guarded(
      [&]() -> PyObject* {
        const Held& held = HeldByUnchecked(self);
        const std::string word(held.Element.Class->Name);
        const Using use(*held.Root);
        if (!held.Handle) return TextOf("<" + word + ", gone>").release().ptr();
        return TextOf("<" + word + " " + ShownName(held.Element) + ">").release().ptr();
      },
      nullptr);
}

PyTypeObject* MakeBase() {
  static PyType_Slot slots[] = {
      {Py_tp_dealloc, reinterpret_cast<void*>(&Dealloc)},
      {Py_tp_hash, reinterpret_cast<void*>(&Hash)},
      {Py_tp_richcompare, reinterpret_cast<void*>(&Compare)},
      {Py_tp_repr, reinterpret_cast<void*>(&Repr)},
      {Py_tp_doc, const_cast<char*>("An element of a tree; it keeps the whole tree alive.")},
      {0, nullptr}};
  static PyType_Spec spec{
      "vendrelmodel.Element", sizeof(ElementObject), 0,
      Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE | Py_TPFLAGS_DISALLOW_INSTANTIATION, slots};
  PyObject* type = PyType_FromSpec(&spec);
  if (!type) throw py::error_already_set();
  return reinterpret_cast<PyTypeObject*>(type);
}

// What the header says of a property, else the table of meanings.
std::string DocOf(std::string_view className, const PropertyDescription& property,
                  const py::dict& docs) {
  const py::str name{std::string(property.Name)};
  std::string doc = docs.contains(name) ? docs[name].cast<std::string>()
                                        : std::string(MeaningOf(className, property.Name));
  if (!doc.empty()) doc += "\n\n";
  return doc + SentenceOn(property);
}

PyTypeObject* MakeType(const ClassDescription& description, const py::dict& docs) {
  static std::deque<Attribute> attributes;
  static std::deque<std::vector<PyGetSetDef>> tables;
  static std::deque<std::string> texts;
  const py::str className{std::string(description.Name)};
  const py::dict own = docs.contains(className) ? docs[className].cast<py::dict>() : py::dict();
  auto& table = tables.emplace_back();
  const auto add = [&](const PropertyDescription& property, std::string name) {
    Attribute& attribute = attributes.emplace_back(
        Attribute{&property, std::move(name), DocOf(description.Name, property, own)});
    table.push_back({attribute.Name.c_str(), &GetAttribute,
                     property.Write ? &SetAttribute : nullptr, attribute.Doc.c_str(), &attribute});
  };
  for (const PropertyDescription& property : description.AllProperties) {
    add(property, std::string(property.Name));
    add(property, SnakeCase(property.Name));
  }
  table.push_back({});
  const std::string& name = texts.emplace_back("vendrelmodel." + std::string(description.Name));
  const std::string& doc =
      texts.emplace_back(own.contains("") ? own[""].cast<std::string>()
                                          : "A " + std::string(RowOf(description.Kind).Word) + ".");
  PyType_Slot slots[] = {
      {Py_tp_getset, table.data()}, {Py_tp_doc, const_cast<char*>(doc.c_str())}, {0, nullptr}};
  PyType_Spec spec{name.c_str(), sizeof(ElementObject), 0,
                   Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION, slots};
  PyObject* type = PyType_FromSpecWithBases(&spec, reinterpret_cast<PyObject*>(sBase));
  if (!type) throw py::error_already_set();
  return reinterpret_cast<PyTypeObject*>(type);
}

}  // namespace

ElementRef Held::Get() const {
  if (Handle) return Element;
  PyErr_SetString(PyExc_ReferenceError, "the element has left its tree");
  throw py::error_already_set();
}

py::dict MakeTypes(const py::dict& docs, const py::dict& enumerations) {
  if (!sBase) sBase = MakeBase();
  py::dict types;
  types["Element"] = py::reinterpret_borrow<py::object>(reinterpret_cast<PyObject*>(sBase));
  for (const ClassDescription* description : AllClasses()) {
    PyTypeObject*& type = sTypes[static_cast<std::size_t>(description->Kind)];
    if (!type) type = MakeType(*description, docs);
    types[py::str(std::string(description->Name))] =
        py::reinterpret_borrow<py::object>(reinterpret_cast<PyObject*>(type));
  }
  for (const auto& [name, type] : enumerations) types[name] = type;
  return types;
}

py::object Wrap(const std::shared_ptr<Root>& root, ElementRef element) {
  if (!element || element.Class->Kind == ElementKind::None) return py::none();
  PyTypeObject* type = sTypes[static_cast<std::size_t>(element.Class->Kind)];
  PyObject* object = type->tp_alloc(type, 0);
  if (!object) throw py::error_already_set();
  auto owned = py::reinterpret_steal<py::object>(object);
  reinterpret_cast<ElementObject*>(object)->Data =
      new Held{root, WeakHandle<HandleTarget>(TargetOf(element)), element};
  return owned;
}

py::object Wrap(const std::shared_ptr<Root>& root, const CodeElement* element) {
  return element ? Wrap(root, DescribeElement(*element)) : py::none();
}

const Held& HeldBy(py::handle object) {
  if (!sBase || !PyObject_TypeCheck(object.ptr(), sBase))
    throw py::type_error("an element of a tree is wanted here");
  return HeldByUnchecked(object.ptr());
}

}  // namespace vendrel::python
