#pragma once
// A procedure, or the attributes or declarations section of a module.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Enums.h"
#include "core/RareMembers.h"
#include "model/CodeElement.h"
#include "model/Declarations.h"
#include "model/Example.h"
#include "model/Parameter.h"
#include "model/Permission.h"
#include "model/ProjectOptions.h"
#include "model/TaggedComment.h"
#include "model/Variable.h"
#include "text/CodeLines.h"

namespace vendrel {

/// What few blocks have.
struct BlockParts {
  BlockParts();
  ~BlockParts();
  BlockParts(const BlockParts&) = delete;
  BlockParts& operator=(const BlockParts&) = delete;

  struct Further;
  std::int32_t HelpContextID = 0;
  std::int32_t HelpContextIDRead = 0;
  bool IsExample = false;
  bool Consolidated = false;
  bool IsConstructor = false;
  bool IsSealed = false;
  bool IsShadow = false;
  SharedText Interface;
  LateText TaggedDescription;
  LateText ReturnDescription;
  OnDemand<vendrel::Constants> Constants;
  OnDemand<vendrel::Examples> Examples;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  std::unique_ptr<Further> More;  // marks of VB.NET, and the overloads
};

/// The definition of a procedure: stands with its lines, and mostly is a part of their text.
class DefinitionText : private OnDemand<CodeLines> {
 public:
  operator std::string_view() const { return view(); }  // NOLINT: reads like a string
  std::string_view view() const {
    const CodeLines* lines = IfAny();
    return lines ? lines->Definition() : std::string_view();
  }
  std::string str() const { return std::string(view()); }
  bool empty() const { return view().empty(); }
  std::size_t size() const { return view().size(); }
  DefinitionText& operator=(std::string_view text) {
    if (!text.empty() || IfAny()) (*this)->SetDefinition(text);
    return *this;
  }
  friend bool operator==(const DefinitionText& a, std::string_view b) { return a.view() == b; }
  template <typename Traits>
  friend std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                                      const DefinitionText& text) {
    return out << text.view();
  }
};

/// One block of a module. Every line of the module passes through `AddLine` of its block once; from
/// it grow name, signature, variables and declarations.
class Block : public ElementOf<Block> {
 public:
  Block();
  ~Block() override;

  /// Identity within the process since the last load.
  std::int32_t BlockID;
  /// Which procedures the property has; 0 for other blocks.
  PropertyTypeEnum PropertyType = ptNone;
  bool ReturnTypeIsArray = false;
  bool IsFriend = false;
  bool IsStatic = false;
  bool IsHiddenMember = false;
  bool IsNew = false;
  bool ExcludeFlag = false;
  bool IsEventProcedure = false;
  bool Implemented = false;
  bool IsVirtual = false;
  bool IsAbstract = false;

 private:
  // Here, in the room that the flags leave: a project has many blocks.
  bool mOverloaded : 1 = false;
  bool mIsDelegate : 1 = false;
  bool mCompletelyLoaded : 1 = false;
  bool mShared : 1 = false;  // has stood in more than one collection
  std::uint8_t mBlockType = btUnrecognised;

 public:
  // State of the intake that outlives a line and ends with the source; only the intake touches it.
  // A block that is read has nothing left but the marks.
  struct IntakeMarks {
    std::int32_t mCurrentLineIndex = 0;
    bool mEventLast : 1 = false;
    bool mFoundItem : 1 = false;
    bool FoundActualCodeInBlock : 1 = false;
    bool mEnumOpen : 1 = false;
    bool mUDTOpen : 1 = false;
    bool mEnded : 1 = false;
  };

 private:
  std::int32_t mStartLine = -1;
  std::int32_t mEndLine = -1;
  IntakeMarks mMarks;

