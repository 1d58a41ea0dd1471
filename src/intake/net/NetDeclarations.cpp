#include "intake/net/NetDeclarations.h"

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/net/NetCursor.h"
#include "intake/net/NetMemberHeader.h"
#include "intake/net/NetModifiers.h"
#include "intake/net/NetWords.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

// What a procedure handles: the variable behind the first name of the list, or the object itself.
CodeElement* SourceOf(Component& component, std::string_view handled) {
  const std::string name(WithoutBrackets(handled.substr(0, handled.rfind('.'))));
  if (IsWordOf(name, {"ME", "MYBASE", "MYCLASS"})) return &component;
  Block* declarations = component.Blocks.FirstOfType(btDeclarations);
  Variables* fields = declarations ? declarations->Variables.IfAny() : nullptr;
  return fields ? fields->Item(name) : nullptr;
}

}  // namespace

void ReadNetMember(std::string_view statement, Block& o) try {
  const NetMemberHeader header(statement);
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
    o.ReturnType = NetTypeNamed(header.Type);
  else if (!header.SuffixType.empty())
    o.ReturnType = DotNetType(header.SuffixType);
  else if (returns)
    o.ReturnType = "System.Object";
  if (header.IsNew) {
    o.IsConstructor = true;
    o.SetName(o.IsStatic ? "_cctor" : "_ctor");
  }
  if (header.Handles.empty()) return;
  o.IsEventProcedure = true;
  if (component) o.EventSource = SourceOf(*component, header.Handles.front());
}
VENDREL_CONTEXT_AT(LineReached(), statement, o)

bool HasNetInitialiser(std::string_view statement) {
  return NetMemberHeader(statement).HasInitialiser;
}

void ReadNetEvent(std::string_view statement, EventDeclaration& o) try {
  const NetMemberHeader header(statement);
  Component* component = o.Component.Get();
  const std::string base = component ? component->InheritsFrom.str() : std::string();
  o.Name = header.Name;
  for (const std::string_view word : header.Modifiers) TakeCommonModifier(o, word, base);
  if (o.Access.empty()) o.Access = "PUBLIC";
  o.Parameters->Component = component;
  ReadNetParameters(header.Parameters, *o.Parameters, &o);
  if (!header.Type.empty()) o.DelegateName = TypeWithoutBrackets(header.Type);
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
    const std::string name = cursor.Name(type);
    const bool isNullable = cursor.Take('?');
    std::string marks;
    if (cursor.Here() == '(') {
      cursor.Subscripts(marks);
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
    parameter->VariableType = type.empty() ? SharedText("System.Object") : NetTypeNamed(type);
    parameter->SetName(name);
    if (name.empty() || parameters.HasKey(name)) continue;
    parameters.Add(std::move(parameter), name);
  }
}
VENDREL_CONTEXT_AT(LineReached(), list, parent)

}  // namespace vendrel
