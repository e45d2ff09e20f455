#include <gtest/gtest.h>

#include "foundation/file_url.h"
#include "foundation/json/decoding_error.h"
#include "foundation/json/value_encoder.h"
#include "support/temp_directory.h"
#include "tools/cards/toolkit_test_cards.h"
#include "tools/cards/workspace_card_toolkit.h"

namespace zorvik {
namespace {

using Toolkit = WorkspaceCardToolkit;
using testing::cardID;
using testing::makeCard;

constexpr std::string_view kLinkPayload = R"({"link": {
  "url": "https://example.com/report", "note": "Check the numbers", "richText": "Body text",
  "rowItems": [{"label": "Price", "value": "10"}, {"label": "Color", "value": "red"},
               {"label": "Size", "value": "L"}],
  "hiddenRowItems": [{"label": "Secret", "value": "x"}],
  "availableFields": [{"label": "Weight", "value": ""}],
  "images": ["a.png", "b.png"], "currentImageIndex": 1, "availableImages": ["c.png"]}})";

WorkspaceCardContentRequest typeSpecific(std::string_view typeOptionsJSON,
                                         std::optional<int64_t> maxChars = std::nullopt) {
  return {WorkspaceCardContentMode::typeSpecific, maxChars,
          decodeValue<WorkspaceCardTypeOptions>(AnyCodableValue::parse(typeOptionsJSON))};
}

// The typed content of `card` as JSON text, for comparing whole records.
std::string typedJSON(const WorkspaceCard& card, std::string_view typeOptionsJSON,
                      const WorkspaceCardContext& context = {}) {
  auto payload = Toolkit::content(card, typeSpecific(typeOptionsJSON), context);
  return testing::compactJSON(payload.encode());
}

