#pragma once
#include <memory>
#include <string>
#include <string_view>

#include "core/Enums.h"
#include "core/RareMembers.h"
#include "model/CodeElement.h"
#include "model/Example.h"
#include "model/Permission.h"
#include "model/ProjectOptions.h"
#include "model/SharedLinks.h"
#include "model/TaggedComment.h"

namespace vendrel {

/// What few variables have.
struct VariableParts {
  std::int32_t HelpContextID = 0;
  std::int32_t HelpContextIDRead = 0;
  std::int32_t RefCount = 0;
  bool IsShadow = false;
  bool Implemented = false;
  bool IsVirtual = false;
  bool IsAbstract = false;
  SharedText ArraySubscript;
  SharedText InheritedFrom;
  LateText Value;
  LateText TaggedDescription;
  LateText UnTaggedDescription;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  OnDemand<vendrel::Examples> Examples;
  OnDemand<vendrel::Permissions> Permissions;
  OnDemand<vendrel::Exceptions> Exceptions;
};

/// Where a variable stands.
struct VariablePlace {
  WeakHandle<CodeElement> Parent;
  WeakHandle<vendrel::Component> Component;
  WeakHandle<Block> Procedure;
  WeakHandle<ProjectOptions> Project;
};

/// One declarator of a `Dim`, `Public`, `Private`, `Global`, `Static` or field statement, or a
/// member of a structure.
class Variable : public ElementOf<Variable> {
 public:
  Variable() {}  // not defaulted: so a const one may be made without a value
  ~Variable() override {
    mParts.Free();
    mPlace.Leave();
  }

  /// Line of its block on which it stands, 1-based. (Here, in the room that the base class leaves.)
  std::int32_t LineIndex = 0;
  bool IsArray = false;
  /// `String * n`.
  bool FixedLengthString = false;
  /// No type was written.
  bool ImplicitType = false;
  bool IsStatic = false;
  bool IsHiddenMember = false;
  bool IsNew = false;
  bool ExcludeFlag = false;
  bool IsWithEvents = false;
  /// "PUBLIC", "PRIVATE", "PROTECTED", "FRIEND" or "PROTECTED FRIEND".
  SharedText Access;
  /// Type as written; of an untyped one, the default type.
  SharedText TypeName;
  SharedText Name;

  union {
    RareParts<VariableParts> mParts{};
    Rarely<&VariableParts::HelpContextID> HelpContextID;
    /// The help context ID of its attribute line; 0 without one.
    Rarely<&VariableParts::HelpContextIDRead> HelpContextIDRead;
    Rarely<&VariableParts::RefCount> RefCount;
    Rarely<&VariableParts::IsShadow> IsShadow;
    Rarely<&VariableParts::Implemented> Implemented;
    Rarely<&VariableParts::IsVirtual> IsVirtual;
    Rarely<&VariableParts::IsAbstract> IsAbstract;
    /// Text between the parentheses, words joined by single blanks ("1 To 3").
    Rarely<&VariableParts::ArraySubscript> ArraySubscript;
    Rarely<&VariableParts::InheritedFrom> InheritedFrom;
    /// Value of a field that is a constant, as source would write it; empty for others.
    Rarely<&VariableParts::Value> Value;
    Rarely<&VariableParts::TaggedDescription> TaggedDescription;
    Rarely<&VariableParts::UnTaggedDescription> UnTaggedDescription;
    Rarely<&VariableParts::TaggedComments> TaggedComments;
    Rarely<&VariableParts::Examples> Examples;
    Rarely<&VariableParts::Permissions> Permissions;
    Rarely<&VariableParts::Exceptions> Exceptions;
  };
  union {
    SharedRecord<VariablePlace> mPlace{};
    /// The `Component` for variables of source, the `UDT` for its members, a block for fields made
    /// by a loader.
    SharedLink<&VariablePlace::Parent> Parent;
    SharedLink<&VariablePlace::Component> Component;
    /// The procedure that declares it; empty for a variable of the module and for a member.
    SharedLink<&VariablePlace::Procedure> Procedure;
    SharedLink<&VariablePlace::Project> mProject;
  };

  std::string Description() const override;
  std::string QualifiedName() const override;

  /// The project; its options decide what counts as a description.
  ProjectOptions* Options() const { return mProject.Get(); }
  vendrel::VBProject* VBProject() const;
  void SetVBProject(ProjectOptions* project) { mProject = project; }
  /// The same with the link of what holds it.
  void LinkToProject(const WeakHandle<ProjectOptions>& link) { mProject = link; }
  /// Links it as another one is: parent, module, procedure and project.
  void StandBeside(const Variable& other) { mPlace.Join(other.mPlace); }
  AccessTypeEnum AccessType() const;

  /// Parses the first declarator in `s` and leaves in `s` the text for the next one, or nothing.
  void Initialise(std::string& s);
  bool IsUDT(vendrel::Component* Component) const;
  std::string DotNetName() const;
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{
        Prop{"Name", &Own::Name},
        Prop{"Access", &Own::Access},
        Prop{"TypeName", &Own::TypeName},
        Prop{"HelpContextID", &Own::HelpContextID},
        Prop{"IsArray", &Own::IsArray},
        Prop{"ArraySubscript", &Own::ArraySubscript},
        Prop{"FixedLengthString", &Own::FixedLengthString},
        Prop{"ImplicitType", &Own::ImplicitType},
        Prop{"IsStatic", &Own::IsStatic},
        Prop{"IsShadow", &Own::IsShadow},
        Prop{"TaggedDescription", &Own::TaggedDescription},
        Prop{"UnTaggedDescription", &Own::UnTaggedDescription},
        Prop{"Description", &Own::Description, PropertyKind::Derived},
        Prop{"IsHiddenMember", &Own::IsHiddenMember},
        Prop{"IsNew", &Own::IsNew},
        Prop{"ExcludeFlag", &Own::ExcludeFlag},
        Prop{"LineIndex", &Own::LineIndex},
        Prop{"IsWithEvents", &Own::IsWithEvents},
        Prop{"InheritedFrom", &Own::InheritedFrom},
        Prop{"Implemented", &Own::Implemented},
        Prop{"IsVirtual", &Own::IsVirtual},
        Prop{"IsAbstract", &Own::IsAbstract},
        Prop{"RefCount", &Own::RefCount},
        Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
        Prop{"Examples", &Own::Examples, PropertyKind::Children},
        Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
        Prop{"SourceLine", &Own::SourceLine, &Own::SetSourceLine},
        Prop{"Permissions", &Own::Permissions, PropertyKind::Children}.Rare(),
        Prop{"Exceptions", &Own::Exceptions, PropertyKind::Children}.Rare(),
        Prop{"Value", &Own::Value}.Hide(),
        Prop{"HelpContextIDRead", &Own::HelpContextIDRead}.Hide(),
        Prop{"AccessType", &Own::AccessType, PropertyKind::Derived}.Hide(),
        Prop{"Parent", &Own::Parent, PropertyKind::Link}.Hide(),
        Prop{"Component", &Own::Component, PropertyKind::Link}.Hide(),
        Prop{"Procedure", &Own::Procedure, PropertyKind::Link}.Hide(),
        Prop{"VBProject", &Own::VBProject, &Own::SetVBProject, PropertyKind::Link}.Hide()};
  }
};

struct VariableFamily {
  static constexpr std::string_view TypeText = "Variable";
  static constexpr bool Placed = false;
};
class Variables : public ElementCollection<Variable, VariableFamily> {};

}  // namespace vendrel
