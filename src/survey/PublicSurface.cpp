#include "survey/PublicSurface.h"

#include <array>
#include <unordered_map>
#include <unordered_set>

#include "core/Ascii.h"
#include "core/CaseFold.h"

namespace vendrel {
namespace {

std::string ArrayOf(std::string_view type, bool isArray) {
  return std::string(type) + (isArray && !type.ends_with(')') ? "()" : "");
}

bool HasAttribute(const Component& component, std::string_view text) {
  for (const Block& block : component.Blocks.Listed()) {
    if (block.BlockType() != btAttributes) continue;
    for (const std::string& attribute : block.Attributes())
      if (ContainsNoCaseAscii(attribute, text)) return true;
  }
  return false;
}

SurfaceMemberKind KindOfMember(const Block& block, SurfaceWorld world) {
  if (!block.IsPropertyType()) return SurfaceMemberKind::Method;
  if (world == SurfaceWorld::Net) return SurfaceMemberKind::Property;
  if (block.BlockType() == btPropertyGet) return SurfaceMemberKind::Getter;
  return block.BlockType() == btPropertyLet ? SurfaceMemberKind::Letter : SurfaceMemberKind::Setter;
}

bool TakesObjects(std::string_view type) {
  static constexpr std::array<std::string_view, 11> plain{
      "Boolean", "Byte",   "Currency", "Date",     "Double", "Integer",
      "Long",    "Single", "String",   "LongLong", "LongPtr"};
  for (const std::string_view name : plain)
    if (EqualsNoCaseAscii(type, name)) return false;
  return true;
}

class SurfaceBuilder {
 public:
  SurfaceBuilder(const VBProject& project, const SurfaceOptions& options)
      : mProject(project), mOptions(options) {}

  PublicSurface Build() {
    mSurface.World =
        mProject.LanguageVersion() == lvVisualBasicDotNet ? SurfaceWorld::Net : SurfaceWorld::Com;
    mSurface.IsCompiled = mProject.ProjectSourceType == ptsTypeLibrary;
    mSurface.Library = mProject.ProjectName;
    mSurface.Place = {mProject.FileName.FullPath(), 0};
    mSurface.KeepsBinaryCompatibility =
        !mSurface.IsCompiled && mProject.CompatibleMode == CompatibleBinary;
    const bool isNet = mSurface.World == SurfaceWorld::Net;
    mSurface.IsShared = !mSurface.IsCompiled && !isNet && CountsAll();
    for (const Component& component : mProject.Components.Listed())
      if (isNet ? IsVisibleNet(component) : IsExposed(component)) AddModule(component);
    return std::move(mSurface);
  }

 private:
  bool IsNet() const { return mSurface.World == SurfaceWorld::Net; }

  // Of source; everything that a library tells is exposed.
  bool IsExposed(const Component& component) const {
    if (mSurface.IsCompiled || CountsAll()) return true;
    if (mProject.ProjectType == ptEXE || mProject.ProjectType == ptUnknown) return false;
    return EqualsNoCaseAscii(component.Access, "PUBLIC");
  }
  bool CountsAll() const {
    return mOptions.AllModules || mProject.ProjectSourceType == ptsVisualBasicFiles;
  }

  // A nested type is seen where the type around it is, which stands in front of it.
  bool IsVisibleNet(const Component& component) {
    if (!IsSeen(component.Access)) return false;
    const std::string name = FoldKey(component.FullName());
    const std::size_t dot = name.rfind('.');
    if (component.IsNested && dot != std::string::npos && !mSurface.IsCompiled &&
        !mSeen.contains(name.substr(0, dot)))
      return false;
    mSeen.insert(name);
    return true;
  }

  bool IsSeen(std::string_view access) const {
    if (EqualsNoCaseAscii(access, "PUBLIC")) return true;
    return IsNet() && StartsWithNoCaseAscii(access, "PROTECTED");
  }

