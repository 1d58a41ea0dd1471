#include "survey/MissingMembers.h"

#include <unordered_set>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "model/Component.h"

namespace vendrel {
namespace {

// What an interface asks of a class: a name behind its own and the kind of procedure.
struct Demand {
  std::string Name;
  BlockTypeEnum Kind;
};

std::vector<Demand> DemandsOf(const Component& interface) {
  std::vector<Demand> demands;
  for (const Block& block : interface.Blocks.Listed()) {
    if (block.BlockType() == btDeclarations)
      for (const Variable& variable : *block.Variables)
        if (variable.AccessType() == atPublic) demands.push_back({variable.Name, btPropertyGet});
    const bool isOwn = block.Name().empty() || block.AccessType() != atPublic ||
                       block.IsEventProcedure || block.IsHiddenMember ||
                       !block.Interface.str().empty();
    if (!isOwn) demands.push_back({block.Name(), block.BlockType()});
  }
  return demands;
}

std::string_view WordOfKind(BlockTypeEnum kind) {
  switch (kind) {
    case btFunction: return "Function";
    case btPropertyGet: return "Property Get";
    case btPropertyLet: return "Property Let";
    case btPropertySet: return "Property Set";
    default: return "Sub";
  }
}

// The class of that name in the project, or in one or a library that it refers to.
const Component* ClassNamed(const VBProject& project, const std::string& written) {
  const std::string name = NameWithoutLibrary(written);
  const std::string_view library = std::string_view(written).substr(0, written.find('.'));
  const bool isQualified = library.size() < written.size();
  const bool isOwn = !isQualified || EqualsNoCase(library, project.ProjectName);
  if (const Component* own = isOwn ? project.Components.Item(name) : nullptr) return own;
  for (const Reference& reference : project.References) {
    const VBProject* other = reference.ReferencedProject();
    if (!other || (isQualified && !EqualsNoCase(library, other->ProjectName))) continue;
    if (const Component* found = other->Components.Item(name)) return found;
  }
  return nullptr;
}

// Whether its members are at hand; a standard module is no interface.
bool CanBeImplemented(const Component& module) {
  const VBProject* project = module.VBProject();
  const bool isRead = module.SourceForm || (project && project->WasReadFromTypeLibrary);
  return isRead && module.FileType != ftModule;
}

}  // namespace

std::string NameWithoutLibrary(std::string_view name) {
  return std::string(name.substr(name.rfind('.') + 1));
}

void FindMissingMembers(const VBProject& project, UseFindings& list) {
  if (!list.IsWanted()) return;
  for (const Component& module : project.Components.Listed()) {
    if (!module.SourceForm || module.Interfaces.Count() == 0) continue;
    std::unordered_set<std::string> there;
    for (const Block& block : module.Blocks.Listed())
      there.insert(FoldKey(block.Name()) + std::to_string(block.BlockType()));
    for (const Interface& interface : module.Interfaces) {
      const std::string name = NameWithoutLibrary(interface.Name);
      const Component* asked = ClassNamed(project, interface.Name);
      if (!asked || asked == &module || !CanBeImplemented(*asked)) continue;
      for (const Demand& demand : DemandsOf(*asked)) {
        const std::string wanted = name + "_" + demand.Name;
        if (!there.contains(FoldKey(wanted) + std::to_string(demand.Kind)))
          list.Add(module, interface.SourceLine(), 0,
                   "interface '" + interface.Name + "' is implemented without " +
                       std::string(WordOfKind(demand.Kind)) + " " + wanted);
      }
    }
  }
}

}  // namespace vendrel
