#pragma once
// What becomes of one line of a file that is otherwise kept: parts of it replaced, or all of it.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "writer/SourceStream.h"

namespace vendrel {

/// A part of a text: 0-based position of its first byte, and its length.
struct Region {
  std::size_t Begin = 0, Length = 0;

  std::string_view Of(std::string_view text) const { return text.substr(Begin, Length); }
  /// Without the blanks at its ends.
  Region Trimmed(std::string_view text) const;
  /// Without a quotation mark at each end; as it is unless both are there.
  Region WithoutQuotes(std::string_view text) const;
};

/// Length in bytes of what two texts have in common at their ends, of whole characters.
std::size_t CommonEnd(std::string_view a, std::string_view b);
/// Whether a text has a character that stands for bytes which mean nothing.
bool HoldsReplacement(std::string_view text);

/// Changes to one line. What they leave alone keeps its bytes.
class LineEdit {
 public:
  /// Puts another text in the place of a part. Parts do not overlap.
  void Replace(Region part, std::string text) { mParts.push_back({part, std::move(text)}); }
  void ReplaceAll(std::string text) { mWhole = std::move(text); }
  void Drop() { mDrops = true; }

  /// Writes what the line becomes. `raw`: its bytes where they do not follow from its text. Raises
  /// `CharactersRefused` where what is new cannot be held.
  void Write(SourceStream& stream, const TextForm& form, std::string_view text,
             const std::string* raw, std::string_view end);

 private:
  struct Part {
    Region Place;
    std::string Text;
  };
  std::string Edited(std::string_view text) const;
  std::string EditedBytes(SourceStream& stream, const TextForm& form, std::string_view text,
                          const std::string& raw) const;

  bool mDrops = false;
  std::optional<std::string> mWhole;
  std::vector<Part> mParts;
};

}  // namespace vendrel
