#include "uses/ModuleBinder.h"

#include "core/Ascii.h"
#include "intake/Conditions.h"
#include "project/ProjectFile.h"
#include "services/SourceText.h"

namespace vendrel {
namespace {

bool IsReserved(const Token& token, bool isNet) {
  if (token.Bracketed || token.Name == word::None) return false;
  return token.Name < word::FirstByPlace ||
         (isNet && token.Name >= word::FirstOfNet && token.Name < word::Count);
}

}  // namespace

ModuleBinder::ModuleBinder(Scopes& scopes, ProjectScope& project, const BoundSource& source,
                           const UseOptions& options, UseCounts& counts, const TakeUse& take)
    : mScopes(scopes),
      mProject(project),
      mSource(*source.Source),
      mModule(source.Module),
      mScope(&scopes.Of(*mModule)),
      mOptions(options),
      mCounts(counts),
      mTake(take),
      mScan(scopes.Names(), mSource.Text, {Scopes::IsNet(*mModule)}),
      mConditions(Scopes::IsNet(*mModule) ? lvVisualBasicDotNet : lvVisualBasic5or6,
                  mModule->Options().Reading),
      mIsAscii(mSource.Encoding == TextEncoding::Ascii),
      mFile(source.File),
      mIsNet(Scopes::IsNet(*mModule)),
      mHolder(mModule),
      mLocals(scopes.Locals) {
  if (mIsNet) mNetScope = &scopes.NetScopeOf(*mModule, mFile);
  mUse.Module = mModule;
  mUse.File = mFile ? &mFile->FileName : &mModule->FileName;
}

void ModuleBinder::BindFile(const Component* only) {
  mOnly = only;
  IndexNetBlocks();
  while (mScan.Next()) {
    if (mScan.IsDirective)
      TakeDirective();
    else
      TakeLine();
  }
}

void ModuleBinder::Bind() {
  IndexBlocks();
  mScan.SkipHeader();
  while (mScan.Next()) {
    if (mScan.IsDirective)
      TakeDirective();
    else
      TakeLine();
  }
}

void ModuleBinder::TakeDirective() {
  if (StartsWithNoCaseAscii(mScan.Directive, "#CONST")) return;  // of the load
  try {
    UpdateConditions(const_cast<Component&>(*mModule), mConditions, mScan.Directive);
  } catch (const VendrelError&) {
    ++mCounts.Unread;  // the branch stays as it is
  }
  mFalseBranch = mConditions.Conditions.Ignore();
}

void ModuleBinder::CountFalseBranch() {
  for (const Token& token : mScan.Tokens)
    if (token.Kind == TokenKind::Word && !IsReserved(token, mIsNet)) ++mCounts.InFalseBranches;
}

void ModuleBinder::TakeLine() {
  if (mFalseBranch) {
    CountFalseBranch();
    if (!mOptions.FalseBranches) return;
  }
  const std::vector<Token>& tokens = mScan.Tokens;
  if (tokens[0].Name == word::Attribute && tokens.size() > 2 && tokens[1].Kind == TokenKind::Word)
    return;
  std::size_t from = 0;
  // A label stands at the front of a line: "Failed:".
  const bool hasNumber = tokens[0].Kind == TokenKind::Number;
  const std::size_t first = hasNumber ? 1 : 0;
  if (mPlace == Place::Procedure && IsWord(first, tokens.size()) &&
      IsMark(first + 1, tokens.size(), ':') && !IsReserved(tokens[first], mIsNet)) {
    AddUse(first, UseKind::Declare, UseAnswer::Label);
    Emit(first, first + 1);
    from = first + 2;
  }
  if (!mScan.HasColons) return TakeStatement(from, tokens.size());
  for (std::size_t at = from; at <= tokens.size(); ++at) {
    if (at < tokens.size() && !IsMark(at, tokens.size(), ':')) continue;
    if (at > from) TakeStatement(from, at);
    from = at + 1;
  }
}

void ModuleBinder::TakeStatement(std::size_t from, std::size_t to) {
  const bool ends = IsWord(from, to, word::End) && from + 1 < to;
  if (mIsNet) {
    ParseNetStatement(from, to);
  } else if (mPlace == Place::Type || mPlace == Place::Enum) {
    const bool closes =
        ends && (At(from + 1).Name == word::Type || At(from + 1).Name == word::Enum);
    if (closes) {
      SkipAll(from, to);
      mPlace = Place::Declarations;
    } else if (mPlace == Place::Type) {
      ParseTypeLine(from, to);
    } else {
      ParseEnumLine(from, to);
    }
  } else {
    ParseStatement(from, to);
  }
  ReportUnread(from, to);
  Emit(from, to);
}

// What no rule has reached stands there without a meaning.
void ModuleBinder::ReportUnread(std::size_t from, std::size_t to) {
  bool unread = false;
  for (std::size_t at = from; at < to; ++at) {
    if (!IsWord(at, to) || At(at).Answered || IsReserved(At(at), mIsNet)) continue;
    AddUse(at, UseKind::Read, UseAnswer::Unknown);
    unread = true;
  }
  if (unread) ++mCounts.Unread;
}

}  // namespace vendrel
