#include "model/Blocks.h"

#include <algorithm>
#include <unordered_map>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "model/Component.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

// What a look-up by name compares: the name in front of the parentheses, and all of it. Overloads
// are filed under the short names of their parameter types ("Run(String,Int32)"), and callers write
// full ones ("Run(System.String,System.Int32)"), so full names are cut; a key without a dot stands
// as it is, blanks included.
struct SoughtName {
  std::string Base;
  std::string Key;
  bool WithArguments = false;
};

SoughtName Sought(std::string_view key) {
  const std::size_t open = key.find('(');
  SoughtName sought;
  sought.WithArguments = open != std::string_view::npos;
  sought.Base = key.substr(0, open);
  if (sought.Base == "#ctor") sought.Base = "_ctor";
  if (!sought.WithArguments) return sought;
  std::string_view arguments = key.substr(open + 1);
  arguments = arguments.substr(0, arguments.find(')'));
  if (arguments.find('.') == std::string_view::npos) {
    sought.Key = sought.Base;
    sought.Key += key.substr(open);
    return sought;
  }
  sought.Key = sought.Base + "(";
  for (bool first = true; first || !arguments.empty(); first = false) {
    if (!first) sought.Key += ',';
    sought.Key += ShortName(TakeField(arguments, ','));
  }
  sought.Key += ')';
  return sought;
}

constexpr std::uint32_t TypeBit(BlockTypeEnum type) { return std::uint32_t{1} << type; }

}  // namespace

struct Blocks::Index {
  // A name is found as it is asked for, without a folded copy.
  struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const { return HashFolded(name); }
  };
  struct NameEqual {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return EqualsNoCase(a, b); }
  };
  std::unordered_map<std::string, std::vector<Block*>, NameHash, NameEqual> ByName;
  bool HasNames = false;
  /// Rising numbers in the order of the blocks; made when the place of a block is asked for.
  std::unordered_map<const Block*, std::size_t> Ordinals;
  std::size_t LastOrdinal = 0;

  std::vector<Block*>& Named(std::string_view name) {
    const auto known = ByName.find(name);
    return known != ByName.end() ? known->second : ByName[std::string(name)];
  }
};

Blocks::Index& Blocks::MadeIndex() const {
  if (!mIndex) mIndex = std::make_unique<Index>();
  return *mIndex;
}

bool Blocks::IsIndexed() const { return mIndex && mIndex->HasNames; }

Blocks::Blocks() = default;
Blocks::~Blocks() {
  for (Block& block : mCol)
    if (block.mOwner == this) block.mOwner = nullptr;
}

// A family of overloads is one block here and its others stand in `OverloadBlocks`: the block of
// the name is found first, and the arguments then choose within its family.
const Block* Blocks::Item(std::string_view Key) const {
  const SoughtName sought = Sought(Key);
  const Block* found = FirstMatch(sought.Base, sought.Key, sought.WithArguments);
  if (!found || !sought.WithArguments) return found;
  const bool isAnswer = (found->IsDelegate() && EqualsNoCase(sought.Base, found->Name())) ||
                        (found->Overloaded() && EqualsNoCase(found->FullName(), sought.Key));
  if (isAnswer) return found;
  const Blocks* overloads = found->OverloadBlocks().IfAny();
  return overloads && overloads->Count() > 0 ? overloads->Item(sought.Key) : found;
}

// The first block at which a walk over all of them would stop. Only blocks filed under the name,
// the name with arguments, or (delegates of a namespace) the part behind one of its dots can be
// that.
const Block* Blocks::FirstMatch(std::string_view base, std::string_view key,
                                bool withArguments) const {
  const auto stops = [&](const Block& block) {
    if (block.IsDelegate() && EqualsNoCase(base, block.Name())) return true;
    if (withArguments && block.Overloaded()) return EqualsNoCase(block.FullName(), key);
    return EqualsNoCase(block.FullName(), base);
  };
  const Block* best = nullptr;
  const auto offer = [&](std::string_view name) {
    for (const Block* block : Named(name)) {
      if (!stops(*block)) continue;
      if (!best || (best != block && OrdinalOf(block) < OrdinalOf(best))) best = block;
      return;
    }
  };
  const auto offerParts = [&](std::string_view name) {
    offer(name);
    if (!mNamespaced && !mHasShared) return;
    for (std::size_t dot = name.find('.'); dot != std::string_view::npos;
         dot = name.find('.', dot + 1))
      offer(name.substr(dot + 1));
  };
  offerParts(base);
  if (withArguments) offerParts(key);
  return best;
}

