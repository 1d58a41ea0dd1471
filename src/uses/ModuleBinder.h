#pragma once
// One module being read: where the walk stands, what is open, and the uses of the statement at
// hand. The parts of it lie in files of their own: Names (what a name means), Chains (what stands
// behind a dot or parenthesis), Expressions, Statements, DeclarationUses, Records.

#include <cstdint>
#include <string_view>
#include <vector>

#include "intake/ModuleIntake.h"
#include "uses/Scopes.h"
#include "uses/Tokens.h"
#include "uses/UseBinder.h"

namespace vendrel {

/// A use of the statement at hand.
struct PendingUse {
  std::uint32_t Begin = 0;
  std::uint32_t End = 0;
  std::uint32_t Line = 0;
  UseKind Kind = UseKind::Read;
  UseAnswer Answer = UseAnswer::Unknown;
  UseAccessor Accessor = UseAccessor::None;
  bool Secondary = false;
  bool WholeArray = false;
  bool OwnProcedure = false;
  bool Reads = false;  ///< beside what its kind says
  bool Writes = false;
  Symbol Name = word::None;
  const CodeElement* Element = nullptr;
  const CodeElement* Holder = nullptr;
  const BuiltinMember* Member = nullptr;
  const BuiltinType* Type = nullptr;
  const std::string* Library = nullptr;
  const Entry* Ambiguous = nullptr;
  /// The use of what this is a field or element of; -1 where it is none of that.
  std::int32_t Path = -1;
};

/// What a part of an expression stands for.
struct UseValue {
  enum class Of : std::uint8_t { Value, Module, Project, Library, BuiltinHolder, Enumeration };
  Of Sort = Of::Value;
  TypeRef Type;
  const Entry* Named = nullptr;
  const BuiltinMember* Member = nullptr;
  const BuiltinType* Holder = nullptr;
  ProjectScope* Project = nullptr;
  std::string_view Library;
  /// The use of its last name; -1 where there is none.
  std::int32_t Record = -1;
  /// A variable, element or field, which can be written and handed on by reference.
  bool IsStorage = false;
  /// A chain and nothing else.
  bool IsLone = false;
  /// Reached through Me.
  bool IsMe = false;
  bool HadArguments = false;
  /// VB.NET: a namespace, or a part of one, that no assembly at hand tells.
  bool IsNamespace = false;
};

/// What is known of the parameters of a callee.
struct Callee {
  const vendrel::Parameters* Declared = nullptr;
  const BuiltinMember* Member = nullptr;
  std::int32_t Record = -1;
  bool IsGraphics = false;
};

/// A text whose names are bound.
struct BoundSource {
  /// The module that it is; of VB.NET one that has a part in the file.
  const Component* Module = nullptr;
  const SourceText* Source = nullptr;
  /// Of VB.NET, where the parts of a type may stand in several files.
  ProjectFile* File = nullptr;
};

/// Binds the names of one module, or of one file of VB.NET.
class ModuleBinder {
 public:
  ModuleBinder(Scopes& scopes, ProjectScope& project, const BoundSource& source,
               const UseOptions& options, UseCounts& counts, const TakeUse& take);
  void Bind();
  /// VB.NET: the whole file, or what of it is that module's (null: all).
  void BindFile(const Component* only);

 private:
  enum class Place : std::uint8_t { Declarations, Type, Enum, Procedure };
  struct WithFrame {
    UseValue Value;
    std::vector<PendingUse> Path;
  };

  // ModuleBinder.cpp
  void TakeDirective();
  void TakeLine();
  void TakeStatement(std::size_t from, std::size_t to);
  void CountFalseBranch();
  void IndexBlocks();
  void ReportUnread(std::size_t from, std::size_t to);

  // Locals.cpp
  void EnterProcedure(const Block* block, Symbol name);
  void LeaveProcedure();
  void AddLocal(Symbol name, EntrySort sort, const CodeElement* element, bool isConstant);
  Entry* Local(Symbol name) const {
    return mPlace == Place::Procedure ? mLocals.Find(name) : nullptr;
  }
  const Block* BlockAt(std::uint32_t line, Symbol name, Symbol accessor);

