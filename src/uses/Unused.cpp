#include "uses/Unused.h"

#include <algorithm>
#include <array>
#include <span>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "model/Component.h"
#include "project/VBProject.h"
#include "uses/Builtins.h"
#include "uses/Entries.h"
#include "uses/UnusedRings.h"

namespace vendrel {
namespace {

constexpr std::string_view kInString = "its name stands in a string";
constexpr std::string_view kComputed = "the program calls members by names that it computes";
constexpr std::string_view kUnboundName = "something of that name could not be bound";
constexpr std::string_view kDesigned = "a designer may show or set it";
constexpr std::string_view kLateObject = "objects may be used without their class being known";
constexpr std::string_view kHoldsObject = "it may keep an object alive";
constexpr std::string_view kOtherBranch = "with other values of #Const it is used";
constexpr std::string_view kOpenSignature = "what is called from outside has fixed parameters";

constexpr std::string_view kUnusedKinds[] = {
    "module",      "procedure",          "event-procedure", "parameter",
    "variable",    "local-variable",     "constant",        "type",
    "enumeration", "enumeration-member", "declare",         "event",
    "reference",   "control-reference"};

// The procedures of a class that a client without its type could call.
bool IsOfObject(const CodeElement& element) {
  const Component* home = element.OwnComponent();
  return home && HasObjects(*home);
}

class UnusedFinder {
 public:
  UnusedFinder(const Reach& reach, const std::function<void(const UnusedFinding&)>& take)
      : mReach(reach), mTake(take), mRings(reach) {}

  void Look(const VBProject& project) {
    for (const Component& module : project.Components.Listed()) {
      if (module.LoadState == lsNotLoaded) continue;
      mFound.clear();
      if (!IsNetModule(module))
        LookAtModule(module);
      else if (!mReach.Graph().IsDesigned(module))
        LookAtNetType(module);
      std::stable_sort(mFound.begin(), mFound.end(),
                       [](const UnusedFinding& a, const UnusedFinding& b) {
                         return a.Element->SourceLine() < b.Element->SourceLine();
                       });
      for (const UnusedFinding& finding : mFound)
        if (!IsDesigned(*finding.Element)) mTake(finding);
    }
  }

 private:
  void LookAtModule(const Component& module) {
    if (!mReach.IsReached(module) && !HasReachedMember(module)) return Add(module, "module");
    for (const Block& block : module.Blocks) {
      if (!block.Name().empty() && IsProcedure(block)) LookAtProcedure(module, block);
      if (block.BlockType() == btDeclarations) LookAtDeclared(block, "variable", "constant");
    }
    for (const Enumeration& one : module.Enumerations) LookAtEnumeration(one);
    for (const UDT& one : module.UDTs) LookAt(one, "type");
    for (const DeclareDeclaration& one : module.Declarations) LookAt(one, "declare");
    for (const EventDeclaration& one : module.EventDeclarations) LookAtEvent(one);
  }

  // What stands inside of a procedure is designed as that is.
  bool IsDesigned(const CodeElement& element) const {
    const auto* parameter = As<Parameter>(&element);
    const auto* variable = As<Variable>(&element);
    const CodeElement* parent = parameter  ? parameter->Parent.Get()
                                : variable ? variable->Parent.Get()
                                           : nullptr;
    return mReach.Graph().IsDesigned(element) || (parent && mReach.Graph().IsDesigned(*parent));
  }

  // A class, structure, interface, module or enumeration of VB.NET.
  void LookAtNetType(const Component& type) {
    const std::string_view kind = type.IsEnumeration          ? "enumeration"
                                  : type.FileType == ftModule ? "module"
                                                              : "type";
    if (!mReach.IsReached(type)) return Add(type, kind);
    if (type.IsInterface) return;  // what it asks for is for others to use
    for (const Block& block : type.Blocks) {
      if (block.BlockType() == btDeclarations)
        LookAtDeclared(block, type.IsEnumeration ? "enumeration-member" : "variable", "constant");
      if (block.Name().empty() || !IsProcedure(block) || !IsOwnMemberOf(block)) continue;
      // The block that gathers overloads stands for no line of its own.
      if (const Blocks* overloads = block.OverloadBlocks().IfAny())
        for (const Block& overload : *overloads) LookAtProcedure(type, overload);
      else
        LookAtProcedure(type, block);
    }
    for (const EventDeclaration& one : type.EventDeclarations)
      if (IsOwnMemberOf(one)) LookAtEvent(one);
  }

