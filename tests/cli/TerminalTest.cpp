// What a person at a terminal meets: help, hints, colours, results that go elsewhere, interruption.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <re2/re2.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <set>
#include <sstream>

#include "cli/Interrupts.h"
#include "support/MemoryFiles.h"
#include "support/SourceRoot.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

std::vector<std::string> CommandsInHelp() {
  std::istringstream help(RunFor({"--help"}));
  std::vector<std::string> names;
  for (std::string line; std::getline(help, line);)
    if (line.starts_with("  ") && line[2] >= 'a' && line[2] <= 'z' &&
        !line.starts_with("  vendrel"))
      names.push_back(line.substr(2, line.find(' ', 2) - 2));
  return names;
}

std::string Ledger() { return test::SourceRoot() + "/samples/Ledger/Ledger.vbp"; }

TEST(Help, OfEachCommandHasPurposeAndGroups) {
  const auto commands = CommandsInHelp();
  EXPECT_GT(commands.size(), 20u);
  for (const std::string& command : commands) {
    const std::string help = RunFor({command, "--help"});
    EXPECT_THAT(help, HasSubstr("\n  vendrelmodel " + command)) << command;
    EXPECT_THAT(help, HasSubstr("\nHow source is read:\n")) << command;
    EXPECT_THAT(help, HasSubstr("\nHow results and messages are shown:\n")) << command;
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 110u) << line;
  }
}

// An example that the parser refuses would be worse than none.
TEST(Help, ExamplesAreUnderstood) {
  std::size_t count = 0;
  for (const std::string& command : CommandsInHelp()) {
    std::istringstream help(RunFor({command, "--help"}));
    for (std::string line; std::getline(help, line);) {
      const bool isExample = line.starts_with("  vendrelmodel ") && !line.ends_with("[options]");
      if (!isExample) continue;
      ++count;
      std::vector<std::string> words;
      std::istringstream rest(line.substr(15, line.find(" > ") - 15));
      for (std::string word; rest >> word;)
        if (words.empty() || !words.back().starts_with('\'') || words.back().ends_with('\''))
          words.push_back(word);
        else
          words.back() += " " + word;
      for (std::string& word : words) std::erase(word, '\'');
      for (std::string& word : words)
        if (word.starts_with("ledger.json") || word.ends_with(".dot") || word.ends_with(".html"))
          word = "/dev/null";
      if (words.front() == "write") words.push_back("--dry-run");
      const ToolRun run = Tool(words);
      EXPECT_THAT(run.Err, Not(HasSubstr("--help"))) << line;
      EXPECT_THAT(run.Err, Not(HasSubstr("neither a command"))) << line;
    }
  }
  EXPECT_GT(count, 20u);
}

TEST(Hints, TellWhatMayHaveBeenMeant) {
  const struct {
    std::vector<std::string> Arguments;
    int Code;
    const char* Part;
  } cases[] = {
      {{"find", Ledger(), "Pst"}, exNo, "nothing is called 'Pst'; did you mean 'Post'?"},
      {{"find", Ledger(), "Ledger~modMain~Mian"}, exNo, "did you mean 'Ledger~modMain~Main'?"},
      {{"find", Ledger(), "Quite~Another"}, exNo, "; names lists every qualified name"},
      {{"resolve", Ledger(), "Acount"}, exNo, "did you mean 'Account'?"},
      {{"resolve", Ledger(), "Account", "--from", "modMian"}, exNo, "did you mean 'modMain'?"},
      {{"tree", Ledger(), "--module", "modMian"}, exNo, "did you mean 'modMain'?"},
      {{"members", Ledger(), "Acount"}, exNo, "did you mean 'Account'?"},
      {{"controls", Ledger(), "frmMian"}, exNo, "did you mean 'frmMain'?"},
      {{"html", Ledger(), "Jurnal"}, exNo, "did you mean 'Journal'?"},
      {{"roundtip", Ledger()}, exUsage, "did you mean 'roundtrip'?"},
      {{"names", "--jsn", Ledger()}, exUsage, "did you mean '--json'?"},
      {{"names", Ledger(), "--kind", "modul"}, exUsage, "; did you mean 'module'?"},
  };
  for (const auto& each : cases) {
    const ToolRun run = ToolEnding(each.Code, each.Arguments);
    EXPECT_THAT(run.Err, HasSubstr(each.Part));
    EXPECT_EQ(std::count(run.Err.begin(), run.Err.end(), '\n'), 1) << run.Err;
  }
}

