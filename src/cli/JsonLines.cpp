#include "cli/JsonLines.h"

#include "output/Dump.h"
#include "services/FileSystemObject.h"

namespace vendrel::cli {

JsonLines::JsonLines(std::ostream& out, std::string_view command, const CommonOptions& options,
                     bool isWanted)
    : mJson(out, false), mRoot(NativeRootOf(options)) {
  if (!isWanted) return;
  Begin();
  Text("Command", command);
  Number("FormatVersion", kJsonFormat);
  Text("Tool", ToolVersion());
  End();
  mJson.Flush();  // others may write to the stream too
}

void JsonLines::Text(std::string_view name, std::string_view text) {
  mJson.Key(name);
  mJson.String(text);
}

void JsonLines::Number(std::string_view name, std::int64_t number) {
  mJson.Key(name);
  mJson.Number(number);
}

void JsonLines::Truth(std::string_view name, bool value) {
  mJson.Key(name);
  mJson.Truth(value);
}

void JsonLines::Place(const CodeElement& element) {
  const SourcePlace place = PlaceOf(element);
  Place(place.File(), place.Line, mColumns.Of(place, element.ElementName()));
}

void JsonLines::Place(const std::string& windowsPath, std::int32_t line, std::int32_t column) {
  if (windowsPath != mWindowsPath) {
    mShownFile = windowsPath.empty() ? windowsPath : ShownFile(windowsPath, mRoot);
    mWindowsPath = windowsPath;
  }
  Text("File", mShownFile);
  Number("Line", line);
  Number("Column", column);
}

void JsonLines::End() {
  mJson.EndObject();
  mJson.NewLine();
}

std::string NativeRootOf(const CommonOptions& options) {
  if (options.Root.empty()) return {};
  std::string root = FileSystemObject(AbsolutePath(options.Root)).NativePath();
  while (root.ends_with('/')) root.pop_back();
  return root;
}

}  // namespace vendrel::cli
