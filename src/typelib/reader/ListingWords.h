#pragma once
// Words for the bits of a library, as IDL writes them.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vendrel::typelib {

struct FlagWord {
  std::uint32_t Bit;
  const char* Word;
};

std::span<const FlagWord> LibraryFlagWords();
std::span<const FlagWord> TypeFlagWords();
std::span<const FlagWord> FunctionFlagWords();
std::span<const FlagWord> VariableFlagWords();
std::span<const FlagWord> ImplementedFlagWords();
std::span<const FlagWord> ParameterFlagWords();

/// The words of the bits set; bits without a word as one hexadecimal number.
std::vector<std::string> FlagTexts(std::uint32_t bits, std::span<const FlagWord> words);

/// "0x" and hexadecimal digits in lower case.
std::string HexText(std::uint32_t number);
/// Between quotes, with backslashes before quotes, backslashes and control characters.
std::string QuotedText(std::string_view text);

}  // namespace vendrel::typelib