TEST(CardToolkitSummaryText, PrefersTheSummaryThenDescribesTheType) {
  struct Case {
    WorkspaceCard card;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {makeCard(1, "L", R"({"link": {"url": "https://x.test"}})"), "Item URL: https://x.test"},
      {makeCard(1, "L", R"({"link": {"url": ""}})"), "Item card."},
      {makeCard(1, "L", R"({"link": {"url": "u"}})", std::nullopt, "Own words"), "Own words"},
      {makeCard(1, "L", R"({"link": {"url": "u", "summary": "Payload words"}})"), "Payload words"},
      {makeCard(1, "L", R"({"link": {"url": ""}})", std::nullopt, "  "), "Item card."},
      {makeCard(1, "I", R"({"image": {"url": "p.png"}})"), "Image: p.png"},
      {makeCard(1, "I", R"({"image": {"url": ""}})"), "Image card."},
      {makeCard(1, "C", R"({"chat": {"messages": []}})"), "Chat card."},
      {makeCard(1, "R", R"({"richText": {"markdown": "# Hi"}})"), "Text card."},
      {makeCard(1, "H", R"({"html": {"html": "<p>"}})"), "HTML card."},
      {makeCard(1, "B", R"({"browser": {"current_url": "https://b.test"}})"),
       "Browser URL: https://b.test"},
      {makeCard(1, "B", R"({"browser": {"current_url": ""}})"), "Browser card."},
      {makeCard(1, "F", R"({"folder": {"layout": "grid"}})"), "Folder (grid)."},
      {makeCard(1, "T", R"({"table": {"columns": ["a", "b"], "rows": [["1", "2"], ["3", "4"],
                             ["5", "6"]], "showsRowHeaders": false}})"),
       "Table with 3 rows and 2 columns."},
      {makeCard(1, "V", R"({"video": {"url": "https://v.test/1", "sourceType": "remote"}})"),
       "https://v.test/1"},
      {makeCard(1, "V", R"({"video": {"url": "", "sourceType": "remote"}})"), "Video card."},
  };
  for (const auto& c : cases) EXPECT_EQ(Toolkit::summaryText(c.card), c.expected);
}

TEST(CardToolkitContextText, RendersEveryTypeWithItsLinePrefixes) {
  const auto folder = makeCard(10, "Research", R"({"folder": {"layout": "grid"}})");
  const auto child = makeCard(11, "Notes", R"({"richText": {"markdown": "x"}})", 10, "Key facts");
  const std::vector<WorkspaceCard> board{folder, child};
  const auto context = WorkspaceCardContext::build(board, std::nullopt);
  struct Case {
    WorkspaceCard card;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {makeCard(1, "Report", kLinkPayload, std::nullopt, "Solar"),
       "Title: Report\nSummary: Solar\nSource: remote\nItem URL: https://example.com/report\n"
       "Notes: Check the numbers\nPrice: 10\nColor: red\nSize: L\nImage (2 of 2): b.png\n"
       "Body text"},
      {makeCard(1, "Local", R"({"link": {"url": "file:///tmp/a.pdf", "source": "remote"}})"),
       "Title: Local\nSource: local\nItem URL: file:///tmp/a.pdf"},
      {makeCard(1, "Pic", R"({"image": {"url": "https://i.test/p.png"}})"),
       "Title: Pic\nImage: https://i.test/p.png"},
      {makeCard(1, "Talk", R"({"chat": {"messages": [{"role": "user", "text": "hi"},
                                                      {"role": "assistant", "text": "hello"}]}})"),
       "Title: Talk\nChat: 2 messages\nuser: hi\nassistant: hello"},
      {makeCard(1, "Doc", R"({"richText": {"markdown": "# Head\nline"}})"),
       "Title: Doc\n# Head\nline"},
      {makeCard(1, "Page", R"J({"html": {"html": "<b>x</b>", "js": "go()",
                                          "persisted_state": "{\"n\":1}"}})J"),
       "Title: Page\nRemote assets: blocked\nPersisted state bytes: 7\nHTML:\n<b>x</b>\nJS:\ngo()"},
      {makeCard(1, "Tab", R"({"browser": {"current_url": "https://b.test", "page_title": "B",
                                          "last_error": "timeout"}})"),
       "Title: Tab\nPage title: B\nBrowser URL: https://b.test\nLast error: timeout"},
      {makeCard(1, "Tab", R"({"browser": {"current_url": ""}})"),
       "Title: Tab\nBlank browser card."},
      {makeCard(1, "T", R"({"table": {"columns": ["a", "b"], "rows": [["1", "2"]],
                                      "showsRowHeaders": false}})"),
       "Title: T\nColumns: a | b\nRows:\n1 | 2"},
      {makeCard(1, "Clip", R"({"video": {"url": "https://v.test", "sourceType": "remote"}})"),
       "Title: Clip\nVideo: https://v.test"},
      {folder,
       "Title: Research\nFolder (grid): folder\nFolder: 1 card\n- Notes [richText]: Key facts"},
  };
  for (const auto& c : cases) EXPECT_EQ(Toolkit::contextText(c.card, context), c.expected);
}

TEST(CardToolkitContent, FullAndSummaryModesCutTheText) {
  const auto card = makeCard(1, "Report", kLinkPayload, std::nullopt, "A fairly long summary");
  auto full = Toolkit::content(card, {WorkspaceCardContentMode::full, 20, std::nullopt}, {});
  EXPECT_EQ(full.text, "Title: Report\nSumma…");
  EXPECT_FALSE(full.item);
  auto summary = Toolkit::content(card, {WorkspaceCardContentMode::summary, 8, std::nullopt}, {});
  EXPECT_EQ(summary.text, "A fairl…");
  EXPECT_EQ(testing::compactJSON(summary.encode()), R"({"mode":"summary","text":"A fairl…"})");
}

