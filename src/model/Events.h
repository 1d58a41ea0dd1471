#pragma once
// Events, Declare statements and the libraries that these name.

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "core/LateFill.h"
#include "model/Declarations.h"
#include "model/Permission.h"
#include "text/CodeLine.h"

namespace vendrel {

class EventDeclarations;

/// An `Event` of a class-like module.
class EventDeclaration : public ElementOf<EventDeclaration> {
 public:
  EventDeclaration();
  ~EventDeclaration() override;

  SharedText Name;
  OnDemand<vendrel::Parameters> Parameters;
  std::int32_t HelpContextID = 0;
  /// The help context ID of its attribute line; 0 without one.
  std::int32_t HelpContextIDRead = 0;
  LateText TaggedDescription;
  LateText UnTaggedDescription;
  bool IsHiddenMember = false;
  bool IsNew = false;
  bool ExcludeFlag = false;
  bool Implemented = false;
  bool Overloaded = false;
  bool IsVirtual = false;
  bool IsSealed = false;
  bool IsAbstract = false;
  bool IsShadow = false;
  bool IsStatic = false;
  std::int32_t LineIndex = 0;
  SharedText InheritedFrom;
  SharedText DelegateName;
  SharedText Access;
  OnDemand<EventDeclarations> OverloadEventDeclarations;
  OnDemand<vendrel::Examples> Examples;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  OnDemand<vendrel::Permissions> Permissions;
  OnDemand<vendrel::Exceptions> Exceptions;
  WeakHandle<vendrel::Component> Component;

  std::string Description() const override;
  std::string QualifiedName() const override;

  AccessTypeEnum AccessType() const { return AccessTypeFromstring(Access); }
  void Initialise(std::string_view Source);
  /// Adds a parameter for a loader.
  Parameter* netCreateParameter(std::string_view Name, std::string_view TypeName,
                                std::string_view DefaultValue, bool IsOptional,
                                std::string_view ParameterType = {});
  std::string DotNetName() const;
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{
        Prop{"Name", &Own::Name},
        Prop{"Parameters", &Own::Parameters, PropertyKind::Children},
        Prop{"HelpContextID", &Own::HelpContextID},
        Prop{"TaggedDescription", &Own::TaggedDescription},
        Prop{"UnTaggedDescription", &Own::UnTaggedDescription},
        Prop{"Description", &Own::Description, PropertyKind::Derived},
        Prop{"IsHiddenMember", &Own::IsHiddenMember},
        Prop{"IsNew", &Own::IsNew},
        Prop{"ExcludeFlag", &Own::ExcludeFlag},
        Prop{"LineIndex", &Own::LineIndex},
        Prop{"InheritedFrom", &Own::InheritedFrom},
        Prop{"Implemented", &Own::Implemented},
        Prop{"Overloaded", &Own::Overloaded},
        Prop{"IsVirtual", &Own::IsVirtual},
        Prop{"IsAbstract", &Own::IsAbstract},
        Prop{"IsShadow", &Own::IsShadow},
        Prop{"DelegateName", &Own::DelegateName},
        Prop{"Access", &Own::Access},
        Prop{"Examples", &Own::Examples, PropertyKind::Children},
        Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
        Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
        Prop{"SourceLine", &Own::SourceLine, &Own::SetSourceLine},
        Prop{"Permissions", &Own::Permissions, PropertyKind::Children}.Rare(),
        Prop{"Exceptions", &Own::Exceptions, PropertyKind::Children}.Rare(),
        Prop{"HelpContextIDRead", &Own::HelpContextIDRead}.Hide(),
        Prop{"IsSealed", &Own::IsSealed}.Hide(),
        Prop{"IsStatic", &Own::IsStatic}.Hide(),
        Prop{"AccessType", &Own::AccessType, PropertyKind::Derived}.Hide(),
        Prop{"Component", &Own::Component, PropertyKind::Link}.Hide(),
        Prop{"OverloadEventDeclarations", &Own::OverloadEventDeclarations, PropertyKind::Children}
            .Hide()};
  }
};
struct EventFamily {
  static constexpr std::string_view TypeText = "Event Declaration";
  static constexpr bool Placed = true;
};

/// The events of a module. Those that a class of an assembly inherits come when the events, or the
/// blocks, are first asked for.
class EventDeclarations : public ElementCollection<EventDeclaration, EventFamily> {
  using Base = ElementCollection<EventDeclaration, EventFamily>;

 public:
  /// The events as they stand, without what waits to be made.
  const KeyedCollection<EventDeclaration>& Listed() const { return mCol; }
  ElementsOf<EventDeclaration> Listed() { return mCol; }
  /// `fill` runs once, when the events are first asked for.
  void FillLate(std::function<void()> fill) { mLate.Set(std::move(fill)); }

