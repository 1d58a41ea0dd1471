#include "services/BinaryText.h"

#include <cstddef>

namespace vendrel {

// Source has hardly any control characters; of random bytes they are a tenth.
bool LooksBinary(std::string_view text) {
  constexpr std::size_t kFewest = 4, kShare = 20;
  std::size_t odd = 0, characters = 0;
  for (const char c : text.substr(0, 1024)) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 32 && c != '\t' && c != '\r' && c != '\n' && c != '\f') ++odd;
    if ((byte & 0xC0) != 0x80) ++characters;
  }
  return odd >= kFewest && odd * kShare > characters;
}

}  // namespace vendrel
