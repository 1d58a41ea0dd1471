#pragma once
// What differs between two trees, element by element. It works on the descriptions of the classes
// alone (Describe.h), so that a new property or class is compared as soon as its table stands.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "output/Describe.h"

namespace vendrel {

enum class ChangeKind : std::uint8_t {
  Added,    // only in the second tree
  Gone,     // only in the first one
  Moved,    // its file stands elsewhere below the project, or it stands in another module
  Changed,  // another value of one property
  Text,     // other code lines
  Renamed,  // the same under another name
};

/// "added", "gone", "moved", "changed", "text" or "renamed".
std::string_view ChangeName(ChangeKind kind);

/// Where an element stands in its tree.
struct ChangePlace {
  /// In Windows form; empty if it has none.
  std::string File;
  /// 1-based; 0: the file as a whole.
  std::int32_t Line = 0;
};

/// What a difference is a part of: the procedure in which its element stands, else the element.
struct ChangedWhole {
  /// Tells wholes of one name apart; not to be followed once the trees are gone.
  const void* Object = nullptr;
  /// As `Change::Word`.
  std::string_view Word;
  ElementKind Class = ElementKind::None;
  std::string Element;
  ChangePlace PlaceBefore, PlaceAfter;
};

/// One difference.
struct Change {
  ChangeKind Kind;
  /// Of the element.
  ElementKind Class = ElementKind::None;
  /// Qualified name of the element; of one without, its name in the collection of the next one
  /// above it: "Ledger.References(stdole)"; of a section of a module what it is:
  /// "Ledger~modMain.declarations".
  std::string Element;
  /// The property whose value changed, "Module" for a procedure that stands in another one; empty
  /// for an element that was added or is gone.
  std::string_view Property;
  /// Values as text; of a list of texts what only one has, of code lines what lies between the
  /// first and the last difference, each line ended by a line feed.
  std::string Before, After;
  /// Without a file where the element is not in that tree.
  ChangePlace PlaceBefore, PlaceAfter;
  /// What the element is called: "procedure", "declarations", "reference" (`KindWord`).
  std::string_view Word = {};
  ChangedWhole Whole = {};
};

/// Elements of the first tree and what they are in the second one, where their names do not tell.
using ElementPartners = std::unordered_map<const void*, ElementRef>;

struct DifferenceOptions {
  /// Code lines.
  bool Lines = true;
  /// Where elements stand in their files. With lines put in or taken out, all that follow differ.
  bool Places = false;
  /// Where files stand, as seen from the project or group they belong to.
  bool Paths = true;
  /// Comments and what they say of elements, and blank lines.
  bool Comments = true;
  /// Modules and procedures that are known to be the same; null: none.
  const ElementPartners* Partners = nullptr;
};

/// Tells each difference between two elements of one class and everything below them, in the order
/// of the first tree, and gives their number. Elements of a collection are paired by their name
/// (case ignored), those of one name by the property behind it and then in their order, what is
/// left over by their file. What is added or gone is told without what stands in it. Loads nothing.
/// Raises 13 for two classes.
std::size_t Compare(ElementRef before, ElementRef after, const DifferenceOptions& options,
                    const std::function<void(const Change&)>& tell);

}  // namespace vendrel
