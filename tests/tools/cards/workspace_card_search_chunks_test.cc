// The chunks each card type gives to the search tools, their order, limits and cuts.
#include "tools/cards/workspace_card_search_chunks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/text.h"
#include "search_test_cards.h"

namespace zorvik {
namespace {

using ::testing::ElementsAre;
using testing::makeCard;
using Chunk = WorkspaceCardSearchChunk;

std::vector<Chunk> chunksOf(const WorkspaceCard& card, WorkspaceCardSearchOptions options = {}) {
  return searchChunks(card, options);
}

std::vector<std::string> labelsOf(const std::vector<Chunk>& chunks) {
  std::vector<std::string> labels;
  for (const auto& chunk : chunks) labels.push_back(chunk.label);
  return labels;
}

TEST(WorkspaceCardSearchChunksTest, EachTypeGivesItsFieldsInOrder) {
  struct Case {
    WorkspaceCard card;
    std::vector<Chunk> chunks;
  };
  const std::vector<Case> cases = {
      {makeCard("Docs", WorkspaceBrowserPayload{.summary = "API reference",
                                                .currentURL = "https://example.org/api",
                                                .pageTitle = "Reference"}),
       {{"Title", "Docs"},
        {"Browser URL", "https://example.org/api"},
        {"Page Title", "Reference"},
        {"Summary", "API reference"}}},
      {makeCard("Chart", WorkspaceHTMLPayload{.summary = "Prices", .html = "<p>x</p>"}),
       {{"Title", "Chart"},
        {"Summary", "Prices"},
        {"HTML", "<p>x</p>"},
        {"Remote Assets", "blocked"}}},
      {makeCard("Chart", WorkspaceHTMLPayload{.html = "<p>x</p>", .allowRemoteAssets = true}),
       {{"Title", "Chart"}, {"HTML", "<p>x</p>"}, {"Remote Assets", "allowed"}}},
      {makeCard("Sources", WorkspaceFolderPayload{.summary = "All sources", .layout = "grid"}),
       {{"Title", "Sources"}, {"Summary", "All sources"}, {"Layout", "grid"}}},
      // A video has no summary chunk, even with a summary.
      {makeCard("Talk",
                WorkspaceVideoPayload{
                    .url = "https://v.example/1", .sourceType = "remote", .summary = "Keynote"}),
       {{"Title", "Talk"}, {"Video URL", "https://v.example/1"}}},
      {makeCard("Roof", WorkspaceImagePayload{.url = "resources/roof.png", .summary = "Array"}),
       {{"Title", "Roof"}, {"Image URL", "resources/roof.png"}, {"Summary", "Array"}}},
      // The card's own summary stands for the payload's.
      {makeCard("Roof", WorkspaceImagePayload{.url = "u", .summary = "payload"}, "card words"),
       {{"Title", "Roof"}, {"Image URL", "u"}, {"Summary", "card words"}}},
      // Row numbers count blank rows.
      {testing::tableCard("T", {"A"}, {{"x"}, {""}, {"z"}}),
       {{"Title", "T"}, {"Columns", "A"}, {"Row 1", "x"}, {"Row 3", "z"}}},
  };
  for (const auto& c : cases) EXPECT_EQ(chunksOf(c.card), c.chunks) << c.card.title;
}

TEST(WorkspaceCardSearchChunksTest, TableGivesColumnsAndTheFirstFiftyRowsOfTenColumns) {
  std::vector<std::string> columns;
  for (int i = 1; i <= 12; ++i) columns.push_back("C" + std::to_string(i));
  std::vector<std::vector<std::string>> rows;
  for (int r = 1; r <= 60; ++r) {
    std::vector<std::string> row;
    for (int c = 1; c <= 12; ++c) row.push_back("r" + std::to_string(r) + "c" + std::to_string(c));
    rows.push_back(row);
  }
  auto chunks = chunksOf(testing::tableCard("Grid", columns, rows));
  ASSERT_EQ(chunks.size(), 1u + 1u + 50u);
  EXPECT_EQ(chunks[1], (Chunk{"Columns", "C1 | C2 | C3 | C4 | C5 | C6 | C7 | C8 | C9 | C10"}));
  EXPECT_EQ(chunks[2].label, "Row 1");
  EXPECT_EQ(chunks[2].text, "r1c1 | r1c2 | r1c3 | r1c4 | r1c5 | r1c6 | r1c7 | r1c8 | r1c9 | r1c10");
  EXPECT_EQ(chunks.back().label, "Row 50");

  auto narrow = chunksOf(testing::tableCard("Grid", columns, rows),
                         {.maxTableRows = 2, .maxTableColumns = 1});
  EXPECT_THAT(narrow, ElementsAre(Chunk{"Title", "Grid"}, Chunk{"Columns", "C1"},
                                  Chunk{"Row 1", "r1c1"}, Chunk{"Row 2", "r2c1"}));
}

TEST(WorkspaceCardSearchChunksTest, RichTextSplitsIntoParagraphsAtBlankLines) {
  auto card = testing::richTextCard(
      "Notes",
      "# Heading\r\nFirst line\r\nsecond line\r\n\r\n  \t \n\nAnother\n\n\nLast\nx\ry\r\n\rz\r");
  // Only a CR before LF goes; a CR inside a line stays.
  EXPECT_THAT(
      chunksOf(card),
      ElementsAre(Chunk{"Title", "Notes"},
                  Chunk{"Paragraph 1", "# Heading\nFirst line\nsecond line"},
                  Chunk{"Paragraph 2", "Another"}, Chunk{"Paragraph 3", "Last\nx\ry\n\rz"}));
}

TEST(WorkspaceCardSearchChunksTest, RichTextStopsAtEightyParagraphs) {
  std::string markdown;
  for (int i = 1; i <= 85; ++i) markdown += "para " + std::to_string(i) + "\n\n";
  auto chunks = chunksOf(testing::richTextCard("Long", markdown));
  ASSERT_EQ(chunks.size(), 81u);
  EXPECT_EQ(chunks.back(), (Chunk{"Paragraph 80", "para 80"}));
}

TEST(WorkspaceCardSearchChunksTest, ChatKeepsTheMostRecentThirtyMessages) {
  WorkspaceChatPayload chat;
  for (int i = 1; i <= 35; ++i) {
    chat.messages.push_back({i % 2 ? "user" : "assistant", "message text " + std::to_string(i)});
  }
  auto chunks = chunksOf(makeCard("Talk", chat));
  ASSERT_EQ(chunks.size(), 31u);
  EXPECT_EQ(chunks[1], (Chunk{"Message 6", "message text 6"}));
  EXPECT_EQ(chunks.back(), (Chunk{"Message 35", "message text 35"}));

  auto few = chunksOf(makeCard("Talk", chat), {.maxChatMessages = 2});
  EXPECT_THAT(labelsOf(few), ElementsAre("Title", "Message 34", "Message 35"));
}

TEST(WorkspaceCardSearchChunksTest, LinkGivesSourceSummaryNoteFieldsAndCardSummary) {
  WorkspaceLinkPayload link{
      .url = "https://example.org/report",
      .note = "Read twice",
      .summary = "Market report",
      .rowItems = {{.label = "Author", .type = "key_value", .keyValue = KeyValuePayload{"Kim"}},
                   {.label = "Empty", .type = "key_value"}},
      .availableFields = {{.label = "Tags",
                           .type = "expandable_list",
                           .expandableList = ExpandableListPayload{{"solar", "grid"}}}},
  };
  EXPECT_THAT(chunksOf(makeCard("Report", link, "Market report")),
              ElementsAre(Chunk{"Title", "Report"}, Chunk{"Source", "remote"},
                          Chunk{"Summary", "Market report"}, Chunk{"Note", "Read twice"},
                          Chunk{"Field", "Author: Kim"}, Chunk{"Field", "Empty"},
                          Chunk{"Field", "Tags: solar, grid"}));

  // A card summary that differs from the link's own comes last.
  auto chunks = chunksOf(makeCard("Report", link, "Edited summary"));
  EXPECT_EQ(chunks.back(), (Chunk{"Summary", "Edited summary"}));

  link.url = "/home/me/report.pdf";
  EXPECT_EQ(chunksOf(makeCard("Report", link))[1], (Chunk{"Source", "local"}));
}

TEST(WorkspaceCardSearchChunksTest, EmptyTextsAreLeftOutAndLongTextsCut) {
  auto card = makeCard("", WorkspaceLinkPayload{.url = "u", .note = " \n\t", .summary = ""});
  EXPECT_THAT(labelsOf(chunksOf(card)), ElementsAre("Source"));

  const std::string longText(1000, 'w');
  auto chunks = chunksOf(testing::richTextCard(longText, "short"));
  EXPECT_EQ(chunks[0].text, std::string(799, 'w') + "…");

  auto tiny = chunksOf(testing::richTextCard("Überschrift", "ok"), {.maxChunkChars = 4});
  EXPECT_EQ(tiny[0].text, "Übe…");
}

TEST(WorkspaceCardSearchChunksTest, ChunkJsonUsesLabelAndText) {
  const Chunk chunk{"Row 1", "a | b"};
  const AnyCodableValue encoded = encodeValue(chunk);
  EXPECT_EQ(encoded.compactJSONString(), R"({"label":"Row 1","text":"a | b"})");
  EXPECT_EQ(decodeValue<Chunk>(encoded), chunk);
}

}  // namespace
}  // namespace zorvik
