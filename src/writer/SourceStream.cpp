#include "writer/SourceStream.h"

#include "core/Utf8.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"

namespace vendrel {
namespace {

constexpr std::string_view kCrLf = "\r\n";

std::string_view FirstEnd(const SourceText& source) {
  const std::size_t at = source.Text.find_first_of("\r\n");
  return at == std::string::npos ? kCrLf : EndAt(source.Text, at);
}

bool IsUtf16(const TextForm& form) {
  return form.Encoding == TextEncoding::Utf16LE || form.Encoding == TextEncoding::Utf16BE;
}

bool HoldsAll(const TextForm& form) {
  return form.Encoding == TextEncoding::Utf8 || form.Encoding == TextEncoding::Utf8Bom;
}

}  // namespace

std::string_view EndAt(std::string_view text, std::size_t offset) {
  if (offset >= text.size()) return {};
  if (text[offset] == '\n') return text.substr(offset, 1);
  if (text[offset] != '\r') return {};
  const bool pair = offset + 1 < text.size() && text[offset + 1] == '\n';
  return text.substr(offset, pair ? 2 : 1);
}

SourceStream::SourceStream(FileSystemObject& file, TextForm form, const SourceText* source,
                           bool keepEnds)
    : mFile(file),
      mForm(std::move(form)),
      mPage(PageOf(mForm)),
      mSource(source),
      mKeepEnds(keepEnds && source) {
  if (mKeepEnds) mUsualEnd = FirstEnd(*source);
}

void SourceStream::Line(const CodeLines& lines, std::int32_t index, std::string_view prefix) {
  const std::string_view text = lines.LineView(index);
  const bool ours = mSource && lines.SourceText() == &mSource->Text;
  // The classic reading encodes a line behind a prefix anew, whatever its bytes were.
  if (ours && (prefix.empty() || mKeepEnds) && lines.AsRead(index)) {
    const std::size_t offset = *lines.SourceOffset(index);
    const std::string* raw = mSource->RawLines.empty() ? nullptr : mSource->RawLine(offset);
    if (raw) return PutRaw(prefix, *raw, mKeepEnds ? EndBehind(lines, index) : std::string_view());
    if (prefix.empty() && IsOwnBytes(text)) return TakeRun(offset, text.size());
  }
  const std::string_view end = mKeepEnds && ours ? EndBehind(lines, index) : std::string_view();
  if (!IsUtf16(mForm) || prefix.empty()) return Put(prefix, Bytes(text), end);
  std::string whole(prefix);
  whole.append(text);
  Put({}, Bytes(whole), end);
}

void SourceStream::Replaced(const CodeLines& lines, std::int32_t index, std::string_view text) {
  const bool ours = mSource && lines.SourceText() == &mSource->Text;
  Put({}, Bytes(text), mKeepEnds && ours ? EndBehind(lines, index) : std::string_view());
}

// Whether a text of the source is in its file as it is here.
bool SourceStream::IsOwnBytes(std::string_view text) const {
  if (HoldsAll(mForm)) return true;
  return !IsUtf16(mForm) && FirstNonAscii(text) == text.size();
}

void SourceStream::TakeRun(std::size_t offset, std::size_t length) {
  const std::string_view end = mHasRun ? EndAt(mSource->Text, mRunEnd) : std::string_view();
  if (!end.empty() && mRunEnd + end.size() == offset && (mKeepEnds || end == kCrLf)) {
    mRunEnd = offset + length;
    ++mLine;
    return;
  }
  BeginLine();
  mHasRun = true;
  mRunBegin = offset;
  mRunEnd = offset + length;
}

void SourceStream::FlushRun() {
  if (!mHasRun || !mSource) return;
  mHasRun = false;
  const std::string_view text = mSource->Text;
  mFile.WriteBytes(text.substr(mRunBegin, mRunEnd - mRunBegin));
  if (!mKeepEnds) return WriteEnd(kCrLf);
  mEnd = EndAt(text, mRunEnd);
  if (!mEnd.empty()) mUsualEnd = mEnd;
}

// The end that the line had in its file. Its length there is not kept with a replaced text, so it
// is looked for from where the line began.
std::string_view SourceStream::EndBehind(const CodeLines& lines, std::int32_t index) const {
  const auto began = lines.SourceOffset(index);
  if (!began) return {};
  const std::string_view text = mSource->Text;
  if (lines.AsRead(index)) return EndAt(text, *began + lines.LineView(index).size());
  return EndAt(text, std::min(text.find_first_of("\r\n", *began), text.size()));
}

std::string_view SourceStream::Bytes(std::string_view text) {
  if (HoldsAll(mForm)) return text;
  if (IsUtf16(mForm)) {
    mEncoded = *Encode(text, mForm);
    return mEncoded;
  }
  if (FirstNonAscii(text) == text.size()) return text;
  mEncoded.clear();
  if (mPage.Encode(text, mEncoded)) return mEncoded;
  Refuse();
}

void SourceStream::Refuse() {
  const DiagnosticScope* scope = DiagnosticScope::Current();
  const std::string file = scope ? scope->File() : mFile.FullPath();
  ReportAt(DiagnosticCode::CharactersNotHeld, file, mLine + 1, {mFile.FullPath(), mPage.Name()});
  throw CharactersRefused(errInvalidArgument, file + ", line " + std::to_string(mLine + 1) +
                                                  ": a character that code page " + mPage.Name() +
                                                  " lacks");
}

void SourceStream::PutRaw(std::string_view prefix, const std::string& raw, std::string_view end) {
  if (!IsUtf16(mForm) || prefix.empty()) return Put(prefix, raw, end);
  Put({}, *Encode(prefix, mForm) + raw, end);
}

void SourceStream::BeginLine() {
  FlushRun();
  if (mLine > 0 && mKeepEnds) WriteEnd(mEnd);
  ++mLine;
}

void SourceStream::Put(std::string_view prefix, std::string_view bytes, std::string_view end) {
  BeginLine();
  if (!prefix.empty()) mFile.WriteBytes(prefix);
  mFile.WriteBytes(bytes);
  mEnd = end;
  if (!mKeepEnds)
    WriteEnd(kCrLf);
  else if (!end.empty())
    mUsualEnd = end;
}

void SourceStream::WriteEnd(std::string_view end) {
  if (end.empty()) end = mUsualEnd;
  if (IsUtf16(mForm))
    mFile.WriteBytes(*Encode(end, mForm));
  else
    mFile.WriteBytes(end);
}

void SourceStream::Finish() try {
  FlushRun();
  if (!mKeepEnds || mLine == 0) return;
  if (mSource->LineEnds.LastLineEnds && !mSource->Text.empty()) WriteEnd(mEnd);
}
VENDREL_CONTEXT_AT(mLine, trace::Field("File", mFile.FullPath()))

}  // namespace vendrel