  static bool IsProcedure(const Block& block) { return block.IsMethod() || block.IsPropertyType(); }

  bool HasReachedMember(const Component& module) const {
    const auto any = [this](const auto& elements) {
      return std::any_of(elements.begin(), elements.end(),
                         [this](const auto& one) { return mReach.IsReached(one); });
    };
    for (const Block& block : module.Blocks) {
      if (!block.Name().empty() && mReach.IsReached(block)) return true;
      if (block.BlockType() != btDeclarations) continue;
      if (block.Variables.IfAny() && any(*block.Variables)) return true;
      if (block.Constants.IfAny() && any(*block.Constants)) return true;
    }
    return any(module.Enumerations) || any(module.UDTs) || any(module.Declarations);
  }

  void LookAtProcedure(const Component& module, const Block& block) {
    if (!mReach.IsReached(block)) {
      if (const UnusedReason reason = OrphanReason(module, block);
          reason != UnusedReason::NeverUsed)
        return AddAs(block, "event-procedure", reason);
      return Add(block, "procedure");
    }
    if (const Parameters* parameters = block.Parameters.IfAny();
        parameters && mReach.CauseOf(block) != ReachCause::EventProcedure &&
        mReach.CauseOf(block) != ReachCause::InterfaceMember)
      LookAtParameters(block, *parameters);
    LookAtDeclared(block, "local-variable", "constant");
  }

  // A procedure named as if it handled an event, of which there is no source.
  UnusedReason OrphanReason(const Component& module, const Block& block) const {
    if (!mReach.UsesOf(block).empty() || block.IsPropertyType() || IsNetModule(module))
      return UnusedReason::NeverUsed;
    if (block.IsEventProcedure)
      return HandlesEvent(block) ? UnusedReason::NeverUsed : UnusedReason::NoEvent;
    const std::size_t at = block.Name().rfind('_');
    if (at == std::string::npos || at == 0 || !HasObjects(module)) return UnusedReason::NeverUsed;
    const std::string_view event = std::string_view(block.Name()).substr(at + 1);
    for (const BuiltinType& type : Builtins::Table().Types())
      if (type.IsObject() && Builtins::Table().FindEvent(type, event))
        return UnusedReason::NoControl;
    return UnusedReason::NeverUsed;
  }

  void LookAtParameters(const Block& block, const Parameters& parameters) {
    if (IsEmptyBody(block)) return;
    // The value that a property is given is there whether it is wanted or not.
    const bool takesValue =
        block.BlockType() == btPropertyLet || block.BlockType() == btPropertySet;
    for (std::size_t i = 1; i <= parameters.Count(); ++i) {
      const Parameter& parameter = *parameters.Item(i);
      if ((takesValue && i == parameters.Count()) || mReach.IsReached(parameter) ||
          !mReach.UsesOf(parameter).empty() || IsAddressed(block))
        continue;
      UnusedFinding finding = Made(parameter, "parameter");
      if (IsCalledFromOutside(block)) {
        finding.How = Sureness::Possible;
        finding.Doubt = kOpenSignature;
      }
      mFound.push_back(finding);
    }
  }

  bool IsCalledFromOutside(const Block& block) const {
    switch (mReach.CauseOf(block)) {
      case ReachCause::PublicOfLibrary:
      case ReachCause::MarkedUsed:
      case ReachCause::CalledByName:
      case ReachCause::Designer:  // of VB.NET: markup names it
      case ReachCause::Attribute: return true;
      default: return mReach.IsCalledLate(block.Name());
    }
  }

