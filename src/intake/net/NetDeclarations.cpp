#include "intake/net/NetDeclarations.h"

#include <algorithm>

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/net/NetModifiers.h"
#include "intake/net/NetWords.h"
#include "text/Identifiers.h"
#include "text/Separators.h"
#include "text/StartLine.h"
#include "text/Words.h"
#include "text/net/XmlLiterals.h"

namespace vendrel {
namespace {

// Behind the text or XML literal that begins at `at`; `at` if none does.
std::size_t LiteralEnd(std::string_view text, std::size_t at) {
  if (text[at] == '"') {
    const bool interpolated = at > 0 && text[at - 1] == '$';
    return interpolated ? InterpolatedEnd(text, at) : StringEnd(text, at);
  }
  if (text[at] == '[') return BracketEnd(text, at);
  return at;
}

// A declaration on its way through its words.
class NetCursor {
 public:
  explicit NetCursor(std::string_view text) : mText(text) { SkipBlanks(); }

  bool AtEnd() const { return mAt >= mText.size(); }
  char Here() const { return AtEnd() ? '\0' : mText[mAt]; }
  std::string_view Rest() const { return mText.substr(mAt); }
  void Skip(std::size_t count) {
    mAt = std::min(mAt + count, mText.size());
    SkipBlanks();
  }

  void SkipBlanks() {
    while (!AtEnd() && (Here() == ' ' || Here() == '\t')) ++mAt;
  }
  // An identifier, or a name with its brackets; empty where none stands.
  std::string_view Word() {
    const std::size_t begin = mAt;
    if (Here() == '[')
      mAt = std::max(BracketEnd(mText, mAt), mAt);
    else
      while (!AtEnd() && IsWordByte(Here())) ++mAt;
    const std::string_view word = mText.substr(begin, mAt - begin);
    SkipBlanks();
    return word;
  }
  bool TakeWord(std::string_view keyword) {
    const std::size_t at = mAt;
    if (EqualsNoCaseAscii(Word(), keyword)) return true;
    mAt = at;
    return false;
  }
  bool Take(char c) {
    if (Here() != c) return false;
    Skip(1);
    return true;
  }
  // What stands between the parenthesis that opens here and the one that closes it; without one,
  // all of the rest.
  std::string_view Group() {
    const std::size_t begin = mAt + 1;
    int depth = 0;
    while (!AtEnd()) {
      const std::size_t literal = LiteralEnd(mText, mAt);
      if (literal > mAt) {
        mAt = literal;
        continue;
      }
      if (Here() == '(' || Here() == '{') ++depth;
      if ((Here() == ')' || Here() == '}') && --depth == 0) break;
      ++mAt;
    }
    const std::string_view group = mText.substr(begin, mAt - begin);
    Skip(1);
    return Trim(group);
  }
  // The expression up to a comma outside of lists.
  std::string_view Expression() {
    const std::size_t begin = mAt;
    int depth = 0;
    while (!AtEnd()) {
      const std::size_t literal = LiteralEnd(mText, mAt);
      if (literal > mAt) {
        mAt = literal;
        continue;
      }
      if (Here() == '(' || Here() == '{') ++depth;
      if (Here() == ')' || Here() == '}') --depth;
      if (Here() == ',' && depth <= 0) break;
      ++mAt;
    }
    return Trim(mText.substr(begin, mAt - begin));
  }
  // "Global.A.B(Of C, D())?()": a type with all that belongs to it.
  std::string_view Type() {
    const std::size_t begin = mAt;
    Word();
    for (;;) {
      if (Here() == '.') {
        Skip(1);
        Word();
      } else if (Here() == '?') {
        Skip(1);
      } else if (Here() == '(' && BelongsToType()) {
        Group();
      } else {
        return Trim(mText.substr(begin, mAt - begin));
      }
    }
  }
  // Attributes in front of a declaration or parameter.
  void SkipAttributes() { Skip(mText.size() - mAt - NetWordsRest().size()); }

 private:
  // A list of types or the mark of an array, and no arguments.
  bool BelongsToType() const {
    NetCursor inside(mText.substr(mAt));
    const std::string_view group = inside.Group();
    NetCursor words(group);
    return words.TakeWord("of") || group.find_first_not_of(", ") == kNotFound;
  }
  std::string_view NetWordsRest() const { return NetWords(Rest()).Rest(); }

