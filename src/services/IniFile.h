#pragma once
// Files of settings in sections, as programs of Windows keep them.

#include <cstddef>
#include <string>
#include <string_view>

namespace vendrel {

/// Reads values from the text of one file:
///     [Section]
///     Key = value
/// Names are compared without regard to case, and blanks around names and values do not count. Of
/// several sections or keys of one name the first one holds. A line that begins with ";" is a
/// comment; a line that cannot be read says nothing.
class IniFile {
 public:
  /// `text` must outlive the object.
  explicit IniFile(std::string_view text) : mText(text) {}

  /// The value, without the quotes (either kind) that enclose it whole. Empty where section or key
  /// is missing. Cut to `buffer` - 1 characters.
  std::string Value(std::string_view section, std::string_view key,
                    std::size_t buffer = kBuffer) const;

  /// Characters that a read of one value has room for, its end included.
  static constexpr std::size_t kBuffer = 1024;

 private:
  std::string_view mText;
};

}  // namespace vendrel
