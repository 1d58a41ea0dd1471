#include "cli/ShownText.h"

#include <cstdint>
#include <cstdio>

#include "core/Ascii.h"
#include "core/EightBytes.h"
#include "core/Utf8.h"

namespace vendrel::cli {
namespace {

bool IsHidden(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0x2028 || c == 0x2029 ||
         IsDirectionControl(c) || c == IllFormed;
}

bool IsHexadecimal(std::string_view digits, std::size_t count) {
  return digits.size() >= count &&
         digits.substr(0, count).find_first_not_of("0123456789ABCDEFabcdef") == kNotFound;
}

// What stands behind a backslash.
bool ReadsLikeEscape(std::string_view behind) {
  if (behind.empty()) return false;
  switch (behind.front()) {
    case 't':
    case 'n':
    case 'r':
    case 'e': return true;
    case 'x': return IsHexadecimal(behind.substr(1), 2);
    case 'u': return IsHexadecimal(behind.substr(1), 4);
    default: return false;
  }
}

// The end of the run of characters from `at` on that show as they are: blanks, letters and signs of
// ASCII, eight in one step, which is all of most texts.
std::size_t PlainEnd(std::string_view text, std::size_t at) {
  for (; at + 8 <= text.size(); at += 8) {
    const std::uint64_t eight = EightAt(text, at);
    const std::uint64_t controls = eight - kOnes * 0x20;
    if (((eight | controls | MayBe(eight, '\\') | MayBe(eight, 0x7F)) & kHighBits) != 0) break;
  }
  while (at < text.size() && text[at] >= ' ' && text[at] < 0x7F && text[at] != '\\') ++at;
  return at;
}

bool NeedsEscapes(std::string_view text) {
  for (std::size_t i = PlainEnd(text, 0); i < text.size(); i = PlainEnd(text, i)) {
    if (text[i] == '\\' && ReadsLikeEscape(text.substr(i + 1))) return true;
    if (IsHidden(TakeCharacter(text, i))) return true;
  }
  return false;
}

// `bytes` is the character, of which an ill-formed one has no number.
void AppendEscape(std::string& out, char32_t c, std::string_view bytes) {
  switch (c) {
    case '\t': out += "\\t"; return;
    case '\n': out += "\\n"; return;
    case '\r': out += "\\r"; return;
    case 0x1B: out += "\\e"; return;
    default: break;
  }
  const bool isByte = bytes.size() == 1;
  const unsigned number = isByte ? static_cast<unsigned char>(bytes.front()) : c;
  char escape[16];
  std::snprintf(escape, sizeof escape, isByte ? "\\x%02X" : "\\u%04X", number);
  out += escape;
}

// The characters of a text, each with its bytes.
template <typename Visit>
void ForEachCharacter(std::string_view text, Visit visit) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t from = i;
    const char32_t c = TakeCharacter(text, i);
    visit(c, text.substr(from, i - from), text.substr(i));
  }
}

std::string ConstantFor(char32_t c, std::string_view bytes) {
  switch (c) {
    case 0: return "vbNullChar";
    case 8: return "vbBack";
    case '\t': return "vbTab";
    case '\n': return "vbLf";
    case 11: return "vbVerticalTab";
    case 12: return "vbFormFeed";
    case '\r': return "vbCr";
    default: break;
  }
  if (bytes.size() == 1)
    return "Chr$(" + std::to_string(static_cast<unsigned char>(bytes.front())) + ")";
  return "ChrW$(&H" + CodePointName(c).substr(2) + ")";
}

// Of source, which most is: ASCII without control characters. A backslash says nothing there.
bool ShowsAsItIs(std::string_view source) {
  std::size_t at = PlainEnd(source, 0);
  while (at < source.size() && source[at] == '\\') at = PlainEnd(source, at + 1);
  return at == source.size();
}

// Writes a declaration, taking its strings apart where a character cannot stand in them.
class Declaration {
 public:
  explicit Declaration(std::string& out) : mOut(out) {}

  void Write(std::string_view source) {
    while (!source.empty()) {
      std::size_t size = 0;
      const char32_t c = TakeCharacter(source, size);
      const std::string_view bytes = source.substr(0, size);
      source.remove_prefix(size);
      if (c == '"') {
        if (mInString && source.starts_with('"')) {
          mOut += "\"\"";
          mIsEmpty = false;
          source.remove_prefix(1);
        } else {
          Quote();
        }
      } else if (!IsHidden(c)) {
        mOut += bytes;
        mIsEmpty = false;
      } else if (c == '\r' && source.starts_with('\n')) {
        source.remove_prefix(1);
        Constant("vbCrLf", true);
      } else {
        Constant(ConstantFor(c, bytes), c == '\t' || c == '\r' || c == '\n');
      }
    }
  }