  void AddModule(const Component& component) {
    SurfaceType type;
    type.Name = IsNet() ? component.FullName() : component.Name;
    type.Kind = KindOf(component);
    type.Element = component.QualifiedName();
    type.Place = {FileOf(component), component.SourceLine()};
    type.DefaultMember = component.DefaultMemberName;
    type.IsAbstract = component.IsAbstract && !component.IsInterface;
    type.IsSealed = component.IsSealed;
    type.IsCreatable =
        IsNet() || mSurface.IsCompiled || HasAttribute(component, "VB_Creatable = True");
    type.IsGlobal = HasAttribute(component, "VB_GlobalNameSpace = True");
    if (IsNet() && type.Kind == SurfaceTypeKind::Class) type.Base = component.InheritsFrom;
    for (const Interface& interface : component.Interfaces)
      type.Interfaces.push_back(interface.Name);
    AddFields(component, type);
    for (const Block& block : component.Blocks.Listed()) AddBlock(block, component, type);
    for (const EventDeclaration& event : component.EventDeclarations.Listed())
      AddEvent(event, component, type);
    // What a module of a library holds besides is a type of its own.
    const bool isHolder = mSurface.IsCompiled && !IsNet() && type.Members.empty() &&
                          component.Enumerations.Count() + component.UDTs.Count() > 0;
    if (!isHolder) mSurface.Types.push_back(std::move(type));
    AddTypesOf(component);
  }

  SurfaceTypeKind KindOf(const Component& component) const {
    if (component.IsInterface) return SurfaceTypeKind::Interface;
    if (component.IsStructure) return SurfaceTypeKind::Structure;
    if (component.IsEnumeration || (IsNet() && component.InheritsFrom == "System.Enum"))
      return SurfaceTypeKind::Enumeration;
    if (IsNet() && component.Name == "__Delegates") return SurfaceTypeKind::Delegate;
    return component.FileType == ftModule ? SurfaceTypeKind::Module : SurfaceTypeKind::Class;
  }

  // A type of a library stands in no file of its own.
  std::string FileOf(const Component& component) const {
    const std::string file = component.FileName.FullPath();
    return file.empty() ? mProject.FileName.FullPath() : file;
  }

  SurfaceMember NewMember(SurfaceMemberKind kind, std::string_view name, const CodeElement& element,
                          const Component& component) const {
    SurfaceMember member;
    member.Kind = kind;
    member.Name = name;
    member.Element = element.QualifiedName();
    member.Place = {FileOf(component), element.SourceLine()};
    return member;
  }

  // The fields of a class; of a class of COM each as the property by which it is reached.
  void AddFields(const Component& component, SurfaceType& type) {
    for (const Block& block : component.Blocks.Listed()) {
      if (block.BlockType() != btDeclarations) continue;
      for (const Constant& constant : *block.Constants)
        if (IsSeen(constant.Access)) {
          SurfaceMember member =
              NewMember(SurfaceMemberKind::Constant, constant.Name, constant, component);
          member.Type = constant.TypeName;
          member.Value = constant.Value;
          type.Members.push_back(std::move(member));
        }
      for (const Variable& variable : *block.Variables)
        if (IsSeen(variable.Access)) AddVariable(variable, component, type);
    }
  }

  void AddVariable(const Variable& variable, const Component& component, SurfaceType& type) {
    const bool isEnumerated = type.Kind == SurfaceTypeKind::Enumeration;
    SurfaceMember member =
        NewMember(isEnumerated ? SurfaceMemberKind::EnumMember : SurfaceMemberKind::Field,
                  variable.Name, variable, component);
    if (isEnumerated) {
      member.Value = NumberedValue(variable.Value.str(), type);
      type.Members.push_back(std::move(member));
      return;
    }
    member.Type = ArrayOf(variable.TypeName, variable.IsArray);
    member.IsStatic = variable.IsStatic;
    member.IsProtected = StartsWithNoCaseAscii(variable.Access, "PROTECTED");
    if (IsNet() || type.Kind != SurfaceTypeKind::Class) {
      type.Members.push_back(std::move(member));
      return;
    }
    const std::string_view name = variable.TypeName;
    const bool isObject = TakesObjects(name) && !EqualsNoCaseAscii(name, "Variant");
    SurfaceMember writer = member;
    member.Kind = SurfaceMemberKind::Getter;
    writer.Kind = isObject ? SurfaceMemberKind::Setter : SurfaceMemberKind::Letter;
    writer.Parameters.push_back({"RHS", std::move(writer.Type), {}, {}, false, false, false});
    writer.Type.clear();
    type.Members.push_back(std::move(member));
    if (EqualsNoCaseAscii(name, "Variant")) {
      type.Members.push_back(writer);
      writer.Kind = SurfaceMemberKind::Setter;
    }
    type.Members.push_back(std::move(writer));
  }

