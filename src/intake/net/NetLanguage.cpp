// VB.NET.

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/Declarators.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "intake/net/NetRules.h"
#include "intake/net/Overloads.h"
#include "intake/net/StartLineText.h"
#include "model/Namespace.h"
#include "project/NetResolver.h"
#include "project/ProjectFile.h"
#include "project/VBProject.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

// A delegate is no member of its class.
void MoveDelegate(LinePassage& p) try {
  if (!p.Block.IsDelegate()) return;
  Blocks& blocks = p.Component.Blocks;
  if (blocks.Count() == 0 || blocks.Last() != &p.Block) return;
  const std::shared_ptr<Block> self = blocks.Share(blocks.Count());
  Namespace* space = p.Component.Namespace.Get();
  if (!space) space = InUse<NetScanState>().CurrentNamespace.Get();
  if (space) space->Delegates.Add(self, p.Block.Name());
  p.Intake.DetachedBlock = self;
  blocks.Remove(blocks.Count());
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void TakeInherits(LinePassage& p) try {
  std::string_view rest = p.Line.StatementPart;
  TakeField(rest, ' ');
  rest = Trim(rest);
  if (!p.Component.IsInterface || rest.find(',') == std::string_view::npos) {
    p.Component.InheritsFrom = rest;
    return;
  }
  while (!rest.empty()) p.Component.netCreateImplementedInterface(Trim(TakeField(rest, ',')));
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void TakeImports(LinePassage& p) try {
  std::string_view rest = p.Line.StatementPart;
  TakeField(rest, ' ');
  VBProject* project = p.Component.VBProject();
  if (NetResolver* resolver = project ? project->NetResolver() : nullptr)
    resolver->addnamespace(TakeField(rest, ' '));
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

// The modifiers up to the first word that is none: the name.
std::string_view ReadNetModifiers(std::string_view keyword, DeclaratorWords& words,
                                  Variable& variable) {
  for (std::string_view word = keyword;; word = words.Take()) {
    const auto is = [&](std::string_view text) { return EqualsNoCaseAscii(word, text); };
    if (is("DIM") || is("PRIVATE")) {
      variable.Access = "PRIVATE";
    } else if (is("PUBLIC") || is("GLOBAL")) {
      variable.Access = "PUBLIC";
    } else if (is("STATIC")) {
      variable.Access = "PRIVATE";
      variable.IsStatic = true;
    } else if (is("PROTECTED")) {
      variable.Access = "PROTECTED";
    } else if (is("FRIEND")) {
      variable.Access = variable.Access == "PROTECTED" ? "PROTECTED FRIEND" : "FRIEND";
    } else if (is("SHADOWS")) {
      variable.IsShadow = true;
    } else if (is("SHARED")) {
      variable.IsStatic = true;
    } else if (!is("READONLY") && !is("WITHEVENTS")) {
      return word;
    }
    if (words.AtEnd()) return {};
  }
}

class DescribedNetRules final : public NetRules {};
constexpr DescribedNetRules kNetRules;

}  // namespace

void EndNetProperty(Component& component, Block& block) {
  if (block.PropertyType == ptRead) {
    block.SetBlockType(btPropertyGet);
  } else if (block.PropertyType == ptReadWrite) {
    auto setter = std::make_shared<Block>();
    setter->Component = &component;
    setter->SetVBProject(block.Project());
    setter->SetName(block.Name());
    setter->Access = block.Access;
    setter->PropertyType = block.PropertyType;
    setter->SetBlockType(btPropertySet);
    component.AddPropertyBlockToPropertyGroup(setter.get());
    block.SetSetter(std::move(setter));
  } else {
    block.SetBlockType(btPropertySet);
  }
}

void MakeNetDelegate(EventDeclaration& o, std::string_view outer) {
  Component* component = o.Component.Get();
  Namespace* space = component ? component->Namespace.Get() : nullptr;
  if (!space) return;
  auto block = std::make_shared<Block>();
  block->Component = component;
  block->SetVBProject(component->Project());
  block->SetBlockType(btSub);
  block->SetName(std::string(outer) + o.Name + "EventHandler");
  block->Access = o.Access;
  block->Parameters->Component = component;
  for (const Parameter& parameter : *o.Parameters) {
    std::shared_ptr<Parameter> copy = parameter.Clone(true);
    copy->Parent = block.get();
    block->Parameters->Add(copy, copy->Name());
  }
  o.DelegateName = space->Name + "." + block->Name();
  const std::string name = block->Name();
  space->Delegates.Add(std::move(block), name);
}

LanguageVersionEnum NetRules::Language() const { return lvVisualBasicDotNet; }

// Three apostrophes, the first of which is no part of the comment; four begin an ordinary one.
bool NetRules::IsDocumentation(const ParsedLine& line, const ReadingRules& reading) const {
  return reading.NetXmlComments && line.StatementPart.empty() &&
         line.CommentPart.starts_with("''") && !line.CommentPart.starts_with("'''");
}

SharedText NetRules::ImplicitType(const Component*, std::string_view) const {
  return "System.Object";
}
void NetRules::SettleTypeName(SharedText& type) const { type = DotNetType(type); }
bool NetRules::CutArrayMark(std::string_view& word) const {
  const std::size_t mark = word.ends_with("()") ? 2 : word.ends_with("(,)") ? 3 : 0;
  word.remove_suffix(mark);
  return mark > 0;
}

void NetRules::ReadSignature(LinePassage& p) const {
  ParseStartLine(p.Line.StatementPart, p.Block, p.Reading);
}
void NetRules::ReadProperty(LinePassage& p) const {
  p.Block.SetBlockType(btPropertyGet);
  p.Block.PropertyType = ptReadWrite;
  ParseStartLine(p.Line.StatementPart, p.Block, p.Reading);
  if (StartsWithNoCaseAscii(TrimLeft(p.Line.StatementPart), "Default "))
    p.Component.DefaultMemberName = p.Block.Name();
}
void NetRules::ProcedureBegins(LinePassage& p) const { MoveDelegate(p); }
void NetRules::SettleProcedure(LinePassage& p) const {
  if (p.Component.IsInterface || p.Block.IsAbstract) p.ClearLastElement = true;
}
void NetRules::ProcedureBegan(Component& component) const { CollectOverloads(component); }
void NetRules::PropertyEnds(LinePassage& p) const { EndNetProperty(p.Component, p.Block); }
bool NetRules::ParametersAreByRef() const { return false; }

std::string_view NetRules::ReadModifiers(std::string_view keyword, DeclaratorWords& words,
                                         Variable& variable, bool) const {
  return ReadNetModifiers(keyword, words, variable);
}
// "As New List(1, 2), b": the arguments of a constructor.
bool NetRules::SkipArguments(std::string_view& type, DeclaratorWords& words) const {
  const std::string_view word = type;
  if (word.find('(') == std::string_view::npos) return false;
  type = word.substr(0, word.find('('));
  const bool ends = word.ends_with("),");
  if (!ends && !word.ends_with(')'))
    while (!words.AtEnd() && !words.Take().ends_with(')')) {
    }
  return ends;
}
// A field may stand between two members.
bool NetRules::DeclaresField(const LinePassage& p) const {
  return p.Block.BlockType() == btDeclarations || p.Block.Name().empty() ||
         p.Block.CompletelyLoaded();
}
Block& NetRules::OwnerOfVariable(LinePassage& p) const {
  const bool between = !p.Block.Name().empty() && p.Block.CompletelyLoaded();
  return between ? *p.Component.BlockOfType(btDeclarations, true) : p.Block;
}

void NetRules::ReadEvent(EventDeclaration& event, std::string_view statement,
                         const ReadingRules& reading) const {
  event.Parameters.Renew();
  event.Parameters->Component = event.Component.Get();
  ParseStartLine(statement, event, reading);
  MakeNetDelegate(event);
}
std::string_view NetRules::InterfaceName(std::string_view written) const { return written; }
bool NetRules::HasPlainMemberNames() const { return false; }
void NetRules::CacheStructure(Component&, const UDT&) const {}
void NetRules::CacheEnumeration(Component& component, const Enumeration& enumeration) const {
  component.TypeCache.Add(enumeration.Name, tcLocalModuleEnum);
}
bool NetRules::TakeOwnStatement(LinePassage& p) const {
  if (p.Line.LineType == INHERITS_STATEMENT) return TakeInherits(p), true;
  if (p.Line.LineType == IMPORTS_STATEMENT) return TakeImports(p), true;
  return false;
}

const LanguageRules& NetLanguage() { return kNetRules; }

}  // namespace vendrel
