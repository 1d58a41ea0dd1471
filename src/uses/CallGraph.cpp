#include "uses/CallGraph.h"

#include <algorithm>
#include <map>
#include <unordered_set>
#include <utility>

#include "diagnostics/Context.h"
#include "model/Component.h"
#include "project/VBProject.h"
#include "uses/UseBinder.h"

namespace vendrel {
namespace {

// Qualifiers, types and names of arguments call nothing; the own result of a function is a
// variable.
bool IsCallKind(const NameUse& use) {
  switch (use.Kind) {
    case UseKind::Call:
    case UseKind::Address:
    case UseKind::Raise:
    case UseKind::Handle:
    case UseKind::Implements: return true;
    case UseKind::Read:
    case UseKind::Write:
    case UseKind::ByReference: return !use.OwnProcedure;
    default: return false;
  }
}

UseKind ShownKind(UseKind kind) { return kind == UseKind::ByReference ? UseKind::Read : kind; }

bool IsOfLibrary(const CodeElement& element) {
  const Component* module = element.OwnComponent();
  if (!module) return false;
  const VBProject* project = module->VBProject();
  if (!project) return true;  // a type that the resolver of VB.NET names built
  // Types of assemblies stand in projects without source files.
  const bool isAssembly =
      project->ProjectFiles.Count() == 0 && (project->Assembly() || project->ProjectName.empty());
  return project->WasReadFromTypeLibrary || isAssembly;
}

}  // namespace

bool IsCallable(const CodeElement* element) {
  if (const auto* block = As<Block>(element)) return block->IsMethod() || block->IsPropertyType();
  return IsA<DeclareDeclaration, EventDeclaration>(element);
}

std::size_t CallGraph::EdgeHash::operator()(const EdgeKey& key) const {
  const auto from = reinterpret_cast<std::uintptr_t>(key.From);
  const auto to = reinterpret_cast<std::uintptr_t>(key.To);
  return (from >> 4) * 31 + (to >> 4) * 7919 + static_cast<std::size_t>(key.Kind);
}

void CallGraph::Add(VBProject& project) try {
  UseBinder binder(project);
  binder.BindAll([this](const NameUse& use) { Add(use); });
}
VENDREL_CONTEXT(project)

void CallGraph::Add(const NameUse& use) {
  if (!use.Holder || !IsCallKind(use)) return;
  const bool sure = use.Answer != UseAnswer::Late && use.Answer != UseAnswer::Ambiguous;
  const auto add = [&](const CodeElement* to) {
    if (!IsCallable(to) || (!WithLibraries && IsOfLibrary(*to))) return;
    const bool answers = use.Kind == UseKind::Handle || use.Kind == UseKind::Implements;
    if (answers)
      AddEdge(to, use.Holder, use.Kind, sure, use);
    else
      AddEdge(use.Holder, to, ShownKind(use.Kind), sure, use);
  };
  if (const Block* procedure = ProcedureOf(use))
    add(procedure);
  else if (use.Element)
    add(use.Element);
  for (const CodeElement* candidate : use.Candidates) add(TargetOf(candidate, use.Accessor));
}

void CallGraph::AddEdge(const CodeElement* from, const CodeElement* to, UseKind kind, bool sure,
                        const NameUse& use) {
  mIsSorted = false;
  const auto known =
      mKnown.try_emplace({from, to, kind}, static_cast<std::uint32_t>(mFound.size()));
  if (known.second) {
    mFound.push_back({from, to, kind, sure, 1, use.Module, use.File, use.Line, use.Column});
    return;
  }
  CallEdge& edge = mFound[known.first->second];
  ++edge.Count;
  edge.IsSure = edge.IsSure || sure;
}

// The places of edges once those of one end lie side by side, the ends in the order in which they
// come first; `ranges` becomes where those of each lie.
std::vector<std::uint32_t> CallGraph::Gathered(const std::vector<CallEdge>& edges,
                                               const CodeElement* CallEdge::*end, Ranges& ranges) {
  ranges.clear();
  std::vector<Range*> inOrder, ofEdge;
  for (const CallEdge& edge : edges) {
    const auto [range, isNew] = ranges.try_emplace(edge.*end);
    if (isNew) inOrder.push_back(&range->second);
    ++range->second.Count;
    ofEdge.push_back(&range->second);
  }
  std::uint32_t first = 0;
  for (Range* range : inOrder) {
    range->First = first;
    first += std::exchange(range->Count, 0);
  }
  std::vector<std::uint32_t> places;
  for (Range* range : ofEdge) places.push_back(range->First + range->Count++);
  return places;
}

void CallGraph::Sort() const {
  if (mIsSorted) return;
  mIsSorted = true;
  const auto places = Gathered(mFound, &CallEdge::From, mFrom);
  mEdges.resize(mFound.size());
  for (std::size_t i = 0; i < places.size(); ++i) mEdges[places[i]] = mFound[i];
  const auto byTarget = Gathered(mEdges, &CallEdge::To, mTo);
  mByTarget.resize(mEdges.size());
  for (std::size_t i = 0; i < byTarget.size(); ++i) mByTarget[byTarget[i]] = &mEdges[i];
}

std::span<const CallEdge> CallGraph::Edges() const {
  Sort();
  return mEdges;
}

std::span<const CallEdge> CallGraph::CalleesOf(const CodeElement& from) const {
  Sort();
  const auto found = mFrom.find(&from);
  if (found == mFrom.end()) return {};
  return std::span(mEdges).subspan(found->second.First, found->second.Count);
}

std::span<const CallEdge* const> CallGraph::CallersOf(const CodeElement& to) const {
  Sort();
  const auto found = mTo.find(&to);
  if (found == mTo.end()) return {};
  return std::span<const CallEdge* const>(mByTarget).subspan(found->second.First,
                                                             found->second.Count);
}

namespace {

// The edges of an element in a direction, each with what it leads to.
template <typename Visit>
void ForEachNeighbour(const CallGraph& graph, const CodeElement& element, CallDirection direction,
                      const Visit& visit) {
  if (direction == CallDirection::Callees)
    for (const CallEdge& edge : graph.CalleesOf(element)) visit(edge, *edge.To);
  else
    for (const CallEdge* edge : graph.CallersOf(element)) visit(*edge, *edge->From);
}

// How many calls each element is away from `start`, at the least.
std::unordered_map<const CodeElement*, int> DistancesFrom(const CallGraph& graph,
                                                          const CodeElement& start,
                                                          CallDirection direction, int limit) {
  std::unordered_map<const CodeElement*, int> distances{{&start, 0}};
  std::vector<const CodeElement*> open{&start};
  for (std::size_t i = 0; i < open.size(); ++i) {
    const int next = distances.at(open[i]) + 1;
    if (limit != 0 && next > limit) break;
    ForEachNeighbour(graph, *open[i], direction, [&](const CallEdge&, const CodeElement& element) {
      if (distances.try_emplace(&element, next).second) open.push_back(&element);
    });
  }
  return distances;
}

}  // namespace

// A stack of what is still to be visited: chains of calls are as long as the input makes them. An
// element is walked where it stands nearest to the start, so that a limit hides nothing below it.
std::vector<CallStep> CallGraph::Walk(const CodeElement& start, CallDirection direction,
                                      int depth) const {
  const auto distances = DistancesFrom(*this, start, direction, depth);
  std::vector<CallStep> steps, open;
  std::unordered_set<const CodeElement*> walked{&start};
  const auto openNeighbours = [&](const CodeElement& element, int at) {
    if (depth != 0 && at > depth) return;
    const std::size_t first = open.size();
    ForEachNeighbour(*this, element, direction, [&](const CallEdge& edge, const CodeElement& next) {
      open.push_back({&edge, &next, at, false});
    });
    std::reverse(open.begin() + static_cast<std::ptrdiff_t>(first), open.end());
  };
  openNeighbours(start, 1);
  while (!open.empty()) {
    CallStep step = open.back();
    open.pop_back();
    const bool nearest = distances.at(step.Element) == step.Depth;
    step.Repeated = !nearest || !walked.insert(step.Element).second;
    steps.push_back(step);
    if (!step.Repeated) openNeighbours(*step.Element, step.Depth + 1);
  }
  return steps;
}

std::vector<const CallEdge*> CallGraph::PathBetween(std::span<const CodeElement* const> from,
                                                    std::span<const CodeElement* const> to) const {
  const std::unordered_set<const CodeElement*> wanted(to.begin(), to.end());
  std::unordered_map<const CodeElement*, const CallEdge*> by;  // the edge that led there
  std::vector<const CodeElement*> open;
  for (const CodeElement* element : from) {
    if (wanted.contains(element)) return {};
    if (by.try_emplace(element, nullptr).second) open.push_back(element);
  }
  for (std::size_t i = 0; i < open.size(); ++i)
    for (const CallEdge& edge : CalleesOf(*open[i])) {
      if (!by.try_emplace(edge.To, &edge).second) continue;
      open.push_back(edge.To);
      if (!wanted.contains(edge.To)) continue;
      std::vector<const CallEdge*> path;
      for (const CallEdge* step = &edge; step; step = by.at(step->From)) path.push_back(step);
      std::reverse(path.begin(), path.end());
      return path;
    }
  return {};
}

std::vector<CallEdge> CallsBetweenModules(const CallGraph& graph) {
  std::vector<CallEdge> calls;
  std::map<std::pair<const CodeElement*, const CodeElement*>, std::size_t> known;
  for (const CallEdge& edge : graph.Edges()) {
    const bool answers = edge.Kind == UseKind::Handle || edge.Kind == UseKind::Implements;
    const CodeElement* from = edge.From->OwnComponent();
    const CodeElement* to = edge.To->OwnComponent();
    if (answers || !from || !to || from == to || IsA<DeclareDeclaration>(edge.To)) continue;
    const auto place = known.try_emplace({from, to}, calls.size());
    if (place.second) {
      calls.push_back({from, to, UseKind::Call, edge.IsSure, edge.Count, edge.Module, edge.File,
                       edge.Line, edge.Column});
      continue;
    }
    CallEdge& joined = calls[place.first->second];
    joined.Count += edge.Count;
    joined.IsSure = joined.IsSure || edge.IsSure;
  }
  return calls;
}

CallFan FanOf(const CallGraph& graph, const CodeElement& element) {
  std::unordered_set<const CodeElement*> callers, callees;
  for (const CallEdge* edge : graph.CallersOf(element)) callers.insert(edge->From);
  for (const CallEdge& edge : graph.CalleesOf(element)) callees.insert(edge.To);
  return {callers.size(), callees.size()};
}

}  // namespace vendrel