  // Nothing but its first and last line: a placeholder, or a member of an interface.
  bool IsEmptyBody(const Block& block) const {
    const CodeLines* lines = block.CodeLines.IfAny();
    if (!lines || lines->Unloaded()) return true;
    for (std::int32_t i = 1; i <= lines->Count(); ++i) {
      const LineTypeEnum type = lines->LineType(i);
      if (type == OTHER || type == VAR_DECLARATION) return false;
    }
    return true;
  }

  // What is called through its address has the parameters that its caller wants.
  bool IsAddressed(const Block& block) const {
    const std::vector<const ReachEdge*> uses = mReach.UsesOf(block);
    return std::any_of(uses.begin(), uses.end(),
                       [](const ReachEdge* edge) { return edge->IsAddress; });
  }

  void LookAtDeclared(const Block& block, std::string_view variable, std::string_view constant) {
    if (block.Variables.IfAny())
      for (const Variable& one : *block.Variables) LookAtVariable(one, variable);
    if (block.Constants.IfAny())
      for (const Constant& one : *block.Constants) LookAt(one, constant);
  }

  void LookAtVariable(const Variable& variable, std::string_view kind) {
    if (!IsOwnMemberOf(variable)) return;
    if (!mReach.IsReached(variable)) return Add(variable, kind);
    const ReachCause cause = mReach.CauseOf(variable);
    if (mReach.IsRead(variable) || !mReach.IsWritten(variable) || cause != ReachCause::None) return;
    AddAs(variable, kind, UnusedReason::NeverRead);
  }

  void LookAtEnumeration(const Enumeration& enumeration) {
    if (!mReach.IsReached(enumeration)) return Add(enumeration, "enumeration");
    for (const EnumMember& member : enumeration.Members()) LookAt(member, "enumeration-member");
  }

  void LookAtEvent(const EventDeclaration& event) {
    if (!mReach.IsReached(event)) AddAs(event, "event", UnusedReason::NeverRaised);
  }

  template <typename Element>
  void LookAt(const Element& element, std::string_view kind) {
    if (!mReach.IsReached(element)) Add(element, kind);
  }

  static UnusedFinding Made(const CodeElement& element, std::string_view kind) {
    UnusedFinding finding;
    finding.Element = &element;
    finding.Kind = kind;
    return finding;
  }

  // With the reason that its uses give.
  void Add(const CodeElement& element, std::string_view kind) {
    UnusedFinding finding = Made(element, kind);
    const bool isModule = IsA<Component>(&element);
    if (isModule) finding.Reason = UnusedReason::NothingOfIt;
    const std::vector<const ReachEdge*> uses = mReach.UsesOf(element);
    const ReachEdge* from = nullptr;
    for (const ReachEdge* use : uses)
      if (!use->FalseOnly && NodeAt(use->From)->OwnComponent() != &element) from = use;
    if (from) {
      finding.By = NodeAt(from->From);
      finding.Reason = mRings.IsInRing(element) ? UnusedReason::Ring : UnusedReason::OnlyDead;
    } else if (!uses.empty() && uses.front()->FalseOnly && !isModule) {
      finding.Reason = UnusedReason::OnlyOffBranch;
      finding.By = NodeAt(uses.front()->From);
    }
    Judge(finding);
    mFound.push_back(finding);
  }

  void AddAs(const CodeElement& element, std::string_view kind, UnusedReason reason) {
    UnusedFinding finding = Made(element, kind);
    finding.Reason = reason;
    Judge(finding);
    mFound.push_back(finding);
  }

  const CodeElement* NodeAt(std::uint32_t node) const { return mReach.Graph().Nodes()[node]; }

