#pragma once
// One name for each element of an output. Qualified names are shared: by the procedures of a
// property, by the Declares of one function in several modules, by projects of one name.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "output/Describe.h"

namespace vendrel {

/// Names of the elements of one output: the qualified name, with "#2", "#3" and so on behind it
/// for elements of that name that follow in the order of the tree.
class UniqueNames {
 public:
  /// Names all that is in the tree below `root`, and it itself. What was named before keeps its
  /// names taken, but is not known any longer.
  void Add(ElementRef root);
  /// The name of an element that was added last; its qualified name if it was not.
  std::string Of(const CodeElement& element) const;
  /// The same where the qualified name is at hand.
  std::string_view Of(const CodeElement& element, std::string_view qualifiedName) const;

 private:
  void Name(const CodeElement& element);

  /// How many elements had a name, by its hash: two names of one hash leave out a number. A table
  /// of its own, open and without nodes: a name is counted once an element.
  class TakenNames {
   public:
    /// Counts one more and gives how many that makes.
    std::uint32_t Count(std::size_t hash);

   private:
    struct Slot {
      std::size_t Hash = 0;
      /// 0: a free slot.
      std::uint32_t Count = 0;
    };
    Slot& Find(std::size_t hash);
    /// As many as a power of two, at most half of them taken.
    std::vector<Slot> mSlots;
    std::size_t mTaken = 0;
  };
  TakenNames mTaken;
  /// Those whose name has a number.
  std::unordered_map<const CodeElement*, std::string> mNumbered;
};

}  // namespace vendrel
