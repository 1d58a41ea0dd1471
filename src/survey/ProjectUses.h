#pragma once
// What the names in the code of one project tell of it: who calls whom, and how often each library
// and each kind of controls is used.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "project/VBProject.h"
#include "uses/CallGraph.h"

namespace vendrel {

class ProjectUses {
 public:
  /// Binds all names of the project, whose modules have been loaded. The tree must outlive this.
  explicit ProjectUses(VBProject& project);

  const CallGraph& Calls() const { return mCalls; }
  /// How many names in code mean something of the library behind a reference: its types and
  /// members, and controls of it. None where the library is not known by a name.
  std::optional<std::int64_t> OfReference(const Reference& reference) const;
  /// How many names in the code of a module mean a control of that type ("VB.TextBox") on it.
  std::int64_t OfControls(const Component& module, std::string_view progID) const;

 private:
  void Take(const NameUse& use);
  void CountLibrary(std::string_view library);

  CallGraph mCalls;
  std::map<std::string, std::int64_t> mLibraries;  // by folded name
  std::map<std::pair<const Component*, std::string>, std::int64_t> mControls;
};

}  // namespace vendrel
