#include <gtest/gtest.h>

#include "tools/cards/toolkit_test_cards.h"
#include "tools/cards/workspace_card_toolkit.h"

namespace zorvik {
namespace {

using Toolkit = WorkspaceCardToolkit;
using testing::tableCard;

WorkspaceTableContent sliceTable(const WorkspaceCard& card, std::string_view optionsJSON,
                                 std::optional<int64_t> maxChars = std::nullopt) {
  WorkspaceCardTypeOptions options;
  options.table = decodeValue<WorkspaceCardTableOptions>(AnyCodableValue::parse(optionsJSON));
  const WorkspaceCardContentRequest request{WorkspaceCardContentMode::typeSpecific, maxChars,
                                            options};
  auto payload = Toolkit::content(card, request, WorkspaceCardContext{});
  EXPECT_FALSE(payload.text);
  return payload.table.value();
}

// A table whose cell in row r, column c reads "r<r>c<c>".
WorkspaceCard gridCard(std::vector<std::string> columns, int rows) {
  std::vector<std::vector<std::string>> data;
  for (int r = 1; r <= rows; ++r) {
    std::vector<std::string> row;
    for (size_t c = 1; c <= columns.size(); ++c) {
      row.push_back("r" + std::to_string(r) + "c" + std::to_string(c));
    }
    data.push_back(std::move(row));
  }
  return tableCard(1, std::move(columns), std::move(data));
}

std::vector<std::string> firstCells(const WorkspaceTableContent& content) {
  std::vector<std::string> cells;
  for (const auto& row : content.rows) cells.push_back(row.empty() ? "" : row.front());
  return cells;
}

TEST(CardToolkitColumns, NormalisesNames) {
  EXPECT_EQ(Toolkit::normalizeColumnName("  Due \t\n  Date  "), "due date");
  EXPECT_EQ(Toolkit::normalizeColumnName("СТАТУС\u00A0Задачи"), "статус задачи");
}

TEST(CardToolkitColumns, ResolvesFromMostToLeastExact) {
  const std::vector<std::string> columns = {"Id",    "Title", "Current   State", "Prio",
                                            "Owner", "Notes", "Серьезность"};
  struct Case {
    std::string name;
    std::optional<size_t> expected;
  };
  const std::vector<Case> cases = {
      {"2", 1},                  // a 1-based number
      {" 7 ", 6},                //
      {"8", std::nullopt},       // out of range and no such title
      {"  TITLE ", 1},           // exact after normalising
      {"current state", 2},      // white space runs collapse
      {"own", 4},                // a title containing the name
      {"the owner field", 4},    // a name containing the title
      {"state", 2},              // containment comes before aliases
      {"status", 2},             // alias of status: state
      {"name", 1},               // alias of name: title
      {"severity", 6},           // alias in Russian
      {"priority", 3},           // "prio" is contained in the name
      {"budget", std::nullopt},  //
      {"   ", std::nullopt},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Toolkit::resolveColumnIndex(c.name, columns, columns.size()), c.expected) << c.name;
  }
  // Exact titles win over containment, numbers over titles.
  EXPECT_EQ(Toolkit::resolveColumnIndex("status", {"Status Code", "Status"}, 2), 1u);
  EXPECT_EQ(Toolkit::resolveColumnIndex("3", {"3", "a", "b"}, 3), 2u);
  // A number may address a column beyond the titles when rows are wider.
  EXPECT_EQ(Toolkit::resolveColumnIndex("4", {"a", "b"}, 4), 3u);
}

TEST(CardToolkitColumns, AutoSelectsKnownColumnsInPickingOrder) {
  EXPECT_EQ(Toolkit::autoSelectColumnIndices(
                {"Notes", "Статус", "ID", "Заголовок", "Owner", "Приоритет", "Серьезность", "X"}),
            (std::vector<size_t>{2, 3, 1, 5, 6}));
  EXPECT_EQ(Toolkit::autoSelectColumnIndices({"a", "Name", "Title", "STATE", " status ", "b", "c"}),
            (std::vector<size_t>{1, 3}));
  EXPECT_TRUE(Toolkit::autoSelectColumnIndices({"a", "b", "c", "d", "e", "f", "g"}).empty());
}

TEST(CardToolkitTable, NarrowTablesShowAllColumnsWideTablesTheirPicks) {
  const auto narrow = sliceTable(gridCard({"A", "Status", "C", "D", "E", "F"}, 2), "{}");
  EXPECT_EQ(narrow.columns, (std::vector<std::string>{"A", "Status", "C", "D", "E", "F"}));
  EXPECT_EQ(narrow.columnRange, (WorkspaceCardRange{1, 6}));

  const auto wide = sliceTable(gridCard({"A", "Status", "C", "D", "Title", "F", "G"}, 2), "{}");
  EXPECT_EQ(wide.columns, (std::vector<std::string>{"Title", "Status"}));
  EXPECT_EQ(wide.rows, (std::vector<std::vector<std::string>>{{"r1c5", "r1c2"}, {"r2c5", "r2c2"}}));
  EXPECT_FALSE(wide.columnRange);
  EXPECT_EQ(wide.columnCount, 2);
  EXPECT_EQ(wide.totalColumns, 7);

  const auto ranged = sliceTable(gridCard({"A", "Status", "C", "D", "Title", "F", "G"}, 1),
                                 R"({"column_range": {"start": 6}})");
  EXPECT_EQ(ranged.columns, (std::vector<std::string>{"F", "G"}));

  const auto unknown =
      sliceTable(gridCard({"A", "B", "C", "D", "E", "F", "G"}, 1), R"({"max_columns": 3})");
  EXPECT_EQ(unknown.columns, (std::vector<std::string>{"A", "B", "C"}));
  EXPECT_EQ(unknown.columnRange, (WorkspaceCardRange{1, 3}));
}

TEST(CardToolkitTable, SelectsColumnsByNameAndReportsMissingOnes) {
  const auto content =
      sliceTable(gridCard({"Id", "Status", "Owner"}, 2),
                 R"({"column_names": ["state", "nope", "1", "Status"], "include_headers": false})");
  EXPECT_FALSE(content.columns);
  EXPECT_EQ(content.rows,
            (std::vector<std::vector<std::string>>{{"r1c2", "r1c1"}, {"r2c2", "r2c1"}}));
  EXPECT_EQ(content.columnNamesRequested,
            (std::vector<std::string>{"state", "nope", "1", "Status"}));
  EXPECT_EQ(content.columnNamesMissing, (std::vector<std::string>{"nope"}));
}

TEST(CardToolkitTable, SlicesRowsByClampedRange) {
  const auto card = gridCard({"A"}, 10);
  struct Case {
    std::string options;
    std::vector<std::string> rows;
  };
  const std::vector<Case> cases = {
      {R"({"row_range": {"start": 5, "end": 2}})", {"r2c1", "r3c1", "r4c1", "r5c1"}},
      {R"({"row_range": {"start": 3, "end": 0}})", {"r1c1", "r2c1", "r3c1"}},
      {R"({"row_range": {"start": 8, "end": 30}})", {"r8c1", "r9c1", "r10c1"}},
      {R"({"row_range": {"start": 2}, "max_rows": 2})", {"r2c1", "r3c1"}},
  };
  for (const auto& c : cases) {
    const auto content = sliceTable(card, c.options);
    EXPECT_EQ(firstCells(content), c.rows) << c.options;
    EXPECT_EQ(content.rowCount, static_cast<int64_t>(c.rows.size()));
    EXPECT_EQ(content.totalRows, 10);
  }
}

TEST(CardToolkitTable, FiltersRowsWithinTheRange) {
  const auto card = tableCard(
      1, {"Task", "Status"},
      {{"a", "Open"}, {"b", "closed"}, {"c", " open "}, {"d", "reopened"}, {"e", "open"}});
  struct Case {
    std::string options;
    std::vector<std::string> tasks;
    std::optional<std::string> error;
  };
  const std::vector<Case> cases = {
      {R"({"row_filter": {"column": "status", "match": "open"}})", {"a", "c", "e"}, std::nullopt},
      {R"({"row_filter": {"column": "state", "match": "OPEN", "mode": "contains"}})",
       {"a", "c", "d", "e"},
       std::nullopt},
      {R"({"row_filter": {"column": "Status", "match": "Open", "case_sensitive": true}})",
       {"a"},
       std::nullopt},
      {R"({"row_filter": {"column": "status", "match": "open"}, "row_range": {"start": 2, "end": 4}})",
       {"c"},
       std::nullopt},
      {R"({"row_filter": {"column": "owner", "match": "open"}})", {}, "column_not_found"},
      {R"({"row_filter": {"column": "status", "match": "  "}})", {}, "empty_match"},
  };
  for (const auto& c : cases) {
    const auto content = sliceTable(card, c.options);
    EXPECT_EQ(firstCells(content), c.tasks) << c.options;
    EXPECT_EQ(content.filterError, c.error) << c.options;
    EXPECT_TRUE(content.rowFilter) << c.options;
  }
}

TEST(CardToolkitTable, LooksUpOneCell) {
  const auto card = tableCard(1, {"Task", ""}, {{"a", "x"}, {"b", "y"}});
  struct Case {
    std::string cell;
    std::optional<WorkspaceTableCellMatch> match;
    std::optional<std::string> error;
  };
  const std::vector<Case> cases = {
      {R"({"row_index": 2, "column_name": "task"})", WorkspaceTableCellMatch{2, 1, "Task", "b"},
       std::nullopt},
      {R"({"row_index": 1, "column_index": 2})", WorkspaceTableCellMatch{1, 2, "Column 2", "x"},
       std::nullopt},
      {R"({"row_index": 0, "column_index": 1})", std::nullopt, "row_out_of_range"},
      {R"({"row_index": 3, "column_index": 1})", std::nullopt, "row_out_of_range"},
      {R"({"row_index": 1, "column_index": 3})", std::nullopt, "column_not_found"},
      {R"({"row_index": 1, "column_name": "owner"})", std::nullopt, "column_not_found"},
      {R"({"row_index": 1})", std::nullopt, "column_not_found"},
  };
  for (const auto& c : cases) {
    const auto content = sliceTable(card, R"({"cell": )" + c.cell + "}");
    EXPECT_EQ(content.cell, c.match) << c.cell;
    EXPECT_EQ(content.cellError, c.error) << c.cell;
  }
}

TEST(CardToolkitTable, FindScansRowsThenColumns) {
  const auto card =
      tableCard(1, {"Name", "Note", ""}, {{"alpha", "beta", "alphabet"}, {"gamma", "alpha", "x"}});
  auto content = sliceTable(card, R"({"find": {"match": "alpha", "mode": "starts_with"}})");
  EXPECT_EQ(content.matches,
            (std::vector<WorkspaceTableCellMatch>{
                {1, 1, "Name", "alpha"}, {1, 3, "Column 3", "alphabet"}, {2, 2, "Note", "alpha"}}));
  EXPECT_FALSE(content.matchError);

  content = sliceTable(card, R"({"find": {"match": "alpha", "column": "note"}})");
  EXPECT_EQ(content.matches, (std::vector<WorkspaceTableCellMatch>{{2, 2, "Note", "alpha"}}));

  content = sliceTable(
      card, R"({"find": {"match": "alpha", "mode": "contains", "row_range": {"start": 1, "end": 1},
                          "column_range": {"start": 2}, "max_matches": 0}})");
  EXPECT_EQ(content.matches,
            (std::vector<WorkspaceTableCellMatch>{{1, 3, "Column 3", "alphabet"}}));

  content = sliceTable(card, R"({"find": {"match": ""}})");
  EXPECT_EQ(content.matchError, "empty_match");
  EXPECT_EQ(content.matches, std::vector<WorkspaceTableCellMatch>{});

  content = sliceTable(card, R"({"find": {"match": "alpha", "column": "owner"}})");
  EXPECT_EQ(content.matchError, "column_not_found");
}