std::shared_ptr<Block> Blocks::ShareOf(const Block* block) {
  mLate.Run();
  return mCol.Share(PlaceOf(block));
}

const Block* Blocks::ItemByDotNetSignature(std::string_view Signature) const {
  for (const Block& block : Whole())
    if (EqualsNoCase(block.DotNetSignature(), Signature)) return &block;
  return nullptr;
}

bool Blocks::Add(std::shared_ptr<Block> item, std::string_view Key, const Position& Before,
                 const Position& After) try {
  mLate.Run();
  Block& block = *item;
  if (Key.empty()) {
    mCol.Insert(std::move(item));
    Adopt(block, true);
  } else if (mCol.InsertIfFree(std::move(item), Key, Before, After)) {
    Adopt(block, !Before.Given() && !After.Given());
  } else {
    ReportDuplicateKey("Block", Key);
    return false;
  }
  Sorted = false;
  return true;
}
VENDREL_CONTEXT(trace::Parameter("item", item.get()), Key)

void Blocks::Remove(std::size_t index) try {
  mLate.Run();
  const std::shared_ptr<Block> block = mCol.Share(index);
  mCol.Remove(index);
  Forget(*block);
}
VENDREL_CONTEXT(index)

void Blocks::Remove(std::string_view key) try {
  mLate.Run();
  const std::shared_ptr<Block> block = mCol.Share(key);
  mCol.Remove(key);
  Forget(*block);
}
VENDREL_CONTEXT(key)

void Blocks::Clear() {
  mLate.Run();
  for (Block& block : mCol)
    if (block.mOwner == this) block.mOwner = nullptr;
  mCol.Clear();
  DropIndex();
}

// In before out: the old block keeps its place as long as that place is needed.
void Blocks::Replace(const Block* old, std::shared_ptr<Block> block) {
  const std::size_t place = PlaceOf(old);
  if (place == 0) return;
  Block& added = *block;
  const std::shared_ptr<Block> gone = mCol.Share(place);
  mCol.Insert(std::move(block), {}, Position(place));
  mCol.Remove(place + 1);
  Forget(*gone);
  Adopt(added, false);
}

// A selection of the greatest name that is left, over and over, done here by one sort. A nameless
// block is never the greatest, so the selection would go on taking the position of the round
// before.
void Blocks::Sort() try {
  mLate.Run();
  std::vector<std::shared_ptr<Block>> named, nameless;
  std::size_t namelessBeforeLast = 0;
  const Block* last = nullptr;
  for (std::size_t i = 1; i <= mCol.Count(); ++i) {
    std::shared_ptr<Block> block = mCol.Share(i);
    if (block->Name().empty()) {
      nameless.push_back(std::move(block));
      continue;
    }
    if (!last || block->Name() <= last->Name()) {
      last = block.get();
      namelessBeforeLast = nameless.size();
    }
    named.push_back(std::move(block));
  }
  // Nameless blocks are taken from where the last named one stood; that works from the front only.
  if (!nameless.empty() && (!last || namelessBeforeLast > 0)) throw VendrelError(errSubscript);
  std::stable_sort(named.begin(), named.end(),
                   [](const auto& a, const auto& b) { return a->Name() > b->Name(); });
  KeyedCollection<Block> sorted;
  for (auto& block : named) sorted.Insert(std::move(block));
  for (auto& block : nameless) sorted.Insert(std::move(block));
  mCol = std::move(sorted);
  DropIndex();
  Sorted = true;
}
VENDREL_CONTEXT(trace::Local("Count", mCol.Count()))

// The question of every line for its declarations section. A known answer may be "none".
const Block* Blocks::FirstOfType(BlockTypeEnum type) const {
  mLate.Run();
  if (mCol.Empty()) return nullptr;
  Refresh();
  if (!(mTypesKnown & TypeBit(type))) {
    const auto found =
        std::find_if(begin(), end(), [type](const Block& b) { return b.BlockType() == type; });
    mFirstOfType[type] = found == end() ? nullptr : Mine(&*found);
    mTypesKnown |= TypeBit(type);
  }
  return mFirstOfType[type];
}

std::span<Block* const> Blocks::Filed(std::string_view name) const {
  mLate.Run();
  if (mCol.Empty())
    return {};  // such a list, that of all without overloads, belongs to all threads
  Refresh();
  if (!IsIndexed()) BuildIndex();
  const auto found = mIndex->ByName.find(name);
  if (found == mIndex->ByName.end()) return {};
  return found->second;
}

const Block* Blocks::Previous(const Block* block) const {
  mLate.Run();
  const std::size_t place = PlaceOf(block);
  return place > 1 ? mCol.Find(place - 1) : nullptr;
}

