#include "services/BinaryText.h"

#include <cstddef>
#include <cstdint>

#include "core/EightBytes.h"

namespace vendrel {
namespace {

// None of the eight is a control character or beyond ASCII.
bool ArePrintableAscii(std::uint64_t eight) {
  return ((eight | (eight - kOnes * 0x20)) & kHighBits) == 0;
}

}  // namespace

// Source has hardly any control characters; of random bytes they are a tenth.
bool LooksBinary(std::string_view text) {
  constexpr std::size_t kFewest = 4, kShare = 20;
  std::size_t odd = 0, characters = 0;
  text = text.substr(0, 1024);
  for (std::size_t at = 0; at < text.size(); ++at) {
    while (at + 8 <= text.size() && ArePrintableAscii(EightAt(text, at))) {
      characters += 8;
      at += 8;
    }
    if (at == text.size()) break;
    const char c = text[at];
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 32 && c != '\t' && c != '\r' && c != '\n' && c != '\f') ++odd;
    if ((byte & 0xC0) != 0x80) ++characters;
  }
  return odd >= kFewest && odd * kShare > characters;
}

}  // namespace vendrel
