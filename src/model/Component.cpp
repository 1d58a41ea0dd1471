#include "model/Component.h"

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "model/ModuleKinds.h"
#include "model/Namespace.h"

namespace vendrel {
namespace {

// The first character of a text, with its case mapped up. UTF-8 orders as code points do, so
// letters compare as texts.
std::string FirstLetter(std::string_view text) {
  std::size_t length = 1;
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
    ++length;
  return UpperCase(text.substr(0, length));
}

bool IsOneLetter(std::string_view text) {
  return !text.empty() && FirstLetter(text) == UpperCase(text);
}

// Whether a range such as "A:C" holds the letter. "A:Z" holds every character.
bool RangeHolds(std::string_view range, std::string_view letter) {
  const std::size_t colon = range.find(':');
  if (colon == std::string_view::npos) return false;
  const std::string_view from = range.substr(0, colon), to = range.substr(colon + 1);
  if (!IsOneLetter(from) || !IsOneLetter(to)) return false;
  if (EqualsNoCaseAscii(range, "a:z")) return true;
  return letter >= FirstLetter(from) && letter <= FirstLetter(to);
}

std::string_view LongTypeName(std::string_view shortName) {
  static constexpr std::pair<std::string_view, std::string_view> kNames[] = {
      {"bool", "Boolean"}, {"int", "Integer"}, {"lng", "Long"},    {"cur", "Currency"},
      {"sng", "Single"},   {"dbl", "Double"},  {"dec", "Decimal"}, {"date", "Date"},
      {"str", "String"},   {"obj", "Object"},  {"var", "Variant"}};
  for (const auto& [known, name] : kNames)
    if (EqualsNoCaseAscii(known, shortName)) return name;
  return shortName;
}

// The last statement with a matching range wins.
std::string_view TypeOfLetter(const std::vector<DefaultTypeEntry>& entries,
                              std::string_view letter) {
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
    for (const std::string& range : entry->Ranges)
      if (RangeHolds(range, letter)) return LongTypeName(entry->Name);
  return "Variant";
}

}  // namespace

void ComponentTypeCache::Add(std::string_view name, std::int32_t number) {
  mEntries.try_emplace(FoldKey(name), number);
}

std::int32_t ComponentTypeCache::Find(std::string_view name) const {
  const auto found = mEntries.find(FoldKey(name));
  return found == mEntries.end() ? 0 : found->second;
}

Component::Component() = default;
Component::~Component() = default;

Component* ComponentBehind(const WeakHandle<Component>& link) { return link.Get(); }

void Component::SetVBProject(ProjectOptions* project) {
  mProject = project ? project->NewLink() : WeakHandle<ProjectOptions>();
}

const ProjectOptions& Component::Options() const {
  const ProjectOptions* project = mProject.Get();
  return project ? *project : ProjectOptions::Defaults();
}

std::string Component::FullName() const {
  const vendrel::Namespace* space = Namespace.Get();
  return space && !space->Name.empty() ? space->Name + "." + Name : Name;
}

Constants* Component::Constants() {
  Block* declarations = Blocks.FirstOfType(btDeclarations);
  return declarations ? &*declarations->Constants : nullptr;
}

const Constants* Component::Constants() const {
  const Block* declarations = Blocks.FirstOfType(btDeclarations);
  return declarations ? &*declarations->Constants : nullptr;
}

std::string_view Component::EventProcedureHeader() const {
  return KindOfModule(FileType).EventPrefix;
}

std::string Component::Extension() const {
  if (FileType == ftOther) return FileName.Extension();
  const ModuleKind& kind = KindOfModule(FileType);
  return kind.TellsExtension ? std::string(kind.Extension) : std::string();
}

std::string_view Component::DefaultType(std::string_view name) const {
  if (name.empty()) return {};
  if (mDefaultTypes.empty()) return "Variant";
  const std::string letter = FirstLetter(name);
  if (letter.size() > 1) return TypeOfLetter(mDefaultTypes, letter);
  if (mLetterTypes.empty()) mLetterTypes.resize(128);
  std::string_view& type = mLetterTypes[static_cast<unsigned char>(letter[0]) & 127];
  if (type.empty()) type = TypeOfLetter(mDefaultTypes, letter);
  return type;
}

namespace {

// Of an element or of a collection, whatever it has of it.
template <typename Element>
void FitDescriptions(Element& element) {
  element.TaggedDescription.Fit();
  element.UnTaggedDescription.Fit();
}

template <typename Collection>
void FitAll(Collection& elements) {
  elements.Fit();
  for (auto& element : elements) FitDescriptions(element);
}

void FitBlock(Block& block) {
  FitDescriptions(block);
  block.ReturnDescription.Fit();
  if (Variables* variables = block.Variables.IfAny()) FitAll(*variables);
  if (Constants* constants = block.Constants.IfAny()) FitAll(*constants);
}

}  // namespace

void Component::Fit() {
  Blocks.Fit();
  for (Block& block : Blocks.Listed()) FitBlock(block);
  FitDescriptions(*this);
  for (EventDeclaration& event : EventDeclarations.Listed()) FitDescriptions(event);
  EventDeclarations.Fit();
  PropertyGroups.Fit();
  AllVBControls.Fit();
  FitAll(Enumerations);
  for (Enumeration& enumeration : Enumerations) FitAll(enumeration.Members());
  FitAll(Declarations);
  FitAll(Interfaces);
  FitAll(UDTs);
  for (UDT& type : UDTs) FitAll(type.Members);
  CommentBuffer.shrink_to_fit();
}

void Component::UnloadSourceCode() try {
  for (Block& block : Blocks.Listed()) block.UnloadSourceCode();
  Blocks.Fit();
  for (EventDeclaration& event : EventDeclarations.Listed()) {
    event.UnTaggedDescription.clear();
    event.Parameters.Drop();
  }
  for (Enumeration& enumeration : Enumerations) {
    enumeration.UnTaggedDescription.clear();
    enumeration.Members().Fit();
  }
  for (DeclareDeclaration& declaration : Declarations) {
    declaration.TaggedDescription.clear();
    declaration.UnTaggedDescription.clear();
    declaration.Parameters.Drop();
  }
  for (vendrel::Interface& interface : Interfaces) interface.UnTaggedDescription.clear();
  for (UDT& type : UDTs) {
    type.UnTaggedDescription.clear();
    type.Members.Fit();
  }
  SourceForm.reset();
  mIntake.reset();
  LoadState = lsFullyLoadedNoCode;
}
VENDREL_CONTEXT(*this)

}  // namespace vendrel
