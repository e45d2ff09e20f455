#include "workspace_store/stored_cards/stored_card_payload.h"

#include <gtest/gtest.h>

#include "foundation/file_url.h"
#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "stored_cards_test_support.h"
#include "support/temp_directory.h"
#include "workspace_store/stored_cards/stored_card_path.h"

namespace zorvik {
namespace {

using Kind = StoredCardStorageError::Kind;
using Mode = StoredCardContentStorageMode;
using zorvik::testing::TempDirectory;

AnyCodableValue json(std::string_view text) { return AnyCodableValue::parse(text); }

struct MessageCase {
  std::string raw;
  std::string message;
};

TEST(StoredCardPayloadTest, RawReaderMessages) {
  const std::vector<MessageCase> cases = {
      {R"([])", "Stored card payload is missing required field `type`."},
      {R"({"richText":{}})", "Stored card payload is missing required field `type`."},
      {R"({"type":true})", "Stored card payload is missing required field `type`."},
      {R"({"type":"richText"})", "Stored richText payload is missing `richText`."},
      {R"({"type":"table","table":null})", "Stored table payload is missing `table`."},
      {R"({"type":"html","richText":{}})", "Stored html payload is missing `html`."},
  };
  for (const MessageCase& c : cases) {
    expectStorageError([&] { StoredCardPayload::fromRaw(json(c.raw)); }, Kind::invalidPayload,
                       c.message);
  }
  // A present but malformed record is a decoding error of the stored JSON.
  EXPECT_THROW(StoredCardPayload::fromRaw(json(R"({"type":"richText","richText":{}})")),
               DecodingError);
}

TEST(StoredCardPayloadTest, OtherTypesPassThroughUntouched) {
  for (const char* raw : {R"({"type":"link","link":{"url":"https://example.com"}})",
                          R"({"type":42,"table":"not a record"})", R"({"type":"folder"})"}) {
    const StoredCardPayload payload = StoredCardPayload::fromRaw(json(raw));
    ASSERT_NE(payload.passthrough(), nullptr) << raw;
    EXPECT_EQ(payload.asRawValue(), json(raw));
    EXPECT_TRUE(payload.referencedSidecarPaths().empty());
    EXPECT_EQ(payload.resolvedPayload("/nowhere", kCardID),
              (StoredCardResolvedPayload{json(raw), {}}));
    EXPECT_EQ(StoredCardPayload::writePlan(json(raw), kCardID, Mode::external),
              (StoredCardWritePlan{payload, {}}));
  }
}

TEST(StoredCardPayloadTest, RawFormRoundTripsAndKeepsSnakeCaseHTMLKeys) {
  const std::string html =
      R"({"type":"html","html":{"summary":"s",)"
      R"("htmlSource":{"mode":"inline","format":"html","value":"<p>"},)"
      R"("cssSource":{"mode":"external","format":"css","path":"resources/a.css","encoding":"utf-8"},)"
      R"("jsSource":{"mode":"inline","format":"javascript","value":""},)"
      R"("allow_remote_assets":false,"persisted_state":"{}",)"
      R"("public_functions":[{"id":"f","name":"F","js_function":"f();"}]}})";
  const StoredCardPayload payload = StoredCardPayload::fromRaw(json(html));
  ASSERT_NE(payload.html(), nullptr);
  EXPECT_EQ(payload.html()->allowRemoteAssets, false);
  EXPECT_EQ(payload.html()->persistedState, "{}");
  ASSERT_EQ(payload.html()->publicFunctions.size(), 1u);
  EXPECT_EQ(payload.html()->publicFunctions[0].jsFunction, "f();");
  EXPECT_EQ(StoredCardPayload::fromRaw(payload.asRawValue()), payload);
  EXPECT_EQ(payload.referencedSidecarPaths(), std::vector<std::string>{"resources/a.css"});

  // Empty public functions are not written.
  StoredHTMLPayload bare = *payload.html();
  bare.publicFunctions.clear();
  EXPECT_EQ(bare.encode().member("public_functions"), nullptr);
  EXPECT_NE(bare.encode().member("allow_remote_assets"), nullptr);

  const std::string table =
      R"({"type":"table","table":{"dataSource":{"mode":"inline","columns":["a"],"rows":[]},)"
      R"("columnWidths":[10,20.5],"fontSize":12,"showsRowHeaders":true}})";
  EXPECT_EQ(StoredCardPayload::fromRaw(json(table)).asRawValue(), json(table));
  const std::string richText =
      R"({"type":"richText","richText":{"markdownSource":{"mode":"inline","format":"markdown",)"
      R"("value":"x"},"rtfData":"e1xydGY=","textColor":{"r":1},"fontScale":1.5}})";
  EXPECT_EQ(StoredCardPayload::fromRaw(json(richText)).asRawValue(), json(richText));
}

TEST(StoredCardPayloadTest, WritePlanMessages) {
  const std::vector<MessageCase> cases = {
      {R"("text")", "Runtime payload is missing required field `type`."},
      {R"({"richText":{"markdown":"x"}})", "Runtime payload is missing required field `type`."},
      {R"({"type":"richText"})", "Runtime richText payload is missing `richText`."},
      {R"({"type":"table","richText":{}})", "Runtime table payload is missing `table`."},
      {R"({"type":"html"})", "Runtime html payload is missing `html`."},
      {R"({"type":"richText","richText":"x"})", "Runtime richText payload must be an object."},
      {R"({"type":"richText","richText":{"markdown":null}})",
       "Runtime richText payload is missing `markdown`."},
      {R"({"type":"table","table":[]})", "Runtime table payload must be an object."},
      {R"({"type":"table","table":{"rows":[]}})", "Runtime table payload is missing `columns`."},
      {R"({"type":"table","table":{"columns":"a","rows":[]}})",
       "Runtime table payload is missing `columns`."},
      {R"({"type":"table","table":{"columns":["a",{}],"rows":[]}})",
       "Runtime table payload is missing `columns`."},
      {R"({"type":"table","table":{"columns":["a"]}})", "Runtime table payload is missing `rows`."},
      {R"({"type":"table","table":{"columns":["a"],"rows":{}}})",
       "Runtime table payload `rows` must be an array."},
      {R"({"type":"table","table":{"columns":["a"],"rows":[["1"],"2"]}})",
       "Runtime table row must be an array."},
      {R"({"type":"html","html":null})", "Runtime html payload must be an object."},
      {R"({"type":"html","html":{"css":"a{}"}})", "Runtime html payload is missing `html`."},
  };
  for (const MessageCase& c : cases) {
    for (Mode mode : {Mode::inlined, Mode::external}) {
      expectStorageError([&] { StoredCardPayload::writePlan(json(c.raw), kCardID, mode); },
                         Kind::invalidPayload, c.message);
    }
  }
  // Only an external table needs a column to render its CSV.
  const auto noColumns = json(R"({"type":"table","table":{"columns":[],"rows":[["x"]]}})");
  EXPECT_NO_THROW(StoredCardPayload::writePlan(noColumns, kCardID, Mode::inlined));
  expectStorageError([&] { StoredCardPayload::writePlan(noColumns, kCardID, Mode::external); },
                     Kind::invalidCSV, "Table sidecar requires at least one column.");
  // Text that is not UTF-8 cannot become sidecar bytes.
  const AnyCodableValue badText(JSONObject{
      {"type", "richText"}, {"richText", JSONObject{{"markdown", std::string("caf\xE9")}}}});
  expectStorageError([&] { StoredCardPayload::writePlan(badText, kCardID, Mode::external); },
                     Kind::unsupportedEncoding,
                     "Unable to encode UTF-8 for " + kCardFolder + "/content.md.");
}

TEST(StoredCardPayloadTest, InlinePlansKeepBodiesInTheCard) {
  const auto richText = StoredCardPayload::writePlan(
      json(R"({"type":"richText","richText":{"markdown":"# Hi","fontScale":"1.25",)"
           R"("fontName":7,"sourceURL":"/tmp/ignored.md","rtfData":null}})"),
      kCardID, Mode::inlined);
  EXPECT_TRUE(richText.sidecarFiles.empty());
  ASSERT_NE(richText.payload.richText(), nullptr);
  EXPECT_EQ(richText.payload.richText()->markdownSource,
            StoredTextContent::makeInline(StoredTextContentFormat::markdown, "# Hi"));
  EXPECT_EQ(richText.payload.richText()->fontScale, 1.25);
  EXPECT_EQ(richText.payload.richText()->fontName, "7");
  EXPECT_EQ(richText.payload.richText()->rtfData, std::nullopt);

  const auto table = StoredCardPayload::writePlan(
      json(R"({"type":"table","table":{"columns":["a",2.5],"rows":[[1,null,true],[]],)"
           R"("fontSize":"+12","usesManualSize":"yes","rowColors":["red",1,null],)"
           R"("columnWidths":[100,"50.5","wide"]}})"),
      kCardID, Mode::inlined);
  ASSERT_NE(table.payload.table(), nullptr);
  const StoredTablePayload& stored = *table.payload.table();
  EXPECT_EQ(stored.dataSource,
            StoredTableDataSource::makeInline({"a", "2.5"}, {{"1", "", ""}, {}}));
  EXPECT_EQ(stored.fontSize, 12.0);
  EXPECT_EQ(stored.usesManualSize, std::nullopt);
  EXPECT_EQ(stored.rowColors, (std::vector<std::string>{"red", "1"}));
  EXPECT_EQ(stored.columnWidths, (std::vector<double>{100, 50.5}));

  const auto html = StoredCardPayload::writePlan(
      json(R"({"type":"html","html":{"html":"<p>","allow_remote_assets":"true",)"
           R"("public_functions":[{"id":"no js_function"}]}})"),
      kCardID, Mode::inlined);
  ASSERT_NE(html.payload.html(), nullptr);
  EXPECT_EQ(html.payload.html()->cssSource,
            StoredTextContent::makeInline(StoredTextContentFormat::css, ""));
  EXPECT_EQ(html.payload.html()->jsSource,
            StoredTextContent::makeInline(StoredTextContentFormat::javascript, ""));
  EXPECT_EQ(html.payload.html()->allowRemoteAssets, std::nullopt);
  EXPECT_TRUE(html.payload.html()->publicFunctions.empty());
}

class StoredCardRoundTripTest : public ::testing::Test {
 protected:
  // Plans `runtime` in external mode, writes the sidecars, re-reads the stored JSON form and
  // resolves it against the project.
  StoredCardResolvedPayload roundTrip(const AnyCodableValue& runtime,
                                      std::vector<std::string> expectedSidecars) {
    const StoredCardWritePlan plan = StoredCardPayload::writePlan(runtime, kCardID, Mode::external);
    std::vector<std::string> written;
    for (const StoredCardSidecarFile& file : plan.sidecarFiles) {
      project_.write(file.relativePath, file.data);
      written.push_back(file.relativePath);
    }
    EXPECT_EQ(written, expectedSidecars);
    const StoredCardPayload stored = StoredCardPayload::fromRaw(plan.payload.asRawValue());
    EXPECT_EQ(stored, plan.payload);
    EXPECT_EQ(stored.referencedSidecarPaths(), expectedSidecars);
    StoredCardResolvedPayload resolved = stored.resolvedPayload(project_.path(), kCardID);
    EXPECT_EQ(resolved.referencedSidecars, plan.sidecarFiles);
    return resolved;
  }
  std::string fileURL(const std::string& relative) const {
    return fileURLString(project_.path() / relative);
  }

