#include "survey/UseRules.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "model/ModuleKinds.h"
#include "survey/CallArguments.h"
#include "survey/MissingMembers.h"
#include "uses/Builtins.h"
#include "uses/UseBinder.h"
#include "uses/WrittenName.h"

namespace vendrel {
namespace {

// What is known of an element once all names are bound.
struct ElementUses {
  bool IsRead = false, IsWritten = false, IsUsed = false, IsUsedElsewhere = false;
};

// Elements to what is known of them, open and without nodes: it is asked once a use.
class UsesOfElements {
 public:
  ElementUses& At(const CodeElement& element) {
    if (2 * (mCount + 1) > mSlots.size()) Grow();
    Slot& slot = SlotOf(element);
    if (!slot.Element) {
      slot.Element = &element;
      ++mCount;
    }
    return slot.Uses;
  }
  ElementUses Of(const CodeElement& element) {
    return mCount ? SlotOf(element).Uses : ElementUses();
  }

 private:
  struct Slot {
    const CodeElement* Element = nullptr;
    ElementUses Uses;
  };
  Slot& SlotOf(const CodeElement& element) {
    const std::size_t mask = mSlots.size() - 1;
    const auto address = reinterpret_cast<std::uintptr_t>(&element);
    std::size_t at = (address * 0x9E3779B97F4A7C15u >> 32) & mask;
    while (mSlots[at].Element && mSlots[at].Element != &element) at = (at + 1) & mask;
    return mSlots[at];
  }
  void Grow() {
    std::vector<Slot> old(std::max<std::size_t>(1024, 2 * mSlots.size()));
    old.swap(mSlots);
    for (const Slot& slot : old)
      if (slot.Element) SlotOf(*slot.Element) = slot;
  }

  std::vector<Slot> mSlots;
  std::size_t mCount = 0;
};

// Names whose procedures may handle events.
std::unordered_set<std::string> SourcesOf(const Component& module) {
  std::unordered_set<std::string> names;
  for (const VBControl& control : module.AllVBControls) names.insert(FoldKey(control.ShortName()));
  for (const Interface& interface : module.Interfaces)
    names.insert(FoldKey(NameWithoutLibrary(interface.Name)));
  for (const Block& block : module.Blocks.Listed())
    if (block.BlockType() == btDeclarations)
      for (const Variable& variable : *block.Variables)
        if (variable.IsWithEvents) names.insert(FoldKey(variable.Name));
  return names;
}

class UseRulesRun {
 public:
  UseRulesRun(VBProject& project, const RuleFilter& wanted, std::vector<Finding>& found)
      : mProject(project),
        mMembers("interface-member", wanted, found),
        mEvents("event-source", wanted, found),
        mArguments("argument-count", wanted, found),
        mUnknown("unknown-name", wanted, found),
        mImplicit("implicit-constant", wanted, found),
        mNeverRead("never-read", wanted, found),
        mOwnModule("own-module-only", wanted, found) {}

  void Run() {
    FindMissingMembers(mProject, mMembers);
    const UseFindings* binding[] = {&mEvents,   &mArguments, &mUnknown,
                                    &mImplicit, &mNeverRead, &mOwnModule};
    if (std::none_of(std::begin(binding), std::end(binding),
                     [](const UseFindings* list) { return list->IsWanted(); }))
      return;
    UseOptions options;
    options.FalseBranches = true;
    UseBinder binder(mProject, options);
    binder.BindAll([this](const NameUse& use) { Take(use); });
    mMissesReferences = binder.MissesReferences();
    for (const Component& module : mProject.Components.Listed()) {
      if (!module.SourceForm) continue;
      FindLostHandlers(module);
      FindNeverRead(module);
      FindOfOwnModule(module);
    }
    FindImplicitConstants();
  }

 private:
  void Take(const NameUse& use) {
    if (use.Element) Note(*use.Element, use);
    for (const CodeElement* candidate : use.Candidates) Note(*candidate, use);
    if (const Block* procedure = ProcedureOf(use)) {
      if (procedure != use.Element) Note(*procedure, use);
      if (!use.InFalseBranch) CheckArguments(use, *procedure);
    }
    if (use.Answer == UseAnswer::Unknown && !use.Secondary && !use.InFalseBranch)
      mUnknown.Add(*use.Module, use.Line, use.Column,
                   "no declaration gives the name '" + std::string(use.Text) + "'");
    if (use.Answer == UseAnswer::Implicit && mImplicit.IsWanted()) {
      const auto made = mImplicitNames.try_emplace({use.Module, FoldKey(BareName(use.Text))});
      ImplicitName& name = made.first->second;
      if (made.second) name = {std::string(use.Text), use.Line, use.Column, false};
      name.IsWritten = name.IsWritten || use.Writes;
    }
  }