  // Names.cpp
  UseValue BindName(std::size_t at);
  UseValue UseOf(std::size_t at, const Entry& entry);
  UseValue UseOfMember(std::size_t at, const BuiltinMember& member);
  UseValue UseOfHolder(std::size_t at, const BuiltinType& type);
  UseValue UseOfProject(std::size_t at, ProjectScope& project);
  UseValue UseOfOwnResult(std::size_t at, const Entry& entry);
  UseValue UnboundName(std::size_t at);
  UseValue Unbound(std::size_t at, UseAnswer answer, const TypeRef& type);
  bool BindProjectName(std::size_t at, ProjectScope& project, bool own, UseValue& value);
  bool BindBuiltinName(std::size_t at, UseValue& value);
  bool YieldsToFunction(std::size_t at, const BuiltinMember& member) const;
  UseAnswer AnswerOf(const Entry& entry) const;
  bool IsLibrary(const Component& module) const;
  bool IsExplicit() const { return mModule->OptionExplicit; }

  // Chains.cpp
  UseValue ParseChain(std::size_t& at, std::size_t end, bool isStatement);
  void FollowChain(UseValue& value, std::size_t& at, std::size_t end, bool isStatement);
  UseValue ChainStart(std::size_t& at, std::size_t end);
  UseValue BindMember(const UseValue& base, std::size_t at);
  UseValue MemberOfHolder(const UseValue& base, std::size_t at);
  UseValue MemberOfModule(const UseValue& base, const Component& module, std::size_t at);
  UseValue MemberOfProject(ProjectScope& project, std::size_t at);
  UseValue MemberOfBuiltin(const BuiltinType& type, std::size_t at);
  UseValue MemberOfGroup(std::size_t at);
  UseValue BindKey(const UseValue& base, std::size_t at);
  void ApplyParentheses(UseValue& value, std::size_t& at, std::size_t end);
  void ApplyIndex(UseValue& value, std::size_t open, std::size_t close);
  bool IsMemberMark(std::size_t at, std::size_t end, bool isStatement) const;
  bool TakesParentheses(std::size_t at, std::size_t end, bool isStatement) const;

  // Expressions.cpp
  UseValue ParseExpression(std::size_t& at, std::size_t end);
  UseValue ParseOperand(std::size_t& at, std::size_t end);
  UseValue ParseGroup(std::size_t& at, std::size_t end);
  void ParseTypeOf(std::size_t& at, std::size_t end);
  void ParseArguments(std::size_t from, std::size_t end, const Callee& callee);
  void ParseArgument(std::size_t& at, std::size_t end, const Callee& callee, int position);
  void BindArgumentName(std::size_t at, const Callee& callee);
  bool TakesByReference(const Callee& callee, int position, Symbol name) const;
  Callee CalleeOf(const UseValue& value) const;
  UseValue ParseType(std::size_t& at, std::size_t end, UseKind kind);
  void SkipGraphicsWord(std::size_t& at, std::size_t end);

  // Writing.cpp
  void MarkWrite(UseValue& value, bool isSet);
  void MarkByReference(UseValue& value);
  void MarkCall(UseValue& value);
  void MarkPath(std::int32_t record, bool reads);
  bool AddDefaultMember(UseValue& value, UseKind kind);
  void ReadDefault(UseValue& value);
  void ParseTargets(std::size_t from, std::size_t end);

  // Statements.cpp
  void ParseStatement(std::size_t from, std::size_t end);
  void ParseOneStatement(std::size_t from, std::size_t end);
  bool ParseKeyword(std::size_t from, std::size_t end);
  bool ParseInputOutput(std::size_t from, std::size_t end);
  void ParseGeneric(std::size_t from, std::size_t end);
  void ParseReDim(std::size_t from, std::size_t end);
  void ParseAssignment(std::size_t from, std::size_t end, bool isSet);
  void ParseRaise(std::size_t from, std::size_t end);
  void ParseOpen(std::size_t from, std::size_t end);
  void ParseGet(std::size_t from, std::size_t end);
  void ParseList(std::size_t from, std::size_t end);
  bool ParseMidTarget(std::size_t from, std::size_t end);

  // ControlFlow.cpp
  bool ParseControlFlow(std::size_t from, std::size_t end);
  void ParseIf(std::size_t from, std::size_t end);
  void ParseFor(std::size_t from, std::size_t end);
  // What follows the counter.
  void ParseForRange(std::size_t at, std::size_t end, bool each);
  void ParseSelect(std::size_t from, std::size_t end);
  void ParseOn(std::size_t from, std::size_t end);
  void ParseLabels(std::size_t from, std::size_t end);
  void ParseWith(std::size_t from, std::size_t end);

