// VB.NET.

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/Declarators.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "intake/net/Overloads.h"
#include "intake/net/StartLineText.h"
#include "model/Namespace.h"
#include "project/NetResolver.h"
#include "project/ProjectFile.h"
#include "project/VBProject.h"
#include "text/Names.h"

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

// Every event of VB.NET has a delegate: a procedure with the parameters of the event.
void MakeDelegate(EventDeclaration& o) {
  Component* component = o.Component.Get();
  Namespace* space = component ? component->Namespace.Get() : nullptr;
  if (!space) return;
  auto block = std::make_shared<Block>();
  block->Component = component;
  block->SetVBProject(component->Project());
  block->SetBlockType(btSub);
  block->SetName(o.Name + "EventHandler");
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

// The one Property statement of VB.NET stands for a get and a set.
void EndProperty(LinePassage& p) {
  if (p.Block.PropertyType == ptRead) {
    p.Block.SetBlockType(btPropertyGet);
  } else if (p.Block.PropertyType == ptReadWrite) {
    auto setter = std::make_shared<Block>();
    setter->Component = &p.Component;
    setter->SetVBProject(p.Block.Project());
    setter->SetName(p.Block.Name());
    setter->Access = p.Block.Access;
    setter->PropertyType = p.Block.PropertyType;
    setter->SetBlockType(btPropertySet);
    p.Component.AddPropertyBlockToPropertyGroup(setter.get());
    p.Block.SetSetter(std::move(setter));
  } else {
    p.Block.SetBlockType(btPropertySet);
  }
}

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

class NetRules final : public LanguageRules {
 public:
  LanguageVersionEnum Language() const override { return lvVisualBasicDotNet; }

  SharedText ImplicitType(const Component*, std::string_view) const override {
    return "System.Object";
  }
  void SettleTypeName(SharedText& type) const override { type = DotNetType(type); }
  bool CutArrayMark(std::string_view& word) const override {
    const std::size_t mark = word.ends_with("()") ? 2 : word.ends_with("(,)") ? 3 : 0;
    word.remove_suffix(mark);
    return mark > 0;
  }

  void ReadSignature(LinePassage& p) const override {
    ParseStartLine(p.Line.StatementPart, p.Block, p.Reading);
  }
  void ReadProperty(LinePassage& p) const override {
    p.Block.SetBlockType(btPropertyGet);
    p.Block.PropertyType = ptReadWrite;
    ParseStartLine(p.Line.StatementPart, p.Block, p.Reading);
    if (StartsWithNoCaseAscii(TrimLeft(p.Line.StatementPart), "Default "))
      p.Component.DefaultMemberName = p.Block.Name();
  }
  void ProcedureBegins(LinePassage& p) const override { MoveDelegate(p); }
  void SettleProcedure(LinePassage& p) const override {
    if (p.Component.IsInterface || p.Block.IsAbstract) p.ClearLastElement = true;
  }
  void ProcedureBegan(Component& component) const override { CollectOverloads(component); }
  void PropertyEnds(LinePassage& p) const override { EndProperty(p); }
  bool ParametersAreByRef() const override { return false; }

  std::string_view ReadModifiers(std::string_view keyword, DeclaratorWords& words,
                                 Variable& variable, bool) const override {
    return ReadNetModifiers(keyword, words, variable);
  }
  // "As New List(1, 2), b": the arguments of a constructor.
  bool SkipArguments(std::string_view& type, DeclaratorWords& words) const override {
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
  bool DeclaresField(const LinePassage& p) const override {
    return p.Block.BlockType() == btDeclarations || p.Block.Name().empty() ||
           p.Block.CompletelyLoaded();
  }
  Block& OwnerOfVariable(LinePassage& p) const override {
    const bool between = !p.Block.Name().empty() && p.Block.CompletelyLoaded();
    return between ? *p.Component.BlockOfType(btDeclarations, true) : p.Block;
  }

  void ReadEvent(EventDeclaration& event, std::string_view statement,
                 const ReadingRules& reading) const override {
    event.Parameters.Renew();
    event.Parameters->Component = event.Component.Get();
    ParseStartLine(statement, event, reading);
    MakeDelegate(event);
  }
  std::string_view InterfaceName(std::string_view written) const override { return written; }
  bool HasPlainMemberNames() const override { return false; }
  void CacheStructure(Component&, const UDT&) const override {}
  void CacheEnumeration(Component& component, const Enumeration& enumeration) const override {
    component.TypeCache.Add(enumeration.Name, tcLocalModuleEnum);
  }
  void TakeOwnStatement(LinePassage& p) const override {
    if (p.Line.LineType == INHERITS_STATEMENT) TakeInherits(p);
    if (p.Line.LineType == IMPORTS_STATEMENT) TakeImports(p);
  }
};

constexpr NetRules kNetRules;

}  // namespace

const LanguageRules& NetLanguage() { return kNetRules; }

}  // namespace vendrel
