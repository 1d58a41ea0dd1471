#include "survey/CodeGraph.h"

#include <algorithm>
#include <deque>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "output/Dump.h"
#include "survey/Wording.h"

namespace vendrel {
namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr std::string_view kReferences = "references", kImplements = "implements",
                           kInherits = "inherits", kUses = "uses", kCalls = "calls";

// "New Ledger.Account", "List(Of Account)", "Account()" -> what stands before brackets.
std::string_view BareType(std::string_view type) {
  type = Trim(type);
  if (StartsWithNoCaseAscii(type, "New ")) type = Trim(type.substr(4));
  return Trim(type.substr(0, type.find_first_of("(*<")));
}

std::string_view LastPart(std::string_view name) {
  const std::size_t dot = name.find_last_of('.');
  return dot == std::string_view::npos ? name : name.substr(dot + 1);
}

// A standard module is no type; nor is a module of VB.NET.
bool IsTypeOfItsOwn(const Component& component) {
  return component.FileType != ftModule && !component.IsEnumeration;
}

}  // namespace

CodeGraph::CodeGraph(GraphLevel level, std::string nativeRoot)
    : mLevel(level), mNativeRoot(std::move(nativeRoot)) {}

void CodeGraph::Add(const VBProject& project, const CallGraph* calls) {
  const std::string path = project.FileName.FullPath();
  if (mProjectKeys.contains(FoldKey(path))) return;
  const std::size_t node = mCandidates.size();
  const std::string& name =
      project.ProjectName.empty() ? project.FileName.BaseName() : project.ProjectName;
  const std::string_view kind = KindOfProject(project);
  mCandidates.push_back(
      {{name, std::string(kind.empty() ? "project" : kind), ShownFile(path, mNativeRoot), 0, {}},
       name,
       kNone,
       mLevel != GraphLevel::Class});
  const std::size_t index = mProjects.size();
  mProjects.push_back({node, FoldKey(project.EXEName32), {}, {}});
  mProjectKeys.emplace(FoldKey(path), index);
  for (const std::string& key :
       {project.ClsID(), project.VBNETProjectGUID, project.EXEName32, name + ".dll"})
    if (!key.empty()) mProjectKeys.emplace(FoldKey(key), index);
  AddReferences(project, node);
  if (mLevel == GraphLevel::Project) return;
  for (const Component& component : project.Components.Listed())
    AddModule(component, mProjects.back());
  if (calls) AddCalls(*calls, mProjects.back());
}

void CodeGraph::AddCalls(const CallGraph& calls, const ProjectNames& names) {
  for (const CallEdge& edge : CallsBetweenModules(calls)) {
    const auto *from = As<Component>(edge.From), *to = As<Component>(edge.To);
    const auto known = from ? names.Modules.find(FoldKey(from->FullName())) : names.Modules.end();
    if (known != names.Modules.end() && to)
      mMentions.push_back({known->second, to->FullName(), kCalls, edge.Count});
  }
}

void CodeGraph::AddReferences(const VBProject& project, std::size_t node) {
  for (const Reference& reference : project.References)
    mReferences.push_back({node, ReferenceNameOf(reference), reference.FileName.FullPath(),
                           reference.StoredCLSID, reference.ProjectGUID,
                           reference.FileName.LeafName()});
}

void CodeGraph::AddModule(const Component& component, ProjectNames& names) {
  if (mLevel == GraphLevel::Class && !IsTypeOfItsOwn(component)) return;
  const std::size_t node = mCandidates.size();
  const std::string file = component.FileName.FullPath();
  mCandidates.push_back({{mCandidates[names.Node].Name + "." + component.Name,
                          std::string(KindWordOf(component)),
                          file.empty() ? file : ShownFile(file, mNativeRoot),
                          component.SourceLine(),
                          {}},
                         component.Name,
                         names.Node});
  names.Modules.emplace(FoldKey(component.FullName()), node);
  names.Modules.emplace(FoldKey(component.Name), node);
  AddMentions(component, node);
}