  void Note(const CodeElement& element, const NameUse& use) {
    if (use.Kind == UseKind::Declare) return;
    ElementUses& uses = mUses.At(element);
    // Whatever stands in a false branch may be the use of another build.
    uses.IsRead = uses.IsRead || use.Reads || use.InFalseBranch || use.Kind == UseKind::Part ||
                  IsCounter(use);
    uses.IsWritten = uses.IsWritten || use.Writes;
    uses.IsUsed = uses.IsUsed || !use.OwnProcedure;
    if (mOwnModule.IsWanted() && !uses.IsUsedElsewhere)
      uses.IsUsedElsewhere = element.OwnComponent() != use.Module;
  }

  // The loop reads what it counts with.
  static bool IsCounter(const NameUse& use) {
    return use.Writes && StartsWithNoCaseAscii(use.Statement, "For ");
  }

  void CheckArguments(const NameUse& use, const Block& procedure) {
    if (!mArguments.IsWanted() || use.Kind != UseKind::Call || use.Secondary || use.OwnProcedure ||
        procedure.IsPropertyType())
      return;
    const char* begin = use.Statement.data();
    if (use.Text.data() < begin || use.Text.data() >= begin + use.Statement.size()) return;
    const auto name = static_cast<std::size_t>(use.Text.data() - begin);
    const std::optional<int> count = CountArguments(use.Statement, name, name + use.Text.size());
    if (!count) return;
    int least = 0, most = 0;
    for (const Parameter& parameter : *procedure.Parameters) {
      least += !parameter.IsOptional && !parameter.IsParamArray;
      if (parameter.IsParamArray) return;
      ++most;
    }
    if (*count >= least && *count <= most) return;
    // The brackets may be the index of what it gives.
    const bool givesIndexed = procedure.BlockType() == btFunction && *count > most && least == 0;
    if (givesIndexed) return;
    mArguments.Add(*use.Module, use.Line, use.Column,
                   "'" + procedure.Name() + "' takes " +
                       (least == most ? std::to_string(most)
                                      : std::to_string(least) + " to " + std::to_string(most)) +
                       (most == 1 ? " argument" : " arguments") + ", here are " +
                       std::to_string(*count));
  }

  ElementUses UsesOf(const CodeElement& element) { return mUses.Of(element); }

  // "Command1_Click" of a form without Command1, which nothing calls.
  void FindLostHandlers(const Component& module) {
    const ModuleKind& kind = KindOfModule(module.FileType);
    if (!mEvents.IsWanted() || !kind.IsFormLike || !module.VBControl) return;
    const auto sources = SourcesOf(module);
    for (const Block& block : module.Blocks.Listed()) {
      const std::size_t at = block.Name().rfind('_');
      if (at == std::string::npos || at == 0 || block.BlockType() != btSub ||
          block.IsEventProcedure || !block.Interface.str().empty() ||
          block.AccessType() != atPrivate || UsesOf(block).IsUsed)
        continue;
      const std::string source(block.Name().substr(0, at));
      const std::string event(block.Name().substr(at + 1));
      if (!IsEvent(event) || sources.contains(FoldKey(source))) continue;
      if (EqualsNoCaseAscii(source + "_", kind.EventPrefix)) continue;
      mEvents.Add(module, block.SourceLine(), 0,
                  "'" + block.Name() + "' handles no event: there is no '" + source + "'");
    }
  }

  static bool IsEvent(const std::string& name) {
    static constexpr const char* types[] = {
        "TextBox", "CommandButton", "ListBox",    "PictureBox",  "Timer",     "ComboBox",
        "Data",    "DriveListBox",  "DirListBox", "FileListBox", "HScrollBar"};
    for (const char* type : types)
      if (Builtins::Table().FindEvent(type, name)) return true;
    return false;
  }