TEST(Help, IsACommandToo) {
  EXPECT_EQ(RunFor({"help"}), RunFor({"--help"}));
  EXPECT_EQ(RunFor({"help", "site"}), RunFor({"site", "--help"}));
}

TEST(Colours, FollowOptionAndTerminal) {
  const auto isColoured = [](std::vector<std::string> options, bool terminal) {
    options.insert(options.begin(), {"tree", Ledger()});
    return Tool(options, {.Terminal = terminal}).Out.find('\033') != std::string::npos;
  };
  EXPECT_TRUE(isColoured({"--color", "always"}, false));
  EXPECT_FALSE(isColoured({"--color", "never"}, true));
  EXPECT_FALSE(isColoured({}, false));
  EXPECT_TRUE(isColoured({}, true));
  setenv("TERM", "dumb", 1);
  EXPECT_FALSE(isColoured({}, true));
  setenv("TERM", "xterm", 1);
}

TEST(Results, GoToStandardOutputDevicesAndPipes) {
  const std::string wanted = RunFor({"names", Ledger()});
  for (const char* name : {"-", "/dev/stdout", "/dev/fd/1"})
    EXPECT_EQ(RunFor({"names", Ledger(), "-o", name}), wanted) << name;
  EXPECT_EQ(RunFor({"names", Ledger(), "-o", "/dev/null"}), "");
  struct stat status {};
  ASSERT_EQ(stat("/dev/null", &status), 0);
  EXPECT_TRUE(S_ISCHR(status.st_mode)) << "was put aside";

  const std::string pipe = "/tmp/vendrel-pipe-" + std::to_string(getpid());
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const int end = open(pipe.c_str(), O_RDWR | O_NONBLOCK);  // a reader; the pipe holds it all
  ASSERT_GE(end, 0);
  RunFor({"names", Ledger(), "-o", pipe});
  std::string heard(1 << 16, ' ');
  heard.resize(
      static_cast<std::size_t>(std::max<ssize_t>(0, read(end, heard.data(), heard.size()))));
  close(end);
  RunFor({"names", Ledger(), "-o", pipe}, exFailed);  // nobody reads it: told, not waited for
  unlink(pipe.c_str());
  EXPECT_EQ(heard, wanted);
}

// Modules that are spelled in another case are looked for again when they are loaded, which gives
// the signal moments to come at.
TEST(Interruption, TellsHowFarTheLoadGot) {
  test::MemoryFiles files{
      {"/p/Shop.vbp", "Type=Exe\r\nModule=A; a.bas\r\nModule=B; b.bas\r\nModule=C; c.bas\r\n"},
      {"/p/A.bas", "Attribute VB_Name = \"A\"\r\n"},
      {"/p/B.bas", "Attribute VB_Name = \"B\"\r\n"},
      {"/p/C.bas", "Attribute VB_Name = \"C\"\r\n"}};
  std::set<std::string> told;
  for (int n = 1, reached = 1; reached; ++n) {
    files.ForgetCalls();
    files.ActAt(n, [] { NoteSignal(SIGINT); });
    const ToolRun run = Tool({"tree", "/p/Shop.vbp"});
    reached = files.Calls().size() >= static_cast<std::size_t>(n);
    if (run.Code == SignalBase + SIGINT) told.insert(run.Err);
  }
  NoteSignal(0);
  for (const char* part : {"1 of 3", "2 of 3"})
    EXPECT_EQ(told.count(std::string("vendrelmodel: interrupted (Interrupt); ") + part +
                         " modules of /p/Shop.vbp had been read; nothing was written\n"),
              1u)
        << part << testing::PrintToString(told);
}

