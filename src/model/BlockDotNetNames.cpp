// The .NET names of elements: prefix, type and member. In the complete reading they are those of
// documentation files.

#include "model/Component.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

std::string TypeNameOf(const WeakHandle<Component>& component) {
  const Component* type = component.Get();
  return type ? type->FullName() : std::string();
}

// What stands behind the name of a member: the types of its parameters, by reference with "@".
std::string DocumentedArguments(const Block& block) {
  if (!block.DocumentedArguments().empty()) return block.DocumentedArguments().str();
  const Parameters* parameters = block.Parameters.IfAny();
  if (!parameters || parameters->Count() == 0) return {};
  std::string text;
  for (const Parameter& parameter : *parameters) {
    text += text.empty() ? '(' : ',';
    text += parameter.VariableType.view();
    if (parameter.IsArray) text += "[]";
    if (parameter.IsByRef) text += '@';
  }
  return text += ')';
}

std::string DocumentedName(const Block& block) {
  if (block.IsDelegate()) return "T:" + block.FullName();
  std::string_view name = block.Name();
  if (block.Overloaded()) name = name.substr(0, name.find('('));
  std::string text = block.IsMethod() ? "M:" : "P:";
  text += TypeNameOf(block.Component) + ".";
  if (name == "_ctor" || name == "_cctor") {
    text += '#';
    name.remove_prefix(1);
  }
  text += name;
  return text += DocumentedArguments(block);
}

}  // namespace

std::string Component::DotNetName() const { return "T:" + FullName(); }

std::string Block::DotNetSignature() const { return Parameters->DotNetSignature(); }

std::string Block::DotNetName() const {
  if (Options().Reading.NetNames) return DocumentedName(*this);
  std::string name = mIsDelegate ? "T:" : IsMethod() ? "M:" : "P:";
  name += TypeNameOf(Component);
  name += '.';
  if (!mOverloaded) return name += mName;
  name += ShortName(mName);
  return name += "(" + Parameters->DotNetSignature() + ")";
}

std::string Variable::DotNetName() const { return "F:" + TypeNameOf(Component) + "." + Name; }

std::string EventDeclaration::DotNetName() const {
  return "E:" + TypeNameOf(Component) + "." + Name;
}

}  // namespace vendrel
