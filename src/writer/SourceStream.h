#pragma once
// Lines on their way into a file. A line that still is what was read goes out with the bytes that
// it was read from; any other one is encoded as its file was.

#include <string>
#include <string_view>

#include "services/FileSystemObject.h"
#include "text/CodeLines.h"

namespace vendrel {

/// A line that the code page of its file cannot hold. Told as a diagnostic where it is raised.
class CharactersRefused : public VendrelError {
 public:
  using VendrelError::VendrelError;
};

/// The line end that begins at `offset` of a text; empty if none does.
std::string_view EndAt(std::string_view text, std::size_t offset);

/// Writes lines to an open file.
class SourceStream {
 public:
  /// `source` is the file that was read, null for a new one. With `keepEnds` lines have its line
  /// ends, else CR LF throughout.
  SourceStream(FileSystemObject& file, TextForm form, const SourceText* source, bool keepEnds);

  /// A line that no file had; `end` is that of the line it stands for, empty: the usual one.
  void Line(std::string_view text, std::string_view end = {}) { Put({}, Bytes(text), end); }
  /// A line of a list, behind `prefix`.
  void Line(const CodeLines& lines, std::int32_t index, std::string_view prefix = {});
  /// The same line with another text.
  void Replaced(const CodeLines& lines, std::int32_t index, std::string_view text);
  /// A line as it stood in the file, given by the bytes that it was read from.
  void Raw(std::string_view bytes, std::string_view end = {}) { Put({}, bytes, end); }
  /// The bytes of a text in this file, valid until the next call. Raises `CharactersRefused`.
  std::string_view Bytes(std::string_view text);
  /// Tells that a line holds what the code page of its file lacks, and raises it.
  [[noreturn]] void Refuse();
  /// The rest, and the end of the last line; nothing where the file that was read had none.
  void Finish();
  /// 1-based number of the line that was begun last; 0 before the first.
  std::int32_t LineNumber() const { return mLine; }

 private:
  std::string_view EndBehind(const CodeLines& lines, std::int32_t index) const;
  bool IsOwnBytes(std::string_view text) const;
  void TakeRun(std::size_t offset, std::size_t length);
  void FlushRun();
  void PutRaw(std::string_view prefix, const std::string& raw, std::string_view end);
  void Put(std::string_view prefix, std::string_view bytes, std::string_view end);
  void BeginLine();
  void WriteEnd(std::string_view end);

  FileSystemObject& mFile;
  const TextForm mForm;
  const CodePage& mPage;
  const SourceText* mSource;
  const bool mKeepEnds;
  std::string mEncoded;
  /// Of the line written last, which has no end yet: what follows decides. Empty: as the others.
  std::string_view mEnd;
  std::string_view mUsualEnd = "\r\n";
  std::int32_t mLine = 0;
  /// Lines that stand one behind the other in the source are written at once: where they begin
  /// there and where the last of them ends, its line end not counted.
  bool mHasRun = false;
  std::size_t mRunBegin = 0, mRunEnd = 0;
};

}  // namespace vendrel
