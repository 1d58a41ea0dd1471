#include "output/Difference.h"

#include <algorithm>
#include <array>
#include <deque>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "model/Block.h"
#include "model/CodeElement.h"
#include "model/Component.h"
#include "output/ElementWords.h"
#include "output/Pairing.h"
#include "output/TextDifference.h"
#include "services/Paths.h"

namespace vendrel {
namespace {

constexpr std::array<std::string_view, 6> kChangeNames{"added",   "gone", "moved",
                                                       "changed", "text", "renamed"};
constexpr std::array<std::string_view, 2> kPlaceProperties{"SourceLine", "LineIndex"};
constexpr std::string_view kQualifiedName = "QualifiedName";
constexpr std::string_view kModule = "Module";
// What comments say.
constexpr std::array<std::string_view, 8> kCommentProperties{
    "TaggedDescription",   "UnTaggedDescription", "ReturnDescription", "CommentBuffer",
    "TaggedCommentBuffer", "TaggedComments",      "Examples",          "OtherTaggedComments"};

bool IsPlace(const PropertyDescription& property) {
  return std::find(kPlaceProperties.begin(), kPlaceProperties.end(), property.Name) !=
         kPlaceProperties.end();
}

// The description of a project stands in its file.
bool IsOfComments(const ClassDescription& type, const PropertyDescription& property) {
  if (property.Name == "Description") return type.Kind != ElementKind::VBProject;
  return std::find(kCommentProperties.begin(), kCommentProperties.end(), property.Name) !=
         kCommentProperties.end();
}

// An element of both trees, or of one, on the way down. Those with children stay until the end, so
// that what stands below them can be named.
struct Node {
  ElementPair Elements;
  const Node* Parent = nullptr;
  // The collection of the parent that holds it; null for the root.
  const PropertyDescription* Collection = nullptr;
  // Where paths are seen from.
  std::string_view FolderBefore = {}, FolderAfter = {};
  // Of a procedure that stands in another module.
  bool IsMoved = false;

  ElementRef Any() const { return Elements.Before ? Elements.Before : Elements.After; }
};

class Comparison {
 public:
  Comparison(const DifferenceOptions& options, const std::function<void(const Change&)>& tell)
      : mOptions(options), mTell(tell) {
    if (!options.Partners) return;
    for (const auto& [before, after] : *options.Partners) mPartnersAfter.insert(after.Object);
  }

  std::size_t Run(ElementRef before, ElementRef after) {
    mRootName = {TextOf(before, PropertyNamed(*before.Class, kQualifiedName)),
                 TextOf(after, PropertyNamed(*after.Class, kQualifiedName))};
    mStack.push_back({{before, after}});
    while (!mStack.empty()) {
      const Node node = mStack.back();
      mStack.pop_back();
      Visit(node);
    }
    return mCount;
  }

 private:
  void Visit(const Node& node) {
    const ElementPair& pair = node.Elements;
    if (!pair.Before) return Report(node, ChangeKind::Added);
    if (!pair.After) {
      Report(node, ChangeKind::Gone);
      if (mOptions.Partners) DescendToPartners(node);
      return;
    }
    if (node.IsMoved) ReportModules(node);
    for (const PropertyDescription& property : pair.Before.Class->Properties)
      if (!mOptions.Comments && IsOfComments(*pair.Before.Class, property))
        continue;
      else if (property.Kind == PropertyKind::Identity)
        ComparePath(node, property);
      else if (property.Kind != PropertyKind::Derived && !property.Count)
        CompareValue(node, property);
    Descend(node);
  }

