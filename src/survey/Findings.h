#pragma once
// What a check found, with all that is needed to tell it once the project has gone.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "diagnostics/Diagnostic.h"
#include "project/VBProject.h"
#include "survey/Rules.h"

namespace vendrel {

/// One finding of a rule.
struct Finding {
  const vendrel::Rule* Rule = nullptr;
  /// Windows form of the file it concerns; empty if none.
  std::string File;
  /// 1-based physical line; 0: the file as a whole.
  std::int32_t Line = 0;
  /// 1-based, in characters; 0 where it is not known.
  std::int32_t Column = 0;
  std::string Text;
  /// The path that the text names, as it stands there; empty if none.
  std::string Path;
  /// The text of that line without blanks around it; empty for the file as a whole.
  std::string Content;
};

/// A diagnostic as a finding; its column and content are not known yet.
Finding FindingOf(const Diagnostic& diagnostic);

/// Whether a rule is to be looked for at all.
using RuleFilter = std::function<bool(const Rule&)>;

/// Calls `visit` for each file that a loaded project was read from, once a file: the project file,
/// and its modules or source files. `module` is null for what is no module.
void ForEachSource(const VBProject& project,
                   const std::function<void(const std::string& file, const SourceText& text,
                                            const Component* module)>& visit);

/// The lines of the files of one project. Must not outlive it.
class ProjectSources {
 public:
  explicit ProjectSources(const VBProject& project);
  /// The text of a line, without its end; empty where there is none.
  std::string_view Line(const std::string& file, std::int32_t line);
  /// 1-based, in characters: where `word` stands on a line, else the first character that is no
  /// blank; 0 where there is no such line.
  std::int32_t ColumnOf(const std::string& file, std::int32_t line, std::string_view word);
  /// Looks up column and content. The column is that of what the text of the finding quotes, else
  /// of the first character that is no blank.
  void Complete(Finding& finding);

 private:
  struct Source {
    const SourceText* Text = nullptr;
    /// Offsets of its lines, once one was asked for.
    std::vector<std::size_t> Starts;
  };
  std::unordered_map<std::string, Source> mSources;
};

}  // namespace vendrel
