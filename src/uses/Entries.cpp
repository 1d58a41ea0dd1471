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

Entry* EntryMap::Find(Symbol name) const {
  if (mSlots.empty()) return nullptr;
  const std::size_t mask = mSlots.size() - 1;
  for (std::size_t at = Spread(name) & mask; mSlots[at].Name != word::None; at = (at + 1) & mask)
    if (mSlots[at].Name == name) return mSlots[at].Value;
  return nullptr;
}

Entry*& EntryMap::At(Symbol name) {
  if ((mCount + 1) * 2 > mSlots.size()) Grow();
  const std::size_t mask = mSlots.size() - 1;
  std::size_t at = Spread(name) & mask;
  while (mSlots[at].Name != word::None && mSlots[at].Name != name) at = (at + 1) & mask;
  if (mSlots[at].Name == word::None) {
    mSlots[at].Name = name;
    ++mCount;
  }
  return mSlots[at].Value;
}

void EntryMap::Grow() {
  std::vector<Slot> old(mSlots.empty() ? 16 : mSlots.size() * 2);
  old.swap(mSlots);
  const std::size_t mask = mSlots.size() - 1;
  for (const Slot& slot : old) {
    if (slot.Name == word::None) continue;
    std::size_t at = Spread(slot.Name) & mask;
    while (mSlots[at].Name != word::None) at = (at + 1) & mask;
    mSlots[at] = slot;
  }
}

}  // namespace vendrel
