#pragma once
// How much of the code of two procedures or modules is the same, whatever they are called.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "model/Block.h"
#include "model/Component.h"

namespace vendrel {

/// The logical lines of some code as hashes. Blanks, comments, letter case, the first and the last
/// line of a procedure and its own name do not count.
class CodeContent {
 public:
  CodeContent() = default;
  /// Of a procedure; empty where its lines are not there.
  explicit CodeContent(const Block& block);
  /// Of all sections of a module.
  explicit CodeContent(const Component& component);

  /// Number of logical lines.
  std::size_t Count() const { return mLines.size(); }
  /// The hashes in ascending order.
  const std::vector<std::uint32_t>& Lines() const { return mLines; }
  /// Twice the number of common lines to that of both, in percent; 0 where either has none.
  int PercentCommon(const CodeContent& other) const;

 private:
  void Add(const Block& block);

  std::vector<std::uint32_t> mLines;
};

}  // namespace vendrel