TEST(CardToolkitContent, ItemFieldsSelectorsAndCaps) {
  const auto card = makeCard(1, "Report", kLinkPayload);
  EXPECT_EQ(typedJSON(card, R"({"item": {"fields": ["url", "primary_image", "source"]}})"),
            R"({"item":{"primary_image":"b.png","source":"remote",)"
            R"("url":"https://example.com/report"},"mode":"type_specific"})");

  auto content =
      Toolkit::content(card, typeSpecific(R"({"item": {"max_items": 2, "max_chars": 6}})"), {});
  ASSERT_TRUE(content.item);
  const auto& item = *content.item;
  ASSERT_EQ(item.rowItems->size(), 2u);
  EXPECT_EQ((*item.rowItems)[1].label, "Color");
  EXPECT_EQ(item.note, "Check…");
  EXPECT_EQ(item.richText, "Body …");
  EXPECT_EQ(item.hiddenFields->size(), 1u);
  EXPECT_EQ(item.availableFields->size(), 1u);
  EXPECT_EQ(item.images, (std::vector<std::string>{"a.png", "b.png"}));
  EXPECT_EQ(item.availableImages, (std::vector<std::string>{"c.png"}));
  EXPECT_FALSE(item.summary);        // the card has none
  EXPECT_FALSE(item.sanitizedHTML);  // nor sanitized html

  // The hidden rows answer to both selector spellings; options for other types are ignored.
  content = Toolkit::content(
      card, typeSpecific(R"({"item": {"fields": [" Hidden_Row_Items "]}, "table": {}})"), {});
  EXPECT_EQ(content.item->hiddenFields->front().label, "Secret");
  EXPECT_FALSE(content.item->url);
  EXPECT_FALSE(content.table);
}

TEST(CardToolkitContent, PrimaryImageFallsBackToTheFirstImage) {
  auto link = makeCard(1, "L", R"({"link": {"url": "u", "images": ["a", "b"],
                                            "currentImageIndex": 5}})");
  EXPECT_EQ(Toolkit::primaryImage(*link.payload.as<WorkspaceLinkPayload>()), "a");
  link = makeCard(1, "L", R"({"link": {"url": "u"}})");
  EXPECT_FALSE(Toolkit::primaryImage(*link.payload.as<WorkspaceLinkPayload>()));
}

TEST(CardToolkitContent, ChatTakesLastNOrAMessageRange) {
  const auto card = makeCard(1, "Talk", R"({"chat": {"messages": [
      {"role": "user", "text": "one"}, {"role": "assistant", "text": "two two"},
      {"role": "user", "text": "three"}]}})");
  EXPECT_EQ(typedJSON(card, R"({"chat": {"last_n": 2, "message_range": {"start": 1, "end": 1},
                                         "max_chars": 4}})"),
            R"({"chat":{"message_range":{"end":3,"start":2},"messages":[)"
            R"({"role":"assistant","text":"two…"},{"role":"user","text":"thr…"}]},)"
            R"("mode":"type_specific"})");
  EXPECT_EQ(typedJSON(card, R"({"chat": {"message_range": {"start": 2, "end": 0}}})"),
            R"({"chat":{"message_range":{"end":2,"start":1},"messages":[)"
            R"({"role":"user","text":"one"},{"role":"assistant","text":"two two"}]},)"
            R"("mode":"type_specific"})");
}

TEST(CardToolkitContent, RichTextLinesAndBudget) {
  const auto card = makeCard(1, "Doc", R"({"richText": {"markdown": "a\nbb\nccc\ndddd"}})");
  EXPECT_EQ(typedJSON(card, R"({"rich_text": {"line_range": {"start": 2}, "max_lines": 2}})"),
            R"({"mode":"type_specific","rich_text":{"line_range":{"end":3,"start":2},)"
            R"("markdown":"bb\nccc"}})");
  // The type's max_chars wins over the request's budget.
  auto content =
      Toolkit::content(card, typeSpecific(R"({"rich_text": {"max_chars": 3}})", 100), {});
  EXPECT_EQ(content.richText->markdown, "a\n…");
  content = Toolkit::content(card, typeSpecific("{}", 4), {});
  EXPECT_EQ(content.richText->markdown, "a\nb…");
}

TEST(CardToolkitContent, HTMLFieldsGoThroughSourceWindows) {
  const auto card = makeCard(1, "Page", R"({"html": {"html": "<main></main>", "css": "b{}",
      "js": "let x = 1;", "allow_remote_assets": true,
      "public_functions": [{"id": "f", "name": "F", "js_function": "f"}]}})");
  EXPECT_EQ(typedJSON(card, R"({"html": {"fields": ["js", "allow_remote_assets"],
                                         "source_range": {"start": 4}, "max_chars": 3}})"),
            R"({"html":{"allow_remote_assets":true,"js":"x =",)"
            R"("js_window":{"end":7,"next_start":7,"start":4,"total_length":10,"truncated":true}},)"
            R"("mode":"type_specific"})");

  const auto all = Toolkit::content(card, typeSpecific("{}"), {});
  ASSERT_TRUE(all.html);
  EXPECT_EQ(all.html->html, "<main></main>");
  EXPECT_EQ(all.html->cssWindow, (WorkspaceHTMLSourceWindow{0, 3, 3, false, std::nullopt}));
  EXPECT_EQ(all.html->publicFunctions->size(), 1u);
  EXPECT_FALSE(all.html->persistedState);  // the page has none
  EXPECT_FALSE(all.html->persistedStateWindow);
}

