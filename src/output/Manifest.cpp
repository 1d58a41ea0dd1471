// What each class of the tree writes of itself. Names, order and repetitions are the format's:
// manifests of many years are compared with each other.

#include "output/Manifest.h"

#include "diagnostics/Context.h"
#include "output/Xml.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

void SetAttributes(XmlElement&) {}

// Pairs of name and value, in the order in which they are written.
template <typename T, typename... More>
void SetAttributes(XmlElement& e, const char* name, const T& value, const More&... more) {
  e.SetAttribute(name, value);
  SetAttributes(e, more...);
}

// One child for each element of a collection, filled by the element. An absent one has none.
template <typename Collection>
void AddChildren(XmlElement& e, const char* name, const Collection* items, bool comments) {
  if (!items) return;
  for (const auto& item : *items) {
    XmlElement child = e.AddElement(name);
    item.Manifest(e.IsDraft() ? child.AsDraft() : child, comments);
  }
}

// An element that holds text alone, and goes when the manifest is stripped.
template <typename Text>
void AddText(XmlElement& e, const char* name, const Text& text) {
  if (!e.IsDraft()) e.AddElement(name, text);
}
void AddTexts(XmlElement& e, const char* name, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) AddText(e, name, text);
}

template <typename Class>
void AddDescriptions(XmlElement& e, const Class& element) {
  AddText(e, "UnTaggedDescription", element.UnTaggedDescription);
  AddText(e, "TaggedDescription", element.TaggedDescription);
}

template <typename Class>
void AddCommentsIf(XmlElement& e, const Class& element, bool wanted) {
  if (wanted) TaggedCommentManifest(e, element.TaggedComments.IfAny());
}

std::int32_t LineCount(const CodeLines* lines) {
  return lines && !lines->Unloaded() ? lines->Count() : 0;
}

void AddDefaultTypes(XmlElement& e, const Component& component) {
  for (const DefaultTypeEntry& entry : component.DefaultTypes())
    AddTexts(e, "DefaultType", entry.Ranges);
}

}  // namespace

void TaggedCommentManifest(XmlElement& e, const TaggedComments* TaggedComments) {
  if (!TaggedComments) return;
  for (const TaggedComment& comment : *TaggedComments) {
    XmlElement child = e.AddElement("TaggedComment", comment.Text);
    SetAttributes(child, "tid", comment.TagIdentifier, "q", comment.Qualifier);
  }
}

void Component::Manifest(XmlElement& e, bool IncludeTaggedComments) const try {
  SetAttributes(e, "Name", Name, "FileName", FileName.FullPath(), "FileType", FileType, "Access",
                Access, "OptionExplicit", OptionExplicit, "OptionCompare", OptionCompare,
                "OptionPrivate", OptionPrivate, "OptionBase", OptionBase, "DefaultMemberName",
                DefaultMemberName);
  AddText(e, "TaggedDescription", TaggedDescription);
  AddText(e, "UntaggedDescription", UnTaggedDescription);
  SetAttributes(e, "IsNew", IsNew, "IncludeFlag", IncludeFlag, "IsExample", IsExample,
                "RelationshipLevels", RelationshipLevels, "RootFlag", RootFlag, "NoLineNumbers",
                NoLineNumbers, "HelpContextID", HelpContextID);
  AddText(e, "CommentBuffer", CommentBuffer);
  if (!e.IsDraft()) AddText(e, "ProjectLine", ProjectLine());
  e.SetAttribute("IsMDI", mIsMDI);
  AddText(e, "VMCommentBuffer", VMCommentBuffer);
  e.SetAttribute("IsCollection", mIsCollection);
  AddDefaultTypes(e, *this);
  const Block* declarations = Blocks.FirstOfType(btDeclarations);
  AddChildren(e, "EventDeclaration", &EventDeclarations, IncludeTaggedComments);
  AddChildren(e, "Enumeration", &Enumerations, IncludeTaggedComments);
  AddChildren(e, "UDT", &UDTs, IncludeTaggedComments);
  AddChildren(e, "Block", &Blocks, IncludeTaggedComments);
  AddChildren(e, "Variable", declarations ? declarations->Variables.IfAny() : nullptr,
              IncludeTaggedComments);
  AddChildren(e, "Constant", Constants(), IncludeTaggedComments);
  AddChildren(e, "Interface", &Interfaces, IncludeTaggedComments);
  AddChildren(e, "DeclareDeclaration", &Declarations, IncludeTaggedComments);
  AddChildren(e, "Example", Examples.IfAny(), IncludeTaggedComments);
  // A module writes its own comments whether they are asked for or not.
  TaggedCommentManifest(e, TaggedComments.IfAny());
}
VENDREL_CONTEXT(IncludeTaggedComments, *this)

