#include "survey/MovedCode.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>
#include <unordered_set>

#include "core/CaseFold.h"
#include "output/ElementWords.h"
#include "output/Pairing.h"
#include "services/Paths.h"
#include "survey/CodeContent.h"

namespace vendrel {
namespace {

constexpr int kSameCodePercent = 80;
constexpr std::size_t kFewestOfOtherName = 3;
/// Least hashes of some code by which others that share them are found.
constexpr std::size_t kSketchLines = 16;
/// A line that so much code shares tells nothing.
constexpr std::size_t kMostSharing = 64;

// Code without a partner by name.
struct LoneCode {
  ElementRef Element;
  const void* Owner = nullptr;
  std::string Name;
  CodeContent Content;
};

struct CodeMatch {
  int Percent = 0;
  bool IsNamesake = false, IsInPlace = false;
  std::size_t Before = 0, After = 0;
};

// What is surest comes first.
bool IsSurer(const CodeMatch& a, const CodeMatch& b) {
  const auto key = [](const CodeMatch& match) {
    return std::tuple(-match.Percent, !match.IsNamesake, !match.IsInPlace, match.Before,
                      match.After);
  };
  return key(a) < key(b);
}

// Calls `see` for the least hashes of some code, each once.
template <typename See>
void EachOfSketch(const CodeContent& content, const See& see) {
  std::size_t taken = 0;
  const std::vector<std::uint32_t>& lines = content.Lines();
  for (std::size_t i = 0; i < lines.size() && taken < kSketchLines; ++i)
    if (i == 0 || lines[i] != lines[i - 1]) {
      see(lines[i]);
      ++taken;
    }
}

class CodeMatches {
 public:
  CodeMatches(std::vector<LoneCode> before, std::vector<LoneCode> after)
      : mBefore(std::move(before)), mAfter(std::move(after)) {}

  template <typename Take>
  void Each(const Take& take) {
    if (mBefore.empty() || mAfter.empty()) return;
    std::vector<CodeMatch> matches = All();
    std::sort(matches.begin(), matches.end(), IsSurer);
    std::vector<bool> isTakenBefore(mBefore.size()), isTakenAfter(mAfter.size());
    for (const CodeMatch& match : matches) {
      if (isTakenBefore[match.Before] || isTakenAfter[match.After]) continue;
      isTakenBefore[match.Before] = isTakenAfter[match.After] = true;
      take(mBefore[match.Before].Element, mAfter[match.After].Element);
    }
  }

 private:
  std::vector<CodeMatch> All() const {
    std::unordered_map<std::uint32_t, std::vector<std::size_t>> sharing;
    for (std::size_t i = 0; i < mAfter.size(); ++i)
      EachOfSketch(mAfter[i].Content, [&](std::uint32_t hash) { sharing[hash].push_back(i); });
    std::vector<CodeMatch> matches;
    std::vector<std::size_t> near;
    for (std::size_t i = 0; i < mBefore.size(); ++i) {
      near.clear();
      EachOfSketch(mBefore[i].Content, [&](std::uint32_t hash) {
        const auto found = sharing.find(hash);
        if (found != sharing.end() && found->second.size() <= kMostSharing)
          near.insert(near.end(), found->second.begin(), found->second.end());
      });
      std::sort(near.begin(), near.end());
      near.erase(std::unique(near.begin(), near.end()), near.end());
      for (const std::size_t j : near) TakeIfSame(i, j, matches);
    }
    return matches;
  }

  void TakeIfSame(std::size_t i, std::size_t j, std::vector<CodeMatch>& matches) const {
    const LoneCode &old = mBefore[i], &now = mAfter[j];
    CodeMatch match{0, EqualsNoCase(old.Name, now.Name), old.Owner == now.Owner, i, j};
    if (!match.IsNamesake &&
        std::min(old.Content.Count(), now.Content.Count()) < kFewestOfOtherName)
      return;
    match.Percent = old.Content.PercentCommon(now.Content);
    if (match.Percent >= kSameCodePercent) matches.push_back(match);
  }

