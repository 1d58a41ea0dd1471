// The scan that keeps every line at its place (`NetKeepSource`): lines of a type go to its module,
// those outside of types to a module of the file, and what closes a type stands in a block of its
// own, so that no procedure takes it along.

#include <algorithm>

#include "comments/AppendDescription.h"
#include "comments/TaggedCommentRules.h"
#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Diagnostic.h"
#include "dotnet/FileLayout.h"
#include "intake/Conditions.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "services/SourceText.h"
#include "text/Masking.h"
#include "text/Words.h"

namespace vendrel {
namespace {

using Kind = TypeStatement::Kind;

// A directive without its comment and with single blanks: "#If", not "# If".
std::string DirectiveOf(std::string_view line) {
  std::string text;
  const std::size_t comment = InStrEx(1, line, "'");
  if (comment > 0) line = line.substr(0, comment - 1);
  const std::string blanks = ReplaceAll(line, "\t", " ");
  for (const std::string_view word : TrimmedWords(blanks)) {
    if (!text.empty() && text != "#") text += ' ';
    text += word;
  }
  return text;
}

// Whether the first part of a type that is declared again says "Partial".
bool SaysPartial(const Component& component) {
  constexpr std::int32_t kMostLines = 128;  // attributes and comments stand in front
  const Block* first = component.Blocks.Count() > 0 ? component.Blocks.Item(1) : nullptr;
  const CodeLines* lines = first ? first->CodeLines.IfAny() : nullptr;
  for (std::int32_t i = 1; lines && i <= std::min(lines->Count(), kMostLines); ++i)
    for (const TypeStatement& statement : StatementsByWord(lines->LineView(i)))
      if (statement.What == Kind::Type) return statement.IsPartial;
  return false;
}

// Fields of a later part stand in a block of its own; they belong to the declarations of the type.
void GatherFields(Component& component, const Block* first) {
  const Block* reached = nullptr;
  for (std::size_t i = component.Blocks.Count(); i > 0 && reached != first; --i) {
    Block& block = *component.Blocks.Item(i);
    reached = &block;
    if (!block.Name().empty()) continue;
    Variables* fields = block.Variables.IfAny();
    Constants* constants = block.Constants.IfAny();
    if (!fields && !constants) continue;
    Block& declarations = *component.BlockOfType(btDeclarations, true);
    if (&declarations == &block) continue;
    for (std::size_t n = 1; fields && n <= fields->Count(); ++n)
      declarations.Variables->Add(fields->Share(n), fields->Item(n)->Name);
    for (std::size_t n = 1; constants && n <= constants->Count(); ++n)
      declarations.Constants->Add(constants->Share(n), constants->Item(n)->Name);
    block.Variables.Drop();
    block.Constants.Drop();
  }
}

}  // namespace

void SourceScan::TakeKept(const SourceStatement& statement) {
  if (mRules.NetConditions && TakeCondition(statement)) return;
  const std::vector<TypeStatement> found = TypeStatementsOf(statement);
  if (mRules.NetXmlComments) mScanned.Documentation.Take(statement);
  if (found.empty()) {
    if (mTypes.empty()) TakeImports(statement.Text);
    return FeedLines(Innermost(), statement);
  }
  bool fed = false;
  for (const TypeStatement& one : found) {
    switch (one.What) {
      case Kind::Namespace:
        TakeNamespaceComments(*mScanned.Outside, *CreateNamespace(one.Name, one.IsGlobal));
        EnterNamespace(CreateNamespace(one.Name, one.IsGlobal));
        mScanned.Outside->Namespace = GetNamespace();
        break;
      case Kind::EndNamespace:
        if (mSpaces.size() > 1) mSpaces.pop_back();
        InUse<NetScanState>().CurrentNamespace = GetNamespace();
        mScanned.Outside->Namespace = GetNamespace();
        break;
      case Kind::Type: OpenKept(one); break;
      case Kind::EndType:
        if (!fed) fed = TakeEndLines(statement, one);
        CloseKept(one);
        continue;
    }
    if (!fed) FeedHeader(one, found.size(), statement);
    fed = true;
  }
}

// What opens a type behind its attributes holds nothing else that the intake should read.
void SourceScan::FeedHeader(const TypeStatement& opened, std::size_t statements,
                            const SourceStatement& statement) {
  if (opened.What != Kind::Type) return FeedLines(*mScanned.Outside, statement);
  const auto [at, size] = PlaceOfTypeName(statement.Text);
  const bool isAttributed = statement.Lines.size() > 1 || TrimGaps(statement.Text).starts_with('<');
  const std::string_view behind = statement.Text.substr(std::min(at + size, statement.Text.size()));
  if (!isAttributed || statements > 1 || opened.Type == ctEnumeration ||
      behind.find_first_of(":'") != kNotFound)
    return FeedLines(Innermost(), statement);
  for (std::size_t i = 0; i < statement.Lines.size(); ++i) {
    mLine = statement.FirstLine + static_cast<std::int32_t>(i);
    StoreRaw(Innermost(), statement.Lines[i]);
  }
}

// Directives, and lines in a false branch; the conditions hold for the whole file.
bool SourceScan::TakeCondition(const SourceStatement& statement) {
  const bool isCode =
      statement.Shape == NetLineShape::Plain || statement.Shape == NetLineShape::Whole;
  const bool isDirective = !isCode && TrimGaps(statement.Text).starts_with('#');
  if (!isDirective && !mConditions) return false;
  if (!mConditions) mConditions = mScanned.Outside ? mScanned.Outside : NewHolder();
  ModuleIntake& intake = mConditions->Intake();
  if (!isDirective && !intake.Conditions.Ignore()) return false;
  Component& component = mRules.NetKeepSource ? Innermost() : *mCurrent;
  FinishPart(component);
  for (std::size_t i = 0; i < statement.Lines.size(); ++i) {
    mLine = statement.FirstLine + static_cast<std::int32_t>(i);
    StoreRaw(component, statement.Lines[i], isDirective ? COMPILER_DIRECTIVE : OTHER);
  }
  if (isDirective) try {
      UpdateConditions(*mConditions, intake, DirectiveOf(statement.Text));
    } catch (const VendrelError&) {
      Report(DiagnosticCode::UnbalancedDirective, {Trim(statement.Text)});
    }
  return true;
}

// The module of a type: that of an earlier part, else a new one.
std::shared_ptr<Component> SourceScan::PartOf(const TypeStatement& type, const std::string& name) {
  const std::string key = KeyOfType(GetNamespace(), name, mRules);
  std::shared_ptr<Component> known = mProject.Components.Share(key);
  if (!known || !mRules.NetTypeStatements) return NewPart();
  if (!type.IsPartial && !SaysPartial(*known)) return NewPart();
  FinishPart(*known);
  known->DropIntake();
  known->Intake().Text = std::shared_ptr<const std::string>(mSource, &mSource->Text);
  known->CurrentBlock = known->NewBlock(btDeclarations);
  if (!mFile.Components.HasKey(key)) {  // a file may hold several parts of it
    mFile.Components.Add(known, key);
    mScanned.Parts.push_back(known);
  }
  return known;
}

void SourceScan::TakeCommentsAbove(Component& above, Component& type) {
  if (const TaggedComments* waiting = above.TaggedCommentBuffer.IfAny();
      waiting && waiting->Count() > 0) {
    type.TaggedCommentBuffer = std::move(above.TaggedCommentBuffer);
    above.TaggedCommentBuffer.Renew();
    // They are about the type, before anything in it can take them.
    type.LastElement = &type;
    OfferTaggedComments(type, *type.CurrentBlock.Get());
    type.LastElement = nullptr;
  }
  std::string text = std::move(above.Intake().LeadingComment);
  above.Intake().LeadingComment.clear();
  if (Block* block = above.CurrentBlock.Get()) {
    std::string& buffer = block->Intake().CommentBuffer;
    if (text.empty()) text = buffer;
    buffer.clear();
  }
  if (!text.empty()) AddObjectDescription(type, text, lvVisualBasicDotNet);
}

void SourceScan::OpenKept(const TypeStatement& type) {
  Component& above = Innermost();
  const std::string name =
      mTypes.empty() ? type.Name : mTypes.back().Module->Name + "." + type.Name;
  const std::shared_ptr<Component> component = PartOf(type, name);
  const bool isNew = component->Name.empty();
  TakeCommentsAbove(above, *component);
  if (!mTypes.empty() && isNew) {
    CodeLine placeholder;
    placeholder.LineType = NESTED_CLASS_PLACEHOLDER;
    placeholder.NotInSource = true;
    placeholder.StatementPart = name;
    above.AddCode(placeholder, true);
  }
  if (isNew) {
    component->SetSourceLine(mLine);
    component->Namespace = GetNamespace();
    component->Name = name;
    component->FileType = type.Type == ctModule ? ftModule : ftClass;
    component->IsEnumeration = type.Type == ctEnumeration;
    component->IsStructure = type.Type == ctStructure;
    component->IsInterface = type.Type == ctInterface;
    component->IsNested = !mTypes.empty();
    component->Access = mTypes.empty() ? "FRIEND" : "PUBLIC";
    if (component->IsInterface) component->InheritsFrom = {};
  }
  if (!mRules.NetTypeStatements)
    component->Access = "PUBLIC";
  else if (!type.Access.empty())
    component->Access = type.Access;
  component->IsAbstract |= type.IsAbstract;
  component->IsSealed |= type.IsSealed;
  if (isNew) AddComponent(component);
  mScanned.NamesRead[component.get()] = component->Name;
  if (mRules.NetXmlComments) mScanned.Documentation.AddType(mLine, *component);
  mTypes.push_back({component, type.Underlying, component->CurrentBlock, !isNew,
                    component->EventDeclarations.Count(), component->Declarations.Count(),
                    component->Interfaces.Count()});
  if (const Block* section = isNew ? nullptr : component->Blocks.FirstOfType(btDeclarations)) {
    if (const Variables* fields = section->Variables.IfAny())
      mTypes.back().Variables = fields->Count();
    if (const Constants* fields = section->Constants.IfAny())
      mTypes.back().Constants = fields->Count();
  }
}

// The line that closes a type. That of an enumeration is read: it closes the list of members.
bool SourceScan::TakeEndLines(const SourceStatement& statement, const TypeStatement& ended) {
  Component& component = Innermost();
  if (mTypes.empty() || ended.Type == ctEnumeration) {
    FeedLines(component, statement);
    return true;
  }
  FinishPart(component);
  Block* current = component.CurrentBlock.Get();
  component.CurrentBlock = component.NewBlock(btDeclarations);
  for (std::size_t i = 0; i < statement.Lines.size(); ++i)
    StoreRaw(component, statement.Lines[i], END_CLASS);
  component.CurrentBlock = current;
  return true;
}

// Closes what the statement names, and what was left open inside of it.
void SourceScan::CloseKept(const TypeStatement& ended) {
  const auto kindOf = [](const Component& component) {
    if (component.IsEnumeration) return ctEnumeration;
    if (component.IsStructure) return ctStructure;
    if (component.IsInterface) return ctInterface;
    return component.FileType == ftModule ? ctModule : ctClass;
  };
  std::size_t depth = mTypes.size();
  while (depth > 0 && kindOf(*mTypes[depth - 1].Module) != ended.Type) --depth;
  if (depth == 0) return;  // nothing of that kind is open: the line is all there is
  while (mTypes.size() >= depth) CloseInnermost();
}

void SourceScan::NotePlaces(const OpenType& part) {
  Component& component = *part.Module;
  for (std::size_t i = part.Events; i < component.EventDeclarations.Count(); ++i)
    NotePlace(*component.EventDeclarations.Item(i + 1));
  for (std::size_t i = part.Declares; i < component.Declarations.Count(); ++i)
    NotePlace(*component.Declarations.Item(i + 1));
  for (std::size_t i = part.Interfaces; i < component.Interfaces.Count(); ++i)
    NotePlace(*component.Interfaces.Item(i + 1));
  if (Block* section = component.Blocks.FirstOfType(btDeclarations)) {
    Variables* variables = section->Variables.IfAny();
    for (std::size_t i = part.Variables; variables && i < variables->Count(); ++i)
      NotePlace(*variables->Item(i + 1));
    Constants* constants = section->Constants.IfAny();
    for (std::size_t i = part.Constants; constants && i < constants->Count(); ++i)
      NotePlace(*constants->Item(i + 1));
  }
  for (const WeakHandle<Block>& block : part.Blocks) {
    if (!block) continue;
    if (Variables* variables = block->Variables.IfAny())
      for (Variable& variable : *variables) NotePlace(variable);
    if (Constants* constants = block->Constants.IfAny())
      for (Constant& constant : *constants) NotePlace(constant);
  }
}

void SourceScan::CloseInnermost() {
  const OpenType type = mTypes.back();
  mTypes.pop_back();
  Component& component = *type.Module;
  FinishPart(component);
  FinishLines(component);
  if (type.IsLaterPart) NotePlaces(type);
  GatherFields(component, type.FirstBlock.Get());
  if (component.IsEnumeration) TurnEnumerationIntoFields(component, type.Underlying);
  if (component.CurrentBlock && component.TaggedCommentBuffer.IfAny())
    OfferTaggedComments(component, *component.CurrentBlock.Get());
  if (Block* block = component.CurrentBlock.Get()) block->Intake().CommentBuffer.clear();
}

void SourceScan::NoteRead(const SourceStatement& statement) {
  for (const std::string_view line : statement.Lines)
    mRead.Add(static_cast<std::size_t>(line.data() - mSource->Text.data()));
}

void SourceScan::AddPlaces(const Block& block, LinePlaces& places) const {
  const CodeLines* lines = block.CodeLines.IfAny();
  if (lines && lines->SourceText() == &mSource->Text)
    for (std::int32_t i = 1; i <= lines->Count(); ++i)
      if (const auto place = lines->SourceOffset(i); place && !lines->NotInSource(i))
        places.Add(*place);
  if (const Blocks* overloads = block.OverloadBlocks().IfAny())
    for (const Block& overload : *overloads) AddPlaces(overload, places);
}

// Whether the tree holds as many lines as the file, and at the same places as far as a sum tells.
bool SourceScan::HoldsEachLine() const {
  LinePlaces held;
  for (const auto& part : mScanned.Parts)
    for (const Block& block : part->Blocks.Listed()) AddPlaces(block, held);
  for (const auto& block : mScanned.Delegates) AddPlaces(*block, held);
  return held == mRead;
}

// Whatever became of a line on its way into the tree, it has its place in the file.
void SourceScan::KeepLostLines() {
  if (HoldsEachLine()) return;
  const FileLayout layout(mFile);
  auto placed = layout.Lines().begin();
  std::string_view rest = mSource->Text;
  for (mLine = 1; !rest.empty(); ++mLine) {
    const auto offset = static_cast<std::size_t>(rest.data() - mSource->Text.data());
    const std::string_view line = TakeLine(rest);
    while (placed != layout.Lines().end() && placed->Place < offset) ++placed;
    if (placed != layout.Lines().end() && placed->Place == offset) continue;
    StoreRaw(*mScanned.Outside, line);
    Report(DiagnosticCode::LineNotUnderstood, {Trim(line)});
  }
}

}  // namespace vendrel
