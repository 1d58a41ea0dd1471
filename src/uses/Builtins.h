#pragma once
// What Visual Basic 6 knows without a line of the project: the members of its own libraries, their
// constants, the objects and controls with their properties, methods and events. A table, used
// where no type library of a reference is at hand. Names stand as those libraries give them.
//
//   library   VBA, VBRUN, VB, stdole
//   type      what a library holds: module, class, enumeration, alias. Constants and functions are
//             members of the modules and enumerations
//   global    a member that is found by its bare name: of modules, enumerations and VB~Global

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vendrel {

/// What a member of the table is.
enum class BuiltinKind : std::uint8_t {
  Function,  ///< gives a result; may also be called as a statement
  Sub,       ///< gives none
  Property,  ///< read or assigned; `Readable` and `Writable` tell which
  Constant,  ///< of a module or an enumeration
  Event,     ///< of a class; its parameters are those of a procedure that handles it
};

/// What a type of the table is.
enum class BuiltinTypeKind : std::uint8_t {
  Module,       ///< its members are globals
  Class,        ///< an object type
  Control,      ///< a class whose objects are placed on a form
  Enumeration,  ///< its members are globals; a value of it is a Long
  Alias,        ///< another name of `Base`
};

/// A parameter of a member.
struct BuiltinParameter {
  std::string_view Name;
  /// Name of its type: intrinsic ("Long", "Variant"), or of this table ("VbCompareMethod").
  std::string_view Type = "Variant";
  bool Optional = false;
  /// The callee may write the argument. False for nearly all: they only read what they are given.
  bool ByReference = false;
  /// Takes all arguments that are left.
  bool ParamArray = false;
};

struct BuiltinType;

/// A member of a type: function, sub, property, constant or event.
struct BuiltinMember {
  std::string_view Name;
  const BuiltinType* Owner = nullptr;  ///< never null in the table
  BuiltinKind Kind = BuiltinKind::Function;
  bool Readable = true;   ///< a property that can be read; true for all that are none
  bool Writable = false;  ///< a property that can be assigned
  bool IsArray = false;   ///< the result is an array of `Type`
  /// Type of result, property or constant: intrinsic or of this table; empty for subs and events.
  std::string_view Type;
  /// Of a constant as it is written in the language ("1", "&H80000005"); empty where it is not
  /// told.
  std::string_view Value;
  /// In order. Of an indexed property (`List(Index)`) its indexes.
  std::span<const BuiltinParameter> Parameters;

  /// How many arguments it needs at the least, and takes at the most; the latter -1: any number.
  int MinimumArguments() const;
  int MaximumArguments() const;
  /// "VBA~Strings~Left".
  std::string QualifiedName() const;
};

/// A type of a library.
struct BuiltinType {
  std::string_view Library;  ///< "VBA", "VBRUN", "VB", "stdole"
  std::string_view Name;
  BuiltinTypeKind Kind = BuiltinTypeKind::Class;
  /// The type that an alias stands for; empty for all others.
  std::string_view Base;
  /// Read where an object of the type stands alone (`Text1 = "x"`); null where there is none.
  const BuiltinMember* DefaultMember = nullptr;
  /// `New` may make one (`Collection`, `StdFont`).
  bool Creatable = false;
  /// Its members are globals: modules, enumerations, and VB~Global.
  bool IsGlobal = false;
  /// All of them, in no order that means something, each owned by this type.
  std::span<const BuiltinMember> Members;

  bool IsObject() const {
    return Kind == BuiltinTypeKind::Class || Kind == BuiltinTypeKind::Control;
  }
  /// "VB~TextBox".
  std::string QualifiedName() const;
};

/// The whole table. Constant, made at first use, shared by all threads. Names are found with ASCII
/// case ignored, in brackets or not, with a type suffix or not (`Left$` is `Left`), and without an
/// allocation.
class Builtins {
 public:
  static const Builtins& Table();

  Builtins(const Builtins&) = delete;
  Builtins& operator=(const Builtins&) = delete;

  /// What a bare name means: `Left`, `MsgBox`, `vbCrLf`, `Err`, `App`, `Load`; also what the
  /// language itself has without a library (`UBound`, `Debug`, `Tab`), which stand in the module
  /// VBA~Language. Null if it is none. Members of VBA go before those of VBRUN, VB, stdole.
  const BuiltinMember* FindGlobal(std::string_view name) const;
  /// The same within one library: `VBA.Left`, `VB.App`; null also for an unknown library.
  const BuiltinMember* FindGlobal(std::string_view library, std::string_view name) const;

  /// A type by its name (`TextBox`, `VbMsgBoxResult`, `Strings`) or its name and library
  /// (`VB.TextBox`); null for intrinsic types and unknown ones.
  const BuiltinType* FindType(std::string_view name) const;
  const BuiltinType* FindType(std::string_view library, std::string_view name) const;
  /// Whether this is the name of one of the libraries.
  bool IsLibrary(std::string_view name) const;

  /// A member of a type. Aliases are followed. Null if the type has none of that name. An event
  /// and another member may share a name (`Timer`): `FindEvent` finds events, this all others.
  const BuiltinMember* FindMember(const BuiltinType& type, std::string_view name) const;
  const BuiltinMember* FindEvent(const BuiltinType& type, std::string_view name) const;
  /// By the name of the type, as `FindType` takes it.
  const BuiltinMember* FindMember(std::string_view type, std::string_view name) const;
  const BuiltinMember* FindEvent(std::string_view type, std::string_view name) const;
  /// What a container adds to each control on it (`Top`, `Tag`, `Visible`), by its bare name: a
  /// member of VB~VBControlExtender. It stands behind the control's own members.
  const BuiltinMember* FindSiteMember(std::string_view name) const;

  /// The type that an alias stands for in the end, or the type itself.
  const BuiltinType& WithoutAlias(const BuiltinType& type) const;
  /// Whether a name is that of an intrinsic type: Boolean, Byte, Integer, Long, Single, Double,
  /// Currency, Decimal, Date, String, Object, Variant, Any.
  static bool IsIntrinsic(std::string_view name);

  std::span<const BuiltinType> Types() const { return mTypes; }
  /// What of the table could not be read, a sentence each: empty, as a test holds.
  const std::vector<std::string>& Faults() const { return mFaults; }

 private:
  Builtins();
  friend class BuiltinReader;

  // What a name was placed for.
  enum class Sort : std::uint8_t { Free, Global, LibraryGlobal, Type, LibraryType, Member, Event };
  struct Slot {
    Sort Kind = Sort::Free;
    std::uint32_t Owner = 0;     // position of the type or library; 0 where it does not matter
    std::uint32_t Position = 0;  // of the member or type that is found
    std::string_view Name;
  };
  void Index();
  void Place(Sort kind, std::uint32_t owner, std::uint32_t position, std::string_view name);
  const Slot* Find(Sort kind, std::uint32_t owner, std::string_view name) const;
  int LibraryPosition(std::string_view name) const;

  std::vector<std::string_view> mLibraries;
  std::vector<BuiltinType> mTypes;
  std::vector<BuiltinMember> mMembers;
  std::vector<BuiltinParameter> mParameters;
  std::vector<Slot> mSlots;  // open addressing; a power of two, at most half full
  std::vector<std::string> mFaults;
};

}  // namespace vendrel
