// The samples: all uses of both as a golden file, and what must hold for every name. After a change
// that is meant:
//   VENDREL_UPDATE_GOLDEN=1 ./test
// writes the file anew; read the difference before it is committed.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "core/Ascii.h"
#include "model/ModuleKinds.h"
#include "project/VBProjectGroup.h"
#include "services/FileSource.h"
#include "services/Paths.h"
#include "services/SourceText.h"
#include "support/Projects.h"
#include "support/SourceRoot.h"
#include "uses/ShownUses.h"
#include "uses/UseIndex.h"

namespace vendrel {
namespace {

const std::string kRoot = test::SourceRoot();

std::shared_ptr<VBProject> Loaded(const std::string& path) {
  auto project = std::make_shared<VBProject>();
  test::Complete()(*project);
  project->Load(WindowsPath(kRoot + "/" + path));
  project->Components.Populate();
  return project;
}

std::vector<std::shared_ptr<VBProject>> Samples() {
  return {Loaded("samples/Ledger/Ledger.vbp"), Loaded("samples/Reports/Reports.vbp"),
          Loaded("tests/uses/data/Kinds.vbp")};
}

std::string AllUses(VBProject& project) {
  std::ostringstream out;
  UseBinder binder(project, {true, true});
  binder.BindAll([&](const NameUse& use) {
    out << use.Module->Name << ':' << use.Line << ':' << use.Column << '-' << use.EndColumn << ' '
        << test::Shown(use, true) << (use.Reads ? " r" : "") << (use.Writes ? " w" : "")
        << (use.InFalseBranch ? " #" : "") << " in " << use.Holder->QualifiedName() << '\n';
  });
  return out.str();
}

TEST(SampleUses, AreThoseOfTheGoldenFileWhichShowsEveryKindAndAnswer) {
  std::string actual;
  for (const auto& project : Samples()) actual += AllUses(*project);
  for (const std::string_view kind : kUseKindWords)
    EXPECT_NE(actual.find(" " + std::string(kind) + " "), std::string::npos) << kind;
  for (const std::string_view answer : kUseAnswerWords)
    EXPECT_TRUE(actual.find(" " + std::string(answer) + " ") != std::string::npos) << answer;
  const std::string path = kRoot + "/tests/golden/uses.txt";
  const char* update = std::getenv("VENDREL_UPDATE_GOLDEN");
  if (update && *update) std::ofstream(path, std::ios::binary) << actual;
  EXPECT_EQ(test::FirstDifference(ReadWholeFile(path), actual), "") << path;
}

// A word of code, found the simple way: outside of strings and comments.
struct CodeWord {
  std::string Text;  // in lower case
  std::int32_t Line;
  std::int32_t Column;
  bool IsMember;
};

std::vector<CodeWord> WordsOf(const Component& module) {
  std::vector<CodeWord> words;
  std::string_view rest = module.SourceForm->Text;
  bool inCode = module.FileType == ftModule;
  bool continued = false;
  for (std::int32_t number = 1; !rest.empty(); ++number) {
    std::string line(TakeLine(rest));
    if (StartsWithNoCaseAscii(line, "Attribute ")) {
      inCode = true;
      continue;
    }
    const std::string_view trimmed = Trim(line);
    if (!inCode || trimmed.starts_with('#') || StartsWithNoCaseAscii(trimmed, "Rem ") ||
        StartsWithNoCaseAscii(trimmed, "Option ") || StartsWithNoCaseAscii(trimmed, "Def"))
      continue;
    std::int32_t column = 0;
    bool member = continued && trimmed.starts_with('.');
    for (std::size_t i = 0; i < line.size();) {
      const char c = line[i];
      if (c == '\'') break;
      if (c == '"') {
        for (++i, ++column; i < line.size() && line[i] != '"'; ++i)
          if ((static_cast<unsigned char>(line[i]) & 0xC0U) != 0x80U) ++column;
        ++i;
        ++column;
        continue;
      }
      ++column;
      const bool isWord = IsLetterAscii(c) || (c == '_' && i + 1 < line.size());
      if (!isWord) {
        member = c == '.' || c == '!';
        const bool number2 = IsDigitAscii(c) || c == '&';
        ++i;
        while (number2 && i < line.size() && (IsDigitAscii(line[i]) || IsLetterAscii(line[i]))) {
          ++i;
          ++column;
        }
        continue;
      }
      std::size_t end = i;
      while (end < line.size() &&
             (IsLetterAscii(line[end]) || IsDigitAscii(line[end]) || line[end] == '_'))
        ++end;
      const std::string word = LowerAscii(line.substr(i, end - i));
      if (word == "rem" && line[end] == ' ') break;
      if (word != "_") words.push_back({word, number, column, member});
      column += static_cast<std::int32_t>(end - i) - 1;
      i = end;
      member = false;
    }
    continued = line.ends_with(" _");
  }
  return words;
}

// The words that the page says are no identifiers.
std::set<std::string> ReservedWords() {
  std::set<std::string> words;
  std::istringstream page(ReadWholeFile(kRoot + "/docs/uses.md"));
  bool inside = false;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("```")) {
      inside = line == "```text";
      continue;
    }
    std::istringstream list(inside ? line : std::string());
    for (std::string word; list >> word;) words.insert(LowerAscii(word));
  }
  return words;
}