 private:
  void Quote() {
    if (mInString && mIsEmpty && mIsReopened)
      mOut.resize(mOut.size() - kReopen.size());
    else
      mOut += '"';
    mInString = !mInString;
    mIsEmpty = true;
    mIsReopened = false;
  }
  void Constant(const std::string& name, bool separates) {
    if (!mInString) {
      mOut += separates ? std::string(" ") : name;
      return;
    }
    if (mIsEmpty)
      mOut.pop_back();
    else
      mOut += "\" & ";
    mOut.append(name).append(kReopen);
    mIsEmpty = mIsReopened = true;
  }

  static constexpr std::string_view kReopen = " & \"";
  std::string& mOut;
  bool mInString = false;
  // Nothing stands behind the last quote; it was written behind a constant.
  bool mIsEmpty = true, mIsReopened = false;
};

}  // namespace

void AppendShown(std::string& out, std::string_view text) {
  if (!NeedsEscapes(text)) {
    out += text;
    return;
  }
  ForEachCharacter(text, [&](char32_t c, std::string_view bytes, std::string_view) {
    if (c == '\\')
      out += "\\\\";
    else if (IsHidden(c))
      AppendEscape(out, c, bytes);
    else
      out += bytes;
  });
}

std::string Shown(std::string_view text) {
  std::string shown;
  AppendShown(shown, text);
  return shown;
}

std::string ShownSource(std::string_view source) {
  if (ShowsAsItIs(source)) return std::string(source);
  std::string shown;
  Declaration(shown).Write(source);
  return shown;
}

std::string CountedWith(std::size_t count, std::string_view singular) {
  return std::to_string(count).append(" ").append(count == 1 ? std::string(singular)
                                                             : PluralOf(singular));
}

std::string PluralOf(std::string_view singular) {
  std::string word(singular);
  if (word.ends_with('s')) return word;
  if (!word.ends_with('y')) return word + "s";
  word.pop_back();
  return word + "ies";
}

std::string SingularOf(std::string_view plural) {
  std::string word(plural);
  if (word.ends_with("ies")) return word.replace(word.size() - 3, 3, "y");
  if (word.ends_with('s')) word.pop_back();
  return word;
}

std::string CountOf(std::size_t count, std::string_view singular) {
  return count == 0 ? std::string() : CountedWith(count, singular);
}

void Cell::AppendTo(std::string& line) const {
  if (IsSource)
    line += Text;
  else
    AppendShown(line, Text);
}

constexpr std::size_t kRoomForRow = 240;  // few are longer

void WriteRow(std::ostream& out, std::initializer_list<Cell> cells, const std::string& further) {
  std::string line;
  line.reserve(kRoomForRow);
  for (const Cell& cell : cells) {
    if (&cell != cells.begin()) line += '\t';
    cell.AppendTo(line);
  }
  if (!further.empty()) {
    line += '\t';
    Cell(further).AppendTo(line);
  }
  line += '\n';
  out.write(line.data(), static_cast<std::streamsize>(line.size()));
}

int TerminalFilter::sync() {
  PassOn(mPending.size());
  mOut.flush();
  return mOut ? 0 : -1;
}

TerminalFilter::int_type TerminalFilter::overflow(int_type c) {
  if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
  const char one = traits_type::to_char_type(c);
  return xsputn(&one, 1) == 1 ? c : traits_type::eof();
}

std::streamsize TerminalFilter::xsputn(const char* text, std::streamsize size) {
  const std::string_view added(text, static_cast<std::size_t>(size));
  const std::size_t end = added.rfind('\n');
  mPending += added;
  if (end != kNotFound) PassOn(mPending.size() - (added.size() - end - 1));
  return mOut ? size : 0;
}

void TerminalFilter::PassOn(std::size_t size) {
  std::string shown;
  const std::string_view text = std::string_view(mPending).substr(0, size);
  ForEachCharacter(text, [&](char32_t c, std::string_view bytes, std::string_view behind) {
    const bool isLayout = c == '\t' || c == '\n' || (c == '\r' && behind.starts_with('\n'));
    if (IsHidden(c) && !isLayout)
      AppendEscape(shown, c, bytes);
    else
      shown += bytes;
  });
  mPending.erase(0, size);
  mOut << shown;
}

}  // namespace vendrel::cli
