#pragma once
#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/LateFill.h"
#include "model/Block.h"
#include "model/KeyedCollection.h"

namespace vendrel {

/// The blocks of a module in source order. A block is mostly added before it has a name, and so has
/// no key for its whole life; look-ups by name go through an index that follows renamed blocks.
class Blocks {
 public:
  using Element = Block;
  Blocks();
  ~Blocks();

  /// True after `Sort`; `Add` clears it.
  bool Sorted = false;

  /// The block at a 1-based position; raises 9 outside.
  template <std::integral Index>
  Block* Item(Index index) {
    return &Whole().At(PlaceAt(index));
  }
  template <std::integral Index>
  const Block* Item(Index index) const {
    return &Whole().At(PlaceAt(index));
  }
  /// By name; a name with parameter types in parentheses finds the overload. "#ctor" reads "_ctor".
  /// Null when there is none.
  Block* Item(std::string_view Key) { return Mine(std::as_const(*this).Item(Key)); }
  const Block* Item(std::string_view Key) const;
  std::shared_ptr<Block> Share(std::size_t index) { return Whole().Share(index); }
  std::shared_ptr<const Block> Share(std::size_t index) const { return Whole().Share(index); }
  /// The block a pointer stands for, with a share of the ownership; nothing if it is not here.
  std::shared_ptr<Block> ShareOf(const Block* block);
  /// First block whose `DotNetSignature` equals `Signature`, case ignored.
  Block* ItemByDotNetSignature(std::string_view Signature) {
    return Mine(std::as_const(*this).ItemByDotNetSignature(Signature));
  }
  const Block* ItemByDotNetSignature(std::string_view Signature) const;
  /// Whether a block was added under that key.
  bool HasKey(std::string_view key) const { return Whole().HasKey(key); }

  /// Adds a block; a key that is taken is told and the block dropped. `Before` and `After` count in
  /// the keyed form only.
  bool Add(std::shared_ptr<Block> item, std::string_view Key = {}, const Position& Before = {},
           const Position& After = {});
  /// Removes by 1-based position or by key; raises 9 when there is none.
  void Remove(std::size_t index);
  void Remove(int index) { Remove(static_cast<std::size_t>(index)); }
  void Remove(std::string_view key);
  void Clear();
  std::size_t Count() const { return Whole().Count(); }

  /// Puts the blocks in descending ordinal order of their names; equal names keep their order, keys
  /// are lost. A list with a nameless block raises 9 once only nameless ones are left.
  void Sort();

  /// First block of that type; null if none. Answered from an index.
  Block* FirstOfType(BlockTypeEnum type) { return Mine(std::as_const(*this).FirstOfType(type)); }
  const Block* FirstOfType(BlockTypeEnum type) const;
  /// All blocks of that name, in order; case ignored. Answered from an index. Valid until a block
  /// is added, removed or renamed.
  std::span<Block* const> Named(std::string_view name) { return Filed(name); }
  std::span<const Block* const> Named(std::string_view name) const { return Filed(name); }
  /// The block in front of this one; null for the first.
  Block* Previous(const Block* block) { return Mine(std::as_const(*this).Previous(block)); }
  const Block* Previous(const Block* block) const;
  Block* Last() { return Whole().Find(mCol.Count()); }
  const Block* Last() const { return Whole().Find(mCol.Count()); }
  /// Puts a block in the place of another; keys stay behind.
  void Replace(const Block* old, std::shared_ptr<Block> block);

  /// The blocks as they stand, without what waits to be made.
  const KeyedCollection<Block>& Listed() const { return mCol; }
  ElementsOf<Block> Listed() { return mCol; }
  /// `fill` runs once, when the blocks are first asked for.
  void FillLate(std::function<void()> fill) { mLate.Set(std::move(fill)); }

  /// Gives back the memory that was set aside for more blocks.
  void Fit() {
    mCol.Fit();
    DropIndex();
  }

  auto begin() { return Whole().begin(); }
  auto end() { return Whole().end(); }
  auto begin() const { return Whole().begin(); }
  auto end() const { return Whole().end(); }

 private:
  KeyedCollection<Block>& Whole() {
    mLate.Run();
    return mCol;
  }
  const KeyedCollection<Block>& Whole() const {
    mLate.Run();
    return mCol;
  }
  // A block that was found here is as const as the collection through which it was asked for.
  static Block* Mine(const Block* block) { return const_cast<Block*>(block); }
  std::span<Block* const> Filed(std::string_view name) const;
  friend class Block;
  void Adopt(Block& block, bool atEnd);
  void Renamed(Block& block, std::string_view oldName);
  void Retyped(Block& block, BlockTypeEnum oldType);
  void Forget(Block& block);
  void DropIndex() const;
  void Refresh() const;
  void BuildIndex() const;
  void File(const Block* block) const;
  void Unfile(const Block* block, std::string_view name) const;
  std::size_t OrdinalOf(const Block* block) const;
  std::size_t PlaceOf(const Block* block) const;
  struct Index;
  Index& MadeIndex() const;
  bool IsIndexed() const;
  const Block* FirstMatch(std::string_view base, std::string_view key, bool withArguments) const;

  KeyedCollection<Block> mCol;
  LateFill mLate;
  mutable std::unique_ptr<Index> mIndex;  // made at the first question that needs it
  mutable std::array<Block*, 17> mFirstOfType{};
  mutable std::uint32_t mTypesKnown = 0;  // bit per type: the entry above is right
  bool mNamespaced = false;               // a block with a namespace has been here
  // A block in several collections tells only the last one of its changes; the others see by the
  // running number of such changes that their index is stale.
  bool mHasShared = false;
  mutable std::uint64_t mSharedChangesSeen = 0;
  static inline std::atomic<std::uint64_t> sSharedChanges = 0;
};

}  // namespace vendrel
