#pragma once
// All uses of projects, gathered on demand: by element, and as edges between elements. A use costs
// 40 bytes, and texts are not kept.

#include <cstdint>
#include <span>
#include <vector>

#include "uses/UseBinder.h"

namespace vendrel {

/// A use as the index keeps it; the members are those of `NameUse`.
struct IndexedUse {
  const CodeElement* Element = nullptr;
  const CodeElement* Holder = nullptr;
  const Component* Module = nullptr;
  std::int32_t Line = 0;
  std::int32_t Column = 0;
  std::int32_t EndColumn = 0;
  UseKind Kind = UseKind::Read;
  UseAnswer Answer = UseAnswer::Unknown;
  UseAccessor Accessor = UseAccessor::None;
  bool Reads : 1 = false;
  bool Writes : 1 = false;
  bool Secondary : 1 = false;
  bool WholeArray : 1 = false;
  bool OwnProcedure : 1 = false;
};

/// Declarations, names of arguments and qualifiers make no edge.
bool MakesEdge(UseKind kind);

/// That one element uses another, and how often.
struct UseEdge {
  const CodeElement* From = nullptr;
  /// The procedure behind a property, where one is called (`ProcedureOf`).
  const CodeElement* To = nullptr;
  UseKind Kind = UseKind::Call;
  std::int32_t Count = 0;
  /// The first of them.
  const Component* Module = nullptr;
  std::int32_t Line = 0;
  std::int32_t Column = 0;
};

/// Uses that have an element; candidates of ambiguous ones count each, with that answer.
class UseIndex {
 public:
  /// Binds all modules of a project and adds what it finds. The tree must outlive the index.
  void Add(VBProject& project, UseOptions options = {});
  /// Adds one use, for those who bind themselves.
  void Add(const NameUse& use);

  /// All uses of an element in the order of projects, modules, lines.
  std::span<const IndexedUse> Of(const CodeElement& element) const;
  /// All uses, sorted by element.
  std::span<const IndexedUse> All() const;
  /// From holder to element, one for each pair and kind; sorted by `From`, then `To`.
  std::vector<UseEdge> Edges() const;

  const UseCounts& Counts() const { return mCounts; }

 private:
  void Sort() const;

  mutable std::vector<IndexedUse> mUses;
  mutable bool mSorted = true;
  UseCounts mCounts;
};

}  // namespace vendrel
