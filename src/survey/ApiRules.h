#pragma once
// By which rules a change of a public surface breaks its callers. The one table;
// docs/api-changes.md is its page.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vendrel {

/// Which callers a change breaks: those compiled before it, those compiled against it, or all.
enum class ApiBreak : std::uint8_t { No, Source, Binary, Both };

/// "no", "source", "binary" or "both".
constexpr std::string_view WordOf(ApiBreak kind) {
  constexpr std::array<std::string_view, 4> words{"no", "source", "binary", "both"};
  return words[static_cast<std::size_t>(kind)];
}

// A row a rule: its name in code, its id, what changed, whom that breaks in COM and in .NET.
// clang-format off
#define VENDREL_API_RULES(X)                                                                                       \
  X(LibraryRenamed,        "library-renamed",        "the library has another name",                                Both,   Both)   \
  X(LibraryAdded,          "library-added",          "a project is new",                                            No,     No)     \
  X(LibraryRemoved,        "library-removed",        "a project is gone",                                           Both,   Both)   \
  X(CompatibilityLost,     "compatibility-lost",     "the project no longer keeps binary compatibility",            Binary, No)     \
  X(TypeAdded,             "type-added",             "a type is new",                                               No,     No)     \
  X(TypeRemoved,           "type-removed",           "a type is gone, or no longer public",                         Both,   Both)   \
  X(TypeRenamed,           "type-renamed",           "a type has another name",                                     Both,   Both)   \
  X(TypeKind,              "type-kind",              "a type is of another kind",                                   Both,   Both)   \
  X(NotCreatable,          "not-creatable",          "callers can no longer make objects of a class",               Both,   No)     \
  X(Creatable,             "creatable",              "callers can make objects of a class",                         No,     No)     \
  X(NotGlobal,             "not-global",             "members of a class need its name in front of them",           Source, No)     \
  X(BaseChanged,           "base-changed",           "a class inherits from another one",                           No,     Both)   \
  X(InterfaceAdded,        "interface-added",        "a class implements a further interface",                      No,     No)     \
  X(InterfaceRemoved,      "interface-removed",      "a class no longer implements an interface",                   Both,   Both)   \
  X(TypeAbstract,          "type-abstract",          "a class must be inherited",                                   No,     Both)   \
  X(TypeSealed,            "type-sealed",            "a class can no longer be inherited",                          No,     Both)   \
  X(DefaultMember,         "default-member",         "another member, or none, is the default one",                 Both,   Source) \
  X(MemberOrder,           "member-order",           "members stand in another order",                              Binary, No)     \
  X(MemberInserted,        "member-inserted",        "a member is new in front of others",                          Binary, No)     \
  X(FieldOrder,            "field-order",            "fields of a structure stand in another order",                Binary, No)     \
  X(FieldAdded,            "field-added",            "a structure has a further field",                             Binary, No)     \
  X(MemberAdded,           "member-added",           "a member is new",                                             No,     No)     \
  X(ObligationAdded,       "obligation-added",       "whoever implements or inherits must provide a new member",    Both,   Both)   \
  X(MemberRemoved,         "member-removed",         "a member is gone, or no longer public",                       Both,   Both)   \
  X(MemberRenamed,         "member-renamed",         "a member has another name",                                   Both,   Both)   \
  X(NameCase,              "name-case",              "a name is spelled with other capitals",                       No,     Binary) \
  X(MemberKind,            "member-kind",            "a member is of another kind",                                 Both,   Both)   \
  X(FieldProperty,         "field-property",         "a field became a property, or a property a field",            No,     Binary) \
  X(MemberProtected,       "member-protected",       "a public member is left to classes that inherit",             No,     Both)   \
  X(StaticChanged,         "static-changed",         "a member is shared, or no longer",                            No,     Both)   \
  X(NotVirtual,            "not-virtual",            "a member can no longer be overridden",                        No,     Both)   \
  X(PropertyReadOnly,      "property-read-only",     "a property can no longer be set",                             Both,   Both)   \
  X(PropertyWritable,      "property-writable",      "a property can be set",                                       No,     No)     \
  X(MemberType,            "member-type",            "a member gives or holds another type",                        Both,   Both)   \
  X(ParameterAdded,        "parameter-added",        "a member takes a further parameter",                          Both,   Both)   \
  X(OptionalAdded,         "optional-added",         "a member takes a further optional parameter, behind others",  Binary, Binary) \
  X(ParameterRemoved,      "parameter-removed",      "a member takes a parameter less",                             Both,   Both)   \
  X(ParameterOrder,        "parameter-order",        "parameters stand in another order",                           Both,   Both)   \
  X(ParameterType,         "parameter-type",         "a parameter is of another type",                              Both,   Both)   \
  X(ParameterPassing,      "parameter-passing",      "a parameter is passed by reference, or no longer",            Both,   Both)   \
  X(ParameterRenamed,      "parameter-renamed",      "a parameter has another name",                                Source, Source) \
  X(EventParameterRenamed, "event-parameter-renamed", "a parameter of an event has another name",                   No,     No)     \
  X(ParameterRequired,     "parameter-required",     "a parameter can no longer be left out",                       Source, Source) \
  X(ParameterOptional,     "parameter-optional",     "a parameter can be left out",                                 No,     No)     \
  X(DefaultValue,          "default-value",          "a parameter that is left out has another value",              Binary, Binary) \
  X(ParamArrayLost,        "param-array-lost",       "a member no longer takes any number of arguments",            Both,   Source) \
  X(ParamArrayAdded,       "param-array-added",      "a member takes any number of arguments",                      Both,   No)     \
  X(EnumValue,             "enum-value",             "a member of an enumeration has another value",                Binary, Binary) \
  X(EnumMemberRemoved,     "enum-member-removed",    "a member of an enumeration is gone",                          Source, Source) \
  X(ConstantValue,         "constant-value",         "a constant has another value",                                Binary, Binary)
// clang-format on

enum class ApiRuleId : std::uint8_t {
#define VENDREL_API_RULE_ID(name, id, what, com, net) name,
  VENDREL_API_RULES(VENDREL_API_RULE_ID)
#undef VENDREL_API_RULE_ID
};

struct ApiRule {
  std::string_view Id;
  std::string_view What;
  /// In classes of libraries and controls, in VB.NET and assemblies.
  ApiBreak Com, Net;
};

inline constexpr std::array kApiRules{
#define VENDREL_API_RULE(name, id, what, com, net) ApiRule{id, what, ApiBreak::com, ApiBreak::net},
    VENDREL_API_RULES(VENDREL_API_RULE)
#undef VENDREL_API_RULE
};

constexpr const ApiRule& RowOf(ApiRuleId rule) { return kApiRules[static_cast<std::size_t>(rule)]; }

}  // namespace vendrel
