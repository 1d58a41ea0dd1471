#pragma once
// What a project file held, line by line, and what the project was behind the load. By it the
// writer tells which lines still say what the project is.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "services/SourceText.h"

namespace vendrel {

class Component;
class Reference;
class VBProject;

/// A property of the project that a line of its file tells.
enum class ProjectSetting : std::uint8_t {
  Name,
  HelpFile,
  HelpContextID,
  IconForm,
  Startup,
  CompatibleMode,
  CompatibleExe,
  ExeName,
  Path,
  AutoIncrement
};
inline constexpr std::size_t kProjectSettings = 10;

/// One line of the file. What came of it: a module, a reference, an entry of a list; none of these
/// for a setting, and for a line that was dropped.
struct ProjectFileLine {
  /// 0-based position of the line in the text of the file, and its length without line end.
  std::size_t Offset = 0, Length = 0;
  std::weak_ptr<Component> Module;
  std::weak_ptr<vendrel::Reference> Reference;
  /// Whether it was added as such, be it still there or not.
  bool IsModule = false, IsReference = false;
  /// What `ValueOf` gave for the module or reference.
  std::string Value;
  /// 0-based place in `ProjectLines` and `RelatedDocuments`; -1: in none.
  std::int32_t Kept = -1, Document = -1;
};

/// The lines of a file as they were read.
class ProjectFileLines {
 public:
  /// The decoded file; the lines point into its text.
  std::shared_ptr<const SourceText> Source;
  std::vector<ProjectFileLine> Lines;
  std::vector<std::string> Documents;
  std::array<std::string, kProjectSettings> Settings;

  std::string_view Text(const ProjectFileLine& line) const {
    return std::string_view(Source->Text).substr(line.Offset, line.Length);
  }
  /// Notes what the project is now.
  void Note(const VBProject& project);

  /// A setting as its line has it.
  static std::string ValueOf(const VBProject& project, ProjectSetting setting);
  /// All that lines tell of a module but its path, and all they tell of a reference.
  static std::string ValueOf(const Component& module);
  static std::string ValueOf(const vendrel::Reference& reference);
};

}  // namespace vendrel
