#pragma once
// Constants of conditional compilation and the evaluation of `#If` conditions with them.

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/ReadingRules.h"
#include "model/CodeElement.h"
#include "model/ElementCollection.h"
#include "model/Property.h"

namespace vendrel {

/// One constant: name, and value in the form it takes in script text.
class CompilerConstant : public HandleTarget {
 public:
  std::string Name;
  std::string Value;
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;
  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"Name", &Own::Name}, Prop{"Value", &Own::Value}};
  }
};
struct CompilerConstantFamily {
  static constexpr std::string_view TypeText = "CompilerConstant";
  static constexpr bool Placed = true;
};

/// The constants of a project (its `CondComp` line) or of a module (its `#Const` lines).
class CompilerConstants : public ElementCollection<CompilerConstant, CompilerConstantFamily> {
 public:
  /// Reads "A = 1 : B = 0" by the reading of `project`, the classic one without a project.
  void AddFromProjectLine(std::string_view Source, const VBProject* project = nullptr);
  /// Reads a `#Const` line or one clause of a `CondComp` value. A repeated name keeps its first
  /// value. In the complete reading values are expressions over the constants of `project` and this
  /// module.
  void AddFromDeclaration(std::string_view Source, const VBProject* project = nullptr);
  /// Truth of the condition of a `#If` or `#ElseIf` line with the constants of `project` and of
  /// this module. A condition that does not compile raises (classic) or is told and false
  /// (complete).
  bool Evaluate(std::string_view Source, const VBProject* project) const;
  /// The script that `Evaluate` runs in the classic reading.
  std::string EvaluationScript(std::string_view Source, const VBProject* project) const;
  /// A remnant: does nothing and gives false.
  bool DoesThisBlockApply() const { return false; }
};

}  // namespace vendrel
