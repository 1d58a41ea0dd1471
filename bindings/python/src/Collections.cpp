// Collections of elements and lists of lines: sequences that count from 0, as Python does. They
// hold the element that they belong to and ask it anew each time.

#include "Element.h"

#include "core/CaseFold.h"
#include "model/Block.h"
#include "output/Places.h"

namespace vendrel::python {
namespace {

// A position of Python, which may count from the end, as one of the library; raises IndexError.
std::size_t PlaceOf(py::ssize_t index, std::size_t count) {
  const auto size = static_cast<py::ssize_t>(count);
  if (index < 0) index += size;
  if (index < 0 || index >= size) throw py::index_error("no element at this position");
  return static_cast<std::size_t>(index) + 1;
}

// The positions of a slice.
struct Slice {
  Slice(const py::slice& slice, std::size_t count) {
    if (!slice.compute(static_cast<py::ssize_t>(count), &Start, &Stop, &Step, &Count))
      throw py::error_already_set();
  }
  std::size_t At(py::ssize_t i) const { return static_cast<std::size_t>(Start + i * Step) + 1; }
  py::ssize_t Start = 0, Stop = 0, Step = 0, Count = 0;
};

class Collection {
 public:
  Collection(py::handle owner, const PropertyDescription& property)
      : mOwner(py::reinterpret_borrow<py::object>(owner)), mProperty(&property) {}

  std::size_t Count() const {
    const Using use(*Owner().Root);
    return mProperty->Count(Owner().Get().Object);
  }
  py::object At(py::ssize_t index) const {
    const Using use(*Owner().Root);
    const void* object = Owner().Get().Object;
    return Wrapped(object, PlaceOf(index, mProperty->Count(object)));
  }
  py::list Between(const py::slice& slice) const {
    const Using use(*Owner().Root);
    const void* object = Owner().Get().Object;
    const Slice places(slice, mProperty->Count(object));
    py::list found;
    for (py::ssize_t i = 0; i < places.Count; ++i) found.append(Wrapped(object, places.At(i)));
    return found;
  }
  py::object Find(const std::string& key) const {
    const Using use(*Owner().Root);
    const void* object = Owner().Get().Object;
    if (mProperty->Find)
      if (const ElementRef found = mProperty->Find(object, key)) return Wrap(Owner().Root, found);
    // Some stand under another key than their name, or under none.
    const std::size_t count = mProperty->Count(object);
    for (std::size_t i = 1; i <= count; ++i) {
      const ElementRef each = mProperty->At(object, i);
      const CodeElement* element = AsCodeElement(each);
      if (element && EqualsNoCase(element->ElementName(), key)) return Wrap(Owner().Root, each);
    }
    return py::none();
  }
  py::object Under(const std::string& key) const {
    py::object found = Find(key);
    if (found.is_none()) throw py::key_error(key);
    return found;
  }
  bool Contains(py::handle item) const {
    if (PyUnicode_Check(item.ptr())) return !Find(TextFrom(item)).is_none();
    return PlaceOfElement(HeldBy(item)) > 0;
  }
  void Remove(py::handle element) const {
    if (!mProperty->Remove)
      throw py::type_error(std::string(mProperty->Name) + " gives nothing away");
    const Using use(*Owner().Root);
    const std::size_t place = PlaceOfElement(HeldBy(element));
    if (place == 0) throw py::value_error("the element is not in this collection");
    Owner().Root->Changed();
    mProperty->Remove(const_cast<void*>(Owner().Get().Object), place);
  }
  std::string Repr() const {
    return "<" + std::string(mProperty->Name) + ", " + std::to_string(Count()) + ">";
  }

 private:
  const Held& Owner() const { return HeldBy(mOwner); }
  py::object Wrapped(const void* object, std::size_t place) const {
    return Wrap(Owner().Root, mProperty->At(object, place));
  }
  std::size_t PlaceOfElement(const Held& element) const {
    const Using use(*Owner().Root);
    const void* object = Owner().Get().Object;
    const std::size_t count = mProperty->Count(object);
    for (std::size_t i = 1; i <= count; ++i)
      if (mProperty->At(object, i).Object == element.Element.Object) return i;
    return 0;
  }

  py::object mOwner;
  const PropertyDescription* mProperty;
};

class Lines {
 public:
  Lines(py::handle owner, const PropertyDescription& property)
      : mOwner(py::reinterpret_borrow<py::object>(owner)), mProperty(&property) {}

  std::size_t Count() const {
    const Using use(*Owner().Root);
    return CountHere();
  }
  py::str At(py::ssize_t index) const {
    const Using use(*Owner().Root);
    return TextAt(PlaceOf(index, CountHere()));
  }
  py::list Between(const py::slice& slice) const {
    const Using use(*Owner().Root);
    const Slice places(slice, CountHere());
    py::list found;
    for (py::ssize_t i = 0; i < places.Count; ++i) found.append(TextAt(places.At(i)));
    return found;
  }
  CodeLine Record(py::ssize_t index) const {
    const Using use(*Owner().Root);
    return List()->Item(static_cast<std::int32_t>(PlaceOf(index, CountHere())));
  }
  void Set(py::ssize_t index, py::handle text) const {
    const std::string given = TextFrom(text);
    const Using use(*Owner().Root);
    List()->SetLineText(static_cast<std::int32_t>(PlaceOf(index, CountHere())), given);
  }
  void Remove(py::ssize_t index) const {
    const Using use(*Owner().Root);
    Owner().Root->Changed();
    List()->Remove(static_cast<std::int32_t>(PlaceOf(index, CountHere())));
  }
  // Taken in as if it had stood in the file there.
  void Insert(py::ssize_t index, py::handle text) const {
    const std::string given = TextFrom(text);
    const Using use(*Owner().Root);
    const auto count = static_cast<py::ssize_t>(CountHere());
    if (index < 0) index = std::max<py::ssize_t>(index + count, 0);
    auto* block = ObjectAs<Block>(Owner().Get());
    if (!block) throw py::type_error("lines are added to procedures and sections of modules");
    Owner().Root->Changed();
    block->AddLine(given, index < count ? static_cast<std::int32_t>(index) + 1 : 0);
  }
  std::string Repr() const {
    return "<" + std::string(mProperty->Name) + ", " + std::to_string(Count()) + ">";
  }