 public:
  SharedText Access = "PRIVATE";
  SharedText ReturnType;
  LateText UnTaggedDescription;
  /// The control, variable or module whose event this procedure handles.
  WeakHandle<CodeElement> EventSource;
  WeakHandle<vendrel::Component> Component;
  OnDemand<vendrel::Parameters> Parameters;
  OnDemand<vendrel::Variables> Variables;
  union {
    OnDemand<vendrel::CodeLines> CodeLines{};
    /// Statement of the start line, as written.
    DefinitionText DefinitionLine;
  };
  union {
    RareParts<BlockParts> mParts{};
    Rarely<&BlockParts::HelpContextID> HelpContextID;
    /// The help context ID of its attribute line; 0 without one.
    Rarely<&BlockParts::HelpContextIDRead> HelpContextIDRead;
    Rarely<&BlockParts::IsExample> IsExample;
    /// The comments of the other procedures of the property have been merged into this one.
    Rarely<&BlockParts::Consolidated> Consolidated;
    Rarely<&BlockParts::IsConstructor> IsConstructor;
    Rarely<&BlockParts::IsSealed> IsSealed;
    Rarely<&BlockParts::IsShadow> IsShadow;
    /// Name of the interface whose member this implements; empty if none.
    Rarely<&BlockParts::Interface> Interface;
    Rarely<&BlockParts::TaggedDescription> TaggedDescription;
    Rarely<&BlockParts::ReturnDescription> ReturnDescription;
    Rarely<&BlockParts::Constants> Constants;
    Rarely<&BlockParts::Examples> Examples;
    Rarely<&BlockParts::TaggedComments> TaggedComments;
  };

  /// What few blocks have: marks of VB.NET, and the overloads gathered under this one.
  const SharedText& InheritedFrom() const;
  const SharedText& ImplementsName() const;
  const SharedText& DelegateQualifiedName() const;
  /// The set half of a VB.NET property, which has no lines of its own; null for other blocks.
  const std::shared_ptr<Block>& Setter() const;
  const OnDemand<Blocks>& OverloadBlocks() const;
  /// The same to amend them; null without overloads.
  Blocks* Overloads();
  void SetInheritedFrom(std::string_view name);
  /// The same by a text that many blocks share.
  void ShareInheritedFrom(const SharedText& name);
  void SetImplementsName(std::string_view name);
  void SetDelegateQualifiedName(std::string_view name);
  void SetSetter(std::shared_ptr<Block> setter);
  /// What follows the name of the block in documentation files, where the parameters do not tell it
  /// (pointers, the result of a conversion): "(System.Int32*)~System.Int64".
  const SharedText& DocumentedArguments() const;
  void SetDocumentedArguments(std::string_view text);
  void AddOverload(std::shared_ptr<Block> overload, std::string_view key);
  /// What its documentation says that it demands, and raises.
  OnDemand<vendrel::Permissions>& Permissions();
  OnDemand<vendrel::Exceptions>& Exceptions();
  const OnDemand<vendrel::Permissions>& Permissions() const;
  const OnDemand<vendrel::Exceptions>& Exceptions() const;

  /// The open `Enum` or `Type` statement; may be assigned.
  std::shared_ptr<Enumeration>& CurrentEnum() { return Intake().CurrentEnum; }
  std::shared_ptr<UDT>& CurrentUDT() { return Intake().CurrentUDT; }
  const std::shared_ptr<Enumeration>& CurrentEnum() const { return Kept().Intake->CurrentEnum; }
  const std::shared_ptr<UDT>& CurrentUDT() const { return Kept().Intake->CurrentUDT; }
  /// Pending text of untagged comments, "<crlf>" between lines.
  const std::string& CommentBuffer() const { return Kept().Intake->CommentBuffer; }
  /// The last comment of the lines read so far, tagged or not; null if there was none.
  const std::shared_ptr<TaggedComment>& LastTaggedComment() const;

  std::string ElementName() const override { return mName; }
  std::string Description() const override;
  std::string QualifiedName() const override;

  // Properties by which `Blocks` finds its elements.
  const SharedText& Name() const { return mName; }
  void SetName(std::string_view name);
  BlockTypeEnum BlockType() const { return static_cast<BlockTypeEnum>(mBlockType); }
  void SetBlockType(BlockTypeEnum type);
  bool Overloaded() const { return mOverloaded; }
  void SetOverloaded(bool value);
  bool IsDelegate() const { return mIsDelegate; }
  void SetIsDelegate(bool value);
  /// Namespace of a delegate; null for any other block.
  vendrel::Namespace* Namespace() const;
  void SetNamespace(vendrel::Namespace* value);