TEST(CardToolkitTable, FindStopsAtFiftyMatchesByDefault) {
  std::vector<std::vector<std::string>> rows(60, {"hit", "hit"});
  const auto card = tableCard(1, {"A", "B"}, rows);
  auto content = sliceTable(card, R"({"find": {"match": "hit"}})");
  ASSERT_EQ(content.matches->size(), 50u);
  EXPECT_EQ(content.matches->back().rowIndex, 25);
  EXPECT_EQ(content.matches->back().columnIndex, 2);

  content = sliceTable(card, R"({"find": {"match": "hit", "max_matches": 70}})");
  EXPECT_EQ(content.matches->size(), 70u);
}

TEST(CardToolkitTable, CutsCellsToTheBudgetAndPadsShortRows) {
  const auto card = tableCard(1, {"A", "B"}, {{"a long cell value"}, {"x", "y", "z"}});
  const auto content = sliceTable(card, "{}", 5);
  EXPECT_EQ(content.totalColumns, 3);
  EXPECT_EQ(content.columns, (std::vector<std::string>{"A", "B", ""}));
  EXPECT_EQ(content.rows,
            (std::vector<std::vector<std::string>>{{"a lo…", "", ""}, {"x", "y", "z"}}));
}

}  // namespace
}  // namespace zorvik
