#include "workspace_store/link_markdown/front_matter_parser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "workspace_store/link_markdown/codec_error.h"
#include "workspace_store/link_markdown/front_matter_writer.h"

namespace zorvik {
namespace {

using Field = FrontMatterParser::ParsedField;
using Lines = std::vector<std::string>;

TEST(FrontMatterParserTest, SplitsAtTheFirstClosingLine) {
  auto split = FrontMatterParser::splitFrontMatter("---\na: 1\n\n---\n---\nb\r\nc\rd\n");
  EXPECT_EQ(split.frontMatterLines, (Lines{"a: 1", ""}));
  EXPECT_EQ(split.body, "---\nb\nc\rd\n");

  split = FrontMatterParser::splitFrontMatter("---\r\n---");
  EXPECT_TRUE(split.frontMatterLines.empty());
  EXPECT_EQ(split.body, "");

  for (const char* text : {"", "---", "---\n", "x\n---\n---\n", "---\n--- \n", " ---\n---\n"}) {
    EXPECT_THROW(FrontMatterParser::splitFrontMatter(text), CodecError) << text;
  }
}

TEST(FrontMatterParserTest, CollectsBlocksAndNestedLines) {
  const auto fields = FrontMatterParser::parseFields({
      "plain:  a: b  ",
      "block: |",
      "  one",
      " ",
      "    two  ",
      "",
      "nested:",
      "  - x",
      "\t",
      "  -  y",
      "empty-block: |",
      "empty-nested:",
      "  spaced key\t: v",
      "repeated: first",
      "repeated: second",
  });
  // "  spaced key" begins with a space, but it was taken by the nested value above it.
  EXPECT_EQ(fields.at("plain"), (Field{"a: b", std::nullopt}));
  EXPECT_EQ(fields.at("block"), (Field{"one\n\n  two  \n", std::nullopt}));
  EXPECT_EQ(fields.at("nested"), (Field{std::nullopt, Lines{"- x", "", "-  y"}}));
  EXPECT_EQ(fields.at("empty-block"), (Field{"", std::nullopt}));
  EXPECT_EQ(fields.at("empty-nested"), (Field{std::nullopt, Lines{"spaced key\t: v"}}));
  EXPECT_EQ(fields.at("repeated"), (Field{"second", std::nullopt}));
  EXPECT_EQ(fields.size(), 6u);
}

TEST(FrontMatterParserTest, StringValueRules) {
  const auto value = [](std::optional<std::string> scalar) {
    const Field field{std::move(scalar), std::nullopt};
    return FrontMatterParser::parseStringValue(&field);
  };
  EXPECT_EQ(FrontMatterParser::parseStringValue(nullptr), std::nullopt);
  EXPECT_EQ(value(std::nullopt), std::nullopt);
  EXPECT_EQ(value(""), std::nullopt);
  EXPECT_EQ(value("null"), std::nullopt);
  EXPECT_EQ(value("NULL"), "NULL");
  EXPECT_EQ(value("  "), "  ");
  EXPECT_EQ(value("\"\\u00e9\\\"\""), "é\"");
  EXPECT_EQ(value("\""), "\"");
  EXPECT_EQ(value("\"a\" \"b\""), "\"a\" \"b\"");
  EXPECT_EQ(value("\"\xff\""), "\"\xff\"");
}

TEST(FrontMatterWriterTest, ChoosesBlocksOnlyWhereNeeded) {
  for (const char* plain : {"a", "a b", "a-", "a|", "#", ":", "\"q\"", "null", "\xc2\xa0x"}) {
    EXPECT_FALSE(FrontMatterWriter::shouldUseBlockScalar(plain)) << plain;
  }
  for (const char* block : {"", " a", "a ", "\ta", "a\t", "a\nb", "\n", "-", "- a", "|", "|a"}) {
    EXPECT_TRUE(FrontMatterWriter::shouldUseBlockScalar(block)) << block;
  }
}

}  // namespace
}  // namespace zorvik
