// Statements that declare variables and constants.

#include "core/Ascii.h"
#include "intake/net/NetCursor.h"
#include "intake/net/NetDeclarations.h"
#include "intake/net/NetWords.h"
#include "text/Identifiers.h"

namespace vendrel {

NetVariables::NetVariables(std::string_view statement) {
  NetCursor cursor(statement);
  cursor.SkipAttributes();
  std::string_view rest = cursor.Rest();
  bool isPublic = false, isProtected = false, isFriend = false;
  for (std::string_view word = cursor.Word(); IsNetModifier(word); word = cursor.Word()) {
    const auto is = [&](std::string_view known) { return EqualsNoCaseAscii(word, known); };
    isPublic |= is("PUBLIC");
    isProtected |= is("PROTECTED");
    isFriend |= is("FRIEND");
    IsShared |= is("SHARED");
    IsStatic |= is("STATIC");
    IsShadow |= is("SHADOWS");
    IsWithEvents |= is("WITHEVENTS");
    rest = cursor.Rest();
  }
  if (isPublic) Access = "PUBLIC";
  if (isFriend) Access = "FRIEND";
  if (isProtected) Access = isFriend ? "PROTECTED FRIEND" : "PROTECTED";
  cursor = NetCursor(rest);
  std::size_t group = 0;  // the first of the names that share a type
  while (!cursor.AtEnd()) {
    NetDeclarator one;
    one.Name = cursor.Name(one.Type);
    const bool isNullable = cursor.Take('?');
    std::string marks;
    if (cursor.Here() == '(') {
      one.Subscript = cursor.Subscripts(marks);
      one.IsArray = true;
    }
    const bool typed = cursor.TakeWord("as");
    bool isArray = false;
    std::string type;
    if (typed) {
      const bool isNew = cursor.TakeWord("new");
      std::string_view written = cursor.Type();
      isArray = CutArray(written) && !isNew;  // behind New stand the arguments
      type = TypeOfTuple(TypeWithoutBrackets(written));
      if (isNullable) type += '?';
      type += marks;
    }
    const bool skipsArguments = typed && !cursor.AtEnd() && cursor.Here() != ',';
    if (cursor.Take('='))
      one.Value = cursor.Expression();
    else if (skipsArguments || (!cursor.AtEnd() && cursor.Here() != ','))
      cursor.Expression();
    const bool groupEnds = typed || !one.Value.empty();
    Declarators.push_back(std::move(one));
    if (typed)
      for (std::size_t i = group; i < Declarators.size(); ++i) {
        if (Declarators[i].Type.empty()) Declarators[i].Type = type;
        Declarators[i].IsArray |= isArray;
      }
    if (groupEnds) group = Declarators.size();
    cursor.Take(',');
  }
  std::erase_if(Declarators, [](const NetDeclarator& one) { return one.Name.empty(); });
}

}  // namespace vendrel
