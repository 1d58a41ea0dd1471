#include "uses/NameUse.h"

#include "model/Block.h"
#include "model/Component.h"
#include "model/PropertyGroup.h"
#include "model/VBControl.h"
#include "project/VBProject.h"
#include "uses/Builtins.h"

namespace vendrel {

std::string_view WordOf(UseAccessor accessor) {
  static constexpr std::string_view kWords[] = {"", "get", "let", "set"};
  return kWords[static_cast<std::size_t>(accessor)];
}

std::string MeaningOf(const NameUse& use) {
  if (use.Element) {
    std::string name = use.Element->QualifiedName();
    if (use.WholeArray && As<VBControl>(use.Element)) {
      const std::size_t index = name.rfind('(');
      if (index != std::string::npos) name.resize(index);
    }
    return name;
  }
  if (use.Member) return use.Member->QualifiedName();
  if (use.Type) return use.Type->QualifiedName();
  return std::string(use.Name);
}

std::string_view LibraryOf(const NameUse& use) {
  if (use.Member) return use.Member->Owner->Library;
  if (use.Type) return use.Type->Library;
  const bool isOfOther = use.Answer == UseAnswer::Library || use.Answer == UseAnswer::External;
  if (isOfOther && !use.Name.empty()) return use.Name;
  const Component* home = use.Element ? use.Element->OwnComponent() : nullptr;
  const VBProject* project = home ? home->VBProject() : As<VBProject>(use.Element);
  return project && use.Module && project != use.Module->VBProject()
             ? std::string_view(project->ProjectName)
             : std::string_view();
}

const CodeElement* TargetOf(const CodeElement* element, UseAccessor accessor) {
  const Block* procedure = ProcedureOf(element, accessor);
  return procedure ? procedure : element;
}

const Block* ProcedureOf(const CodeElement* element, UseAccessor accessor) {
  const auto* group = As<PropertyGroup>(element);
  if (!group) return As<Block>(element);
  switch (accessor) {
    case UseAccessor::Let: return group->PropertyLetBlock();
    case UseAccessor::Set: return group->PropertySetBlock();
    case UseAccessor::Get: return group->PropertyGetBlock();
    default: return group->PrimaryBlock();
  }
}

}  // namespace vendrel
