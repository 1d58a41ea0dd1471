#include "writer/LineEdit.h"

#include <algorithm>

#include "core/Utf8.h"
#include "writer/RawLine.h"

namespace vendrel {

Region Region::Trimmed(std::string_view text) const {
  Region part = *this;
  while (part.Length > 0 && text[part.Begin] == ' ') ++part.Begin, --part.Length;
  while (part.Length > 0 && text[part.Begin + part.Length - 1] == ' ') --part.Length;
  return part;
}

Region Region::WithoutQuotes(std::string_view text) const {
  const std::string_view part = Of(text);
  if (part.size() < 2 || part.front() != '"' || part.back() != '"') return *this;
  return {Begin + 1, Length - 2};
}

void LineEdit::Write(SourceStream& stream, const TextForm& form, std::string_view text,
                     const std::string* raw, std::string_view end) {
  if (mDrops) return;
  std::sort(mParts.begin(), mParts.end(),
            [](const Part& a, const Part& b) { return a.Place.Begin < b.Place.Begin; });
  if (mWhole)
    stream.Line(*mWhole, end);
  else if (!raw)
    stream.Line(mParts.empty() ? text : std::string_view(Edited(text)), end);
  else if (mParts.empty())
    stream.Raw(*raw, end);
  else
    stream.Raw(EditedBytes(stream, form, text, *raw), end);
}

std::string LineEdit::Edited(std::string_view text) const {
  std::string edited;
  std::size_t done = 0;
  for (const Part& part : mParts) {
    edited.append(text.substr(done, part.Place.Begin - done)).append(part.Text);
    done = part.Place.Begin + part.Place.Length;
  }
  return edited.append(text.substr(done));
}

// A part that only lost its front, as a path does that becomes a leaf name, keeps the bytes of the
// rest.
std::string LineEdit::EditedBytes(SourceStream& stream, const TextForm& form, std::string_view text,
                                  const std::string& raw) const {
  const auto positions = BytePositions(text, raw, form);
  if (!positions) stream.Refuse();
  std::string bytes;
  std::size_t done = 0;
  const auto copy = [&](std::size_t from, std::size_t to) {
    bytes.append(raw, (*positions)[from], (*positions)[to] - (*positions)[from]);
  };
  for (const Part& part : mParts) {
    copy(done, part.Place.Begin);
    done = part.Place.Begin + part.Place.Length;
    if (part.Place.Of(text).ends_with(part.Text)) {
      copy(done - part.Text.size(), done);
      continue;
    }
    std::string mark;
    AppendUtf8(mark, ReplacementCharacter);
    if (part.Text.find(mark) != std::string::npos) stream.Refuse();
    bytes.append(stream.Bytes(part.Text));
  }
  copy(done, text.size());
  return bytes;
}

}  // namespace vendrel
