// Operands, operators and lists of arguments. What an expression computes does not matter here;
// what matters is which names are alone, and where each list ends.

#include <utility>

#include "core/Ascii.h"
#include "uses/ModuleBinder.h"

namespace vendrel {
namespace {

// Deeper nesting than that no person wrote.
constexpr int kDeepest = 200;

bool IsOperatorWord(Symbol name) {
  switch (name) {
    case word::And:
    case word::Or:
    case word::Not:
    case word::Xor:
    case word::Eqv:
    case word::Imp:
    case word::Mod:
    case word::Is:
    case word::Like:
    case word::AndAlso:
    case word::OrElse:
    case word::IsNot: return true;
    default: return false;
  }
}

bool IsLiteralWord(Symbol name) {
  switch (name) {
    case word::True:
    case word::False:
    case word::Nothing:
    case word::Null:
    case word::Empty: return true;
    default: return false;
  }
}

bool EndsExpression(Symbol name) {
  switch (name) {
    case word::Then:
    case word::Else:
    case word::To:
    case word::GoTo:
    case word::GoSub: return true;
    default: return false;
  }
}

}  // namespace

std::size_t ModuleBinder::CloseOf(std::size_t open, std::size_t end) const {
  const std::int32_t match = At(open).Match;
  return match < 0 || static_cast<std::size_t>(match) > end ? end : static_cast<std::size_t>(match);
}

Callee ModuleBinder::CalleeOf(const UseValue& value) const {
  Callee callee;
  callee.Record = value.Record;
  callee.Member = value.Member;
  if (value.Named && value.Sort == UseValue::Of::Value && !value.IsStorage)
    callee.Declared = ParametersOf(*value.Named);
  return callee;
}

// "(a)", "(a + b).c", "(x, y)" of a graphics method.
UseValue ModuleBinder::ParseGroup(std::size_t& at, std::size_t end) {
  const std::size_t close = CloseOf(at, end);
  UseValue value;
  int parts = 0;
  for (std::size_t inner = at + 1; inner < close; ++parts) {
    const std::size_t before = inner;
    value = ParseExpression(inner, close);
    if (inner == before) ++inner;
  }
  at = close < end ? close + 1 : end;
  value.IsStorage = value.IsLone = false;
  if (parts != 1) value.Type = {TypeSort::Plain, false, nullptr};
  // Behind a blank, parentheses are the next item of a list: "Print (a) (b)".
  const bool isNextItem = IsMark(at, end, '(') && At(at).GapBefore;
  if (!isNextItem) FollowChain(value, at, end, false);
  value.IsStorage = value.IsLone = false;
  value.Record = -1;
  return value;
}

void ModuleBinder::ParseTypeOf(std::size_t& at, std::size_t end) {
  Skip(at);
  if (at >= end) return;
  if (IsMark(at, end, '('))
    ParseGroup(at, end);
  else if (IsWord(at, end) || IsMark(at, end, '.') || IsMark(at, end, '!'))
    ParseChain(at, end, false);
  if (SkipIf(at, end, word::Is) || SkipIf(at, end, word::IsNot)) ParseType(at, end, UseKind::Type);
}

// One operand. Nothing is taken where none stands.
UseValue ModuleBinder::ParseOperand(std::size_t& at, std::size_t end) {
  UseValue value;
  value.Type = {TypeSort::Plain, false, nullptr};
  if (mIsNet && ParseNetOperand(at, end, value)) return value;
  const Token& token = At(at);
  if (token.Kind != TokenKind::Word) {
    if (token.Kind == TokenKind::Mark) {
      if (token.Mark == '(') return ParseGroup(at, end);
      if (IsMemberMark(at, end, false)) return ParseChain(at, end, false);
    }
    ++at;
    return value;
  }
  if (!token.Bracketed) {
    if (IsLiteralWord(token.Name)) {
      Skip(at);
      return value;
    }
    switch (token.Name) {
      case word::New: Skip(at); return ParseType(at, end, UseKind::New);
      case word::TypeOf: ParseTypeOf(at, end); return value;
      case word::ByVal:
      case word::ByRef: Skip(at); return value;
      case word::AddressOf:
        Skip(at);
        if (!IsWord(at, end)) return value;
        mAddressed = true;
        value = ParseChain(at, end, false);
        mAddressed = false;
        if (value.Record >= 0) Of(value.Record).Kind = UseKind::Address;
        value.IsLone = false;
        return value;
      default: break;
    }
  }
  return ParseChain(at, end, false);
}

// Up to a comma, semicolon, closing parenthesis, colon, or a word that ends it. Gives the operand
// where it is the only one.
UseValue ModuleBinder::ParseExpression(std::size_t& at, std::size_t end) {
  UseValue last, none;
  none.Type = {TypeSort::Plain, false, nullptr};
  if (++mDepth > kDeepest) {
    --mDepth;
    at = end;
    return none;
  }
  int operands = 0, operators = 0;
  bool compares = false;  // objects, by Is
  while (at < end) {
    const Token& token = At(at);
    if (token.Kind == TokenKind::Mark) {
      const char mark = token.Mark;
      if (mark == ',' || mark == ';' || mark == ')' || mark == ':' || mark == kNamedMark) {
        if (!(mQuery && mark == ',')) break;
      }
      if (mIsNet && mark == '}') break;
      const bool isOperand = mark == '(' || (mIsNet && mark == '{') || IsMemberMark(at, end, false);
      if (!isOperand) {
        if (operands > 0 && mark != '#' && !compares) ReadDefault(last);
        if (mark != '#') ++operators;
        compares = false;
        ++at;
        continue;
      }
    } else if (token.Kind == TokenKind::Word && !token.Bracketed) {
      if (mQuery && SkipQueryWord(at, end)) {
        ++operators;
        continue;
      }
      if (EndsExpression(token.Name)) break;
      if (mStepEnds && token.Name == word::Step && operands > 0) break;
      if (mGraphics && token.Name == word::Step && IsMark(at + 1, end, '(')) {
        Skip(at);
        continue;
      }
      if (IsOperatorWord(token.Name)) {
        compares = token.Name == word::Is || token.Name == word::IsNot;
        if (operands > 0 && !compares) ReadDefault(last);
        ++operators;
        Skip(at);
        continue;
      }
      if (token.Name == word::ByVal) {
        ++operators;
        Skip(at);
        continue;
      }
    }
    last = ParseOperand(at, end);
    if (operators > 0 && !compares && !IsWord(at, end, word::Is)) ReadDefault(last);
    ++operands;
  }
  --mDepth;
  if (operands == 1 && operators == 0) return last;
  return none;
}

bool ModuleBinder::TakesByReference(const Callee& callee, int position, Symbol name) const {
  if (callee.Declared) {
    const Parameters& all = *callee.Declared;
    const Parameter* parameter = nullptr;
    if (name != word::None)
      parameter = all.Item(mScopes.Names().TextOf(name));
    else if (static_cast<std::size_t>(position) <= all.Count())
      parameter = all.Item(position);
    else if (all.Count() > 0 && all.Item(all.Count())->IsParamArray)
      parameter = all.Item(all.Count());
    // What VB.NET gathers in an array is a copy.
    return parameter && (parameter->IsByRef || (parameter->IsParamArray && !mIsNet));
  }
  if (callee.Member && name == word::None) {
    const auto parameters = callee.Member->Parameters;
    const auto index = static_cast<std::size_t>(position) - 1;
    if (index < parameters.size()) return parameters[index].ByReference;
  }
  return false;
}

// The name left of ":=".
void ModuleBinder::BindArgumentName(std::size_t at, const Callee& callee) {
  UseAnswer answer = UseAnswer::Library;
  if (callee.Record >= 0) answer = Of(callee.Record).Answer;
  const CodeElement* element = nullptr;
  if (callee.Declared) {
    element = callee.Declared->Item(mScopes.Names().TextOf(At(at).Name));
    if (element)
      answer = UseAnswer::Parameter;
    else if (!mIsNet)  // there another overload may have it
      answer = UseAnswer::Unknown;
  }
  const std::string* library = callee.Record >= 0 ? Of(callee.Record).Library : nullptr;
  const std::int32_t record = AddUse(at, UseKind::Name, answer);
  Of(record).Element = element;
  if (answer == UseAnswer::External) Of(record).Library = library;
}

void ModuleBinder::ParseArgument(std::size_t& at, std::size_t end, const Callee& callee,
                                 int position) {
  Symbol name = word::None;
  if (IsWord(at, end) && IsMark(at + 1, end, kNamedMark)) {
    name = At(at).Name;
    BindArgumentName(at, callee);
    at += 2;
  }
  UseValue value = ParseExpression(at, end);
  if (value.IsLone && value.IsStorage && TakesByReference(callee, position, name))
    MarkByReference(value);
}

// The B and BF of Line.
void ModuleBinder::SkipGraphicsWord(std::size_t& at, std::size_t end) {
  if (at + 1 == end &&
      (IsWord(at, end, word::B) || IsWord(at, end, word::BF) || IsWord(at, end, word::F)))
    Skip(at);
}

void ModuleBinder::ParseArguments(std::size_t from, std::size_t end, const Callee& callee) {
  int position = 1;
  const bool inGraphics = std::exchange(mGraphics, callee.IsGraphics);
  for (std::size_t at = from; at < end;) {
    if (IsMark(at, end, ',') || IsMark(at, end, ';')) {
      ++position;
      ++at;
      continue;
    }
    if (IsWord(at, end, word::To)) {
      Skip(at);
      continue;
    }
    if (IsWord(at, end, word::Else) || IsMark(at, end, ':')) break;
    if (callee.IsGraphics) {
      SkipGraphicsWord(at, end);
      if (IsMark(at, end, '-')) {
        ++at;
        continue;
      }
      if (at >= end) break;
    }
    const std::size_t before = at;
    ParseArgument(at, end, callee, position);
    if (at == before) ++at;
  }
  mGraphics = inGraphics;
}

// A type behind As, New or Is: "Long", "ADODB.Recordset".
UseValue ModuleBinder::ParseType(std::size_t& at, std::size_t end, UseKind kind) {
  if (mIsNet) return ParseNetType(at, end, kind);
  UseValue value;
  if (!IsWord(at, end)) return value;
  std::size_t last = at;
  while (IsMark(last + 1, end, '.') && IsWord(last + 2, end)) last += 2;
  const Symbol name = At(last).Name;
  const Symbol qualifier = last > at ? At(last - 2).Name : Symbol{word::None};
  if (last > at) mScopes.LibraryName(mScan.TextOf(At(last - 2)));
  value.Type = mScopes.TypeNamed(mModule, qualifier, name);
  if (last == at && !At(at).Bracketed &&
      (name == word::Any || Builtins::IsIntrinsic(mScopes.Names().TextOf(name)))) {
    Skip(at);
    return value;
  }
  const Entry* entry = mScopes.TypeEntry(mModule, qualifier, name);
  const BuiltinType* builtin = entry ? nullptr
                               : qualifier == word::None
                                   ? mScopes.Type(name)
                                   : mScopes.Table().FindType(mScopes.Names().TextOf(qualifier),
                                                              mScopes.Names().TextOf(name));
  UseAnswer answer = UseAnswer::Unknown;
  if (entry)
    answer = AnswerOf(*entry);
  else if (builtin)
    answer = UseAnswer::Library;
  else if (value.Type.Sort == TypeSort::External)
    answer = UseAnswer::External;
  for (; at < last; at += 2) {
    const ProjectName* front = nullptr;
    const auto found = mProject.Names.find(At(at).Name);
    if (found != mProject.Names.end()) front = &found->second;
    const std::int32_t record = AddUse(at, UseKind::Qualify, answer);
    PendingUse& use = Of(record);
    if (entry && front && front->Module) {
      use.Element = front->Module->Element;
      use.Answer = use.Element == mModule ? UseAnswer::OwnModule : UseAnswer::Project;
    } else if (entry && entry->Home) {
      use.Element = entry->Home->VBProject();
      if (use.Answer != UseAnswer::Library) use.Answer = UseAnswer::Project;
    } else {
      use.Library = mScopes.LibraryName(mScan.TextOf(At(at)));
    }
  }
  value.Record = AddUse(last, kind, answer);
  PendingUse& use = Of(value.Record);
  if (entry) use.Element = entry->Element;
  use.Type = builtin;
  if (answer == UseAnswer::External) use.Library = value.Type.Library();
  at = last + 1;
  return value;
}

}  // namespace vendrel
