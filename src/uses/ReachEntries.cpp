// Where a program is entered: what is used though nothing in its code has to name it.
#include <algorithm>
#include <string_view>
#include <unordered_set>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "model/Component.h"
#include "names/NameWalk.h"
#include "project/VBProject.h"
#include "text/Like.h"
#include "uses/Reach.h"

namespace vendrel {
namespace {

bool IsMarkedUsed(const CodeElement& element) {
  const auto* field = element.TaggedCommentsField();
  const TaggedComments* comments = field ? field->IfAny() : nullptr;
  return comments && comments->Item("##USED");
}

}  // namespace

bool IsLooseProject(const VBProject& project) {
  return project.ProjectType == ptUnknown && project.Startup.empty();
}

bool IsLibraryProject(const VBProject& project) {
  if (IsNetProject(project)) return project.ProjectType == ptOleDLL;
  return project.ProjectType == ptOleDLL || project.ProjectType == ptOleExe ||
         project.ProjectType == ptControl;
}

void Reach::EnterStartup(VBProject& project) {
  if (IsLooseProject(project)) return;
  if (IsNetProject(project)) return EnterNetStartup(project);
  EnterExports(project);
  bool found = false;
  const bool isMain = EqualsNoCaseAscii(project.Startup, "Sub Main");
  for (const Component& module : project.Components.Listed()) {
    if (isMain && module.FileType == ftModule) {
      for (const Block* block : module.Blocks.Named("Main")) {
        Enter(*block, ReachCause::Startup);
        found = true;
      }
    } else if (!isMain && EqualsNoCase(module.Name, project.Startup)) {
      Enter(module, ReachCause::Startup);
      found = true;
    }
    if (module.FileType == ftDesigner || module.FileType == ftPropertyPage)
      Enter(module, ReachCause::Designer);
  }
  if (found || IsLibraryProject(project)) return;
  // The startup object is not at hand: whatever could be one is taken for it.
  for (const Component& module : project.Components.Listed()) {
    if (module.FileType == ftForm) Enter(module, ReachCause::Startup);
    if (module.FileType != ftModule) continue;
    for (const Block* block : module.Blocks.Named("Main")) Enter(*block, ReachCause::Startup);
  }
}

// A native library tells the linker which functions it shows: LinkSwitches=-EXPORT:Name.
void Reach::EnterExports(const VBProject& project) {
  std::unordered_set<std::string> names;
  std::string_view rest = project.SourceForm ? std::string_view(project.SourceForm->Text) : "";
  while (!rest.empty()) {
    std::string_view line = TakeLine(rest);
    if (!StartsWithNoCaseAscii(line, "LinkSwitches=")) continue;
    line.remove_prefix(line.find('=') + 1);
    while (!line.empty()) {
      std::string_view word = TakeField(line, ' ');
      const std::size_t colon = std::min(word.find(':'), word.size());
      const std::string_view option = word.substr(0, colon);
      if (!EndsWithNoCaseAscii(option, "EXPORT") && !EndsWithNoCaseAscii(option, "ENTRY")) continue;
      word.remove_prefix(std::min(colon + 1, word.size()));
      names.insert(FoldKey(word.substr(0, word.find_first_of(",="))));
      const std::size_t inner = word.find('=');  // Shown=Inner
      if (inner != word.npos) names.insert(FoldKey(word.substr(inner + 1)));
    }
  }
  if (names.empty()) return;
  for (const Component& module : project.Components.Listed()) {
    if (module.FileType != ftModule) continue;
    for (const Block& block : module.Blocks)
      if (names.contains(FoldKey(block.Name()))) Enter(block, ReachCause::PublicOfLibrary);
  }
}

void Reach::EnterPublic(const Component& module) {
  constexpr auto cause = ReachCause::PublicOfLibrary;
  if (HasObjects(module)) Enter(module, cause);
  const auto enter = [&](const auto& elements) {
    for (const auto& element : elements)
      if (element.AccessType() == atPublic) Enter(element, cause);
  };
  for (const Block& block : module.Blocks) {
    if (!block.Name().empty() && block.AccessType() == atPublic) Enter(block, cause);
    if (block.BlockType() != btDeclarations) continue;
    if (block.Variables.IfAny()) enter(*block.Variables);
    if (block.Constants.IfAny()) enter(*block.Constants);
  }
  enter(module.UDTs);
  enter(module.Declarations);
  for (const EventDeclaration& event : module.EventDeclarations) Enter(event, cause);
  for (const Enumeration& enumeration : module.Enumerations) {
    if (enumeration.AccessType() != atPublic) continue;
    Enter(enumeration, cause);
    for (const EnumMember& member : enumeration.Members()) Enter(member, cause);
  }
}

bool Reach::IsListed(const CodeElement& element) const {
  if (UsedFromOutside.empty()) return false;
  const std::string name = element.QualifiedName();
  for (const std::string& pattern : UsedFromOutside)
    if (EqualsNoCase(name, pattern) || LikeNoCase(name, pattern)) return true;
  return false;
}

void Reach::EnterMarked(VBProject& project) {
  const Component* whole = nullptr;  // a module that is marked itself
  ForEachNamedElement(project, [&](CodeElement& element) {
    Component* module = element.OwnComponent();
    const bool marked = IsMarkedUsed(element) || IsListed(element);
    if (As<Component>(&element) && marked) whole = module;
    if (!marked && (!module || module != whole)) return;
    const auto* block = As<Block>(&element);
    if (IsA<VBProject>(&element)) return;
    if (module == whole && !marked && block && block->AccessType() == atPrivate) return;
    Enter(element, ReachCause::MarkedUsed);
    if (module && HasObjects(*module)) Enter(*module, ReachCause::MarkedUsed);
    if (!block || !block->IsPropertyType()) return;
    for (const Block* other : module->Blocks.Named(block->Name()))
      Enter(*other, ReachCause::MarkedUsed);
  });
}

}  // namespace vendrel