TEST(CardToolkitContent, FolderFieldsAndChildren) {
  const auto folder =
      makeCard(10, "Group", R"({"folder": {"layout": "grid", "node_role": "group"}})", std::nullopt,
               "Grouped");
  const auto a = makeCard(11, "A", R"({"image": {"url": "a"}})", 10);
  const auto b = makeCard(12, "B", R"({"image": {"url": "b"}})", 10);
  const std::vector<WorkspaceCard> board{a, folder, b};
  const auto context = WorkspaceCardContext::build(board, std::nullopt);
  EXPECT_EQ(typedJSON(folder, R"({"folder": {"fields": ["child_count", "child_ids"]}})", context),
            R"({"folder":{"child_count":2,"child_ids":[")" + cardID(11).uppercaseString() +
                R"(",")" + cardID(12).uppercaseString() + R"("]},"mode":"type_specific"})");
  EXPECT_EQ(
      typedJSON(folder, R"({"folder": {"fields": ["node_role", "layout", "summary"]}})", context),
      R"({"folder":{"layout":"grid","node_role":"group","summary":"Grouped"},)"
      R"("mode":"type_specific"})");
}

TEST(CardToolkitContent, BrowserAndVideoAnswerWithText) {
  const auto video =
      makeCard(1, "Clip", R"({"video": {"url": "https://v.test/abc", "sourceType": "remote"}})");
  const auto content = Toolkit::content(video, typeSpecific("{}", 15), {});
  EXPECT_EQ(content.text, "Title: Clip\nVi…");
  EXPECT_EQ(testing::compactJSON(content.encode()),
            R"({"mode":"type_specific","text":"Title: Clip\nVi…"})");
}

TEST(CardToolkitBoardResource, NamesFilesUnderTheResourcesFolder) {
  testing::TempDirectory project;
  const auto image = project.write("resources/img/a b.png", "png");
  project.write("other.png", "png");
  const std::vector<WorkspaceCard> board;
  const auto context = WorkspaceCardContext::build(board, project.path());
  const std::string expected = "zorvik-resource://resources/img/a%20b.png";
  struct Case {
    std::string url;
    std::optional<std::string> expected;
  };
  const std::vector<Case> cases = {
      {fileURLString(image), expected},
      {"resources/img/a b.png", expected},
      {"./resources/img/a b.png", expected},
      {" resources/img/a b.png\n", expected},
      {"resources/img/missing.png", std::nullopt},
      {"resources/img", std::nullopt},  // a folder
      {"resources/../other.png", std::nullopt},
      {fileURLString(project.path() / "other.png"), std::nullopt},
      {"other.png", std::nullopt},
      {"https://example.com/resources/img/a%20b.png", std::nullopt},
  };
  for (const auto& c : cases) {
    const auto card = makeCard(1, "I", R"({"image": {"url": ""}})");
    auto withURL = card;
    withURL.payload.value = WorkspaceImagePayload{c.url, std::nullopt};
    EXPECT_EQ(Toolkit::boardResourceURL(withURL, context), c.expected) << c.url;
  }

  auto card = makeCard(1, "I", R"({"image": {"url": "resources/img/a b.png"}})");
  EXPECT_FALSE(Toolkit::boardResourceURL(card, WorkspaceCardContext{}));  // no project
  EXPECT_EQ(typedJSON(card, R"({"image": {"fields": ["board_resource_url"]}})", context),
            R"({"image":{"board_resource_url":")" + expected + R"("},"mode":"type_specific"})");
  EXPECT_EQ(Toolkit::contextText(card, context),
            "Title: I\nImage: resources/img/a b.png\n"
            "Board Resource URL (preferred for HTML img src): " +
                expected);
  const auto link = makeCard(2, "L", R"({"link": {"url": "resources/img/a b.png"}})");
  EXPECT_FALSE(Toolkit::boardResourceURL(link, context));
}

TEST(CardToolkitMetadata, ReportsLightFactsPerType) {
  const auto folder = makeCard(10, "F", R"({"folder": {"layout": "stack"}})");
  const std::vector<WorkspaceCard> board{folder,
                                         makeCard(11, "c", R"({"image": {"url": "x"}})", 10)};
  const auto context = WorkspaceCardContext::build(board, std::nullopt);
  struct Case {
    WorkspaceCard card;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {makeCard(1, "L", kLinkPayload),
       R"({"available_fields_count":1,"hidden_fields_count":1,"images_count":2,)"
       R"("link_properties_count":4,"link_source":"remote","link_url":"https://example.com/report",)"
       R"("note_length":17,"row_items_count":3})"},
      {makeCard(1, "I", R"({"image": {"url": "p.png"}})"), R"({"image_url":"p.png"})"},
      {makeCard(1, "C", R"({"chat": {"messages": [{"role": "u", "text": "t"}]}})"),
       R"({"chat_message_count":1})"},
      {makeCard(1, "R", R"({"richText": {"markdown": "# Big title"}})"),
       R"({"rich_text_current_font_size":16,"rich_text_default_font_size":16,)"
       R"("rich_text_length":11,"rich_text_line_count":1,"rich_text_recommended_max_font_size":48,)"
       R"("rich_text_recommended_min_font_size":12,"rich_text_suggested_role":"title_or_heading"})"},
      {makeCard(1, "H", R"({"html": {"html": "<p>é😀</p>", "css": "a", "persisted_state": "{}"}})"),
       R"({"html_allow_remote_assets":false,"html_css_length":1,"html_js_length":0,)"
       R"("html_length":10,"html_persisted_state_length":2})"},
      {folder, R"({"folder_child_count":1,"folder_layout":"stack","folder_node_role":"folder"})"},
      {makeCard(1, "T", R"({"table": {"columns": ["a"], "rows": [["1", "2"]],
                                      "showsRowHeaders": true}})"),
       R"({"table_column_headers":["a"],"table_columns":2,"table_rows":1,)"
       R"("table_shows_row_headers":true})"},
      {makeCard(1, "V", R"({"video": {"url": "v", "sourceType": "remote"}})"), "{}"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(testing::compactJSON(Toolkit::metadata(c.card, context).encode()), c.expected)
        << c.card.title;
  }
  const auto body = makeCard(1, "R", R"({"richText": {"markdown": "One line.\nTwo lines.",
                                                        "font_size": 14}})");
  const auto metadata = Toolkit::metadata(body, context);
  EXPECT_EQ(metadata.richTextSuggestedRole, "body");
  EXPECT_EQ(metadata.richTextCurrentFontSize, 14);
  EXPECT_EQ(metadata.richTextLineCount, 2);
}

