// The text of enumerations, structures, events and Declare statements.

#include "comments/Descriptions.h"
#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/Declarators.h"
#include "intake/StartLineText.h"
#include "model/Component.h"
#include "model/Namespace.h"
#include "text/Classifier.h"
#include "text/Names.h"
#include "text/StartLine.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// The words of a head line behind the name: a comment there is a description.
void DescribeFromWords(CodeElement& element, WordCursor& words) {
  std::string comment;
  std::string_view word;
  bool found = false;
  while (words.Next(word)) {
    if (!found && !word.starts_with('\'')) continue;
    if (!found) word.remove_prefix(1);
    if (found && !comment.empty()) comment += ' ';
    found = true;
    comment += word;
  }
  if (found) AddObjectDescription(element, comment);
}

const ProjectOptions& OptionsOf(const WeakHandle<Component>& component) {
  return component ? component->Options() : ProjectOptions::Defaults();
}

}  // namespace

void Enumeration::Initialise(std::string_view Source) try {
  Access = "PUBLIC";
  const bool wholeNames = State().CurrentReading.BracketedNames;
  WordCursor words(Source, wholeNames);
  std::string_view word;
  while (words.Next(word)) {
    if (EqualsNoCaseAscii(word, "PRIVATE")) Access = "PRIVATE";
    if (!EqualsNoCaseAscii(word, "ENUM")) continue;
    if (words.Next(word)) Name = wholeNames ? WithoutBrackets(word) : word;
    break;
  }
  if (OptionsOf(Component).UnTaggedEnumerations) DescribeFromWords(*this, words);
}
VENDREL_CONTEXT_AT(LineReached(), Source, *this)

std::shared_ptr<EnumMember> Enumeration::AddMember(std::string_view Source) try {
  auto member = std::make_shared<EnumMember>();
  member->Initialise(Source, this);
  Members().Add(member, member->Name);
  return member;
}
VENDREL_CONTEXT_AT(LineReached(), Source, *this)

namespace {
// A member of an Enum begins with no label, and may be called by a keyword alone.
CodeLine MemberLine(std::string_view source, const ProcessState& state) {
  if (!state.CurrentReading.MemberNames && !state.CurrentReading.EverySeparator)
    return InitialiseCodeLine(source, state.CurrentLanguageVersion, state.CurrentReading);
  LineClassifier classifier(state.CurrentLanguageVersion, state.CurrentReading);
  classifier.MayBeginWithLabel = classifier.RaiseLineNumber = false;
  ParsedLine line;
  classifier.First(source, line);
  return line.Record();
}
}  // namespace

void EnumMember::Initialise(std::string_view Source, vendrel::Enumeration* parent) try {
  Enumeration = parent;
  const ProcessState& state = State();
  const CodeLine line = MemberLine(Source, state);
  if (parent && !line.CommentPart.empty() && OptionsOf(parent->Component).UnTaggedEnumerations)
    AddObjectDescription(*this, line.CommentPart);
  std::string_view rest = line.StatementPart;
  std::string name;
  WordCursor words(rest, state.CurrentReading.BracketedNames);
  std::string_view word;
  while (words.Next(word)) {
    if (word == "=") {
      std::string value;
      while (words.Next(word)) {
        if (!value.empty()) value += ' ';
        value += word;
      }
      Value = value;
      break;
    }
    if (!name.empty()) name += ' ';
    name += word;
  }
  if (state.CurrentReading.WholeDefaults && Value.empty()) {
    const std::size_t equals = name.find('=');
    if (equals != std::string::npos) {
      Value = Trim(std::string_view(name).substr(equals + 1));
      name = TrimRight(std::string_view(name).substr(0, equals));
    }
  }
  // "Red& = 1": a suffix, which says nothing of a member.
  const bool hasSuffix = name.size() > 1 && !TypeFromName(name).empty();
  if (state.CurrentReading.BracketedNames && hasSuffix) name.pop_back();
  Name = WithoutBrackets(name);
}
VENDREL_CONTEXT_AT(LineReached(), Source, parent, *this)

void UDT::Initialise(std::string_view Source) try {
  const vendrel::Component* component = Component.Get();
  const bool open = component && !component->OptionPrivate &&
                    (component->FileType == ftModule || component->FileType == ftClass);
  Access = open ? "PUBLIC" : "PRIVATE";
  const bool wholeNames = State().CurrentReading.BracketedNames;
  WordCursor words(Source, wholeNames);
  std::string_view word;
  while (words.Next(word)) {
    if (EqualsNoCaseAscii(word, "PUBLIC")) Access = "PUBLIC";
    if (EqualsNoCaseAscii(word, "PRIVATE")) Access = "PRIVATE";
    if (!EqualsNoCaseAscii(word, "TYPE")) continue;
    if (words.Next(word)) Name = wholeNames ? WithoutBrackets(word) : word;
    break;
  }
  if (OptionsOf(Component).UnTaggedUDTs) DescribeFromWords(*this, words);
}
VENDREL_CONTEXT_AT(LineReached(), Source, *this)

std::shared_ptr<Variable> UDT::AddMember(std::string_view Source) try {
  auto member = std::make_shared<Variable>();
  member->Parent = this;
  if (vendrel::Component* component = Component.Get()) member->SetVBProject(component->Project());
  const ProjectOptions* options = member->Options();
  const std::string text = "Dim " + std::string(Source);
  DeclaratorReader(text, options ? options->Reading : ReadingRules::Classic(), true).Read(*member);
  Members.Add(member, member->Name);
  return member;
}
VENDREL_CONTEXT_AT(LineReached(), Source, *this)

