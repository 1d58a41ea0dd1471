#pragma once
#include "intake/LanguageRules.h"

namespace vendrel {

/// VB.NET as the described behaviour has it; `CompleteNetLanguage` changes what loses or misreads.
class NetRules : public LanguageRules {
 public:
  LanguageVersionEnum Language() const override;
  bool IsDocumentation(const ParsedLine& line, const ReadingRules& reading) const override;
  SharedText ImplicitType(const Component* component, std::string_view name) const override;
  void SettleTypeName(SharedText& type) const override;
  bool CutArrayMark(std::string_view& word) const override;
  void ReadSignature(LinePassage& p) const override;
  void ReadProperty(LinePassage& p) const override;
  void ProcedureBegins(LinePassage& p) const override;
  void SettleProcedure(LinePassage& p) const override;
  void ProcedureBegan(Component& component) const override;
  void PropertyEnds(LinePassage& p) const override;
  bool ParametersAreByRef() const override;
  std::string_view ReadModifiers(std::string_view keyword, DeclaratorWords& words,
                                 Variable& variable, bool plainName) const override;
  bool SkipArguments(std::string_view& type, DeclaratorWords& words) const override;
  bool DeclaresField(const LinePassage& p) const override;
  Block& OwnerOfVariable(LinePassage& p) const override;
  void ReadEvent(EventDeclaration& event, std::string_view statement,
                 const ReadingRules& reading) const override;
  std::string_view InterfaceName(std::string_view written) const override;
  bool HasPlainMemberNames() const override;
  void CacheStructure(Component& component, const UDT& structure) const override;
  void CacheEnumeration(Component& component, const Enumeration& enumeration) const override;
  bool TakeOwnStatement(LinePassage& p) const override;

 protected:
  NetRules() = default;
  ~NetRules() = default;
};

/// The one Property statement of VB.NET stands for a get and a set: its block becomes the one or
/// the other, and one without lines is made for the second.
void EndNetProperty(Component& component, Block& block);
/// Makes the delegate of an event: a procedure with the parameters of the event, its name behind
/// `outer`.
void MakeNetDelegate(EventDeclaration& o, std::string_view outer = {});

}  // namespace vendrel
