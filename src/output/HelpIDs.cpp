#include "output/HelpIDs.h"

#include <algorithm>
#include <limits>
#include <set>
#include <string>

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "names/NameWalk.h"
#include "project/WithItsClass.h"

namespace vendrel {
namespace {

std::int32_t IncreasedOrRaise(std::int32_t id) {
  if (id == std::numeric_limits<std::int32_t>::max())
    throw VendrelError(errOverflow, "no help context ID is left above this one");
  return id + 1;
}

// Gives numbers to elements that need one.
class Numbering {
 public:
  Numbering(VBProject& project, bool forceReassign)
      : mProject(project), mReplaces(forceReassign && !project.RetainContextIDs) {}

  bool Replaces() const { return mReplaces; }
  bool Needs(std::int32_t id) const { return mReplaces || id == 0; }
  std::int32_t Next() {
    return mProject.CurrentHelpContextID = IncreasedOrRaise(mProject.CurrentHelpContextID);
  }
  template <typename Element>
  void NumberIfNeeded(Element& element) {
    if (Needs(element.HelpContextID)) element.HelpContextID = Next();
  }

 private:
  VBProject& mProject;
  bool mReplaces;
};

// Get, Let and Set share one topic. The consolidated block takes over an ID that one of the others
// has, so it is asked for before it counts as one without.
void NumberProperty(Component& component, Block& block, Numbering& numbering) {
  const Block* whole = component.ConsolidatedPropertyBlock(block.Name(), true);
  if (whole != &block) {
    if (whole && block.HelpContextID == 0 && whole->Name() == block.Name())
      block.HelpContextID = whole->HelpContextID;
    return;
  }
  numbering.NumberIfNeeded(block);
  for (Block* other : component.Blocks.Named(block.Name()))
    if (other->Name() == block.Name()) other->HelpContextID = block.HelpContextID;
}

const Variables* VariablesOf(const Block& block) {
  return block.BlockType() == btDeclarations ? block.Variables.IfAny() : nullptr;
}

std::int32_t HighestIn(const Component& component) {
  std::int32_t highest = component.HelpContextID;
  const auto see = [&](const auto& element) {
    highest = std::max(highest, std::int32_t{element.HelpContextID});
  };
  for (const EventDeclaration& event : component.EventDeclarations) see(event);
  for (const Block& block : component.Blocks) {
    see(block);
    if (const Variables* variables = VariablesOf(block))
      for (const Variable& variable : *variables) see(variable);
  }
  return highest;
}

// IDs that an earlier call gave count as seen: a second call never gives one of them again.
std::int32_t HighestSeen(const VBProject& project) {
  std::int32_t highest = project.HighestHelpContextID();
  for (const Component& component : project.Components.Listed())
    highest = std::max(highest, HighestIn(component));
  return highest;
}

std::int32_t FirstID(const VBProject& project, std::int32_t beginAt) {
  const std::int32_t highest = HighestSeen(project);
  const std::int32_t first = beginAt > highest ? beginAt : IncreasedOrRaise(highest);
  return project.HelpContextID > first ? IncreasedOrRaise(project.HelpContextID) : first;
}

std::int32_t HelpContextIDOf(const CodeElement& element) {
  std::int32_t id = 0;
  WithItsClass(element, [&](const auto& typed) {
    if constexpr (requires { typed.HelpContextID; }) id = typed.HelpContextID;
  });
  return id;
}

std::string TopicName(const CodeElement& element) {
  std::string name = "IDH_" + element.QualifiedName();
  for (char& c : name)
    if (!IsLetterAscii(c) && !IsDigitAscii(c)) c = '_';
  return name;
}

}  // namespace

void VBProject::AssignHelpContextIDs(std::int32_t BeginAt, bool ForceReassign) try {
  const Workspace::Use use(Workspace());
  Components.Populate();  // what the modules hold counts among the IDs seen
  Numbering numbering(*this, ForceReassign);
  CurrentHelpContextID = numbering.Replaces() ? BeginAt : FirstID(*this, BeginAt);
  if (numbering.Needs(HelpContextID)) {
    HelpContextID = CurrentHelpContextID;
    numbering.Next();
  }
  for (Component& component : Components.Listed()) component.AssignHelpContextIDs(ForceReassign);
  HelpContextIDsAssigned = true;
}
VENDREL_CONTEXT(BeginAt, ForceReassign, *this)

void Component::AssignHelpContextIDs(bool ForceReassign) try {
  const Workspace::Use use(Options().Workspace());
  vendrel::VBProject* project = VBProject();
  if (!project || !TakesHelpIDs(*this)) return;
  Numbering numbering(*project, ForceReassign);
  numbering.NumberIfNeeded(*this);
  for (EventDeclaration& event : EventDeclarations) numbering.NumberIfNeeded(event);
  for (Block& block : Blocks) {
    if (block.Access == "PUBLIC" && numbering.Needs(block.HelpContextID)) {
      if (block.IsPropertyType())
        NumberProperty(*this, block, numbering);
      else
        block.HelpContextID = numbering.Next();
    }
    block.AssignHelpContextIDs(ForceReassign);
  }
}
VENDREL_CONTEXT(ForceReassign, *this)

void Block::AssignHelpContextIDs(bool ForceReassign) try {
  vendrel::VBProject* project = VBProject();
  if (!project || mBlockType != btDeclarations || !Variables.IfAny()) return;
  Numbering numbering(*project, ForceReassign);
  for (Variable& variable : *Variables)
    if (variable.Access == "PUBLIC") numbering.NumberIfNeeded(variable);
}
VENDREL_CONTEXT(ForceReassign, *this)

bool TakesHelpIDs(const Component& component) {
  return component.Access == "PUBLIC" && component.FileType != ftModule &&
         component.FileType != ftForm;
}

std::vector<HelpTopic> HelpTopicsOf(VBProject& project) try {
  std::vector<HelpTopic> topics;
  ForEachNamedElement(project, [&](CodeElement& element) {
    const std::int32_t id = HelpContextIDOf(element);
    if (id > 0) topics.push_back({id, &element});  // -1 says that there is none
  });
  std::stable_sort(topics.begin(), topics.end(), [](const HelpTopic& a, const HelpTopic& b) {
    return a.HelpContextID < b.HelpContextID;
  });
  return topics;
}
VENDREL_CONTEXT(project)

void WriteHelpHeader(std::ostream& out, const std::vector<HelpTopic>& topics) {
  std::set<std::string> taken;
  for (const HelpTopic& topic : topics) {
    const std::string name = TopicName(*topic.Element);
    std::string free = name;
    // Members whose names differ in a character that is no letter here.
    for (int n = 2; !taken.insert(free).second; ++n) free = name + "_" + std::to_string(n);
    out << "#define " << free << ' ' << topic.HelpContextID << "\r\n";
  }
}

}  // namespace vendrel