  // DeclarationUses.cpp
  bool ParseDeclaration(std::size_t from, std::size_t end);
  void ParseProcedure(std::size_t at, std::size_t end);
  void ParseDeclare(std::size_t at, std::size_t end);
  void ParseEvent(std::size_t at, std::size_t end);
  void ParseTypeOrEnum(std::size_t at, std::size_t end, bool isEnum);
  void ParseTypeLine(std::size_t from, std::size_t end);
  void ParseEnumLine(std::size_t from, std::size_t end);
  void ParseDeclarators(std::size_t at, std::size_t end, bool isConstant);
  void ParseParameters(std::size_t open, std::size_t end, const Parameters* parameters);
  void ParseImplements(std::size_t at, std::size_t end);
  std::size_t ParseAs(std::size_t at, std::size_t end);
  const CodeElement* DeclaredBy(Symbol name, std::uint32_t line, bool isConstant);
  std::int32_t Declare(std::size_t at, const CodeElement* element, UseAnswer answer);
  void TieToSource(std::size_t at, const Block& block);
  bool TieToInterface(std::size_t at, std::string_view prefix, std::string_view member);
  bool TieToEvent(std::size_t at, std::string_view prefix, std::string_view event);
  bool FindEvent(const TypeRef& type, bool isControl, std::string_view event, PendingUse& use);
  PendingUse& AddPart(std::size_t at, std::size_t from, std::size_t to, UseKind kind);

  // NetNames.cpp
  UseValue BindNetName(std::size_t at);
  bool BindNetType(std::size_t& at, std::size_t end, UseKind kind, UseValue& value);
  UseValue NetMemberOf(const UseValue& base, const Component& module, std::size_t at);
  UseValue UseOfType(std::size_t at, const Component& type, UseKind kind);
  UseValue ParseNetType(std::size_t& at, std::size_t end, UseKind kind);
  void ParseTypeArguments(std::size_t open, std::size_t close);
  bool IsTypeParameter(Symbol name) const;
  const Block* ChooseOverload(const UseValue& value, std::size_t count);
  std::size_t CountArguments(std::size_t open) const;
  bool IsNamespaceRoot(Symbol name);
  UseValue BindNamespacePart(const UseValue& base, std::size_t at);
  const Component* NetTypeOf(std::size_t from, std::size_t to);
  const Component* NetTypeSeen(Symbol folded, std::string_view name);
  const Component* NetTypeIn(const Component& module, std::size_t at);
  std::uint32_t ArityBehind(std::size_t at) const;
  std::string WrittenName(std::size_t from, std::size_t to) const;

  // NetExpressions.cpp
  bool ParseNetOperand(std::size_t& at, std::size_t end, UseValue& value);
  UseValue ParseNew(std::size_t& at, std::size_t end);
  void ParseBraces(std::size_t& at, std::size_t end, const UseValue& object);
  void ParseBehind(std::size_t& at, std::size_t end, UseValue& value);
  void ParseLambda(std::size_t& at, std::size_t end);
  void ParseCast(std::size_t& at, std::size_t end, UseValue& value);
  bool SkipQueryWord(std::size_t& at, std::size_t end);
  bool BeginsQuery(std::size_t at, std::size_t end) const;

  // NetStatements.cpp
  void IndexNetBlocks();
  bool StandsHere(const Block& block) const;
  std::size_t ParseAttributes(std::size_t at, std::size_t end);
  void ParseNetStatement(std::size_t from, std::size_t end);
  bool ParseNetDeclaration(std::size_t& at, std::size_t end);
  const Component* TypeAt(std::size_t at);
  void EnterType(std::size_t at, std::size_t end);
  void LeaveType();
  void UseModule(const Component* module);
  void ParseNetProcedure(std::size_t at, std::size_t end, bool hasBody);
  const Block* NetBlockAt(std::size_t at) const;
  void ParseNetProperty(std::size_t at, std::size_t end);
  void ParseNetParameters(std::size_t open, std::size_t close, const Parameters* parameters);
  void ParseNetDeclarators(std::size_t at, std::size_t end, bool isConstant);
  void ParseTies(std::size_t at, std::size_t end);
  std::size_t ParseTypeParameters(std::size_t at, std::size_t end);
  const CodeElement* NamedLikeBefore(Symbol name, std::uint32_t line) const;
  std::size_t DeclareVariable(std::size_t at, std::size_t end, EntrySort sort);

