// Failures as exceptions of Python, whose classes stand in vendrelmodel/_records.py.

#include <exception>

#include "Element.h"
#include "cli/Options.h"
#include "diagnostics/VendrelError.h"

namespace vendrel::python {
namespace {

py::dict ValuesOf(const ErrorContext::Values& values) {
  py::dict shown;
  for (const auto& [name, value] : values) shown[TextOf(name)] = TextOf(DumpValue(name, value));
  return shown;
}

py::list ContextsOf(const VendrelError& error) {
  py::list contexts;
  for (const ErrorContext& context : error.Contexts())
    contexts.append(py::module_::import("vendrelmodel._records")
                        .attr("Context")(TextOf(context.Procedure), TextOf(context.Module),
                                         context.Line, ValuesOf(context.Parameters),
                                         ValuesOf(context.Locals), ValuesOf(context.Fields)));
  return contexts;
}

void Raise(const char* type, int number, std::string_view text, const py::list& contexts,
           std::string_view raisedIn = {}, int raisedAt = 0) {
  const py::object exception = py::module_::import("vendrelmodel._records").attr(type);
  const py::object error = exception(TextOf(text), number, contexts, TextOf(raisedIn), raisedAt);
  PyErr_SetObject(exception.ptr(), error.ptr());
}

void RaiseOf(const VendrelError& error) {
  Raise("VendrelError", error.Number(), error.Text(), ContextsOf(error), error.RaisedIn(),
        error.RaisedAt());
}

// The failure inside of one that the tool tells, where there is one.
void RaiseOf(const cli::ToolError& error) {
  const char* type = error.Code() == cli::exUsage ? "UsageError" : "InputError";
  try {
    std::rethrow_if_nested(error);
  } catch (const VendrelError& inner) {
    return Raise(type, inner.Number(), error.what(), ContextsOf(inner), inner.RaisedIn(),
                 inner.RaisedAt());
  }
  Raise(type, 0, error.what(), py::list());
}

void Translate(std::exception_ptr failure) {
  try {
    std::rethrow_exception(std::move(failure));
  } catch (const cli::ToolError& error) {
    RaiseOf(error);
  } catch (const VendrelError& error) {
    RaiseOf(error);
  }  // others are the binding's own
}

}  // namespace

void SetError() {
  try {
    Translate(std::current_exception());
  } catch (py::error_already_set& error) {
    error.restore();
  } catch (const py::builtin_exception& error) {
    error.set_error();
  } catch (const std::exception& error) {
    PyErr_SetString(PyExc_RuntimeError, error.what());
  }
}

void AddErrors(py::module_&) { py::register_exception_translator(&Translate); }

}  // namespace vendrel::python
