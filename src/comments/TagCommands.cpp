// Tags that are commands: the first phase of placing a comment.

#include <charconv>
#include <cmath>
#include <optional>

#include "comments/Placement.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "model/Example.h"
#include "project/ModulesAhead.h"

namespace vendrel {
namespace {

std::shared_ptr<Example> LoadExample(const Placement& a) {
  auto example = std::make_shared<Example>();
  example->Load(a.Comment->Text);
  return example;
}

void AddExample(const Placement& a, const std::shared_ptr<Example>& example, CodeElement& item) {
  example->SetRelatedItem(&item);
  if (a.Project) ChangeProject([project = a.Project, example] { project->Examples->Add(example); });
}

// A command that acted belongs to the element it acted on.
Outcome Done(Placement& a, CodeElement* element) {
  a.Comment->CodeElement = element;
  return Outcome::Applied;
}

Outcome MarkModuleAsExample(Placement& a) {
  AddExample(a, LoadExample(a), a.Component);
  a.Component.IsExample = true;
  return Done(a, &a.Component);
}

Outcome MarkBlockAsExample(Placement& a) {
  const std::shared_ptr<Example> example = LoadExample(a);
  auto* block = a.LastAs<Block>();
  if (!block) return Outcome::Refused;
  AddExample(a, example, *block);
  block->IsExample = true;
  return Done(a, block);
}

Outcome MarkElementAsNew(Placement& a) {
  if (!a.Definition) throw VendrelError(errObjectNotSet, a.Comment->TagIdentifier);
  CodeElement* element = nullptr;
  if (a.Definition->ElementType == etMethod) {
    auto* block = a.LastAs<Block>();
    if (block && !block->Name().empty()) element = block;
  } else if (a.Definition->ElementType == etVariable) {
    element = VariableNamed(a, a.Comment->Qualifier);
  } else if (a.Definition->ElementType == etEvent) {
    element = a.LastAs<EventDeclaration>();
  }
  if (!element) return Outcome::GoesOn;
  *element->IsNewField() = true;
  a.AddByTag(*element);
  return Done(a, element);
}

Outcome MarkModuleAsNew(Placement& a) {
  a.AddByTag(a.Component);
  a.Component.IsNew = true;
  return Outcome::GoesOn;
}

Outcome MarkLastElementAsNew(Placement& a) {
  if (!a.LastElement) return Outcome::GoesOn;
  a.AddByTag(*a.LastElement);
  bool* isNew = a.LastElement->IsNewField();
  if (!isNew) return Outcome::GoesOn;
  *isNew = true;
  return Done(a, a.LastElement);
}

Outcome IgnoreReferences(Placement& a) {
  std::vector<std::string>& names = a.Component.IgnoreReferences;
  std::unordered_set<std::string>& keys = *a.Component.IgnoreReferenceKeys;
  if (keys.size() != names.size())  // a client has changed the list
    for (const std::string& name : names) keys.insert(FoldKey(name));
  std::string_view rest = a.Comment->Text;
  while (!rest.empty()) {
    const std::string_view name = Trim(TakeField(rest, ','));
    if (!name.empty() && keys.insert(FoldKey(name)).second) names.emplace_back(name);
  }
  return Done(a, &a.Component);
}

// The number at the start of a text, blanks ignored, rounded half to even; nothing for 0, for text
// without a number, and for one beyond 32 bits.
std::optional<std::int32_t> LeadingNumber(std::string_view text) {
  std::string digits;
  for (const char c : text.substr(0, 400))
    if (c != ' ' && c != '\t') digits.push_back(UpperAscii(c) == 'D' ? 'E' : c);
  std::string_view number = digits;
  const bool radix = number.size() > 2 && number[0] == '&';
  const int base = radix && UpperAscii(number[1]) == 'H' ? 16 : 8;
  double value = 0;
  if (radix) {
    std::uint32_t bits = 0;
    std::from_chars(number.data() + 2, number.data() + number.size(), bits, base);
    value = static_cast<std::int32_t>(bits);
  } else {
    if (number.starts_with('+')) number.remove_prefix(1);
    const bool isWord = number.empty() || IsLetterAscii(number.front()) ||
                        (number.size() > 1 && number[0] == '-' && IsLetterAscii(number[1]));
    if (!isWord) std::from_chars(number.data(), number.data() + number.size(), value);
  }
  const double rounded = std::nearbyint(value);
  if (value == 0 || !(std::fabs(rounded) < 2147483648.0)) return std::nullopt;
  return static_cast<std::int32_t>(rounded);
}

Outcome SetRelationshipLevels(Placement& a) {
  if (const auto levels = LeadingNumber(a.Comment->Text)) a.Component.RelationshipLevels = *levels;
  return Done(a, &a.Component);
}

Outcome MarkModuleAsCollection(Placement& a) {
  a.Component.SetIsCollection(true);
  return Done(a, &a.Component);
}

Outcome MarkModuleAsInterface(Placement& a) {
  a.Component.IsInterface = true;
  return Done(a, &a.Component);
}

Outcome RetainContextIDs(Placement& a) {
  if (a.Project)
    ChangeProject([project = a.Project, comment = a.Comment] {
      project->RetainContextIDs = true;
      comment->CodeElement = project;
    });
  return Outcome::Applied;
}

// "##INTERFACE_ALIAS IFoo path" for an interface by name, "##INTERFACE_ALIAS path" for the last
// one.
Outcome SetInterfaceAlias(Placement& a) {
  const std::string& text = a.Comment->Text;
  const std::size_t blank = text.find(' ');
  const bool twoParts =
      blank != std::string::npos && text.find(' ', blank + 1) == std::string::npos;
  Interface* target = nullptr;
  if (twoParts)
    target = a.Component.Interfaces.Item(std::string_view(text).substr(0, blank));
  else if (!text.empty() && blank == std::string::npos)
    target = a.LastAs<Interface>();
  if (!target) return Outcome::GoesOn;
  target->DocumentationLocation = text;
  return Done(a, target);
}

struct Command {
  std::string_view Tag;
  Outcome (*Act)(Placement&);
};

constexpr Command kCommands[] = {
    {"##MODULE_IS_EXAMPLE", MarkModuleAsExample},
    {"##BLOCK_IS_EXAMPLE", MarkBlockAsExample},
    {"##IS_EXAMPLE", MarkBlockAsExample},
    {"##BLOCK_IS_NEW", MarkElementAsNew},
    {"##EVENT_IS_NEW", MarkElementAsNew},
    {"##VARIABLE_IS_NEW", MarkElementAsNew},
    {"##MODULE_IS_NEW", MarkModuleAsNew},
    {"##MODULE_ISNEW", MarkModuleAsNew},
    {"##IS_NEW", MarkLastElementAsNew},
    {"##ISNEW", MarkLastElementAsNew},
    {"##IGNORE_REFERENCE", IgnoreReferences},
    {"##IGNORE_REFERENCES", IgnoreReferences},
    {"##RELATIONSHIP_LEVELS", SetRelationshipLevels},
    {"##MODULE_IS_COLLECTION", MarkModuleAsCollection},
    {"##MODULE_IS_INTERFACE", MarkModuleAsInterface},
    {"##RETAIN_CONTEXT_IDS", RetainContextIDs},
    {"##INTERFACE_ALIAS", SetInterfaceAlias},
};

}  // namespace

Outcome ActOnCommand(Placement& a) try {
  for (const Command& command : kCommands)
    if (a.Is(command.Tag)) return command.Act(a);
  return Outcome::GoesOn;
}
VENDREL_CONTEXT_AT(LineReached(), trace::Local("Tag", a.Comment->TagIdentifier),
                   trace::Local("Qualifier", a.Comment->Qualifier), trace::Me(a.Block))

bool IsCommandTag(std::string_view tag) {
  for (const Command& command : kCommands)
    if (EqualsNoCaseAscii(tag, command.Tag)) return true;
  return false;
}

}  // namespace vendrel
