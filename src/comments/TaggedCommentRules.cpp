#include "comments/TaggedCommentRules.h"

#include "comments/AppendDescription.h"
#include "comments/TagDefinitions.h"
#include "comments/WaitingComments.h"
#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "model/Block.h"
#include "model/Component.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

constexpr std::string_view kBareTag = "##";
constexpr std::string_view kSummaryTag = "##SUMMARY";

std::string KeyOf(const TaggedComment& comment, bool isBuffer, bool isDefined) {
  if (!isBuffer || !isDefined || comment.Qualifier.empty()) return comment.TagIdentifier;
  return comment.TagIdentifier + ":" + comment.Qualifier;
}

bool UpgradeIsBlocked(const TaggedCommentDef& definition, bool forAssociation) {
  const std::string& flag = State().mTaggedCommentUpgradeFlag;
  if (!flag.empty() && ContainsNoCaseAscii(definition.UpgradeFlags, flag)) return true;
  return forAssociation && ContainsNoCaseAscii(definition.UpgradeFlags, "p");
}

// The tag at the end of the chain of legacy tags that begins at `tag`.
std::string_view UpgradedTag(std::string_view tag, bool forAssociation) {
  const TaggedCommentDef* definition = FindTagDefinition(tag);
  for (std::size_t steps = 0; definition; ++steps) {
    if (definition->UpgradeTo.empty() || UpgradeIsBlocked(*definition, forAssociation)) return tag;
    tag = definition->UpgradeTo;
    definition = FindTagDefinition(tag);
    if (!definition) throw VendrelError(errObjectNotSet, tag);
    if (steps > TemplateObjects::Default().TaggedCommentDefs().Count())
      throw VendrelError(errInvalidArgument, tag);  // a circle in the table of a host
  }
  return tag;
}

}  // namespace

bool IsTaggedCommentText(std::string_view commentPart) {
  if (!commentPart.starts_with(kBareTag)) return false;
  const std::string_view tag = commentPart.substr(0, commentPart.find(' '));
  if (tag != kBareTag) return FindTagDefinition(tag) != nullptr;
  return !State().mUpgradeLegacyTaggedcomments || FindTagDefinition(kSummaryTag);
}

const TaggedCommentDef* TaggedComment::TaggedCommentDef() const {
  return FindTagDefinition(TagIdentifier);
}

bool TaggedComment::Initialise(std::string_view Source) try {
  const std::size_t blank = Source.find(' ');
  const std::string_view rest =
      blank == std::string_view::npos ? std::string_view() : Source.substr(blank + 1);
  TagIdentifier = UpperCase(Source.substr(0, blank));
  Upgrade(true);
  const vendrel::TaggedCommentDef* definition = TaggedCommentDef();
  if (!definition || !definition->TakesQualifier()) {
    Text = rest;
    return true;
  }
  const std::string_view words = Trim(rest);
  const std::size_t end = words.find(' ');
  Qualifier = words.substr(0, end);
  if (end != std::string_view::npos) Text = words.substr(end + 1);
  return true;
}
VENDREL_CONTEXT_AT(LineReached(), Source, trace::Field("TagIdentifier", TagIdentifier))

void TaggedComment::Upgrade(bool ForAssociation) try {
  if (!ProcessState::Get().mUpgradeLegacyTaggedcomments) return;
  const std::string_view upgraded = UpgradedTag(TagIdentifier, ForAssociation);
  if (upgraded.data() != TagIdentifier.data()) TagIdentifier = std::string(upgraded);
  if (TagIdentifier == kBareTag) TagIdentifier = kSummaryTag;
}
VENDREL_CONTEXT_AT(LineReached(), ForAssociation, trace::Field("TagIdentifier", TagIdentifier))

std::shared_ptr<TaggedComment> TaggedComment::Clone() const {
  auto copy = std::make_shared<TaggedComment>();
  copy->CodeElement = CodeElement;
  copy->Qualifier = Qualifier;
  copy->Tag = Tag;
  copy->TagIdentifier = TagIdentifier;
  copy->Text = Text;
  copy->SourceLine = SourceLine;
  return copy;
}

void TaggedComments::RemoveMarked(std::size_t first, const std::vector<bool>& marked) {
  mCol.RemoveMarked(first, marked);
}

void AddTaggedComment(TaggedComments& col, const std::shared_ptr<TaggedComment>& tc, bool IsBuffer,
                      bool Preserve) {
  if (!IsBuffer) tc->Upgrade(false);
  const TaggedCommentDef* definition = tc->TaggedCommentDef();
  if (definition && definition->KeepSeparateInBuffer && IsBuffer) Preserve = true;
  const WrapTypeEnum wrap = tc->AlwaysJoinWithWhitespace ? wrapSpace
                            : definition                 ? definition->WrapType
                                                         : wrapLineBreak;
  const std::string key = KeyOf(*tc, IsBuffer, definition != nullptr);
  const std::shared_ptr<TaggedComment> present = Preserve ? nullptr : col.Share(key);
  if (!present) return col.Add(tc, Preserve ? std::string_view() : std::string_view(key));
  AppendDescription(present->Text, std::string_view(tc->Text), static_cast<int>(wrap));
  if (IsBuffer) NoteChangedText(col, *present);
}

void VBProject::AddTaggedComment(vendrel::TaggedComments& col,
                                 const std::shared_ptr<TaggedComment>& tc, bool IsBuffer) const {
  vendrel::AddTaggedComment(col, tc, IsBuffer, PreserveOriginalTaggedComments);
}

void Block::HandleTaggedComment(const std::shared_ptr<TaggedComment>& tc) try {
  const vendrel::Component* owner = Component.Get();
  if (!owner) throw VendrelError(errObjectNotSet, "Block.Component");
  const TaggedCommentDef* definition = tc->TaggedCommentDef();
  // Enumerations and structures are open while their comments are read: those never wait.
  const bool isMember = definition && definition->ElementType >= etEnumeration &&
                        definition->ElementType <= etStructureMember;
  const bool waits = Options().TaggedCommentsBeforeElement && !isMember;
  if (!waits && ApplyTaggedComment(tc)) return;
  vendrel::TaggedComments& buffer = *Component->TaggedCommentBuffer;
  buffer.mBehindEnd |= CompletelyLoaded();
  AddTaggedComment(buffer, tc, true, Options().PreserveOriginalTaggedComments);
}
VENDREL_CONTEXT_AT(LineReached(),
                   trace::Parameter("Tag", tc ? tc->TagIdentifier.view() : std::string_view()),
                   *this)

std::string_view NamespaceFromObject(const CodeElement* Element) {
  if (!Element) return kNoScope;
  if (const auto* block = As<Block>(Element); block && !block->IsMethod())
    return RowOf(kKindOf<Variable>).Scope;
  const auto* variable = As<Variable>(Element);
  const auto* udt = As<UDT>(Element);
  const bool isMember = variable && IsA<UDT>(variable->Parent.Get());
  if (isMember || (udt && udt->Members.Count() > 0)) return "FZ:StructureMember";
  return RowOf(Element->Kind()).Scope;
}

}  // namespace vendrel
