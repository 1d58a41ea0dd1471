#pragma once
// The base of everything in the tree: what can be asked of an element without knowing its class.

#include <cstdint>
#include <string>
#include <string_view>

#include "core/LateText.h"
#include "core/OnDemand.h"
#include "core/SharedText.h"
#include "core/WeakHandle.h"
#include "diagnostics/TraceValue.h"
#include "model/ElementKinds.h"
#include "model/Fwd.h"

namespace vendrel {

/// An element of the tree. Virtual functions stand where the rules reach a property by name,
/// whatever the class; each gives null where a class has no such property.
class CodeElement : public HandleTarget {
 public:
  /// The class of the element; `As` asks it.
  virtual ElementKind Kind() const = 0;
  /// Name of the class, as the rules compare it, e.g. "EventDeclaration".
  std::string_view ClassName() const { return RowOf(Kind()).ClassName; }
  /// The `Name` property; empty for a class without one.
  virtual std::string ElementName() const { return {}; }
  /// Tagged and untagged description combined by the rule of the class.
  virtual std::string Description() const { return {}; }
  /// Text that identifies the element across a group of projects.
  virtual std::string QualifiedName() const { return {}; }
  /// The module the element stands in; null if none.
  virtual Component* OwnComponent() const { return nullptr; }

  // What may be asked of an element that is not const is made if it was not there; ask a const one
  // to read.
  virtual LateText* TaggedDescriptionField() { return nullptr; }
  virtual LateText* UnTaggedDescriptionField() { return nullptr; }
  virtual bool* ExcludeFlagField() { return nullptr; }
  virtual bool* IsNewField() { return nullptr; }
  virtual OnDemand<vendrel::TaggedComments>* TaggedCommentsField() { return nullptr; }
  virtual OnDemand<vendrel::Examples>* ExamplesField() { return nullptr; }
  virtual OnDemand<vendrel::Permissions>* PermissionsField() { return nullptr; }
  virtual OnDemand<vendrel::Exceptions>* ExceptionsField() { return nullptr; }
  virtual const LateText* TaggedDescriptionField() const { return nullptr; }
  virtual const LateText* UnTaggedDescriptionField() const { return nullptr; }
  virtual const bool* ExcludeFlagField() const { return nullptr; }
  virtual const bool* IsNewField() const { return nullptr; }
  virtual const OnDemand<vendrel::TaggedComments>* TaggedCommentsField() const { return nullptr; }
  virtual const OnDemand<vendrel::Examples>* ExamplesField() const { return nullptr; }

  /// Assigning a description by name: read-only on most classes (raises 383).
  virtual void SetDescription(std::string_view text);

  /// 1-based physical line in the file of its module; 0: none.
  std::int32_t SourceLine() const { return mSourceLine; }
  void SetSourceLine(std::int32_t line) { mSourceLine = line; }