  // Pushes the children, so that the first comes off the stack first.
  void Descend(const Node& node) {
    const Node* kept = nullptr;
    const std::size_t bottom = mStack.size();
    for (const PropertyDescription& property : node.Any().Class->Properties) {
      if (!property.Count) continue;
      if (!mOptions.Comments && IsOfComments(*node.Any().Class, property)) continue;
      std::vector<ElementRef> before = Children(node.Elements.Before, property);
      std::vector<ElementRef> after = Children(node.Elements.After, property);
      if (before.empty() && after.empty()) continue;
      if (!kept) kept = Keep(node);
      const std::vector<ElementRef> order = before;
      std::vector<Node> partners;
      if (mOptions.Partners) partners = TakePartners(*kept, property, before, after);
      auto partner = partners.begin();
      auto place = order.begin();
      for (const ElementPair& pair :
           PairElements(before, after, kept->FolderBefore, kept->FolderAfter)) {
        for (; place != order.end() && place->Object != pair.Before.Object; ++place)
          mStack.push_back(*partner++);
        if (place != order.end()) ++place;
        mStack.push_back({pair, kept, &property, kept->FolderBefore, kept->FolderAfter});
      }
      mStack.insert(mStack.end(), partner, partners.end());
    }
    std::reverse(mStack.begin() + static_cast<std::ptrdiff_t>(bottom), mStack.end());
  }

  // Takes what has a partner off both lists: one of the same list is renamed, others have moved.
  std::vector<Node> TakePartners(const Node& parent, const PropertyDescription& property,
                                 std::vector<ElementRef>& before, std::vector<ElementRef>& after) {
    std::vector<Node> nodes;
    std::erase_if(before, [&](ElementRef element) {
      const auto partner = mOptions.Partners->find(element.Object);
      if (partner == mOptions.Partners->end()) return false;
      const bool isHere = std::any_of(after.begin(), after.end(), [&](ElementRef other) {
        return other.Object == partner->second.Object;
      });
      const Node* at = isHere ? &parent : WithModuleOf(parent, partner->second);
      nodes.push_back(
          {{element, partner->second}, at, &property, at->FolderBefore, at->FolderAfter, !isHere});
      return true;
    });
    std::erase_if(after,
                  [&](ElementRef element) { return mPartnersAfter.contains(element.Object); });
    return nodes;
  }

  // What of a module that is gone stands elsewhere.
  void DescendToPartners(const Node& node) {
    if (node.Any().Class->Kind != ElementKind::Component) return;
    const Node* kept = Keep(node);
    const std::size_t bottom = mStack.size();
    for (const PropertyDescription& property : node.Any().Class->Properties) {
      if (!property.Count) continue;
      std::vector<ElementRef> before = Children(node.Elements.Before, property), after;
      const std::vector<Node> partners = TakePartners(*kept, property, before, after);
      mStack.insert(mStack.end(), partners.begin(), partners.end());
    }
    std::reverse(mStack.begin() + static_cast<std::ptrdiff_t>(bottom), mStack.end());
  }

  // The module that a procedure or property was in with the one that it is in now.
  const Node* WithModuleOf(const Node& parent, ElementRef element) {
    const Component* now = element.Class->Kind == ElementKind::Block
                               ? static_cast<const Block*>(element.Object)->Component.Get()
                               : static_cast<const PropertyGroup*>(element.Object)->Component.Get();
    Node& module = mKept.emplace_back(parent);
    if (now) module.Elements.After = Describe(*now);
    return &module;
  }

  void ReportModules(const Node& node) {
    const auto name = [&](ElementRef module) {
      return TextOf(module, NameProperty(*module.Class));
    };
    const ElementPair& modules = node.Parent->Elements;
    Report(node, ChangeKind::Moved, kModule, {name(modules.Before), name(modules.After)});
  }

  const Node* Keep(const Node& node) {
    Node& kept = mKept.emplace_back(node);
    const PropertyDescription* path = PathProperty(*node.Any().Class);
    if (path && HasPlacesOfItsOwn(node)) {
      kept.FolderBefore = KeepFolder(node.Elements.Before, path);
      kept.FolderAfter = KeepFolder(node.Elements.After, path);
    }
    return &kept;
  }

  std::string_view KeepFolder(ElementRef element, const PropertyDescription* path) {
    return mFolders.emplace_back(element ? FolderPart(TextOf(element, path)) : "");
  }

  static std::vector<ElementRef> Children(ElementRef element, const PropertyDescription& property) {
    std::vector<ElementRef> children;
    const std::size_t count = property.Count(element.Object);
    children.reserve(count);
    for (std::size_t i = 1; i <= count; ++i)
      if (const ElementRef child = property.At(element.Object, i)) children.push_back(child);
    return children;
  }

