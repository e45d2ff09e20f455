#include "workspace_store/card_model/workspace_card_payload.h"

#include <gtest/gtest.h>

#include "card_model_test_support.h"
#include "foundation/json/decoding_error.h"
#include "workspace_store/card_model/workspace_card.h"

namespace zorvik {
namespace {

using testing::compactJSON;
using testing::decodeJSON;
using testing::decodingError;

TEST(WorkspaceCardPayloadTest, RuntimeAndBareFormsDecodeAlike) {
  auto runtime =
      decodeJSON<WorkspaceCardPayload>(R"({"type":"richText","richText":{"markdown":"x"}})");
  auto bare = decodeJSON<WorkspaceCardPayload>(R"({"richText":{"markdown":"x"}})");
  EXPECT_EQ(runtime, bare);
  EXPECT_EQ(runtime.type(), WorkspaceCardType::richText);
  ASSERT_NE(runtime.as<WorkspaceRichTextPayload>(), nullptr);
  EXPECT_EQ(runtime.as<WorkspaceRichTextPayload>()->markdown, "x");
  // The summary comes from the record.
  EXPECT_EQ(decodeJSON<WorkspaceCardPayload>(R"({"link":{"url":"u","summary":"s1"}})").summary(),
            "s1");
  EXPECT_EQ(decodeJSON<WorkspaceCardPayload>(R"({"chat":{"summary":"s2"}})").summary(), "s2");
  EXPECT_EQ(runtime.summary(), std::nullopt);
}

TEST(WorkspaceCardPayloadTest, FirstKeyInTypeOrderDecides) {
  const std::vector<std::pair<std::string, WorkspaceCardType>> cases = {
      {R"({"image":{"url":"i"},"link":{"url":"l"}})", WorkspaceCardType::link},
      // The `type` key is ignored.
      {R"({"type":"link","video":{"url":"v","sourceType":"file"}})", WorkspaceCardType::video},
      // A null member counts as absent.
      {R"({"link":null,"image":{"url":"i"}})", WorkspaceCardType::image},
      {R"({"table":{"columns":[],"rows":[],"showsRowHeaders":true},"folder":{"layout":"grid"}})",
       WorkspaceCardType::folder},
      {R"({"browser":{"current_url":"b"},"chat":{}})", WorkspaceCardType::chat},
      {R"({"html":{"html":"h"},"extra":1})", WorkspaceCardType::html},
  };
  for (const auto& [json, type] : cases) {
    SCOPED_TRACE(json);
    EXPECT_EQ(decodeJSON<WorkspaceCardPayload>(json).type(), type);
  }
}

TEST(WorkspaceCardPayloadTest, FailsOnUnknownTypeAndReportsRecordErrors) {
  const DecodingError unknown =
      decodingError<WorkspaceCardPayload>(R"({"type":"link","note":{"url":"x"}})");
  EXPECT_EQ(unknown.kind(), DecodingError::Kind::dataCorrupted);
  EXPECT_EQ(unknown.debugDescription(), "Unknown payload type.");
  // The chosen key must decode; its record's own error comes through.
  const DecodingError inRecord =
      decodingError<WorkspaceCardPayload>(R"({"table":{"columns":["a"],"rows":[]},"video":{}})");
  EXPECT_EQ(inRecord.kind(), DecodingError::Kind::keyNotFound);
  EXPECT_EQ(inRecord.key(), "showsRowHeaders");
  EXPECT_EQ(joinCodingPath(inRecord.codingPath()), "table");
  EXPECT_THROW(decodeJSON<WorkspaceCardPayload>(R"(["link"])"), DecodingError);
}

TEST(WorkspaceCardPayloadTest, RequiredKeysOfEachRecord) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {R"({"link":{"note":"n"}})", "url"},
      {R"({"image":{"summary":"s"}})", "url"},
      {R"({"video":{"url":"v"}})", "sourceType"},
      {R"({"richText":{"font_size":12}})", "markdown"},
      {R"({"html":{"css":"c"}})", "html"},
      {R"({"browser":{"currentURL":"b"}})", "current_url"},
      {R"({"folder":{"nodeRole":"group"}})", "layout"},
      {R"({"table":{"rows":[],"showsRowHeaders":false}})", "columns"},
      {R"({"table":{"columns":[],"showsRowHeaders":false}})", "rows"},
      {R"({"chat":{"messages":[{"role":"user"}]}})", "text"},
  };
  for (const auto& [json, key] : cases) {
    const DecodingError error = decodingError<WorkspaceCardPayload>(json);
    EXPECT_EQ(error.kind(), DecodingError::Kind::keyNotFound) << json;
    EXPECT_EQ(error.key(), key) << json;
  }
}

