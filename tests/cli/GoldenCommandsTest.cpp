// Commands as a person types them, from the top of the checkout, with what the tool answers: each
// file of tests/golden/commands is a transcript.
//
//   $ find samples/Ledger.vbg Total      a command; "{scratch}" is a folder that is empty at first
//   > text                               what it writes, a line each
//   ! text                               what it says on the stream for errors
//   = 4                                  the code it ends with, unless that is 0
//   # text                               a remark
//
// After a change that is meant, or for a new case of which only the commands stand:
//   VENDREL_UPDATE_GOLDEN=1 ./test
// writes the answers anew; read the difference before it is committed.
#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "core/Workspace.h"
#include "services/FileSource.h"
#include "services/Paths.h"
#include "services/SourceText.h"
#include "support/DiskFolder.h"
#include "support/Projects.h"
#include "support/SourceRoot.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

namespace fs = std::filesystem;

const fs::path kCases = fs::path(test::SourceRoot()) / "tests/golden/commands";

std::vector<std::string> CasePaths() {
  std::vector<std::string> paths;
  for (const auto& entry : fs::directory_iterator(kCases)) paths.push_back(entry.path().string());
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::string Replaced(std::string text, std::string_view what, std::string_view by) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size())
    text.replace(at, what.size(), by);
  return text;
}

// Words as a shell sees them: quotes keep blanks.
std::vector<std::string> WordsOf(std::string_view command) {
  std::vector<std::string> words;
  char quote = 0;
  bool isOpen = false;
  for (const char c : command) {
    if (quote ? c == quote : c == '"' || c == '\'') {
      quote = quote ? 0 : c;
    } else if (c == ' ' && !quote) {
      isOpen = false;
      continue;
    } else {
      if (!isOpen) words.emplace_back();
      words.back() += c;
      isOpen = true;
      continue;
    }
    if (!isOpen) words.emplace_back();
    isOpen = true;
  }
  return words;
}

class GoldenCommands : public testing::Test {
 protected:
  void SetUp() override {
    mBefore = fs::current_path();
    fs::current_path(test::SourceRoot());
  }
  void TearDown() override { fs::current_path(mBefore); }

  std::string Answer(const std::string& command) const {
    const std::string scratch = mScratch.Path("");
    Workspace workspace;  // keys and numbers begin anew, as in a process of its own
    const Workspace::Use use(workspace);
    const ToolRun run =
        Tool(WordsOf(Replaced(command, "{scratch}", scratch.substr(0, scratch.size() - 1))));
    std::string answer = Marked(run.Out, '>') + Marked(run.Err, '!');
    if (run.Code != exDone) answer += "= " + std::to_string(run.Code) + "\n";
    return answer;
  }

 private:
  // Without what differs from machine to machine.
  std::string Marked(const std::string& text, char mark) const {
    const std::string scratch = mScratch.Path("");
    std::string shown = Replaced(text, scratch.substr(0, scratch.size() - 1), "{scratch}");
    const std::string checkout = WindowsPath(test::SourceRoot());
    for (const std::string& form : {test::SourceRoot(), checkout, Replaced(checkout, "\\", "\\\\")})
      shown = Replaced(std::move(shown), form, "{checkout}");
    std::string marked;
    for (std::string_view rest = shown; !rest.empty();) {
      const std::size_t end = std::min(rest.find('\n'), rest.size());
      std::string_view line = rest.substr(0, end);
      rest.remove_prefix(std::min(end + 1, rest.size()));
      if (line.ends_with('\r')) line.remove_suffix(1);
      marked += mark;
      if (!line.empty()) marked.append(" ").append(line);
      marked += '\n';
    }
    return marked;
  }

  fs::path mBefore;
  test::DiskFolder mScratch;
};

TEST_F(GoldenCommands, AnswerAsTheirTranscriptsSay) {
  const char* update = std::getenv("VENDREL_UPDATE_GOLDEN");
  for (const std::string& path : CasePaths()) {
    const std::string expected = ReadWholeFile(path);
    std::string actual;
    for (std::string_view rest = expected; !rest.empty();) {
      const std::string line(TakeLine(rest));
      if (line.empty() || line[0] == '#') actual += line + "\n";
      if (line.starts_with("$ ")) actual += line + "\n" + Answer(line.substr(2));
    }
    if (update && *update) std::ofstream(path, std::ios::binary) << actual;
    EXPECT_EQ(test::FirstDifference(ReadWholeFile(path), actual), "") << path;
  }
}

}  // namespace
}  // namespace vendrel::cli
