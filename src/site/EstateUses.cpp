#include "site/EstateUses.h"

#include <algorithm>
#include <deque>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "model/Component.h"
#include "site/SiteMap.h"
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

/// The files of a project, found by the text that a name stands in.
class FilesOfProject {
 public:
  explicit FilesOfProject(const ProjectEntry& project) {
    for (const SourceEntry& source : project.Sources) {
      if (source.Module)
        mByModule.emplace(source.Module, &source);
      else
        mByText.emplace(source.Text.data(), &source);
    }
  }
  /// The names that wait stand in the file of this use.
  bool IsAtHand(const NameUse& use) const {
    return use.Module == mModule ||
           (use.Text.data() >= mText.data() && use.Text.data() < mText.data() + mText.size());
  }
  /// From here on names stand in the file of this use.
  void Enter(const NameUse& use) {
    mAtHand.clear();
    mModule = nullptr;
    mText = {};
    if (const auto found = mByModule.find(use.Module); found != mByModule.end()) {
      mModule = use.Module;
      mAtHand.push_back(found->second);
    }
    // A text of VB.NET holds any number of modules, and a module may stand in several.
    auto behind = mByText.upper_bound(use.Text.data());
    if (behind == mByText.begin()) return;
    const char* begin = std::prev(behind)->first;
    for (auto [file, end] = mByText.equal_range(begin); file != end; ++file) {
      mText = file->second->Text;
      if (use.Text.data() < begin + mText.size()) mAtHand.push_back(file->second);
    }
  }
  /// The file at hand; several where one text is listed more than once.
  const std::vector<const SourceEntry*>& AtHand() const { return mAtHand; }

 private:
  std::unordered_map<const Component*, const SourceEntry*> mByModule;
  std::multimap<const char*, const SourceEntry*, std::less<>> mByText;
  std::vector<const SourceEntry*> mAtHand;
  const Component* mModule = nullptr;
  std::string_view mText;
};

}  // namespace

struct EstateUses::State {
  struct Edge {
    const CodeElement* From;
    const CodeElement* To;
    const Component* Module;
    std::int32_t Line;
    std::int32_t Count;
    UseKind Kind;
  };
  /// In the order of their places.
  std::deque<Edge> Edges;
  /// Places of edges, by what they lead to and by what they come from.
  std::vector<std::uint32_t> To, From;
  /// Of the holder that was read last.
  std::map<std::pair<const CodeElement*, UseKind>, std::size_t> OfHolder;
  const CodeElement* Holder = nullptr;

  void Add(const NameUse& use, const CodeElement* element) {
    if (!element || !use.Holder || !MakesEdge(use.Kind) || IsLocalName(*element)) return;
    const CodeElement* target = TargetOf(element, use.Accessor);
    if (!target || target == use.Holder) return;
    if (use.Holder != Holder) OfHolder.clear();
    Holder = use.Holder;
    const auto [known, isNew] = OfHolder.try_emplace({target, use.Kind}, Edges.size());
    if (isNew)
      Edges.push_back({Holder, target, use.Module, use.Line, 1, use.Kind});
    else
      ++Edges[known->second].Count;
  }

  const CodeElement* EndOf(std::uint32_t place, bool isTarget) const {
    return isTarget ? Edges[place].To : Edges[place].From;
  }

  std::vector<std::uint32_t> Sorted(bool isTarget) const {
    std::vector<std::uint32_t> places(Edges.size());
    for (std::uint32_t i = 0; i < places.size(); ++i) places[i] = i;
    std::stable_sort(places.begin(), places.end(), [&](std::uint32_t a, std::uint32_t b) {
      return std::less<>()(EndOf(a, isTarget), EndOf(b, isTarget));
    });
    return places;
  }

  std::vector<ElementUse> Of(const CodeElement& element, bool isTarget) const {
    const auto& places = isTarget ? To : From;
    auto place = std::lower_bound(places.begin(), places.end(), &element,
                                  [&](std::uint32_t at, const CodeElement* sought) {
                                    return std::less<>()(EndOf(at, isTarget), sought);
                                  });
    std::vector<ElementUse> uses;
    for (; place != places.end() && EndOf(*place, isTarget) == &element; ++place) {
      const Edge& edge = Edges[*place];
      uses.push_back(
          {isTarget ? edge.From : edge.To, edge.Module, edge.Line, edge.Count, WordOf(edge.Kind)});
    }
    return uses;
  }
};

EstateUses::EstateUses() : mState(std::make_unique<State>()) {}
EstateUses::~EstateUses() = default;

void EstateUses::Bind(const ProjectEntry& project, const TakeNames& take) {
  FilesOfProject files(project);
  std::unordered_set<const SourceEntry*> given;
  std::vector<BoundName> names;
  const auto isBefore = [](const BoundName& a, const BoundName& b) {
    return a.Line != b.Line ? a.Line < b.Line : a.Column < b.Column;
  };
  const auto give = [&] {
    if (!std::is_sorted(names.begin(), names.end(), isBefore))
      std::stable_sort(names.begin(), names.end(), isBefore);
    for (const SourceEntry* file : files.AtHand())
      if (given.insert(file).second) take(*file, names);
    names.clear();
  };
  UseOptions options;
  options.Declarations = true;
  UseBinder binder(*const_cast<VBProject*>(project.Project), options);
  binder.BindAll([&](const NameUse& use) {
    mState->Add(use, use.Element);
    if (use.Answer == UseAnswer::Ambiguous)
      for (const CodeElement* candidate : use.Candidates) mState->Add(use, candidate);
    if (!files.IsAtHand(use)) {
      give();
      files.Enter(use);
    }
    if (use.Element && !use.Secondary && use.EndColumn > use.Column)
      names.push_back({use.Line, use.Column, use.Element, use.Kind == UseKind::Declare});
  });
  give();
  for (const SourceEntry& source : project.Sources)
    if (given.insert(&source).second) take(source, {});
}

void EstateUses::Finish() {
  mState->To = mState->Sorted(true);
  mState->From = mState->Sorted(false);
  mState->OfHolder.clear();
}

void EstateUses::Release() { mState = std::make_unique<State>(); }

std::vector<ElementUse> EstateUses::UsersOf(const CodeElement& element) const {
  return mState->Of(element, true);
}
std::vector<ElementUse> EstateUses::UsedBy(const CodeElement& element) const {
  return mState->Of(element, false);
}

}  // namespace vendrel::site
