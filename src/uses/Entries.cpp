#include "uses/Entries.h"

namespace vendrel {

std::string_view BaseTypeName(const Component& module) {
  switch (module.FileType) {
    case ftForm: return module.IsMDI() ? "MDIForm" : "Form";
    case ftUserControl: return "UserControl";
    case ftUserDocument: return "UserDocument";
    case ftPropertyPage: return "PropertyPage";
    default: return {};
  }
}

const Parameters* ParametersOf(const Entry& entry) {
  const CodeElement* element = entry.Element;
  if (const auto* group = As<PropertyGroup>(element)) element = group->PrimaryBlock();
  if (const auto* block = As<Block>(element)) return block->Parameters.IfAny();
  if (const auto* declare = As<DeclareDeclaration>(element)) return declare->Parameters.IfAny();
  if (const auto* event = As<EventDeclaration>(element)) return event->Parameters.IfAny();
  return nullptr;
}

}  // namespace vendrel
