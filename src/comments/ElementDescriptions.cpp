// The `Description` of every class: the tagged text, and with it the plain comments of the element
// where the project counts those for its kind.

#include "comments/AppendDescription.h"
#include "core/Workspace.h"
#include "model/Block.h"
#include "model/Component.h"
#include "model/PropertyGroup.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

std::string Combine(std::string_view first, std::string_view further, bool counts = true) {
  std::string description(first);
  if (counts && !further.empty()) AppendDescription(description, further, int(wrapLineBreak));
  return description;
}

const ProjectOptions& OptionsOf(const Component* component) {
  return component ? component->Options() : ProjectOptions::Defaults();
}

}  // namespace

std::string Block::Description() const {
  return Combine(TaggedDescription, UnTaggedDescription, Options().UnTaggedBlocks);
}

std::string Component::Description() const {
  const Workspace::Use use(Options().Workspace());
  return Combine(TaggedDescription, UnTaggedDescription, Options().UnTaggedModules);
}

std::string Variable::Description() const {
  const ProjectOptions* options = Options();
  return Combine(TaggedDescription, UnTaggedDescription, options && options->UnTaggedVariables);
}

std::string EventDeclaration::Description() const {
  return Combine(TaggedDescription, UnTaggedDescription, OptionsOf(Component.Get()).UnTaggedEvents);
}

std::string Enumeration::Description() const {
  return Combine(TaggedDescription, UnTaggedDescription,
                 OptionsOf(Component.Get()).UnTaggedEnumerations);
}

std::string UDT::Description() const {
  return Combine(TaggedDescription, UnTaggedDescription, OptionsOf(Component.Get()).UnTaggedUDTs);
}

// A Declare goes with the modules.
std::string DeclareDeclaration::Description() const {
  return Combine(TaggedDescription, UnTaggedDescription,
                 OptionsOf(Component.Get()).UnTaggedModules);
}

// A member is mostly described behind its value: that comes first, whatever the project counts.
std::string EnumMember::Description() const {
  return Combine(UnTaggedDescription, TaggedDescription);
}

std::string PropertyGroup::Description() const {
  return Combine(TaggedDescription(), UnTaggedDescription(),
                 OptionsOf(Component.Get()).UnTaggedBlocks);
}

}  // namespace vendrel
