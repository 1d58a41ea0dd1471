// VB.NET as the language has it (`NetMembers`, `NetLines`).

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "intake/net/NetCursor.h"
#include "intake/net/NetDeclarations.h"
#include "intake/net/NetRules.h"
#include "intake/net/NetStatementScan.h"
#include "intake/net/NetWords.h"
#include "intake/net/Overloads.h"
#include "project/NetResolver.h"
#include "project/VBProject.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

NetStatementScan& ScanOf(ModuleIntake& intake) {
  if (!intake.OfLanguage) intake.OfLanguage = std::make_unique<NetStatementScan>();
  return static_cast<NetStatementScan&>(*intake.OfLanguage);
}

bool IsStatement(const ParsedLine& line) {
  switch (line.LineType) {
    case BLANK_LINE:
    case Comment:
    case TAGGED_COMMENT:
    case COMPILER_DIRECTIVE: return false;
    default: return !line.StatementPart.empty();
  }
}

bool BeginsMember(LineTypeEnum type) {
  return type == START_SUB || type == START_FUNCTION || type == START_PROPERTY ||
         type == EVENT_DECLARATION;
}

// A member without a body ends with its line: what follows is none of it.
void EndMember(Component& component, Block& block) {
  if (block.Intake().mEnded) return;
  block.Intake().mEnded = true;
  block.SetCompletelyLoaded();
  if (block.IsProperty()) EndNetProperty(component, block);
}

bool HasWord(std::string_view statement, std::string_view wanted) {
  NetWords words(statement);
  for (std::string_view word = words.Next(); IsNetModifier(word); word = words.Next())
    if (EqualsNoCaseAscii(word, wanted)) return true;
  return false;
}

