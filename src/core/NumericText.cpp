#include "core/NumericText.h"

#include "core/Ascii.h"

namespace vendrel {

std::int32_t NumericValue(std::string_view text) {
  text = Trim(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  std::int64_t value = 0;
  for (const char c : text) {
    if (!IsDigitAscii(c)) break;
    value = value * 10 + (c - '0');
    if (value > 0x80000000LL) value = 0x80000000LL;
  }
  if (negative) return static_cast<std::int32_t>(-value);
  return static_cast<std::int32_t>(value > 0x7FFFFFFFLL ? 0x7FFFFFFFLL : value);
}

}  // namespace vendrel