  void CompareValue(const Node& node, const PropertyDescription& property) {
    if (IsPlace(property) && !mOptions.Places) return;
    property.Read(node.Elements.Before.Object, mBefore);
    property.Read(node.Elements.After.Object, mAfter);
    switch (property.Shape) {
      case PropertyShape::Text:
      case PropertyShape::Path:
        if (mBefore.Text == mAfter.Text) return;
        // A blank may stand in front of a comment.
        if (!mOptions.Comments && TrimRight(mBefore.Text) == TrimRight(mAfter.Text)) return;
        return Report(node, IsOtherName(node, property) ? ChangeKind::Renamed : ChangeKind::Changed,
                      property.Name, TextsOf(mBefore.Text, mAfter.Text));
      case PropertyShape::Number:
        if (mBefore.Number == mAfter.Number) return;
        return Report(node, ChangeKind::Changed, property.Name,
                      {std::to_string(mBefore.Number), std::to_string(mAfter.Number)});
      case PropertyShape::Truth:
        if (mBefore.Truth == mAfter.Truth) return;
        return Report(node, ChangeKind::Changed, property.Name,
                      {mBefore.Truth ? "True" : "False", mAfter.Truth ? "True" : "False"});
      case PropertyShape::Texts:
        if (std::equal(mBefore.Texts.begin(), mBefore.Texts.end(), mAfter.Texts.begin(),
                       mAfter.Texts.end()))
          return;
        return Report(node, ChangeKind::Changed, property.Name,
                      DifferenceOf(mBefore.Texts, mAfter.Texts));
      case PropertyShape::Link: return CompareLink(node, property);
      case PropertyShape::Lines: return CompareLines(node, property);
      default: return;
    }
  }

  // The whole may bear any name.
  bool IsOtherName(const Node& node, const PropertyDescription& property) const {
    return node.Parent && &property == NameProperty(*node.Any().Class) &&
           !EqualsNoCase(mBefore.Text, mAfter.Text);
  }

  static TextPair TextsOf(std::string_view before, std::string_view after) {
    return {std::string(before), std::string(after)};
  }

  // Links lead to the same element where its name is the same behind that of the whole.
  void CompareLink(const Node& node, const PropertyDescription& property) {
    if (!mBefore.Link && !mAfter.Link) return;
    const auto name = [](const CodeElement* element) {
      return element ? element->QualifiedName() : std::string();
    };
    const std::string before = name(mBefore.Link), after = name(mAfter.Link);
    const auto within = [](std::string_view text, const std::string& root) {
      return text.starts_with(root + "~") ? text.substr(root.size()) : text;
    };
    if (EqualsNoCase(within(before, mRootName.Before), within(after, mRootName.After))) return;
    Report(node, ChangeKind::Changed, property.Name, {before, after});
  }

  void CompareLines(const Node& node, const PropertyDescription& property) {
    TextPair difference;
    if (mOptions.Lines && DifferenceOf(mBefore.Lines, mAfter.Lines, mOptions.Comments, difference))
      Report(node, ChangeKind::Text, property.Name, std::move(difference));
  }

  // The first path of an element is seen from what it stands in, further ones from the first.
  void ComparePath(const Node& node, const PropertyDescription& property) {
    if (!mOptions.Paths || property.Shape != PropertyShape::Path) return;
    const PropertyDescription* first = PathProperty(*node.Any().Class);
    const bool isFirst = &property == first;
    if (isFirst && !node.Parent) return;
    const auto seen = [&](ElementRef element, std::string_view folder) {
      const std::string own = TextOf(element, first);
      return PathFrom(isFirst ? folder : FolderPart(own), element, &property);
    };
    std::string before = seen(node.Elements.Before, node.FolderBefore);
    std::string after = seen(node.Elements.After, node.FolderAfter);
    if (EqualsNoCase(before, after)) return;
    if (TextOf(node.Elements.Before, &property) == TextOf(node.Elements.After, &property)) return;
    Report(node, ChangeKind::Moved, property.Name, {std::move(before), std::move(after)});
  }

  // What becomes of a property as a whole is told of each of its procedures.
  static bool IsToldBelow(const Node& node, ChangeKind kind) {
    return node.Any().Class->Kind == ElementKind::PropertyGroup && kind != ChangeKind::Changed;
  }

