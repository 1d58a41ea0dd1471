#pragma once
// What documentation says about permissions that a member demands and exceptions that it raises.

#include <string>

#include "model/CodeElement.h"
#include "model/ElementCollection.h"
#include "model/Property.h"

namespace vendrel {

/// A permission that an element demands, as its documentation tells.
class Permission : public ElementOf<Permission> {
 public:
  std::string Name;
  std::string mDescription;
  /// Qualified name of the type of the permission, or an address.
  std::string TargetQualifiedName;

  std::string Description() const override { return mDescription; }
  void SetDescription(std::string_view text) override { mDescription = text; }
  std::string QualifiedName() const override { return TargetQualifiedName; }

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"Name", &Own::Name}, Prop{"Description", &Own::mDescription},
                         Prop{"TargetQualifiedName", &Own::TargetQualifiedName},
                         Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived}};
  }
};
class Permissions : public PlainCollection<Permission> {};

/// An exception that an element raises, as its documentation tells.
class Exception : public ElementOf<Exception> {
 public:
  std::string Name;
  std::string mDescription;
  /// Qualified name of the class of the exception, or an address.
  std::string TargetQualifiedName;

  std::string Description() const override { return mDescription; }
  void SetDescription(std::string_view text) override { mDescription = text; }
  std::string QualifiedName() const override { return TargetQualifiedName; }

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"Name", &Own::Name}, Prop{"Description", &Own::mDescription},
                         Prop{"TargetQualifiedName", &Own::TargetQualifiedName},
                         Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived}};
  }
};
class Exceptions : public PlainCollection<Exception> {};

}  // namespace vendrel
