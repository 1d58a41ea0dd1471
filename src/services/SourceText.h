#pragma once
// One file, decoded once. Everything above works on its text; whoever writes it back finds here
// what the file was: encoding, line ends, and the bytes of lines that its encoding could not
// explain.

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "services/CodePage.h"

namespace vendrel {

enum class TextEncoding : std::uint8_t { Ascii, Utf8, Utf8Bom, Utf16LE, Utf16BE, CodePage };

/// Which line ends a text has.
struct LineEnds {
  enum class Kind : std::uint8_t { None, CrLf, Lf, Cr, Mixed };
  Kind Form = Kind::None;
  /// Whether the last line has an end. True for an empty text.
  bool LastLineEnds = true;

  /// Whether each line ends in LF, or each in CR LF.
  bool AreAlike() const { return Form == Kind::CrLf || Form == Kind::Lf; }
};

/// How text stands in a file.
struct TextForm {
  TextEncoding Encoding = TextEncoding::Ascii;
  /// Name of the code page: of the file, or for `Ascii` the one in which characters beyond ASCII
  /// would be written. Empty for the page in force.
  std::string CodePageName;
};

/// One decoded file. Immutable once made; views into `Text` are valid as long as it lives.
struct SourceText : TextForm {
  /// UTF-8, always valid, line ends as they were; without a byte order mark.
  std::string Text;
  vendrel::LineEnds LineEnds;
  /// The text holds a NUL, which no source has.
  bool HasNul = false;
  /// Lines whose text does not encode back to what was read: position of their start in `Text`
  /// (0-based, bytes) to the bytes read, without the line end.
  std::map<std::size_t, std::string> RawLines;

  /// The bytes of the line that starts at `offset` of `Text`, if its text does not give them.
  const std::string* RawLine(std::size_t offset) const {
    const auto found = RawLines.find(offset);
    return found == RawLines.end() ? nullptr : &found->second;
  }

  /// By byte order mark; else UTF-8 if that is what it is; else by `page`. No bytes are refused.
  static std::shared_ptr<const SourceText> Decode(std::string bytes, const CodePage& page);
  /// The file at a native path, from the `SourceCache` where it has been read. Raises as
  /// `ReadWholeFile` does.
  static std::shared_ptr<const SourceText> Read(
      const std::string& nativePath, const CodePage& page = FileOptions::Current().Page());
};

/// What stands before the text of a file of that form; often empty.
std::string_view ByteOrderMark(const TextForm& like);

/// The bytes of a text, or part of one, in a file of that form, without byte order mark. Nothing if
/// a character cannot be held.
std::optional<std::string> Encode(std::string_view utf8, const TextForm& like);

/// The code page in which a file of that form is written.
const CodePage& PageOf(const TextForm& like);

/// Takes a line off the front of `rest`, without its end (CR LF, LF or CR). `ends` may tell what
/// the text has; `Mixed` always works.
std::string_view TakeLine(std::string_view& rest, LineEnds::Kind ends = LineEnds::Kind::Mixed);

}  // namespace vendrel