TEST(CardToolkitRequest, DecodesModesAndRejectsRaw) {
  const auto request = decodeValue<WorkspaceCardContentRequest>(AnyCodableValue::parse(
      R"({"mode": "type_specific", "max_chars": 5, "extra": 1,
          "type_options": {"link": {"max_items": 1}, "item": {"max_items": 2}}})"));
  EXPECT_EQ(request.mode, WorkspaceCardContentMode::typeSpecific);
  EXPECT_EQ(request.typeOptions->link->maxItems, 2);
  EXPECT_EQ(decodeValue<WorkspaceCardContentRequest>(AnyCodableValue::parse("{}")).mode,
            WorkspaceCardContentMode::full);
  EXPECT_THROW(
      decodeValue<WorkspaceCardContentRequest>(AnyCodableValue::parse(R"({"mode":"raw"})")),
      DecodingError);
  EXPECT_THROW(decodeValue<WorkspaceCardTableOptions>(
                   AnyCodableValue::parse(R"({"row_filter": {"column": "a", "match": "b",
                                                              "mode": "like"}})")),
               DecodingError);
  EXPECT_THROW(decodeValue<WorkspaceCardTableOptions>(AnyCodableValue::parse(R"({"cell": {}})")),
               DecodingError);
}

}  // namespace
}  // namespace zorvik
