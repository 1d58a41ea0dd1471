#include "dotnet/TypeStatements.h"

#include <array>

#include "core/Ascii.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

using Kind = TypeStatement::Kind;

constexpr bool IsWordCharacter(char c) {
  return IsLetterAscii(c) || IsDigitAscii(c) || c == '_' || (static_cast<unsigned char>(c) & 0x80);
}

// A logical line on its way through its words.
class WordReader {
 public:
  explicit WordReader(std::string_view text) : mText(text) {}

  std::size_t At() const { return mAt; }
  void GoTo(std::size_t at) { mAt = at; }
  bool AtEnd() const { return mAt >= mText.size(); }
  char Here() const { return AtEnd() ? '\0' : mText[mAt]; }

  void SkipBlanks() {
    while (!AtEnd() && (Here() == ' ' || Here() == '\t')) ++mAt;
  }
  // A plain word; empty where none stands.
  std::string_view Word() {
    SkipBlanks();
    const std::size_t begin = mAt;
    while (!AtEnd() && IsWordCharacter(Here())) ++mAt;
    return mText.substr(begin, mAt - begin);
  }
  // The same with the brackets of an escaped name.
  std::string_view Name() {
    SkipBlanks();
    if (Here() != '[') return Word();
    const std::size_t close = mNoBracket ? kNotFound : mText.find(']', mAt);
    mNoBracket = close == kNotFound;
    if (mNoBracket) return {};
    const std::string_view name = mText.substr(mAt, close + 1 - mAt);
    mAt = close + 1;
    return name;
  }
  // Attributes in front of a declaration: "<A("x>"), B> <C>".
  void SkipAttributes() {
    for (SkipBlanks(); Here() == '<' && !mNoAttribute; SkipBlanks()) {
      std::size_t at = mAt + 1;
      int depth = 0;
      for (; at < mText.size(); ++at) {
        const char c = mText[at];
        if (c == '"') {
          at = mText.find('"', at + 1);
          if (at == kNotFound) break;
        } else if (c == '(') {
          ++depth;
        } else if (c == ')') {
          --depth;
        } else if (c == '>' && depth <= 0) {
          break;
        }
      }
      mNoAttribute = at >= mText.size();
      if (!mNoAttribute) mAt = at + 1;
    }
  }
  // Number of type parameters of "(Of K, V As {A, B})"; 0 without a list.
  std::size_t TypeParameters() {
    const std::size_t begin = mAt;
    SkipBlanks();
    if (Here() != '(') return Back(begin);
    ++mAt;
    if (!EqualsNoCaseAscii(Word(), "of")) return Back(begin);
    std::size_t count = 1;
    int depth = 1;
    for (; !AtEnd() && depth > 0; ++mAt) {
      const char c = Here();
      if (c == '(' || c == '{') ++depth;
      if (c == ')' || c == '}') --depth;
      if (c == ',' && depth == 1) ++count;
    }
    return count;
  }
  // Behind the next ":" outside of strings, names in brackets and lists; false where none is.
  bool NextStatement() {
    int depth = 0;
    for (; !AtEnd(); ++mAt) {
      const char c = Here();
      if (c == '"') {
        const std::size_t close = mText.find('"', mAt + 1);
        if (close == kNotFound) return false;
        mAt = close;
      } else if (c == '\'') {
        return false;
      } else if (c == '(' || c == '{' || c == '[') {
        ++depth;
      } else if (c == ')' || c == '}' || c == ']') {
        --depth;
      } else if (c == ':' && depth <= 0 && (mAt + 1 >= mText.size() || mText[mAt + 1] != '=')) {
        ++mAt;
        return true;
      }
    }
    return false;
  }
  bool EndsStatement() {
    SkipBlanks();
    return AtEnd() || Here() == ':' || Here() == '\'' || EndsInRem();
  }

 private:
  std::size_t Back(std::size_t at) {
    mAt = at;
    return 0;
  }
  bool EndsInRem() const {
    return StartsWithNoCaseAscii(mText.substr(mAt), "rem") &&
           (mAt + 3 >= mText.size() || !IsWordCharacter(mText[mAt + 3]));
  }

  std::string_view mText;
  std::size_t mAt = 0;
  // Looked for up to the end of the line, once.
  bool mNoBracket = false, mNoAttribute = false;
};

struct TypeWord {
  std::string_view Word;
  ComponentTypeEnum Type;
};
constexpr std::array kTypeWords{TypeWord{"class", ctClass}, TypeWord{"module", ctModule},
                                TypeWord{"structure", ctStructure}, TypeWord{"enum", ctEnumeration},
                                TypeWord{"interface", ctInterface}};

const TypeWord* FindTypeWord(std::string_view word) {
  for (const TypeWord& type : kTypeWords)
    if (EqualsNoCaseAscii(type.Word, word)) return &type;
  return nullptr;
}

