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

std::size_t CommonEnd(std::string_view a, std::string_view b) {
  std::size_t length = 0;
  const std::size_t shorter = std::min(a.size(), b.size());
  while (length < shorter && a[a.size() - length - 1] == b[b.size() - length - 1]) ++length;
  while (length > 0 && (static_cast<unsigned char>(a[a.size() - length]) & 0xC0) == 0x80) --length;
  return length;
}

bool HoldsReplacement(std::string_view text) {
  std::string mark;
  AppendUtf8(mark, ReplacementCharacter);
  return text.find(mark) != std::string_view::npos;
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

// What a part has at its end as it had before, as a path has that is seen from another folder,
// keeps its bytes.
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
    const std::size_t same = CommonEnd(part.Place.Of(text), part.Text);
    const std::string_view changed = std::string_view(part.Text).substr(0, part.Text.size() - same);
    if (HoldsReplacement(changed)) stream.Refuse();
    bytes.append(stream.Bytes(changed));
    copy(done - same, done);
  }
  copy(done, text.size());
  return bytes;
}

}  // namespace vendrel
