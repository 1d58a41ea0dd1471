#include "output/Pairing.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

#include "core/CaseFold.h"
#include "model/CodeElement.h"
#include "services/Paths.h"

namespace vendrel {
namespace {

template <typename Test>
const PropertyDescription* FirstProperty(const ClassDescription& type, const Test& test) {
  const auto found = std::find_if(type.Properties.begin(), type.Properties.end(), test);
  return found == type.Properties.end() ? nullptr : &*found;
}

bool IsPlainValue(const PropertyDescription& property) {
  return property.Kind == PropertyKind::Value && property.Shape <= PropertyShape::Truth &&
         property.Shape != PropertyShape::Path;
}

// What is not paired yet of two lists.
class Pairing {
 public:
  Pairing(const std::vector<ElementRef>& before, const std::vector<ElementRef>& after)
      : mBefore(before), mAfter(after), mPartner(before.size()), mTaken(after.size()) {}

  using KeyOf = std::function<std::string(ElementRef, bool isAfter)>;

  // Pairs what is left by a key, first with first where several have it. Elements with an empty key
  // stay unless `emptyToo`.
  void PairBy(const KeyOf& keyOf, bool emptyToo) {
    if (mPaired == mBefore.size() || mPaired == mAfter.size()) return;
    std::unordered_map<std::string, Queue> waiting;
    for (std::size_t i = 0; i < mAfter.size(); ++i)
      if (!mTaken[i]) waiting[keyOf(mAfter[i], true)].Items.push_back(i);
    for (std::size_t i = 0; i < mBefore.size(); ++i) {
      if (mPartner[i]) continue;
      const std::string key = keyOf(mBefore[i], false);
      if (key.empty() && !emptyToo) continue;
      const auto found = waiting.find(key);
      if (found == waiting.end() || found->second.Next == found->second.Items.size()) continue;
      const std::size_t partner = found->second.Items[found->second.Next++];
      mPartner[i] = partner + 1;
      mTaken[partner] = true;
      ++mPaired;
    }
  }

  std::vector<ElementPair> Result() const {
    std::vector<ElementPair> pairs;
    for (std::size_t i = 0; i < mBefore.size(); ++i)
      pairs.push_back({mBefore[i], mPartner[i] ? mAfter[mPartner[i] - 1] : ElementRef()});
    for (std::size_t i = 0; i < mAfter.size(); ++i)
      if (!mTaken[i]) pairs.push_back({{}, mAfter[i]});
    return pairs;
  }

 private:
  struct Queue {
    std::vector<std::size_t> Items;
    std::size_t Next = 0;
  };

  const std::vector<ElementRef>& mBefore;
  const std::vector<ElementRef>& mAfter;
  std::vector<std::size_t> mPartner;  // 1-based; 0: none
  std::vector<bool> mTaken;
  std::size_t mPaired = 0;
};

}  // namespace

const PropertyDescription* PropertyNamed(const ClassDescription& type, std::string_view name) {
  return FirstProperty(type, [&](const PropertyDescription& p) { return p.Name == name; });
}

const PropertyDescription* NameProperty(const ClassDescription& type) {
  if (const PropertyDescription* name = PropertyNamed(type, "Name")) return name;
  return FirstProperty(type, [](const PropertyDescription& p) {
    return IsPlainValue(p) && p.Shape == PropertyShape::Text;
  });
}

const PropertyDescription* SecondProperty(const ClassDescription& type) {
  const PropertyDescription* name = NameProperty(type);
  return FirstProperty(
      type, [&](const PropertyDescription& p) { return IsPlainValue(p) && (!name || &p > name); });
}

const PropertyDescription* PathProperty(const ClassDescription& type) {
  return FirstProperty(type,
                       [](const PropertyDescription& p) { return p.Shape == PropertyShape::Path; });
}

std::string TextOf(ElementRef element, const PropertyDescription* property) {
  if (!property) return {};
  PropertyValue value;
  property->Read(element.Object, value);
  switch (property->Shape) {
    case PropertyShape::Text:
    case PropertyShape::Path: return std::string(value.Text);
    case PropertyShape::Number: return std::to_string(value.Number);
    case PropertyShape::Truth: return value.Truth ? "True" : "False";
    case PropertyShape::Link: return value.Link ? value.Link->QualifiedName() : std::string();
    default: return {};
  }
}

std::string PathFrom(std::string_view folder, ElementRef element,
                     const PropertyDescription* property) {
  std::string path = TextOf(element, property);
  return folder.empty() || path.empty() ? path : RelativePath(folder, path);
}

std::vector<ElementPair> PairElements(const std::vector<ElementRef>& before,
                                      const std::vector<ElementRef>& after,
                                      std::string_view folderBefore, std::string_view folderAfter) {
  Pairing pairing(before, after);
  if (before.empty() || after.empty()) return pairing.Result();
  const ClassDescription& type = *before.front().Class;
  const PropertyDescription* name = NameProperty(type);
  const PropertyDescription* second = SecondProperty(type);
  pairing.PairBy(
      [&](ElementRef element, bool) {
        return FoldKey(TextOf(element, name)) + '\n' + TextOf(element, second);
      },
      true);
  pairing.PairBy([&](ElementRef element, bool) { return FoldKey(TextOf(element, name)); }, true);
  if (const PropertyDescription* path = PathProperty(type))
    pairing.PairBy(
        [&](ElementRef element, bool isAfter) {
          return FoldKey(PathFrom(isAfter ? folderAfter : folderBefore, element, path));
        },
        false);
  return pairing.Result();
}

}  // namespace vendrel
