#include "text/Names.h"

#include <iterator>

namespace vendrel {
namespace {

struct IntrinsicType {
  std::string_view Name, FullName;
};

constexpr IntrinsicType kIntrinsicTypes[] = {
    {"BYTE", "System.Byte"},       {"SHORT", "System.Int16"},     {"INTEGER", "System.Int32"},
    {"LONG", "System.Int64"},      {"SINGLE", "System.Single"},   {"DOUBLE", "System.Double"},
    {"DECIMAL", "System.Decimal"}, {"BOOLEAN", "System.Boolean"}, {"DATE", "System.DateTime"},
    {"CHAR", "System.Char"},       {"STRING", "System.String"},
};

}  // namespace

std::string_view DotNetType(std::string_view name) {
  for (const IntrinsicType& type : kIntrinsicTypes)
    if (EqualsNoCaseAscii(type.Name, name)) return type.FullName;
  return name;
}

}  // namespace vendrel