struct ChatCase {
  std::string json;
  std::vector<std::string> texts;
  std::optional<bool> isInvisible;
};

TEST(WorkspaceChatPayloadTest, NestedAndTopLevelPrecedence) {
  const std::vector<ChatCase> cases = {
      {R"({"messages":[{"role":"user","text":"top"}],"chat":{"messages":[{"role":"a","text":"in"}]}})",
       {"in"},
       std::nullopt},
      {R"({"messages":[{"role":"user","text":"top"}],"chat":{"isInvisible":true}})", {"top"}, true},
      {R"({"chat":{}})", {}, std::nullopt},
      {R"({})", {}, std::nullopt},
      {R"({"isInvisible":false,"chat":{"isInvisible":true}})", {}, false},
      {R"({"isInvisible":null,"chat":{"isInvisible":true,"messages":null},"messages":[]})",
       {},
       true},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.json);
    auto chat = decodeJSON<WorkspaceChatPayload>(testCase.json);
    std::vector<std::string> texts;
    for (const auto& message : chat.messages) texts.push_back(message.text);
    EXPECT_EQ(texts, testCase.texts);
    EXPECT_EQ(chat.isInvisible, testCase.isInvisible);
  }
}

struct FolderCase {
  std::string json;
  std::optional<int64_t> gridColumns;
  std::string nodeRole;
  std::string groupKind;
};

TEST(WorkspaceFolderPayloadTest, KeySpellingsInOrderAndDefaults) {
  const std::vector<FolderCase> cases = {
      {R"({"layout":"grid","gridColumnCount":3})", 3, "folder", "regular"},
      {R"({"layout":"grid","gridColumns":4,"gridColumnCount":3})", 4, "folder", "regular"},
      {R"({"layout":"grid","grid_columns":2,"gridColumns":4,"gridColumnCount":3})", 2, "folder",
       "regular"},
      {R"({"layout":"grid","nodeRole":"group"})", std::nullopt, "group", "regular"},
      {R"({"layout":"grid","node_role":"folder","nodeRole":"group"})", std::nullopt, "folder",
       "regular"},
      {R"({"layout":"freeform","slideTemplateId":"t1"})", std::nullopt, "folder", "slide"},
      {R"({"layout":"freeform","slideTemplateId":"t1","group_kind":"regular"})", std::nullopt,
       "folder", "regular"},
      {R"({"layout":"freeform","groupKind":"slide"})", std::nullopt, "folder", "regular"},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.json);
    auto folder = decodeJSON<WorkspaceFolderPayload>(testCase.json);
    EXPECT_EQ(folder.gridColumns, testCase.gridColumns);
    EXPECT_EQ(folder.nodeRole, testCase.nodeRole);
    EXPECT_EQ(folder.groupKind, testCase.groupKind);
  }
  auto defaults = decodeJSON<WorkspaceFolderPayload>(R"({"layout":"vertical","isDropbox":true})");
  EXPECT_FALSE(defaults.isDropbox);  // only is_dropbox is read
  EXPECT_EQ(defaults.slideLayoutMode, "adaptive");
  EXPECT_EQ(defaults.slideVersion, std::nullopt);
}

