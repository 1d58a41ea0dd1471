#pragma once
// What stands in the way of a move to another platform: the kinds of it, what each weighs, and the
// functions behind them with what replaces these. All of it is data; docs/assess.md is its page.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vendrel {

// A row a kind: its name in code, its id, what one of it is, its weight.
// clang-format off
#define VENDREL_HINDRANCES(X)                                                                              \
  X(LateBinding,    "late-binding",    "declared As Object, or made by name: members are found at run time", 2)  \
  X(VariantType,    "variant",         "a Variant, or declared without a type",                              1)  \
  X(GoSub,          "gosub",           "GoSub, or On ... GoSub",                                             8)  \
  X(ResumeNext,     "resume-next",     "On Error Resume Next",                                               3)  \
  X(DefType,        "def-type",        "a Def statement: the first letter of a name tells its type",         4)  \
  X(ApiCall,        "api-call",        "a call of a function that Declare names",                            3)  \
  X(MissingFile,    "missing-file",    "a reference or control whose file is not on this machine",           10) \
  X(SixteenBit,     "sixteen-bit",     "a leftover of 16-bit Windows",                                       6)  \
  X(Pointer,        "pointer",         "an address of a variable, string, object or procedure",              8)  \
  X(FileAccess,     "file-access",     "a file by number, or a folder, without an object",                   1)  \
  X(RegistryAccess, "registry-access", "the settings of a program in the registry",                          2)  \
  X(Printing,       "printing",        "the object Printer, or a form that prints itself",                   4)  \
  X(DoEvents,       "do-events",       "DoEvents: whatever is waiting runs here",                            3)  \
  X(DefaultMember,  "default-member",  "the default member of a control or list, not named",                 1)  \
  X(ParamArray,     "param-array",     "a procedure that takes any number of arguments",                     1)  \
  X(ArrayBase,      "array-base",      "an array that does not begin with 0",                                3)  \
  X(DateNumber,     "date-number",     "a date taken as a number",                                           3)
// clang-format on

enum class Hindrance : std::uint8_t {
#define VENDREL_HINDRANCE(name, id, what, weight) name,
  VENDREL_HINDRANCES(VENDREL_HINDRANCE)
#undef VENDREL_HINDRANCE
};

struct HindranceRow {
  std::string_view Id, What;
  std::int64_t Weight;
};

inline constexpr std::array kHindrances{
#define VENDREL_HINDRANCE_ROW(name, id, what, weight) HindranceRow{id, what, weight},
    VENDREL_HINDRANCES(VENDREL_HINDRANCE_ROW)
#undef VENDREL_HINDRANCE_ROW
};
/// The highest weight that may be set.
inline constexpr std::int64_t kMostWeight = 1000;
inline constexpr std::size_t kHindranceCount = kHindrances.size();

constexpr const HindranceRow& RowOf(Hindrance kind) {
  return kHindrances[static_cast<std::size_t>(kind)];
}

/// Where a name of the language stands.
enum class RuntimeUse : std::uint8_t {
  /// Anywhere, but behind a dot.
  Function,
  /// At the front of a statement.
  Statement,
  /// At the front of a statement, with a file number behind it ("#1").
  FileStatement,
};

/// A function, statement or object of the language that stands in the way.
struct RuntimeName {
  /// In lower case.
  std::string_view Name;
  Hindrance Kind;
  RuntimeUse Use;
  /// What does the same elsewhere.
  std::string_view Replacement;
};

/// All of them, in the order of their names.
std::span<const RuntimeName> RuntimeNames();
/// The one of that name in lower case; null if it is none.
const RuntimeName* FindRuntimeName(std::string_view lowerName);

/// What does the same elsewhere as a function of a library of Windows, both names in lower case
/// (the library without ".dll", the function without the "A" or "W" of its two forms); empty where
/// nothing is known.
std::string_view ApiReplacementOf(std::string_view library, std::string_view function);

/// Whether a library, in lower case and without extension, is one of 16-bit Windows.
bool IsSixteenBitLibrary(std::string_view library);

}  // namespace vendrel