  void Judge(UnusedFinding& finding) const {
    const auto doubt = [&finding](Sureness how, std::string_view why) {
      if (how >= finding.How) return;
      finding.How = how;
      finding.Doubt = why;
    };
    const std::string name = finding.Element->ElementName();
    if (finding.Reason == UnusedReason::OnlyOffBranch) doubt(Sureness::Possible, kOtherBranch);
    if (finding.Reason == UnusedReason::NeverRead && HoldsObject(*finding.Element))
      doubt(Sureness::Possible, kHoldsObject);
    if (finding.Kind == "local-variable") return;
    const bool isPublic = IsPublic(*finding.Element);
    const auto* module = As<Component>(finding.Element);
    if (finding.Kind == "procedure" && mReach.StandsInString(name))
      doubt(Sureness::Possible, kInString);
    if (module && HasObjects(*module) &&
        (mReach.StandsInString(name) || mReach.StandsInString("." + name)))  // CreateObject
      doubt(Sureness::Possible, kInString);
    if (isPublic && IsOfObject(*finding.Element) && IsA<Block, Variable>(finding.Element) &&
        finding.Kind != "event-procedure") {
      const Component* home = finding.Element->OwnComponent();
      if (mReach.Graph().CallsByComputedName()) doubt(Sureness::Possible, kComputed);
      if (home->FileType == ftUserControl) doubt(Sureness::Possible, kDesigned);
      doubt(Sureness::Likely, kLateObject);
    }
    if (IsFoundByDesigner(*finding.Element)) doubt(Sureness::Possible, kDesigned);
    if (isPublic && mReach.Graph().Unbound().contains(FoldKey(name)))
      doubt(Sureness::Possible, kUnboundName);
    if ((finding.By || finding.Reason == UnusedReason::NeverRead) &&
        IsUsedByMemberOfObject(*finding.Element))
      doubt(Sureness::Likely, kLateObject);
  }

  // By one that is not reached itself, and so is no surer than that one: late calls, serialisers
  // and bindings reach members that nobody names.
  bool IsUsedByMemberOfObject(const CodeElement& element) const {
    const std::vector<const ReachEdge*> uses = mReach.UsesOf(element);
    return std::any_of(uses.begin(), uses.end(), [this](const ReachEdge* edge) {
      const CodeElement& from = *NodeAt(edge->From);
      return !mReach.IsReached(from) && IsA<Block>(&from) && IsOfObject(from) && IsPublic(from);
    });
  }

  bool HoldsObject(const CodeElement& element) const {
    const std::vector<const ReachEdge*> uses = mReach.UsesOf(element);
    return std::any_of(uses.begin(), uses.end(),
                       [](const ReachEdge* edge) { return edge->HoldsObject; });
  }

  static bool IsPublic(const CodeElement& element) {
    if (const auto* block = As<Block>(&element)) return block->AccessType() != atPrivate;
    if (const auto* variable = As<Variable>(&element)) return variable->AccessType() != atPrivate;
    if (const auto* constant = As<Constant>(&element)) return constant->AccessType() != atPrivate;
    return !IsA<Parameter>(&element);
  }

  const Reach& mReach;
  const std::function<void(const UnusedFinding&)>& mTake;
  UnusedRings mRings;
  std::vector<UnusedFinding> mFound;
};

struct ReasonRow {
  std::string_view Word, Sentence;
};
constexpr ReasonRow kReasonRows[] = {
#define VENDREL_UNUSED_ROW(value, word, sentence) {word, sentence},
    VENDREL_UNUSED_REASONS(VENDREL_UNUSED_ROW)
#undef VENDREL_UNUSED_ROW
};

}  // namespace

std::string_view WordOf(UnusedReason reason) {
  return kReasonRows[static_cast<std::size_t>(reason)].Word;
}
std::string_view SentenceOf(UnusedReason reason) {
  return kReasonRows[static_cast<std::size_t>(reason)].Sentence;
}
std::string_view WordOf(Sureness sureness) {
  static constexpr std::string_view kSureWords[] = {"possible", "likely", "certain"};
  return kSureWords[static_cast<std::size_t>(sureness)];
}
std::span<const std::string_view> UnusedKinds() { return kUnusedKinds; }

void FindUnused(const Reach& reach, const std::function<void(const UnusedFinding&)>& take) try {
  UnusedFinder finder(reach, take);
  for (const VBProject* project : reach.Projects()) finder.Look(*project);
}
VENDREL_CONTEXT()

}  // namespace vendrel