void CodeGraph::AddMention(std::size_t from, std::string_view type, std::string_view relation) {
  const std::string_view bare = BareType(type);
  if (!bare.empty()) mMentions.push_back({from, std::string(bare), relation, 1});
}

void CodeGraph::AddMentions(const Component& component, std::size_t node) {
  const auto uses = [&](std::string_view type) { AddMention(node, type, kUses); };
  const auto parameters = [&](const auto& element) {
    for (const Parameter& parameter : *element.Parameters) uses(parameter.VariableType);
  };
  if (!EqualsNoCaseAscii(component.InheritsFrom, "System.Object"))
    AddMention(node, component.InheritsFrom, kInherits);
  for (const Interface& interface : component.Interfaces)
    AddMention(node, interface.Name, kImplements);
  for (const Block& block : component.Blocks) {
    if (!IsOwnMember(block)) continue;
    uses(block.ReturnType);
    parameters(block);
    for (const Variable& variable : *block.Variables)
      if (variable.Implemented || variable.InheritedFrom.empty()) uses(variable.TypeName);
  }
  for (const UDT& type : component.UDTs)
    for (const Variable& member : type.Members) uses(member.TypeName);
  for (const EventDeclaration& event : component.EventDeclarations) parameters(event);
  for (const DeclareDeclaration& declare : component.Declarations) parameters(declare);
  for (const VBControl& control : component.AllVBControls) uses(control.ProgID);
}

void CodeGraph::Finish() {
  TieReferences();
  TieMentions();
  SettleLabels();
  Nodes.clear();
  for (const Candidate& candidate : mCandidates) Nodes.push_back(candidate.Shown);
  std::vector<bool> drawn;
  for (const Candidate& candidate : mCandidates) drawn.push_back(candidate.IsDrawn);
  LeaveOut(drawn);
}

void CodeGraph::AddEdge(std::size_t from, std::size_t to, std::string_view relation,
                        std::int64_t count) {
  if (from == to) return;
  const auto [known, isNew] = mEdgeOf.try_emplace({from, to, relation}, Edges.size());
  if (isNew) Edges.push_back({from, to, relation, 0});
  Edges[known->second].Count += count;
}

std::size_t CodeGraph::NodeFor(const std::string& key, std::string name, std::string_view kind) {
  const auto [known, isNew] = mOutside.try_emplace(key, mCandidates.size());
  if (isNew) mCandidates.push_back({{name, std::string(kind), {}, 0, {}}, name, kNone});
  return known->second;
}

// By the path of the project; else by the identity or the file name of what it is compiled to.
void CodeGraph::TieReferences() {
  std::unordered_map<std::size_t, std::size_t> projectOfNode;
  for (std::size_t i = 0; i < mProjects.size(); ++i) projectOfNode[mProjects[i].Node] = i;
  for (const LibraryReference& reference : mReferences) {
    std::size_t target = kNone;
    for (const std::string* key :
         {&reference.Path, &reference.ClassId, &reference.Guid, &reference.Leaf}) {
      const auto found = key->empty() ? mProjectKeys.end() : mProjectKeys.find(FoldKey(*key));
      if (found == mProjectKeys.end()) continue;
      target = found->second;
      break;
    }
    if (target != kNone) {
      mProjects[projectOfNode.at(reference.From)].Referenced.push_back(target);
      AddEdge(reference.From, mProjects[target].Node, kReferences);
    } else if (!reference.Name.empty() && mLevel != GraphLevel::Class) {
      const std::string& identity = reference.ClassId.empty() ? reference.Name : reference.ClassId;
      AddEdge(reference.From, NodeFor("library " + FoldKey(identity), reference.Name, "library"),
              kReferences);
    }
  }
}

std::size_t CodeGraph::ModuleNamed(const ProjectNames& names, const std::string& key) const {
  const auto own = names.Modules.find(key);
  if (own != names.Modules.end()) return own->second;
  for (const std::size_t other : names.Referenced) {
    const auto found = mProjects[other].Modules.find(key);
    if (found != mProjects[other].Modules.end()) return found->second;
  }
  return kNone;
}

