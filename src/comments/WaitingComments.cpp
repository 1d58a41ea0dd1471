#include "comments/WaitingComments.h"

#include <algorithm>
#include <iterator>

#include "comments/Placement.h"
#include "comments/TaggedCommentRules.h"
#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "model/Block.h"
#include "model/Component.h"

namespace vendrel {
namespace {

// What the rule asks of the last element beside its identity: an element that gains a name, members
// or parameters while it stays the last one is a new chance for a comment that it has refused.
void AddLastElement(OfferState& state, const CodeElement* last) {
  state.LastElement = last;
  if (const auto* block = As<Block>(last)) {
    state.LastBlockType = block->BlockType();
    state.LastIsNamed = !block->Name().empty();
    state.LastHasParameters = block->Parameters.IfAny() != nullptr;
  } else if (const auto* enumeration = As<Enumeration>(last)) {
    state.LastMembers = enumeration->Members().Count();
  } else if (const auto* udt = As<UDT>(last)) {
    state.LastMembers = udt->Members.Count();
  }
}

// ---- What a refused comment waits for ----------------------------------------------------------

enum NameKind : std::size_t { kVariables, kEnumMembers, kStructureMembers, kInterfaces, kNoName };

// A qualifier that names a variable, a member or an interface is answered by one collection. "##"
// alone takes its kind from the place, so nothing can be told of it beforehand.
NameKind NameAwaited(const TaggedComment& comment, const TaggedCommentDef& definition) {
  if (comment.Qualifier.empty()) return kNoName;
  switch (FixedKind(definition)) {
    case etVariable: return comment.TagIdentifier == "##" ? kNoName : kVariables;
    case etEnumerationMember: return kEnumMembers;
    case etStructureMember: return kStructureMembers;
    case etImplementedInterface: return kInterfaces;
    default: return kNoName;
  }
}

// The three ways of waiting. In doubt a comment goes to the others, which costs offers and never a
// comment.
void File(OfferMemory& memory, WaitingComment&& waiting) {
  const TaggedComment& comment = *waiting.Comment;
  const TaggedCommentDef* definition = comment.TaggedCommentDef();
  const bool byMore = !definition || IsCommandTag(comment.TagIdentifier) ||
                      (FixedKind(*definition) == etNone && !comment.Qualifier.empty());
  const NameKind name = byMore ? kNoName : NameAwaited(comment, *definition);
  if (byMore)
    memory.Others.push_back(std::move(waiting));
  else if (name != kNoName)
    memory.Names[name].ByName[FoldKey(comment.Qualifier)].push_back(std::move(waiting));
  else
    memory.ByTag[definition].push_back(std::move(waiting));
}

// ---- What may have come ------------------------------------------------------------------------

void Take(WaitingList& from, WaitingList& to) {
  to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
  from.clear();
}

// The names that `collection` has got since the last look; all of them if it is another one, or if
// it has become shorter. Collections grow at their end while a module is read, so each name is
// looked at once.
template <typename Collection>
void TakeNamed(NameWatch& watch, const Collection* collection, WaitingList& offered) {
  const std::size_t count = collection ? collection->Count() : 0;
  if (watch.Collection != collection || count < watch.Seen) watch.Seen = 0;
  watch.Collection = collection;
  for (std::size_t i = watch.Seen + 1; i <= count && !watch.ByName.empty(); ++i) {
    const auto found = watch.ByName.find(FoldKey(collection->Item(i)->Name));
    if (found == watch.ByName.end()) continue;
    Take(found->second, offered);
    watch.ByName.erase(found);
  }
  watch.Seen = count;
}

void TakeWhatMayFit(OfferMemory& memory, Component& component, Block& block, WaitingList& offered) {
  Take(memory.Others, offered);
  for (auto& [definition, list] : memory.ByTag)
    if (!list.empty() && FindsElement(*definition, component, block)) Take(list, offered);
  const Enumeration* enumeration = block.CurrentEnum().get();
  const UDT* udt = block.CurrentUDT().get();
  TakeNamed(memory.Names[kVariables], block.Variables.IfAny(), offered);
  TakeNamed(memory.Names[kEnumMembers], enumeration ? &enumeration->Members() : nullptr, offered);
  TakeNamed(memory.Names[kStructureMembers], udt ? &udt->Members : nullptr, offered);
  TakeNamed(memory.Names[kInterfaces], &component.Interfaces, offered);
}

// Comments come in at the end of the buffer; those behind the last known serial are new.
void TakeNew(OfferMemory& memory, TaggedComments& buffer, WaitingList& offered) {
  for (std::size_t i = memory.Serials.size(); i < buffer.Count(); ++i) {
    offered.push_back({memory.NextSerial, buffer.Share(i + 1)});
    memory.Serials.push_back(memory.NextSerial++);
  }
}

// ---- The offers --------------------------------------------------------------------------------

// Positions of accepted comments; they leave the buffer together, also when a later offer fails.
class Departures {
 public:
  explicit Departures(TaggedComments& buffer) : mBuffer(buffer) {}
  Departures(const Departures&) = delete;
  Departures& operator=(const Departures&) = delete;
  ~Departures() {
    if (mCount == 1)
      mBuffer.Remove(mFirst + 1);
    else if (mCount > 0)
      mBuffer.RemoveMarked(mFirst, mMarked);
  }
  /// Positions are 0-based and come in rising order.
  void Add(std::size_t position) {
    if (mMarked.empty()) mFirst = position;
    mMarked.resize(position - mFirst + 1);
    mMarked.back() = true;
    ++mCount;
  }
  bool Has(std::size_t position) const {
    return position >= mFirst && position - mFirst < mMarked.size() && mMarked[position - mFirst];
  }
  std::size_t Count() const { return mCount; }
  std::size_t First() const { return mFirst; }