  TempDirectory project_;
};

TEST_F(StoredCardRoundTripTest, RichText) {
  const auto resolved = roundTrip(
      json(R"({"type":"richText","richText":{"markdown":"# Hi\n","summary":"s","fontScale":"1.25",)"
           R"("fontName":"Mono","rtfData":{"x":1},"backgroundColor":"#fff","textColor":[1,0,0],)"
           R"("sourceURL":"https://example.com/a.md","unknown":true}})"),
      {kCardFolder + "/content.md"});
  EXPECT_EQ(resolved.runtimePayload,
            json(R"({"type":"richText","richText":{"markdown":"# Hi\n","summary":"s",)"
                 R"("fontScale":1.25,"fontName":"Mono","rtfData":{"x":1},"backgroundColor":"#fff",)"
                 R"("textColor":[1,0,0],"sourceURL":)" +
                 AnyCodableValue(fileURL(kCardFolder + "/content.md")).compactJSONString().value() +
                 "}}"));
}

TEST_F(StoredCardRoundTripTest, TablePadsShortRows) {
  const auto resolved =
      roundTrip(json(R"({"type":"table","table":{"columns":["a","b,\"c\"",3],)"
                     R"("rows":[["1",2,null],["multi\r\nline"],[],["x","y","z","w"]],)"
                     R"("showsRowHeaders":true,"rowHeights":[20],"fontSize":"12"}})"),
                {kCardFolder + "/table.csv"});
  EXPECT_EQ(resolved.runtimePayload,
            json(R"({"type":"table","table":{"columns":["a","b,\"c\"","3"],)"
                 R"("rows":[["1","2",""],["multi\r\nline","",""],["","",""],["x","y","z","w"]],)"
                 R"("showsRowHeaders":true,"rowHeights":[20],"fontSize":12}})"));
}

