#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "core/RareMembers.h"
#include "model/CodeElement.h"
#include "model/TaggedComment.h"

namespace vendrel {

/// What few parameters have.
struct ParameterParts {
  bool IsParamArray = false;
  bool IsArray = false;
  bool RelationshipResolved = false;
  SharedText DefaultValue;
  SharedText RelationshipTo;
  LateText Description;
  LateText TaggedDescription;
  OnDemand<vendrel::TaggedComments> TaggedComments;
};

/// One parameter of a procedure, event or `Declare`.
class Parameter : public ElementOf<Parameter> {
 public:
  Parameter() {}  // as with Variable
  ~Parameter() override { mParts.Free(); }

  // What is small stands first, in the room that the base class leaves.
  bool IsOptional = false;
  bool IsByRef = false;
  /// No type was written.
  bool ImplicitType = false;

 private:
  friend class Parameters;
  bool mListed = false;  // stands in a list, whose index a new name makes stale

 public:
  /// Type as written; of an untyped one, the default type.
  SharedText VariableType;
  /// The `Block`, event or `Declare` it belongs to.
  WeakHandle<CodeElement> Parent;
  union {
    RareParts<ParameterParts> mParts{};
    /// The last parameter takes any number of arguments; it is optional then.
    Rarely<&ParameterParts::IsParamArray> IsParamArray;
    Rarely<&ParameterParts::IsArray> IsArray;
    Rarely<&ParameterParts::RelationshipResolved> RelationshipResolved;
    Rarely<&ParameterParts::DefaultValue> DefaultValue;
    Rarely<&ParameterParts::RelationshipTo> RelationshipTo;
    /// Text of the comments for this parameter.
    Rarely<&ParameterParts::Description> mDescription;
    Rarely<&ParameterParts::TaggedDescription> TaggedDescription;
    Rarely<&ParameterParts::TaggedComments> TaggedComments;
  };

  std::string ElementName() const override { return mName; }
  std::string Description() const override { return mDescription.str(); }
  void SetDescription(std::string_view text) override { mDescription = text; }
  std::string QualifiedName() const override;
  Component* OwnComponent() const override;

  const SharedText& Name() const { return mName; }
  void SetName(std::string_view name);

  /// Parses one parameter, e.g. "Optional ByVal a As Long = 5", in the language now in force.
  void Load(std::string_view Text);
  std::shared_ptr<Parameter> Clone(bool CopyComments) const;
  /// Whether the type is a user-defined type visible from `Component`.
  bool IsUDT(vendrel::Component* Component) const;
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"Name", &Own::Name, &Own::SetName},
                         Prop{"VariableType", &Own::VariableType},
                         Prop{"Description", &Own::mDescription},
                         Prop{"IsOptional", &Own::IsOptional},
                         Prop{"IsByRef", &Own::IsByRef},
                         Prop{"IsParamArray", &Own::IsParamArray},
                         Prop{"IsArray", &Own::IsArray},
                         Prop{"DefaultValue", &Own::DefaultValue},
                         Prop{"ImplicitType", &Own::ImplicitType},
                         Prop{"RelationshipResolved", &Own::RelationshipResolved},
                         Prop{"RelationshipTo", &Own::RelationshipTo},
                         Prop{"TaggedDescription", &Own::TaggedDescription},
                         Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
                         Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
                         Prop{"SourceLine", &Own::SourceLine, &Own::SetSourceLine},
                         Prop{"Parent", &Own::Parent, PropertyKind::Link}.Hide()};
  }

 private:
  SharedText mName;
};

struct ParameterFamily {
  static constexpr std::string_view TypeText = "Parameter";
  static constexpr bool Placed = true;
};

/// The parameter list of one procedure, event or `Declare`.
class Parameters : public ElementCollection<Parameter, ParameterFamily> {
 public:
  WeakHandle<vendrel::Component> Component;

  Parameters();
  ~Parameters();

  using ElementCollection::Item;
  /// By name, case ignored, keyless elements too.
  Parameter* Item(std::string_view name) {
    return const_cast<Parameter*>(std::as_const(*this).Item(name));
  }
  const Parameter* Item(std::string_view name) const;
  bool Add(std::shared_ptr<Parameter> item, std::string_view key = {}, const Position& before = {},
           const Position& after = {});
  /// Adds one behind the others, or nothing where its key is taken.
  bool AddIfFree(std::shared_ptr<Parameter> item, std::string_view key);
  void Remove(std::size_t index);
  void Remove(std::string_view key);
  void Clear();

  /// Reads a whole parameter list from a statement. A second parameter of one name is dropped, but
  /// in a `Declare` or `Event`, whose parameters have no keys.
  void Load(std::string_view Text, CodeElement* Parent);
  /// The types of all parameters joined by ",".
  std::string DotNetSignature() const;

 private:
  friend class Parameter;
  struct NameIndex;
  mutable std::unique_ptr<NameIndex> mIndex;  // made at the first look-up of a long list
};

/// A parameter from the type text of a library or assembly: a final "&" makes it by reference and
/// is cut, a final "*" is cut. `ParameterType` has no effect.
std::shared_ptr<Parameter> CreateParameter(std::string_view Name, std::string_view TypeName,
                                           std::string_view DefaultValue, bool IsOptional,
                                           std::string_view ParameterType = {});

}  // namespace vendrel