  /// The options that hold for this block: those of its project, else the defaults.
  const ProjectOptions& Options() const;
  ProjectOptions* Project() const { return mProject.Get(); }
  vendrel::VBProject* VBProject() const;
  void SetVBProject(ProjectOptions* project) { mProject.Set(project); }
  const WeakHandle<ProjectOptions>& ProjectLink() const { return mProject; }
  /// The same with the link of what holds it.
  void LinkToProject(const WeakHandle<ProjectOptions>& link) { mProject = link; }
  AccessTypeEnum AccessType() const { return AccessTypeFromstring(Access); }

  /// Namespace and name of a delegate, else the name.
  std::string FullName() const;
  /// Name with the parameter types in parentheses: how an overload is told from the others.
  std::string OverloadedMethodSignature() const;
  std::string DotNetSignature() const;
  std::string DotNetName() const;

  /// Whether the block is a procedure but no property.
  bool IsMethod() const;
  /// Whether the block counts as its property: a `Get` does, a `Let` or `Set` unless a public `Get`
  /// of that name exists.
  bool IsProperty() const;
  /// Whether the block type is one of the three property types.
  bool IsPropertyType() const;

  /// Takes in one line: classifies a text, stores the line and interprets it. A position that is
  /// not 0 says where in `CodeLines` it is stored.
  void AddLine(std::string_view Line, std::int32_t Before = 0, std::int32_t After = 0);
  void AddLine(const CodeLine& Line, std::int32_t Before = 0, std::int32_t After = 0);
  /// The same for the readers; the type of the line may change on the way.
  void AddParsedLine(ParsedLine& line, std::int32_t before = 0, std::int32_t after = 0);

  /// 1-based line that opens the body (behind attribute lines); 0 if there is none.
  std::int32_t StartLine() const;
  /// 1-based first physical line of the start line; 0 if there is none.
  std::int32_t FirstLine() const;
  /// 1-based line of the end line; the count of lines where there is none.
  std::int32_t EndLine() const;
  /// The block has seen its end line, with comments standing before their elements.
  bool CompletelyLoaded() const { return mCompletelyLoaded; }
  /// Records of that type from behind the end line of the previous block to the end line of this
  /// one.
  std::vector<CodeLine> LinesOfType(LineTypeEnum LineType) const;
  /// Texts of the attribute lines, in order.
  const std::vector<std::string>& Attributes() const;

  void UnloadSourceCode();
  /// A copy without lines and variables, for another component.
  std::shared_ptr<Block> Clone(vendrel::Component* NewComponent, bool CopyComments) const;

  /// Recomputes `PropertyType` from the procedures of that name that count.
  void SetPropertyType(bool IncludeFriend, bool IncludePrivate);
  /// Access of the property as a whole.
  AccessTypeEnum ConsolidatedAccessType() const;

  /// Places a tagged comment on its element; true if it need not be kept.
  bool ApplyTaggedComment(const std::shared_ptr<TaggedComment>& tc);
  /// Applies a comment, or parks it in the buffer of the module.
  void HandleTaggedComment(const std::shared_ptr<TaggedComment>& tc);
  void MergeTaggedComment(std::string_view TagID, bool OnlyUseIfBlank, bool Overwrite);

  Parameter* netCreateParameter(std::string_view Name, std::string_view TypeName,
                                std::string_view DefaultValue, bool IsOptional,
                                std::string_view ParameterType = {});
  // writer/
  /// Writes the lines of the block to an open file: numbers, attribute lines and descriptions as
  /// the switches of the project ask. Raises what the file raises.
  void WriteOut(FileSystemObject& f);
  // dotnet/
  /// Writes the lines of a block of VB.NET source as they stand, nested classes in their places.
  /// Always true. Raises 91 where a nested class is not found.
  bool WriteOutDotNet(FileSystemObject& f);

