// Holds the order of the rooms: a room includes only itself and the rooms above it.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/SourceRoot.h"

namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 16> kRooms = {
    "core",   "diagnostics", "text",   "services", "model",  "project", "names",  "comments",
    "intake", "uses",        "output", "survey",   "writer", "typelib", "dotnet", "cli"};

// The position of a room from the ground up, or -1.
int Floor(std::string_view room) {
  const auto found = std::find(kRooms.begin(), kRooms.end(), room);
  return found == kRooms.end() ? -1 : static_cast<int>(found - kRooms.begin());
}

// The room of an include of our own, or an empty text for any other line.
std::string IncludedRoom(std::string_view line) {
  constexpr std::string_view start = "#include \"";
  if (line.substr(0, start.size()) != start) return {};
  line.remove_prefix(start.size());
  const size_t slash = line.find('/');
  return slash == std::string_view::npos ? std::string(line.substr(0, line.find('"')))
                                         : std::string(line.substr(0, slash));
}

// What is wrong with an include that a file of a room makes, or an empty text.
std::string Fault(const std::string& room, const std::string& included) {
  if (included.empty()) return {};
  if (Floor(included) < 0) return "is not written \"room/File.h\"";
  if (Floor(included) > Floor(room)) return "runs upward from " + room + " to " + included;
  return {};
}

std::vector<fs::path> CodeFiles() {
  std::vector<fs::path> files;
  for (const auto& entry :
       fs::recursive_directory_iterator(fs::path(vendrel::test::SourceRoot()) / "src")) {
    const auto extension = entry.path().extension();
    if (extension == ".h" || extension == ".cpp") files.push_back(entry.path());
  }
  return files;
}

TEST(Includes, NoneRunsUpward) {
  const fs::path root = fs::path(vendrel::test::SourceRoot()) / "src";
  const auto files = CodeFiles();
  ASSERT_FALSE(files.empty());
  for (const auto& file : files) {
    const std::string room = fs::relative(file, root).begin()->string();
    EXPECT_GE(Floor(room), 0) << file << " is in no room";
    std::ifstream input(file);
    std::string line;
    for (int number = 1; std::getline(input, line); ++number) {
      const std::string fault = Fault(room, IncludedRoom(line));
      EXPECT_EQ(fault, "") << file.string() << ":" << number << ": " << line;
    }
  }
}

// The check above would also pass if it recognised nothing.
TEST(Includes, AreRecognised) {
  EXPECT_EQ(Fault("text", IncludedRoom("#include \"model/Block.h\"")),
            "runs upward from text to model");
  EXPECT_EQ(Fault("typelib", IncludedRoom("#include \"typelib/reader/Msft.h\"")), "");
  EXPECT_EQ(Fault("model", IncludedRoom("#include \"text/CodeLine.h\"")), "");
  EXPECT_EQ(Fault("model", IncludedRoom("#include <text/CodeLine.h>")), "");
  EXPECT_NE(Fault("model", IncludedRoom("#include \"Block.h\"")), "");
}

}  // namespace