void Block::Manifest(XmlElement& e, bool IncludeTaggedComments) const try {
  SetAttributes(e, "Name", mName, "Type", mBlockType, "LineCount", LineCount(CodeLines.IfAny()),
                "HelpContextID", HelpContextID, "StartLine", StartLine(), "EndLine", EndLine(),
                "Interface", Interface, "Access", Access, "ReturnType", ReturnType,
                "ReturnTypeIsArray", ReturnTypeIsArray);
  AddText(e, "DefinitionLine", DefinitionLine);
  SetAttributes(e, "IsFriend", IsFriend, "IsNew", IsNew, "ExcludeFlag", ExcludeFlag,
                "IsHiddenMember", IsHiddenMember, "Consolidated", Consolidated, "IsExample",
                IsExample, "IsStatic", IsStatic, "PropertyType", PropertyType);
  AddChildren(e, "Parameter", Parameters.IfAny(), IncludeTaggedComments);
  if (!e.IsDraft()) AddTexts(e, "Attribute", Attributes());
  AddChildren(e, "Example", Examples.IfAny(), IncludeTaggedComments);
  AddChildren(e, "Constant", Constants.IfAny(), IncludeTaggedComments);
  AddCommentsIf(e, *this, IncludeTaggedComments);
  AddDescriptions(e, *this);
  AddText(e, "ReturnDescription", ReturnDescription);
  AddText(e, "CommentBuffer", CommentBuffer());
}
VENDREL_CONTEXT(IncludeTaggedComments, *this)

void Variable::Manifest(XmlElement& e, bool IncludeTaggedComments) const {
  SetAttributes(e, "Name", Name, "Access", Access, "TypeName", TypeName, "HelpContextID",
                HelpContextID, "IsArray", IsArray, "ArraySubscript", ArraySubscript,
                "FixedLengthString", FixedLengthString, "ImplicitType", ImplicitType, "IsStatic",
                IsStatic);
  AddChildren(e, "Example", Examples.IfAny(), IncludeTaggedComments);
  AddCommentsIf(e, *this, IncludeTaggedComments);
  AddDescriptions(e, *this);
  SetAttributes(e, "IsNew", IsNew, "ExcludeFlag", ExcludeFlag, "IsHiddenMember", IsHiddenMember);
}

void Parameter::Manifest(XmlElement& e, bool IncludeTaggedComments) const {
  AddText(e, "Description", mDescription);
  SetAttributes(e, "VariableType", VariableType, "Name", mName, "IsOptional", IsOptional, "IsByRef",
                IsByRef, "IsParamArray", IsParamArray, "IsArray", IsArray, "DefaultValue",
                DefaultValue, "ImplicitType", ImplicitType);
  AddCommentsIf(e, *this, IncludeTaggedComments);
}

void EventDeclaration::Manifest(XmlElement& e, bool IncludeTaggedComments) const {
  e.SetAttribute("Name", Name);
  AddChildren(e, "Parameter", Parameters.IfAny(), IncludeTaggedComments);
  SetAttributes(e, "HelpContextID", HelpContextID, "IsHiddenMember", IsHiddenMember, "IsNew", IsNew,
                "ExcludeFlag", ExcludeFlag);
  AddDescriptions(e, *this);
  AddChildren(e, "Example", Examples.IfAny(), IncludeTaggedComments);
  AddDescriptions(e, *this);  // the format has them twice
  AddCommentsIf(e, *this, IncludeTaggedComments);
}

