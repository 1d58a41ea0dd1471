#pragma once
// What of one module stands in the way of a move to another platform.

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "project/VBProject.h"
#include "survey/Hindrances.h"
#include "uses/UseBinder.h"

namespace vendrel {

/// A function that a `Declare` names.
struct DeclaredFunction {
  /// In lower case and without ".dll", and the function as the library calls it.
  std::string Library, Function;
  /// The module that alone sees it; null for all of the project.
  const Component* Owner = nullptr;
};

/// The library, in lower case and without ".dll", and the function as the library calls it.
std::pair<std::string, std::string> FunctionNamedBy(const DeclareDeclaration& declare);

/// The functions that a project declares, by their folded names.
class DeclaredFunctions {
 public:
  explicit DeclaredFunctions(const VBProject& project);
  /// The one that a name means in a module; null if it means none.
  const DeclaredFunction* Find(const std::string& lowerName, const Component& module) const;

 private:
  std::unordered_map<std::string, std::vector<DeclaredFunction>> mByName;
};

/// One thing that stands in the way, where it stands.
struct HindranceFinding {
  Hindrance Kind;
  /// What it is about: the name of a function, variable or control.
  std::string Subject;
  const CodeElement* Element = nullptr;
  std::int32_t Line = 0;
  const RuntimeName* Runtime = nullptr;
  const DeclaredFunction* Api = nullptr;
};

/// How many names a module declares with a type, and how many of these are Variants.
struct VariantShare {
  std::int64_t Declared = 0, Variants = 0;
};

/// Tells each finding of a module of Visual Basic 5/6 whose text is there, declarations first.
VariantShare FindHindrances(const Component& module, const DeclaredFunctions& declared,
                            const std::function<void(const HindranceFinding&)>& tell);

/// Tells each place where a value is taken from an object, or given to it, without naming the
/// member.
void FindDefaultMembers(UseBinder& names, const Component& module,
                        const std::function<void(const HindranceFinding&)>& tell);

}  // namespace vendrel
