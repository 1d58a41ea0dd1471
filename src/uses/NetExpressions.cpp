// VB.NET: operands of its own: lambdas, queries, casts, New with members.

#include "uses/ModuleBinder.h"

namespace vendrel {
// "CType(x, T)"
void ModuleBinder::ParseCast(std::size_t& at, std::size_t end, UseValue& value) {
  Skip(at);
  if (!IsMark(at, end, '(')) return;
  const std::size_t close = CloseOf(at, end);
  ++at;
  ParseExpression(at, close);
  if (IsMark(at, close, ',')) {
    ++at;
    value.Type = ParseNetType(at, close, UseKind::Type).Type;
  }
  ParseList(at, close);
  at = close < end ? close + 1 : end;
}

// "Sub(x) ..." and "Function(x As T) ...": the parameters are locals from here on.
void ModuleBinder::ParseLambda(std::size_t& at, std::size_t end) {
  const bool isSub = At(at).Name == word::Sub;
  Skip(at);
  const std::size_t close = CloseOf(at, end);
  ParseNetParameters(at, close, nullptr);
  at = close < end ? close + 1 : end;
  if (IsWord(at, end, word::As)) at = ParseAs(at, end);
  if (at >= end) {
    ++mLambdas;
    return;
  }
  if (!isSub) {
    ParseExpression(at, end);
    return;
  }
  std::size_t stop = at;  // the statement ends with the argument
  while (stop < end && !IsMark(stop, end, ',') && !IsMark(stop, end, ')')) {
    if (IsMark(stop, end, '(') || IsMark(stop, end, '{')) stop = CloseOf(stop, end);
    ++stop;
  }
  stop = std::min(stop, end);
  ParseStatement(at, stop);
  at = stop;
}

// "{a, b}", and behind With the members of what is made: "{.A = 1}".
void ModuleBinder::ParseBraces(std::size_t& at, std::size_t end, const UseValue& object) {
  const std::size_t close = CloseOf(at, end);
  WithFrame frame;
  frame.Value = object;
  mWith.push_back(std::move(frame));
  for (std::size_t inner = at + 1; inner < close;) {
    const bool isMember =
        IsMark(inner, close, '.') && IsWord(inner + 1, close) && IsMark(inner + 2, close, '=');
    if (isMember) {
      UseValue member = ParseChain(inner, close, false);
      MarkWrite(member, false);
      ++inner;
    }
    SkipIf(inner, close, word::Default);
    const std::size_t before = inner;
    if (inner < close) ParseExpression(inner, close);
    if (inner == before) ++inner;
  }
  mWith.pop_back();
  at = close < end ? close + 1 : end;
}

// "New T(arguments) With {...}", "New T() {...}", "New With {...}".
UseValue ModuleBinder::ParseNew(std::size_t& at, std::size_t end) {
  Skip(at);
  UseValue value;
  value.Type = {TypeSort::Late, false, nullptr};
  if (!IsWord(at, end, word::With)) {
    value = ParseNetType(at, end, UseKind::New);
    value.IsStorage = value.IsLone = false;
    if (IsMark(at, end, '(')) {
      Callee callee;
      if (value.Type.Sort == TypeSort::Module) {
        bool isOpen = false;
        const Entry* made = mScopes.NetMember(*value.Type.Module(), Symbol{word::New}, isOpen);
        if (made) callee.Declared = ParametersOf(*made);
      }
      callee.Record = value.Record;
      const std::size_t close = CloseOf(at, end);
      ParseArguments(at + 1, close, callee);
      at = close < end ? close + 1 : end;
    }
  }
  if (IsWord(at, end, word::With) || (IsWord(at, end, word::From) && IsMark(at + 1, end, '{')))
    Skip(at);
  if (IsMark(at, end, '{')) ParseBraces(at, end, value);
  return value;
}

bool ModuleBinder::BeginsQuery(std::size_t at, std::size_t end) const {
  return (IsWord(at, end, word::From) || IsWord(at, end, word::Aggregate)) && IsWord(at + 1, end) &&
         (IsWord(at + 2, end, word::In) || IsWord(at + 2, end, word::As));
}

// A word of a query, with the name that it declares.
bool ModuleBinder::SkipQueryWord(std::size_t& at, std::size_t end) {
  const auto declare = [&] {
    if (!IsWord(at, end)) return;
    at = DeclareVariable(at, end, EntrySort::Local);
  };
  switch (At(at).Name) {
    case word::From:
    case word::Join:
    case word::Aggregate:
    case word::Let:
      Skip(at);
      declare();
      SkipIf(at, end, word::In);
      return true;
    case word::Into:
      Skip(at);
      if (IsWord(at, end) && IsMark(at + 1, end, '=')) declare();
      if (IsWord(at, end, word::Group)) Skip(at);
      return true;
    case word::Select:
    case word::Where:
    case word::Order:
    case word::By:
    case word::Group:
    case word::On:
    case word::Equals:
    case word::Ascending:
    case word::Descending:
    case word::Distinct:
    case word::Skip:
    case word::Take:
    case word::While:
    case word::In: Skip(at); return true;
    default: return false;
  }
}

// Gives whether an operand of this language stood there.
bool ModuleBinder::ParseNetOperand(std::size_t& at, std::size_t end, UseValue& value) {
  if (IsMark(at, end, '{')) {
    ParseBraces(at, end, {});
    ParseBehind(at, end, value);
    return true;
  }
  if (!IsWord(at, end) || At(at).Bracketed) return false;
  const Symbol name = At(at).Name;
  switch (name) {
    case word::New: value = ParseNew(at, end); break;
    case word::Sub:
    case word::Function:
      if (!IsMark(at + 1, end, '(')) return false;
      ParseLambda(at, end);
      return true;
    case word::CType:
    case word::DirectCast:
    case word::TryCast: ParseCast(at, end, value); break;
    case word::GetType: {
      if (!IsMark(at + 1, end, '(')) return false;
      Skip(at);
      const std::size_t close = CloseOf(at, end);
      ++at;
      ParseNetType(at, close, UseKind::Type);
      at = close < end ? close + 1 : end;
      value.Type = {TypeSort::External, false, mScopes.LibraryName("System")};
      break;
    }
    case word::If:
    case word::NameOf:
      if (!IsMark(at + 1, end, '(')) return false;
      Skip(at);
      value = ParseGroup(at, end);
      return true;
    case word::Await:
      if (!IsWord(at + 1, end)) return false;
      Skip(at);
      value = ParseOperand(at, end);
      value.IsStorage = value.IsLone = false;
      return true;
    case word::MyBase:
    case word::MyClass: {
      const Component* above = name == word::MyClass ? mModule : mScopes.Of(*mModule).Above;
      value.Type = above ? Scopes::TypeOfModule(*above)
                         : TypeRef{TypeSort::External, false,
                                   mScopes.LibraryName(mModule->InheritsFrom.view())};
      Skip(at);
      break;
    }
    case word::From:
    case word::Aggregate: {
      if (!BeginsQuery(at, end)) return false;
      const bool outer = mQuery;
      mQuery = true;
      ParseExpression(at, end);
      mQuery = outer;
      value.Type = {TypeSort::External, false, mScopes.LibraryName(std::string_view())};
      return true;
    }
    default: {
      if (name == word::Global && IsMark(at + 1, end, '.')) {
        Skip(at);
        ++at;
        return false;
      }
      if (!word::IsConversion(name) || !IsMark(at + 1, end, '(')) {
        // A dotted name of a type that no scope knows by its first word.
        if (!IsMark(at + 1, end, '.') || !IsWord(at + 2, end) || Local(name)) return false;
        if (mScopes.NetMemberInside(*mModule, name)) return false;
        if (NetTypeOf(at, at)) return false;
        std::size_t last = at;
        UseValue type;
        if (!BindNetType(last, end, UseKind::Read, type)) return false;
        at = last + 1;
        value = type;
        break;
      }
      Skip(at);
      value = ParseGroup(at, end);
      value.Type = {TypeSort::Plain, false, nullptr};
      return true;
    }
  }
  ParseBehind(at, end, value);
  return true;
}

void ModuleBinder::ParseBehind(std::size_t& at, std::size_t end, UseValue& value) {
  FollowChain(value, at, end, false);
  value.IsLone = value.IsStorage;
}

}  // namespace vendrel
