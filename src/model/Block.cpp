#include "model/Block.h"

#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "model/Component.h"
#include "model/Namespace.h"
#include "text/Identifiers.h"

namespace vendrel {

struct Block::RareParts {
  SharedText ImplementsName;
  SharedText DelegateQualifiedName;
  SharedText DocumentedArguments;
  std::shared_ptr<Block> Setter;
  WeakHandle<vendrel::Namespace> Namespace;
  OnDemand<Blocks> OverloadBlocks;
  OnDemand<vendrel::Permissions> Permissions;
  OnDemand<vendrel::Exceptions> Exceptions;
};

Block::Block() : BlockID(State().NextBlockID()) {}
Block::~Block() = default;

void Block::SetName(std::string_view name) {
  const std::string old = std::exchange(mName, std::string(name));
  if (mShared)
    ++Blocks::sSharedChanges;
  else if (mOwner)
    mOwner->Renamed(*this, old);
}

void Block::SetBlockType(BlockTypeEnum type) {
  const BlockTypeEnum old = std::exchange(mBlockType, type);
  if (mShared)
    ++Blocks::sSharedChanges;
  else if (mOwner)
    mOwner->Retyped(*this, old);
}

const SharedText& Block::InheritedFrom() const { return mInheritedFrom; }
const SharedText& Block::ImplementsName() const { return mRare->ImplementsName; }
const SharedText& Block::DelegateQualifiedName() const { return mRare->DelegateQualifiedName; }
const std::shared_ptr<Block>& Block::Setter() const { return mRare->Setter; }
const OnDemand<Blocks>& Block::OverloadBlocks() const { return mRare->OverloadBlocks; }
OnDemand<Permissions>& Block::Permissions() { return mRare->Permissions; }
OnDemand<Exceptions>& Block::Exceptions() { return mRare->Exceptions; }
const OnDemand<Permissions>& Block::Permissions() const { return mRare->Permissions; }
const OnDemand<Exceptions>& Block::Exceptions() const { return mRare->Exceptions; }
Blocks* Block::Overloads() {
  RareParts* rare = mRare.IfAny();
  return rare ? rare->OverloadBlocks.IfAny() : nullptr;
}
vendrel::Namespace* Block::Namespace() const { return mRare->Namespace.Get(); }

const SharedText& Block::DocumentedArguments() const { return mRare->DocumentedArguments; }

void Block::SetDocumentedArguments(std::string_view text) { mRare->DocumentedArguments = text; }
void Block::SetDelegateQualifiedName(std::string_view name) { mRare->DelegateQualifiedName = name; }
void Block::SetImplementsName(std::string_view name) { mRare->ImplementsName = name; }
void Block::SetSetter(std::shared_ptr<Block> setter) { mRare->Setter = std::move(setter); }

void Block::SetInheritedFrom(std::string_view name) {
  if (name != InheritedFrom()) mInheritedFrom = name;
}

void Block::ShareInheritedFrom(const SharedText& name) { mInheritedFrom = name; }

void Block::AddOverload(std::shared_ptr<Block> overload, std::string_view key) {
  mRare->OverloadBlocks->Add(std::move(overload), key);
}

void Block::SetOverloaded(bool value) { mOverloaded = value; }
void Block::SetIsDelegate(bool value) { mIsDelegate = value; }

void Block::SetNamespace(vendrel::Namespace* value) {
  if (value || mRare.IfAny()) mRare->Namespace = value;
  if (mShared)
    ++Blocks::sSharedChanges;
  else if (mOwner)
    mOwner->mNamespaced = true;
}

const ProjectOptions& Block::Options() const {
  const ProjectOptions* project = mProject.Get();
  return project ? *project : ProjectOptions::Defaults();
}

std::string Block::FullName() const {
  const vendrel::Namespace* space = mIsDelegate ? Namespace() : nullptr;
  return space ? space->Name + "." + mName : mName;
}

std::string Block::OverloadedMethodSignature() const {
  std::string signature(ShortName(mName));
  signature += '(';
  bool first = true;
  for (const Parameter& parameter : *Parameters) {
    if (!first) signature += ',';
    first = false;
    signature += ShortName(parameter.VariableType);
    if (parameter.IsArray) signature += "[]";
  }
  return signature += ')';
}

bool Block::IsMethod() const {
  switch (mBlockType) {
    case btFunction:
    case btSub:
    case btClassInitialize:
    case btClassTerminate:
    case btFormLoad:
    case btFormUnload:
    case btUserControlInitialise:
    case btUserControlTerminate:
    case btUserDocumentInitialise:
    case btUserDocumentTerminate: return true;
    default: return false;
  }
}

bool Block::IsPropertyType() const {
  return mBlockType == btPropertyGet || mBlockType == btPropertyLet || mBlockType == btPropertySet;
}

const std::vector<std::string>& Block::Attributes() const { return mKept->Attributes; }

void Block::AddAttribute(std::string_view text) { mKept->Attributes.emplace_back(text); }

void Block::SetLastTaggedComment(std::shared_ptr<TaggedComment> comment) {
  mKept->LastTaggedComment = std::move(comment);
}

Block::IntakeState& Block::BeginIntake() {
  IntakeState& intake = *mKept->Intake;
  static_cast<IntakeMarks&>(intake) = mMarks;
  return intake;
}

void Block::RestIntake() {
  const IntakeState* state = mKept.IfAny() ? mKept->Intake.IfAny() : nullptr;
  if (!state || state->CurrentEnum || state->CurrentUDT || !state->CommentBuffer.empty() ||
      !state->mLastTagIdentifier.empty() || !state->mLastQualifier.empty())
    return;
  mMarks = *state;
  mKept->Intake.Drop();
  if (!mKept->LastTaggedComment && mKept->Attributes.empty()) mKept.Drop();
}

void Block::UnloadSourceCode() try {
  if (mBlockType != btDeclarations)
    Variables.Drop();
  else if (vendrel::Variables* variables = Variables.IfAny()) {
    for (Variable& variable : *variables) variable.UnTaggedDescription.clear();
    variables->Fit();
  }
  DefinitionLine = {};
  UnTaggedDescription.clear();
  CodeLines.Drop();
  Parameters.Drop();
  mKept.Drop();
  mMarks = {};
  Constants.Drop();
}
VENDREL_CONTEXT(*this)

std::shared_ptr<Block> Block::Clone(vendrel::Component* NewComponent, bool CopyComments) const try {
  auto copy = std::make_shared<Block>();
  copy->Component = NewComponent;
  if (NewComponent) copy->SetVBProject(NewComponent->Project());
  copy->mBlockType = mBlockType;
  copy->mName = mName;
  copy->Access = Access;
  copy->ReturnType = ReturnType;
  copy->ReturnTypeIsArray = ReturnTypeIsArray;
  copy->IsStatic = IsStatic;
  copy->IsVirtual = IsVirtual;
  copy->IsShadow = IsShadow;
  copy->IsSealed = IsSealed;
  copy->ExcludeFlag = ExcludeFlag;
  copy->IsConstructor = IsConstructor;
  copy->mOverloaded = mOverloaded;
  copy->PropertyType = PropertyType;
  if (CopyComments) {
    copy->UnTaggedDescription = UnTaggedDescription;
    copy->TaggedDescription = TaggedDescription;
    for (const TaggedComment& comment : *TaggedComments)
      AddUnderFreeKey<TaggedComment>(*copy->TaggedComments, comment.Clone(), comment.TagIdentifier);
  }
  for (const Parameter& parameter : *Parameters) {
    const auto parameterCopy = parameter.Clone(CopyComments);
    parameterCopy->Parent = copy.get();
    copy->Parameters->Add(parameterCopy, parameter.Name());
  }
  if (const Blocks* overloads = OverloadBlocks().IfAny())
    for (const Block& overload : *overloads)
      copy->AddOverload(overload.Clone(NewComponent, false), overload.Name());
  return copy;
}
VENDREL_CONTEXT(NewComponent, CopyComments, *this)

Parameter* Block::netCreateParameter(std::string_view name, std::string_view typeName,
                                     std::string_view defaultValue, bool isOptional,
                                     std::string_view parameterType) {
  const auto parameter = CreateParameter(name, typeName, defaultValue, isOptional, parameterType);
  parameter->Parent = this;
  return Parameters->Add(parameter, name) ? parameter.get() : Parameters->Item(name);
}

}  // namespace vendrel
