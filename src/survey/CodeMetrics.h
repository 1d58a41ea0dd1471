#pragma once
// How much code there is, and how it is built.

#include <cstdint>
#include <string_view>

#include "model/Block.h"
#include "model/Component.h"

namespace vendrel {

/// Physical lines of a module by what they are. A continuation is what its statement is.
struct LineCounts {
  std::int64_t Code = 0;
  std::int64_t Comment = 0;
  std::int64_t Blank = 0;
  /// The part that people do not see: version, controls, attributes.
  std::int64_t Header = 0;

  void Add(const LineCounts& other) {
    Code += other.Code;
    Comment += other.Comment;
    Blank += other.Blank;
    Header += other.Header;
  }
};

/// Of a module whose text is there; of another one all 0. Of a type of VB.NET the lines of its
/// sections and procedures; it has no header.
LineCounts LineCountsOf(const Component& component);

/// Of the text of a VB.NET file, in which people see every line.
LineCounts LineCountsOfText(std::string_view text);

/// Measures of one procedure.
struct ProcedureMetrics {
  /// Physical lines from its first line to its last.
  std::int64_t Lines = 0;
  /// Cyclomatic complexity: 1, and 1 for each If, ElseIf, Case (but Case Else), For, Do, While and
  /// Catch.
  std::int64_t Complexity = 1;
  /// The deepest of If, Select, For, Do, While, With, Try, Using and SyncLock within each other.
  std::int64_t Nesting = 0;
};

ProcedureMetrics MetricsOf(const Block& block);

}  // namespace vendrel
