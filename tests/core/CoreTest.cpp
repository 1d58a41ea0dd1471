#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "bench/Dice.h"
#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/LateText.h"
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
  SharedText known("Boolean"), again(std::string("Bool") + "ean");
  EXPECT_EQ(known.view().data(), again.view().data());
  b = c;
  EXPECT_EQ(b, "Ledger.Account");
  EXPECT_TRUE(empty.empty());
  EXPECT_EQ(empty, "");
  c = empty;
  EXPECT_EQ(b.size(), 14u);
}

// Short texts stand in the object itself, long ones beside it.
TEST(SharedText, OfAnyLengthReadsLikeTheString) {
  for (std::size_t length = 0; length < 60; ++length) {
    std::string text;
    for (std::size_t i = 0; i < length; ++i) text += static_cast<char>(i % 5 ? 'a' + i % 26 : 0x80);
    SharedText shared(text);
    const SharedText copy = shared;
    EXPECT_EQ(shared, text);
    EXPECT_EQ(shared.size(), length);
    EXPECT_EQ(shared.empty(), text.empty());
    EXPECT_STREQ(shared.c_str(), text.c_str());
    const std::string asString = shared;
    EXPECT_EQ(asString, text);
    shared += "behind";
    EXPECT_EQ(shared, text + "behind");
    EXPECT_EQ("<" + copy + '>', "<" + text + ">");
    EXPECT_LT(copy, shared);
    SharedText moved = std::move(shared);
    EXPECT_EQ(moved.substr(length), "behind");
  }
}

TEST(SharedText, EqualTextsOfAPoolShareTheirMemoryAndOutliveIt) {
  SharedText first, second, other;
  {
    const TextPool pool;
    first = "CustomerNumber";
    second = std::string("Customer") + "Number";
    other = "CustomerName";
    EXPECT_EQ(first.c_str(), second.c_str());
  }
  const SharedText third("CustomerNumber");
  EXPECT_NE(first.c_str(), third.c_str());
  first.clear();
  EXPECT_EQ(second, third);
  EXPECT_EQ(other, "CustomerName");
}

TEST(LateText, IsTheSameEditedAndFitted) {
  LateText text;
  EXPECT_TRUE(text.empty());
  text.Edit() += "one";
  text.Edit() += " two";
  EXPECT_EQ(text, "one two");
  text.Fit();
  EXPECT_EQ(text, "one two");
  text = text.view().substr(4);
  EXPECT_EQ(text, "two");
  LateText copy = text;
  copy.Edit().insert(0, "not ");
  EXPECT_EQ(text, "two");
  EXPECT_EQ(copy, "not two");
  text = std::move(copy);
  text.Edit().clear();
  EXPECT_TRUE(text.empty());
  text.Fit();
  EXPECT_TRUE(text.empty());
}

TEST(WeakHandle, CellsOfAPoolOutliveItAndAreUsedAgain) {
  std::vector<std::unique_ptr<Node>> nodes;
  std::vector<WeakHandle<Node>> handles;
  {
    const CellPool pool;
    for (int i = 0; i < 200; ++i) {
      nodes.push_back(std::make_unique<Node>());
      const WeakHandle<Node> forAMoment(nodes.back().get());
      if (i % 3) handles.emplace_back(nodes.back().get());
      if (i % 5 == 0) handles.clear();
    }
  }
  std::size_t living = 0;
  nodes.erase(nodes.begin(), nodes.begin() + 198);
  for (const WeakHandle<Node>& handle : handles) living += handle ? 1 : 0;
  EXPECT_EQ(living, 1u);
  nodes.clear();
  for (const WeakHandle<Node>& handle : handles) EXPECT_EQ(handle.Get(), nullptr);
}

TEST(CaseFold, EqualNamesAreEqualBytesOfTheirKeysAndHaveOneHash) {
  static constexpr const char* kParts[] = {
      "a",    "A", "b", "Z", "_", "1", "\xC3\xA9", "\xC3\x89", "k", "K", "\xE2\x84\xAA",
      "\xFF", "@", "`"};
  bench::Dice dice(11);
  const auto name = [&] {
    std::string made;
    for (int i = dice.Between(0, 12); i > 0; --i) made += dice.Pick(kParts);
    return made;
  };
  for (int round = 0; round < 20'000; ++round) {
    const std::string a = name();
    const std::string b = dice.Chance(30) ? UpperCase(a) : dice.Chance(30) ? a + name() : name();
    const bool equal = FoldKey(a) == FoldKey(b);
    ASSERT_EQ(EqualsNoCase(a, b), equal) << a << " " << b;
    if (equal) {
      ASSERT_EQ(HashFolded(a), HashFolded(b)) << a << " " << b;
    }
  }
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