TEST_F(StoredCardRoundTripTest, HTMLWritesAllThreeFilesEvenWhenEmpty) {
  const auto resolved =
      roundTrip(json(R"({"type":"html","html":{"html":"<p>hi</p>","js":"run();","summary":"page",)"
                     R"("allow_remote_assets":true,"persisted_state":"{\"n\":1}",)"
                     R"("public_functions":[{"id":"f","name":"F","js_function":"f();"}]}})"),
                {kCardFolder + "/html/index.html", kCardFolder + "/html/styles.css",
                 kCardFolder + "/html/script.js"});
  EXPECT_EQ(resolved.runtimePayload,
            json(R"({"type":"html","html":{"html":"<p>hi</p>","css":"","js":"run();",)"
                 R"("summary":"page","allow_remote_assets":true,"persisted_state":"{\"n\":1}",)"
                 R"("public_functions":[{"id":"f","name":"F","description":"",)"
                 R"("js_function":"f();","aliases":[],"parameters":[]}]}})"));
}

TEST_F(StoredCardRoundTripTest, RichTextSourceURLStaysWhereItIs) {
  project_.write("resources/notes/a.md", "resource text");
  TempDirectory outside;
  const auto localFile = outside.write("Local Notes.md", "local text");

  // A project resource path is kept as such.
  auto plan = StoredCardPayload::writePlan(
      json(
          R"({"type":"richText","richText":{"markdown":"stale","sourceURL":" resources/notes/a.md "}})"),
      kCardID, Mode::external);
  EXPECT_TRUE(plan.sidecarFiles.empty());
  EXPECT_EQ(
      plan.payload.richText()->markdownSource,
      StoredTextContent::makeExternal(StoredTextContentFormat::markdown, "resources/notes/a.md"));
  auto resolved = plan.payload.resolvedPayload(project_.path(), kCardID);
  EXPECT_EQ(*resolved.runtimePayload.member("richText")->member("markdown"), "resource text");
  EXPECT_EQ(resolved.referencedSidecars,
            (std::vector<StoredCardSidecarFile>{{"resources/notes/a.md", "resource text"}}));

  // A local file becomes its absolute URL and is no sidecar of the card.
  AnyCodableValue runtime = json(R"({"type":"richText","richText":{"markdown":"stale"}})");
  runtime.asObject()->find("richText")->asObject()->set("sourceURL", localFile.string());
  plan = StoredCardPayload::writePlan(runtime, kCardID, Mode::external);
  EXPECT_TRUE(plan.sidecarFiles.empty());
  EXPECT_EQ(plan.payload.richText()->markdownSource.path, fileURLString(localFile));
  EXPECT_TRUE(plan.payload.referencedSidecarPaths().empty());
  resolved = plan.payload.resolvedPayload(project_.path(), kCardID);
  EXPECT_EQ(*resolved.runtimePayload.member("richText")->member("markdown"), "local text");
  EXPECT_EQ(*resolved.runtimePayload.member("richText")->member("sourceURL"),
            fileURLString(localFile));
  EXPECT_TRUE(resolved.referencedSidecars.empty());

  // Neither a resource nor a local file, or blank: the text goes to the card's own sidecar.
  for (const char* source : {"notes/a.md", "https://example.com/a.md", "  \n"}) {
    runtime.asObject()->find("richText")->asObject()->set("sourceURL", source);
    plan = StoredCardPayload::writePlan(runtime, kCardID, Mode::external);
    EXPECT_EQ(plan.sidecarFiles,
              (std::vector<StoredCardSidecarFile>{{kCardFolder + "/content.md", "stale"}}))
        << source;
  }
}

}  // namespace
}  // namespace zorvik
