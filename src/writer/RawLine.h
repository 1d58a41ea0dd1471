#pragma once
// Parts of a line whose bytes do not follow from its text.

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "services/SourceText.h"

namespace vendrel {

/// Where in the bytes of a line each character of its text begins: an entry for each byte of the
/// text, that of its first one repeated, and one for the end. Nothing where the bytes are not those
/// of the text.
std::optional<std::vector<std::size_t>> BytePositions(std::string_view text, std::string_view bytes,
                                                      const TextForm& form);

}  // namespace vendrel
