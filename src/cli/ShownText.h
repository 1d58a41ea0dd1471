#pragma once
// Text that comes from files, on its way to people: what would move a cursor, ring a bell, turn the
// writing round or end a column is written out. Whatever a command writes that is neither JSON, XML
// nor source itself goes through here.

#include <initializer_list>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace vendrel::cli {

/// Appends a name, value or path on one line: control characters as \t \n \r \e, others below 128
/// and bytes of no character as \xNN, beyond (line separators and controls of direction too) as
/// \uNNNN. Backslashes are doubled in a text in which something is written out or that holds what
/// reads like it, and in no other: paths in Windows form stay readable, and nothing has two
/// meanings.
void AppendShown(std::string& out, std::string_view text);
std::string Shown(std::string_view text);

/// A declaration on one line, as source could have it: a control character in a string becomes
/// `" & vbTab & "` (vbCrLf, Chr$(27), ChrW$(&H202E) ...); outside, what separates words is a blank.
std::string ShownSource(std::string_view source);

/// "0 modules", "1 module", "2 properties".
std::string CountedWith(std::size_t count, std::string_view singular);
/// "modules", "properties"; a word that ends in "s" stays.
std::string PluralOf(std::string_view singular);
/// "module", "property"; of a word without "s" the word.
std::string SingularOf(std::string_view plural);
/// A count with its word; empty for none.
std::string CountOf(std::size_t count, std::string_view singular);

/// One column of a table.
struct Cell {
  Cell(std::string_view text, bool isSource = false) : Text(text), IsSource(isSource) {}
  Cell(const std::string& text) : Cell(std::string_view(text)) {}
  Cell(const char* text) : Cell(std::string_view(text)) {}
  std::string_view Text;
  void AppendTo(std::string& line) const;
  /// What `ShownSource` gave; nothing is left to write out.
  bool IsSource;
};

/// Writes one line of a table, tabs between its columns; `further` is one more at the end unless it
/// is empty.
void WriteRow(std::ostream& out, std::initializer_list<Cell> cells,
              const std::string& further = {});

/// Source on its way to a terminal: tabs and line ends stay, other controls are written out; no
/// backslash is doubled. Passes on what it has when a line ends, and the rest in `sync`.
class TerminalFilter final : public std::streambuf {
 public:
  explicit TerminalFilter(std::ostream& out) : mOut(out) {}

 private:
  int sync() override;
  int_type overflow(int_type c) override;
  std::streamsize xsputn(const char* text, std::streamsize size) override;
  void PassOn(std::size_t size);

  std::ostream& mOut;
  std::string mPending;
};

}  // namespace vendrel::cli
