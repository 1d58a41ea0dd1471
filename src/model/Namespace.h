#pragma once
#include <memory>
#include <string>
#include <string_view>

#include "model/Blocks.h"
#include "model/Components.h"

namespace vendrel {

/// A .NET namespace: the types and delegates declared in it, each in the list of its kind.
class Namespace : public ElementOf<Namespace> {
 public:
  Namespace();

  /// The full name ("Shop.Ledger"); empty for types outside any namespace.
  std::string Name;
  /// The types by kind, keyed by their names in the namespace. The project owns the same elements
  /// under their full names.
  Components Classes;
  Components Interfaces;
  Components Enumerations;
  Components Structures;
  /// Blocks with `IsDelegate`, by name.
  Blocks Delegates;
  bool IsNew = false;
  bool IncludeFlag = true;
  LateText TaggedDescription;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  /// The assembly it stands in.
  WeakHandle<vendrel::Assembly> Assembly;

  std::string Description() const override { return TaggedDescription.str(); }
  /// Name of the assembly, "~", the name and "_namespace".
  std::string QualifiedName() const override;
  /// "N:" and the name.
  std::string DotNetName() const { return "N:" + Name; }

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"Name", &Own::Name},
                         Prop{"TaggedDescription", &Own::TaggedDescription},
                         Prop{"Description", &Own::Description, PropertyKind::Derived},
                         Prop{"IsNew", &Own::IsNew},
                         Prop{"IncludeFlag", &Own::IncludeFlag},
                         Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
                         Prop{"Delegates", &Own::Delegates, PropertyKind::Children},
                         Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
                         Prop{"Classes", &Own::Classes, PropertyKind::Derived}.Hide(),
                         Prop{"Interfaces", &Own::Interfaces, PropertyKind::Derived}.Hide(),
                         Prop{"Enumerations", &Own::Enumerations, PropertyKind::Derived}.Hide(),
                         Prop{"Structures", &Own::Structures, PropertyKind::Derived}.Hide(),
                         Prop{"DotNetName", &Own::DotNetName, PropertyKind::Derived}.Hide(),
                         Prop{"Assembly", &Own::Assembly, PropertyKind::Link}.Hide()};
  }
};

/// The namespaces of an assembly, by their full names. A key already taken raises 457.
class Namespaces : public PlainCollection<Namespace> {};

}  // namespace vendrel
