#include "output/UniqueNames.h"

#include <functional>
#include <vector>

#include "model/CodeElement.h"
#include "output/Dump.h"
#include "output/Places.h"

namespace vendrel {
namespace {

struct NamingStep {
  ElementRef Element;
  std::size_t Property = 0, Done = 0, Count = 0;
};

}  // namespace

void UniqueNames::Add(ElementRef root) {
  mNumbered.clear();
  std::vector<NamingStep> stack;
  const auto open = [&](ElementRef element) {
    if (const CodeElement* named = AsCodeElement(element)) Name(*named);
    stack.push_back({element});
  };
  if (root) open(root);
  while (!stack.empty()) {
    NamingStep& frame = stack.back();
    const auto& properties = frame.Element.Class->AllProperties;
    if (frame.Done < frame.Count) {
      const PropertyDescription& property = properties[frame.Property - 1];
      const ElementRef child = property.At(frame.Element.Object, ++frame.Done);
      if (child) open(child);  // the frame may move
    } else if (frame.Property == properties.size()) {
      stack.pop_back();
    } else {
      const PropertyDescription& property = properties[frame.Property++];
      frame.Done = 0;
      frame.Count = OwnsElements(property) ? property.Count(frame.Element.Object) : 0;
    }
  }
}

void UniqueNames::Name(const CodeElement& element) {
  std::string name = element.QualifiedName();
  if (name.empty()) return;
  const bool isGroup = IsA<PropertyGroup>(&element);  // it is called as one of its procedures
  if (isGroup) name += "#property";
  std::uint32_t number = ++mTaken[std::hash<std::string>()(name)];
  if (number == 1 && !isGroup) return;
  std::string numbered = name;
  while (number > 1) {
    numbered = name + "#" + std::to_string(number);
    if (++mTaken[std::hash<std::string>()(numbered)] == 1) break;
    ++number;
  }
  mNumbered.emplace(&element, std::move(numbered));
}

std::string UniqueNames::Of(const CodeElement& element) const {
  const auto found = mNumbered.find(&element);
  return found == mNumbered.end() ? element.QualifiedName() : found->second;
}

}  // namespace vendrel
