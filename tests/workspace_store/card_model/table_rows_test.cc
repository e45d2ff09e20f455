#include "workspace_store/card_model/table_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"

namespace zorvik {
namespace {

using ::testing::ElementsAre;
using Strings = std::vector<std::vector<std::string>>;

Strings stringsOf(const TableRows& rows) {
  Strings result;
  for (TableRows::Row row : rows) result.push_back(row.toStrings());
  return result;
}

TEST(TableRowsTest, HoldsRaggedRowsWithEmptyCellsAndRows) {
  const Strings source{
      {"a", "", "a long cell that is past any small-string buffer"}, {}, {"", "z"}};
  const TableRows rows(source);
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows[0].size(), 3u);
  EXPECT_TRUE(rows[1].empty());
  EXPECT_EQ(rows[2][1], "z");
  EXPECT_EQ(rows[0][2], source[0][2]);
  EXPECT_EQ(stringsOf(rows), source);

  // first() narrows a row without going past its end.
  EXPECT_THAT(rows[0].first(2).toStrings(), ElementsAre("a", ""));
  EXPECT_EQ(rows[2].first(9).size(), 2u);
  EXPECT_TRUE(rows[0].first(0).empty());

  EXPECT_TRUE(TableRows().empty());
  EXPECT_EQ(TableRows({{"x"}, {"y"}}), TableRows(Strings{{"x"}, {"y"}}));
  // The same text split differently is a different table.
  EXPECT_NE(TableRows({{"ab"}}), TableRows({{"a", "b"}}));
  EXPECT_NE(TableRows({{"a"}, {}}), TableRows({{"a"}}));
}

TEST(TableRowsTest, AppendsRowsFromAnyStringRange) {
  TableRows rows;
  rows.reserve(2, 3, 6);
  const std::vector<std::string_view> views{"one", "two"};
  rows.appendRow(views);
  rows.appendRow(std::vector<std::string>{"six"});
  EXPECT_EQ(stringsOf(rows), (Strings{{"one", "two"}, {"six"}}));
}

TEST(TableRowsTest, DecodesAndEncodesArraysOfStringArrays) {
  const AnyCodableValue json = AnyCodableValue::parse(R"([["a","b"],[],["c"]])");
  const TableRows rows = decodeValue<TableRows>(json);
  EXPECT_EQ(stringsOf(rows), (Strings{{"a", "b"}, {}, {"c"}}));
  EXPECT_EQ(rows.encode(), json);
}

// Bad input fails exactly as the plain vector of vectors of strings does: same kind, same
// path, same description.
TEST(TableRowsTest, DecodingFailuresMatchTheVectorOfVectors) {
  for (const char* text : {R"({"a":1})", R"([["a"],"b"])", R"([["a"],[1]])", R"([["a",null]])",
                           R"([[["nested"]]])", R"(null)"}) {
    const AnyCodableValue json = AnyCodableValue::parse(text);
    std::string expected;
    try {
      decodeValue<Strings>(json);
      FAIL() << "accepted " << text;
    } catch (const DecodingError& error) {
      expected = error.what();
    }
    try {
      decodeValue<TableRows>(json);
      FAIL() << "accepted " << text;
    } catch (const DecodingError& error) {
      EXPECT_EQ(error.what(), expected) << text;
    }
  }
}

}  // namespace
}  // namespace zorvik
