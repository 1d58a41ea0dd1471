#pragma once
// Lists as JSON: an object a line. `schema` prints what may stand in them.

#include <cstdint>
#include <ostream>
#include <string_view>

#include "cli/Options.h"
#include "model/CodeElement.h"
#include "output/Json.h"
#include "output/Places.h"

namespace vendrel::cli {

/// A list of objects. Its first line tells the command, the version of the format and the tool's.
class JsonLines {
 public:
  /// Writes the first line if `isWanted`: commands that were not asked for JSON make one all the
  /// same, and write nothing to it.
  JsonLines(std::ostream& out, std::string_view command, const CommonOptions& options,
            bool isWanted);

  void Begin() { mJson.BeginObject(); }
  void Text(std::string_view name, std::string_view text);
  void Number(std::string_view name, std::int64_t number);
  void Truth(std::string_view name, bool value);
  /// Where an element stands, or a line of a file: "File" (of this machine, from --root), "Line"
  /// and "Column".
  void Place(const CodeElement& element);
  void Place(const std::string& windowsPath, std::int32_t line, std::int32_t column = 0);
  void End();
  /// For members of other shapes.
  JsonWriter& Writer() { return mJson; }

 private:
  JsonWriter mJson;
  std::string mRoot;
  /// The file last shown, and how: neighbours in a list mostly stand in one.
  std::string mWindowsPath, mShownFile;
  SourceColumns mColumns;
};

/// The folder of --root, of this machine, without a slash at its end; empty without one.
std::string NativeRootOf(const CommonOptions& options);

}  // namespace vendrel::cli
