#include "uses/Reach.h"

#include <algorithm>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "model/Component.h"
#include "project/VBProject.h"
#include "uses/Builtins.h"
#include "uses/Entries.h"

namespace vendrel {
namespace {

// An `Attribute Name.VB_UserMemId`: the default member, an enumerator, a standard property.
bool HasMemberID(const Block& procedure) {
  for (const std::string& text : procedure.Attributes())
    if (ContainsNoCaseAscii(text, ".VB_UserMemId")) return true;
  return false;
}

}  // namespace

void Reach::Add(VBProject& project) {
  mGraph.Add(project);
  AddBound(project);
}

void Reach::AddBound(VBProject& project) {
  mProjects.push_back(&project);
  for (const Component& module : project.Components.Listed())
    mModules[FoldKey(module.Name)].push_back(&module);
}

Reach::State& Reach::At(std::uint32_t node) {
  if (node >= mStates.size()) {
    mStates.resize(mGraph.Nodes().size());
    mFrom.resize(mStates.size());
    mTo.resize(mStates.size());
  }
  return mStates[node];
}

const Reach::State* Reach::Of(const CodeElement& element) const {
  const std::uint32_t node = mGraph.Find(element);
  return node < mStates.size() ? &mStates[node] : nullptr;
}

bool Reach::IsReached(const CodeElement& element) const {
  const State* state = Of(element);
  return state && state->Reached;
}
ReachCause Reach::CauseOf(const CodeElement& element) const {
  const State* state = Of(element);
  return state ? state->Cause : ReachCause::None;
}
bool Reach::IsRead(const CodeElement& element) const {
  const State* state = Of(element);
  return state && state->Read;
}
bool Reach::IsWritten(const CodeElement& element) const {
  const State* state = Of(element);
  return state && state->Written;
}
bool Reach::IsCalledLate(std::string_view name) const { return mLateNames.contains(FoldKey(name)); }
bool Reach::StandsInString(std::string_view name) const {
  return mLiterals.contains(FoldKey(name));
}

std::vector<const ReachEdge*> Reach::UsesOf(const CodeElement& element) const {
  std::vector<const ReachEdge*> uses;
  const std::uint32_t node = mGraph.Find(element);
  if (node >= mTo.size()) return uses;
  for (const std::uint32_t edge : mTo[node])
    if (!mGraph.Edges()[edge].OwnOnly) uses.push_back(&mGraph.Edges()[edge]);
  return uses;
}

bool Reach::IsOpen(const Component& module) const {
  const VBProject* project = module.VBProject();
  if (!project) return true;
  if (IsLooseProject(*project)) return true;
  return IsLibraryProject(*project) && (IsNetProject(*project) || HasObjects(module)) &&
         EqualsNoCaseAscii(module.Access, "PUBLIC");
}

void Reach::Sweep() try {
  if (!mGraph.Nodes().empty()) At(0);
  for (std::uint32_t i = 0; i < mGraph.Edges().size(); ++i) {
    const ReachEdge& edge = mGraph.Edges()[i];
    mFrom[edge.From].push_back(i);
    if (edge.From != edge.To) mTo[edge.To].push_back(i);
  }
  for (const LateName& late : mGraph.LateNames()) {
    mLateOf[late.From].push_back(&late);
    mLateNames.insert(late.Name);
  }
  for (VBProject* project : mProjects) IndexMembers(*project);
  for (VBProject* project : mProjects) {
    EnterStartup(*project);
    for (const Component& module : project->Components.Listed())
      if (IsOpen(module)) IsNetModule(module) ? EnterNetPublic(module) : EnterPublic(module);
    EnterMarked(*project);
  }
  if (mGraph.CallsByName())
    for (const std::string& name : mLiterals) MarkLate(name);
  while (!mOpen.empty()) {
    const std::uint32_t node = mOpen.back();
    mOpen.pop_back();
    for (const std::uint32_t edge : mFrom[node]) FollowEdge(mGraph.Edges()[edge]);
    const auto late = mLateOf.find(node);
    if (late != mLateOf.end())
      for (const LateName* name : late->second) MarkLate(name->Name);
    MarkOwner(*mGraph.Nodes()[node]);
  }
}
VENDREL_CONTEXT()

// Members of classes that may be called late, interfaces, and names in strings.
void Reach::IndexMembers(VBProject& project) {
  for (const Component& module : project.Components.Listed()) {
    AddLiteralNames(module, mLiterals);
    for (const Interface& one : module.Interfaces) {
      const std::string_view name = one.Name;
      const auto found = mModules.find(FoldKey(name.substr(name.rfind('.') + 1)));
      if (found == mModules.end()) continue;
      for (const Component* interface : found->second) mInterfaces.insert(interface);
    }
    const bool isNet = IsNetProject(project);  // where modules have extension methods
    if (!isNet && !HasObjects(module)) continue;
    for (const Block& block : module.Blocks) {
      if (!block.Name().empty() && block.AccessType() != atPrivate)
        mMembers[FoldKey(block.Name())].push_back(&block);
      if (block.BlockType() != btDeclarations || !block.Variables.IfAny()) continue;
      for (const Variable& variable : *block.Variables)
        if (variable.AccessType() != atPrivate)
          mMembers[FoldKey(variable.Name)].push_back(&variable);
    }
  }
}

void Reach::Enter(const CodeElement& element, ReachCause cause) {
  const std::uint32_t node = mGraph.NodeOf(element);
  State& state = At(node);
  if (state.Cause == ReachCause::None) state.Cause = cause;
  state.Read = true;
  Mark(node);
}

void Reach::Mark(std::uint32_t node) {
  State& state = At(node);
  if (state.Reached) return;
  state.Reached = true;
  mOpen.push_back(node);
}

void Reach::FollowEdge(const ReachEdge& edge) {
  if (edge.From == edge.To || edge.OwnOnly || edge.FalseOnly) return;
  State& state = At(edge.To);
  state.Read = state.Read || edge.Reads;
  state.Written = state.Written || edge.Writes;
  Mark(edge.To);
}

// What an element belongs to, or stands for.
void Reach::MarkOwner(const CodeElement& element) {
  const auto mark = [this](const CodeElement* owner) {
    if (owner) Mark(mGraph.NodeOf(*owner));
  };
  if (const auto* module = As<Component>(&element)) {
    if (IsNetModule(*module))
      MarkNetModule(*module);
    else if (HasObjects(*module))
      MarkModule(*module);
    return;
  }
  if (const auto* member = As<EnumMember>(&element)) mark(member->Enumeration.Get());
  if (const auto* enumeration = As<Enumeration>(&element))
    for (const EnumMember& member : enumeration->Members()) FollowFrom(member);
  if (const auto* structure = As<UDT>(&element))
    for (const Variable& member : structure->Members) FollowFrom(member);
  if (const auto* variable = As<Variable>(&element)) mark(As<UDT>(variable->Parent.Get()));
  if (const auto* group = As<PropertyGroup>(&element)) {
    mark(group->PropertyGetBlock());
    mark(group->PropertyLetBlock());
    mark(group->PropertySetBlock());
  }
  const Component* home = element.OwnComponent();
  if (!home) return;
  const bool isNet = IsNetModule(*home);
  if (isNet || !HasObjects(*home)) mark(home);
  if (const auto* block = As<Block>(&element); block && isNet) MarkFamily(*block, *home);
}

// The types and values in what an element declares, which is no use of the element.
void Reach::FollowFrom(const CodeElement& element) {
  const std::uint32_t node = mGraph.Find(element);
  if (node >= mFrom.size()) return;
  for (const std::uint32_t edge : mFrom[node]) FollowEdge(mGraph.Edges()[edge]);
}

void Reach::MarkModule(const Component& module) {
  const bool isInterface = IsInterface(module);
  for (const Block& block : module.Blocks) {
    if (block.Name().empty()) continue;
    if (!block.Interface.empty() || (isInterface && block.AccessType() == atPublic))
      Enter(block, ReachCause::InterfaceMember);
    else if (HandlesEvent(block))
      Enter(block, ReachCause::EventProcedure);
    else if (HasMemberID(block))
      Enter(block, ReachCause::DefaultMember);
    if (block.IsEventProcedure && IsA<Variable>(block.EventSource.Get()))
      Enter(*block.EventSource.Get(), ReachCause::EventProcedure);
  }
  MarkControls(module);
  MarkWaiting(module);
}

void Reach::MarkWaiting(const Component& module) {
  const auto waiting = mWaiting.find(&module);
  if (waiting == mWaiting.end()) return;
  for (const CodeElement* element : waiting->second) Mark(mGraph.NodeOf(*element));
  mWaiting.erase(waiting);
}

// The user controls of these projects that lie on a form.
void Reach::MarkControls(const Component& module) {
  for (const VBControl& control : module.AllVBControls) {
    const std::string_view type = control.ProgID;
    const auto found = mModules.find(FoldKey(type.substr(type.rfind('.') + 1)));
    if (found == mModules.end()) continue;
    for (const Component* other : found->second) {
      const VBProject* project = other->VBProject();
      if (other->FileType == ftUserControl && project &&
          EqualsNoCase(project->ProjectName, type.substr(0, type.find('.'))))
        Enter(*other, ReachCause::ControlType);
    }
  }
}

// Each member of that name, once there may be an object that has it.
void Reach::MarkLate(const std::string& name) {
  if (!mReachedLate.insert(name).second) return;
  const auto found = mMembers.find(name);
  if (found == mMembers.end()) return;
  for (const CodeElement* element : found->second) {
    const Component* home = element->OwnComponent();
    const std::uint32_t node = mGraph.NodeOf(*element);
    State& state = At(node);
    state.Read = state.Written = true;
    if (mGraph.CallsByName() && state.Cause == ReachCause::None && mLiterals.contains(name))
      state.Cause = ReachCause::CalledByName;
    const bool isExtension = home && home->FileType == ftModule;  // needs no object of its module
    if (home && (isExtension || IsReached(*home)))
      Mark(node);
    else
      mWaiting[home].push_back(element);
  }
}

bool HasObjects(const Component& module) {
  return module.FileType != ftModule && module.FileType != ftUnknown && module.FileType != ftOther;
}

namespace {

// The events of a form of forms have a prefix of their own.
bool HandlesEventOfMdiForm(const Block& procedure) {
  constexpr std::string_view prefix = "MDIForm_";
  const Component* module = procedure.Component.Get();
  return module && module->FileType == ftForm && StartsWithNoCaseAscii(procedure.Name(), prefix) &&
         Builtins::Table().FindEvent("MDIForm",
                                     std::string_view(procedure.Name()).substr(prefix.size()));
}

}  // namespace

bool HandlesEvent(const Block& procedure) {
  if (HandlesEventOfMdiForm(procedure)) return true;
  const CodeElement* source = procedure.IsEventProcedure ? procedure.EventSource.Get() : nullptr;
  if (!source) return false;
  const Builtins& table = Builtins::Table();
  if (const auto* module = As<Component>(source)) {
    const std::string_view event =
        std::string_view(procedure.Name()).substr(module->EventProcedureHeader().size());
    // A class may be of any kind that has objects; a UserControl has all of their events.
    const std::string_view base =
        module->FileType == ftClass ? std::string_view("UserControl") : BaseTypeName(*module);
    return base.empty() || table.FindEvent(base, event);
  }
  const auto* control = As<VBControl>(source);
  if (!control) return true;
  const BuiltinType* type =
      StartsWithNoCaseAscii(control->ProgID, "VB.") ? table.FindType(control->ProgID) : nullptr;
  if (!type) return true;
  const std::string_view event =
      std::string_view(procedure.Name()).substr(control->ShortName().size() + 1);
  return table.FindEvent(*type, event) != nullptr;
}

}  // namespace vendrel
