#include "dotnet/InheritDoc.h"

#include <unordered_set>

#include "dotnet/GenericNames.h"
#include "model/Events.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

std::string_view NameAlone(const Block& block) {
  const std::string_view name = block.Name();
  return name.substr(0, name.find('('));
}

std::size_t ParameterCountOf(const Block& block) {
  const Parameters* parameters = block.Parameters.IfAny();
  return parameters ? parameters->Count() : 0;
}

class Sources {
 public:
  Sources(const Assembly& assembly, VBProject& project)
      : mSet(assembly.Assemblies.Get()), mProject(project) {}

  CodeElement* Named(const std::string& name) const {
    if (CodeElement* found = mProject.GetObjectFromDotNetName(name)) return found;
    if (!mSet) return nullptr;
    for (Assembly& other : *mSet)
      if (VBProject* project = other.VBProject(); project && project != &mProject)
        if (CodeElement* found = project->GetObjectFromDotNetName(name)) return found;
    return nullptr;
  }

  CodeElement* Above(const CodeElement& element) const {
    if (const auto* component = As<Component>(&element)) return AboveType(*component);
    if (const auto* block = As<Block>(&element)) return AboveBlock(*block);
    if (const auto* event = As<EventDeclaration>(&element)) return AboveEvent(*event);
    return nullptr;
  }

 private:
  Component* Type(std::string_view name) const {
    if (name.empty()) return nullptr;
    const std::string key = DefinitionOf(name);
    return mSet ? mSet->FindComponent(key, &mProject) : mProject.Components.Item(key);
  }

  CodeElement* AboveType(const Component& component) const {
    if (Component* base = Type(component.InheritsFrom); base && base != &component) return base;
    for (const Interface& item : component.Interfaces)
      if (Component* type = Type(item.Name)) return type;
    return nullptr;
  }

  // What it overrides, what it implements explicitly, then what any of its interfaces has.
  CodeElement* AboveBlock(const Block& block) const {
    if (Component* base = Type(block.InheritedFrom()))
      if (CodeElement* found = CounterpartIn(*base, block, NameAlone(block))) return found;
    const std::string implements = block.ImplementsName().str();
    if (const std::size_t dot = implements.rfind('.'); dot != std::string::npos)
      if (Component* type = Type(std::string_view(implements).substr(0, dot)))
        if (CodeElement* found =
                CounterpartIn(*type, block, std::string_view(implements).substr(dot + 1)))
          return found;
    const Component* own = block.Component.Get();
    if (!own) return nullptr;
    if (block.IsConstructor) {
      Component* base = Type(own->InheritsFrom);
      return base ? CounterpartIn(*base, block, NameAlone(block)) : nullptr;
    }
    for (const Interface& item : own->Interfaces)
      if (Component* type = Type(item.Name))
        if (CodeElement* found = CounterpartIn(*type, block, NameAlone(block))) return found;
    return nullptr;
  }

  CodeElement* AboveEvent(const EventDeclaration& event) const {
    if (Component* base = Type(event.InheritedFrom))
      if (CodeElement* found = base->EventDeclarations.Item(std::string_view(event.Name)))
        return found;
    const Component* own = event.Component.Get();
    if (!own) return nullptr;
    for (const Interface& item : own->Interfaces)
      if (Component* type = Type(item.Name))
        if (CodeElement* found = type->EventDeclarations.Item(std::string_view(event.Name)))
          return found;
    return nullptr;
  }

  Assemblies* mSet;
  VBProject& mProject;
};

void CopyParameters(const CodeElement& from, CodeElement& to) {
  const auto* source = As<Block>(&from);
  auto* target = As<Block>(&to);
  if (!source || !target || !source->Parameters.IfAny()) return;
  const Parameters& parameters = *source->Parameters;
  for (std::size_t i = 1; i <= parameters.Count(); ++i) {
    Parameter* own = target->Parameters->Item(i);
    if (own && own->mDescription.empty()) own->mDescription = parameters.Item(i)->mDescription;
  }
}

}  // namespace

Block* CounterpartIn(Component& type, const Block& block, std::string_view name) {
  Block* found = nullptr;
  std::size_t candidates = 0;
  const std::string signature = block.DotNetSignature();
  const auto offer = [&](Block& other) {
    if (&other == &block || ParameterCountOf(other) != ParameterCountOf(block)) return false;
    found = &other;
    ++candidates;
    return other.DotNetSignature() == signature;
  };
  for (Block* other : type.Blocks.Named(name)) {
    Blocks* overloads = other->Overloads();
    if (overloads && overloads->Count() > 0) {
      for (Block& overload : *overloads)
        if (offer(overload)) return &overload;
    } else if (offer(*other)) {
      return other;
    }
  }
  return candidates == 1 ? found : nullptr;
}

void CopyComments(const CodeElement& from, CodeElement& to) {
  auto& source = const_cast<CodeElement&>(from);
  LateText* description = to.TaggedDescriptionField();
  if (description && description->empty() && source.TaggedDescriptionField())
    *description = source.TaggedDescriptionField()->view();
  OnDemand<TaggedComments>* target = to.TaggedCommentsField();
  OnDemand<TaggedComments>* comments = source.TaggedCommentsField();
  if (!target || !comments || !comments->IfAny()) return;
  if (target->IfAny() && (*target)->Count() > 0) return;
  for (const TaggedComment& comment : **comments) {
    auto clone = comment.Clone();
    clone->CodeElement = &to;
    AddUnderFreeKey<TaggedComment>(**target, clone, clone->TagIdentifier);
  }
}

void InheritDocs::Add(CodeElement& element, std::string name) {
  if (mNames.try_emplace(&element, std::move(name)).second) mOrder.push_back(&element);
}

CodeElement* InheritDocs::SourceOf(const CodeElement& element, const std::string& name) const {
  const Sources sources(mAssembly, mProject);
  return name.empty() ? sources.Above(element) : sources.Named(name);
}

void InheritDocs::Resolve() {
  std::unordered_set<const CodeElement*> done;
  for (CodeElement* first : mOrder) {
    std::vector<CodeElement*> chain;
    CodeElement* at = first;
    while (at && done.insert(at).second) {
      chain.push_back(at);
      const auto pending = mNames.find(at);
      if (pending == mNames.end()) break;
      at = SourceOf(*at, pending->second);
    }
    // What was met before has all that it will get.
    CodeElement* source = chain.empty() || chain.back() == at ? nullptr : at;
    for (auto element = chain.rbegin(); element != chain.rend(); ++element) {
      if (source) {
        CopyComments(*source, **element);
        CopyParameters(*source, **element);
      }
      source = *element;
    }
  }
}

}  // namespace vendrel
