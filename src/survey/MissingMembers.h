#pragma once
// Classes that implement an interface and lack members of it.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "project/VBProject.h"
#include "survey/Findings.h"

namespace vendrel {

/// Findings of one rule; dropped where nobody wants it.
class UseFindings {
 public:
  UseFindings(std::string_view id, const RuleFilter& wanted, std::vector<Finding>& found)
      : mRule(FindRule(id)), mIsWanted(wanted(*mRule)), mFound(found) {}
  bool IsWanted() const { return mIsWanted; }
  void Add(const Component& module, std::int32_t line, std::int32_t column, std::string text) {
    if (mIsWanted)
      mFound.push_back({mRule, module.FileName.FullPath(), line, column, std::move(text), {}, {}});
  }

 private:
  const Rule* mRule;
  bool mIsWanted;
  std::vector<Finding>& mFound;
};

/// "Item" of "Shop.Item".
std::string NameWithoutLibrary(std::string_view name);

/// Adds what the classes of a project lack of interfaces of the project, of one that it refers to,
/// or of a library that was read.
void FindMissingMembers(const VBProject& project, UseFindings& list);

}  // namespace vendrel