  // Without a value of its own a member follows the one in front of it.
  static std::string NumberedValue(std::string value, const SurfaceType& type) {
    if (!value.empty()) return value;
    if (type.Members.empty()) return "0";
    const std::string& last = type.Members.back().Value;
    const bool isNumber = !last.empty() && last.size() < 10 &&
                          last.find_first_not_of("0123456789", last[0] == '-') == std::string::npos;
    return isNumber && last != "-" ? std::to_string(std::stol(last) + 1) : last + " + 1";
  }

  void AddBlock(const Block& block, const Component& component, SurfaceType& type) {
    if (block.OverloadBlocks().IfAny() && block.OverloadBlocks()->Count() > 0) {
      for (const Block& overload : block.OverloadBlocks()->Listed())
        AddBlock(overload, component, type);
      return;
    }
    const bool isHiddenOfLibrary = mSurface.IsCompiled && !IsNet() && block.IsHiddenMember;
    if (block.Name().empty() || (!IsSeen(block.Access) && !isHiddenOfLibrary)) return;
    if (!block.InheritedFrom().str().empty()) return;
    // An overload bears the types of its parameters behind its name.
    const std::string_view name = block.Name().substr(0, block.Name().find('('));
    SurfaceMember member = NewMember(KindOfMember(block, mSurface.World), name, block, component);
    member.Type = ArrayOf(block.ReturnType, block.ReturnTypeIsArray);
    if (IsWriter(member.Kind)) member.Type.clear();
    member.IsStatic = IsNet() && block.IsStatic;
    member.IsAbstract = block.IsAbstract;
    member.IsVirtual = (block.IsVirtual || block.IsAbstract) && !block.IsSealed;
    member.IsProtected = StartsWithNoCaseAscii(block.Access, "PROTECTED");
    member.IsReadOnly = member.Kind == SurfaceMemberKind::Property && block.PropertyType == ptRead;
    AddParameters(*block.Parameters, member);
    member.Content = CodeContent(block);
    type.Members.push_back(std::move(member));
  }

  static bool IsWriter(SurfaceMemberKind kind) {
    return kind == SurfaceMemberKind::Letter || kind == SurfaceMemberKind::Setter;
  }

  void AddParameters(const Parameters& parameters, SurfaceMember& member) {
    for (const Parameter& parameter : parameters)
      member.Parameters.push_back(
          {parameter.Name(), ArrayOf(parameter.VariableType, parameter.IsArray),
           parameter.DefaultValue.str(), ValueOf(parameter.DefaultValue), parameter.IsByRef,
           parameter.IsOptional, parameter.IsParamArray});
  }

  // What the name of a constant stands for; of several the first one. Other texts stay.
  std::string ValueOf(std::string_view text) {
    if (text.empty() || !IsLetterAscii(text.front())) return std::string(text);
    if (!mHasConstants) GatherConstants();
    const auto found = mConstants.find(FoldKey(text.substr(text.rfind('.') + 1)));
    return found == mConstants.end() ? std::string(text) : found->second;
  }
  void GatherConstants() {
    mHasConstants = true;
    for (const Component& component : mProject.Components.Listed()) {
      for (const Block& block : component.Blocks.Listed())
        if (block.BlockType() == btDeclarations)
          for (const Constant& constant : *block.Constants)
            mConstants.try_emplace(FoldKey(constant.Name), constant.Value);
      for (const Enumeration& enumeration : component.Enumerations)
        for (const EnumMember& element : enumeration.Members())
          mConstants.try_emplace(FoldKey(element.Name), element.Value);
    }
  }

