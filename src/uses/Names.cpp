// What a bare name means: scope by scope, from the inside out.

#include "core/Ascii.h"
#include "uses/ModuleBinder.h"

namespace vendrel {
namespace {

UseKind KindOfBuiltin(const BuiltinMember& member) {
  return member.Kind == BuiltinKind::Function || member.Kind == BuiltinKind::Sub ? UseKind::Call
                                                                                 : UseKind::Read;
}

bool IsQualifierType(const BuiltinType* type) {
  return type && (type->Kind == BuiltinTypeKind::Module ||
                  type->Kind == BuiltinTypeKind::Enumeration || type->IsGlobal);
}

}  // namespace

bool ModuleBinder::IsLibrary(const Component& module) const {
  const VBProject* project = module.VBProject();
  if (project == mProject.Project) return false;
  return !project || project->WasReadFromTypeLibrary || (mIsNet && !module.SourceForm);
}

UseAnswer ModuleBinder::AnswerOf(const Entry& entry) const {
  switch (entry.Sort) {
    case EntrySort::Local: return UseAnswer::Local;
    case EntrySort::Parameter: return UseAnswer::Parameter;
    case EntrySort::Field: return UseAnswer::Field;
    default: break;
  }
  if (entry.Home && entry.Home != mModule) {
    if (IsLibrary(*entry.Home)) return UseAnswer::Library;
  }
  if (mIsNet && entry.Home && entry.Sort == EntrySort::Variable) {
    if (entry.Home->IsEnumeration) return UseAnswer::EnumMember;
    if (entry.Home->IsStructure && entry.Home != mModule) return UseAnswer::Field;
  }
  switch (entry.Sort) {
    case EntrySort::Control: return UseAnswer::Control;
    case EntrySort::EnumMember: return UseAnswer::EnumMember;
    case EntrySort::Enumeration:
    case EntrySort::Structure: return UseAnswer::Type;
    case EntrySort::Project: return UseAnswer::Project;
    default: return entry.Home == mModule ? UseAnswer::OwnModule : UseAnswer::Project;
  }
}

UseValue ModuleBinder::UseOfOwnResult(std::size_t at, const Entry& entry) {
  UseValue value;
  value.Named = &entry;
  value.Type = mScopes.TypeOf(entry);
  const bool called = IsMark(at + 1, mScan.Tokens.size(), '(');
  const Parameters* parameters = mBlock ? mBlock->Parameters.IfAny() : nullptr;
  const bool takesNone = !parameters || parameters->Count() == 0;
  const bool isCall = called && !(takesNone && value.Type.IsArray);
  value.Record = AddUse(at, isCall ? UseKind::Call : UseKind::Read, UseAnswer::OwnModule);
  PendingUse& use = Of(value.Record);
  use.Element = entry.Element;
  use.OwnProcedure = true;
  if (As<PropertyGroup>(entry.Element)) use.Accessor = UseAccessor::Get;
  if (isCall)
    value.Type.IsArray &= !takesNone;
  else
    value.IsStorage = true;
  return value;
}

UseValue ModuleBinder::UseOf(std::size_t at, const Entry& entry) {
  if (entry.Sort == EntrySort::OwnResult) return UseOfOwnResult(at, entry);
  UseValue value;
  value.Named = &entry;
  const bool isAmbiguous = entry.Next && entry.Next->Home != entry.Home;
  value.Record = AddUse(at, UseKind::Read, isAmbiguous ? UseAnswer::Ambiguous : AnswerOf(entry));
  PendingUse& use = Of(value.Record);
  use.Element = isAmbiguous ? nullptr : entry.Element;
  use.Ambiguous = isAmbiguous ? &entry : nullptr;
  switch (entry.Sort) {
    case EntrySort::Procedure:
    case EntrySort::Declare:
      use.Kind = UseKind::Call;
      use.OwnProcedure = mBlock && entry.Element == mBlock;
      break;
    case EntrySort::Property:
      use.Accessor = UseAccessor::Get;
      use.OwnProcedure = mBlock && mBlock->IsPropertyType() && entry.Home == mModule &&
                         EqualsNoCaseAscii(mBlock->Name(), entry.Element->ElementName());
      break;
    case EntrySort::Module:
      if (entry.Home->FileType == ftModule) {
        use.Kind = UseKind::Qualify;
        value.Sort = UseValue::Of::Module;
      }
      break;
    case EntrySort::Enumeration:
      use.Kind = UseKind::Qualify;
      value.Sort = UseValue::Of::Enumeration;
      break;
    case EntrySort::Control: use.WholeArray = entry.IsArrayOfControls; break;
    case EntrySort::Local:
    case EntrySort::Parameter:
    case EntrySort::Variable:
    case EntrySort::Field: value.IsStorage = !entry.IsConstant; break;
    default: break;
  }
  value.Type = mScopes.TypeOf(entry);
  return value;
}

UseValue ModuleBinder::UseOfMember(std::size_t at, const BuiltinMember& member) {
  UseValue value;
  value.Member = &member;
  value.Record = AddUse(at, KindOfBuiltin(member), UseAnswer::Library);
  Of(value.Record).Member = &member;
  value.Type = mScopes.TypeOfMember(member);
  return value;
}

UseValue ModuleBinder::UseOfHolder(std::size_t at, const BuiltinType& type) {
  UseValue value;
  value.Sort = UseValue::Of::BuiltinHolder;
  value.Holder = &type;
  value.Record = AddUse(at, UseKind::Qualify, UseAnswer::Library);
  Of(value.Record).Type = &type;
  return value;
}

UseValue ModuleBinder::UseOfProject(std::size_t at, ProjectScope& project) {
  UseValue value;
  value.Sort = UseValue::Of::Project;
  value.Project = &project;
  value.Record =
      AddUse(at, UseKind::Qualify, project.IsLibrary ? UseAnswer::Library : UseAnswer::Project);
  Of(value.Record).Element = project.Project;
  return value;
}

UseValue ModuleBinder::Unbound(std::size_t at, UseAnswer answer, const TypeRef& type) {
  UseValue value;
  value.Type = type;
  value.Record = AddUse(at, UseKind::Read, answer);
  value.IsStorage = answer == UseAnswer::Implicit;
  if (type.Sort == TypeSort::External) Of(value.Record).Library = type.Library();
  return value;
}

UseValue ModuleBinder::UnboundName(std::size_t at) {
  const std::size_t end = mScan.Tokens.size();
  const bool isQualifier = IsMark(at + 1, end, '.') && !At(at + 1).GapBefore;
  const bool isCall = IsMark(at + 1, end, '(') && !At(at + 1).GapBefore;
  if (mProject.MissesReferences && (isQualifier || isCall || IsExplicit())) {
    const std::string_view library = isQualifier ? mScan.TextOf(At(at)) : std::string_view();
    const TypeRef type{TypeSort::External, false, mScopes.LibraryName(library)};
    UseValue value = Unbound(at, UseAnswer::External, type);
    if (isQualifier) Of(value.Record).Kind = UseKind::Qualify;
    if (isCall) Of(value.Record).Kind = UseKind::Call;
    return value;
  }
  if (IsExplicit() || isCall) return Unbound(at, UseAnswer::Unknown, {});
  return Unbound(at, UseAnswer::Implicit, {TypeSort::Late, false, nullptr});
}

// A property of the own base that takes no arguments: Left(s, 1) in a form is the function.
bool ModuleBinder::YieldsToFunction(std::size_t at, const BuiltinMember& member) const {
  if (At(at).Suffix) return true;
  return member.Kind == BuiltinKind::Property && member.Parameters.empty() &&
         IsMark(at + 1, mScan.Tokens.size(), '(') &&
         mScopes.Table().FindGlobal(mScopes.Names().TextOf(At(at).Name)) != nullptr;
}

bool ModuleBinder::BindProjectName(std::size_t at, ProjectScope& project, bool own,
                                   UseValue& value) {
  const Symbol name = At(at).Name;
  const bool dotFollows = IsMark(at + 1, mScan.Tokens.size(), '.');
  if (const auto found = project.Names.find(name); found != project.Names.end()) {
    const ProjectName& meaning = found->second;
    const Entry* entry = nullptr;
    const bool isModule = meaning.Module && (own || project.IsLibrary || dotFollows);
    // A class by itself is no object: `Public Log As New Log` is what Log.Write means.
    const bool isNoObject = isModule && meaning.Module->Home->FileType == ftClass;
    if (isModule && (!meaning.Member || (dotFollows && !isNoObject)))
      entry = meaning.Module;
    else if (meaning.Member)
      entry = meaning.Member;
    else if (meaning.EnumMember)
      entry = meaning.EnumMember;
    else if (meaning.Type && meaning.Type->Sort == EntrySort::Enumeration && dotFollows)
      entry = meaning.Type;
    if (entry) {
      value = UseOf(at, *entry);
      return true;
    }
  }
  if (name != project.Own.Name || !dotFollows) return false;
  value = UseOfProject(at, project);
  return true;
}

bool ModuleBinder::BindBuiltinName(std::size_t at, UseValue& value) {
  const Symbol name = At(at).Name;
  if (const BuiltinMember* member = mScopes.Global(name)) {
    value = UseOfMember(at, *member);
    return true;
  }
  if (!IsMark(at + 1, mScan.Tokens.size(), '.')) return false;
  const std::string_view text = mScopes.Names().TextOf(name);
  if (mScopes.Table().IsLibrary(text)) {
    value.Sort = UseValue::Of::Library;
    value.Library = text;
    value.Record = AddUse(at, UseKind::Qualify, UseAnswer::Library);
    Of(value.Record).Library = mScopes.LibraryName(mScan.TextOf(At(at)));
    return true;
  }
  const BuiltinType* type = mScopes.Table().FindType(text);
  if (!IsQualifierType(type)) return false;
  value = UseOfHolder(at, *type);
  return true;
}

UseValue ModuleBinder::BindName(std::size_t at) {
  if (mIsNet) return BindNetName(at);
  const Symbol name = At(at).Name;
  const bool dotFollows = IsMark(at + 1, mScan.Tokens.size(), '.');
  if (const Entry* local = Local(name)) return UseOf(at, *local);
  if (const Entry* member = mScope->Members.Find(name)) return UseOf(at, *member);
  if (dotFollows)
    if (const Entry* type = mScope->Types.Find(name); type && type->Sort == EntrySort::Enumeration)
      return UseOf(at, *type);
  if (mScope->Base) {
    if (const BuiltinMember* member = mScopes.Member(*mScope->Base, name);
        member && !YieldsToFunction(at, *member))
      return UseOfMember(at, *member);
    if (mModule->FileType != ftForm &&
        EqualsNoCaseAscii(mScopes.Names().TextOf(name), mScope->Base->Name)) {
      UseValue value;  // the control's own base
      value.Type = {TypeSort::Builtin, false, mScope->Base};
      value.Record = AddUse(at, UseKind::Read, UseAnswer::Library);
      Of(value.Record).Type = mScope->Base;
      return value;
    }
  }
  UseValue value;
  if (BindProjectName(at, mProject, true, value)) return value;
  for (ProjectScope* reference : mProject.References)
    if (BindProjectName(at, *reference, false, value)) return value;
  if (BindBuiltinName(at, value)) return value;
  return UnboundName(at);
}

}  // namespace vendrel
