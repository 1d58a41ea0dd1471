#pragma once
#include <array>
#include <cstddef>
#include <string_view>

namespace vendrel {

/// Lists of words stand as one text each, cut at compile time.
constexpr std::size_t CountWords(std::string_view text) {
  std::size_t count = 1;
  for (const char c : text) count += c == ' ';
  return count;
}

template <std::size_t Count>
constexpr std::array<std::string_view, Count> WordsOf(std::string_view text) {
  std::array<std::string_view, Count> words;
  for (std::string_view& word : words) {
    word = text.substr(0, text.find(' '));
    text.remove_prefix(word.size() < text.size() ? word.size() + 1 : word.size());
  }
  return words;
}

}  // namespace vendrel