// A block has come in; at the end, the index goes on.
void Blocks::Adopt(Block& block, bool atEnd) {
  if (block.mOwner && block.mOwner != this) {
    block.mShared = true;
    block.mOwner->mHasShared = true;
  }
  block.mOwner = this;
  if (block.mShared) mHasShared = true;
  if (block.Namespace()) mNamespaced = true;
  if (!atEnd) {
    DropIndex();
    return;
  }
  if (mIndex && !mIndex->Ordinals.empty()) mIndex->Ordinals[&block] = ++mIndex->LastOrdinal;
  if (IsIndexed()) File(&block);
  const BlockTypeEnum type = block.BlockType();
  if ((mTypesKnown & TypeBit(type)) && !mFirstOfType[type]) mFirstOfType[type] = &block;
}

void Blocks::Renamed(Block& block, std::string_view oldName) {
  if (!IsIndexed()) return;
  Unfile(&block, oldName);
  File(&block);
}

// A block gets its type after it has come in. The usual case, the last block, keeps the index
// right; any other may stand in front of the known first one, and then the answer is looked for
// again.
void Blocks::Retyped(Block& block, BlockTypeEnum oldType) {
  const BlockTypeEnum type = block.BlockType();
  if (mFirstOfType[oldType] == &block) mTypesKnown &= ~TypeBit(oldType);
  if (!(mTypesKnown & TypeBit(type))) return;
  if (!mFirstOfType[type])
    mFirstOfType[type] = &block;
  else if (Last() != &block)
    mTypesKnown &= ~TypeBit(type);
}

// A block has gone.
void Blocks::Forget(Block& block) {
  if (block.mOwner == this) block.mOwner = nullptr;
  Refresh();
  if (IsIndexed()) Unfile(&block, block.Name());
  if (mFirstOfType[block.BlockType()] == &block) mTypesKnown &= ~TypeBit(block.BlockType());
  if (mIndex) mIndex->Ordinals.erase(&block);
}

void Blocks::DropIndex() const {
  mIndex.reset();
  mTypesKnown = 0;
}

// Drops the index if a block that stands here too was changed elsewhere.
void Blocks::Refresh() const {
  if (!mHasShared || mSharedChangesSeen == sSharedChanges) return;
  mSharedChangesSeen = sSharedChanges;
  DropIndex();
}

void Blocks::BuildIndex() const {
  Index& index = MadeIndex();
  index.ByName.clear();
  for (const Block& block : mCol) index.Named(block.Name()).push_back(Mine(&block));
  index.HasNames = true;
}

// Enters a block under its name, in the order of the blocks. Blocks are named as they come, so the
// end is the usual place; a renamed one goes where its ordinal says.
void Blocks::File(const Block* block) const {
  std::vector<Block*>& list = mIndex->Named(block->Name());
  if (list.empty() || block == Last()) {
    list.push_back(Mine(block));
    return;
  }
  const std::size_t ordinal = OrdinalOf(block);
  const auto behind = std::find_if(list.rbegin(), list.rend(),
                                   [&](const Block* other) { return OrdinalOf(other) < ordinal; });
  list.insert(behind.base(), Mine(block));
}

void Blocks::Unfile(const Block* block, std::string_view name) const {
  const auto list = mIndex->ByName.find(name);
  if (list == mIndex->ByName.end()) return;
  const auto at = std::find(list->second.rbegin(), list->second.rend(), block);
  if (at != list->second.rend()) list->second.erase(std::next(at).base());
  if (list->second.empty()) mIndex->ByName.erase(list);
}

// Rises with the place of the block; 0 if it is not here. Removals leave gaps, which do no harm:
// only the order counts, so nothing is renumbered.
std::size_t Blocks::OrdinalOf(const Block* block) const {
  Index& index = MadeIndex();
  if (index.Ordinals.empty()) {
    index.LastOrdinal = 0;
    for (const Block& each : mCol) index.Ordinals[&each] = ++index.LastOrdinal;
  }
  const auto found = index.Ordinals.find(block);
  return found == index.Ordinals.end() ? 0 : found->second;
}

// 1-based position; 0 if the block is not here.
std::size_t Blocks::PlaceOf(const Block* block) const {
  const std::size_t ordinal = OrdinalOf(block);
  if (ordinal == 0) return 0;
  std::size_t low = 1, high = mCol.Count();
  while (low < high) {
    const std::size_t middle = low + (high - low) / 2;
    if (OrdinalOf(mCol.Find(middle)) < ordinal)
      low = middle + 1;
    else
      high = middle;
  }
  return low;
}

}  // namespace vendrel
