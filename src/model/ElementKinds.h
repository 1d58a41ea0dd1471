#pragma once
// The classes of the tree: the one list from which class names, the words that lists and tags use
// for them, and casts come.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "model/Fwd.h"

namespace vendrel {

/// The scope of what no tag reaches as the element read last: the tag of a parameter names it.
inline constexpr std::string_view kNoScope = "{none}";

// One row a class, those with names in the order of a walk over them: class, what one of it is
// called in lists, whether lists of names hold it, the scope by which tags reach it. Three classes
// have more words than their row: a block is a procedure or a property, a variable may be local or
// member of a type, and a type with members takes comments for these.
// clang-format off
#define VENDREL_ELEMENT_KINDS(X)                                                   \
  X(VBProjectGroup,     "group",                false, kNoScope)                   \
  X(VBProject,          "project",              true,  "FZ:Project")               \
  X(Reference,          "reference",            false, kNoScope)                   \
  X(CompilerConstant,   "conditional-constant", false, kNoScope)                   \
  X(Library,            "library",              true,  kNoScope)                   \
  X(Assembly,           "assembly",             false, kNoScope)                   \
  X(ProjectFile,        "source-file",          false, kNoScope)                   \
  X(Namespace,          "namespace",            false, kNoScope)                   \
  X(Component,          "module",               true,  "FZ:Module")                \
  X(VBControl,          "control",              true,  kNoScope)                   \
  X(Constant,           "constant",             true,  "FZ:Constant")              \
  X(Variable,           "variable",             true,  "FZ:Property")              \
  X(Enumeration,        "enumeration",          true,  "FZ:Enumeration")           \
  X(EnumMember,         "enumeration-member",   true,  "FZ:EnumerationMember")     \
  X(UDT,                "type",                 true,  "FZ:Structure")             \
  X(EventDeclaration,   "event",                true,  "FZ:Event")                 \
  X(DeclareDeclaration, "declare",              true,  "FZ:DeclareStatement")      \
  X(Interface,          "interface",            true,  "FZ:ImplementedInterface")  \
  X(Block,              "procedure",            true,  "FZ:Method")                \
  X(PropertyGroup,      "property",             true,  kNoScope)                   \
  X(Parameter,          "parameter",            true,  kNoScope)                   \
  X(TaggedComment,      "tagged-comment",       false, kNoScope)                   \
  X(Example,            "example",              false, kNoScope)                   \
  X(Permission,         "permission",           false, kNoScope)                   \
  X(Exception,          "exception",            false, kNoScope)
// clang-format on

/// The class of an object of the tree.
enum class ElementKind : std::uint8_t {
#define VENDREL_KIND(Class, word, named, scope) Class,
  VENDREL_ELEMENT_KINDS(VENDREL_KIND)
#undef VENDREL_KIND
  /// What only stands in for an object that is absent.
  None
};

/// A row of the list.
struct ElementKindRow {
  /// As the rules compare it, and as the dump shows it.
  std::string_view ClassName;
  std::string_view Word;
  bool InNameLists = false;
  std::string_view Scope;
};

inline constexpr std::array kElementKinds{
#define VENDREL_ROW(Class, word, named, scope) ElementKindRow{#Class, word, named, scope},
    VENDREL_ELEMENT_KINDS(VENDREL_ROW)
#undef VENDREL_ROW
        ElementKindRow{{}, {}, false, kNoScope}};

constexpr const ElementKindRow& RowOf(ElementKind kind) {
  return kElementKinds[static_cast<std::size_t>(kind)];
}

/// The row of a class; `None` for a class without one.
template <typename Class>
inline constexpr ElementKind kKindOf = ElementKind::None;
#define VENDREL_KIND_OF(Class, word, named, scope)                                                 \
  template <>                                                                                      \
  inline constexpr ElementKind kKindOf<Class> = ElementKind::Class;
VENDREL_ELEMENT_KINDS(VENDREL_KIND_OF)
#undef VENDREL_KIND_OF

// Lists and filters tell elements apart by their words.
constexpr bool WordsAreDistinct() {
  for (std::size_t i = 0; i < kElementKinds.size(); ++i)
    for (std::size_t j = 0; j < i; ++j)
      if (kElementKinds[i].Word == kElementKinds[j].Word) return false;
  return true;
}
static_assert(WordsAreDistinct());
static_assert(RowOf(ElementKind::None).ClassName.empty());

}  // namespace vendrel
