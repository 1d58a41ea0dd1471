// Holds docs/reading.md to the list of flags: a flag without its row would be a secret, a row
// without its flag a promise.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "core/ReadingRules.h"
#include "support/SourceRoot.h"

namespace {

struct Row {
  std::string Flag;
  std::vector<std::string> Cells;  // source, classic, complete
};

// The rows of all tables whose first cell is a word of code.
std::vector<Row> RowsOf(std::istream& page) {
  std::vector<Row> rows;
  for (std::string line; std::getline(page, line);) {
    if (line.rfind("| `", 0) != 0) continue;
    std::istringstream cells(line.substr(1));
    Row row;
    for (std::string cell; std::getline(cells, cell, '|');)
      row.Cells.push_back(cell.size() > 2 ? cell.substr(1, cell.size() - 2) : std::string());
    row.Flag = row.Cells.front().substr(1, row.Cells.front().size() - 2);
    row.Cells.erase(row.Cells.begin());
    rows.push_back(row);
  }
  return rows;
}

std::vector<Row> RowsOfPage() {
  std::ifstream page(vendrel::test::SourceRoot() + "/docs/reading.md");
  return RowsOf(page);
}

std::vector<std::string> Flags() {
  std::vector<std::string> flags;
  vendrel::ForEachReadingRule(
      [&](const vendrel::ReadingRule& rule) { flags.emplace_back(rule.Name); });
  return flags;
}

TEST(ReadingPage, TellsEveryFlagOnceAndNothingElse) {
  std::vector<std::string> told;
  for (const Row& row : RowsOfPage()) told.push_back(row.Flag);
  EXPECT_THAT(told, testing::UnorderedElementsAreArray(Flags()));
}

TEST(ReadingPage, ShowsSourceAndWhatEachReadingMakesOfIt) {
  for (const Row& row : RowsOfPage()) {
    ASSERT_EQ(row.Cells.size(), 3u) << row.Flag;
    for (const std::string& cell : row.Cells) EXPECT_FALSE(cell.empty()) << row.Flag;
    EXPECT_NE(row.Cells[1], row.Cells[2]) << row.Flag << " makes no difference";
  }
}

// The checks above would also pass if no row were recognised on a page without flags.
TEST(ReadingPage, RowsAreRecognised) {
  std::istringstream page("| flag | source |\n|---|---|\n| `A` | `x` | lost | kept |\ntext `B`\n");
  const auto rows = RowsOf(page);
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].Flag, "A");
  EXPECT_THAT(rows[0].Cells, testing::ElementsAre("`x`", "lost", "kept"));
}

}  // namespace
