#include "output/UniqueNames.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "model/CodeElement.h"
#include "output/Dump.h"
#include "output/Places.h"

namespace vendrel {
namespace {

using OwningProperties = std::vector<const PropertyDescription*>;

struct NamingStep {
  const void* Object;
  const OwningProperties* Properties;
  std::size_t Property = 0, Done = 0, Count = 0;
};

// A few of the properties of each class: asked for once a class, not once an element.
class OwningPropertiesOfClasses {
 public:
  const OwningProperties& Of(const ClassDescription& description) {
    const auto [found, isNew] = mOfClass.try_emplace(&description);
    if (isNew)
      for (const PropertyDescription& property : description.AllProperties)
        if (OwnsElements(property)) found->second.push_back(&property);
    return found->second;
  }

 private:
  std::unordered_map<const ClassDescription*, OwningProperties> mOfClass;
};

}  // namespace

UniqueNames::TakenNames::Slot& UniqueNames::TakenNames::Find(std::size_t hash) {
  const std::size_t mask = mSlots.size() - 1;
  std::size_t at = hash & mask;
  while (mSlots[at].Count > 0 && mSlots[at].Hash != hash) at = (at + 1) & mask;
  return mSlots[at];
}

std::uint32_t UniqueNames::TakenNames::Count(std::size_t hash) {
  if (2 * (mTaken + 1) > mSlots.size()) {
    const std::vector<Slot> before =
        std::exchange(mSlots, std::vector<Slot>(std::max<std::size_t>(1024, 2 * mSlots.size())));
    for (const Slot& slot : before)
      if (slot.Count > 0) Find(slot.Hash) = slot;
  }
  Slot& slot = Find(hash);
  if (slot.Count == 0) {
    slot.Hash = hash;
    ++mTaken;
  }
  return ++slot.Count;
}

void UniqueNames::Add(ElementRef root) {
  mNumbered.clear();
  std::vector<NamingStep> stack;
  OwningPropertiesOfClasses owning;
  const auto open = [&](ElementRef element) {
    if (const CodeElement* named = AsCodeElement(element)) Name(*named);
    stack.push_back({element.Object, &owning.Of(*element.Class)});
  };
  if (root) open(root);
  while (!stack.empty()) {
    NamingStep& frame = stack.back();
    const OwningProperties& properties = *frame.Properties;
    if (frame.Done < frame.Count) {
      const PropertyDescription& property = *properties[frame.Property - 1];
      const ElementRef child = property.At(frame.Object, ++frame.Done);
      if (child) open(child);  // the frame may move
    } else if (frame.Property == properties.size()) {
      stack.pop_back();
    } else {
      const PropertyDescription& property = *properties[frame.Property++];
      frame.Done = 0;
      frame.Count = property.Count(frame.Object);
    }
  }
}

void UniqueNames::Name(const CodeElement& element) {
  std::string name = element.QualifiedName();
  if (name.empty()) return;
  const bool isGroup = IsA<PropertyGroup>(&element);  // it is called as one of its procedures
  if (isGroup) name += "#property";
  std::uint32_t number = mTaken.Count(std::hash<std::string>()(name));
  if (number == 1 && !isGroup) return;
  std::string numbered = name;
  while (number > 1) {
    numbered = name + "#" + std::to_string(number);
    if (mTaken.Count(std::hash<std::string>()(numbered)) == 1) break;
    ++number;
  }
  mNumbered.emplace(&element, std::move(numbered));
}

std::string UniqueNames::Of(const CodeElement& element) const {
  const auto found = mNumbered.find(&element);
  return found == mNumbered.end() ? element.QualifiedName() : found->second;
}

std::string_view UniqueNames::Of(const CodeElement& element, std::string_view qualifiedName) const {
  const auto found = mNumbered.find(&element);
  return found == mNumbered.end() ? qualifiedName : std::string_view(found->second);
}

}  // namespace vendrel