TEST(WorkspaceHTMLPayloadTest, DefaultsAndPublicFunctions) {
  auto html = decodeJSON<WorkspaceHTMLPayload>(
      R"({"html":"<p>","allowRemoteAssets":true,"publicFunctions":[{"id":"x"}],)"
      R"("public_functions":[{"id":"zoom","name":"Zoom","js_function":"zoomBy",)"
      R"("parameters":[{"name":"factor","type":"number","format":"multiplier"},)"
      R"({"name":"slide","type":"integer","format":"ordinal_index","required":true,)"
      R"("value_options":["1","2"],"aliases":["page"]}]}]})");
  EXPECT_EQ(html.css, "");
  EXPECT_EQ(html.js, "");
  EXPECT_FALSE(html.allowRemoteAssets);  // camel case is not a key
  EXPECT_EQ(html.persistedState, std::nullopt);
  ASSERT_EQ(html.publicFunctions.size(), 1u);
  const auto& function = html.publicFunctions[0];
  EXPECT_EQ(function.jsFunction, "zoomBy");
  EXPECT_EQ(function.description, "");
  EXPECT_TRUE(function.aliases.empty());
  ASSERT_EQ(function.parameters.size(), 2u);
  EXPECT_EQ(function.parameters[0].format, WorkspaceHTMLPublicFunctionParameterFormat::multiplier);
  EXPECT_FALSE(function.parameters[0].required);
  EXPECT_EQ(function.parameters[1].format,
            WorkspaceHTMLPublicFunctionParameterFormat::ordinalIndex);
  EXPECT_EQ(function.parameters[1].valueOptions, (std::vector<std::string>{"1", "2"}));

  auto plain = decodeJSON<WorkspaceHTMLPublicFunctionParameter>(R"({"name":"n","type":"boolean"})");
  EXPECT_EQ(plain.format, WorkspaceHTMLPublicFunctionParameterFormat::plain);
  EXPECT_THROW(decodeJSON<WorkspaceHTMLPublicFunctionParameter>(
                   R"({"name":"n","type":"boolean","format":"ordinalIndex"})"),
               DecodingError);
  EXPECT_THROW(decodeJSON<WorkspaceHTMLPublicFunctionParameter>(R"({"name":"n"})"), DecodingError);
  EXPECT_THROW(decodeJSON<WorkspaceHTMLPublicFunction>(R"({"id":"i","name":"n","jsFunction":"f"})"),
               DecodingError);
}

TEST(WorkspaceLinkPayloadTest, DefaultsAndSource) {
  auto link = decodeJSON<WorkspaceLinkPayload>(R"({"url":"u"})");
  EXPECT_EQ(link, (WorkspaceLinkPayload{.url = "u"}));
  EXPECT_EQ(link.source, WorkspaceLinkSource::remote);
  auto local = decodeJSON<WorkspaceLinkPayload>(
      R"({"url":"u","source":"local","rowItems":[{"label":"a","value":"1"}],"currentImageIndex":2})");
  EXPECT_EQ(local.source, WorkspaceLinkSource::local);
  ASSERT_EQ(local.rowItems.size(), 1u);
  EXPECT_EQ(local.rowItems[0].value(), "1");
  EXPECT_EQ(local.currentImageIndex, 2);
  EXPECT_THROW(decodeJSON<WorkspaceLinkPayload>(R"({"url":"u","source":"web"})"), DecodingError);
}

