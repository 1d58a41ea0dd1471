#include <gtest/gtest.h>

#include "bench/Dice.h"
#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/OnDemand.h"
#include "core/ReadingRules.h"
#include "core/SharedText.h"
#include "core/WeakHandle.h"
#include "diagnostics/Diagnostic.h"

namespace vendrel {
namespace {

struct Node : HandleTarget {
  int Value = 0;
};

TEST(WeakHandle, IsEmptiedByTheTargetAndSurvivesIt) {
  WeakHandle<Node> handle;
  {
    Node node;
    node.Value = 7;
    handle = &node;
    const WeakHandle<Node> copy = handle;
    EXPECT_EQ(copy.Get()->Value, 7);
  }
  EXPECT_EQ(handle.Get(), nullptr);
}

TEST(WeakHandle, OfACopyIsAnotherObject) {
  Node first;
  WeakHandle<Node> handle(&first);
  Node second(first);
  second.Value = 3;
  EXPECT_EQ(handle.Get(), &first);
  handle = nullptr;
  EXPECT_EQ(handle.Get(), nullptr);
  handle = &first;
  EXPECT_EQ(handle.Get(), &first);
}

TEST(CaseFold, NamesCompareInEveryScript) {
  EXPECT_TRUE(EqualsNoCase("Tamaño", "TAMAÑO"));
  EXPECT_TRUE(EqualsNoCase("Имя", "ИМЯ"));
  EXPECT_TRUE(EqualsNoCase("ΛΟΓΟΣ", "λογος"));
  EXPECT_FALSE(EqualsNoCase("a", "ä"));
  EXPECT_EQ(FoldKey("ÀB"), FoldKey("àb"));
}

// Texts are looked at many characters in a step; here, one after the other.
TEST(Ascii, SearchesAndFoldsAsAWalkOverTheCharactersDoes) {
  constexpr char kLetters[] = {'a', 'A', 'b', 'Z', 'z', '@', '[', '`', '.', '\xC3'};
  bench::Dice dice(7);
  const auto text = [&](int longest) {
    std::string made;
    for (int i = dice.Between(0, longest); i > 0; --i) made += dice.Pick(kLetters);
    return made;
  };
  for (int round = 0; round < 20'000; ++round) {
    const std::string whole = text(50), sought = text(3);
    const auto start = static_cast<std::size_t>(dice.Between(0, 5));
    const std::size_t expected = LowerAscii(whole).find(LowerAscii(sought), start);
    ASSERT_EQ(FindNoCaseAscii(whole, sought, start), expected) << whole << " " << sought;
    const std::string ascii = whole.substr(0, whole.find('\xC3'));
    ASSERT_EQ(FoldKey(ascii), LowerAscii(ascii));
    std::string other = dice.Between(0, 1) ? UpperAscii(whole) : LowerAscii(whole);
    if (!other.empty() && dice.Between(0, 2) == 0)
      other[static_cast<std::size_t>(dice.Between(0, static_cast<int>(other.size()) - 1))] =
          dice.Pick(kLetters);
    ASSERT_EQ(EqualsNoCaseAscii(whole, other), LowerAscii(whole) == LowerAscii(other))
        << whole << " " << other;
  }
}

TEST(SharedText, HoldsAnyTextAndSharesKnownWords) {
  SharedText a("Long"), b(std::string("Lo") + "ng"), c("Ledger.Account"), empty;
  EXPECT_EQ(a, b);
  EXPECT_EQ(a.view().data(), b.view().data());
  b = c;
  EXPECT_EQ(b, "Ledger.Account");
  EXPECT_TRUE(empty.empty());
  EXPECT_EQ(empty, "");
  c = empty;
  EXPECT_EQ(b.size(), 14u);
}

TEST(ReadingRules, PresetsDifferInEveryFlagAndFlagsAreFoundByName) {
  int flags = 0;
  ForEachReadingRule([&](const ReadingRule& rule) {
    EXPECT_FALSE(ReadingRules::Classic().*rule.Flag) << rule.Name;
    EXPECT_TRUE(ReadingRules::Complete().*rule.Flag) << rule.Name;
    ++flags;
  });
  EXPECT_GT(flags, 25);
  ReadingRules rules;
  EXPECT_TRUE(rules.Set("remcomments", true));
  EXPECT_TRUE(rules.RemComments);
  EXPECT_FALSE(rules.Set("NoSuchFlag", true));
}

TEST(Diagnostic, TakesItsPlaceFromTheInnermostScope) {
  Diagnostics list;
  std::int32_t line = 4;
  {
    const DiagnosticScope outer(&list, "Z:\\a.vbp");
    const DiagnosticScope inner(&list, "Z:\\a.bas", &line);
    line = 12;
    Report(DiagnosticCode::DuplicateName, {"Variable", "x"});
  }
  Report(DiagnosticCode::MissingModule, {"lost: no scope is open"});
  ASSERT_EQ(list.Count(), 1u);
  EXPECT_EQ(list.begin()->File, "Z:\\a.bas");
  EXPECT_EQ(list.begin()->Line, 12);
  EXPECT_EQ(list.begin()->Text, "duplicate Variable 'x'; the first one stays");
  EXPECT_EQ(CodeName(list.begin()->Code), "duplicate-name");
}

}  // namespace
}  // namespace vendrel
