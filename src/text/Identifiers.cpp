#include "text/Identifiers.h"

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

std::string_view WithoutBrackets(std::string_view name) {
  if (name.starts_with('[')) name.remove_prefix(1);
  if (name.ends_with(']')) name.remove_suffix(1);
  return name;
}

std::string TypeWithoutBrackets(std::string_view type) {
  std::string plain;
  for (const char c : type)
    if (c != '[' && c != ']') plain += c;
  return plain;
}

namespace {
// Whether a letter may follow a parenthesis or a closing quote: in most declarations none does.
bool MayLackBlanks(std::string_view declaration) {
  const auto letterBehind = [&](std::size_t at) {
    return at + 1 < declaration.size() && IsLetterAscii(declaration[at + 1]);
  };
  bool closes = false;
  for (std::size_t at = declaration.find('"'); at < declaration.size();
       at = declaration.find('"', at + 1)) {
    if (closes && letterBehind(at)) return true;
    closes = !closes;
  }
  for (std::size_t at = declaration.find(')'); at < declaration.size();
       at = declaration.find(')', at + 1))
    if (letterBehind(at)) return true;
  return false;
}
}  // namespace

std::string SpacedOut(std::string_view declaration) {
  std::string spaced;
  if (!MayLackBlanks(declaration)) return spaced;
  std::size_t done = 0;
  bool inString = false;
  for (std::size_t i = 0; i + 1 < declaration.size(); ++i) {
    const char c = declaration[i];
    if (c == '"') inString = !inString;
    if (inString) continue;
    if (c == '\'') break;
    if ((c != ')' && c != '"') || !IsLetterAscii(declaration[i + 1])) continue;
    spaced.append(declaration.substr(done, i + 1 - done)).append(" ");
    done = i + 1;
  }
  if (done > 0) spaced.append(declaration.substr(done));
  return spaced;
}

}  // namespace vendrel
