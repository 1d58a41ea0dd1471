#include "site/EstateUses.h"

#include <algorithm>
#include <unordered_map>

#include "model/Component.h"
#include "uses/UseIndex.h"

namespace vendrel::site {
namespace {

// What lives within a procedure is no use of something else.
bool IsLocalName(const CodeElement& element) {
  if (IsA<Parameter>(&element)) return true;
  if (const auto* variable = As<Variable>(&element)) return variable->Procedure.Get() != nullptr;
  const auto* constant = As<Constant>(&element);
  return constant && constant->Procedure.Get();
}

}  // namespace

struct EstateUses::State {
  std::unordered_map<const Component*, std::vector<BoundName>> Names;
  /// Modules in their order: addresses say nothing about it.
  std::unordered_map<const Component*, std::size_t> Order;
  std::vector<UseEdge> Edges;
  std::unordered_map<const CodeElement*, std::vector<std::size_t>> To, From;

  void Bind(VBProject& project, UseIndex& index) {
    for (const Component& module : project.Components.Listed())
      Order.emplace(&module, Order.size());
    UseOptions options;
    options.Declarations = true;
    UseBinder binder(project, options);
    binder.BindAll([&](const NameUse& use) {
      index.Add(use);
      if (use.Element && !use.Secondary && use.EndColumn > use.Column)
        Names[use.Module].push_back({use.Line, use.Column, use.EndColumn, use.Element});
    });
  }

  void Gather(const UseIndex& index) {
    Edges = index.Edges();
    std::sort(Edges.begin(), Edges.end(), [this](const UseEdge& a, const UseEdge& b) {
      const std::size_t moduleOfA = PlaceOf(a), moduleOfB = PlaceOf(b);
      if (moduleOfA != moduleOfB) return moduleOfA < moduleOfB;
      if (a.Line != b.Line) return a.Line < b.Line;
      return a.Column != b.Column ? a.Column < b.Column : a.Kind < b.Kind;
    });
    for (std::size_t i = 0; i < Edges.size(); ++i) {
      const UseEdge& edge = Edges[i];
      if (!edge.From || !edge.To || edge.From == edge.To) continue;
      To[edge.To].push_back(i);
      if (!IsLocalName(*edge.To)) From[edge.From].push_back(i);
    }
    for (auto& [module, names] : Names)
      std::stable_sort(names.begin(), names.end(), [](const BoundName& a, const BoundName& b) {
        return a.Line != b.Line ? a.Line < b.Line : a.Column < b.Column;
      });
  }

  std::size_t PlaceOf(const UseEdge& edge) const {
    const auto found = Order.find(edge.Module);
    return found == Order.end() ? Order.size() : found->second;
  }

  std::vector<ElementUse> Of(const CodeElement& element, bool isTarget) const {
    const auto& all = isTarget ? To : From;
    const auto found = all.find(&element);
    std::vector<ElementUse> uses;
    if (found == all.end()) return uses;
    for (const std::size_t place : found->second) {
      const UseEdge& edge = Edges[place];
      uses.push_back(
          {isTarget ? edge.From : edge.To, edge.Module, edge.Line, edge.Count, WordOf(edge.Kind)});
    }
    return uses;
  }
};

EstateUses::EstateUses(const std::vector<VBProject*>& projects)
    : mState(std::make_unique<State>()) {
  UseIndex index;
  for (VBProject* project : projects)
    if (project->LanguageVersion() != lvVisualBasicDotNet) mState->Bind(*project, index);
  mState->Gather(index);
}
EstateUses::~EstateUses() = default;

std::span<const BoundName> EstateUses::NamesIn(const Component& module) const {
  const auto found = mState->Names.find(&module);
  if (found == mState->Names.end()) return {};
  return found->second;
}

std::vector<ElementUse> EstateUses::UsersOf(const CodeElement& element) const {
  return mState->Of(element, true);
}
std::vector<ElementUse> EstateUses::UsedBy(const CodeElement& element) const {
  return mState->Of(element, false);
}

}  // namespace vendrel::site
