// How a loader of compiled code builds a module.

#include "model/Component.h"

namespace vendrel {

EventDeclaration* Component::netCreateEvent(std::string_view name, std::string_view delegateName,
                                            bool implemented, std::string_view inheritedFrom) {
  const auto event = std::make_shared<EventDeclaration>();
  event->Component = this;
  event->Name = std::string(name);
  event->DelegateName = delegateName;
  event->Implemented = implemented;
  event->InheritedFrom = inheritedFrom;
  return EventDeclarations.Add(event, name) ? event.get() : EventDeclarations.Item(name);
}

Interface* Component::netCreateImplementedInterface(std::string_view name) {
  const auto interface = std::make_shared<vendrel::Interface>();
  interface->Component = this;
  interface->Name = name;
  return Interfaces.Add(interface, name) ? interface.get() : Interfaces.Item(name);
}

std::shared_ptr<Variable> Component::netCreateField(
    std::string_view name, std::string_view typeName, std::string_view access, bool isStatic,
    bool implemented, std::string_view inheritedFrom, bool addToModuleVariables) {
  auto field = std::make_shared<Variable>();
  field->Name = std::string(name);
  field->TypeName = typeName;
  field->Access = access;
  field->IsStatic = isStatic;
  field->Implemented = implemented;
  field->InheritedFrom = inheritedFrom;
  field->SetVBProject(Project());
  if (!addToModuleVariables) return field;
  Block* declarations = BlockOfType(btDeclarations, true);
  field->Component = this;
  field->Parent = declarations;
  declarations->Variables->Add(field, name);
  return field;
}

Block* Component::netCreateBlock(BlockTypeEnum blockType, std::string_view name,
                                 std::string_view access, std::string_view returnType,
                                 bool implemented, std::string_view inheritedFrom, bool isStatic,
                                 bool isVirtual, bool isAbstract, bool isShadow) {
  Block* block = NewBlock(blockType);
  block->SetName(name);
  block->Access = access;
  block->ReturnType = returnType;
  block->Implemented = implemented;
  block->SetInheritedFrom(inheritedFrom);
  block->IsStatic = isStatic;
  block->IsVirtual = isVirtual;
  block->IsAbstract = isAbstract;
  block->IsShadow = isShadow;
  return block;
}

}  // namespace vendrel
