// Pattern and text, one a line. Every text that holds no special character matches itself.

#include <cstdlib>

#include "Support.h"
#include "core/Utf8.h"
#include "diagnostics/VendrelError.h"
#include "text/Like.h"

using namespace vendrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = fuzz::Text(data, size);
  if (!IsValidUtf8(input)) return 0;  // texts in memory always are
  const std::size_t end = input.find('\n');
  const std::string_view pattern = input.substr(0, end);
  const std::string_view text = end == std::string_view::npos ? "" : input.substr(end + 1);
  try {
    const bool plain = pattern.find_first_of("*?#[") == std::string_view::npos;
    if (Like(text, pattern) != (text == pattern) && plain) std::abort();
    if (!LikeNoCase(text, "*")) std::abort();
    LikeNoCase(text, pattern);
  } catch (const VendrelError&) {
    // A pattern that is none.
  }
  return 0;
}
