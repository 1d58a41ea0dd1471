#pragma once
#include <string>

#include "model/Blocks.h"

namespace vendrel {

/// A .NET namespace: its name and the delegates declared in it.
class Namespace : public ElementOf<Namespace> {
 public:
  std::string Name;
  LateText TaggedDescription;
  Blocks Delegates;
  /// The assembly it stands in.
  WeakHandle<CodeElement> Assembly;
  OnDemand<vendrel::TaggedComments> TaggedComments;

  std::string Description() const override { return TaggedDescription.str(); }
  std::string QualifiedName() const override;
};

}  // namespace vendrel
