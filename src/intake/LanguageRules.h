#pragma once
// What the intake asks of a language. The stages of a line are the same for both languages; where
// they differ, a stage asks these rules and never which language it is in.

#include <memory>
#include <string_view>

#include "core/Enums.h"
#include "core/ReadingRules.h"
#include "core/SharedText.h"
#include "model/Fwd.h"

namespace vendrel {

class DeclaratorWords;
struct LinePassage;
struct ModuleIntake;

/// What a language keeps between the lines of a module.
struct LanguageState {
  virtual ~LanguageState() = default;
};

/// The rules of one language: one object each, without state, chosen once a module.
class LanguageRules {
 public:
  static const LanguageRules& Of(LanguageVersionEnum language, const ReadingRules& reading);

  virtual LanguageVersionEnum Language() const = 0;

  // Lines.
  /// Joins a physical line to the statement that is open, of which `statement` becomes the text in
  /// one line. False if it goes on in the next line: then this one waits, and `statement` becomes
  /// empty where only attributes have come, which stand in front of it.
  virtual bool JoinLine(Component&, ModuleIntake&, std::string_view /*physical*/,
                        std::string_view& /*statement*/) const {
    return true;
  }
  /// What a statement is where its place decides; called once its parts are known.
  virtual void SettleStatement(Component&, ModuleIntake&, ParsedLine&) const {}
  /// Whether a comment on a line of its own is documentation: the reading of such goes by another
  /// road, and it is no comment of an element.
  virtual bool IsDocumentation(const ParsedLine&, const ReadingRules&) const { return false; }
  /// Called behind the last line of a module.
  virtual void Finish(Component&, ModuleIntake&) const {}

  // Types.
  /// The type of an element that is declared without one.
  virtual SharedText ImplicitType(const Component* component, std::string_view name) const = 0;
  /// Makes the name of a type that was written the one that the tree has.
  virtual void SettleTypeName(SharedText& type) const = 0;
  /// Cuts the mark of an array from the end of a type or name; false if there is none.
  virtual bool CutArrayMark(std::string_view& word) const = 0;

  // Procedures.
  /// Reads the first line of a Sub or Function into its block.
  virtual void ReadSignature(LinePassage& line) const = 0;
  /// The same of a property; its name, kind, type and access.
  virtual void ReadProperty(LinePassage& line) const = 0;
  /// Called for each first line of a procedure, in front of its comments.
  virtual void ProcedureBegins(LinePassage& line) const = 0;
  /// Parameters and access of a procedure, behind its comments.
  virtual void SettleProcedure(LinePassage& line) const = 0;
  /// Called when the first line of a procedure is in its block.
  virtual void ProcedureBegan(Component& component) const = 0;
  virtual void PropertyEnds(LinePassage& line) const = 0;
  virtual bool ParametersAreByRef() const = 0;

  // Variables.
  /// Reads the modifiers of a declaration, of which `keyword` is the first; gives its first name.
  /// With `plainName` the word behind the keyword is the name, whatever it says.
  virtual std::string_view ReadModifiers(std::string_view keyword, DeclaratorWords& words,
                                         Variable& variable, bool plainName) const = 0;
  /// Cuts what stands in parentheses behind a type, and skips the rest of it. True when the
  /// declarator ends with it.
  virtual bool SkipArguments(std::string_view& type, DeclaratorWords& words) const = 0;
  /// Whether a declaration at this place declares a variable of the module.
  virtual bool DeclaresField(const LinePassage& line) const = 0;
  /// The block to whose variables a declaration at this place adds.
  virtual Block& OwnerOfVariable(LinePassage& line) const = 0;

  // Other declarations.
  /// Reads an event from its statement.
  virtual void ReadEvent(EventDeclaration& event, std::string_view statement,
                         const ReadingRules& reading) const = 0;
  /// The name of an interface, from that in an Implements statement.
  virtual std::string_view InterfaceName(std::string_view written) const = 0;
  /// Whether a member of an open Type or Enum may have the name of any keyword.
  virtual bool HasPlainMemberNames() const = 0;
  /// These tell the type caches of module and project of a finished Type or Enum.
  virtual void CacheStructure(Component& component, const UDT& structure) const = 0;
  virtual void CacheEnumeration(Component& component, const Enumeration& enumeration) const = 0;
  /// A statement that this language alone has, or reads in a way of its own; false for any other.
  virtual bool TakeOwnStatement(LinePassage& line) const = 0;

 protected:
  LanguageRules() = default;
  ~LanguageRules() = default;
};

/// The languages; VB.NET as described, and as it is (`NetMembers`).
const LanguageRules& ClassicLanguage();
const LanguageRules& NetLanguage();
const LanguageRules& CompleteNetLanguage();

/// By what a text is read: handed down from the module, or made where a client hands a text to an
/// element.
struct SourceRules {
  const LanguageRules& Language;
  const ReadingRules& Reading;

  /// For a text that a client hands to an element: the language now in force, and the reading of
  /// the project to which the element belongs, the classic one without a project.
  static SourceRules InForce(const ProjectOptions* options);
};

}  // namespace vendrel