  void AddEvent(const EventDeclaration& event, const Component& component, SurfaceType& type) {
    if (!event.InheritedFrom.str().empty() || !IsSeen(event.Access)) return;
    SurfaceMember member = NewMember(SurfaceMemberKind::Event, event.Name, event, component);
    member.Type = event.DelegateName;
    AddParameters(*event.Parameters, member);
    type.Members.push_back(std::move(member));
  }

  void AddTypesOf(const Component& component) {
    for (const Enumeration& enumeration : component.Enumerations) {
      if (!IsSeen(enumeration.Access)) continue;
      SurfaceType type = NewType(SurfaceTypeKind::Enumeration, enumeration, component);
      for (const EnumMember& element : enumeration.Members()) {
        SurfaceMember member =
            NewMember(SurfaceMemberKind::EnumMember, element.Name, element, component);
        member.Value = NumberedValue(element.Value, type);
        type.Members.push_back(std::move(member));
      }
      mSurface.Types.push_back(std::move(type));
    }
    for (const UDT& udt : component.UDTs) {
      if (!IsSeen(udt.Access)) continue;
      SurfaceType type = NewType(SurfaceTypeKind::Structure, udt, component);
      for (const Variable& element : udt.Members) {
        SurfaceMember member =
            NewMember(SurfaceMemberKind::Field, element.Name, element, component);
        member.Type = ArrayOf(element.TypeName, element.IsArray);
        if (!element.ArraySubscript.str().empty())
          member.Type.insert(member.Type.size() - 1, element.ArraySubscript.str());
        type.Members.push_back(std::move(member));
      }
      mSurface.Types.push_back(std::move(type));
    }
  }

  template <typename Element>
  SurfaceType NewType(SurfaceTypeKind kind, const Element& element,
                      const Component& component) const {
    SurfaceType type;
    type.Kind = kind;
    type.Name = element.Name;
    type.Element = element.QualifiedName();
    type.Place = {FileOf(component), element.SourceLine()};
    return type;
  }

  const VBProject& mProject;
  const SurfaceOptions& mOptions;
  PublicSurface mSurface;
  std::unordered_set<std::string> mSeen;
  bool mHasConstants = false;
  std::unordered_map<std::string, std::string> mConstants;
};

}  // namespace

PublicSurface SurfaceOf(const VBProject& project, const SurfaceOptions& options) {
  return SurfaceBuilder(project, options).Build();
}

std::string_view WordOf(SurfaceTypeKind kind) {
  static constexpr std::array<std::string_view, 6> words{"class",       "interface", "structure",
                                                         "enumeration", "module",    "delegates"};
  return words[static_cast<std::size_t>(kind)];
}

std::string_view WordOf(SurfaceMemberKind kind) {
  static constexpr std::array<std::string_view, 9> words{
      "method", "property-get", "property-let", "property-set",      "property",
      "field",  "constant",     "event",        "enumeration-member"};
  return words[static_cast<std::size_t>(kind)];
}

std::string SignatureOf(const SurfaceParameter& parameter) {
  std::string text = parameter.ParamArray ? "ParamArray " : parameter.ByRef ? "ByRef " : "ByVal ";
  text.append(parameter.Name).append(" As ").append(parameter.Type);
  if (!parameter.Default.empty()) text.append(" = ").append(parameter.Default);
  return parameter.Optional && !parameter.ParamArray ? "[" + text + "]" : text;
}

std::string SignatureOf(const SurfaceMember& member) {
  std::string text = member.Name;
  const bool isProcedure =
      member.Kind <= SurfaceMemberKind::Setter || member.Kind == SurfaceMemberKind::Event;
  if (isProcedure || !member.Parameters.empty()) {
    text += "(";
    for (const SurfaceParameter& parameter : member.Parameters)
      text.append(&parameter == &member.Parameters.front() ? "" : ", ")
          .append(SignatureOf(parameter));
    text += ")";
  }
  if (!member.Type.empty()) text.append(" As ").append(member.Type);
  if (!member.Value.empty()) text.append(" = ").append(member.Value);
  return text;
}

}  // namespace vendrel
