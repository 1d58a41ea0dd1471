#include "survey/Findings.h"

#include <unordered_set>

#include "core/Ascii.h"
#include "core/Utf8.h"
#include "services/SourceText.h"
#include "text/Separators.h"

namespace vendrel {
namespace {

// What a finding speaks of, as it may stand on its line: the first word in quotation marks, the
// tag, or the character that turns the direction, which the text names by its number.
std::string_view QuotedIn(std::string_view text) {
  if (const std::size_t tag = text.find("##"); tag != std::string_view::npos)
    return text.substr(tag, text.find(' ', tag) - tag);
  const std::size_t open = text.find('\'');
  if (open == std::string_view::npos) return {};
  const std::size_t close = text.find('\'', open + 1);
  return close == std::string_view::npos ? std::string_view()
                                         : text.substr(open + 1, close - open - 1);
}

std::size_t FindWhole(std::string_view line, std::string_view word) {
  const bool isWord = IsWordByte(word.front());
  for (std::size_t at = line.find(word); at != std::string_view::npos;
       at = line.find(word, at + 1)) {
    const std::size_t end = at + word.size();
    if (!isWord ||
        ((at == 0 || !IsWordByte(line[at - 1])) && (end == line.size() || !IsWordByte(line[end]))))
      return at;
  }
  return std::string_view::npos;
}

std::int32_t CharactersBefore(std::string_view line, std::size_t at) {
  std::int32_t count = 0;
  for (const char c : line.substr(0, at)) count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return count;
}

std::size_t ColumnOffset(const Finding& finding, std::string_view line) {
  std::size_t at = std::string_view::npos;
  if (finding.Rule->Id == CodeName(DiagnosticCode::DirectionControl))
    at = FirstDirectionControl(line);
  if (at == line.size())
    at = std::string_view::npos;
  else if (const std::string_view quoted = QuotedIn(finding.Text); !quoted.empty())
    at = FindWhole(line, quoted);
  if (at == std::string_view::npos) at = line.find_first_not_of(" \t");
  return at == std::string_view::npos ? 0 : at;
}

}  // namespace

Finding FindingOf(const Diagnostic& diagnostic) {
  // The first rules are those of the diagnostics, in their order.
  return {&AllRules()[static_cast<std::size_t>(diagnostic.Code)],
          diagnostic.File,
          diagnostic.Line,
          0,
          diagnostic.Text,
          diagnostic.Path,
          {}};
}

void ForEachSource(const VBProject& project,
                   const std::function<void(const std::string& file, const SourceText& text,
                                            const Component* module)>& visit) {
  std::unordered_set<std::string> seen;
  const auto once = [&](const FileSystemObject& file, const SourceText* text,
                        const Component* module) {
    if (!text) return;
    const std::string path = file.FullPath();
    if (seen.insert(path).second) visit(path, *text, module);
  };
  once(project.FileName, project.SourceForm.get(), nullptr);
  for (const ProjectFile& file : project.ProjectFiles)
    once(file.FileName, file.SourceForm.get(), nullptr);
  for (const Component& component : project.Components.Listed())
    once(component.FileName, component.SourceForm.get(), &component);
}

ProjectSources::ProjectSources(const VBProject& project) {
  ForEachSource(project, [&](const std::string& file, const SourceText& text, const Component*) {
    mSources[file].Text = &text;
  });
}

std::string_view ProjectSources::Line(const std::string& file, std::int32_t line) {
  const auto found = mSources.find(file);
  if (line < 1 || found == mSources.end()) return {};
  Source& source = found->second;
  const std::string_view text = source.Text->Text;
  if (source.Starts.empty())
    for (std::string_view rest = text; !rest.empty(); TakeLine(rest))
      source.Starts.push_back(text.size() - rest.size());
  if (static_cast<std::size_t>(line) > source.Starts.size()) return {};
  std::string_view rest = text.substr(source.Starts[static_cast<std::size_t>(line) - 1]);
  return TakeLine(rest);
}

std::int32_t ProjectSources::ColumnOf(const std::string& file, std::int32_t line,
                                      std::string_view word) {
  const std::string_view text = Line(file, line);
  if (text.empty()) return 0;
  std::size_t at = word.empty() ? std::string_view::npos : FindWhole(text, word);
  if (at == std::string_view::npos) at = text.find_first_not_of(" \t");
  return at == std::string_view::npos ? 1 : CharactersBefore(text, at) + 1;
}

void ProjectSources::Complete(Finding& finding) {
  const std::string_view line = Line(finding.File, finding.Line);
  if (line.empty()) return;
  finding.Content = Trim(line);
  if (finding.Column == 0) finding.Column = CharactersBefore(line, ColumnOffset(finding, line)) + 1;
}

}  // namespace vendrel
