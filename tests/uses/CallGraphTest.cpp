// Calls and rings from records made by hand: chains as long as an input can make them.
#include "uses/CallGraph.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "model/Component.h"
#include "project/VBProject.h"
#include "uses/Reach.h"
#include "uses/UnusedRings.h"

namespace vendrel {
namespace {

constexpr std::size_t kChainLength = 50'000;

// Procedures 0, 1, 2 ... of a module, and records of calls between them.
class HandMadeCalls {
 public:
  explicit HandMadeCalls(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      mProcedures.push_back(std::make_unique<Block>());
      mProcedures.back()->SetBlockType(btSub);
      mProcedures.back()->SetName("P" + std::to_string(i));
    }
  }
  const Block& operator[](std::size_t index) const { return *mProcedures[index]; }
  NameUse Call(std::size_t from, std::size_t to) const {
    NameUse use;
    use.Holder = mProcedures[from].get();
    use.Element = mProcedures[to].get();
    use.Kind = UseKind::Call;
    use.Answer = UseAnswer::Project;
    use.Reads = true;
    return use;
  }

 private:
  std::vector<std::unique_ptr<Block>> mProcedures;
};

TEST(CallGraph, WalksChainsOfAnyLength) {
  const HandMadeCalls calls(kChainLength);
  CallGraph graph;
  for (std::size_t i = 0; i + 1 < kChainLength; ++i) graph.Add(calls.Call(i, i + 1));
  graph.Add(calls.Call(kChainLength - 1, 0));
  const auto steps = graph.Walk(calls[0], CallDirection::Callees);
  ASSERT_EQ(steps.size(), kChainLength);
  EXPECT_TRUE(steps.back().Repeated);
  EXPECT_EQ(graph.Walk(calls[0], CallDirection::Callers, 3).size(), 3u);
  const CodeElement* from[] = {&calls[1]};
  const CodeElement* to[] = {&calls[0]};
  EXPECT_EQ(graph.PathBetween(from, to).size(), kChainLength - 1);
  EXPECT_TRUE(graph.PathBetween(from, from).empty());
}

// What is walked late on a long way is not lost where a short way leads to it, too.
TEST(CallGraph, DepthCountsFromTheNearest) {
  const HandMadeCalls calls(5);
  CallGraph graph;
  for (const auto& [from, to] : std::vector<std::pair<int, int>>{{0, 1}, {1, 2}, {2, 3}, {0, 2}})
    graph.Add(calls.Call(static_cast<std::size_t>(from), static_cast<std::size_t>(to)));
  std::string walked;
  for (const CallStep& step : graph.Walk(calls[0], CallDirection::Callees, 2))
    walked +=
        std::to_string(step.Depth) + step.Element->ElementName() + (step.Repeated ? "again " : " ");
  EXPECT_EQ(walked, "1P1 2P2again 1P2 2P3 ");
}

TEST(CallGraph, JoinsCallsOfOnePair) {
  const HandMadeCalls calls(2);
  CallGraph graph;
  NameUse late = calls.Call(0, 1);
  late.Answer = UseAnswer::Late;
  late.Element = nullptr;
  late.Candidates = {&calls[1]};
  graph.Add(late);
  EXPECT_FALSE(graph.Edges().front().IsSure);
  graph.Add(calls.Call(0, 1));
  NameUse result = calls.Call(0, 0);
  result.Kind = UseKind::Write;
  result.OwnProcedure = true;
  graph.Add(result);
  ASSERT_EQ(graph.Edges().size(), 1u);
  EXPECT_TRUE(graph.Edges().front().IsSure);
  EXPECT_EQ(graph.Edges().front().Count, 2);
}

TEST(UnusedRings, AreFoundInChainsOfAnyLength) {
  const HandMadeCalls calls(kChainLength + 2);
  Reach reach;
  for (std::size_t i = 0; i + 1 < kChainLength; ++i) reach.Graph().Add(calls.Call(i, i + 1));
  reach.Graph().Add(calls.Call(kChainLength - 1, 1));
  reach.Graph().Add(calls.Call(kChainLength, kChainLength + 1));
  reach.Sweep();
  const UnusedRings rings(reach);
  EXPECT_FALSE(rings.IsInRing(calls[0]));
  EXPECT_TRUE(rings.IsInRing(calls[1]));
  EXPECT_TRUE(rings.IsInRing(calls[kChainLength - 1]));
  EXPECT_FALSE(rings.IsInRing(calls[kChainLength + 1]));
}

}  // namespace
}  // namespace vendrel