// In the project itself, then in those that it refers to. What neither has is a type of a library,
// and shown where a class implements or inherits it.
void CodeGraph::TieMentions() {
  std::unordered_map<std::size_t, const ProjectNames*> namesOf;
  for (const ProjectNames& names : mProjects) namesOf[names.Node] = &names;
  for (const Mention& mention : mMentions) {
    const ProjectNames& names = *namesOf.at(mCandidates[mention.From].Project);
    std::size_t target = ModuleNamed(names, FoldKey(mention.Name));
    if (target == kNone) target = ModuleNamed(names, FoldKey(LastPart(mention.Name)));
    if (target == kNone && mention.Relation != kUses && mention.Relation != kCalls)
      target = NodeFor("type " + FoldKey(mention.Name), mention.Name,
                       mention.Relation == kImplements ? "interface" : "class");
    if (target != kNone) AddEdge(mention.From, target, mention.Relation, mention.Count);
  }
}

// Where several have one label, each gets its file, and a number where that does not help.
void CodeGraph::SettleLabels() {
  std::unordered_map<std::string, int> counts;
  for (const Candidate& candidate : mCandidates) ++counts[FoldKey(candidate.Shown.Label)];
  std::unordered_map<std::string, int> taken;
  for (Candidate& candidate : mCandidates) {
    std::string& label = candidate.Shown.Label;
    if (counts[FoldKey(label)] > 1)
      label +=
          " (" + (candidate.Shown.File.empty() ? candidate.Shown.Kind : candidate.Shown.File) + ")";
    const int before = taken[FoldKey(label)]++;
    if (before > 0) label += " #" + std::to_string(before + 1);
  }
  for (Candidate& candidate : mCandidates)
    if (candidate.Project != kNone)
      candidate.Shown.Project = mCandidates[candidate.Project].Shown.Label;
}

void CodeGraph::LeaveOut(const std::vector<bool>& kept) {
  std::vector<std::size_t> moved(Nodes.size(), kNone);
  std::size_t count = 0;
  for (std::size_t i = 0; i < Nodes.size(); ++i) {
    if (!kept[i]) continue;
    moved[i] = count;
    if (count != i) {
      Nodes[count] = std::move(Nodes[i]);
      mCandidates[count] = std::move(mCandidates[i]);
    }
    ++count;
  }
  Nodes.resize(count);
  mCandidates.resize(count);
  std::erase_if(Edges, [&](const Edge& edge) { return !kept[edge.From] || !kept[edge.To]; });
  for (Edge& edge : Edges) edge = {moved[edge.From], moved[edge.To], edge.Relation, edge.Count};
}

bool CodeGraph::Focus(std::string_view name, int depth) {
  std::vector<int> distance(Nodes.size(), -1);
  std::deque<std::size_t> waiting;
  for (std::size_t i = 0; i < Nodes.size(); ++i) {
    const bool isNamed = EqualsNoCase(Nodes[i].Label, name) ||
                         EqualsNoCase(mCandidates[i].Name, name) ||
                         EqualsNoCase(Nodes[i].Project, name);
    if (!isNamed) continue;
    distance[i] = 0;
    waiting.push_back(i);
  }
  if (waiting.empty()) return false;
  std::vector<std::vector<std::size_t>> neighbours(Nodes.size());
  for (const Edge& edge : Edges) {
    neighbours[edge.From].push_back(edge.To);
    neighbours[edge.To].push_back(edge.From);
  }
  while (!waiting.empty()) {
    const std::size_t at = waiting.front();
    waiting.pop_front();
    if (distance[at] == depth) continue;
    for (const std::size_t next : neighbours[at]) {
      if (distance[next] >= 0) continue;
      distance[next] = distance[at] + 1;
      waiting.push_back(next);
    }
  }
  std::vector<bool> kept;
  for (const int steps : distance) kept.push_back(steps >= 0);
  LeaveOut(kept);
  return true;
}

}  // namespace vendrel
