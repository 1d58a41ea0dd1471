#include <gtest/gtest.h>

#include "bench/Dice.h"
#include "support/Projects.h"
#include "support/Raised.h"
#include "text/CodeLines.h"

namespace vendrel {
namespace {

using test::Raised;
using test::Show;

CodeLine Line(const char* text) { return InitialiseCodeLine(text, lvVisualBasic5or6); }

CodeLines Lines(std::initializer_list<const char*> texts) {
  CodeLines lines;
  for (const char* text : texts) lines.Add(Line(text));
  return lines;
}

std::string Texts(const CodeLines& lines) {
  std::string text;
  for (std::int32_t i = 1; i <= lines.Count(); ++i) text += lines.LineText(i) + "|";
  return text;
}

TEST(CodeLinesTest, LinesAreAddedBeforeBehindOrLast) {
  CodeLines lines = Lines({"a", "b"});
  lines.Add(Line("first"), 1);
  lines.Add(Line("third"), 0, 2);
  lines.Add(Line("last"), 0, 4);
  lines.Add(Line("wins"), 1, 4);  // Before wins over After
  lines.Add(Line("end"), 0, 0);
  EXPECT_EQ(Texts(lines), "wins|first|a|third|b|last|end|");
  lines.Remove(2);
  lines.Remove(6);
  EXPECT_EQ(Texts(lines), "wins|a|third|b|last|");
}

// Lines that follow each other keep no place of their own; here every kind of line comes, in lists
// of every length, and is changed in between.
TEST(CodeLinesTest, PlacesFollowFromTheLinesAbove) {
  bench::Dice dice(5);
  for (int round = 0; round < 300; ++round) {
    const std::string_view end = dice.Chance(50) ? "\r\n" : "\n";
    const int odd = dice.Chance(50) ? 0 : 3;  // lines in a hundred that end otherwise
    std::vector<std::size_t> offsets;
    std::vector<std::string> texts;
    std::string all(static_cast<std::size_t>(dice.Between(0, 5)), '#');
    for (int i = dice.Between(0, 80); i > 0; --i) {
      offsets.push_back(all.size());
      texts.emplace_back(static_cast<std::size_t>(dice.Chance(1) ? 70'000 : dice.Between(0, 40)),
                         'x');
      all += texts.back();
      all += dice.Chance(odd) ? "\n\r\n" : end;
    }
    const auto text = std::make_shared<const std::string>(all);
    CodeLines lines(text, lvVisualBasic5or6, ClassifierRules());
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const std::string_view line = std::string_view(*text).substr(offsets[i], texts[i].size());
      if (dice.Chance(50)) {
        lines.AppendPlain(line, OTHER);
      } else {
        ParsedLine parsed;
        parsed.Text = line;
        lines.Append(parsed);
      }
      if (dice.Chance(3)) lines.Shrink();
    }
    if (!texts.empty() && dice.Chance(30)) {
      const auto gone = static_cast<std::size_t>(dice.Next() % texts.size());
      lines.Remove(static_cast<std::int32_t>(gone) + 1);
      texts.erase(texts.begin() + static_cast<std::ptrdiff_t>(gone));
      offsets.erase(offsets.begin() + static_cast<std::ptrdiff_t>(gone));
    }
    ASSERT_EQ(static_cast<std::size_t>(lines.Count()), texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const auto index = static_cast<std::int32_t>(i) + 1;
      ASSERT_EQ(lines.LineView(index), texts[i]);
      ASSERT_EQ(lines.SourceOffset(index), offsets[i]);
      ASSERT_EQ(lines.LineType(index), OTHER);
    }
  }
}

TEST(CodeLinesTest, TheDefinitionIsAPartOfTheTextOrStandsBesideIt) {
  const auto text = std::make_shared<const std::string>("Sub A()\r\nEnd Sub\r\n");
  CodeLines lines(text, lvVisualBasic5or6, ClassifierRules());
  EXPECT_EQ(lines.Definition(), "");
  lines.SetDefinition(std::string_view(*text).substr(0, 7));
  EXPECT_EQ(lines.Definition().data(), text->data());
  lines.SetDefinition("Sub B(x)");
  EXPECT_EQ(lines.Definition(), "Sub B(x)");
  lines.SetDefinition(std::string_view(*text).substr(0, 5));
  EXPECT_EQ(lines.Definition(), "Sub A");
  lines.UnloadSourceCode();
  EXPECT_EQ(lines.Definition(), "");
}

TEST(CodeLinesTest, PositionsOutsideFail) {
  CodeLines lines = Lines({"a", "b"});
  for (const std::int32_t at : {-1, 0, 3}) {
    EXPECT_EQ(Raised([&] { lines.Item(at); }), errSubscript) << at;
    EXPECT_EQ(Raised([&] { lines.Continued(at); }), errSubscript) << at;
    EXPECT_EQ(Raised([&] { lines.LineType(at); }), errSubscript) << at;
    EXPECT_EQ(Raised([&] { lines.LineText(at); }), errSubscript) << at;
    EXPECT_EQ(Raised([&] { lines.SetLineText(at, "x"); }), errSubscript) << at;
    EXPECT_EQ(Raised([&] { lines.Remove(at); }), errSubscript) << at;
    EXPECT_EQ(Raised([&] { lines.EventName(at); }), errSubscript) << at;
  }
  EXPECT_EQ(Raised([&] { lines.Add(Line("x"), 3); }), errSubscript);
  EXPECT_EQ(Raised([&] { lines.Add(Line("x"), 0, -1); }), errSubscript);
  EXPECT_EQ(Texts(lines), "a|b|");
  EXPECT_EQ(lines.ContinuationCount(), 0);
}

TEST(CodeLinesTest, EverythingFailsOnceTheLinesAreUnloaded) {
  CodeLines lines = Lines({"a"});
  lines.UnloadSourceCode();
  lines.UnloadSourceCode();
  EXPECT_TRUE(lines.Unloaded());
  EXPECT_EQ(Raised([&] { lines.Count(); }), errObjectNotSet);
  EXPECT_EQ(Raised([&] { lines.Item(1); }), errObjectNotSet);
  EXPECT_EQ(Raised([&] { lines.Continued(1); }), errObjectNotSet);
  EXPECT_EQ(Raised([&] { lines.LinesOfType(OTHER); }), errObjectNotSet);
  EXPECT_EQ(Raised([&] { lines.LinesMatchingPattern("*"); }), errObjectNotSet);
  EXPECT_EQ(Raised([&] { lines.Add(Line("x")); }), errObjectNotSet);
  EXPECT_EQ(Raised([&] { lines.ContinuationCount(); }), errObjectNotSet);
}

TEST(CodeLinesTest, RecordsAreCopies) {
  CodeLines lines = Lines({"Dim x ' note"});
  CodeLine record = lines.Item(1);
  record.Text = "changed";
  EXPECT_EQ(lines.LineText(1), "Dim x ' note");
  record.EventIndex = 7;
  record.NotInSource = record.Continuation = true;
  record.LineID = 3;
  lines.Add(record);
  EXPECT_EQ(lines.Item(2), record);
  EXPECT_TRUE(lines.NotInSource(2) && lines.Continuation(2));
  EXPECT_EQ(lines.EventIndex(2), 7);
  EXPECT_EQ(lines.ContinuationCount(), 1);
  lines.Remove(2);
  EXPECT_EQ(lines.ContinuationCount(), 0);
}

TEST(CodeLinesTest, AChangedTextKeepsItsClassification) {
  CodeLines lines = Lines({"Dim x", "y = 1 ' note"});
  lines.SetLineText(2, "Private Sub S()");
  EXPECT_EQ(lines.Count(), 2);
  EXPECT_EQ(lines.LineText(2), "Private Sub S()");
  EXPECT_EQ(Show(lines.Item(2)), "OTHER [y = 1 ] 'note");
  EXPECT_FALSE(lines.IsStartLine(2));
  EXPECT_EQ(lines.EventName(2), "S");
}

// What does not fit into the few bytes of a line: its length, and the number of an event.
TEST(CodeLinesTest, LongLinesAndEventsKeepTheirPlaces) {
  const std::string longest(65'534, 'x'), far(65'535, 'y'), farther(200'000, 'z');
  const auto text = std::make_shared<const std::string>(longest + "\n" + far + "\n" + farther);
  CodeLines lines(text, lvVisualBasic5or6, ClassifierRules());
  const std::string_view all = *text;
  const std::string_view views[] = {all.substr(0, longest.size()), all.substr(65'535, far.size()),
                                    all.substr(131'071)};
  for (const std::string_view view : views) lines.AppendPlain(view, OTHER);
  ParsedLine event;
  event.Text = all.substr(0, 3);
  event.EventIndex = 7;
  lines.Append(event);
  for (std::int32_t i = 1; i <= 3; ++i) {
    EXPECT_EQ(lines.LineView(i), views[i - 1]) << i;
    EXPECT_EQ(lines.SourceOffset(i), static_cast<std::size_t>(views[i - 1].data() - text->data()));
    EXPECT_TRUE(lines.AsRead(i)) << i;
  }
  EXPECT_EQ(lines.EventIndex(4), 7);
  lines.SetLineText(3, "changed");
  lines.SetLineText(4, "Event E()");
  EXPECT_EQ(lines.SourceOffset(3), 131'071u);
  EXPECT_EQ(lines.EventIndex(4), 7);
  EXPECT_EQ(lines.LineText(4), "Event E()");
  EXPECT_FALSE(lines.AsRead(3));
}

TEST(CodeLinesTest, LinesAreFoundByTypeAndPattern) {
  const CodeLines lines = Lines({"Sub S()", "  Dim x", "\tDIM Y ' z", "End Sub", "' dim"});
  EXPECT_EQ(lines.LinesOfType(VAR_DECLARATION).size(), 2u);
  EXPECT_TRUE(lines.LinesOfType(START_ENUM).empty());
  const auto dims = lines.LinesMatchingPattern("DIM *");
  ASSERT_EQ(dims.size(), 2u);
  EXPECT_EQ(dims[1].Text, "\tDIM Y ' z");
  EXPECT_EQ(lines.LinesMatchingPattern("*dim").size(), 1u);
  EXPECT_TRUE(lines.IsStartLine(1) && lines.IsEndLine(4));
  EXPECT_EQ(lines.EventName(1), "S");
}

// The list keeps places in the text of the module and classifies again; what it gives must be what
// the reader saw. Here the reader is the documented walk over the physical lines, done the plain
// way.
struct PlainReader {
  ReadingRules Rules;
  CodeLine Previous;
  bool InRemainder = false;
  std::vector<CodeLine> Records;

  void Take(const std::string& physical) {
    if (Previous.MoreLines && !Rules.KeepLinesBehindSeparators) {
      TakeText(Previous.Remainder, true);
      return;
    }
    TakeText(physical, false);
    while (Rules.KeepLinesBehindSeparators && Previous.MoreLines)
      TakeText(Previous.Remainder, true);
  }
  void TakeText(const std::string& text, bool notInSource) {
    const bool continuation = Previous.Continued;
    const std::string logical = continuation ? JoinContinuation(Previous.Remainder, text) : text;
    if (!continuation) InRemainder = notInSource;
    LineClassifier classifier(lvVisualBasic5or6, Rules);
    classifier.MayBeginWithLabel = !InRemainder;
    ParsedLine parsed;
    classifier.First(logical, parsed);
    CodeLine line = parsed.Record();
    line.Continuation = continuation;
    line.NotInSource = notInSource;
    line.Text = text;
    Records.push_back(line);
    Previous = line;
  }
};

TEST(CodeLinesTest, ALoadedModuleGivesBackTheRecordsOfItsReader) {
  const std::vector<std::string> body = {
      "Option Explicit",
      "Private a As Long, _",
      "  b As String, _",
      "\tc ' trailing",
      "' a comment _",
      "  goes on _",
      "and ends",
      "",
      "Public Sub First(ByVal x As Long, _",
      "\tOptional y = \"a:b _\", _",
      "    z) ' note",
      "\tx = 1 : y = 22222222222222222222 : z = 33333333333333333333 : x = 4444444444444444",
      "100 x = \"it's\" : Call Other(x, _",
      "      y) : z = 1",
      "lost : on the way",
      "next line",
      "x = 1 _ ",
      "  + 2 'done",
      "   ",
      "label:",
      "label: Dim z As Long: z = 1: ' said",
      "10 If x Then Dim k: x = \"a: b\"",
      "End Sub",
      "Function Second() As Long:",
      "End Function : x = \"\u0416\" ' \u0422",
      "Sub Third(): Beep: End Sub",
      "' end _",
  };
  for (const ReadingRules& rules : {ReadingRules::Classic(), ReadingRules::Complete()}) {
    ReadingRules used = rules;
    used.OneLineProcedures = false;  // its body is cut at every colon: see the intake's own test
    std::string text;
    PlainReader plain{used, {}, false, {}};
    for (const std::string& line : body) {
      text += line + "\n";
      plain.Take(line);
    }
    test::TestModule module("M.bas", text, [&](VBProject& project) { project.Reading = used; });
    std::vector<CodeLine> loaded;
    for (const Block& block : module->Blocks)
      for (std::int32_t i = 1; block.CodeLines.IfAny() && i <= block.CodeLines->Count(); ++i)
        loaded.push_back(block.CodeLines->Item(i));
    ASSERT_FALSE(loaded.empty());
    loaded.erase(loaded.begin());  // the name of the module
    // A statement that never ends is stored where nothing may be lost.
    if (!used.KeepLinesBehindSeparators) plain.Records.pop_back();
    ASSERT_EQ(loaded.size(), plain.Records.size());
    for (std::size_t i = 0; i < loaded.size(); ++i) {
      EXPECT_EQ(Show(loaded[i]), Show(plain.Records[i])) << loaded[i].Text;
      EXPECT_EQ(loaded[i], plain.Records[i]) << loaded[i].Text;
    }
  }
}

}  // namespace
}  // namespace vendrel
