// The text of enumerations, structures and Declare statements.

#include "intake/DeclarationText.h"

#include "comments/AppendDescription.h"
#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/Declarators.h"
#include "model/Component.h"
#include "text/Classifier.h"
#include "text/Identifiers.h"
#include "text/StartLine.h"
#include "text/StopBytes.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// The words of a head line behind the name: a comment there is a description.
void DescribeFromWords(CodeElement& element, WordCursor& words, const SourceRules& rules) {
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
  if (found) AddObjectDescription(element, comment, rules.Language.Language());
}

const ProjectOptions& OptionsOf(const WeakHandle<Component>& component) {
  return component ? component->Options() : ProjectOptions::Defaults();
}

SourceRules RulesOf(const WeakHandle<Component>& component) {
  return SourceRules::InForce(component ? &component->Options() : nullptr);
}

}  // namespace

void ReadEnumeration(Enumeration& o, std::string_view Source, const SourceRules& rules) {
  o.Access = "PUBLIC";
  const bool wholeNames = rules.Reading.BracketedNames;
  WordCursor words(Source, wholeNames);
  std::string_view word;
  while (words.Next(word)) {
    if (EqualsNoCaseAscii(word, "PRIVATE")) o.Access = "PRIVATE";
    if (!EqualsNoCaseAscii(word, "ENUM")) continue;
    if (words.Next(word)) o.Name = wholeNames ? WithoutBrackets(word) : word;
    break;
  }
  if (OptionsOf(o.Component).UnTaggedEnumerations) DescribeFromWords(o, words, rules);
}

void Enumeration::Initialise(std::string_view Source) try {
  ReadEnumeration(*this, Source, RulesOf(Component));
}
VENDREL_CONTEXT_AT(LineReached(), Source, *this)

namespace {

// A member of an Enum begins with no label, and may be called by a keyword alone.
CodeLine MemberLine(std::string_view source, const SourceRules& rules) {
  if (!rules.Reading.MemberNames && !rules.Reading.EverySeparator)
    return InitialiseCodeLine(source, rules.Language.Language(), rules.Reading);
  LineClassifier classifier(rules.Language.Language(), rules.Reading);
  classifier.MayBeginWithLabel = classifier.RaiseLineNumber = false;
  ParsedLine line;
  classifier.First(source, line);
  return line.Record();
}

// What stands behind "=", with single blanks; the words in front of it become the name.
std::string TakeMemberValue(std::string_view statement, const ReadingRules& reading,
                            std::string& name) {
  std::string value;
  WordCursor words(statement, reading.BracketedNames);
  std::string_view word;
  while (words.Next(word)) {
    if (word == "=") {
      while (words.Next(word)) {
        if (!value.empty()) value += ' ';
        value += word;
      }
      break;
    }
    if (!name.empty()) name += ' ';
    name += word;
  }
  const std::size_t equals =
      reading.WholeDefaults && value.empty() ? name.find('=') : std::string::npos;
  if (equals == std::string::npos) return value;
  value = Trim(std::string_view(name).substr(equals + 1));
  name = TrimRight(std::string_view(name).substr(0, equals));
  return value;
}

void ReadEnumMember(EnumMember& o, std::string_view Source, Enumeration* parent,
                    const SourceRules& rules) {
  o.Enumeration = parent;
  const CodeLine line = MemberLine(Source, rules);
  if (parent && !line.CommentPart.empty() && OptionsOf(parent->Component).UnTaggedEnumerations)
    AddObjectDescription(o, line.CommentPart, rules.Language.Language());
  std::string name;
  o.Value = TakeMemberValue(line.StatementPart, rules.Reading, name);
  // "Red& = 1": a suffix, which says nothing of a member.
  const bool hasSuffix = name.size() > 1 && !TypeFromName(name).empty();
  if (rules.Reading.BracketedNames && hasSuffix) name.pop_back();
  o.Name = WithoutBrackets(name);
}

}  // namespace

std::shared_ptr<EnumMember> AddEnumMember(Enumeration& o, std::string_view Source,
                                          const SourceRules& rules) {
  auto member = std::make_shared<EnumMember>();
  ReadEnumMember(*member, Source, &o, rules);
  o.Members().Add(member, member->Name);
  return member;
}

