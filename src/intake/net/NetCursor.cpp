#include "intake/net/NetCursor.h"

#include "intake/net/NetWords.h"
#include "text/Identifiers.h"
#include "text/Separators.h"
#include "text/StartLine.h"
#include "text/Words.h"
#include "text/net/XmlLiterals.h"

namespace vendrel {
namespace {

// Behind the text or XML literal that begins at `at`; `at` if none does.
std::size_t LiteralEnd(std::string_view text, std::size_t at) {
  if (text[at] == '"') {
    const bool interpolated = at > 0 && text[at - 1] == '$';
    return interpolated ? InterpolatedEnd(text, at) : StringEnd(text, at);
  }
  if (text[at] == '[') return BracketEnd(text, at);
  return at;
}

}  // namespace

void NetCursor::SkipAttributes() {
  if (Here() == '<' || Here() == ' ' || Here() == '\t')
    Skip(Rest().size() - NetWords(Rest()).Rest().size());
}

std::string_view NetCursor::Word() {
  std::size_t end = mAt;
  if (Here() == '[')
    end = std::max(BracketEnd(mText, mAt), mAt);
  else
    while (end < mText.size() && IsWordByte(mText[end])) ++end;
  const std::string_view word(mText.data() + mAt, end - mAt);
  mAt = end;
  SkipBlanks();
  return word;
}

bool NetCursor::TakeWord(std::string_view keyword) {
  if (UpperAscii(Here()) != UpperAscii(keyword.front())) return false;
  const std::size_t at = mAt;
  if (EqualsNoCaseAscii(Word(), keyword)) return true;
  mAt = at;
  return false;
}

bool NetCursor::Take(char c) {
  if (Here() != c) return false;
  Skip(1);
  return true;
}

// Goes on to the first character at which `ends` holds, which gets it and how many lists are open
// in front of it; what stands in literals is passed over.
template <typename Ends>
void NetCursor::GoTo(Ends ends) {
  for (int depth = 0; !AtEnd();) {
    if (const std::size_t literal = LiteralEnd(mText, mAt); literal > mAt) {
      mAt = literal;
      continue;
    }
    if (ends(Here(), depth)) return;
    if (Here() == '(' || Here() == '{') ++depth;
    if (Here() == ')' || Here() == '}') --depth;
    ++mAt;
  }
}

std::string_view NetCursor::Group() {
  const std::size_t begin = mAt + 1;
  GoTo([](char c, int depth) { return (c == ')' || c == '}') && depth == 1; });
  const std::string_view group = mText.substr(begin, mAt - begin);
  Skip(1);
  return Trim(group);
}

std::string_view NetCursor::Expression() {
  const std::size_t begin = mAt;
  GoTo([](char c, int depth) { return c == ',' && depth <= 0; });
  return Trim(mText.substr(begin, mAt - begin));
}

std::string_view NetCursor::Type() {
  const std::size_t begin = mAt;
  if (Here() == '(')
    Group();  // a tuple
  else
    Word();
  for (;;) {
    if (Here() == '.') {
      Skip(1);
      Word();
    } else if (Here() == '?') {
      Skip(1);
    } else if (Here() == '(' && BelongsToType()) {
      Group();
    } else {
      return Trim(mText.substr(begin, mAt - begin));
    }
  }
}

// A list of types or the mark of an array, and no arguments.
bool NetCursor::BelongsToType() const {
  NetCursor inside(mText.substr(mAt));
  const std::string_view group = inside.Group();
  NetCursor words(group);
  return words.TakeWord("of") || group.find_first_not_of(", ") == kNotFound;
}

std::string NetCursor::Name(std::string& type) {
  const std::string_view name = Word();
  const std::string_view suffix = Rest().substr(0, 1);
  if (!suffix.empty() && suffix != "?" && !name.starts_with('[')) {
    type = TypeFromName(suffix);
    if (!type.empty()) Skip(1);
  }
  return std::string(WithoutBrackets(name));
}

std::string_view NetCursor::Subscripts(std::string& marks) {
  const std::string_view first = Group();
  while (Here() == '(') marks.append("(").append(Group()).append(")");
  return first;
}

std::vector<std::string_view> NetList(std::string_view text) {
  std::vector<std::string_view> parts;
  NetCursor cursor(text);
  while (!cursor.AtEnd()) {
    parts.push_back(cursor.Expression());
    cursor.Take(',');
  }
  return parts;
}

bool CutArray(std::string_view& type) {
  if (!type.ends_with(')')) return false;
  const std::size_t open = type.rfind('(');
  if (open == kNotFound || type.find_first_not_of(", ", open + 1) != type.size() - 1) return false;
  type = TrimRight(type.substr(0, open));
  return true;
}

std::string TypeOfTuple(std::string_view written, int depth) {
  constexpr int kDeepest = 16;
  NetCursor cursor(written);
  if (cursor.Here() != '(') return std::string(written);
  if (depth > kDeepest) return "System.Object";
  std::string type;
  for (const std::string_view part : NetList(cursor.Group())) {
    NetCursor element(part);
    element.Word();
    const std::string_view own = element.TakeWord("as") ? element.Rest() : part;
    type.append(type.empty() ? "System.ValueTuple(Of " : ", ").append(TypeOfTuple(own, depth + 1));
  }
  return type.append(")").append(cursor.Rest());
}

SharedText NetTypeNamed(std::string_view written) {
  if (written.starts_with('(')) return DotNetType(TypeOfTuple(written));
  if (written.find('[') == kNotFound) return DotNetType(written);
  return DotNetType(TypeWithoutBrackets(written));
}

}  // namespace vendrel