  std::string_view mText;
  std::size_t mAt = 0;
};

// "Integer(,)" is an array of "Integer".
bool CutArray(std::string_view& type) {
  if (!type.ends_with(')')) return false;
  const std::size_t open = type.rfind('(');
  if (open == kNotFound || type.find_first_not_of(", ", open + 1) != type.size() - 1) return false;
  type = TrimRight(type.substr(0, open));
  return true;
}

// A type as the tree has it: without brackets, an intrinsic one by its full name.
SharedText TypeOf(std::string_view written) {
  if (written.find('[') == kNotFound) return DotNetType(written);
  return DotNetType(TypeWithoutBrackets(written));
}

// "x()()": the lists behind a name, of which all but the first belong to the type.
std::string_view TakeSubscripts(NetCursor& cursor, std::string& marks) {
  const std::string_view first = cursor.Group();
  while (cursor.Here() == '(') marks.append("(").append(cursor.Group()).append(")");
  return first;
}

// The name with a type character, which gives its type.
std::string NameOf(NetCursor& cursor, std::string& type) {
  const std::string_view name = cursor.Word();
  const std::string_view suffix = cursor.Rest().substr(0, 1);
  if (!suffix.empty() && suffix != "?" && !name.starts_with('[')) {
    type = TypeFromName(suffix);
    if (!type.empty()) cursor.Skip(1);
  }
  return std::string(WithoutBrackets(name));
}

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

// A member's first line in its parts.
struct NetHeader {
  explicit NetHeader(std::string_view statement);

  std::vector<std::string_view> Modifiers;
  std::string_view Keyword;
  std::string Name;
  std::string_view Parameters;
  std::string_view Type;
  std::string SuffixType;
  bool IsArray = false;
  bool HasInitialiser = false;
  std::string Implements;
  std::vector<std::string_view> Handles;

