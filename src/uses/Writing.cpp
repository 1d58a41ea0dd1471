// From a chain that was read to one that is written, handed on by reference or called.

#include "uses/ModuleBinder.h"

namespace vendrel {
namespace {

// The procedures of a property of a library stand by themselves: no group holds them.
const Block* WriterBeside(const Block& block, BlockTypeEnum type) {
  const Component* home = block.OwnComponent();
  if (!home) return nullptr;
  for (const Block* one : home->Blocks.Named(block.Name()))
    if (one->BlockType() == type) return one;
  return nullptr;
}

// The procedure of a property by which it is written; null for one that is only read.
const Block* WriterOf(const CodeElement* element, bool isSet) {
  if (const auto* group = As<PropertyGroup>(element))
    return isSet ? group->PropertySetBlock() : group->PropertyLetBlock();
  const auto* block = As<Block>(element);
  return block ? WriterBeside(*block, isSet ? btPropertySet : btPropertyLet) : nullptr;
}

}  // namespace

// A field is a part of what it stands in, as an element is.
void ModuleBinder::MarkPath(std::int32_t record, bool reads) {
  for (std::int32_t of = Of(record).Path; of != -1; of = Of(of).Path) {
    if (of == -2) {  // what the block With stands on
      const PendingUse written = Of(record);
      for (const PendingUse& part : mWith.back().Path) {
        PendingUse& use = AddSecondary(written, UseKind::Part);
        use.Element = part.Element;
        use.Answer = part.Answer;
        use.Name = part.Name;
        use.Reads = reads;
      }
      return;
    }
    Of(of).Kind = UseKind::Part;
    Of(of).Reads = reads;
  }
}

// The member that an object stands for where a value is wanted. Gives its value in `value`.
bool ModuleBinder::AddDefaultMember(UseValue& value, UseKind kind) {
  if (mIsNet || !value.Type.IsObject() || value.Record < 0) return false;
  const PendingUse object = Of(value.Record);
  if (value.Type.Sort == TypeSort::Module) {
    const Entry* member = mScopes.Of(*value.Type.Module()).DefaultMember;
    if (!member) return false;
    PendingUse& use = AddSecondary(object, kind);
    use.Element = member->Element;
    use.Answer = AnswerOf(*member);
    if (member->Sort == EntrySort::Procedure) use.Kind = UseKind::Call;
    if (member->Sort == EntrySort::Property)
      use.Accessor = kind == UseKind::Write ? UseAccessor::Let : UseAccessor::Get;
    value.Named = member;
    value.Member = nullptr;
    value.Type = mScopes.TypeOf(*member);
  } else {
    const BuiltinMember* member = value.Type.Builtin()->DefaultMember;
    if (!member) return false;
    PendingUse& use = AddSecondary(object, kind);
    use.Member = member;
    use.Answer = UseAnswer::Library;
    if (member->Kind == BuiltinKind::Function) use.Kind = UseKind::Call;
    value.Named = nullptr;
    value.Member = member;
    value.Type = mScopes.TypeOfMember(*member);
  }
  value.IsStorage = false;
  return true;
}

void ModuleBinder::ReadDefault(UseValue& value) {
  if (value.IsLone && value.Sort == UseValue::Of::Value) AddDefaultMember(value, UseKind::Read);
  value.IsLone = false;
}

void ModuleBinder::MarkWrite(UseValue& value, bool isSet) {
  if (value.Record < 0 || value.Sort != UseValue::Of::Value) return;
  PendingUse& use = Of(value.Record);
  const bool isOwnResult = value.Named && value.Named->Sort == EntrySort::OwnResult;
  if (isOwnResult && use.Kind == UseKind::Read) {
    use.Kind = UseKind::Write;
    return;
  }
  const bool isProperty = value.Named && value.Named->Sort == EntrySort::Property;
  if (isProperty) {
    const Block *set = WriterOf(use.Element, true), *let = WriterOf(use.Element, false);
    if (!set && !let && !mIsNet) {  // of VB.NET the constructor writes what only reads elsewhere
      AddDefaultMember(value, UseKind::Write);
      return;
    }
    const bool sets = (isSet && set) || !let;
    use.Kind = UseKind::Write;
    use.Accessor = sets ? UseAccessor::Set : UseAccessor::Let;
    if (!mIsNet && As<Block>(use.Element)) use.Element = sets ? set : let;
    return;
  }
  if (use.Kind == UseKind::Call && use.Answer != UseAnswer::Late &&
      use.Answer != UseAnswer::External && use.Answer != UseAnswer::Unknown) {
    const bool isAssignable = value.Member && !value.HadArguments;  // Date = x
    if (isAssignable)
      use.Kind = UseKind::Write;
    else
      AddDefaultMember(value, UseKind::Write);
    return;
  }
  const bool isObject = value.Type.IsObject() || value.Type.Sort == TypeSort::ControlGroup;
  if (!isSet && isObject && !mIsNet) {  // the object is read
    AddDefaultMember(value, UseKind::Write);
    return;
  }
  use.Kind = UseKind::Write;
  MarkPath(value.Record, false);
}

void ModuleBinder::MarkByReference(UseValue& value) {
  if (value.Record < 0) return;
  PendingUse& use = Of(value.Record);
  if (use.Kind != UseKind::Read) return;
  use.Kind = UseKind::ByReference;
  MarkPath(value.Record, true);
}

// The last name of a statement that assigns nothing.
void ModuleBinder::MarkCall(UseValue& value) {
  if (value.Record < 0 || value.Sort != UseValue::Of::Value) return;
  PendingUse& use = Of(value.Record);
  const bool mayBeAnything = use.Answer == UseAnswer::Late || use.Answer == UseAnswer::External ||
                             use.Answer == UseAnswer::Unknown || use.Answer == UseAnswer::Implicit;
  if (use.Kind == UseKind::Read && mayBeAnything) use.Kind = UseKind::Call;
  if (use.Answer != UseAnswer::Implicit) return;
  use.Answer = mProject.MissesReferences ? UseAnswer::External : UseAnswer::Unknown;
}

// A list of what a statement writes.
void ModuleBinder::ParseTargets(std::size_t from, std::size_t end) {
  for (std::size_t at = from; at < end;) {
    if (!IsWord(at, end) && !IsMemberMark(at, end, false)) {
      ++at;
      continue;
    }
    if (IsWord(at, end, word::Else)) return;
    UseValue target = ParseChain(at, end, false);
    MarkWrite(target, true);
    while (at < end && !IsMark(at, end, ',')) {
      const std::size_t before = at;
      ParseExpression(at, end);
      if (at == before) ++at;
    }
  }
}

}  // namespace vendrel
