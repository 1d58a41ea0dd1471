// Holds the pages to the checkout: every room has its page, and what a page says to type exists.
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/SourceRoot.h"

namespace {

namespace fs = std::filesystem;

const fs::path kRoot = vendrel::test::SourceRoot();

std::vector<fs::path> Pages() {
  std::vector<fs::path> pages = {kRoot / "README.md"};
  for (const char* folder : {"docs", "samples", "src"})
    for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder))
      if (entry.path().extension() == ".md") pages.push_back(entry.path());
  return pages;
}

// The lines between ``` and ``` of a page, continued ones joined.
std::vector<std::string> FencedLines(std::istream& page) {
  std::vector<std::string> lines;
  std::string line, open;
  bool inside = false;
  for (bool fenced = false; std::getline(page, line);) {
    if (line.rfind("```", 0) == 0) {
      inside = !inside;
      fenced = inside && line != "```text";  // what a command prints is no command
    } else if (fenced && !line.empty() && line.back() == '\\') {
      open += line.substr(0, line.size() - 1);
    } else if (fenced) {
      lines.push_back(open + line);
      open.clear();
    }
  }
  return lines;
}

std::set<std::string> PresetNames() {
  std::ifstream input(kRoot / "CMakePresets.json");
  const auto presets = nlohmann::json::parse(input);
  std::set<std::string> names;
  for (const auto& preset : presets["configurePresets"])
    names.insert(preset["name"].get<std::string>());
  return names;
}

// What is named by a command and does not exist; empty if all of it does.
std::string MissingOf(const std::string& command) {
  std::istringstream input(command.substr(0, command.find(" #")));
  const std::vector<std::string> words{std::istream_iterator<std::string>(input), {}};
  if (words.empty()) return {};
  const bool built = words[0].rfind("./build/", 0) == 0;  // there only after the lines before it
  if (!built && words[0].rfind("./", 0) == 0 && access((kRoot / words[0]).c_str(), X_OK) != 0)
    return words[0];
  for (size_t i = 1; i < words.size(); ++i) {
    if (words[i].rfind("samples/", 0) == 0 && !fs::exists(kRoot / words[i])) return words[i];
    if (words[i - 1] == "--preset" && PresetNames().count(words[i]) == 0) return words[i];
  }
  return {};
}

TEST(Readmes, EveryRoomHasOne) {
  for (const auto& room : fs::directory_iterator(kRoot / "src"))
    if (room.is_directory() && !fs::is_empty(room.path())) {
      EXPECT_TRUE(fs::exists(room.path() / "README.md")) << room.path();
    }
}

TEST(Readmes, CommandsExist) {
  for (const auto& path : Pages()) {
    std::ifstream page(path);
    for (const auto& line : FencedLines(page))
      EXPECT_EQ(MissingOf(line), "") << path << ": " << line;
  }
}

TEST(Readmes, LinksLeadToFiles) {
  for (const auto& path : Pages()) {
    std::ifstream page(path);
    const std::string text{std::istreambuf_iterator<char>(page), {}};
    for (size_t at = text.find("]("); at != std::string::npos; at = text.find("](", at + 2)) {
      std::string target = text.substr(at + 2, text.find(')', at) - at - 2);
      target = target.substr(0, target.find('#'));
      // A blank: no target, but the parameters of a function without a name in a program.
      if (target.empty() || target.find("://") != std::string::npos) continue;
      if (target.find(' ') != std::string::npos) continue;
      EXPECT_TRUE(fs::exists(path.parent_path() / target)) << path << " links to " << target;
    }
  }
}

// The checks above would also pass if they recognised nothing.
TEST(Readmes, MissingCommandsAreRecognised) {
  std::istringstream page("text\n```sh\n./run \\\n  tree samples/None.vbp\n```\n./none\n");
  const auto lines = FencedLines(page);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(MissingOf(lines[0]), "samples/None.vbp");
  EXPECT_EQ(MissingOf("./none --all"), "./none");
  EXPECT_EQ(MissingOf("cmake --preset nonesuch"), "nonesuch");
  EXPECT_EQ(MissingOf("./run --version  # and --preset nonesuch"), "");
  EXPECT_EQ(MissingOf("cmake --preset debug"), "");
}

}  // namespace