namespace {
// Name of an event whose statement may have no parentheses: the word behind "Event".
std::string_view EventWord(std::string_view statement) {
  const bool wholeNames = State().CurrentReading.BracketedNames;
  WordCursor words(statement, wholeNames);
  std::string_view word;
  while (words.Next(word)) {
    if (!EqualsNoCaseAscii(word, "EVENT")) continue;
    if (!words.Next(word)) break;
    if (wholeNames && word.starts_with('[') && BracketEnd(word, 0) > 0)
      return WithoutBrackets(word.substr(0, BracketEnd(word, 0)));
    return word.substr(0, word.find('('));
  }
  return GetName(statement);
}
}  // namespace

namespace {

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

}  // namespace

void EventDeclaration::Initialise(std::string_view Source) try {
  Parameters.Renew();
  Parameters->Component = Component.Get();
  const ProcessState& state = State();
  if (state.CurrentLanguageVersion == lvVisualBasicDotNet) {
    ParseStartLine(Source, *this);
    MakeDelegate(*this);
    return;
  }
  const CodeLine line =
      InitialiseCodeLine(Source, state.CurrentLanguageVersion, state.CurrentReading);
  const ReadingRules& reading = state.CurrentReading;
  Name = reading.WholeDefaults ? EventWord(line.StatementPart) : GetName(line.StatementPart);
  if (reading.DefaultAccess)
    Access = StartsWithNoCaseAscii(line.StatementPart, "PRIVATE") ? "PRIVATE" : "PUBLIC";
  Parameters->LoadStatement(line.StatementPart, this, false);
}
VENDREL_CONTEXT_AT(LineReached(), Source, *this)

namespace {

// The words of a Declare statement up to and behind its parameter list.
struct DeclareWords {
  DeclareDeclaration& Target;
  bool WholeNames;
  bool LibNext = false;
  bool AliasNext = false;
  bool NameNext = false;
  bool TypeNext = false;
  int Depth = 0;        // of parentheses, once the library is known
  bool Opened = false;  // the parameter list has begun

  bool ListClosed() const { return Opened && Depth <= 0; }
  void Take(std::string_view word);
  bool TakeKeyword(std::string_view word);
  void TakeName(std::string_view word);
  void TakeReturnType(std::string_view word);
  void CountParentheses(std::string_view word);
};

bool DeclareWords::TakeKeyword(std::string_view word) {
  if (Opened) return false;
  const auto is = [&](std::string_view keyword) { return EqualsNoCaseAscii(word, keyword); };
  if (is("declare")) return true;
  if (is("public") || is("private"))
    Target.Access = UpperAscii(word);
  else if (is("lib"))
    LibNext = true;
  else if (is("alias"))
    AliasNext = true;
  else if (is("sub") || is("function")) {
    Target.IsFunction = is("function");
    NameNext = true;
  } else {
    return false;
  }
  return true;
}

void DeclareWords::TakeName(std::string_view word) {
  NameNext = false;
  Target.ReturnType = TypeFromName(word);
  if (!Target.ReturnType.empty()) word.remove_suffix(1);
  Target.Name = WholeNames ? WithoutBrackets(word) : word;
}

void DeclareWords::TakeReturnType(std::string_view word) {
  TypeNext = false;
  if (word.ends_with("()")) {
    Target.ReturnTypeIsArray = true;
    word.remove_suffix(2);
  }
  Target.ReturnType = WholeNames ? TypeWithoutBrackets(word) : std::string(word);
}

void DeclareWords::CountParentheses(std::string_view word) {
  bool inString = false;
  for (const char c : word) {
    if (c == '"') inString = !inString;
    if (inString) continue;
    if (c == '(') {
      ++Depth;
      Opened = true;
    }
    if (c == ')') --Depth;
  }
}

// The text between the quotes, for a word such as "kernel32"() that the list follows at once.
std::string_view Quoted(std::string_view word) {
  if (word.starts_with('"') && word.find('"', 1) != std::string_view::npos)
    return word.substr(1, word.find('"', 1) - 1);
  return StripQuotes(word);
}

void DeclareWords::Take(std::string_view word) {
  if (TakeKeyword(word)) return;
  if (TypeNext) {
    TakeReturnType(word);
  } else if (ListClosed() && EqualsNoCaseAscii(word, "as")) {
    TypeNext = true;
  } else if (LibNext) {
    LibNext = false;
    std::string library(Quoted(word));
    if (library.find('.') == std::string::npos) library += ".dll";
    Target.Library = library;
    CountParentheses(word);
  } else if (AliasNext) {
    AliasNext = false;
    Target.Alias = Quoted(word);
    CountParentheses(word);
  } else if (NameNext) {
    TakeName(word);
  } else if (!Target.Library.empty()) {
    CountParentheses(word);
  }
}

}  // namespace

void DeclareDeclaration::Initialise(const CodeLine& oLine) try {
  InitialiseFrom(oLine.StatementPart);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Parameter("Line", oLine.Text), *this)

void DeclareDeclaration::InitialiseFrom(std::string_view statement) try {
  const bool wholeNames = State().CurrentReading.BracketedNames;
  const std::string spaced = wholeNames ? SpacedOut(statement) : std::string();
  if (!spaced.empty()) statement = spaced;
  DeclareWords reader{*this, wholeNames};
  WordCursor words(statement, wholeNames);
  std::string_view word;
  while (words.Next(word)) reader.Take(word);
  const vendrel::Component* component = Component.Get();
  if (Access.empty() && State().CurrentReading.DefaultAccess)
    Access = component && component->FileType == ftModule ? "PUBLIC" : "PRIVATE";
  Parameters.Renew();
  Parameters->Component = Component.Get();
  Parameters->LoadStatement(statement, this, false);
}
VENDREL_CONTEXT_AT(LineReached(), statement, *this)

}  // namespace vendrel
