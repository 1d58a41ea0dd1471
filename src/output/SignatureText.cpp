#include "output/SignatureText.h"

#include <algorithm>
#include <initializer_list>

#include "core/Ascii.h"
#include "model/Component.h"
#include "project/WithItsClass.h"

namespace vendrel {
namespace {

std::string Phrase(std::initializer_list<std::string_view> words) {
  std::string phrase;
  for (const std::string_view word : words) {
    if (word.empty()) continue;
    if (!phrase.empty()) phrase += ' ';
    phrase += word;
  }
  return phrase;
}

std::string Typed(std::string name, std::string_view type) {
  return type.empty() ? name : name.append(" As ").append(type);
}

std::string Declaring(const Parameter& p) {
  std::string name = p.Name();
  if (p.IsArray) name += "()";
  std::string text = Phrase({p.IsOptional && !p.IsParamArray ? "Optional" : "",
                             p.IsParamArray ? "ParamArray"
                             : p.IsByRef    ? "ByRef"
                                            : "ByVal",
                             Typed(name, p.VariableType)});
  if (!p.DefaultValue.empty()) text.append(" = ").append(p.DefaultValue);
  return text;
}

std::string List(const Parameters* parameters) {
  std::string list;
  for (std::size_t i = 1; parameters && i <= parameters->Count(); ++i)
    list.append(i > 1 ? ", " : "").append(Declaring(*parameters->Item(i)));
  return "(" + list + ")";
}

std::string_view WordOf(BlockTypeEnum type) {
  switch (type) {
    case btFunction: return "Function";
    case btPropertyGet: return "Property Get";
    case btPropertyLet: return "Property Let";
    case btPropertySet: return "Property Set";
    default: return "Sub";
  }
}

bool IsLetOrSet(const Block& b) {
  return b.BlockType() == btPropertyLet || b.BlockType() == btPropertySet;
}

// An overload has its types in its name.
std::string NameOf(const Block& b) {
  const std::string_view name = b.Name();
  return std::string(b.Overloaded() ? name.substr(0, name.find('(')) : name);
}

std::string Declaring(const Block& b) {
  if (!b.DefinitionLine.empty()) return b.DefinitionLine.str();
  return Phrase({AccessWords(b.Access), WordOf(b.BlockType()),
                 Typed(NameOf(b) + List(b.Parameters.IfAny()), IsLetOrSet(b) ? "" : b.ReturnType)});
}

const CodeLines* LinesWith(const Variable& v) {
  const Block* block = v.Procedure.Get();
  if (!block && v.OwnComponent()) block = v.OwnComponent()->Blocks.FirstOfType(btDeclarations);
  const CodeLines* lines = block ? block->CodeLines.IfAny() : nullptr;
  const bool isThere = lines && !lines->Unloaded() && v.LineIndex >= 1;
  return isThere && v.LineIndex <= lines->Count() ? lines : nullptr;
}

// The statement that declares a variable, its lines joined.
std::string StatementWith(const Variable& v) {
  const CodeLines* lines = LinesWith(v);
  std::string statement;
  for (std::int32_t i = v.LineIndex; lines && i <= lines->Count(); ++i) {
    statement += lines->LineView(i);
    for (char& c : statement)
      if (c == '\t') c = ' ';
    if (!statement.ends_with(" _")) break;
    statement.pop_back();
  }
  return statement;
}

// The tree keeps the type alone: whether an object is made at its first use stands in the source.
bool IsDeclaredNew(const Variable& v) {
  const std::string statement = StatementWith(v);
  const auto ends = [](char c) { return c == ' ' || c == ',' || c == '('; };
  for (std::size_t at = FindNoCaseAscii(statement, v.Name); at != kNotFound;
       at = FindNoCaseAscii(statement, v.Name, at + 1)) {
    std::string_view behind = std::string_view(statement).substr(at + v.Name.size());
    if (at == 0 || !ends(statement[at - 1]) || behind.empty() || !ends(behind.front())) continue;
    if (v.IsArray) behind.remove_prefix(std::min(behind.size(), behind.find(')') + 1));
    behind = TrimLeft(behind);
    if (!StartsWithNoCaseAscii(behind, "As ")) continue;
    return StartsWithNoCaseAscii(TrimLeft(behind.substr(3)), "New ");
  }
  return false;
}

std::string Declaring(const Variable& v) {
  const std::string name = v.Name + (v.IsArray ? "(" + v.ArraySubscript.str() + ")" : "");
  if (v.Procedure) return Phrase({v.IsStatic ? "Static" : "Dim", Typed(name, TypeWords(v))});
  const bool isMember = IsA<UDT>(v.Parent.Get());
  return Phrase({isMember ? "" : v.Access.view(), v.IsWithEvents ? "WithEvents" : "",
                 Typed(name, TypeWords(v))});
}

std::string Declaring(const DeclareDeclaration& d) {
  return Phrase({d.Access, "Declare", DeclareWords(d)});
}

std::string Declaring(const Constant& c) {
  return Phrase({c.Access, "Const", Typed(c.Name, c.TypeName), "=", c.Value});
}
std::string Declaring(const Component& c) { return Phrase({c.Access, "module", c.Name}); }
std::string Declaring(const Enumeration& e) { return Phrase({e.Access, "Enum", e.Name}); }
std::string Declaring(const EnumMember& m) {
  return m.Value.empty() ? m.Name.str() : Phrase({m.Name, "=", m.Value});
}
std::string Declaring(const UDT& u) { return Phrase({u.Access, "Type", u.Name}); }
std::string Declaring(const EventDeclaration& e) {
  return Phrase({e.Access, "Event", e.Name + List(e.Parameters.IfAny())});
}
std::string Declaring(const Interface& i) { return "Implements " + i.Name; }
std::string Declaring(const VBControl& c) { return Phrase({"Begin", c.ProgID, c.Name}); }
std::string Declaring(const Library& l) { return l.Name; }
std::string Declaring(const VBProject& p) { return Phrase({"Project", p.ProjectName}); }

// What has no signature.
std::string Declaring(const CodeElement&) { return {}; }

}  // namespace

std::string SignatureText(const CodeElement& element) {
  std::string signature;
  WithItsClass(element, [&](const auto& typed) { signature = Declaring(typed); });
  return signature;
}

std::string TypeWords(const Variable& variable) {
  const std::string_view type = variable.TypeName;
  if (type.empty() || !IsDeclaredNew(variable)) return std::string(type);
  return std::string("New ").append(type);
}

std::string DeclareWords(const DeclareDeclaration& declare) {
  const std::string library = "\"" + declare.Library.str() + "\"";
  return Phrase({declare.IsFunction ? "Function" : "Sub", declare.Name, "Lib", library,
                 Typed(List(declare.Parameters.IfAny()),
                       declare.IsFunction ? declare.ReturnType.view() : "")});
}

std::string AccessWords(std::string_view access) {
  std::string words(access);
  for (std::size_t i = 1; i < words.size(); ++i)
    if (words[i - 1] != ' ') words[i] = LowerAscii(words[i]);
  return words;
}

}  // namespace vendrel
