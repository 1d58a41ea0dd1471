#include "text/StartLine.h"

#include "core/Ascii.h"
#include "text/StopBytes.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// 0-based byte position of the last character of a text that is not empty.
std::size_t LastCharacter(std::string_view text) {
  std::size_t at = text.size() - 1;
  while (at > 0 && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) --at;
  return at;
}

// The last three words of a line; what the line lacks is empty.
struct LastWords {
  std::string_view BeforeAs, As, Type;
};

std::string_view TakeLastWord(std::string_view& text) {
  text = TrimRight(text);
  const std::size_t blank = text.rfind(' ');
  const std::string_view word = blank == kNotFound ? text : text.substr(blank + 1);
  text.remove_suffix(word.size());
  return word;
}

LastWords LastWordsOf(std::string_view text) {
  LastWords words;
  words.Type = TakeLastWord(text);
  words.As = TakeLastWord(text);
  words.BeforeAs = TakeLastWord(text);
  return words;
}

bool Holds(std::string_view text, char c) { return text.find(c) != kNotFound; }

ReturnTypeText LastAsType(std::string_view text) {
  ReturnTypeText result;
  const LastWords words = LastWordsOf(text.substr(0, text.find('\'')));
  if (!EqualsNoCaseAscii(words.As, "AS")) return result;
  if (Holds(words.Type, ')') && !Holds(words.BeforeAs, ')')) return result;
  result.ReturnType = words.Type;
  result.IsArray = words.Type.ends_with("()");
  if (result.IsArray)
    result.ReturnType.remove_suffix(2);
  else if (words.Type.ends_with(')'))
    result.ReturnType.remove_suffix(1);
  return result;
}

// A start line cut at its parameter list: what stands before, between and behind the parentheses.
struct CutLine {
  std::string_view Head, Parameters, Tail;
  bool HasParentheses = false;
};

// Walks the code of the line once; strings are skipped, a comment ends it.
CutLine CutAtParameters(std::string_view text) {
  std::size_t open = kNotFound, close = kNotFound, end = text.size();
  static constexpr StopBytes kStops("\"'()");
  int depth = 0;
  for (std::size_t at = kStops.Next(text, 0); at < text.size(); at = kStops.Next(text, at + 1)) {
    const char c = text[at];
    if (c == '"') {
      at = text.find('"', at + 1);
      if (at == kNotFound) break;
    } else if (c == '\'') {
      end = at;
      break;
    } else if (c == '(') {
      if (open == kNotFound) open = at;
      ++depth;
    } else if (c == ')' && --depth == 0 && close == kNotFound) {
      close = at;
    }
  }
  CutLine cut;
  if (open == kNotFound) {
    cut.Head = text.substr(0, end);
    return cut;
  }
  cut.HasParentheses = true;
  cut.Head = text.substr(0, open);
  if (close == kNotFound) close = end;
  cut.Parameters = text.substr(open + 1, close - open - 1);
  if (close < end) cut.Tail = text.substr(close + 1, end - close - 1);
  return cut;
}

// The type behind the first word "As" of a declaration without parameter list.
ReturnTypeText TypeBehindAs(std::string_view text) {
  ReturnTypeText result;
  WordCursor cursor(text, true);
  std::string_view word;
  while (cursor.Next(word) && !EqualsNoCaseAscii(word, "AS")) continue;
  if (!cursor.Next(word) || (EqualsNoCaseAscii(word, "NEW") && !cursor.Next(word))) return result;
  result.ReturnType = word;
  result.IsArray = word.ends_with("()") || (cursor.Next(word) && word == "()");
  if (result.ReturnType.ends_with("()")) result.ReturnType.remove_suffix(2);
  return result;
}

// Suffix of the name that ends `head`; the name stands in front of a possible "As".
std::string_view SuffixType(std::string_view head) {
  const std::size_t as = FindNoCaseAscii(head, " as ");
  return TypeFromName(as == kNotFound ? head : head.substr(0, as));
}

ReturnTypeText LastParameterType(std::string_view parameters) {
  std::string_view last;
  SplitCursor cursor(parameters, ",", true);
  for (std::string_view piece; cursor.Next(piece);) last = piece;
  const std::size_t defaultValue = last.find('=');
  last = TrimRight(last.substr(0, defaultValue));
  ReturnTypeText result = TypeBehindAs(last);
  const std::string_view name = Trim(last.substr(0, FindNoCaseAscii(last, " as ")));
  if (name.ends_with("()")) {
    result.IsArray = true;
    if (result.ReturnType.empty())
      result.ReturnType = TypeFromName(name.substr(0, name.size() - 2));
  } else if (result.ReturnType.empty()) {
    result.ReturnType = TypeFromName(name);
  }
  return result;
}

enum class ProcedureWord { Sub, Function, Get, Assign, None };

// The procedure keyword among the words in front of the name.
ProcedureWord ProcedureWordOf(std::string_view head) {
  WordCursor cursor(head);
  for (std::string_view word; cursor.Next(word);) {
    if (EqualsNoCaseAscii(word, "SUB")) return ProcedureWord::Sub;
    if (EqualsNoCaseAscii(word, "FUNCTION")) return ProcedureWord::Function;
    if (!EqualsNoCaseAscii(word, "PROPERTY")) continue;
    if (!cursor.Next(word)) return ProcedureWord::None;
    return EqualsNoCaseAscii(word, "GET") ? ProcedureWord::Get : ProcedureWord::Assign;
  }
  return ProcedureWord::None;
}

ReturnTypeText SignatureType(std::string_view text) {
  const CutLine cut = CutAtParameters(text);
  const ProcedureWord kind = ProcedureWordOf(cut.Head);
  if (kind == ProcedureWord::Sub) return {{}, false, false};
  if (kind == ProcedureWord::Assign) return LastParameterType(cut.Parameters);
  ReturnTypeText result = TypeBehindAs(cut.Tail);
  if (!result.ReturnType.empty()) return result;
  result = TypeBehindAs(cut.Head);  // no parameter list: parentheses belong to the type
  if (!result.ReturnType.empty()) result.IsArray |= cut.HasParentheses;
  if (result.ReturnType.empty()) result.ReturnType = SuffixType(cut.Head);
  return result;
}

}  // namespace

std::string_view GetName(std::string_view Text) {
  if (Text.empty()) return {};
  std::size_t at = Text.find('(');
  if (at == kNotFound) at = FindNoCaseAscii(Text, "as");
  if (at == kNotFound) at = LastCharacter(Text);
  const std::size_t blank = at < 2 ? kNotFound : Text.rfind(' ', at - 2);
  const std::size_t start = blank == kNotFound ? 0 : blank + 1;
  return Trim(Text.substr(start, at - start));
}

ReturnTypeText GetReturnType(std::string_view Text, LanguageVersionEnum Language,
                             bool completeReading) {
  if (Language == lvVisualBasicDotNet) return {};
  return completeReading ? SignatureType(Text) : LastAsType(Text);
}

std::string_view TypeFromName(std::string_view Text) {
  Text = TrimRight(Text);
  if (Text.empty()) return {};
  switch (Text.back()) {
    case '%': return "Integer";
    case '&': return "Long";
    case '!': return "Single";
    case '#': return "Double";
    case '@': return "Currency";
    case '$': return "String";
    default: return {};
  }
}

AccessTypeEnum AccessTypeFromstring(std::string_view Access) {
  if (EqualsNoCaseAscii(Access, "PUBLIC")) return atPublic;
  if (EqualsNoCaseAscii(Access, "FRIEND")) return atFriend;
  return atPrivate;
}

}  // namespace vendrel
