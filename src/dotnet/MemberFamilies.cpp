// Methods and properties of one name as one block with its overloads.

#include <unordered_map>

#include "dotnet/MemberBuilder.h"

namespace vendrel {

using namespace metadata;

std::vector<CodeElement*> MemberBuilder::AddAll(const std::vector<SourcedMember>& members) {
  std::vector<CodeElement*> made(members.size(), nullptr);
  std::vector<std::string> names(members.size());
  std::unordered_map<std::string, std::vector<std::size_t>> families;
  for (std::size_t i = 0; i < members.size(); ++i) {
    const MemberKind kind = members[i].Member.Kind;
    if (kind != MemberKind::Method && kind != MemberKind::Property) continue;
    try {
      names[i] = TreeNameOf(members[i]) + (kind == MemberKind::Method ? "M" : "P");
      families[names[i]].push_back(i);
    } catch (const DataError& error) {
      ReportDamage(members[i], error.what());
    }
  }
  for (std::size_t i = 0; i < members.size(); ++i) {
    const auto family = families.find(names[i]);
    if (names[i].empty()) {
      const MemberKind kind = members[i].Member.Kind;
      if (kind == MemberKind::Field || kind == MemberKind::Event) made[i] = Add(members[i]);
    } else if (family->second.size() == 1) {
      made[i] = Add(members[i]);
    } else if (family->second.front() == i) {
      AddFamily(members, family->second, made);
    }
  }
  return made;
}

void MemberBuilder::AddFamily(const std::vector<SourcedMember>& members,
                              const std::vector<std::size_t>& family,
                              std::vector<CodeElement*>& made) {
  const SourcedMember& first = members[family.front()];
  Block* master = nullptr;
  for (const std::size_t i : family) try {
      if (!master) {
        const Member& own = first.Member;
        master = mComponent.netCreateBlock(BlockTypeOf(own, SignatureOfMember(members[i])),
                                           TreeNameOf(first), AccessWord(own.Access), {},
                                           first.Source.InheritedFrom.empty(), {}, own.IsStatic,
                                           own.IsVirtual && !own.IsFinal, own.IsAbstract, false);
        master->ShareInheritedFrom(first.Source.InheritedFrom);
        master->IsConstructor = own.IsConstructor;
      }
      made[i] = AddOverload(*master, members[i]);
    } catch (const DataError& error) {
      ReportDamage(members[i], error.what());
    }
}

Block* MemberBuilder::AddOverload(Block& master, const SourcedMember& member) {
  const MethodText text = SignatureOfMember(member);
  const Member& own = member.Member;
  const auto block = std::make_shared<Block>();
  block->Component = &mComponent;
  block->SetVBProject(mComponent.Project());
  block->SetBlockType(BlockTypeOf(own, text));
  block->SetName(TreeNameOf(member));
  block->Access = AccessWord(own.Access);
  block->Implemented = member.Source.InheritedFrom.empty();
  block->ShareInheritedFrom(member.Source.InheritedFrom);
  block->IsStatic = own.IsStatic;
  block->IsVirtual = own.IsVirtual && !own.IsFinal;
  block->IsAbstract = own.IsAbstract;
  FillProcedure(*block, member, text);
  block->SetName(block->OverloadedMethodSignature());
  block->SetOverloaded(true);
  const bool isFree = !master.OverloadBlocks()->HasKey(block->Name());
  master.AddOverload(block, isFree ? std::string_view(block->Name()) : std::string_view());
  return block.get();
}

void MemberBuilder::AddOverloads(Block& head, const std::vector<SourcedMember>& members) {
  Block* master = &head;
  const Blocks* overloads = head.OverloadBlocks().IfAny();
  if (!overloads || overloads->Count() == 0) {
    const std::shared_ptr<Block> first = mComponent.Blocks.ShareOf(&head);
    const auto made = std::make_shared<Block>();
    made->Component = &mComponent;
    made->SetVBProject(mComponent.Project());
    made->SetBlockType(head.BlockType());
    made->SetName(head.Name());
    made->Access = head.Access;
    made->Implemented = head.Implemented;
    made->ShareInheritedFrom(head.InheritedFrom());
    made->IsStatic = head.IsStatic;
    made->IsVirtual = head.IsVirtual;
    made->IsAbstract = head.IsAbstract;
    mComponent.Blocks.Replace(&head, made);
    head.SetName(head.OverloadedMethodSignature());
    head.SetOverloaded(true);
    made->AddOverload(first, head.Name());
    master = made.get();
  }
  for (const SourcedMember& member : members) try {
      AddOverload(*master, member);
    } catch (const DataError& error) {
      ReportDamage(member, error.what());
    }
}

}  // namespace vendrel