void Enumeration::Manifest(XmlElement& e, bool IncludeTaggedComments) const {
  SetAttributes(e, "Name", Name, "Access", Access);
  AddChildren(e, "Member", mMembers.get(), IncludeTaggedComments);
  e.SetAttribute("HelpContextID", HelpContextID);
  AddDescriptions(e, *this);
  SetAttributes(e, "IsHiddenMember", IsHiddenMember, "ExcludeFlag", ExcludeFlag);
  AddCommentsIf(e, *this, IncludeTaggedComments);
}

void EnumMember::Manifest(XmlElement& e, bool IncludeTaggedComments) const {
  SetAttributes(e, "Name", Name, "Value", Value);
  AddDescriptions(e, *this);
  e.SetAttribute("ExcludeFlag", ExcludeFlag);
  AddCommentsIf(e, *this, IncludeTaggedComments);
}

void UDT::Manifest(XmlElement& e, bool IncludeTaggedComments) const {
  SetAttributes(e, "Name", Name, "Access", Access, "HelpContextID", HelpContextID, "ExcludeFlag",
                ExcludeFlag, "IsHiddenMember", IsHiddenMember);
  AddChildren(e, "Member", &Members, IncludeTaggedComments);
  AddChildren(e, "Example", Examples.IfAny(), IncludeTaggedComments);
  AddCommentsIf(e, *this, IncludeTaggedComments);
  AddDescriptions(e, *this);
}

void DeclareDeclaration::Manifest(XmlElement& e, bool IncludeTaggedComments) const {
  SetAttributes(e, "Name", Name, "Alias", Alias, "Library", Library, "Access", Access, "IsFunction",
                IsFunction, "ReturnType", ReturnType, "ReturnTypeIsArray", ReturnTypeIsArray);
  AddChildren(e, "Parameter", Parameters.IfAny(), IncludeTaggedComments);
  AddDescriptions(e, *this);
  e.SetAttribute("ExcludeFlag", ExcludeFlag);
  AddCommentsIf(e, *this, IncludeTaggedComments);
}

void Constant::Manifest(XmlElement& e, bool IncludeTaggedComments) const {
  SetAttributes(e, "Name", Name, "Value", Value, "Access", Access);
  AddText(e, "Description", mDescription);
  AddDescriptions(e, *this);
  AddCommentsIf(e, *this, IncludeTaggedComments);
}

void Interface::Manifest(XmlElement& e, bool IncludeTaggedComments) const {
  SetAttributes(e, "Name", Name, "IsHiddenMember", IsHiddenMember, "IsNew", IsNew, "ExcludeFlag",
                ExcludeFlag);
  AddCommentsIf(e, *this, IncludeTaggedComments);
  AddDescriptions(e, *this);
}

void Example::Manifest(XmlElement& e, bool IncludeTaggedComments) const {
  SetAttributes(e, "Key", Key, "RelatedElement", RelatedElement, "Caption", Caption, "Description",
                mDescription);
  AddText(e, "Text", Text);
  e.SetAttribute("Template", Template);
  if (IncludeTaggedComments) TaggedCommentManifest(e, TaggedComments());
}

void Library::Manifest(XmlElement& e, bool IncludeTaggedComments) const {
  e.SetAttribute("Name", Name);
  AddCommentsIf(e, *this, IncludeTaggedComments);
  AddText(e, "TaggedDescription", TaggedDescription);
  for (const DeclareDeclaration& declaration : DeclareDeclarations)
    AddText(e, "Declaration", declaration.Name);
}

void CompilerConstant::Manifest(XmlElement& e, bool) const {
  SetAttributes(e, "Name", Name, "Value", Value);
}

}  // namespace vendrel
