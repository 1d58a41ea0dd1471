// What a module has from the classes above its own, made when somebody asks.

#include <algorithm>
#include <unordered_map>

#include "core/ProcessState.h"
#include "core/Workspace.h"
#include "diagnostics/Diagnostic.h"
#include "dotnet/MemberBuilder.h"
#include "dotnet/TypeBuilder.h"
#include "dotnet/metadata/MetadataLimits.h"
#include "model/Events.h"

namespace vendrel {
namespace {

using namespace metadata;

constexpr std::int32_t kMostNumbers = 1 << 20;  // set aside for one module
constexpr std::int32_t kLastNumber = 1 << 30;   // beyond it none are set aside

// What one module waits with.
struct Waiting {
  Component* Module;
  std::shared_ptr<AssemblyStore> Store;
  TypeHandle Type;
  std::vector<CodeElement*> Own;
  MemberFilter Filter;
  std::shared_ptr<TreeRoom> Room;
  std::int32_t FirstNumber;
  bool Done = false;
};

// Blocks take the numbers that were set aside, whenever they are made.
class NumbersSetAside {
 public:
  explicit NumbersSetAside(std::int32_t first) : mBehind(State().BlockID), mUsed(first > 0) {
    if (mUsed) State().BlockID = first;
  }
  ~NumbersSetAside() {
    if (mUsed) State().BlockID = mBehind;
  }
  NumbersSetAside(const NumbersSetAside&) = delete;
  NumbersSetAside& operator=(const NumbersSetAside&) = delete;

 private:
  std::int32_t mBehind;
  bool mUsed;
};

// Never more blocks than members above, each with the one that gathers it, and the declarations.
std::int32_t MostBlocks(const std::vector<BaseType>& bases) {
  std::size_t members = 1;
  for (const BaseType& base : bases) {
    const Image& image = *base.Type.File->Image;
    members += image.Tables().Run(tTypeDef, 5, base.Type.Row, tMethod).Count();
    members += image.Properties(base.Type.Row).Count();
  }
  return static_cast<std::int32_t>(std::min<std::size_t>(2 * members, kMostNumbers));
}

bool IsProcedure(const Member& member) {
  return member.Kind == MemberKind::Method || member.Kind == MemberKind::Property;
}

class Completion {
 public:
  explicit Completion(Waiting& waiting)
      : mWaiting(waiting),
        mModule(*waiting.Module),
        mBuilder(mModule, *waiting.Store, *waiting.Room) {
    mOwn = MembersOf(*waiting.Type.File->Image, waiting.Type.Row, waiting.Filter);
    mFound = InheritanceOf(*waiting.Store, waiting.Type, mOwn, waiting.Filter);
    for (const BaseType& base : mFound.Bases) mBaseNames.emplace_back(base.Type.Name());
  }

  void Run() {
    MarkOwn();
    for (Block& block : mModule.Blocks)
      mHeads.try_emplace(
          KeyOf(block.Name(), block.IsMethod() ? MemberKind::Method : MemberKind::Property),
          &block);
    std::vector<SourcedMember> members;
    for (const InheritedMember& inherited : mFound.Members)
      if (!inherited.IsHidden) Sort(Sourced(inherited), members);
    for (auto& [head, overloads] : mOverloads) mBuilder.AddOverloads(*head, overloads);
    mBuilder.AddAll(members);
    // Lists that have grown one by one hold room for half as many again.
    for (const auto& [head, overloads] : mOverloads)
      if (Blocks* family = head->Overloads()) family->Fit();
    mModule.Blocks.Fit();
    mModule.EventDeclarations.Fit();
  }

 private:
  SourcedMember Sourced(const InheritedMember& inherited) const {
    const BaseType& base = mFound.Bases[inherited.Base];
    return {{base.Type.File, &base.Arguments, mBaseNames[inherited.Base]}, inherited.Member};
  }

  static std::string KeyOf(std::string name, MemberKind kind) {
    return (kind == MemberKind::Method ? "M" : "P") + name;
  }

