#pragma once
// What a name can mean, and the type of what it means.

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "model/Block.h"
#include "model/Component.h"
#include "model/PropertyGroup.h"
#include "uses/Builtins.h"
#include "uses/SymbolMap.h"

namespace vendrel {

class VBProject;
struct ModuleScope;

enum class TypeSort : std::uint8_t {
  Unknown,      ///< of what is unknown itself
  Plain,        ///< intrinsic, no object
  Late,         ///< Variant, Object: bound when the program runs
  Module,       ///< an object of a class, form or control of a project
  Structure,    ///< a `Type`
  Builtin,      ///< an object of the table of built-ins
  External,     ///< in a library that is not at hand; `Of` may name it
  ControlGroup  ///< a control array
};

/// The type of a value. Of an array it is that of the elements.
struct TypeRef {
  TypeSort Sort = TypeSort::Unknown;
  bool IsArray = false;
  /// Component, UDT, BuiltinType, name of the library (std::string) or Entry of the control array.
  const void* Of = nullptr;

  const Component* Module() const { return static_cast<const Component*>(Of); }
  const UDT* Structure() const { return static_cast<const UDT*>(Of); }
  const BuiltinType* Builtin() const { return static_cast<const BuiltinType*>(Of); }
  const std::string* Library() const { return static_cast<const std::string*>(Of); }
  TypeRef Element() const { return {Sort, false, Of}; }
  bool IsObject() const {
    return !IsArray && (Sort == TypeSort::Module || Sort == TypeSort::Builtin);
  }
};

enum class EntrySort : std::uint8_t {
  Local,  ///< variable or constant of a procedure; without an element: declared by ReDim alone
  Parameter,
  Variable,
  Constant,
  Procedure,
  Property,
  Declare,
  Event,
  Control,
  EnumMember,
  Enumeration,
  Structure,
  Field,
  Module,
  Project,
  OwnResult  ///< the name of a function inside of it
};

/// A name of a scope.
struct Entry {
  Symbol Name = word::None;
  EntrySort Sort = EntrySort::Variable;
  bool IsPublic = false;    ///< visible from other modules
  bool IsConstant = false;  ///< of `Local`: no variable
  bool IsArrayOfControls = false;
  bool TypeKnown = false;
  const CodeElement* Element = nullptr;
  /// The module it stands in; null for projects.
  const Component* Home = nullptr;
  TypeRef Type;
  /// Another element of that name in the same scope.
  Entry* Next = nullptr;
};

/// What a form or control is by itself in the library of built-ins: "MDIForm"; empty for others.
std::string_view BaseTypeName(const Component& module);

/// Whether a member stands in its class itself: one that only comes from a class above does not,
/// one that overrides another does.
template <typename Member>
bool IsOwnMemberOf(const Member& member) {
  if constexpr (std::is_same_v<Member, Block>)
    return member.Implemented || member.InheritedFrom().empty();
  else
    return member.Implemented || member.InheritedFrom.empty();
}

/// The parameters of what an entry stands for; null where it takes none or none are known.
const Parameters* ParametersOf(const Entry& entry);

/// Symbols to entries.
class EntryMap {
 public:
  Entry* Find(Symbol name) const {
    Entry* const* found = mEntries.Find(name);
    return found ? *found : nullptr;
  }
  /// The place of a name, made where there is none; holds until the next call.
  Entry*& At(Symbol name) { return mEntries.At(name); }
  std::size_t Count() const { return mEntries.Count(); }
  template <typename Visit>
  void ForEach(Visit visit) const {
    mEntries.ForEach([&visit](Entry* entry) { visit(*entry); });
  }

 private:
  SymbolMap<Entry*> mEntries;
};

}  // namespace vendrel