// What stands in front of the word of a type; false for a word that cannot.
class TypeModifiers {
 public:
  bool Take(std::string_view word, TypeStatement& statement) {
    if (EqualsNoCaseAscii(word, "public")) return mPublic = true;
    if (EqualsNoCaseAscii(word, "private")) return mPrivate = true;
    if (EqualsNoCaseAscii(word, "friend")) return mFriend = true;
    if (EqualsNoCaseAscii(word, "protected")) return mProtected = true;
    if (EqualsNoCaseAscii(word, "shadows")) return true;
    if (EqualsNoCaseAscii(word, "mustinherit")) return statement.IsAbstract = true;
    if (EqualsNoCaseAscii(word, "notinheritable")) return statement.IsSealed = true;
    if (EqualsNoCaseAscii(word, "partial")) return statement.IsPartial = true;
    return false;
  }
  // Without a word a type of a namespace is a friend, one in a type public.
  std::string_view Access() const {
    if (mProtected) return mFriend ? "PROTECTED FRIEND" : "PROTECTED";
    if (mPrivate) return "PRIVATE";
    if (mFriend) return "FRIEND";
    return mPublic ? "PUBLIC" : "";
  }

 private:
  bool mPublic = false, mPrivate = false, mFriend = false, mProtected = false;
};

bool IsTypeModifier(std::string_view word) {
  const auto is = [word](std::string_view known) { return EqualsNoCaseAscii(word, known); };
  switch (word.size()) {
    case 6: return is("public") || is("friend");
    case 7: return is("private") || is("shadows") || is("partial");
    case 9: return is("protected");
    case 11: return is("mustinherit");
    case 14: return is("notinheritable");
    default: return false;
  }
}

// Whether the words at hand lead to that of a type or namespace: most lines hold none, and nothing
// is made for those.
bool LeadsToType(WordReader& reader) {
  reader.SkipAttributes();
  std::string_view word = reader.Word();
  if (EqualsNoCaseAscii(word, "end")) word = reader.Word();
  while (IsTypeModifier(word)) word = reader.Word();
  return FindTypeWord(word) || EqualsNoCaseAscii(word, "namespace");
}

bool ReadNamespaceName(WordReader& reader, TypeStatement& statement) {
  std::string name(WithoutBrackets(reader.Name()));
  if (name.empty()) return false;
  if (EqualsNoCaseAscii(name, "global")) {
    statement.IsGlobal = true;
    name.clear();
  }
  for (reader.SkipBlanks(); reader.Here() == '.'; reader.SkipBlanks()) {
    reader.GoTo(reader.At() + 1);
    const std::string_view part = WithoutBrackets(reader.Name());
    if (part.empty()) break;
    if (!name.empty()) name += '.';
    name += part;
  }
  statement.Name = name;
  statement.What = Kind::Namespace;
  return reader.EndsStatement();
}

bool ReadEnd(WordReader& reader, TypeStatement& statement) {
  const std::string_view what = reader.Word();
  const TypeWord* type = FindTypeWord(what);
  if (!type && !EqualsNoCaseAscii(what, "namespace")) return false;
  statement.What = type ? Kind::EndType : Kind::EndNamespace;
  if (type) statement.Type = type->Type;
  return reader.EndsStatement();
}

bool ReadType(WordReader& reader, std::string_view word, TypeStatement& statement) {
  TypeModifiers modifiers;
  const TypeWord* type = FindTypeWord(word);
  while (!type) {
    if (word.empty() || !modifiers.Take(word, statement)) return false;
    word = reader.Word();
    type = FindTypeWord(word);
  }
  const std::string_view name = WithoutBrackets(reader.Name());
  if (name.empty()) return false;
  statement.What = Kind::Type;
  statement.Type = type->Type;
  statement.Access = modifiers.Access();
  statement.Name = name;
  if (const std::size_t count = reader.TypeParameters())
    statement.Name += "`" + std::to_string(count);
  const std::size_t behind = reader.At();
  if (type->Type == ctEnumeration && EqualsNoCaseAscii(reader.Word(), "as"))
    for (;;) {
      statement.Underlying += reader.Name();
      if (reader.Here() != '.') break;
      statement.Underlying += '.';
      reader.GoTo(reader.At() + 1);
    }
  else
    reader.GoTo(behind);
  return true;
}

bool ReadStatement(WordReader& reader, TypeStatement& statement) {
  reader.SkipAttributes();
  const std::string_view word = reader.Word();
  if (EqualsNoCaseAscii(word, "end")) return ReadEnd(reader, statement);
  if (EqualsNoCaseAscii(word, "namespace")) return ReadNamespaceName(reader, statement);
  return ReadType(reader, word, statement);
}

}  // namespace

std::vector<TypeStatement> StatementsByWord(std::string_view text) {
  std::vector<TypeStatement> found;
  const bool isOne = text.find(':') == kNotFound;
  WordReader reader(text);
  do {
    const std::size_t begin = reader.At();
    const bool leads = LeadsToType(reader);
    reader.GoTo(begin);
    if (!leads) continue;
    TypeStatement statement;
    if (ReadStatement(reader, statement))
      found.push_back(std::move(statement));
    else
      reader.GoTo(begin);
  } while (!isOne && reader.NextStatement());
  return found;
}

std::pair<std::size_t, std::size_t> PlaceOfTypeName(std::string_view text) {
  WordReader reader(text);
  do {
    const std::size_t begin = reader.At();
    reader.SkipAttributes();
    TypeStatement ignored;
    TypeModifiers modifiers;
    std::string_view word = reader.Word();
    while (!FindTypeWord(word) && modifiers.Take(word, ignored)) word = reader.Word();
    if (FindTypeWord(word)) {
      const std::string_view name = reader.Name();
      return {static_cast<std::size_t>(name.data() - text.data()), name.size()};
    }
    reader.GoTo(begin);
  } while (reader.NextStatement());
  return {0, 0};
}

}  // namespace vendrel
