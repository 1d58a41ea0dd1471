#pragma once
#include <memory>
#include <string>
#include <string_view>

#include "core/Enums.h"
#include "model/CodeElement.h"
#include "model/Example.h"
#include "model/Permission.h"
#include "model/ProjectOptions.h"
#include "model/TaggedComment.h"

namespace vendrel {

/// One declarator of a `Dim`, `Public`, `Private`, `Global`, `Static` or field statement, or a
/// member of a structure.
class Variable : public ElementOf<Variable> {
 public:
  /// "PUBLIC", "PRIVATE", "PROTECTED", "FRIEND" or "PROTECTED FRIEND".
  SharedText Access;
  /// Type as written; of an untyped one, the default type.
  SharedText TypeName;
  std::string Name;
  std::int32_t HelpContextID = 0;
  /// The help context ID of its attribute line; 0 without one.
  std::int32_t HelpContextIDRead = 0;
  /// Line of its block on which it stands, 1-based.
  std::int32_t LineIndex = 0;
  bool IsArray = false;
  /// `String * n`.
  bool FixedLengthString = false;
  /// No type was written.
  bool ImplicitType = false;
  bool IsStatic = false;
  bool IsShadow = false;
  bool IsHiddenMember = false;
  bool IsNew = false;
  bool ExcludeFlag = false;
  bool IsWithEvents = false;
  bool Implemented = false;
  bool IsVirtual = false;
  bool IsAbstract = false;
  /// Text between the parentheses, words joined by single blanks ("1 To 3").
  SharedText ArraySubscript;
  /// Value of a field that is a constant, as source would write it; empty for others.
  LateText Value;
  LateText TaggedDescription;
  LateText UnTaggedDescription;
  SharedText InheritedFrom;
  std::int32_t RefCount = 0;
  /// The `Component` for variables of source, the `UDT` for its members, a block for fields made by
  /// a loader.
  WeakHandle<CodeElement> Parent;
  WeakHandle<vendrel::Component> Component;
  /// The procedure that declares it; empty for a variable of the module and for a member.
  WeakHandle<Block> Procedure;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  OnDemand<vendrel::Examples> Examples;
  OnDemand<vendrel::Permissions> Permissions;
  OnDemand<vendrel::Exceptions> Exceptions;

  std::string Description() const override;
  std::string QualifiedName() const override;

  /// The project; its options decide what counts as a description.
  ProjectOptions* Options() const { return mProject.Get(); }
  vendrel::VBProject* VBProject() const;
  void SetVBProject(ProjectOptions* project) { mProject.Set(project); }
  AccessTypeEnum AccessType() const;

  /// Parses the first declarator in `s` and leaves in `s` the text for the next one, or nothing.
  void Initialise(std::string& s);
  bool IsUDT(vendrel::Component* Component) const;
  std::string DotNetName() const;
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;

  static constexpr auto Properties() {
    return std::tuple{
        Prop{"Name", &Variable::Name},
        Prop{"Access", &Variable::Access},
        Prop{"TypeName", &Variable::TypeName},
        Prop{"HelpContextID", &Variable::HelpContextID},
        Prop{"IsArray", &Variable::IsArray},
        Prop{"ArraySubscript", &Variable::ArraySubscript},
        Prop{"FixedLengthString", &Variable::FixedLengthString},
        Prop{"ImplicitType", &Variable::ImplicitType},
        Prop{"IsStatic", &Variable::IsStatic},
        Prop{"IsShadow", &Variable::IsShadow},
        Prop{"TaggedDescription", &Variable::TaggedDescription},
        Prop{"UnTaggedDescription", &Variable::UnTaggedDescription},
        Prop{"Description", &Variable::Description, PropertyKind::Derived},
        Prop{"IsHiddenMember", &Variable::IsHiddenMember},
        Prop{"IsNew", &Variable::IsNew},
        Prop{"ExcludeFlag", &Variable::ExcludeFlag},
        Prop{"LineIndex", &Variable::LineIndex},
        Prop{"IsWithEvents", &Variable::IsWithEvents},
        Prop{"InheritedFrom", &Variable::InheritedFrom},
        Prop{"Implemented", &Variable::Implemented},
        Prop{"IsVirtual", &Variable::IsVirtual},
        Prop{"IsAbstract", &Variable::IsAbstract},
        Prop{"RefCount", &Variable::RefCount},
        Prop{"TaggedComments", &Variable::TaggedComments, PropertyKind::Children},
        Prop{"Examples", &Variable::Examples, PropertyKind::Children},
        Prop{"QualifiedName", &Variable::QualifiedName, PropertyKind::Derived},
        Prop{"SourceLine", &Variable::SourceLine, &Variable::SetSourceLine},
        Prop{"Permissions", &Variable::Permissions, PropertyKind::Children}.Rare(),
        Prop{"Exceptions", &Variable::Exceptions, PropertyKind::Children}.Rare(),
        Prop{"Value", &Variable::Value}.Hide(),
        Prop{"HelpContextIDRead", &Variable::HelpContextIDRead}.Hide(),
        Prop{"AccessType", &Variable::AccessType, PropertyKind::Derived}.Hide(),
        Prop{"Parent", &Variable::Parent, PropertyKind::Link}.Hide(),
        Prop{"Component", &Variable::Component, PropertyKind::Link}.Hide(),
        Prop{"Procedure", &Variable::Procedure, PropertyKind::Link}.Hide(),
        Prop{"VBProject", &Variable::VBProject, &Variable::SetVBProject, PropertyKind::Link}
            .Hide()};
  }

 private:
  WeakHandle<ProjectOptions> mProject;
};

struct VariableFamily {
  static constexpr std::string_view TypeText = "Variable";
  static constexpr bool Placed = false;
};
class Variables : public ElementCollection<Variable, VariableFamily> {};

}  // namespace vendrel
