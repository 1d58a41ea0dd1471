// The generator feeds measurements: its projects must be the same each time, as large as asked for,
// and closed wherever they open something.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "bench/Generator.h"

namespace vendrel::bench {
namespace {

std::vector<GeneratedFile> Project(std::int64_t lines, std::uint64_t seed) {
  std::vector<GeneratedFile> files;
  GenerateProject({.Lines = lines, .Seed = seed}, [&](const auto& file) { files.push_back(file); });
  return files;
}

std::string AllText(const std::vector<GeneratedFile>& files) {
  std::string text;
  for (const auto& file : files) text += file.Name + "\r\n" + file.Text;
  return text;
}

TEST(Generator, TheSeedDecidesEveryByte) {
  EXPECT_EQ(AllText(Project(3000, 7)), AllText(Project(3000, 7)));
  EXPECT_NE(AllText(Project(3000, 7)), AllText(Project(3000, 8)));
}

TEST(Generator, MakesTheLinesAskedForAndListsEveryModule) {
  for (const std::int64_t wanted : {1, 4000, 50'000}) {
    const auto files = Project(wanted, 1);
    std::int64_t lines = 0;
    for (const auto& file : files) {
      ASSERT_EQ(file.Lines, std::count(file.Text.begin(), file.Text.end(), '\n')) << file.Name;
      if (file.Name == kProjectFileName) continue;
      lines += file.Lines;
      EXPECT_NE(files.back().Text.find(file.Name + "\r\n"), std::string::npos) << file.Name;
    }
    EXPECT_EQ(files.back().Name, kProjectFileName);
    EXPECT_GE(lines, wanted);
    EXPECT_LE(lines, wanted + 250) << "a header with controls and one procedure at most";
  }
}

// The first words of a line that open or close a block; other lines give an empty text.
std::string BlockWord(const std::string& line) {
  std::istringstream input(line);
  std::string word;
  input >> word;
  if (word == "Public" || word == "Private" || word == "Friend") input >> word;
  for (const char* opening : {"Sub", "Function", "Property", "Enum", "Type"})
    if (word == opening) return word;
  if (word != "End") return {};
  input >> word;
  return "End " + word;
}

TEST(Generator, ClosesEveryBlockThatItOpens) {
  for (const auto& file : Project(20'000, 3)) {
    std::map<std::string, int> count;
    std::istringstream input(file.Text);
    for (std::string line; std::getline(input, line);) {
      ASSERT_EQ(line.back(), '\r') << file.Name;
      ++count[BlockWord(line)];
    }
    for (const char* word : {"Sub", "Function", "Property", "Enum", "Type"})
      EXPECT_EQ(count[word], count[std::string("End ") + word]) << word << " in " << file.Name;
  }
}

}  // namespace
}  // namespace vendrel::bench
