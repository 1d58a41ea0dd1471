// VB.NET: statements that the older language has not, or has otherwise.

#include "uses/ModuleBinder.h"

namespace vendrel {

void ModuleBinder::ParseNetFor(std::size_t at, std::size_t end) {
  Skip(at);
  const bool each = SkipIf(at, end, word::Each);
  const bool declares =
      IsWord(at, end) && (IsWord(at + 1, end, word::As) ||
                          (!Local(At(at).Name) && !mScope->Members.Find(At(at).Name)));
  if (declares) {
    at = DeclareVariable(at, end, EntrySort::Local);
  } else if (IsWord(at, end) || IsMemberMark(at, end, false)) {
    UseValue counter = ParseChain(at, end, false);
    MarkWrite(counter, true);
  }
  ParseForRange(at, end, each);
}

// A list of types or namespaces.
void ModuleBinder::ParseNames(std::size_t at, std::size_t end, UseKind kind) {
  while (at < end) {
    if (IsWord(at, end) && IsMark(at + 1, end, '=')) {  // an alias
      AddUse(at, UseKind::Declare, UseAnswer::OwnModule);
      at += 2;
      continue;
    }
    const std::size_t before = at;
    if (IsWord(at, end)) ParseNetType(at, end, kind);
    if (at == before) ++at;
  }
}

// An assignment, also "a += b", or a call.
void ModuleBinder::ParseNetGeneric(std::size_t from, std::size_t end) {
  std::size_t at = from;
  UseValue value = ParseOperand(at, end);
  const bool compound = at + 1 < end && At(at).Kind == TokenKind::Mark &&
                        std::string_view("+-*/\\^&").find(At(at).Mark) != std::string_view::npos &&
                        IsMark(at + 1, end, '=') && !At(at + 1).GapBefore;
  if (compound || IsMark(at, end, '=')) {
    at += compound ? 2 : 1;
    MarkWrite(value, false);
    if (compound && value.Record >= 0) Of(value.Record).Reads = true;
  } else {
    MarkCall(value);
  }
  while (at < end) {
    const std::size_t before = at;
    ParseExpression(at, end);
    if (at == before) ++at;
  }
}

bool ModuleBinder::ParseNetFlow(std::size_t at, std::size_t end) {
  switch (At(at).Name) {
    case word::Imports:
      Skip(at);
      ParseNames(at, end, UseKind::Qualify);
      return true;
    case word::Namespace: SkipAll(at, end); return true;
    case word::Inherits:
      Skip(at);
      ParseNames(at, end, UseKind::Type);
      return true;
    case word::Implements:
      Skip(at);
      ParseNames(at, end, UseKind::Implements);
      return true;
    case word::Catch:
      Skip(at);
      if (IsWord(at, end) && !IsWord(at, end, word::When))
        at = DeclareVariable(at, end, EntrySort::Local);
      SkipIf(at, end, word::When);
      ParseList(at, end);
      return true;
    case word::Try:
    case word::Finally: Skip(at); return true;
    case word::Throw:
    case word::SyncLock:
    case word::Yield:
    case word::Return: {
      if (IsMark(at + 1, end, '=') || IsMark(at + 1, end, '.')) return false;
      Skip(at);
      ParseList(at, end);
      return true;
    }
    case word::Using:
      Skip(at);
      if (IsWord(at, end) && (IsWord(at + 1, end, word::As) || IsMark(at + 1, end, '=')))
        ParseNetDeclarators(at, end, false);
      else
        ParseList(at, end);
      return true;
    case word::Continue: SkipAll(at, end); return true;
    case word::RaiseEvent:
      if (!IsMark(at + 1, end, '(')) return false;
      [[fallthrough]];
    case word::AddHandler:
    case word::RemoveHandler:
      if (IsMark(at + 1, end, '(')) {  // an accessor of a custom event
        Skip(at);
        if (mPlace != Place::Procedure) EnterProcedure(nullptr, word::None);
        ParseNetParameters(at, CloseOf(at, end), nullptr);
        return true;
      }
      Skip(at);
      ParseList(at, end);
      return true;
    case word::For: ParseNetFor(at, end); return true;
    case word::Get: {
      if (end > at + 1) return false;
      Skip(at);
      return true;
    }
    case word::Set:
      Skip(at);
      if (IsMark(at, end, '('))
        ParseNetParameters(at, CloseOf(at, end), nullptr);
      else if (!Local(mScopes.Names().Of("value")))
        AddLocal(mScopes.Names().Of("value"), EntrySort::Parameter, nullptr, false);
      return true;
    case word::End:
      Skip(at);
      if (at < end && word::OpensType(At(at).Name)) {
        SkipAll(at, end);
        LeaveType();
        return true;
      }
      if (IsWord(at, end, word::With) && !mWith.empty()) mWith.pop_back();
      if (IsWord(at, end, word::Sub) || IsWord(at, end, word::Function) ||
          IsWord(at, end, word::Property) || IsWord(at, end, word::Operator)) {
        if (mLambdas > 0)
          --mLambdas;
        else
          LeaveProcedure();
      }
      if (IsWord(at, end, word::AddHandler) || IsWord(at, end, word::RemoveHandler) ||
          IsWord(at, end, word::RaiseEvent))
        LeaveProcedure();
      if (at < end) Skip(at);
      ParseList(at, end);
      return true;
    case word::Option: SkipAll(at, end); return true;
    default: return false;
  }
}

}  // namespace vendrel
