#include "model/Declarations.h"

#include "diagnostics/Context.h"
#include "model/Component.h"
#include "model/Events.h"
#include "text/StartLine.h"

namespace vendrel {

AccessTypeEnum Variable::AccessType() const { return AccessTypeFromstring(Access); }

Component* EnumMember::OwnComponent() const {
  const vendrel::Enumeration* enumeration = Enumeration.Get();
  return enumeration ? enumeration->Component.Get() : nullptr;
}

void Enumeration::SetMembers(std::shared_ptr<EnumMembers> members) try {
  if (!members)
    throw VendrelError(errObjectNotSet, "Enumeration.Members - attempt to set to Nothing");
  mMembers = std::move(members);
}
VENDREL_CONTEXT(*this)

EventDeclaration::EventDeclaration() = default;
EventDeclaration::~EventDeclaration() = default;

Parameter* EventDeclaration::netCreateParameter(std::string_view name, std::string_view typeName,
                                                std::string_view defaultValue, bool isOptional,
                                                std::string_view parameterType) {
  const auto parameter = CreateParameter(name, typeName, defaultValue, isOptional, parameterType);
  parameter->Parent = this;
  return Parameters->Add(parameter, name) ? parameter.get() : Parameters->Item(name);
}

}  // namespace vendrel
