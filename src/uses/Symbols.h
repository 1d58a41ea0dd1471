#pragma once
// Names as numbers: each name is folded and hashed once where it is first met, and compared as a
// number from then on. The reserved words come first, in the order of their list.

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vendrel {

// The words that mean something where they stand in a statement. Not all of them are reserved: a
// variable may be called Name, Line or Step, and any word may stand behind a dot.
// clang-format off
#define VENDREL_USE_WORDS(X)                                                                       \
  X(AddressOf) X(And) X(Any) X(As) X(Attribute) X(Boolean) X(ByRef) X(Byte) X(ByVal) X(Call)       \
  X(Case) X(Close) X(Const) X(Currency) X(Date) X(Decimal) X(Declare) X(DefBool) X(DefByte)        \
  X(DefCur) X(DefDate) X(DefDbl) X(DefDec) X(DefInt) X(DefLng) X(DefObj) X(DefSng) X(DefStr)       \
  X(DefVar) X(Dim) X(Do) X(Double) X(Each) X(Else) X(ElseIf) X(Empty) X(End) X(EndIf) X(Enum)      \
  X(Eqv) X(Erase) X(Error) X(Event) X(Exit) X(False) X(For) X(Friend) X(Function) X(Get)           \
  X(Global) X(GoSub) X(GoTo) X(If) X(Imp) X(Implements) X(In) X(Input) X(Integer) X(Is) X(Let)     \
  X(Like) X(Lock) X(Long) X(Loop) X(LSet) X(Me) X(Mod) X(New) X(Next) X(Not) X(Nothing) X(Null)    \
  X(Object) X(On) X(Open) X(Option) X(Optional) X(Or) X(ParamArray) X(Preserve) X(Print)           \
  X(Private) X(Public) X(Put) X(RaiseEvent) X(ReDim) X(Rem) X(Resume) X(Return) X(RSet) X(Seek)    \
  X(Select) X(Set) X(Single) X(Static) X(Stop) X(String) X(Sub) X(Then) X(To) X(True) X(Type)      \
  X(TypeOf) X(Unlock) X(Until) X(Variant) X(Wend) X(While) X(With) X(WithEvents) X(Write) X(Xor)   \
  /* words by place alone */                                                                       \
  X(Access) X(Alias) X(Append) X(B) X(BF) X(Binary) X(F) X(Len) X(Lib) X(Line) X(Mid) X(MidB)      \
  X(Name) X(Output) X(Property) X(Random) X(Read) X(Shared) X(Step) X(Width)                       \
  /* of VB.NET */                                                                                  \
  X(AddHandler) X(AndAlso) X(Catch) X(Class) X(Continue) X(CType) X(Default) X(Delegate)           \
  X(DirectCast) X(Finally) X(GetType) X(GetXmlNamespace) X(Handles) X(Imports) X(Inherits)         \
  X(Interface) X(IsFalse) X(IsNot) X(IsTrue) X(Module) X(MustInherit) X(MustOverride) X(MyBase)    \
  X(MyClass) X(Namespace) X(Narrowing) X(NotInheritable) X(NotOverridable) X(Of) X(Operator)       \
  X(OrElse) X(Overloads) X(Overridable) X(Overrides) X(Partial) X(Protected) X(ReadOnly)           \
  X(RemoveHandler) X(SByte) X(Shadows) X(Short) X(Structure) X(SyncLock) X(Throw) X(Try)           \
  X(TryCast) X(UInteger) X(ULong) X(UShort) X(Using) X(When) X(Widening) X(WriteOnly) X(Char) X(Aggregate) X(Ascending)                   \
  X(Async) X(Await) X(By) X(Custom) X(Descending) X(Distinct) X(Equals) X(From) X(Group)           \
  X(Into) X(Iterator) X(Join) X(NameOf) X(Order) X(Skip) X(Take) X(Where) X(Yield)
// What converts a value of VB.NET; names for anything else.
#define VENDREL_USE_CONVERSIONS(X)                                                                 \
  X(CBool) X(CByte) X(CChar) X(CDate) X(CDbl) X(CDec) X(CInt) X(CLng) X(CObj) X(CSByte) X(CShort)  \
  X(CSng) X(CStr) X(CUInt) X(CULng) X(CUShort)
// clang-format on

using Symbol = std::uint32_t;

/// The symbols of words; a word `As` is `word::As`.
namespace word {
enum Word : Symbol {
  None,
#define VENDREL_USE_WORD_SYMBOL(name) name,
  VENDREL_USE_WORDS(VENDREL_USE_WORD_SYMBOL) Count,
  BeforeConversions = Count - 1,
  VENDREL_USE_CONVERSIONS(VENDREL_USE_WORD_SYMBOL)
#undef VENDREL_USE_WORD_SYMBOL
      BehindConversions,
  FirstByPlace = Access,
  FirstOfNet = AddHandler
};
/// Whether a type of VB.NET begins with the word.
constexpr bool OpensType(Symbol name) {
  return name == Class || name == Structure || name == Interface || name == Module || name == Enum;
}
constexpr bool IsConversion(Symbol name) { return name >= Count && name < BehindConversions; }
}  // namespace word

/// The names met so far.
class Symbols {
 public:
  Symbols();
  /// The number of a name, case ignored, without brackets and type character; 0 of an empty one.
  Symbol Of(std::string_view name);
  struct FrontName {
    Symbol Name;
    std::size_t Size;
  };
  /// The name that a text begins with: its letters, digits, underscores and whatever is beyond
  /// ASCII. Found, folded and hashed in one walk.
  FrontName OfFront(std::string_view text);
  /// The number of "front.part".
  Symbol Joined(Symbol front, Symbol part) { return Compound(front, '.', part); }
  /// The number of a generic type: "List`1".
  Symbol WithArity(Symbol name, std::uint32_t arity) { return Compound(name, '`', arity); }
  /// The folded name.
  std::string_view TextOf(Symbol symbol) const { return mTexts[symbol]; }
  std::size_t Count() const { return mTexts.size(); }

 private:
  // Most names have eight characters at most and are compared without a look at their text.
  struct Slot {
    std::uint64_t First;  ///< eight characters of the folded name, zeros behind it
    std::uint32_t Size;
    Symbol Name;
  };
  Symbol Find(std::string_view folded);
  Symbol Find(std::string_view folded, std::uint64_t first, std::uint64_t hash);
  void Grow();
  Symbol Compound(Symbol front, char mark, std::uint32_t back);

  std::vector<Slot> mSlots;
  std::vector<std::string_view> mTexts;
  std::deque<std::string> mHeld;
  std::unordered_map<std::uint64_t, Symbol> mJoined, mWithArity;
};

}  // namespace vendrel
