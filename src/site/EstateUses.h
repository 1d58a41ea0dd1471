#pragma once
// What names in statements mean, and who uses what: the one place where pages ask the binder.

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "project/VBProject.h"

namespace vendrel::site {

struct ProjectEntry;
struct SourceEntry;

/// A name in a line of source that means an element. Lines and columns, in characters, count
/// from 1.
struct BoundName {
  std::int32_t Line = 0;
  std::int32_t Column = 0;
  const CodeElement* Element = nullptr;
  bool IsDeclaration = false;
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

/// The uses of all projects of a site. Names are given away file by file and not kept; who uses
/// whom is, but for names within procedures.
class EstateUses {
 public:
  /// The names of a file in the order of their places.
  using TakeNames = std::function<void(const SourceEntry&, std::span<const BoundName>)>;

  EstateUses();
  ~EstateUses();
  EstateUses(const EstateUses&) = delete;
  EstateUses& operator=(const EstateUses&) = delete;

  /// Binds the names of a project, and gives each of its files away once.
  void Bind(const ProjectEntry& project, const TakeNames& take);
  /// All projects are bound: from here on users are known.
  void Finish();
  /// Nothing will be asked for any more.
  void Release();

  /// Who uses an element, one entry for each user and kind, in the order of their places.
  std::vector<ElementUse> UsersOf(const CodeElement& element) const;
  /// What an element uses.
  std::vector<ElementUse> UsedBy(const CodeElement& element) const;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vendrel::site
