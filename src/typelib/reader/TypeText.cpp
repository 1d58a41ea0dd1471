#include <cstdio>
#include <vector>

#include "typelib/reader/TypeLibLimits.h"
#include "typelib/reader/TypeLibListing.h"

namespace vendrel::typelib {
namespace {

struct PlainWord {
  int VarType;
  const char* Text;
};
constexpr PlainWord kPlainWords[] = {
    {vtEmpty, "void /* empty */"},
    {vtNull, "void /* null */"},
    {vtI2, "short"},
    {vtI4, "long"},
    {vtR4, "single"},
    {vtR8, "double"},
    {vtCurrency, "CURRENCY"},
    {vtDate, "DATE"},
    {vtBstr, "BSTR"},
    {vtDispatch, "IDispatch*"},
    {vtError, "SCODE"},
    {vtBool, "VARIANT_BOOL"},
    {vtVariant, "VARIANT"},
    {vtUnknown, "IUnknown*"},
    {vtDecimal, "DECIMAL"},
    {vtI1, "char"},
    {vtUI1, "unsigned char"},
    {vtUI2, "unsigned short"},
    {vtUI4, "unsigned long"},
    {vtI8, "int64"},
    {vtUI8, "uint64"},
    {vtInt, "int"},
    {vtUInt, "unsigned int"},
    {vtVoid, "void"},
    {vtHresult, "HRESULT"},
    {vtLpStr, "LPSTR"},
    {vtLpWStr, "LPWSTR"},
};

std::string PlainText(int varType) {
  for (const PlainWord& word : kPlainWords)
    if (word.VarType == varType) return word.Text;
  return "VT_" + std::to_string(varType);
}

std::string BoundsText(const TypeLibInfo& library, const TypeNode& node) {
  std::string text;
  for (std::size_t i = node.FirstBound;
       i < std::size_t{node.FirstBound} + node.Dimensions && i < library.ArrayBounds.size(); ++i) {
    const ArrayBound& bound = library.ArrayBounds[i];
    text += '[';
    if (bound.Lower != 0) text += std::to_string(bound.Lower) + ":";
    text += std::to_string(bound.Count) + "]";
  }
  return text;
}

}  // namespace

std::string ReferenceText(const TypeLibInfo& library, TypeReference reference) {
  if (reference.IsNone()) return "?";
  if (const TypeInfo* found = library.TryResolve(reference)) return std::string(found->Name);
  if (!reference.IsExternal()) return "?type" + std::to_string(reference.Index());
  if (reference.Index() >= library.ImportedTypes.size())
    return "?import" + std::to_string(reference.Index());
  const ImportedType& type = library.ImportedTypes[reference.Index()];
  const std::string home =
      type.Library < library.Imports.size() ? library.Imports[type.Library].LeafName : "?";
  return home + "!" + (type.ByGuid ? type.Id.Text() : "#" + std::to_string(type.Number));
}

std::string TypeText(const VarTypeInfo& type) {
  std::string front, back, bounds;
  TypeCode code = type.Code;
  const TypeLibInfo& library = *type.Library;
  for (int depth = 0; depth < kMaxTypeDepth; ++depth) {
    if (IsPlainType(code)) return front + PlainText(PlainVarType(code)) + back + bounds;
    if (static_cast<std::size_t>(code) >= library.TypeNodes.size()) break;
    const TypeNode& node = library.TypeNodes[static_cast<std::size_t>(code)];
    switch (node.VarType) {
      case vtPointer: back.insert(0, "*"); break;
      case vtSafeArray:
        front += "SAFEARRAY(";
        back.insert(0, ")");
        break;
      case vtFixedArray: bounds += BoundsText(library, node); break;
      case vtUserDefined: return front + ReferenceText(library, {node.Link}) + back + bounds;
      default: return front + PlainText(node.VarType) + back + bounds;
    }
    code = node.Link;
  }
  return front + "?damaged" + back + bounds;
}

}  // namespace vendrel::typelib