TEST(WorkspaceCardPayloadTest, EachRecordEncodesOneSpelling) {
  const std::vector<std::pair<WorkspaceCardPayload, std::string>> cases = {
      {{WorkspaceLinkPayload{.url = "u", .summary = "s"}},
       R"({"link":{"availableFields":[],"availableImages":[],"currentImageIndex":0,)"
       R"("hiddenRowItems":[],"images":[],"isTemplate":false,"note":"","richText":"",)"
       R"("rowItems":[],"source":"remote","summary":"s","url":"u"},"type":"link"})"},
      {{WorkspaceImagePayload{.url = "i"}}, R"({"image":{"url":"i"},"type":"image"})"},
      {{WorkspaceChatPayload{.summary = "s", .messages = {{"user", "hi"}}, .isInvisible = true}},
       R"({"chat":{"chat":{"isInvisible":true,"messages":[{"role":"user","text":"hi"}]},)"
       R"("summary":"s"},"type":"chat"})"},
      {{WorkspaceChatPayload{}}, R"({"chat":{"chat":{"messages":[]}},"type":"chat"})"},
      {{WorkspaceRichTextPayload{.markdown = "m", .fontSize = 13.5}},
       R"({"richText":{"font_size":13.5,"markdown":"m"},"type":"richText"})"},
      {{WorkspaceHTMLPayload{.html = "h", .persistedState = "{}"}},
       R"({"html":{"allow_remote_assets":false,"css":"","html":"h","js":"",)"
       R"("persisted_state":"{}","public_functions":[]},"type":"html"})"},
      {{WorkspaceBrowserPayload{
           .currentURL = "c", .pageTitle = "t", .faviconURL = "f", .lastError = "e"}},
       R"({"browser":{"current_url":"c","favicon_url":"f","last_error":"e","page_title":"t"},)"
       R"("type":"browser"})"},
      {{WorkspaceFolderPayload{.layout = "grid",
                               .gridColumns = 3,
                               .slideTemplateId = "t",
                               .slideThemeId = "th",
                               .slideVersion = 2}},
       R"({"folder":{"grid_columns":3,"group_kind":"regular","is_dropbox":false,"layout":"grid",)"
       R"("node_role":"folder","slideTemplateId":"t","slideThemeId":"th","slideVersion":2,)"
       R"("slide_layout_mode":"adaptive"},"type":"folder"})"},
      {{WorkspaceTablePayload{.columns = {"a"}, .rows = {{"1"}}, .showsRowHeaders = true}},
       R"({"table":{"columns":["a"],"rows":[["1"]],"showsRowHeaders":true},"type":"table"})"},
      {{WorkspaceVideoPayload{.url = "v", .sourceType = "file", .summary = "s"}},
       R"({"type":"video","video":{"sourceType":"file","summary":"s","url":"v"}})"},
  };
  for (const auto& [payload, expected] : cases) {
    SCOPED_TRACE(expected);
    EXPECT_EQ(compactJSON(payload), expected);
    EXPECT_EQ(decodeValue<WorkspaceCardPayload>(payload.encode()), payload);
  }
}

TEST(WorkspaceHTMLPublicFunctionTest, EncodesSnakeCaseKeys) {
  const WorkspaceHTMLPublicFunction function{
      .id = "next",
      .name = "Next",
      .jsFunction = "goNext",
      .parameters = {{.name = "step",
                      .type = WorkspaceHTMLPublicFunctionParameterType::integer,
                      .valueOptions = {"1"},
                      .format = WorkspaceHTMLPublicFunctionParameterFormat::ordinalIndex}}};
  EXPECT_EQ(
      compactJSON(function),
      R"({"aliases":[],"description":"","id":"next","js_function":"goNext","name":"Next",)"
      R"("parameters":[{"aliases":[],"description":"","format":"ordinal_index","name":"step",)"
      R"("required":false,"type":"integer","value_options":["1"]}]})");
}

TEST(WorkspaceCardTest, EncodesOneSpellingAndRequiresItsKeys) {
  const WorkspaceCard card{
      .id = *Uuid::parse("6f1c1f7e-2b7a-4c55-9d1e-0a7f2b3c4d5e"),
      .parentID = *Uuid::parse("00000000-0000-0000-0000-0000000000AB"),
      .title = "Notes",
      .type = WorkspaceCardType::richText,
      .summary = "short",
      .isLoading = true,
      .payload = {WorkspaceRichTextPayload{.markdown = "# Hi"}},
  };
  EXPECT_EQ(compactJSON(card), R"({"id":"6F1C1F7E-2B7A-4C55-9D1E-0A7F2B3C4D5E","isLoading":true,)"
                               R"("parentID":"00000000-0000-0000-0000-0000000000AB",)"
                               R"("payload":{"richText":{"markdown":"# Hi"},"type":"richText"},)"
                               R"("summary":"short","title":"Notes","type":"richText"})");
  EXPECT_EQ(decodeValue<WorkspaceCard>(card.encode()), card);

  for (std::string_view key : {"id", "title", "type", "isLoading", "payload"}) {
    SCOPED_TRACE(key);
    AnyCodableValue encoded = card.encode();
    encoded.asObject()->erase(key);
    EXPECT_THROW(decodeValue<WorkspaceCard>(encoded), DecodingError);
  }

  const WorkspaceCardFile file{.id = card.id, .title = "f", .payload = card.payload};
  EXPECT_FALSE(file.encode().asObject()->contains("parentID"));
}

}  // namespace
}  // namespace zorvik