 private:
  const Held& Owner() const { return HeldBy(mOwner); }
  // Null where there never was a line. The elements of a tree are no constants to its host.
  CodeLines* List() const {
    PropertyValue value;
    mProperty->Read(Owner().Get().Object, value);
    return const_cast<CodeLines*>(value.Lines);
  }
  std::size_t CountHere() const {
    const CodeLines* lines = List();
    return lines ? static_cast<std::size_t>(lines->Count()) : 0;
  }
  py::str TextAt(std::size_t place) const {
    return TextOf(List()->LineView(static_cast<std::int32_t>(place)));
  }

  py::object mOwner;
  const PropertyDescription* mProperty;
};

template <typename Type, typename Member>
void AddField(py::class_<Type>& type, const char* name, Member member, const char* doc) {
  type.def_readonly(name, member, doc);
  type.def_readonly(SnakeCase(name).c_str(), member, doc);
}

template <typename Member>
void AddText(py::class_<CodeLine>& type, const char* name, Member member, const char* doc) {
  const auto get = [member](const CodeLine& line) { return TextOf(line.*member); };
  type.def_property_readonly(name, get, doc);
  type.def_property_readonly(SnakeCase(name).c_str(), get, doc);
}

void AddCodeLine(py::module_& module) {
  py::class_<CodeLine> type(module, "CodeLine", "One line of source and what it is.");
  const auto typeOf = [](const CodeLine& line) {
    return py::module_::import("vendrelmodel")
        .attr("LineTypeEnum")(static_cast<int>(line.LineType));
  };
  type.def_property_readonly("LineType", typeOf, "What the line is.");
  type.def_property_readonly("line_type", typeOf, "What the line is.");
  AddField(type, "Continued", &CodeLine::Continued, "The next line belongs to its statement.");
  AddField(type, "Continuation", &CodeLine::Continuation, "It continues an earlier line.");
  AddText(type, "Text", &CodeLine::Text, "The line, tabs and blanks intact.");
  AddText(type, "StatementPart", &CodeLine::StatementPart, "The code, runs of blanks as one.");
  AddText(type, "CommentPart", &CodeLine::CommentPart, "The text behind the apostrophe.");
  AddField(type, "MoreLines", &CodeLine::MoreLines, "The line held a statement separator.");
  AddText(type, "Remainder", &CodeLine::Remainder, "The text behind the separator.");
  AddField(type, "NotInSource", &CodeLine::NotInSource, "No physical line of its own.");
  AddField(type, "EventIndex", &CodeLine::EventIndex, "Position of its event, from 1 on; 0: none.");
}

}  // namespace

void AddCollections(py::module_& module) {
  py::class_<Collection>(module, "Collection",
                         "The elements of a property, in their order: a sequence that can be asked "
                         "by name, too (case is ignored).")
      .def("__len__", &Collection::Count)
      .def("__getitem__", &Collection::At)
      .def("__getitem__", &Collection::Between)
      .def("__getitem__", &Collection::Under)
      .def("__contains__", &Collection::Contains)
      .def("__repr__", &Collection::Repr)
      .def("get", &Collection::Find, py::arg("name"), "The element of that name, or None.")
      .def("remove", &Collection::Remove, py::arg("element"),
           "Takes an element out. Raises ValueError where it does not stand here.");
  py::class_<Lines>(module, "Lines",
                    "Lines of source, as texts: a list that can be changed. An assignment replaces "
                    "the text of a line; what was understood of it stays.")
      .def("__len__", &Lines::Count)
      .def("__repr__", &Lines::Repr)
      .def("__getitem__", &Lines::At)
      .def("__getitem__", &Lines::Between)
      .def("__setitem__", &Lines::Set)
      .def("__delitem__", &Lines::Remove)
      .def("insert", &Lines::Insert, py::arg("index"), py::arg("text"),
           "Takes a line in, as if it had stood in the file at that position.")
      .def(
          "append",
          [](const Lines& lines, py::handle text) {
            lines.Insert(static_cast<py::ssize_t>(lines.Count()), text);
          },
          py::arg("text"), "Takes a line in behind the last one.")
      .def("record", &Lines::Record, py::arg("index"),
           "What the line at a position is: a CodeLine.");
  AddCodeLine(module);
}

py::object WrapCollection(py::handle owner, const PropertyDescription& property) {
  return py::cast(Collection(owner, property));
}

py::object WrapLines(py::handle owner, const PropertyDescription& property) {
  return py::cast(Lines(owner, property));
}

}  // namespace vendrel::python
