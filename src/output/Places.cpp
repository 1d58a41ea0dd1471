#include "output/Places.h"

#include <algorithm>

#include "core/Ascii.h"
#include "core/Utf8.h"
#include "project/WithItsClass.h"
#include "services/SourceText.h"

namespace vendrel {
namespace {

// Longer lines are read once for all their elements.
constexpr std::size_t kLongLine = 512;

// What an element without a line of its own is declared by.
const CodeElement* DeclaredBy(const CodeElement& element) {
  if (const auto* parameter = As<Parameter>(&element)) return parameter->Parent.Get();
  if (const auto* member = As<EnumMember>(&element)) return member->Enumeration.Get();
  if (const auto* library = As<Library>(&element)) return library->DeclareDeclarations.Item(1);
  if (const auto* group = As<PropertyGroup>(&element)) return group->FirstBlockInCode.Get();
  return element.OwnComponent() == &element ? nullptr : element.OwnComponent();
}

bool IsNameByte(char c) {
  return IsLetterAscii(c) || IsDigitAscii(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

std::size_t FindWord(std::string_view line, std::string_view name) {
  if (name.empty()) return std::string_view::npos;
  std::size_t at = FindNoCaseAscii(line, name);
  for (; at != kNotFound; at = FindNoCaseAscii(line, name, at + 1)) {
    const std::size_t end = at + name.size();
    if ((at == 0 || !IsNameByte(line[at - 1])) && (end == line.size() || !IsNameByte(line[end])))
      break;
  }
  return at;
}

std::int32_t CharactersIn(std::string_view text) {
  std::int32_t count = 0;
  for (const char c : text) count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return count;
}

template <typename Class>
const CodeElement* BaseOf(const void* object) {
  if constexpr (std::is_base_of_v<CodeElement, Class>)
    return static_cast<const Class*>(object);
  else
    return nullptr;
}

}  // namespace

std::string SourcePlace::File() const {
  if (!Component) return VBProject ? VBProject->FileName.FullPath() : std::string();
  const vendrel::VBProject* project = Component->VBProject();
  return project && project->WasReadFromTypeLibrary ? project->FileName.FullPath()
                                                    : Component->FileName.FullPath();
}

SourcePlace PlaceOf(const CodeElement& element) {
  if (const auto* project = As<VBProject>(&element)) return {nullptr, project, 0, project};
  if (const auto* reference = As<Reference>(&element))
    return {nullptr, reference->ParentProject(), reference->SourceLine(), reference};
  const CodeElement* declared = &element;
  while (declared->SourceLine() == 0) {
    const CodeElement* by = DeclaredBy(*declared);
    if (!by) break;
    declared = by;
  }
  const Component* component = declared->OwnComponent();
  if (const auto* member = As<Variable>(declared); member && !component)
    component = member->Parent ? member->Parent.Get()->OwnComponent() : nullptr;
  return {component, nullptr, declared->SourceLine(), declared};
}

const CodeElement* AsCodeElement(ElementRef element) {
  if (!element) return nullptr;
  switch (element.Class->Kind) {
#define VENDREL_CASE(Class, word, named, scope)                                                    \
  case ElementKind::Class: return BaseOf<Class>(element.Object);
    VENDREL_ELEMENT_KINDS(VENDREL_CASE)
#undef VENDREL_CASE
    case ElementKind::None: break;
  }
  return nullptr;
}

bool SourceColumns::Index(const Component* component) {
  if (!component || !component->SourceForm) return false;
  if (mComponent == component) return true;
  const std::string_view text = component->SourceForm->Text;
  mComponent = component;
  mStarts.clear();
  mLongLine = 0;
  for (std::string_view rest = text; !rest.empty(); TakeLine(rest))
    mStarts.push_back(text.size() - rest.size());
  return true;
}

std::string_view SourceColumns::TextOf(const SourcePlace& place) {
  if (!Index(place.Component) || place.Line < 1) return {};
  if (static_cast<std::size_t>(place.Line) > mStarts.size()) return {};
  std::string_view rest = place.Component->SourceForm->Text;
  rest.remove_prefix(mStarts[static_cast<std::size_t>(place.Line) - 1]);
  return TakeLine(rest);
}

std::int32_t SourceColumns::LineOf(const SourcePlace& place, const CodeLines& lines,
                                   std::int32_t index) {
  const auto offset = lines.SourceOffset(index);
  if (!offset || !Index(place.Component) ||
      lines.SourceText() != &place.Component->SourceForm->Text)
    return 0;
  return static_cast<std::int32_t>(std::upper_bound(mStarts.begin(), mStarts.end(), *offset) -
                                   mStarts.begin());
}

std::int32_t SourceColumns::OnLongLine(std::int32_t number, std::string_view line,
                                       std::string_view name) {
  if (mLongLine != number) {
    mLongLine = number;
    mColumnsOfWords.clear();
    std::int32_t column = 1;
    for (std::size_t at = 0; at < line.size();) {
      std::size_t end = at;
      while (end < line.size() && IsNameByte(line[end])) ++end;
      if (end > at) mColumnsOfWords.try_emplace(UpperAscii(line.substr(at, end - at)), column);
      end = std::max(end, at + 1);
      column += CharactersIn(line.substr(at, end - at));
      at = end;
    }
  }
  const auto found = mColumnsOfWords.find(UpperAscii(name));
  if (found != mColumnsOfWords.end()) return found->second;
  const std::size_t first = line.find_first_not_of(" \t");
  return first == std::string_view::npos ? 1 : static_cast<std::int32_t>(first) + 1;
}

std::int32_t SourceColumns::Of(const SourcePlace& place, std::string_view name) {
  const std::string_view line = TextOf(place);
  if (line.empty()) return 0;
  if (line.size() > kLongLine) return OnLongLine(place.Line, line, name);
  std::size_t at = FindWord(line, name);
  if (at == std::string_view::npos) at = line.find_first_not_of(" \t");
  return at == std::string_view::npos ? 1 : CharactersIn(line.substr(0, at)) + 1;
}

}  // namespace vendrel
