// The six documented patterns, and the exact texts of the statements that end a type.

#include <array>

#include "core/Ascii.h"
#include "dotnet/TypeStatements.h"
#include "text/Masking.h"
#include "text/RegExp.h"

namespace vendrel {
namespace {

using Kind = TypeStatement::Kind;

struct TypePattern {
  std::string_view Word;  // without it on the line the pattern need not be tried
  std::string_view Pattern;
  Kind What;
  ComponentTypeEnum Type;
};

constexpr std::array kPatterns{
    TypePattern{"namespace ", "^ *Namespace ", Kind::Namespace, ctClass},
    TypePattern{"class ",
                R"(^(<.*>| |\t)*(public|private|friend|protected|protected friend|Shadows|)"
                "MustInherit|NotInheritable| )*Class ",
                Kind::Type, ctClass},
    TypePattern{"module ", R"(^(<.*>| |\t)*(public|friend| )*Module )", Kind::Type, ctModule},
    TypePattern{"structure ",
                R"(^(<.*>| |\t)*(public|private|friend|protected|protected friend|Shadows| )*)"
                "Structure ",
                Kind::Type, ctStructure},
    TypePattern{"enum ",
                R"(^(<.*>| |\t)*(public|private|friend|protected|protected friend|Shadows| )*)"
                "Enum ",
                Kind::Type, ctEnumeration},
    TypePattern{"interface ",
                R"(^(<.*>| |\t)*(public|private|friend|protected|protected friend|Shadows| )*)"
                "Interface ",
                Kind::Type, ctInterface}};

struct EndText {
  std::string_view Text;
  Kind What;
  ComponentTypeEnum Type;
};
constexpr std::array kEnds{EndText{"End Namespace", Kind::EndNamespace, ctClass},
                           EndText{"End Class", Kind::EndType, ctClass},
                           EndText{"End Interface", Kind::EndType, ctInterface},
                           EndText{"End Structure", Kind::EndType, ctStructure},
                           EndText{"End Enum", Kind::EndType, ctEnumeration},
                           EndText{"End Module", Kind::EndType, ctModule}};

// Behind the last blank; all of it where there is none.
std::string_view LastWord(std::string_view text) { return text.substr(text.rfind(' ') + 1); }

// " MustInherit " and " NoInheritable ": the second is spelled so, and never met.
void JudgeByText(std::string_view text, TypeStatement& statement) {
  const std::string_view trimmed = TrimLeft(text);
  if (trimmed.starts_with("MustInherit") || text.find(" MustInherit ") != kNotFound)
    statement.IsAbstract = true;
  else if (trimmed.starts_with("NotInheritable") || text.find(" NoInheritable ") != kNotFound)
    statement.IsSealed = true;
}

}  // namespace

std::vector<std::string_view> TypePatterns() {
  std::vector<std::string_view> patterns;
  for (const TypePattern& pattern : kPatterns) patterns.push_back(pattern.Pattern);
  return patterns;
}

std::string TypeNameByPattern(std::string_view text, ComponentTypeEnum type) {
  if (const std::size_t colon = InStrEx(1, text, ":")) text = Trim(text.substr(0, colon - 1));
  std::string_view name = text;
  if (type == ctEnumeration) {
    bool isNext = false;
    for (std::string_view rest = text; !rest.empty();) {
      const std::string_view word = TakeField(rest, ' ');
      if (isNext) {
        name = word;
        break;
      }
      isNext = word == "Enum";
    }
  } else {
    name = LastWord(text);
  }
  if (name.size() >= 2 && name.front() == '[' && name.back() == ']')
    name = name.substr(1, name.size() - 2);
  return std::string(name);
}

std::vector<TypeStatement> StatementsByPattern(std::string_view text) {
  TypeStatement statement;
  for (const TypePattern& pattern : kPatterns) {
    if (FindNoCaseAscii(text, pattern.Word) == kNotFound || !MatchRegExp(text, pattern.Pattern))
      continue;
    statement.What = pattern.What;
    statement.Type = pattern.Type;
    if (pattern.What == Kind::Namespace) {
      statement.Name = LastWord(text);
    } else {
      statement.Name = TypeNameByPattern(text, pattern.Type);
      if (pattern.Type == ctClass) JudgeByText(text, statement);
      if (pattern.Type == ctEnumeration)
        if (const std::size_t as = FindNoCaseAscii(text, " as "); as != kNotFound)
          statement.Underlying = Trim(text.substr(as + 4));
    }
    return {statement};
  }
  const std::string_view trimmed = Trim(text);
  for (const EndText& end : kEnds) {
    if (trimmed != end.Text) continue;
    statement.What = end.What;
    statement.Type = end.Type;
    return {statement};
  }
  return {};
}

}  // namespace vendrel
