#pragma once
// Code pages: what bytes beyond ASCII meant on the machine where a file was written.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vendrel {

class TellingBytes;

/// One code page, made at its first use and kept for the life of its workspace.
class CodePage {
 public:
  ~CodePage();
  CodePage(const CodePage&) = delete;
  CodePage& operator=(const CodePage&) = delete;

  /// By number ("1251"), with or without "cp" or "windows-", or by a name that the C library knows
  /// ("shift_jis"); letter case ignored. nullptr if there is none, or if it does not hold ASCII.
  static const CodePage* Find(std::string_view name);
  /// The same, raising 5 for an unknown name.
  static const CodePage& Named(std::string_view name);
  /// windows-1252.
  static const CodePage& Default();

  /// Its one name, for messages and for `Find`: "windows-1251", "cp932".
  const std::string& Name() const { return mName; }

  /// Appends `bytes` as UTF-8. A byte that means nothing becomes its control character where it is
  /// below hex A0 (the holes of windows-1252), else U+FFFD. False if encoding the result would not
  /// give `bytes` again.
  bool Decode(std::string_view bytes, std::string& out) const;
  /// How many of `bytes` come out as control characters beyond ASCII or as U+FFFD.
  std::size_t CountUndefined(std::string_view bytes) const;
  /// Appends the bytes of `utf8`. False, with `out` as it was, if a character has none.
  bool Encode(std::string_view utf8, std::string& out) const;

 private:
  struct Tables;
  struct Converters;
  struct PageStore;
  CodePage(std::string name, const std::string& systemName);
  bool HoldsAscii() const;
  bool DecodeByConverter(std::string_view bytes, std::string& out) const;
  bool EncodeByConverter(std::string_view utf8, std::string& out) const;

  std::string mName;
  /// Of pages with one byte a character; empty for others, which have converters.
  std::unique_ptr<Tables> mTables;
  std::unique_ptr<Converters> mConverters;
};

/// What files are read and written with where they do not tell it themselves. The reader of a
/// project sets it.
struct FileOptions {
  /// Name of a code page. Empty, "auto" and unknown names count as windows-1252: a guess is made
  /// once a project, by `GuessCodePage`, and its result put here.
  std::string CodePage;

  const vendrel::CodePage& Page() const;
  static FileOptions& Current();
};

/// Chooses a code page: the one asked for, or a guess over all files shown that are neither ASCII
/// nor UTF-8. `GuessCodePage` knows more of a project than its bytes.
class CodePageChooser {
 public:
  /// A name, or "auto" (any letter case) for the guess; empty for windows-1252. Raises 5 for an
  /// unknown name.
  explicit CodePageChooser(std::string_view option);
  ~CodePageChooser();
  CodePageChooser(const CodePageChooser&) = delete;
  CodePageChooser& operator=(const CodePageChooser&) = delete;

  /// Whether bytes are of use: the option is "auto".
  bool Guesses() const { return mBytes != nullptr; }
  /// Shows the bytes of one file; ASCII, UTF-8 and UTF-16 ones are passed over.
  void Feed(std::string_view bytes);
  /// Name of the page chosen. Guesses that no Visual Basic machine ever had count as windows-1252.
  std::string Choose() const;

 private:
  std::string mName;
  std::unique_ptr<TellingBytes> mBytes;
};

}  // namespace vendrel
