#include "intake/net/NetMemberHeader.h"

#include <algorithm>

#include "core/Ascii.h"
#include "intake/net/NetCursor.h"
#include "intake/net/NetWords.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

struct NamedOperator {
  std::string_view Sign, Name;
};
constexpr NamedOperator kOperators[] = {
    {"+", "op_Addition"},
    {"-", "op_Subtraction"},
    {"*", "op_Multiply"},
    {"/", "op_Division"},
    {"\\", "op_IntegerDivision"},
    {"^", "op_Exponent"},
    {"&", "op_Concatenate"},
    {"=", "op_Equality"},
    {"<>", "op_Inequality"},
    {"<", "op_LessThan"},
    {">", "op_GreaterThan"},
    {"<=", "op_LessThanOrEqual"},
    {">=", "op_GreaterThanOrEqual"},
    {"<<", "op_LeftShift"},
    {">>", "op_RightShift"},
    {"MOD", "op_Modulus"},
    {"AND", "op_BitwiseAnd"},
    {"OR", "op_BitwiseOr"},
    {"XOR", "op_ExclusiveOr"},
    {"NOT", "op_OnesComplement"},
    {"LIKE", "op_Like"},
    {"ISTRUE", "op_True"},
    {"ISFALSE", "op_False"},
};

// The name that an operator has for the runtime.
std::string OperatorName(std::string_view sign, bool unary, bool narrowing) {
  if (EqualsNoCaseAscii(sign, "CTYPE")) return narrowing ? "op_Explicit" : "op_Implicit";
  if (unary && sign == "+") return "op_UnaryPlus";
  if (unary && sign == "-") return "op_UnaryNegation";
  for (const NamedOperator& known : kOperators)
    if (EqualsNoCaseAscii(known.Sign, sign)) return std::string(known.Name);
  return std::string(sign);
}

}  // namespace

NetMemberHeader::NetMemberHeader(std::string_view statement) {
  NetCursor cursor(statement);
  cursor.SkipAttributes();
  while (!cursor.AtEnd()) {
    const std::string_view word = cursor.Word();
    if (word.empty()) break;
    Keyword = word;
    if (!IsNetModifier(word)) break;
    Modifiers.push_back(word);
  }
  // "Delegate Sub", "Custom Event": the keyword follows at once.
  ReadName(cursor);
  ReadBehindList(cursor);
}

void NetMemberHeader::ReadName(NetCursor& cursor) {
  std::string_view sign;
  if (EqualsNoCaseAscii(Keyword, "OPERATOR")) {
    sign = cursor.Rest().substr(0, cursor.Rest().find_first_of("( "));
    cursor.Skip(sign.size());
  } else {
    IsNew = cursor.Here() != '[';
    Name = cursor.Name(SuffixType);
    IsNew = IsNew && EqualsNoCaseAscii(Name, "New");
  }
  for (int lists = 0; cursor.Here() == '(' && lists < 2; ++lists) {
    const std::string_view list = cursor.Group();
    NetCursor words(list);
    if (words.TakeWord("of")) continue;
    Parameters = list;
    break;
  }
  if (sign.empty()) return;
  const bool narrowing = std::any_of(Modifiers.begin(), Modifiers.end(), [](std::string_view word) {
    return EqualsNoCaseAscii(word, "NARROWING");
  });
  Name = OperatorName(sign, NetList(Parameters).size() == 1, narrowing);
}

void NetMemberHeader::ReadBehindList(NetCursor& cursor) {
  if (cursor.TakeWord("as")) {
    cursor.SkipAttributes();
    HasInitialiser = cursor.TakeWord("new");
    Type = cursor.Type();
    IsArray = CutArray(Type) && !HasInitialiser;  // behind New stand the arguments
  }
  while (!cursor.AtEnd()) {
    if (cursor.TakeWord("handles")) {
      for (;;) {
        Handles.push_back(cursor.Type());
        if (!cursor.Take(',')) break;
      }
    } else if (cursor.TakeWord("implements")) {
      for (;;) {
        if (!Implements.empty()) Implements += ", ";
        Implements += TypeWithoutBrackets(cursor.Type());
        if (!cursor.Take(',')) break;
      }
    } else {
      HasInitialiser |= cursor.Here() == '=';
      if (cursor.Word().empty()) cursor.Skip(1);
    }
  }
}

}  // namespace vendrel
