// The qualified name of each class: "~" between levels, ":" before what belongs to an element, and
// a suffix that tells the class. Lookup.cpp reads them back.

#include <initializer_list>
#include <string>
#include <string_view>

#include "model/Component.h"
#include "project/Assembly.h"
#include "services/Procedures.h"

namespace vendrel {
namespace {

// Names of elements grow out of that of their module: one piece of memory holds most of them.
constexpr std::size_t kRoomForName = 120;

std::string Joined(std::string front, std::initializer_list<std::string_view> parts) {
  front.reserve(kRoomForName);
  for (const std::string_view part : parts) front.append(part);
  return front;
}

std::string NameOf(const CodeElement* element) {
  return element ? element->QualifiedName() : std::string();
}

std::string ProjectNameOf(const ProjectOptions* project) {
  return project ? project->ElementName() : std::string();
}

std::string InNamespace(const Namespace* space, std::string_view name) {
  return space ? Joined(space->Name, {".", name}) : std::string(name);
}

std::string_view PropertySuffix(BlockTypeEnum type) {
  switch (type) {
    case btPropertyGet: return "_PG";
    case btPropertyLet: return "_PL";
    case btPropertySet: return "_PS";
    default: return {};
  }
}

// What a procedure declares is named as the module's, or in the complete reading below the
// procedure, which for a property is one of up to three of that name.
template <typename Declared>
const Block* OwnProcedure(const Declared& element) {
  const Block* block = element.Procedure.Get();
  return block && !block->Name().empty() && block->Options().Reading.CompleteNames ? block
                                                                                   : nullptr;
}

std::string NameInProcedure(const Block& block, std::string_view name) {
  return Joined(block.QualifiedName(), {PropertySuffix(block.BlockType()), "~", name});
}

}  // namespace

std::string Component::QualifiedName() const {
  return Joined(ProjectNameOf(Project()), {"~", InNamespace(Namespace.Get(), Name)});
}

std::string Block::QualifiedName() const {
  if (!IsDelegate()) return Joined(NameOf(Component.Get()), {"~", Name()});
  const vendrel::Namespace* space = Namespace();
  const CodeElement* assembly = space ? space->Assembly.Get() : nullptr;
  return Joined(assembly ? assembly->ElementName() : ProjectNameOf(Project()),
                {"~", InNamespace(space, Name())});
}

std::string PropertyGroup::QualifiedName() const { return NameOf(PrimaryBlock()); }

std::string Variable::QualifiedName() const {
  if (const Block* block = OwnProcedure(*this)) return NameInProcedure(*block, Name);
  const CodeElement* parent = Parent.Get();
  if (IsA<UDT>(parent)) return Joined(parent->QualifiedName(), {":", Name});
  const bool isDeclarations = IsA<Block>(parent) && parent->ElementName().empty();
  return Joined(NameOf(isDeclarations || !parent ? Component.Get() : parent), {"~", Name});
}

std::string Constant::QualifiedName() const {
  if (const Block* block = OwnProcedure(*this)) return NameInProcedure(*block, Name);
  return Joined(NameOf(Component.Get()), {"~", Name});
}

std::string Parameter::QualifiedName() const { return Joined(NameOf(Parent.Get()), {":", Name()}); }

std::string EventDeclaration::QualifiedName() const {
  return Joined(NameOf(Component.Get()), {"~", Name, "_EV"});
}

std::string Enumeration::QualifiedName() const {
  return Joined(NameOf(Component.Get()), {"~", Name, "_EN"});
}

std::string EnumMember::QualifiedName() const {
  return Joined(NameOf(Enumeration.Get()), {":", Name});
}

std::string UDT::QualifiedName() const {
  return Joined(NameOf(Component.Get()), {"~", Name, "_UT"});
}

std::string Interface::QualifiedName() const {
  return Joined(NameOf(Component.Get()), {"~", Name, "_I"});
}

// A Declare without a library has no name.
std::string DeclareDeclaration::QualifiedName() const {
  const vendrel::Library* library = LibraryObject.Get();
  return library ? Joined(library->QualifiedName(), {"~", Name, "_DEC"}) : std::string();
}

std::string Library::QualifiedName() const {
  return Joined(ProjectNameOf(mProject.Get()), {"~", Name, "_LIB"});
}

std::string Example::QualifiedName() const {
  return Joined(RelatedElement, {"~", SafeFileName(Caption), "_E"});
}

std::string VBControl::QualifiedName() const {
  return Joined(NameOf(Component.Get()), {"~", Name});
}

std::string Namespace::QualifiedName() const {
  return Joined(NameOf(Assembly.Get()), {"~", Name, "_namespace"});
}

}  // namespace vendrel
