// Visual Basic 5 and 6.

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "intake/DeclarationText.h"
#include "intake/Declarators.h"
#include "intake/LineIntake.h"
#include "intake/vb6/ClassicSignatures.h"
#include "project/ModulesAhead.h"
#include "project/VBProject.h"
#include "text/Identifiers.h"
#include "text/StartLine.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// Name of an event whose statement may have no parentheses: the word behind "Event".
std::string_view EventWord(std::string_view statement, bool wholeNames) {
  WordCursor words(statement, wholeNames);
  std::string_view word;
  while (words.Next(word)) {
    if (!EqualsNoCaseAscii(word, "EVENT")) continue;
    if (!words.Next(word)) break;
    if (wholeNames && word.starts_with('[') && BracketEnd(word, 0) > 0)
      return WithoutBrackets(word.substr(0, BracketEnd(word, 0)));
    return word.substr(0, word.find('('));
  }
  return GetName(statement);
}

void AddToProject(const Component& component, std::string_view type, std::int32_t number) {
  if (VBProject* project = component.VBProject())
    ChangeProject([project, type = std::string(type), number, name = component.Name] {
      project->TypeCache.Add(type, number, name);
    });
}

class ClassicRules final : public LanguageRules {
 public:
  LanguageVersionEnum Language() const override { return lvVisualBasic5or6; }

  SharedText ImplicitType(const Component* component, std::string_view name) const override {
    return component ? component->DefaultType(name) : std::string_view();
  }
  void SettleTypeName(SharedText&) const override {}
  bool CutArrayMark(std::string_view& word) const override {
    if (!word.ends_with("()")) return false;
    word.remove_suffix(2);
    return true;
  }

  void ReadSignature(LinePassage& p) const override { ReadClassicSignature(p); }
  void ReadProperty(LinePassage& p) const override { ReadClassicProperty(p); }
  void ProcedureBegins(LinePassage& p) const override { JudgeStatic(p); }
  void SettleProcedure(LinePassage& p) const override {
    p.Block.Parameters.Renew();
    p.Block.Parameters->Component = &p.Component;
    ReadParameters(*p.Block.Parameters, p.Line.StatementPart, &p.Block, true, p.Rules());
    SettleAccess(p);
  }
  void ProcedureBegan(Component&) const override {}
  void PropertyEnds(LinePassage&) const override {}
  bool ParametersAreByRef() const override { return true; }

  // Only the first word counts as a modifier.
  std::string_view ReadModifiers(std::string_view keyword, DeclaratorWords& words,
                                 Variable& variable, bool plainName) const override {
    const auto is = [&](std::string_view word) { return EqualsNoCaseAscii(keyword, word); };
    if (is("PUBLIC") || is("GLOBAL"))
      variable.Access = "PUBLIC";
    else if (is("DIM") || is("PRIVATE") || is("FRIEND") || is("STATIC"))
      variable.Access = "PRIVATE";
    if (is("STATIC")) variable.IsStatic = true;
    const std::string_view word = words.Take();
    if (plainName || (word != "WithEvents" && word != "Event")) return word;
    if (word == "WithEvents") variable.IsWithEvents = true;
    return words.Take();
  }
  bool SkipArguments(std::string_view&, DeclaratorWords&) const override { return false; }
  bool DeclaresField(const LinePassage& p) const override {
    return p.Block.BlockType() == btDeclarations;
  }
  Block& OwnerOfVariable(LinePassage& p) const override { return p.Block; }

  void ReadEvent(EventDeclaration& event, std::string_view statement,
                 const ReadingRules& reading) const override {
    event.Parameters.Renew();
    event.Parameters->Component = event.Component.Get();
    const CodeLine line = InitialiseCodeLine(statement, Language(), reading);
    event.Name = reading.WholeDefaults ? EventWord(line.StatementPart, reading.BracketedNames)
                                       : GetName(line.StatementPart);
    if (reading.DefaultAccess)
      event.Access = StartsWithNoCaseAscii(line.StatementPart, "PRIVATE") ? "PRIVATE" : "PUBLIC";
    ReadParameters(*event.Parameters, line.StatementPart, &event, false, {*this, reading});
  }
  // Without its library.
  std::string_view InterfaceName(std::string_view written) const override {
    const std::size_t dot = written.find('.');
    return dot == std::string_view::npos ? written : written.substr(dot + 1);
  }
  bool HasPlainMemberNames() const override { return true; }
  void CacheStructure(Component& component, const UDT& structure) const override {
    component.TypeCache.Add(structure.Name, tcLocalModuleUDT);
    AddToProject(component, structure.Name, tcLocalProjectUDT);
  }
  void CacheEnumeration(Component& component, const Enumeration& enumeration) const override {
    component.TypeCache.Add(enumeration.Name, tcLocalModuleEnum);
    AddToProject(component, enumeration.Name, tcLocalProjectEnum);
  }
  bool TakeOwnStatement(LinePassage&) const override { return false; }
};

constexpr ClassicRules kClassicRules;

}  // namespace

const LanguageRules& ClassicLanguage() { return kClassicRules; }

}  // namespace vendrel