  void MarkOwn() {
    for (const OverridingMember& mark : mFound.Overriding) {
      CodeElement* element = mark.Own < mWaiting.Own.size() ? mWaiting.Own[mark.Own] : nullptr;
      if (!element) continue;
      const std::string& base = mFound.Bases[mark.Base].Type.Name();
      if (auto* block = As<Block>(element)) {
        MarkBlock(*block, base, mark.Hides);
      } else if (auto* event = As<EventDeclaration>(element)) {
        event->IsShadow |= mark.Hides;
        if (!mark.Hides && event->InheritedFrom.empty()) event->InheritedFrom = base;
      } else if (auto* variable = As<Variable>(element)) {
        variable->IsShadow |= mark.Hides;
      }
    }
  }

  static void MarkBlock(Block& block, const std::string& base, bool hides) {
    block.IsShadow |= hides;
    // Dispose counts as the own of each class.
    const bool isDispose = block.Name() == "Dispose" || block.Name().starts_with("Dispose(");
    if (!hides && !isDispose && block.InheritedFrom().empty()) block.SetInheritedFrom(base);
  }

  // A member joins the own family of its name, or comes behind the own ones.
  void Sort(SourcedMember member, std::vector<SourcedMember>& members) {
    Block* head = nullptr;
    if (IsProcedure(member.Member)) {
      const auto own = mHeads.find(KeyOf(TreeNameOf(member), member.Member.Kind));
      if (own != mHeads.end()) head = own->second;
    }
    if (!head) {
      if (!IsOwnName(member)) members.push_back(std::move(member));
      return;
    }
    const auto family = std::find_if(mOverloads.begin(), mOverloads.end(),
                                     [&](const auto& each) { return each.first == head; });
    if (family == mOverloads.end())
      mOverloads.push_back({head, {std::move(member)}});
    else
      family->second.push_back(std::move(member));
  }

  // A field or event of a name that the type has itself is hidden by it, whatever its type.
  bool IsOwnName(const SourcedMember& member) const {
    const std::string name = DocumentedNameOf(member.Member, 0);
    if (member.Member.Kind == MemberKind::Event) return mModule.EventDeclarations.HasKey(name);
    if (member.Member.Kind != MemberKind::Field) return false;
    const Block* declarations = mModule.Blocks.FirstOfType(btDeclarations);
    const Variables* fields = declarations ? declarations->Variables.IfAny() : nullptr;
    return fields && fields->HasKey(name);
  }

  Waiting& mWaiting;
  Component& mModule;
  MemberBuilder mBuilder;
  std::vector<Member> mOwn;
  Inheritance mFound;
  std::vector<SharedText> mBaseNames;
  std::unordered_map<std::string, Block*> mHeads;
  std::vector<std::pair<Block*, std::vector<SourcedMember>>> mOverloads;
};

void Complete(Waiting& waiting) {
  if (waiting.Done) return;
  waiting.Done = true;
  VBProject* project = waiting.Module->VBProject();
  const DiagnosticScope scope(project ? &project->Diagnostics : nullptr,
                              FileSystemObject(waiting.Type.File->Image->Path()).FullPath());
  const NumbersSetAside numbers(waiting.FirstNumber);
  try {
    Completion(waiting).Run();
    waiting.Own = {};
  } catch (const DataError& error) {
    Report(DiagnosticCode::AssemblyPart,
           {"what " + waiting.Module->Name + " inherits is left out: " + error.what()});
  }
}

std::int32_t SetNumbersAside(const std::vector<BaseType>& bases) {
  if (State().BlockID >= kLastNumber) return 0;
  const std::int32_t first = State().BlockID;
  State().BlockID += MostBlocks(bases);
  return first;
}

}  // namespace

void InheritLate(Component& component, const std::shared_ptr<AssemblyStore>& store, TypeHandle type,
                 const std::vector<BaseType>& bases, std::vector<CodeElement*> own,
                 const MemberFilter& filter, const std::shared_ptr<TreeRoom>& room) {
  const auto waiting = std::make_shared<Waiting>(
      Waiting{&component, store, type, std::move(own), filter, room, SetNumbersAside(bases)});
  component.Blocks.FillLate([waiting] { Complete(*waiting); });
  component.EventDeclarations.FillLate([waiting] { Complete(*waiting); });
}

}  // namespace vendrel