  template <typename Key>
  EventDeclaration* Item(const Key& key) {
    return Whole().Item(key);
  }
  template <typename Key>
  const EventDeclaration* Item(const Key& key) const {
    return Whole().Item(key);
  }
  template <typename Key>
  std::shared_ptr<EventDeclaration> Share(const Key& key) {
    return Whole().Share(key);
  }
  template <typename Key>
  std::shared_ptr<const EventDeclaration> Share(const Key& key) const {
    return Whole().Share(key);
  }
  bool HasKey(std::string_view key) const { return Whole().HasKey(key); }
  bool Add(std::shared_ptr<EventDeclaration> item, std::string_view key = {},
           const Position& before = {}, const Position& after = {}) {
    mLate.Run();
    return Base::Add(std::move(item), key, before, after);
  }
  template <typename Key>
  void Remove(const Key& key) {
    mLate.Run();
    Base::Remove(key);
  }
  void Clear() {
    mLate.Run();
    Base::Clear();
  }
  std::size_t Count() const { return Whole().Count(); }
  auto begin() { return Whole().begin(); }
  auto end() { return Whole().end(); }
  auto begin() const { return Whole().begin(); }
  auto end() const { return Whole().end(); }

 private:
  Base& Whole() {
    mLate.Run();
    return *this;
  }
  const Base& Whole() const {
    mLate.Run();
    return *this;
  }
  LateFill mLate;
};

/// A `Declare` statement.
class DeclareDeclaration : public ElementOf<DeclareDeclaration> {
 public:
  SharedText Access;
  bool IsFunction = false;
  bool ReturnTypeIsArray = false;
  bool ExcludeFlag = false;
  SharedText ReturnType;
  OnDemand<vendrel::Parameters> Parameters;
  SharedText Name;
  SharedText Alias;
  /// The file named behind `Lib`, with ".dll" where it had no extension.
  SharedText Library;
  LateText TaggedDescription;
  LateText UnTaggedDescription;
  std::int32_t LineIndex = 0;
  /// The library of the project; none for a repeated name (classic reading).
  WeakHandle<vendrel::Library> LibraryObject;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  WeakHandle<vendrel::Component> Component;

  std::string Description() const override;
  /// Does nothing: assigning the description of a Declare is ignored.
  void SetDescription(std::string_view) override {}
  std::string QualifiedName() const override;

  AccessTypeEnum AccessType() const { return AccessTypeFromstring(Access); }
  void Initialise(const CodeLine& oLine);
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"Access", &Own::Access},
                         Prop{"IsFunction", &Own::IsFunction},
                         Prop{"ReturnType", &Own::ReturnType},
                         Prop{"ReturnTypeIsArray", &Own::ReturnTypeIsArray},
                         Prop{"Parameters", &Own::Parameters, PropertyKind::Children},
                         Prop{"Name", &Own::Name},
                         Prop{"Alias", &Own::Alias},
                         Prop{"Library", &Own::Library},
                         Prop{"TaggedDescription", &Own::TaggedDescription},
                         Prop{"UnTaggedDescription", &Own::UnTaggedDescription},
                         Prop{"Description", &Own::Description, PropertyKind::Derived},
                         Prop{"ExcludeFlag", &Own::ExcludeFlag},
                         Prop{"LineIndex", &Own::LineIndex},
                         Prop{"LibraryObject", &Own::LibraryObject, PropertyKind::Link},
                         Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
                         Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
                         Prop{"SourceLine", &Own::SourceLine, &Own::SetSourceLine},
                         Prop{"AccessType", &Own::AccessType, PropertyKind::Derived}.Hide(),
                         Prop{"Component", &Own::Component, PropertyKind::Link}.Hide()};
  }
};
struct DeclareFamily {
  static constexpr std::string_view TypeText = "DeclareDeclarations";
  static constexpr bool Placed = true;
};
class DeclareDeclarations : public ElementCollection<DeclareDeclaration, DeclareFamily> {};

/// One DLL named by the Declare statements of a project.
class Library : public ElementOf<Library> {
 public:
  SharedText Name;
  LateText TaggedDescription;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  /// The declarations that name this library; of repeated names the first.
  vendrel::DeclareDeclarations DeclareDeclarations;

  std::string Description() const override { return TaggedDescription.str(); }
  std::string QualifiedName() const override;
  vendrel::VBProject* VBProject() const;
  ProjectOptions* Options() const { return mProject.Get(); }
  void SetVBProject(ProjectOptions* project) { mProject.Set(project); }
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{
        Prop{"Name", &Own::Name},
        Prop{"TaggedDescription", &Own::TaggedDescription},
        Prop{"Description", &Own::Description, PropertyKind::Derived},
        Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
        Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
        Prop{"VBProject", &Own::VBProject, &Own::SetVBProject, PropertyKind::Link}.Hide(),
        Prop{"DeclareDeclarations", &Own::DeclareDeclarations, PropertyKind::Derived}.Hide()};
  }

 private:
  WeakHandle<ProjectOptions> mProject;
};
class Libraries : public PlainCollection<Library> {};

}  // namespace vendrel
