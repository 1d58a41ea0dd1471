#pragma once
// Documentation in VB.NET source: lines with three apostrophes, and what they stand above.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/WeakHandle.h"
#include "model/Fwd.h"

namespace vendrel {

class ProjectFile;
class VBProject;
struct SourceStatement;

/// The documentation of one source file, gathered while it is scanned and placed on its elements
/// when all files are read.
class SourceDocumentation {
 public:
  /// What stands above one statement.
  struct Piece {
    /// Its lines without their apostrophes, each with a line feed.
    std::string Text;
    /// 1-based physical lines: where it begins, and those of the statement.
    std::int32_t Line = 0, From = 0, To = 0;
    /// What it was placed on.
    CodeElement* Element = nullptr;
  };

  /// Takes the next statement of the file.
  void Take(const SourceStatement& statement);
  /// A type is opened by the statement that begins on that line.
  void AddType(std::int32_t line, Component& type);
  /// The piece above the statement that begins on that line; null if there is none.
  Piece* Above(std::int32_t line);

  struct OpenedType {
    std::int32_t Line;
    WeakHandle<Component> Type;
  };
  const std::vector<OpenedType>& Types() const { return mTypes; }

 private:
  Piece mOpen;
  std::vector<Piece> mPieces;  // by their lines
  std::vector<OpenedType> mTypes;
};

/// Places the documentation of all source files of a project as `Assembly::IntegrateCommentFile`
/// does that of a documentation file; a text without any element, or that is not well-formed,
/// becomes the untagged description. Called behind the last file, since documentation may name what
/// any of them holds.
void PlaceSourceDocumentation(VBProject& project);

}  // namespace vendrel
