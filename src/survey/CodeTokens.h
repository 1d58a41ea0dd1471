#pragma once
// The code of a logical line as words and signs.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vendrel {

enum class CodeTokenKind : std::uint8_t { Word, Number, Text, Date, Sign };

struct CodeToken {
  CodeTokenKind Kind = CodeTokenKind::Sign;
  /// Of a word in lower case, a final "$" included; of others as it stands.
  std::string Text;
  /// It begins a statement: at the front, behind a label or colon, Then or Else.
  bool IsFirst = false;
  /// Nothing stands between it and the token in front.
  bool IsJoined = false;

  bool Is(std::string_view text) const { return Text == text; }
  bool IsWord() const { return Kind == CodeTokenKind::Word; }
};

/// Cuts a logical line without its comment; `tokens` is emptied first. Words are compared in ASCII.
void CutCode(std::string_view line, std::vector<CodeToken>& tokens);

}  // namespace vendrel
