#include "uses/UseIndex.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "model/Block.h"
#include "model/Component.h"
#include "model/PropertyGroup.h"

namespace vendrel {
namespace {

IndexedUse Kept(const NameUse& use, const CodeElement* element) {
  IndexedUse kept;
  kept.Element = element;
  kept.Holder = use.Holder;
  kept.Module = use.Module;
  kept.Line = use.Line;
  kept.Column = use.Column;
  kept.EndColumn = use.EndColumn;
  kept.Kind = use.Kind;
  kept.Answer = use.Answer;
  kept.Accessor = use.Accessor;
  kept.Reads = use.Reads;
  kept.Writes = use.Writes;
  kept.Secondary = use.Secondary;
  kept.WholeArray = use.WholeArray;
  kept.OwnProcedure = use.OwnProcedure;
  return kept;
}

}  // namespace

bool MakesEdge(UseKind kind) {
  return kind != UseKind::Declare && kind != UseKind::Name && kind != UseKind::Qualify;
}

void UseIndex::Add(const NameUse& use) {
  const auto keep = [&](const CodeElement* element) {
    mUses.push_back(Kept(use, element));
    mSorted = false;
  };
  if (use.Element) keep(use.Element);
  if (use.Answer == UseAnswer::Ambiguous)
    for (const CodeElement* candidate : use.Candidates) keep(candidate);
}

void UseIndex::Add(VBProject& project, UseOptions options) {
  UseBinder binder(project, options);
  binder.BindAll([this](const NameUse& use) { Add(use); });
  mCounts.Add(binder.Counts());
}

void UseIndex::Sort() const {
  if (mSorted) return;
  std::stable_sort(mUses.begin(), mUses.end(), [](const IndexedUse& a, const IndexedUse& b) {
    return std::less<>()(a.Element, b.Element);
  });
  mSorted = true;
}

std::span<const IndexedUse> UseIndex::Of(const CodeElement& element) const {
  Sort();
  const CodeElement* sought = &element;
  if (const auto* block = As<Block>(sought); block && block->IsPropertyType())
    if (const Component* module = block->OwnComponent())
      if (const PropertyGroup* group = module->PropertyGroups.Item(block->Name())) sought = group;
  const auto [first, last] = std::equal_range(
      mUses.begin(), mUses.end(), IndexedUse{.Element = sought},
      [](const IndexedUse& a, const IndexedUse& b) { return std::less<>()(a.Element, b.Element); });
  return {first, last};
}

std::span<const IndexedUse> UseIndex::All() const {
  Sort();
  return mUses;
}

std::vector<UseEdge> UseIndex::Edges() const {
  using Key = std::tuple<const CodeElement*, const CodeElement*, UseKind>;
  std::map<Key, UseEdge> edges;
  for (const IndexedUse& use : All()) {
    if (!MakesEdge(use.Kind)) continue;
    const CodeElement* target = TargetOf(use.Element, use.Accessor);
    UseEdge& edge = edges[{use.Holder, target, use.Kind}];
    if (edge.Count++ > 0) continue;
    edge.From = use.Holder;
    edge.To = target;
    edge.Kind = use.Kind;
    edge.Module = use.Module;
    edge.Line = use.Line;
    edge.Column = use.Column;
  }
  std::vector<UseEdge> list;
  list.reserve(edges.size());
  for (const auto& [key, edge] : edges) list.push_back(edge);
  return list;
}

}  // namespace vendrel
