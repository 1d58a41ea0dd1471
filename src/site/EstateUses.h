#pragma once
// What names in statements mean, and who uses what: the one place where pages ask the binder.

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "project/VBProject.h"

namespace vendrel::site {

/// A name in a line of source that means an element. Columns count characters from 1; the end is
/// the first one behind.
struct BoundName {
  std::int32_t Line = 0;
  std::int32_t Column = 0;
  std::int32_t EndColumn = 0;
  const CodeElement* Element = nullptr;
};

/// That one element uses another.
struct ElementUse {
  /// Who uses it, or what is used.
  const CodeElement* Other = nullptr;
  /// The first place.
  const Component* Module = nullptr;
  std::int32_t Line = 0;
  std::int32_t Count = 0;
  /// "call", "read", "write".
  std::string_view Kind;
};

/// The uses of all projects of a site, gathered once.
class EstateUses {
 public:
  /// Names of VB.NET source are not bound.
  explicit EstateUses(const std::vector<VBProject*>& projects);
  ~EstateUses();
  EstateUses(const EstateUses&) = delete;
  EstateUses& operator=(const EstateUses&) = delete;

  /// The names of a module in the order of their places.
  std::span<const BoundName> NamesIn(const Component& module) const;
  /// Who uses an element, one entry for each user and kind, in the order of their places.
  std::vector<ElementUse> UsersOf(const CodeElement& element) const;
  /// What an element uses.
  std::vector<ElementUse> UsedBy(const CodeElement& element) const;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vendrel::site
