#pragma once
// Members of types of assemblies as elements of a module, through the factories.

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "dotnet/metadata/AssemblyStore.h"
#include "dotnet/metadata/Members.h"
#include "model/Component.h"

namespace vendrel {

/// Where a member comes from.
struct MemberSource {
  const metadata::AssemblyFile* File = nullptr;
  /// What the generic parameters of the declaring type stand for; null: their own.
  const metadata::TypeArguments* Arguments = nullptr;
  /// The type that declares it, if that is not the module itself.
  SharedText InheritedFrom;
};

/// A member with its source.
struct SourcedMember {
  MemberSource Source;
  metadata::Member Member;
};

/// The method that stands for the delegate of an event; `File` is null where it was not found.
struct DelegateInvoke {
  const metadata::AssemblyFile* File = nullptr;
  std::uint32_t Method = 0;
  metadata::MethodText Text;
};

/// How many bytes a tree may still take; shared by all that is made of one file.
struct TreeRoom {
  std::size_t Left = 0;
  bool Told = false;
  /// Counts one element and its texts; raises DataError where there is no room for it.
  void Take(std::size_t textSize);
  /// The one copy of a text of which a tree holds many: the name of a type.
  const SharedText& Share(const SharedText& text);
  /// Delegates by the text of their type: most events share a few.
  std::unordered_map<std::string, DelegateInvoke> Delegates;

 private:
  std::unordered_set<SharedText> mTexts;
};

/// Builds elements in one module. A member that is damaged is told and left out.
class MemberBuilder {
 public:
  /// Delegates of events are looked up in `store`.
  MemberBuilder(Component& component, metadata::AssemblyStore& store, TreeRoom& room)
      : mComponent(component), mStore(store), mRoom(room) {}

  /// Gives the elements made, one a member, null for those left out. Methods, and properties, of
  /// one name become one block with the overloads below it.
  std::vector<CodeElement*> AddAll(const std::vector<SourcedMember>& members);

  /// Adds members of one name to a block that stands; it becomes an overload of a block in its
  /// place, unless it is such a block already.
  void AddOverloads(Block& head, const std::vector<SourcedMember>& members);

  /// Parameters and result of a method as those of a block.
  void TakeSignature(Block& block, const metadata::AssemblyFile& file, std::uint32_t method,
                     const metadata::MethodText& text);

 private:
  CodeElement* Add(const SourcedMember& member);
  CodeElement* AddField(const SourcedMember& member);
  CodeElement* AddEvent(const SourcedMember& member);
  const DelegateInvoke& InvokeBehind(const MemberSource& source, metadata::Token delegate,
                                     const std::string& type);
  template <typename Element>
  void TakeParameters(Element& element, const metadata::AssemblyFile& file, std::uint32_t method,
                      const metadata::MethodText& text);
  Block* AddProcedure(const SourcedMember& member);
  void AddFamily(const std::vector<SourcedMember>& members, const std::vector<std::size_t>& family,
                 std::vector<CodeElement*>& made);
  Block* AddOverload(Block& master, const SourcedMember& member);
  void FillProcedure(Block& block, const SourcedMember& member, const metadata::MethodText& text);
  void ReportDamage(const SourcedMember& member, const char* reason) const;

  Component& mComponent;
  metadata::AssemblyStore& mStore;
  TreeRoom& mRoom;
};

/// The signature of a method or property in the terms of the type that has it.
metadata::MethodText SignatureOfMember(const SourcedMember& member);

/// The kind of block that a method or property becomes.
BlockTypeEnum BlockTypeOf(const metadata::Member& member, const metadata::MethodText& text);

/// The name of a member in the tree: that of documentation files with "_ctor" for "#ctor".
std::string TreeNameOf(const SourcedMember& member);

/// Keeps an obsolete mark as a comment "##OBSOLETE" of an element.
void TakeObsoleteMark(CodeElement& element, const metadata::Image& image, metadata::Token place);

}  // namespace vendrel
