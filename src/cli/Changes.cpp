#include "cli/Changes.h"

#include <vector>

#include "cli/UnifiedDiff.h"
#include "output/Json.h"
#include "services/SourceText.h"

namespace vendrel::cli {
namespace {

// A change of a whole procedure is told by its first lines; --json has all of them.
constexpr std::size_t kMostLines = 8;

bool IsLong(std::string_view text) { return text.find('\n') != std::string_view::npos; }

std::string Joined(const NumberedLines& lines, std::size_t first, std::size_t count, bool quoted) {
  std::string text;
  for (std::size_t i = first; i < first + count; ++i) {
    if (quoted) AppendJsonString(text, lines.At(i));
    text.append(quoted ? "\n" : lines.At(i));
  }
  return text;
}

// A value within a line: blanks at its ends, and that it is empty, must be seen.
std::string Quoted(std::string_view value) {
  std::string text;
  AppendJsonString(text, value);
  return text;
}

}  // namespace

NumberedLines::NumberedLines(std::string_view text) : mText(text) {
  for (std::string_view rest = text; !rest.empty(); TakeLine(rest))
    mStarts.push_back(text.size() - rest.size());
  mStarts.push_back(text.size());
}

void WriteMarkedLines(std::ostream& out, std::string_view mark, std::string_view text) {
  if (text.empty()) return;
  text = text.ends_with('\n') ? text.substr(0, text.size() - 1) : text;
  std::size_t shown = 0, left = 0;
  for (bool more = true; more;) {
    const std::size_t end = text.find('\n');
    more = end != std::string_view::npos;
    if (shown < kMostLines) {
      out << mark << text.substr(0, end) << '\n';
      ++shown;
    } else {
      ++left;
    }
    text = more ? text.substr(end + 1) : std::string_view();
  }
  if (left > 0) out << mark << "... and " << left << " more\n";
}

void WriteLineChanges(std::ostream& out, std::string_view before, std::string_view after,
                      bool quoted) {
  const NumberedLines oldLines(before), newLines(after);
  const char* between = "";
  for (const LineChange& change : CompareLines(before, after)) {
    out << between;
    WriteMarkedLines(out, "  - ", Joined(oldLines, change.OldLine, change.OldCount, quoted));
    WriteMarkedLines(out, "  + ", Joined(newLines, change.NewLine, change.NewCount, quoted));
    between = "    ...\n";
  }
}

void ChangeWriter::Compare(ElementRef before, ElementRef after, const DifferenceOptions& options) {
  vendrel::Compare(before, after, options, [this](const Change& change) { Write(change); });
}

void ChangeWriter::Write(const Change& change) {
  ++mCount;
  if (mJson)
    WriteJson(change);
  else
    WriteText(change);
}

void ChangeWriter::WriteText(const Change& change) {
  const ChangePlace& place =
      change.PlaceAfter.File.empty() ? change.PlaceBefore : change.PlaceAfter;
  mOut << ChangeName(change.Kind) << '\t' << change.ClassName << '\t' << change.Element << '\t'
       << mPaths.Place(place.File, place.Line);
  const bool isLong =
      change.Kind == ChangeKind::Text || IsLong(change.Before) || IsLong(change.After);
  if (!change.Property.empty()) mOut << '\t' << change.Property;
  if (!change.Property.empty() && !isLong)
    mOut << ": " << Quoted(change.Before) << " -> " << Quoted(change.After);
  mOut << '\n';
  if (isLong) WriteLineChanges(mOut, change.Before, change.After);
}

void ChangeWriter::WriteJson(const Change& change) {
  JsonWriter json(mOut, false);
  const auto text = [&](std::string_view name, std::string_view value) {
    json.Key(name);
    json.String(value);
  };
  const auto place = [&](std::string_view name, const ChangePlace& where) {
    json.Key(name);
    if (where.File.empty())
      json.Null();
    else
      json.String(mPaths.Place(where.File, where.Line));
  };
  json.BeginObject();
  text("Change", ChangeName(change.Kind));
  text("Class", change.ClassName);
  text("Element", change.Element);
  if (!change.Property.empty()) {
    text("Property", change.Property);
    text("Before", change.Before);
    text("After", change.After);
  }
  place("PlaceBefore", change.PlaceBefore);
  place("PlaceAfter", change.PlaceAfter);
  json.EndObject();
  json.NewLine();
}

}  // namespace vendrel::cli
