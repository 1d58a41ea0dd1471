#pragma once
// The texts of declarations, read into elements by the rules that are handed down.

#include <memory>
#include <string_view>

#include "intake/LanguageRules.h"
#include "model/Declarations.h"
#include "model/Events.h"
#include "model/Parameter.h"

namespace vendrel {

/// The first line of an Enum or Type.
void ReadEnumeration(Enumeration& o, std::string_view Source, const SourceRules& rules);
void ReadStructure(UDT& o, std::string_view Source, const SourceRules& rules);

/// A line inside of one.
std::shared_ptr<EnumMember> AddEnumMember(Enumeration& o, std::string_view Source,
                                          const SourceRules& rules);
std::shared_ptr<Variable> AddStructureMember(UDT& o, std::string_view Source,
                                             const SourceRules& rules);

void ReadDeclare(DeclareDeclaration& o, std::string_view statement, const SourceRules& rules);

/// Reads a whole parameter list from a statement whose kind is known. A second parameter of one
/// name is dropped; those of a `Declare` or `Event` get no keys.
void ReadParameters(Parameters& list, std::string_view statement, CodeElement* parent, bool addKey,
                    const SourceRules& rules);

}  // namespace vendrel
