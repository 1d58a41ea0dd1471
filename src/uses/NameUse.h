#pragma once
// One use of a name in a statement: where it stands, what it does, and which element it means.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/CodeElement.h"
#include "model/Fwd.h"
#include "services/FileSystemObject.h"

namespace vendrel {

struct BuiltinMember;
struct BuiltinType;

// X(value, the word by which it is shown).
// clang-format off
#define VENDREL_USE_KINDS(X)                                                                       \
  X(Declare,     "declare")      /* the declaration itself */                                      \
  X(Call,        "call")         /* a procedure, Declare or built-in statement is called */        \
  X(Read,        "read")                                                                           \
  X(Write,       "write")                                                                          \
  X(ByReference, "by-reference") /* an argument that the callee may write: read and written */     \
  X(Type,        "type")         /* behind As, TypeOf ... Is */                                    \
  X(New,         "new")          /* behind New */                                                  \
  X(Raise,       "raise")        /* behind RaiseEvent */                                           \
  X(Handle,      "handle")       /* the name of a procedure handles this event */                  \
  X(Implements,  "implements")   /* Implements, or a procedure that implements this member */      \
  X(Address,     "address")      /* behind AddressOf */                                            \
  X(Qualify,     "qualify")      /* module, project, enumeration or library in front of a dot */   \
  X(Name,        "name")         /* a parameter, left of ":=" */                                   \
  X(Part,        "part")         /* the base of a field or array element that is written */

#define VENDREL_USE_ANSWERS(X)                                                                     \
  X(Local,      "local")      /* variable or constant of the procedure */                          \
  X(Parameter,  "parameter")                                                                       \
  X(OwnModule,  "own-module") /* the module, or a member of it */                                  \
  X(Project,    "project")    /* another module, a member of it, or one of a project of the group*/\
  X(Field,      "field")      /* member of a Type */                                               \
  X(Control,    "control")                                                                         \
  X(EnumMember, "enumeration-member")                                                              \
  X(Type,       "type")       /* an Enum or Type */                                                \
  X(Library,    "library")    /* built-in, or an element of a library that is at hand */           \
  X(External,   "external")   /* in a reference that is not at hand */                             \
  X(Late,       "late")       /* bound when the program runs */                                    \
  X(Implicit,   "implicit")   /* a variable that nothing declares, without Option Explicit */      \
  X(Ambiguous,  "ambiguous")  /* each of several elements */                                       \
  X(Unknown,    "unknown")                                                                         \
  X(Key,        "key")        /* RS!Field: outside of the shares */                                \
  X(Label,      "label")      /* outside of the shares */
// clang-format on

/// What a use does.
enum class UseKind : std::uint8_t {
#define VENDREL_USE_VALUE(value, word) value,
  VENDREL_USE_KINDS(VENDREL_USE_VALUE)
};
/// What kind of thing the name turned out to be.
enum class UseAnswer : std::uint8_t { VENDREL_USE_ANSWERS(VENDREL_USE_VALUE) };
#undef VENDREL_USE_VALUE

#define VENDREL_USE_WORD(value, word) std::string_view(word),
inline constexpr std::array kUseKindWords{VENDREL_USE_KINDS(VENDREL_USE_WORD)};
inline constexpr std::array kUseAnswerWords{VENDREL_USE_ANSWERS(VENDREL_USE_WORD)};
#undef VENDREL_USE_WORD

constexpr std::string_view WordOf(UseKind kind) {
  return kUseKindWords[static_cast<std::size_t>(kind)];
}
constexpr std::string_view WordOf(UseAnswer answer) {
  return kUseAnswerWords[static_cast<std::size_t>(answer)];
}

/// Which procedure of a property a use goes to; `None` for what is no property.
enum class UseAccessor : std::uint8_t { None, Get, Let, Set };
/// "get", "let", "set", or empty.
std::string_view WordOf(UseAccessor accessor);

/// A use. Views and candidates are those of the binder and of the text of the module: they hold
/// while both are there, and candidates until the next use. Elements are null where there is none.
struct NameUse {
  /// The module in which the name stands; its project tells which one, where several list a file.
  const Component* Module = nullptr;
  /// The file in which it stands: the module's, or that of a later part of a `Partial` type.
  const FileSystemObject* File = nullptr;
  /// The procedure that holds the use; in the declarations the element that is declared there
  /// (variable, constant, Type, Enum, Declare, event), else the module.
  const CodeElement* Holder = nullptr;
  /// What the name means: a property is its `PropertyGroup`, a control of an array the control with
  /// that literal index, else the first one of the array with `WholeArray`. Null for built-ins, and
  /// for what no element stands for (implicit variables, labels, keys, late, unknown, external).
  const CodeElement* Element = nullptr;
  /// Of the table of built-ins: what a name of `Library` means where no element does. A class by
  /// itself (`As Collection`) has a type and no member.
  const BuiltinMember* Member = nullptr;
  const BuiltinType* Type = nullptr;
  /// `Ambiguous`: all that it may mean. `Late`: members of that name, at most 20 of them.
  std::vector<const CodeElement*> Candidates;
  /// How many candidates there are in all.
  std::size_t CandidateCount = 0;
  /// The name as written, brackets and type character included.
  std::string_view Text;
  /// External: the name of the library, where a type or qualifier names it; empty where it may be
  /// any of those that are missing. A library in front of a dot: its name. Else empty.
  std::string_view Name;
  /// The statement, from its first word to its last, as it stands, continuations included.
  std::string_view Statement;
  /// 1-based physical line of the file.
  std::int32_t Line = 0;
  /// 1-based line of the file on which the statement begins.
  std::int32_t StatementLine = 0;
  /// Characters of the decoded physical line from 1; the end is the first one behind.
  std::int32_t Column = 0;
  std::int32_t EndColumn = 0;
  UseKind Kind = UseKind::Read;
  UseAnswer Answer = UseAnswer::Unknown;
  UseAccessor Accessor = UseAccessor::None;
  bool Reads = false;
  bool Writes = false;
  /// Another record has the same token, and is the first one: what an event procedure handles, a
  /// default member that no token names.
  bool Secondary = false;
  /// The statement lies in a false branch of #If (only with `BindFalseBranches`).
  bool InFalseBranch = false;
  /// The element stands for the whole control array.
  bool WholeArray = false;
  /// Recursion, or the own result of a function: it does not make the procedure used.
  bool OwnProcedure = false;
};

/// The qualified name of what the use means: of the element ("P~F~cmd" of a control array, whose
/// controls are "P~F~cmd(0)"), of a built-in as a type library would name it
/// ("VBA~Strings~Left"), else `Name`; empty without one.
std::string MeaningOf(const NameUse& use);

/// The name of the library or other project from which a use takes something ("VBA", "ADODB");
/// empty where it takes nothing from one, or its type does not tell.
std::string_view LibraryOf(const NameUse& use);

/// The procedure to which a use of an element (may be null) leads: of a property that of the
/// accessor; null for what is no procedure of the tree.
const Block* ProcedureOf(const CodeElement* element, UseAccessor accessor);
inline const Block* ProcedureOf(const NameUse& use) {
  return ProcedureOf(use.Element, use.Accessor);
}
/// The same, and of what is no procedure the element itself.
const CodeElement* TargetOf(const CodeElement* element, UseAccessor accessor);

}  // namespace vendrel
