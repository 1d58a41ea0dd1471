// Properties as values of Python, and back.

#include <cctype>
#include <unordered_map>

#include "Element.h"

namespace vendrel::python {
namespace {

// The members of an enumeration by number, as its type of Python has them.
py::object MemberOf(const PropertyDescription& property, std::int64_t number) {
  static std::unordered_map<const EnumName*, PyObject*> types;  // live as long as the process
  PyObject*& type = types[property.Names.data()];
  if (!type)
    type = py::getattr(py::module_::import("vendrelmodel"), std::string(property.EnumType).c_str())
               .release()
               .ptr();
  if (!FindName(property.Names, number)) return py::int_(number);  // such as a sum of flags
  return py::handle(type)(number);
}

std::vector<std::string> TextsFrom(py::handle value) {
  if (PyUnicode_Check(value.ptr())) throw py::type_error("a list of texts is wanted, not one text");
  std::vector<std::string> texts;
  for (const py::handle each : value) texts.push_back(TextFrom(each));
  return texts;
}

std::int64_t NumberFrom(py::handle value) {
  const long long number = PyLong_AsLongLong(value.ptr());
  if (number == -1 && PyErr_Occurred()) throw py::error_already_set();
  return number;
}

[[noreturn]] void RefuseValue(const PropertyDescription& property, py::handle value) {
  std::string text = std::string(property.Name) + ": " + py::repr(value).cast<std::string>();
  throw py::value_error(text + (property.Names.empty()
                                    ? " does not fit"
                                    : " is no value of " + std::string(property.EnumType)));
}

}  // namespace

py::str TextOf(std::string_view text) {
  PyObject* object =
      PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape");
  if (!object) throw py::error_already_set();
  return py::reinterpret_steal<py::str>(object);
}

std::string TextFrom(py::handle text) {
  if (!PyUnicode_Check(text.ptr())) throw py::type_error("a text is wanted here");
  const auto bytes = py::reinterpret_steal<py::bytes>(
      PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogateescape"));
  if (!bytes) throw py::error_already_set();
  return bytes;
}

py::object ReadProperty(py::handle self, const PropertyDescription& property) {
  const Held& held = HeldBy(self);
  const Using use(*held.Root);
  const ElementRef element = held.Get();
  if (property.Shape == PropertyShape::Elements) return WrapCollection(self, property);
  if (property.Shape == PropertyShape::Lines) return WrapLines(self, property);
  if (property.Shape == PropertyShape::Element)
    return property.Count(element.Object) == 0 ? py::none()
                                               : Wrap(held.Root, property.At(element.Object, 1));
  PropertyValue value;
  property.Read(element.Object, value);
  switch (property.Shape) {
    case PropertyShape::Number:
      if (property.Names.empty()) return py::int_(value.Number);
      return MemberOf(property, value.Number);
    case PropertyShape::Truth: return py::bool_(value.Truth);
    case PropertyShape::Link: return Wrap(held.Root, value.Link);
    case PropertyShape::Texts: {
      py::list texts;
      for (const std::string& text : value.Texts) texts.append(TextOf(text));
      return texts;
    }
    default: return TextOf(value.Text);
  }
}

void WriteProperty(const Held& held, const PropertyDescription& property, py::handle value) {
  PropertyValue given;
  std::vector<std::string> texts;
  switch (property.Shape) {
    case PropertyShape::Number: given.Number = NumberFrom(value); break;
    case PropertyShape::Truth:
      if (!PyBool_Check(value.ptr())) throw py::type_error("True or False is wanted here");
      given.Truth = value.cast<bool>();
      break;
    case PropertyShape::Texts: given.Texts = texts = TextsFrom(value); break;
    case PropertyShape::Link:
      if (!value.is_none()) {
        const Held& other = HeldBy(value);
        if (other.Root != held.Root) throw py::value_error("an element of another tree");
        given.Link = dynamic_cast<CodeElement*>(other.Handle.Get());
      }
      break;
    default: given.Text = given.Store = TextFrom(value);
  }
  const Using use(*held.Root);
  held.Root->Changed();
  if (!property.Write(const_cast<void*>(held.Get().Object), given)) RefuseValue(property, value);
}

std::string SnakeCase(std::string_view name) {
  const auto isUpper = [&](std::size_t i) {
    return i < name.size() && std::isupper(static_cast<unsigned char>(name[i]));
  };
  const auto isLower = [&](std::size_t i) {
    return i < name.size() && std::islower(static_cast<unsigned char>(name[i]));
  };
  // "IDs" is one word, and so is what a plural ends.
  const auto endsPlural = [&](std::size_t i) {
    return i < name.size() && name[i] == 's' && !isLower(i + 1);
  };
  std::string snake;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const bool begins =
        i > 0 && isUpper(i) && (!isUpper(i - 1) || (isLower(i + 1) && !endsPlural(i + 1)));
    if (begins && !snake.ends_with('_')) snake += '_';
    snake += static_cast<char>(std::tolower(static_cast<unsigned char>(name[i])));
  }
  return snake;
}

std::string TypeOf(const PropertyDescription& property) {
  const auto element = [&] {
    const ClassDescription* type = property.ElementClass ? &property.ElementClass() : nullptr;
    return type && !type->Name.empty() ? std::string(type->Name) : std::string("Element");
  };
  switch (property.Shape) {
    case PropertyShape::Text:
    case PropertyShape::Path: return "str";
    case PropertyShape::Number:
      return property.Names.empty() ? "int" : std::string(property.EnumType);
    case PropertyShape::Truth: return "bool";
    case PropertyShape::Texts: return "list[str]";
    case PropertyShape::Link:
    case PropertyShape::Element: return element() + " | None";
    case PropertyShape::Elements: return "Collection[" + element() + "]";
    case PropertyShape::Lines: return "Lines";
  }
  return "object";
}

std::string SentenceOn(const PropertyDescription& property) {
  std::string text = TypeOf(property);
  if (property.Shape == PropertyShape::Path) text += ", the full path of a file in Windows form";
  if (property.Shape == PropertyShape::Lines) text += " of source";
  if (property.IsOption) text += ", an option to be given to load() under set";
  text += property.Write ? ". Can be set." : ". Read only.";
  return text;
}

}  // namespace vendrel::python
