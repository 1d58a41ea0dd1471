#pragma once
// The bytes beyond ASCII of files whose code page is not known, and what speaks for each page.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace vendrel {

/// A code page and why it is that one.
struct CodePageGuess {
  /// As `CodePage::Find` takes it.
  std::string Page;
  /// For people: "310 characters of two bytes, none invalid". Empty where nothing speaks for it.
  std::string Evidence;
};

/// The lines with bytes beyond ASCII of any number of files, up to a limit that no text needs.
class TellingBytes {
 public:
  /// Takes what tells something: ASCII, UTF-8 and UTF-16 files, and lines that are UTF-8 or no
  /// text, are passed over.
  void Feed(std::string_view bytes);
  /// Takes what those of a single file took, as if that file were fed; false, with nothing taken,
  /// where the limit would tell the difference.
  bool Add(const TellingBytes& ofFile);

  /// Whether the limit is reached: nothing more is taken.
  bool IsFull() const;
  /// How many bytes the lines have that were taken.
  std::size_t Size() const { return mLines.size(); }
  /// How many bytes beyond ASCII were taken.
  std::size_t Count() const { return mCount; }
  /// Whether they are so few that another text of the same machine tells more.
  bool IsFew() const;
  /// Whether `page` may well be that of these bytes: it has them all, as letters of its script.
  bool Fit(std::string_view page) const;

  /// The page for which most speaks, of those `among`; of all if none are given. A page that lacks
  /// bytes is none. Where nothing tells, and for guesses that no Visual Basic machine ever had, the
  /// default page.
  CodePageGuess Choose(std::span<const std::string> among = {}) const;

 private:
  void TakeLine(std::string_view line);
  std::string ByPairs(std::span<const std::string> among, std::string& evidence) const;
  std::string ByLetters(std::span<const std::string> among) const;
  std::string Detected() const;
  std::size_t Undefined(std::string_view page) const;

  std::string mLines;
  std::size_t mCount = 0;
  /// Bytes that stand beside an ASCII letter, as accented ones do.
  std::size_t mBesideLetters = 0;
};

}  // namespace vendrel