 private:
  TaggedComments& mBuffer;
  std::size_t mFirst = 0;
  std::size_t mCount = 0;
  std::vector<bool> mMarked;
};

// Keeps the serials in step with the buffer that the departures leave.
void Forget(std::vector<std::uint64_t>& serials, const Departures& departures) {
  std::size_t to = departures.First();
  if (departures.Count() == 1) serials.erase(serials.begin() + static_cast<std::ptrdiff_t>(to));
  if (departures.Count() < 2) return;
  for (std::size_t from = to; from < serials.size(); ++from)
    if (!departures.Has(from)) serials[to++] = serials[from];
  serials.resize(to);
}

// The order of the buffer decides which of two comments of one tag comes first into a description.
// An accepted comment is found in the buffer by its serial, since positions shift while they leave.
void Offer(OfferMemory& memory, TaggedComments& buffer, Block& block, WaitingList& offered) {
  std::sort(offered.begin(), offered.end(),
            [](const auto& a, const auto& b) { return a.Serial < b.Serial; });
  Departures departures(buffer);
  for (WaitingComment& waiting : offered) {
    ++memory.Offers;
    if (!block.ApplyTaggedComment(waiting.Comment)) {
      File(memory, std::move(waiting));
      continue;
    }
    const auto place =
        std::lower_bound(memory.Serials.begin(), memory.Serials.end(), waiting.Serial);
    departures.Add(static_cast<std::size_t>(place - memory.Serials.begin()));
  }
  Forget(memory.Serials, departures);
}

// The memory of a buffer, empty where it no longer fits: a client has taken comments out, or the
// tags have other definitions.
OfferMemory& MemoryOf(TaggedComments& buffer) {
  const TaggedCommentDefs& definitions = TemplateObjects::Default().TaggedCommentDefs();
  const OfferMemory* known = buffer.mOffers.get();
  const bool fits = known && known->Definitions == &definitions &&
                    known->DefinitionCount == definitions.Count() &&
                    known->Serials.size() <= buffer.Count();
  if (fits) return *buffer.mOffers;
  buffer.mOffers = std::make_shared<OfferMemory>();
  buffer.mOffers->Definitions = &definitions;
  buffer.mOffers->DefinitionCount = definitions.Count();
  return *buffer.mOffers;
}

}  // namespace

OfferState OfferState::Of(const Component& component, const Block& block) {
  OfferState state;
  state.Target = &block;
  state.CurrentEnum = block.CurrentEnum().get();
  state.CurrentUDT = block.CurrentUDT().get();
  if (block.CurrentEnum()) state.EnumMembers = block.CurrentEnum()->Members().Count();
  if (block.CurrentUDT()) state.UDTMembers = block.CurrentUDT()->Members.Count();
  if (const vendrel::Variables* variables = block.Variables.IfAny())
    state.Variables = variables->Count();
  state.Interfaces = component.Interfaces.Count();
  state.IsNamed = !block.Name().empty();
  state.HasParameters = block.Parameters.IfAny() != nullptr;
  const ProjectOptions& options = block.Options();
  state.Preserves = options.PreserveOriginalTaggedComments;
  state.FromTypeLibrary = options.WasReadFromTypeLibrary;
  AddLastElement(state, component.LastElement.Get());
  return state;
}

void NoteChangedText(TaggedComments& buffer, const TaggedComment& comment) {
  if (buffer.mOffers && EqualsNoCaseAscii(comment.TagIdentifier, "##INTERFACE_ALIAS"))
    buffer.mOffers->OthersChanged = true;
}

void OfferEveryTaggedComment(Component& component, Block& block) try {
  TaggedComments* buffer = component.TaggedCommentBuffer.IfAny();
  if (!buffer) return;
  buffer->mOffers.reset();
  Departures departures(*buffer);
  const std::size_t count = buffer->Count();
  for (std::size_t i = 0; i < count; ++i)
    if (block.ApplyTaggedComment(buffer->Share(i + 1))) departures.Add(i);
}
VENDREL_CONTEXT_AT(LineReached(), component, block)

void OfferTaggedComments(Component& component, Block& block) try {
  TaggedComments* buffer = component.TaggedCommentBuffer.IfAny();
  if (!buffer || buffer->Count() == 0) return;
  OfferMemory& memory = MemoryOf(*buffer);
  const OfferState state = OfferState::Of(component, block);
  WaitingList offered;
  if (memory.State != state)
    TakeWhatMayFit(memory, component, block, offered);
  else if (memory.OthersChanged)
    Take(memory.Others, offered);
  memory.State = state;
  memory.OthersChanged = false;
  TakeNew(memory, *buffer, offered);
  if (offered.empty()) return;
  try {
    Offer(memory, *buffer, block, offered);
  } catch (...) {
    buffer->mOffers.reset();  // all that is left is offered again
    throw;
  }
}
VENDREL_CONTEXT_AT(LineReached(), component, block)

}  // namespace vendrel