  // NetControlFlow.cpp
  bool ParseNetFlow(std::size_t at, std::size_t end);
  void ParseNetFor(std::size_t at, std::size_t end);
  void ParseNames(std::size_t at, std::size_t end, UseKind kind);
  void ParseNetGeneric(std::size_t at, std::size_t end);

  // Records.cpp
  std::int32_t AddUse(std::size_t at, UseKind kind, UseAnswer answer);
  PendingUse& AddSecondary(const PendingUse& of, UseKind kind);
  void Emit(std::size_t from, std::size_t to);
  void Give(const PendingUse& use);
  std::int32_t ColumnOf(std::uint32_t line, std::uint32_t offset);

  // Small readers of tokens.
  const Token& At(std::size_t at) const { return mScan.Tokens[at]; }
  bool IsWord(std::size_t at, std::size_t end) const {
    return at < end && At(at).Kind == TokenKind::Word;
  }
  bool IsWord(std::size_t at, std::size_t end, Symbol name) const {
    return IsWord(at, end) && At(at).Name == name && !At(at).Bracketed;
  }
  bool IsMark(std::size_t at, std::size_t end, char mark) const {
    return at < end && At(at).Kind == TokenKind::Mark && At(at).Mark == mark;
  }
  /// Takes a word that is no identifier.
  void Skip(std::size_t& at) { mScan.Tokens[at++].Answered = true; }
  bool SkipIf(std::size_t& at, std::size_t end, Symbol name) {
    if (!IsWord(at, end, name)) return false;
    Skip(at);
    return true;
  }
  void SkipAll(std::size_t from, std::size_t end) {
    while (from < end) Skip(from);
  }
  /// Position of a word outside of parentheses; `end` where there is none.
  std::size_t FindWord(std::size_t from, std::size_t end, Symbol name) const;
  std::size_t CloseOf(std::size_t open, std::size_t end) const;
  // Hands the places of the parentheses that open at `at`, if any do, to `parse`; gives the place
  // behind them.
  template <typename Parse>
  std::size_t InParentheses(std::size_t at, std::size_t end, Parse parse) {
    if (!IsMark(at, end, '(')) return at;
    const std::size_t close = CloseOf(at, end);
    parse(at, close);
    return close < end ? close + 1 : end;
  }
  PendingUse& Of(std::int32_t record) { return mUses[static_cast<std::size_t>(record)]; }

  Scopes& mScopes;
  ProjectScope& mProject;
  const SourceText& mSource;
  const Component* mModule;
  ModuleScope* mScope;
  const UseOptions& mOptions;
  UseCounts& mCounts;
  const TakeUse& mTake;
  TokenScan mScan;
  ModuleIntake mConditions;
  bool mIsAscii = false;

  // Of VB.NET.
  ProjectFile* mFile;
  NetScope* mNetScope = nullptr;
  bool mIsNet = false;
  bool mQuery = false;
  bool mAddressed = false;  // behind AddressOf, where no arguments tell the overload
  int mLambdas = 0;         // open ones, whose bodies stand on lines of their own
  const Component* mOnly = nullptr;
  std::vector<const Component*> mTypes;                         // open classes, the innermost last
  std::vector<std::pair<Symbol, std::size_t>> mTypeParameters;  // with the depth of their class
  std::vector<std::pair<std::uint32_t, const Component*>> mTypeLines;

  Place mPlace = Place::Declarations;
  const CodeElement* mHolder = nullptr;
  const Block* mBlock = nullptr;
  const Enumeration* mEnum = nullptr;
  const UDT* mStructure = nullptr;
  LocalTable& mLocals;
  std::vector<std::pair<Symbol, const CodeElement*>> mSameNamed;  // of VB.NET, in later blocks
  std::vector<std::pair<std::uint32_t, const Block*>> mBlocks;
  std::vector<WithFrame> mWith;
  int mDepth = 0;
  bool mStepEnds = false;
  bool mGraphics = false;
  bool mFalseBranch = false;

  std::vector<PendingUse> mUses;
  std::vector<std::uint32_t> mOrder;
  NameUse mUse;
  std::uint32_t mColumnLine = 0;
  std::uint32_t mColumnOffset = 0;
  std::int32_t mColumn = 1;
};

}  // namespace vendrel
