#include "cli/Changes.h"

#include "cli/ShownText.h"
#include "cli/UnifiedDiff.h"
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

bool IsLong(const Change& change) {
  return change.Kind == ChangeKind::Text || IsLong(change.Before) || IsLong(change.After);
}

// Whether the whole changed, not something in it.
bool IsOfWhole(const Change& change) { return change.Element == change.Whole.Element; }

// "P~M~F:a" in "P~M~F" is "a".
std::string_view NameWithin(const Change& part) {
  std::string_view name = part.Element;
  if (!name.starts_with(part.Whole.Element)) return name;
  name.remove_prefix(part.Whole.Element.size());
  const std::size_t first = name.find_first_not_of("~:.");
  return first == std::string_view::npos ? part.Element : name.substr(first);
}

std::string ValueChange(const Change& change) {
  std::string text(change.Property);
  return text.append(": ")
      .append(Quoted(change.Before))
      .append(" -> ")
      .append(Quoted(change.After));
}

// What happened to the whole: "text" where its lines alone are others.
ChangeKind EntryKind(const std::vector<Change>& entry) {
  if (entry.size() == 1 && IsOfWhole(entry.front())) return entry.front().Kind;
  ChangeKind kind = ChangeKind::Text;
  for (const Change& part : entry) {
    if (part.Kind == ChangeKind::Renamed && IsOfWhole(part)) return ChangeKind::Renamed;
    if (part.Kind != ChangeKind::Text || !IsOfWhole(part)) kind = ChangeKind::Changed;
  }
  return kind;
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
  Flush();
}

bool ChangeWriter::BelongsToEntry(const Change& change) const {
  if (mEntry.empty() || !change.Whole.Object) return false;
  const Change& first = mEntry.front();
  return first.Whole.Object == change.Whole.Object &&
         (first.Kind == ChangeKind::Moved) == (change.Kind == ChangeKind::Moved);
}

void ChangeWriter::Write(const Change& change) {
  ++mCount;
  if (!BelongsToEntry(change)) Flush();
  mEntry.push_back(change);
  if (!change.Whole.Object) Flush();
}

void ChangeWriter::Flush() {
  if (mEntry.empty()) return;
  CountEntry();
  if (mJson)
    WriteJson();
  else
    WriteText();
  mEntry.clear();
}

void ChangeWriter::CountEntry() {
  ++mCounts[EntryKind(mEntry)][std::string(mEntry.front().Whole.Word)];
}

std::string ChangeWriter::Summary() const {
  std::string text;
  for (const auto& [kind, words] : mCounts)
    for (const auto& [word, count] : words)
      text.append(text.empty() ? "" : ", ")
          .append(CountedWith(static_cast<std::size_t>(count), word))
          .append(" ")
          .append(ChangeName(kind));
  return text.empty() ? "no difference" : text;
}

void ChangeWriter::WriteText() {
  const Change& first = mEntry.front();
  const ChangedWhole& whole = first.Whole;
  const ChangePlace& place = whole.PlaceAfter.File.empty() ? whole.PlaceBefore : whole.PlaceAfter;
  const std::string shown = mPaths.Place(place.File, place.Line);
  const std::string_view kind = ChangeName(EntryKind(mEntry));
  const bool isOne = mEntry.size() == 1 && !IsLong(first) && IsOfWhole(first);
  if (isOne && !first.Property.empty())
    return WriteRow(mOut, {kind, whole.Word, whole.Element, shown, {ValueChange(first), true}});
  WriteRow(mOut, {kind, whole.Word, whole.Element, shown});
  const auto isOwnText = [](const Change& part) {
    return part.Kind == ChangeKind::Text && IsOfWhole(part);
  };
  for (const Change& part : mEntry)
    if (!isOwnText(part)) WritePart(part);
  for (const Change& part : mEntry)
    if (isOwnText(part)) WritePart(part);
}

// Texts of the whole itself come without a heading: that is what "-" and "+" are for.
void ChangeWriter::WritePart(const Change& part) {
  const bool isOfWhole = IsOfWhole(part);
  std::string heading;
  if (!isOfWhole) heading.append(part.Word).append(" ").append(Shown(NameWithin(part)));
  if (part.Property.empty()) {
    if (!isOfWhole) mOut << '\t' << heading << ' ' << ChangeName(part.Kind) << '\n';
    return;
  }
  if (!heading.empty()) heading += ": ";
  if (!IsLong(part)) {
    mOut << '\t' << heading << ValueChange(part) << '\n';
    return;
  }
  if (!isOfWhole || part.Kind != ChangeKind::Text) mOut << '\t' << heading << part.Property << '\n';
  WriteLineChanges(mOut, part.Before, part.After);
}

void ChangeWriter::WritePlace(std::string_view name, const ChangePlace& place) {
  mLines.Writer().Key(name);
  if (place.File.empty()) return mLines.Writer().Null();
  mLines.Begin();
  mLines.Place(place.File, place.Line);
  mLines.Writer().EndObject();
}

void ChangeWriter::WriteJson() {
  const ChangedWhole& whole = mEntry.front().Whole;
  JsonWriter& json = mLines.Writer();
  const auto text = [&](std::string_view name, std::string_view value) {
    json.Key(name);
    json.String(value);
  };
  json.BeginObject();
  text("Change", ChangeName(EntryKind(mEntry)));
  text("Kind", whole.Word);
  text("Class", RowOf(whole.Class).ClassName);
  text("Element", whole.Element);
  WritePlace("PlaceBefore", whole.PlaceBefore);
  WritePlace("PlaceAfter", whole.PlaceAfter);
  json.Key("Parts");
  json.BeginArray();
  for (const Change& part : mEntry) {
    if (IsOfWhole(part) && part.Property.empty()) continue;
    json.BeginObject();
    text("Change", ChangeName(part.Kind));
    if (!IsOfWhole(part)) {
      text("Kind", part.Word);
      text("Element", part.Element);
    }
    if (!part.Property.empty()) {
      text("Property", part.Property);
      text("Before", part.Before);
      text("After", part.After);
    }
    json.EndObject();
  }
  json.EndArray();
  json.EndObject();
  json.NewLine();
}

}  // namespace vendrel::cli