  void Report(const Node& node, ChangeKind kind, std::string_view property = {},
              TextPair texts = {}) {
    if (IsToldBelow(node, kind)) return;
    ++mCount;
    Change change{kind, node.Any().Class->Kind, NameOf(node), {}, {}, {}, {}, {}};
    change.Property = property;
    change.Before = std::move(texts.Before);
    change.After = std::move(texts.After);
    change.PlaceBefore = PlaceOf(node, &ElementPair::Before);
    change.PlaceAfter = PlaceOf(node, &ElementPair::After);
    change.Word = KindWord(node.Any());
    change.Whole = WholeOf(node);
    mTell(change);
  }

  static ChangedWhole WholeOf(const Node& node) {
    const Node* whole = &node;
    for (const Node* at = &node; at; at = at->Parent)
      if (IsProcedure(at->Any())) whole = at;
    const ElementRef element = whole->Any();
    return {element.Object,
            KindWord(element),
            element.Class->Kind,
            NameOf(*whole),
            PlaceOf(*whole, &ElementPair::Before),
            PlaceOf(*whole, &ElementPair::After)};
  }

  // Names of elements without one of their own are built from the next one above that has.
  static std::string NameOf(const Node& node) {
    std::string tail;
    for (const Node* at = &node;; at = at->Parent) {
      const ElementRef element = at->Any();
      const ClassDescription& type = *element.Class;
      const std::string name = TextOf(element, NameProperty(type));
      if (!name.empty() || !at->Parent) {
        const std::string qualified = TextOf(element, PropertyNamed(type, kQualifiedName));
        if (!qualified.empty()) return qualified + tail;
      }
      if (!at->Parent) return name + tail;
      tail.insert(0, "." + PartName(element, *at->Collection, name));
    }
  }

  // Of what has no qualified name: a section of a module by what it is, others by the collection
  // that holds them.
  static std::string PartName(ElementRef element, const PropertyDescription& collection,
                              const std::string& name) {
    const ClassDescription& type = *element.Class;
    if (name.empty() && type.Kind == ElementKind::Block) return std::string(KindWord(element));
    return std::string(collection.Name) + "(" +
           (name.empty() ? TextOf(element, SecondProperty(type)) : name) + ")";
  }

  // Lines of an element are counted in the file of the nearest one, from itself upwards, that is a
  // file; one with a line is no file.
  static bool HasPlacesOfItsOwn(const Node& node) {
    return !PropertyNamed(*node.Any().Class, kPlaceProperties.front());
  }

  static ChangePlace PlaceOf(const Node& node, ElementRef ElementPair::*side) {
    ChangePlace place;
    const ElementRef element = node.Elements.*side;
    if (!element) return place;
    if (const auto* line = PropertyNamed(*element.Class, kPlaceProperties.front())) {
      PropertyValue value;
      line->Read(element.Object, value);
      place.Line = static_cast<std::int32_t>(value.Number);
      if (place.Line == 0) place.Line = LineOfSection(element);
    }
    for (const Node* at = &node; at && place.File.empty(); at = at->Parent)
      if (HasPlacesOfItsOwn(*at)) {
        const ElementRef holder = at->Elements.*side;
        place.File = TextOf(holder, PathProperty(*holder.Class));
      }
    return place;
  }

  const DifferenceOptions& mOptions;
  const std::function<void(const Change&)>& mTell;
  TextPair mRootName;
  std::vector<Node> mStack;
  std::deque<Node> mKept;
  std::deque<std::string> mFolders;
  PropertyValue mBefore, mAfter;
  std::size_t mCount = 0;
  std::unordered_set<const void*> mPartnersAfter;
};

}  // namespace

std::string_view ChangeName(ChangeKind kind) {
  return kChangeNames[static_cast<std::size_t>(kind)];
}

std::size_t Compare(ElementRef before, ElementRef after, const DifferenceOptions& options,
                    const std::function<void(const Change&)>& tell) try {
  if (!before || !after) throw VendrelError(errObjectNotSet);
  if (before.Class != after.Class) throw VendrelError(errTypeMismatch);
  return Comparison(options, tell).Run(before, after);
}
VENDREL_CONTEXT()

}  // namespace vendrel
