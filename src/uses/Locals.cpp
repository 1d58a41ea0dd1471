// What the procedure at hand declares.

#include <algorithm>

#include "text/Identifiers.h"
#include "uses/ModuleBinder.h"

namespace vendrel {

void ModuleBinder::IndexBlocks() {
  for (const Block& block : mModule->Blocks.Listed())
    if (!block.Name().empty())
      mBlocks.emplace_back(static_cast<std::uint32_t>(block.SourceLine()), &block);
  std::stable_sort(mBlocks.begin(), mBlocks.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
}

const Block* ModuleBinder::BlockAt(std::uint32_t line, Symbol name, Symbol accessor) {
  const auto fits = [&](const Block& block) {
    if (mScopes.Names().Of(WithoutBrackets(block.Name())) != name) return false;
    if (accessor == word::None) return !block.IsPropertyType();
    const BlockTypeEnum type = accessor == word::Get   ? btPropertyGet
                               : accessor == word::Let ? btPropertyLet
                                                       : btPropertySet;
    return block.BlockType() == type;
  };
  auto found = std::lower_bound(mBlocks.begin(), mBlocks.end(), line,
                                [](const auto& a, std::uint32_t b) { return a.first < b; });
  for (; found != mBlocks.end() && found->first == line; ++found)
    if (fits(*found->second)) return found->second;
  return nullptr;
}

void ModuleBinder::AddLocal(Symbol name, EntrySort sort, const CodeElement* element,
                            bool isConstant) {
  if (mLocals.Find(name)) {
    if (mIsNet && element && sort == EntrySort::Local) mSameNamed.emplace_back(name, element);
    return;
  }
  Entry& entry = mLocals.Add(name);
  entry.Sort = sort;
  entry.Element = element;
  entry.Home = mModule;
  entry.IsConstant = isConstant;
}

void ModuleBinder::EnterProcedure(const Block* block, Symbol name) {
  mLocals.Clear();
  mSameNamed.clear();
  mWith.clear();
  mPlace = Place::Procedure;
  mBlock = block;
  mHolder = block ? static_cast<const CodeElement*>(block) : mModule;
  if (!block) return;
  Symbols& names = mScopes.Names();
  if (const Parameters* parameters = block->Parameters.IfAny())
    for (const Parameter& parameter : *parameters)
      AddLocal(names.Of(WithoutBrackets(parameter.Name())), EntrySort::Parameter, &parameter,
               false);
  if (const Variables* variables = block->Variables.IfAny())
    for (const Variable& variable : *variables)
      AddLocal(names.Of(WithoutBrackets(variable.Name)), EntrySort::Local, &variable, false);
  if (const Constants* constants = block->Constants.IfAny())
    for (const Constant& constant : *constants)
      AddLocal(names.Of(WithoutBrackets(constant.Name)), EntrySort::Local, &constant, true);
  const bool givesResult = block->BlockType() == btPropertyGet || block->BlockType() == btFunction;
  if (!givesResult) return;
  const Entry* own = mScope->Members.Find(name);
  const bool isProperty = own && own->Sort == EntrySort::Property && block->IsPropertyType();
  AddLocal(name, EntrySort::OwnResult, block, false);
  Entry& result = *Local(name);
  if (result.Sort != EntrySort::OwnResult) return;
  result.Type = mScopes.TypeNamed(mModule, block->ReturnType.view(), block->ReturnTypeIsArray);
  result.TypeKnown = true;
  if (isProperty) result.Element = own->Element;
}

void ModuleBinder::LeaveProcedure() {
  mPlace = Place::Declarations;
  mBlock = nullptr;
  mHolder = mModule;
  mWith.clear();
}

}  // namespace vendrel
