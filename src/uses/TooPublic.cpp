// What is public and used by its own module only.
#include <algorithm>
#include <vector>

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "model/Component.h"
#include "project/VBProject.h"
#include "uses/Unused.h"

namespace vendrel {
namespace {

bool IsWide(const CodeElement& element) {
  if (const auto* block = As<Block>(&element)) return block->AccessType() != atPrivate;
  if (const auto* variable = As<Variable>(&element)) return variable->AccessType() != atPrivate;
  return !IsA<Constant, Component>(&element);
}

class TooPublicFinder {
 public:
  TooPublicFinder(const Reach& reach, const std::function<void(const UnusedFinding&)>& take)
      : mReach(reach), mTake(take) {}

  void Look(const VBProject& project) {
    for (const Component& module : project.Components.Listed()) {
      // `Option Private Module` says so already; what is open or implemented has to be public.
      if (mReach.IsOpen(module) || mReach.IsInterface(module) || module.OptionPrivate) continue;
      for (const Block& block : module.Blocks) {
        if (!block.Name().empty()) LookAtProcedure(module, block);
        if (block.BlockType() != btDeclarations) continue;
        if (block.Variables.IfAny())
          for (const Variable& one : *block.Variables) Look(one, "variable");
        if (block.Constants.IfAny())
          for (const Constant& one : *block.Constants) Look(one, "constant");
      }
      for (const UDT& one : module.UDTs) Look(one, "type");
      for (const DeclareDeclaration& one : module.Declarations) Look(one, "declare");
      for (const Enumeration& one : module.Enumerations) LookAtEnumeration(one);
      GiveFound();
    }
  }

 private:
  // The procedures of a property are judged together: one of them private would tear it apart.
  void LookAtProcedure(const Component& module, const Block& block) {
    if (!block.IsPropertyType()) {
      if (block.IsMethod()) Look(block, "procedure");
      return;
    }
    if (!module.IsFirstPropertyBlock(&block)) return;
    bool any = false;
    for (const Block* one : module.Blocks.Named(block.Name())) {
      if (mReach.UsesOf(*one).empty()) continue;
      if (!IsUsedWithin(*one)) return;
      any = true;
    }
    if (any) Look(block, "procedure");
  }

  void LookAtEnumeration(const Enumeration& enumeration) {
    for (const EnumMember& member : enumeration.Members())
      if (!mReach.UsesOf(member).empty() && !IsUsedWithin(member)) return;
    if (!mReach.IsReached(enumeration) || enumeration.AccessType() != atPublic) return;
    if (IsUsedWithin(enumeration)) Take(enumeration, "enumeration");
  }

  template <typename Element>
  void Look(const Element& element, std::string_view kind) {
    if (element.AccessType() == atPrivate || !mReach.IsReached(element) ||
        mReach.CauseOf(element) != ReachCause::None || mReach.IsCalledLate(element.ElementName()) ||
        mReach.StandsInString(element.ElementName()))
      return;
    if (!mReach.UsesOf(element).empty() && IsUsedWithin(element)) Take(element, kind);
  }

  // By no other module; a type besides by nothing that is public itself and would show it.
  bool IsUsedWithin(const CodeElement& element) const {
    const CodeElement* home = element.OwnComponent();
    const bool isType = IsA<UDT, Enumeration>(&element);
    for (const ReachEdge* edge : mReach.UsesOf(element)) {
      const CodeElement& user = *mReach.Graph().Nodes()[edge->From];
      if (user.OwnComponent() != home || (isType && IsWide(user))) return false;
    }
    return true;
  }

  void Take(const CodeElement& element, std::string_view kind) {
    UnusedFinding finding;
    finding.Element = &element;
    finding.Kind = kind;
    finding.Reason = UnusedReason::OwnModuleOnly;
    mFound.push_back(finding);
  }

  // In the order of their lines.
  void GiveFound() {
    std::stable_sort(mFound.begin(), mFound.end(),
                     [](const UnusedFinding& a, const UnusedFinding& b) {
                       return a.Element->SourceLine() < b.Element->SourceLine();
                     });
    for (const UnusedFinding& finding : mFound) mTake(finding);
    mFound.clear();
  }

  const Reach& mReach;
  const std::function<void(const UnusedFinding&)>& mTake;
  std::vector<UnusedFinding> mFound;  // of the module at hand
};

}  // namespace

void FindTooPublic(const Reach& reach, const std::function<void(const UnusedFinding&)>& take) try {
  TooPublicFinder finder(reach, take);
  for (const VBProject* project : reach.Projects()) finder.Look(*project);
}
VENDREL_CONTEXT()

}  // namespace vendrel
