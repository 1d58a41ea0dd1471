#pragma once
// Projects given as literals: a test names the text of its modules and looks at the tree as text,
// one line for an element.

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "project/VBProject.h"
#include "support/MemoryFiles.h"

namespace vendrel::test {

/// The text with CR LF where it has LF.
std::string WithCrLf(std::string_view text);

/// What to change on a project before it is loaded.
using Prepare = std::function<void(VBProject&)>;

/// Sets flags of the reading by name, e.g. `Reading("LocalStatics KeywordStatic")`.
Prepare Reading(std::string_view flags);
/// The complete reading.
Prepare Complete();

/// The header of a module file of that kind, up to the `VB_Name` line.
std::string Header(FileTypeEnum type, std::string_view name);

/// A project "/p/P.vbp" in memory. Each module is a file name ("M.bas", "C.cls", "F.frm", ...) and
/// its text behind the header, which is put in front by the extension unless the text begins with a
/// "VERSION" line. Nothing is populated yet.
class TestProject {
 public:
  using Modules = std::initializer_list<std::pair<std::string, std::string>>;

  TestProject(Modules modules, const Prepare& prepare = {});

  MemoryFiles Files;
  std::shared_ptr<VBProject> Project;

  /// The module of that name, loaded.
  Component& Module(std::string_view name);
};

/// One module, loaded: "M.bas" and the like, with its body.
class TestModule : public TestProject {
 public:
  TestModule(const std::string& file, const std::string& body, const Prepare& prepare = {});
  Component& operator*() { return *mComponent; }
  Component* operator->() { return mComponent; }

 private:
  Component* mComponent;
};

/// The record on one line: type, [statement], 'comment, flags with the remainder.
std::string Show(const CodeLine& line);
/// The records of a block, one a line, each behind its text.
std::string ShowLines(const Block& block);
/// The module and everything in it, one line for an element; what has its start value is left out.
std::string Describe(const Component& component);
/// One line for an element.
std::string Describe(const Variable& variable);
std::string Describe(const Parameter& parameter);
std::string Describe(const EnumMember& member);
std::string Describe(const Constant& constant);
std::string Describe(const Block& block);
/// Names of the elements of a collection, each followed by a blank.
template <typename Collection>
std::string Names(const Collection& collection) {
  std::string names;
  for (const auto& element : collection) names += element.ElementName() + " ";
  return names;
}
/// Number and text of the first line in which two texts differ; empty if they are equal.
std::string FirstDifference(const std::string& expected, const std::string& actual);
/// "line code" of each diagnostic, one a line.
std::string Told(const Diagnostics& diagnostics);

}  // namespace vendrel::test
