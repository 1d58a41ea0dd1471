#include "model/Block.h"

#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "model/Component.h"
#include "model/Namespace.h"
#include "text/Identifiers.h"

namespace vendrel {

struct BlockParts::Further {
  SharedText ImplementsName;
  SharedText DelegateQualifiedName;
  SharedText DocumentedArguments;
  std::shared_ptr<Block> Setter;
  WeakHandle<vendrel::Namespace> Namespace;
  OnDemand<Blocks> OverloadBlocks;
  OnDemand<vendrel::Permissions> Permissions;
  OnDemand<vendrel::Exceptions> Exceptions;
};

BlockParts::BlockParts() = default;
BlockParts::~BlockParts() = default;

BlockParts::Further& Block::Further() {
  std::unique_ptr<BlockParts::Further>& further = mParts.Make().More;
  if (!further) further = std::make_unique<BlockParts::Further>();
  return *further;
}

const BlockParts::Further& Block::Further() const {
  static const BlockParts::Further none;
  const BlockParts::Further* further = mParts.Read().More.get();
  return further ? *further : none;
}

Block::Block() : BlockID(State().NextBlockID()) {}
Block::~Block() {
  CodeLines.~OnDemand();
  mParts.Free();
}

void Block::SetName(std::string_view name) {
  const SharedText old = std::exchange(mName, SharedText(name));
  if (mShared)
    ++Blocks::sSharedChanges;
  else if (mOwner)
    mOwner->Renamed(*this, old);
}

void Block::SetBlockType(BlockTypeEnum type) {
  const BlockTypeEnum old = BlockType();
  mBlockType = static_cast<std::uint8_t>(type);
  if (mShared)
    ++Blocks::sSharedChanges;
  else if (mOwner)
    mOwner->Retyped(*this, old);
}

const SharedText& Block::InheritedFrom() const { return mInheritedFrom; }
const SharedText& Block::ImplementsName() const { return Further().ImplementsName; }
const SharedText& Block::DelegateQualifiedName() const { return Further().DelegateQualifiedName; }
const std::shared_ptr<Block>& Block::Setter() const { return Further().Setter; }
const OnDemand<Blocks>& Block::OverloadBlocks() const { return Further().OverloadBlocks; }
OnDemand<Permissions>& Block::Permissions() { return Further().Permissions; }
OnDemand<Exceptions>& Block::Exceptions() { return Further().Exceptions; }
const OnDemand<Permissions>& Block::Permissions() const { return Further().Permissions; }
const OnDemand<Exceptions>& Block::Exceptions() const { return Further().Exceptions; }
Blocks* Block::Overloads() {
  const BlockParts* parts = mParts.IfMade();
  return parts && parts->More ? parts->More->OverloadBlocks.IfAny() : nullptr;
}
vendrel::Namespace* Block::Namespace() const { return Further().Namespace.Get(); }

const SharedText& Block::DocumentedArguments() const { return Further().DocumentedArguments; }

void Block::SetDocumentedArguments(std::string_view text) { Further().DocumentedArguments = text; }
void Block::SetDelegateQualifiedName(std::string_view name) {
  Further().DelegateQualifiedName = name;
}
void Block::SetImplementsName(std::string_view name) { Further().ImplementsName = name; }
void Block::SetSetter(std::shared_ptr<Block> setter) { Further().Setter = std::move(setter); }

void Block::SetInheritedFrom(std::string_view name) {
  if (name != InheritedFrom()) mInheritedFrom = name;
}

void Block::ShareInheritedFrom(const SharedText& name) { mInheritedFrom = name; }

void Block::AddOverload(std::shared_ptr<Block> overload, std::string_view key) {
  Further().OverloadBlocks->Add(std::move(overload), key);
}

void Block::SetOverloaded(bool value) { mOverloaded = value; }
void Block::SetIsDelegate(bool value) { mIsDelegate = value; }

void Block::SetNamespace(vendrel::Namespace* value) {
  if (value || Namespace()) Further().Namespace = value;
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
  return space ? space->Name + "." + mName : mName.str();
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
  switch (BlockType()) {
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

bool Block::PartOfText(std::string_view text, TextPart& part) const {
  const std::string* whole = CodeLines.IfAny() ? CodeLines.IfAny()->SourceText() : nullptr;
  if (text.empty() || !whole || text.data() < whole->data() ||
      text.data() + text.size() > whole->data() + whole->size())
    return false;
  part = {static_cast<std::uint32_t>(text.data() - whole->data()),
          static_cast<std::uint32_t>(text.size())};
  return true;
}

std::string_view Block::TextOf(const TextPart& part) const {
  const std::string* whole = CodeLines.IfAny() ? CodeLines.IfAny()->SourceText() : nullptr;
  if (!whole || part.Offset > whole->size()) return {};
  return std::string_view(*whole).substr(part.Offset, part.Length);
}

const std::vector<std::string>& Block::Attributes() const {
  static const std::vector<std::string> none;
  KeptParts* kept = mKept.IfAny();
  if (!kept || (kept->Attribute.Length == 0 && !kept->Attributes)) return none;
  if (!kept->Attributes) kept->Attributes = std::make_unique<FurtherAttributes>();
  FurtherAttributes& all = *kept->Attributes;
  if (!std::exchange(all.AreTexts, true)) {
    if (kept->Attribute.Length > 0) all.Texts.emplace_back(TextOf(kept->Attribute));
    for (const TextPart& part : all.Parts) all.Texts.emplace_back(TextOf(part));
    all.Parts = {};
  }
  return all.Texts;
}

// As parts of the module's text while they are that and nobody has asked for them.
void Block::AddAttribute(std::string_view text) {
  KeptParts& kept = *mKept;
  TextPart part;
  const bool areTexts = kept.Attributes && kept.Attributes->AreTexts;
  if (!areTexts && PartOfText(text, part)) {
    if (kept.Attribute.Length == 0) {
      kept.Attribute = part;
      return;
    }
    if (!kept.Attributes) kept.Attributes = std::make_unique<FurtherAttributes>();
    kept.Attributes->Parts.push_back(part);
    return;
  }
  if (!kept.Attributes) kept.Attributes = std::make_unique<FurtherAttributes>();
  Attributes();
  kept.Attributes->Texts.emplace_back(text);
}

void Block::SetLastTaggedComment(std::shared_ptr<TaggedComment> comment) {
  mKept->LastTaggedComment = std::move(comment);
  mKept->Comment = {};
}

void Block::SetLastComment(std::string_view text, std::int32_t index, std::int32_t sourceLine) {
  KeptParts& kept = *mKept;
  kept.CommentIndex = index;
  kept.CommentLine = sourceLine;
  kept.LastTaggedComment.reset();
  if (PartOfText(text, kept.Comment)) return;
  auto comment = std::make_shared<TaggedComment>();
  comment->LineIndex = index;
  comment->SourceLine = sourceLine;
  comment->Initialise(text);
  SetLastTaggedComment(std::move(comment));
}

std::int32_t Block::LastCommentIndex() const {
  const KeptParts* kept = mKept.IfAny();
  if (!kept) return 0;
  if (kept->Comment.Length > 0) return kept->CommentIndex;
  return kept->LastTaggedComment ? kept->LastTaggedComment->LineIndex : 0;
}

const std::shared_ptr<TaggedComment>& Block::LastTaggedComment() const {
  static const std::shared_ptr<TaggedComment> none;
  KeptParts* kept = mKept.IfAny();
  if (!kept) return none;
  if (kept->Comment.Length > 0) {
    auto comment = std::make_shared<TaggedComment>();
    comment->LineIndex = kept->CommentIndex;
    comment->SourceLine = kept->CommentLine;
    comment->Initialise(TextOf(kept->Comment));
    kept->LastTaggedComment = std::move(comment);
    kept->Comment = {};
  }
  return kept->LastTaggedComment;
}

Block::IntakeState& Block::BeginIntake() {
  IntakeState& intake = *mKept->Intake;
  static_cast<IntakeMarks&>(intake) = mMarks;
  return intake;
}

void Block::RestIntake() {
  KeptParts* kept = mKept.IfAny();
  const IntakeState* state = kept ? kept->Intake.IfAny() : nullptr;
  if (!state || state->CurrentEnum || state->CurrentUDT || !state->CommentBuffer.empty() ||
      !state->mLastTagIdentifier.empty() || !state->mLastQualifier.empty())
    return;
  mMarks = *state;
  kept->Intake.Drop();
  if (!kept->LastTaggedComment && kept->Comment.Length == 0 && kept->Attribute.Length == 0 &&
      !kept->Attributes)
    mKept.Drop();
}

void Block::UnloadSourceCode() try {
  if (mBlockType != btDeclarations)
    Variables.Drop();
  else if (vendrel::Variables* variables = Variables.IfAny()) {
    for (Variable& variable : *variables) variable.UnTaggedDescription.clear();
    variables->Fit();
  }
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