TEST(SampleUses, GiveEachNameOneAnswer) {
  const std::set<std::string> reserved = ReservedWords();
  ASSERT_GT(reserved.size(), 100u);
  for (const auto& project : Samples()) {
    for (const Component& module : project->Components) {
      std::set<std::pair<std::int32_t, std::int32_t>> places;
      UseBinder binder(*project, {true, true});
      std::pair<std::int32_t, std::int32_t> last;
      binder.Bind(module, [&](const NameUse& use) {
        const std::pair place{use.Line, use.Column + (use.Text.starts_with('['))};
        EXPECT_LE(last, place) << use.Text;
        last = place;
        const bool isFirst = use.Secondary || places.insert(place).second;
        EXPECT_TRUE(isFirst) << use.Text << use.Line;
      });
      EXPECT_EQ(binder.Counts().Unread, 0);
      std::size_t words = 0;
      for (const CodeWord& word : WordsOf(module)) {
        ++words;
        const bool answered = places.erase({word.Line, word.Column}) > 0;
        const bool needsNone = !word.IsMember && reserved.count(word.Text) > 0;
        EXPECT_TRUE(answered || needsNone) << module.Name << word.Line << " " << word.Text;
      }
      EXPECT_TRUE(places.empty()) << module.Name << " " << places.begin()->first << ":"
                                  << places.begin()->second;
      EXPECT_GT(words, 5u);
    }
  }
}

bool IsDeclaredIn(const CodeElement* holder, std::string_view name) {
  const auto* block = As<Block>(holder);
  if (!block) return false;
  return (block->Parameters.IfAny() && block->Parameters->Item(name)) ||
         (block->Variables.IfAny() && block->Variables->Item(name)) ||
         (block->Constants.IfAny() && block->Constants->Item(name));
}

// What a search by word would find in the module: less members behind a dot, names of arguments,
// and procedures that declare the name themselves.
std::size_t SearchedFor(const Component& module, const std::string& name) {
  std::vector<std::pair<std::int32_t, const Block*>> starts;
  for (const Block& block : module.Blocks)
    if (!block.Name().empty()) starts.emplace_back(block.SourceLine(), &block);
  std::size_t count = 0;
  for (const CodeWord& word : WordsOf(module)) {
    if (word.IsMember || word.Text != LowerAscii(name)) continue;
    const Block* holder = nullptr;
    for (const auto& [line, block] : starts)
      if (line <= word.Line) holder = block;
    if (!IsDeclaredIn(holder, name)) ++count;
  }
  return count;
}

TEST(SampleUses, OfPrivateElementsAreWhatASearchByWordFinds) {
  std::size_t compared = 0;
  for (const auto& project : Samples()) {
    UseIndex index;
    index.Add(*project, {true, true});
    for (const Component& module : project->Components) {
      const auto compare = [&](const CodeElement& element) {
        std::size_t uses = 0;
        for (const IndexedUse& use : index.Of(element))
          if (!use.Secondary) ++uses;
        EXPECT_EQ(uses, SearchedFor(module, element.ElementName())) << element.QualifiedName();
        ++compared;
      };
      const Block* declarations = module.Blocks.FirstOfType(btDeclarations);
      if (declarations && declarations->Variables.IfAny())
        for (const Variable& variable : *declarations->Variables)
          if (variable.AccessType() == atPrivate) compare(variable);
      for (const Block& block : module.Blocks)
        if (block.AccessType() == atPrivate && block.IsMethod()) compare(block);
    }
  }
  EXPECT_GT(compared, 60u);
}

TEST(SampleUses, AreIndexedByElementAndAsEdges) {
  const auto project = Loaded("tests/uses/data/Kinds.vbp");
  UseIndex index;
  index.Add(*project);
  const CodeElement* name = project->GetObjectByName("Kinds~Shape~Name");
  ASSERT_TRUE(name);
  EXPECT_EQ(index.Of(*name).size(), 6u);
  std::string calls;
  for (const UseEdge& edge : index.Edges())
    if (edge.From->ElementName() == "Total" && edge.Kind == UseKind::Call)
      calls += edge.To->ElementName() + " " + std::to_string(edge.Count) + " ";
  EXPECT_EQ(calls, "Total 1 ");
}

}  // namespace
}  // namespace vendrel
