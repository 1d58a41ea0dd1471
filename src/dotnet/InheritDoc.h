#pragma once
// Documentation that an element takes from another one.

#include <string>
#include <unordered_map>
#include <vector>

#include "project/Assembly.h"

namespace vendrel {

/// Gives an element what another one has and it lacks: the description where it has none, all
/// tagged comments where it has none.
void CopyComments(const CodeElement& from, CodeElement& to);

/// The member of a type that a block stems from: that of a name with the same parameters, or, as
/// type arguments may stand in place of parameters of a type, the only one with as many.
Block* CounterpartIn(Component& type, const Block& block, std::string_view name);

/// Elements whose documentation says `inheritdoc`, resolved when all others have theirs.
class InheritDocs {
 public:
  InheritDocs(const Assembly& assembly, VBProject& project)
      : mAssembly(assembly), mProject(project) {}
  /// `name` is what it names; empty for what the element overrides or implements.
  void Add(CodeElement& element, std::string name);
  /// Copies along each chain from its end; a ring ends where it closes.
  void Resolve();

 private:
  CodeElement* SourceOf(const CodeElement& element, const std::string& name) const;

  const Assembly& mAssembly;
  VBProject& mProject;
  std::vector<CodeElement*> mOrder;
  std::unordered_map<const CodeElement*, std::string> mNames;
};

}  // namespace vendrel