void TakeNetVariables(LinePassage& p) try {
  p.State.FoundActualCodeInBlock = true;
  if (p.Options.LoadBlocksOnly && !p.Language.DeclaresField(p)) return;
  const NetVariables read(p.Line.StatementPart);
  for (const NetDeclarator& one : read.Declarators) {
    const std::shared_ptr<Variable> variable = NewVariable(p);
    variable->Name = one.Name;
    variable->Access = read.Access;
    variable->IsStatic = read.IsShared || read.IsStatic;
    variable->IsShadow = read.IsShadow;
    variable->IsWithEvents = read.IsWithEvents;
    variable->IsArray = one.IsArray;
    variable->ArraySubscript = one.Subscript;
    variable->ImplicitType = one.Type.empty();
    if (!one.Type.empty()) variable->TypeName = DotNetType(one.Type);
    AddVariable(p, variable, true);
  }
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void TakeNetConstants(LinePassage& p) try {
  p.State.FoundActualCodeInBlock = true;
  const NetVariables read(p.Line.StatementPart);
  for (const NetDeclarator& one : read.Declarators) {
    auto constant = std::make_shared<Constant>();
    constant->Name = one.Name;
    constant->Access = read.Access;
    if (!one.Type.empty()) constant->TypeName = DotNetType(one.Type);
    constant->Value = one.Value;
    AddConstant(p, p.Language.OwnerOfVariable(p), std::move(constant));
  }
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

// Each name of the list behind the keyword, without brackets.
std::vector<std::string> NamesBehind(std::string_view statement) {
  NetWords words(statement);
  words.Next();
  std::vector<std::string> names;
  for (const std::string_view name : NetList(words.Rest()))
    names.push_back(TypeWithoutBrackets(name));
  return names;
}

void TakeNetInherits(LinePassage& p) try {
  for (const std::string& name : NamesBehind(p.Line.StatementPart)) {
    if (!p.Component.IsInterface)
      p.Component.InheritsFrom = name;
    else
      p.Component.netCreateImplementedInterface(name);
  }
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void TakeNetImports(LinePassage& p) try {
  VBProject* project = p.Component.VBProject();
  NetResolver* resolver = project ? project->NetResolver() : nullptr;
  if (!resolver) return;
  for (const std::string& name : NamesBehind(p.Line.StatementPart))
    if (name.find_first_of("=<") == kNotFound) resolver->addnamespace(name);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

class CompleteNetRules final : public NetRules {
 public:
  bool JoinLine(Component& component, ModuleIntake& intake, std::string_view physical,
                std::string_view& statement) const override {
    if (!intake.Reading.NetLines || intake.PreviousContinued) return true;
    NetStatementScan& scan = ScanOf(intake);
    if (intake.IsWholeLine && intake.ContinuationBuffer.empty() && scan.TakeWhole(intake.NextLine))
      return true;
    if (!intake.ContinuationBuffer.empty() && scan.Refuses(physical)) {
      // What was not understood stays as lines.
      for (PendingLine& pending : intake.ContinuationBuffer)
        StoreLine(*component.CurrentBlock.Get(), pending.Line);
      intake.ContinuationBuffer.clear();
    }
    if (intake.ContinuationBuffer.empty()) scan.Begin();
    const bool goesOn = scan.Feed(physical, intake.NextLine);
    if (goesOn && !intake.EndsStatement) {
      if (scan.HasOnlyAttributes()) statement = {};
      return false;
    }
    if (!intake.ContinuationBuffer.empty()) statement = scan.Text();
    return true;
  }

  void SettleStatement(Component& component, ModuleIntake& intake,
                       ParsedLine& line) const override {
    NetStatementScan& scan = ScanOf(intake);
    if (!IsStatement(line)) {
      // Documentation stands above a member, and not in a property.
      if (scan.PropertyHeader && line.CommentPart.starts_with("''")) Finish(component, intake);
      return;
    }
    const bool isPlain = intake.IsPlainLine && !line.NotInSource && !line.Continuation;
    if (!isPlain) line.LineType = NetTypeOf(line.StatementPart, line.LineType);
    if (BeginsMember(line.LineType)) scan.ForgetLambdas();
    if (scan.EndsLambda() && !line.NotInSource) line.LineType = OTHER;
    Block& block = *component.CurrentBlock.Get();
    if (scan.PropertyHeader) {
      scan.PropertyHeader = false;
      if (line.LineType != START_PROPERTY_SUBBLOCK && line.LineType != END_PROPERTY)
        EndMember(component, block);
    }
    SettleInEvent(scan, line);
    if (line.LineType == START_PROPERTY) scan.PropertyHeader = !component.IsInterface;
  }

  void Finish(Component& component, ModuleIntake& intake) const override {
    NetStatementScan& scan = ScanOf(intake);
    if (scan.PropertyHeader && component.CurrentBlock)
      EndMember(component, *component.CurrentBlock.Get());
    scan.PropertyHeader = scan.CustomEvent = false;
    scan.ForgetLambdas();
  }

  void ProcedureBegan(Component& component) const override {
    Block& block = *component.CurrentBlock.Get();
    const bool hasNoBody = component.IsInterface || block.IsAbstract || block.IsDelegate() ||
                           (block.IsProperty() && HasNetInitialiser(block.DefinitionLine));
    if (hasNoBody) {
      ScanOf(component.Intake()).PropertyHeader = false;
      EndMember(component, block);
    }
    CollectOverloads(component);
  }

  void ReadEvent(EventDeclaration& event, std::string_view statement,
                 const ReadingRules&) const override {
    event.Parameters.Renew();
    ReadNetEvent(statement, event);
    // The language nests it in the type, so that two types may have events of one name.
    if (event.DelegateName.empty())
      MakeNetDelegate(event, event.Component ? event.Component->Name + "." : std::string());
  }

  bool TakeOwnStatement(LinePassage& p) const override {
    switch (p.Line.LineType) {
      case VAR_DECLARATION: TakeNetVariables(p); return true;
      case CONST_DECLARATION: TakeNetConstants(p); return true;
      case INHERITS_STATEMENT: TakeNetInherits(p); return true;
      case IMPORTS_STATEMENT: TakeNetImports(p); return true;
      case IMPLEMENTS_STATEMENT:
        for (const std::string& name : NamesBehind(p.Line.StatementPart)) AddInterface(p, name);
        return true;
      default: return false;
    }
  }

 private:
  // Between `Custom Event` and its end stand procedures without names.
  static void SettleInEvent(NetStatementScan& scan, ParsedLine& line) {
    if (line.LineType == EVENT_DECLARATION) {
      scan.CustomEvent = HasWord(line.StatementPart, "CUSTOM");
      return;
    }
    if (!scan.CustomEvent) return;
    NetWords words(line.StatementPart);
    const bool ends =
        EqualsNoCaseAscii(words.Next(), "END") && EqualsNoCaseAscii(words.Next(), "EVENT");
    if (ends || BeginsMember(line.LineType)) scan.CustomEvent = false;
    if (line.LineType == VAR_DECLARATION || line.LineType == CONST_DECLARATION)
      line.LineType = OTHER;
  }
};

constexpr CompleteNetRules kCompleteNetRules;

}  // namespace

const LanguageRules& CompleteNetLanguage() { return kCompleteNetRules; }

}  // namespace vendrel
