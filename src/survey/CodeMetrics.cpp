#include "survey/CodeMetrics.h"

#include <algorithm>
#include <string>

#include "core/Ascii.h"
#include "services/SourceText.h"

namespace vendrel {
namespace {

std::int64_t PhysicalLines(const SourceText& source) {
  std::string_view text = source.Text;
  if (source.LineEnds.Form == LineEnds::Kind::CrLf || source.LineEnds.Form == LineEnds::Kind::Lf)
    return std::count(text.begin(), text.end(), '\n') + !source.LineEnds.LastLineEnds;
  std::int64_t count = 0;
  while (!text.empty()) {
    TakeLine(text);
    ++count;
  }
  return count;
}

std::string_view SkipBlanks(std::string_view text) {
  const std::size_t at = text.find_first_not_of(" \t");
  return at == std::string_view::npos ? std::string_view() : text.substr(at);
}

bool IsWordCharacter(char c) { return IsLetterAscii(c) || IsDigitAscii(c) || c == '_'; }

std::string_view TakeWord(std::string_view& rest) {
  rest = SkipBlanks(rest);
  std::size_t length = 0;
  while (length < rest.size() && IsWordCharacter(rest[length])) ++length;
  const std::string_view word = rest.substr(0, length);
  rest.remove_prefix(length);
  return word;
}

// Up to the comment behind it.
std::string_view WithoutComment(std::string_view line) {
  if (line.find('\'') == std::string_view::npos) return TrimRight(line);
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') quoted = !quoted;
    if (line[i] == '\'' && !quoted) return TrimRight(line.substr(0, i));
  }
  return TrimRight(line);
}

// A statement with its continuations.
std::string LogicalText(const CodeLines& lines, std::int32_t& index) {
  std::string text(WithoutComment(lines.LineView(index)));
  while (lines.Continued(index) && index < lines.Count()) {
    if (text.ends_with('_')) text.pop_back();
    text.append(WithoutComment(lines.LineView(++index)));
  }
  return text;
}

class Walk {
 public:
  void Statement(std::string_view text) {
    std::string_view rest = text;
    std::string_view word = TakeWord(rest);
    // A line number or a label in front.
    while (!word.empty() && (IsDigitAscii(word.front()) || IsLabel(rest))) {
      if (rest.starts_with(':')) rest.remove_prefix(1);
      word = TakeWord(rest);
    }
    const auto is = [&](std::string_view keyword) { return EqualsNoCaseAscii(word, keyword); };
    if (is("If")) {
      ++Metrics.Complexity;
      if (EndsWithNoCaseAscii(text, "Then")) Open();
    } else if (is("ElseIf")) {
      ++Metrics.Complexity;
    } else if (is("Case")) {
      if (!EqualsNoCaseAscii(TakeWord(rest), "Else")) ++Metrics.Complexity;
    } else if (is("For") || is("Do") || is("While")) {
      ++Metrics.Complexity;
      Open();
    } else if (is("Catch")) {
      ++Metrics.Complexity;
    } else if (is("Select") || is("With") || is("Using") || is("SyncLock") ||
               (is("Try") && SkipBlanks(rest).empty())) {
      Open();
    } else if (is("Next")) {
      for (auto i = std::count(rest.begin(), rest.end(), ','); i >= 0; --i) Close();
    } else if (is("Loop") || is("Wend")) {
      Close();
    } else if (is("End")) {
      const std::string_view what = TakeWord(rest);
      for (const std::string_view block :
           {"If", "Select", "With", "While", "Try", "Using", "SyncLock"})
        if (EqualsNoCaseAscii(what, block)) Close();
    }
  }

  ProcedureMetrics Metrics;

 private:
  static bool IsLabel(std::string_view rest) {
    return rest.starts_with(':') && !rest.starts_with(":=");
  }
  void Open() { Metrics.Nesting = std::max(Metrics.Nesting, ++mDepth); }
  void Close() { mDepth -= mDepth > 0; }

  std::int64_t mDepth = 0;
};

bool BeginsComment(std::string_view line) {
  if (line.starts_with('\'')) return true;
  return StartsWithNoCaseAscii(line, "Rem") && (line.size() == 3 || !IsWordCharacter(line[3]));
}

// By their texts: a comment that goes on is one to its end.
void CountLines(const Block& block, LineCounts& counts) {
  const CodeLines* lines = block.CodeLines.IfAny();
  if (!lines || lines->Unloaded()) return;
  const bool isHeader = block.BlockType() == btAttributes;
  bool inComment = false;
  for (std::int32_t i = 1; i <= lines->Count(); ++i) {
    if (lines->NotInSource(i)) continue;
    const std::string_view line = TrimRight(SkipBlanks(lines->LineView(i)));
    const bool isComment = inComment || BeginsComment(line);
    inComment = isComment && line.ends_with(" _");
    if (isComment)
      ++counts.Comment;
    else if (line.empty())
      counts.Blank += !isHeader;
    else if (lines->LineType(i) != ATTRIBUTE_LINE && !isHeader)
      ++counts.Code;
  }
}

}  // namespace

LineCounts LineCountsOf(const Component& component) {
  LineCounts counts;
  if (!component.SourceForm) return counts;
  for (const Block& block : component.Blocks) CountLines(block, counts);
  if (component.Options().LanguageVersion() == lvVisualBasicDotNet) return counts;
  counts.Header = std::max<std::int64_t>(
      0, PhysicalLines(*component.SourceForm) - counts.Code - counts.Comment - counts.Blank);
  return counts;
}

LineCounts LineCountsOfText(std::string_view text) {
  LineCounts counts;
  while (!text.empty()) {
    const std::string_view line = TrimRight(SkipBlanks(TakeLine(text)));
    ++(line.empty() ? counts.Blank : BeginsComment(line) ? counts.Comment : counts.Code);
  }
  return counts;
}

ProcedureMetrics MetricsOf(const Block& block) {
  Walk walk;
  const CodeLines* lines = block.CodeLines.IfAny();
  if (!lines || lines->Unloaded()) return walk.Metrics;
  const std::int32_t first = std::max(block.StartLine(), 1);
  bool ended = false;
  for (std::int32_t i = first; i <= lines->Count() && !ended; ++i) {
    const std::int32_t begin = i;
    ended = lines->IsEndLine(i);
    const LineTypeEnum type = lines->LineType(i);
    if (type != Comment && !IsStartLineType(type)) {
      if (lines->Continued(i))
        walk.Statement(LogicalText(*lines, i));
      else
        walk.Statement(WithoutComment(lines->LineView(i)));
    }
    for (std::int32_t line = begin; line <= i; ++line)
      walk.Metrics.Lines += !lines->NotInSource(line);
  }
  return walk.Metrics;
}

}  // namespace vendrel