 private:
  std::int32_t mSourceLine = 0;
};

/// What such a link points at, for those who know the class by its name alone.
Component* ComponentBehind(const WeakHandle<vendrel::Component>& link);

/// Answers the questions above from the members of `Class` that bear those names, where it has any:
/// a data member `ExcludeFlag` is what `ExcludeFlagField` gives.
template <typename Class, typename Base = CodeElement>
class ElementOf : public Base {
 public:
  ElementKind Kind() const override {
    static_assert(kKindOf<Class> != ElementKind::None, "needs its row in model/ElementKinds.h");
    return kKindOf<Class>;
  }
  std::string ElementName() const override {
    if constexpr (requires(Class own) { std::string(own.Name); }) return Own().Name;
    return Base::ElementName();
  }
  Component* OwnComponent() const override {
    if constexpr (requires(Class own) { own.Component.Get(); })
      return ComponentBehind(Own().Component);
    return Base::OwnComponent();
  }
  LateText* TaggedDescriptionField() override {
    if constexpr (requires(Class own) { own.TaggedDescription; })
      return FieldOf(Own().TaggedDescription);
    return Base::TaggedDescriptionField();
  }
  LateText* UnTaggedDescriptionField() override {
    if constexpr (requires(Class own) { own.UnTaggedDescription; })
      return FieldOf(Own().UnTaggedDescription);
    return Base::UnTaggedDescriptionField();
  }
  bool* ExcludeFlagField() override {
    if constexpr (requires(Class own) { own.ExcludeFlag; }) return FieldOf(Own().ExcludeFlag);
    return Base::ExcludeFlagField();
  }
  bool* IsNewField() override {
    if constexpr (requires(Class own) { own.IsNew; }) return FieldOf(Own().IsNew);
    return Base::IsNewField();
  }
  OnDemand<vendrel::TaggedComments>* TaggedCommentsField() override {
    if constexpr (requires(Class own) { own.TaggedComments; }) return FieldOf(Own().TaggedComments);
    return Base::TaggedCommentsField();
  }
  OnDemand<vendrel::Examples>* ExamplesField() override {
    if constexpr (requires(Class own) { own.Examples; }) return FieldOf(Own().Examples);
    return Base::ExamplesField();
  }
  OnDemand<vendrel::Permissions>* PermissionsField() override {
    if constexpr (requires(Class own) { own.Permissions.IfAny(); })
      return FieldOf(Own().Permissions);
    return Base::PermissionsField();
  }
  OnDemand<vendrel::Exceptions>* ExceptionsField() override {
    if constexpr (requires(Class own) { own.Exceptions.IfAny(); }) return FieldOf(Own().Exceptions);
    return Base::ExceptionsField();
  }
  const LateText* TaggedDescriptionField() const override {
    if constexpr (requires(Class own) { own.TaggedDescription; })
      return FieldOf(Own().TaggedDescription);
    return Base::TaggedDescriptionField();
  }
  const LateText* UnTaggedDescriptionField() const override {
    if constexpr (requires(Class own) { own.UnTaggedDescription; })
      return FieldOf(Own().UnTaggedDescription);
    return Base::UnTaggedDescriptionField();
  }
  const bool* ExcludeFlagField() const override {
    if constexpr (requires(Class own) { own.ExcludeFlag; }) return FieldOf(Own().ExcludeFlag);
    return Base::ExcludeFlagField();
  }
  const bool* IsNewField() const override {
    if constexpr (requires(Class own) { own.IsNew; }) return FieldOf(Own().IsNew);
    return Base::IsNewField();
  }
  const OnDemand<vendrel::TaggedComments>* TaggedCommentsField() const override {
    if constexpr (requires(Class own) { own.TaggedComments; }) return FieldOf(Own().TaggedComments);
    return Base::TaggedCommentsField();
  }
  const OnDemand<vendrel::Examples>* ExamplesField() const override {
    if constexpr (requires(Class own) { own.Examples; }) return FieldOf(Own().Examples);
    return Base::ExamplesField();
  }

 private:
  template <typename Field>
  static auto FieldOf(Field& field) {
    if constexpr (requires { field.Field(); })
      return &field.Field();
    else
      return &field;
  }
  Class& Own() { return static_cast<Class&>(*this); }
  const Class& Own() const { return static_cast<const Class&>(*this); }
};

/// The element as one of that class; null where there is none or it is of another class.
template <typename Class>
const Class* As(const CodeElement* element) {
  static_assert(kKindOf<Class> != ElementKind::None, "no class of elements");
  return element && element->Kind() == kKindOf<Class> ? static_cast<const Class*>(element)
                                                      : nullptr;
}
template <typename Class>
Class* As(CodeElement* element) {
  return const_cast<Class*>(As<Class>(static_cast<const CodeElement*>(element)));
}

/// Whether the element is there and of one of those classes.
template <typename... Classes>
bool IsA(const CodeElement* element) {
  return element && ((element->Kind() == kKindOf<Classes>) || ...);
}

/// The element in an error report: class and qualified name, or with all of its properties while
/// `TraceWholeElements`. Loads nothing, never fails.
TraceValue TraceOf(const CodeElement* element);
inline TraceValue TraceOf(const CodeElement& element) { return TraceOf(&element); }

/// Gives an element with its properties; installed by the room that knows them.
using ElementTracer = TraceValue (*)(const CodeElement& element);
void SetElementTracer(ElementTracer tracer);

}  // namespace vendrel
