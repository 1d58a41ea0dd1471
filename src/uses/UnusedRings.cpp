#include "uses/UnusedRings.h"

#include <algorithm>

namespace vendrel {
namespace {

// Strongly connected components by Tarjan's method, with a stack of our own: chains of uses are as
// long as the input makes them.
class RingSearch {
 public:
  RingSearch(std::size_t nodes, const std::vector<std::vector<std::uint32_t>>& targets)
      : mTargets(targets), mOrder(nodes), mLow(nodes), mOnStack(nodes), mInRing(nodes) {
    for (std::uint32_t node = 0; node < nodes; ++node)
      if (mOrder[node] == 0) Search(node);
  }
  std::vector<bool> Take() { return std::move(mInRing); }

 private:
  struct Visit {
    std::uint32_t Node;
    std::size_t Next;
  };

  void Open(std::uint32_t node) {
    mOrder[node] = mLow[node] = ++mCount;
    mStack.push_back(node);
    mOnStack[node] = true;
    mVisits.push_back({node, 0});
  }

  void Search(std::uint32_t start) {
    Open(start);
    while (!mVisits.empty()) {
      Visit& visit = mVisits.back();
      const std::uint32_t node = visit.Node;
      if (visit.Next < mTargets[node].size()) {
        const std::uint32_t target = mTargets[node][visit.Next++];
        if (mOrder[target] == 0)
          Open(target);
        else if (mOnStack[target])
          mLow[node] = std::min(mLow[node], mOrder[target]);
        continue;
      }
      mVisits.pop_back();
      if (!mVisits.empty())
        mLow[mVisits.back().Node] = std::min(mLow[mVisits.back().Node], mLow[node]);
      if (mLow[node] == mOrder[node]) Close(node);
    }
  }

  void Close(std::uint32_t node) {
    const bool alone = mStack.back() == node;
    for (std::uint32_t member = node + 1; member != node;) {
      member = mStack.back();
      mStack.pop_back();
      mOnStack[member] = false;
      mInRing[member] = !alone;
    }
  }

  const std::vector<std::vector<std::uint32_t>>& mTargets;
  std::vector<std::uint32_t> mOrder, mLow;
  std::vector<bool> mOnStack, mInRing;
  std::vector<std::uint32_t> mStack;
  std::vector<Visit> mVisits;
  std::uint32_t mCount = 0;
};

}  // namespace

UnusedRings::UnusedRings(const Reach& reach) : mReach(reach) {
  const ReachGraph& graph = reach.Graph();
  std::vector<std::vector<std::uint32_t>> targets(graph.Nodes().size());
  std::vector<bool> dead(graph.Nodes().size());
  for (std::size_t i = 0; i < dead.size(); ++i) dead[i] = !reach.IsReached(*graph.Nodes()[i]);
  for (const ReachEdge& edge : graph.Edges())
    if (dead[edge.From] && dead[edge.To] && edge.From != edge.To && !edge.OwnOnly &&
        !edge.FalseOnly)
      targets[edge.From].push_back(edge.To);
  mInRing = RingSearch(targets.size(), targets).Take();
}

bool UnusedRings::IsInRing(const CodeElement& element) const {
  const std::uint32_t node = mReach.Graph().Find(element);
  return node < mInRing.size() && mInRing[node];
}

}  // namespace vendrel
