// The short way of a line against the classifier: what it says, the classifier says too.

#include "text/vb6/PlainStatements.h"

#include <gtest/gtest.h>

#include "bench/Dice.h"
#include "core/Ascii.h"
#include "text/Classifier.h"

namespace vendrel {
namespace {

std::string Shown(std::string_view text) {
  std::string buffer;
  const auto line = PlainLineOf(text, ReadingRules::Complete(), buffer);
  if (!line) return "-";
  std::string shown(line->Type == OTHER ? "OTHER" : LineTypeName(line->Type));
  return line->Comment.empty() ? shown : shown + " '" + std::string(line->Comment);
}

TEST(PlainStatementsTest, LinesThatNeedNotBeUnderstood) {
  constexpr std::pair<const char*, const char*> kLines[] = {
      {"", "BLANK_LINE"},
      {" \t ", "BLANK_LINE"},
      {"\tx = a + 1", "OTHER"},
      {"If a Then Exit Sub", "OTHER"},
      {"If a Then Dim b", "-"},
      {"Else", "OTHER"},
      {"end  if", "OTHER"},
      {"End Sub ' done", "END_SUB 'done"},
      {"Exit  Sub", "EXIT_LINE"},
      {"Case \"a:b\", \"it's\"", "CASE_LINE"},
      {"F a:=1", "OTHER"},
      {"x = 1: y = 2", "-"},
      {"lbl:", "-"},
      {"Case ' none", "CASE_LINE 'none"},
      {"Case' none", "OTHER 'none"},
      {"10 x = 1", "-"},
      {"x = 1 _", "-"},
      {"x = y\t' _", "-"},
      {"' a: \"b", "Comment 'a: \"b"},
      {"'", "Comment"},
      {"[it's] = 1 ' x", "-"},
      {"x = \"\xC3\xA9:\" & y ' \xC2\xA0", "OTHER '\xC2\xA0"},
      {"x = \"\xC3\xA9:\" &\xC2\xA0y", "-"},
      {"Rem x", "-"},
      {"Static x", "-"},
      {"Statics x", "OTHER"},
      {"#If a Then", "-"},
      {"Dim x", "-"},
      {"End\tSub", "-"},
  };
  for (const auto& [text, expected] : kLines) EXPECT_EQ(Shown(text), expected) << text;
}

// Lines of pieces that mean something to either.
std::string RandomLine(bench::Dice& dice) {
  static constexpr const char* kPlainPieces[] = {" ",
                                                 "  ",
                                                 "\t",
                                                 "'",
                                                 "\"",
                                                 ":",
                                                 "::",
                                                 ":=",
                                                 "=",
                                                 "_",
                                                 " _",
                                                 "If ",
                                                 "Then",
                                                 " Else ",
                                                 "ElseIf",
                                                 "Dim ",
                                                 "Const",
                                                 "Static ",
                                                 "Case ",
                                                 "End ",
                                                 "Sub",
                                                 "Exit ",
                                                 "Rem",
                                                 "Rem ",
                                                 "Select",
                                                 "Type",
                                                 "x",
                                                 "Foo",
                                                 "12",
                                                 "#",
                                                 "[",
                                                 "]",
                                                 "(",
                                                 ")",
                                                 "##X",
                                                 "Public",
                                                 "lbl",
                                                 "Set ",
                                                 "\"a\"",
                                                 "Property",
                                                 "\xC2\xA0",
                                                 "\xC3\xA9",
                                                 "\xE3\x80\x80",
                                                 "\xE2\x80\x99",
                                                 "\xC4\xA7",
                                                 "\xC4\xBA"};
  std::string line;
  for (int i = dice.Between(0, 9); i > 0; --i) line += dice.Pick(kPlainPieces);
  return line;
}

// A line that holds nothing to scan for is not scanned; with an empty comment behind it, it is.
TEST(PlainStatementsTest, AStatementWithoutMarksIsThatWhichAScanFinds) {
  bench::Dice dice(2);
  int compared = 0;
  for (int i = 0; i < 30'000; ++i) {
    const std::string text = RandomLine(dice) + "x";
    if (text.find_first_of("':\"") != std::string::npos) continue;
    const std::string commented = text + " '";
    for (const LanguageVersionEnum language : {lvVisualBasic5or6, lvVisualBasicDotNet}) {
      LineClassifier plain(language, ReadingRules::Complete()), scanned = plain;
      ParsedLine a, b;
      const auto first = plain.First(text, a), second = scanned.First(commented, b);
      if (b.MoreLines || b.Continued) continue;
      ++compared;
      ASSERT_EQ(first, second) << text;
      EXPECT_EQ(a.LineType, b.LineType) << text;
      EXPECT_EQ(Trim(a.StatementPart), Trim(b.StatementPart)) << text;
      EXPECT_EQ(a.HasLabel, b.HasLabel) << text;
    }
  }
  EXPECT_GT(compared, 5'000);
}

// Of a line that a glance takes in, what lies behind it means nothing.
TEST(PlainStatementsTest, AGlanceTellsTheSame) {
  bench::Dice dice(3);
  std::string one, other;
  int compared = 0, plain = 0;
  for (int i = 0; i < 40'000; ++i) {
    const std::string line = RandomLine(dice);
    const std::string text = line + (i % 2 == 0 ? "\n" : "\r\n") + RandomLine(dice) + "'\"\n" +
                             std::string(kGlance, dice.Pick("\n':x\t"));
    GlancedLine glanced;
    if (!GlanceAtLine(text, glanced)) continue;  // longer, or no machine for it
    ++compared;
    ASSERT_EQ(glanced.Line, line);
    ASSERT_EQ(glanced.Bytes, line.size() + (i % 2 == 0 ? 1 : 2));
    const ReadingRules& reading = i % 3 == 0 ? ReadingRules::Classic() : ReadingRules::Complete();
    const auto atAGlance = PlainLineOf(line, glanced.Glance, reading, one);
    const auto walked = PlainLineOf(line, reading, other);
    ASSERT_EQ(atAGlance.has_value(), walked.has_value()) << line;
    if (!walked) continue;
    ++plain;
    EXPECT_EQ(atAGlance->Type, walked->Type) << line;
    EXPECT_EQ(atAGlance->Comment, walked->Comment) << line;
  }
#ifdef __SSE2__
  EXPECT_GT(compared, 20'000);
  EXPECT_GT(plain, 4'000);
#endif
  GlancedLine longer;
  EXPECT_FALSE(GlanceAtLine(std::string(kGlance, 'x') + "\n", longer));
}

TEST(PlainStatementsTest, TheClassifierSaysTheSame) {
  bench::Dice dice(1);
  std::string buffer;
  int plain = 0;
  for (int i = 0; i < 60'000; ++i) {
    const std::string text = RandomLine(dice);
    const ReadingRules& reading = i % 2 == 0 ? ReadingRules::Complete() : ReadingRules::Classic();
    const auto line = PlainLineOf(text, reading, buffer);
    if (!line) continue;
    ++plain;
    LineClassifier classifier(lvVisualBasic5or6, reading);
    classifier.RaiseLineNumber = false;
    classifier.PartLines = i % 3 != 0;
    ParsedLine parsed;
    ASSERT_EQ(classifier.First(text, parsed), LineClassifier::Result::Ok) << text;
    EXPECT_EQ(parsed.LineType, line->Type) << text;
    EXPECT_EQ(parsed.CommentPart, line->Comment) << text;
    EXPECT_FALSE(parsed.Continued || parsed.MoreLines || parsed.HasLabel) << text;
  }
  EXPECT_GT(plain, 6'000);
}

}  // namespace
}  // namespace vendrel
