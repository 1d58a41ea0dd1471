#pragma once
// Where elements stand in the files they were read from.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/Fwd.h"
#include "output/Describe.h"
#include "text/CodeLines.h"

namespace vendrel {

/// The module, or else the project, in whose file an element stands, and its line there.
struct SourcePlace {
  const vendrel::Component* Component = nullptr;
  const vendrel::VBProject* VBProject = nullptr;
  /// 1-based; 0 for the file as a whole.
  std::int32_t Line = 0;
  /// The element that stands on that line: the one asked for, or what declares it.
  const CodeElement* Declared = nullptr;

  /// Windows form of the file: of the module its own, or the library that it was read from. Empty
  /// for what stands in no file.
  std::string File() const;
};

/// An element without a line of its own stands where that stands which declares it.
SourcePlace PlaceOf(const CodeElement& element);

/// The element as what its class derives from; null for a class that is no `CodeElement`.
const CodeElement* AsCodeElement(ElementRef element);

/// Columns of names in the lines of modules.
class SourceColumns {
 public:
  /// 1-based, in characters: where `name` stands as a word on that line, in any letter case, else
  /// the first character that is no blank. 0 where there is no text, or no such line.
  std::int32_t Of(const SourcePlace& place, std::string_view name);
  /// Physical line, 1-based, of a line of a block of that module; 0 for one that no file had.
  std::int32_t LineOf(const SourcePlace& place, const CodeLines& lines, std::int32_t index);

 private:
  bool Index(const Component* component);
  std::string_view TextOf(const SourcePlace& place);
  std::int32_t OnLongLine(std::int32_t number, std::string_view line, std::string_view name);

  const Component* mComponent = nullptr;
  /// Offsets of its lines.
  std::vector<std::size_t> mStarts;
  /// The long line last asked for, and the columns of its words, in upper case, where each stands
  /// first. A walk along the line for each of its elements would take the square of their number.
  std::int32_t mLongLine = 0;
  std::unordered_map<std::string, std::int32_t> mColumnsOfWords;
};

}  // namespace vendrel
