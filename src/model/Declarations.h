#pragma once
// What a module declares besides procedures and variables: constants, enumerations, structures,
// events, Declare statements with their libraries, implemented interfaces. Each parses its own
// text.

#include <memory>
#include <string>
#include <string_view>

#include "core/Enums.h"
#include "core/RareMembers.h"
#include "model/CodeElement.h"
#include "model/Example.h"
#include "model/Parameter.h"
#include "model/SharedLinks.h"
#include "model/TaggedComment.h"
#include "model/Variable.h"

namespace vendrel {

/// "PUBLIC" atPublic, "FRIEND" atFriend, anything else atPrivate; case ignored.
AccessTypeEnum AccessTypeFromstring(std::string_view Access);

/// What few constants have.
struct ConstantParts {
  std::int32_t RefCount = 0;
  LateText Description;
  LateText TaggedDescription;
  LateText UnTaggedDescription;
  OnDemand<vendrel::TaggedComments> TaggedComments;
};

/// Where a constant stands.
struct ConstantPlace {
  WeakHandle<vendrel::Component> Component;
  WeakHandle<Block> Procedure;
};

/// A constant of a module or procedure.
class Constant : public ElementOf<Constant> {
 public:
  Constant() {}  // as with Variable
  ~Constant() override {
    mParts.Free();
    mPlace.Leave();
  }

  SharedText Access;
  SharedText Name;
  /// Text behind "=", string quotes included.
  SharedText Value;
  SharedText TypeName;
  union {
    RareParts<ConstantParts> mParts{};
    Rarely<&ConstantParts::RefCount> RefCount;
    /// Comment on the line of the constant.
    Rarely<&ConstantParts::Description> mDescription;
    Rarely<&ConstantParts::TaggedDescription> TaggedDescription;
    Rarely<&ConstantParts::UnTaggedDescription> UnTaggedDescription;
    Rarely<&ConstantParts::TaggedComments> TaggedComments;
  };
  union {
    SharedRecord<ConstantPlace> mPlace{};
    SharedLink<&ConstantPlace::Component> Component;
    /// The procedure that declares it; empty for a constant of the module.
    SharedLink<&ConstantPlace::Procedure> Procedure;
  };

  /// Links it as another one is: module and procedure.
  void StandBeside(const Constant& other) { mPlace.Join(other.mPlace); }
  std::string Description() const override { return mDescription.str(); }
  void SetDescription(std::string_view text) override { mDescription = text; }
  std::string QualifiedName() const override;

  AccessTypeEnum AccessType() const { return AccessTypeFromstring(Access); }
  /// Parses one constant of a statement; `Remainder` gets the statement of the next one, or
  /// nothing.
  void Initialise(std::string_view Source, std::string& Remainder);
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"Access", &Own::Access},
                         Prop{"Name", &Own::Name},
                         Prop{"Value", &Own::Value},
                         Prop{"TypeName", &Own::TypeName},
                         Prop{"Description", &Own::mDescription},
                         Prop{"TaggedDescription", &Own::TaggedDescription},
                         Prop{"UnTaggedDescription", &Own::UnTaggedDescription},
                         Prop{"RefCount", &Own::RefCount},
                         Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
                         Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
                         Prop{"SourceLine", &Own::SourceLine, &Own::SetSourceLine},
                         Prop{"AccessType", &Own::AccessType, PropertyKind::Derived}.Hide(),
                         Prop{"Procedure", &Own::Procedure, PropertyKind::Link}.Hide(),
                         Prop{"Component", &Own::Component, PropertyKind::Link}.Hide()};
  }
};
struct ConstantFamily {
  static constexpr std::string_view TypeText = "Constant";
  static constexpr bool Placed = false;
};
class Constants : public ElementCollection<Constant, ConstantFamily> {};

/// One member of an enumeration.
class EnumMember : public ElementOf<EnumMember> {
 public:
  SharedText Name;
  /// Value as text; empty where the source gives none (the complete reading fills it).
  SharedText Value;
  /// Value as the source has it, where `Value` was resolved to something else.
  LateText ValueAsWritten;
  LateText TaggedDescription;
  LateText UnTaggedDescription;
  bool ExcludeFlag = false;
  /// The enumeration it stands in.
  WeakHandle<vendrel::Enumeration> Enumeration;
  OnDemand<vendrel::TaggedComments> TaggedComments;

  std::string Description() const override;
  std::string QualifiedName() const override;
  Component* OwnComponent() const override;

  void Initialise(std::string_view Source, vendrel::Enumeration* parent);
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"Name", &Own::Name},
                         Prop{"Value", &Own::Value},
                         Prop{"ValueAsWritten", &Own::ValueAsWritten},
                         Prop{"TaggedDescription", &Own::TaggedDescription},
                         Prop{"UnTaggedDescription", &Own::UnTaggedDescription},
                         Prop{"Description", &Own::Description, PropertyKind::Derived},
                         Prop{"ExcludeFlag", &Own::ExcludeFlag},
                         Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
                         Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
                         Prop{"SourceLine", &Own::SourceLine, &Own::SetSourceLine},
                         Prop{"Enumeration", &Own::Enumeration, PropertyKind::Link}.Hide()};
  }
};
struct EnumMemberFamily {
  static constexpr std::string_view TypeText = "Enumeration Member";
  static constexpr bool Placed = true;
};
class EnumMembers : public ElementCollection<EnumMember, EnumMemberFamily> {};

/// An `Enum` of a module.
class Enumeration : public ElementOf<Enumeration> {
 public:
  SharedText Name;
  SharedText Access;
  std::int32_t HelpContextID = 0;
  LateText TaggedDescription;
  LateText UnTaggedDescription;
  std::int32_t LineIndex = 0;
  bool IsHiddenMember = false;
  bool ExcludeFlag = false;
  std::shared_ptr<EnumMembers> mMembers = std::make_shared<EnumMembers>();
  OnDemand<vendrel::Examples> Examples;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  WeakHandle<vendrel::Component> Component;