 private:
  void ReadName(NetCursor& cursor);
  void ReadBehindList(NetCursor& cursor);
};

NetHeader::NetHeader(std::string_view statement) {
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

void NetHeader::ReadName(NetCursor& cursor) {
  std::string_view sign;
  if (EqualsNoCaseAscii(Keyword, "OPERATOR")) {
    sign = cursor.Rest().substr(0, cursor.Rest().find_first_of("( "));
    cursor.Skip(sign.size());
  } else {
    Name = NameOf(cursor, SuffixType);
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

void NetHeader::ReadBehindList(NetCursor& cursor) {
  if (cursor.TakeWord("as")) {
    cursor.SkipAttributes();
    HasInitialiser = cursor.TakeWord("new");
    Type = cursor.Type();
    IsArray = CutArray(Type);
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
        Implements += cursor.Type();
        if (!cursor.Take(',')) break;
      }
    } else {
      HasInitialiser |= cursor.Here() == '=';
      if (cursor.Word().empty()) cursor.Skip(1);
    }
  }
}

// What a procedure handles: the variable behind the first name of the list, or the object itself.
CodeElement* SourceOf(Component& component, std::string_view handled) {
  const std::string name(WithoutBrackets(handled.substr(0, handled.rfind('.'))));
  if (IsWordOf(name, {"ME", "MYBASE", "MYCLASS"})) return &component;
  Block* declarations = component.Blocks.FirstOfType(btDeclarations);
  Variables* fields = declarations ? declarations->Variables.IfAny() : nullptr;
  return fields ? fields->Item(name) : nullptr;
}

}  // namespace

std::vector<std::string_view> NetList(std::string_view text) {
  std::vector<std::string_view> parts;
  NetCursor cursor(text);
  while (!cursor.AtEnd()) {
    parts.push_back(cursor.Expression());
    cursor.Take(',');
  }
  return parts;
}

void ReadNetMember(std::string_view statement, Block& o) try {
  const NetHeader header(statement);
  Component* component = o.Component.Get();
  const std::string base = component ? component->InheritsFrom.str() : std::string();
  o.Access = {};
  o.SetName(header.Name);
  for (const std::string_view word : header.Modifiers)
    if (!TakeCommonModifier(o, word, base)) TakeBlockModifier(o, word);
  if (o.Access.empty()) o.Access = component && component->OptionPrivate ? "PRIVATE" : "PUBLIC";
  o.Parameters->Component = component;
  ReadNetParameters(header.Parameters, *o.Parameters, &o);
  if (!header.Implements.empty()) o.SetImplementsName(header.Implements);
  o.ReturnTypeIsArray = header.IsArray;
  const bool returns = o.BlockType() == btPropertyGet || o.BlockType() == btFunction;
  if (!header.Type.empty())
    o.ReturnType = TypeOf(header.Type);
  else if (!header.SuffixType.empty())
    o.ReturnType = DotNetType(header.SuffixType);
  else if (returns)
    o.ReturnType = "System.Object";
  if (EqualsNoCaseAscii(header.Name, "New")) {
    o.IsConstructor = true;
    o.SetName("_ctor");
  }
  if (header.Handles.empty()) return;
  o.IsEventProcedure = true;
  if (component) o.EventSource = SourceOf(*component, header.Handles.front());
}
VENDREL_CONTEXT_AT(LineReached(), statement, o)

bool HasNetInitialiser(std::string_view statement) { return NetHeader(statement).HasInitialiser; }

void ReadNetEvent(std::string_view statement, EventDeclaration& o) try {
  const NetHeader header(statement);
  Component* component = o.Component.Get();
  const std::string base = component ? component->InheritsFrom.str() : std::string();
  o.Name = header.Name;
  for (const std::string_view word : header.Modifiers) TakeCommonModifier(o, word, base);
  if (o.Access.empty()) o.Access = "PUBLIC";
  o.Parameters->Component = component;
  ReadNetParameters(header.Parameters, *o.Parameters, &o);
  if (!header.Type.empty()) o.DelegateName = header.Type;
}
VENDREL_CONTEXT_AT(LineReached(), statement, o)

void ReadNetParameters(std::string_view list, Parameters& parameters, CodeElement* parent) try {
  for (const std::string_view part : NetList(list)) {
    NetCursor cursor(part);
    cursor.SkipAttributes();
    auto parameter = std::make_shared<Parameter>();
    parameter->Parent = parent;
    if (parent) parameter->SetSourceLine(parent->SourceLine());
    for (;;) {
      if (cursor.TakeWord("optional")) {
        parameter->IsOptional = true;
      } else if (cursor.TakeWord("byref")) {
        parameter->IsByRef = true;
      } else if (cursor.TakeWord("paramarray")) {
        parameter->IsParamArray = parameter->IsOptional = true;
      } else if (!cursor.TakeWord("byval")) {
        break;
      }
      cursor.SkipAttributes();
    }
    std::string type;
    const std::string name = NameOf(cursor, type);
    const bool isNullable = cursor.Take('?');
    std::string marks;
    if (cursor.Here() == '(') {
      TakeSubscripts(cursor, marks);
      parameter->IsArray = true;
    }
    if (cursor.TakeWord("as")) {
      std::string_view written = cursor.Type();
      if (CutArray(written)) parameter->IsArray = true;
      type = written;
    }
    if (isNullable && !type.empty()) type += '?';
    if (!type.empty()) type += marks;
    if (cursor.Take('=')) parameter->DefaultValue = cursor.Expression();
    parameter->ImplicitType = type.empty();
    parameter->VariableType = type.empty() ? SharedText("System.Object") : TypeOf(type);
    parameter->SetName(name);
    if (name.empty() || parameters.HasKey(name)) continue;
    parameters.Add(std::move(parameter), name);
  }
}
VENDREL_CONTEXT_AT(LineReached(), list, parent)

NetVariables::NetVariables(std::string_view statement) {
  NetCursor cursor(statement);
  cursor.SkipAttributes();
  std::string_view rest = cursor.Rest();
  bool isPublic = false, isProtected = false, isFriend = false;
  for (std::string_view word = cursor.Word(); IsNetModifier(word); word = cursor.Word()) {
    const auto is = [&](std::string_view known) { return EqualsNoCaseAscii(word, known); };
    isPublic |= is("PUBLIC");
    isProtected |= is("PROTECTED");
    isFriend |= is("FRIEND");
    IsShared |= is("SHARED");
    IsStatic |= is("STATIC");
    IsShadow |= is("SHADOWS");
    IsWithEvents |= is("WITHEVENTS");
    rest = cursor.Rest();
  }
  if (isPublic) Access = "PUBLIC";
  if (isFriend) Access = "FRIEND";
  if (isProtected) Access = isFriend ? "PROTECTED FRIEND" : "PROTECTED";
  cursor = NetCursor(rest);
  std::size_t group = 0;  // the first of the names that share a type
  while (!cursor.AtEnd()) {
    NetDeclarator one;
    one.Name = NameOf(cursor, one.Type);
    const bool isNullable = cursor.Take('?');
    std::string marks;
    if (cursor.Here() == '(') {
      one.Subscript = TakeSubscripts(cursor, marks);
      one.IsArray = true;
    }
    const bool typed = cursor.TakeWord("as");
    bool isArray = false;
    std::string type;
    if (typed) {
      cursor.TakeWord("new");
      std::string_view written = cursor.Type();
      isArray = CutArray(written);
      type = TypeWithoutBrackets(written);
      if (isNullable) type += '?';
      type += marks;
    }
    const bool skipsArguments = typed && !cursor.AtEnd() && cursor.Here() != ',';
    if (cursor.Take('='))
      one.Value = cursor.Expression();
    else if (skipsArguments || (!cursor.AtEnd() && cursor.Here() != ','))
      cursor.Expression();
    const bool groupEnds = typed || !one.Value.empty();
    Declarators.push_back(std::move(one));
    if (typed)
      for (std::size_t i = group; i < Declarators.size(); ++i) {
        if (Declarators[i].Type.empty()) Declarators[i].Type = type;
        Declarators[i].IsArray |= isArray;
      }
    if (groupEnds) group = Declarators.size();
    cursor.Take(',');
  }
  std::erase_if(Declarators, [](const NetDeclarator& one) { return one.Name.empty(); });
}

}  // namespace vendrel