std::shared_ptr<EnumMember> Enumeration::AddMember(std::string_view Source) try {
  return AddEnumMember(*this, Source, RulesOf(Component));
}
VENDREL_CONTEXT_AT(LineReached(), Source, *this)

void EnumMember::Initialise(std::string_view Source, vendrel::Enumeration* parent) try {
  ReadEnumMember(*this, Source, parent,
                 parent ? RulesOf(parent->Component) : SourceRules::InForce(nullptr));
}
VENDREL_CONTEXT_AT(LineReached(), Source, parent, *this)

void ReadStructure(UDT& o, std::string_view Source, const SourceRules& rules) {
  const ReadingRules& reading = rules.Reading;
  const Component* component = o.Component.Get();
  const bool open = component && !component->OptionPrivate &&
                    (component->FileType == ftModule || component->FileType == ftClass);
  o.Access = open ? "PUBLIC" : "PRIVATE";
  WordCursor words(Source, reading.BracketedNames);
  std::string_view word;
  while (words.Next(word)) {
    if (EqualsNoCaseAscii(word, "PUBLIC")) o.Access = "PUBLIC";
    if (EqualsNoCaseAscii(word, "PRIVATE")) o.Access = "PRIVATE";
    if (!EqualsNoCaseAscii(word, "TYPE")) continue;
    if (words.Next(word)) o.Name = reading.BracketedNames ? WithoutBrackets(word) : word;
    break;
  }
  if (OptionsOf(o.Component).UnTaggedUDTs) DescribeFromWords(o, words, rules);
}

void UDT::Initialise(std::string_view Source) try {
  ReadStructure(*this, Source, RulesOf(Component));
}
VENDREL_CONTEXT_AT(LineReached(), Source, *this)

std::shared_ptr<Variable> AddStructureMember(UDT& o, std::string_view Source,
                                             const SourceRules& rules) {
  auto member = std::make_shared<Variable>();
  if (const std::size_t count = o.Members.Count())
    member->StandBeside(*std::as_const(o).Members.Item(count));
  member->Parent = &o;
  if (Component* component = o.Component.Get()) member->LinkToProject(component->ProjectLink());
  const std::string text = "Dim " + std::string(Source);
  DeclaratorReader(text, rules, true).Read(*member);
  o.Members.Add(member, member->Name);
  return member;
}

std::shared_ptr<Variable> UDT::AddMember(std::string_view Source) try {
  return AddStructureMember(*this, Source, RulesOf(Component));
}
VENDREL_CONTEXT_AT(LineReached(), Source, *this)

void EventDeclaration::Initialise(std::string_view Source) try {
  const SourceRules rules = RulesOf(Component);
  rules.Language.ReadEvent(*this, Source, rules.Reading);
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
  static constexpr StopBytes kStops("\"()");
  bool inString = false;
  for (std::size_t at = kStops.Next(word, 0); at < word.size(); at = kStops.Next(word, at + 1)) {
    const char c = word[at];
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

void ReadDeclare(DeclareDeclaration& o, std::string_view statement, const SourceRules& rules) {
  const bool wholeNames = rules.Reading.BracketedNames;
  const std::string spaced = wholeNames ? SpacedOut(statement) : std::string();
  if (!spaced.empty()) statement = spaced;
  DeclareWords reader{o, wholeNames};
  WordCursor words(statement, wholeNames);
  std::string_view word;
  while (words.Next(word)) reader.Take(word);
  const Component* component = o.Component.Get();
  if (o.Access.empty() && rules.Reading.DefaultAccess)
    o.Access = component && component->FileType == ftModule ? "PUBLIC" : "PRIVATE";
  o.Parameters.Renew();
  o.Parameters->Component = o.Component.Get();
  ReadParameters(*o.Parameters, statement, &o, false, rules);
}

void DeclareDeclaration::Initialise(const CodeLine& oLine) try {
  ReadDeclare(*this, oLine.StatementPart, RulesOf(Component));
}
VENDREL_CONTEXT_AT(LineReached(), trace::Parameter("Line", oLine.Text), *this)

}  // namespace vendrel