  std::string Description() const override;
  std::string QualifiedName() const override;

  EnumMembers& Members() const { return *mMembers; }
  /// Raises 91 with "Enumeration.Members - attempt to set to Nothing" for an empty pointer.
  void SetMembers(std::shared_ptr<EnumMembers> members);
  AccessTypeEnum AccessType() const { return AccessTypeFromstring(Access); }
  /// Parses the first line, e.g. "Private Enum Colour".
  void Initialise(std::string_view Source);
  /// Parses a member line and adds the member under its name; gives it even if it was a duplicate.
  std::shared_ptr<EnumMember> AddMember(std::string_view Source);
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"Name", &Own::Name},
                         Prop{"Access", &Own::Access},
                         Prop{"HelpContextID", &Own::HelpContextID},
                         Prop{"TaggedDescription", &Own::TaggedDescription},
                         Prop{"UnTaggedDescription", &Own::UnTaggedDescription},
                         Prop{"Description", &Own::Description, PropertyKind::Derived},
                         Prop{"LineIndex", &Own::LineIndex},
                         Prop{"IsHiddenMember", &Own::IsHiddenMember},
                         Prop{"ExcludeFlag", &Own::ExcludeFlag},
                         Prop{"Members", &Own::Members, PropertyKind::Children},
                         Prop{"Examples", &Own::Examples, PropertyKind::Children},
                         Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
                         Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
                         Prop{"SourceLine", &Own::SourceLine, &Own::SetSourceLine},
                         Prop{"AccessType", &Own::AccessType, PropertyKind::Derived}.Hide(),
                         Prop{"Component", &Own::Component, PropertyKind::Link}.Hide()};
  }
};
struct EnumerationFamily {
  static constexpr std::string_view TypeText = "Enumeration";
  static constexpr bool Placed = true;
};
class Enumerations : public ElementCollection<Enumeration, EnumerationFamily> {};

/// A `Type` of a module.
class UDT : public ElementOf<UDT> {
 public:
  SharedText Name;
  SharedText Access;
  /// The members, parsed as variables, each with this as `Parent`.
  Variables Members;
  std::int32_t HelpContextID = 0;
  LateText TaggedDescription;
  LateText UnTaggedDescription;
  bool ExcludeFlag = false;
  bool IsHiddenMember = false;
  std::int32_t LineIndex = 0;
  OnDemand<vendrel::Examples> Examples;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  WeakHandle<vendrel::Component> Component;

  std::string Description() const override;
  std::string QualifiedName() const override;

  AccessTypeEnum AccessType() const { return AccessTypeFromstring(Access); }
  void Initialise(std::string_view Source);
  std::shared_ptr<Variable> AddMember(std::string_view Source);
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"Name", &Own::Name},
                         Prop{"Access", &Own::Access},
                         Prop{"HelpContextID", &Own::HelpContextID},
                         Prop{"TaggedDescription", &Own::TaggedDescription},
                         Prop{"UnTaggedDescription", &Own::UnTaggedDescription},
                         Prop{"Description", &Own::Description, PropertyKind::Derived},
                         Prop{"ExcludeFlag", &Own::ExcludeFlag},
                         Prop{"IsHiddenMember", &Own::IsHiddenMember},
                         Prop{"LineIndex", &Own::LineIndex},
                         Prop{"Members", &Own::Members, PropertyKind::Children},
                         Prop{"Examples", &Own::Examples, PropertyKind::Children},
                         Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
                         Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
                         Prop{"SourceLine", &Own::SourceLine, &Own::SetSourceLine},
                         Prop{"AccessType", &Own::AccessType, PropertyKind::Derived}.Hide(),
                         Prop{"Component", &Own::Component, PropertyKind::Link}.Hide()};
  }
};
struct UDTFamily {
  static constexpr std::string_view TypeText = "UDT";
  static constexpr bool Placed = false;
};
class UDTs : public ElementCollection<UDT, UDTFamily> {};

/// An interface that a class implements.
class Interface : public ElementOf<Interface> {
 public:
  SharedText Name;
  LateText TaggedDescription;
  LateText UnTaggedDescription;
  bool IsNew = false;
  bool ExcludeFlag = false;
  std::int32_t LineIndex = 0;
  bool IsHiddenMember = false;
  SharedText DocumentationLocation;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  WeakHandle<vendrel::Component> Component;

  std::string Description() const override { return TaggedDescription.str(); }
  std::string QualifiedName() const override;
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"Name", &Own::Name},
                         Prop{"TaggedDescription", &Own::TaggedDescription},
                         Prop{"UnTaggedDescription", &Own::UnTaggedDescription},
                         Prop{"Description", &Own::Description, PropertyKind::Derived},
                         Prop{"IsNew", &Own::IsNew},
                         Prop{"ExcludeFlag", &Own::ExcludeFlag},
                         Prop{"LineIndex", &Own::LineIndex},
                         Prop{"IsHiddenMember", &Own::IsHiddenMember},
                         Prop{"DocumentationLocation", &Own::DocumentationLocation},
                         Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
                         Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
                         Prop{"SourceLine", &Own::SourceLine, &Own::SetSourceLine},
                         Prop{"Component", &Own::Component, PropertyKind::Link}.Hide()};
  }
};
struct InterfaceFamily {
  static constexpr std::string_view TypeText = "Interfaces";
  static constexpr bool Placed = true;
};
class Interfaces : public ElementCollection<Interface, InterfaceFamily> {};

}  // namespace vendrel
