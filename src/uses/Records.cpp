// From the uses of a statement to the records that are given away, in the order of the text.

#include <algorithm>

#include "uses/ModuleBinder.h"

namespace vendrel {
namespace {

constexpr std::size_t kMostCandidates = 20;

bool ReadsByKind(UseKind kind) {
  switch (kind) {
    case UseKind::Read:
    case UseKind::ByReference:
    case UseKind::Call: return true;
    default: return false;
  }
}

bool WritesByKind(UseKind kind) {
  return kind == UseKind::Write || kind == UseKind::ByReference || kind == UseKind::Part;
}

}  // namespace

std::int32_t ModuleBinder::AddUse(std::size_t at, UseKind kind, UseAnswer answer) {
  Token& token = mScan.Tokens[at];
  token.Answered = true;
  PendingUse& use = mUses.emplace_back();
  use.Begin = token.Begin;
  use.End = token.End;
  use.Line = token.Line;
  use.Name = token.Name;
  use.Kind = kind;
  use.Answer = answer;
  use.Holder = mHolder;
  return static_cast<std::int32_t>(mUses.size()) - 1;
}

PendingUse& ModuleBinder::AddSecondary(const PendingUse& of, UseKind kind) {
  PendingUse use;
  use.Begin = of.Begin;
  use.End = of.End;
  use.Line = of.Line;
  use.Name = of.Name;
  use.Holder = of.Holder;
  use.Kind = kind;
  use.Secondary = true;
  return mUses.emplace_back(use);
}

// Characters, not bytes: bytes that go on with a character do not count.
std::int32_t ModuleBinder::ColumnOf(std::uint32_t line, std::uint32_t offset) {
  const auto start = static_cast<std::uint32_t>(mScan.LineStart(line));
  if (mIsAscii) return static_cast<std::int32_t>(offset - start) + 1;
  if (line != mColumnLine || offset < mColumnOffset) {
    mColumnLine = line;
    mColumnOffset = start;
    mColumn = 1;
  }
  const std::string_view text = mScan.Text();
  for (; mColumnOffset < offset; ++mColumnOffset)
    if ((static_cast<unsigned char>(text[mColumnOffset]) & 0xC0U) != 0x80U) ++mColumn;
  return mColumn;
}

void ModuleBinder::Give(const PendingUse& use) {
  const bool isDeclaration = use.Kind == UseKind::Declare;
  if (use.Secondary)
    ++mCounts.Secondary;
  else if (isDeclaration)
    ++mCounts.Declarations;
  else
    ++mCounts.Answers[static_cast<std::size_t>(use.Answer)];
  if (!mTake || (isDeclaration && !mOptions.Declarations)) return;
  mUse.Module = mModule;
  mUse.Holder = use.Holder;
  mUse.Element = use.Element;
  mUse.Member = use.Member;
  mUse.Type = use.Type;
  mUse.Candidates.clear();
  mUse.CandidateCount = 0;
  if (use.Ambiguous) {
    for (const Entry* entry = use.Ambiguous; entry; entry = entry->Next)
      mUse.Candidates.push_back(entry->Element);
    mUse.CandidateCount = mUse.Candidates.size();
  } else if (use.Answer == UseAnswer::Late) {
    const auto& all = mScopes.LateCandidates(mProject, use.Name);
    mUse.CandidateCount = all.size();
    mUse.Candidates.assign(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(
                                                          std::min(all.size(), kMostCandidates)));
  }
  mUse.Text = mScan.Text().substr(use.Begin, use.End - use.Begin);
  mUse.Name = use.Library ? std::string_view(*use.Library) : std::string_view();
  mUse.Line = static_cast<std::int32_t>(use.Line);
  mUse.Column = ColumnOf(use.Line, use.Begin);
  mUse.EndColumn = ColumnOf(use.Line, use.End);
  mUse.Kind = use.Kind;
  mUse.Answer = use.Answer;
  mUse.Accessor = use.Accessor;
  mUse.Reads = use.Reads || ReadsByKind(use.Kind);
  mUse.Writes = WritesByKind(use.Kind);
  mUse.Secondary = use.Secondary;
  mUse.WholeArray = use.WholeArray;
  mUse.OwnProcedure = use.OwnProcedure;
  mTake(mUse);
}

void ModuleBinder::Emit(std::size_t from, std::size_t to) {
  if (mOnly && mOnly != mModule) mUses.clear();
  if (mUses.empty()) return;
  mUse.InFalseBranch = mFalseBranch;
  mUse.StatementLine = static_cast<std::int32_t>(At(from).Line);
  const std::uint32_t begin = At(from).Begin, end = At(to - 1).End;
  mUse.Statement = mScan.Text().substr(begin, end - begin);
  mOrder.resize(mUses.size());
  bool sorted = true;
  const auto comesFirst = [&](const PendingUse& a, const PendingUse& b) {
    return a.Begin != b.Begin ? a.Begin < b.Begin : !a.Secondary && b.Secondary;
  };
  for (std::uint32_t i = 0; i < mUses.size(); ++i) {
    mOrder[i] = i;
    if (i > 0 && comesFirst(mUses[i], mUses[i - 1])) sorted = false;
  }
  if (!sorted)
    std::stable_sort(mOrder.begin(), mOrder.end(), [&](std::uint32_t a, std::uint32_t b) {
      return comesFirst(mUses[a], mUses[b]);
    });
  for (const std::uint32_t i : mOrder) Give(mUses[i]);
  mUses.clear();
}

}  // namespace vendrel
