#include "workspace_store/stored_cards/csv_table.h"

#include <gtest/gtest.h>

#include "stored_cards_test_support.h"

namespace zorvik {
namespace {

using Rows = std::vector<std::vector<std::string>>;

struct RowsCase {
  const char* name;
  std::string text;
  std::optional<Rows> rows;
};

TEST(CSVTableTest, ParsesRowsByTheQuoteStateMachine) {
  const std::vector<RowsCase> cases = {
      {"plain", "a,b\n1,2", Rows{{"a", "b"}, {"1", "2"}}},
      {"trailing LF adds no row", "a,b\n1,2\n", Rows{{"a", "b"}, {"1", "2"}}},
      {"CR LF", "a,b\r\n1,2\r\n", Rows{{"a", "b"}, {"1", "2"}}},
      {"lone CR", "a\rb", Rows{{"a"}, {"b"}}},
      {"LF CR is two line ends", "a\n\rb", Rows{{"a"}, {""}, {"b"}}},
      {"CR CR LF is two line ends", "a\r\r\nb", Rows{{"a"}, {""}, {"b"}}},
      {"blank line in the middle", "a\n\nb", Rows{{"a"}, {""}, {"b"}}},
      {"two trailing LFs keep one empty row", "a\n\n", Rows{{"a"}, {""}}},
      {"trailing comma", "a,\n", Rows{{"a", ""}}},
      {"quoted comma and doubled quotes", "\"x,y\",\"he said \"\"hi\"\"\"",
       Rows{{"x,y", "he said \"hi\""}}},
      {"line ends inside quotes", "\"l1\r\nl2\rl3\nl4\",z", Rows{{"l1\r\nl2\rl3\nl4", "z"}}},
      {"text after a closing quote", "\"ab\"cd,e", Rows{{"abcd", "e"}}},
      {"empty quoted cell", "\"\",x", Rows{{"", "x"}}},
      {"four quotes are one quote", "\"\"\"\"", Rows{{"\""}}},
      {"final line of an empty quoted cell is dropped", "a\n\"\"", Rows{{"a"}}},
      {"empty text is one empty cell", "", Rows{{""}}},
      {"lone LF", "\n", Rows{{""}}},
      {"ragged rows stay ragged", "a,b\nc\nd,e,f", Rows{{"a", "b"}, {"c"}, {"d", "e", "f"}}},
      {"non-ASCII and invalid bytes are copied", "\xC3\xA9,\"\xFF\"", Rows{{"\xC3\xA9", "\xFF"}}},
      {"quote inside an unquoted cell", "ab\"c", std::nullopt},
      {"quote after text following a closing quote", "\"a\"b\"", std::nullopt},
      {"unterminated quote", "\"abc", std::nullopt},
      {"three quotes never close", "\"\"\"", std::nullopt},
      {"unterminated quote on a later line", "a\n\"b,c\n", std::nullopt},
  };
  for (const RowsCase& c : cases) {
    EXPECT_EQ(parseCSVRows(c.text), c.rows) << c.name;
  }
}

TEST(CSVTableTest, ParseCSVTakesTheHeaderAndPadsShortRows) {
  EXPECT_EQ(parseCSV("t.csv", "a,b,c\n1\n1,2,3,4\n\n"),
            (ParsedCSV{{"a", "b", "c"}, {{"1", "", ""}, {"1", "2", "3", "4"}, {"", "", ""}}}));
  EXPECT_EQ(parseCSV("t.csv", "only,header\r\n"), (ParsedCSV{{"only", "header"}, {}}));
  EXPECT_EQ(parseCSV("t.csv", ""), (ParsedCSV{{""}, {}}));
}

TEST(CSVTableTest, ParseCSVNamesThePathInItsFailures) {
  using Kind = StoredCardStorageError::Kind;
  expectStorageError([] { parseCSV("resources/t.csv", "a,b\"c"); }, Kind::invalidCSV,
                     "Invalid CSV quoting in `resources/t.csv`.");
  expectStorageError([] { parseCSV("resources/t.csv", "a\n\"open"); }, Kind::invalidCSV,
                     "Unterminated quoted cell in `resources/t.csv`.");
}

TEST(CSVTableTest, RendersEveryCellQuotedWithCRLFBetweenLines) {
  EXPECT_EQ(renderCSV({"a", "b\"c"}, {{"1"}, {"x", "y", "z"}, {}}),
            "\"a\",\"b\"\"c\"\r\n\"1\",\"\"\r\n\"x\",\"y\",\"z\"\r\n\"\",\"\"");
  EXPECT_EQ(renderCSV({"only"}, {}), "\"only\"");
  expectStorageError([] { renderCSV({}, {{"x"}}); }, StoredCardStorageError::Kind::invalidCSV,
                     "Table sidecar requires at least one column.");
}

TEST(CSVTableTest, RenderedTablesReadBackPadded) {
  const std::vector<std::string> columns = {"name", "note, with comma", "q\"uote"};
  const Rows rows = {{"a", "line1\r\nline2", "cr\ronly"}, {"short"}, {"x", "y", "z", "extra"}, {}};
  const ParsedCSV parsed = parseCSV("t.csv", renderCSV(columns, rows));
  EXPECT_EQ(parsed.columns, columns);
  EXPECT_EQ(parsed.rows, (Rows{{"a", "line1\r\nline2", "cr\ronly"},
                               {"short", "", ""},
                               {"x", "y", "z", "extra"},
                               {"", "", ""}}));
  // Zero rows: the header line alone, read back as the columns and no rows.
  EXPECT_EQ(parseCSV("t.csv", renderCSV(columns, {})), (ParsedCSV{columns, {}}));
  // The one loss: a final one-cell empty row renders as `""`, which reads back as no row.
  EXPECT_EQ(parseCSV("t.csv", renderCSV({"a"}, {{"1"}, {""}})), (ParsedCSV{{"a"}, {{"1"}}}));
}

}  // namespace
}  // namespace zorvik