// Where SIGPIPE is ignored a write fails instead.
TEST(Interruption, ByAClosedPipeIsQuiet) {
  class Closed final : public std::streambuf {
    int_type overflow(int_type) override { return errno = EPIPE, traits_type::eof(); }
    int sync() override { return errno = EPIPE, -1; }
  } closed;
  std::ostream out(&closed);
  std::ostringstream err;
  const Streams streams{out, err};
  const std::string path = Ledger();
  const char* argv[] = {"vendrelmodel", "names", path.c_str()};
  EXPECT_EQ(RunTool(3, argv, streams), SignalBase + SIGPIPE);
  EXPECT_EQ(err.str(), "");
}

TEST(Progress, IsShownWithRateAndRestOnATerminalThatKnowsMovements) {
  test::MemoryFiles files;
  std::string project = "Type=Exe\r\n", module = "Attribute VB_Name = \"M\"\r\n";
  for (int i = 0; i < 40; ++i) module += "Public Sub P" + std::to_string(i) + "()\r\nEnd Sub\r\n";
  for (int i = 0; i < 60; ++i) {
    const std::string name = "M" + std::to_string(i);
    project += "Module=" + name + "; " + name + ".bas\r\n";
    files.Add("/p/" + name + ".bas", module);
  }
  for (int i = 0; i < 8; ++i) files.Add("/p/S" + std::to_string(i) + ".vbp", project);
  // Nothing is shown of what takes no time.
  files.ActAt(400, [] { std::this_thread::sleep_for(std::chrono::milliseconds(400)); });
  const std::string shown = Tool({"check", "/p"}, {.Terminal = true}).Err;
  EXPECT_TRUE(RE2::PartialMatch(
      shown, "\r\033\\[K\\[#* *\\] project \\d+ of 8, \\d+ modules a second, \\d+ s left"))
      << shown.substr(0, 300);
  EXPECT_THAT(Tool({"check", "/p", "--quiet"}, {.Terminal = true}).Err, Not(HasSubstr("\033")));
  setenv("TERM", "dumb", 1);
  EXPECT_THAT(Tool({"check", "/p"}, {.Terminal = true}).Err, Not(HasSubstr("\033")));
  setenv("TERM", "xterm", 1);
}

TEST(Tags, OfAFileAreAddedUnlessItReplacesAll) {
  const test::MemoryFiles files{
      {"/p/add.json", R"({"tags": [{"TagIdentifier": "##OURS", "UpgradeTo": "##SUMMARY"}]})"},
      {"/p/all.json", R"({"tags": [{"TagIdentifier": "##OURS"}], "replace": true})"},
      {"/p/odd.json", R"({"tags": [], "replace": 1})"}};
  const std::string builtIn = RunFor({"tags"});
  EXPECT_THAT(builtIn, HasSubstr("##SUMMARY\t"));
  const std::string added = RunFor({"tags", "--tags", "/p/add.json"});
  EXPECT_THAT(added, AllOf(StartsWith("##OURS\t"), EndsWith(builtIn)));
  EXPECT_EQ(RunFor({"tags", "--tags", "/p/all.json"}), "##OURS\tetNone\t\tkept\tline break\t\n");
  EXPECT_THAT(RunFor({"tags", "--tags", "/p/odd.json"}, exFailed), HasSubstr("true or false"));
}

TEST(Manual, HasEveryCommand) {
  const std::string man = RunFor({"manual"}), html = RunFor({"manual", "--html"});
  for (const std::string& command : CommandsInHelp()) {
    std::string escaped;
    for (const char c : command) escaped += c == '-' ? std::string("\\-") : std::string(1, c);
    EXPECT_THAT(man, HasSubstr("\n.SS " + escaped + "\n"));
    EXPECT_NE(html.find("<h3 id=\"" + command + "\">"), std::string::npos) << command;
    EXPECT_THAT(RunFor({"manual", command}), HasSubstr("\n.SH SYNOPSIS\n"));
  }
  RunFor({"manual", "nonsense"}, exUsage);
}

}  // namespace
}  // namespace vendrel::cli
