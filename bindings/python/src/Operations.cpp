// What can be asked of a tree beside its properties.

#include <pybind11/stl.h>

#include <sstream>

#include "Element.h"
#include "cli/Tool.h"
#include "cli/Writer.h"
#include "core/Version.h"
#include "names/NameCheck.h"
#include "names/NamePattern.h"
#include "names/NameWalk.h"
#include "output/Difference.h"
#include "output/Dump.h"
#include "output/Places.h"

namespace vendrel::python {
namespace {

py::object Record(const char* type) {
  return py::module_::import("vendrelmodel._records").attr(type);
}

// The projects of what was loaded, or the one that an element is.
std::vector<VBProject*> ProjectsOf(const Held& held) {
  const ElementRef element = held.Get();
  if (auto* project = ObjectAs<VBProject>(element)) return {project};
  auto* group = ObjectAs<VBProjectGroup>(element);
  if (!group) throw py::type_error("a project or a group is wanted here");
  std::vector<VBProject*> projects;
  for (VBProject& project : group->AllVBProjects()) projects.push_back(&project);
  return projects;
}

VBProject& ProjectOf(const Held& held) {
  auto* project = ObjectAs<VBProject>(held.Get());
  if (!project) throw py::type_error("a project is wanted here");
  return *project;
}

struct Named {
  CodeElement* Element;
  NameState State;
};

py::list Names(py::handle self, const std::string& kind) {
  const Held& held = HeldBy(self);
  const Using use(*held.Root);
  const std::vector<VBProject*> projects = ProjectsOf(held);
  std::vector<Named> found;
  {
    const py::gil_scoped_release release;
    for (VBProject* project : projects)
      ForEachNamedElement(*project, [&](CodeElement& element) {
        if (kind.empty() || KindOf(element) == kind)
          found.push_back({&element, StateOfName(*project, element)});
      });
  }
  const py::object record = Record("Name");
  py::list names;
  for (const Named& each : found)
    names.append(record(TextOf(each.Element->QualifiedName()), TextOf(KindOf(*each.Element)),
                        Wrap(held.Root, each.Element), each.State == NameState::Leads));
  return names;
}

py::list Find(py::handle self, const std::string& name, const std::string& kind) {
  const Held& held = HeldBy(self);
  const Using use(*held.Root);
  const std::vector<VBProject*> projects = ProjectsOf(held);
  const NamePattern wanted(name);
  std::vector<CodeElement*> found;
  const auto take = [&](CodeElement* element) {
    if (element && (kind.empty() || KindOf(*element) == kind)) found.push_back(element);
  };
  {
    const py::gil_scoped_release release;
    if (wanted.IsQualified() && !wanted.IsPattern()) {
      take(projects.empty() ? nullptr : projects.front()->GetObjectByName(name));
    } else {
      for (VBProject* project : projects)
        ForEachNamedElement(*project, [&](CodeElement& element) {
          if (wanted.Fits(wanted.IsQualified() ? element.QualifiedName() : element.ElementName()))
            take(&element);
        });
    }
  }
  py::list elements;
  for (CodeElement* element : found) elements.append(Wrap(held.Root, element));
  return elements;
}

py::tuple Resolve(py::handle self, const std::string& type, py::handle from) {
  const Held& held = HeldBy(self);
  const Using use(*held.Root);
  Component* module = nullptr;
  if (!from.is_none()) {
    const Held& asked = HeldBy(from);
    module = ObjectAs<Component>(asked.Get());
    if (!module || asked.Root != held.Root)
      throw py::type_error("from_module: a module of the same tree is wanted");
  }
  TypeClassEnum where = tcUnresolved;
  const CodeElement* found = ProjectOf(held).ResolveType(module, type, where);
  return py::make_tuple(Wrap(held.Root, found), static_cast<int>(where));
}

py::list Told(const Diagnostics& diagnostics) {
  const py::object record = Record("Diagnostic");
  py::list told;
  for (const Diagnostic& each : diagnostics)
    told.append(record(TextOf(CodeName(each.Code)), TextOf(SeverityName(SeverityOf(each.Code))),
                       TextOf(each.File.empty() ? std::string() : ShownFile(each.File)), each.Line,
                       TextOf(each.Text)));
  return told;
}

py::list DiagnosticsOf(py::handle self) {
  const Held& held = HeldBy(self);
  const Using use(*held.Root);
  py::list told;
  if (const auto* group = ObjectAs<VBProjectGroup>(held.Get())) told = Told(group->Diagnostics);
  for (const VBProject* project : ProjectsOf(held))
    for (const py::handle each : Told(project->Diagnostics)) told.append(each);
  return told;
}

// Compares two trees, which may be of two loads. Neither waits for the other with one held.
py::list Diff(py::handle before, py::handle after, bool lines, bool places, bool paths) {
  const Held& first = HeldBy(before);
  const Held& second = HeldBy(after);
  std::vector<Change> changes;
  {
    const py::gil_scoped_release release;
    std::unique_lock lockOfFirst(first.Root->Lock, std::defer_lock);
    std::unique_lock lockOfSecond(second.Root->Lock, std::defer_lock);
    if (first.Root == second.Root)
      lockOfFirst.lock();
    else
      std::lock(lockOfFirst, lockOfSecond);
    const vendrel::Workspace::Use use(first.Root->Workspace);
    if (!first.Handle || !second.Handle)
      throw VendrelError(errObjectNotSet, "an element has left its tree");
    Compare(first.Element, second.Element, {lines, places, paths},
            [&](const Change& change) { changes.push_back(change); });
  }
  const py::object record = Record("Change");
  const auto place = [](const ChangePlace& at) {
    return py::make_tuple(TextOf(at.File.empty() ? std::string() : ShownFile(at.File)), at.Line);
  };
  py::list told;
  for (const Change& each : changes)
    told.append(record(TextOf(ChangeName(each.Kind)), TextOf(each.Word), TextOf(each.Element),
                       TextOf(each.Property), TextOf(each.Before), TextOf(each.After),
                       place(each.PlaceBefore), place(each.PlaceAfter)));
  return told;
}

py::str DumpOf(py::handle self, bool lines, bool empty, bool identity) {
  const Held& held = HeldBy(self);
  const Using use(*held.Root);
  const ElementRef element = held.Get();
  DumpOptions options;
  options.Lines = lines;
  options.Empty = empty;
  options.Identity = identity;
  options.Indented = false;
  if (element.Object == held.Root->Top().Object) options.Tool = cli::ToolVersion();
  std::ostringstream out;
  {
    const py::gil_scoped_release release;
    options.Names = &held.Root->Names();  // of the whole tree, so that links lead to what they name
    Dump(out, element, options);
  }
  return TextOf(out.view());
}

py::tuple PlaceOfElement(py::handle self) {
  const Held& held = HeldBy(self);
  const Using use(*held.Root);
  const CodeElement* element = AsCodeElement(held.Get());
  if (!element) return py::make_tuple("", 0);
  const SourcePlace place = PlaceOf(*element);
  const std::string file = place.File();
  return py::make_tuple(TextOf(file.empty() ? std::string() : ShownFile(file)), place.Line);
}

py::str KindOfElement(py::handle self) {
  const Held& held = HeldBy(self);
  const Using use(*held.Root);
  const ElementRef element = held.Get();
  const CodeElement* code = AsCodeElement(element);
  const std::string_view kind = code ? KindOf(*code) : std::string_view();
  return TextOf(kind.empty() ? RowOf(element.Class->Kind).Word : kind);
}

py::str Write(py::handle self, const std::string& to, bool yes, bool dryRun, bool onlyProjectFile,
              const std::string& lineNumbers) {
  const Held& held = HeldBy(self);
  cli::WriteArguments arguments;
  arguments.Common = held.Root->Options;
  arguments.To = to;
  arguments.InPlace = to.empty();
  arguments.Yes = yes;
  arguments.DryRun = dryRun;
  arguments.OnlyProjectFile = onlyProjectFile;
  arguments.LineNumbers = lineNumbers;
  std::ostringstream out, err;
  const bool isWhole = WithoutPython(*held.Root, [&] {
    if (!held.Handle) throw VendrelError(errObjectNotSet, "the element has left its tree");
    const cli::Streams streams{out, err};
    cli::Writer writer(arguments, streams, out);
    held.Root->Changed();
    if (auto* group = ObjectAs<VBProjectGroup>(held.Element))
      writer.Write(*group);
    else if (auto* project = ObjectAs<VBProject>(held.Element))
      writer.Write(*project, false);
    else
      throw cli::ToolError(cli::exUsage, "only a project or a group is written");
    return writer.Finish();
  });
  if (!isWhole)
    throw cli::ToolError(
        cli::exFailed,
        "not everything was written; the diagnostics tell what was refused. " + err.str());
  return TextOf(out.view());
}

void AddCode(py::handle self, py::handle text) {
  const std::string code = TextFrom(text);
  const Held& held = HeldBy(self);
  const Using use(*held.Root);
  auto* module = ObjectAs<Component>(held.Get());
  if (!module) throw py::type_error("code is added to a module");
  held.Root->Changed();
  module->AddCode(code);
}

py::object NewModule(py::handle self, int type, const std::string& name, const std::string& file) {
  const Held& held = HeldBy(self);
  const Using use(*held.Root);
  if (!FindName(NamesOf(FileTypeEnum()), type)) throw py::value_error("no such kind of modules");
  held.Root->Changed();
  const auto module = ProjectOf(held).NewComponent(static_cast<FileTypeEnum>(type), name, file);
  return Wrap(held.Root, module.get());
}

py::tuple Run(const std::vector<std::string>& arguments, const std::string& input) {
  std::vector<const char*> argv{"vendrelmodel"};
  for (const std::string& argument : arguments) {
    argv.push_back(argument.c_str());
    if (argument.starts_with("--loader")) OfferToLoaders();
  }
  std::ostringstream out, err;
  std::istringstream in(input);
  vendrel::Workspace workspace;
  int code = 0;
  {
    const vendrel::Workspace::Use use(workspace);
    const py::gil_scoped_release release;
    const cli::Streams streams{out, err, false, false, nullptr, &in};
    code = cli::RunTool(static_cast<int>(argv.size()), argv.data(), streams);
  }
  return py::make_tuple(code, TextOf(out.view()), TextOf(err.view()));
}

}  // namespace

void AddOperations(py::module_& module) {
  module.def("names", &Names);
  module.def("find", &Find);
  module.def("resolve", &Resolve);
  module.def("diagnostics", &DiagnosticsOf);
  module.def("diff", &Diff);
  module.def("dump", &DumpOf);
  module.def("place", &PlaceOfElement);
  module.def("kind", &KindOfElement);
  module.def("write", &Write);
  module.def("add_code", &AddCode);
  module.def("new_module", &NewModule);
  module.def("run", &Run);
}

}  // namespace vendrel::python
