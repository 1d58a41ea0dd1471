#include <cstdio>
#include <vector>

#include "typelib/reader/Limits.h"
#include "typelib/reader/TypeLibListing.h"

namespace vendrel::typelib {
namespace {

std::string PlainText(int varType) {
  switch (varType) {
    case vtEmpty:
      return "void /* empty */";
    case vtNull:
      return "void /* null */";
    case vtI2:
      return "short";
    case vtI4:
      return "long";
    case vtR4:
      return "single";
    case vtR8:
      return "double";
    case vtCurrency:
      return "CURRENCY";
    case vtDate:
      return "DATE";
    case vtBstr:
      return "BSTR";
    case vtDispatch:
      return "IDispatch*";
    case vtError:
      return "SCODE";
    case vtBool:
      return "VARIANT_BOOL";
    case vtVariant:
      return "VARIANT";
    case vtUnknown:
      return "IUnknown*";
    case vtDecimal:
      return "DECIMAL";
    case vtI1:
      return "char";
    case vtUI1:
      return "unsigned char";
    case vtUI2:
      return "unsigned short";
    case vtUI4:
      return "unsigned long";
    case vtI8:
      return "int64";
    case vtUI8:
      return "uint64";
    case vtInt:
      return "int";
    case vtUInt:
      return "unsigned int";
    case vtVoid:
      return "void";
    case vtHresult:
      return "HRESULT";
    case vtLpStr:
      return "LPSTR";
    case vtLpWStr:
      return "LPWSTR";
    default:
      return "VT_" + std::to_string(varType);
  }
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
      case vtPointer:
        back.insert(0, "*");
        break;
      case vtSafeArray:
        front += "SAFEARRAY(";
        back.insert(0, ")");
        break;
      case vtFixedArray:
        bounds += BoundsText(library, node);
        break;
      case vtUserDefined:
        return front + ReferenceText(library, {node.Link}) + back + bounds;
      default:
        return front + PlainText(node.VarType) + back + bounds;
    }
    code = node.Link;
  }
  return front + "?damaged" + back + bounds;
}

}  // namespace vendrel::typelib