  // Read where nothing ever assigns it: a constant of the language misspelt, or one that another
  // module keeps to itself.
  void FindImplicitConstants() {
    if (mImplicitNames.empty()) return;
    std::unordered_map<std::string, const Component*> constants;
    for (const Component& module : mProject.Components.Listed())
      for (const Block& block : module.Blocks.Listed())
        if (block.BlockType() == btDeclarations)
          for (const Constant& constant : *block.Constants)
            constants.try_emplace(FoldKey(constant.Name), &module);
    for (const auto& [place, name] : mImplicitNames) {
      if (name.IsWritten) continue;
      const auto constant = constants.find(place.second);
      const bool isOfOther = constant != constants.end();
      if (!isOfOther && !IsNamedAsConstant(name.Text)) continue;
      if (isOfOther && mMissesReferences && IsNamedAsOfLibrary(name.Text)) continue;
      mImplicit.Add(*place.first, name.Line, name.Column,
                    "'" + name.Text + "' is no constant here but an empty variable" +
                        (isOfOther ? "; " + constant->second->Name + " declares a private one"
                                   : std::string()));
    }
  }

  // "adOpenStatic": it may stand in a library that is not at hand.
  static bool IsNamedAsOfLibrary(std::string_view name) {
    const std::size_t large = name.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ");
    return large != name.npos && large > 0;
  }

  // "vbYesNoo", and no "vbx": as constants of the language are written.
  static bool IsNamedAsConstant(std::string_view name) {
    return name.size() > 4 && name.starts_with("vb") && name[2] >= 'A' && name[2] <= 'Z' &&
           name.find_first_of("abcdefghijklmnopqrstuvwxyz", 3) != name.npos;
  }

  static bool IsPlainType(std::string_view type) {
    for (const char* name :
         {"Boolean", "Byte", "Integer", "Long", "Single", "Double", "Currency", "Date", "String"})
      if (EqualsNoCaseAscii(type, name)) return true;
    return false;
  }

  void FindNeverRead(const Component& module) {
    if (!mNeverRead.IsWanted()) return;
    for (const Block& block : module.Blocks.Listed()) {
      if (block.Name().empty()) continue;
      for (const Variable& variable : *block.Variables) {
        const ElementUses uses = UsesOf(variable);
        if (!uses.IsWritten || uses.IsRead || variable.IsArray || !IsPlainType(variable.TypeName))
          continue;
        mNeverRead.Add(module, variable.SourceLine(), 0,
                       "'" + variable.Name + "' is assigned and never read");
      }
    }
  }

  // Of standard modules: members of classes and forms may be reached at run time.
  void FindOfOwnModule(const Component& module) {
    if (!mOwnModule.IsWanted() || module.FileType != ftModule) return;
    const auto check = [&](const auto& element, std::string_view word) {
      const ElementUses uses = UsesOf(element);
      if (element.AccessType() != atPublic || !uses.IsUsed || uses.IsUsedElsewhere) return;
      if (EqualsNoCaseAscii(element.ElementName(), "Main")) return;
      mOwnModule.Add(module, element.SourceLine(), 0,
                     std::string(word) + " '" + element.ElementName() +
                         "' is public and used by its own module alone");
    };
    for (const Block& block : module.Blocks.Listed()) {
      if (!block.Name().empty() && !block.IsPropertyType()) check(block, "procedure");
      if (block.BlockType() != btDeclarations) continue;
      for (const Variable& variable : *block.Variables) check(variable, "variable");
      for (const Constant& constant : *block.Constants) check(constant, "constant");
    }
    for (const DeclareDeclaration& declare : module.Declarations) check(declare, "Declare");
  }

  VBProject& mProject;
  struct ImplicitName {
    std::string Text;  // as it stands first
    std::int32_t Line = 0, Column = 0;
    bool IsWritten = false;
  };
  UseFindings mMembers, mEvents, mArguments, mUnknown, mImplicit, mNeverRead, mOwnModule;
  std::map<std::pair<const Component*, std::string>, ImplicitName> mImplicitNames;
  bool mMissesReferences = false;
  UsesOfElements mUses;
};

}  // namespace

void FindByUses(VBProject& project, const RuleFilter& wanted, std::vector<Finding>& found) {
  if (project.LanguageVersion() == lvVisualBasicDotNet || project.WasReadFromTypeLibrary) return;
  UseRulesRun(project, wanted, found).Run();
}

}  // namespace vendrel