  // output/
  void Manifest(XmlElement& e, bool IncludeTaggedComments) const;
  /// The block as coloured HTML behind an anchor of its qualified name, up to its end line; between
  /// "<CODE>" and "</CODE>" if `UseCodeTag`, without its tagged comments unless asked for.
  std::string CodeAsHTML(bool UseCodeTag = false, bool IncludeTaggedComments = false) const;
  /// Numbers the public variables of a declarations block; nothing for other blocks.
  void AssignHelpContextIDs(bool ForceReassign = false);

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{
        Prop{"Name", &Own::Name, &Own::SetName},
        Prop{"BlockType", &Own::BlockType, &Own::SetBlockType},
        Prop{"BlockID", &Own::BlockID, PropertyKind::Identity},
        Prop{"Access", &Own::Access},
        Prop{"ReturnType", &Own::ReturnType},
        Prop{"ReturnTypeIsArray", &Own::ReturnTypeIsArray},
        Prop{"DefinitionLine", &Own::DefinitionLine},
        Prop{"IsFriend", &Own::IsFriend},
        Prop{"IsStatic", &Own::IsStatic},
        Prop{"TaggedDescription", &Own::TaggedDescription},
        Prop{"UnTaggedDescription", &Own::UnTaggedDescription},
        Prop{"ReturnDescription", &Own::ReturnDescription},
        Prop{"Description", &Own::Description, PropertyKind::Derived},
        Prop{"IsHiddenMember", &Own::IsHiddenMember},
        Prop{"IsNew", &Own::IsNew},
        Prop{"IsExample", &Own::IsExample},
        Prop{"ExcludeFlag", &Own::ExcludeFlag},
        Prop{"Consolidated", &Own::Consolidated},
        Prop{"PropertyType", &Own::PropertyType},
        Prop{"Interface", &Own::Interface},
        Prop{"IsEventProcedure", &Own::IsEventProcedure},
        Prop{"EventSource", &Own::EventSource, PropertyKind::Link},
        Prop{"HelpContextID", &Own::HelpContextID},
        Prop{"IsMethod", &Own::IsMethod, PropertyKind::Derived},
        Prop{"IsProperty", &Own::IsProperty, PropertyKind::Derived},
        Prop{"IsConstructor", &Own::IsConstructor},
        Prop{"Overloaded", &Own::Overloaded, &Own::SetOverloaded},
        Prop{"IsDelegate", &Own::IsDelegate, &Own::SetIsDelegate},
        Prop{"InheritedFrom", &Own::InheritedFrom, &Own::SetInheritedFrom},
        Prop{"Implemented", &Own::Implemented},
        Prop{"IsVirtual", &Own::IsVirtual},
        Prop{"IsSealed", &Own::IsSealed},
        Prop{"IsAbstract", &Own::IsAbstract},
        Prop{"IsShadow", &Own::IsShadow},
        Prop{"StartLine", &Own::StartLine, PropertyKind::Derived},
        Prop{"EndLine", &Own::EndLine, PropertyKind::Derived},
        Prop{"CommentBuffer", &Own::CommentBuffer},
        Prop{"Attributes", &Own::Attributes},
        Prop{"Parameters", &Own::Parameters, PropertyKind::Children},
        Prop{"Variables", &Own::Variables, PropertyKind::Children},
        Prop{"Constants", &Own::Constants, PropertyKind::Children},
        Prop{"Examples", &Own::Examples, PropertyKind::Children},
        Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
        Prop{"OverloadBlocks", &Own::OverloadBlocks, PropertyKind::Children},
        Prop{"CodeLines", &Own::CodeLines, PropertyKind::Source},
        Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
        Prop{"SourceLine", &Own::SourceLine, &Own::SetSourceLine},
        Prop{"Permissions", &Own::ListedPermissions, PropertyKind::Children}.Rare(),
        Prop{"Exceptions", &Own::ListedExceptions, PropertyKind::Children}.Rare(),
        Prop{"HelpContextIDRead", &Own::HelpContextIDRead}.Hide(),
        Prop{"ImplementsName", &Own::ImplementsName, &Own::SetImplementsName}.Hide(),
        Prop{"DelegateQualifiedName", &Own::DelegateQualifiedName}.Hide(),
        Prop{"AccessType", &Own::AccessType, PropertyKind::Derived}.Hide(),
        Prop{"FullName", &Own::FullName, PropertyKind::Derived}.Hide(),
        Prop{"FirstLine", &Own::FirstLine, PropertyKind::Derived}.Hide(),
        Prop{"IsPropertyType", &Own::IsPropertyType, PropertyKind::Derived}.Hide(),
        Prop{"CompletelyLoaded", &Own::CompletelyLoaded, PropertyKind::Derived}.Hide(),
        Prop{"Namespace", &Own::Namespace, &Own::SetNamespace, PropertyKind::Link}.Hide(),
        Prop{"Component", &Own::Component, PropertyKind::Link}.Hide(),
        Prop{"VBProject", &Own::VBProject, &Own::SetVBProject, PropertyKind::Link}.Hide(),
        Prop{"Setter", &Own::Setter, PropertyKind::Children}.Hide()};
  }

  struct IntakeState : IntakeMarks {
    std::shared_ptr<Enumeration> CurrentEnum;
    std::shared_ptr<UDT> CurrentUDT;
    std::string CommentBuffer;
    SharedText mLastTagIdentifier;
    SharedText mLastQualifier;
  };
  OnDemand<vendrel::Permissions>* PermissionsField() override { return &Permissions(); }
  OnDemand<vendrel::Exceptions>* ExceptionsField() override { return &Exceptions(); }
  const OnDemand<vendrel::Permissions>& ListedPermissions() const { return Permissions(); }
  const OnDemand<vendrel::Exceptions>& ListedExceptions() const { return Exceptions(); }

  IntakeState& Intake() {
    KeptParts* kept = mKept.IfAny();
    IntakeState* state = kept ? kept->Intake.IfAny() : nullptr;
    return state ? *state : BeginIntake();
  }
  /// Gives back what the intake no longer needs, as far as it does not: another block receives the
  /// lines now.
  void RestIntake();
  void SetLastTaggedComment(std::shared_ptr<TaggedComment> comment);
  /// The same for a comment that is a part of the module's text; made when it is asked for.
  void SetLastComment(std::string_view text, std::int32_t index, std::int32_t sourceLine);
  /// The line of the block on which the last comment stands, 1-based; 0 without one.
  std::int32_t LastCommentIndex() const;
  void SetCompletelyLoaded() { mCompletelyLoaded = true; }
  void AddAttribute(std::string_view text);
  void SetStoredLines(std::int32_t start, std::int32_t end) {
    mStartLine = start;
    mEndLine = end;
  }

 private:
  friend class Blocks;
  // A part of the text that `CodeLines` point into.
  struct TextPart {
    std::uint32_t Offset = 0;
    std::uint32_t Length = 0;
  };
  struct FurtherAttributes {
    std::vector<TextPart> Parts;
    std::vector<std::string> Texts;  // all of them, once they were asked for
    bool AreTexts = false;
  };
  // What ends with the source beside the lines; most procedures have nothing of it once they are
  // read.
  struct KeptParts {
    OnDemand<IntakeState> Intake;
    std::shared_ptr<TaggedComment> LastTaggedComment;
    TextPart Comment;  // the last comment, while it is no object
    std::int32_t CommentIndex = 0;
    std::int32_t CommentLine = 0;
    TextPart Attribute;  // the first one
    std::unique_ptr<FurtherAttributes> Attributes;
  };
  IntakeState& BeginIntake();
  const KeptParts& Kept() const { return *std::as_const(mKept); }
  BlockParts::Further& Further();
  const BlockParts::Further& Further() const;
  bool PartOfText(std::string_view text, TextPart& part) const;
  std::string_view TextOf(const TextPart& part) const;

  SharedText mName;
  /// Not among the rare parts: most blocks of an assembly have it.
  SharedText mInheritedFrom;
  Blocks* mOwner = nullptr;
  WeakHandle<ProjectOptions> mProject;
  mutable OnDemand<KeptParts> mKept;
};

}  // namespace vendrel
