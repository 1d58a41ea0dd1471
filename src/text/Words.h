#pragma once
// Cutting text into words and lists. The pieces are views of the text that was cut, which must
// outlive them. Cutting text that holds line-sized input needs no memory when a cursor is used.

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vendrel {

/// Walks the pieces of a text between delimiters that stand outside string literals, and outside
/// names in brackets where that is asked for.
class SplitCursor {
 public:
  /// An empty delimiter is never found.
  SplitCursor(std::string_view source, std::string_view delimiter, bool removeDelimiter,
              bool wholeNames = false)
      : mRest(source),
        mDelimiter(delimiter),
        mRemove(removeDelimiter),
        mWholeNames(wholeNames),
        mIsPlain(delimiter.size() == 1 && delimiter != "\"" && !Holds(source, '"') &&
                 !(wholeNames && Holds(source, '['))) {}
  /// The next piece, with its delimiter unless that is removed; false at the end. Adjacent
  /// delimiters give empty pieces, a delimiter at the end of the text does not.
  bool Next(std::string_view& piece);
  /// What has not been walked yet.
  std::string_view Rest() const { return mRest; }

 private:
  std::string_view mRest;
  std::string_view mDelimiter;
  bool mRemove;
  bool mWholeNames;
  bool mIsPlain;  // nothing in the text can hide a delimiter

  static bool Holds(std::string_view text, char c) {
    return text.find(c) != std::string_view::npos;
  }
};

/// Walks the words between blanks, leaving out empty ones. A name in brackets counts as one word
/// where that is asked for.
class WordCursor {
 public:
  explicit WordCursor(std::string_view text, bool wholeNames = false)
      : mRest(text), mWholeNames(wholeNames && text.find('[') != std::string_view::npos) {}
  bool Next(std::string_view& word);

 private:
  std::string_view mRest;
  bool mWholeNames;
};

/// Length of the first word of `text`: up to the first blank outside of brackets. A bracket that
/// nothing closes is a character like any other.
std::size_t WordEnd(std::string_view text);
/// Where the name in brackets that begins at `at` ends: behind its "]"; `at` if nothing closes it.
std::size_t BracketEnd(std::string_view text, std::size_t at);

/// All pieces of a `SplitCursor`.
std::vector<std::string_view> SplitEx(std::string_view Source, std::string_view Delimeter,
                                      bool RemoveDelimeter);

/// Tokens for colouring: every character of "() .,;" outside strings is an element of its own, and
/// before each stands the text in front of it, even if that is empty.
std::vector<std::string_view> SplitCode(std::string_view Source);

/// The non-empty words of `text`, cut at blanks; as views and as strings.
std::vector<std::string_view> TrimmedWords(std::string_view text);
std::vector<std::string> TrimmedCollectionFromstring(std::string_view text);

/// `text` without a double quote at its start and without one at its end, each independently.
std::string_view StripQuotes(std::string_view text);

/// Names and values of a list "name=value, name=value": trimmed, values without outer quotes. Items
/// without "=" are dropped; the first of a name (case ignored) wins. A value cannot hold a comma.
std::vector<std::pair<std::string, std::string>> GetParameters(std::string_view Source);

}  // namespace vendrel