  std::vector<LoneCode> mBefore, mAfter;
};

template <typename Elements>
std::vector<ElementRef> Refs(const Elements& elements) {
  std::vector<ElementRef> refs;
  for (const auto& element : elements) refs.push_back(Describe(element));
  return refs;
}

const Component& ModuleOf(ElementRef element) {
  return *static_cast<const Component*>(element.Object);
}
const Block& ProcedureOf(ElementRef element) { return *static_cast<const Block*>(element.Object); }

class MovedCodeSearch {
 public:
  MovedCodeSearch(const VBProject& before, const VBProject& after)
      : mModules(PairElements(Refs(before.Components.Listed()), Refs(after.Components.Listed()),
                              FolderPart(before.FileName.FullPath()),
                              FolderPart(after.FileName.FullPath()))) {}

  ElementPartners Run() {
    PairModules();
    std::vector<LoneCode> before, after;
    for (const ElementPair& pair : mModules) AddProcedures(pair, before, after);
    CodeMatches(std::move(before), std::move(after)).Each([&](ElementRef old, ElementRef now) {
      mPartners[old.Object] = now;
      PairGroups(ProcedureOf(old), ProcedureOf(now));
    });
    return std::move(mPartners);
  }

 private:
  // The property that a procedure belongs to goes with the first of its procedures.
  void PairGroups(const Block& before, const Block& after) {
    if (!before.IsPropertyType() || !after.IsPropertyType()) return;
    const PropertyGroup* old = GroupOf(before);
    const PropertyGroup* now = GroupOf(after);
    if (old && now && mGroups.insert(now).second) mPartners.try_emplace(old, Describe(*now));
  }
  static const PropertyGroup* GroupOf(const Block& block) {
    const Component* module = block.Component.Get();
    return module ? module->PropertyGroups.Item(block.Name()) : nullptr;
  }

  void PairModules() {
    std::vector<LoneCode> before, after;
    for (const ElementPair& pair : mModules) {
      if (pair.Before && pair.After) continue;
      const ElementRef element = pair.Before ? pair.Before : pair.After;
      const Component& module = ModuleOf(element);
      (pair.Before ? before : after)
          .push_back({element, nullptr, module.Name, CodeContent(module)});
    }
    std::unordered_map<const void*, ElementPair*> alone;  // the pairs of modules without a partner
    for (ElementPair& pair : mModules)
      if (!pair.Before || !pair.After)
        alone[pair.Before ? pair.Before.Object : pair.After.Object] = &pair;
    CodeMatches(std::move(before), std::move(after)).Each([&](ElementRef old, ElementRef now) {
      mPartners[old.Object] = now;
      alone.at(old.Object)->After = now;
      alone.at(now.Object)->After = {};
    });
  }

  // Those of a module that has come or gone too.
  static void AddProcedures(const ElementPair& modules, std::vector<LoneCode>& before,
                            std::vector<LoneCode>& after) {
    const auto procedures = [](ElementRef module) {
      std::vector<ElementRef> refs;
      if (module) refs = Refs(ModuleOf(module).Blocks.Listed());
      std::erase_if(refs, [](ElementRef ref) { return !IsProcedure(ref); });
      return refs;
    };
    const std::vector<ElementRef> old = procedures(modules.Before), now = procedures(modules.After);
    // Both sides of one module have one owner.
    const void* owner = modules.Before ? modules.Before.Object : modules.After.Object;
    for (const ElementPair& pair : PairElements(old, now, {}, {})) {
      if (pair.Before && pair.After) continue;
      const ElementRef element = pair.Before ? pair.Before : pair.After;
      const Block& block = ProcedureOf(element);
      (pair.Before ? before : after).push_back({element, owner, block.Name(), CodeContent(block)});
    }
  }

  std::vector<ElementPair> mModules;
  ElementPartners mPartners;
  std::unordered_set<const PropertyGroup*> mGroups;
};

}  // namespace

ElementPartners FindMovedCode(const VBProject& before, const VBProject& after) {
  return MovedCodeSearch(before, after).Run();
}

}  // namespace vendrel
